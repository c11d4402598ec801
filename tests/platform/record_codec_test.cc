#include "vndata/platform/record_codec.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include "tests/platform/record_test_util.h"
#include "vndata/platform/message_log.h"

using namespace vndata;
using namespace vndata::record_test;

namespace {

const std::string Q = "'";

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

// ---- byte layout ---------------------------------------------------------

TEST_F(RecordCodecTest, StoreHeaderAndDoubleValueAreLaidOutBigEndian) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "NULLVAL", 1, "DOUB", qOK);
    ASSERT_TRUE(qOK);
    codec_.WriteValue(f, Variant(-999.0), qOK);
    ASSERT_TRUE(qOK);
  });
  std::vector<uint8_t> want;
  PutRecord(want, HeaderBody("NULLVAL", 16, 1, "DOUB"));
  PutRecord(want, {0xC0, 0x8F, 0x38, 0, 0, 0, 0, 0});
  EXPECT_EQ(Bytes(), want);
  // The same bytes spelled out, as the layout comment of the header shows.
  std::vector<uint8_t> literal = {0, 0, 0, 24, 'N', 'U', 'L', 'L', 'V', 'A', 'L', ' ', ' ', ' ',
                                  ' ', ' ', ' ', ' ', ' ', ' ', 0, 0, 0, 1, 'D', 'O', 'U', 'B',
                                  0, 0, 0, 24, 0, 0, 0, 8, 0xC0, 0x8F, 0x38, 0, 0, 0, 0, 0,
                                  0, 0, 0, 8};
  EXPECT_EQ(Bytes(), literal);
}

TEST_F(RecordCodecTest, SimulatorHeaderHasAnEightByteKeyword) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteSimulatorHeader(f, "SEQNUM", 1, "INTE", qOK);
    ASSERT_TRUE(qOK);
    codec_.WriteValue(f, Variant(int32_t{-2}), qOK);
    ASSERT_TRUE(qOK);
  });
  std::vector<uint8_t> want;
  PutRecord(want, HeaderBody("SEQNUM", 8, 1, "INTE"));
  PutRecord(want, {0xFF, 0xFF, 0xFF, 0xFE});
  EXPECT_EQ(Bytes(), want);
}

TEST_F(RecordCodecTest, BlockSizeCutsThePayloadIntoPhysicalRecords) {
  Array<float> v(1, 2500);
  for (int i = 1; i <= 2500; ++i) v(i) = static_cast<float>(i);
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteSimulatorHeader(f, "PRESSURE", 2500, "REAL", qOK);
    codec_.WriteRealArray(2500, 1000, v, f, qOK);
    ASSERT_TRUE(qOK);
  });
  std::vector<uint8_t> b = Bytes();
  std::size_t p = 24;  // after the 16-byte header record
  for (int32_t expect : {4000, 4000, 2000}) {
    ASSERT_LE(p + 8 + static_cast<std::size_t>(expect), b.size());
    int32_t lead = (b[p] << 24) | (b[p + 1] << 16) | (b[p + 2] << 8) | b[p + 3];
    EXPECT_EQ(lead, expect);
    p += 4 + static_cast<std::size_t>(expect);
    int32_t trail = (b[p] << 24) | (b[p + 1] << 16) | (b[p + 2] << 8) | b[p + 3];
    EXPECT_EQ(trail, expect);
    p += 4;
  }
  EXPECT_EQ(p, b.size());
  // 1.0f is 3F800000.
  EXPECT_EQ(b[28], 0x3F);
  EXPECT_EQ(b[29], 0x80);
}

TEST_F(RecordCodecTest, BlockSizeZeroWritesOnePhysicalRecord) {
  Array<int32_t> v(1, 3000);
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "FODFILE", 3000, "INTE", qOK);
    codec_.WriteIntegerArray(3000, 0, v, f, qOK);
    ASSERT_TRUE(qOK);
  });
  EXPECT_EQ(Bytes().size(), 32u + 8u + 12000u);
}

TEST_F(RecordCodecTest, StoreTextsAreOnePhysicalRecordEachWithExactlyTheirBytes) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "DSWELLLIST", 3, "CHAR", qOK);
    codec_.WriteValue(f, Variant("P1"), qOK);
    codec_.WriteValue(f, Variant(""), qOK);
    codec_.WriteValue(f, Variant("INJ 12"), qOK);
    ASSERT_TRUE(qOK);
  });
  std::vector<uint8_t> want;
  PutRecord(want, HeaderBody("DSWELLLIST", 16, 3, "CHAR"));
  PutRecord(want, {'P', '1'});
  PutRecord(want, {});
  PutRecord(want, {'I', 'N', 'J', ' ', '1', '2'});
  EXPECT_EQ(Bytes(), want);
}

TEST_F(RecordCodecTest, SimulatorNamesAreEightBytesBlankPaddedInBlocksOf105) {
  Array<std::string> names(1, 106);
  for (int i = 1; i <= 106; ++i) names(i) = "W" + std::to_string(i);
  names(2) = "LONGWELLNAME";
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteSimulatorHeader(f, "ZWEL", 106, "CHAR", qOK);
    codec_.WriteCharArray(106, 8, 105, names, f, qOK);
    ASSERT_TRUE(qOK);
  });
  std::vector<uint8_t> b = Bytes();
  ASSERT_EQ(b.size(), 24u + (8u + 840u) + (8u + 8u));
  EXPECT_EQ(std::string(b.begin() + 24, b.begin() + 28), std::string("\0\0\x03\x48", 4));
  EXPECT_EQ(std::string(b.begin() + 28, b.begin() + 36), "W1      ");
  EXPECT_EQ(std::string(b.begin() + 36, b.begin() + 44), "LONGWELL");
  EXPECT_EQ(std::string(b.end() - 12, b.end() - 4), "W106    ");
}

TEST_F(RecordCodecTest, LogicalTrueIsWrittenAsMinusOne) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "DSDUALPORO", 2, "LOGI", qOK);
    codec_.WriteValue(f, Variant(true), qOK);
    codec_.WriteValue(f, Variant(false), qOK);
    ASSERT_TRUE(qOK);
  });
  std::vector<uint8_t> want;
  PutRecord(want, HeaderBody("DSDUALPORO", 16, 2, "LOGI"));
  PutRecord(want, {0xFF, 0xFF, 0xFF, 0xFF});
  PutRecord(want, {0, 0, 0, 0});
  EXPECT_EQ(Bytes(), want);
}

// ---- round trips by type -------------------------------------------------

TEST_F(RecordCodecTest, IntegersRoundTripWithEveryBlockSize) {
  Array<int32_t> v(1, 2500);
  for (int i = 1; i <= 2500; ++i) v(i) = (i % 2 ? 1 : -1) * i * 7919;
  v(1) = std::numeric_limits<int32_t>::min();
  v(2) = std::numeric_limits<int32_t>::max();
  Write([&](RecordFile& f) {
    bool qOK = false;
    for (int32_t block : {0, 1000, 105}) {
      codec_.WriteHeader(f, "INTS" + std::to_string(block), 2500, "INTE", qOK);
      codec_.WriteIntegerArray(2500, block, v, f, qOK);
      ASSERT_TRUE(qOK);
    }
  });
  for (int32_t block : {0, 1000, 105}) {
    ExpectHeader("INTS" + std::to_string(block), 2500, "INTE");
    Array<int32_t> r;
    bool qOK = false;
    codec_.ReadIntegerArray(2500, Q, reader_, r, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    ASSERT_EQ(r.LBound(), 1);
    ASSERT_EQ(r.UBound(), 2500);
    for (int i = 1; i <= 2500; ++i) ASSERT_EQ(r(i), v(i)) << i;
  }
  EXPECT_TRUE(AtEnd());
}

TEST_F(RecordCodecTest, RealsRoundTripBitForBitWithEveryBlockSize) {
  Array<float> v(1, 2500);
  for (int i = 1; i <= 2500; ++i) v(i) = std::sin(static_cast<float>(i)) * 1e6f;
  v(1) = -0.0f;
  v(2) = std::numeric_limits<float>::infinity();
  v(3) = std::numeric_limits<float>::denorm_min();
  v(4) = -999.0f;
  Write([&](RecordFile& f) {
    bool qOK = false;
    for (int32_t block : {0, 1000, 105}) {
      codec_.WriteHeader(f, "COLROWDATA", 2500, "REAL", qOK);
      codec_.WriteRealArray(2500, block, v, f, qOK);
      ASSERT_TRUE(qOK);
    }
  });
  for (int k = 0; k < 3; ++k) {
    ExpectHeader("COLROWDATA", 2500, "REAL");
    Array<float> r;
    bool qOK = false;
    codec_.ReadRealArray(2500, Q, reader_, r, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    for (int i = 1; i <= 2500; ++i) {
      uint32_t a, b;
      std::memcpy(&a, &v(i), 4);
      std::memcpy(&b, &r(i), 4);
      ASSERT_EQ(a, b) << i;
    }
  }
}

TEST_F(RecordCodecTest, DoublesRoundTripWithEveryBlockSize) {
  Array<double> v(1, 1200);
  for (int i = 1; i <= 1200; ++i) v(i) = 1.0 / i - 1e20 * (i % 3);
  Write([&](RecordFile& f) {
    bool qOK = false;
    for (int32_t block : {0, 1000, 105}) {
      codec_.WriteSimulatorHeader(f, "DOUBHEAD", 1200, "DOUB", qOK);
      codec_.WriteDoubleArray(1200, block, v, f, qOK);
      ASSERT_TRUE(qOK);
    }
  });
  for (int k = 0; k < 3; ++k) {
    ExpectHeader("DOUBHEAD", 1200, "DOUB");
    Array<double> r;
    bool qOK = false;
    codec_.ReadDoubleArray(1200, Q, reader_, r, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    for (int i = 1; i <= 1200; ++i) ASSERT_EQ(r(i), v(i)) << i;
  }
}

TEST_F(RecordCodecTest, LogicalsRoundTripAndTrueReadsBackAsTrue) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "FODARRAY", 4, "LOGI", qOK);
    for (bool q : {true, false, false, true}) codec_.WriteValue(f, Variant(q), qOK);
    codec_.WriteHeader(f, "AUTOOVERWRITE", 1, "LOGI", qOK);
    codec_.WriteValue(f, Variant(true), qOK);
    ASSERT_TRUE(qOK);
  });
  ExpectHeader("FODARRAY", 4, "LOGI");
  Array<int16_t> r;
  bool qOK = false;
  codec_.ReadLogicalArray(4, Q, reader_, r, qOK);
  ASSERT_TRUE(qOK) << reader_.LastError();
  EXPECT_EQ(r(1), -1);
  EXPECT_EQ(r(2), 0);
  EXPECT_EQ(r(3), 0);
  EXPECT_EQ(r(4), -1);
  ExpectHeader("AUTOOVERWRITE", 1, "LOGI");
  bool q = false;
  codec_.ReadValue(reader_, q, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_TRUE(q);
}

TEST_F(RecordCodecTest, LogicalsWrittenAsOneAndZeroReadAsTrueAndFalse) {
  // The simulator heads carry 1 for true, written as 32-bit integers.
  Array<int32_t> words(1, 100);
  words(15) = 1;
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteSimulatorHeader(f, "LOGIHEAD", 100, "LOGI", qOK);
    codec_.WriteIntegerArray(100, 1000, words, f, qOK);
    ASSERT_TRUE(qOK);
  });
  ExpectHeader("LOGIHEAD", 100, "LOGI");
  Array<int16_t> r;
  bool qOK = false;
  codec_.ReadLogicalArray(100, Q, reader_, r, qOK);
  ASSERT_TRUE(qOK);
  for (int i = 1; i <= 100; ++i) EXPECT_EQ(r(i), i == 15 ? -1 : 0) << i;
}

TEST_F(RecordCodecTest, TextsOfLength0_1_16And5000RoundTrip) {
  std::string big(5000, 'x');
  for (std::size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>('A' + i % 26);
  big[10] = ' ';
  big[4999] = ' ';  // a trailing blank is part of a store text
  const std::vector<std::string> texts = {"", "Q", "exactly16chars!!", big};
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "TEXTS", static_cast<int32_t>(texts.size()), "CHAR", qOK);
    for (const auto& s : texts) {
      codec_.WriteValue(f, Variant(s), qOK);
      ASSERT_TRUE(qOK);
    }
  });
  ExpectHeader("TEXTS", 4, "CHAR");
  for (const auto& s : texts) {
    std::string r = "unchanged";
    bool qOK = false;
    codec_.ReadValue(reader_, r, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    EXPECT_EQ(r, s);
  }
  EXPECT_TRUE(AtEnd());
}

TEST_F(RecordCodecTest, BytesRoundTrip) {
  Array<uint8_t> v(1, 256);
  for (int i = 1; i <= 256; ++i) v(i) = static_cast<uint8_t>(i - 1);
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "GRID>", 256, "BYTE", qOK);
    codec_.WriteByteArray(256, v, f, qOK);
    ASSERT_TRUE(qOK);
  });
  EXPECT_EQ(Bytes().size(), 32u + 8u + 256u);
  ExpectHeader("GRID>", 256, "BYTE");
  Array<uint8_t> r(0, 3);  // sized by the read itself
  bool qOK = false;
  codec_.ReadByteArray(256, reader_, r, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(r.LBound(), 1);
  EXPECT_EQ(r.UBound(), 256);
  for (int i = 1; i <= 256; ++i) EXPECT_EQ(r(i), v(i));
}

TEST_F(RecordCodecTest, MessageRecordWithCountZeroRoundTrips) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteSimulatorHeader(f, "STARTSOL", 0, "MESS", qOK);
    ASSERT_TRUE(qOK);
    codec_.WriteHeader(f, "STOREMESS", 0, "MESS", qOK);
    ASSERT_TRUE(qOK);
  });
  std::vector<uint8_t> want;
  PutRecord(want, HeaderBody("STARTSOL", 8, 0, "MESS"));
  PutRecord(want, HeaderBody("STOREMESS", 16, 0, "MESS"));
  EXPECT_EQ(Bytes(), want);
  ExpectHeader("STARTSOL", 0, "MESS");
  ExpectHeader("STOREMESS", 0, "MESS");
  EXPECT_TRUE(AtEnd());
}

TEST_F(RecordCodecTest, MessageRecordWithValuesIsRefused) {
  RecordFile f;
  bool qOK = true;
  f.OpenForWrite(name_, qOK);
  codec_.WriteSimulatorHeader(f, "STARTSOL", 1, "MESS", qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(f.FileSize(), 0);
}

// ---- keywords --------------------------------------------------------------

TEST_F(RecordCodecTest, SixteenCharacterKeywordsSurviveUnshortened) {
  const std::vector<std::string> keys = {"DSCREATIONMETHOD", "DSUNITDATASOURCE", "DQAMENDEDDATASET"};
  Write([&](RecordFile& f) {
    bool qOK = false;
    for (const auto& k : keys) {
      codec_.WriteHeader(f, k, 1, "INTE", qOK);
      ASSERT_TRUE(qOK);
      codec_.WriteValue(f, Variant(int32_t{3}), qOK);
    }
  });
  for (const auto& k : keys) {
    ExpectHeader(k, 1, "INTE");
    int32_t v = 0;
    bool qOK = false;
    codec_.ReadValue(reader_, v, qOK);
    EXPECT_EQ(v, 3);
  }
}

TEST_F(RecordCodecTest, KeywordsDifferingOnlyInCaseAreKeptApart) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "MainKey", 0, "CHAR", qOK);
    codec_.WriteHeader(f, "MAINKEY", 0, "CHAR", qOK);
    codec_.WriteHeader(f, "mainkey", 0, "CHAR", qOK);
  });
  ExpectHeader("MainKey", 0, "CHAR");
  ExpectHeader("MAINKEY", 0, "CHAR");
  ExpectHeader("mainkey", 0, "CHAR");
}

TEST_F(RecordCodecTest, AnOverlongKeywordIsWrittenCutAndReportedFalse) {
  Write([&](RecordFile& f) {
    bool qOK = true;
    codec_.WriteHeader(f, "SEVENTEENCHARSKEY", 1, "INTE", qOK);
    EXPECT_FALSE(qOK);
    // The stream stays in step: the value still belongs to that record.
    codec_.WriteValue(f, Variant(int32_t{5}), qOK);
    EXPECT_TRUE(qOK);
    codec_.WriteSimulatorHeader(f, "NINECHARS", 0, "CHAR", qOK);
    EXPECT_FALSE(qOK);
  });
  ExpectHeader("SEVENTEENCHARSKE", 1, "INTE");
  int32_t v = 0;
  bool qOK = false;
  codec_.ReadValue(reader_, v, qOK);
  EXPECT_EQ(v, 5);
  ExpectHeader("NINECHAR", 0, "CHAR");
}

TEST_F(RecordCodecTest, CountZeroIsFollowedDirectlyByTheNextHeader) {
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "UNKNOWNINTE", 0, "INTE", qOK);
    codec_.WriteHeader(f, "DATASET>", 0, "CHAR", qOK);
  });
  EXPECT_EQ(Bytes().size(), 64u);
  ExpectHeader("UNKNOWNINTE", 0, "INTE");
  EXPECT_EQ(reader_.Position(), 32);
  ExpectHeader("DATASET>", 0, "CHAR");
  EXPECT_TRUE(AtEnd());
}

TEST_F(RecordCodecTest, ANegativeCountOrUnknownTypeWritesNothing) {
  RecordFile f;
  bool qOK = true;
  f.OpenForWrite(name_, qOK);
  codec_.WriteHeader(f, "NEG", -1, "INTE", qOK);
  EXPECT_FALSE(qOK);
  qOK = true;
  codec_.WriteHeader(f, "ODD", 1, "inte", qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(f.LastError(), "unknown record type");
  qOK = true;
  codec_.WriteValue(f, Variant(int32_t{1}), qOK);  // no record is open
  EXPECT_FALSE(qOK);
  EXPECT_EQ(f.FileSize(), 0);
}

// ---- integers through both readers ----------------------------------------

TEST_F(RecordCodecTest, ReadIntegerArrayAndReadIntegerBlockBothReadWriteIntegerArray) {
  Array<int32_t> v(1, 1500);
  for (int i = 1; i <= 1500; ++i) v(i) = i * i;
  Write([&](RecordFile& f) {
    bool qOK = false;
    for (int32_t block : {0, 1000}) {
      for (int rep = 0; rep < 2; ++rep) {
        codec_.WriteHeader(f, "FODFILE", 1500, "INTE", qOK);
        codec_.WriteIntegerArray(1500, block, v, f, qOK);
      }
    }
    ASSERT_TRUE(qOK);
  });
  for (int k = 0; k < 2; ++k) {
    bool qOK = false;
    ExpectHeader("FODFILE", 1500, "INTE");
    Array<int32_t> a;
    codec_.ReadIntegerArray(1500, Q, reader_, a, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    ExpectHeader("FODFILE", 1500, "INTE");
    Array<int32_t> b(1, 1500);  // allocated by the caller, as for "FODFILE"
    codec_.ReadIntegerBlock(1500, 0, reader_, b, qOK);
    ASSERT_TRUE(qOK) << reader_.LastError();
    for (int i = 1; i <= 1500; ++i) {
      ASSERT_EQ(a(i), v(i));
      ASSERT_EQ(b(i), v(i));
    }
  }
}

TEST_F(RecordCodecTest, ReadIntegerBlockWithABlockSizeRefusesLargerPhysicalRecords) {
  Array<int32_t> v(1, 20);
  Write([&](RecordFile& f) {
    bool qOK = false;
    codec_.WriteHeader(f, "A", 20, "INTE", qOK);
    codec_.WriteIntegerArray(20, 10, v, f, qOK);
    codec_.WriteHeader(f, "B", 20, "INTE", qOK);
    codec_.WriteIntegerArray(20, 0, v, f, qOK);
  });
  Array<int32_t> r;
  bool qOK = false;
  ExpectHeader("A", 20, "INTE");
  codec_.ReadIntegerBlock(20, 10, reader_, r, qOK);
  EXPECT_TRUE(qOK);
  ExpectHeader("B", 20, "INTE");
  codec_.ReadIntegerBlock(20, 10, reader_, r, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(reader_.LastError(), "physical record larger than the block size");
}

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
  EXPECT_EQ(MessageLog::Shared().Lines().back(), "Error:Overflow (No.6) In [RecordCodec (ReadValue)] ");
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
  EXPECT_EQ(MessageLog::Shared().Lines()[0], "Error:Type mismatch (No.13) In [RecordCodec (WriteValue)] ");
  EXPECT_TRUE(MessageLog::Shared().Flags()[0]);
  codec_.WriteHeader(f, "GRID>", 1, "BYTE", qOK);
  codec_.WriteValue(f, Variant(int32_t{256}), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(MessageLog::Shared().Lines().back(), "Error:Overflow (No.6) In [RecordCodec (WriteValue)] ");
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
    if (random) reader_.OpenForRandomRead(name_, qOK);
    else reader_.OpenForRead(name_, qOK);
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
    for (int32_t i = 20001; i <= nf; ++i) ASSERT_EQ(rest[static_cast<std::size_t>(i - 20001)], r(i)) << i;
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
