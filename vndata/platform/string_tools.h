// StringTools: comparing, splitting and joining texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"

namespace vndata {

class VNDATA_API StringTools {
 public:
  // True when the texts are equal; without qCaseSensitive, ASCII letters
  // compare without regard to case.
  static bool Equal(std::string_view a, std::string_view b, bool qCaseSensitive);
  // Three-way compare (<0, 0, >0) with the same case rule.
  static int32_t Compare(std::string_view a, std::string_view b, bool qCaseSensitive);

  static std::string Upper(std::string_view s);
  static std::string Lower(std::string_view s);
  // Blanks removed from both ends / the end / the start.
  static std::string Trim(std::string_view s);
  static std::string TrimRight(std::string_view s);
  static std::string TrimLeft(std::string_view s);

  // Splits zText at every zDelimiter into a 1-based array. An empty text gives
  // count 0. Returns qOK (false only for an empty delimiter).
  static bool Split(const std::string& zText, const std::string& zDelimiter,
                    Array<std::string>& zTokens, int32_t& nTokens);
  // Splits at the first zDelimiter into the text before and the text after;
  // with no delimiter the whole text is "before" and false is returned.
  static bool SplitInTwo(const std::string& zText, const std::string& zDelimiter,
                         std::string& zBefore, std::string& zAfter);
  // Joins elements lo..lo+nCount-1 (all when nCount < 0) with zDelimiter.
  static std::string Join(const Array<std::string>& zTokens, const std::string& zDelimiter,
                          int32_t nCount = -1);
  // Joins two keys as one `\` path: either alone when the other is empty.
  // With qUpper the result is upper-cased.
  static std::string KeyJoin(const std::string& zFirst, const std::string& zSecond, bool qUpper);
};

}  // namespace vndata
