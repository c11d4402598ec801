// Constants and byte helpers of the record layout (described in full at the
// top of record_codec.h): the record types, their widths on disk, the header
// sizes and the big-endian conversions.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include "vndata/platform/api.h"

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
VNDATA_API const char* RecordTypeName(RecordType type);
// The type named by exactly these 4 characters (case-sensitive); None for
// any other text.
VNDATA_API RecordType ParseRecordType(const std::string& zType);
// Bytes of one value on disk: 4, 4, 8, 4, 1 for INTE, REAL, DOUB, LOGI, BYTE;
// CHAR gives 8 (its simulator width; a store-format text has its own length);
// MESS and None give 0.
VNDATA_API int32_t RecordValueWidth(RecordType type);
}  // namespace vndata
