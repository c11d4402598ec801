// Date: days since 30 December 1899 as a double, the automation platform's
// date, with the fraction as the time of day. Before day 0 the whole part
// still names the day and the fraction's magnitude the time (-1.25 is 06:00
// on 29 December 1899).
#pragma once

#include <cstdint>
#include "vndata/platform/api.h"

namespace vndata {

class VNDATA_API Date {
 public:
  constexpr Date() = default;
  constexpr explicit Date(double days) : days_(days) {}

  // The date of a calendar day (proleptic Gregorian); no range check.
  static Date FromYMD(int32_t year, int32_t month, int32_t day);
  // Today's date (local time, no time of day).
  static Date Today();

  double Days() const { return days_; }
  // The calendar day of the date (the time of day is dropped).
  void ToYMD(int32_t& year, int32_t& month, int32_t& day) const;

  friend constexpr bool operator==(Date a, Date b) { return a.days_ == b.days_; }

 private:
  double days_ = 0.0;
};

}  // namespace vndata
