#include "vndata/platform/string_tools.h"

#include <algorithm>

namespace vndata {

namespace {
inline unsigned char Fold(unsigned char c) { return (c >= 'a' && c <= 'z') ? c - 32 : c; }
}  // namespace

bool StringTools::Equal(std::string_view a, std::string_view b, bool qCaseSensitive) {
  if (a.size() != b.size()) return false;
  if (qCaseSensitive) return a == b;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (Fold(static_cast<unsigned char>(a[i])) != Fold(static_cast<unsigned char>(b[i]))) return false;
  return true;
}

int32_t StringTools::Compare(std::string_view a, std::string_view b, bool qCaseSensitive) {
  std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    unsigned char x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
    if (!qCaseSensitive) {
      x = Fold(x);
      y = Fold(y);
    }
    if (x != y) return x < y ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

std::string StringTools::Upper(std::string_view s) {
  std::string r(s);
  for (char& c : r) c = static_cast<char>(Fold(static_cast<unsigned char>(c)));
  return r;
}

std::string StringTools::Lower(std::string_view s) {
  std::string r(s);
  for (char& c : r)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return r;
}

std::string StringTools::TrimRight(std::string_view s) {
  std::size_t n = s.size();
  while (n > 0 && s[n - 1] == ' ') --n;
  return std::string(s.substr(0, n));
}

std::string StringTools::TrimLeft(std::string_view s) {
  std::size_t i = 0;
  while (i < s.size() && s[i] == ' ') ++i;
  return std::string(s.substr(i));
}

std::string StringTools::Trim(std::string_view s) { return TrimLeft(TrimRight(s)); }

bool StringTools::Split(const std::string& zText, const std::string& zDelimiter,
                        Array<std::string>& zTokens, int32_t& nTokens) {
  nTokens = 0;
  if (zDelimiter.empty()) return false;
  zTokens.Erase();
  if (zText.empty()) return true;
  std::size_t count = 1;
  for (std::size_t p = zText.find(zDelimiter); p != std::string::npos;
       p = zText.find(zDelimiter, p + zDelimiter.size()))
    ++count;
  zTokens.ReDim(1, static_cast<int32_t>(count));
  std::size_t start = 0;
  for (std::size_t k = 1; k <= count; ++k) {
    std::size_t p = zText.find(zDelimiter, start);
    if (p == std::string::npos) p = zText.size();
    zTokens(static_cast<int32_t>(k)) = zText.substr(start, p - start);
    start = p + zDelimiter.size();
  }
  nTokens = static_cast<int32_t>(count);
  return true;
}

bool StringTools::SplitInTwo(const std::string& zText, const std::string& zDelimiter,
                             std::string& zBefore, std::string& zAfter) {
  std::size_t p = zDelimiter.empty() ? std::string::npos : zText.find(zDelimiter);
  if (p == std::string::npos) {
    zBefore = zText;
    zAfter.clear();
    return false;
  }
  zBefore = zText.substr(0, p);
  zAfter = zText.substr(p + zDelimiter.size());
  return true;
}

std::string StringTools::Join(const Array<std::string>& zTokens, const std::string& zDelimiter,
                              int32_t nCount) {
  std::string r;
  if (!zTokens.IsAllocated()) return r;
  int32_t lo = zTokens.LBound();
  int32_t hi = nCount < 0 ? zTokens.UBound() : std::min(zTokens.UBound(), lo + nCount - 1);
  for (int32_t i = lo; i <= hi; ++i) {
    if (i > lo) r += zDelimiter;
    r += zTokens(i);
  }
  return r;
}

std::string StringTools::KeyJoin(const std::string& zFirst, const std::string& zSecond, bool qUpper) {
  std::string r;
  if (zFirst.empty()) r = zSecond;
  else if (zSecond.empty()) r = zFirst;
  else r = zFirst + "\\" + zSecond;
  return qUpper ? Upper(r) : r;
}

}  // namespace vndata
