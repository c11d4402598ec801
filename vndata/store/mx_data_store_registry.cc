// The registry: how a data set enters the store and is handed back.
#include "vndata/derived/mx_dq_store.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/string_tools.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

namespace {
// The duplicate question's fixed parts.
constexpr const char* kDuplicateTitle = "Duplicate Name";
constexpr int32_t kQuestionStyle = 32;
enum DuplicateAnswer : int32_t { kAnswerOverwrite = 1, kAnswerRename = 2 };
}  // namespace

mxDataStore::mxDataStore() { ReInitialise(); }

mxDataStore::~mxDataStore() {
  // Drop the registry to its one spare element and release it, with the
  // derived quantities; the data sets go when their last holder lets go.
  DataSets_.Erase();
  DerivedQuantities_.reset();
  CheckDataSetNames_ = AutomaticOverWrite_ = AutomaticRename_ = AutomaticCancel_ = false;
}

void mxDataStore::ReInitialise() {
  RunGuarded("mxDataStore (Code) (ReInitialise)", kSpacedWording, [&] {
    DataSets_.ReDim(1, 1);
    DataSets_(1) = std::make_shared<mxDataSet>();
    DerivedQuantities_ = std::make_shared<mxDQStore>();
    NextDataSetPos_ = 1;
    IsModified_ = false;
    OverWrittenDataSet_ = false;
    RenamedDataSet_ = false;
    SearchExitAfter1_ = false;
    MultiSetSearch_ = false;
    CheckDataSetNames_ = true;
  });
}

bool mxDataStore::ValidIndex(int32_t iDataSet) const {
  return iDataSet >= 1 && iDataSet <= NextDataSetPos_;
}

bool mxDataStore::ValidDataSet(int32_t iDataSet) {
  bool valid = false;
  RunGuarded("mxDataStore (Code) (ValidDataSet)", kSpacedWording, [&] {
    valid = ValidIndex(iDataSet) && DataSets_.InBounds(iDataSet) && DataSets_(iDataSet) != nullptr;
  });
  return valid;
}

void mxDataStore::AddDataSet(std::shared_ptr<mxDataSet> cNewDataSet, bool& qOK) {
  RunGuarded("mxDataStore (Code) (AddDataSet)", kSpacedWording,
             [&] { AddChecked(std::move(cNewDataSet), qOK, true, false); });
}

void mxDataStore::AddDataSetAfterCheck(std::shared_ptr<mxDataSet> cNewDataSet, bool& qOK,
                                       bool qCheckIfLoaded) {
  RunGuarded("mxDataStore (Code) (AddDataSetAfterCheck)", kSpacedWording,
             [&] { AddChecked(std::move(cNewDataSet), qOK, qCheckIfLoaded, true); });
}

void mxDataStore::AddItem(std::shared_ptr<mxDataSet> cNewDataSet) {
  bool qOK = false;
  AddDataSet(std::move(cNewDataSet), qOK);
}

void mxDataStore::AddChecked(std::shared_ptr<mxDataSet> cNewDataSet, bool& qOK, bool qCheck,
                             bool qMarkRenamed) {
  qOK = false;
  if (!cNewDataSet) RaiseFault(kFaultObjectNotSet);
  int32_t iFound = 0;
  bool qFound = false;

  if (cNewDataSet->get_DefaultX() == -1 && !cNewDataSet->SetDefaultXByHeader("TIME"))
    cNewDataSet->let_DefaultX(1);

  if (qCheck) CheckPreviouslyLoaded(cNewDataSet, iFound, qFound);

  if (iFound >= 1 && iFound < NextDataSetPos_) {
    if (AutomaticOverWrite_) {
      StoreOverwrite(iFound, cNewDataSet, true);
      return;
    }
    if (AutomaticRename_) {
      CheckPreviouslyLoaded2(cNewDataSet, iFound, qFound);
      if (qMarkRenamed) RenamedDataSet_ = true;
    } else if (AutomaticCancel_) {
      return;
    } else {
      int32_t answer = AskDuplicateQuestion(*cNewDataSet);
      if (answer == kAnswerOverwrite) {
        StoreOverwrite(iFound, cNewDataSet, false);
        AutomaticOverWrite_ = true;
        return;
      }
      if (answer != kAnswerRename) {
        AutomaticCancel_ = true;
        return;
      }
      CheckPreviouslyLoaded2(cNewDataSet, iFound, qFound);
      AutomaticRename_ = true;
      if (qMarkRenamed) RenamedDataSet_ = true;
    }
  }
  Append(std::move(cNewDataSet), qFound);
  qOK = qFound;
}

void mxDataStore::StoreOverwrite(int32_t iFound, std::shared_ptr<mxDataSet> cNewDataSet,
                                 bool qClearFirst) {
  if (qClearFirst) DataSets_(iFound).reset();
  DataSets_(iFound) = std::move(cNewDataSet);
  PassEventHandlers(iFound);
  AddedDataSetPos_ = iFound;
  OverWrittenDataSet_ = true;
  IsModified_ = true;
}

void mxDataStore::Append(std::shared_ptr<mxDataSet> cNewDataSet, bool /*qFound*/) {
  DataSets_(NextDataSetPos_) = std::move(cNewDataSet);
  PassEventHandlers(NextDataSetPos_);
  AddedDataSetPos_ = NextDataSetPos_;
  OverWrittenDataSet_ = false;
  ++NextDataSetPos_;
  if (NextDataSetPos_ > DataSets_.UBound()) {
    DataSets_.ReDimPreserve(NextDataSetPos_);
    DataSets_(NextDataSetPos_) = std::make_shared<mxDataSet>();
  }
  IsModified_ = true;
}

int32_t mxDataStore::AskDuplicateQuestion(const mxDataSet& cNewDataSet) {
  const std::string zText = cNewDataSet.get_Origin() + " [" + cNewDataSet.get_GroupName() + "]" +
                            "\r\n\r\n" + " Name currently in use.";
  Array<std::string> zButtons{"&Overwrite", "&Rename", "&Cancel"};
  return GetHostServices().ChoiceDialog(zText, kDuplicateTitle, kQuestionStyle, zButtons);
}

void mxDataStore::AddItemAuto(std::shared_ptr<mxDataSet> cNewDataSet) {
  RunGuarded("mxDataStore (Code) (AddItemAuto)", kSpacedWording, [&] {
    if (!cNewDataSet) RaiseFault(kFaultObjectNotSet);
    int32_t iIgnored = 0;
    bool qIgnored = false;
    CheckPreviouslyLoaded2(cNewDataSet, iIgnored, qIgnored);
    DataSets_(NextDataSetPos_) = cNewDataSet;
    AddedDataSetPos_ = NextDataSetPos_;
    OverWrittenDataSet_ = false;
    cNewDataSet->let_UseNullVal(UseNullVal_);
    cNewDataSet->let_NullValue(NullValue_);
    ++NextDataSetPos_;
    DataSets_.ReDimPreserve(NextDataSetPos_);
    // The spare is null by now, so this hands nothing on: kept in this order.
    PassEventHandlers(NextDataSetPos_);
    IsModified_ = true;
  });
}

void mxDataStore::ExtendDataSets(int32_t nDataSets, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (ExtendDataSets)", kSpacedWording, [&] {
    if (nDataSets == 0) {
      DataSets_.ReDimPreserve(NextDataSetPos_);
    } else {
      int32_t upper = NextDataSetPos_ + nDataSets;
      DataSets_.ReDimPreserve(upper);
      for (int32_t i = NextDataSetPos_ + 1; i <= upper; ++i)
        DataSets_(i) = std::make_shared<mxDataSet>();
    }
    qOK = true;
  });
}

bool mxDataStore::GetDataSet(int32_t iDataSet, std::shared_ptr<mxDataSet>& cNewDataSet) {
  bool result = false;
  RunGuarded("mxDataStore (Code) (GetDataSet)", kSpacedWording, [&] {
    if (!ValidDataSet(iDataSet)) return;
    cNewDataSet = DataSets_(iDataSet);
    result = true;
  });
  return result;
}

bool mxDataStore::GetItem(int32_t iDataSet, std::shared_ptr<mxDataSet>& cNewDataSet) {
  return GetDataSet(iDataSet, cNewDataSet);
}

bool mxDataStore::SetItem(int32_t iDataSet, std::shared_ptr<mxDataSet> cDataSet) {
  bool result = false;
  RunGuarded("mxDataStore (Code) (SetItem)", kSpacedWording, [&] {
    if (!ValidIndex(iDataSet)) return;
    DataSets_(iDataSet) = std::move(cDataSet);
    PassEventHandlers(iDataSet);
    AddedDataSetPos_ = iDataSet;
    OverWrittenDataSet_ = true;
    result = true;
  });
  return result;
}

void mxDataStore::SetItemFromData(int32_t iDataSet, const Array2<float>& NewXY,
                                  const Array<std::string>& NewHeaders, bool& qOKL) {
  RunGuarded("mxDataStore (Code) (SetItemFromData)", kSpacedWording, [&] {
    std::shared_ptr<mxDataSet> cDataSet;
    // A bad position is normal traffic for a per-data-set operation: the
    // flag reports it and nothing is logged.
    if (!GetItem(iDataSet, cDataSet)) {
      qOKL = false;
      return;
    }
    cDataSet->InitialiseFrom2d(NewXY, NewHeaders, qOKL);
    qOKL = SetItem(iDataSet, cDataSet);
    cDataSet->let_IsDirty(true);
  });
}

void mxDataStore::SetAttribute(int32_t iDataSet, int32_t iAttribute, const std::string& zValue) {
  ForwardVoid("mxDataStore (Code) (SetAttribute)", iDataSet,
              [&](mxDataSet& ds) { ds.SetAttribute(iAttribute, zValue); });
}

void mxDataStore::SetDSFileName(int32_t iDataSet, const std::string& zFilename) {
  ForwardVoid("mxDataStore (Code) (SetDSFileName)", iDataSet, [&](mxDataSet& ds) { ds.let_FileName(zFilename); });
}

void mxDataStore::AppendColumnToDataSet(int32_t iDataSet, const Array<float>& dVals,
                                        Array<std::string>& zAttributes, bool& qOK,
                                        int32_t iCreationType) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (AppendColumnToDataSet)", iDataSet, [&](mxDataSet& ds) {
    // The column always takes the data set's own origin.
    zAttributes(4) = ds.get_Origin();
    ds.AddDataColumn(dVals, zAttributes, qOK, iCreationType);
  });
}

void mxDataStore::AppendGRFColumnToDataSet(const std::shared_ptr<mxDerivedQuantity>& /*Derived*/,
                                           int32_t iDataSet, const Array<float>& /*dVals*/,
                                           bool& qOK, int32_t /*iCreationType*/) {
  qOK = false;
  // The attribute row of a derived quantity comes from its evaluation
  // (getDQAttributes), which arrives with that module; until then the
  // column cannot be described and nothing is appended.
  ForwardVoid("mxDataStore (Code) (AppendGRFColumnToDataSet)", iDataSet, [](mxDataSet&) {});
}

void mxDataStore::PassEventHandlers(int32_t iDataSet) {
  if (!ValidDataSet(iDataSet)) return;
  mxDataSet& ds = At(iDataSet);
  ds.set_EventHandler(get_EventHandler());
  ds.set_IOEventHandler(get_IOEventHandler());
}

}  // namespace vndata
