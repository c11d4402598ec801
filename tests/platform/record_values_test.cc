// Single values, array targets, large payloads and a read loop.
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

// ---- single values -----------------------------------------------------------

TEST_F(RecordCodecTest, TheRecordTypeNotTheVariantDecidesTheEncoding) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "CREATIONTYPES>", 3, "INTE", qOK);
    codec_.WriteValue(f, Variant(int16_t{-7}), qOK);
    codec_.WriteValue(f, Variant(int32_t{70000}), qOK);
    codec_.WriteValue(f, Variant(2.5), qOK);  // rounds half to even
    codec_.WriteHeader(f, "DSTIMEINDAYS", 1, "REAL", qOK);
    codec_.WriteValue(f, Variant(0.1), qOK);
    codec_.WriteHeader(f, "DSACCINTERVAL", 1, "CHAR", qOK);
    codec_.WriteValue(f, Variant(int32_t{12}), qOK);
    ASSERT_TRUE(qOK);
  });
  ExpectHeader("CREATIONTYPES>", 3, "INTE");
  Array<int32_t> ints;
  bool qOK = false;
  codec_.ReadIntegerArray(3, Q, reader_, ints, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ints(1), -7);
  EXPECT_EQ(ints(2), 70000);
  EXPECT_EQ(ints(3), 2);
  ExpectHeader("DSTIMEINDAYS", 1, "REAL");
  Variant v;
  codec_.ReadValue(reader_, v, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(v.Type(), VarType::Single);
  EXPECT_EQ(v.ToSingle(), 0.1f);
  ExpectHeader("DSACCINTERVAL", 1, "CHAR");
  codec_.ReadValue(reader_, v, qOK);  // v holds a float: the text is converted to it
  ASSERT_TRUE(qOK);
  EXPECT_EQ(v.Type(), VarType::Single);
  EXPECT_EQ(v.ToSingle(), 12.0f);
}

TEST_F(RecordCodecTest, AnEmptyVariantReceivesTheRecordsOwnType) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "I", 1, "INTE", qOK);
    codec_.WriteValue(f, Variant(int16_t{4}), qOK);
    codec_.WriteHeader(f, "D", 1, "DOUB", qOK);
    codec_.WriteValue(f, Variant(1.25f), qOK);
    codec_.WriteHeader(f, "L", 1, "LOGI", qOK);
    codec_.WriteValue(f, Variant(int32_t{9}), qOK);
    codec_.WriteHeader(f, "B", 1, "BYTE", qOK);
    codec_.WriteValue(f, Variant(int32_t{200}), qOK);
    codec_.WriteHeader(f, "C", 1, "CHAR", qOK);
    codec_.WriteValue(f, Variant("text"), qOK);
    ASSERT_TRUE(qOK);
  });
  const std::vector<std::pair<std::string, VarType>> want = {{"I", VarType::Long},
                                                             {"D", VarType::Double},
                                                             {"L", VarType::Boolean},
                                                             {"B", VarType::Integer},
                                                             {"C", VarType::String}};
  std::vector<Variant> got;
  for (const auto& [k, vt] : want) {
    std::string key, type;
    int32_t n = 0;
    bool qOK = false;
    codec_.ReadHeader(reader_, key, n, type, qOK);
    ASSERT_EQ(key, k);
    Variant v;
    codec_.ReadValue(reader_, v, qOK);
    ASSERT_TRUE(qOK);
    EXPECT_EQ(v.Type(), vt) << k;
    got.push_back(v);
  }
  EXPECT_EQ(got[0].ToLong(), 4);
  EXPECT_EQ(got[1].ToDouble(), 1.25);
  EXPECT_TRUE(got[2].ToBool());
  EXPECT_EQ(got[3].ToLong(), 200);
  EXPECT_EQ(got[4].ToText(), "text");
}

TEST_F(RecordCodecTest, ATargetVariantKeepsItsType) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "USENULL", 2, "INTE", qOK);
    codec_.WriteValue(f, Variant(int32_t{1}), qOK);
    codec_.WriteValue(f, Variant(int32_t{70000}), qOK);
  });
  ExpectHeader("USENULL", 2, "INTE");
  Variant target(int16_t{0});
  bool qOK = false;
  codec_.ReadValue(reader_, target, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(target.Type(), VarType::Integer);
  EXPECT_EQ(target.ToInteger(), 1);
  // 70000 does not fit a 16-bit target: an overflow fault, traced.
  codec_.ReadValue(reader_, target, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_FALSE(MessageLog::Shared().Lines().empty());
  EXPECT_EQ(MessageLog::Shared().Lines().back(),
            "Error:Overflow (No.6) In [RecordCodec (ReadValue)] ");
  EXPECT_EQ(target.ToInteger(), 1);
}

TEST_F(RecordCodecTest, AValueThatDoesNotConvertIsTracedAndNothingIsWritten) {
  RecordFile f;
  bool qOK = false;
  f.OpenForWrite(name_, qOK);
  codec_.WriteHeader(f, "ATTCONST", 1, "INTE", qOK);
  int64_t size = f.FileSize();
  codec_.WriteValue(f, Variant("abc"), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(f.FileSize(), size);
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Type mismatch (No.13) In [RecordCodec (WriteValue)] ");
  EXPECT_TRUE(MessageLog::Shared().Flags()[0]);
  codec_.WriteHeader(f, "GRID>", 1, "BYTE", qOK);
  codec_.WriteValue(f, Variant(int32_t{256}), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(MessageLog::Shared().Lines().back(),
            "Error:Overflow (No.6) In [RecordCodec (WriteValue)] ");
}

TEST_F(RecordCodecTest, ValuesWrittenOneByOneReadAsOneArrayAndBack) {
  Array<float> v{1.5f, 2.5f, 3.5f};
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "ONEBYONE", 3, "REAL", qOK);
    for (float x : v) codec_.WriteValue(f, Variant(x), qOK);
    codec_.WriteHeader(f, "ASARRAY", 3, "REAL", qOK);
    codec_.WriteRealArray(3, 0, v, f, qOK);
    ASSERT_TRUE(qOK);
  });
  ExpectHeader("ONEBYONE", 3, "REAL");
  Array<float> r;
  bool qOK = false;
  codec_.ReadRealArray(3, Q, reader_, r, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(r(3), 3.5f);
  ExpectHeader("ASARRAY", 3, "REAL");
  for (float x : v) {
    float y = 0;
    codec_.ReadValue(reader_, y, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    EXPECT_EQ(y, x);
  }
  EXPECT_TRUE(AtEnd());
}

TEST_F(RecordCodecTest, SimulatorNamesReadBackValueByValueWithoutPadding) {
  Array<std::string> names{"OP_1", "INJECTOR9", "X"};
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteSimulatorHeader(f, "ZWEL", 3, "CHAR", qOK);
    codec_.WriteCharArray(3, names, f, qOK);
    codec_.WriteSimulatorHeader(f, "LGR", 1, "CHAR", qOK);
    codec_.WriteCharValue("LGR1", f, qOK);
    ASSERT_TRUE(qOK);
  });
  ExpectHeader("ZWEL", 3, "CHAR");
  for (std::string want : {"OP_1", "INJECTOR", "X"}) {
    std::string s;
    bool qOK = false;
    codec_.ReadValue(reader_, s, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    EXPECT_EQ(s, want);
  }
  ExpectHeader("LGR", 1, "CHAR");
  std::string s;
  bool qOK = false;
  codec_.ReadValue(reader_, s, qOK);
  EXPECT_EQ(s, "LGR1");
}

TEST_F(RecordCodecTest, CharArrayInAStoreRecordWritesOneRecordPerName) {
  Array<std::string> names{"AB", "CDE"};
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "NAMES", 2, "CHAR", qOK);
    codec_.WriteCharArray(2, 4, 105, names, f, qOK);
    ASSERT_TRUE(qOK);
  });
  std::vector<uint8_t> want;
  PutRecord(want, HeaderBody("NAMES", 16, 2, "CHAR"));
  PutRecord(want, {'A', 'B', ' ', ' '});
  PutRecord(want, {'C', 'D', 'E', ' '});
  EXPECT_EQ(Bytes(), want);
}

TEST_F(RecordCodecTest, ASimulatorNameMustBeEightWide) {
  RecordFile f;
  bool qOK = false;
  f.OpenForWrite(name_, qOK);
  codec_.WriteSimulatorHeader(f, "LGR", 1, "CHAR", qOK);
  codec_.WriteCharValue(16, "LGR1", f, qOK);
  EXPECT_FALSE(qOK);
  codec_.WriteCharValue(8, "LGR1", f, qOK);
  EXPECT_TRUE(qOK);
}

TEST_F(RecordCodecTest, BytePayloadsReadThroughTheLogicalRead) {
  Array<uint8_t> v{0, 1, 255, 0};
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "AUTOOVERWRITE", 4, "BYTE", qOK);
    codec_.WriteByteArray(4, v, f, qOK);
    codec_.WriteHeader(f, "NEXT", 0, "CHAR", qOK);
  });
  ExpectHeader("AUTOOVERWRITE", 4, "BYTE");
  Array<int16_t> r;
  bool qOK = false;
  codec_.ReadLogicalArray(4, Q, reader_, r, qOK);
  ASSERT_TRUE(qOK) << reader_.LastError();
  EXPECT_EQ(r(1), 0);
  EXPECT_EQ(r(2), -1);
  EXPECT_EQ(r(3), -1);
  EXPECT_EQ(r(4), 0);
  ExpectHeader("NEXT", 0, "CHAR");
}

// ---- arrays: targets and plain memory ----------------------------------------

TEST_F(RecordCodecTest, ALargeEnoughArrayIsFilledFromItsLowerBound) {
  Array<float> v{1, 2, 3};
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "R", 3, "REAL", qOK);
    codec_.WriteRealArray(3, 0, v, f, qOK);
    codec_.WriteHeader(f, "R", 3, "REAL", qOK);
    codec_.WriteRealArray(3, 0, v, f, qOK);
  });
  ExpectHeader("R", 3, "REAL");
  Array<float> big(0, 4);
  big(4) = 9;
  bool qOK = false;
  codec_.ReadRealArray(3, Q, reader_, big, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(big.LBound(), 0);
  EXPECT_EQ(big(0), 1);
  EXPECT_EQ(big(2), 3);
  EXPECT_EQ(big(4), 9);
  ExpectHeader("R", 3, "REAL");
  Array<float> small(1, 2);
  codec_.ReadRealArray(3, Q, reader_, small, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(small.UBound(), 3);
  EXPECT_EQ(small(3), 3);
}

TEST_F(RecordCodecTest, CountZeroReadsNothingAndLeavesTheArray) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "EMPTY", 0, "REAL", qOK);
    codec_.WriteHeader(f, "AFTER", 0, "CHAR", qOK);
  });
  ExpectHeader("EMPTY", 0, "REAL");
  Array<float> untouched;
  bool qOK = false;
  codec_.ReadRealArray(0, Q, reader_, untouched, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(untouched.IsAllocated());
  ExpectHeader("AFTER", 0, "CHAR");
}

TEST_F(RecordCodecTest, PlainMemoryOverloadsMoveBulkData) {
  std::vector<float> table(5000);
  std::vector<double> d(300);
  std::vector<int32_t> n(700);
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<float>(i) * 0.5f;
  for (std::size_t i = 0; i < d.size(); ++i) d[i] = static_cast<double>(i) / 3;
  for (std::size_t i = 0; i < n.size(); ++i) n[i] = static_cast<int32_t>(i) - 350;
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "COLROWDATA", 5000, "REAL", qOK);
    codec_.WriteRealArray(5000, 0, table.data(), f, qOK);
    codec_.WriteHeader(f, "D", 300, "DOUB", qOK);
    codec_.WriteDoubleArray(300, 105, d.data(), f, qOK);
    codec_.WriteHeader(f, "N", 700, "INTE", qOK);
    codec_.WriteIntegerArray(700, 1000, n.data(), f, qOK);
    ASSERT_TRUE(qOK);
  });
  std::vector<float> t2(5000);
  std::vector<double> d2(300);
  std::vector<int32_t> n2(700);
  bool qOK = false;
  ExpectHeader("COLROWDATA", 5000, "REAL");
  codec_.ReadRealArray(5000, Q, reader_, t2.data(), qOK);
  ASSERT_TRUE(qOK);
  ExpectHeader("D", 300, "DOUB");
  codec_.ReadDoubleArray(300, Q, reader_, d2.data(), qOK);
  ASSERT_TRUE(qOK);
  ExpectHeader("N", 700, "INTE");
  codec_.ReadIntegerArray(700, Q, reader_, n2.data(), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(t2, table);
  EXPECT_EQ(d2, d);
  EXPECT_EQ(n2, n);
}

TEST_F(RecordCodecTest, WritingMoreValuesThanTheArrayHoldsIsFault9) {
  RecordFile f;
  bool qOK = false;
  f.OpenForWrite(name_, qOK);
  codec_.WriteHeader(f, "R", 4, "REAL", qOK);
  Array<float> v{1, 2, 3};
  codec_.WriteRealArray(4, 0, v, f, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(MessageLog::Shared().Lines().back(),
            "Error:Subscript out of range (No.9) In [RecordCodec (WriteRealArray)] ");
}

TEST_F(RecordCodecTest, RawPayloadsWithoutHeadersRoundTrip) {
  // A scratch file: a count, the sizes, then the values, no headers.
  Array<int32_t> dims{2, 3, 4};
  Array<float> vals(1, 12);
  for (int i = 1; i <= 12; ++i) vals(i) = static_cast<float>(i);
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteIntegerArray(3, 0, dims, f, qOK);
    codec_.WriteRealArray(12, 0, vals, f, qOK);
    ASSERT_TRUE(qOK);
  });
  Array<int32_t> first;
  bool qOK = false;
  codec_.ReadIntegerArray(1, Q, reader_, first, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(first(1), 2);
  Array<int32_t> sizes;
  codec_.ReadIntegerArray(2, Q, reader_, sizes, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(sizes(1) * sizes(2), 12);
  Array<float> r;
  codec_.ReadRealArray(12, Q, reader_, r, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(r(12), 12.0f);
  EXPECT_TRUE(AtEnd());
}

// ---- large payloads: pieces, buffers and values cut between them ----------

TEST_F(RecordCodecTest, LargePayloadsAtOddOffsetsRoundTripInBothReadModes) {
  // A 3-byte payload first puts every later value at an odd offset, so that
  // values straddle the boundaries of the file's buffers and pieces.
  const int32_t nd = 300001, nf = 250003;
  Array<double> d(1, nd);
  Array<float> r(1, nf);
  for (int32_t i = 1; i <= nd; ++i) d(i) = i * 1.0000001 - 5e5;
  for (int32_t i = 1; i <= nf; ++i) r(i) = static_cast<float>(i) * -0.75f;
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "ODD", 3, "BYTE", qOK);
    codec_.WriteByteArray(3, Array<uint8_t>{1, 2, 3}, f, qOK);
    codec_.WriteHeader(f, "DOUBLES", nd, "DOUB", qOK);
    codec_.WriteDoubleArray(nd, 0, d, f, qOK);
    codec_.WriteHeader(f, "REALS", nf, "REAL", qOK);
    codec_.WriteRealArray(nf, 1000, r, f, qOK);
    codec_.WriteHeader(f, "END", 0, "CHAR", qOK);
    ASSERT_TRUE(qOK) << f.LastError();
  });
  for (bool random : {false, true}) {
    bool qOK = false;
    if (random)
      reader_.OpenForRandomRead(name_, qOK);
    else
      reader_.OpenForRead(name_, qOK);
    ASSERT_TRUE(qOK);
    ExpectHeader("ODD", 3, "BYTE");
    Array<uint8_t> b;
    codec_.ReadByteArray(3, reader_, b, qOK);
    ExpectHeader("DOUBLES", nd, "DOUB");
    Array<double> d2;
    codec_.ReadDoubleArray(nd, Q, reader_, d2, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    for (int32_t i = 1; i <= nd; ++i) ASSERT_EQ(d2(i), d(i)) << i;
    ExpectHeader("REALS", nf, "REAL");
    // Value by value for a while, then the rest as one array.
    for (int32_t i = 1; i <= 20000; ++i) {
      float x = 0;
      codec_.ReadValue(reader_, x, qOK);
      ASSERT_TRUE(qOK) << reader_.LastError();
      ASSERT_EQ(x, r(i)) << i;
    }
    std::vector<float> rest(nf - 20000);
    codec_.ReadRealArray(nf - 20000, Q, reader_, rest.data(), qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    for (int32_t i = 20001; i <= nf; ++i)
      ASSERT_EQ(rest[static_cast<std::size_t>(i - 20001)], r(i)) << i;
    ExpectHeader("END", 0, "CHAR");
    EXPECT_TRUE(AtEnd());
  }
}

TEST_F(RecordCodecTest, RandomReadingJumpsToAHeaderAndSkipsToOneValue) {
  std::vector<int64_t> at;
  Array<float> v(1, 70000);
  for (int32_t i = 1; i <= 70000; ++i) v(i) = static_cast<float>(i);
  Write([&](RecordFile& f) {
    bool qOK = false;
    for (int k = 0; k < 4; ++k) {
      at.push_back(f.Position());
      codec_.WriteSimulatorHeader(f, "COL" + std::to_string(k), 70000, "REAL", qOK);
      codec_.WriteRealArray(70000, 1000, v, f, qOK);
    }
  });
  RecordFile f;
  bool qOK = false;
  f.OpenForRandomRead(name_, qOK);
  ASSERT_TRUE(qOK);
  for (int k : {2, 0, 3, 1, 2}) {
    int64_t pos = at[static_cast<std::size_t>(k)];
    f.SetPosition(static_cast<int32_t>(pos & 0xFFFFFFFF), static_cast<int32_t>(pos >> 32), qOK);
    ASSERT_TRUE(qOK);
    std::string key, type;
    int32_t n = 0;
    codec_.ReadHeader(f, key, n, type, qOK);
    ASSERT_TRUE(qOK) << f.LastError();
    EXPECT_EQ(key, "COL" + std::to_string(k));
    codec_.SkipValues(54320, f, qOK);
    ASSERT_TRUE(qOK) << f.LastError();
    // 54 blocks of 1000 values and 320 values of the next were stepped over.
    EXPECT_EQ(f.Position(), pos + 24 + 54 * 4008 + 4 + 320 * 4);
    Array<float> one;
    codec_.ReadRealArray(1, Q, f, one, qOK);
    ASSERT_TRUE(qOK) << f.LastError();
    EXPECT_EQ(one(1), 54321.0f);
  }
}

TEST_F(RecordCodecTest, SkipValuesStepsOverTextsAndChecksTheCount) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "TEXTS", 3, "CHAR", qOK);
    codec_.WriteValue(f, Variant("first"), qOK);
    codec_.WriteValue(f, Variant(std::string(3000, 'z')), qOK);
    codec_.WriteValue(f, Variant("third"), qOK);
    codec_.WriteHeader(f, "NEXT", 0, "CHAR", qOK);
  });
  ExpectHeader("TEXTS", 3, "CHAR");
  bool qOK = false;
  codec_.SkipValues(2, reader_, qOK);
  ASSERT_TRUE(qOK) << reader_.LastError();
  std::string s;
  codec_.ReadValue(reader_, s, qOK);
  EXPECT_EQ(s, "third");
  ExpectHeader("NEXT", 0, "CHAR");
  Raw({});
  codec_.SkipValues(1, reader_, qOK);
  EXPECT_FALSE(qOK);
}

// ---- a read loop in the manner of the store readers ----------------------------

TEST_F(RecordCodecTest, AReadLoopSkipsUnknownKeywordsByReadingTheirPayloads) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "DATASTORE>", 0, "CHAR", qOK);
    codec_.WriteHeader(f, "FUTUREREALS", 3, "REAL", qOK);
    codec_.WriteRealArray(3, 0, Array<float>{1, 2, 3}, f, qOK);
    codec_.WriteHeader(f, "FUTURETEXTS", 2, "CHAR", qOK);
    codec_.WriteValue(f, Variant("a"), qOK);
    codec_.WriteValue(f, Variant("bb"), qOK);
    codec_.WriteHeader(f, "FUTUREFLAGS", 2, "BYTE", qOK);
    codec_.WriteByteArray(2, Array<uint8_t>{1, 0}, f, qOK);
    codec_.WriteHeader(f, "MAINKEY", 1, "CHAR", qOK);
    codec_.WriteValue(f, Variant("Main"), qOK);
    codec_.WriteHeader(f, "<DATASTORE", 0, "CHAR", qOK);
    ASSERT_TRUE(qOK);
  });
  std::string mainKey;
  bool sawEnd = false;
  int records = 0;
  for (;;) {
    std::string k, t;
    int32_t n = 0;
    bool qOK = false;
    codec_.ReadHeader(reader_, k, n, t, qOK);
    ASSERT_TRUE(qOK);
    if (t == "CHAR") {
      for (int i = 0; i < n; ++i) {
        std::string s;
        codec_.ReadValue(reader_, s, qOK);
        if (k == "MAINKEY") mainKey = s;
      }
      if (k == "<DATASTORE") sawEnd = true;
    } else if (t == "REAL" && n > 0) {
      Array<float> drop;
      codec_.ReadRealArray(n, Q, reader_, drop, qOK);
    } else if (t == "BYTE" && n > 0) {
      Array<int16_t> drop;
      codec_.ReadLogicalArray(n, Q, reader_, drop, qOK);
    }
    ASSERT_TRUE(qOK) << k << ": " << reader_.LastError();
    ++records;
    if (AtEnd() || sawEnd) break;
  }
  EXPECT_EQ(records, 6);
  EXPECT_EQ(mainKey, "Main");
  EXPECT_TRUE(sawEnd);
}

}  // namespace
