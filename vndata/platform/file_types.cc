#include "vndata/platform/file_types.h"

#include <map>

namespace vndata {

namespace {
std::map<int32_t, std::string>& Table() {
  thread_local std::map<int32_t, std::string> table;
  return table;
}
}  // namespace

std::string FileTypeText(int32_t iFileType) {
  const auto& table = Table();
  const auto it = table.find(iFileType);
  return it == table.end() ? std::to_string(iFileType) : it->second;
}

void SetFileTypeText(int32_t iFileType, std::string_view zText) {
  if (zText.empty())
    Table().erase(iFileType);
  else
    Table()[iFileType] = std::string(zText);
}

}  // namespace vndata
