// The host's log: error trace lines and progress lines.
//
// Lines are kept in memory (tests and hosts read them back), appended to the
// log file when one is set, and forwarded to a host callback when one is
// installed. There are no levels; a line carries only the caller's flag.
#pragma once

#include <functional>
#include <string>
#include <vector>
#include "vndata/platform/api.h"

namespace vndata {

class VNDATA_API MessageLog {
 public:
  using Callback = std::function<void(const std::string& zText, bool qFlag)>;

  // The thread's log, created on first use.
  static MessageLog& Shared();
  // Ends the thread's log: its lines, file and callback go, and the next
  // use starts a fresh one (the library's shut-down).
  static void ReleaseShared();

  void Add(const std::string& zText, bool qFlag);
  // The kept lines, oldest first.
  const std::vector<std::string>& Lines() const { return lines_; }
  // The flags the lines were added with, in the same order.
  const std::vector<bool>& Flags() const { return flags_; }
  void Clear();

  // Sets the file that lines are appended to (with qLogToFile true) and the
  // title written as its first line when the file is started.
  void SetLogFile(const std::string& zFileName, bool qLogToFile, const std::string& zTitle);
  const std::string& LogFileName() const { return logFile_; }
  void SetCallback(Callback fn) { callback_ = std::move(fn); }

 private:
  std::vector<std::string> lines_;
  std::vector<bool> flags_;
  std::string logFile_;
  bool logToFile_ = false;
  Callback callback_;
};

}  // namespace vndata
