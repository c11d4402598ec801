#include "vndata/platform/message_log.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace vndata;

namespace {
class MessageLogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    MessageLog::Shared().Clear();
    dir_ = std::filesystem::temp_directory_path() /
           ("vndata_log_" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    std::filesystem::create_directories(dir_);
  }
  void TearDown() override {
    MessageLog& log = MessageLog::Shared();
    log.SetLogFile("", false, "");
    log.SetCallback(nullptr);
    log.Clear();
    std::filesystem::remove_all(dir_);
  }
  std::string PathOf(const std::string& name) const { return (dir_ / name).string(); }
  static std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
  }

  std::filesystem::path dir_;
};
}  // namespace

TEST_F(MessageLogTest, KeepsLinesAndFlagsInOrder) {
  MessageLog& log = MessageLog::Shared();
  log.Add("Memory squeeze data.bin", false);
  log.Add("Error:Overflow (No.6) In [mxDataSet  (SetAttributes)] ", true);
  ASSERT_EQ(log.Lines().size(), 2u);
  EXPECT_EQ(log.Lines()[0], "Memory squeeze data.bin");
  EXPECT_EQ(log.Lines()[1], "Error:Overflow (No.6) In [mxDataSet  (SetAttributes)] ");
  ASSERT_EQ(log.Flags().size(), 2u);
  EXPECT_FALSE(log.Flags()[0]);
  EXPECT_TRUE(log.Flags()[1]);
}

TEST_F(MessageLogTest, ClearEmptiesTheKeptLines) {
  MessageLog& log = MessageLog::Shared();
  log.Add("x", true);
  log.Clear();
  EXPECT_TRUE(log.Lines().empty());
  EXPECT_TRUE(log.Flags().empty());
}

TEST_F(MessageLogTest, SharedIsOneLogPerThread) {
  MessageLog& mine = MessageLog::Shared();
  EXPECT_EQ(&mine, &MessageLog::Shared());
  mine.Add("main thread", true);
  std::size_t seenThere = 99;
  const MessageLog* other = nullptr;
  std::thread t([&] {
    other = &MessageLog::Shared();
    seenThere = MessageLog::Shared().Lines().size();
    MessageLog::Shared().Add("worker thread", true);
  });
  t.join();
  EXPECT_NE(other, &mine);
  EXPECT_EQ(seenThere, 0u);
  ASSERT_EQ(mine.Lines().size(), 1u);
  EXPECT_EQ(mine.Lines()[0], "main thread");
}

TEST_F(MessageLogTest, LogFileStartsWithTitleAndGetsEveryLine) {
  MessageLog& log = MessageLog::Shared();
  const std::string path = PathOf("run.txt");
  log.SetLogFile(path, true, "MXPLOT data");
  EXPECT_EQ(log.LogFileName(), path);
  log.Add("Using scratch file MX1.tmp", false);
  log.Add("Error:Type mismatch (No.13) In [mxDataStore (Code) (Search)] ", true);
  EXPECT_EQ(ReadAll(path),
            "MXPLOT data\n"
            "Using scratch file MX1.tmp\n"
            "Error:Type mismatch (No.13) In [mxDataStore (Code) (Search)] \n");
  EXPECT_EQ(log.Lines().size(), 2u);
}

TEST_F(MessageLogTest, LogFileIsAppendedToNotReplaced) {
  const std::string path = PathOf("kept.txt");
  {
    std::ofstream out(path, std::ios::binary);
    out << "earlier run\n";
  }
  MessageLog& log = MessageLog::Shared();
  log.SetLogFile(path, true, "");
  log.Add("Removing scratch file MX1.tmp", false);
  EXPECT_EQ(ReadAll(path), "earlier run\nRemoving scratch file MX1.tmp\n");
}

TEST_F(MessageLogTest, NoFileWrittenWhenLoggingToFileIsOff) {
  const std::string path = PathOf("off.txt");
  MessageLog& log = MessageLog::Shared();
  log.SetLogFile(path, false, "Title");
  log.Add("line", true);
  EXPECT_FALSE(std::filesystem::exists(path));
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "line");
}

TEST_F(MessageLogTest, CallbackReceivesEachLineWithItsFlag) {
  MessageLog& log = MessageLog::Shared();
  std::vector<std::pair<std::string, bool>> got;
  log.SetCallback([&](const std::string& z, bool q) { got.emplace_back(z, q); });
  log.Add("first", true);
  log.Add("second", false);
  ASSERT_EQ(got.size(), 2u);
  EXPECT_EQ(got[0].first, "first");
  EXPECT_TRUE(got[0].second);
  EXPECT_EQ(got[1].first, "second");
  EXPECT_FALSE(got[1].second);
  log.SetCallback(nullptr);
  log.Add("third", true);
  EXPECT_EQ(got.size(), 2u);
  EXPECT_EQ(log.Lines().size(), 3u);
}

TEST_F(MessageLogTest, LinesAreKeptByteForByteIncludingTrailingBlank) {
  MessageLog& log = MessageLog::Shared();
  const std::string line = "Error:Subscript out of range (No.9) In [mxDataSet  (SetAttributes)] ";
  log.Add(line, true);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], line);
  EXPECT_EQ(log.Lines()[0].back(), ' ');
}
