#include "vndata/platform/record_layout.h"
#include "vndata/platform/internal/record_bytes.h"

#include <gtest/gtest.h>

#include <vector>

using namespace vndata;
using namespace vndata::record_bytes;

namespace {

TEST(RecordLayout, TypeNamesParseExactlyAndCaseSensitively) {
  for (RecordType t : {RecordType::Inte, RecordType::Real, RecordType::Doub, RecordType::Logi,
                       RecordType::Char, RecordType::Byte, RecordType::Mess}) {
    EXPECT_EQ(ParseRecordType(RecordTypeName(t)), t);
  }
  EXPECT_EQ(ParseRecordType("inte"), RecordType::None);
  EXPECT_EQ(ParseRecordType("INT"), RecordType::None);
  EXPECT_EQ(ParseRecordType("INTEG"), RecordType::None);
  EXPECT_EQ(ParseRecordType("C008"), RecordType::None);
  EXPECT_STREQ(RecordTypeName(RecordType::None), "");
}

TEST(RecordLayout, ValueWidthsAreThoseOfTheLayout) {
  EXPECT_EQ(RecordValueWidth(RecordType::Inte), 4);
  EXPECT_EQ(RecordValueWidth(RecordType::Real), 4);
  EXPECT_EQ(RecordValueWidth(RecordType::Doub), 8);
  EXPECT_EQ(RecordValueWidth(RecordType::Logi), 4);
  EXPECT_EQ(RecordValueWidth(RecordType::Byte), 1);
  EXPECT_EQ(RecordValueWidth(RecordType::Char), 8);
  EXPECT_EQ(RecordValueWidth(RecordType::Mess), 0);
  EXPECT_EQ(kStoreHeaderBytes, 24);
  EXPECT_EQ(kSimulatorHeaderBytes, 16);
}

TEST(RecordLayout, BigEndianWordsPutTheHighByteFirst) {
  uint8_t b[4];
  PutBigEndian32(b, 0x01020304);
  EXPECT_EQ(b[0], 1);
  EXPECT_EQ(b[3], 4);
  EXPECT_EQ(GetBigEndian32(b), 0x01020304);
  PutBigEndian32(b, -2);
  EXPECT_EQ(b[0], 0xFF);
  EXPECT_EQ(b[3], 0xFE);
  EXPECT_EQ(GetBigEndian32(b), -2);
}

// Every instruction path, every length around the vector widths, and both
// an aligned and an unaligned start.
TEST(RecordLayout, SwapsReverseEveryValueOnEveryPath) {
  for (SwapPath path : {SwapPath::Best, SwapPath::Sse2, SwapPath::Scalar}) {
    SetSwapPathForTesting(path);
    for (int32_t w : {4, 8}) {
      for (std::size_t n = 0; n <= 70; ++n) {
        for (std::size_t offset : {0u, 1u}) {
          std::vector<uint8_t> src(n * w + offset), dst(n * w + offset, 0xEE);
          for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint8_t>(i * 7 + 3);
          CopySwapped(dst.data() + offset, src.data() + offset, n, w);
          std::vector<uint8_t> inPlace = src;
          SwapInPlace(inPlace.data() + offset, n, w);
          for (std::size_t v = 0; v < n; ++v) {
            for (int32_t k = 0; k < w; ++k) {
              uint8_t want = src[offset + v * w + static_cast<std::size_t>(w - 1 - k)];
              ASSERT_EQ(dst[offset + v * w + k], want) << "path " << static_cast<int>(path);
              ASSERT_EQ(inPlace[offset + v * w + k], want);
            }
          }
        }
      }
    }
  }
  SetSwapPathForTesting(SwapPath::Best);
}

TEST(RecordLayout, WidthOneIsAPlainCopy) {
  std::vector<uint8_t> src = {1, 2, 3}, dst(3);
  CopySwapped(dst.data(), src.data(), 3, 1);
  EXPECT_EQ(dst, src);
  SwapInPlace(src.data(), 3, 1);
  EXPECT_EQ(src, (std::vector<uint8_t>{1, 2, 3}));
}

}  // namespace
