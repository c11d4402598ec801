// mxDataStore: the one object a host creates and keeps.
//
// It owns the ordered registry of data sets and the derived-quantity store.
// After adding, a data set's one-based position is the host's only handle.
// Positions 1 .. NextDataSetPos-1 hold the data sets in order of arrival;
// position NextDataSetPos is a spare slot that counts as valid (it holds an
// empty data set after ReInitialise and the checked adds, a null reference
// after AddItemAuto).
//
// Every public operation is guarded: a fault inside writes one trace line
// "Error: <text> (No. <n>) In [mxDataStore (Code) (<procedure>)] " and the
// operation returns with its outputs as they stood. A bad position is not a
// fault: per-data-set operations return their default silently.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/host_services.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/store/mx_notify_data.h"

namespace vndata {

class mxDQStore;
class mxDerivedQuantity;

class mxDataStore {
 public:
  mxDataStore();
  ~mxDataStore();
  mxDataStore(const mxDataStore&) = delete;
  mxDataStore& operator=(const mxDataStore&) = delete;

  // ---- Registry ----------------------------------------------------------
  // Adds with the duplicate check; qOK reports the check, not the add.
  void AddDataSet(std::shared_ptr<mxDataSet> cNewDataSet, bool& qOK);
  // Adds, with the check only when qCheckIfLoaded; a rename also sets
  // RenamedDataSet.
  void AddDataSetAfterCheck(std::shared_ptr<mxDataSet> cNewDataSet, bool& qOK,
                            bool qCheckIfLoaded = true);
  void AddItem(std::shared_ptr<mxDataSet> cNewDataSet);
  // Renames a duplicate without asking and appends; the new spare slot stays
  // null and the data set gets no event handlers.
  void AddItemAuto(std::shared_ptr<mxDataSet> cNewDataSet);
  void ExtendDataSets(int32_t nDataSets, bool& qOK);
  bool GetDataSet(int32_t iDataSet, std::shared_ptr<mxDataSet>& cNewDataSet);
  bool GetItem(int32_t iDataSet, std::shared_ptr<mxDataSet>& cNewDataSet);
  bool SetItem(int32_t iDataSet, std::shared_ptr<mxDataSet> cDataSet);
  void SetItemFromData(int32_t iDataSet, const Array2<float>& NewXY,
                       const Array<std::string>& NewHeaders, bool& qOKL);
  void SetAttribute(int32_t iDataSet, int32_t iAttribute, const std::string& zValue);
  void SetDSFileName(int32_t iDataSet, const std::string& zFilename);
  // Overwrites zAttributes(4) with the data set's Origin, then appends.
  void AppendColumnToDataSet(int32_t iDataSet, const Array<float>& dVals,
                             Array<std::string>& zAttributes, bool& qOK,
                             int32_t iCreationType = 0);
  // Appends a column described by a derived quantity. The attribute row
  // comes from the derived-quantity evaluation, which is not built yet: until
  // then this reports false.
  void AppendGRFColumnToDataSet(const std::shared_ptr<mxDerivedQuantity>& Derived,
                                int32_t iDataSet, const Array<float>& dVals, bool& qOK,
                                int32_t iCreationType = 0);
  void ReInitialise();
  bool ValidDataSet(int32_t iDataSet);
  int32_t get_NumberOfDataSets() const { return NextDataSetPos_ - 1; }

  // ---- Previously loaded and duplicates ---------------------------------------
  void CheckPreviouslyLoaded(const std::shared_ptr<mxDataSet>& cDataSet, int32_t& iDataSet,
                             bool& qOK);
  void CheckPreviouslyLoaded2(const std::shared_ptr<mxDataSet>& cDataSet, int32_t& iDataSet,
                              bool& qOK);

  // ---- Null values -------------------------------------------------------------
  void SET_GLOBAL_NULLVALUES();
  void SET_GLOBAL_USING_NULLS();
  void SetDataNULLVALUE(int32_t iDataSet, int32_t qUseNull, double sNullVal);
  void GetDataNULLVALUE(int32_t iDataSet, int32_t& qUseNull, double& sNullVal);

  // ---- Derived quantities --------------------------------------------------------
  // The store's definitions, held as deep copies (see DQStoreFacade).
  void DQAdd(const std::shared_ptr<mxDerivedQuantity>& NewDQ);
  void DQUpdate(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& NewDQ);
  void DQDeleteItem(int32_t Index);
  void DQGetItem(int32_t Index, std::shared_ptr<mxDerivedQuantity>& NewDQ) const;
  void DQSetItem(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& NewDQ);
  void ReinitialiseDQ();
  int32_t DQNumberOfDerivedQuantities() const;

  // ---- Properties ------------------------------------------------------------
  int32_t get_AddedDataSetPos() const { return AddedDataSetPos_; }
  bool get_OverWrittenDataSet() const { return OverWrittenDataSet_; }
  bool get_RenamedDataSet() const { return RenamedDataSet_; }
  void let_RenamedDataSet(bool v) { RenamedDataSet_ = v; }
  bool get_CheckDataSetNames() const { return CheckDataSetNames_; }
  void let_CheckDataSetNames(bool v) { CheckDataSetNames_ = v; }
  bool get_AutomaticOverWrite() const { return AutomaticOverWrite_; }
  void let_AutomaticOverWrite(bool v) { AutomaticOverWrite_ = v; }
  bool get_AutomaticRename() const { return AutomaticRename_; }
  void let_AutomaticRename(bool v) { AutomaticRename_ = v; }
  bool get_AutomaticCancel() const { return AutomaticCancel_; }
  void let_AutomaticCancel(bool v) { AutomaticCancel_ = v; }
  int32_t get_UseNullVal() const { return UseNullVal_; }
  void let_UseNullVal(int32_t v) { UseNullVal_ = v; }
  double get_NullValue() const { return NullValue_; }
  void let_NullValue(double v) { NullValue_ = v; }
  const std::string& get_RootKey() const { return RootKey_; }
  void let_RootKey(const std::string& v);
  const std::string& get_MainKey() const { return MainKey_; }
  void let_MainKey(const std::string& v);
  const std::string& get_FolderKey() const { return FolderKey_; }
  bool get_IsModified() const { return IsModified_; }
  int32_t get_NextDataSetPos() const { return NextDataSetPos_; }
  // Library-wide: shared by every store of the thread.
  bool get_CancelLoad() const;
  void let_CancelLoad(bool v);
  std::shared_ptr<ProgressContainer> get_pctContainer() const;
  void set_pctContainer(std::shared_ptr<ProgressContainer> container);
  std::shared_ptr<mxDQStore> get_DerivedQuantities() const { return DerivedQuantities_; }

  // ---- Notifications ----------------------------------------------------------
  // Never null after a set: a null argument puts a fresh object in place.
  // Sends "DATASTORE EVENTHANDLER INITIALISED".
  void set_EventHandler(std::shared_ptr<mxNotifyData> handler);
  // Sends "DATASTORE EVENTHANDLER RETRIEVED" first.
  std::shared_ptr<mxNotifyData> get_EventHandler();
  void set_IOEventHandler(std::shared_ptr<mxNotifyData> handler);
  std::shared_ptr<mxNotifyData> get_IOEventHandler() const { return IOEventHandler_; }

  // ---- The forwarder shape -----------------------------------------------------
  // Runs call(dataSet) for a valid position under the store's guard, whose
  // trace tag is "mxDataStore (Code) (<procedure>)", and returns its result;
  // returns fallback silently for a bad position.
  template <class R, class Call>
  R Forward(std::string_view zTag, int32_t iDataSet, R fallback, Call&& call);
  // The same for operations with no result.
  template <class Call>
  void ForwardVoid(std::string_view zTag, int32_t iDataSet, Call&& call);

 private:
  // One-based position within 1 .. NextDataSetPos (the spare included).
  bool ValidIndex(int32_t iDataSet) const;
  // The data set at a position already checked by ValidDataSet.
  mxDataSet& At(int32_t iDataSet) { return *DataSets_(iDataSet); }
  void AddChecked(std::shared_ptr<mxDataSet> cNewDataSet, bool& qOK, bool qCheck,
                  bool qMarkRenamed);
  // The steps of an add once the duplicate question is settled.
  void StoreOverwrite(int32_t iFound, std::shared_ptr<mxDataSet> cNewDataSet, bool qClearFirst);
  void Append(std::shared_ptr<mxDataSet> cNewDataSet, bool qFound);
  int32_t AskDuplicateQuestion(const mxDataSet& cNewDataSet);
  void PassEventHandlers(int32_t iDataSet);
  bool IsSameDataSet(mxDataSet& loaded, mxDataSet& incoming, const std::string& zUGroup,
                     const std::string& zUOrigin);

  Array<std::shared_ptr<mxDataSet>> DataSets_;
  int32_t NextDataSetPos_ = 1;
  std::shared_ptr<mxDQStore> DerivedQuantities_;
  bool IsModified_ = false;
  int32_t AddedDataSetPos_ = 0;
  bool OverWrittenDataSet_ = false;
  bool RenamedDataSet_ = false;
  bool CheckDataSetNames_ = true;
  bool AutomaticOverWrite_ = false;
  bool AutomaticRename_ = false;
  bool AutomaticCancel_ = false;
  int32_t UseNullVal_ = 0;
  double NullValue_ = 0.0;
  std::string RootKey_, MainKey_, FolderKey_;
  std::shared_ptr<mxNotifyData> EventHandler_;
  std::shared_ptr<mxNotifyData> IOEventHandler_;

 public:
  // Search state cleared by ReInitialise; the search itself arrives with the
  // store search.
  bool SearchExitAfter1 = false;
  bool MultiSetSearch = false;
};

template <class R, class Call>
R mxDataStore::Forward(std::string_view zTag, int32_t iDataSet, R fallback, Call&& call) {
  R result = fallback;
  RunGuarded(zTag, kSpacedWording, [&] {
    if (!ValidDataSet(iDataSet)) return;
    result = call(At(iDataSet));
  });
  return result;
}

template <class Call>
void mxDataStore::ForwardVoid(std::string_view zTag, int32_t iDataSet, Call&& call) {
  RunGuarded(zTag, kSpacedWording, [&] {
    if (!ValidDataSet(iDataSet)) return;
    call(At(iDataSet));
  });
}

}  // namespace vndata
