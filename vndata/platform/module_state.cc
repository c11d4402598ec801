#include "vndata/platform/module_state.h"

#include "vndata/platform/array_tools.h"
#include "vndata/platform/byte_tools.h"
#include "vndata/platform/date_tools.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

ModuleState& Module() {
  thread_local ModuleState state;
  return state;
}

void SetProgressContainer(std::shared_ptr<ProgressContainer> container) {
  ModuleState& m = Module();
  // A null container clears the object but deliberately not the flag.
  if (container) m.pctContainerSet = true;
  m.pctContainer = std::move(container);
}

bool YieldToHost() {
  GetHostServices().Yield();
  return Module().CancelLoad;
}

namespace {
struct SharedTools {
  std::unique_ptr<ArrayTools> arrays;
  std::unique_ptr<StringTools> strings;
  std::unique_ptr<ByteTools> bytes;
  std::unique_ptr<DateTools> dates;
};

SharedTools& Tools() {
  thread_local SharedTools tools;
  return tools;
}

template <class T>
T& CreateOnFirstUse(std::unique_ptr<T>& slot) {
  if (!slot) slot = std::make_unique<T>();
  return *slot;
}
}  // namespace

ArrayTools& SharedArrayTools() { return CreateOnFirstUse(Tools().arrays); }
StringTools& SharedStringTools() { return CreateOnFirstUse(Tools().strings); }
ByteTools& SharedByteTools() { return CreateOnFirstUse(Tools().bytes); }
DateTools& SharedDateTools() { return CreateOnFirstUse(Tools().dates); }

void ReleaseSharedTools() {
  SharedTools& t = Tools();
  t.arrays.reset();
  t.strings.reset();
  t.bytes.reset();
  t.dates.reset();
}

bool SharedToolsAlive() {
  const SharedTools& t = Tools();
  return t.arrays || t.strings || t.bytes || t.dates;
}

}  // namespace vndata
