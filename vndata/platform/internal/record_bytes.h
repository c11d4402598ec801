// Byte order helpers of the record layout: big-endian words and the bulk
// swaps that turn a payload around in one pass. Internal to the library.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace vndata {

namespace record_bytes {

inline constexpr bool kSwapNeeded = std::endian::native == std::endian::little;

inline void PutBigEndian32(uint8_t* dst, int32_t value) {
  uint32_t u = static_cast<uint32_t>(value);
  dst[0] = static_cast<uint8_t>(u >> 24);
  dst[1] = static_cast<uint8_t>(u >> 16);
  dst[2] = static_cast<uint8_t>(u >> 8);
  dst[3] = static_cast<uint8_t>(u);
}

inline int32_t GetBigEndian32(const uint8_t* src) {
  uint32_t u = (static_cast<uint32_t>(src[0]) << 24) | (static_cast<uint32_t>(src[1]) << 16) |
               (static_cast<uint32_t>(src[2]) << 8) | static_cast<uint32_t>(src[3]);
  return static_cast<int32_t>(u);
}

// Reverses the byte order of count values of width bytes (1, 4 or 8) in
// place; does nothing on a big-endian host or for width 1.
void SwapInPlace(void* data, std::size_t count, int32_t width);
// Copies count values of width bytes from src to dst with their byte order
// reversed (a plain copy on a big-endian host or for width 1).
void CopySwapped(void* dst, const void* src, std::size_t count, int32_t width);

// Which instructions the swaps use: the best the processor has (the
// default), or a fallback, so that tests reach every path on any machine.
enum class SwapPath : int32_t { Best = 0, Sse2, Scalar };
void SetSwapPathForTesting(SwapPath path);

}  // namespace record_bytes

}  // namespace vndata
