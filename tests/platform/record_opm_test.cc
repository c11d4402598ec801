// A simulator-format file written by RecordCodec must open in an independent
// Eclipse-format reader (OPM's, through its Python binding) with the same
// names, types and values.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "tests/platform/opm_python.h"
#include "tests/platform/record_test_util.h"
#include "vndata/platform/record_codec.h"

using namespace vndata;
using namespace vndata::record_test;
using vndata::opm_python::OpmAvailable;
using vndata::opm_python::RunScript;

namespace {

std::string Hex(const void* p, std::size_t n) {
  static const char* d = "0123456789abcdef";
  std::string s;
  const auto* b = static_cast<const uint8_t*>(p);
  // The script prints big-endian bytes; the host is little-endian here.
  for (std::size_t i = n; i-- > 0;) {
    s += d[b[i] >> 4];
    s += d[b[i] & 15];
  }
  return s;
}

TEST(RecordOpm, ASimulatorFileReadsBackThroughOpmsEclipseReader) {
  std::string why;
  if (!OpmAvailable(why)) GTEST_SKIP() << why;

  TempDir dir;
  std::string name = dir.File("RECORDS.INIT");
  RecordCodec c;
  RecordFile f;
  bool q = false;
  f.OpenForWrite(name, q);
  ASSERT_TRUE(q);
  std::ostringstream want;

  // SEQNUM, one value through WriteValue.
  c.WriteSimulatorHeader(f, "SEQNUM", 1, "INTE", q);
  c.WriteValue(f, Variant(int32_t{7}), q);
  ASSERT_TRUE(q);
  want << "SEQNUM|INTE|1|7\n";

  // INTEHEAD: 100 words, 1000 a block.
  Array<int32_t> inteHead(1, 100);
  inteHead(3) = 1;
  inteHead(9) = 20;
  inteHead(10) = 30;
  inteHead(11) = 5;
  inteHead(12) = 2843;
  inteHead(65) = 11;
  inteHead(66) = 6;
  inteHead(67) = 2024;
  inteHead(95) = 100;
  inteHead(100) = -123456789;
  c.WriteSimulatorHeader(f, "INTEHEAD", 100, "INTE", q);
  c.WriteIntegerArray(100, 1000, inteHead, f, q);
  ASSERT_TRUE(q);
  want << "INTEHEAD|INTE|100";
  for (int32_t v : inteHead) want << "|" << v;
  want << "\n";

  // LOGIHEAD: 100 words of 0 and 1, and one -1.
  Array<int32_t> logiHead(1, 100);
  logiHead(15) = 1;
  logiHead(17) = 1;
  logiHead(20) = -1;
  c.WriteSimulatorHeader(f, "LOGIHEAD", 100, "LOGI", q);
  c.WriteIntegerArray(100, 1000, logiHead, f, q);
  ASSERT_TRUE(q);
  want << "LOGIHEAD|LOGI|100";
  for (int32_t v : logiHead) want << "|" << (v != 0 ? "T" : "F");
  want << "\n";

  // DOUBHEAD: 50 values, -1e20 but the first.
  Array<double> doubHead(1, 50);
  doubHead.Fill(-1e20);
  doubHead(1) = 365.25;
  c.WriteSimulatorHeader(f, "DOUBHEAD", 50, "DOUB", q);
  c.WriteDoubleArray(50, 1000, doubHead, f, q);
  ASSERT_TRUE(q);
  want << "DOUBHEAD|DOUB|50";
  for (double v : doubHead) want << "|" << Hex(&v, 8);
  want << "\n";

  // LGR: one name through WriteCharValue.
  c.WriteSimulatorHeader(f, "LGR", 1, "CHAR", q);
  c.WriteCharValue(8, "LGR1", f, q);
  ASSERT_TRUE(q);
  want << "LGR|CHAR|1|LGR1\n";

  // ZWEL: 300 names, 105 a block; a long name is cut to 8.
  Array<std::string> names(1, 300);
  for (int i = 1; i <= 300; ++i) names(i) = "W" + std::to_string(i);
  names(7) = "PRODUCER_7";
  c.WriteSimulatorHeader(f, "ZWEL", 300, "CHAR", q);
  c.WriteCharArray(300, 8, 105, names, f, q);
  ASSERT_TRUE(q);
  want << "ZWEL|CHAR|300";
  for (const std::string& s : names) want << "|" << s.substr(0, 8);
  want << "\n";

  // STARTSOL: a bare marker.
  c.WriteSimulatorHeader(f, "STARTSOL", 0, "MESS", q);
  ASSERT_TRUE(q);
  want << "STARTSOL|MESS|0\n";

  // PRESSURE: 2500 reals, 1000 a block.
  Array<float> pressure(1, 2500);
  for (int i = 1; i <= 2500; ++i) pressure(i) = 250.0f + std::sin(static_cast<float>(i)) * 17.5f;
  pressure(2500) = -0.0f;
  c.WriteSimulatorHeader(f, "PRESSURE", 2500, "REAL", q);
  c.WriteRealArray(2500, 1000, pressure, f, q);
  ASSERT_TRUE(q);
  want << "PRESSURE|REAL|2500";
  for (float v : pressure) want << "|" << Hex(&v, 4);
  want << "\n";

  // FIPNUM: 1234 integers, 1000 a block.
  Array<int32_t> fip(1, 1234);
  for (int i = 1; i <= 1234; ++i) fip(i) = 1 + i % 4;
  c.WriteSimulatorHeader(f, "FIPNUM", 1234, "INTE", q);
  c.WriteIntegerArray(1234, 1000, fip, f, q);
  ASSERT_TRUE(q);
  want << "FIPNUM|INTE|1234";
  for (int32_t v : fip) want << "|" << v;
  want << "\n";

  f.Close(q);
  ASSERT_TRUE(q);

  int status = 0;
  std::string script = std::string(VNDATA_TEST_DATA_DIR) + "/record_files/opm_dump.py";
  std::string got = RunScript(script, name, status);
  ASSERT_EQ(status, 0) << got;
  EXPECT_EQ(got, want.str());
}

}  // namespace
