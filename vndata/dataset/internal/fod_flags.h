// The fields of the flag word of a column read on demand. Internal: the
// data set's fetch files share them.
//
//   bits 0-2   the type of the values on disk (only handed to the reader)
//   bit 3      compressed: the record holds active cells only
//   bit 4      derived: the column is computed, not read
//   bits 5-7   the number of unit conversion factors
//   bit 8      a derived column's values are computed
//   bit 9      a column's values are converted
//   bit 15     compressed, second form (not seen by GetAllFODFlags)
//   bits 16-31 the rule of a derived column, or the first factor of a
//              converted one
#pragma once

#include <cstdint>

namespace vndata::fod {

inline constexpr int32_t kCompressed = 8;
inline constexpr int32_t kDerived = 16;
inline constexpr int32_t kDQLoaded = 256;
inline constexpr int32_t kConverted = 512;
inline constexpr int32_t kCompressed2 = 32768;

inline int32_t VarType(int32_t iFlags) { return iFlags & 7; }
inline bool Compressed(int32_t iFlags) { return (iFlags & kCompressed) != 0; }
inline bool CompressedEither(int32_t iFlags) { return (iFlags & (kCompressed | kCompressed2)) != 0; }
inline bool Derived(int32_t iFlags) { return (iFlags & kDerived) != 0; }
inline int32_t ConvPars(int32_t iFlags) { return (iFlags >> 5) & 7; }
inline bool DQLoaded(int32_t iFlags) { return (iFlags & kDQLoaded) != 0; }
inline bool Converted(int32_t iFlags) { return (iFlags & kConverted) != 0; }
// The high half as the 16-bit field it is (0 to 65535).
inline int32_t HighHalf(int32_t iFlags) {
  return static_cast<int32_t>(static_cast<uint32_t>(iFlags) >> 16);
}

}  // namespace vndata::fod
