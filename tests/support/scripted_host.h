// A scriptable stand-in for the host, for tests.
//
// ScriptedHost answers each dialog from a queue of answers the test pushes
// beforehand and records every call it receives, in order, with its
// arguments as text. When a queue runs dry it gives the non-interactive
// default of HostServices, so a test scripts only the answers it cares
// about. A yield can run a test action (for instance setting CancelLoad
// after so many yields, to stop a long loop).
//
// Install one for the current thread with ScopedHost, which restores the
// defaults when it goes out of scope:
//
//   auto host = std::make_shared<vndata::test_support::ScriptedHost>();
//   host->choiceAnswers.push_back(2);
//   vndata::test_support::ScopedHost installed(host);
//   ... call the library ...
//   EXPECT_EQ(host->CallsNamed("ChoiceDialog"), 1);
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "vndata/platform/host_services.h"
#include "vndata/platform/module_state.h"

namespace vndata::test_support {

class ScriptedHost : public HostServices {
 public:
  // One call received: the member's name and its arguments in declared
  // order, each as text ("1"/"0" for a Boolean, the number for an integer).
  // For ChoiceDialog the buttons follow the three leading arguments.
  struct Call {
    std::string zName;
    std::vector<std::string> zArgs;
  };

  // Answers, taken from the front; an empty queue gives the default answer.
  std::deque<int32_t> choiceAnswers;
  std::deque<bool> yesNoAnswers;
  std::deque<std::string> saveAnswers;
  // Run on every Yield, after the call is recorded.
  std::function<void()> onYield;

  std::vector<Call> calls;
  int32_t nYields = 0;

  // Sets the thread's CancelLoad flag at the n-th yield (counted from 1).
  void CancelAtYield(int32_t n) {
    onYield = [this, n] {
      if (nYields == n) Module().CancelLoad = true;
    };
  }

  // How many calls of the named member were received.
  int32_t CallsNamed(const std::string& zName) const {
    int32_t n = 0;
    for (const Call& c : calls)
      if (c.zName == zName) ++n;
    return n;
  }
  // The most recent call of the named member; nullptr when there was none.
  const Call* LastCall(const std::string& zName) const {
    for (auto it = calls.rbegin(); it != calls.rend(); ++it)
      if (it->zName == zName) return &*it;
    return nullptr;
  }

  void Yield() override {
    ++nYields;
    calls.push_back({"Yield", {}});
    if (onYield) onYield();
  }

  int32_t ChoiceDialog(const std::string& zText, const std::string& zCaption, int32_t iStyle,
                       const Array<std::string>& zButtons) override {
    Call c{"ChoiceDialog", {zText, zCaption, std::to_string(iStyle)}};
    for (const std::string& b : zButtons) c.zArgs.push_back(b);
    calls.push_back(std::move(c));
    if (choiceAnswers.empty())
      return HostServices::ChoiceDialog(zText, zCaption, iStyle, zButtons);
    int32_t answer = choiceAnswers.front();
    choiceAnswers.pop_front();
    return answer;
  }

  bool YesNoQuestion(const std::string& zTitle, const std::string& zText) override {
    calls.push_back({"YesNoQuestion", {zTitle, zText}});
    if (yesNoAnswers.empty()) return HostServices::YesNoQuestion(zTitle, zText);
    bool answer = yesNoAnswers.front();
    yesNoAnswers.pop_front();
    return answer;
  }

  void InformationMessage(const std::string& zTitle, const std::string& zText) override {
    calls.push_back({"InformationMessage", {zTitle, zText}});
  }

  std::string FileSaveDialog(const std::string& zTitle, const std::string& zProposedName,
                             const std::string& zFilter) override {
    calls.push_back({"FileSaveDialog", {zTitle, zProposedName, zFilter}});
    if (saveAnswers.empty()) return HostServices::FileSaveDialog(zTitle, zProposedName, zFilter);
    std::string answer = std::move(saveAnswers.front());
    saveAnswers.pop_front();
    return answer;
  }

  void SetBusyCursor(bool qBusy) override {
    calls.push_back({"SetBusyCursor", {qBusy ? "1" : "0"}});
  }
};

// A progress container that records what it is told.
class RecordingProgress : public ProgressContainer {
 public:
  int32_t nTicks = 0;
  std::vector<std::string> zTexts;

  void Tick() override { ++nTicks; }
  void SetText(const std::string& zText) override { zTexts.push_back(zText); }
};

// Installs host services for the current thread for the life of the object
// and restores the defaults afterwards.
class ScopedHost {
 public:
  explicit ScopedHost(std::shared_ptr<HostServices> host) { SetHostServices(std::move(host)); }
  ~ScopedHost() { SetHostServices(nullptr); }
  ScopedHost(const ScopedHost&) = delete;
  ScopedHost& operator=(const ScopedHost&) = delete;
};

}  // namespace vndata::test_support
