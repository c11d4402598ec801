#include "vndata/platform/date.h"

#include <cmath>
#include <ctime>

namespace vndata {

namespace {
// Days from 1970-01-01 of a civil date (Howard Hinnant's algorithm).
int64_t DaysFromCivil(int64_t y, int64_t m, int64_t d) {
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const int64_t yoe = y - era * 400;
  const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

void CivilFromDays(int64_t z, int32_t& y, int32_t& m, int32_t& d) {
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const int64_t doe = z - era * 146097;
  const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const int64_t mp = (5 * doy + 2) / 153;
  d = static_cast<int32_t>(doy - (153 * mp + 2) / 5 + 1);
  m = static_cast<int32_t>(mp < 10 ? mp + 3 : mp - 9);
  y = static_cast<int32_t>(yoe + era * 400 + (m <= 2));
}

// 1899-12-30 counted from 1970-01-01.
constexpr int64_t kEpochOffset = -25569;
}  // namespace

Date Date::FromYMD(int32_t year, int32_t month, int32_t day) {
  return Date(static_cast<double>(DaysFromCivil(year, month, day) - kEpochOffset));
}

Date Date::Today() {
  std::time_t t = std::time(nullptr);
  std::tm tm{};
  localtime_r(&t, &tm);
  return FromYMD(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday);
}

void Date::ToYMD(int32_t& year, int32_t& month, int32_t& day) const {
  // Before day 0 the fraction still counts forward from the start of the
  // day (-1.5 is noon of 29 December 1899), so the day is the truncated
  // whole, not the floor.
  CivilFromDays(static_cast<int64_t>(std::trunc(days_)) + kEpochOffset, year, month, day);
}

}  // namespace vndata
