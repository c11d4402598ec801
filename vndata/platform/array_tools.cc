#include "vndata/platform/array_tools.h"

namespace vndata {

void ArrayTools::ColumnRange(int32_t nCols, int32_t iStart, int32_t iEnd, int32_t& iFirst,
                             int32_t& iLast, int32_t& iStep, int32_t& nCount) {
  iFirst = iStart == -1 ? 1 : iStart;
  iLast = iEnd == -1 ? nCols : iEnd;
  iStep = iLast >= iFirst ? 1 : -1;
  nCount = 0;
  if (nCols < 1 || iFirst < 1 || iFirst > nCols) return;
  iLast = std::clamp(iLast, 1, nCols);
  nCount = (iLast - iFirst) * iStep + 1;
}

}  // namespace vndata
