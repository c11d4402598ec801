#include "vndata/platform/variant.h"

#include <cerrno>
#include <cfenv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "vndata/platform/string_tools.h"

namespace vndata {

Variant Variant::Null() {
  Variant v;
  v.v_ = NullValue{};
  return v;
}

VarType Variant::Type() const {
  switch (v_.index()) {
    case 0: return VarType::Empty;
    case 1: return VarType::Null;
    case 2: return VarType::Integer;
    case 3: return VarType::Long;
    case 4: return VarType::Single;
    case 5: return VarType::Double;
    case 6: return VarType::Boolean;
    case 7: return VarType::String;
    case 8: return VarType::Date;
    case 9: return VarType::VariantArray;
    case 10: return VarType::SingleArray;
    case 11: return VarType::DoubleArray;
    case 12: return VarType::LongArray;
    case 13: return VarType::IntegerArray;
    case 14: return VarType::StringArray;
    default: return VarType::ByteArray;
  }
}

bool ParseNumber(const std::string& zText, double& dValue) {
  std::string t = StringTools::Trim(zText);
  if (t.empty()) return false;
  // The platform takes decimal numbers only: no hex floats, no inf or nan.
  for (char c : t) {
    bool ok = (c >= '0' && c <= '9') || c == '.' || c == '+' || c == '-' || c == 'e' || c == 'E';
    if (!ok) return false;
  }
  errno = 0;
  char* end = nullptr;
  double v = std::strtod(t.c_str(), &end);
  if (end != t.c_str() + t.size()) return false;
  if (errno == ERANGE && std::isinf(v)) RaiseFault(kFaultOverflow);
  dValue = v;
  return true;
}

static double RoundHalfEven(double v) {
  // nearbyint follows the current mode, which the library never changes
  // from round-to-nearest-even.
  return std::nearbyint(v);
}

int16_t RoundToInteger(double v) {
  double r = RoundHalfEven(v);
  if (!(r >= -32768.0 && r <= 32767.0)) RaiseFault(kFaultOverflow);
  return static_cast<int16_t>(r);
}

int32_t RoundToLong(double v) {
  double r = RoundHalfEven(v);
  if (!(r >= -2147483648.0 && r <= 2147483647.0)) RaiseFault(kFaultOverflow);
  return static_cast<int32_t>(r);
}

double Variant::ToDouble() const {
  switch (v_.index()) {
    case 0: return 0.0;
    case 1: RaiseFault(kFaultInvalidNull);
    case 2: return std::get<int16_t>(v_);
    case 3: return std::get<int32_t>(v_);
    case 4: return std::get<float>(v_);
    case 5: return std::get<double>(v_);
    case 6: return std::get<bool>(v_) ? -1.0 : 0.0;
    case 7: {
      double d = 0.0;
      if (!ParseNumber(std::get<std::string>(v_), d)) RaiseFault(kFaultTypeMismatch);
      return d;
    }
    case 8: return std::get<Date>(v_).Days();
    default: RaiseFault(kFaultTypeMismatch);
  }
}

int16_t Variant::ToInteger() const {
  if (auto p = std::get_if<int16_t>(&v_)) return *p;
  return RoundToInteger(ToDouble());
}

int32_t Variant::ToLong() const {
  if (auto p = std::get_if<int32_t>(&v_)) return *p;
  if (auto p = std::get_if<int16_t>(&v_)) return *p;
  return RoundToLong(ToDouble());
}

float Variant::ToSingle() const {
  double d = ToDouble();
  if (std::isfinite(d) && std::fabs(d) > std::numeric_limits<float>::max()) RaiseFault(kFaultOverflow);
  return static_cast<float>(d);
}

bool Variant::ToBool() const {
  if (auto p = std::get_if<bool>(&v_)) return *p;
  if (auto p = std::get_if<std::string>(&v_)) {
    if (StringTools::Equal(StringTools::Trim(*p), "True", false)) return true;
    if (StringTools::Equal(StringTools::Trim(*p), "False", false)) return false;
  }
  return ToDouble() != 0.0;
}

Date Variant::ToDate() const {
  if (auto p = std::get_if<Date>(&v_)) return *p;
  return Date(ToDouble());
}

bool Variant::IsNumeric() const {
  switch (v_.index()) {
    // A date is deliberately not numeric on the platform, although it
    // converts to a number.
    case 0: case 2: case 3: case 4: case 5: case 6: return true;
    case 7: {
      double d;
      try {
        return ParseNumber(std::get<std::string>(v_), d);
      } catch (const RuntimeFault&) {
        return true;  // a number too large for a double is still a number
      }
    }
    default: return false;
  }
}

std::string SingleText(float v) {
  if (v == 0.0f) return "0";
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.7G", static_cast<double>(v));
  return buf;
}

std::string DoubleText(double v) {
  if (v == 0.0) return "0";
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.15G", v);
  return buf;
}

std::string BoolText(bool v) { return v ? "True" : "False"; }

std::string DateText(Date v) {
  // The whole days name the calendar day, the fraction (of either sign) the
  // time of day; day 0 is shown as a time alone and midnight as a date alone.
  const double days = v.Days();
  const double whole = std::trunc(days);
  int64_t seconds = std::llround(std::fabs(days - whole) * 86400.0);
  if (seconds > 86399) seconds = 86399;
  char buf[32];
  std::string out;
  if (whole != 0.0) {
    int32_t y = 0, m = 0, d = 0;
    v.ToYMD(y, m, d);
    std::snprintf(buf, sizeof buf, "%02d/%02d/%04d", d, m, y);
    out = buf;
  }
  if (seconds != 0 || whole == 0.0) {
    std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", static_cast<int>(seconds / 3600),
                  static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    if (!out.empty()) out += ' ';
    out += buf;
  }
  return out;
}

std::string Variant::ToText() const {
  switch (v_.index()) {
    case 0: return std::string();
    case 1: RaiseFault(kFaultInvalidNull);
    case 2: return std::to_string(std::get<int16_t>(v_));
    case 3: return std::to_string(std::get<int32_t>(v_));
    case 4: return SingleText(std::get<float>(v_));
    case 5: return DoubleText(std::get<double>(v_));
    case 6: return BoolText(std::get<bool>(v_));
    case 7: return std::get<std::string>(v_);
    case 8: return DateText(std::get<Date>(v_));
    default: RaiseFault(kFaultTypeMismatch);
  }
}

}  // namespace vndata
