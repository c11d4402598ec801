#include "vndata/platform/date_tools.h"

#include <array>
#include <cctype>
#include <cstdio>
#include <vector>

#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {
const std::array<const char*, 12> kMonths = {"January", "February", "March",     "April",
                                             "May",     "June",     "July",      "August",
                                             "September", "October", "November", "December"};

std::vector<std::string> DateFields(const std::string& z) {
  std::vector<std::string> out;
  std::string cur;
  for (char c : z) {
    if (c == '/' || c == '-' || c == '.' || c == ' ' || c == ',') {
      if (!cur.empty()) out.push_back(cur);
      cur.clear();
    } else {
      cur += c;
    }
  }
  if (!cur.empty()) out.push_back(cur);
  return out;
}

bool AllDigits(const std::string& s) {
  if (s.empty()) return false;
  for (char c : s)
    if (!std::isdigit(static_cast<unsigned char>(c))) return false;
  return true;
}
}  // namespace

std::string DateTools::MonthName(int32_t iMonth) {
  return (iMonth < 1 || iMonth > 12) ? std::string() : std::string(kMonths[iMonth - 1]);
}

int32_t DateTools::MonthFromName(const std::string& zName) {
  for (int32_t m = 1; m <= 12; ++m) {
    std::string full = kMonths[m - 1];
    if (StringTools::Equal(zName, full, false) || StringTools::Equal(zName, full.substr(0, 3), false))
      return m;
  }
  return 0;
}

bool DateTools::IsValidDay(int32_t iDay, int32_t iMonth, int32_t iYear) {
  if (iMonth < 1 || iMonth > 12 || iDay < 1 || iYear < 0 || iYear > 9999) return false;
  static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  bool leap = (iYear % 4 == 0 && iYear % 100 != 0) || iYear % 400 == 0;
  int last = kDays[iMonth - 1] + (iMonth == 2 && leap ? 1 : 0);
  return iDay <= last;
}

bool DateTools::SplitDate(const std::string& zDate, const std::string& zFormat, int32_t& iDay,
                          int32_t& iMonth, int32_t& iYear) {
  iDay = iMonth = iYear = 0;
  std::vector<std::string> fields = DateFields(zDate);
  std::vector<std::string> order = DateFields(StringTools::Lower(zFormat));
  if (fields.size() != 3 || order.size() != 3) return false;
  int32_t d = 0, m = 0, y = 0;
  // A month written as a name is the month wherever it stands; the numbers
  // then take the day and year roles in the order the format gives them.
  std::vector<int32_t> numbers;
  std::vector<std::size_t> digits;
  for (const std::string& f : fields) {
    if (AllDigits(f)) {
      numbers.push_back(std::stoi(f.size() > 6 ? f.substr(0, 6) : f));
      digits.push_back(f.size());
    } else {
      if (m != 0) return false;
      m = MonthFromName(f);
      if (m == 0) return false;
    }
  }
  std::size_t next = 0;
  std::size_t yearDigits = 0;
  for (const std::string& role : order) {
    char r = role.empty() ? '?' : role[0];
    if (r == 'm' && m != 0 && numbers.size() < 3) continue;
    if (next >= numbers.size()) return false;
    std::size_t k = next++;
    if (r == 'd') d = numbers[k];
    else if (r == 'm') m = numbers[k];
    else if (r == 'y') {
      y = numbers[k];
      yearDigits = digits[k];
    }
  }
  // A year written with one or two digits is 1950..2049; a year written in
  // full is taken as it stands, even a small one.
  if (yearDigits <= 2) y += (y < 50 ? 2000 : 1900);
  if (!IsValidDay(d, m, y)) return false;
  iDay = d;
  iMonth = m;
  iYear = y;
  return true;
}

std::string DateTools::DayMonthYearText(int32_t iDay, int32_t iMonth, int32_t iYear) {
  return std::to_string(iDay) + " " + MonthName(iMonth) + " " + std::to_string(iYear);
}

std::string DateTools::DayMonthYearText(Date d) {
  int32_t y, m, dd;
  d.ToYMD(y, m, dd);
  return DayMonthYearText(dd, m, y);
}

std::string DateTools::FormatDate(int32_t iDay, int32_t iMonth, int32_t iYear, const std::string& zFormat) {
  std::string out;
  std::string f = StringTools::Lower(zFormat);
  for (std::size_t i = 0; i < f.size();) {
    char buf[16];
    if (f.compare(i, 4, "yyyy") == 0) {
      std::snprintf(buf, sizeof buf, "%04d", iYear);
      out += buf;
      i += 4;
    } else if (f.compare(i, 2, "dd") == 0) {
      std::snprintf(buf, sizeof buf, "%02d", iDay);
      out += buf;
      i += 2;
    } else if (f.compare(i, 2, "mm") == 0) {
      std::snprintf(buf, sizeof buf, "%02d", iMonth);
      out += buf;
      i += 2;
    } else {
      out += zFormat[i];
      ++i;
    }
  }
  return out;
}

std::string DateTools::NormaliseDate(const std::string& zDate, const std::string& zFormat) {
  int32_t d, m, y;
  if (!SplitDate(zDate, zFormat, d, m, y)) return zDate;
  return FormatDate(d, m, y, zFormat);
}

}  // namespace vndata
