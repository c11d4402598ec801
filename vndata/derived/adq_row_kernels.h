// Row-range kernels behind mxAutomaticDQ: the per-row arithmetic of the
// rules that cannot fault, on raw columns, over rows [b, e) (0-based).
//
// The loops run four lanes at a time through the compiler's vector types;
// each lane performs exactly the scalar sequence of operations, each one
// rounded to 32 bits, so a vector and a scalar pass give the same bits.
// Internal to the derived quantity code.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vndata::adq {

using V4 = float __attribute__((vector_size(16)));
using V4i = int32_t __attribute__((vector_size(16)));

inline V4 Load(const float* p) {
  V4 v;
  std::memcpy(&v, p, sizeof v);
  return v;
}
inline void Store(float* p, V4 v) { std::memcpy(p, &v, sizeof v); }
inline V4 Splat(float s) { return V4{s, s, s, s}; }
// Lanes of a where mask is set, of b elsewhere.
inline V4 Select(V4i mask, V4 a, V4 b) {
  return reinterpret_cast<V4>((reinterpret_cast<V4i>(a) & mask) |
                              (reinterpret_cast<V4i>(b) & ~mask));
}

// Rows handled together so that a partial result stays in the first-level
// cache while the further arguments are folded in.
constexpr std::size_t kChunk = 1024;

// True when any of p[b..e) equals s exactly.
inline bool AnyEqual(const float* p, float s, std::size_t b, std::size_t e) {
  std::size_t i = b;
  V4i hit = {0, 0, 0, 0};
  V4 vs = Splat(s);
  for (; i + 4 <= e; i += 4) hit |= (Load(p + i) == vs);
  bool any = (hit[0] | hit[1] | hit[2] | hit[3]) != 0;
  for (; i < e; ++i) any |= (p[i] == s);
  return any;
}

// out = ((0 + c1) + c2) + ... + cm.
inline void AddRows(const float* const* c, int32_t m, float* out, std::size_t b, std::size_t e) {
  const V4 zero = Splat(0.0f);
  for (std::size_t cb = b; cb < e; cb += kChunk) {
    std::size_t ce = cb + kChunk < e ? cb + kChunk : e;
    std::size_t i = cb;
    if (m == 2) {
      const float* a = c[0];
      const float* d = c[1];
      for (; i + 4 <= ce; i += 4) Store(out + i, (zero + Load(a + i)) + Load(d + i));
      for (; i < ce; ++i) out[i] = (0.0f + a[i]) + d[i];
      continue;
    }
    for (; i + 4 <= ce; i += 4) Store(out + i, zero + Load(c[0] + i));
    for (; i < ce; ++i) out[i] = 0.0f + c[0][i];
    for (int32_t k = 1; k < m; ++k) {
      const float* ck = c[k];
      for (i = cb; i + 4 <= ce; i += 4) Store(out + i, Load(out + i) + Load(ck + i));
      for (; i < ce; ++i) out[i] = out[i] + ck[i];
    }
  }
}

// out = ((1 * c1) * c2) * ... * cm.
inline void MulRows(const float* const* c, int32_t m, float* out, std::size_t b, std::size_t e) {
  const V4 one = Splat(1.0f);
  for (std::size_t cb = b; cb < e; cb += kChunk) {
    std::size_t ce = cb + kChunk < e ? cb + kChunk : e;
    std::size_t i = cb;
    for (; i + 4 <= ce; i += 4) Store(out + i, one * Load(c[0] + i));
    for (; i < ce; ++i) out[i] = 1.0f * c[0][i];
    for (int32_t k = 1; k < m; ++k) {
      const float* ck = c[k];
      for (i = cb; i + 4 <= ce; i += 4) Store(out + i, Load(out + i) * Load(ck + i));
      for (; i < ce; ++i) out[i] = out[i] * ck[i];
    }
  }
}

// out = sNull where b is 0, a / b elsewhere.
inline void RatioRows(const float* a, const float* d, float sNull, float* out, std::size_t b,
                      std::size_t e) {
  const V4 zero = Splat(0.0f), vn = Splat(sNull);
  std::size_t i = b;
  for (; i + 4 <= e; i += 4) {
    V4 den = Load(d + i);
    // Lanes with a zero denominator divide harmlessly and are replaced.
    Store(out + i, Select(den == zero, vn, Load(a + i) / den));
  }
  for (; i < e; ++i) out[i] = d[i] == 0.0f ? sNull : a[i] / d[i];
}

// out = sNull where the sum s = 0 + c1 + ... + cm is 0, c1 / s elsewhere.
inline void CutRows(const float* const* c, int32_t m, float sNull, float* out, std::size_t b,
                    std::size_t e) {
  float sum[kChunk];
  for (std::size_t cb = b; cb < e; cb += kChunk) {
    std::size_t ce = cb + kChunk < e ? cb + kChunk : e;
    std::size_t n = ce - cb;
    const float* ck = c[0] + cb;
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) Store(sum + i, Splat(0.0f) + Load(ck + i));
    for (; i < n; ++i) sum[i] = 0.0f + ck[i];
    for (int32_t k = 1; k < m; ++k) {
      ck = c[k] + cb;
      for (i = 0; i + 4 <= n; i += 4) Store(sum + i, Load(sum + i) + Load(ck + i));
      for (; i < n; ++i) sum[i] = sum[i] + ck[i];
    }
    RatioRows(c[0] + cb, sum, sNull, out + cb, 0, n);
  }
}

}  // namespace vndata::adq
