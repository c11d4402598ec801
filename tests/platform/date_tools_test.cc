#include "vndata/platform/date_tools.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "vndata/platform/date.h"

using namespace vndata;

namespace {
struct Dmy {
  bool ok;
  int32_t d, m, y;
};
Dmy Split(const std::string& z, const std::string& format = "dd/mm/yyyy") {
  Dmy r{false, -1, -1, -1};
  r.ok = DateTools::SplitDate(z, format, r.d, r.m, r.y);
  return r;
}
void ExpectDmy(const Dmy& r, int32_t d, int32_t m, int32_t y) {
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(r.d, d);
  EXPECT_EQ(r.m, m);
  EXPECT_EQ(r.y, y);
}
}  // namespace

TEST(DateValue, DayZeroIs30December1899) {
  EXPECT_EQ(Date::FromYMD(1899, 12, 30).Days(), 0.0);
  EXPECT_EQ(Date::FromYMD(1899, 12, 31).Days(), 1.0);
  EXPECT_EQ(Date::FromYMD(1900, 1, 1).Days(), 2.0);
  EXPECT_EQ(Date::FromYMD(2000, 1, 1).Days(), 36526.0);
  EXPECT_EQ(Date::FromYMD(1899, 12, 29).Days(), -1.0);
}

TEST(DateValue, CalendarDayComesBack) {
  int32_t y = 0, m = 0, d = 0;
  Date::FromYMD(2024, 2, 29).ToYMD(y, m, d);
  EXPECT_EQ(y, 2024);
  EXPECT_EQ(m, 2);
  EXPECT_EQ(d, 29);
  Date(36526.75).ToYMD(y, m, d);
  EXPECT_EQ(y, 2000);
  EXPECT_EQ(m, 1);
  EXPECT_EQ(d, 1);
}

TEST(DateValue, BeforeDayZeroTheWholePartNamesTheDay) {
  int32_t y = 0, m = 0, d = 0;
  Date(-1.5).ToYMD(y, m, d);
  EXPECT_EQ(y, 1899);
  EXPECT_EQ(m, 12);
  EXPECT_EQ(d, 29);
}

TEST(DateValue, TodayIsTheLocalCalendarDay) {
  std::time_t t = std::time(nullptr);
  std::tm tm{};
  localtime_r(&t, &tm);
  Date today = Date::Today();
  EXPECT_EQ(today.Days(), Date::FromYMD(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday).Days());
}

TEST(DateSplit, DayMonthYearWithSlashes) {
  ExpectDmy(Split("23/11/2026"), 23, 11, 2026);
  ExpectDmy(Split("5/1/2024"), 5, 1, 2024);
}

TEST(DateSplit, DashDotAndBlankSeparateFieldsToo) {
  ExpectDmy(Split("23-11-2026"), 23, 11, 2026);
  ExpectDmy(Split("23.11.2026"), 23, 11, 2026);
  ExpectDmy(Split("23 11 2026"), 23, 11, 2026);
}

TEST(DateSplit, MonthWrittenAsANameInAnyCase) {
  ExpectDmy(Split("23 November 2026"), 23, 11, 2026);
  ExpectDmy(Split("23 NOVEMBER 2026"), 23, 11, 2026);
  ExpectDmy(Split("23-Nov-2026"), 23, 11, 2026);
  ExpectDmy(Split("1 jan 1990"), 1, 1, 1990);
  ExpectDmy(Split("November 23, 2026"), 23, 11, 2026);
}

TEST(DateSplit, FormatOrdersTheNumbers) {
  ExpectDmy(Split("11/23/2026", "mm/dd/yyyy"), 23, 11, 2026);
  ExpectDmy(Split("2026-11-23", "yyyy-mm-dd"), 23, 11, 2026);
  ExpectDmy(Split("2026 Nov 23", "yyyy/mm/dd"), 23, 11, 2026);
}

TEST(DateSplit, ShortYearsTakeACentury) {
  ExpectDmy(Split("05/01/24"), 5, 1, 2024);
  ExpectDmy(Split("05/01/49"), 5, 1, 2049);
  ExpectDmy(Split("05/01/50"), 5, 1, 1950);
  ExpectDmy(Split("05/01/99"), 5, 1, 1999);
}

TEST(DateSplit, YearWrittenInFullIsKept) { ExpectDmy(Split("05/01/0024"), 5, 1, 24); }

TEST(DateSplit, LeapDaysFollowTheGregorianRule) {
  ExpectDmy(Split("29/02/2024"), 29, 2, 2024);
  ExpectDmy(Split("29/02/2000"), 29, 2, 2000);
  EXPECT_FALSE(Split("29/02/2023").ok);
  EXPECT_FALSE(Split("29/02/1900").ok);
}

TEST(DateSplit, TextWithoutAValidDayFailsAndGivesZeros) {
  for (const char* z : {"31/02/2026", "0/1/2026", "1/13/2026", "abc", "1/2", "1/2/3/4", "23 Foo 2026", "",
                        "23 Nov Dec"}) {
    Dmy r = Split(z);
    EXPECT_FALSE(r.ok) << z;
    EXPECT_EQ(r.d, 0) << z;
    EXPECT_EQ(r.m, 0) << z;
    EXPECT_EQ(r.y, 0) << z;
  }
}

TEST(DateMonths, MonthNamesInFull) {
  EXPECT_EQ(DateTools::MonthName(1), "January");
  EXPECT_EQ(DateTools::MonthName(9), "September");
  EXPECT_EQ(DateTools::MonthName(12), "December");
  EXPECT_EQ(DateTools::MonthName(0), "");
  EXPECT_EQ(DateTools::MonthName(13), "");
}

TEST(DateMonths, MonthFromFullOrThreeLetterNameInAnyCase) {
  EXPECT_EQ(DateTools::MonthFromName("November"), 11);
  EXPECT_EQ(DateTools::MonthFromName("nov"), 11);
  EXPECT_EQ(DateTools::MonthFromName("DEC"), 12);
  EXPECT_EQ(DateTools::MonthFromName("may"), 5);
  EXPECT_EQ(DateTools::MonthFromName("Sept"), 0);
  EXPECT_EQ(DateTools::MonthFromName("No"), 0);
  EXPECT_EQ(DateTools::MonthFromName(""), 0);
}

TEST(DateText, DayMonthNameYearJoinedByBlanks) {
  EXPECT_EQ(DateTools::DayMonthYearText(23, 11, 2026), "23 November 2026");
  EXPECT_EQ(DateTools::DayMonthYearText(5, 1, 2024), "5 January 2024");
  EXPECT_EQ(DateTools::DayMonthYearText(Date::FromYMD(2026, 11, 23)), "23 November 2026");
}

TEST(DateText, TodaysTextSplitsBackUnderTheDateFormat) {
  Date today = Date::Today();
  int32_t y = 0, m = 0, d = 0;
  today.ToYMD(y, m, d);
  ExpectDmy(Split(DateTools::DayMonthYearText(today)), d, m, y);
}

TEST(DateText, FormatWritesTwoDigitDayAndMonth) {
  EXPECT_EQ(DateTools::FormatDate(5, 1, 2024, "dd/mm/yyyy"), "05/01/2024");
  EXPECT_EQ(DateTools::FormatDate(23, 11, 2026, "yyyy-mm-dd"), "2026-11-23");
  EXPECT_EQ(DateTools::FormatDate(23, 11, 2026, "DD/MM/YYYY"), "23/11/2026");
}

TEST(DateText, NormaliseRewritesUnderTheFormat) {
  EXPECT_EQ(DateTools::NormaliseDate("23 November 2026", "dd/mm/yyyy"), "23/11/2026");
  EXPECT_EQ(DateTools::NormaliseDate("5/1/2024", "dd/mm/yyyy"), "05/01/2024");
  EXPECT_EQ(DateTools::NormaliseDate("23/11/2026", "dd/mm/yyyy"), "23/11/2026");
}

TEST(DateText, NormaliseLeavesATextItCannotSplit) {
  EXPECT_EQ(DateTools::NormaliseDate("not a date", "dd/mm/yyyy"), "not a date");
  EXPECT_EQ(DateTools::NormaliseDate("", "dd/mm/yyyy"), "");
  EXPECT_EQ(DateTools::NormaliseDate("31/02/2026", "dd/mm/yyyy"), "31/02/2026");
}

TEST(DateValid, DaysOfEachMonth) {
  EXPECT_TRUE(DateTools::IsValidDay(31, 1, 2026));
  EXPECT_FALSE(DateTools::IsValidDay(31, 4, 2026));
  EXPECT_TRUE(DateTools::IsValidDay(30, 4, 2026));
  EXPECT_FALSE(DateTools::IsValidDay(1, 0, 2026));
  EXPECT_FALSE(DateTools::IsValidDay(0, 1, 2026));
}
