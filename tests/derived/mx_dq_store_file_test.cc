#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "tests/persist/persist_test_util.h"
#include "tests/support/scripted_host.h"
#include "vndata/derived/mx_dq_store.h"

using namespace vndata;
using namespace vndata::persist_test;

namespace {

struct Header {
  std::string keyword;
  int32_t count;
  std::string type;
  bool operator==(const Header& o) const {
    return std::tie(keyword, count, type) == std::tie(o.keyword, o.count, o.type);
  }
};

std::ostream& operator<<(std::ostream& os, const Header& h) {
  return os << h.keyword << "/" << h.count << "/" << h.type;
}

class DQFormatTest : public RecordFileTest {
 protected:
  void Save(mxDQStore& store) {
    RecordFile w;
    bool qOK = false;
    w.OpenForWrite(name_, qOK);
    ASSERT_TRUE(qOK);
    store.WriteDQ(w);
    w.Close(qOK);
    ASSERT_TRUE(qOK);
    OpenReader();
  }
  // Every header of the file, payloads skipped.
  std::vector<Header> Headers() {
    OpenReader();
    std::vector<Header> out;
    RecordCodec codec;
    for (;;) {
      Header h{"", 0, ""};
      bool qOK = false;
      codec.ReadHeader(reader_, h.keyword, h.count, h.type, qOK);
      if (!qOK) break;
      out.push_back(h);
      RecordStreamReaderSkip(codec, h);
    }
    OpenReader();
    return out;
  }
  void RecordStreamReaderSkip(RecordCodec& codec, const Header& h) {
    bool qOK = false;
    for (int32_t i = 0; i < h.count; ++i) {
      Variant v;
      codec.ReadValue(reader_, v, qOK);
    }
  }
};

std::shared_ptr<mxDerivedQuantity> Quantity(const std::string& zName) {
  auto dq = std::make_shared<mxDerivedQuantity>();
  dq->let_Class("WELLS");
  dq->let_Expression(zName + " = OPR / WPR");
  dq->let_Index("7");
  dq->let_Member("P1");
  dq->let_ResultColumnHeader(zName + "1");
  dq->let_ResultColumnHeaderBase(zName);
  dq->let_ResultOrigin("CASE_A");
  dq->let_ResultUnits("SM3/SM3");
  dq->let_ResultVariable(zName + "VAR");
  dq->let_TargetDataDesc("Summary");
  dq->let_Variable(zName + "1");
  dq->let_Well("P1");
  dq->let_Verbose("A description with spaces, and a comma");
  dq->let_ResultSolIndex(3);
  dq->let_TargetDataSet(2);
  dq->let_AmendedDataSetUsed(5);
  dq->let_StandardFunction(true);
  dq->let_qApplyToAll(false);
  dq->let_qApplyToList(true);
  return dq;
}

// The fields the group carries, quantity and arguments, compared one by one.
// The quantity's Class is checked by the callers: "DQCLASS" at the argument
// level also lands in the quantity.
void ExpectSameCarriedFields(const mxDerivedQuantity& a, const mxDerivedQuantity& b) {
  EXPECT_EQ(a.get_Expression(), b.get_Expression());
  EXPECT_EQ(a.get_Index(), b.get_Index());
  EXPECT_EQ(a.get_Member(), b.get_Member());
  EXPECT_EQ(a.get_ResultColumnHeader(), b.get_ResultColumnHeader());
  EXPECT_EQ(a.get_ResultColumnHeaderBase(), b.get_ResultColumnHeaderBase());
  EXPECT_EQ(a.get_ResultOrigin(), b.get_ResultOrigin());
  EXPECT_EQ(a.get_ResultUnits(), b.get_ResultUnits());
  EXPECT_EQ(a.get_ResultVariable(), b.get_ResultVariable());
  EXPECT_EQ(a.get_TargetDataDesc(), b.get_TargetDataDesc());
  EXPECT_EQ(a.get_Variable(), b.get_Variable());
  EXPECT_EQ(a.get_Well(), b.get_Well());
  EXPECT_EQ(a.get_Verbose(), b.get_Verbose());
  EXPECT_EQ(a.get_ResultSolIndex(), b.get_ResultSolIndex());
  EXPECT_EQ(a.get_TargetDataSet(), b.get_TargetDataSet());
  EXPECT_EQ(a.get_NumberOfArguments(), b.get_NumberOfArguments());
  EXPECT_EQ(a.get_AmendedDataSetUsed(), b.get_AmendedDataSetUsed());
  EXPECT_EQ(a.get_StandardFunction(), b.get_StandardFunction());
  EXPECT_EQ(a.get_qApplyToAll(), b.get_qApplyToAll());
  EXPECT_EQ(a.get_qApplyToList(), b.get_qApplyToList());
  for (int32_t i = 1; i <= a.get_NumberOfArguments(); ++i) {
    std::string a1, a2, a3, a4, a5, a6, b1 = "?", b2 = "?", b3 = "?", b4 = "?", b5 = "?", b6 = "?";
    bool ah = false, bh = !ah;
    int32_t as = 0, bs = -12345;
    a.GetArguments(i, a1, a2, a3, a4, ah, a5, as, a6);
    b.GetArguments(i, b1, b2, b3, b4, bh, b5, bs, b6);
    EXPECT_EQ(a1, b1) << "argument " << i;
    EXPECT_EQ(a2, b2) << "argument " << i;
    EXPECT_EQ(a3, b3) << "argument " << i;
    EXPECT_EQ(a4, b4) << "argument " << i;
    EXPECT_EQ(ah, bh) << "argument " << i;
    EXPECT_EQ(a5, b5) << "argument " << i;
    EXPECT_EQ(as, bs) << "argument " << i;
    EXPECT_EQ(a6, b6) << "argument " << i;
    bool qa = false, qb = false;
    EXPECT_EQ(a.GetArgument_ReAssociate(i, qa), b.GetArgument_ReAssociate(i, qb)) << i;
    EXPECT_TRUE(qa && qb);
  }
}

std::shared_ptr<mxDerivedQuantity> Item(const mxDQStore& store, int32_t i) {
  std::shared_ptr<mxDerivedQuantity> dq;
  bool qOK = false;
  store.getItem(i, dq, qOK);
  EXPECT_TRUE(qOK) << "item " << i;
  return dq;
}

TEST_F(DQFormatTest, AnEmptyStoreWritesTheTwoTagsOnly) {
  mxDQStore store;
  Save(store);
  EXPECT_EQ(Headers(), (std::vector<Header>{{"DQSTORE>", 0, "CHAR"}, {"<DQSTORE", 0, "CHAR"}}));
  mxDQStore loaded;
  bool qOK = false;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(loaded.Count(), 0);
}

TEST_F(DQFormatTest, RecordsOfAQuantityAndItsArgumentComeInTheirOrder) {
  mxDQStore store;
  auto dq = Quantity("R");
  dq->AddArguments("A", "f.smspec", "grp", "FOPR", false, "CASE_A", 1, "FIELD");
  store.AddItem(dq);
  Save(store);
  std::vector<Header> want = {
      {"DQSTORE>", 0, "CHAR"},         {"DERQ>", 0, "CHAR"},         {"DQCLASS", 1, "CHAR"},
      {"DQEXPRESSION", 1, "CHAR"},     {"DQINDEX", 1, "CHAR"},       {"DQMEMBER", 1, "CHAR"},
      {"DQRESCOLHEADER", 1, "CHAR"},   {"DQRESCOLBASE", 1, "CHAR"},  {"DQRESORIGIN", 1, "CHAR"},
      {"DQRESUNITS", 1, "CHAR"},       {"DQRESVARIABLE", 1, "CHAR"}, {"DQTARGDESC", 1, "CHAR"},
      {"DQVARIABLE", 1, "CHAR"},       {"DQWELL", 1, "CHAR"},        {"DQVERBOSE", 1, "CHAR"},
      {"DQRESSOLINDEX", 1, "INTE"},    {"DQTARGSET", 1, "INTE"},     {"DQNUMARGS", 1, "INTE"},
      {"DQAMENDEDDATASET", 1, "INTE"}, {"DQSTANDARDFNC", 1, "LOGI"}, {"DQAPPLYALL", 1, "LOGI"},
      {"DQAPPLYLIST", 1, "LOGI"},      {"DERQARG>", 0, "CHAR"},      {"DQWHICHARG", 1, "INTE"},
      {"DQARGUMENT", 1, "CHAR"},       {"DQFILENAME", 1, "CHAR"},    {"DQSOURCE", 1, "CHAR"},
      {"DQCOLHEAD", 1, "CHAR"},        {"DQORIGIN", 1, "CHAR"},      {"DQCLASS", 1, "CHAR"},
      {"DQSOLINDEX", 1, "INTE"},       {"DQHIDE", 1, "LOGI"},        {"DQREASSOCIATE", 1, "LOGI"},
      {"<DERQARG", 0, "CHAR"},         {"<DERQ", 0, "CHAR"},         {"<DQSTORE", 0, "CHAR"},
  };
  EXPECT_EQ(Headers(), want);
}

TEST_F(DQFormatTest, AQuantityWithoutArgumentsWritesNoArgumentGroupAndLoadsWithNone) {
  mxDQStore store;
  store.AddItem(Quantity("NOARGS"));
  Save(store);
  for (const Header& h : Headers()) EXPECT_NE(h.keyword, "DERQARG>");
  mxDQStore loaded;
  bool qOK = false;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(loaded.Count(), 1);
  EXPECT_EQ(Item(loaded, 1)->get_NumberOfArguments(), 0);
}

TEST_F(DQFormatTest, SeveralQuantitiesWithArgumentsRoundTripFieldByField) {
  mxDQStore store;
  auto q1 = Quantity("RATIO");
  q1->AddArguments("OPR", "CASE_A.SMSPEC", "Summary", "WELLS\\OPR", false, "CASE_A", -1, "WELLS");
  q1->AddArguments("WPR", "CASE_A.SMSPEC", "Summary", "WELLS\\WPR", true, "CASE_A", 4, "WELLS");
  bool qOK = false;
  q1->SetArgument_ReAssociate(2, true, qOK);
  auto q2 = Quantity("RESAMPLED");
  q2->let_StandardFunction(false);
  q2->let_qApplyToAll(true);
  q2->let_TargetDataSet(-1);
  q2->AddArguments("X", "x.f", "grp", "FOPT", false, "CASE_B", 0, "FIELD");
  q2->AddArguments("Y", "y.f", "grp", "FWPT", false, "CASE_B", 0, "FIELD");
  q2->AddArguments("Z", "z.f", "grp", "FGPT", true, "CASE_B", 2, "FIELD");
  q2->SetArgument_ReAssociate(3, true, qOK);
  q2->SetResampleStepSize(1, 5);
  q2->SetResamplePeriod(2, 1, "MONTH", Date(36526.0));
  auto q3 = Quantity("");  // empty texts are written too
  q3->let_Class("");
  q3->let_Verbose("");
  q3->AddArguments("", "", "", "", false, "", 0, "");
  store.AddItem(q1);
  store.AddItem(q2);
  store.AddItem(q3);
  Save(store);

  mxDQStore loaded;
  loaded.ReadDQ(reader_, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(loaded.Count(), 3);
  for (int32_t i = 1; i <= 3; ++i) {
    SCOPED_TRACE("quantity " + std::to_string(i));
    ExpectSameCarriedFields(*Item(store, i), *Item(loaded, i));
  }
  // What the store held for the resampled arguments was already stripped of
  // their names; the file carries those empty names and no resampling.
  auto r = Item(loaded, 2);
  EXPECT_EQ(r->GetArgumentName(1), "");
  EXPECT_EQ(r->GetArgumentName(2), "");
  EXPECT_EQ(r->GetArgumentName(3), "Z");
  int32_t iMethod = -1;
  r->GetResampleMethod(1, iMethod);
  EXPECT_EQ(iMethod, 0);
  // Values that the file really carried, checked against the originals.
  auto l1 = Item(loaded, 1);
  EXPECT_EQ(l1->get_AmendedDataSetUsed(), 5);
  EXPECT_EQ(l1->get_Verbose(), "A description with spaces, and a comma");
  std::string a, f, s, c, o, k;
  bool h = false;
  int32_t si = 0;
  l1->GetArguments(2, a, f, s, c, h, o, si, k);
  EXPECT_EQ(a, "WPR");
  EXPECT_EQ(c, "WELLS\\WPR");
  EXPECT_TRUE(h);
  EXPECT_EQ(si, 4);
  EXPECT_EQ(k, "WELLS");
  EXPECT_TRUE(l1->GetArgument_ReAssociate(2, qOK));
  // "DQCLASS" at both levels: the quantity keeps the class of its last
  // argument, so a class that differs from its arguments' does not survive.
  EXPECT_EQ(l1->get_Class(), "WELLS");
  EXPECT_EQ(r->get_Class(), "FIELD");
  EXPECT_EQ(Item(store, 2)->get_Class(), "WELLS");
  EXPECT_EQ(Item(loaded, 3)->get_Class(), "");
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(DQFormatTest, ACountWithoutArgumentGroupsLoadsWithThatCountAndTheArgumentsMissing) {
  Write([](RecordCodec& c, RecordFile& f) {
    Tag(c, f, "DQSTORE>");
    Tag(c, f, "DERQ>");
    Text(c, f, "DQRESCOLHEADER", {"H"});
    Ints(c, f, "DQNUMARGS", {2});
    Tag(c, f, "<DERQ");
    Tag(c, f, "<DQSTORE");
  });
  mxDQStore loaded;
  bool qOK = false;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(loaded.Count(), 1);
  auto dq = Item(loaded, 1);
  EXPECT_EQ(dq->get_NumberOfArguments(), 2);
  EXPECT_EQ(dq->GetArgumentName(1), "");
  EXPECT_EQ(dq->GetArgumentName(2), "");
}

TEST_F(DQFormatTest, ArgumentGroupsBeyondTheCountExtendIt) {
  Write([](RecordCodec& c, RecordFile& f) {
    Tag(c, f, "DERQ>");
    Ints(c, f, "DQNUMARGS", {1});
    for (const char* z : {"FIRST", "SECOND"}) {
      Tag(c, f, "DERQARG>");
      Text(c, f, "DQARGUMENT", {z});
      Logicals(c, f, "DQREASSOCIATE", {true});
      Tag(c, f, "<DERQARG");
    }
    Tag(c, f, "<DERQ");
    Tag(c, f, "<DQSTORE");
  });
  mxDQStore loaded;
  bool qOK = false;
  loaded.ReadDQ(reader_, qOK);  // standing behind "DQSTORE>"
  EXPECT_TRUE(qOK);
  auto dq = Item(loaded, 1);
  EXPECT_EQ(dq->get_NumberOfArguments(), 2);
  EXPECT_EQ(dq->GetArgumentName(1), "FIRST");
  EXPECT_EQ(dq->GetArgumentName(2), "SECOND");
  EXPECT_TRUE(dq->GetArgument_ReAssociate(2, qOK));
}

TEST_F(DQFormatTest, ReadingFromBehindTheOpeningTagWorksAsFromIt) {
  mxDQStore store;
  store.AddItem(Quantity("Q"));
  Save(store);
  RecordCodec codec;
  std::string k, t;
  int32_t n = 0;
  bool qOK = false;
  codec.ReadHeader(reader_, k, n, t, qOK);
  ASSERT_EQ(k, "DQSTORE>");
  mxDQStore loaded;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(loaded.Count(), 1);
  EXPECT_EQ(Item(loaded, 1)->get_ResultColumnHeader(), "Q1");
}

TEST_F(DQFormatTest, AGroupCutOffByTheEndOfTheFileLosesTheQuantityBeingRead) {
  mxDQStore store;
  store.AddItem(Quantity("ONE"));
  store.AddItem(Quantity("TWO"));
  Save(store);
  // Cut in the middle of the second quantity: just after its "DQVERBOSE".
  std::vector<Header> all = Headers();
  std::size_t keepRecords = 0;
  int32_t nDerq = 0;
  for (std::size_t i = 0; i < all.size(); ++i)
    if (all[i].keyword == "DERQ>" && ++nDerq == 2) keepRecords = i + 5;
  ASSERT_GT(keepRecords, 0u);
  RecordCodec codec;
  for (std::size_t i = 0; i < keepRecords; ++i) {
    std::string k, t;
    int32_t n = 0;
    bool qOK = false;
    codec.ReadHeader(reader_, k, n, t, qOK);
    RecordStreamReaderSkip(codec, Header{k, n, t});
  }
  Truncate(static_cast<std::size_t>(reader_.Position()));
  mxDQStore loaded;
  bool qOK = true;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(loaded.Count(), 1);
  EXPECT_EQ(Item(loaded, 1)->get_ResultColumnHeader(), "ONE1");
}

TEST_F(DQFormatTest, UnknownRecordsInsideTheGroupAreDropped) {
  Write([](RecordCodec& c, RecordFile& f) {
    Tag(c, f, "DQSTORE>");
    Reals(c, f, "DQFUTURE", {1.f, 2.f});
    Tag(c, f, "DERQ>");
    Doubles(c, f, "DQSCALE", {2.0});
    Ints(c, f, "DQNEWCOUNT", {1, 2, 3});
    Logicals(c, f, "DQNEWFLAG", {true});
    Text(c, f, "DQNEWTEXT", {"a", "b"});
    Bytes(c, f, "DQBLOB", {9, 9});
    Text(c, f, "DQEXPRESSION", {"A+B"});
    Ints(c, f, "DQNUMARGS", {0});
    Tag(c, f, "<DERQ");
    Tag(c, f, "<DQSTORE");
  });
  mxDQStore loaded;
  bool qOK = false;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(loaded.Count(), 1);
  EXPECT_EQ(Item(loaded, 1)->get_Expression(), "A+B");
}

TEST_F(DQFormatTest, ATextFieldOfCountZeroLeavesThePropertyAlone) {
  Write([](RecordCodec& c, RecordFile& f) {
    Tag(c, f, "DERQ>");
    Text(c, f, "DQEXPRESSION", {});
    Ints(c, f, "DQTARGSET", {});
    Tag(c, f, "<DERQ");
    Tag(c, f, "<DQSTORE");
  });
  mxDQStore loaded;
  bool qOK = false;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_TRUE(qOK);
  auto dq = Item(loaded, 1);
  EXPECT_EQ(dq->get_Expression(), "");
  EXPECT_EQ(dq->get_TargetDataSet(), -1);
}

TEST_F(DQFormatTest, AFieldOutsideAQuantityIsATracedFault) {
  Write([](RecordCodec& c, RecordFile& f) {
    Tag(c, f, "DQSTORE>");
    Text(c, f, "DQEXPRESSION", {"orphan"});
    Tag(c, f, "<DQSTORE");
  });
  mxDQStore loaded;
  bool qOK = true;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Object variable or With block variable not set (No.91) In [mxDQStore (Code) "
            "(ReadDQ)] ");
}

TEST_F(DQFormatTest, ReadingAddsToWhatTheStoreHolds) {
  mxDQStore store;
  store.AddItem(Quantity("NEW"));
  Save(store);
  mxDQStore loaded;
  loaded.AddItem(Quantity("OLD"));
  bool qOK = false;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(loaded.Count(), 2);
  EXPECT_EQ(Item(loaded, 1)->get_ResultColumnHeader(), "OLD1");
  EXPECT_EQ(Item(loaded, 2)->get_ResultColumnHeader(), "NEW1");
}

TEST_F(DQFormatTest, ReadingYieldsAfterEveryRecordAndWritingAfterEveryQuantity) {
  mxDQStore store;
  store.AddItem(Quantity("A"));
  store.AddItem(Quantity("B"));
  auto host = std::make_shared<test_support::ScriptedHost>();
  test_support::ScopedHost installed(host);
  Save(store);
  EXPECT_EQ(host->nYields, 2);
  std::size_t nRecords = Headers().size();
  host->nYields = 0;
  mxDQStore loaded;
  bool qOK = false;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(host->nYields, static_cast<int32_t>(nRecords));
}

TEST_F(DQFormatTest, ACancelledReadStopsAndReportsFalse) {
  mxDQStore store;
  store.AddItem(Quantity("A"));
  store.AddItem(Quantity("B"));
  Save(store);
  auto host = std::make_shared<test_support::ScriptedHost>();
  host->CancelAtYield(30);  // inside the second quantity
  test_support::ScopedHost installed(host);
  mxDQStore loaded;
  bool qOK = true;
  loaded.ReadDQ(reader_, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(loaded.Count(), 1);
}

}  // namespace
