#include "vndata/platform/record_file.h"
#include "vndata/platform/internal/record_bytes.h"
#include "vndata/platform/internal/run_guarded.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "vndata/platform/module_state.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

// A sequential reader reads ahead in larger steps than a random reader,
// which jumps and would waste what it read ahead. Bulk payloads that need a
// byte swap are read in staging pieces of kBulkPiece (a multiple of both
// buffer sizes, so that reads stay aligned). Writes all go through the
// buffer, which is where they are byte-swapped; a large one keeps the
// system calls few.
constexpr std::size_t kSequentialBuffer = 1 << 16;
constexpr std::size_t kRandomBuffer = 1 << 13;
constexpr std::size_t kWriteBuffer = 1 << 18;
constexpr std::size_t kBulkPiece = 1 << 18;

// read(2) until n bytes, end of file or an error; the bytes read.
std::size_t ReadFully(int fd, uint8_t* dst, std::size_t n) {
  std::size_t got = 0;
  while (got < n) {
    ssize_t r = ::read(fd, dst + got, n - got);
    if (r < 0 && errno == EINTR) continue;
    if (r <= 0) break;
    got += static_cast<std::size_t>(r);
  }
  return got;
}

bool WriteFully(int fd, const uint8_t* src, std::size_t n) {
  std::size_t put = 0;
  while (put < n) {
    ssize_t r = ::write(fd, src + put, n - put);
    if (r < 0 && errno == EINTR) continue;
    if (r <= 0) return false;
    put += static_cast<std::size_t>(r);
  }
  return true;
}

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
  RunGuarded("RecordFile (Open)", [&] {
    Close();
    name_ = zName;
    lastError_.clear();
    bool writing = mode == RecordFileMode::Write;
    int fd = writing ? ::open(zName.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)
                     : ::open(zName.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
      Fail(writing ? "cannot create the file" : "cannot open the file");
      return;
    }
    struct stat st {};
    if (fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
      ::close(fd);
      Fail("not a regular file");
      return;
    }
    std::size_t cap = writing                        ? kWriteBuffer
                      : mode == RecordFileMode::Read ? kSequentialBuffer
                                                     : kRandomBuffer;
    if (bufCap_ != cap) {
      buf_.reset(new uint8_t[cap]);
      bufCap_ = cap;
    }
    bufBegin_ = bufEnd_ = 0;
    bufStart_ = 0;
    fd_ = fd;
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
  if (fd_ < 0) return;
  bool ok = mode_ != RecordFileMode::Write || Flush();
  if (::close(fd_) != 0) ok = false;
  if (!ok) {
    qOK = false;
    lastError_ = "the file could not be written completely";
  }
  fd_ = -1;
  mode_ = RecordFileMode::Closed;
  pos_ = 0;
  size_ = 0;
  bufBegin_ = bufEnd_ = 0;
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
  cur_ = Cursor{};
  if (!MoveTo(iPos)) {
    Fail("cannot move in the file");
    return;
  }
  qOK = true;
}

bool RecordFile::MoveTo(int64_t iPos) {
  // A jump within the bytes already buffered costs nothing.
  if (iPos >= bufStart_ && iPos <= bufStart_ + static_cast<int64_t>(bufEnd_)) {
    bufBegin_ = static_cast<std::size_t>(iPos - bufStart_);
    pos_ = iPos;
    return true;
  }
  // Otherwise refill the buffer from the aligned offset below iPos, which
  // keeps every later read from the system aligned.
  int64_t start = iPos / static_cast<int64_t>(bufCap_) * static_cast<int64_t>(bufCap_);
  if (::lseek(fd_, static_cast<off_t>(start), SEEK_SET) < 0) return false;
  bufStart_ = start;
  bufEnd_ = ReadFully(fd_, buf_.get(), bufCap_);
  if (static_cast<int64_t>(bufEnd_) < iPos - start) {
    // The file has shrunk under us: stay where the system now stands.
    bufBegin_ = bufEnd_;
    pos_ = bufStart_ + static_cast<int64_t>(bufEnd_);
    return false;
  }
  bufBegin_ = static_cast<std::size_t>(iPos - start);
  pos_ = iPos;
  return true;
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
  RunGuarded("RecordFile (ProgressTick)", [] {
    if (auto& container = Module().pctContainer) container->Tick();
  });
}

void RecordFile::Fail(const char* zWhy) {
  lastError_ = zWhy;
  // A failed read or write leaves no record to continue: the next operation
  // starts afresh at the position where this one stopped.
  cur_ = Cursor{};
}

namespace {

// Puts bytes that arrive in pieces into the caller's memory, reversing the
// byte order of each value of width w on the way (w 1: plain copies). A
// value cut between two pieces is completed in place.
class Delivery {
 public:
  Delivery(uint8_t* out, std::size_t w) : out_(out), w_(w) {}
  void Put(const uint8_t* src, std::size_t len) {
    if (w_ == 1) {
      std::memcpy(out_ + done_, src, len);
      done_ += len;
      return;
    }
    if (done_ > swapped_) {  // complete the value cut by the last piece
      std::size_t k = std::min(len, w_ - (done_ - swapped_));
      std::memcpy(out_ + done_, src, k);
      done_ += k;
      src += k;
      len -= k;
      if (done_ - swapped_ == w_) {
        record_bytes::SwapInPlace(out_ + swapped_, 1, static_cast<int32_t>(w_));
        swapped_ = done_;
      }
    }
    std::size_t values = len / w_;
    record_bytes::CopySwapped(out_ + done_, src, values, static_cast<int32_t>(w_));
    done_ += values * w_;
    swapped_ = done_;
    std::memcpy(out_ + done_, src + values * w_, len - values * w_);
    done_ += len - values * w_;
  }
  std::size_t Done() const { return done_; }
  uint8_t* Next() const { return out_ + done_; }
  void Skip(std::size_t len) { done_ += len; }  // bytes placed directly (w 1 only)

 private:
  uint8_t* out_;
  std::size_t w_;
  std::size_t done_ = 0;
  std::size_t swapped_ = 0;
};

}  // namespace

bool RecordFile::ReadExact(void* dst, std::size_t n, int32_t swapWidth) {
  if (!Reading()) {
    Fail("the file is not open for reading");
    return false;
  }
  if (n == 0) return true;
  if (static_cast<uint64_t>(BytesLeft()) < n) {
    Fail("the file ends inside a record");
    return false;
  }
  const bool swap = swapWidth > 1 && record_bytes::kSwapNeeded;
  Delivery out(static_cast<uint8_t*>(dst), swap ? static_cast<std::size_t>(swapWidth) : 1);
  std::size_t have = std::min(n, bufEnd_ - bufBegin_);
  out.Put(buf_.get() + bufBegin_, have);
  bufBegin_ += have;
  pos_ += static_cast<int64_t>(have);
  // Here the buffer is used up and the system's offset, bufStart_ +
  // bufEnd_, is a multiple of the buffer size. Whole buffers' worth are read
  // in one go: straight into the caller's memory when they need no swap,
  // else through a cache-sized staging piece that is swapped on its way out
  // (far cheaper than swapping the caller's memory in a second pass). The
  // rest goes through the buffer, so every read from the system is aligned.
  while (out.Done() < n) {
    std::size_t want = n - out.Done();
    bufStart_ += static_cast<int64_t>(bufEnd_);
    bufBegin_ = bufEnd_ = 0;
    std::size_t got = 0;
    std::size_t step = want;
    if (want >= bufCap_) {
      step = want / bufCap_ * bufCap_;
      if (swap) {
        if (!bulk_) bulk_.reset(new uint8_t[kBulkPiece]);
        step = std::min(step, kBulkPiece);
        got = ReadFully(fd_, bulk_.get(), step);
        out.Put(bulk_.get(), got);
      } else {
        got = ReadFully(fd_, out.Next(), step);
        out.Skip(got);
      }
      bufStart_ += static_cast<int64_t>(got);
    } else {
      bufEnd_ = ReadFully(fd_, buf_.get(), bufCap_);
      got = std::min(want, bufEnd_);
      out.Put(buf_.get(), got);
      bufBegin_ = got;
    }
    pos_ += static_cast<int64_t>(got);
    if (got != step) {
      Fail("the file ends inside a record");
      return false;
    }
  }
  return true;
}

bool RecordFile::Flush() {
  if (bufEnd_ == 0) return true;
  bool ok = WriteFully(fd_, buf_.get(), bufEnd_);
  bufEnd_ = 0;
  if (!ok) Fail("write failed");
  return ok;
}

bool RecordFile::WriteExact(const void* src, std::size_t n, int32_t swapWidth) {
  if (mode_ != RecordFileMode::Write) {
    Fail("the file is not open for writing");
    return false;
  }
  const auto* in = static_cast<const uint8_t*>(src);
  const bool swap = swapWidth > 1 && record_bytes::kSwapNeeded;
  const std::size_t w = swap ? static_cast<std::size_t>(swapWidth) : 1;
  if (n % w != 0) {
    Fail("not a whole number of values");
    return false;
  }
  // The buffer is written to the system only when full, so every write
  // starts at a multiple of the buffer size; files written in aligned
  // pieces are also faster to read back.
  std::size_t left = n;
  while (left > 0) {
    std::size_t space = bufCap_ - bufEnd_;
    uint8_t* at = buf_.get() + bufEnd_;
    if (!swap) {
      std::size_t k = std::min(left, space);
      std::memcpy(at, in, k);
      bufEnd_ += k;
      in += k;
      left -= k;
    } else if (space >= w) {
      std::size_t values = std::min(left, space) / w;
      record_bytes::CopySwapped(at, in, values, swapWidth);
      bufEnd_ += values * w;
      in += values * w;
      left -= values * w;
    } else {
      // A value that straddles the end of the buffer.
      uint8_t one[8];
      record_bytes::CopySwapped(one, in, 1, swapWidth);
      std::memcpy(at, one, space);
      bufEnd_ = bufCap_;
      if (!Flush()) return false;
      std::memcpy(buf_.get(), one + space, w - space);
      bufEnd_ = w - space;
      in += w;
      left -= w;
    }
    if (bufEnd_ == bufCap_ && !Flush()) return false;
  }
  pos_ += static_cast<int64_t>(n);
  if (pos_ > size_) size_ = pos_;
  return true;
}

}  // namespace vndata
