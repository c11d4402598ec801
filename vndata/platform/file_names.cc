#include "vndata/platform/file_names.h"

namespace vndata {

namespace {

std::size_t NameStart(std::string_view z) {
  const std::size_t last = z.find_last_of("\\/");
  return last == std::string_view::npos ? 0 : last + 1;
}

// The position of the extension's dot within the name part, or npos.
std::size_t ExtensionDot(std::string_view zName) {
  const std::size_t dot = zName.rfind('.');
  return (dot == std::string_view::npos || dot == 0) ? std::string_view::npos : dot;
}

}  // namespace

std::string FileFolder(std::string_view zFileName) {
  const std::size_t start = NameStart(zFileName);
  return start == 0 ? std::string() : std::string(zFileName.substr(0, start - 1));
}

std::string FileNameOnly(std::string_view zFileName) {
  return std::string(zFileName.substr(NameStart(zFileName)));
}

std::string FileBaseName(std::string_view zFileName) {
  const std::string_view name = zFileName.substr(NameStart(zFileName));
  return std::string(name.substr(0, ExtensionDot(name)));
}

std::string FileExtension(std::string_view zFileName) {
  const std::string_view name = zFileName.substr(NameStart(zFileName));
  const std::size_t dot = ExtensionDot(name);
  return dot == std::string_view::npos ? std::string() : std::string(name.substr(dot + 1));
}

}  // namespace vndata
