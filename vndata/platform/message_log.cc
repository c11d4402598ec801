#include "vndata/platform/message_log.h"

#include <cstdio>

namespace vndata {

MessageLog& MessageLog::Shared() {
  thread_local MessageLog log;
  return log;
}

void MessageLog::ReleaseShared() { Shared() = MessageLog(); }

static void AppendLine(const std::string& zFile, const std::string& zText) {
  if (std::FILE* f = std::fopen(zFile.c_str(), "ab")) {
    std::fwrite(zText.data(), 1, zText.size(), f);
    std::fputc('\n', f);
    std::fclose(f);
  }
}

void MessageLog::Add(const std::string& zText, bool qFlag) {
  lines_.push_back(zText);
  flags_.push_back(qFlag);
  if (logToFile_ && !logFile_.empty()) AppendLine(logFile_, zText);
  if (callback_) callback_(zText, qFlag);
}

void MessageLog::Clear() {
  lines_.clear();
  flags_.clear();
}

void MessageLog::SetLogFile(const std::string& zFileName, bool qLogToFile,
                            const std::string& zTitle) {
  logFile_ = zFileName;
  logToFile_ = qLogToFile;
  if (logToFile_ && !logFile_.empty() && !zTitle.empty()) AppendLine(logFile_, zTitle);
}

}  // namespace vndata
