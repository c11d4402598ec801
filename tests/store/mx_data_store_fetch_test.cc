// The store's members of columns fetched on demand: forwarding by position,
// and the store's own FODDataLoaded beside the data set's events.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/dataset/fetch_test_util.h"
#include "tests/store/store_fixtures.h"

using namespace vndata;
using namespace vndata::fetch_test;
using vndata::sim_test::BinaryFile;
using vndata::sim_test::TempDir;

namespace {

class StoreFetch : public StoreTest {
 protected:
  void SetUp() override {
    StoreTest::SetUp();
    pPress_ = f_.Reals("PRESSURE", {100, 101, 102});
    pSwat_ = f_.Reals("SWAT", {0.1f, 0.2f, 0.3f});
    pNums_ = f_.Ints("NUMS", {7, 8, 9});
    record_test::WriteAllBytes(file_, f_.b);
    store.AddItem(MakeSummary("CASE"));
    auto ds = std::make_shared<mxDataSet>();
    ds_ = ds.get();
    bool qOK = false;
    ds->DimensionData(3, 1, qOK);
    ds->bInitialiseColumnAttributes(testutil::SimpleHeaders(3), qOK);
    ds->let_Origin("FOD");
    ds->let_FileName(file_);
    store.AddItem(ds);
    ASSERT_EQ(store.get_NumberOfDataSets(), 2);
    store.let_FetchOnDemandActive(2, true);
    ASSERT_TRUE(store.get_FetchOnDemandActive(2));
    store.AssignFODPointers(2, Settings(), PosArray(Columns()), qOK);
    ASSERT_TRUE(qOK);
    events_ = std::make_shared<Recorder>();
    store.get_StoreEvents()->Subscribe(events_);
  }
  std::vector<Column> Columns() {
    return {Stored(pPress_, 3), Stored(pSwat_, 3), Stored(pNums_, 3, 1)};
  }

  mxDataStore store;
  TempDir dir_;
  std::string file_ = dir_.File("CASE.UNRST");
  BinaryFile f_;
  int64_t pPress_ = 0, pSwat_ = 0, pNums_ = 0;
  mxDataSet* ds_ = nullptr;
  std::shared_ptr<Recorder> events_;
};

TEST_F(StoreFetch, LoadFODVectorForwardsAndTellsThePosition) {
  bool qOK = false;
  store.LoadFODVector(2, 2, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(store.FetchOnDemandColumnLoaded(2, 2));
  EXPECT_TRUE(store.get_qIsVectorLoaded(2, 2));
  EXPECT_EQ(events_->lines, (std::vector<std::string>{"FODDataLoaded 2 2"}));
  Array<float> v;
  ASSERT_TRUE(store.DSGetValues(2, 2, v));
  EXPECT_EQ(Values(v), (std::vector<float>{0.1f, 0.2f, 0.3f}));
  // Loaded already: false, and nothing told.
  store.LoadFODVector(2, 2, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(events_->lines.size(), 1u);
}

TEST_F(StoreFetch, FailedLoadTellsNothing) {
  bool qOK = false;
  Array2<int32_t> pos = PosArray(Columns());
  pos(3, 1) += 4;
  store.AssignFODPointers(2, Settings(), pos, qOK);
  store.LoadFODVector(2, 1, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(events_->lines.empty());
}

TEST_F(StoreFetch, LoadFODVectorsTellsEachColumnItBroughtIn) {
  bool qOK = false;
  store.LoadFODVector(2, 1, qOK);
  events_->lines.clear();
  store.DSLoadFODVectors(2, Array<int32_t>{1, 3, 2}, 3, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(events_->lines, (std::vector<std::string>{"FODDataLoaded 2 3", "FODDataLoaded 2 2"}));
  Array<int32_t> cols;
  int32_t n = 0;
  store.GetLoadedFODVectors(2, cols, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 3);
}

TEST_F(StoreFetch, StoreEventsAreApartFromTheSharedHandler) {
  auto handler = std::make_shared<mxNotifyData>();
  store.set_EventHandler(handler);
  // Handed to data sets entering a slot from now on; given to this one here.
  ds_->set_EventHandler(handler);
  ds_->let_Index(2);
  auto shared = std::make_shared<Recorder>();
  handler->Subscribe(shared);
  bool qOK = false;
  store.LoadFODVector(2, 3, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(events_->lines, (std::vector<std::string>{"FODDataLoaded 2 3"}));
  // The data set told the shared handler with its tree key and its Index.
  EXPECT_EQ(shared->lines, (std::vector<std::string>{"FODDataTVKey  3", "FODDataLoaded 2 3"}));
}

TEST_F(StoreFetch, FlagsAndTypesAreForwarded) {
  EXPECT_EQ(store.DSGetFODVarType(2, 3), 1);
  EXPECT_EQ(store.DSGetFODVarType(2, 1), 0);
  EXPECT_EQ(store.DSGetFODVarType(2, 9), -1);
  EXPECT_EQ(store.DSGetFODVarType(1, 1), -1);  // an in-memory data set has no table
  EXPECT_FALSE(store.get_FetchOnDemandActive(1));
  EXPECT_FALSE(store.FetchOnDemandColumnLoaded(1, 1));
}

TEST_F(StoreFetch, LoadAllVectorsMovesTheDataSetIntoMemory) {
  store.let_LoadAllVectors(2, true);
  EXPECT_FALSE(store.get_FetchOnDemandActive(2));
  EXPECT_EQ(store.get_NumRows(2), 3);
  Array<float> v;
  ASSERT_TRUE(store.DSGetValues(2, 3, v));
  EXPECT_EQ(Values(v), (std::vector<float>{7, 8, 9}));
  // The bulk move tells the host nothing column by column.
  EXPECT_TRUE(events_->lines.empty());
}

TEST_F(StoreFetch, AssignFODPlusPointersForwardsTheDerivedTable) {
  std::vector<Column> cols = Columns();
  cols[2] = Derived(10, 1, 2, 3);
  bool qOK = false;
  store.AssignFODPlusPointers(2, Settings(), PosArray(cols), Array<int32_t>{1, 2}, Array<float>(), qOK);
  ASSERT_TRUE(qOK);
  Array<float> v;
  ASSERT_TRUE(store.DSGetValues(2, 3, v));
  EXPECT_EQ(Values(v), (std::vector<float>{(1.0f * 100.0f) * 0.1f, (1.0f * 101.0f) * 0.2f,
                                           (1.0f * 102.0f) * 0.3f}));
}

}  // namespace
