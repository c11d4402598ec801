// Constants and byte helpers of the record layout (described in full at the
// top of record_codec.h): the record types, their widths on disk, the header
// sizes and the big-endian conversions.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace vndata {

// The payload type named by the 4 characters of a record header.
enum class RecordType : int32_t {
  None = 0,  // no record, or a type text that is not one of the seven
  Inte,      // "INTE": 32-bit signed integers
  Real,      // "REAL": IEEE 32-bit floats
  Doub,      // "DOUB": IEEE 64-bit floats
  Logi,      // "LOGI": 32-bit integers, true -1 (any non-zero reads as true), false 0
  Char,      // "CHAR": texts
  Byte,      // "BYTE": raw bytes
  Mess,      // "MESS": a bare marker, count 0, no payload
};

// Header geometry. A reader tells the two header kinds apart by the length
// of the header's physical record.
inline constexpr int32_t kStoreKeywordWidth = 16;
inline constexpr int32_t kSimulatorKeywordWidth = 8;
inline constexpr int32_t kStoreHeaderBytes = kStoreKeywordWidth + 8;          // 24
inline constexpr int32_t kSimulatorHeaderBytes = kSimulatorKeywordWidth + 8;  // 16
// Block sizes of the simulator files: numbers, and 8-character names.
inline constexpr int32_t kSimulatorNumberBlock = 1000;
inline constexpr int32_t kSimulatorNameBlock = 105;
inline constexpr int32_t kSimulatorNameWidth = 8;
// The largest byte count one physical record can declare.
inline constexpr int64_t kMaxPhysicalBytes = 0x7FFFFFFF;

// "INTE" ... "MESS" for a type; "" for None.
const char* RecordTypeName(RecordType type);
// The type named by exactly these 4 characters (case-sensitive); None for
// any other text.
RecordType ParseRecordType(const std::string& zType);
// Bytes of one value on disk: 4, 4, 8, 4, 1 for INTE, REAL, DOUB, LOGI, BYTE;
// CHAR gives 8 (its simulator width; a store-format text has its own length);
// MESS and None give 0.
int32_t RecordValueWidth(RecordType type);

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
