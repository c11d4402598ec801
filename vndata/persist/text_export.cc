#include "vndata/persist/text_export.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <sys/stat.h>

#include "vndata/platform/file_names.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {
// Large enough that a write is one call for many lines.
constexpr std::size_t kBufferBytes = std::size_t{1} << 18;

bool FolderExists(const std::string& zFileName) {
  const std::string folder = FileFolder(zFileName);
  if (folder.empty()) return true;
  struct stat st {};
  return ::stat(folder.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}
}  // namespace

char* AppendSingleText(char* out, float v) {
  if (v == 0.0f) {
    *out = '0';
    return out + 1;
  }
  // The shortest-form printer of the standard library rounds the exact binary
  // value to 7 digits as the C library's "%.7G" does, at a fraction of its
  // cost; only the letters differ in case ("e", "inf", "nan").
  const std::to_chars_result r =
      std::to_chars(out, out + kMaxSingleText, v, std::chars_format::general, 7);
  for (char* p = out; p != r.ptr; ++p)
    if (*p >= 'a' && *p <= 'z') *p = static_cast<char>(*p - 'a' + 'A');
  return r.ptr;
}

TextFileWriter::TextFileWriter(const std::string& zFileName) : buffer_(kBufferBytes) {
  file_ = std::fopen(zFileName.c_str(), "wb");
  if (!file_) RaiseFault(FolderExists(zFileName) ? kFaultPathFileAccess : kFaultPathNotFound);
}

TextFileWriter::~TextFileWriter() {
  if (file_) std::fclose(file_);
}

void TextFileWriter::Flush() {
  if (used_ == 0) return;
  if (std::fwrite(buffer_.data(), 1, used_, file_) != used_) RaiseFault(kFaultDeviceIO);
  used_ = 0;
}

void TextFileWriter::Reserve(std::size_t n) {
  if (used_ + n <= buffer_.size()) return;
  Flush();
  if (n > buffer_.size()) buffer_.resize(n);
}

void TextFileWriter::Append(std::string_view zText) {
  Reserve(zText.size());
  std::memcpy(buffer_.data() + used_, zText.data(), zText.size());
  used_ += zText.size();
}

void TextFileWriter::AppendChar(char c) {
  Reserve(1);
  buffer_[used_++] = c;
}

void TextFileWriter::AppendSingle(float v) {
  Reserve(kMaxSingleText);
  used_ = static_cast<std::size_t>(AppendSingleText(buffer_.data() + used_, v) - buffer_.data());
}

void TextFileWriter::EndLine() { Append("\r\n"); }

void TextFileWriter::WriteLine(std::string_view zPrefix, const std::vector<std::string>& zFields) {
  Append(zPrefix);
  for (std::size_t k = 0; k < zFields.size(); ++k) {
    if (k > 0) AppendChar(',');
    Append(zFields[k]);
  }
  EndLine();
}

void TextFileWriter::WriteRows(const Array2<float>& arr2d, int32_t nRows, int32_t nCols) {
  if (nRows < 1) return;
  // A line never needs more than this; reserving once a line lets the
  // fields go in without a check each.
  const std::size_t lineBytes =
      static_cast<std::size_t>(nCols > 0 ? nCols : 0) * (kMaxSingleText + 1) + 2;
  const float* base = nCols > 0 ? &arr2d(1, 1) : nullptr;
  const std::size_t stride = nCols > 0 ? static_cast<std::size_t>(arr2d.UBound(1) - arr2d.LBound(1) + 1) : 0;
  if (nCols > 0) (void)arr2d(nRows, nCols);  // both corners inside the array
  for (int32_t i = 0; i < nRows; ++i) {
    Reserve(lineBytes);
    char* p = buffer_.data() + used_;
    for (int32_t j = 0; j < nCols; ++j) {
      if (j > 0) *p++ = ',';
      p = AppendSingleText(p, base[static_cast<std::size_t>(j) * stride + static_cast<std::size_t>(i)]);
    }
    *p++ = '\r';
    *p++ = '\n';
    used_ = static_cast<std::size_t>(p - buffer_.data());
  }
}

void TextFileWriter::Close() {
  if (!file_) return;
  Flush();
  std::FILE* f = file_;
  file_ = nullptr;
  if (std::fclose(f) != 0) RaiseFault(kFaultDeviceIO);
}

}  // namespace vndata
