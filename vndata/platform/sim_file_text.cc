// Formatted (text) simulator result files: headers, payloads, single
// values, index.
#include <algorithm>
#include <charconv>
#include <cstring>
#include <type_traits>
#include <vector>

#include "vndata/platform/internal/record_payload.h"
#include "vndata/platform/internal/sim_file_format.h"

namespace vndata::detail {

namespace {

using P = RecordPayload;

// Longest value or keyword accepted between separators; a quoted C0nn name
// is up to 99 characters and its quotes.
constexpr std::size_t kMaxToken = 128;
constexpr std::size_t kMaxKeyword = 64;
// Reading a payload goes in large pieces; a header is short.
constexpr std::size_t kPayloadChunk = 1 << 16;
constexpr std::size_t kHeaderChunk = 256;

// Where the standard writers put the values: so many to a line, each right
// aligned in a field of width characters. Unknown (0, 0) for C0nn names.
struct TextLayout {
  int64_t perLine = 0;
  int64_t width = 0;
};

TextLayout LayoutOf(const SimHeader& h) {
  switch (h.kind) {
    case RecordType::Inte: return {6, 12};
    case RecordType::Real: return {4, 17};
    case RecordType::Doub: return {3, 23};
    case RecordType::Logi: return {25, 3};
    case RecordType::Char: return h.width == kSimulatorNameWidth ? TextLayout{7, 11} : TextLayout{};
    default: return {};
  }
}

// Bytes of a block of n values in that layout: a line end after every
// perLine values and after the last.
int64_t BlockBytes(const SimHeader& h, TextLayout l, int64_t n) {
  return n * l.width + (n + l.perLine - 1) / l.perLine * h.newline;
}

int64_t StandardPayloadBytes(const SimHeader& h, TextLayout l) {
  if (h.count <= 0) return 0;
  const int64_t block = SimBlockSize(h.kind);
  const int64_t full = h.count / block, rest = h.count % block;
  return full * BlockBytes(h, l, block) + (rest > 0 ? BlockBytes(h, l, rest) : 0);
}

bool ReadAt(RecordFile& file, int64_t pos, void* dst, int64_t n) {
  bool ok = false;
  file.SetPosition(pos, ok);
  return ok && P::ReadRaw(file, dst, n);
}

bool IsSpace(int c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}
bool IsBlank(int c) { return c == ' ' || c == '\t'; }

// Bytes of the file from a position, in pieces of its own.
class TextReader {
 public:
  TextReader(RecordFile& file, std::size_t chunk) : file_(file), buf_(chunk) {}
  bool Seek(int64_t pos) {
    start_ = pos;
    begin_ = end_ = 0;
    return pos >= 0 && pos <= file_.FileSize();
  }
  int64_t Tell() const { return start_ + static_cast<int64_t>(begin_); }
  // The next byte, or -1 at the end of the file (or when a read failed).
  int Peek() {
    if (begin_ == end_ && !Fill()) return -1;
    return static_cast<unsigned char>(buf_[begin_]);
  }
  int Get() {
    int c = Peek();
    if (c >= 0) ++begin_;
    return c;
  }
  bool Failed() const { return failed_; }

 private:
  bool Fill() {
    start_ += static_cast<int64_t>(end_);
    begin_ = end_ = 0;
    int64_t left = file_.FileSize() - start_;
    if (left <= 0 || failed_) return false;
    std::size_t n =
        static_cast<std::size_t>(std::min<int64_t>(left, static_cast<int64_t>(buf_.size())));
    if (!ReadAt(file_, start_, buf_.data(), static_cast<int64_t>(n))) {
      failed_ = true;
      return false;
    }
    end_ = n;
    return true;
  }

  RecordFile& file_;
  std::vector<char> buf_;
  int64_t start_ = 0;  // file offset of buf_[0]
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool failed_ = false;
};

enum class Token { Value, End, Bad };

// The next value: a run of characters up to a separator, or a name in
// quotes (kept with its quotes).
Token NextToken(TextReader& r, char* tok, std::size_t& len) {
  int c;
  while (IsSpace(c = r.Peek())) r.Get();
  if (c < 0) return Token::End;
  len = 0;
  if (c == '\'') {
    tok[len++] = static_cast<char>(r.Get());
    while (true) {
      c = r.Get();
      if (c < 0 || c == '\n' || c == '\r' || len + 1 >= kMaxToken) return Token::Bad;
      tok[len++] = static_cast<char>(c);
      if (c == '\'') return Token::Value;
    }
  }
  while ((c = r.Peek()) >= 0 && !IsSpace(c)) {
    if (len >= kMaxToken) return Token::Bad;
    tok[len++] = static_cast<char>(r.Get());
  }
  return Token::Value;
}

// A REAL or DOUB in Fortran's forms: "D" or "E" for the exponent, or no
// letter at all before a signed three-digit exponent ("0.1-300").
template <class T>
bool ParseFloating(const char* s, std::size_t n, T& out) {
  char buf[kMaxToken + 2];
  std::size_t m = 0;
  std::size_t i = n > 0 && s[0] == '+' ? 1 : 0;
  bool exponent = false;
  for (; i < n; ++i) {
    char c = s[i];
    if (c == 'D' || c == 'd' || c == 'E' || c == 'e') {
      c = 'E';
      exponent = true;
    } else if ((c == '+' || c == '-') && m > 0 && !exponent &&
               ((buf[m - 1] >= '0' && buf[m - 1] <= '9') || buf[m - 1] == '.')) {
      buf[m++] = 'E';
      exponent = true;
    }
    buf[m++] = c;
  }
  auto [end, ec] = std::from_chars(buf, buf + m, out);
  if constexpr (std::is_same_v<T, float>) {
    if (ec == std::errc::result_out_of_range) {
      // Beyond the float range: the double, rounded by IEEE rules
      // (infinity, or a denormal or zero).
      double d = 0;
      auto [end2, ec2] = std::from_chars(buf, buf + m, d);
      if (ec2 != std::errc() || end2 != buf + m) return false;
      out = static_cast<float>(d);
      return true;
    }
  }
  return ec == std::errc() && end == buf + m;
}

bool ParseTextValue(RecordType kind, const char* s, std::size_t n, float& out) {
  if (n == 0 || s[0] == '\'') return false;
  switch (kind) {
    case RecordType::Inte: {
      std::size_t i = s[0] == '+' ? 1 : 0;
      int32_t v = 0;
      auto [end, ec] = std::from_chars(s + i, s + n, v);
      if (ec != std::errc() || end != s + n) return false;
      out = static_cast<float>(v);
      return true;
    }
    case RecordType::Logi: {
      // T or F, also written .TRUE. and .FALSE.
      std::size_t i = s[0] == '.' ? 1 : 0;
      if (i >= n) return false;
      char c = s[i];
      if (c == 'T' || c == 't')
        out = 1.0f;
      else if (c == 'F' || c == 'f')
        out = 0.0f;
      else
        return false;
      return true;
    }
    case RecordType::Real: return ParseFloating(s, n, out);
    case RecordType::Doub: {
      double d = 0;
      if (!ParseFloating(s, n, d)) return false;
      out = static_cast<float>(d);
      return true;
    }
    default: return false;
  }
}

// Reads `skip` values and then, with out given, one more into out.
bool ScanValues(RecordFile& file, const SimHeader& h, int64_t skip, float* out) {
  TextReader r(file, kPayloadChunk);
  r.Seek(h.payloadPos);
  char tok[kMaxToken];
  std::size_t len = 0;
  const int64_t n = skip + (out != nullptr ? 1 : 0);
  for (int64_t i = 0; i < n; ++i) {
    Token t = NextToken(r, tok, len);
    if (r.Failed()) return false;
    if (t == Token::End) return P::Fail(file, "the file ends inside a record");
    if (t == Token::Bad) return P::Fail(file, "a value that cannot be read");
    if ((tok[0] == '\'') != (h.kind == RecordType::Char))
      return P::Fail(file, "the payload holds fewer values than its count");
    if (i == skip && !ParseTextValue(h.kind, tok, len, *out))
      return P::Fail(file, "a value that cannot be read");
  }
  return true;
}

// Moves past the blanks and line ends after a payload; pos receives where
// the next header begins (the start of its line), or the file's size at
// its end. False when something other than a header follows.
bool NextHeaderStart(RecordFile& file, TextReader& r, int64_t& pos) {
  int64_t lineStart = r.Tell();
  int c;
  while (IsSpace(c = r.Peek())) {
    r.Get();
    if (c == '\n') lineStart = r.Tell();
  }
  if (r.Failed()) return false;
  if (c < 0) {
    pos = file.FileSize();
    return true;
  }
  if (c != '\'') return P::Fail(file, "the payload holds more values than its count");
  pos = lineStart;
  return true;
}

// The payload stepped over value by value; pos receives the next header.
bool WalkPayload(RecordFile& file, const SimHeader& h, int64_t& pos) {
  TextReader r(file, kPayloadChunk);
  r.Seek(h.payloadPos);
  char tok[kMaxToken];
  std::size_t len = 0;
  for (int64_t i = 0; i < h.count; ++i) {
    Token t = NextToken(r, tok, len);
    if (r.Failed()) return false;
    if (t == Token::End) return P::Fail(file, "the file ends inside a record");
    if (t == Token::Bad) return P::Fail(file, "a value that cannot be read");
    if ((tok[0] == '\'') != (h.kind == RecordType::Char))
      return P::Fail(file, "the payload holds fewer values than its count");
  }
  return NextHeaderStart(file, r, pos);
}

}  // namespace

bool ReadTextHeader(RecordFile& file, int64_t pos, SimHeader& h) {
  TextReader r(file, kHeaderChunk);
  if (!r.Seek(pos)) return P::Fail(file, "position outside the file");
  while (IsBlank(r.Peek())) r.Get();
  if (r.Get() != '\'') return r.Failed() ? false : P::Fail(file, "not a record header");
  std::string keyword;
  int c;
  while ((c = r.Get()) != '\'') {
    if (c < 0 || c == '\n' || c == '\r' || keyword.size() >= kMaxKeyword)
      return r.Failed() ? false : P::Fail(file, "not a record header");
    keyword += static_cast<char>(c);
  }
  while (IsBlank(r.Peek())) r.Get();
  char digits[16];
  std::size_t n = 0;
  while (((c = r.Peek()) >= '0' && c <= '9') || (n == 0 && (c == '-' || c == '+'))) {
    if (n >= sizeof digits) return P::Fail(file, "not a record header");
    digits[n++] = static_cast<char>(r.Get());
  }
  int32_t count = 0;
  std::size_t skip = n > 0 && digits[0] == '+' ? 1 : 0;
  auto [end, ec] = std::from_chars(digits + skip, digits + n, count);
  if (n == skip || ec != std::errc() || end != digits + n)
    return r.Failed() ? false : P::Fail(file, "not a record header");
  while (IsBlank(r.Peek())) r.Get();
  std::string type;
  if (r.Get() != '\'') return r.Failed() ? false : P::Fail(file, "not a record header");
  while ((c = r.Get()) != '\'') {
    if (c < 0 || c == '\n' || type.size() >= 4)
      return r.Failed() ? false : P::Fail(file, "not a record header");
    type += static_cast<char>(c);
  }
  while (IsBlank(r.Peek())) r.Get();
  c = r.Get();
  int32_t newline = 1;
  if (c == '\r' && r.Get() == '\n')
    newline = 2;
  else if (c != '\n' && c >= 0)
    return P::Fail(file, "not a record header");
  if (r.Failed()) return false;

  std::size_t last = keyword.find_last_not_of(' ');
  keyword.erase(last == std::string::npos ? 0 : last + 1);
  h.keyword = std::move(keyword);
  h.count = count;
  h.type = std::move(type);
  h.headerPos = pos;
  h.payloadPos = r.Tell();
  h.newline = newline;
  if (!ParseSimType(h.type, h.kind, h.width)) return P::Fail(file, "unknown record type");
  if (h.count < 0) return P::Fail(file, "negative value count");
  if (h.kind == RecordType::Mess && h.count != 0) return P::Fail(file, "a MESS record with values");
  return true;
}

int64_t MinimumTextPayload(const SimHeader& h) {
  // A character and a separator a value.
  return h.count > 0 ? 2 * static_cast<int64_t>(h.count) - 1 : 0;
}

bool ReadTextValues(RecordFile& file, const SimHeader& h, float* out) {
  if (SimVarTypeOf(h.kind) == 0) return P::Fail(file, "the record holds no numbers");
  TextReader r(file, kPayloadChunk);
  r.Seek(h.payloadPos);
  char tok[kMaxToken];
  std::size_t len = 0;
  for (int64_t i = 0; i < h.count; ++i) {
    Token t = NextToken(r, tok, len);
    if (r.Failed()) return false;
    if (t == Token::End) return P::Fail(file, "the file ends inside a record");
    if (t == Token::Bad || !ParseTextValue(h.kind, tok, len, out[i])) {
      return tok[0] == '\'' && t == Token::Value
                 ? P::Fail(file, "the payload holds fewer values than its count")
                 : P::Fail(file, "a value that cannot be read");
    }
  }
  int64_t next = 0;
  return NextHeaderStart(file, r, next);
}

bool ReadTextValue(RecordFile& file, const SimHeader& h, int64_t index, float& out) {
  if (SimVarTypeOf(h.kind) == 0) return P::Fail(file, "the record holds no numbers");
  const TextLayout l = LayoutOf(h);
  // Where the standard layout puts the value's line: read it alone when it
  // starts a line, has that length and holds its values in their columns.
  if (l.perLine > 0) {
    const int64_t block = SimBlockSize(h.kind);
    const int64_t iBlock = index / block, inBlock = index % block;
    const int64_t valuesInBlock = std::min(block, h.count - iBlock * block);
    const int64_t line = inBlock / l.perLine;
    const int64_t onLine = std::min(l.perLine, valuesInBlock - line * l.perLine);
    const int64_t at =
        h.payloadPos + iBlock * BlockBytes(h, l, block) + line * (l.perLine * l.width + h.newline);
    const int64_t textBytes = onLine * l.width;
    char buf[128];
    if (1 + textBytes + h.newline <= static_cast<int64_t>(sizeof buf) &&
        at + textBytes + h.newline <= file.FileSize() &&
        ReadAt(file, at - 1, buf, 1 + textBytes + h.newline)) {
      const char* text = buf + 1;
      bool fits = buf[0] == '\n' &&
                  (h.newline == 1 ? text[textBytes] == '\n'
                                  : text[textBytes] == '\r' && text[textBytes + 1] == '\n');
      for (int64_t k = 0; fits && k < onLine; ++k) {
        const char* field = text + k * l.width;
        // Right aligned after at least one blank, no blank inside.
        int64_t first = l.width;
        while (first > 0 && !IsSpace(field[first - 1])) --first;
        fits = first > 0 && first < l.width;
        for (int64_t i = 0; fits && i < first; ++i) fits = IsBlank(field[i]);
      }
      if (fits) {
        const char* field = text + (inBlock % l.perLine) * l.width;
        int64_t first = l.width;
        while (!IsSpace(field[first - 1])) --first;
        if (!ParseTextValue(h.kind, field + first, static_cast<std::size_t>(l.width - first), out))
          return P::Fail(file, "a value that cannot be read");
        return true;
      }
    }
  }
  // Laid out otherwise: count the values from the start of the payload.
  return ScanValues(file, h, index, &out);
}

bool IndexText(RecordFile& file, std::vector<SimRecordInfo>& records) {
  const int64_t size = file.FileSize();
  int64_t pos = 0;
  {
    TextReader r(file, kHeaderChunk);
    r.Seek(0);
    if (!NextHeaderStart(file, r, pos)) return P::Fail(file, "not a record header");
  }
  SimHeader h, next;
  bool haveNext = false;
  while (pos < size) {
    if (haveNext) {
      h = std::move(next);
      haveNext = false;
    } else if (!ReadTextHeader(file, pos, h)) {
      return false;
    }
    // Step over the payload by its size in the standard layout when a
    // header line starts there; otherwise count its values.
    const TextLayout l = LayoutOf(h);
    int64_t after = -1;
    if (h.kind == RecordType::Mess || l.perLine > 0) {
      int64_t guess = h.payloadPos + (h.kind == RecordType::Mess ? 0 : StandardPayloadBytes(h, l));
      char before = 0;
      if (guess == size) {
        after = guess;
      } else if (guess < size && ReadAt(file, guess - 1, &before, 1) && before == '\n' &&
                 ReadTextHeader(file, guess, next)) {
        after = guess;
        haveNext = true;
      }
    }
    if (after < 0 && !WalkPayload(file, h, after)) return false;
    records.push_back(SimInfoOf(h));
    pos = after;
  }
  return true;
}

}  // namespace vndata::detail
