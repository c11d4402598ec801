// DQArgument: one argument of a derived quantity.
#pragma once

#include <cstdint>
#include <string>

#include "vndata/platform/api.h"
#include "vndata/platform/date.h"

namespace vndata {

// Resampling methods of an argument.
enum DQResampleMethod : int32_t {
  kResampleNone = 0,
  kResampleByStepSize = 1,
  kResampleByPeriod = 2,
};

// Fields in the order the record holds them.
struct VNDATA_API DQArgument {
  std::string Argument;  // name in the expression
  std::string ColHead;   // a variable name or a `\`-path
  std::string FileName;  // file the vector came from
  std::string Source;    // group of the data set holding the vector
  std::string zOrigin;   // origin of that data set
  bool Hide = false;
  int32_t SolIndex = 0;
  std::string Class;
  bool ReAssociate = false;  // bind again to a new vector when reused
  int32_t Interval = 0;      // resampling interval (method 2)
  int32_t Method = kResampleNone;
  int32_t StepSize = 0;  // resampling step (method 1)
  std::string Units;     // units of Interval (method 2)
  Date StartDate;        // start of the periods (method 2)
};

}  // namespace vndata
