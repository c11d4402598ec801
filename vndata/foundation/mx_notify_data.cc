#include "vndata/foundation/mx_notify_data.h"

#include <algorithm>

namespace vndata {

void mxNotifyData::Subscribe(std::shared_ptr<mxNotifyDataListener> listener) {
  if (listener) listeners_.push_back(std::move(listener));
}

void mxNotifyData::Unsubscribe(const std::shared_ptr<mxNotifyDataListener>& listener) {
  listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), listener), listeners_.end());
}

void mxNotifyData::Notify(std::string& zMsg) {
  for (auto& l : Snapshot()) l->Notify(zMsg);
}

void mxNotifyData::FODDataTVKey(std::string& zTreeViewKey, int32_t& iColumn) {
  for (auto& l : Snapshot()) l->FODDataTVKey(zTreeViewKey, iColumn);
}

void mxNotifyData::FODDataLoaded(int32_t& iSet, int32_t& iColumn) {
  for (auto& l : Snapshot()) l->FODDataLoaded(iSet, iColumn);
}

void mxNotifyData::FODDataUnloaded(std::string& zTreeViewKey, int32_t& iColumn) {
  for (auto& l : Snapshot()) l->FODDataUnloaded(zTreeViewKey, iColumn);
}

}  // namespace vndata
