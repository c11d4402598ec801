#include "vndata/platform/byte_store.h"

#include <algorithm>
#include <cstring>

#include "vndata/platform/string_tools.h"

namespace vndata {

void ByteStore::Reserve(int32_t nCells, int32_t iWidth) {
  cells_.clear();
  lengths_.clear();
  index_.clear();
  width_ = std::max<int32_t>(iWidth, 0);
  if (nCells > 0) {
    cells_.reserve(static_cast<std::size_t>(nCells) * static_cast<std::size_t>(width_));
    lengths_.reserve(static_cast<std::size_t>(nCells));
    index_.reserve(static_cast<std::size_t>(nCells));
  }
}

void ByteStore::Widen(int32_t newWidth) {
  std::vector<uint8_t> wider(lengths_.size() * static_cast<std::size_t>(newWidth), ' ');
  // A pool whose cells so far are all empty texts has width 0 and no bytes
  // to carry over (and cells_ has no element to take the address of).
  if (width_ > 0)
    for (std::size_t c = 0; c < lengths_.size(); ++c)
      std::memcpy(&wider[c * newWidth], &cells_[c * width_], static_cast<std::size_t>(width_));
  cells_.swap(wider);
  width_ = newWidth;
}

int32_t ByteStore::Append(std::string_view text) {
  int32_t len = static_cast<int32_t>(text.size());
  if (lengths_.empty() && width_ == 0) width_ = len;
  if (len > width_) Widen(len);
  std::size_t at = cells_.size();
  cells_.resize(at + static_cast<std::size_t>(width_), ' ');
  if (len > 0) std::memcpy(&cells_[at], text.data(), text.size());
  lengths_.push_back(len);
  int32_t cell = Count();
  index_.emplace(std::string(text), cell);
  return cell;
}

int32_t ByteStore::AddString(const std::string& zText, bool, bool) {
  auto it = index_.find(zText);
  if (it != index_.end()) return it->second;
  return Append(zText);
}

Array<int32_t> ByteStore::AddBytes(const uint8_t* bRecords, int32_t nRecords, int32_t iWidth) {
  Array<int32_t> cells;
  if (nRecords < 1 || iWidth < 0) return cells;
  cells.ReDim(1, nRecords);
  if (lengths_.empty() && width_ == 0) width_ = iWidth;
  std::string key;
  for (int32_t r = 0; r < nRecords; ++r) {
    const char* rec = reinterpret_cast<const char*>(bRecords) + static_cast<std::size_t>(r) * iWidth;
    std::size_t n = 0;
    while (n < static_cast<std::size_t>(iWidth) && rec[n] != '\0') ++n;
    while (n > 0 && rec[n - 1] == ' ') --n;
    if (n == 0) {
      cells.data()[r] = -1;
      continue;
    }
    key.assign(rec, n);
    auto it = index_.find(key);
    cells.data()[r] = it != index_.end() ? it->second : Append(key);
  }
  return cells;
}

Array<int32_t> ByteStore::AddBytes(const Array<uint8_t>& bRecords, int32_t iWidth) {
  if (iWidth < 1 || !bRecords.IsAllocated()) return Array<int32_t>();
  return AddBytes(bRecords.data(), static_cast<int32_t>(bRecords.size() / iWidth), iWidth);
}

int32_t ByteStore::FindString(const std::string& zText) const {
  auto it = index_.find(zText);
  return it == index_.end() ? -1 : it->second;
}

int32_t ByteStore::FindStringNoCase(const std::string& zText) const {
  for (int32_t c = 1; c <= Count(); ++c)
    if (StringTools::Equal(View(c), zText, false)) return c;
  return -1;
}

std::string_view ByteStore::View(int32_t iCell) const {
  if (iCell < 1 || iCell > Count()) return std::string_view();
  // An empty text may sit in a pool of width 0, which holds no bytes at all.
  if (lengths_[iCell - 1] == 0) return std::string_view();
  return std::string_view(reinterpret_cast<const char*>(&cells_[(iCell - 1) * static_cast<std::size_t>(width_)]),
                          static_cast<std::size_t>(lengths_[iCell - 1]));
}

std::string ByteStore::GetString(int32_t iCell) const { return std::string(View(iCell)); }

bool ByteStore::GetString(int32_t iCell, std::string& zText, int32_t& nLength) const {
  zText = GetString(iCell);
  nLength = static_cast<int32_t>(zText.size());
  return iCell == -1 || (iCell >= 1 && iCell <= Count());
}

int32_t ByteStore::GetLength(int32_t iCell) const {
  return (iCell < 1 || iCell > Count()) ? 0 : lengths_[iCell - 1];
}

Array<uint8_t> ByteStore::GetBytes(int32_t iCell) const {
  Array<uint8_t> b;
  if (iCell < 1 || iCell > Count() || width_ < 1) return b;
  b.ReDim(1, width_);
  std::memcpy(b.data(), &cells_[(iCell - 1) * static_cast<std::size_t>(width_)], static_cast<std::size_t>(width_));
  return b;
}

Array<uint8_t> ByteStore::GetAllBytes(int32_t& iWidth) const {
  iWidth = width_;
  Array<uint8_t> b;
  if (cells_.empty()) return b;
  b.ReDim(1, static_cast<int32_t>(cells_.size()));
  std::memcpy(b.data(), cells_.data(), cells_.size());
  return b;
}

Array<std::string> ByteStore::GetAllStrings(int32_t& nCount) const {
  nCount = Count();
  Array<std::string> s;
  if (nCount < 1) return s;
  s.ReDim(1, nCount);
  for (int32_t c = 1; c <= nCount; ++c) s(c) = GetString(c);
  return s;
}

}  // namespace vndata
