// Arrays with bounds of their own, as the host's automation platform has them.
//
// Array<T> is one-dimensional with a lower bound of 1 unless given; it has an
// unallocated state (no dimensions) distinct from any dimensioned one. Element
// access is checked against the bounds and raises fault 9 outside them; data()
// gives the contiguous block for copies. Array2<T> has two dimensions with the
// first subscript fastest in memory, so that a column a(., j) is contiguous.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "vndata/platform/api.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

// The storage behind Array and Array2. Host code instantiates the templates,
// so what they call is part of the exported surface.
namespace array_storage {
// Number of elements between lo and hi inclusive; fault 9 when hi < lo, as the
// platform refuses an empty dimension.
inline std::size_t Extent(int32_t lo, int32_t hi) {
  if (hi < lo) RaiseFault(kFaultSubscript);
  return static_cast<std::size_t>(static_cast<int64_t>(hi) - lo + 1);
}

// Blocks of plain values at least this large are mapped from the system
// directly, already zeroed: touching fresh memory page by page costs far
// more than copying into it. Blocks of a few large pages or more are backed
// by large pages where the system offers them; smaller ones are mapped
// whole at once rather than page by page on first touch.
constexpr std::size_t kLargeBlockBytes = std::size_t{128} << 10;
// A zeroed block of at least `bytes`; throws std::bad_alloc when refused.
VNDATA_API void* AllocateLargeBlock(std::size_t bytes);
VNDATA_API void FreeLargeBlock(void* p, std::size_t bytes) noexcept;

template <class T>
struct BlockDeleter {
  std::size_t largeBytes = 0;  // non-zero: a block from AllocateLargeBlock
  // Set for a block carved from memory that this owner holds: releasing the
  // block only drops the reference.
  std::shared_ptr<void> owner;
  void operator()(T* p) const noexcept {
    if (owner)
      return;
    if (largeBytes != 0)
      FreeLargeBlock(p, largeBytes);
    else
      delete[] p;
  }
};
template <class T>
using BlockPtr = std::unique_ptr<T[], BlockDeleter<T>>;

// n value-initialised elements.
template <class T>
BlockPtr<T> NewBlock(std::size_t n) {
  if constexpr (std::is_trivial_v<T>) {
    if (n > std::numeric_limits<std::size_t>::max() / sizeof(T)) throw std::bad_alloc();
    const std::size_t bytes = n * sizeof(T);
    // Zero bits are the value-initialised state of a trivial type.
    if (bytes >= kLargeBlockBytes)
      return BlockPtr<T>(static_cast<T*>(AllocateLargeBlock(bytes)), BlockDeleter<T>{bytes, nullptr});
  }
  return BlockPtr<T>(new T[n](), BlockDeleter<T>{});
}
}  // namespace array_storage

template <class T>
class Array {
 public:
  Array() = default;
  Array(int32_t lo, int32_t hi) { ReDim(lo, hi); }
  Array(std::initializer_list<T> values) {
    if (values.size() == 0) return;
    ReDim(1, static_cast<int32_t>(values.size()));
    std::copy(values.begin(), values.end(), p_.get());
  }
  Array(const Array& o) { CopyFrom(o); }
  Array(Array&& o) noexcept { Swap(o); }
  Array& operator=(const Array& o) {
    if (this != &o) {
      Array t(o);
      Swap(t);
    }
    return *this;
  }
  Array& operator=(Array&& o) noexcept {
    if (this != &o) {
      Array t(std::move(o));
      Swap(t);
    }
    return *this;
  }

  // Dimensions anew; every element takes its default value.
  void ReDim(int32_t lo, int32_t hi) {
    std::size_t n = array_storage::Extent(lo, hi);
    p_ = array_storage::NewBlock<T>(n);
    n_ = n;
    lo_ = lo;
    allocated_ = true;
  }
  // Changes the upper bound keeping the elements that remain in range; an
  // unallocated array becomes lower bound 1.
  void ReDimPreserve(int32_t hi) {
    int32_t lo = allocated_ ? lo_ : 1;
    std::size_t n = array_storage::Extent(lo, hi);
    array_storage::BlockPtr<T> q = array_storage::NewBlock<T>(n);
    std::size_t keep = std::min(n, n_);
    for (std::size_t i = 0; i < keep; ++i) q[i] = std::move(p_[i]);
    p_ = std::move(q);
    n_ = n;
    lo_ = lo;
    allocated_ = true;
  }
  void Erase() {
    p_.reset();
    n_ = 0;
    lo_ = 1;
    allocated_ = false;
  }

  bool IsAllocated() const { return allocated_; }
  // Bounds of an unallocated array are fault 9, as on the platform.
  int32_t LBound() const {
    if (!allocated_) RaiseFault(kFaultSubscript);
    return lo_;
  }
  int32_t UBound() const {
    if (!allocated_) RaiseFault(kFaultSubscript);
    return lo_ + static_cast<int32_t>(n_) - 1;
  }
  // Number of elements; 0 when unallocated.
  std::size_t size() const { return n_; }
  bool InBounds(int64_t i) const {
    return allocated_ && i >= lo_ && i < static_cast<int64_t>(lo_) + static_cast<int64_t>(n_);
  }

  T& operator()(int64_t i) {
    if (!InBounds(i)) RaiseFault(kFaultSubscript);
    return p_[static_cast<std::size_t>(i - lo_)];
  }
  const T& operator()(int64_t i) const {
    if (!InBounds(i)) RaiseFault(kFaultSubscript);
    return p_[static_cast<std::size_t>(i - lo_)];
  }

  T* data() { return p_.get(); }
  const T* data() const { return p_.get(); }
  T* begin() { return p_.get(); }
  T* end() { return p_.get() + n_; }
  const T* begin() const { return p_.get(); }
  const T* end() const { return p_.get() + n_; }

  void Fill(const T& value) { std::fill(begin(), end(), value); }
  void Swap(Array& o) noexcept {
    std::swap(p_, o.p_);
    std::swap(n_, o.n_);
    std::swap(lo_, o.lo_);
    std::swap(allocated_, o.allocated_);
  }

 private:
  void CopyFrom(const Array& o) {
    allocated_ = o.allocated_;
    lo_ = o.lo_;
    n_ = o.n_;
    if (allocated_) {
      p_ = array_storage::NewBlock<T>(n_);
      std::copy(o.p_.get(), o.p_.get() + n_, p_.get());
    }
  }

  array_storage::BlockPtr<T> p_;
  std::size_t n_ = 0;
  int32_t lo_ = 1;
  bool allocated_ = false;
};

template <class T>
class Array2 {
 public:
  Array2() = default;
  Array2(int32_t lo1, int32_t hi1, int32_t lo2, int32_t hi2) { ReDim(lo1, hi1, lo2, hi2); }
  Array2(const Array2& o) { CopyFrom(o); }
  Array2(Array2&& o) noexcept { Swap(o); }
  Array2& operator=(const Array2& o) {
    if (this != &o) {
      Array2 t(o);
      Swap(t);
    }
    return *this;
  }
  Array2& operator=(Array2&& o) noexcept {
    if (this != &o) {
      Array2 t(std::move(o));
      Swap(t);
    }
    return *this;
  }

  void ReDim(int32_t lo1, int32_t hi1, int32_t lo2, int32_t hi2) {
    std::size_t n1 = array_storage::Extent(lo1, hi1);
    std::size_t n2 = array_storage::Extent(lo2, hi2);
    p_ = array_storage::NewBlock<T>(n1 * n2);
    n1_ = n1;
    n2_ = n2;
    lo1_ = lo1;
    lo2_ = lo2;
    allocated_ = true;
  }
  // Dimensions the array on memory that the caller carved for it: `values`
  // holds (hi1-lo1+1)*(hi2-lo2+1) elements, already value-initialised, and
  // stays valid while `owner` is held; the array keeps a reference to it.
  void ReDimOn(T* values, std::shared_ptr<void> owner, int32_t lo1, int32_t hi1, int32_t lo2,
               int32_t hi2) {
    std::size_t n1 = array_storage::Extent(lo1, hi1);
    std::size_t n2 = array_storage::Extent(lo2, hi2);
    p_ = array_storage::BlockPtr<T>(values, array_storage::BlockDeleter<T>{0, std::move(owner)});
    n1_ = n1;
    n2_ = n2;
    lo1_ = lo1;
    lo2_ = lo2;
    allocated_ = true;
  }
  // Resizes both dimensions keeping the elements whose subscripts remain in
  // range (the lower bounds stay).
  void ReDimPreserve(int32_t hi1, int32_t hi2) {
    int32_t lo1 = allocated_ ? lo1_ : 1;
    int32_t lo2 = allocated_ ? lo2_ : 1;
    std::size_t n1 = array_storage::Extent(lo1, hi1);
    std::size_t n2 = array_storage::Extent(lo2, hi2);
    array_storage::BlockPtr<T> q = array_storage::NewBlock<T>(n1 * n2);
    std::size_t k1 = std::min(n1, n1_), k2 = std::min(n2, n2_);
    for (std::size_t j = 0; j < k2; ++j)
      for (std::size_t i = 0; i < k1; ++i) q[j * n1 + i] = std::move(p_[j * n1_ + i]);
    p_ = std::move(q);
    n1_ = n1;
    n2_ = n2;
    lo1_ = lo1;
    lo2_ = lo2;
    allocated_ = true;
  }
  void Erase() {
    p_.reset();
    n1_ = n2_ = 0;
    lo1_ = lo2_ = 1;
    allocated_ = false;
  }

  bool IsAllocated() const { return allocated_; }
  int32_t LBound(int d = 1) const {
    CheckDim(d);
    return d == 1 ? lo1_ : lo2_;
  }
  int32_t UBound(int d = 1) const {
    CheckDim(d);
    return d == 1 ? lo1_ + static_cast<int32_t>(n1_) - 1 : lo2_ + static_cast<int32_t>(n2_) - 1;
  }
  std::size_t Rows() const { return n1_; }
  std::size_t Cols() const { return n2_; }
  std::size_t size() const { return n1_ * n2_; }
  bool InBounds(int64_t i, int64_t j) const {
    return allocated_ && i >= lo1_ && i < lo1_ + static_cast<int64_t>(n1_) && j >= lo2_ &&
           j < lo2_ + static_cast<int64_t>(n2_);
  }

  T& operator()(int64_t i, int64_t j) {
    if (!InBounds(i, j)) RaiseFault(kFaultSubscript);
    return p_[Offset(i, j)];
  }
  const T& operator()(int64_t i, int64_t j) const {
    if (!InBounds(i, j)) RaiseFault(kFaultSubscript);
    return p_[Offset(i, j)];
  }
  // First element of column j (contiguous over the first dimension).
  T* Column(int64_t j) {
    if (!InBounds(lo1_, j)) RaiseFault(kFaultSubscript);
    return p_.get() + Offset(lo1_, j);
  }
  const T* Column(int64_t j) const {
    if (!InBounds(lo1_, j)) RaiseFault(kFaultSubscript);
    return p_.get() + Offset(lo1_, j);
  }

  T* data() { return p_.get(); }
  const T* data() const { return p_.get(); }
  void Fill(const T& value) { std::fill(p_.get(), p_.get() + size(), value); }
  void Swap(Array2& o) noexcept {
    std::swap(p_, o.p_);
    std::swap(n1_, o.n1_);
    std::swap(n2_, o.n2_);
    std::swap(lo1_, o.lo1_);
    std::swap(lo2_, o.lo2_);
    std::swap(allocated_, o.allocated_);
  }

 private:
  void CheckDim(int d) const {
    if (!allocated_ || (d != 1 && d != 2)) RaiseFault(kFaultSubscript);
  }
  std::size_t Offset(int64_t i, int64_t j) const {
    return static_cast<std::size_t>(j - lo2_) * n1_ + static_cast<std::size_t>(i - lo1_);
  }
  void CopyFrom(const Array2& o) {
    allocated_ = o.allocated_;
    lo1_ = o.lo1_;
    lo2_ = o.lo2_;
    n1_ = o.n1_;
    n2_ = o.n2_;
    if (allocated_) {
      p_ = array_storage::NewBlock<T>(n1_ * n2_);
      std::copy(o.p_.get(), o.p_.get() + n1_ * n2_, p_.get());
    }
  }

  array_storage::BlockPtr<T> p_;
  std::size_t n1_ = 0, n2_ = 0;
  int32_t lo1_ = 1, lo2_ = 1;
  bool allocated_ = false;
};

}  // namespace vndata
