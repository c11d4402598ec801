// Helpers of the simulator file reader tests: binary result files laid out
// byte by byte, the position words of an offset, and a fixture that puts
// bytes in a file and opens it through SimFileIO.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/platform/record_test_util.h"
#include "vndata/platform/message_log.h"
#include "vndata/platform/sim_file_io.h"

namespace vndata::sim_test {

using record_test::PutBE32;
using record_test::PutText;
using record_test::TempDir;

inline int32_t Low(int64_t pos) { return static_cast<int32_t>(static_cast<uint32_t>(pos)); }
inline int32_t High(int64_t pos) {
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(pos) >> 32));
}

inline void PutBE64(std::vector<uint8_t>& b, uint64_t u) {
  for (int s = 56; s >= 0; s -= 8) b.push_back(static_cast<uint8_t>(u >> s));
}

// A binary result file under construction. Each record method returns the
// offset of the record's header, and lays its payload out in physical
// records of at most `block` values, as the simulator files are.
class BinaryFile {
 public:
  int64_t Header(const std::string& keyword, int32_t count, const std::string& type) {
    int64_t at = static_cast<int64_t>(b.size());
    std::string k = keyword;
    k.resize(8, ' ');
    PutBE32(b, 16);
    PutText(b, k);
    PutBE32(b, count);
    PutText(b, type);
    PutBE32(b, 16);
    return at;
  }
  int64_t Ints(const std::string& keyword, const std::vector<int32_t>& v,
               const std::string& type = "INTE", int block = 1000) {
    int64_t at = Header(keyword, static_cast<int32_t>(v.size()), type);
    Blocks(v.size(), 4, block, [&](std::size_t i) { PutBE32(b, v[i]); });
    return at;
  }
  int64_t Reals(const std::string& keyword, const std::vector<float>& v, int block = 1000) {
    int64_t at = Header(keyword, static_cast<int32_t>(v.size()), "REAL");
    Blocks(v.size(), 4, block,
           [&](std::size_t i) { PutBE32(b, static_cast<int32_t>(std::bit_cast<uint32_t>(v[i]))); });
    return at;
  }
  int64_t Doubles(const std::string& keyword, const std::vector<double>& v, int block = 1000) {
    int64_t at = Header(keyword, static_cast<int32_t>(v.size()), "DOUB");
    Blocks(v.size(), 8, block, [&](std::size_t i) { PutBE64(b, std::bit_cast<uint64_t>(v[i])); });
    return at;
  }
  int64_t Names(const std::string& keyword, const std::vector<std::string>& v, int width = 8,
                int block = 105) {
    std::string type =
        width == 8 ? "CHAR" : "C0" + std::to_string(width / 10) + std::to_string(width % 10);
    int64_t at = Header(keyword, static_cast<int32_t>(v.size()), type);
    Blocks(v.size(), width, block, [&](std::size_t i) {
      std::string s = v[i];
      s.resize(static_cast<std::size_t>(width), ' ');
      PutText(b, s);
    });
    return at;
  }
  int64_t Size() const { return static_cast<int64_t>(b.size()); }

  std::vector<uint8_t> b;

 private:
  template <class F>
  void Blocks(std::size_t n, int width, int block, F put) {
    for (std::size_t start = 0; start < n; start += static_cast<std::size_t>(block)) {
      std::size_t k = std::min(n - start, static_cast<std::size_t>(block));
      PutBE32(b, static_cast<int32_t>(k) * width);
      for (std::size_t i = start; i < start + k; ++i) put(i);
      PutBE32(b, static_cast<int32_t>(k) * width);
    }
  }
};

// Writes bytes at an offset of a file, leaving what lies between as a hole
// (a sparse file: it takes no room on disk).
inline bool WriteAt(const std::string& name, int64_t offset, const std::vector<uint8_t>& bytes) {
  int fd = ::open(name.c_str(), O_WRONLY | O_CREAT, 0644);
  if (fd < 0) return false;
  bool ok = ::pwrite(fd, bytes.data(), bytes.size(), static_cast<off_t>(offset)) ==
            static_cast<ssize_t>(bytes.size());
  return ::close(fd) == 0 && ok;
}

inline std::vector<uint8_t> TextBytes(const std::string& s) {
  return std::vector<uint8_t>(s.begin(), s.end());
}

// A file of given bytes opened through SimFileIO.
class SimFileTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::Shared().Clear(); }

  void Open(const std::vector<uint8_t>& bytes) {
    record_test::WriteAllBytes(name_, bytes);
    bool qOK = false;
    io_.OpenForRead(name_, file_, qOK);
    ASSERT_TRUE(qOK) << file_.LastError();
  }
  void Open(const std::string& text) { Open(TextBytes(text)); }

  // ReadVector of the record at pos with the given flags and count.
  bool VectorCount(int64_t pos, int32_t flags, int32_t& nValues, Array<float>& values) {
    int32_t p1 = Low(pos), p2 = High(pos);
    bool qOK = false;
    io_.ReadVector(file_, p1, p2, flags, nValues, values, qOK);
    EXPECT_EQ(p1, Low(pos));
    EXPECT_EQ(p2, High(pos));
    return qOK;
  }
  bool Vector(int64_t pos, int32_t flags, int32_t nValues, Array<float>& values) {
    int32_t n = nValues;
    return VectorCount(pos, flags, n, values);
  }
  bool Masked(int64_t pos, int32_t flags, int32_t& nValues, const Array<int32_t>& mask,
              int32_t nMask, Array<float>& values) {
    int32_t p1 = Low(pos), p2 = High(pos);
    bool qOK = false;
    io_.ReadVector(file_, p1, p2, flags, nValues, mask, nMask, values, qOK);
    return qOK;
  }
  bool Value(int64_t pos, int32_t flags, int32_t nValues, int32_t iRow, float& v) {
    int32_t p1 = Low(pos), p2 = High(pos), n = nValues;
    bool qOK = false;
    io_.ReadValue(file_, p1, p2, flags, n, iRow, v, qOK);
    return qOK;
  }
  std::vector<float> Floats(const Array<float>& a) {
    return std::vector<float>(a.begin(), a.end());
  }

  TempDir dir_;
  std::string name_ = dir_.File("CASE.UNRST");
  SimFileIO io_;
  RecordFile file_;
};

}  // namespace vndata::sim_test
