#include "vndata/platform/host_services.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

#include "tests/support/scripted_host.h"
#include "vndata/platform/module_state.h"

using namespace vndata;
using vndata::test_support::ScopedHost;
using vndata::test_support::ScriptedHost;

namespace {
Array<std::string> Buttons(std::initializer_list<std::string> names) {
  return Array<std::string>(names);
}

class HostServicesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    SetHostServices(nullptr);
    Module().CancelLoad = false;
  }
  void TearDown() override {
    SetHostServices(nullptr);
    Module().CancelLoad = false;
  }
};
}  // namespace

TEST_F(HostServicesTest, DefaultChoiceDialogAnswersItsLastButton) {
  EXPECT_EQ(GetHostServices().ChoiceDialog("Name in use", "Load", 0, Buttons({"Overwrite", "Rename", "Cancel"})), 3);
  EXPECT_EQ(GetHostServices().ChoiceDialog("t", "c", 0, Buttons({"OK"})), 1);
}

TEST_F(HostServicesTest, DefaultChoiceDialogWithNoButtonsAnswersZero) {
  EXPECT_EQ(GetHostServices().ChoiceDialog("t", "c", 0, Array<std::string>()), 0);
}

TEST_F(HostServicesTest, DefaultQuestionAnswersNo) {
  EXPECT_FALSE(GetHostServices().YesNoQuestion("Save", "Overwrite the file?"));
}

TEST_F(HostServicesTest, DefaultSaveDialogAnswersTheEmptyString) {
  EXPECT_EQ(GetHostServices().FileSaveDialog("Export", "data.csv", "*.csv"), "");
}

TEST_F(HostServicesTest, DefaultYieldDoesNothing) {
  GetHostServices().Yield();
  EXPECT_FALSE(Module().CancelLoad);
  EXPECT_FALSE(YieldToHost());
  GetHostServices().InformationMessage("t", "x");
  GetHostServices().SetBusyCursor(true);
  GetHostServices().SetBusyCursor(false);
}

TEST_F(HostServicesTest, InstalledHostIsTheOneInForce) {
  auto host = std::make_shared<ScriptedHost>();
  SetHostServices(host);
  EXPECT_EQ(&GetHostServices(), host.get());
}

TEST_F(HostServicesTest, ScriptedAnswersComeFromTheirQueuesInOrder) {
  auto host = std::make_shared<ScriptedHost>();
  host->choiceAnswers = {2, 1};
  host->yesNoAnswers = {true};
  host->saveAnswers = {"out.csv"};
  ScopedHost installed(host);
  HostServices& h = GetHostServices();
  EXPECT_EQ(h.ChoiceDialog("a", "b", 4, Buttons({"Yes", "No", "Cancel"})), 2);
  EXPECT_EQ(h.ChoiceDialog("a", "b", 4, Buttons({"Yes", "No", "Cancel"})), 1);
  EXPECT_TRUE(h.YesNoQuestion("Q", "Sure?"));
  EXPECT_EQ(h.FileSaveDialog("Export", "data.csv", "*.csv"), "out.csv");
  EXPECT_TRUE(host->choiceAnswers.empty());
  EXPECT_TRUE(host->yesNoAnswers.empty());
  EXPECT_TRUE(host->saveAnswers.empty());
}

TEST_F(HostServicesTest, ScriptedHostFallsBackToDefaultsWhenItsQueueIsEmpty) {
  auto host = std::make_shared<ScriptedHost>();
  ScopedHost installed(host);
  HostServices& h = GetHostServices();
  EXPECT_EQ(h.ChoiceDialog("a", "b", 0, Buttons({"One", "Two"})), 2);
  EXPECT_FALSE(h.YesNoQuestion("Q", "Sure?"));
  EXPECT_EQ(h.FileSaveDialog("Export", "x", "*.*"), "");
}

TEST_F(HostServicesTest, ScriptedHostRecordsEveryCallWithItsArguments) {
  auto host = std::make_shared<ScriptedHost>();
  ScopedHost installed(host);
  HostServices& h = GetHostServices();
  h.SetBusyCursor(true);
  h.ChoiceDialog("Name in use", "Load", 3, Buttons({"Overwrite", "Rename"}));
  h.InformationMessage("Info", "Done");
  h.YesNoQuestion("Save", "Overwrite?");
  h.FileSaveDialog("Export", "data.csv", "*.csv");
  h.Yield();
  h.SetBusyCursor(false);
  ASSERT_EQ(host->calls.size(), 7u);
  EXPECT_EQ(host->calls[0].zName, "SetBusyCursor");
  EXPECT_EQ(host->calls[0].zArgs, (std::vector<std::string>{"1"}));
  EXPECT_EQ(host->calls[1].zName, "ChoiceDialog");
  EXPECT_EQ(host->calls[1].zArgs,
            (std::vector<std::string>{"Name in use", "Load", "3", "Overwrite", "Rename"}));
  EXPECT_EQ(host->calls[2].zArgs, (std::vector<std::string>{"Info", "Done"}));
  EXPECT_EQ(host->calls[3].zName, "YesNoQuestion");
  EXPECT_EQ(host->calls[4].zArgs, (std::vector<std::string>{"Export", "data.csv", "*.csv"}));
  EXPECT_EQ(host->calls[5].zName, "Yield");
  EXPECT_EQ(host->calls[6].zArgs, (std::vector<std::string>{"0"}));
  EXPECT_EQ(host->CallsNamed("SetBusyCursor"), 2);
  ASSERT_NE(host->LastCall("SetBusyCursor"), nullptr);
  EXPECT_EQ(host->LastCall("SetBusyCursor")->zArgs[0], "0");
  EXPECT_EQ(host->LastCall("Nothing"), nullptr);
  EXPECT_EQ(host->nYields, 1);
}

TEST_F(HostServicesTest, NullptrRestoresTheDefaults) {
  auto host = std::make_shared<ScriptedHost>();
  host->choiceAnswers = {1, 1};
  SetHostServices(host);
  EXPECT_EQ(GetHostServices().ChoiceDialog("a", "b", 0, Buttons({"X", "Y", "Z"})), 1);
  SetHostServices(nullptr);
  EXPECT_NE(&GetHostServices(), host.get());
  EXPECT_EQ(GetHostServices().ChoiceDialog("a", "b", 0, Buttons({"X", "Y", "Z"})), 3);
  EXPECT_EQ(host->CallsNamed("ChoiceDialog"), 1);
}

TEST_F(HostServicesTest, ScopedHostRestoresTheDefaultsWhenItEnds) {
  auto host = std::make_shared<ScriptedHost>();
  {
    ScopedHost installed(host);
    EXPECT_EQ(&GetHostServices(), host.get());
  }
  EXPECT_NE(&GetHostServices(), host.get());
}

TEST_F(HostServicesTest, YieldCanCancelALongLoop) {
  auto host = std::make_shared<ScriptedHost>();
  host->CancelAtYield(3);
  ScopedHost installed(host);
  int32_t steps = 0;
  while (steps < 100) {
    ++steps;
    if (YieldToHost()) break;
  }
  EXPECT_EQ(steps, 3);
  EXPECT_TRUE(Module().CancelLoad);
  EXPECT_EQ(host->nYields, 3);
}

TEST_F(HostServicesTest, InstalledHostBelongsToItsThreadOnly) {
  auto host = std::make_shared<ScriptedHost>();
  ScopedHost installed(host);
  bool sameThere = true;
  int32_t answerThere = 0;
  std::thread t([&] {
    sameThere = &GetHostServices() == host.get();
    answerThere = GetHostServices().ChoiceDialog("a", "b", 0, Buttons({"X", "Y"}));
  });
  t.join();
  EXPECT_FALSE(sameThere);
  EXPECT_EQ(answerThere, 2);
  EXPECT_EQ(host->CallsNamed("ChoiceDialog"), 0);
  EXPECT_EQ(&GetHostServices(), host.get());
}

TEST_F(HostServicesTest, ProgressContainerDefaultsDoNothingAndDoubleRecords) {
  ProgressContainer plain;
  plain.Tick();
  plain.SetText("GETAVECTOR:1");
  vndata::test_support::RecordingProgress p;
  p.Tick();
  p.Tick();
  p.SetText("GETAVECTOR:7");
  EXPECT_EQ(p.nTicks, 2);
  ASSERT_EQ(p.zTexts.size(), 1u);
  EXPECT_EQ(p.zTexts[0], "GETAVECTOR:7");
}
