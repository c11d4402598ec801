// Marker records out and about: the "MK32" array written, the sector box,
// the vMarkers table both ways, the queries and the raw record arrays.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/persist/marker_test_util.h"
#include "vndata/persist/marker_bytes.h"
#include "vndata/platform/message_log.h"

namespace vndata {
namespace {

using namespace marker_test;

class MarkerRecordsTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::Shared().Clear(); }
  void TearDown() override { MessageLog::Shared().Clear(); }

  // The case, built from its vMarkers table.
  static MarkerSet CaseSet() {
    MarkerSet s;
    bool qOK = false;
    SetMarkersUDTFromVMarkers(s, 7, CaseTable(), qOK);
    EXPECT_TRUE(qOK);
    return s;
  }
};

struct Row {
  const char* zName;
  int32_t i, j, k;
  const char* zStyle;
  const char* zStatus;
};

Array2<Variant> Table(std::initializer_list<Row> rows) {
  Array2<Variant> v(1, 55, 1, static_cast<int32_t>(rows.size()));
  int32_t m = 0;
  for (const Row& r : rows) {
    ++m;
    v(3, m) = r.i;
    v(4, m) = r.j;
    v(5, m) = r.k;
    v(10, m) = std::string(r.zStatus);
    v(11, m) = std::string(r.zName);
    v(12, m) = std::string(r.zStyle);
    v(13, m) = std::string("GRIDNAME");
  }
  return v;
}

int32_t ReadWord(const uint8_t* p) {
  int32_t v = 0;
  std::memcpy(&v, p, 4);  // raw records are in the host's byte order
  return v;
}

// ---- "MK32" out ------------------------------------------------------------------------

TEST_F(MarkerRecordsTest, MK32OfTheCaseIsByteForByteTheHandLaidArray) {
  const MarkerSet s = CaseSet();
  int32_t n = -1;
  Array<uint8_t> b;
  bool qOK = false;
  SetMarkersByteFromUDT32(s, n, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(n, 7);
  EXPECT_EQ(b.LBound(), 1);
  EXPECT_EQ(ToVector(b), ToVector(HandMK32Case()));
}

TEST_F(MarkerRecordsTest, AnMKEXArrayReadInGoesOutAsTheHandLaidMK32) {
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromBMarkers(s, 7, HandMKEXCase(), qOK);
  ASSERT_TRUE(qOK);
  int32_t n = 0;
  Array<uint8_t> b;
  GetMarkersByte(s, nullptr, n, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(n, 7);
  EXPECT_EQ(ToVector(b), ToVector(HandMK32Case()));
}

TEST_F(MarkerRecordsTest, WithNoMarkersTheArrayIsLeftAlone) {
  MarkerSet s;
  int32_t n = 5;
  Array<uint8_t> b{1, 2, 3};
  bool qOK = false;
  SetMarkersByteFromUDT32(s, n, b, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 5);
  EXPECT_EQ(ToVector(b), (std::vector<uint8_t>{1, 2, 3}));
  qOK = false;
  GetMarkersByteFromUDT32(s, SectorBox{1, 9, 1, 9, 1, 9}, n, b, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 5);
  EXPECT_EQ(b.size(), 3u);
}

// ---- The sector box --------------------------------------------------------------------

TEST_F(MarkerRecordsTest, SectorBoxKeepsWellsWithAConnectionInsideShiftedToTheBox) {
  const MarkerSet s = CaseSet();
  // I 9..12, J 11..13, K 5..6: both connections of the first P1; its head
  // (10, 12, 1) comes along in front, at (2, 2, -3).
  const SectorBox box{9, 12, 11, 13, 5, 6};
  int32_t n = 0;
  Array<uint8_t> b;
  bool qOK = false;
  GetMarkersByte(s, &box, n, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(n, 3);
  HandBytes want;
  // H7 = H8 = H9 = 89 + 3 * 24 = 161, H10 = 161 + 3 * 40 - 1 = 280.
  want.Text("MK32", 4).Word(20).Words({6, 0, 0, 1, 40, 89, 161, 161, 161, 280, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  want.Words({0, 2, 2, -3, 1, 4}).Words({0, 2, 2, 1, 0, 4}).Words({0, 2, 2, 2, 0, 104});
  want.Text("P1", 40).Text("P1", 40).Text("P1", 40);
  EXPECT_EQ(ToVector(b), want.bytes());
}

TEST_F(MarkerRecordsTest, SectorBoxHeadsBeforeTheBoxAcrossIOrJAreLeftOut) {
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromVMarkers(s, 11,
                            Table({
                                {"D1", 2, 5, 1, "WELL", "4"},     // head before the box across I
                                {"D1", 8, 5, 3, "PERF", "4"},
                                {"D1", 9, 5, 4, "PERF", "104"},
                                {"D2", 30, 5, 1, "WELL", "1"},    // head beyond the box: still kept
                                {"D2", 6, 5, 2, "PERF", "1"},
                                {"D3", 7, 5, 1, "WELL", "2"},     // a head alone is no connection
                                {"D4", 7, 7, 1, "WELL", "5"},
                                {"D4", 50, 50, 50, "PERF", "5"},  // outside
                                {"D5", 6, 0, 1, "WELL", "3"},     // head before the box across J
                                {"D5", 6, 5, 3, "PERF", "3"},
                                {"D6", 9, 9, 9, "PERF", "0"},     // one marker: its head only
                            }),
                            qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(s.NumWells, 6);
  const SectorBox box{5, 10, 1, 10, 1, 10};  // shift: I - 4
  int32_t n = 0;
  Array<uint8_t> b;
  GetMarkersByteFromUDT32(s, box, n, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(n, 5);
  HandBytes want;
  // H7 = H8 = H9 = 89 + 5 * 24 = 209, H10 = 209 + 5 * 40 - 1 = 408.
  want.Text("MK32", 4).Word(20).Words({6, 0, 0, 1, 40, 89, 209, 209, 209, 408, 5, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  want.Words({0, 4, 5, 3, 0, 4}).Words({0, 5, 5, 4, 0, 104});
  want.Words({0, 26, 5, 1, 1, 1}).Words({0, 2, 5, 2, 0, 1});
  want.Words({0, 2, 5, 3, 0, 3});
  want.Text("D1", 40).Text("D1", 40).Text("D2", 40).Text("D2", 40).Text("D5", 40);
  EXPECT_EQ(ToVector(b), want.bytes());
}

TEST_F(MarkerRecordsTest, SectorBoxWithNothingInsideGivesTheHeaderAlone) {
  const MarkerSet s = CaseSet();
  int32_t n = -1;
  Array<uint8_t> b;
  bool qOK = false;
  GetMarkersByteFromUDT32(s, SectorBox{100, 200, 100, 200, 100, 200}, n, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  HandBytes want;
  want.Text("MK32", 4).Word(20).Words({6, 0, 0, 1, 40, 89, 89, 89, 89, 88, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  EXPECT_EQ(ToVector(b), want.bytes());
}

TEST_F(MarkerRecordsTest, SectorBoxBoundsAreInclusive) {
  const MarkerSet s = CaseSet();
  int32_t n = 0;
  Array<uint8_t> b;
  bool qOK = false;
  // Exactly the cell of the last connection of the second P1.
  GetMarkersByteFromUDT32(s, SectorBox{20, 20, 21, 21, 9, 9}, n, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(n, 2);
  MarkerSet back;
  SetMarkersUDTFromBMarkers(back, n, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(back.Markers(1).i, 1);
  EXPECT_EQ(back.Markers(1).k, 1 - 8);
  EXPECT_EQ(back.Markers(2).i, 1);
  EXPECT_EQ(back.Markers(2).j, 1);
  EXPECT_EQ(back.Markers(2).k, 1);
}

// ---- vMarkers ----------------------------------------------------------------------------

TEST_F(MarkerRecordsTest, VMarkersRoundTripKeepsTheKeptFieldsAndDropsTheOthers) {
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromVMarkers(s, 7, CaseTable("LGR1"), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(s.NumWells, 3);
  EXPECT_EQ(s.NumMarkers, 7);
  EXPECT_EQ(s.nWellsAllocated, 3);
  EXPECT_EQ(s.nMaxConnections, 2);
  EXPECT_EQ(Name40(s.Wells(2).zGridName), Padded40("LGR1"));
  int32_t n = 0;
  Array2<Variant> v;
  GetTypeMarkers(s, n, v, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(n, 7);
  ASSERT_EQ(v.UBound(1), 55);
  ASSERT_EQ(v.UBound(2), 7);
  for (int32_t m = 1; m <= 7; ++m) {
    SCOPED_TRACE(m);
    const CaseMarker& c = kCase[m - 1];
    EXPECT_EQ(v(3, m).Type(), VarType::Long);
    EXPECT_EQ(v(3, m).ToLong(), c.i);
    EXPECT_EQ(v(4, m).ToLong(), c.j);
    EXPECT_EQ(v(5, m).ToLong(), c.k);
    EXPECT_EQ(v(10, m).Type(), VarType::Long);
    EXPECT_EQ(v(10, m).ToLong(), c.iStatus);
    EXPECT_EQ(v(11, m).ToText(), c.zName);
    EXPECT_EQ(v(12, m).ToText(), c.iStyle == 1 ? "WELL" : "PERF");
    EXPECT_EQ(v(13, m).ToText(), "LGR1");
    for (int32_t f : {1, 2, 6, 7, 8, 9}) EXPECT_TRUE(v(f, m).IsEmpty()) << f;
    for (int32_t f = 14; f <= 55; ++f) EXPECT_TRUE(v(f, m).IsEmpty()) << f;
  }
  // And in again: the same records.
  MarkerSet again;
  SetMarkersUDTFromVMarkers(again, n, v, qOK);
  ASSERT_TRUE(qOK);
  ExpectSameSet(again, s);
}

TEST_F(MarkerRecordsTest, VMarkersStatusIsTheValueOfTheTrimmedTextAndStyleMustBeWell) {
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromVMarkers(s, 5,
                            Table({
                                {"A", 1, 1, 1, " WELL ", " 104 "},
                                {"A", 1, 1, 2, "well", "2.5"},
                                {"A", 1, 1, 3, "WELLHEAD", "abc"},
                                {"A", 1, 1, 4, "PERF", ""},
                                {"A", 1, 1, 5, "", "-1"},
                            }),
                            qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(s.Markers(1).iStyle, 1);
  EXPECT_EQ(s.Markers(2).iStyle, 0);
  EXPECT_EQ(s.Markers(3).iStyle, 0);
  EXPECT_EQ(s.Markers(1).iStatus, 104);
  EXPECT_EQ(s.Markers(2).iStatus, 2);  // half to even
  EXPECT_EQ(s.Markers(3).iStatus, 0);
  EXPECT_EQ(s.Markers(4).iStatus, 0);
  EXPECT_EQ(s.Markers(5).iStatus, -1);
}

TEST_F(MarkerRecordsTest, VMarkersNamesArePaddedOrCutToFortyBytes) {
  Array2<Variant> v = Table({{"", 1, 1, 1, "WELL", "1"}, {"", 2, 2, 2, "PERF", "1"}});
  const std::string zLong(45, 'W');
  v(11, 2) = zLong;  // a different name: a second well
  v(13, 1) = Variant();
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromVMarkers(s, 2, v, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(s.NumWells, 2);
  EXPECT_EQ(Name40(s.Wells(1).zWellName), std::string(40, ' '));
  EXPECT_EQ(Name40(s.Wells(1).zGridName), std::string(40, ' '));
  EXPECT_EQ(Name40(s.Wells(2).zWellName), std::string(40, 'W'));
  // Numbers as variants of any numeric type.
  v(3, 1) = 7.5;
  v(4, 1) = int16_t{3};
  v(10, 1) = int32_t{4};
  SetMarkersUDTFromVMarkers(s, 2, v, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(s.Markers(1).i, 8);
  EXPECT_EQ(s.Markers(1).j, 3);
  EXPECT_EQ(s.Markers(1).iStatus, 4);
}

TEST_F(MarkerRecordsTest, VMarkersWithNoMarkersAnswersFalseAndOnlyClearsTheWellCount) {
  MarkerSet s = SentinelSet();
  bool qOK = true;
  SetMarkersUDTFromVMarkers(s, 0, CaseTable(), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(s.NumWells, 0);
  EXPECT_EQ(s.NumMarkers, 2);
  EXPECT_EQ(s.Markers(1).i, 42);
  EXPECT_EQ(s.Wells.UBound(), 1);
  EXPECT_FALSE(s.IsMarkers());
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(MarkerRecordsTest, VMarkersTooSmallForTheCountIsSubscriptOutOfRange) {
  MarkerSet s = SentinelSet();
  bool qOK = true;
  SetMarkersUDTFromVMarkers(s, 8, CaseTable(), qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Subscript out of range (No.9) In [mxDataSet  (SetMarkersUDTFromVMarkers)] ");
  EXPECT_TRUE(MessageLog::Shared().Flags()[0]);
  // The well count went to 0 first; the records stand.
  EXPECT_EQ(s.NumWells, 0);
  EXPECT_EQ(s.NumMarkers, 2);
  EXPECT_EQ(s.Markers(2).k, 43);
}

TEST_F(MarkerRecordsTest, GetTypeMarkersWithNoMarkersIsOneEmptyCell) {
  MarkerSet s;
  int32_t n = 9;
  Array2<Variant> v(1, 55, 1, 3);
  bool qOK = false;
  GetTypeMarkers(s, n, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(v.UBound(1), 1);
  EXPECT_EQ(v.UBound(2), 1);
  EXPECT_TRUE(v(1, 1).IsEmpty());
}

// ---- Queries ------------------------------------------------------------------------------

TEST_F(MarkerRecordsTest, GetMarkerFromIJKWordsStyleAndStatus) {
  const MarkerSet s = CaseSet();
  int32_t iFound = -1, iStatus = -1;
  std::string zName, zStyle, zStatus;
  EXPECT_TRUE(GetMarkerFromIJK(s, 10, 12, 6, iFound, zName, zStyle, iStatus, zStatus));
  EXPECT_EQ(iFound, 1);
  EXPECT_EQ(zName, "P1");
  EXPECT_EQ(zStyle, "PERF");
  EXPECT_EQ(iStatus, 104);
  EXPECT_EQ(zStatus, "Gas Producer");
  EXPECT_TRUE(GetMarkerFromIJK(s, 20, 21, 1, iFound, zName, zStyle, iStatus, zStatus));
  EXPECT_EQ(iFound, 3);
  EXPECT_EQ(zStyle, "WELL");
  EXPECT_EQ(zStatus, "Undrilled");
  EXPECT_TRUE(GetMarkerFromIJK(s, 3, 4, 8, iFound, zName, zStyle, iStatus, zStatus));
  EXPECT_EQ(iFound, 2);
  EXPECT_EQ(zName, "INJ");
  EXPECT_EQ(zStatus, "Water");
}

TEST_F(MarkerRecordsTest, StatusZeroReadsShutinAndSixGivesNoText) {
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromVMarkers(s, 3,
                            Table({{"W", 1, 1, 1, "WELL", "0"}, {"W", 1, 1, 2, "PERF", "6"},
                                   {"W", 1, 1, 3, "PERF", "-4"}}),
                            qOK);
  ASSERT_TRUE(qOK);
  int32_t iFound = 0, iStatus = 0;
  std::string zName, zStyle, zStatus = "before";
  EXPECT_TRUE(GetMarkerFromIJK(s, 1, 1, 1, iFound, zName, zStyle, iStatus, zStatus));
  EXPECT_EQ(iStatus, 0);
  EXPECT_EQ(zStatus, "Shutin");
  zStatus = "left as it was";
  EXPECT_TRUE(GetMarkerFromIJK(s, 1, 1, 2, iFound, zName, zStyle, iStatus, zStatus));
  EXPECT_EQ(iStatus, 6);
  EXPECT_EQ(zStatus, "left as it was");
  EXPECT_TRUE(GetMarkerFromIJK(s, 1, 1, 3, iFound, zName, zStyle, iStatus, zStatus));
  EXPECT_EQ(zStatus, "Shutin");
}

TEST_F(MarkerRecordsTest, StatusWordsAndTheirTexts) {
  const std::pair<int32_t, const char*> table[] = {{1, "Gas"},       {2, "Water"},       {3, "Solvent"},
                                                   {4, "Producer"},  {104, "Gas Producer"}, {5, "Undrilled"},
                                                   {0, "Shutin"},    {-1, "Shutin"},    {INT32_MIN, "Shutin"}};
  for (const auto& [iStatus, zText] : table) {
    std::string z;
    EXPECT_TRUE(MarkerStatusText(iStatus, z)) << iStatus;
    EXPECT_EQ(z, zText);
  }
  for (int32_t iStatus : {6, 7, 100, 103, 105, INT32_MAX}) {
    std::string z = "kept";
    EXPECT_FALSE(MarkerStatusText(iStatus, z)) << iStatus;
    EXPECT_EQ(z, "kept");
  }
}

TEST_F(MarkerRecordsTest, StyleWordsOtherThanZeroAndOneLeaveTheText) {
  MarkerSet s = CaseSet();
  s.Markers(4).iStyle = 2;
  int32_t iFound = 0, iStatus = 0;
  std::string zName, zStyle = "kept", zStatus;
  EXPECT_TRUE(GetMarkerFromIJK(s, 3, 4, 1, iFound, zName, zStyle, iStatus, zStatus));
  EXPECT_EQ(iFound, 2);
  EXPECT_EQ(zStyle, "kept");
}

TEST_F(MarkerRecordsTest, GetMarkerFromIJKMissAndNoMarkers) {
  const MarkerSet s = CaseSet();
  int32_t iFound = 7, iStatus = 8;
  std::string zName = "n", zStyle = "s", zStatus = "t";
  EXPECT_TRUE(GetMarkerFromIJK(s, 10, 12, 2, iFound, zName, zStyle, iStatus, zStatus));
  EXPECT_EQ(iFound, 0);
  EXPECT_EQ(iStatus, 8);
  EXPECT_EQ(zName, "n");
  // With no markers at all the answer comes at once: iFound stays.
  MarkerSet none;
  iFound = 7;
  EXPECT_TRUE(GetMarkerFromIJK(none, 10, 12, 6, iFound, zName, zStyle, iStatus, zStatus));
  EXPECT_EQ(iFound, 7);
}

TEST_F(MarkerRecordsTest, MoveAllMarkersToTopLayerLeavesIJAndTheWellsAlone) {
  MarkerSet s = CaseSet();
  const std::vector<uint8_t> wellsBefore = ToVector(GetWELLINFO(s));
  ASSERT_FALSE(wellsBefore.empty());
  MoveAllMarkersToTopLayer(s);
  for (int32_t m = 1; m <= 7; ++m) {
    SCOPED_TRACE(m);
    const CaseMarker& c = kCase[m - 1];
    EXPECT_EQ(s.Markers(m).k, 1);
    EXPECT_EQ(s.Markers(m).i, c.i);
    EXPECT_EQ(s.Markers(m).j, c.j);
    EXPECT_EQ(s.Markers(m).iStatus, c.iStatus);
    EXPECT_EQ(s.Markers(m).iStyle, c.iStyle);
  }
  EXPECT_EQ(ToVector(GetWELLINFO(s)), wellsBefore);
  EXPECT_EQ(s.NumWells, 3);
  EXPECT_EQ(s.nMaxConnections, 2);
}

TEST_F(MarkerRecordsTest, MaxMarkerCountIsTheMostConnectionsOfAWell) {
  EXPECT_EQ(getMaxMarkerCount(CaseSet()), 2);
  EXPECT_EQ(getMaxMarkerCount(MarkerSet()), 0);
  MarkerSet s;
  bool qOK = false;
  SetMarkersUDTFromVMarkers(s, 2, Table({{"A", 1, 1, 1, "WELL", "1"}, {"B", 2, 2, 1, "WELL", "1"}}), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(getMaxMarkerCount(s), 0);
  EXPECT_EQ(s.nMaxConnections, 0);
}

TEST_F(MarkerRecordsTest, WellNamesFromMarkersInWellOrder) {
  Array<std::string> z{"untouched"};
  int32_t n = -1;
  getWellNamesfromMarkers(MarkerSet(), z, n);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(z(1), "untouched");
  getWellNamesfromMarkers(CaseSet(), z, n);
  ASSERT_EQ(n, 3);
  EXPECT_EQ(z(1), "P1");
  EXPECT_EQ(z(2), "INJ");
  EXPECT_EQ(z(3), "P1");
}

// ---- Raw records ------------------------------------------------------------------------

TEST_F(MarkerRecordsTest, WELLINFOBytesAreTheRecordsInHostOrder) {
  const MarkerSet s = CaseSet();
  const Array<uint8_t> b = GetWELLINFO(s);
  ASSERT_EQ(b.size(), 3u * 92u);
  EXPECT_EQ(b.LBound(), 1);
  const uint8_t* p = b.data();
  // Well 2 is INJ: number 2, two markers from marker 4.
  EXPECT_EQ(ReadWord(p + 92 + 0), 2);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(p + 92 + 4), 40), Padded40("INJ"));
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(p + 92 + 44), 40), Padded40("GRIDNAME"));
  EXPECT_EQ(ReadWord(p + 92 + 84), 2);
  EXPECT_EQ(ReadWord(p + 92 + 88), 4);
}

TEST_F(MarkerRecordsTest, MARKERINFOLengthComesFromTheWellRecordCount) {
  const MarkerSet s = CaseSet();
  // Three well records allocated, so three of the seven markers.
  const Array<uint8_t> b = GetMARKERINFO(s);
  ASSERT_EQ(b.size(), 3u * 36u);
  const uint8_t* p = b.data();
  // Marker 3: number 3, well 1, (10, 12, 6), status 104, style 0.
  const int32_t want[7] = {3, 1, 10, 12, 6, 104, 0};
  for (int32_t w = 0; w < 7; ++w) EXPECT_EQ(ReadWord(p + 72 + 4 * w), want[w]) << w;
}

TEST_F(MarkerRecordsTest, LetMARKERINFOSetsTheWellRecordCountToTheMarkerCount) {
  const MarkerSet full = CaseSet();
  // All seven records, taken from the records themselves.
  Array<uint8_t> seven(1, 7 * 36);
  std::memcpy(seven.data(), full.Markers.data(), 7 * 36);
  MarkerSet s = CaseSet();
  LetMARKERINFO(s, seven);
  EXPECT_EQ(s.nWellsAllocated, 7);
  EXPECT_EQ(s.NumMarkers, 7);
  EXPECT_EQ(s.NumWells, 3);
  EXPECT_EQ(ToVector(GetMARKERINFO(s)), ToVector(seven));
  // WELLINFO now gives seven records; the four the well array lacks are zeros.
  const Array<uint8_t> w = GetWELLINFO(s);
  ASSERT_EQ(w.size(), 7u * 92u);
  EXPECT_EQ(ReadWord(w.data() + 2 * 92), 3);
  for (std::size_t i = 3 * 92; i < w.size(); ++i) ASSERT_EQ(w.data()[i], 0) << i;
}

TEST_F(MarkerRecordsTest, LetWELLINFOTakesWholeRecordsUpToTheUpperBound) {
  MarkerSet s = CaseSet();
  Array<uint8_t> b(1, 2 * 92 + 50);
  std::memcpy(b.data(), s.Wells.data(), 2 * 92);
  LetWELLINFO(s, b);
  EXPECT_EQ(s.nWellsAllocated, 2);
  EXPECT_EQ(s.Wells.UBound(), 2);
  EXPECT_EQ(s.NumWells, 3);  // the count is not the let's
  EXPECT_EQ(ToVector(GetWELLINFO(s)), std::vector<uint8_t>(b.data(), b.data() + 2 * 92));
  // A zero-based array: the upper bound 183 holds one whole record.
  Array<uint8_t> zero(0, 183);
  LetWELLINFO(s, zero);
  EXPECT_EQ(s.nWellsAllocated, 1);
  // Less than one record: none.
  LetWELLINFO(s, Array<uint8_t>(1, 91));
  EXPECT_EQ(s.nWellsAllocated, 0);
  EXPECT_FALSE(GetWELLINFO(s).IsAllocated());
  EXPECT_FALSE(GetMARKERINFO(s).IsAllocated());
  LetMARKERINFO(s, Array<uint8_t>());
  EXPECT_EQ(s.nWellsAllocated, 0);
  EXPECT_FALSE(s.Markers.IsAllocated());
}

TEST_F(MarkerRecordsTest, RawGetsGiveNothingWithoutMarkers) {
  MarkerSet s = CaseSet();
  s.NumMarkers = 0;
  EXPECT_FALSE(GetWELLINFO(s).IsAllocated());
  EXPECT_FALSE(GetMARKERINFO(s).IsAllocated());
  EXPECT_FALSE(GetWELLINFO(MarkerSet()).IsAllocated());
}

TEST_F(MarkerRecordsTest, PointersAddressTheFirstRecords) {
  const MarkerSet s = CaseSet();
  EXPECT_EQ(WellsPtr(s), reinterpret_cast<std::intptr_t>(&s.Wells(1)));
  EXPECT_EQ(MarkersPtr(s), reinterpret_cast<std::intptr_t>(&s.Markers(1)));
  EXPECT_EQ(WellsPtr(MarkerSet()), 0);
  EXPECT_EQ(MarkersPtr(MarkerSet()), 0);
}

}  // namespace
}  // namespace vndata
