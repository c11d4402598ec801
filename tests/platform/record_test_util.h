// Helpers shared by the record file tests: a temporary folder that removes
// itself, whole-file byte access to check layouts byte for byte, and the
// fixture that writes a record file and opens it again for reading.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "vndata/platform/message_log.h"
#include "vndata/platform/record_codec.h"

namespace vndata::record_test {

class TempDir {
 public:
  // qInMemory asks for a memory-backed folder (/dev/shm) where there is one,
  // for tests that rewrite files many times and must not wait on the disk.
  explicit TempDir(bool qInMemory = false) {
    std::error_code ec;
    std::filesystem::path base = std::filesystem::temp_directory_path();
    if (qInMemory && std::filesystem::is_directory("/dev/shm", ec)) base = "/dev/shm";
    std::string pattern = (base / "vndata_records_XXXXXX").string();
    std::vector<char> buf(pattern.begin(), pattern.end());
    buf.push_back('\0');
    char* made = mkdtemp(buf.data());
    if (made != nullptr) path_ = made;
  }
  ~TempDir() {
    std::error_code ec;
    if (!path_.empty()) std::filesystem::remove_all(path_, ec);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  std::string File(const std::string& name) const { return (path_ / name).string(); }
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

inline std::vector<uint8_t> ReadAllBytes(const std::string& name) {
  std::ifstream in(name, std::ios::binary);
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

inline void WriteAllBytes(const std::string& name, const std::vector<uint8_t>& bytes) {
  std::ofstream out(name, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
}

// Builders for expected bytes.
inline void PutBE32(std::vector<uint8_t>& b, int32_t v) {
  uint32_t u = static_cast<uint32_t>(v);
  for (int s = 24; s >= 0; s -= 8) b.push_back(static_cast<uint8_t>(u >> s));
}
inline void PutText(std::vector<uint8_t>& b, const std::string& s) {
  b.insert(b.end(), s.begin(), s.end());
}
// One physical record around the given bytes.
inline void PutRecord(std::vector<uint8_t>& b, const std::vector<uint8_t>& body) {
  PutBE32(b, static_cast<int32_t>(body.size()));
  b.insert(b.end(), body.begin(), body.end());
  PutBE32(b, static_cast<int32_t>(body.size()));
}
inline std::vector<uint8_t> HeaderBody(const std::string& keyword, std::size_t width, int32_t count,
                                       const std::string& type) {
  std::vector<uint8_t> body;
  std::string k = keyword;
  k.resize(width, ' ');
  PutText(body, k);
  PutBE32(body, count);
  PutText(body, type);
  return body;
}

// The quote argument of the array reads.
inline const std::string Q = "'";

// A file to write records into and read them back from.
class RecordCodecTest : public ::testing::Test {
 protected:
  // Writes a file through fn and opens it again for reading.
  void Write(const std::function<void(RecordFile&)>& fn) {
    RecordFile w;
    bool qOK = false;
    w.OpenForWrite(name_, qOK);
    ASSERT_TRUE(qOK);
    fn(w);
    w.Close(qOK);
    ASSERT_TRUE(qOK);
    reader_.OpenForRead(name_, qOK);
    ASSERT_TRUE(qOK);
  }
  // Puts raw bytes in the file and opens it for reading.
  void Raw(const std::vector<uint8_t>& bytes) {
    WriteAllBytes(name_, bytes);
    bool qOK = false;
    reader_.OpenForRead(name_, qOK);
    ASSERT_TRUE(qOK);
  }
  std::vector<uint8_t> Bytes() const { return ReadAllBytes(name_); }
  void ExpectHeader(const std::string& keyword, int32_t count, const std::string& type) {
    std::string k, t;
    int32_t n = -7;
    bool qOK = false;
    codec_.ReadHeader(reader_, k, n, t, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    EXPECT_EQ(k, keyword);
    EXPECT_EQ(n, count);
    EXPECT_EQ(t, type);
  }
  bool HeaderFails() {
    std::string k, t;
    int32_t n = 0;
    bool qOK = true;
    codec_.ReadHeader(reader_, k, n, t, qOK);
    return !qOK;
  }
  bool AtEnd() {
    int32_t p1 = 0, p2 = 0;
    bool qEOF = false;
    reader_.AtEndOfFile(p1, p2, qEOF);
    return qEOF;
  }
  void SetUp() override { MessageLog::Shared().Clear(); }

  TempDir dir_;
  std::string name_ = dir_.File("records.bin");
  RecordCodec codec_;
  RecordFile reader_;
};

}  // namespace vndata::record_test
