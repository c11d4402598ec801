#include "vndata/support/mx_data_storage_info.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>

#include "vndata/platform/date.h"
#include "vndata/platform/file_names.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/message_log.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/variant.h"

namespace vndata {

namespace {

std::string VersionNumbers() {
  return std::to_string(mxDataStorageInfo::kMajor) + "." +
         std::to_string(mxDataStorageInfo::kMinor) + "." +
         std::to_string(mxDataStorageInfo::kRevision);
}

// A file's modification time as a platform date in local time.
bool FileDate(const std::string& zFile, Date& dDate) {
  struct stat st {};
  if (zFile.empty() || ::stat(zFile.c_str(), &st) != 0) return false;
  std::tm local{};
  const std::time_t t = st.st_mtime;
  localtime_r(&t, &local);
  const Date day = Date::FromYMD(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
  dDate =
      Date(day.Days() + (local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec) / 86400.0);
  return true;
}

// The running program's name without folder or extension: the name a host
// logs under unless it names its log itself.
std::string HostLogName() {
  char path[4096];
  const ssize_t n = ::readlink("/proc/self/exe", path, sizeof path - 1);
  if (n <= 0) return "host";
  return FileBaseName(std::string(path, static_cast<std::size_t>(n)));
}

}  // namespace

std::string mxDataStorageInfo::LibraryFileName() {
  Dl_info info{};
  if (::dladdr(reinterpret_cast<const void*>(&VersionNumbers), &info) == 0 ||
      info.dli_fname == nullptr)
    return std::string();
  return info.dli_fname;
}

std::string mxDataStorageInfo::get_DLLVersion(std::string& LOGFILE, const std::string& StartupMsg,
                                              bool qLogToFile) {
  std::string zVersion;
  RunGuarded("mxDataStorageInfo (Code) (DLLVersion)", [&] {
    const std::string zFile = LibraryFileName();
    Date dFile;
    const std::string zDate =
        FileDate(zFile, dFile) ? Variant(dFile).ToText() : "(" + zFile + ":Unknown Date)";
    zVersion = std::string(kTitle) + " v" + VersionNumbers() + " " + zDate;
    if (LOGFILE.empty()) LOGFILE = HostLogName() + ".txt";
    MessageLog::Shared().SetLogFile(LOGFILE, qLogToFile, kTitle);
    if (!StartupMsg.empty())
      MessageLog::Shared().Add(zVersion + " " + StartupMsg + ":" + " OK", true);
  });
  return zVersion;
}

std::string mxDataStorageInfo::get_DLLVersion(std::string& LOGFILE, const std::string& StartupMsg) {
  return get_DLLVersion(LOGFILE, StartupMsg, false);
}

std::string mxDataStorageInfo::get_DLLVersion(std::string& LOGFILE) {
  return get_DLLVersion(LOGFILE, std::string(), false);
}

std::string mxDataStorageInfo::get_DLLVersion() {
  std::string zLog;
  return get_DLLVersion(zLog, std::string(), false);
}

void mxDataStorageInfo::CloseDown() {
  RunGuarded("mxDataStorageInfo (Code) (CloseDown)", [&] {
    MessageLog::Shared().Add(std::string(kTitle) + " v" + VersionNumbers() + " Close Down", true);
    ReleaseSharedTools();
    MessageLog::ReleaseShared();
  });
}

}  // namespace vndata
