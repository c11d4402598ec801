// The library's per-thread module state: what all stores of a thread share
// because it belongs to the library rather than to one object.
#pragma once

#include <cstdint>
#include <memory>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/host_services.h"

namespace vndata {

class ArrayTools;
class StringTools;
class ByteTools;
class DateTools;

struct VNDATA_API ModuleState {
  // Set by the host (directly or from inside a yield) to stop a long load.
  bool CancelLoad = false;
  // The progress container given to a store, and whether one was ever given.
  // Setting a null container leaves the flag as it was.
  std::shared_ptr<ProgressContainer> pctContainer;
  bool pctContainerSet = false;
  // The attribute constant list in force for the packed records being read
  // (25 entries; unallocated until a reader sets one).
  Array<int32_t> AttConst;
};

// The state of the calling thread.
VNDATA_API ModuleState& Module();

// Sets the progress container with the flag rule above.
VNDATA_API void SetProgressContainer(std::shared_ptr<ProgressContainer> container);

// Yields to the host's message loop; returns the CancelLoad flag afterwards.
VNDATA_API bool YieldToHost();

// The shared tool objects, created on first use for this thread.
VNDATA_API ArrayTools& SharedArrayTools();
VNDATA_API StringTools& SharedStringTools();
VNDATA_API ByteTools& SharedByteTools();
VNDATA_API DateTools& SharedDateTools();
// Releases the shared tools; the next use creates them again.
VNDATA_API void ReleaseSharedTools();
// Whether the shared tools are alive (for the shut-down checks).
VNDATA_API bool SharedToolsAlive();

}  // namespace vndata
