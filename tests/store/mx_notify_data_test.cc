#include "vndata/foundation/mx_notify_data.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/store/store_fixtures.h"

namespace vndata {
namespace {

// Records every event with its arguments, and changes them to show that a
// listener can.
class RecordingListener : public mxNotifyDataListener {
 public:
  void Notify(std::string& zMsg) override { events.push_back("Notify:" + zMsg); }
  void FODDataTVKey(std::string& zKey, int32_t& iColumn) override {
    events.push_back("TVKey:" + zKey + ":" + std::to_string(iColumn));
    zKey = "changed";
    iColumn = 99;
  }
  void FODDataLoaded(int32_t& iSet, int32_t& iColumn) override {
    events.push_back("Loaded:" + std::to_string(iSet) + ":" + std::to_string(iColumn));
    iSet = 7;
  }
  void FODDataUnloaded(std::string& zKey, int32_t& iColumn) override {
    events.push_back("Unloaded:" + zKey + ":" + std::to_string(iColumn));
  }
  std::vector<std::string> events;
};

class NotifyTest : public StoreTest {
 protected:
  std::shared_ptr<RecordingListener> Listen(mxNotifyData& n) {
    auto l = std::make_shared<RecordingListener>();
    n.Subscribe(l);
    return l;
  }
};

TEST_F(NotifyTest, EventsReachListenersWithArgumentsByReference) {
  mxNotifyData n;
  auto l = Listen(n);
  std::string key = "WELLS\\P1\\WOPR";
  int32_t col = 3;
  n.FODDataTVKey(key, col);
  EXPECT_EQ(key, "changed");
  EXPECT_EQ(col, 99);
  int32_t set = 1, c = 2;
  n.FODDataLoaded(set, c);
  EXPECT_EQ(set, 7);
  std::string k2 = "K";
  n.FODDataUnloaded(k2, c);
  std::string msg = "hello";
  n.Notify(msg);
  EXPECT_EQ(l->events, (std::vector<std::string>{"TVKey:WELLS\\P1\\WOPR:3", "Loaded:1:2",
                                                 "Unloaded:K:2", "Notify:hello"}));
}

TEST_F(NotifyTest, UnsubscribedListenerHearsNothing) {
  mxNotifyData n;
  auto l = Listen(n);
  n.Unsubscribe(l);
  n.NotifyText("x");
  EXPECT_TRUE(l->events.empty());
}

TEST_F(NotifyTest, SettingANullHandlerLeavesAUsableOneAndStillSendsTheMessage) {
  store.set_EventHandler(nullptr);
  auto handler = store.get_EventHandler();
  ASSERT_NE(handler, nullptr);
  auto l = Listen(*handler);
  auto host = std::make_shared<mxNotifyData>();
  auto hl = Listen(*host);
  store.set_EventHandler(host);
  EXPECT_EQ(hl->events, (std::vector<std::string>{"Notify:DATASTORE EVENTHANDLER INITIALISED"}));
  EXPECT_TRUE(l->events.empty());
}

TEST_F(NotifyTest, ReadingTheHandlerRaisesNotify) {
  auto host = std::make_shared<mxNotifyData>();
  store.set_EventHandler(host);
  auto l = Listen(*host);
  EXPECT_EQ(store.get_EventHandler(), host);
  EXPECT_EQ(l->events, (std::vector<std::string>{"Notify:DATASTORE EVENTHANDLER RETRIEVED"}));
}

TEST_F(NotifyTest, IOHandlerFallsBackToAFreshObjectSilently) {
  store.set_IOEventHandler(nullptr);
  EXPECT_NE(store.get_IOEventHandler(), nullptr);
}

TEST_F(NotifyTest, AddingTwoDataSetsRaisesStoreThenDataSetMessagesForEach) {
  auto host = std::make_shared<mxNotifyData>();
  store.set_EventHandler(host);
  store.set_IOEventHandler(std::make_shared<mxNotifyData>());
  auto l = Listen(*host);
  bool qOK = false;
  auto a = MakeSummary("A");
  auto b = MakeSummary("B");
  store.AddDataSet(a, qOK);
  store.AddDataSet(b, qOK);
  const std::vector<std::string> one = {"Notify:DATASTORE EVENTHANDLER RETRIEVED",
                                        "Notify:DATASET Initialised:"};
  std::vector<std::string> both = one;
  both.insert(both.end(), one.begin(), one.end());
  EXPECT_EQ(l->events, both);
  EXPECT_EQ(a->get_EventHandler(), host);
  EXPECT_EQ(b->get_IOEventHandler(), store.get_IOEventHandler());
}

TEST_F(NotifyTest, AddItemAutoRaisesNoNotificationAndHandsNothingOn) {
  auto host = std::make_shared<mxNotifyData>();
  store.set_EventHandler(host);
  auto l = Listen(*host);
  auto ds = MakeSummary("A");
  store.AddItemAuto(ds);
  EXPECT_TRUE(l->events.empty());
  EXPECT_NE(ds->get_EventHandler(), host);
}

TEST_F(NotifyTest, WithoutAHostHandlerADataSetMakesItsOwn) {
  auto ds = MakeSummary("A");
  store.AddItem(ds);
  EXPECT_NE(ds->get_EventHandler(), nullptr);
}

TEST_F(NotifyTest, AHandlerSetLaterReachesOnlyLaterDataSets) {
  auto first = MakeSummary("A");
  store.AddItem(first);
  auto host = std::make_shared<mxNotifyData>();
  store.set_EventHandler(host);
  auto second = MakeSummary("B");
  store.AddItem(second);
  EXPECT_NE(first->get_EventHandler(), host);
  EXPECT_EQ(second->get_EventHandler(), host);
}

TEST_F(NotifyTest, SetItemHandsTheHandlersOn) {
  auto host = std::make_shared<mxNotifyData>();
  store.set_EventHandler(host);
  auto ds = MakeSummary("A");
  store.SetItem(1, ds);
  EXPECT_EQ(ds->get_EventHandler(), host);
}

}  // namespace
}  // namespace vndata
