// SimFileIO on formatted (text) result files written here character by
// character: each type, Fortran's number forms, blocks, other layouts, line
// ends, the index, and bad input.
#include <cmath>
#include <cstdio>
#include <limits>

#include "tests/platform/sim_file_test_util.h"

using namespace vndata;
using namespace vndata::sim_test;

namespace {

const float kInf = std::numeric_limits<float>::infinity();

// A number in Fortran's E (or D) form, "0." and `digits` digits:
// 1.5 gives "0.15000000E+01"; an exponent of three digits loses its letter.
std::string Fortran(double v, int digits, char letter) {
  if (v == 0) return "0." + std::string(static_cast<std::size_t>(digits), '0') + letter + "+00";
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.*E", digits - 1, v);
  std::string s = buf;  // [-]d.dddE[+-]xx
  std::size_t e = s.find('E');
  std::string sign = s[0] == '-' ? "-" : "";
  std::size_t d = sign.size();
  std::string mantissa = s.substr(d, 1) + s.substr(d + 2, e - d - 2);
  int exponent = std::stoi(s.substr(e + 1)) + 1;
  char ex[16];
  if (std::abs(exponent) >= 100)
    std::snprintf(ex, sizeof ex, "%+d", exponent);
  else
    std::snprintf(ex, sizeof ex, "%c%+03d", letter, exponent);
  return sign + "0." + mantissa + ex;
}

std::string Field(const std::string& s, std::size_t width) {
  return std::string(width > s.size() ? width - s.size() : 0, ' ') + s;
}

// A formatted file under construction in the standard layout; each record
// method returns the offset of its header line.
class TextFile {
 public:
  explicit TextFile(std::string lineEnd = "\n") : nl(std::move(lineEnd)) {}

  int64_t Header(const std::string& keyword, int32_t count, const std::string& type) {
    int64_t at = static_cast<int64_t>(t.size());
    std::string k = keyword;
    k.resize(8, ' ');
    t += " '" + k + "'" + Field(std::to_string(count), 12) + " '" + type + "'" + nl;
    return at;
  }
  int64_t Ints(const std::string& keyword, const std::vector<int32_t>& v,
               const std::string& type = "INTE") {
    std::vector<std::string> f;
    for (int32_t x : v) f.push_back(Field(std::to_string(x), 12));
    return Record(keyword, type, f, 6, 1000);
  }
  int64_t Logicals(const std::string& keyword, const std::vector<bool>& v) {
    std::vector<std::string> f;
    for (bool x : v) f.push_back(x ? "  T" : "  F");
    return Record(keyword, "LOGI", f, 25, 1000);
  }
  int64_t Reals(const std::string& keyword, const std::vector<float>& v) {
    std::vector<std::string> f;
    for (float x : v) f.push_back(Field(Fortran(x, 8, 'E'), 17));
    return Record(keyword, "REAL", f, 4, 1000);
  }
  int64_t Doubles(const std::string& keyword, const std::vector<double>& v) {
    std::vector<std::string> f;
    for (double x : v) f.push_back(Field(Fortran(x, 14, 'D'), 23));
    return Record(keyword, "DOUB", f, 3, 1000);
  }
  int64_t Names(const std::string& keyword, const std::vector<std::string>& v) {
    std::vector<std::string> f;
    for (std::string x : v) {
      x.resize(8, ' ');
      f.push_back(" '" + x + "'");
    }
    return Record(keyword, "CHAR", f, 7, 105);
  }
  // Fields as given, perLine to a line, a new line at every block.
  int64_t Record(const std::string& keyword, const std::string& type,
                 const std::vector<std::string>& fields, std::size_t perLine, std::size_t block) {
    int64_t at = Header(keyword, static_cast<int32_t>(fields.size()), type);
    for (std::size_t start = 0; start < fields.size(); start += block) {
      std::size_t end = std::min(fields.size(), start + block);
      for (std::size_t i = start; i < end; ++i) {
        t += fields[i];
        if ((i - start + 1) % perLine == 0 || i + 1 == end) t += nl;
      }
    }
    return at;
  }

  std::string t;
  std::string nl;
};

std::vector<float> Ramp(int n, float start, float step) {
  std::vector<float> v(static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) v[static_cast<std::size_t>(i)] = start + step * static_cast<float>(i);
  return v;
}

using SimTextTest = SimFileTest;

TEST_F(SimTextTest, TheHelperWritesTheStandardLayout) {
  // What the tests below rely on, spelled out.
  TextFile f;
  f.Ints("SEQNUM", {1, -2, 3, 4, 5, 6, 7});
  f.Reals("PORV", {1068645.6f});
  f.Doubles("TAB", {14.7});
  f.Logicals("LOGIHEAD", {true, false});
  f.Names("ZWEL", {"PROD"});
  EXPECT_EQ(f.t,
            " 'SEQNUM  '           7 'INTE'\n"
            "           1          -2           3           4           5           6\n"
            "           7\n"
            " 'PORV    '           1 'REAL'\n"
            "   0.10686456E+07\n"
            " 'TAB     '           1 'DOUB'\n"
            "   0.14700000000000D+02\n"
            " 'LOGIHEAD'           2 'LOGI'\n"
            "  T  F\n"
            " 'ZWEL    '           1 'CHAR'\n"
            " 'PROD    '\n");
}

TEST_F(SimTextTest, EachNumericTypeIsReadFromText) {
  const std::string text =
      " 'SEQNUM  '           7 'INTE'\n"
      "           1          -2           3           4           5 -2147483648\n"
      "  2147483647\n"
      " 'PORV    '           5 'REAL'\n"
      "   0.10686456E+07  -0.25000000E+00   0.00000000E+00   0.34000000E+39\n"
      "   0.10000000E-44\n"
      " 'DOUBHEAD'           4 'DOUB'\n"
      "   0.15000000000000D+01  -0.10000000000000+301   0.10000000000000-299\n"
      "  -0.20000000000000D+21\n"
      " 'LOGIHEAD'           3 'LOGI'\n"
      "  T  F  T\n"
      " 'ZWEL    '           2 'CHAR'\n"
      " 'PROD    ' '        '\n"
      " 'STARTSOL'           0 'MESS'\n";
  Open(text);
  ASSERT_TRUE(file_.FileOption(1));
  Array<float> v;
  ASSERT_TRUE(Vector(0, 0, 7, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), (std::vector<float>{1, -2, 3, 4, 5, -2147483648.0f, 2147483648.0f}));
  int64_t porv = static_cast<int64_t>(text.find(" 'PORV"));
  ASSERT_TRUE(Vector(porv, kSimVarReal, 5, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), (std::vector<float>{1068645.6f, -0.25f, 0.0f, 3.4e38f,
                                           std::numeric_limits<float>::denorm_min()}));
  int64_t doub = static_cast<int64_t>(text.find(" 'DOUBHEAD"));
  ASSERT_TRUE(Vector(doub, kSimVarDoub, 4, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), (std::vector<float>{1.5f, -kInf, 0.0f, -2e20f}));
  int64_t logi = static_cast<int64_t>(text.find(" 'LOGIHEAD"));
  ASSERT_TRUE(Vector(logi, kSimVarLogi, 3, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), (std::vector<float>{1, 0, 1}));
  EXPECT_FALSE(Vector(static_cast<int64_t>(text.find(" 'ZWEL")), 0, 2, v));
  EXPECT_EQ(file_.LastError(), "the record holds no numbers");
  EXPECT_FALSE(Vector(static_cast<int64_t>(text.find(" 'STARTSOL")), 0, 0, v));
  float s = 0;
  ASSERT_TRUE(Value(porv, 0, 5, 5, s));
  EXPECT_EQ(s, std::numeric_limits<float>::denorm_min());
  ASSERT_TRUE(Value(doub, 0, 4, 2, s));
  EXPECT_EQ(s, -kInf);
}

TEST_F(SimTextTest, FortranNumberFormsAreRead) {
  // Other writers' spellings: E or D in either case, a plus sign, no letter
  // before a three-digit exponent, .TRUE. and .FALSE.
  const std::string text =
      " 'R' 6 'REAL'\n"
      " 1.5 -2.5e1 +0.25E+01 0.35E+39 0.5-100 3\n"
      " 'D' 4 'DOUB'\n"
      " 0.1d+01 0.125D+00 -0.25+100 7\n"
      " 'L' 4 'LOGI'\n"
      " .TRUE. .FALSE. t f\n"
      " 'I' 2 'INTE'\n"
      " +5 -0\n";
  Open(text);
  Array<float> v;
  ASSERT_TRUE(Vector(0, 0, 6, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), (std::vector<float>{1.5f, -25.0f, 2.5f, kInf, 0.0f, 3.0f}));
  ASSERT_TRUE(Vector(static_cast<int64_t>(text.find(" 'D")), 0, 4, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), (std::vector<float>{1.0f, 0.125f, -kInf, 7.0f}));
  ASSERT_TRUE(Vector(static_cast<int64_t>(text.find(" 'L")), 0, 4, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), (std::vector<float>{1, 0, 1, 0}));
  ASSERT_TRUE(Vector(static_cast<int64_t>(text.find(" 'I")), 0, 2, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), (std::vector<float>{5, 0}));
}

TEST_F(SimTextTest, ValuesOfLaterBlocksAreReadWholeAndOneByOne) {
  TextFile f;
  std::vector<float> reals = Ramp(2500, 0.25f, 0.5f);
  std::vector<int32_t> ints(2001);
  for (int i = 0; i < 2001; ++i) ints[static_cast<std::size_t>(i)] = 7 * i - 3000;
  std::vector<double> doubles(1001);
  for (int i = 0; i < 1001; ++i) doubles[static_cast<std::size_t>(i)] = -0.125 * i;
  std::vector<bool> logicals(1100);
  for (std::size_t i = 0; i < logicals.size(); ++i) logicals[i] = i % 3 == 0;
  int64_t r = f.Reals("PRESSURE", reals);
  int64_t k = f.Ints("ICON", ints);
  int64_t d = f.Doubles("XCON", doubles);
  int64_t l = f.Logicals("LOGI", logicals);
  Open(f.t);
  // A block starts on a line of its own: value 1001 of ICON heads one, after
  // a short line that ends the first block.
  EXPECT_NE(f.t.find(Field("3993", 12) + "\n" + Field("4000", 12) + Field("4007", 12)),
            std::string::npos);
  Array<float> v;
  ASSERT_TRUE(Vector(r, kSimVarReal, 2500, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), reals);
  ASSERT_TRUE(Vector(k, kSimVarInte, 2001, v)) << file_.LastError();
  ASSERT_EQ(v.size(), 2001u);
  EXPECT_EQ(v(2001), 11000.0f);
  ASSERT_TRUE(Vector(d, kSimVarDoub, 1001, v)) << file_.LastError();
  EXPECT_EQ(v(1001), -125.0f);
  ASSERT_TRUE(Vector(l, kSimVarLogi, 1100, v)) << file_.LastError();
  EXPECT_EQ(v(1000), 1.0f);
  EXPECT_EQ(v(1001), 0.0f);
  for (int32_t row : {1, 4, 5, 999, 1000, 1001, 1004, 1005, 2000, 2001, 2499, 2500}) {
    float s = -1;
    ASSERT_TRUE(Value(r, kSimVarReal, 2500, row, s)) << row;
    EXPECT_EQ(s, reals[static_cast<std::size_t>(row - 1)]) << row;
  }
  for (int32_t row : {1, 6, 7, 1000, 1001, 1007, 2001}) {
    float s = -1;
    ASSERT_TRUE(Value(k, kSimVarInte, 2001, row, s)) << row;
    EXPECT_EQ(s, static_cast<float>(ints[static_cast<std::size_t>(row - 1)])) << row;
  }
  for (int32_t row : {1, 3, 4, 999, 1000, 1001}) {
    float s = -1;
    ASSERT_TRUE(Value(d, kSimVarDoub, 1001, row, s)) << row;
    EXPECT_EQ(s, static_cast<float>(doubles[static_cast<std::size_t>(row - 1)])) << row;
  }
  for (int32_t row : {1, 25, 26, 1000, 1001, 1099, 1100}) {
    float s = -1;
    ASSERT_TRUE(Value(l, kSimVarLogi, 1100, row, s)) << row;
    EXPECT_EQ(s, (row - 1) % 3 == 0 ? 1.0f : 0.0f) << row;
  }
}

TEST_F(SimTextTest, OtherLayoutsAreReadByCountingValues) {
  // One value a line, ragged lines, and no new line at the block boundary.
  std::string text = " 'ONE' 1200 'INTE'\n";
  for (int i = 1; i <= 1200; ++i) text += std::to_string(i) + "\n";
  int64_t ragged = static_cast<int64_t>(text.size());
  text += " 'RAGGED' 9 'REAL'\n 1.0 2.0\n3.0    4.0 5.0 6.0 7.0\n\n  8.0\n 9.0\n";
  int64_t flat = static_cast<int64_t>(text.size());
  text += " 'FLAT    '        1500 'INTE'\n";
  for (int i = 1; i <= 1500; ++i) {
    text += Field(std::to_string(-i), 12);
    if (i % 6 == 0 || i == 1500) text += "\n";
  }
  Open(text);
  for (int32_t row : {1, 2, 999, 1000, 1001, 1200}) {
    float s = 0;
    ASSERT_TRUE(Value(0, 0, 1200, row, s)) << row;
    EXPECT_EQ(s, static_cast<float>(row));
  }
  for (int32_t row = 1; row <= 9; ++row) {
    float s = 0;
    ASSERT_TRUE(Value(ragged, 0, 9, row, s)) << row;
    EXPECT_EQ(s, static_cast<float>(row));
  }
  for (int32_t row : {1, 998, 999, 1000, 1001, 1002, 1003, 1500}) {
    float s = 0;
    ASSERT_TRUE(Value(flat, 0, 1500, row, s)) << row;
    EXPECT_EQ(s, static_cast<float>(-row)) << row;
  }
  Array<float> v;
  ASSERT_TRUE(Vector(flat, 0, 1500, v));
  EXPECT_EQ(v(1500), -1500.0f);
  std::vector<SimRecordInfo> records;
  bool qOK = false;
  io_.IndexRecords(file_, records, qOK);
  ASSERT_TRUE(qOK) << file_.LastError();
  ASSERT_EQ(records.size(), 3u);
  EXPECT_EQ(records[0].Offset(), 0);
  EXPECT_EQ(records[1].Offset(), ragged);
  EXPECT_EQ(records[2].Offset(), flat);
  EXPECT_EQ(records[1].zKeyword, "RAGGED");
  EXPECT_EQ(records[2].nValues, 1500);
}

TEST_F(SimTextTest, WindowsLineEndsAreRead) {
  TextFile f("\r\n");
  std::vector<float> reals = Ramp(1500, 1.0f, 1.0f);
  int64_t a = f.Ints("SEQNUM", {4});
  int64_t b = f.Reals("PRESSURE", reals);
  int64_t c = f.Names("ZWEL", std::vector<std::string>(120, "W"));
  int64_t d = f.Header("ENDSOL", 0, "MESS");
  int64_t e = f.Logicals("L", {true, false, true});
  Open(f.t);
  Array<float> v;
  ASSERT_TRUE(Vector(b, kSimVarReal, 1500, v)) << file_.LastError();
  EXPECT_EQ(Floats(v), reals);
  for (int32_t row : {1, 4, 5, 1000, 1001, 1500}) {
    float s = 0;
    ASSERT_TRUE(Value(b, kSimVarReal, 1500, row, s)) << row;
    EXPECT_EQ(s, static_cast<float>(row)) << row;
  }
  std::vector<SimRecordInfo> records;
  bool qOK = false;
  io_.IndexRecords(file_, records, qOK);
  ASSERT_TRUE(qOK) << file_.LastError();
  ASSERT_EQ(records.size(), 5u);
  int64_t want[] = {a, b, c, d, e};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(records[i].Offset(), want[i]) << i;
}

TEST_F(SimTextTest, IndexListsEveryRecordAtItsHeaderLine) {
  TextFile f;
  std::vector<std::string> names(230);
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = "W" + std::to_string(i);
  std::vector<int64_t> at;
  at.push_back(f.Ints("SEQNUM", {7}));
  at.push_back(f.Logicals("LOGIHEAD", {false, true, false}));
  at.push_back(f.Doubles("DOUBHEAD", std::vector<double>(1234, 2.5)));
  at.push_back(f.Names("ZWEL", names));
  at.push_back(f.Record("ZLONG", "C010", {" 'A LONG NAM'", " 'B         '"}, 1, 105));
  at.push_back(f.Header("STARTSOL", 0, "MESS"));
  at.push_back(f.Reals("PRESSURE", Ramp(2001, 1.0f, 1.0f)));
  at.push_back(f.Ints("ENDGRID", {}));
  Open("\n" + f.t);
  std::vector<SimRecordInfo> records;
  bool qOK = false;
  io_.IndexRecords(file_, records, qOK);
  ASSERT_TRUE(qOK) << file_.LastError();
  const char* keywords[] = {"SEQNUM", "LOGIHEAD", "DOUBHEAD", "ZWEL",
                            "ZLONG",  "STARTSOL", "PRESSURE", "ENDGRID"};
  const char* types[] = {"INTE", "LOGI", "DOUB", "CHAR", "C010", "MESS", "REAL", "INTE"};
  const int32_t counts[] = {1, 3, 1234, 230, 2, 0, 2001, 0};
  const int32_t varTypes[] = {1, 4, 3, 0, 0, 0, 2, 1};
  ASSERT_EQ(records.size(), 8u);
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(records[i].zKeyword, keywords[i]) << i;
    EXPECT_EQ(records[i].zType, types[i]) << i;
    EXPECT_EQ(records[i].nValues, counts[i]) << i;
    EXPECT_EQ(records[i].iVarType, varTypes[i]) << i;
    EXPECT_EQ(records[i].Offset(), at[i] + 1) << i;  // after the leading line end
  }
  Array<float> v;
  ASSERT_TRUE(Vector(records[6].Offset(), kSimVarReal, 2001, v));
  EXPECT_EQ(v(2001), 2001.0f);
}

TEST_F(SimTextTest, ReadValueReadsOnlyTheLineThatHoldsTheValue) {
  // The first line of the record cannot be read as numbers: a single value
  // of a later line is still found, because its line is read alone.
  TextFile f;
  int64_t at = f.Reals("PRESSURE", Ramp(2500, 1.0f, 1.0f));
  std::size_t first = f.t.find('\n') + 1;
  std::string stars;
  for (int i = 0; i < 4; ++i) stars += Field("*************", 17);
  f.t.replace(first, stars.size(), stars);
  Open(f.t);
  for (int32_t row : {5, 1000, 1001, 2500}) {
    float s = 0;
    ASSERT_TRUE(Value(at, kSimVarReal, 2500, row, s)) << row << ": " << file_.LastError();
    EXPECT_EQ(s, static_cast<float>(row));
  }
  float s = 0;
  EXPECT_FALSE(Value(at, kSimVarReal, 2500, 4, s));
  Array<float> v;
  EXPECT_FALSE(Vector(at, kSimVarReal, 2500, v));
  EXPECT_EQ(file_.LastError(), "a value that cannot be read");
}

TEST_F(SimTextTest, IndexStepsOverPayloadsOfTheStandardLayoutWithoutReadingThem) {
  // Payloads of the standard length whose text is no numbers at all: the
  // index lands on the next header line all the same.
  TextFile f;
  int64_t a = f.Reals("PRESSURE", Ramp(1500, 1.0f, 1.0f));
  int64_t b = f.Ints("SEQNUM", {5});
  for (std::size_t i = static_cast<std::size_t>(a) + 32; i < static_cast<std::size_t>(b); ++i)
    if (f.t[i] != '\n') f.t[i] = '#';
  Open(f.t);
  std::vector<SimRecordInfo> records;
  bool qOK = false;
  io_.IndexRecords(file_, records, qOK);
  ASSERT_TRUE(qOK) << file_.LastError();
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[1].Offset(), b);
  Array<float> v;
  EXPECT_FALSE(Vector(a, kSimVarReal, 1500, v));
}

TEST_F(SimTextTest, CompressedTextRecordGivesItsCount) {
  TextFile f;
  int64_t at = f.Reals("SWAT", {0.25f, 0.5f, 0.75f});
  Open(f.t);
  Array<float> v;
  int32_t n = 10;
  ASSERT_TRUE(VectorCount(at, kSimVarReal + kSimFlagCompressed, n, v));
  EXPECT_EQ(n, 3);
  EXPECT_EQ(Floats(v), (std::vector<float>{0.25f, 0.5f, 0.75f}));
  n = 3;
  EXPECT_FALSE(Vector(at, kSimVarReal, 4, v));
  EXPECT_FALSE(VectorCount(at, kSimVarInte, n, v));
  Array<int32_t> mask{3, 3};
  ASSERT_TRUE(Masked(at, kSimVarReal, n, mask, 2, v));
  EXPECT_EQ(Floats(v), (std::vector<float>{0.75f, 0.75f}));
}

TEST_F(SimTextTest, ValueThatIsNoNumberIsRefused) {
  const std::string text =
      " 'SWAT' 3 'REAL'\n 0.5 ******** 0.25\n 'X' 2 'INTE'\n 1 2.5\n 'L' 1 'LOGI'\n X\n";
  Open(text);
  Array<float> v;
  EXPECT_FALSE(Vector(0, 0, 3, v));
  EXPECT_EQ(file_.LastError(), "a value that cannot be read");
  float s = 0;
  EXPECT_FALSE(Value(0, 0, 3, 2, s));
  ASSERT_TRUE(Value(0, 0, 3, 1, s));
  EXPECT_EQ(s, 0.5f);
  EXPECT_FALSE(Vector(static_cast<int64_t>(text.find(" 'X'")), 0, 2, v));
  EXPECT_EQ(file_.LastError(), "a value that cannot be read");
  EXPECT_FALSE(Vector(static_cast<int64_t>(text.find(" 'L'")), 0, 1, v));
  EXPECT_FALSE(v.IsAllocated());
}

TEST_F(SimTextTest, RecordOfFewerOrMoreValuesThanItsCountIsRefused) {
  const std::string text =
      " 'A' 4 'REAL'\n 1.0 2.0 3.0\n"
      " 'B' 2 'REAL'\n 1.0 2.0 3.0\n"
      " 'C' 2 'REAL'\n 1.0 2.0\n";
  Open(text);
  Array<float> v;
  EXPECT_FALSE(Vector(0, 0, 4, v));
  EXPECT_EQ(file_.LastError(), "the payload holds fewer values than its count");
  float s = 0;
  EXPECT_FALSE(Value(0, 0, 4, 4, s));
  int64_t b = static_cast<int64_t>(text.find(" 'B"));
  EXPECT_FALSE(Vector(b, 0, 2, v));
  EXPECT_EQ(file_.LastError(), "the payload holds more values than its count");
  int64_t c = static_cast<int64_t>(text.find(" 'C"));
  ASSERT_TRUE(Vector(c, 0, 2, v));
  std::vector<SimRecordInfo> records;
  bool qOK = true;
  io_.IndexRecords(file_, records, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(records.empty());
}

TEST_F(SimTextTest, TruncatedTextIsRefused) {
  TextFile f;
  f.Ints("SEQNUM", {1});
  int64_t at = f.Reals("PRESSURE", Ramp(100, 1.0f, 1.0f));
  std::string cut = f.t.substr(0, f.t.size() - 200);
  Open(cut);
  Array<float> v;
  EXPECT_FALSE(Vector(at, kSimVarReal, 100, v));
  EXPECT_EQ(file_.LastError(), "the file ends inside a record");
  float s = 0;
  EXPECT_FALSE(Value(at, kSimVarReal, 100, 100, s));
  ASSERT_TRUE(Value(at, kSimVarReal, 100, 10, s));
  EXPECT_EQ(s, 10.0f);
  std::vector<SimRecordInfo> records;
  bool qOK = true;
  io_.IndexRecords(file_, records, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].zKeyword, "SEQNUM");
}

TEST_F(SimTextTest, CountBeyondTheFileIsRefusedBeforeAnythingIsAllocated) {
  Open(" 'PRESSURE'  2000000000 'REAL'\n   0.1E+01\n");
  Array<float> v;
  EXPECT_FALSE(Vector(0, 0, 2000000000, v));
  EXPECT_EQ(file_.LastError(), "record length beyond the end of the file");
}

TEST_F(SimTextTest, PositionThatHoldsNoHeaderLineIsRefused) {
  const std::string text =
      " 'ZWEL    '           2 'CHAR'\n 'PROD    ' '        '\n"
      " 'SWAT    '           2 'REAL'\n   0.50000000E+00   0.25000000E+00\n"
      " 'BAD     '         1x2 'INTE'\n 1\n"
      " 'BAD2    '           1 'INTEGER'\n 1\n"
      " 'BAD3    '           1 'INTE' 5\n";
  Open(text);
  Array<float> v;
  int64_t values = static_cast<int64_t>(text.find("   0.5"));
  int64_t names = static_cast<int64_t>(text.find(" 'PROD"));
  for (int64_t at :
       {values, names, int64_t{3}, static_cast<int64_t>(text.find(" 'BAD ")),
        static_cast<int64_t>(text.find(" 'BAD2")), static_cast<int64_t>(text.find(" 'BAD3"))}) {
    EXPECT_FALSE(Vector(at, 0, 2, v)) << at;
    EXPECT_FALSE(Vector(at, 0, 1, v)) << at;
  }
  EXPECT_EQ(file_.LastError(), "not a record header");
  EXPECT_FALSE(Vector(static_cast<int64_t>(text.size()) + 5, 0, 1, v));
  EXPECT_FALSE(v.IsAllocated());
}

}  // namespace
