// mxDataStorageInfo: the library's version text, the start of its log and
// the end of its use. A host calls get_DLLVersion once at start-up and
// CloseDown once at the end.
#pragma once

#include <cstdint>
#include <string>

#include "vndata/platform/api.h"

namespace vndata {

class VNDATA_API mxDataStorageInfo {
 public:
  // The numbers of this build of the library.
  static constexpr int32_t kMajor = 6;
  static constexpr int32_t kMinor = 3;
  static constexpr int32_t kRevision = 2437;
  static constexpr const char* kTitle = "vndata63";

  // The version text: "vndata63 v6.3.2437 " and the date of the library's
  // file. Starts the log: an empty LOGFILE becomes the host's default log
  // name (and goes back to the caller); a StartupMsg writes one line.
  std::string get_DLLVersion(std::string& LOGFILE, const std::string& StartupMsg, bool qLogToFile);
  std::string get_DLLVersion(std::string& LOGFILE, const std::string& StartupMsg);
  std::string get_DLLVersion(std::string& LOGFILE);
  std::string get_DLLVersion();
  // Logs the close-down line and releases the shared tools and the log, so
  // that the module ends in the same state whatever was called before.
  void CloseDown();

  // The file the library was loaded from (the program itself when the
  // library is linked in statically).
  static std::string LibraryFileName();
};

}  // namespace vndata
