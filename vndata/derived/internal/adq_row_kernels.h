// Row-range kernels behind mxAutomaticDQ: the per-row arithmetic of the
// rules that cannot fault, on raw columns, over rows [b, e) (0-based).
//
// The loops run four lanes at a time through the compiler's vector types;
// each lane performs exactly the scalar sequence of operations, each one
// rounded to 32 bits, so a vector and a scalar pass give the same bits.
// Internal to the derived quantity code.
#pragma once

#include <algorithm>
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

// out[i] = op(a[i], d[i]) over [b, e): vop on four lanes, sop on one. With
// kCheck, also tells whether any a[i] or d[i] equals sNull, so that a caller
// applying the null rule needs no second pass over the arguments.
template <bool kCheck, class VOp, class SOp>
inline bool Map2(const float* a, const float* d, float* out, std::size_t b, std::size_t e,
                 float sNull, VOp vop, SOp sop) {
  std::size_t i = b;
  V4i hit = {0, 0, 0, 0};
  const V4 vn = Splat(sNull);
  for (; i + 8 <= e; i += 8) {
    V4 x0 = Load(a + i), y0 = Load(d + i), x1 = Load(a + i + 4), y1 = Load(d + i + 4);
    if constexpr (kCheck) hit |= (x0 == vn) | (y0 == vn) | (x1 == vn) | (y1 == vn);
    Store(out + i, vop(x0, y0));
    Store(out + i + 4, vop(x1, y1));
  }
  bool any = false;
  for (; i < e; ++i) {
    if constexpr (kCheck) any = any || a[i] == sNull || d[i] == sNull;
    out[i] = sop(a[i], d[i]);
  }
  if constexpr (kCheck) any = any || (hit[0] | hit[1] | hit[2] | hit[3]) != 0;
  return any;
}

// The two-argument forms of the rules, lane and scalar alike.
struct Add2 {
  V4 operator()(V4 x, V4 y) const { return (Splat(0.0f) + x) + y; }
  float operator()(float x, float y) const { return (0.0f + x) + y; }
};
struct Mul2 {
  V4 operator()(V4 x, V4 y) const { return (Splat(1.0f) * x) * y; }
  float operator()(float x, float y) const { return (1.0f * x) * y; }
};
struct Ratio2 {
  float sNull;
  // Lanes with a zero denominator divide harmlessly and are replaced.
  V4 operator()(V4 x, V4 y) const { return Select(y == Splat(0.0f), Splat(sNull), x / y); }
  float operator()(float x, float y) const { return y == 0.0f ? sNull : x / y; }
};
struct Cut2 {
  float sNull;
  V4 operator()(V4 x, V4 y) const {
    V4 sum = (Splat(0.0f) + x) + y;
    return Select(sum == Splat(0.0f), Splat(sNull), x / sum);
  }
  float operator()(float x, float y) const {
    float sum = (0.0f + x) + y;
    return sum == 0.0f ? sNull : x / sum;
  }
};

template <bool kCheck, class Op>
inline bool Apply2(const float* a, const float* d, float* out, std::size_t b, std::size_t e,
                   float sNull, Op op) {
  return Map2<kCheck>(a, d, out, b, e, sNull, op, op);
}

// out = ((0 + c1) + c2) + ... + cm.
inline void AddRows(const float* const* c, int32_t m, float* out, std::size_t b, std::size_t e) {
  if (m == 2) {
    Apply2<false>(c[0], c[1], out, b, e, 0.0f, Add2{});
    return;
  }
  const V4 zero = Splat(0.0f);
  for (std::size_t cb = b; cb < e; cb += kChunk) {
    std::size_t ce = cb + kChunk < e ? cb + kChunk : e;
    std::size_t i = cb;
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
  if (m == 2) {
    Apply2<false>(c[0], c[1], out, b, e, 0.0f, Mul2{});
    return;
  }
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
  Apply2<false>(a, d, out, b, e, sNull, Ratio2{sNull});
}

// out = sNull where the sum s = 0 + c1 + ... + cm is 0, c1 / s elsewhere.
inline void CutRows(const float* const* c, int32_t m, float sNull, float* out, std::size_t b,
                    std::size_t e) {
  if (m == 2) {
    Apply2<false>(c[0], c[1], out, b, e, sNull, Cut2{sNull});
    return;
  }
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

// Writes sNull into out for every row of [b, e) (at most kChunk rows) in
// which some argument equals sNull; returns the number of such rows.
inline std::size_t MaskNullRows(const float* const* c, int32_t m, float sNull, float* out,
                                std::size_t b, std::size_t e) {
  alignas(16) int32_t mask[kChunk];
  std::size_t n = e - b;
  std::fill(mask, mask + n, 0);
  const V4 vn = Splat(sNull);
  for (int32_t k = 0; k < m; ++k) {
    const float* p = c[k] + b;
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) {
      V4i v;
      std::memcpy(&v, mask + i, sizeof v);
      v |= (Load(p + i) == vn);
      std::memcpy(mask + i, &v, sizeof v);
    }
    for (; i < n; ++i) mask[i] |= p[i] == sNull ? -1 : 0;
  }
  V4i count = {0, 0, 0, 0};
  std::size_t i = 0;
  for (; i + 4 <= n; i += 4) {
    V4i v;
    std::memcpy(&v, mask + i, sizeof v);
    Store(out + b + i, Select(v, vn, Load(out + b + i)));
    count -= v;  // each null row's lane holds -1
  }
  std::size_t nNull = static_cast<std::size_t>(count[0] + count[1] + count[2] + count[3]);
  for (; i < n; ++i) {
    if (mask[i]) {
      out[b + i] = sNull;
      ++nNull;
    }
  }
  return nNull;
}

}  // namespace vndata::adq
