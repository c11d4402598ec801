// Damaged files: seeded random mutations of a valid record file must never
// crash the reader, never make it allocate beyond the file, and every read
// must end with a flag (and a reason when the flag is false).
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/platform/record_test_util.h"
#include "vndata/platform/record_codec.h"

using namespace vndata;
using namespace vndata::record_test;

namespace {

// Where the 4-byte words of interest sit in the valid file.
struct Landmarks {
  std::vector<std::size_t> markers;  // every length marker
  std::vector<std::size_t> counts;   // the count field of every header
  std::vector<std::size_t> types;    // the type field of every header
};

std::vector<uint8_t> MakeValidFile(const std::string& name) {
  RecordCodec c;
  RecordFile f;
  bool q = false;
  f.OpenForWrite(name, q);
  Array<int32_t> ints(1, 30);
  for (int i = 1; i <= 30; ++i) ints(i) = i * 1000 - 7;
  Array<float> reals(1, 25);
  for (int i = 1; i <= 25; ++i) reals(i) = static_cast<float>(i) / 4;
  Array<double> doubles(1, 12);
  for (int i = 1; i <= 12; ++i) doubles(i) = -1e20 + i;
  Array<uint8_t> bytes{1, 0, 2, 255, 7, 9, 0};
  Array<std::string> names{"OP1", "OP2", "INJECTOR", "W", "LAST"};

  c.WriteHeader(f, "DATASTORE>", 0, "CHAR", q);
  c.WriteHeader(f, "DSNUMCOLUMNS", 30, "INTE", q);
  c.WriteIntegerArray(30, 0, ints, f, q);
  c.WriteHeader(f, "COLROWDATA", 25, "REAL", q);
  c.WriteRealArray(25, 10, reals, f, q);
  c.WriteHeader(f, "NULLVAL", 12, "DOUB", q);
  c.WriteDoubleArray(12, 7, doubles, f, q);
  c.WriteHeader(f, "FODARRAY", 5, "LOGI", q);
  for (bool b : {true, false, true, true, false}) c.WriteValue(f, Variant(b), q);
  c.WriteHeader(f, "DSWELLLIST", 3, "CHAR", q);
  c.WriteValue(f, Variant("P1"), q);
  c.WriteValue(f, Variant(""), q);
  c.WriteValue(f, Variant("a longer text of some forty characters.."), q);
  c.WriteHeader(f, "GRID>", 7, "BYTE", q);
  c.WriteByteArray(7, bytes, f, q);
  c.WriteHeader(f, "EMPTY", 0, "INTE", q);
  c.WriteSimulatorHeader(f, "INTEHEAD", 20, "INTE", q);
  c.WriteIntegerArray(20, 1000, ints, f, q);
  c.WriteSimulatorHeader(f, "ZWEL", 5, "CHAR", q);
  c.WriteCharArray(5, 8, 4, names, f, q);
  c.WriteSimulatorHeader(f, "STARTSOL", 0, "MESS", q);
  c.WriteSimulatorHeader(f, "PRESSURE", 25, "REAL", q);
  c.WriteRealArray(25, 1000, reals, f, q);
  c.WriteHeader(f, "<DATASTORE", 0, "CHAR", q);
  f.Close();
  return ReadAllBytes(name);
}

// Walks the valid file's physical records (it is known to be sound, and no
// payload record of it is 16 or 24 bytes long).
Landmarks FindLandmarks(const std::vector<uint8_t>& b) {
  Landmarks m;
  std::size_t p = 0;
  while (p + 4 <= b.size()) {
    int32_t len = (b[p] << 24) | (b[p + 1] << 16) | (b[p + 2] << 8) | b[p + 3];
    m.markers.push_back(p);
    if (len == 24 || len == 16) {
      std::size_t width = static_cast<std::size_t>(len - 8);
      m.counts.push_back(p + 4 + width);
      m.types.push_back(p + 8 + width);
    }
    m.markers.push_back(p + 4 + static_cast<std::size_t>(len));
    p += 8 + static_cast<std::size_t>(len);
  }
  return m;
}

void PutWord(std::vector<uint8_t>& b, std::size_t at, int32_t v) {
  if (at + 4 > b.size()) return;
  uint32_t u = static_cast<uint32_t>(v);
  for (int k = 0; k < 4; ++k) b[at + k] = static_cast<uint8_t>(u >> (24 - 8 * k));
}

// v moved by step - 4 (step 0 to 8), wrapping around like the 32-bit word
// it stands for.
int32_t Near(int32_t v, std::size_t step) {
  return static_cast<int32_t>(static_cast<uint32_t>(v) + static_cast<uint32_t>(step) - 4u);
}

std::vector<uint8_t> Mutate(std::vector<uint8_t> b, const Landmarks& m, std::mt19937& rng) {
  auto pick = [&](std::size_t n) {
    return std::uniform_int_distribution<std::size_t>(0, n - 1)(rng);
  };
  const int32_t interesting[] = {0,          1,    -1,         4,
                                 8,          16,   24,         25,
                                 1000,       4000, 0x7FFFFFFF, static_cast<int32_t>(0x80000000u),
                                 0x01000000, -24};
  int kinds = 1 + static_cast<int>(pick(3));  // several mutations at once now and then
  for (int k = 0; k < kinds && !b.empty(); ++k) {
    switch (pick(7)) {
      case 0: {  // flip bytes
        int n = 1 + static_cast<int>(pick(4));
        for (int i = 0; i < n; ++i) b[pick(b.size())] ^= static_cast<uint8_t>(1 + pick(255));
        break;
      }
      case 1:  // cut the file short
        b.resize(pick(b.size()));
        break;
      case 2: {  // change a count
        std::size_t at = m.counts[pick(m.counts.size())];
        int32_t old = at + 4 <= b.size()
                          ? (b[at] << 24) | (b[at + 1] << 16) | (b[at + 2] << 8) | b[at + 3]
                          : 0;
        int32_t v = pick(2) ? interesting[pick(std::size(interesting))] : Near(old, pick(9));
        PutWord(b, at, v);
        break;
      }
      case 3: {  // change a length marker
        std::size_t at = m.markers[pick(m.markers.size())];
        int32_t v = interesting[pick(std::size(interesting))];
        if (pick(2) && at + 4 <= b.size())
          v = Near((b[at] << 24) | (b[at + 1] << 16) | (b[at + 2] << 8) | b[at + 3], pick(9));
        PutWord(b, at, v);
        break;
      }
      case 4: {  // change a type
        static const char* kTypes[] = {"INTE", "REAL", "DOUB", "LOGI",
                                       "CHAR", "BYTE", "MESS", "X231"};
        std::size_t at = m.types[pick(m.types.size())];
        if (at + 4 <= b.size()) std::copy_n(kTypes[pick(8)], 4, b.begin() + static_cast<long>(at));
        break;
      }
      case 5: {  // delete a span
        std::size_t from = pick(b.size());
        std::size_t n = std::min(b.size() - from, 1 + pick(12));
        b.erase(b.begin() + static_cast<long>(from), b.begin() + static_cast<long>(from + n));
        break;
      }
      default: {  // insert random bytes
        std::size_t at = pick(b.size() + 1);
        std::size_t n = 1 + pick(12);
        std::vector<uint8_t> ins(n);
        for (auto& x : ins) x = static_cast<uint8_t>(pick(256));
        b.insert(b.begin() + static_cast<long>(at), ins.begin(), ins.end());
        break;
      }
    }
  }
  return b;
}

// Reads the whole file the way the store readers do, varying the reading
// operation by the generator. Returns the number of records read.
int ReadAll(const std::string& name, std::mt19937& rng, int64_t fileSize) {
  RecordCodec c;
  RecordFile f;
  bool q = false;
  if (rng() % 2)
    f.OpenForRead(name, q);
  else
    f.OpenForRandomRead(name, q);
  EXPECT_TRUE(q);
  int records = 0;
  // Each header takes at least 24 bytes, so the loop ends by itself; the
  // guard catches a reader that stops advancing.
  for (int guard = 0; guard < 1000; ++guard) {
    std::string k, t;
    int32_t n = 0;
    q = false;
    c.ReadHeader(f, k, n, t, q);
    if (!q) {
      EXPECT_FALSE(f.LastError().empty());
      return records;
    }
    unsigned how = rng() % 6;  // 0, 1: value by value; 2: skipped; else arrays
    int64_t allocated = 0;     // bytes of memory the read took
    if (how == 2 && t != "MESS") {
      c.SkipValues(n, f, q);
    } else if (t == "CHAR" || (how < 2 && t != "MESS")) {
      for (int32_t i = 0; i < n && q; ++i) {
        Variant v;
        c.ReadValue(f, v, q);
        if (q && v.IsString())
          allocated = std::max<int64_t>(allocated, static_cast<int64_t>(v.ToText().size()));
      }
    } else if (t == "INTE") {
      Array<int32_t> a;
      if (rng() % 2)
        c.ReadIntegerArray(n, Q, f, a, q);
      else
        c.ReadIntegerBlock(n, rng() % 2 ? 0 : 1000, f, a, q);
      allocated = static_cast<int64_t>(a.size()) * 4;
    } else if (t == "REAL") {
      Array<float> a;
      c.ReadRealArray(n, Q, f, a, q);
      allocated = static_cast<int64_t>(a.size()) * 4;
    } else if (t == "DOUB") {
      Array<double> a;
      c.ReadDoubleArray(n, Q, f, a, q);
      allocated = static_cast<int64_t>(a.size()) * 8;
    } else if (t == "LOGI" || (t == "BYTE" && rng() % 2)) {
      Array<int16_t> a;
      c.ReadLogicalArray(n, Q, f, a, q);
      allocated = static_cast<int64_t>(a.size()) * (t == "BYTE" ? 1 : 4);
    } else if (t == "BYTE") {
      Array<uint8_t> a;
      c.ReadByteArray(n, f, a, q);
      allocated = static_cast<int64_t>(a.size());
    }
    EXPECT_LE(allocated, fileSize) << k;
    if (!q) {
      EXPECT_FALSE(f.LastError().empty()) << k;
      return records;
    }
    ++records;
    int32_t p1 = 0, p2 = 0;
    bool qEOF = false;
    f.AtEndOfFile(p1, p2, qEOF);
    if (qEOF) return records;
  }
  ADD_FAILURE() << "the reader stopped advancing";
  return records;
}

TEST(RecordFuzz, TenThousandMutatedFilesEndEveryReadWithAFlag) {
  TempDir dir(true);
  std::string valid = dir.File("valid.bin");
  std::vector<uint8_t> good = MakeValidFile(valid);
  Landmarks marks = FindLandmarks(good);
  ASSERT_EQ(marks.counts.size(), 13u);

  std::mt19937 rng(20240611u);
  // The untouched file reads whole.
  EXPECT_EQ(ReadAll(valid, rng, static_cast<int64_t>(good.size())), 13);

  std::string name = dir.File("mutant.bin");
  int wholeReads = 0;
  for (int i = 0; i < 10000; ++i) {
    std::vector<uint8_t> bad = Mutate(good, marks, rng);
    WriteAllBytes(name, bad);
    if (ReadAll(name, rng, static_cast<int64_t>(bad.size())) == 13) ++wholeReads;
    if (::testing::Test::HasFailure()) {
      ADD_FAILURE() << "mutation " << i;
      break;
    }
  }
  // Most mutations are caught; some (a flipped value byte) are harmless.
  EXPECT_LT(wholeReads, 5000);
}

}  // namespace
