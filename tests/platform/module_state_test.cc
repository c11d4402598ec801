#include "vndata/platform/module_state.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <thread>

#include "tests/support/scripted_host.h"
#include "vndata/platform/array_tools.h"
#include "vndata/platform/byte_tools.h"
#include "vndata/platform/date_tools.h"
#include "vndata/platform/string_tools.h"

using namespace vndata;

namespace {
// Runs f on a new thread, whose module state is fresh, and waits for it.
void OnFreshThread(const std::function<void()>& f) {
  std::thread t(f);
  t.join();
}

class ModuleStateTest : public ::testing::Test {
 protected:
  void TearDown() override {
    Module().CancelLoad = false;
    Module().pctContainer.reset();
    Module().pctContainerSet = false;
    Module().AttConst.Erase();
    ReleaseSharedTools();
    SetHostServices(nullptr);
  }
};
}  // namespace

TEST_F(ModuleStateTest, FreshThreadStartsClear) {
  bool cancel = true, set = true, container = true, attconst = true;
  OnFreshThread([&] {
    cancel = Module().CancelLoad;
    set = Module().pctContainerSet;
    container = Module().pctContainer != nullptr;
    attconst = Module().AttConst.IsAllocated();
  });
  EXPECT_FALSE(cancel);
  EXPECT_FALSE(set);
  EXPECT_FALSE(container);
  EXPECT_FALSE(attconst);
}

TEST_F(ModuleStateTest, ModuleIsTheSameObjectWithinAThread) {
  EXPECT_EQ(&Module(), &Module());
  Module().CancelLoad = true;
  EXPECT_TRUE(Module().CancelLoad);
}

TEST_F(ModuleStateTest, ValueSetInOneThreadIsNotSeenInAnother) {
  bool seenHere = true;
  bool seenInThird = true;
  OnFreshThread([&] {
    Module().CancelLoad = true;
    Module().AttConst.ReDim(1, 25);
    Module().AttConst(1) = 233;
  });
  seenHere = Module().CancelLoad || Module().AttConst.IsAllocated();
  OnFreshThread([&] { seenInThird = Module().CancelLoad || Module().AttConst.IsAllocated(); });
  EXPECT_FALSE(seenHere);
  EXPECT_FALSE(seenInThird);

  Module().CancelLoad = true;
  bool seenThere = true;
  OnFreshThread([&] { seenThere = Module().CancelLoad; });
  EXPECT_FALSE(seenThere);
  EXPECT_TRUE(Module().CancelLoad);
}

TEST_F(ModuleStateTest, SettingAContainerSetsTheFlag) {
  auto p = std::make_shared<test_support::RecordingProgress>();
  SetProgressContainer(p);
  EXPECT_EQ(Module().pctContainer, p);
  EXPECT_TRUE(Module().pctContainerSet);
}

TEST_F(ModuleStateTest, SettingNullLeavesTheFlagAsItWas) {
  auto p = std::make_shared<test_support::RecordingProgress>();
  SetProgressContainer(p);
  SetProgressContainer(nullptr);
  EXPECT_EQ(Module().pctContainer, nullptr);
  EXPECT_TRUE(Module().pctContainerSet);

  bool setAfterNull = true;
  bool containerAfterNull = true;
  OnFreshThread([&] {
    SetProgressContainer(nullptr);
    setAfterNull = Module().pctContainerSet;
    containerAfterNull = Module().pctContainer != nullptr;
  });
  EXPECT_FALSE(setAfterNull);
  EXPECT_FALSE(containerAfterNull);
}

TEST_F(ModuleStateTest, YieldToHostReportsTheCancelFlag) {
  EXPECT_FALSE(YieldToHost());
  Module().CancelLoad = true;
  EXPECT_TRUE(YieldToHost());
}

TEST_F(ModuleStateTest, HostMaySetCancelDuringTheYield) {
  auto host = std::make_shared<test_support::ScriptedHost>();
  host->onYield = [] { Module().CancelLoad = true; };
  test_support::ScopedHost installed(host);
  EXPECT_TRUE(YieldToHost());
  EXPECT_EQ(host->nYields, 1);
}

TEST_F(ModuleStateTest, SharedToolsAreCreatedOnFirstUse) {
  bool before = true, after = false, same = false;
  OnFreshThread([&] {
    before = SharedToolsAlive();
    StringTools& s = SharedStringTools();
    after = SharedToolsAlive();
    same = &s == &SharedStringTools();
  });
  EXPECT_FALSE(before);
  EXPECT_TRUE(after);
  EXPECT_TRUE(same);
}

TEST_F(ModuleStateTest, EachToolIsOneInstanceForTheThread) {
  EXPECT_EQ(&SharedArrayTools(), &SharedArrayTools());
  EXPECT_EQ(&SharedByteTools(), &SharedByteTools());
  EXPECT_EQ(&SharedDateTools(), &SharedDateTools());
  EXPECT_EQ(&SharedStringTools(), &SharedStringTools());
}

TEST_F(ModuleStateTest, ReleaseSharedToolsReleasesAllAndNextUseCreatesAgain) {
  SharedArrayTools();
  SharedStringTools();
  SharedByteTools();
  SharedDateTools();
  EXPECT_TRUE(SharedToolsAlive());
  ReleaseSharedTools();
  EXPECT_FALSE(SharedToolsAlive());
  ReleaseSharedTools();
  EXPECT_FALSE(SharedToolsAlive());
  SharedDateTools();
  EXPECT_TRUE(SharedToolsAlive());
  ReleaseSharedTools();
  EXPECT_FALSE(SharedToolsAlive());
}

TEST_F(ModuleStateTest, SharedToolsBelongToTheirThread) {
  SharedArrayTools();
  bool aliveThere = true;
  OnFreshThread([&] { aliveThere = SharedToolsAlive(); });
  EXPECT_FALSE(aliveThere);
  EXPECT_TRUE(SharedToolsAlive());
  bool releasedThere = false;
  OnFreshThread([&] {
    SharedByteTools();
    ReleaseSharedTools();
    releasedThere = !SharedToolsAlive();
  });
  EXPECT_TRUE(releasedThere);
  EXPECT_TRUE(SharedToolsAlive());
}
