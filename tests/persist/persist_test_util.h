// Helpers for the persistence tests: a temporary record file, records
// written through the codec, and raw bytes for what the codec refuses to
// write.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "vndata/platform/message_log.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/record_codec.h"
#include "vndata/platform/record_file.h"
#include "vndata/platform/variant.h"

namespace vndata::persist_test {

// A test that owns one file in a fresh temporary folder, removed afterwards.
class RecordFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    MessageLog::Shared().Clear();
    Module().CancelLoad = false;
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    dir_ = std::filesystem::temp_directory_path() /
           ("vndata_persist_" + std::string(info->test_suite_name()) + "_" + info->name());
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_);
    name_ = (dir_ / "stream.bin").string();
  }
  void TearDown() override {
    reader_.Close();
    std::filesystem::remove_all(dir_);
    Module().CancelLoad = false;
    MessageLog::Shared().Clear();
  }

  // Writes the file through fn and opens it for reading.
  void Write(const std::function<void(RecordCodec&, RecordFile&)>& fn) {
    RecordFile w;
    bool qOK = false;
    w.OpenForWrite(name_, qOK);
    ASSERT_TRUE(qOK);
    RecordCodec codec;
    fn(codec, w);
    w.Close(qOK);
    ASSERT_TRUE(qOK);
    OpenReader();
  }
  void OpenReader() {
    bool qOK = false;
    reader_.Close();
    reader_.OpenForRead(name_, qOK);
    ASSERT_TRUE(qOK);
  }
  // Puts raw bytes in the file and opens it for reading.
  void WriteRaw(const std::vector<uint8_t>& bytes) {
    std::ofstream f(name_, std::ios::binary | std::ios::trunc);
    f.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
    f.close();
    OpenReader();
  }
  std::vector<uint8_t> FileBytes() const {
    std::ifstream f(name_, std::ios::binary);
    return std::vector<uint8_t>((std::istreambuf_iterator<char>(f)),
                                std::istreambuf_iterator<char>());
  }
  // Keeps the first n bytes of the file and opens it for reading.
  void Truncate(std::size_t n) {
    std::vector<uint8_t> b = FileBytes();
    b.resize(n);
    WriteRaw(b);
  }

  std::filesystem::path dir_;
  std::string name_;
  RecordFile reader_;
};

// Record writers on an open file (the writer does not look at qOK).
inline void Tag(RecordCodec& c, RecordFile& f, const std::string& zKeyword) {
  bool qOK = false;
  c.WriteHeader(f, zKeyword, 0, "CHAR", qOK);
}
inline void Text(RecordCodec& c, RecordFile& f, const std::string& zKeyword,
                 const std::vector<std::string>& zValues) {
  bool qOK = false;
  c.WriteHeader(f, zKeyword, static_cast<int32_t>(zValues.size()), "CHAR", qOK);
  for (const std::string& z : zValues) c.WriteValue(f, Variant(z), qOK);
}
inline void Ints(RecordCodec& c, RecordFile& f, const std::string& zKeyword,
                 const std::vector<int32_t>& values, const std::string& zType = "INTE") {
  bool qOK = false;
  c.WriteHeader(f, zKeyword, static_cast<int32_t>(values.size()), zType, qOK);
  for (int32_t v : values) c.WriteValue(f, Variant(v), qOK);
}
inline void Reals(RecordCodec& c, RecordFile& f, const std::string& zKeyword,
                  const std::vector<float>& values) {
  bool qOK = false;
  c.WriteHeader(f, zKeyword, static_cast<int32_t>(values.size()), "REAL", qOK);
  for (float v : values) c.WriteValue(f, Variant(v), qOK);
}
inline void Doubles(RecordCodec& c, RecordFile& f, const std::string& zKeyword,
                    const std::vector<double>& values) {
  bool qOK = false;
  c.WriteHeader(f, zKeyword, static_cast<int32_t>(values.size()), "DOUB", qOK);
  for (double v : values) c.WriteValue(f, Variant(v), qOK);
}
inline void Logicals(RecordCodec& c, RecordFile& f, const std::string& zKeyword,
                     const std::vector<bool>& values) {
  bool qOK = false;
  c.WriteHeader(f, zKeyword, static_cast<int32_t>(values.size()), "LOGI", qOK);
  for (bool v : values) c.WriteValue(f, Variant(v), qOK);
}
inline void Bytes(RecordCodec& c, RecordFile& f, const std::string& zKeyword,
                  const std::vector<uint8_t>& values) {
  bool qOK = false;
  Array<uint8_t> a(1, static_cast<int32_t>(values.size()));
  for (std::size_t i = 0; i < values.size(); ++i) a(static_cast<int32_t>(i + 1)) = values[i];
  c.WriteHeader(f, zKeyword, static_cast<int32_t>(values.size()), "BYTE", qOK);
  c.WriteByteArray(static_cast<int32_t>(values.size()), a, f, qOK);
}

// Raw bytes of the layout, for records the codec will not write.
inline void PutBE32(std::vector<uint8_t>& b, int32_t v) {
  uint32_t u = static_cast<uint32_t>(v);
  for (int s = 24; s >= 0; s -= 8) b.push_back(static_cast<uint8_t>(u >> s));
}
inline void RawHeader(std::vector<uint8_t>& b, const std::string& zKeyword, int32_t count,
                      const std::string& zType) {
  PutBE32(b, 24);
  std::string k = zKeyword;
  k.resize(16, ' ');
  b.insert(b.end(), k.begin(), k.end());
  PutBE32(b, count);
  b.insert(b.end(), zType.begin(), zType.begin() + 4);
  PutBE32(b, 24);
}
inline void RawInts(std::vector<uint8_t>& b, const std::vector<int32_t>& values) {
  PutBE32(b, static_cast<int32_t>(4 * values.size()));
  for (int32_t v : values) PutBE32(b, v);
  PutBE32(b, static_cast<int32_t>(4 * values.size()));
}

}  // namespace vndata::persist_test
