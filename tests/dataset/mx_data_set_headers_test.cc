#include <gtest/gtest.h>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/packed_headers.h"

using namespace vndata;
using namespace vndata::testutil;

namespace {

std::string Attr(mxDataSet& ds, int32_t c, int32_t id) {
  std::string z = "unset";
  ds.GetAttribute(c, id, z);
  return z;
}

std::string RecordText(const Array<uint8_t>& r) {
  return std::string(reinterpret_cast<const char*>(r.data()), r.size());
}

// All eleven packed attributes of a column.
Attrs Full(const std::string& suffix) {
  return {{ATT_ORIGIN, "ORIGIN" + suffix},  {ATT_TYPE, "SUMMARY"},       {ATT_UNITS, "SM3/DAY"},
          {ATT_CLASS, "WELLS"},             {ATT_MEMBER, "P" + suffix},   {ATT_SUBCLASS1, "S1"},
          {ATT_SUBCLASS2, "S2" + suffix},   {ATT_INDEX, "I" + suffix},    {ATT_VARIABLE, "WOPR"},
          {ATT_VERBOSE, "Oil rate " + suffix}, {GRID, "LGR" + suffix}};
}

void LoadWith(mxDataSet& ds, const std::vector<Attrs>& cols, int32_t nRows = 2) {
  Array2<float> a = Numbered(nRows, static_cast<int32_t>(cols.size()));
  bool qOK = false;
  ds.bInitialiseFrom2d(a, Headers(cols), qOK);
  ASSERT_TRUE(qOK);
}

}  // namespace

TEST(DataSetHeaders, UnpackedHeadersGiveEveryAttribute) {
  mxDataSet ds;
  LoadWith(ds, {Full("1"), Full("2")});
  for (const auto& [id, text] : Full("2")) EXPECT_EQ(Attr(ds, 2, id), text) << id;
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_CLASS), 1);
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_ORIGIN), 2);
}

TEST(DataSetHeaders, ARecordOfAllBlanksUnpackedSinglyGivesNoPointers) {
  mxDataSet ds;
  LoadWith(ds, {Full("1")});
  Array<uint8_t> blank(1, 233);
  blank.Fill(' ');
  bool qOK = false;
  ds.unPackSinglebHeaders(1, blank, qOK);
  ASSERT_TRUE(qOK);
  for (int32_t id = 1; id <= 14; ++id) {
    std::string z = "x";
    // Packed headers make no pools for 3 and 13, so those reads report false.
    EXPECT_EQ(ds.GetAttribute(1, id, z), id != UNUSED3 && id != UNUSED13) << id;
    EXPECT_EQ(z, "") << id;
  }
  // Every pointer is -1: the column matches cell -1 for each packed id.
  for (int32_t id : kPackOrder) {
    bool r = false;
    ds.CompareAttribute(1, id, "", -1, true, r);
    EXPECT_TRUE(r) << id;
  }
}

TEST(DataSetHeaders, SingleUnpackOfAnInvalidColumnChangesNothingAndSucceeds) {
  mxDataSet ds;
  LoadWith(ds, {Full("1")});
  Array<uint8_t> blank(1, 233);
  blank.Fill(' ');
  bool qOK = false;
  ds.unPackSinglebHeaders(2, blank, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Attr(ds, 1, ATT_VARIABLE), "WOPR");
}

TEST(DataSetHeaders, A40CharacterMemberSurvivesARoundTrip) {
  const std::string m40(40, 'M');
  mxDataSet ds;
  ds.Dimension(1, 1);
  bool qOK = false;
  ds.SetAttributes(1, Row({{ATT_MEMBER, m40}}), qOK);
  Array2<uint8_t> b;
  ds.bgetHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  mxDataSet back;
  Array2<float> a = Numbered(1, 1);
  back.bInitialiseFrom2d(a, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Attr(back, 1, ATT_MEMBER), m40);
}

TEST(DataSetHeaders, A41CharacterMemberLosesItsLastCharacter) {
  const std::string m41 = std::string(40, 'M') + "Z";
  mxDataSet ds;
  ds.Dimension(1, 1);
  bool qOK = false;
  ds.SetAttributes(1, Row({{ATT_MEMBER, m41}, {ATT_VERBOSE, "after"}}), qOK);
  EXPECT_EQ(Attr(ds, 1, ATT_MEMBER), m41);  // the pool keeps it whole
  Array2<uint8_t> b;
  ds.bgetHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  mxDataSet back;
  Array2<float> a = Numbered(1, 1);
  back.bInitialiseFrom2d(a, b, qOK);
  EXPECT_EQ(Attr(back, 1, ATT_MEMBER), std::string(40, 'M'));
  EXPECT_EQ(Attr(back, 1, ATT_SUBCLASS1), "");  // the next field is untouched
}

TEST(DataSetHeaders, SetUDTAttributeUsesTheFirst233Characters) {
  mxDataSet ds;
  LoadWith(ds, {Full("1")});
  std::string z(300, ' ');
  z.replace(160, 4, "FOPT");
  z.replace(216, 16, "GRID-IN-232-XXXX");
  z.replace(232, 68, std::string(68, '#'));
  EXPECT_TRUE(ds.SetUDTAttribute(1, z));
  EXPECT_EQ(Attr(ds, 1, ATT_VARIABLE), "FOPT");
  EXPECT_EQ(Attr(ds, 1, GRID), "GRID-IN-232-XXXX");
  EXPECT_EQ(Attr(ds, 1, ATT_ORIGIN), "");
  EXPECT_FALSE(ds.SetUDTAttribute(2, z));
}

TEST(DataSetHeaders, PackingAColumnWhoseIndexPoolIsAbsentLeavesItsFieldBlank) {
  mxDataSet ds;
  ds.Dimension(1, 1);
  ds.SetAttribute(ATT_VARIABLE, "WOPR");
  Array<uint8_t> r;
  ASSERT_TRUE(ds.bGetAttributes(1, r));
  ASSERT_EQ(r.UBound(), 233);
  EXPECT_EQ(RecordText(r).substr(144, 16), std::string(16, ' '));
  EXPECT_EQ(RecordText(r).substr(160, 16), "WOPR" + std::string(12, ' '));
  Array2<uint8_t> b;
  bool qOK = false;
  ds.bgetHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  for (int32_t i = 145; i <= 160; ++i) EXPECT_EQ(b(i, 1), ' ');
}

TEST(DataSetHeaders, PackingThenUnpackingKeepsEveryFieldAndAddsNoCells) {
  mxDataSet ds;
  LoadWith(ds, {Full("1"), Full("2"), Full("1")});
  int32_t before[15];
  for (int32_t id = 1; id <= 14; ++id) before[id] = ds.NumberStoredAttributes(id);
  Array2<uint8_t> b;
  bool qOK = false;
  ds.bExtractHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  ds.UnpackbHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  for (int32_t id = 1; id <= 14; ++id) EXPECT_EQ(ds.NumberStoredAttributes(id), before[id]) << id;
  for (int32_t c = 1; c <= 3; ++c)
    for (const auto& [id, text] : Full(c == 2 ? "2" : "1")) EXPECT_EQ(Attr(ds, c, id), text) << c << " " << id;
  Array2<uint8_t> again;
  ds.bExtractHeaders(again, qOK);
  EXPECT_EQ(std::memcmp(again.data(), b.data(), b.size()), 0);
}

TEST(DataSetHeaders, PackedRecordsHoldTheFieldsAtTheirPositions) {
  mxDataSet ds;
  LoadWith(ds, {Full("1"), Full("2")});
  Array2<uint8_t> b;
  bool qOK = false;
  ds.bExtractDataHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(b.UBound(1), 233);
  ASSERT_EQ(b.UBound(2), 2);
  const std::string r2(reinterpret_cast<const char*>(b.data()) + 233, 233);
  std::string expected(233, ' ');
  auto put = [&](int32_t pos, const std::string& t) { expected.replace(static_cast<std::size_t>(pos - 1), t.size(), t); };
  put(1, "ORIGIN2");
  put(33, "SUMMARY");
  put(41, "SM3/DAY");
  put(57, "WELLS");
  put(73, "P2");
  put(113, "S1");
  put(129, "S22");
  put(145, "I2");
  put(161, "WOPR");
  put(177, "Oil rate 2");
  put(217, "LGR2");
  EXPECT_EQ(r2, expected);
}

TEST(DataSetHeaders, PackIntoAnArrayOfTheWrongShapeReblanksIt) {
  mxDataSet ds;
  LoadWith(ds, {{{ATT_VARIABLE, "A"}}, {{ATT_VARIABLE, "B"}}});
  Array2<uint8_t> b(1, 100, 1, 5);
  b.Fill('x');
  bool qOK = false;
  ds.packbHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(b.UBound(1), 233);
  ASSERT_EQ(b.UBound(2), 2);
  EXPECT_EQ(b(1, 1), ' ');
  EXPECT_EQ(b(161, 2), 'B');
}

TEST(DataSetHeaders, UnpackFromALaterFirstColumn) {
  mxDataSet ds;
  LoadWith(ds, {{{ATT_VARIABLE, "A"}}, {{ATT_VARIABLE, "B"}}, {{ATT_VARIABLE, "C"}}});
  bool qOK = false;
  ds.UnpackbHeaders(Headers({{{ATT_VARIABLE, "X"}}, {{ATT_VARIABLE, "Y"}}}), qOK, 2);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Attr(ds, 1, ATT_VARIABLE), "A");
  EXPECT_EQ(Attr(ds, 2, ATT_VARIABLE), "X");
  EXPECT_EQ(Attr(ds, 3, ATT_VARIABLE), "Y");
}

TEST(DataSetHeaders, UnpackOnFirstFillingCreatesThePool) {
  mxDataSet ds;
  ds.Dimension(2, 1);
  std::shared_ptr<ByteStore> pool;
  bool qOK = false;
  ds.UnpackbHeader(Headers({{{ATT_UNITS, "M"}}, {{ATT_UNITS, "KG"}}}), ATT_UNITS, pool, qOK, 500, 1);
  ASSERT_TRUE(qOK);
  ASSERT_TRUE(pool);
  EXPECT_EQ(pool->Count(), 2);
  EXPECT_EQ(pool->GetString(2), "KG");
}

TEST(DataSetHeaders, UnpackIntoAnAbsentPoolFromALaterColumnIsOneTraceLine) {
  mxDataSet ds;
  ds.Dimension(3, 1);
  std::shared_ptr<ByteStore> pool;
  LogCapture log;
  bool qOK = true;
  ds.UnpackbHeader(Headers({{{ATT_UNITS, "M"}}}), ATT_UNITS, pool, qOK, 500, 2);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(pool);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0],
            "Error:Object variable or With block variable not set (No.91) In [mxDataSet  (UnpackbHeader)] ");
}

TEST(DataSetHeaders, UnpackPastTheLastColumnIsOneTraceLine) {
  mxDataSet ds;
  ds.Dimension(1, 1);
  LogCapture log;
  bool qOK = true;
  ds.UnpackbHeaders(SimpleHeaders(3), qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Subscript out of range (No.9) In [mxDataSet  (UnpackbHeader)] ");
}

TEST(DataSetHeaders, UnpackSinglebHeaderCreatesThePoolAndSkipsEmptyFields) {
  mxDataSet ds;
  ds.Dimension(1, 1);
  std::shared_ptr<ByteStore> pool;
  Array<uint8_t> r;
  RecordFromText(std::string(160, ' ') + "  FOPR  ", r);
  bool qOK = false;
  ds.UnpackSinglebHeader(1, r, ATT_VARIABLE, pool, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_TRUE(pool);
  EXPECT_EQ(pool->GetString(1), "FOPR");
  std::shared_ptr<ByteStore> units;
  ds.UnpackSinglebHeader(1, r, ATT_UNITS, units, qOK);
  ASSERT_TRUE(units);
  EXPECT_EQ(units->Count(), 0);
}

TEST(DataSetHeaders, PackOneAttributeOfOneColumn) {
  mxDataSet ds;
  LoadWith(ds, {Full("1")});
  std::shared_ptr<ByteStore> pool;
  bool qOK = false;
  ds.GetByteStore(ATT_CLASS, pool, qOK);
  Array<uint8_t> r(1, 10);  // the wrong size: made a blank record first
  ds.packbHeader(1, pool, ATT_CLASS, r, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(RecordText(r), std::string(56, ' ') + "WELLS" + std::string(172, ' '));
}

TEST(DataSetHeaders, InitByteStorageMakesOrErasesThePools) {
  mxDataSet ds;
  LoadWith(ds, {Full("1")});
  bool qOK = false;
  ds.InitByteStorage(true, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_VARIABLE), -1);
  ds.InitByteStorage(false, qOK);
  ASSERT_TRUE(qOK);
  AttributePools all;
  ds.GetByteStoreArray(all, qOK);
  EXPECT_FALSE(all.IsAllocated());
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_VARIABLE), -1);
}

TEST(DataSetHeaders, RequestsOfAnUninitialisedDataSetFailSilently) {
  mxDataSet ds;
  LogCapture log;
  Array2<uint8_t> b;
  Array<std::string> z;
  bool qOK = true;
  ds.bExtractHeaders(b, qOK);
  EXPECT_FALSE(qOK);
  qOK = true;
  ds.bExtractDataHeaders(b, qOK);
  EXPECT_FALSE(qOK);
  qOK = true;
  ds.bgetHeaders(b, qOK);
  EXPECT_FALSE(qOK);
  qOK = true;
  ds.ExtractHeaders(z, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(log.Lines().empty());
}

TEST(DataSetHeaders, AnEmptyFirstBufferFailsBExtractHeadersButNotExtractHeaders) {
  mxDataSet ds;
  ds.Dimension(2);  // initialised, no rows
  ds.SetAttribute(ATT_VARIABLE, "V");
  Array2<uint8_t> b;
  bool qOK = true;
  ds.bExtractHeaders(b, qOK);
  EXPECT_FALSE(qOK);
  Array<std::string> z;
  qOK = false;
  ds.ExtractHeaders(z, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(z.IsAllocated());
  // bgetHeaders gives all columns whatever the rows.
  ds.bgetHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(b.UBound(2), 2);
}

TEST(DataSetHeaders, ExtractHeadersAsText) {
  mxDataSet ds;
  LoadWith(ds, {{{ATT_VARIABLE, "A"}}, {{ATT_VARIABLE, "B"}, {ATT_ORIGIN, "O"}}});
  Array<std::string> z;
  bool qOK = false;
  ds.ExtractHeaders(z, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(z.UBound(), 2);
  EXPECT_EQ(z(2).size(), 233u);
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, z(2)), "B");
  EXPECT_EQ(ExtractAttribute(ATT_ORIGIN, z(2)), "O");
}

TEST(DataSetHeaders, CombinedExtractions) {
  mxDataSet ds;
  LoadWith(ds, {{{ATT_VARIABLE, "A"}}, {{ATT_VARIABLE, "B"}}}, 3);
  Array2<float> a;
  Array2<uint8_t> b;
  bool qOK = false;
  ds.bExtract2dArrays(a, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(a(3, 2), 203.0f);
  EXPECT_EQ(b(161, 2), 'B');
  Array2<float> a2;
  Array2<uint8_t> b2;
  ds.bExtractData(a2, b2, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(a2(1, 1), 101.0f);
  Array2<float> a3;
  Array<std::string> z;
  ds.ExtractDataArrays(a3, z, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, z(1)), "A");
  Array2<float> a4;
  Array<std::string> z4;
  ds.Extract2dArrays(a4, z4);
  EXPECT_EQ(a4(2, 1), 102.0f);
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, z4(2)), "B");
}

TEST(DataSetHeaders, ExtractDataArraysOfAnUninitialisedDataSetFails) {
  mxDataSet ds;
  Array2<float> a;
  Array<std::string> z;
  bool qOK = true;
  ds.ExtractDataArrays(a, z, qOK);
  EXPECT_FALSE(qOK);
}

TEST(DataSetHeaders, BulkUnpackMakesEmptyFieldsPointerless) {
  mxDataSet ds;
  LoadWith(ds, {{{ATT_VARIABLE, "A"}}, {{ATT_VARIABLE, "B"}, {ATT_UNITS, "M"}}});
  bool r = false;
  ds.CompareAttribute(1, ATT_UNITS, "", -1, true, r);
  EXPECT_TRUE(r);
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_UNITS), 1);
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_TYPE), 0);
}
