// SimFileIO on binary result files laid out byte by byte here: each value
// type, blocks, compression, row masks, single values, and bad input.
#include <sys/stat.h>

#include <cmath>
#include <limits>

#include "tests/platform/sim_file_test_util.h"

using namespace vndata;
using namespace vndata::sim_test;

namespace {

const float kInf = std::numeric_limits<float>::infinity();

std::vector<float> Ramp(int n, float start, float step) {
  std::vector<float> v(static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) v[static_cast<std::size_t>(i)] = start + step * static_cast<float>(i);
  return v;
}

using SimBinaryTest = SimFileTest;

TEST_F(SimBinaryTest, RealRecordIsDeliveredAsStored) {
  BinaryFile f;
  int64_t at = f.Reals("PRESSURE", {250.5f, -1.25f, 0.0f, 3.0e-39f, 1.0e30f});
  Open(f.b);
  Array<float> v;
  int32_t n = 5;
  ASSERT_TRUE(VectorCount(at, kSimVarReal, n, v)) << file_.LastError();
  EXPECT_EQ(v.LBound(), 1);
  EXPECT_EQ(v.UBound(), 5);
  EXPECT_EQ(Floats(v), (std::vector<float>{250.5f, -1.25f, 0.0f, 3.0e-39f, 1.0e30f}));
  EXPECT_EQ(n, 5);
}

TEST_F(SimBinaryTest, IntegersAreDeliveredAsNearestFloats) {
  BinaryFile f;
  int64_t at = f.Ints("FIPNUM", {1, -7, 0, 16777217, 2147483647, -2147483647 - 1});
  Open(f.b);
  Array<float> v;
  ASSERT_TRUE(Vector(at, kSimVarInte, 6, v));
  EXPECT_EQ(Floats(v),
            (std::vector<float>{1.0f, -7.0f, 0.0f, 16777216.0f, 2147483648.0f, -2147483648.0f}));
}

TEST_F(SimBinaryTest, DoublesAreRoundedToFloatsAndOverflowToInfinity) {
  BinaryFile f;
  int64_t at = f.Doubles("DOUBHEAD", {1.5, 0.1, 1e300, -1e300, 1e-60, -1e20});
  Open(f.b);
  Array<float> v;
  ASSERT_TRUE(Vector(at, kSimVarDoub, 6, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{1.5f, 0.1f, kInf, -kInf, 0.0f, -1e20f}));
}

TEST_F(SimBinaryTest, LogicalsAreOneForAnyNonZeroWordAndZeroForZero) {
  BinaryFile f;
  int64_t at = f.Ints("LOGIHEAD", {-1, 0, 1, 0, 7}, "LOGI");
  Open(f.b);
  Array<float> v;
  ASSERT_TRUE(Vector(at, kSimVarLogi, 5, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{1.0f, 0.0f, 1.0f, 0.0f, 1.0f}));
}

TEST_F(SimBinaryTest, TypeZeroTakesTheTypeFromTheHeader) {
  BinaryFile f;
  int64_t a = f.Ints("I", {4, 5});
  int64_t b = f.Doubles("D", {2.25, 4.5});
  int64_t c = f.Ints("L", {0, -1}, "LOGI");
  Open(f.b);
  Array<float> v;
  ASSERT_TRUE(Vector(a, kSimVarFromHeader, 2, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{4.0f, 5.0f}));
  ASSERT_TRUE(Vector(b, kSimVarFromHeader, 2, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{2.25f, 4.5f}));
  ASSERT_TRUE(Vector(c, kSimVarFromHeader, 2, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{0.0f, 1.0f}));
}

TEST_F(SimBinaryTest, FlagTypeOtherThanTheHeadersIsRefused) {
  BinaryFile f;
  int64_t a = f.Ints("I", {4, 5});
  int64_t b = f.Reals("R", {1.0f, 2.0f});
  Open(f.b);
  Array<float> v;
  EXPECT_FALSE(Vector(a, kSimVarReal, 2, v));
  EXPECT_FALSE(Vector(a, kSimVarLogi, 2, v));
  EXPECT_FALSE(Vector(b, kSimVarDoub, 2, v));
  EXPECT_EQ(file_.LastError(), "the record's type differs from the flag word");
  for (int32_t t = 5; t <= 7; ++t) EXPECT_FALSE(Vector(b, t, 2, v)) << t;
  EXPECT_FALSE(v.IsAllocated());
}

TEST_F(SimBinaryTest, FlagBitsOtherThanTypeAndCompressionDoNotChangeTheRead) {
  BinaryFile f;
  int64_t at = f.Reals("SWAT", {0.25f, 0.5f});
  Open(f.b);
  Array<float> v;
  // Derived and conversion bits, loaded bits, a rule number in the high half.
  int32_t flags = kSimVarReal + 16 + 3 * 32 + 256 + 512 + 7 * 65536;
  int32_t n = 2;
  ASSERT_TRUE(VectorCount(at, flags, n, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{0.25f, 0.5f}));
  EXPECT_EQ(n, 2);
}

TEST_F(SimBinaryTest, PayloadOfSeveralBlocksIsDeliveredWhole) {
  BinaryFile f;
  std::vector<float> want = Ramp(2500, 100.0f, 0.5f);
  int64_t at = f.Reals("PRESSURE", want);
  std::vector<int32_t> ints(2001);
  for (int i = 0; i < 2001; ++i) ints[static_cast<std::size_t>(i)] = i * 3 - 1000;
  int64_t bt = f.Ints("ICON", ints);
  Open(f.b);
  Array<float> v;
  ASSERT_TRUE(Vector(at, kSimVarReal, 2500, v));
  EXPECT_EQ(Floats(v), want);
  ASSERT_TRUE(Vector(bt, kSimVarInte, 2001, v));
  ASSERT_EQ(v.size(), 2001u);
  for (int i = 0; i < 2001; ++i) EXPECT_EQ(v(i + 1), static_cast<float>(i * 3 - 1000));
}

TEST_F(SimBinaryTest, PayloadBlockedOtherwiseIsDeliveredWhole) {
  BinaryFile f;
  std::vector<float> want = Ramp(2500, -3.0f, 0.25f);
  int64_t a = f.Reals("A", want, 300);
  int64_t b = f.Reals("B", want, 2500);
  Open(f.b);
  Array<float> v;
  ASSERT_TRUE(Vector(a, kSimVarReal, 2500, v));
  EXPECT_EQ(Floats(v), want);
  ASSERT_TRUE(Vector(b, kSimVarReal, 2500, v));
  EXPECT_EQ(Floats(v), want);
}

TEST_F(SimBinaryTest, ReadValueReachesEveryBlock) {
  BinaryFile f;
  std::vector<float> reals = Ramp(2500, 1.0f, 1.0f);
  std::vector<double> doubles(2345);
  for (int i = 0; i < 2345; ++i) doubles[static_cast<std::size_t>(i)] = 0.5 * i - 7.0;
  std::vector<int32_t> ints(1001);
  for (int i = 0; i < 1001; ++i) ints[static_cast<std::size_t>(i)] = -i;
  int64_t r = f.Reals("R", reals);
  int64_t d = f.Doubles("D", doubles);
  int64_t k = f.Ints("K", ints);
  int64_t l = f.Ints("L", std::vector<int32_t>(1500, -1), "LOGI");
  Open(f.b);
  for (int32_t row : {1, 2, 999, 1000, 1001, 1002, 2000, 2001, 2500}) {
    float s = -1;
    ASSERT_TRUE(Value(r, kSimVarReal, 2500, row, s)) << row;
    EXPECT_EQ(s, static_cast<float>(row)) << row;
  }
  for (int32_t row : {1, 1000, 1001, 2000, 2001, 2345}) {
    float s = -1;
    ASSERT_TRUE(Value(d, kSimVarDoub, 2345, row, s)) << row;
    EXPECT_EQ(s, static_cast<float>(0.5 * (row - 1) - 7.0)) << row;
  }
  float s = 5;
  ASSERT_TRUE(Value(k, kSimVarInte, 1001, 1001, s));
  EXPECT_EQ(s, -1000.0f);
  ASSERT_TRUE(Value(l, kSimVarLogi, 1500, 1444, s));
  EXPECT_EQ(s, 1.0f);
}

TEST_F(SimBinaryTest, ReadValueFollowsTheMarkersOfAnotherBlocking) {
  BinaryFile f;
  std::vector<float> reals = Ramp(2500, 1.0f, 1.0f);
  int64_t a = f.Reals("A", reals, 300);
  int64_t b = f.Reals("B", reals, 2500);
  int64_t c = f.Reals("C", reals, 1);
  Open(f.b);
  for (int64_t at : {a, b, c}) {
    for (int32_t row : {1, 300, 301, 1000, 1001, 2500}) {
      float s = -1;
      ASSERT_TRUE(Value(at, kSimVarReal, 2500, row, s)) << at << " " << row;
      EXPECT_EQ(s, static_cast<float>(row));
    }
  }
}

TEST_F(SimBinaryTest, ReadValueOutsideTheRecordIsRefused) {
  BinaryFile f;
  int64_t at = f.Reals("R", {1.0f, 2.0f, 3.0f});
  Open(f.b);
  float s = 42;
  EXPECT_FALSE(Value(at, kSimVarReal, 3, 0, s));
  EXPECT_FALSE(Value(at, kSimVarReal, 3, 4, s));
  EXPECT_FALSE(Value(at, kSimVarReal, 3, -1, s));
  EXPECT_EQ(s, 42.0f);
  EXPECT_EQ(file_.LastError(), "row outside the record");
}

TEST_F(SimBinaryTest, CompressedRecordIsDeliveredAsStoredWithItsCount) {
  BinaryFile f;
  int64_t at = f.Reals("PRESSURE", {5.0f, 6.0f, 7.0f, 8.0f, 9.0f, 10.0f});
  Open(f.b);
  for (int32_t bit : {kSimFlagCompressed, kSimFlagCompressed2}) {
    Array<float> v;
    int32_t n = 10;
    ASSERT_TRUE(VectorCount(at, kSimVarReal + bit, n, v)) << bit;
    EXPECT_EQ(Floats(v), (std::vector<float>{5.0f, 6.0f, 7.0f, 8.0f, 9.0f, 10.0f}));
    EXPECT_EQ(n, 6);
  }
  // A compressed record may also be as long as the column.
  Array<float> v;
  int32_t n = 6;
  ASSERT_TRUE(VectorCount(at, kSimVarReal + kSimFlagCompressed, n, v));
  EXPECT_EQ(n, 6);
}

TEST_F(SimBinaryTest, CompressedRecordLongerThanTheColumnIsRefused) {
  BinaryFile f;
  int64_t at = f.Reals("PRESSURE", {5.0f, 6.0f, 7.0f});
  Open(f.b);
  Array<float> v;
  int32_t n = 2;
  EXPECT_FALSE(VectorCount(at, kSimVarReal + kSimFlagCompressed, n, v));
  EXPECT_EQ(n, 2);
}

TEST_F(SimBinaryTest, ReadValueOfACompressedRecordGivesItsCount) {
  BinaryFile f;
  int64_t at = f.Reals("PRESSURE", {5.0f, 6.0f, 7.0f});
  Open(f.b);
  int32_t p1 = Low(at), p2 = High(at), flags = kSimVarReal + kSimFlagCompressed, n = 300;
  float s = 0;
  bool qOK = false;
  io_.ReadValue(file_, p1, p2, flags, n, 3, s, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(s, 7.0f);
  EXPECT_EQ(n, 3);
}

TEST_F(SimBinaryTest, RecordOfAnotherLengthThanTheColumnIsRefused) {
  BinaryFile f;
  int64_t at = f.Reals("SWAT", {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f});
  Open(f.b);
  Array<float> v{9.0f};
  EXPECT_FALSE(Vector(at, kSimVarReal, 5, v));
  EXPECT_EQ(file_.LastError(), "the record's count differs from the column's");
  EXPECT_FALSE(Vector(at, kSimVarReal, 7, v));
  float s = 1;
  EXPECT_FALSE(Value(at, kSimVarReal, 7, 1, s));
  // The output is left as it was.
  EXPECT_EQ(Floats(v), (std::vector<float>{9.0f}));
}

TEST_F(SimBinaryTest, MaskDeliversTheRowsItNames) {
  BinaryFile f;
  int64_t at = f.Reals("SWAT", {0.1f, 0.2f, 0.3f, 0.4f});
  Open(f.b);
  Array<int32_t> mask{3, 1, 3, 4, 99};
  Array<float> v;
  int32_t n = 4;
  ASSERT_TRUE(Masked(at, kSimVarReal, n, mask, 4, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{0.3f, 0.1f, 0.3f, 0.4f}));
  EXPECT_EQ(v.UBound(), 4);
  EXPECT_EQ(n, 4);
  // A count of 0 means every row.
  ASSERT_TRUE(Masked(at, kSimVarReal, n, mask, 0, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{0.1f, 0.2f, 0.3f, 0.4f}));
}

TEST_F(SimBinaryTest, MaskIsTakenFromItsLowerBound) {
  BinaryFile f;
  int64_t at = f.Ints("FIPNUM", {10, 20, 30});
  Open(f.b);
  Array<int32_t> mask(0, 1);
  mask(0) = 2;
  mask(1) = 3;
  Array<float> v;
  int32_t n = 3;
  ASSERT_TRUE(Masked(at, 0, n, mask, 2, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{20.0f, 30.0f}));
}

TEST_F(SimBinaryTest, MaskOnACompressedRecordGivesTheMaskCount) {
  BinaryFile f;
  int64_t at = f.Reals("SGAS", {0.1f, 0.2f, 0.3f, 0.4f});
  Open(f.b);
  Array<int32_t> mask{4, 2};
  Array<float> v;
  int32_t n = 100;
  ASSERT_TRUE(Masked(at, kSimVarReal + kSimFlagCompressed, n, mask, 2, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{0.4f, 0.2f}));
  EXPECT_EQ(n, 2);
}

TEST_F(SimBinaryTest, MaskRowOutsideTheRecordIsRefused) {
  BinaryFile f;
  int64_t at = f.Reals("SWAT", {0.1f, 0.2f, 0.3f});
  Open(f.b);
  Array<float> v{7.0f};
  int32_t n = 3;
  EXPECT_FALSE(Masked(at, kSimVarReal, n, Array<int32_t>{1, 4}, 2, v));
  EXPECT_EQ(file_.LastError(), "a row of the mask lies outside the record");
  EXPECT_FALSE(Masked(at, kSimVarReal, n, Array<int32_t>{0}, 1, v));
  EXPECT_FALSE(Masked(at, kSimVarReal, n, Array<int32_t>{-5}, 1, v));
  EXPECT_FALSE(Masked(at, kSimVarReal, n, Array<int32_t>{1, 2}, 3, v));
  EXPECT_EQ(file_.LastError(), "the row mask holds fewer rows than its count");
  EXPECT_FALSE(Masked(at, kSimVarReal, n, Array<int32_t>(), 1, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{7.0f}));
  EXPECT_EQ(n, 3);
}

TEST_F(SimBinaryTest, RecordsAreFoundByTheirPositionWords) {
  BinaryFile f;
  f.Ints("SEQNUM", {1});
  int64_t b = f.Reals("PRESSURE", {1.0f, 2.0f});
  int64_t c = f.Reals("SWAT", {0.5f, 0.75f});
  Open(f.b);
  Array<float> v;
  ASSERT_TRUE(Vector(c, kSimVarReal, 2, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{0.5f, 0.75f}));
  ASSERT_TRUE(Vector(b, kSimVarReal, 2, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{1.0f, 2.0f}));
}

TEST_F(SimBinaryTest, PositionThatHoldsNoHeaderIsRefused) {
  BinaryFile f;
  int64_t a = f.Reals("PRESSURE", Ramp(10, 1.0f, 1.0f));
  Open(f.b);
  Array<float> v;
  // Inside the header, at the payload's marker, inside the payload.
  for (int64_t at : {a + 4, a + 24, a + 28, a + 31}) {
    EXPECT_FALSE(Vector(at, 0, 10, v)) << at;
    float s = 0;
    EXPECT_FALSE(Value(at, 0, 10, 1, s)) << at;
  }
  // At and beyond the end, and a high word that makes the offset negative.
  EXPECT_FALSE(Vector(f.Size(), 0, 10, v));
  EXPECT_FALSE(Vector(f.Size() + 100, 0, 10, v));
  EXPECT_FALSE(Vector(int64_t{1} << 32, 0, 10, v));
  int32_t p1 = 0, p2 = -1, flags = 0, n = 10;
  bool qOK = true;
  io_.ReadVector(file_, p1, p2, flags, n, v, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(v.IsAllocated());
}

TEST_F(SimBinaryTest, RecordsWithoutNumbersAreRefused) {
  BinaryFile f;
  int64_t a = f.Names("ZWEL", {"PROD", "INJ"});
  int64_t b = f.Header("STARTSOL", 0, "MESS");
  Open(f.b);
  Array<float> v;
  EXPECT_FALSE(Vector(a, 0, 2, v));
  EXPECT_EQ(file_.LastError(), "the record holds no numbers");
  EXPECT_FALSE(Vector(b, 0, 0, v));
}

TEST_F(SimBinaryTest, EmptyRecordDeliversNoValues) {
  BinaryFile f;
  int64_t a = f.Ints("ENDGRID", {});
  f.Reals("NEXT", {1.0f});
  Open(f.b);
  Array<float> v{3.0f};
  int32_t n = 0;
  ASSERT_TRUE(VectorCount(a, kSimVarInte, n, v));
  EXPECT_FALSE(v.IsAllocated());
  EXPECT_EQ(n, 0);
}

TEST_F(SimBinaryTest, TruncatedPayloadIsRefused) {
  BinaryFile f;
  int64_t at = f.Reals("PRESSURE", Ramp(2500, 1.0f, 1.0f));
  std::vector<uint8_t> cut(f.b.begin(), f.b.begin() + at + 24 + 4008 + 1000);
  Open(cut);
  Array<float> v;
  EXPECT_FALSE(Vector(at, kSimVarReal, 2500, v));
  EXPECT_FALSE(v.IsAllocated());
  float s = 0;
  EXPECT_FALSE(Value(at, kSimVarReal, 2500, 2400, s));
  // The blocks before the cut are whole and still read.
  ASSERT_TRUE(Value(at, kSimVarReal, 2500, 1000, s));
  EXPECT_EQ(s, 1000.0f);
  EXPECT_FALSE(Value(at, kSimVarReal, 2500, 1001, s));
}

TEST_F(SimBinaryTest, CountBeyondTheFileIsRefusedBeforeAnythingIsAllocated) {
  BinaryFile f;
  int64_t at = f.Header("PRESSURE", 2147483647, "REAL");
  PutBE32(f.b, 4000);
  Open(f.b);
  Array<float> v;
  EXPECT_FALSE(Vector(at, kSimVarReal, 2147483647, v));
  EXPECT_EQ(file_.LastError(), "record length beyond the end of the file");
  Array<int32_t> mask{1};
  int32_t n = 2147483647;
  EXPECT_FALSE(Masked(at, kSimVarReal, n, mask, 1, v));
  EXPECT_EQ(file_.LastError(), "record length beyond the end of the file");
  float s = 0;
  EXPECT_FALSE(Value(at, kSimVarReal, 2147483647, 2147483000, s));
}

TEST_F(SimBinaryTest, LengthMarkersThatDisagreeAreRefused) {
  BinaryFile f;
  int64_t at = f.Reals("SWAT", {0.1f, 0.2f, 0.3f});
  f.b[static_cast<std::size_t>(at + 24 + 4 + 12 + 3)] = 8;  // trailing marker 8, not 12
  Open(f.b);
  Array<float> v;
  EXPECT_FALSE(Vector(at, kSimVarReal, 3, v));
  EXPECT_EQ(file_.LastError(), "length markers disagree");
}

TEST_F(SimBinaryTest, BlockHoldingMoreValuesThanTheCountIsRefused) {
  BinaryFile f;
  int64_t at = f.Reals("SWAT", {0.1f, 0.2f, 0.3f});
  f.b[static_cast<std::size_t>(at + 15)] = 2;  // the header now says 2 values
  Open(f.b);
  Array<float> v;
  EXPECT_FALSE(Vector(at, kSimVarReal, 2, v));
  EXPECT_EQ(file_.LastError(), "the payload holds more values than its count");
}

TEST_F(SimBinaryTest, HeadersOfOtherFormatsAndTypesAreRefused) {
  std::vector<uint8_t> b;
  record_test::PutRecord(b, record_test::HeaderBody("NULLVAL", 16, 1, "REAL"));
  record_test::PutRecord(b, {0x3f, 0x80, 0, 0});
  BinaryFile f;
  f.b = b;
  int64_t odd = f.Header("ODD", 1, "XXXX");
  PutBE32(f.b, 4);
  PutBE32(f.b, 1);
  PutBE32(f.b, 4);
  int64_t neg = f.Header("NEG", -1, "INTE");
  Open(f.b);
  Array<float> v;
  EXPECT_FALSE(Vector(0, 0, 1, v));
  EXPECT_EQ(file_.LastError(), "not a simulator record header");
  EXPECT_FALSE(Vector(odd, 0, 1, v));
  EXPECT_EQ(file_.LastError(), "unknown record type");
  EXPECT_FALSE(Vector(neg, 0, -1, v));
  EXPECT_EQ(file_.LastError(), "negative value count");
}

TEST_F(SimBinaryTest, ClosedOrWritingFileIsRefused) {
  BinaryFile f;
  int64_t at = f.Reals("SWAT", {0.1f});
  Open(f.b);
  bool qOK = false;
  io_.CloseFile(file_, qOK);
  ASSERT_TRUE(qOK);
  Array<float> v;
  EXPECT_FALSE(Vector(at, 0, 1, v));
  std::vector<SimRecordInfo> records;
  io_.IndexRecords(file_, records, qOK);
  EXPECT_FALSE(qOK);
  RecordFile w;
  w.OpenForWrite(dir_.File("OUT.INIT"), qOK);
  ASSERT_TRUE(qOK);
  int32_t p1 = 0, p2 = 0, flags = 0, n = 1;
  io_.ReadVector(w, p1, p2, flags, n, v, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(w.LastError(), "the file is not open for reading");
}

TEST_F(SimBinaryTest, MissingFileDoesNotOpen) {
  bool qOK = true;
  RecordFile f;
  io_.OpenForRead(dir_.File("GONE.UNRST"), f, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(f.IsOpen());
  EXPECT_EQ(f.LastError(), "cannot open the file");
  std::shared_ptr<RecordFile> p;
  io_.OpenForRead(dir_.File("GONE.UNRST"), p, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_NE(p, nullptr);
  EXPECT_FALSE(p->IsOpen());
  // Bad input is reported by the flag and the reason, not by a trace line.
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(SimBinaryTest, FileCutShorterAfterOpeningIsRefused) {
  BinaryFile f;
  int64_t at = f.Reals("PRESSURE", Ramp(3000, 1.0f, 1.0f));
  Open(f.b);
  ASSERT_EQ(::truncate(name_.c_str(), 5000), 0);
  Array<float> v;
  EXPECT_FALSE(Vector(at, kSimVarReal, 3000, v));
  float s = 0;
  EXPECT_FALSE(Value(at, kSimVarReal, 3000, 2500, s));
  std::vector<SimRecordInfo> records;
  bool qOK = true;
  io_.IndexRecords(file_, records, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(SimBinaryTest, FileRemovedAfterOpeningIsStillReadUntilClosed) {
  // The system keeps a removed file's bytes for the descriptor that has it
  // open; a later open fails.
  BinaryFile f;
  int64_t at = f.Reals("SWAT", {0.5f});
  Open(f.b);
  ASSERT_EQ(::unlink(name_.c_str()), 0);
  Array<float> v;
  ASSERT_TRUE(Vector(at, kSimVarReal, 1, v));
  EXPECT_EQ(v(1), 0.5f);
  bool qOK = true;
  io_.CloseFile(file_, qOK);
  io_.OpenForRead(name_, file_, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(SimBinaryTest, OpenForReadMakesTheRecordFileAndCloseFileTakesNone) {
  BinaryFile f;
  int64_t at = f.Reals("SWAT", {0.5f});
  record_test::WriteAllBytes(name_, f.b);
  std::shared_ptr<RecordFile> p;
  bool qOK = false;
  io_.OpenForRead(name_, p, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(p->get_FileName(), name_);
  EXPECT_EQ(p->Mode(), RecordFileMode::RandomRead);
  EXPECT_FALSE(p->FileOption(1));
  int32_t p1 = Low(at), p2 = High(at), flags = 0, n = 1;
  Array<float> v;
  io_.ReadVector(*p, p1, p2, flags, n, v, qOK);
  ASSERT_TRUE(qOK);
  io_.CloseFile(p, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(p->IsOpen());
  io_.CloseFile(std::shared_ptr<RecordFile>(), qOK);
  EXPECT_TRUE(qOK);
}

TEST_F(SimBinaryTest, OpenForReadSetsTheFormattedOptionFromTheFile) {
  BinaryFile f;
  f.Reals("SWAT", {0.5f});
  record_test::WriteAllBytes(name_, f.b);
  file_.SetFileOption1(true);
  bool qOK = false;
  io_.OpenForRead(name_, file_, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_FALSE(file_.FileOption(1));
  record_test::WriteAllBytes(name_,
                             TextBytes("\n 'SWAT    '           1 'REAL'\n   0.50000000E+00\n"));
  io_.OpenForRead(name_, file_, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_TRUE(file_.FileOption(1));
  // An empty file opens as a binary one with nothing in it.
  record_test::WriteAllBytes(name_, {});
  io_.OpenForRead(name_, file_, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_FALSE(file_.FileOption(1));
}

// ---------------------------------------------------------------------------
// The index.

TEST_F(SimBinaryTest, IndexListsEveryRecordWithItsPosition) {
  BinaryFile f;
  std::vector<std::string> names(230);
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = "W" + std::to_string(i);
  std::vector<int64_t> at;
  at.push_back(f.Ints("SEQNUM", {7}));
  at.push_back(f.Ints("LOGIHEAD", {0, -1, 0}, "LOGI"));
  at.push_back(f.Doubles("DOUBHEAD", std::vector<double>(1234, 2.5)));
  at.push_back(f.Names("ZWEL", names));
  at.push_back(f.Names("ZLONG", {"A LONG NAME", "B"}, 10));
  at.push_back(f.Header("STARTSOL", 0, "MESS"));
  at.push_back(f.Reals("PRESSURE", Ramp(2001, 1.0f, 1.0f)));
  at.push_back(f.Ints("ENDGRID", {}));
  Open(f.b);
  std::vector<SimRecordInfo> records;
  bool qOK = false;
  io_.IndexRecords(file_, records, qOK);
  ASSERT_TRUE(qOK) << file_.LastError();
  struct Want {
    const char* keyword;
    int32_t count;
    const char* type;
    int32_t varType;
  };
  const Want want[] = {{"SEQNUM", 1, "INTE", 1},      {"LOGIHEAD", 3, "LOGI", 4},
                       {"DOUBHEAD", 1234, "DOUB", 3}, {"ZWEL", 230, "CHAR", 0},
                       {"ZLONG", 2, "C010", 0},       {"STARTSOL", 0, "MESS", 0},
                       {"PRESSURE", 2001, "REAL", 2}, {"ENDGRID", 0, "INTE", 1}};
  ASSERT_EQ(records.size(), std::size(want));
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_EQ(records[i].zKeyword, want[i].keyword) << i;
    EXPECT_EQ(records[i].nValues, want[i].count) << i;
    EXPECT_EQ(records[i].zType, want[i].type) << i;
    EXPECT_EQ(records[i].iVarType, want[i].varType) << i;
    EXPECT_EQ(records[i].iPos1, Low(at[i])) << i;
    EXPECT_EQ(records[i].iPos2, 0) << i;
    EXPECT_EQ(records[i].Offset(), at[i]) << i;
  }
  // The positions read the records.
  Array<float> v;
  const SimRecordInfo& p = records[6];
  ASSERT_TRUE(Vector(p.Offset(), p.iVarType, p.nValues, v));
  EXPECT_EQ(v(2001), 2001.0f);
}

TEST_F(SimBinaryTest, IndexFollowsTheMarkersOfAnotherBlocking) {
  BinaryFile f;
  int64_t a = f.Reals("A", Ramp(2500, 1.0f, 1.0f), 700);
  int64_t b = f.Names("B", std::vector<std::string>(300, "X"), 8, 1000);
  int64_t c = f.Ints("C", std::vector<int32_t>(1000, 3), "INTE", 999);
  int64_t d = f.Ints("D", {1, 2});
  Open(f.b);
  std::vector<SimRecordInfo> records;
  bool qOK = false;
  io_.IndexRecords(file_, records, qOK);
  ASSERT_TRUE(qOK) << file_.LastError();
  ASSERT_EQ(records.size(), 4u);
  EXPECT_EQ(records[0].Offset(), a);
  EXPECT_EQ(records[1].Offset(), b);
  EXPECT_EQ(records[2].Offset(), c);
  EXPECT_EQ(records[3].Offset(), d);
}

TEST_F(SimBinaryTest, IndexOfADamagedFileKeepsTheRecordsBeforeTheDamage) {
  BinaryFile f;
  f.Ints("SEQNUM", {7});
  f.Reals("PRESSURE", Ramp(1500, 1.0f, 1.0f));
  f.Reals("SWAT", Ramp(1500, 1.0f, 1.0f));
  std::vector<uint8_t> cut(f.b.begin(), f.b.end() - 10);
  Open(cut);
  std::vector<SimRecordInfo> records;
  bool qOK = true;
  io_.IndexRecords(file_, records, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[1].zKeyword, "PRESSURE");

  // Garbage where a header should be.
  BinaryFile g;
  g.Ints("SEQNUM", {7});
  g.b.insert(g.b.end(), {1, 2, 3, 4, 5, 6, 7, 8});
  Open(g.b);
  io_.IndexRecords(file_, records, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(records.size(), 1u);
}

TEST_F(SimBinaryTest, IndexOfAnEmptyFileIsEmpty) {
  Open(std::vector<uint8_t>{});
  std::vector<SimRecordInfo> records(3);
  bool qOK = false;
  io_.IndexRecords(file_, records, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(records.empty());
}

TEST_F(SimBinaryTest, IndexStepsOverPayloadsBeyondFourGigabytesWithoutReadingThem) {
  // A record of 1.1 billion values in a sparse file: only its header, the
  // block that a single value is read from and the last block's trailing
  // marker are written. The first block's leading marker is made unusable,
  // so a reader that followed the markers would fail at once.
  const int32_t big = 1100000000;
  const int64_t payload = int64_t{big} * 4 + 8 * (int64_t{big} / 1000);
  const int64_t second = 24 + payload;
  ASSERT_GT(second, int64_t{1} << 32);
  BinaryFile head;
  head.Header("BIG", big, "REAL");
  PutBE32(head.b, 0x7FFFFFFF);
  ASSERT_TRUE(WriteAt(name_, 0, head.b));
  const int32_t row = 1050000123;  // block 1050000, value 122 of it
  const int64_t block = 24 + int64_t{1050000} * 4008;
  std::vector<uint8_t> bytes;
  PutBE32(bytes, 4000);
  ASSERT_TRUE(WriteAt(name_, block, bytes));
  bytes.clear();
  PutBE32(bytes, static_cast<int32_t>(std::bit_cast<uint32_t>(-12.75f)));
  ASSERT_TRUE(WriteAt(name_, block + 4 + 122 * 4, bytes));
  bytes.clear();
  PutBE32(bytes, 4000);
  ASSERT_TRUE(WriteAt(name_, block + 4004, bytes));
  ASSERT_TRUE(WriteAt(name_, second - 4, bytes));
  BinaryFile tail;
  tail.Ints("SMALL", {3, 4, 5});
  ASSERT_TRUE(WriteAt(name_, second, tail.b));

  bool qOK = false;
  io_.OpenForRead(name_, file_, qOK);
  ASSERT_TRUE(qOK);
  std::vector<SimRecordInfo> records;
  io_.IndexRecords(file_, records, qOK);
  ASSERT_TRUE(qOK) << file_.LastError();
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].nValues, big);
  EXPECT_EQ(records[1].zKeyword, "SMALL");
  EXPECT_EQ(records[1].iPos2, 1);
  EXPECT_EQ(records[1].iPos1, Low(second));
  EXPECT_EQ(records[1].Offset(), second);

  Array<float> v;
  ASSERT_TRUE(Vector(second, kSimVarInte, 3, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), (std::vector<float>{3.0f, 4.0f, 5.0f}));
  float s = 0;
  ASSERT_TRUE(Value(0, kSimVarReal, big, row, s)) << file_.LastError();
  EXPECT_EQ(s, -12.75f);
}

// ---------------------------------------------------------------------------
// The writers' operations.

TEST_F(SimBinaryTest, RecordsWrittenThroughTheCodecOperationsReadBack) {
  RecordFile w;
  bool qOK = false;
  w.OpenForWrite(name_, qOK);
  ASSERT_TRUE(qOK);
  SimFileIO out;
  Array<float> pressure(1, 2500);
  for (int32_t i = 1; i <= 2500; ++i) pressure(i) = 200.0f + static_cast<float>(i) * 0.125f;
  out.WriteSimulatorHeader(w, "STARTSOL", 0, "MESS", qOK);
  ASSERT_TRUE(qOK);
  out.WriteSimulatorHeader(w, "PRESSURE", 2500, "REAL", qOK);
  out.WriteRealArray(2500, kSimulatorNumberBlock, pressure, w, qOK);
  ASSERT_TRUE(qOK);
  out.WriteSimulatorHeader(w, "ZWEL", 2, "CHAR", qOK);
  out.WriteCharArray(2, Array<std::string>{"PROD", "INJ"}, w, qOK);
  ASSERT_TRUE(qOK);
  w.Close(qOK);
  ASSERT_TRUE(qOK);
  // The bytes are the format's: the second block of PRESSURE starts where
  // the blocking puts it.
  std::vector<uint8_t> bytes = record_test::ReadAllBytes(name_);
  ASSERT_GT(bytes.size(), 24u + 24u + 4008u + 4u);
  EXPECT_EQ(record_test::ReadAllBytes(name_)[24 + 24 + 4008 + 2], 0x0f);  // 4000 = 0x00000fa0

  io_.OpenForRead(name_, file_, qOK);
  ASSERT_TRUE(qOK);
  std::vector<SimRecordInfo> records;
  io_.IndexRecords(file_, records, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(records.size(), 3u);
  Array<float> v;
  ASSERT_TRUE(Vector(records[1].Offset(), kSimVarReal, 2500, v));
  EXPECT_EQ(Floats(v), std::vector<float>(pressure.begin(), pressure.end()));
  // The codec's reads are there too.
  ASSERT_TRUE(file_.IsOpen());
  file_.SetPosition(records[2].Offset(), qOK);
  std::string keyword, type;
  int32_t count = 0;
  io_.ReadHeader(file_, keyword, count, type, qOK);
  ASSERT_TRUE(qOK);
  std::string name;
  io_.ReadValue(file_, name, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(name, "PROD");
}

}  // namespace
