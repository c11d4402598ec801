#include "vndata/persist/record_stream.h"

#include <gtest/gtest.h>

#include "tests/persist/persist_test_util.h"
#include "tests/support/scripted_host.h"

using namespace vndata;
using namespace vndata::persist_test;

namespace {

using Rec = RecordStreamReader::Record;

class RecordStreamTest : public RecordFileTest {
 protected:
  // A reader of the test level: "KNOWN" (INTE) into known, "<TEST" closes.
  RecordStreamReader Reader() {
    RecordStreamReader r("<TEST");
    r.On("INTE", "KNOWN", [this](Rec& rec) {
      ++nKnown;
      rec.ReadInteger(known);
    });
    return r;
  }
  bool Run(const RecordStreamReader& r) {
    RecordCodec codec;
    bool qOK = false;
    bool qResult = r.Run(codec, reader_, qOK);
    EXPECT_EQ(qResult, qOK);
    return qOK;
  }
  bool AtEnd() {
    int32_t p1 = 0, p2 = 0;
    bool qEOF = false;
    reader_.AtEndOfFile(p1, p2, qEOF);
    return qEOF;
  }

  int32_t known = 0;
  int32_t nKnown = 0;
};

TEST_F(RecordStreamTest, AKnownTypeWithAnUnknownKeywordLoadsAndItsPayloadIsDropped) {
  Write([](RecordCodec& c, RecordFile& f) {
    Ints(c, f, "SOMETHINGNEW", {1, 2, 3});
    Reals(c, f, "MOREDATA", {1.5f, 2.5f});
    Doubles(c, f, "DOUBLES", {3.0});
    Logicals(c, f, "FLAGS", {true, false});
    Bytes(c, f, "RAW", {1, 2, 3, 4, 5});
    Text(c, f, "NOTES", {"first", "second"});
    Ints(c, f, "KNOWN", {42});
    Tag(c, f, "<TEST");
  });
  EXPECT_TRUE(Run(Reader()));
  EXPECT_EQ(known, 42);
  EXPECT_TRUE(AtEnd());
}

TEST_F(RecordStreamTest, AnUnknownIntegerRecordOfCountZeroReadsNothing) {
  Write([](RecordCodec& c, RecordFile& f) {
    Ints(c, f, "EMPTYCOUNT", {});
    Ints(c, f, "KNOWN", {7});
    Tag(c, f, "<TEST");
  });
  EXPECT_TRUE(Run(Reader()));
  EXPECT_EQ(known, 7);
}

TEST_F(RecordStreamTest, ATagRecordWithAKnownKeywordReadsNoPayload) {
  Write([](RecordCodec& c, RecordFile& f) {
    Tag(c, f, "GROUP>");
    Ints(c, f, "KNOWN", {9});
    Tag(c, f, "<TEST");
  });
  RecordStreamReader r = Reader();
  int32_t nTags = 0;
  std::string zText = "untouched";
  r.On("CHAR", "GROUP>", [&](Rec& rec) {
    ++nTags;
    EXPECT_EQ(rec.count, 0);
    EXPECT_FALSE(rec.ReadText(zText));
  });
  EXPECT_TRUE(Run(r));
  EXPECT_EQ(nTags, 1);
  EXPECT_EQ(zText, "untouched");
  EXPECT_EQ(known, 9);
}

TEST_F(RecordStreamTest, KeywordsOfSixteenCharactersSurviveUnshortened) {
  Write([](RecordCodec& c, RecordFile& f) {
    Ints(c, f, "DSCREATIONMETHOD", {1});
    Ints(c, f, "DSUNITDATASOURCE", {2});
    Ints(c, f, "DQAMENDEDDATASET", {3});
    Tag(c, f, "<TEST");
  });
  RecordStreamReader r("<TEST");
  std::vector<std::string> seen;
  int32_t sum = 0;
  for (const char* z : {"DSCREATIONMETHOD", "DSUNITDATASOURCE", "DQAMENDEDDATASET"})
    r.On("INTE", z, [&](Rec& rec) {
      seen.push_back(rec.keyword);
      int32_t v = 0;
      rec.ReadInteger(v);
      sum += v;
    });
  EXPECT_TRUE(Run(r));
  EXPECT_EQ(seen,
            (std::vector<std::string>{"DSCREATIONMETHOD", "DSUNITDATASOURCE", "DQAMENDEDDATASET"}));
  EXPECT_EQ(sum, 6);
}

TEST_F(RecordStreamTest, AKeywordDifferingInCaseIsUnknown) {
  Write([](RecordCodec& c, RecordFile& f) {
    Ints(c, f, "known", {5});
    Ints(c, f, "Known", {6});
    Tag(c, f, "<TEST");
  });
  EXPECT_TRUE(Run(Reader()));
  EXPECT_EQ(nKnown, 0);
  EXPECT_EQ(known, 0);
}

TEST_F(RecordStreamTest, AKnownKeywordUnderAnotherTypeIsUnknown) {
  Write([](RecordCodec& c, RecordFile& f) {
    Reals(c, f, "KNOWN", {1.f, 2.f});
    Ints(c, f, "KNOWN", {8});
    Tag(c, f, "<TEST");
  });
  EXPECT_TRUE(Run(Reader()));
  EXPECT_EQ(nKnown, 1);
  EXPECT_EQ(known, 8);
}

TEST_F(RecordStreamTest, EndOfFileAfterACompleteRecordWithoutTheClosingTagIsFalse) {
  Write([](RecordCodec& c, RecordFile& f) { Ints(c, f, "KNOWN", {3}); });
  EXPECT_FALSE(Run(Reader()));
  EXPECT_EQ(known, 3);
}

TEST_F(RecordStreamTest, AnEmptyStreamIsFalse) {
  Write([](RecordCodec&, RecordFile&) {});
  EXPECT_FALSE(Run(Reader()));
}

TEST_F(RecordStreamTest, ACutHeaderIsFalse) {
  Write([](RecordCodec& c, RecordFile& f) {
    Ints(c, f, "KNOWN", {3});
    Tag(c, f, "<TEST");
  });
  Truncate(FileBytes().size() - 10);
  EXPECT_FALSE(Run(Reader()));
}

TEST_F(RecordStreamTest, TheLoopStopsAtTheClosingTagOfItsLevel) {
  Write([](RecordCodec& c, RecordFile& f) {
    Tag(c, f, "<TEST");
    Ints(c, f, "KNOWN", {4});
  });
  EXPECT_TRUE(Run(Reader()));
  EXPECT_EQ(nKnown, 0);
  // The stream stands directly behind the closing tag.
  RecordCodec codec;
  std::string k, t;
  int32_t n = 0;
  bool qOK = false;
  codec.ReadHeader(reader_, k, n, t, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(k, "KNOWN");
}

TEST_F(RecordStreamTest, AHandlerCanNoteTheEnd) {
  Write([](RecordCodec& c, RecordFile& f) {
    Ints(c, f, "KNOWN", {4});
    Ints(c, f, "KNOWN", {5});
  });
  RecordStreamReader r("<TEST");
  int32_t n = 0;
  r.On("INTE", "KNOWN", [&](Rec& rec) {
    ++n;
    rec.Skip();
    rec.NoteEnd();
  });
  EXPECT_TRUE(Run(r));
  EXPECT_EQ(n, 1);
}

TEST_F(RecordStreamTest, AMessageRecordConsumesItsHeaderOnly) {
  std::vector<uint8_t> b;
  RawHeader(b, "STARTSOL", 0, "MESS");
  RawHeader(b, "KNOWN", 1, "INTE");
  RawInts(b, {11});
  RawHeader(b, "<TEST", 0, "CHAR");
  WriteRaw(b);
  EXPECT_TRUE(Run(Reader()));
  EXPECT_EQ(known, 11);
}

TEST_F(RecordStreamTest, ARecordOfAForeignTypeConsumesItsHeaderOnly) {
  std::vector<uint8_t> b;
  RawHeader(b, "ODDONE", 0, "XXXX");
  RawHeader(b, "KNOWN", 1, "INTE");
  RawInts(b, {12});
  RawHeader(b, "<TEST", 0, "CHAR");
  WriteRaw(b);
  EXPECT_TRUE(Run(Reader()));
  EXPECT_EQ(known, 12);
}

TEST_F(RecordStreamTest, AForeignTypeWithAPayloadMisreadsThePayloadAsTheNextHeader) {
  std::vector<uint8_t> b;
  RawHeader(b, "ODDONE", 1, "XXXX");
  RawInts(b, {1});
  RawHeader(b, "KNOWN", 1, "INTE");
  RawInts(b, {13});
  RawHeader(b, "<TEST", 0, "CHAR");
  WriteRaw(b);
  EXPECT_FALSE(Run(Reader()));
  EXPECT_EQ(nKnown, 0);
}

TEST_F(RecordStreamTest, AnUnknownHandlerReplacesTheSkipRuleForItsType) {
  Write([](RecordCodec& c, RecordFile& f) {
    Bytes(c, f, "OTHER", {1, 2});
    Bytes(c, f, "THIRD", {3});
    Tag(c, f, "<TEST");
  });
  RecordStreamReader r("<TEST");
  std::vector<std::string> seen;
  r.OnUnknown("BYTE", [&](Rec& rec) {
    seen.push_back(rec.keyword);
    Array<int16_t> v;
    rec.ReadLogicals(v);  // a byte payload read through the logical read
  });
  EXPECT_TRUE(Run(r));
  EXPECT_EQ(seen, (std::vector<std::string>{"OTHER", "THIRD"}));
}

class CountingContainer : public ProgressContainer {
 public:
  void Tick() override { ++ticks; }
  int32_t ticks = 0;
};

TEST_F(RecordStreamTest, EveryTenthRecordTicks) {
  Write([](RecordCodec& c, RecordFile& f) {
    for (int32_t i = 0; i < 24; ++i) Ints(c, f, "FILLER", {i});
    Tag(c, f, "<TEST");
  });
  auto container = std::make_shared<CountingContainer>();
  SetProgressContainer(container);
  EXPECT_TRUE(Run(Reader()));
  EXPECT_EQ(container->ticks, 2);  // records 10 and 20 of 25
  SetProgressContainer(nullptr);
}

TEST_F(RecordStreamTest, YieldingAfterEachRecordStopsWhenTheHostCancels) {
  Write([](RecordCodec& c, RecordFile& f) {
    for (int32_t i = 0; i < 5; ++i) Ints(c, f, "KNOWN", {i + 1});
    Tag(c, f, "<TEST");
  });
  auto host = std::make_shared<test_support::ScriptedHost>();
  host->CancelAtYield(3);
  test_support::ScopedHost installed(host);
  RecordStreamReader r = Reader();
  r.SetYieldAfterEachRecord(true);
  EXPECT_FALSE(Run(r));
  EXPECT_EQ(host->nYields, 3);
  EXPECT_EQ(known, 3);
}

TEST_F(RecordStreamTest, WithoutTheYieldOptionTheHostIsNotCalled) {
  Write([](RecordCodec& c, RecordFile& f) {
    Ints(c, f, "KNOWN", {1});
    Tag(c, f, "<TEST");
  });
  auto host = std::make_shared<test_support::ScriptedHost>();
  test_support::ScopedHost installed(host);
  EXPECT_TRUE(Run(Reader()));
  EXPECT_EQ(host->nYields, 0);
}

}  // namespace
