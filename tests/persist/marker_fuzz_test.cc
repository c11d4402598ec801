// Damaged marker arrays: seeded random mutations of valid arrays must never
// crash a reader or make it read outside the array (the sanitizer build
// watches every access), a refused array must leave the records as they
// were, and an accepted one must give records that go out and come back
// unchanged.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>

#include "tests/persist/marker_test_util.h"
#include "vndata/persist/marker_bytes.h"
#include "vndata/platform/message_log.h"

namespace vndata {
namespace {

using namespace marker_test;

constexpr uint32_t kSeed = 20261125;
constexpr int kMutations = 10000;

struct Sample {
  std::vector<uint8_t> bytes;
  int32_t nMarker;
};

class Mutator {
 public:
  explicit Mutator(uint32_t seed) : rng_(seed) {}

  int32_t Below(int32_t n) { return static_cast<int32_t>(rng_() % static_cast<uint32_t>(n)); }

  // A word value that tends to sit on a boundary.
  int32_t Interesting(int32_t size) {
    switch (Below(10)) {
      case 0: return 0;
      case 1: return -1;
      case 2: return 1;
      case 3: return INT32_MAX;
      case 4: return INT32_MIN;
      case 5: return size;
      case 6: return size - 1 - Below(3);
      case 7: return size + 1 + Below(3);
      case 8: return Below(64);
      default: return static_cast<int32_t>(rng_());
    }
  }

  void Mutate(Sample& s) {
    const int32_t nSteps = 1 + Below(3);
    for (int32_t step = 0; step < nSteps; ++step) {
      std::vector<uint8_t>& b = s.bytes;
      const int32_t size = static_cast<int32_t>(b.size());
      switch (Below(6)) {
        case 0:  // bit flips
          for (int32_t f = 1 + Below(8); f > 0 && size > 0; --f) b[static_cast<std::size_t>(Below(size))] ^= static_cast<uint8_t>(1u << Below(8));
          break;
        case 1:  // truncation
          b.resize(static_cast<std::size_t>(size > 0 ? Below(size + 1) : 0));
          break;
        case 2:  // a few bytes more
          for (int32_t n = 1 + Below(8); n > 0; --n) b.push_back(static_cast<uint8_t>(rng_()));
          break;
        case 3:  // a header word: the magic, nHead or H1 to H20
        case 4: {
          const std::size_t pos = 4 * static_cast<std::size_t>(Below(22));
          if (pos + 4 > b.size()) break;
          const auto u = static_cast<uint32_t>(Interesting(size));
          for (int32_t k = 0; k < 4; ++k) b[pos + static_cast<std::size_t>(k)] = static_cast<uint8_t>(u >> (8 * k));
          break;
        }
        default:  // the caller's count
          if (Below(4) == 0) {
            s.nMarker = Interesting(size);
          } else {
            const int64_t n = int64_t{s.nMarker} + Below(5) - 2;
            s.nMarker = static_cast<int32_t>(std::clamp<int64_t>(n, INT32_MIN, INT32_MAX));
          }
          break;
      }
    }
  }

 private:
  std::mt19937 rng_;
};

// The records must be sound after an accepted read.
void ExpectSound(const MarkerSet& s) {
  ASSERT_GE(s.NumMarkers, 0);
  ASSERT_GE(static_cast<int64_t>(s.Markers.size()), s.NumMarkers);
  ASSERT_EQ(static_cast<int64_t>(s.Wells.size()), s.nWellsAllocated);
  int64_t nSum = 0;
  for (int32_t w = 1; w <= s.NumWells; ++w) {
    ASSERT_EQ(s.Wells(w).iWell, w);
    ASSERT_EQ(s.Wells(w).iFirstMarker, nSum + 1);
    nSum += s.Wells(w).nWellMarkers;
  }
  ASSERT_EQ(nSum, s.NumMarkers);
}

TEST(MarkerFuzzTest, MutatedArraysAreReadSafelyAndDeterministically) {
  MessageLog::Shared().Clear();
  Sample one{{}, 1};
  {
    HandBytes b;
    b.Text("MK32", 4).Word(20).Words({6, 0, 0, 1, 40, 89, 113, 113, 113, 152, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    b.Words({0, 1, 2, 3, 1, 4}).Text("ONE", 40);
    one.bytes = b.bytes();
  }
  const Sample seeds[] = {
      {ToVector(HandMK32Case()), 7},
      {ToVector(HandMKEXCase()), 7},
      {ToVector(HandOlderCase()), 7},
      one,
  };
  Mutator mutator(kSeed);
  int nAccepted = 0, nRefused = 0;
  for (int t = 0; t < kMutations; ++t) {
    Sample s = seeds[t % 4];
    mutator.Mutate(s);
    const Array<uint8_t> b = HandBytes::ToByteArray(s.bytes);
    SCOPED_TRACE("mutation " + std::to_string(t));

    (void)MarkerType(s.nMarker, b);
    Array<int32_t> iHead;
    int32_t nHead = 0;
    bool qHead = false;
    getMarkerINTEHead(b, iHead, nHead, qHead);
    if (qHead) {
      ASSERT_GE(nHead, 1);
      ASSERT_LE(nHead, 20);
      ASSERT_LE(8 + 4 * static_cast<std::size_t>(nHead), b.size());
    }

    for (auto reader : {&SetMarkersUDTFromBMarkers, &SetMarkersUDTFromByte32, &SetMarkersUDTFromByte32Ex,
                        &SetMarkersUDTFromByte}) {
      MarkerSet set = SentinelSet();
      bool qOK = false;
      reader(set, s.nMarker, b, qOK);
      if (!qOK || s.nMarker == 0) {
        if (!qOK) ++nRefused;
        ExpectSameSet(set, SentinelSet());
        continue;
      }
      ++nAccepted;
      ExpectSound(set);
      if (!set.IsMarkers()) continue;
      // Out as "MK32" and in again: the same records, grid names aside
      // (a byte array carries none, so they come back "GRIDNAME").
      int32_t n = 0;
      Array<uint8_t> out;
      SetMarkersByteFromUDT32(set, n, out, qOK);
      ASSERT_TRUE(qOK);
      ASSERT_EQ(MarkerType(n, out), kMarkersMK32);
      MarkerSet back;
      SetMarkersUDTFromBMarkers(back, n, out, qOK);
      ASSERT_TRUE(qOK);
      ExpectSameSet(back, set);
      // The same input twice gives the same records.
      MarkerSet again = SentinelSet();
      reader(again, s.nMarker, b, qOK);
      ASSERT_TRUE(qOK);
      ExpectSameSet(again, set);
    }
    if (HasFatalFailure()) return;
    // Only a status text too large for 32 bits may fault, and it is logged.
    for (const std::string& line : MessageLog::Shared().Lines())
      ASSERT_NE(line.find("(No.6)"), std::string::npos) << line;
    MessageLog::Shared().Clear();
  }
  // Both outcomes occur, so neither the acceptance nor the refusal path is
  // left untried.
  EXPECT_GT(nAccepted, 1000);
  EXPECT_GT(nRefused, 1000);
}

// Raw records let from arbitrary bytes, with counts that need not agree with
// them: every writer and query must stay inside the records, and an array
// written out must describe exactly what it holds.
TEST(MarkerFuzzTest, RecordsLetFromArbitraryBytesAreWalkedSafely) {
  MessageLog::Shared().Clear();
  Mutator mutator(kSeed + 1);
  std::mt19937 rng(kSeed + 2);
  for (int t = 0; t < 2000; ++t) {
    SCOPED_TRACE("records " + std::to_string(t));
    const int32_t nWellRecords = mutator.Below(6), nMarkerRecords = mutator.Below(12);
    // Words that tend to be small record numbers and counts.
    auto word = [&] { return mutator.Below(3) == 0 ? mutator.Interesting(nMarkerRecords) : mutator.Below(8) - 1; };
    HandBytes w, m;
    for (int32_t r = 0; r < nWellRecords; ++r) {
      w.Word(word());
      w.Text(std::string(1, static_cast<char>('A' + mutator.Below(3))), 40).Text("G", 40);
      w.Word(word()).Word(word());
    }
    for (int32_t r = 0; r < nMarkerRecords; ++r) {
      m.Words({word(), word(), word(), word(), word(), word(), word()});
      m.Raw({1, 2, 3, 4, 5, 6, 7, 8});
    }
    MarkerSet s;
    LetWELLINFO(s, w.ToArray());
    LetMARKERINFO(s, m.ToArray());
    s.NumWells = mutator.Below(nWellRecords + 3);
    s.NumMarkers = mutator.Below(nMarkerRecords + 3);
    s.nWellsAllocated = mutator.Below(20);

    (void)GetWELLINFO(s);
    (void)GetMARKERINFO(s);
    (void)getMaxMarkerCount(s);
    Array<std::string> zNames;
    int32_t nNames = 0;
    getWellNamesfromMarkers(s, zNames, nNames);
    ASSERT_LE(nNames, nWellRecords);
    int32_t iFound = 0, iStatus = 0;
    std::string zName, zStyle, zStatus;
    EXPECT_TRUE(GetMarkerFromIJK(s, word(), word(), word(), iFound, zName, zStyle, iStatus, zStatus));
    int32_t n = 0;
    Array2<Variant> v;
    bool qOK = false;
    GetTypeMarkers(s, n, v, qOK);
    ASSERT_TRUE(qOK);
    ASSERT_LE(n, s.NumMarkers > 0 ? s.NumMarkers : 0);

    const SectorBox box{word(), word(), word(), word(), word(), word()};
    const bool qBox = rng() % 2 == 0;
    Array<uint8_t> out;
    n = -1;
    GetMarkersByte(s, qBox ? &box : nullptr, n, out, qOK);
    if (qOK && out.IsAllocated()) {
      ASSERT_GE(n, 0);
      ASSERT_EQ(out.UBound(), 88 + 64 * n);
      MarkerSet back;
      SetMarkersUDTFromBMarkers(back, n, out, qOK);
      ASSERT_TRUE(qOK);
      ASSERT_EQ(back.NumMarkers, n);
    }
    MoveAllMarkersToTopLayer(s);
    for (int32_t r = 1; r <= std::min<int32_t>(s.NumMarkers, nMarkerRecords); ++r) ASSERT_EQ(s.Markers(r).k, 1);
    if (HasFatalFailure()) return;
    // Only a shift beyond 32 bits may fault, and it is logged.
    for (const std::string& line : MessageLog::Shared().Lines())
      ASSERT_NE(line.find("(No.6)"), std::string::npos) << line;
    MessageLog::Shared().Clear();
  }
}

}  // namespace
}  // namespace vndata
