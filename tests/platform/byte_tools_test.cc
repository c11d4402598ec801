#include "vndata/platform/byte_tools.h"

#include <gtest/gtest.h>

#include <string>

#include "vndata/platform/array_tools.h"

using namespace vndata;

namespace {
// A packed attribute record: 233 bytes of blanks.
Array<uint8_t> BlankRecord() {
  Array<uint8_t> b;
  ArrayTools::Size(b, 233, uint8_t{' '});
  return b;
}
}  // namespace

TEST(ByteToolsPut, TextGoesIntoItsPositionsPaddedWithBlanks) {
  Array<uint8_t> b = BlankRecord();
  ByteTools::PutText(b, 1, 32, "FIELD");     // ORIGIN at 1, 32 wide
  ByteTools::PutText(b, 33, 8, "Summary");   // TYPE at 33, 8 wide
  ByteTools::PutText(b, 161, 16, "WOPR");    // VARIABLE at 161, 16 wide
  EXPECT_EQ(ByteTools::GetText(b, 1, 32), "FIELD" + std::string(27, ' '));
  EXPECT_EQ(ByteTools::GetText(b, 33, 8), "Summary ");
  EXPECT_EQ(ByteTools::GetText(b, 161, 16), "WOPR            ");
  EXPECT_EQ(b(41), ' ');
  EXPECT_EQ(b(160), ' ');
  EXPECT_EQ(b(177), ' ');
}

TEST(ByteToolsPut, LongerTextIsCutToTheWidth) {
  Array<uint8_t> b = BlankRecord();
  ByteTools::PutText(b, 33, 8, "SOLUTIONXYZ");
  EXPECT_EQ(ByteTools::GetText(b, 33, 8), "SOLUTION");
  EXPECT_EQ(b(41), ' ');
}

TEST(ByteToolsPut, PadByteMayBeChosen) {
  uint8_t raw[6] = {'x', 'x', 'x', 'x', 'x', 'x'};
  ByteTools::PutText(raw, 4, "AB", 0);
  EXPECT_EQ(raw[0], 'A');
  EXPECT_EQ(raw[1], 'B');
  EXPECT_EQ(raw[2], 0);
  EXPECT_EQ(raw[3], 0);
  EXPECT_EQ(raw[4], 'x');
}

TEST(ByteToolsPut, FieldRunningPastTheArrayIsFault9AndWritesNothing) {
  Array<uint8_t> b;
  ArrayTools::Size(b, 10, uint8_t{'.'});
  try {
    ByteTools::PutText(b, 5, 8, "ABCDEFGH");
    FAIL() << "no fault";
  } catch (const RuntimeFault& f) {
    EXPECT_EQ(f.Number(), 9);
  }
  EXPECT_EQ(ByteTools::ToText(b), "..........");
  EXPECT_THROW((void)ByteTools::GetText(b, 0, 2), RuntimeFault);
}

TEST(ByteToolsGet, TextComesBackAsItStands) {
  Array<uint8_t> b = ByteTools::FromText(std::string("  P1  \0X", 8));
  EXPECT_EQ(ByteTools::GetText(b, 1, 8), std::string("  P1  \0X", 8));
}

TEST(ByteToolsGet, TrimmedTextEndsAtNulAndLosesTrailingBlanks) {
  const uint8_t a[8] = {' ', 'P', '1', ' ', ' ', 0, 'Z', 'Z'};
  EXPECT_EQ(ByteTools::GetTrimmedText(a, 8), " P1");
  const uint8_t c[4] = {'W', 'O', 'P', 'R'};
  EXPECT_EQ(ByteTools::GetTrimmedText(c, 4), "WOPR");
  EXPECT_EQ(ByteTools::GetTrimmedText(c, 0), "");
}

TEST(ByteToolsGet, ZeroWidthGivesTheEmptyText) {
  Array<uint8_t> b = ByteTools::FromText("AB");
  EXPECT_EQ(ByteTools::GetText(b, 1, 0), "");
}

TEST(ByteToolsConvert, TextAndByteArrayRoundTrip) {
  Array<uint8_t> b = ByteTools::FromText("MK32");
  EXPECT_EQ(b.LBound(), 1);
  EXPECT_EQ(b.UBound(), 4);
  EXPECT_EQ(b(1), 'M');
  EXPECT_EQ(b(4), '2');
  EXPECT_EQ(ByteTools::ToText(b), "MK32");
}

TEST(ByteToolsConvert, EmptyTextIsAnUnallocatedArray) {
  EXPECT_FALSE(ByteTools::FromText("").IsAllocated());
  EXPECT_EQ(ByteTools::ToText(Array<uint8_t>()), "");
}

TEST(ByteToolsConvert, RecordRoundTripKeepsEveryField) {
  Array<uint8_t> b = BlankRecord();
  ByteTools::PutText(b, 1, 32, "P1");
  ByteTools::PutText(b, 57, 16, "WELLS");
  ByteTools::PutText(b, 73, 40, "P1");
  ByteTools::PutText(b, 217, 16, "LGR1");
  std::string rec = ByteTools::ToText(b);
  ASSERT_EQ(rec.size(), 233u);
  Array<uint8_t> back = ByteTools::FromText(rec);
  EXPECT_EQ(ByteTools::GetTrimmedText(&back(57), 16), "WELLS");
  EXPECT_EQ(ByteTools::GetTrimmedText(&back(73), 40), "P1");
  EXPECT_EQ(ByteTools::GetTrimmedText(&back(217), 16), "LGR1");
}
