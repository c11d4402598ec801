// Marker byte arrays in: the header words, telling the forms apart, and
// building the well and marker records from each form.
#include <gtest/gtest.h>

#include <climits>

#include "tests/persist/marker_test_util.h"
#include "vndata/persist/marker_bytes.h"
#include "vndata/persist/marker_bytes_detail.h"
#include "vndata/platform/message_log.h"

namespace vndata {
namespace {

using namespace marker_test;

class MarkerBytesTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::Shared().Clear(); }
  void TearDown() override { MessageLog::Shared().Clear(); }
};

// Overwrites the 32-bit little-endian word at one-based byte position pos.
void PatchWord(Array<uint8_t>& b, int32_t pos, int32_t v) {
  const auto u = static_cast<uint32_t>(v);
  for (int32_t s = 0; s < 4; ++s) b(pos + s) = static_cast<uint8_t>((u >> (8 * s)) & 0xFF);
}

Array<uint8_t> Cut(const Array<uint8_t>& b, int32_t nKeep) {
  std::vector<uint8_t> v = ToVector(b);
  v.resize(static_cast<std::size_t>(nKeep));
  return HandBytes::ToByteArray(v);
}

// Checks the records of the case after a read (grid names "GRIDNAME").
void ExpectCaseRecords(const MarkerSet& s) {
  ASSERT_EQ(s.NumMarkers, 7);
  ASSERT_EQ(s.NumWells, 3);
  EXPECT_EQ(s.nWellsAllocated, 3);
  ASSERT_EQ(s.Wells.UBound(), 3);
  ASSERT_EQ(s.Markers.UBound(), 7);
  const char* names[] = {"P1", "INJ", "P1"};
  const int32_t counts[] = {3, 2, 2}, firsts[] = {1, 4, 6};
  for (int32_t w = 1; w <= 3; ++w) {
    SCOPED_TRACE(w);
    EXPECT_EQ(s.Wells(w).iWell, w);
    EXPECT_EQ(Name40(s.Wells(w).zWellName), Padded40(names[w - 1]));
    EXPECT_EQ(Name40(s.Wells(w).zGridName), Padded40("GRIDNAME"));
    EXPECT_EQ(s.Wells(w).nWellMarkers, counts[w - 1]);
    EXPECT_EQ(s.Wells(w).iFirstMarker, firsts[w - 1]);
  }
  const int32_t wells[] = {1, 1, 1, 2, 2, 3, 3};
  for (int32_t m = 1; m <= 7; ++m) {
    SCOPED_TRACE(m);
    const MARKERINFO& r = s.Markers(m);
    const CaseMarker& c = kCase[m - 1];
    EXPECT_EQ(r.iMarker, m);
    EXPECT_EQ(r.iWell, wells[m - 1]);
    EXPECT_EQ(r.i, c.i);
    EXPECT_EQ(r.j, c.j);
    EXPECT_EQ(r.k, c.k);
    EXPECT_EQ(r.iStatus, c.iStatus);
    EXPECT_EQ(r.iStyle, c.iStyle);
    for (uint8_t spare : r.bSpare) EXPECT_EQ(spare, 0);
  }
  // Three connections at most: P1 has a head and two.
  EXPECT_EQ(s.nMaxConnections, 2);
}

// ---- Header words -------------------------------------------------------------

TEST_F(MarkerBytesTest, PlainHeaderWordsOfSevenMarkers) {
  Array<int32_t> iHead;
  int32_t nHead = 0;
  bool qOK = false;
  setMarkerINTEHead(7, 0, 0, iHead, nHead, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(nHead, 20);
  const int32_t expected[20] = {6, 0, 0, 1, 40, 89, 257, 257, 257, 536, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  ASSERT_EQ(iHead.LBound(), 1);
  ASSERT_EQ(iHead.UBound(), 20);
  for (int32_t w = 1; w <= 20; ++w) EXPECT_EQ(iHead(w), expected[w - 1]) << "H" << w;
}

TEST_F(MarkerBytesTest, ExtendedHeaderWordsMatchTheHandLaidMKEXArray) {
  Array<int32_t> iHead;
  int32_t nHead = 0;
  bool qOK = false;
  setMarkerINTEHead(7, 11, 22, iHead, nHead, qOK, true, true);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(nHead, 20);
  // The header as it stands in bytes 9 to 88 of the hand-laid array.
  const Array<uint8_t> b = HandMKEXCase();
  HandBytes words;
  for (int32_t w = 1; w <= 20; ++w) words.Word(iHead(w));
  const std::vector<uint8_t> all = ToVector(b);
  EXPECT_EQ(words.bytes(), std::vector<uint8_t>(all.begin() + 8, all.begin() + 88));
}

TEST_F(MarkerBytesTest, ExtendedHeaderWithoutFloats) {
  Array<int32_t> iHead;
  int32_t nHead = 0;
  bool qOK = false;
  setMarkerINTEHead(7, 0, 0, iHead, nHead, qOK, true, false);
  ASSERT_TRUE(qOK);
  // 16 words and 10 doubles: H7 = 89 + 448 = 537 = H8, H9 = 537 + 560 = 1097,
  // H10 = 1097 + 280 - 1 = 1376.
  const int32_t expected[11] = {16, 0, 10, 1, 40, 89, 537, 537, 1097, 1376, 7};
  for (int32_t w = 1; w <= 11; ++w) EXPECT_EQ(iHead(w), expected[w - 1]) << "H" << w;
}

TEST_F(MarkerBytesTest, HeaderOfNoMarkersIsTheHeaderAlone) {
  Array<int32_t> iHead;
  int32_t nHead = 0;
  bool qOK = false;
  setMarkerINTEHead(0, 0, 0, iHead, nHead, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(iHead(6), 89);
  EXPECT_EQ(iHead(9), 89);
  EXPECT_EQ(iHead(10), 88);
  EXPECT_EQ(iHead(11), 0);
}

TEST_F(MarkerBytesTest, HeaderBeyondThirtyTwoBitsIsAnOverflowLogged) {
  Array<int32_t> iHead{9};
  int32_t nHead = 3;
  bool qOK = true;
  setMarkerINTEHead(INT32_MAX, 0, 0, iHead, nHead, qOK, true, true);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(nHead, 3);
  EXPECT_EQ(iHead.UBound(), 1);
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0], "Error:Overflow (No.6) In [mxDataSet  (setMarkerINTEHead)] ");
}

TEST_F(MarkerBytesTest, GetMarkerINTEHeadReadsTheWordsOfTheArray) {
  Array<int32_t> iHead;
  int32_t nHead = 0;
  bool qOK = false;
  getMarkerINTEHead(HandMKEXCase(), iHead, nHead, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(nHead, 20);
  MarkerHead h;
  getMarkerINTEHeadData(iHead, nHead, h, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(h.nIntWords, 16);
  EXPECT_EQ(h.nFloatWords, 35);
  EXPECT_EQ(h.nDoubleWords, 10);
  EXPECT_EQ(h.nStrings, 1);
  EXPECT_EQ(h.nStringBytes, 40);
  EXPECT_EQ(h.iIntStart, 89);
  EXPECT_EQ(h.iFloatStart, 537);
  EXPECT_EQ(h.iDoubleStart, 1517);
  EXPECT_EQ(h.iStringStart, 2077);
  EXPECT_EQ(h.iTotalLength, 2356);
  EXPECT_EQ(h.nMarkers, 7);
  EXPECT_EQ(h.iCaller1, 11);
  EXPECT_EQ(h.iCaller2, 22);
}

TEST_F(MarkerBytesTest, FewerHeaderWordsReadTheRestAsZero) {
  HandBytes b;
  b.Text("MK32", 4).Word(3).Words({6, 7, 8});
  Array<int32_t> iHead;
  int32_t nHead = 0;
  bool qOK = false;
  getMarkerINTEHead(b.ToArray(), iHead, nHead, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(nHead, 3);
  MarkerHead h;
  getMarkerINTEHeadData(iHead, nHead, h, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(h.nIntWords, 6);
  EXPECT_EQ(h.nDoubleWords, 8);
  EXPECT_EQ(h.iIntStart, 0);
  EXPECT_EQ(h.nMarkers, 0);
}

TEST_F(MarkerBytesTest, GetMarkerINTEHeadRefusesShortArraysAndBadWordCounts) {
  Array<int32_t> iHead;
  int32_t nHead = -5;
  bool qOK = true;
  // Twelve bytes or fewer.
  HandBytes twelve;
  twelve.Text("MK32", 4).Word(1).Word(6);
  getMarkerINTEHead(twelve.ToArray(), iHead, nHead, qOK);
  EXPECT_FALSE(qOK);
  getMarkerINTEHead(Array<uint8_t>(), iHead, nHead, qOK);
  EXPECT_FALSE(qOK);
  // Word counts of 0 and 21.
  for (int32_t n : {0, 21, -1}) {
    Array<uint8_t> b = HandMK32Case();
    PatchWord(b, 5, n);
    getMarkerINTEHead(b, iHead, nHead, qOK);
    EXPECT_FALSE(qOK) << n;
  }
  // Twenty words claimed, eight there.
  HandBytes cut;
  cut.Text("MK32", 4).Word(20).Words({6, 0, 0, 1, 40, 89, 257, 257});
  getMarkerINTEHead(cut.ToArray(), iHead, nHead, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(nHead, -5);
  EXPECT_FALSE(iHead.IsAllocated());
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(MarkerBytesTest, GetMarkerINTEHeadDataRefusesAWordCountOutsideOneToTwenty) {
  Array<int32_t> iHead(1, 20);
  MarkerHead h;
  h.nIntWords = 99;
  bool qOK = true;
  getMarkerINTEHeadData(iHead, 0, h, qOK);
  EXPECT_FALSE(qOK);
  getMarkerINTEHeadData(iHead, 21, h, qOK);
  EXPECT_FALSE(qOK);
  getMarkerINTEHeadData(Array<int32_t>(1, 5), 20, h, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(h.nIntWords, 99);
}

// ---- MarkerType -----------------------------------------------------------------

TEST_F(MarkerBytesTest, MarkerTypeTellsTheFormsApart) {
  EXPECT_EQ(MarkerType(7, HandMK32Case()), kMarkersMK32);
  EXPECT_EQ(MarkerType(7, HandMKEXCase()), kMarkersMKEX);
  EXPECT_EQ(MarkerType(7, HandOlderCase()), kMarkersOlder);
}

TEST_F(MarkerBytesTest, MarkerTypeAnswersTheOlderFormForEachMismatch) {
  const Array<uint8_t> good = HandMK32Case();
  EXPECT_EQ(MarkerType(0, good), kMarkersOlder);
  EXPECT_EQ(MarkerType(-1, good), kMarkersOlder);
  // H11 must be the caller's count.
  EXPECT_EQ(MarkerType(6, good), kMarkersOlder);
  EXPECT_EQ(MarkerType(8, good), kMarkersOlder);
  Array<uint8_t> b = good;
  b(1) = 'm';
  EXPECT_EQ(MarkerType(7, b), kMarkersOlder);
  b = good;
  PatchWord(b, 5, 1);
  EXPECT_EQ(MarkerType(7, b), kMarkersOlder);
  b = good;
  PatchWord(b, 45, 535);
  EXPECT_EQ(MarkerType(7, b), kMarkersOlder);
  EXPECT_EQ(MarkerType(7, Array<uint8_t>()), kMarkersOlder);
  EXPECT_EQ(MarkerType(7, Cut(good, 11)), kMarkersOlder);
  // Too short to hold H10 and H11: they count as -1.
  EXPECT_EQ(MarkerType(7, Cut(good, 47)), kMarkersOlder);
  b = Cut(good, 51);
  PatchWord(b, 45, 51);
  EXPECT_EQ(MarkerType(7, b), kMarkersOlder);
}

TEST_F(MarkerBytesTest, MarkerTypeComparesH10WithTheUpperBound) {
  // A 52-byte "MK32" whose H10 is 52 and H11 1 passes MarkerType (the
  // reader then refuses it).
  Array<uint8_t> b = Cut(HandMK32Case(), 52);
  PatchWord(b, 45, 52);
  PatchWord(b, 49, 1);
  EXPECT_EQ(MarkerType(1, b), kMarkersMK32);
  MarkerSet s = SentinelSet();
  bool qOK = true;
  SetMarkersUDTFromBMarkers(s, 1, b, qOK);
  EXPECT_FALSE(qOK);
  ExpectSameSet(s, SentinelSet());
}

// ---- "MK32" and "MKEX" in ----------------------------------------------------------

TEST_F(MarkerBytesTest, MK32BuildsTheWellsAndMarkersOfTheCase) {
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromBMarkers(s, 7, HandMK32Case(), qOK);
  ASSERT_TRUE(qOK);
  ExpectCaseRecords(s);
  EXPECT_TRUE(s.IsMarkers());
}

TEST_F(MarkerBytesTest, ConsecutiveMarkersOfOneNameShareAWellAndTheNameLaterStartsAnother) {
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromByte32(s, 7, HandMK32Case(), qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(s.NumWells, 3);
  EXPECT_EQ(s.Markers(2).iWell, s.Markers(1).iWell);
  EXPECT_EQ(s.Markers(3).iWell, 1);
  EXPECT_EQ(s.Markers(6).iWell, 3);
  EXPECT_EQ(Name40(s.Wells(3).zWellName), Name40(s.Wells(1).zWellName));
  EXPECT_EQ(s.Wells(3).iFirstMarker, 6);
}

TEST_F(MarkerBytesTest, MKEXSkipsTheExtendedWordsFloatsAndDoubles) {
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromBMarkers(s, 7, HandMKEXCase(), qOK);
  ASSERT_TRUE(qOK);
  ExpectCaseRecords(s);
}

TEST_F(MarkerBytesTest, MKEXCountingNoMarkersEmptiesTheSet) {
  Array<uint8_t> b = HandMKEXCase();
  PatchWord(b, 49, 0);  // H11
  MarkerSet s = SentinelSet();
  bool qOK = false;
  SetMarkersUDTFromByte32Ex(s, 7, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(s.NumMarkers, 0);
  EXPECT_EQ(s.NumWells, 0);
  EXPECT_EQ(s.Wells.UBound(), 1);
  EXPECT_EQ(s.Markers.UBound(), 1);
  EXPECT_EQ(s.Markers(1).i, 0);
  EXPECT_FALSE(s.IsMarkers());
}

TEST_F(MarkerBytesTest, MKEXWithAHeaderCountBeyondTheMarkersStillCutsTheWells) {
  Array<uint8_t> b = HandMKEXCase();
  PatchWord(b, 49, INT32_MAX);
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromByte32Ex(s, 7, b, qOK);
  ASSERT_TRUE(qOK);
  ExpectCaseRecords(s);
}

TEST_F(MarkerBytesTest, NoMarkersSucceedsAndChangesNothing) {
  for (auto reader : {&SetMarkersUDTFromBMarkers, &SetMarkersUDTFromByte32, &SetMarkersUDTFromByte32Ex,
                      &SetMarkersUDTFromByte}) {
    MarkerSet s = SentinelSet();
    bool qOK = false;
    reader(s, 0, HandMK32Case(), qOK);
    EXPECT_TRUE(qOK);
    ExpectSameSet(s, SentinelSet());
    reader(s, 0, Array<uint8_t>(), qOK);
    EXPECT_TRUE(qOK);
    ExpectSameSet(s, SentinelSet());
  }
}

TEST_F(MarkerBytesTest, ANegativeCountIsRefused) {
  for (auto reader : {&SetMarkersUDTFromBMarkers, &SetMarkersUDTFromByte32, &SetMarkersUDTFromByte32Ex,
                      &SetMarkersUDTFromByte}) {
    MarkerSet s = SentinelSet();
    bool qOK = true;
    reader(s, -7, HandMK32Case(), qOK);
    EXPECT_FALSE(qOK);
    ExpectSameSet(s, SentinelSet());
  }
}

TEST_F(MarkerBytesTest, NamesCompareTrimmedAndTheWellKeepsTheBytesOfItsFirstMarker) {
  HandBytes b;
  b.Text("MK32", 4).Word(20);
  // Four markers: H7 = H8 = H9 = 89 + 4 * 24 = 185, H10 = 185 + 160 - 1 = 344.
  b.Words({6, 0, 0, 1, 40, 89, 185, 185, 185, 344, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  for (int32_t m = 1; m <= 4; ++m) b.Words({0, m, m, m, 0, 4});
  b.Text("P1", 40).Text("   P1", 40).Text("", 40).Text("", 40);
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromBMarkers(s, 4, b.ToArray(), qOK);
  ASSERT_TRUE(qOK);
  // "P1" and "   P1" trim alike; an all-blank name is a well of its own.
  ASSERT_EQ(s.NumWells, 2);
  EXPECT_EQ(s.Wells(1).nWellMarkers, 2);
  EXPECT_EQ(Name40(s.Wells(1).zWellName), Padded40("P1"));
  EXPECT_EQ(s.Wells(2).nWellMarkers, 2);
  EXPECT_EQ(Name40(s.Wells(2).zWellName), std::string(40, ' '));
  EXPECT_EQ(s.nMaxConnections, 1);
}

TEST_F(MarkerBytesTest, AFirstMarkerWithABlankNameStartsAWell) {
  HandBytes b;
  b.Text("MK32", 4).Word(20);
  b.Words({6, 0, 0, 1, 40, 89, 137, 137, 137, 216, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  b.Words({0, 1, 1, 1, 1, 1}).Words({0, 2, 2, 2, 0, 1});
  b.Text("", 40).Text("A", 40);
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromBMarkers(s, 2, b.ToArray(), qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(s.NumWells, 2);
  EXPECT_EQ(s.Markers(1).iWell, 1);
  EXPECT_EQ(s.Markers(2).iWell, 2);
  EXPECT_EQ(s.nMaxConnections, 0);
}

// ---- The older form ----------------------------------------------------------------

TEST_F(MarkerBytesTest, TheOlderFormBuildsTheSameRecords) {
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromBMarkers(s, 7, HandOlderCase(), qOK);
  ASSERT_TRUE(qOK);
  ExpectCaseRecords(s);
}

TEST_F(MarkerBytesTest, OlderFormStyleIsWellWhenTheTextBeginsWithWell) {
  HandBytes b;
  for (int32_t m = 1; m <= 3; ++m) b.Words({0, 0, m, m, m, 0, 0});
  for (int32_t n = 0; n < 24; ++n) b.Raw({0});
  b.Text(" 104 ", 40).Text("A", 40).Text("WELLHEAD", 40).Text("", 40);
  b.Text("-2", 40).Text("A", 40).Text(" WELL", 40).Text("", 40);
  b.Text("x", 40).Text("A", 40).Text("well", 40).Text("", 40);
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromByte(s, 3, b.ToArray(), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(s.Markers(1).iStyle, 1);
  EXPECT_EQ(s.Markers(2).iStyle, 0);
  EXPECT_EQ(s.Markers(3).iStyle, 0);
  // The status is the value the text begins with; none gives 0.
  EXPECT_EQ(s.Markers(1).iStatus, 104);
  EXPECT_EQ(s.Markers(2).iStatus, -2);
  EXPECT_EQ(s.Markers(3).iStatus, 0);
}

TEST_F(MarkerBytesTest, AnOlderFormThatDoesNotHoldItsMarkersIsRefused) {
  const Array<uint8_t> b = HandOlderCase();
  MarkerSet s = SentinelSet();
  bool qOK = true;
  SetMarkersUDTFromByte(s, 8, b, qOK);
  EXPECT_FALSE(qOK);
  SetMarkersUDTFromByte(s, 7, Cut(b, 7 * 196 - 1), qOK);
  EXPECT_FALSE(qOK);
  ExpectSameSet(s, SentinelSet());
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(MarkerBytesTest, MK32WithH10OneByteShortIsReadAsTheOlderForm) {
  // One marker in the older form (196 bytes) that begins "MK32" with 20 in
  // its second word, and H10 at byte 45 (inside the status text) one short
  // of the upper bound, H11 at byte 49 the marker count.
  HandBytes b;
  b.Text("MK32", 4).Word(20).Words({5, 6, 7, 0, 0});  // words 3 to 5: I, J, K
  b.Words({0, 0});                                     // 8 bytes not read
  b.Text("4", 8).Word(195).Word(1).Text("", 24);       // status text, bytes 37-76
  b.Text("OLD-1", 40).Text("WELL", 40).Text("NOT READ", 40);
  ASSERT_EQ(b.size(), 196u);
  const Array<uint8_t> older = b.ToArray();
  EXPECT_EQ(MarkerType(1, older), kMarkersOlder);
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromBMarkers(s, 1, older, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(s.NumMarkers, 1);
  ASSERT_EQ(s.NumWells, 1);
  EXPECT_EQ(s.Markers(1).i, 5);
  EXPECT_EQ(s.Markers(1).j, 6);
  EXPECT_EQ(s.Markers(1).k, 7);
  EXPECT_EQ(s.Markers(1).iStatus, 4);
  EXPECT_EQ(s.Markers(1).iStyle, 1);
  EXPECT_EQ(Name40(s.Wells(1).zWellName), Padded40("OLD-1"));

  // With H10 equal to the upper bound the same bytes are taken for "MK32",
  // whose header (five integer words a marker, integers from byte 0) they
  // do not make: refused.
  Array<uint8_t> mk32 = older;
  PatchWord(mk32, 45, 196);
  EXPECT_EQ(MarkerType(1, mk32), kMarkersMK32);
  MarkerSet t = SentinelSet();
  SetMarkersUDTFromBMarkers(t, 1, mk32, qOK);
  EXPECT_FALSE(qOK);
  ExpectSameSet(t, SentinelSet());
}

TEST_F(MarkerBytesTest, AGenuineMK32WithOneByteMoreFallsToTheOlderFormAndIsRefused) {
  std::vector<uint8_t> v = ToVector(HandMK32Case());
  v.push_back(' ');
  const Array<uint8_t> b = HandBytes::ToByteArray(v);
  EXPECT_EQ(MarkerType(7, b), kMarkersOlder);
  MarkerSet s = SentinelSet();
  bool qOK = true;
  SetMarkersUDTFromBMarkers(s, 7, b, qOK);
  // 537 bytes cannot hold seven older markers (7 * 196).
  EXPECT_FALSE(qOK);
  ExpectSameSet(s, SentinelSet());
}

// ---- Damaged arrays -------------------------------------------------------------------

TEST_F(MarkerBytesTest, AnArrayCutInsideItsLastNameIsRefused) {
  const Array<uint8_t> b = Cut(HandMK32Case(), 535);
  MarkerSet s = SentinelSet();
  bool qOK = true;
  SetMarkersUDTFromByte32(s, 7, b, qOK);
  EXPECT_FALSE(qOK);
  SetMarkersUDTFromBMarkers(s, 7, b, qOK);
  EXPECT_FALSE(qOK);
  ExpectSameSet(s, SentinelSet());
}

TEST_F(MarkerBytesTest, AnArrayClaimingMoreMarkersThanItHoldsIsRefused) {
  Array<uint8_t> b = HandMK32Case();
  MarkerSet s = SentinelSet();
  bool qOK = true;
  SetMarkersUDTFromByte32(s, 8, b, qOK);
  EXPECT_FALSE(qOK);
  // The header agreeing with the caller does not make the markers appear.
  PatchWord(b, 49, 8);
  ASSERT_EQ(MarkerType(8, b), kMarkersMK32);
  SetMarkersUDTFromBMarkers(s, 8, b, qOK);
  EXPECT_FALSE(qOK);
  ExpectSameSet(s, SentinelSet());
}

TEST_F(MarkerBytesTest, SectionsOutsideTheArrayAreRefused) {
  struct Patch {
    int32_t pos, value;
  };
  // H1 below six words, H6 at 0 and past the end, H9 past the end and
  // before the start, names overlapping the end through H4 and H5.
  for (Patch p : {Patch{9, 5}, Patch{29, 0}, Patch{29, 500}, Patch{41, 498}, Patch{41, -3},
                  Patch{21, 2}, Patch{25, 1000}, Patch{9, INT32_MAX}, Patch{9, INT32_MIN}}) {
    Array<uint8_t> b = HandMK32Case();
    PatchWord(b, p.pos, p.value);
    MarkerSet s = SentinelSet();
    bool qOK = true;
    SetMarkersUDTFromBMarkers(s, 7, b, qOK);
    EXPECT_FALSE(qOK) << p.pos << " " << p.value;
    ExpectSameSet(s, SentinelSet());
  }
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(MarkerBytesTest, ANameStrideOfZeroReadsOneNameForAll) {
  Array<uint8_t> b = HandMK32Case();
  PatchWord(b, 25, 0);  // H5: names of no bytes, each still read as 40
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromBMarkers(s, 7, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(s.NumWells, 1);
  EXPECT_EQ(s.Wells(1).nWellMarkers, 7);
}

// ---- The value of a text -------------------------------------------------------------

TEST(MarkerTextValueTest, ReadsTheNumberATextBeginsWith) {
  using marker_detail::TextValue;
  EXPECT_EQ(TextValue("4"), 4.0);
  EXPECT_EQ(TextValue("  104  "), 104.0);
  EXPECT_EQ(TextValue(" 1 2 3"), 123.0);
  EXPECT_EQ(TextValue("-3.5e1x"), -35.0);
  EXPECT_EQ(TextValue("+2D2"), 200.0);
  EXPECT_EQ(TextValue(".5"), 0.5);
  EXPECT_EQ(TextValue("7."), 7.0);
  EXPECT_EQ(TextValue("12abc"), 12.0);
  EXPECT_EQ(TextValue("1e"), 1.0);
  EXPECT_EQ(TextValue("abc"), 0.0);
  EXPECT_EQ(TextValue(""), 0.0);
  EXPECT_EQ(TextValue("-"), 0.0);
  EXPECT_EQ(TextValue(std::string_view("5\0" "7", 3)), 5.0);
  EXPECT_EQ(TextValue("1e-999"), 0.0);
  EXPECT_EQ(TextValue("0.000e999"), 0.0);
  EXPECT_THROW(TextValue("1e999"), RuntimeFault);
  EXPECT_THROW(TextValue(std::string(400, '9')), RuntimeFault);
}

}  // namespace
}  // namespace vndata
