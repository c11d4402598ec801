// The bodies of the store's per-data-set forwarders: the guard, the position
// check that returns the default without a trace, then the data set's member.
// Internal: only the store's own files instantiate them.
#pragma once

#include <string_view>

#include "vndata/platform/internal/run_guarded.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

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
