// DateTools: date texts under a format, and month names.
#pragma once

#include <cstdint>
#include <string>

#include "vndata/platform/api.h"
#include "vndata/platform/date.h"

namespace vndata {

class VNDATA_API DateTools {
 public:
  // Splits zDate into day, month and year under zFormat (the positions of
  // "dd", "mm" and "yyyy" in it, e.g. "dd/mm/yyyy"). Fields may be separated
  // by '/', '-', '.' or blanks; a month may also be written as a name or its
  // first three letters, in any case (so "23 November 2026" splits under
  // "dd/mm/yyyy"). A year of one or two digits is read as 1950..2049.
  // Returns false, leaving the outputs 0, when the text does not hold a valid
  // day.
  static bool SplitDate(const std::string& zDate, const std::string& zFormat, int32_t& iDay,
                        int32_t& iMonth, int32_t& iYear);
  // "January" .. "December"; the empty string outside 1..12.
  static std::string MonthName(int32_t iMonth);
  // Month 1..12 from a full or three-letter name (any case); 0 when none.
  static int32_t MonthFromName(const std::string& zName);
  // "day month-name year", e.g. "23 November 2026".
  static std::string DayMonthYearText(Date d);
  static std::string DayMonthYearText(int32_t iDay, int32_t iMonth, int32_t iYear);
  // The date as text under zFormat ("dd/mm/yyyy" gives "05/01/2024").
  static std::string FormatDate(int32_t iDay, int32_t iMonth, int32_t iYear, const std::string& zFormat);
  // zDate re-written under zFormat; the text unchanged when it cannot be split.
  static std::string NormaliseDate(const std::string& zDate, const std::string& zFormat);
  static bool IsValidDay(int32_t iDay, int32_t iMonth, int32_t iYear);
};

}  // namespace vndata
