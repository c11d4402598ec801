// Comma-separated text export: the file writer and the field formats.
//
// A line is assembled field by field straight into the writer's buffer and
// the buffer goes to the file when full, so no text of the whole table ever
// exists and no value makes a string of its own. Lines end in CR LF; fields
// are separated by "," with no quoting and no trailing comma.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "vndata/platform/arrays.h"

namespace vndata {

// The longest text AppendSingleText writes ("-1.234567E-38" and the like).
constexpr int32_t kMaxSingleText = 16;

// Writes the platform's default text of a 32-bit float (the text SingleText
// gives: at most 7 significant digits, "1E+07", "1.5E-05", "0" for either
// zero) at out and returns the end. out must have kMaxSingleText bytes.
char* AppendSingleText(char* out, float v);

// A text file opened for output, replacing what was there.
class TextFileWriter {
 public:
  // Opens the file; a name that cannot be opened is fault 76 "Path not
  // found" when its folder does not exist, otherwise 75 "Path/File access
  // error".
  explicit TextFileWriter(const std::string& zFileName);
  // Closes without reporting: a file left by a fault stays as it is.
  ~TextFileWriter();
  TextFileWriter(const TextFileWriter&) = delete;
  TextFileWriter& operator=(const TextFileWriter&) = delete;

  void Append(std::string_view zText);
  void AppendChar(char c);
  void AppendSingle(float v);
  // Ends the line with CR LF.
  void EndLine();
  // One whole line: zPrefix, then the fields joined by ",", then CR LF.
  void WriteLine(std::string_view zPrefix, const std::vector<std::string>& zFields);
  // One line per row of arr2d (rows 1..nRows, columns 1..nCols), the values
  // joined by ",".
  void WriteRows(const Array2<float>& arr2d, int32_t nRows, int32_t nCols);
  // Writes what is buffered and closes; a failed write is fault 57.
  void Close();

 private:
  void Reserve(std::size_t n);
  void Flush();

  std::FILE* file_ = nullptr;
  std::vector<char> buffer_;
  std::size_t used_ = 0;
};

}  // namespace vndata
