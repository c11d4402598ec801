// ByteStore: a pool of distinct texts held in fixed-width byte cells.
//
// Cells are numbered from 1 in the order of addition. Adding a text that is
// already held returns its cell instead of adding it again, so equal texts
// share one cell and columns compare attributes as integers. Texts compare
// exactly (case included). The cell width comes from Reserve or from the
// first record given; a longer text later widens every cell rather than
// being cut, so nothing handed to the pool is ever lost.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"

namespace vndata {

class VNDATA_API ByteStore {
 public:
  // Prepares an empty pool for about nCells texts of iWidth bytes.
  void Reserve(int32_t nCells, int32_t iWidth);
  int32_t Count() const { return static_cast<int32_t>(lengths_.size()); }
  int32_t Width() const { return width_; }

  // The cell of zText, added when new. The two options are carried for the
  // callers that pass them (the data set passes true, false); interning does
  // not depend on them.
  int32_t AddString(const std::string& zText, bool qOption1 = true, bool qOption2 = false);
  // Adds nRecords records of iWidth bytes each (record r at bytes
  // (r-1)*iWidth). A record's text ends at its first NUL and loses its
  // trailing blanks; an empty record gets cell -1 and is not added.
  Array<int32_t> AddBytes(const uint8_t* bRecords, int32_t nRecords, int32_t iWidth);
  Array<int32_t> AddBytes(const Array<uint8_t>& bRecords, int32_t iWidth);

  // Cell of zText or -1.
  int32_t FindString(const std::string& zText) const;
  // Cell of zText ignoring case, or -1 (first such cell).
  int32_t FindStringNoCase(const std::string& zText) const;

  // Text of a cell; -1 gives the empty string with qOK true; any other cell
  // outside 1..Count gives the empty string with qOK false.
  std::string GetString(int32_t iCell) const;
  bool GetString(int32_t iCell, std::string& zText, int32_t& nLength) const;
  std::string_view View(int32_t iCell) const;
  int32_t GetLength(int32_t iCell) const;
  // The cell's bytes, blank-padded to the cell width (-1: unallocated).
  Array<uint8_t> GetBytes(int32_t iCell) const;
  // All cells, blank-padded, cell c at bytes (c-1)*Width; the pointer stays
  // valid until the next addition.
  const uint8_t* AllBytes() const { return cells_.data(); }
  Array<uint8_t> GetAllBytes(int32_t& iWidth) const;
  Array<std::string> GetAllStrings(int32_t& nCount) const;

 private:
  int32_t Append(std::string_view text);
  void Widen(int32_t newWidth);

  int32_t width_ = 0;
  std::vector<uint8_t> cells_;    // Count() * width_ bytes, blank-padded
  std::vector<int32_t> lengths_;  // text length of each cell
  std::unordered_map<std::string, int32_t> index_;
};

}  // namespace vndata
