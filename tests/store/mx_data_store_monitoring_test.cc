// What a host watches while a simulation runs: the four settings of a data
// set, the folder and pattern it works out for itself, and the store's
// clearing of every data set at once.
#include <gtest/gtest.h>

#include "tests/store/store_fixtures.h"

namespace vndata {
namespace {

class MonitoringTest : public StoreTest {
 protected:
  std::shared_ptr<mxDataSet> Add(int32_t iFileType, const std::string& zFileName,
                                 const std::string& zDataClass = "") {
    auto ds = MakeSummary("CASE" + std::to_string(++n_));
    ds->let_FileType(iFileType);
    ds->let_FileName(zFileName);
    ds->let_DataClass(zDataClass);
    store.AddItemAuto(ds);
    return ds;
  }
  int32_t n_ = 0;
};

TEST_F(MonitoringTest, SettingsStartOffAndEmptyAndTravelByPosition) {
  auto ds = Add(3, "C:\\runs\\BASE.RSM");
  EXPECT_FALSE(store.get_RTMMonitoring(1));
  EXPECT_FALSE(store.get_RTMRecurseFolders(1));
  store.let_RTMMonitoring(1, true);
  store.let_RTMRecurseFolders(1, true);
  EXPECT_TRUE(ds->get_RTMMonitoring());
  EXPECT_TRUE(store.get_RTMRecurseFolders(1));
}

TEST_F(MonitoringTest, FolderAndPatternAreTrimmedAtBothEnds) {
  Add(13, "C:\\runs\\BASE.UNSMRY");
  store.let_RTMFolder(1, "  C:\\watch  ");
  store.let_RTMFilePattern(1, "   BASE.S*  ");
  EXPECT_EQ(store.get_RTMFolder(1), "C:\\watch");
  EXPECT_EQ(store.get_RTMFilePattern(1), "BASE.S*");
}

TEST_F(MonitoringTest, PlotDataOfAnyCaseCountsAsMonitoredData) {
  auto plot = Add(40, "C:\\runs\\study.plt", "Plot");
  EXPECT_TRUE(plot->CheckifRTMDataSet());
  auto summary = Add(13, "C:\\runs\\BASE.UNSMRY");
  EXPECT_TRUE(summary->CheckifRTMDataSet());
  auto other = Add(40, "C:\\runs\\x.txt", "Table");
  EXPECT_FALSE(other->CheckifRTMDataSet());
  EXPECT_FALSE(Add(3, "C:\\runs\\x.txt")->CheckifRTMDataSet());
}

TEST_F(MonitoringTest, DataThatIsNotMonitoredWatchesFilesOfItsOwnExtension) {
  Add(3, "C:\\runs\\field\\BASE.RSM");
  EXPECT_EQ(store.get_RTMFilePattern(1), "*.RSM");
  EXPECT_EQ(store.get_RTMFolder(1), "C:\\runs\\field");
}

TEST_F(MonitoringTest, AnExplicitPatternIsLeftAsItIs) {
  auto ds = Add(13, "C:\\runs\\BASE.UNSMRY");
  ds->let_RTMFilePattern("MINE.*");
  EXPECT_EQ(store.get_RTMFilePattern(1), "MINE.*");
  // The folder asked for is worked out, but the explicit pattern stands.
  EXPECT_EQ(store.get_RTMFolder(1), "");
  EXPECT_EQ(store.get_RTMFilePattern(1), "MINE.*");
}

TEST_F(MonitoringTest, SummaryDataWatchesTheFormOfItsCase) {
  auto unified = Add(13, "C:\\runs\\BASE.UNSMRY");
  unified->let_Formatted(false);  // a fresh data set counts as formatted
  EXPECT_EQ(unified->get_RTMFilePattern(), "BASE.UNSMRY");
  EXPECT_EQ(unified->get_RTMFolder(), "C:\\runs");
  auto formatted = Add(13, "C:\\runs\\BASE.FUNSMRY");
  formatted->let_Formatted(true);
  EXPECT_EQ(formatted->get_RTMFilePattern(), "BASE.FUNSMRY");
  auto split = Add(13, "/runs/BASE.S0004");
  split->let_Unified(false);
  split->let_Formatted(false);
  EXPECT_EQ(split->get_RTMFilePattern(), "BASE.S*");
  auto shortName = Add(13, "C:\\runs\\BASE.UNS");
  shortName->let_Formatted(false);
  EXPECT_EQ(shortName->get_RTMFilePattern(), "BASE.UNS");
}

TEST_F(MonitoringTest, PlotDataWatchesThePlotFileOfItsCase) {
  auto ds = Add(40, "C:\\runs\\study.plt", "PLOT");
  ds->let_CaseName("CASE7");
  EXPECT_EQ(ds->get_RTMFilePattern(), "PLOT.BIN");
  EXPECT_EQ(ds->get_RTMFolder(), "C:\\runs\\CASE7");
}

TEST_F(MonitoringTest, ClearStopsMonitoringAndResetAlsoForgetsWhatToWatch) {
  Add(13, "C:\\runs\\A.UNSMRY");
  Add(13, "C:\\runs\\B.UNSMRY");
  for (int32_t i = 1; i <= 2; ++i) {
    store.let_RTMMonitoring(i, true);
    store.let_RTMFolder(i, "C:\\w");
    store.let_RTMFilePattern(i, "P");
  }
  store.ClearRTMSettings();
  EXPECT_FALSE(store.get_RTMMonitoring(1));
  EXPECT_FALSE(store.get_RTMMonitoring(2));
  EXPECT_EQ(store.get_RTMFilePattern(2), "P");
  store.ResetRTMSettings();
  // Emptied; asked for again, the pattern is worked out from the file (a
  // fresh data set counts as formatted).
  EXPECT_EQ(store.get_RTMFilePattern(1), "A.FUNSMRY");
  EXPECT_EQ(store.get_RTMFolder(2), "C:\\runs");
}

}  // namespace
}  // namespace vndata
