// Damaged and misused record files: every failure is a false flag.
#include "vndata/platform/record_codec.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

#include "tests/platform/record_test_util.h"
#include "vndata/platform/message_log.h"

using namespace vndata;
using namespace vndata::record_test;

namespace {

// ---- damaged input -------------------------------------------------------------

TEST_F(RecordCodecTest, ReadingAHeaderAtTheEndOfTheFileIsFalse) {
  Raw({});
  EXPECT_TRUE(HeaderFails());
  EXPECT_EQ(reader_.LastError(), "end of file");
}

TEST_F(RecordCodecTest, ATruncatedHeaderIsFalse) {
  std::vector<uint8_t> b;
  PutRecord(b, HeaderBody("KEY", 16, 0, "CHAR"));
  b.resize(20);
  Raw(b);
  EXPECT_TRUE(HeaderFails());
  EXPECT_EQ(reader_.LastError(), "the file ends inside a record");
}

TEST_F(RecordCodecTest, LengthMarkersThatDisagreeAreFalse) {
  std::vector<uint8_t> b;
  PutRecord(b, HeaderBody("KEY", 16, 1, "INTE"));
  PutRecord(b, {0, 0, 0, 5});
  std::vector<uint8_t> bad = b;
  bad[31] = 25;  // trailing marker of the header
  Raw(bad);
  EXPECT_TRUE(HeaderFails());
  EXPECT_EQ(reader_.LastError(), "length markers disagree");
  bad = b;
  bad[b.size() - 1] = 3;  // trailing marker of the payload
  Raw(bad);
  ExpectHeader("KEY", 1, "INTE");
  Array<int32_t> r;
  bool qOK = true;
  codec_.ReadIntegerArray(1, Q, reader_, r, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(reader_.LastError(), "length markers disagree");
}

TEST_F(RecordCodecTest, APhysicalRecordOfAnotherLengthIsNotAHeader) {
  std::vector<uint8_t> b;
  PutRecord(b, {1, 2, 3, 4});
  Raw(b);
  EXPECT_TRUE(HeaderFails());
  EXPECT_EQ(reader_.LastError(), "not a record header");
}

TEST_F(RecordCodecTest, AnUnknownTypeIsFalseButTheHeaderIsReported) {
  std::vector<uint8_t> b;
  PutRecord(b, HeaderBody("ODDTYPE", 16, 0, "X231"));
  Raw(b);
  std::string k, t;
  int32_t n = -1;
  bool qOK = true;
  codec_.ReadHeader(reader_, k, n, t, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(reader_.LastError(), "unknown record type");
  EXPECT_EQ(k, "ODDTYPE");
  EXPECT_EQ(n, 0);
  EXPECT_EQ(t, "X231");
}

TEST_F(RecordCodecTest, ANegativeCountIsFalse) {
  std::vector<uint8_t> b;
  PutRecord(b, HeaderBody("NEG", 16, -5, "INTE"));
  Raw(b);
  EXPECT_TRUE(HeaderFails());
  EXPECT_EQ(reader_.LastError(), "negative count");
  Raw({});
  Array<int32_t> r;
  bool qOK = true;
  codec_.ReadIntegerArray(-1, Q, reader_, r, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(r.IsAllocated());
}

TEST_F(RecordCodecTest, ACountBeyondTheFileIsFalseBeforeAnyAllocation) {
  std::vector<uint8_t> b;
  PutRecord(b, HeaderBody("HUGE", 16, std::numeric_limits<int32_t>::max(), "REAL"));
  PutRecord(b, {0, 0, 0, 0});
  Raw(b);
  EXPECT_TRUE(HeaderFails());
  EXPECT_EQ(reader_.LastError(), "count beyond the end of the file");
  // The same count asked of the array read directly (a raw payload).
  bool qOK = false;
  reader_.SetPosition(int64_t{32}, qOK);
  Array<float> r;
  codec_.ReadRealArray(std::numeric_limits<int32_t>::max(), Q, reader_, r, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(r.IsAllocated());
  EXPECT_EQ(reader_.LastError(), "count beyond the end of the file");
}

TEST_F(RecordCodecTest, ATextLongerThanTheFileIsFalse) {
  std::vector<uint8_t> b;
  PutRecord(b, HeaderBody("APP", 16, 1, "CHAR"));
  PutBE32(b, 1000000);
  PutText(b, "short");
  Raw(b);
  ExpectHeader("APP", 1, "CHAR");
  std::string s = "kept";
  bool qOK = true;
  codec_.ReadValue(reader_, s, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(s, "kept");
  EXPECT_EQ(reader_.LastError(), "record length beyond the end of the file");
}

TEST_F(RecordCodecTest, ReadingMoreValuesThanTheRecordHoldsIsFalse) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "APPVERSION", 1, "INTE", qOK);
    codec_.WriteValue(f, Variant(int32_t{6}), qOK);
    codec_.WriteHeader(f, "NEXT", 3, "INTE", qOK);
    codec_.WriteIntegerArray(3, 0, Array<int32_t>{1, 2, 3}, f, qOK);
  });
  ExpectHeader("APPVERSION", 1, "INTE");
  Array<int32_t> r;
  bool qOK = true;
  codec_.ReadIntegerArray(3, Q, reader_, r, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(reader_.LastError(), "more values than the record holds");
  EXPECT_EQ(reader_.Position(), 32);
}

TEST_F(RecordCodecTest, APayloadLongerThanItsCountIsFalse) {
  std::vector<uint8_t> b;
  PutRecord(b, HeaderBody("TWO", 16, 2, "INTE"));
  PutRecord(b, {0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3});
  Raw(b);
  ExpectHeader("TWO", 2, "INTE");
  Array<int32_t> r;
  bool qOK = true;
  codec_.ReadIntegerArray(2, Q, reader_, r, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(reader_.LastError(), "the payload holds more values than its count");
}

TEST_F(RecordCodecTest, AnArrayReadOfAnotherTypeIsRefused) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "R", 1, "REAL", qOK);
    codec_.WriteValue(f, Variant(1.0f), qOK);
  });
  ExpectHeader("R", 1, "REAL");
  Array<int32_t> r;
  bool qOK = true;
  codec_.ReadIntegerArray(1, Q, reader_, r, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(reader_.LastError(), "the record is of another type");
  EXPECT_EQ(reader_.Position(), 32);
}

TEST_F(RecordCodecTest, WritingBeyondTheCountIsRefused) {
  RecordFile f;
  bool qOK = false;
  f.OpenForWrite(name_, qOK);
  codec_.WriteHeader(f, "ONE", 1, "INTE", qOK);
  codec_.WriteValue(f, Variant(int32_t{1}), qOK);
  EXPECT_TRUE(qOK);
  int64_t size = f.FileSize();
  codec_.WriteValue(f, Variant(int32_t{2}), qOK);
  EXPECT_FALSE(qOK);
  codec_.WriteHeader(f, "TWO", 2, "INTE", qOK);
  size = f.FileSize();
  codec_.WriteIntegerArray(3, 0, Array<int32_t>{1, 2, 3}, f, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(f.FileSize(), size);
}

TEST_F(RecordCodecTest, AHeaderInsideAPayloadRecordIsFalse) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "R", 4, "REAL", qOK);
    codec_.WriteRealArray(4, 0, Array<float>{1, 2, 3, 4}, f, qOK);
  });
  ExpectHeader("R", 4, "REAL");
  float x = 0;
  bool qOK = false;
  codec_.ReadValue(reader_, x, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_TRUE(HeaderFails());
  EXPECT_EQ(reader_.LastError(), "a header cannot start inside a payload record");
}

TEST_F(RecordCodecTest, OperationsOnAFileInTheWrongModeAreFalse) {
  RecordFile closed;
  bool qOK = true;
  codec_.WriteHeader(closed, "X", 0, "CHAR", qOK);
  EXPECT_FALSE(qOK);
  std::string k, t;
  int32_t n = 0;
  qOK = true;
  codec_.ReadHeader(closed, k, n, t, qOK);
  EXPECT_FALSE(qOK);
  Write([&](RecordFile&) {});
  qOK = true;
  codec_.WriteHeader(reader_, "X", 0, "CHAR", qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(reader_.LastError(), "the file is not open for writing");
}

}  // namespace
