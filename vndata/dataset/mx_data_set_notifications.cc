// The data set's two event handlers, handed on by the store whenever the
// data set enters one of its slots.
#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/mx_notify_data.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

void mxDataSet::set_EventHandler(std::shared_ptr<mxNotifyData> handler) {
  RunGuarded("mxDataSet  (EventHandler)", [&] {
    source_.EventHandler = std::move(handler);
    if (!source_.EventHandler) source_.EventHandler = std::make_shared<mxNotifyData>();
    source_.EventHandler->NotifyText("DATASET Initialised:");
  });
}

void mxDataSet::set_IOEventHandler(std::shared_ptr<mxNotifyData> handler) {
  source_.IOEventHandler = std::move(handler);
  if (!source_.IOEventHandler) source_.IOEventHandler = std::make_shared<mxNotifyData>();
}

}  // namespace vndata
