// The store's text export: one data set by position, the dump of the whole
// store through the save dialog, and the text reader's settings.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/dataset/dataset_test_util.h"
#include "tests/store/store_fixtures.h"
#include "tests/support/scripted_host.h"

namespace vndata {
namespace {

using test_support::ScriptedHost;
using testutil::Attrs;

class StoreTextTest : public StoreTest {
 protected:
  void SetUp() override {
    StoreTest::SetUp();
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    dir_ = std::filesystem::temp_directory_path() / ("vndata_store_text_" + std::string(info->name()));
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_);
    host_ = std::make_shared<ScriptedHost>();
    SetHostServices(host_);
  }
  void TearDown() override {
    std::filesystem::remove_all(dir_);
    StoreTest::TearDown();
  }

  std::string Path(const std::string& zName) const { return (dir_ / zName).string(); }
  static std::string Read(const std::string& zFile) {
    std::ifstream in(zFile, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
  }

  // One row, one column "FOPR" of value v, from file zFile.
  static std::shared_ptr<mxDataSet> OneValue(const std::string& zOrigin, float v,
                                             const std::string& zFile) {
    auto ds = std::make_shared<mxDataSet>();
    ds->let_Origin(zOrigin);
    ds->let_FileName(zFile);
    Array2<float> values(1, 1, 1, 1);
    values(1, 1) = v;
    bool qOK = false;
    ds->bInitialiseFrom2d(values,
                          testutil::Headers({Attrs{{ATT_ORIGIN, zOrigin}, {ATT_CLASS, "FIELD"},
                                                   {ATT_VARIABLE, "FOPR"}, {ATT_UNITS, "SM3/DAY"}}}),
                          qOK);
    EXPECT_TRUE(qOK);
    return ds;
  }

  std::filesystem::path dir_;
  std::shared_ptr<ScriptedHost> host_;
};

TEST_F(StoreTextTest, WriteTextFileNamesTheDataSetAndWritesIt) {
  store.AddItem(OneValue("CASE", 2.5f, "C:\\runs\\CASE.UNSMRY"));
  host_->yesNoAnswers.push_back(false);
  store.WriteTextFile(1, Path("one.csv"));
  EXPECT_EQ(Read(Path("one.csv")), "FIELD\\FOPR\r\nSM3/DAY\r\n\r\n2.5\r\n");
  EXPECT_EQ(store.get_FileName(1), Path("one.csv"));
  EXPECT_EQ(store.get_Origin(1), "CASE");
}

TEST_F(StoreTextTest, WriteTextFileWithAnOriginRenamesTheDataSetAndItsColumns) {
  store.AddItem(OneValue("CASE", 2.5f, ""));
  host_->yesNoAnswers.push_back(false);
  store.WriteTextFile(1, Path("renamed.csv"), "NEWNAME");
  EXPECT_EQ(store.get_Origin(1), "NEWNAME");
  std::string z;
  store.DSGetAttribute(1, 1, ATT_ORIGIN, z);
  EXPECT_EQ(z, "NEWNAME");
  const auto* message = host_->LastCall("InformationMessage");
  ASSERT_NE(message, nullptr);
  EXPECT_EQ(message->zArgs[1], Path("renamed.csv") +
                                   " Saved.\r\nOnly the selected data set (NEWNAME\\DATA)\r\n"
                                   "has been saved in ASCII format");
}

TEST_F(StoreTextTest, WriteTextFileWithoutANameOrPositionDoesNothing) {
  store.AddItem(OneValue("CASE", 2.5f, "kept.UNSMRY"));
  store.WriteTextFile(1, "", "OTHER");
  store.WriteTextFile(0, Path("never.csv"), "OTHER");
  EXPECT_TRUE(host_->calls.empty());
  EXPECT_EQ(store.get_FileName(1), "kept.UNSMRY");
  EXPECT_EQ(store.get_Origin(1), "CASE");
  EXPECT_TRUE(std::filesystem::is_empty(dir_));
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(StoreTextTest, DumpProposesEachBaseNameAndACancelStopsWithEarlierFilesWritten) {
  store.AddItem(OneValue("A", 1.f, "C:\\runs\\FIRST.UNSMRY"));
  store.AddItem(OneValue("B", 2.f, "/runs/SECOND.FUNSMRY"));
  store.AddItem(OneValue("C", 3.f, "THIRD"));
  host_->saveAnswers = {Path("first.csv"), Path("second.csv"), ""};
  host_->yesNoAnswers = {false, false, false};
  store.DumpDataStoreToTextFiles();

  ASSERT_EQ(host_->CallsNamed("FileSaveDialog"), 3);
  std::vector<std::vector<std::string>> shown;
  for (const auto& c : host_->calls)
    if (c.zName == "FileSaveDialog") shown.push_back(c.zArgs);
  EXPECT_EQ(shown[0], (std::vector<std::string>{"Save File", "FIRST.csv", "*.csv"}));
  EXPECT_EQ(shown[1], (std::vector<std::string>{"Save File", "SECOND.csv", "*.csv"}));
  EXPECT_EQ(shown[2], (std::vector<std::string>{"Save File", "THIRD.csv", "*.csv"}));
  // Two data sets written, each after its own question; the third not.
  EXPECT_EQ(host_->CallsNamed("YesNoQuestion"), 2);
  EXPECT_EQ(Read(Path("first.csv")), "FIELD\\FOPR\r\nSM3/DAY\r\n\r\n1\r\n");
  EXPECT_EQ(Read(Path("second.csv")), "FIELD\\FOPR\r\nSM3/DAY\r\n\r\n2\r\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir_), std::filesystem::directory_iterator()), 2);
  EXPECT_EQ(store.get_FileName(2), Path("second.csv"));
  EXPECT_EQ(store.get_FileName(3), "THIRD");
}

TEST_F(StoreTextTest, DumpCutsTheAnswerAtItsFirstNul) {
  store.AddItem(OneValue("A", 1.f, "FIRST.UNSMRY"));
  host_->saveAnswers = {Path("cut.csv") + std::string("\0tail", 5)};
  host_->yesNoAnswers = {false};
  store.DumpDataStoreToTextFiles();
  EXPECT_EQ(Read(Path("cut.csv")), "FIELD\\FOPR\r\nSM3/DAY\r\n\r\n1\r\n");
  EXPECT_EQ(store.get_FileName(1), Path("cut.csv"));
}

TEST_F(StoreTextTest, DumpOfAnUnchangedStoreAsksNothing) {
  store.DumpDataStoreToTextFiles();
  // A data set put in place by SetItem does not mark the store as changed.
  store.SetItem(1, OneValue("A", 1.f, "FIRST.UNSMRY"));
  store.DumpDataStoreToTextFiles();
  EXPECT_TRUE(host_->calls.empty());
}

TEST_F(StoreTextTest, WithoutAHostTheDumpEndsAtTheFirstDialog) {
  SetHostServices(nullptr);
  store.AddItem(OneValue("A", 1.f, "FIRST.UNSMRY"));
  store.DumpDataStoreToTextFiles();
  EXPECT_TRUE(std::filesystem::is_empty(dir_));
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(StoreTextTest, TextFilePropertyNameInLowerCaseAnswersLikeUpperCase) {
  auto ds = OneValue("A", 1.f, "");
  ds->let_TextRowName(4);
  ds->let_TextRowDateFormat("yyyy-mm-dd");
  store.AddItem(ds);
  Variant upper, lower, format;
  EXPECT_TRUE(store.DSGetTextFileProperty(1, "NAME", upper));
  EXPECT_TRUE(store.DSGetTextFileProperty(1, "name", lower));
  EXPECT_EQ(upper.ToText(), "4");
  EXPECT_EQ(lower.ToText(), "4");
  EXPECT_TRUE(store.DSGetTextFileProperty(1, "DateFormat", format));
  EXPECT_EQ(format.ToText(), "yyyy-mm-dd");
  Variant kept(std::string("kept"));
  EXPECT_TRUE(store.DSGetTextFileProperty(1, "NOSUCH", kept));
  EXPECT_EQ(kept.ToText(), "kept");
  EXPECT_FALSE(store.DSGetTextFileProperty(0, "NAME", kept));
  EXPECT_EQ(kept.ToText(), "kept");
}

}  // namespace
}  // namespace vndata
