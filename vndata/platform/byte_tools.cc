#include "vndata/platform/byte_tools.h"

#include <algorithm>
#include <cstring>

namespace vndata {

void ByteTools::PutText(uint8_t* dst, int32_t iWidth, const std::string& zText, uint8_t bPad) {
  if (iWidth < 1) return;
  std::size_t n = std::min<std::size_t>(zText.size(), static_cast<std::size_t>(iWidth));
  if (n > 0) std::memcpy(dst, zText.data(), n);
  std::memset(dst + n, bPad, static_cast<std::size_t>(iWidth) - n);
}

void ByteTools::PutText(Array<uint8_t>& b, int32_t iPos, int32_t iWidth, const std::string& zText,
                        uint8_t bPad) {
  if (iWidth < 1) return;
  (void)b(iPos + iWidth - 1);  // fault 9 when the field runs past the array
  PutText(&b(iPos), iWidth, zText, bPad);
}

std::string ByteTools::GetText(const uint8_t* src, int32_t iWidth) {
  if (iWidth < 1) return std::string();
  return std::string(reinterpret_cast<const char*>(src), static_cast<std::size_t>(iWidth));
}

std::string ByteTools::GetText(const Array<uint8_t>& b, int32_t iPos, int32_t iWidth) {
  if (iWidth < 1) return std::string();
  (void)b(iPos + iWidth - 1);
  return GetText(&b(iPos), iWidth);
}

std::string ByteTools::GetTrimmedText(const uint8_t* src, int32_t iWidth) {
  std::size_t n = 0;
  while (n < static_cast<std::size_t>(std::max(iWidth, 0)) && src[n] != 0) ++n;
  while (n > 0 && src[n - 1] == ' ') --n;
  return std::string(reinterpret_cast<const char*>(src), n);
}

std::string ByteTools::ToText(const Array<uint8_t>& b) {
  if (!b.IsAllocated()) return std::string();
  return std::string(reinterpret_cast<const char*>(b.data()), b.size());
}

Array<uint8_t> ByteTools::FromText(const std::string& zText) {
  Array<uint8_t> b;
  if (zText.empty()) return b;
  b.ReDim(1, static_cast<int32_t>(zText.size()));
  std::memcpy(b.data(), zText.data(), zText.size());
  return b;
}

}  // namespace vndata
