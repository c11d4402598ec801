#include "vndata/platform/variant.h"

#include <gtest/gtest.h>

#include <functional>

using namespace vndata;

namespace {
// The fault number raised by f, or 0 when it completes.
int32_t FaultOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const RuntimeFault& fault) {
    return fault.Number();
  }
  return 0;
}
}  // namespace

TEST(VariantRounding, HalfGoesToEvenFor16BitConversion) {
  EXPECT_EQ(Variant(2.5).ToInteger(), 2);
  EXPECT_EQ(Variant(3.5).ToInteger(), 4);
  EXPECT_EQ(Variant(0.5).ToInteger(), 0);
  EXPECT_EQ(Variant(1.5).ToInteger(), 2);
  EXPECT_EQ(Variant(-2.5).ToInteger(), -2);
  EXPECT_EQ(Variant(-3.5).ToInteger(), -4);
  EXPECT_EQ(Variant(2.4999).ToInteger(), 2);
  EXPECT_EQ(Variant(2.5001).ToInteger(), 3);
}

TEST(VariantRounding, HalfGoesToEvenFor32BitConversion) {
  EXPECT_EQ(Variant(2.5).ToLong(), 2);
  EXPECT_EQ(Variant(3.5).ToLong(), 4);
  EXPECT_EQ(Variant(2.5f).ToLong(), 2);
  EXPECT_EQ(Variant(3.5f).ToLong(), 4);
  EXPECT_EQ(Variant(-0.5).ToLong(), 0);
  EXPECT_EQ(Variant(100000.5).ToLong(), 100000);
  EXPECT_EQ(Variant(100001.5).ToLong(), 100002);
}

TEST(VariantRounding, NumericTextRoundsHalfToEvenToo) {
  EXPECT_EQ(Variant("2.5").ToInteger(), 2);
  EXPECT_EQ(Variant("3.5").ToLong(), 4);
  EXPECT_EQ(Variant(" 7 ").ToLong(), 7);
}

TEST(VariantRounding, FreeRoundingHelpersAgree) {
  EXPECT_EQ(RoundToInteger(2.5), 2);
  EXPECT_EQ(RoundToInteger(3.5), 4);
  EXPECT_EQ(RoundToLong(2.5), 2);
  EXPECT_EQ(RoundToLong(3.5), 4);
}

TEST(VariantFaults, NonNumericTextIsTypeMismatch13) {
  EXPECT_EQ(FaultOf([] { (void)Variant("abc").ToInteger(); }), 13);
  EXPECT_EQ(FaultOf([] { (void)Variant("abc").ToLong(); }), 13);
  EXPECT_EQ(FaultOf([] { (void)Variant("abc").ToDouble(); }), 13);
  EXPECT_EQ(FaultOf([] { (void)Variant("45 Help").ToSingle(); }), 13);
  EXPECT_EQ(FaultOf([] { (void)Variant("").ToLong(); }), 13);
  EXPECT_EQ(FaultOf([] { (void)Variant("abc").ToBool(); }), 13);
  try {
    (void)Variant("x").ToLong();
  } catch (const RuntimeFault& f) {
    EXPECT_EQ(f.Description(), "Type mismatch");
  }
}

TEST(VariantFaults, ValueBeyond16BitsIsOverflow6) {
  EXPECT_EQ(FaultOf([] { (void)Variant(int32_t{40000}).ToInteger(); }), 6);
  EXPECT_EQ(FaultOf([] { (void)Variant(32767.5).ToInteger(); }), 6);
  EXPECT_EQ(FaultOf([] { (void)Variant(-32769.0).ToInteger(); }), 6);
  EXPECT_EQ(FaultOf([] { (void)Variant("40000").ToInteger(); }), 6);
  EXPECT_EQ(Variant(32767.4).ToInteger(), 32767);
  EXPECT_EQ(Variant(-32768.0).ToInteger(), -32768);
  try {
    (void)Variant(int32_t{40000}).ToInteger();
  } catch (const RuntimeFault& f) {
    EXPECT_EQ(f.Description(), "Overflow");
  }
}

TEST(VariantFaults, ValueBeyond32BitsIsOverflow6) {
  EXPECT_EQ(FaultOf([] { (void)Variant(3e9).ToLong(); }), 6);
  EXPECT_EQ(FaultOf([] { (void)Variant(1e39).ToSingle(); }), 6);
  EXPECT_EQ(Variant(2147483647.0).ToLong(), 2147483647);
}

TEST(VariantFaults, NullIsInvalidUseOfNull94) {
  const Variant v = Variant::Null();
  EXPECT_EQ(FaultOf([&] { (void)v.ToInteger(); }), 94);
  EXPECT_EQ(FaultOf([&] { (void)v.ToLong(); }), 94);
  EXPECT_EQ(FaultOf([&] { (void)v.ToDouble(); }), 94);
  EXPECT_EQ(FaultOf([&] { (void)v.ToText(); }), 94);
  try {
    (void)v.ToLong();
  } catch (const RuntimeFault& f) {
    EXPECT_EQ(f.Description(), "Invalid use of Null");
  }
}

TEST(VariantFaults, ArrayHasNoScalarValue) {
  Variant v(Array<float>{1.f, 2.f});
  EXPECT_EQ(FaultOf([&] { (void)v.ToText(); }), 13);
  EXPECT_EQ(FaultOf([&] { (void)v.ToLong(); }), 13);
}

TEST(VariantText, SingleUsesExponentFormOutsidePlainRange) {
  EXPECT_EQ(Variant(1e7f).ToText(), "1E+07");
  EXPECT_EQ(Variant(1.5e-5f).ToText(), "1.5E-05");
  EXPECT_EQ(Variant(0.1f).ToText(), "0.1");
  EXPECT_EQ(SingleText(1e7f), "1E+07");
  EXPECT_EQ(SingleText(1.5e-5f), "1.5E-05");
  EXPECT_EQ(SingleText(0.1f), "0.1");
  EXPECT_EQ(SingleText(0.0001f), "0.0001");
  EXPECT_EQ(SingleText(-999.f), "-999");
  EXPECT_EQ(SingleText(0.f), "0");
}

TEST(VariantText, SingleHasAtMostSevenSignificantDigits) {
  EXPECT_EQ(SingleText(1234567.f), "1234567");
  EXPECT_EQ(SingleText(12345678.f), "1.234568E+07");
  EXPECT_EQ(SingleText(1.f / 3.f), "0.3333333");
  EXPECT_EQ(SingleText(2.5f), "2.5");
}

TEST(VariantText, DoubleHasAtMostFifteenSignificantDigits) {
  EXPECT_EQ(Variant(0.1).ToText(), "0.1");
  EXPECT_EQ(DoubleText(1.0 / 3.0), "0.333333333333333");
  EXPECT_EQ(DoubleText(123456789012345.0), "123456789012345");
  EXPECT_EQ(DoubleText(1e15), "1E+15");
  EXPECT_EQ(DoubleText(1.5e-5), "1.5E-05");
  EXPECT_EQ(DoubleText(-999.0), "-999");
  EXPECT_EQ(DoubleText(-0.0), "0");
}

TEST(VariantText, BooleansAreTrueAndFalse) {
  EXPECT_EQ(Variant(true).ToText(), "True");
  EXPECT_EQ(Variant(false).ToText(), "False");
  EXPECT_EQ(BoolText(true), "True");
  EXPECT_EQ(BoolText(false), "False");
}

TEST(VariantText, IntegersInDecimalAndEmptyAsEmptyText) {
  EXPECT_EQ(Variant(int16_t{-5}).ToText(), "-5");
  EXPECT_EQ(Variant(int32_t{123456}).ToText(), "123456");
  EXPECT_EQ(Variant(int32_t{-1}).ToText(), "-1");
  EXPECT_EQ(Variant().ToText(), "");
  EXPECT_EQ(Variant("as is ").ToText(), "as is ");
}

TEST(VariantText, DateIsDayMonthYearWithTimeWhenThereIsOne) {
  EXPECT_EQ(Variant(Date::FromYMD(2026, 11, 23)).ToText(), "23/11/2026");
  EXPECT_EQ(Variant(Date(Date::FromYMD(2000, 1, 5).Days() + 0.25)).ToText(), "05/01/2000 06:00:00");
  EXPECT_EQ(DateText(Date(0.5)), "12:00:00");
  EXPECT_EQ(DateText(Date(0.0)), "00:00:00");
  EXPECT_EQ(DateText(Date(-1.5)), "29/12/1899 12:00:00");
}

TEST(VariantConversions, BooleansAreMinusOneAndZero) {
  EXPECT_EQ(Variant(true).ToInteger(), -1);
  EXPECT_EQ(Variant(false).ToLong(), 0);
  EXPECT_EQ(Variant(true).ToDouble(), -1.0);
  EXPECT_TRUE(Variant("True").ToBool());
  EXPECT_FALSE(Variant("false").ToBool());
  EXPECT_TRUE(Variant(int32_t{-1}).ToBool());
  EXPECT_TRUE(Variant("2").ToBool());
  EXPECT_FALSE(Variant(0.0).ToBool());
}

TEST(VariantConversions, EmptyReadsAsZero) {
  EXPECT_EQ(Variant().ToLong(), 0);
  EXPECT_EQ(Variant().ToDouble(), 0.0);
  EXPECT_FALSE(Variant().ToBool());
}

TEST(VariantConversions, DateAndNumberConvertBothWays) {
  EXPECT_EQ(Variant(Date::FromYMD(2000, 1, 1)).ToDouble(), 36526.0);
  EXPECT_EQ(Variant(36526.0).ToDate(), Date::FromYMD(2000, 1, 1));
  EXPECT_EQ(Variant(int32_t{2}).ToDate(), Date::FromYMD(1900, 1, 1));
}

TEST(VariantIsNumeric, NumbersBooleansEmptyAndNumericTexts) {
  EXPECT_TRUE(Variant(int16_t{1}).IsNumeric());
  EXPECT_TRUE(Variant(1.5f).IsNumeric());
  EXPECT_TRUE(Variant(true).IsNumeric());
  EXPECT_TRUE(Variant().IsNumeric());
  EXPECT_TRUE(Variant("459.95").IsNumeric());
  EXPECT_TRUE(Variant(" -12 ").IsNumeric());
  EXPECT_TRUE(Variant("1.5E-05").IsNumeric());
}

TEST(VariantIsNumeric, OtherTextsNullDatesAndArraysAreNot) {
  EXPECT_FALSE(Variant("45 Help").IsNumeric());
  EXPECT_FALSE(Variant("").IsNumeric());
  EXPECT_FALSE(Variant("0x10").IsNumeric());
  EXPECT_FALSE(Variant("inf").IsNumeric());
  EXPECT_FALSE(Variant::Null().IsNumeric());
  EXPECT_FALSE(Variant(Date::FromYMD(2020, 1, 1)).IsNumeric());
  EXPECT_FALSE(Variant(Array<int32_t>{1}).IsNumeric());
}

TEST(VariantTypes, TypeCodesOfThePlatform) {
  EXPECT_EQ(Variant().Type(), VarType::Empty);
  EXPECT_EQ(Variant::Null().Type(), VarType::Null);
  EXPECT_EQ(Variant(int16_t{1}).Type(), VarType::Integer);
  EXPECT_EQ(Variant(int32_t{1}).Type(), VarType::Long);
  EXPECT_EQ(Variant(1.f).Type(), VarType::Single);
  EXPECT_EQ(Variant(1.0).Type(), VarType::Double);
  EXPECT_EQ(Variant(true).Type(), VarType::Boolean);
  EXPECT_EQ(Variant("x").Type(), VarType::String);
  EXPECT_EQ(Variant(Date(1.0)).Type(), VarType::Date);
  EXPECT_EQ(static_cast<int32_t>(VarType::String), 8);
  EXPECT_EQ(static_cast<int32_t>(VarType::Boolean), 11);
}

TEST(VariantArrays, HoldAndHandBackTheirArray) {
  Variant v(Array<float>{1.f, 2.f, 3.f});
  EXPECT_TRUE(v.IsArray());
  EXPECT_EQ(v.Type(), VarType::SingleArray);
  const Array<float>* a = v.GetArray<float>();
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->UBound(), 3);
  EXPECT_EQ((*a)(2), 2.f);
  EXPECT_EQ(v.GetArray<double>(), nullptr);

  Array<Variant> inner(1, 2);
  inner(1) = Variant("A");
  inner(2) = Variant(int32_t{7});
  Variant w(inner);
  EXPECT_EQ(w.Type(), VarType::VariantArray);
  ASSERT_NE(w.GetArray<Variant>(), nullptr);
  EXPECT_EQ((*w.GetArray<Variant>())(2).ToLong(), 7);
  EXPECT_FALSE(Variant("A").IsArray());
}
