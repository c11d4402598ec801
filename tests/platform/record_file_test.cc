#include "vndata/platform/record_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>

#include "tests/platform/record_test_util.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/record_codec.h"

using namespace vndata;
using namespace vndata::record_test;

namespace {

class CountingContainer : public ProgressContainer {
 public:
  void Tick() override { ++ticks; }
  int ticks = 0;
};

}  // namespace

TEST(RecordFile, OpeningAMissingFileGivesFalseAndLeavesItClosed) {
  TempDir dir;
  RecordFile f;
  bool qOK = true;
  f.OpenForRead(dir.File("missing.bin"), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(f.IsOpen());
  EXPECT_EQ(f.Mode(), RecordFileMode::Closed);
  EXPECT_EQ(f.LastError(), "cannot open the file");
  qOK = true;
  f.OpenForRandomRead(dir.File("missing.bin"), qOK);
  EXPECT_FALSE(qOK);
}

TEST(RecordFile, AFolderIsNotOpenedForReading) {
  TempDir dir;
  RecordFile f;
  bool qOK = true;
  f.OpenForRead(dir.Path().string(), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(f.IsOpen());
  EXPECT_EQ(f.LastError(), "not a regular file");
}

TEST(RecordFile, WritingIntoAMissingFolderGivesFalse) {
  TempDir dir;
  RecordFile f;
  bool qOK = true;
  f.OpenForWrite(dir.File("no/such/folder/out.bin"), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(f.IsOpen());
  EXPECT_EQ(f.LastError(), "cannot create the file");
}

TEST(RecordFile, OpenForWriteReplacesAnExistingFile) {
  TempDir dir;
  std::string name = dir.File("old.bin");
  WriteAllBytes(name, std::vector<uint8_t>(100, 7));
  RecordFile f;
  bool qOK = false;
  f.OpenForWrite(name, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(f.Mode(), RecordFileMode::Write);
  EXPECT_EQ(f.FileSize(), 0);
  f.Close();
  EXPECT_TRUE(ReadAllBytes(name).empty());
}

TEST(RecordFile, FileNameIsTheNameGivenToOpen) {
  TempDir dir;
  std::string name = dir.File("named.bin");
  RecordFile f;
  EXPECT_EQ(f.get_FileName(), "");
  bool qOK = false;
  f.OpenForWrite(name, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(f.get_FileName(), name);
  f.Close();
  EXPECT_EQ(f.get_FileName(), name);
}

TEST(RecordFile, ModesAreTheOnesAskedFor) {
  TempDir dir;
  std::string name = dir.File("m.bin");
  WriteAllBytes(name, {1, 2, 3});
  RecordFile f;
  bool qOK = false;
  f.OpenForRead(name, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(f.Mode(), RecordFileMode::Read);
  EXPECT_EQ(f.FileSize(), 3);
  f.OpenForRandomRead(name, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(f.Mode(), RecordFileMode::RandomRead);
  EXPECT_EQ(f.Position(), 0);
}

TEST(RecordFile, AtEndOfFileOfAnEmptyFileIsTrueAtPositionZero) {
  TempDir dir;
  std::string name = dir.File("empty.bin");
  WriteAllBytes(name, {});
  RecordFile f;
  bool qOK = false;
  f.OpenForRead(name, qOK);
  ASSERT_TRUE(qOK);
  int32_t p1 = 99, p2 = 99;
  bool qEOF = false;
  f.AtEndOfFile(p1, p2, qEOF);
  EXPECT_TRUE(qEOF);
  EXPECT_EQ(p1, 0);
  EXPECT_EQ(p2, 0);
}

TEST(RecordFile, AtEndOfFileTurnsTrueAfterTheLastRecord) {
  TempDir dir;
  std::string name = dir.File("two.bin");
  RecordCodec codec;
  {
    RecordFile w;
    bool qOK = false;
    w.OpenForWrite(name, qOK);
    codec.WriteHeader(w, "A", 0, "CHAR", qOK);
    codec.WriteHeader(w, "B", 0, "CHAR", qOK);
    ASSERT_TRUE(qOK);
  }
  RecordFile f;
  bool qOK = false;
  f.OpenForRead(name, qOK);
  ASSERT_TRUE(qOK);
  std::string k, t;
  int32_t n = 0, p1 = 0, p2 = 0;
  bool qEOF = true;
  codec.ReadHeader(f, k, n, t, qOK);
  f.AtEndOfFile(p1, p2, qEOF);
  EXPECT_FALSE(qEOF);
  EXPECT_EQ(p1, 32);  // 4 + 24 + 4
  EXPECT_EQ(p2, 0);
  codec.ReadHeader(f, k, n, t, qOK);
  f.AtEndOfFile(p1, p2, qEOF);
  EXPECT_TRUE(qEOF);
  EXPECT_EQ(p1, 64);
}

TEST(RecordFile, AWritingOrClosedFileIsAtItsEnd) {
  TempDir dir;
  RecordFile f;
  int32_t p1 = 0, p2 = 0;
  bool qEOF = false;
  f.AtEndOfFile(p1, p2, qEOF);
  EXPECT_TRUE(qEOF);
  bool qOK = false;
  f.OpenForWrite(dir.File("w.bin"), qOK);
  ASSERT_TRUE(qOK);
  qEOF = false;
  f.AtEndOfFile(p1, p2, qEOF);
  EXPECT_TRUE(qEOF);
}

TEST(RecordFile, PositionsBeyondFourGigabytesUseBothWords) {
  TempDir dir;
  std::string name = dir.File("sparse.bin");
  // A sparse file of 5 GiB with one header record at 2^32 + 16.
  const int64_t at = (int64_t{1} << 32) + 16;
  {
    std::vector<uint8_t> rec;
    PutRecord(rec, HeaderBody("FAR", 16, 0, "CHAR"));
    FILE* fp = std::fopen(name.c_str(), "wb");
    ASSERT_NE(fp, nullptr);
    ASSERT_EQ(ftruncate(fileno(fp), (int64_t{5} << 30)), 0);
    ASSERT_EQ(fseeko(fp, at, SEEK_SET), 0);
    ASSERT_EQ(std::fwrite(rec.data(), 1, rec.size(), fp), rec.size());
    std::fclose(fp);
  }
  RecordFile f;
  bool qOK = false;
  f.OpenForRandomRead(name, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(f.FileSize(), int64_t{5} << 30);
  f.SetPosition(16, 1, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(f.Position(), at);
  RecordCodec codec;
  std::string k, t;
  int32_t n = -1;
  codec.ReadHeader(f, k, n, t, qOK);
  ASSERT_TRUE(qOK) << f.LastError();
  EXPECT_EQ(k, "FAR");
  int32_t p1 = 0, p2 = 0;
  bool qEOF = true;
  f.AtEndOfFile(p1, p2, qEOF);
  EXPECT_FALSE(qEOF);
  EXPECT_EQ(p1, 16 + 32);
  EXPECT_EQ(p2, 1);
}

TEST(RecordFile, TheLowWordIsTakenUnsigned) {
  TempDir dir;
  std::string name = dir.File("sparse3g.bin");
  {
    FILE* fp = std::fopen(name.c_str(), "wb");
    ASSERT_NE(fp, nullptr);
    ASSERT_EQ(ftruncate(fileno(fp), int64_t{3} << 30), 0);
    std::fclose(fp);
  }
  RecordFile f;
  bool qOK = false;
  f.OpenForRandomRead(name, qOK);
  ASSERT_TRUE(qOK);
  // 0x80000000 as a signed word is negative; as a position it is 2 GiB.
  f.SetPosition(static_cast<int32_t>(0x80000000u), 0, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(f.Position(), int64_t{1} << 31);
}

TEST(RecordFile, SetPositionOutsideTheFileOrWhileWritingIsRefused) {
  TempDir dir;
  std::string name = dir.File("p.bin");
  WriteAllBytes(name, std::vector<uint8_t>(10, 0));
  RecordFile f;
  bool qOK = false;
  f.OpenForRead(name, qOK);
  ASSERT_TRUE(qOK);
  f.SetPosition(int64_t{11}, qOK);
  EXPECT_FALSE(qOK);
  f.SetPosition(int64_t{-1}, qOK);
  EXPECT_FALSE(qOK);
  f.SetPosition(int64_t{10}, qOK);
  EXPECT_TRUE(qOK);
  f.OpenForWrite(dir.File("q.bin"), qOK);
  ASSERT_TRUE(qOK);
  f.SetPosition(int64_t{0}, qOK);
  EXPECT_FALSE(qOK);
}

TEST(RecordFile, ProgressTickGoesToTheThreadsProgressContainer) {
  auto container = std::make_shared<CountingContainer>();
  auto saved = Module().pctContainer;
  Module().pctContainer = container;
  RecordFile f;
  f.ProgressTick();
  f.ProgressTick();
  EXPECT_EQ(container->ticks, 2);
  Module().pctContainer = nullptr;
  f.ProgressTick();  // no container: nothing happens
  EXPECT_EQ(container->ticks, 2);
  Module().pctContainer = saved;
}

TEST(RecordFile, SettingsAreKeptAcrossCloseAndReopen) {
  TempDir dir;
  std::string name = dir.File("s.bin");
  WriteAllBytes(name, {0});
  RecordFile f;
  for (int i = 0; i <= 5; ++i) EXPECT_FALSE(f.FileOption(i));
  EXPECT_EQ(f.UnitSize(), 4);
  EXPECT_EQ(f.RecordOption(), 0);
  EXPECT_FALSE(f.EclipseFile());
  f.SetFileOption2(true);
  f.SetFileOption4(true);
  f.SetUnitSize(8);
  f.SetRecordOption(3);
  f.SetEclipseFile(true);
  bool qOK = false;
  f.OpenForRead(name, qOK);
  ASSERT_TRUE(qOK);
  f.Close();
  f.OpenForRandomRead(name, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_FALSE(f.FileOption(1));
  EXPECT_TRUE(f.FileOption(2));
  EXPECT_FALSE(f.FileOption(3));
  EXPECT_TRUE(f.FileOption(4));
  EXPECT_EQ(f.UnitSize(), 8);
  EXPECT_EQ(f.RecordOption(), 3);
  EXPECT_TRUE(f.EclipseFile());
  f.SetFileOption1(true);
  f.SetFileOption3(true);
  EXPECT_TRUE(f.FileOption(1));
  EXPECT_TRUE(f.FileOption(3));
}

TEST(RecordFile, TheLastReferenceClosesAndFlushesTheFile) {
  TempDir dir;
  std::string name = dir.File("shared.bin");
  auto f = std::make_shared<RecordFile>();
  bool qOK = false;
  f->OpenForWrite(name, qOK);
  ASSERT_TRUE(qOK);
  RecordCodec codec;
  codec.WriteHeader(*f, "KEY", 0, "CHAR", qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(f->FileSize(), 32);
  f.reset();
  EXPECT_EQ(ReadAllBytes(name).size(), 32u);
}

TEST(RecordFile, CloseTwiceIsHarmlessAndReportsSuccess) {
  TempDir dir;
  RecordFile f;
  bool qOK = false;
  f.OpenForWrite(dir.File("c.bin"), qOK);
  ASSERT_TRUE(qOK);
  f.Close(qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(f.IsOpen());
  f.Close(qOK);
  EXPECT_TRUE(qOK);
}

TEST(RecordFile, OpeningAgainClosesTheFormerFile) {
  TempDir dir;
  std::string first = dir.File("first.bin");
  RecordFile f;
  bool qOK = false;
  f.OpenForWrite(first, qOK);
  RecordCodec codec;
  codec.WriteHeader(f, "X", 0, "MESS", qOK);
  f.OpenForWrite(dir.File("second.bin"), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ReadAllBytes(first).size(), 32u);
}
