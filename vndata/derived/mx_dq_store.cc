#include "vndata/derived/mx_dq_store.h"

#include <string>

#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

// An empty reference used as an object is fault 91, as on the platform.
const mxDerivedQuantity& Deref(const std::shared_ptr<mxDerivedQuantity>& p) {
  if (!p) RaiseFault(kFaultObjectNotSet);
  return *p;
}
}  // namespace

mxDQStore::mxDQStore() { ResetItems(); }

void mxDQStore::ResetItems() {
  NextDQPos_ = 1;
  DQItems_.ReDim(1, 1);
}

void mxDQStore::ReInitialise() {
  RunGuarded("mxDQStore (Code) (ReInitialise)", [&] {
    ResetItems();
    IsDirty_ = false;
  });
}

void mxDQStore::AddItemUnguarded(const std::shared_ptr<mxDerivedQuantity>& DQ) {
  copyDQClass(Deref(DQ), DQItems_(NextDQPos_));
  NextDQPos_ += 1;
  DQItems_.ReDimPreserve(NextDQPos_);
  IsDirty_ = true;
}

void mxDQStore::AddItem(const std::shared_ptr<mxDerivedQuantity>& DQ) {
  RunGuarded("mxDQStore (Code) (AddItem)", [&] { AddItemUnguarded(DQ); });
}

void mxDQStore::DQUpdate(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& DQ) {
  RunGuarded("mxDQStore (Code) (DQUpdate)", [&] {
    bool qOK = false;
    if (!ValidItem(Index, qOK)) return;
    copyDQClass(Deref(DQ), DQItems_(Index));
  });
}

void mxDQStore::DeleteItem(int32_t Index) {
  RunGuarded("mxDQStore (Code) (DeleteItem)", [&] {
    bool qOK = false;
    if (!ValidItem(Index, qOK)) return;
    int32_t nKeep = DQItems_.UBound() - 2;
    if (nKeep < 1) {
      // The last item goes: the store is emptied, IsDirty left as it is.
      ResetItems();
      return;
    }
    // The survivors are the filled items 1..NextDQPos-1 other than Index.
    // Naming the spare cell leaves one survivor too many for the temporary
    // array: that is a subscript fault and the store stays as it was.
    Array<std::shared_ptr<mxDerivedQuantity>> keep(1, nKeep);
    int32_t j = 0;
    for (int32_t i = 1; i <= DQItems_.UBound() - 1; ++i) {
      if (i == Index) continue;
      keep(++j) = DQItems_(i);
    }
    ResetItems();
    for (int32_t i = 1; i <= nKeep; ++i) AddItemUnguarded(keep(i));
  });
}

bool mxDQStore::InGetSetRange(int32_t Index) const {
  return Index >= 1 && Index <= NextDQPos_ && Count() > 0;
}

void mxDQStore::getItem(int32_t Index, std::shared_ptr<mxDerivedQuantity>& DQ, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDQStore (Code) (getItem)", [&] {
    if (!InGetSetRange(Index)) return;
    copyDQClass(Deref(DQItems_(Index)), DQ);
    qOK = true;
  });
}

void mxDQStore::SetItem(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& DQ, bool& qOK) {
  qOK = false;
  RunGuarded("mxDQStore (Code) (SetItem)", [&] {
    if (!InGetSetRange(Index)) return;
    copyDQClass(Deref(DQ), DQItems_(Index));
    qOK = true;
  });
}

int32_t mxDQStore::Count() const { return DQItems_.UBound() - 1; }

bool mxDQStore::ValidItem(int32_t Index, bool& qOK) const {
  qOK = Index >= 1 && Index <= NextDQPos_;
  return qOK;
}

void mxDQStore::copyDQClass(const mxDerivedQuantity& from, std::shared_ptr<mxDerivedQuantity>& to) {
  // Built aside and handed over at the end, so `to` may even be the only
  // owner of `from`.
  auto fresh = std::make_shared<mxDerivedQuantity>();
  mxDerivedQuantity& t = *fresh;
  t.let_Class(from.get_Class());
  t.let_Expression(from.get_Expression());
  t.let_Index(from.get_Index());
  t.let_Member(from.get_Member());
  t.let_ResultColumnHeader(from.get_ResultColumnHeader());
  t.let_ResultColumnHeaderBase(from.get_ResultColumnHeaderBase());
  t.let_ResultOrigin(from.get_ResultOrigin());
  t.let_ResultUnits(from.get_ResultUnits());
  t.let_ResultVariable(from.get_ResultVariable());
  t.let_TargetDataDesc(from.get_TargetDataDesc());
  t.let_TargetDataSet(from.get_TargetDataSet());
  t.let_Variable(from.get_Variable());
  t.let_Well(from.get_Well());
  t.let_ResultSolIndex(from.get_ResultSolIndex());
  t.let_StandardFunction(from.get_StandardFunction());
  t.let_AmendedDataSetUsed(from.get_AmendedDataSetUsed());
  Array<std::string> zList;
  int32_t nList = 0;
  from.GetList(zList, nList);
  t.SetList(zList, nList);
  t.let_NumberOfArguments(from.get_NumberOfArguments());
  t.let_qApplyToAll(from.get_qApplyToAll());
  t.let_qApplyToList(from.get_qApplyToList());
  t.let_qApplyToAllGrids(from.get_qApplyToAllGrids());
  bool qHasLGRs = from.get_HasLGRs();
  t.let_HasLGRs(qHasLGRs);
  t.let_Verbose(from.get_Verbose());

  t.InitialiseArray(t.get_NumberOfArguments());
  // The locals outlive one argument, as the reads leave them alone on a bad
  // index.
  std::string zArgument, zFileName, zSource, zColHead, zOrigin, zClass, zUnits;
  bool qHide = false, qOK = false;
  int32_t iSolIndex = 0, iMethod = 0, iStepSize = 0, iInterval = 0;
  Date dStart;
  for (int32_t i = 1; i <= from.get_NumberOfArguments(); ++i) {
    from.GetArguments(i, zArgument, zFileName, zSource, zColHead, qHide, zOrigin, iSolIndex,
                      zClass);
    from.GetResampleMethod(i, iMethod);
    switch (iMethod) {
      case kResampleNone: {
        t.SetArguments(i, zArgument, zFileName, zSource, zColHead, qHide, zOrigin, iSolIndex,
                       zClass);
        bool qReassociate = from.GetArgument_ReAssociate(i, qOK);
        t.SetArgument_ReAssociate(i, qReassociate, qOK);
        break;
      }
      case kResampleByStepSize:
        from.GetResampleStepSize(i, iStepSize);
        t.SetResampleStepSize(i, iStepSize);
        break;
      case kResampleByPeriod:
        from.GetResamplePeriod(i, iInterval, zUnits, dStart);
        t.SetResamplePeriod(i, iInterval, zUnits, dStart);
        break;
      default: break;
    }
  }
  to = std::move(fresh);
}

}  // namespace vndata
