// Helpers shared by the record file tests: a temporary folder that removes
// itself, and whole-file byte access to check layouts byte for byte.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace vndata::record_test {

class TempDir {
 public:
  TempDir() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "vndata_records_XXXXXX").string();
    std::vector<char> buf(pattern.begin(), pattern.end());
    buf.push_back('\0');
    char* made = mkdtemp(buf.data());
    if (made != nullptr) path_ = made;
  }
  ~TempDir() {
    std::error_code ec;
    if (!path_.empty()) std::filesystem::remove_all(path_, ec);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  std::string File(const std::string& name) const { return (path_ / name).string(); }
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

inline std::vector<uint8_t> ReadAllBytes(const std::string& name) {
  std::ifstream in(name, std::ios::binary);
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

inline void WriteAllBytes(const std::string& name, const std::vector<uint8_t>& bytes) {
  std::ofstream out(name, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// Builders for expected bytes.
inline void PutBE32(std::vector<uint8_t>& b, int32_t v) {
  uint32_t u = static_cast<uint32_t>(v);
  for (int s = 24; s >= 0; s -= 8) b.push_back(static_cast<uint8_t>(u >> s));
}
inline void PutText(std::vector<uint8_t>& b, const std::string& s) { b.insert(b.end(), s.begin(), s.end()); }
// One physical record around the given bytes.
inline void PutRecord(std::vector<uint8_t>& b, const std::vector<uint8_t>& body) {
  PutBE32(b, static_cast<int32_t>(body.size()));
  b.insert(b.end(), body.begin(), body.end());
  PutBE32(b, static_cast<int32_t>(body.size()));
}
inline std::vector<uint8_t> HeaderBody(const std::string& keyword, std::size_t width, int32_t count,
                                       const std::string& type) {
  std::vector<uint8_t> body;
  std::string k = keyword;
  k.resize(width, ' ');
  PutText(body, k);
  PutBE32(body, count);
  PutText(body, type);
  return body;
}

}  // namespace vndata::record_test
