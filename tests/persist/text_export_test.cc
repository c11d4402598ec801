// Comma-separated text export of a data set: the value texts, the two
// layouts byte for byte, the question and the message, and a file that
// cannot be written.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include "tests/dataset/dataset_test_util.h"
#include "tests/support/scripted_host.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/persist/text_export.h"
#include "vndata/platform/file_names.h"
#include "vndata/platform/file_types.h"
#include "vndata/platform/message_log.h"
#include "vndata/platform/variant.h"

namespace vndata {
namespace {

using test_support::ScopedHost;
using test_support::ScriptedHost;
using testutil::Attrs;

std::string Text(float v) {
  char buf[kMaxSingleText];
  return std::string(buf, AppendSingleText(buf, v));
}

TEST(SingleTextTest, FixedFormsOfTheDefaultText) {
  EXPECT_EQ(Text(0.0f), "0");
  EXPECT_EQ(Text(-0.0f), "0");
  EXPECT_EQ(Text(1.0f), "1");
  EXPECT_EQ(Text(-0.25f), "-0.25");
  EXPECT_EQ(Text(0.1f), "0.1");
  EXPECT_EQ(Text(1.5f), "1.5");
  EXPECT_EQ(Text(100.0f), "100");
  EXPECT_EQ(Text(1234567.0f), "1234567");
  EXPECT_EQ(Text(1e7f), "1E+07");
  EXPECT_EQ(Text(12345678.0f), "1.234568E+07");
  EXPECT_EQ(Text(1.5e-5f), "1.5E-05");
  EXPECT_EQ(Text(0.0001f), "0.0001");
  EXPECT_EQ(Text(0.00001f), "1E-05");
  EXPECT_EQ(Text(-999.0f), "-999");
  EXPECT_EQ(Text(std::numeric_limits<float>::max()), "3.402823E+38");
  EXPECT_EQ(Text(std::numeric_limits<float>::denorm_min()), "1.401298E-45");
}

TEST(SingleTextTest, HalfwayValuesRoundToEven) {
  // Exactly halfway between two 7-digit texts.
  EXPECT_EQ(Text(1000000.5f), "1000000");
  EXPECT_EQ(Text(1000001.5f), "1000002");
  EXPECT_EQ(Text(16777215.0f), "1.677722E+07");
}

TEST(SingleTextTest, InfinitiesAndNaNReadAsTheCLibraryWritesThem) {
  EXPECT_EQ(Text(std::numeric_limits<float>::infinity()), SingleText(std::numeric_limits<float>::infinity()));
  EXPECT_EQ(Text(-std::numeric_limits<float>::infinity()), "-INF");
  EXPECT_EQ(Text(std::numeric_limits<float>::quiet_NaN()), SingleText(std::numeric_limits<float>::quiet_NaN()));
  EXPECT_EQ(Text(-std::numeric_limits<float>::quiet_NaN()), SingleText(-std::numeric_limits<float>::quiet_NaN()));
}

TEST(SingleTextTest, AgreesWithTheVariantTextOverEveryExponent) {
  std::mt19937 rng(20261123);
  std::uniform_int_distribution<uint32_t> bits;
  for (int32_t k = 0; k < 200000; ++k) {
    uint32_t u = bits(rng);
    float v;
    std::memcpy(&v, &u, sizeof v);
    ASSERT_EQ(Text(v), SingleText(v)) << "bits " << u;
  }
}

// A test with a temporary folder and a scripted host.
class CsvTest : public ::testing::Test {
 protected:
  void SetUp() override {
    MessageLog::Shared().Clear();
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    dir_ = std::filesystem::temp_directory_path() /
           ("vndata_csv_" + std::string(info->test_suite_name()) + "_" + info->name());
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_);
    host_ = std::make_shared<ScriptedHost>();
    scope_ = std::make_unique<ScopedHost>(host_);
  }
  void TearDown() override {
    scope_.reset();
    std::filesystem::remove_all(dir_);
    MessageLog::Shared().Clear();
  }

  std::string Path(const std::string& zName) const { return (dir_ / zName).string(); }

  static std::string Read(const std::string& zFile) {
    std::ifstream in(zFile, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
  }

  // Two rows, two columns, as a reader builds them.
  static void Build(mxDataSet& ds) {
    ds.let_Origin("CASE");
    ds.let_GroupName("Summary");
    ds.let_DataClass("SUMMARY");
    ds.let_DateStamp("01/02/2003");
    Array2<float> values(1, 2, 1, 2);
    values(1, 1) = 1.5f;
    values(2, 1) = 12345678.0f;
    values(1, 2) = 0.0f;
    values(2, 2) = -0.25f;
    Array2<uint8_t> headers = testutil::Headers(
        {Attrs{{ATT_ORIGIN, "CASE"}, {ATT_TYPE, "Summary"}, {ATT_CLASS, "WELLS"}, {ATT_MEMBER, "P1"},
               {ATT_VARIABLE, "WOPR"}, {ATT_UNITS, "SM3/DAY"}, {ATT_VERBOSE, "Oil rate"}},
         Attrs{{ATT_ORIGIN, "CASE"}, {ATT_TYPE, "Summary"}, {ATT_CLASS, "FIELD"},
               {ATT_VARIABLE, "FPR"}, {ATT_UNITS, "BARSA"}, {ATT_VERBOSE, "Pressure"}}});
    bool qOK = false;
    ds.bInitialiseFrom2d(values, headers, qOK);
    ASSERT_TRUE(qOK);
    ds.let_IsDirty(true);
  }

  std::filesystem::path dir_;
  std::shared_ptr<ScriptedHost> host_;
  std::unique_ptr<ScopedHost> scope_;
};

constexpr const char* kPlainText =
    "WELLS\\P1\\WOPR,FIELD\\FPR\r\n"
    "SM3/DAY,BARSA\r\n"
    "Oil rate,Pressure\r\n"
    "1.5,0\r\n"
    "1.234568E+07,-0.25\r\n";

TEST_F(CsvTest, PlainLayoutIsTheKeysUnitsVerboseAndRowsWithCrLf) {
  mxDataSet ds;
  Build(ds);
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV(Path("plain.csv"));
  EXPECT_EQ(Read(Path("plain.csv")), kPlainText);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(CsvTest, TheQuestionAndTheMessageAreWordedExactly) {
  mxDataSet ds;
  Build(ds);
  host_->yesNoAnswers.push_back(false);
  const std::string zFile = Path("plain.csv");
  ds.WriteAsCSV(zFile);
  ASSERT_EQ(host_->calls.size(), 4u);
  EXPECT_EQ(host_->calls[0].zName, "YesNoQuestion");
  EXPECT_EQ(host_->calls[0].zArgs,
            (std::vector<std::string>{"CSV File", "Write file in extended format (with detailed headers)?"}));
  EXPECT_EQ(host_->calls[1].zName, "SetBusyCursor");
  EXPECT_EQ(host_->calls[1].zArgs[0], "1");
  EXPECT_EQ(host_->calls[2].zName, "SetBusyCursor");
  EXPECT_EQ(host_->calls[2].zArgs[0], "0");
  EXPECT_EQ(host_->calls[3].zName, "InformationMessage");
  EXPECT_EQ(host_->calls[3].zArgs[0], "Data Set Saved");
  EXPECT_EQ(host_->calls[3].zArgs[1], zFile +
                                          " Saved.\r\nOnly the selected data set (CASE\\SUMMARY)\r\n"
                                          "has been saved in ASCII format");
  EXPECT_FALSE(ds.get_IsDirty());
}

TEST_F(CsvTest, ExtendedLayoutHasItsThreeSectionsAndNoNullValueLineForMinus999) {
  mxDataSet ds;
  Build(ds);
  host_->yesNoAnswers.push_back(true);
  ds.WriteAsCSV(Path("case_out.csv"));
  EXPECT_EQ(Read(Path("case_out.csv")),
            "[MXINFO]\r\n"
            "ORIGIN=case_out\r\n"
            "TYPE=CSV\r\n"
            "CLASS=SUMMARY\r\n"
            "FILETYPE=3\r\n"
            "DATE=01/02/2003\r\n"
            "[HEADERS]\r\n"
            "CLASS=WELLS,FIELD\r\n"
            "MEMBER=P1,\r\n"
            "VARIABLE=WOPR,FPR\r\n"
            "UNITS=SM3/DAY,BARSA\r\n"
            "VERBOSE=Oil rate,Pressure\r\n"
            "[DATA]\r\n"
            "1.5,0\r\n"
            "1.234568E+07,-0.25\r\n");
  EXPECT_EQ(host_->CallsNamed("InformationMessage"), 1);
  EXPECT_FALSE(ds.get_IsDirty());
}

TEST_F(CsvTest, AnotherNullValueWritesItsLine) {
  mxDataSet ds;
  Build(ds);
  ds.let_NullValue(-1.5);
  host_->yesNoAnswers.push_back(true);
  ds.WriteAsCSV(Path("nulls.csv"));
  const std::string text = Read(Path("nulls.csv"));
  EXPECT_NE(text.find("DATE=01/02/2003\r\nNULLVALUE=-1.5\r\n[HEADERS]\r\n"), std::string::npos) << text;
}

TEST_F(CsvTest, FileTypeGoesThroughTheFileTypeTable) {
  mxDataSet ds;
  Build(ds);
  ds.let_FileType(40);
  SetFileTypeText(40, "PLOT FILE");
  host_->yesNoAnswers.push_back(true);
  ds.WriteAsCSV(Path("types.csv"));
  SetFileTypeText(40, "");
  EXPECT_NE(Read(Path("types.csv")).find("\r\nFILETYPE=PLOT FILE\r\n"), std::string::npos);
  EXPECT_EQ(FileTypeText(40), "40");
}

TEST_F(CsvTest, OneColumnWritesNoComma) {
  mxDataSet ds;
  Array2<float> values(1, 2, 1, 1);
  values(1, 1) = 3.0f;
  values(2, 1) = 4.5f;
  bool qOK = false;
  ds.bInitialiseFrom2d(values,
                       testutil::Headers({Attrs{{ATT_CLASS, "FIELD"}, {ATT_VARIABLE, "FOPT"},
                                                {ATT_UNITS, "SM3"}, {ATT_VERBOSE, "Oil total"}}}),
                       qOK);
  ASSERT_TRUE(qOK);
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV(Path("one.csv"));
  EXPECT_EQ(Read(Path("one.csv")), "FIELD\\FOPT\r\nSM3\r\nOil total\r\n3\r\n4.5\r\n");
}

TEST_F(CsvTest, AHeaderFieldIsCutAtItsFirstNul) {
  mxDataSet ds;
  Array2<float> values(1, 1, 1, 1);
  values(1, 1) = 1.0f;
  Array2<uint8_t> headers = testutil::Headers(
      {Attrs{{ATT_CLASS, "FIELD"}, {ATT_VARIABLE, "FOPR"}, {ATT_UNITS, "SM3/DAY"}}});
  // "Oil" NUL "rate" in the verbose field.
  testutil::PutField(headers, 1, ATT_VERBOSE, std::string("Oil\0rate", 8));
  bool qOK = false;
  ds.bInitialiseFrom2d(values, headers, qOK);
  ASSERT_TRUE(qOK);
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV(Path("nul.csv"));
  EXPECT_EQ(Read(Path("nul.csv")), "FIELD\\FOPR\r\nSM3/DAY\r\nOil\r\n1\r\n");
}

TEST_F(CsvTest, AnEmptyFileNameStillAsksThenWritesNothing) {
  mxDataSet ds;
  Build(ds);
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV();
  EXPECT_EQ(host_->CallsNamed("YesNoQuestion"), 1);
  EXPECT_EQ(host_->calls.size(), 1u);
  EXPECT_TRUE(ds.get_IsDirty());
  EXPECT_TRUE(std::filesystem::is_empty(dir_));
  // The extended layout stops on the empty name as well.
  host_->yesNoAnswers.push_back(true);
  ds.WriteAsCSV();
  EXPECT_EQ(host_->calls.size(), 2u);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(CsvTest, WithoutAnArgumentTheDataSetsFileNameIsWritten) {
  mxDataSet ds;
  Build(ds);
  ds.let_FileName(Path("own.csv"));
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV();
  EXPECT_EQ(Read(Path("own.csv")), kPlainText);
}

TEST_F(CsvTest, ADataSetWithoutRowsIsNotWritten) {
  mxDataSet ds;
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV(Path("empty.csv"));
  host_->yesNoAnswers.push_back(true);
  ds.WriteAsCSV(Path("empty.csv"));
  EXPECT_FALSE(std::filesystem::exists(Path("empty.csv")));
  EXPECT_EQ(host_->CallsNamed("YesNoQuestion"), 2);
  EXPECT_EQ(host_->calls.size(), 2u);
}

TEST_F(CsvTest, AFileInAMissingFolderLogsTheTraceAndLeavesTheDataSet) {
  mxDataSet ds;
  Build(ds);
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV(Path("missing/plain.csv"));
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0], "Error:Path not found (No.76) In [mxDataSet  (WriteAsCSV)] ");
  EXPECT_TRUE(MessageLog::Shared().Flags()[0]);
  EXPECT_TRUE(ds.get_IsDirty());
  EXPECT_EQ(ds.get_NumRows(), 2);
  EXPECT_EQ(host_->CallsNamed("InformationMessage"), 0);
  // The cursor is given back.
  ASSERT_EQ(host_->CallsNamed("SetBusyCursor"), 2);
  EXPECT_EQ(host_->LastCall("SetBusyCursor")->zArgs[0], "0");
}

TEST_F(CsvTest, AFolderAsFileNameLogsTheExtendedWritersTrace) {
  mxDataSet ds;
  Build(ds);
  std::filesystem::create_directories(Path("taken.csv"));
  host_->yesNoAnswers.push_back(true);
  ds.WriteAsCSV(Path("taken.csv"));
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Path/File access error (No.75) In [mxDataSet  (WriteAsCSVExt)] ");
  EXPECT_TRUE(ds.get_IsDirty());
}

TEST_F(CsvTest, AWriteReplacesTheOldFile) {
  mxDataSet ds;
  Build(ds);
  {
    std::ofstream old(Path("again.csv"), std::ios::binary);
    old << std::string(5000, 'x');
  }
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV(Path("again.csv"));
  EXPECT_EQ(Read(Path("again.csv")), kPlainText);
}

TEST_F(CsvTest, OnlyTheRowsInUseAreWrittenAfterAnAppend) {
  mxDataSet ds;
  Build(ds);
  Array2<float> more(1, 1, 1, 2);
  more(1, 1) = 7.0f;
  more(1, 2) = 8.0f;
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(more, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(ds.get_NumRows(), 3);
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV(Path("appended.csv"));
  EXPECT_EQ(Read(Path("appended.csv")), std::string(kPlainText) + "7,8\r\n");
}

TEST_F(CsvTest, ALargeTableCrossesTheWriteBufferIntact) {
  mxDataSet ds;
  const int32_t nRows = 20000, nCols = 3;
  Array2<float> values = testutil::Block(nRows, nCols, [](int32_t i, int32_t j) {
    return static_cast<float>(i) / static_cast<float>(j + 2);
  });
  bool qOK = false;
  ds.bInitialiseFrom2d(values, testutil::SimpleHeaders(nCols), qOK);
  ASSERT_TRUE(qOK);
  host_->yesNoAnswers.push_back(false);
  ds.WriteAsCSV(Path("large.csv"));
  std::ifstream in(Path("large.csv"), std::ios::binary);
  std::string line;
  for (int32_t k = 0; k < 3; ++k) std::getline(in, line);
  int32_t i = 0;
  while (std::getline(in, line)) {
    ++i;
    ASSERT_EQ(line, SingleText(static_cast<float>(i) / 3.f) + "," + SingleText(static_cast<float>(i) / 4.f) +
                        "," + SingleText(static_cast<float>(i) / 5.f) + "\r");
  }
  EXPECT_EQ(i, nRows);
}

TEST_F(CsvTest, TextFilePropertiesAnswerInAnyCase) {
  mxDataSet ds;
  ds.let_TextRowName(2);
  ds.let_TextRowUnits(3);
  ds.let_TextRowLGR(4);
  ds.let_TextRowIndex(5);
  ds.let_TextRowVerbose(6);
  ds.let_TextRowWell(7);
  ds.let_TextRowData(8);
  ds.let_TextRowFixed(9);
  ds.let_TextRowDateFormat("dd/mm/yyyy");
  const std::pair<const char*, const char*> expected[] = {
      {"DATA", "8"},  {"DATEFORMAT", "dd/mm/yyyy"}, {"FIXEDLENGTH", "9"}, {"INDEX", "5"}, {"LGR", "4"},
      {"NAME", "2"},  {"UNIT", "3"},                {"VERBOSE", "6"},     {"WELL", "7"},
  };
  for (const auto& [name, text] : expected) {
    Variant v;
    ds.GetTextFileProperty(name, v);
    EXPECT_TRUE(v.IsString()) << name;
    EXPECT_EQ(v.ToText(), text) << name;
  }
  Variant v;
  ds.GetTextFileProperty("name", v);
  EXPECT_EQ(v.ToText(), "2");
  Variant kept(std::string("kept"));
  ds.GetTextFileProperty("UNITS", kept);
  EXPECT_EQ(kept.ToText(), "kept");
}

TEST_F(CsvTest, DebugPrintChangesNothing) {
  mxDataSet ds;
  Build(ds);
  ds.DEBUGPRINT();
  EXPECT_TRUE(host_->calls.empty());
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
  EXPECT_TRUE(ds.get_IsDirty());
}

TEST(FileNamesTest, PartsOfAFileName) {
  EXPECT_EQ(FileBaseName("C:\\runs\\CASE.UNSMRY"), "CASE");
  EXPECT_EQ(FileBaseName("/tmp/out/case_out.csv"), "case_out");
  EXPECT_EQ(FileBaseName("name"), "name");
  EXPECT_EQ(FileBaseName("a.b.c"), "a.b");
  EXPECT_EQ(FileBaseName("dir/.hidden"), ".hidden");
  EXPECT_EQ(FileBaseName(""), "");
  EXPECT_EQ(FileFolder("C:\\runs\\CASE.UNSMRY"), "C:\\runs");
  EXPECT_EQ(FileFolder("CASE.UNSMRY"), "");
  EXPECT_EQ(FileNameOnly("/a/b.csv"), "b.csv");
  EXPECT_EQ(FileExtension("/a/b.csv"), "csv");
  EXPECT_EQ(FileExtension("/a.d/b"), "");
}

}  // namespace
}  // namespace vndata
