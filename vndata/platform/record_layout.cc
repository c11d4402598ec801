#include "vndata/platform/record_layout.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vndata {

const char* RecordTypeName(RecordType type) {
  switch (type) {
    case RecordType::Inte: return "INTE";
    case RecordType::Real: return "REAL";
    case RecordType::Doub: return "DOUB";
    case RecordType::Logi: return "LOGI";
    case RecordType::Char: return "CHAR";
    case RecordType::Byte: return "BYTE";
    case RecordType::Mess: return "MESS";
    case RecordType::None: break;
  }
  return "";
}

RecordType ParseRecordType(const std::string& zType) {
  if (zType.size() != 4) return RecordType::None;
  static constexpr RecordType kAll[] = {RecordType::Inte, RecordType::Real, RecordType::Doub,
                                        RecordType::Logi, RecordType::Char, RecordType::Byte,
                                        RecordType::Mess};
  for (RecordType t : kAll) {
    if (std::memcmp(zType.data(), RecordTypeName(t), 4) == 0) return t;
  }
  return RecordType::None;
}

int32_t RecordValueWidth(RecordType type) {
  switch (type) {
    case RecordType::Inte:
    case RecordType::Real:
    case RecordType::Logi: return 4;
    case RecordType::Doub: return 8;
    case RecordType::Char: return kSimulatorNameWidth;
    case RecordType::Byte: return 1;
    case RecordType::Mess:
    case RecordType::None: break;
  }
  return 0;
}

namespace record_bytes {
namespace {

// Whole groups of 16 bytes go through SSE2 shuffles where the host has
// them (every x86-64 does): a scalar loop is not vectorised at -O2 and would
// make the swap cost as much as the file write. The tail goes value by value.
#if defined(__SSE2__)
inline __m128i SwapBytesOfWords(__m128i v) {
  return _mm_or_si128(_mm_slli_epi16(v, 8), _mm_srli_epi16(v, 8));
}
#endif

void Swap32(uint8_t* dst, const uint8_t* src, std::size_t count) {
  std::size_t i = 0;
#if defined(__SSE2__)
  for (; i + 4 <= count; i += 4) {
    __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i * 4));
    v = SwapBytesOfWords(v);
    v = _mm_shufflelo_epi16(v, _MM_SHUFFLE(2, 3, 0, 1));
    v = _mm_shufflehi_epi16(v, _MM_SHUFFLE(2, 3, 0, 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i * 4), v);
  }
#endif
  for (; i < count; ++i) {
    uint32_t v;
    std::memcpy(&v, src + i * 4, 4);
    v = __builtin_bswap32(v);
    std::memcpy(dst + i * 4, &v, 4);
  }
}

void Swap64(uint8_t* dst, const uint8_t* src, std::size_t count) {
  std::size_t i = 0;
#if defined(__SSE2__)
  for (; i + 2 <= count; i += 2) {
    __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i * 8));
    v = SwapBytesOfWords(v);
    v = _mm_shufflelo_epi16(v, _MM_SHUFFLE(0, 1, 2, 3));
    v = _mm_shufflehi_epi16(v, _MM_SHUFFLE(0, 1, 2, 3));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i * 8), v);
  }
#endif
  for (; i < count; ++i) {
    uint64_t v;
    std::memcpy(&v, src + i * 8, 8);
    v = __builtin_bswap64(v);
    std::memcpy(dst + i * 8, &v, 8);
  }
}

}  // namespace

void SwapInPlace(void* data, std::size_t count, int32_t width) {
  if (!kSwapNeeded || count == 0) return;
  auto* p = static_cast<uint8_t*>(data);
  if (width == 4) Swap32(p, p, count);
  if (width == 8) Swap64(p, p, count);
}

void CopySwapped(void* dst, const void* src, std::size_t count, int32_t width) {
  if (count == 0) return;
  auto* d = static_cast<uint8_t*>(dst);
  const auto* s = static_cast<const uint8_t*>(src);
  if (!kSwapNeeded || (width != 4 && width != 8)) {
    std::memcpy(d, s, count * static_cast<std::size_t>(width));
  } else if (width == 4) {
    Swap32(d, s, count);
  } else {
    Swap64(d, s, count);
  }
}

}  // namespace record_bytes
}  // namespace vndata
