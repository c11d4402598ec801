#include "vndata/platform/runtime_fault.h"

#include <new>

#include "vndata/platform/message_log.h"

namespace vndata {

std::string FaultDescription(int32_t number) {
  switch (number) {
    case kFaultInvalidCall: return "Invalid procedure call or argument";
    case kFaultOverflow: return "Overflow";
    case kFaultOutOfMemory: return "Out of memory";
    case kFaultSubscript: return "Subscript out of range";
    case kFaultDivisionByZero: return "Division by zero";
    case kFaultTypeMismatch: return "Type mismatch";
    case kFaultFileNotFound: return "File not found";
    case kFaultDeviceIO: return "Device I/O error";
    case kFaultPathFileAccess: return "Path/File access error";
    case kFaultPathNotFound: return "Path not found";
    case kFaultObjectNotSet: return "Object variable or With block variable not set";
    case kFaultInvalidNull: return "Invalid use of Null";
    default: return "Application-defined or object-defined error";
  }
}

RuntimeFault::RuntimeFault(int32_t number)
    : number_(number), description_(FaultDescription(number)) {}

RuntimeFault::RuntimeFault(int32_t number, std::string description)
    : number_(number), description_(std::move(description)) {}

void RaiseFault(int32_t number) { throw RuntimeFault(number); }

std::string ErrorTraceLine(std::string_view zTag, const RuntimeFault& fault,
                           const TraceWording& wording) {
  std::string line = wording.zPrefix + fault.Description() + wording.zNumberPrefix +
                     std::to_string(fault.Number()) + wording.zTagOpen;
  line += zTag;
  line += wording.zTagClose;
  return line;
}

void LogFault(std::string_view zTag, const RuntimeFault& fault, const TraceWording& wording) {
  MessageLog::Shared().Add(ErrorTraceLine(zTag, fault, wording), true);
}

std::string TagOf(const std::string& zModule, const std::string& zProcedure,
                  const std::string& zSeparator) {
  return zModule + zSeparator + "(" + zProcedure + ")";
}

namespace detail {
void LogCurrentException(std::string_view zTag, const TraceWording& wording) noexcept {
  try {
    try {
      throw;
    } catch (const RuntimeFault& fault) {
      LogFault(zTag, fault, wording);
    } catch (const std::bad_alloc&) {
      LogFault(zTag, RuntimeFault(kFaultOutOfMemory), wording);
    } catch (...) {
      LogFault(zTag, RuntimeFault(kFaultInvalidCall), wording);
    }
  } catch (...) {
    // The log itself failed (out of memory while formatting): nothing more
    // can be reported, and the guard must still not let anything escape.
  }
}
}  // namespace detail

}  // namespace vndata
