#include "vndata/foundation/packed_headers.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/message_log.h"

using namespace vndata;

namespace {

// A record of 233 blanks with texts placed at 1-based positions.
std::string Record(std::initializer_list<std::pair<int32_t, std::string>> fields) {
  std::string r(233, ' ');
  for (const auto& [pos, text] : fields) r.replace(static_cast<std::size_t>(pos - 1), text.size(), text);
  return r;
}

// A legacy (273-byte) record array of n records from texts by legacy field.
Array2<uint8_t> LegacyRecords(const std::vector<std::vector<std::pair<int32_t, std::string>>>& recs) {
  Array2<uint8_t> b(1, 273, 1, static_cast<int32_t>(recs.size()));
  b.Fill(' ');
  for (std::size_t r = 0; r < recs.size(); ++r)
    for (const auto& [pos, text] : recs[r])
      std::memcpy(&b(pos, static_cast<int32_t>(r + 1)), text.data(), text.size());
  return b;
}

std::string Text(const Array2<uint8_t>& b, int32_t c) {
  return std::string(reinterpret_cast<const char*>(&b(1, c)), static_cast<std::size_t>(b.UBound(1)));
}

}  // namespace

TEST(ExtractAttribute, FieldsAreTrimmedAtBothEnds) {
  const std::string r = Record({{1, "  ORIG "}, {33, "SUMMARY"}, {161, "WOPR"}, {217, "LGR1"}});
  EXPECT_EQ(ExtractAttribute(ATT_ORIGIN, r), "ORIG");
  EXPECT_EQ(ExtractAttribute(ATT_TYPE, r), "SUMMARY");
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, r), "WOPR");
  EXPECT_EQ(ExtractAttribute(GRID, r), "LGR1");
  EXPECT_EQ(ExtractAttribute(ATT_MEMBER, r), "");
}

TEST(ExtractAttribute, IdsWithoutAFieldGiveTheEmptyText) {
  const std::string r(233, 'X');
  for (int32_t id : {1, 3, 13, 0, 15}) EXPECT_EQ(ExtractAttribute(id, r), "") << id;
}

TEST(ExtractAttribute, TextEndsAtTheFirstNul) {
  std::string r(233, ' ');
  r.replace(72, 6, std::string("AB\0CD ", 6));  // MEMBER at 73
  EXPECT_EQ(ExtractAttribute(ATT_MEMBER, r), "AB");
  r.replace(72, 3, std::string("\0XY", 3));  // a NUL first: nothing
  EXPECT_EQ(ExtractAttribute(ATT_MEMBER, r), "");
  r.replace(72, 3, std::string(" Z\0", 3));  // before the NUL, trimmed
  EXPECT_EQ(ExtractAttribute(ATT_MEMBER, r), "Z");
}

TEST(ExtractAttribute, FieldsAreCutAtTheirWidth) {
  const std::string r = Record({{33, "ABCDEFGHIJ"}});  // TYPE is 8 wide; UNITS takes the rest
  EXPECT_EQ(ExtractAttribute(ATT_TYPE, r), "ABCDEFGH");
  EXPECT_EQ(ExtractAttribute(ATT_UNITS, r), "IJ");
}

TEST(PackedHeaders, UnpackReservesPerId) {
  const int32_t ids[11] = {4, 6, 5, 11, 2, 9, 12, 7, 8, 14, 10};
  const int32_t reserve[11] = {1, 20, 1, 500, 500, 500, 500, 10, 10, 10, 100};
  for (int k = 0; k < 11; ++k) EXPECT_EQ(UnpackReserve(ids[k]), reserve[k]) << ids[k];
  EXPECT_EQ(UnpackReserve(1), 0);
}

TEST(PackedHeaders, RecordsLieOneBehindTheOther) {
  Array2<uint8_t> b;
  BlankHeaders(b, 3);
  ASSERT_EQ(b.UBound(1), 233);
  ASSERT_EQ(b.UBound(2), 3);
  b(1, 2) = 'Q';
  EXPECT_EQ(b.data()[233], 'Q');  // record 2 begins at byte 233
  for (std::size_t i = 0; i < b.size(); ++i) {
    if (i != 233) {
      ASSERT_EQ(b.data()[i], ' ');
    }
  }
}

TEST(PackedHeaders, ShapeBlanksAnArrayOfAnotherShape) {
  Array2<uint8_t> b(1, 273, 1, 2);
  b.Fill('z');
  ShapeHeaders(b, 2);
  EXPECT_EQ(b.UBound(1), 233);
  EXPECT_EQ(b(5, 2), ' ');
  b(5, 2) = 'k';
  ShapeHeaders(b, 2);  // right shape: left as it is
  EXPECT_EQ(b(5, 2), 'k');
  ShapeHeaders(b, 3);
  EXPECT_EQ(b(5, 2), ' ');
}

TEST(PackedHeaders, PackAndUnpackAFieldOfAllRecords) {
  ByteStore pool;
  pool.AddString("WOPR");
  pool.AddString("A-VERY-LONG-VARIABLE-NAME");  // wider than the 16-byte field
  Array<int32_t> ptr{2, -1, 1};
  Array2<uint8_t> b;
  BlankHeaders(b, 3);
  PackField(pool, ATT_VARIABLE, ptr, 3, b);
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, Text(b, 1)), "A-VERY-LONG-VARI");
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, Text(b, 2)), "");
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, Text(b, 3)), "WOPR");
  // Nothing outside the field was touched.
  EXPECT_EQ(b(160, 1), ' ');
  EXPECT_EQ(b(177, 1), ' ');
  ByteStore fresh;
  Array<int32_t> cells = UnpackField(b, ATT_VARIABLE, fresh);
  ASSERT_EQ(cells.UBound(), 3);
  EXPECT_EQ(cells(1), 1);
  EXPECT_EQ(cells(2), -1);
  EXPECT_EQ(cells(3), 2);
  EXPECT_EQ(fresh.GetString(1), "A-VERY-LONG-VARI");
  EXPECT_EQ(fresh.Count(), 2);
}

TEST(PackedHeaders, RecordsFromTextAreCutAt233) {
  Array<uint8_t> r;
  RecordFromText(std::string(300, 'x'), r);
  EXPECT_EQ(r.UBound(), 233);
  EXPECT_EQ(r(233), 'x');
  RecordFromText("ab", r);
  EXPECT_EQ(r(2), 'b');
  EXPECT_EQ(r(3), ' ');
  Array<std::string> z{"ORIG", std::string(240, 'y')};
  Array2<uint8_t> b;
  HeadersFromText(z, b);
  ASSERT_EQ(b.UBound(2), 2);
  EXPECT_EQ(HeaderText(b, 1), "ORIG" + std::string(229, ' '));
  EXPECT_EQ(HeaderText(b, 2), std::string(233, 'y'));
}

TEST(AttributeUpgrade, LegacyRecordsBecome233BytesWithTheTreePathDropped) {
  // Legacy layout: MEMBER 73/16, SUBCLASS1 89, SUBCLASS2 105, INDEX 121,
  // VARIABLE 137, VERBOSE 153/32, tree path 185/72, GRID 257.
  Array2<uint8_t> old = LegacyRecords({{{1, "ORIGIN-1"},
                                        {33, "SUMMARY"},
                                        {41, "SM3/DAY"},
                                        {57, "WELLS"},
                                        {73, "PRODUCER-16CHARS"},
                                        {89, "SUB1"},
                                        {105, "SUB2"},
                                        {121, "IDX"},
                                        {137, "WOPR"},
                                        {153, "OIL PRODUCTION RATE, 32 CHARS.."},
                                        {185, "WELLS\\PRODUCER\\WOPR"},
                                        {257, "LGR1"}},
                                       {{1, "ORIGIN-2"}, {137, "WWCT"}}});
  Array2<uint8_t> fresh;
  ASSERT_TRUE(Update2NewAttribs(LegacyAttConst(), old, fresh, 2));
  ASSERT_EQ(fresh.UBound(1), 233);
  ASSERT_EQ(fresh.UBound(2), 2);
  const std::string r1 = Text(fresh, 1);
  EXPECT_EQ(ExtractAttribute(ATT_ORIGIN, r1), "ORIGIN-1");
  EXPECT_EQ(ExtractAttribute(ATT_TYPE, r1), "SUMMARY");
  EXPECT_EQ(ExtractAttribute(ATT_UNITS, r1), "SM3/DAY");
  EXPECT_EQ(ExtractAttribute(ATT_CLASS, r1), "WELLS");
  EXPECT_EQ(ExtractAttribute(ATT_MEMBER, r1), "PRODUCER-16CHARS");
  EXPECT_EQ(ExtractAttribute(ATT_SUBCLASS1, r1), "SUB1");
  EXPECT_EQ(ExtractAttribute(ATT_SUBCLASS2, r1), "SUB2");
  EXPECT_EQ(ExtractAttribute(ATT_INDEX, r1), "IDX");
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, r1), "WOPR");
  EXPECT_EQ(ExtractAttribute(ATT_VERBOSE, r1), "OIL PRODUCTION RATE, 32 CHARS..");
  EXPECT_EQ(ExtractAttribute(GRID, r1), "LGR1");
  EXPECT_EQ(r1.find("WELLS\\PRODUCER"), std::string::npos);
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, Text(fresh, 2)), "WWCT");
}

TEST(AttributeUpgrade, NarrowerLegacyFieldsEndInNuls) {
  Array2<uint8_t> old = LegacyRecords({{{73, "ABCDEFGHIJKLMNOP"}, {153, std::string(32, 'v')}}});
  Array2<uint8_t> fresh;
  ASSERT_TRUE(Update2NewAttribs(LegacyAttConst(), old, fresh, 1));
  // MEMBER: 16 bytes copied to 73..88, then NULs to 112.
  for (int32_t i = 89; i <= 112; ++i) EXPECT_EQ(fresh(i, 1), 0) << i;
  // VERBOSE: 32 bytes to 177..208, then NULs to 216.
  for (int32_t i = 209; i <= 216; ++i) EXPECT_EQ(fresh(i, 1), 0) << i;
  // The working record starts as zeros: byte 233 is never written.
  EXPECT_EQ(fresh(233, 1), 0);
  EXPECT_EQ(ExtractAttribute(ATT_MEMBER, Text(fresh, 1)), "ABCDEFGHIJKLMNOP");
  EXPECT_EQ(ExtractAttribute(ATT_VERBOSE, Text(fresh, 1)), std::string(32, 'v'));
}

TEST(AttributeUpgrade, CurrentRecordsPassUnchanged) {
  Array2<uint8_t> cur(1, 233, 1, 1);
  cur.Fill(' ');
  std::memcpy(&cur(73, 1), std::string(40, 'm').data(), 40);
  std::memcpy(&cur(217, 1), "GRIDNAME", 8);
  Array2<uint8_t> fresh;
  ASSERT_TRUE(Update2NewAttribs(CurrentAttConst(), cur, fresh, 1));
  for (int32_t i = 1; i <= 232; ++i) EXPECT_EQ(fresh(i, 1), cur(i, 1)) << i;
}

TEST(AttributeUpgrade, AFieldRunningOutOfTheOldRecordIsOneTraceLine) {
  MessageLog::Shared().Clear();
  Array2<uint8_t> old(1, 100, 1, 1);  // shorter than the list says
  Array2<uint8_t> fresh;
  EXPECT_FALSE(Update2NewAttribs(LegacyAttConst(), old, fresh, 1));
  EXPECT_FALSE(fresh.IsAllocated());
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Subscript out of range (No.9) In [mxPackedHeaders (Code) (Update2NewAttribs)] ");
  MessageLog::Shared().Clear();
}

TEST(AttributeUpgrade, LegacyOnlyListRecordsOf32Bytes) {
  // Two legacy records: CLASS 16 + MEMBER 16.
  std::string flat = std::string("WELLS") + std::string(11, ' ') + "P1" + std::string(14, ' ') +
                     std::string("GROUPS") + std::string(10, ' ') + "G1" + std::string(14, ' ');
  Array<uint8_t> old(1, static_cast<int32_t>(flat.size()));
  std::memcpy(old.data(), flat.data(), flat.size());
  Array2<uint8_t> bOnly;
  ASSERT_TRUE(UpdateBONLY(2, LegacyAttConst(), old, bOnly));
  ASSERT_EQ(bOnly.UBound(1), 56);
  ASSERT_EQ(bOnly.UBound(2), 2);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&bOnly(1, 2)), 32), flat.substr(32, 32));
  for (int32_t i = 33; i <= 56; ++i) EXPECT_EQ(bOnly(i, 1), 0) << i;
}

TEST(AttributeUpgrade, CurrentOnlyListRecordsOf56Bytes) {
  std::string flat(112, ' ');
  flat.replace(0, 5, "WELLS");
  flat.replace(16, 2, "P1");
  flat.replace(56, 6, "GROUPS");
  Array<uint8_t> old(1, 112);
  std::memcpy(old.data(), flat.data(), 112);
  Array2<uint8_t> bOnly;
  ASSERT_TRUE(UpdateBONLY(2, CurrentAttConst(), old, bOnly));
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(bOnly.data()), 112), flat);
}
