// Record layout byte for byte, round trips of every type, keywords.
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
  std::vector<uint8_t> literal = {0,    0,    0,    24,  'N', 'U', 'L', 'L', 'V', 'A', 'L', ' ',
                                  ' ',  ' ',  ' ',  ' ', ' ', ' ', ' ', ' ', 0,   0,   0,   1,
                                  'D',  'O',  'U',  'B', 0,   0,   0,   24,  0,   0,   0,   8,
                                  0xC0, 0x8F, 0x38, 0,   0,   0,   0,   0,   0,   0,   0,   8};
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
  const std::vector<std::string> keys = {"DSCREATIONMETHOD", "DSUNITDATASOURCE",
                                         "DQAMENDEDDATASET"};
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

}  // namespace
