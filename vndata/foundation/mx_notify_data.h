// mxNotifyData: the events the library raises to its host.
//
// Each operation raises the event of the same name, synchronously, to every
// subscribed listener in the order of subscription. Arguments go by
// reference, so a listener sees and may change them; the caller then reads
// the changed values. A listener must not add or delete data sets.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>
#include "vndata/platform/api.h"

namespace vndata {

class VNDATA_API mxNotifyDataListener {
 public:
  virtual ~mxNotifyDataListener() = default;
  // A text message for the host.
  virtual void Notify(std::string& /*zMsg*/) {}
  // A column was fetched; zTreeViewKey is its tree view path.
  virtual void FODDataTVKey(std::string& /*zTreeViewKey*/, int32_t& /*iColumn*/) {}
  // A column's values are in memory.
  virtual void FODDataLoaded(int32_t& /*iSet*/, int32_t& /*iColumn*/) {}
  // A column's values were dropped.
  virtual void FODDataUnloaded(std::string& /*zTreeViewKey*/, int32_t& /*iColumn*/) {}
};

class VNDATA_API mxNotifyData {
 public:
  void Subscribe(std::shared_ptr<mxNotifyDataListener> listener);
  void Unsubscribe(const std::shared_ptr<mxNotifyDataListener>& listener);

  void Notify(std::string& zMsg);
  void FODDataTVKey(std::string& zTreeViewKey, int32_t& iColumn);
  void FODDataLoaded(int32_t& iSet, int32_t& iColumn);
  void FODDataUnloaded(std::string& zTreeViewKey, int32_t& iColumn);

  // Convenience for callers with a literal message.
  void NotifyText(const std::string& zMsg) {
    std::string m = zMsg;
    Notify(m);
  }

 private:
  // A copy of the list is walked, so a listener may unsubscribe itself.
  std::vector<std::shared_ptr<mxNotifyDataListener>> Snapshot() const { return listeners_; }
  std::vector<std::shared_ptr<mxNotifyDataListener>> listeners_;
};

}  // namespace vndata
