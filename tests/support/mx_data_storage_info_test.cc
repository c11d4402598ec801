// The library's version text, the start of its log and its shut-down.
#include "vndata/support/mx_data_storage_info.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

#include "vndata/platform/message_log.h"
#include "vndata/platform/module_state.h"

namespace vndata {
namespace {

class StorageInfoTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::ReleaseShared(); }
  void TearDown() override { MessageLog::ReleaseShared(); }
};

TEST_F(StorageInfoTest, VersionTextIsTitleNumbersAndTheLibraryFileDate) {
  mxDataStorageInfo info;
  const std::string zVersion = info.get_DLLVersion();
  // The file this code was loaded from exists, so its date follows.
  ASSERT_TRUE(std::filesystem::exists(mxDataStorageInfo::LibraryFileName()));
  EXPECT_TRUE(std::regex_match(zVersion, std::regex(R"(vndata63 v6\.3\.2437 \S.*)"))) << zVersion;
  EXPECT_EQ(zVersion.find("Unknown Date"), std::string::npos);
}

TEST_F(StorageInfoTest, AnEmptyLogNameBecomesTheHostsDefaultAndGoesBack) {
  mxDataStorageInfo info;
  std::string zLog;
  info.get_DLLVersion(zLog, "", false);
  // The test program's own name, as a host's.
  EXPECT_EQ(zLog, "tests_support.txt");
  EXPECT_EQ(MessageLog::Shared().LogFileName(), "tests_support.txt");
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());  // no start-up message, no line
}

TEST_F(StorageInfoTest, AStartupMessageWritesOneFlaggedLine) {
  mxDataStorageInfo info;
  std::string zLog = "given.txt";
  const std::string zVersion = info.get_DLLVersion(zLog, "Plotter starting");
  EXPECT_EQ(zLog, "given.txt");
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0], zVersion + " Plotter starting: OK");
  EXPECT_TRUE(MessageLog::Shared().Flags()[0]);
}

TEST_F(StorageInfoTest, CloseDownLogsItsLineAndLeavesAFreshModule) {
  const auto dir = std::filesystem::temp_directory_path() / "vndata_storage_info_test";
  std::filesystem::create_directories(dir);
  const std::string zFile = (dir / "close.txt").string();
  std::filesystem::remove(zFile);
  mxDataStorageInfo info;
  std::string zLog = zFile;
  info.get_DLLVersion(zLog, "", true);
  SharedStringTools();  // a tool in use
  ASSERT_TRUE(SharedToolsAlive());
  info.CloseDown();
  EXPECT_FALSE(SharedToolsAlive());
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
  EXPECT_EQ(MessageLog::Shared().LogFileName(), "");
  std::ifstream in(zFile);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  EXPECT_NE(text.find("vndata63 v6.3.2437 Close Down"), std::string::npos) << text;
  // Twice does no harm.
  info.CloseDown();
  EXPECT_FALSE(SharedToolsAlive());
  std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace vndata
