// Keeps the folders of vndata/ as layers. Each folder may include its own
// headers and those of the folders below it, never one above it or beside
// it; an installed (public) header may not include a header that is not
// installed; and every member of the library's main classes is defined in
// its class's own folder. Failures name the file and the line.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <cstdint>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Bottom up: a folder includes only folders before it in this list.
const std::vector<std::string>& LayerOrder() {
  static const std::vector<std::string> order = {"platform", "foundation", "persist", "derived",
                                                 "dataset",  "store",      "support", "readers"};
  return order;
}

int LayerOf(const std::string& folder) {
  const auto& order = LayerOrder();
  const auto it = std::find(order.begin(), order.end(), folder);
  return it == order.end() ? -1 : static_cast<int>(it - order.begin());
}

struct Include {
  std::string file;  // relative to the repository root
  int line = 0;
  std::string target;  // "vndata/<folder>/..."
};

// The folder of a path "vndata/<folder>/...", or "" when it is not one.
std::string FolderOf(const std::string& path) {
  static const std::regex folder(R"(^vndata/([a-z_]+)/)");
  std::smatch m;
  return std::regex_search(path, m, folder) ? m[1].str() : std::string();
}

// Not installed: the byte machinery of persist/ and anything under internal/.
bool IsInternal(const std::string& path) {
  return FolderOf(path) == "persist" || path.find("/internal/") != std::string::npos;
}

std::vector<fs::path> SourcesUnder(const fs::path& root) {
  std::vector<fs::path> files;
  for (const auto& e : fs::recursive_directory_iterator(root)) {
    const std::string ext = e.path().extension().string();
    if (e.is_regular_file() && (ext == ".h" || ext == ".cc")) files.push_back(e.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string Relative(const fs::path& p) {
  return fs::relative(p, VNDATA_SOURCE_DIR).generic_string();
}

std::vector<Include> IncludesOf(const std::vector<fs::path>& files) {
  static const std::regex include(R"(^\s*#\s*include\s+"(vndata/[^"]+)\")");
  std::vector<Include> out;
  for (const fs::path& f : files) {
    std::ifstream in(f);
    std::string text;
    int line = 0;
    while (std::getline(in, text)) {
      ++line;
      std::smatch m;
      if (std::regex_search(text, m, include)) out.push_back({Relative(f), line, m[1].str()});
    }
  }
  return out;
}

// The breaches of the layer rule among the given includes, one line each.
std::vector<std::string> LayerBreaches(const std::vector<Include>& includes) {
  std::vector<std::string> breaches;
  for (const Include& inc : includes) {
    const std::string from = FolderOf(inc.file), to = FolderOf(inc.target);
    const int a = LayerOf(from), b = LayerOf(to);
    if (a < 0 || b < 0) {
      breaches.push_back(inc.file + ":" + std::to_string(inc.line) + ": folder outside the layers (" +
                         inc.target + ")");
    } else if (b > a) {
      breaches.push_back(inc.file + ":" + std::to_string(inc.line) + ": " + from + " includes " +
                         inc.target + ", which is above it");
    }
  }
  return breaches;
}

std::string Joined(const std::vector<std::string>& lines) {
  std::ostringstream os;
  for (const std::string& l : lines) os << "  " << l << "\n";
  return os.str();
}

TEST(IncludeLayers, EveryFolderIsALayer) {
  for (const auto& e : fs::directory_iterator(fs::path(VNDATA_SOURCE_DIR) / "vndata"))
    if (e.is_directory()) {
      EXPECT_GE(LayerOf(e.path().filename().string()), 0) << e.path();
    }
}

TEST(IncludeLayers, NoFolderIncludesOneAboveIt) {
  const auto includes = IncludesOf(SourcesUnder(fs::path(VNDATA_SOURCE_DIR) / "vndata"));
  ASSERT_GT(includes.size(), 100u);  // the walk found the tree
  const auto breaches = LayerBreaches(includes);
  EXPECT_TRUE(breaches.empty()) << "includes against the layer order:\n" << Joined(breaches);
}

TEST(IncludeLayers, AnUpwardIncludeIsReportedWithItsFileAndLine) {
  const std::vector<Include> planted = {
      {"vndata/dataset/mx_data_set_storage.cc", 12, "vndata/store/mx_data_store.h"},
      {"vndata/store/mx_data_store.h", 3, "vndata/dataset/mx_data_set.h"},
      {"vndata/platform/arrays.h", 7, "vndata/foundation/vocabulary.h"}};
  const auto breaches = LayerBreaches(planted);
  ASSERT_EQ(breaches.size(), 2u);
  EXPECT_EQ(breaches[0],
            "vndata/dataset/mx_data_set_storage.cc:12: dataset includes vndata/store/mx_data_store.h, "
            "which is above it");
  EXPECT_EQ(breaches[1],
            "vndata/platform/arrays.h:7: platform includes vndata/foundation/vocabulary.h, which is "
            "above it");
}

TEST(IncludeLayers, PublicHeadersIncludeOnlyPublicHeaders) {
  std::vector<std::string> breaches;
  for (const Include& inc : IncludesOf(SourcesUnder(fs::path(VNDATA_SOURCE_DIR) / "vndata"))) {
    const bool publicHeader = inc.file.ends_with(".h") && !IsInternal(inc.file);
    if (publicHeader && IsInternal(inc.target))
      breaches.push_back(inc.file + ":" + std::to_string(inc.line) + ": includes " + inc.target);
  }
  EXPECT_TRUE(breaches.empty()) << "installed headers that need uninstalled ones:\n"
                                << Joined(breaches);
}

// "Class::Member(" at the start of a line is a definition of a member.
TEST(IncludeLayers, MembersOfTheMainClassesAreDefinedInTheirOwnFolder) {
  const std::map<std::string, std::string> home = {{"mxDataSet", "dataset"},
                                                   {"mxDataStore", "store"},
                                                   {"mxDQStore", "derived"},
                                                   {"mxDerivedQuantity", "derived"}};
  static const std::regex definition(R"(^[A-Za-z_][\w:<>,\s\*&]*\b(mx\w+)::~?\w+\s*\()");
  std::vector<std::string> strays;
  int32_t found = 0;
  for (const fs::path& f : SourcesUnder(fs::path(VNDATA_SOURCE_DIR) / "vndata")) {
    if (f.extension() != ".cc") continue;
    const std::string rel = Relative(f);
    std::ifstream in(f);
    std::string text;
    int line = 0;
    while (std::getline(in, text)) {
      ++line;
      std::smatch m;
      if (!std::regex_search(text, m, definition)) continue;
      const auto it = home.find(m[1].str());
      if (it != home.end()) ++found;
      if (it != home.end() && FolderOf(rel) != it->second)
        strays.push_back(rel + ":" + std::to_string(line) + ": " + m[1].str());
    }
  }
  EXPECT_GT(found, 400);  // the pattern sees the definitions
  EXPECT_TRUE(strays.empty()) << "members defined outside their class's folder:\n" << Joined(strays);
}

}  // namespace
