// ByteTools: texts into fixed byte positions and back.
#pragma once

#include <cstdint>
#include <string>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"

namespace vndata {

class VNDATA_API ByteTools {
 public:
  // Writes zText into iWidth bytes at dst, cut to the width and padded with
  // bPad.
  static void PutText(uint8_t* dst, int32_t iWidth, const std::string& zText, uint8_t bPad = ' ');
  // Writes zText into b(iPos..iPos+iWidth-1) (1-based positions of b).
  static void PutText(Array<uint8_t>& b, int32_t iPos, int32_t iWidth, const std::string& zText,
                      uint8_t bPad = ' ');
  // The iWidth bytes at src as text, as they stand.
  static std::string GetText(const uint8_t* src, int32_t iWidth);
  static std::string GetText(const Array<uint8_t>& b, int32_t iPos, int32_t iWidth);
  // The same, ending at the first NUL and losing trailing blanks.
  static std::string GetTrimmedText(const uint8_t* src, int32_t iWidth);
  // A whole byte array as text.
  static std::string ToText(const Array<uint8_t>& b);
  // A text as a 1-based byte array (unallocated for the empty text).
  static Array<uint8_t> FromText(const std::string& zText);
};

}  // namespace vndata
