#include "vndata/platform/record_layout.h"
#include "vndata/platform/internal/record_bytes.h"

#if defined(__x86_64__)
#include <immintrin.h>
#define VNDATA_X86_64 1
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

// The byte order of bulk data is reversed with vector shuffles: a scalar
// loop is not vectorised at -O2 and would make the swap cost as much as the
// file transfer itself. On x86-64 the AVX2 byte shuffle is used where the
// processor has it (chosen once, at run time), else SSE2 word shuffles,
// which every x86-64 has. The tail goes value by value.

void Swap32Scalar(uint8_t* dst, const uint8_t* src, std::size_t i, std::size_t count) {
  for (; i < count; ++i) {
    uint32_t v;
    std::memcpy(&v, src + i * 4, 4);
    v = __builtin_bswap32(v);
    std::memcpy(dst + i * 4, &v, 4);
  }
}

void Swap64Scalar(uint8_t* dst, const uint8_t* src, std::size_t i, std::size_t count) {
  for (; i < count; ++i) {
    uint64_t v;
    std::memcpy(&v, src + i * 8, 8);
    v = __builtin_bswap64(v);
    std::memcpy(dst + i * 8, &v, 8);
  }
}

#if defined(VNDATA_X86_64)
// Reverses the bytes of each `width`-byte value in nBytes (a multiple of
// 32) with the AVX2 byte shuffle.
__attribute__((target("avx2"))) void ShuffleAvx2(uint8_t* dst, const uint8_t* src,
                                                 std::size_t nBytes, int32_t width) {
  const __m256i mask = width == 4
                           ? _mm256_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12,
                                              3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12)
                           : _mm256_setr_epi8(7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8,
                                              7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8);
  for (std::size_t i = 0; i < nBytes; i += 32) {
    __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + i));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + i), _mm256_shuffle_epi8(v, mask));
  }
}

// The same with SSE2: swap the bytes of each 16-bit word, then the words.
void ShuffleSse2(uint8_t* dst, const uint8_t* src, std::size_t nBytes, int32_t width) {
  for (std::size_t i = 0; i < nBytes; i += 16) {
    __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i));
    v = _mm_or_si128(_mm_slli_epi16(v, 8), _mm_srli_epi16(v, 8));
    if (width == 4) {
      v = _mm_shufflelo_epi16(v, _MM_SHUFFLE(2, 3, 0, 1));
      v = _mm_shufflehi_epi16(v, _MM_SHUFFLE(2, 3, 0, 1));
    } else {
      v = _mm_shufflelo_epi16(v, _MM_SHUFFLE(0, 1, 2, 3));
      v = _mm_shufflehi_epi16(v, _MM_SHUFFLE(0, 1, 2, 3));
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i), v);
  }
}

bool HasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
}
#endif

SwapPath gPath = SwapPath::Best;

// Reverses count values of width 4 or 8; returns how many it did with
// vector instructions (the rest is the caller's tail).
std::size_t SwapVector(uint8_t* dst, const uint8_t* src, std::size_t count, int32_t width) {
  if (gPath == SwapPath::Scalar) return 0;
#if defined(VNDATA_X86_64)
  std::size_t bytes = count * static_cast<std::size_t>(width);
  if (gPath == SwapPath::Best && HasAvx2()) {
    std::size_t whole = bytes / 32 * 32;
    ShuffleAvx2(dst, src, whole, width);
    return whole / static_cast<std::size_t>(width);
  }
  std::size_t whole = bytes / 16 * 16;
  ShuffleSse2(dst, src, whole, width);
  return whole / static_cast<std::size_t>(width);
#else
  (void)dst;
  (void)src;
  (void)count;
  (void)width;
  return 0;
#endif
}

void Swap32(uint8_t* dst, const uint8_t* src, std::size_t count) {
  Swap32Scalar(dst, src, SwapVector(dst, src, count, 4), count);
}

void Swap64(uint8_t* dst, const uint8_t* src, std::size_t count) {
  Swap64Scalar(dst, src, SwapVector(dst, src, count, 8), count);
}

}  // namespace

void SetSwapPathForTesting(SwapPath path) { gPath = path; }

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
