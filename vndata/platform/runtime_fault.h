// Run-time faults and the error trace.
//
// Inside the library a fault is a thrown RuntimeFault carrying the automation
// platform's number and text. No fault ever leaves a public operation: each
// one runs its body under a guard that turns the fault into exactly one line
// of the error trace and returns with its outputs as they stood.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>
#include "vndata/platform/api.h"

namespace vndata {

// Fault numbers used by the library, with the platform's texts.
enum FaultNumber : int32_t {
  kFaultInvalidCall = 5,      // "Invalid procedure call or argument"
  kFaultOverflow = 6,         // "Overflow"
  kFaultOutOfMemory = 7,      // "Out of memory"
  kFaultSubscript = 9,        // "Subscript out of range"
  kFaultDivisionByZero = 11,  // "Division by zero"
  kFaultTypeMismatch = 13,    // "Type mismatch"
  kFaultFileNotFound = 53,    // "File not found"
  kFaultDeviceIO = 57,        // "Device I/O error"
  kFaultPathFileAccess = 75,  // "Path/File access error"
  kFaultPathNotFound = 76,    // "Path not found"
  kFaultObjectNotSet = 91,    // "Object variable or With block variable not set"
  kFaultInvalidNull = 94,     // "Invalid use of Null"
};

// The platform's text for a fault number ("Application-defined or
// object-defined error" for numbers it does not name).
VNDATA_API std::string FaultDescription(int32_t number);

class VNDATA_API RuntimeFault : public std::exception {
 public:
  explicit RuntimeFault(int32_t number);
  RuntimeFault(int32_t number, std::string description);

  int32_t Number() const { return number_; }
  const std::string& Description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  int32_t number_;
  std::string description_;
};

// Throws RuntimeFault(number). Kept out of line so hot callers stay small.
[[noreturn]] VNDATA_API void RaiseFault(int32_t number);

// The fixed pieces of a trace line. Modules word their lines differently
// (hosts parse them), so each module names the wording it has always used.
struct VNDATA_API TraceWording {
  const char* zPrefix;        // before the fault's text
  const char* zNumberPrefix;  // between the text and the number
  const char* zTagOpen;       // between the number and the tag
  const char* zTagClose;      // after the tag
};
// "Error:<text> (No.<n>) In [<tag>] ": the data set and most modules.
inline constexpr TraceWording kCompactWording = {"Error:", " (No.", ") In [", "] "};
// "Error: <text> (No. <n>) In [<tag>] ": the store's registry operations.
inline constexpr TraceWording kSpacedWording = {"Error: ", " (No. ", ") In [", "] "};

// The trace line for a fault caught in the procedure named by zTag. Each
// module passes its tag exactly as its callers expect it (the spacing
// differs between modules).
VNDATA_API std::string ErrorTraceLine(std::string_view zTag, const RuntimeFault& fault,
                                      const TraceWording& wording = kCompactWording);

// Writes the trace line to the thread's MessageLog with a true flag.
VNDATA_API void LogFault(std::string_view zTag, const RuntimeFault& fault,
                         const TraceWording& wording = kCompactWording);

// Tag builders for the two shapes the modules use: "Class  (Proc)" style tags
// are spelled out by each caller; this joins a module and a procedure with
// the given separator, e.g. TagOf("mxDataStore (Code)", "Search") gives
// "mxDataStore (Code) (Search)".
VNDATA_API std::string TagOf(const std::string& zModule, const std::string& zProcedure,
                             const std::string& zSeparator = " ");

}  // namespace vndata
