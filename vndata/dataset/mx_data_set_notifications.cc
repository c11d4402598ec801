// The data set's two event handlers, handed on by the store whenever the
// data set enters one of its slots.
#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"
#include "vndata/store/mx_notify_data.h"

namespace vndata {

void mxDataSet::set_EventHandler(std::shared_ptr<mxNotifyData> handler) {
  RunGuarded("mxDataSet  (EventHandler)", [&] {
    EventHandler_ = std::move(handler);
    if (!EventHandler_) EventHandler_ = std::make_shared<mxNotifyData>();
    EventHandler_->NotifyText("DATASET Initialised:");
  });
}

void mxDataSet::set_IOEventHandler(std::shared_ptr<mxNotifyData> handler) {
  IOEventHandler_ = std::move(handler);
  if (!IOEventHandler_) IOEventHandler_ = std::make_shared<mxNotifyData>();
}

void mxDataSet::let_RTMFilePattern(const std::string& z) { zRTMFilePattern_ = StringTools::Trim(z); }

}  // namespace vndata
