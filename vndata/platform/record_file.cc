#include "vndata/platform/record_file.h"

#include <sys/stat.h>

#include <cerrno>

#include "vndata/platform/module_state.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {
// A sequential reader reads ahead in large steps; a random reader jumps and
// keeps the buffer small; a writer batches the small header records.
constexpr std::size_t kSequentialBuffer = 1 << 20;
constexpr std::size_t kRandomBuffer = 1 << 14;
constexpr std::size_t kWriteBuffer = 1 << 18;
}  // namespace

RecordFile::~RecordFile() { Close(); }

void RecordFile::OpenForWrite(const std::string& zName, bool& qOK) {
  Open(zName, RecordFileMode::Write, qOK);
}

void RecordFile::OpenForRead(const std::string& zName, bool& qOK) {
  Open(zName, RecordFileMode::Read, qOK);
}

void RecordFile::OpenForRandomRead(const std::string& zName, bool& qOK) {
  Open(zName, RecordFileMode::RandomRead, qOK);
}

void RecordFile::Open(const std::string& zName, RecordFileMode mode, bool& qOK) {
  qOK = false;
  static const std::string kTag = "RecordFile (Open)";
  RunGuarded(kTag, [&] {
    Close();
    name_ = zName;
    lastError_.clear();
    bool writing = mode == RecordFileMode::Write;
    std::FILE* fp = std::fopen(zName.c_str(), writing ? "wb" : "rb");
    if (fp == nullptr) {
      Fail(writing ? "cannot create the file" : "cannot open the file");
      return;
    }
    struct stat st {};
    if (fstat(fileno(fp), &st) != 0 || !S_ISREG(st.st_mode)) {
      std::fclose(fp);
      Fail("not a regular file");
      return;
    }
    std::size_t buffer = writing ? kWriteBuffer
                         : mode == RecordFileMode::Read ? kSequentialBuffer
                                                        : kRandomBuffer;
    std::setvbuf(fp, nullptr, _IOFBF, buffer);
    fp_ = fp;
    mode_ = mode;
    pos_ = 0;
    size_ = writing ? 0 : static_cast<int64_t>(st.st_size);
    cur_ = Cursor{};
    qOK = true;
  });
}

void RecordFile::Close() {
  bool qOK = false;
  Close(qOK);
}

void RecordFile::Close(bool& qOK) {
  qOK = true;
  if (fp_ == nullptr) return;
  if (std::fclose(fp_) != 0) {
    qOK = false;
    lastError_ = "the file could not be written completely";
  }
  fp_ = nullptr;
  mode_ = RecordFileMode::Closed;
  pos_ = 0;
  size_ = 0;
  cur_ = Cursor{};
}

void RecordFile::SetPosition(int64_t iPos, bool& qOK) {
  qOK = false;
  if (!Reading()) {
    Fail("the file is not open for reading");
    return;
  }
  if (iPos < 0 || iPos > size_) {
    Fail("position outside the file");
    return;
  }
  if (fseeko(fp_, static_cast<off_t>(iPos), SEEK_SET) != 0) {
    Fail("cannot move in the file");
    return;
  }
  pos_ = iPos;
  cur_ = Cursor{};
  qOK = true;
}

void RecordFile::SetPosition(int32_t iPos1, int32_t iPos2, bool& qOK) {
  uint64_t pos = (static_cast<uint64_t>(static_cast<uint32_t>(iPos2)) << 32) |
                 static_cast<uint64_t>(static_cast<uint32_t>(iPos1));
  if (pos > static_cast<uint64_t>(INT64_MAX)) {
    qOK = false;
    Fail("position outside the file");
    return;
  }
  SetPosition(static_cast<int64_t>(pos), qOK);
}

void RecordFile::AtEndOfFile(int32_t& iPos1, int32_t& iPos2, bool& qEOF) {
  uint64_t pos = static_cast<uint64_t>(pos_);
  iPos1 = static_cast<int32_t>(static_cast<uint32_t>(pos & 0xFFFFFFFFu));
  iPos2 = static_cast<int32_t>(static_cast<uint32_t>(pos >> 32));
  qEOF = !Reading() || pos_ >= size_;
}

void RecordFile::ProgressTick() {
  static const std::string kTag = "RecordFile (ProgressTick)";
  RunGuarded(kTag, [] {
    if (auto& container = Module().pctContainer) container->Tick();
  });
}

void RecordFile::Fail(const char* zWhy) {
  lastError_ = zWhy;
  // A failed read or write leaves no record to continue: the next operation
  // starts afresh at the position where this one stopped.
  cur_ = Cursor{};
}

bool RecordFile::ReadExact(void* dst, std::size_t n) {
  if (!Reading()) {
    Fail("the file is not open for reading");
    return false;
  }
  if (n == 0) return true;
  if (static_cast<uint64_t>(BytesLeft()) < n) {
    Fail("the file ends inside a record");
    return false;
  }
  std::size_t got = std::fread(dst, 1, n, fp_);
  pos_ += static_cast<int64_t>(got);
  if (got != n) {
    Fail("the file ends inside a record");
    return false;
  }
  return true;
}

bool RecordFile::WriteExact(const void* src, std::size_t n) {
  if (mode_ != RecordFileMode::Write) {
    Fail("the file is not open for writing");
    return false;
  }
  if (n == 0) return true;
  std::size_t put = std::fwrite(src, 1, n, fp_);
  pos_ += static_cast<int64_t>(put);
  if (pos_ > size_) size_ = pos_;
  if (put != n) {
    Fail("write failed");
    return false;
  }
  return true;
}

}  // namespace vndata
