// The store's settings: null values pushed down to data sets, tree keys,
// the library-wide load state, and the event handlers handed to data sets.
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/string_tools.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

void mxDataStore::SET_GLOBAL_NULLVALUES() {
  RunGuarded("mxDataStore (Code) (SET_GLOBAL_NULLVALUES)", kSpacedWording, [&] {
    for (int32_t i = 1; i <= get_NumberOfDataSets(); ++i) {
      if (!DataSets_(i)) continue;
      DataSets_(i)->let_UseNullVal(UseNullVal_);
      DataSets_(i)->let_NullValue(NullValue_);
    }
  });
}

void mxDataStore::SET_GLOBAL_USING_NULLS() {
  RunGuarded("mxDataStore (Code) (SET_GLOBAL_USING_NULLS)", kSpacedWording, [&] {
    for (int32_t i = 1; i <= get_NumberOfDataSets(); ++i)
      if (DataSets_(i)) DataSets_(i)->let_UseNullVal(UseNullVal_);
  });
}

void mxDataStore::SetDataNULLVALUE(int32_t iDataSet, int32_t qUseNull, double sNullVal) {
  ForwardVoid("mxDataStore (Code) (SetDataNULLVALUE)", iDataSet, [&](mxDataSet& ds) {
    ds.let_UseNullVal(qUseNull);
    ds.let_NullValue(sNullVal);
  });
}

void mxDataStore::GetDataNULLVALUE(int32_t iDataSet, int32_t& qUseNull, double& sNullVal) {
  qUseNull = 0;
  sNullVal = -999999.0;
  ForwardVoid("mxDataStore (Code) (GetDataNULLVALUE)", iDataSet, [&](mxDataSet& ds) {
    qUseNull = ds.get_UseNullVal();
    sNullVal = ds.get_NullValue();
  });
}

void mxDataStore::let_RootKey(const std::string& v) {
  RootKey_ = v;
  FolderKey_ = StringTools::KeyJoin(RootKey_, MainKey_, true);
}

void mxDataStore::let_MainKey(const std::string& v) {
  MainKey_ = v;
  FolderKey_ = StringTools::KeyJoin(RootKey_, MainKey_, true);
}

bool mxDataStore::get_CancelLoad() const { return Module().CancelLoad; }
void mxDataStore::let_CancelLoad(bool v) { Module().CancelLoad = v; }

std::shared_ptr<ProgressContainer> mxDataStore::get_pctContainer() const {
  return Module().pctContainer;
}
void mxDataStore::set_pctContainer(std::shared_ptr<ProgressContainer> container) {
  SetProgressContainer(std::move(container));
}

void mxDataStore::set_EventHandler(std::shared_ptr<mxNotifyData> handler) {
  RunGuarded("mxDataStore (Code) (EventHandler)", kSpacedWording, [&] {
    EventHandler_ = std::move(handler);
    if (!EventHandler_) EventHandler_ = std::make_shared<mxNotifyData>();
    EventHandler_->NotifyText("DATASTORE EVENTHANDLER INITIALISED");
  });
}

std::shared_ptr<mxNotifyData> mxDataStore::get_EventHandler() {
  RunGuarded("mxDataStore (Code) (EventHandler)", kSpacedWording, [&] {
    if (EventHandler_) EventHandler_->NotifyText("DATASTORE EVENTHANDLER RETRIEVED");
  });
  return EventHandler_;
}

void mxDataStore::set_IOEventHandler(std::shared_ptr<mxNotifyData> handler) {
  IOEventHandler_ = std::move(handler);
  if (!IOEventHandler_) IOEventHandler_ = std::make_shared<mxNotifyData>();
}

}  // namespace vndata
