// ArrayTools: sizing, filling, block copies and resizing of arrays, and the
// column range walk of a search.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"

namespace vndata {

class VNDATA_API ArrayTools {
 public:
  // Dimensions a(1..n) and fills it with value.
  template <class T>
  static void Size(Array<T>& a, int32_t n, const T& value) {
    a.ReDim(1, n);
    a.Fill(value);
  }
  // Dimensions a(1..n1, 1..n2) and fills it with value.
  template <class T>
  static void Size2(Array2<T>& a, int32_t n1, int32_t n2, const T& value) {
    a.ReDim(1, n1, 1, n2);
    a.Fill(value);
  }
  // Resizes keeping contents on both dimensions; elements that are new take
  // value.
  template <class T>
  static void Resize2(Array2<T>& a, int32_t hi1, int32_t hi2, const T& value = T()) {
    const std::size_t oldRows = a.Rows(), oldCols = a.Cols();
    a.ReDimPreserve(hi1, hi2);
    const std::size_t rows = a.Rows(), cols = a.Cols();
    T* p = a.data();
    for (std::size_t j = 0; j < cols; ++j) {
      // Kept columns are new only below their old rows; new columns entirely.
      const std::size_t from = j < oldCols ? std::min(oldRows, rows) : 0;
      std::fill(p + j * rows + from, p + (j + 1) * rows, value);
    }
  }

  // Copies nRows rows of every column of src (from row srcRow) into dst at
  // row dstRow, columns 1..nCols of both. One block copy per column.
  template <class T>
  static void CopyRows2(const Array2<T>& src, int32_t srcRow, Array2<T>& dst, int32_t dstRow,
                        int32_t nRows, int32_t nCols) {
    static_assert(std::is_trivially_copyable_v<T>);
    if (nRows < 1 || nCols < 1) return;
    // Bounds are checked once at both corners; the copies are then unchecked.
    (void)src(srcRow + nRows - 1, src.LBound(2) + nCols - 1);
    (void)dst(dstRow + nRows - 1, dst.LBound(2) + nCols - 1);
    (void)src(srcRow, src.LBound(2));
    (void)dst(dstRow, dst.LBound(2));
    // memmove: src and dst may be one array (rows shifted within a buffer).
    // Columns lie one behind the other, a first bound apart.
    const T* from = &src(srcRow, src.LBound(2));
    T* to = &dst(dstRow, dst.LBound(2));
    const std::size_t srcStride = src.Rows(), dstStride = dst.Rows();
    const std::size_t bytes = sizeof(T) * static_cast<std::size_t>(nRows);
    if (&src != &dst && nRows <= 16) {
      // A few rows of many columns (an append): a call per column would cost
      // more than the copy itself.
      for (int32_t j = 0; j < nCols; ++j, from += srcStride, to += dstStride)
        for (int32_t i = 0; i < nRows; ++i) to[i] = from[i];
      return;
    }
    for (int32_t j = 0; j < nCols; ++j, from += srcStride, to += dstStride) std::memmove(to, from, bytes);
  }

  // The walk over columns 1..nCols asked for by iStart and iEnd (-1 meaning
  // the first and the last column): first, last, step (+1 or -1) and count.
  // The step follows the order of the two ends as given; an end beyond the
  // columns is then pulled in to 1..nCols, while a start outside the columns
  // gives count 0. So a forward walk split at a start beyond the last column
  // visits nothing twice; a backward second pass asked for as nCols to
  // nCols + 1 does come back as column nCols alone, and the caller that has
  // already visited it skips that pass.
  static void ColumnRange(int32_t nCols, int32_t iStart, int32_t iEnd, int32_t& iFirst,
                          int32_t& iLast, int32_t& iStep, int32_t& nCount);
};

}  // namespace vndata
