// Shared set-up of the store tests: a fresh store, an empty log, no host,
// and small data sets built the way a reader builds them.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/host_services.h"
#include "vndata/platform/message_log.h"
#include "vndata/platform/module_state.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

// A host whose choice dialog answers from a queue and records what it was
// shown; with the queue empty it answers like the non-interactive default.
class DialogHost : public HostServices {
 public:
  int32_t ChoiceDialog(const std::string& zText, const std::string& zCaption, int32_t iStyle,
                       const Array<std::string>& zButtons) override {
    ++questions;
    lastText = zText;
    lastCaption = zCaption;
    lastStyle = iStyle;
    lastButtons.clear();
    for (const std::string& b : zButtons) lastButtons.push_back(b);
    if (answers.empty()) return HostServices::ChoiceDialog(zText, zCaption, iStyle, zButtons);
    int32_t a = answers.front();
    answers.pop_front();
    return a;
  }
  std::deque<int32_t> answers;
  int32_t questions = 0;
  std::string lastText, lastCaption;
  int32_t lastStyle = 0;
  std::vector<std::string> lastButtons;
};

class StoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    SetHostServices(nullptr);
    Module().CancelLoad = false;
    MessageLog::Shared().Clear();
  }
  void TearDown() override { SetHostServices(nullptr); }

  std::shared_ptr<DialogHost> InstallScriptedHost(std::initializer_list<int32_t> answers) {
    auto host = std::make_shared<DialogHost>();
    host->answers.assign(answers.begin(), answers.end());
    SetHostServices(host);
    return host;
  }

  // A data set of one column per variable, 3 rows, group "Summary".
  static std::shared_ptr<mxDataSet> MakeSummary(const std::string& zOrigin,
                                                std::initializer_list<const char*> variables = {"WOPR"},
                                                const std::string& zGroup = "Summary") {
    auto ds = std::make_shared<mxDataSet>();
    ds->let_Origin(zOrigin);
    ds->let_GroupName(zGroup);
    ds->let_UniqueKey(zOrigin);
    ds->let_DataRootPath("root");
    ds->let_TVDisplayRoot(zOrigin);
    float base = 1.f;
    for (const char* v : variables) {
      Array<float> vals{base, base + 1.f, base + 2.f};
      Array<std::string> atts(1, kNumAttributes);
      atts(ATT_ORIGIN) = zOrigin;
      atts(ATT_TYPE) = "Summary";
      atts(ATT_CLASS) = "WELLS";
      atts(ATT_MEMBER) = "P1";
      atts(ATT_VARIABLE) = v;
      bool qOK = false;
      ds->AddDataColumn(vals, atts, qOK, 0);
      EXPECT_TRUE(qOK);
      base += 10.f;
    }
    return ds;
  }

  mxDataStore store;
};

}  // namespace vndata
