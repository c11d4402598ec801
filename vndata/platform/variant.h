// Variant: the automation platform's variant value.
//
// Holds empty, null, 16- and 32-bit integers, float, double, bool, string,
// date, or an array (of variants or of numbers). Conversions follow the
// platform: to an integer with rounding half to even, fault 6 beyond the
// target's range, fault 13 for a text that is not a number, fault 94 for
// null; to text in the platform's default form (see ToText).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/date.h"

namespace vndata {

class Variant;

enum class VarType : int32_t {
  Empty = 0,
  Null = 1,
  Integer = 2,  // 16-bit
  Long = 3,     // 32-bit
  Single = 4,
  Double = 5,
  Date = 7,
  String = 8,
  Boolean = 11,
  VariantArray = 8204,  // array flag 8192 | variant 12
  SingleArray = 8196,
  DoubleArray = 8197,
  LongArray = 8195,
  IntegerArray = 8194,
  StringArray = 8200,
  ByteArray = 8209,
};

struct NullValue {};

class VNDATA_API Variant {
 public:
  using VariantArray = Array<Variant>;

  Variant() = default;
  static Variant Null();
  Variant(int16_t v) : v_(v) {}
  Variant(int32_t v) : v_(v) {}
  Variant(float v) : v_(v) {}
  Variant(double v) : v_(v) {}
  Variant(bool v) : v_(v) {}
  Variant(const char* v) : v_(std::string(v)) {}
  Variant(std::string v) : v_(std::move(v)) {}
  Variant(Date v) : v_(v) {}
  Variant(Array<Variant> v) : v_(std::make_shared<Array<Variant>>(std::move(v))) {}
  Variant(Array<float> v) : v_(std::make_shared<Array<float>>(std::move(v))) {}
  Variant(Array<double> v) : v_(std::make_shared<Array<double>>(std::move(v))) {}
  Variant(Array<int32_t> v) : v_(std::make_shared<Array<int32_t>>(std::move(v))) {}
  Variant(Array<int16_t> v) : v_(std::make_shared<Array<int16_t>>(std::move(v))) {}
  Variant(Array<std::string> v) : v_(std::make_shared<Array<std::string>>(std::move(v))) {}
  Variant(Array<uint8_t> v) : v_(std::make_shared<Array<uint8_t>>(std::move(v))) {}

  VarType Type() const;
  bool IsEmpty() const { return v_.index() == 0; }
  bool IsNull() const { return v_.index() == 1; }
  bool IsString() const { return std::holds_alternative<std::string>(v_); }
  bool IsArray() const { return static_cast<int32_t>(Type()) >= 8192; }
  // True for numbers, Booleans, empty and texts that read as numbers; false
  // for a date, as on the platform.
  bool IsNumeric() const;

  int16_t ToInteger() const;  // CInt
  int32_t ToLong() const;     // CLng
  float ToSingle() const;     // CSng
  double ToDouble() const;    // CDbl
  bool ToBool() const;        // CBool
  Date ToDate() const;        // CDate
  // CStr: empty gives ""; null is fault 94; a date gives DateText.
  std::string ToText() const;

  // The array held, or nullptr when the variant holds another type.
  template <class T>
  const Array<T>* GetArray() const {
    auto p = std::get_if<std::shared_ptr<Array<T>>>(&v_);
    return p ? p->get() : nullptr;
  }

 private:
  using Storage =
      std::variant<std::monostate, NullValue, int16_t, int32_t, float, double, bool, std::string, Date,
                   std::shared_ptr<Array<Variant>>, std::shared_ptr<Array<float>>,
                   std::shared_ptr<Array<double>>, std::shared_ptr<Array<int32_t>>,
                   std::shared_ptr<Array<int16_t>>, std::shared_ptr<Array<std::string>>,
                   std::shared_ptr<Array<uint8_t>>>;
  Storage v_;
};

// The platform's default text of numbers and Booleans.
VNDATA_API std::string SingleText(
    float v);  // at most 7 significant digits: "0.1", "1E+07", "1.5E-05"
VNDATA_API std::string DoubleText(double v);  // at most 15 significant digits
VNDATA_API std::string BoolText(bool v);      // "True" / "False"
// A date in the library's date format with the time of day behind it when
// there is one: "23/11/2026", "23/11/2026 06:00:00"; day 0 gives the time
// alone ("12:00:00").
VNDATA_API std::string DateText(Date v);

// Reads a text as a number the way the platform does (leading and trailing
// blanks allowed); false when it is not a number.
VNDATA_API bool ParseNumber(const std::string& zText, double& dValue);

// Rounds half to even and range-checks (fault 6) into the integer types.
VNDATA_API int16_t RoundToInteger(double v);
VNDATA_API int32_t RoundToLong(double v);

}  // namespace vndata
