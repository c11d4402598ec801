// Helpers shared by the data set tests: building value blocks, packed header
// records and attribute rows, and reading the trace back.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/message_log.h"

namespace vndata::testutil {

// Attribute texts of one column by attribute id.
using Attrs = std::map<int32_t, std::string>;

// A block of nRows by nCols values, value(i, j) at row i, column j.
inline Array2<float> Block(int32_t nRows, int32_t nCols, const std::function<float(int32_t, int32_t)>& value) {
  Array2<float> a(1, nRows, 1, nCols);
  for (int32_t j = 1; j <= nCols; ++j)
    for (int32_t i = 1; i <= nRows; ++i) a(i, j) = value(i, j);
  return a;
}

// Values 100*column + row, easy to recognise.
inline Array2<float> Numbered(int32_t nRows, int32_t nCols, int32_t firstRow = 1) {
  return Block(nRows, nCols, [firstRow](int32_t i, int32_t j) {
    return static_cast<float>(100 * j + i + firstRow - 1);
  });
}

// Writes text at the id's field of record c, cut to the field's width.
inline void PutField(Array2<uint8_t>& b, int32_t c, int32_t id, const std::string& text) {
  int32_t pos = 0, width = 0;
  InitSingleAttPos(id, pos, width);
  const std::size_t n = std::min<std::size_t>(text.size(), static_cast<std::size_t>(width));
  if (n > 0) std::memcpy(&b(pos, c), text.data(), n);
}

// Packed headers (233 by n, blanks) with the given texts.
inline Array2<uint8_t> Headers(const std::vector<Attrs>& cols) {
  Array2<uint8_t> b(1, kPackedRecordSize, 1, static_cast<int32_t>(cols.size()));
  b.Fill(' ');
  for (std::size_t c = 0; c < cols.size(); ++c)
    for (const auto& [id, text] : cols[c]) PutField(b, static_cast<int32_t>(c + 1), id, text);
  return b;
}

// Headers whose column c has "VARIABLE" V<c> and a shared origin and class.
inline Array2<uint8_t> SimpleHeaders(int32_t nCols) {
  std::vector<Attrs> cols;
  for (int32_t c = 1; c <= nCols; ++c)
    cols.push_back({{ATT_ORIGIN, "ORIG"}, {ATT_CLASS, "FIELD"}, {ATT_VARIABLE, "V" + std::to_string(c)}});
  return Headers(cols);
}

// An attribute row for SetAttributes / AddDataColumn: texts 1..14.
inline Array<std::string> Row(const Attrs& attrs) {
  Array<std::string> z(1, kNumAttributes);
  for (const auto& [id, text] : attrs) z(id) = text;
  return z;
}

inline Array<float> Floats(std::initializer_list<float> v) { return Array<float>(v); }

// A data set built from a numbered block and simple headers.
inline void Build(mxDataSet& ds, int32_t nRows, int32_t nCols) {
  Array2<float> a = Numbered(nRows, nCols);
  bool qOK = false;
  ds.bInitialiseFrom2d(a, SimpleHeaders(nCols), qOK);
}

// The thread's log, cleared on construction and on destruction.
struct LogCapture {
  LogCapture() { MessageLog::Shared().Clear(); }
  ~LogCapture() { MessageLog::Shared().Clear(); }
  const std::vector<std::string>& Lines() const { return MessageLog::Shared().Lines(); }
};

}  // namespace vndata::testutil
