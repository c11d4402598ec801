#include "vndata/derived/dq_store_facade.h"

#include <string>

#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {
std::string Tag(const char* zProcedure) { return TagOf("mxDataStore (Code)", zProcedure); }
}  // namespace

void DQStoreFacade::DQAdd(mxDQStore& store, const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  RunGuarded(Tag("DQAdd"), kSpacedWording, [&] { store.AddItem(NewDQ); });
}

void DQStoreFacade::DQUpdate(mxDQStore& store, int32_t Index,
                             const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  RunGuarded(Tag("DQUpdate"), kSpacedWording, [&] { store.DQUpdate(Index, NewDQ); });
}

void DQStoreFacade::DQDeleteItem(mxDQStore& store, int32_t Index) {
  RunGuarded(Tag("DQDeleteItem"), kSpacedWording, [&] { store.DeleteItem(Index); });
}

void DQStoreFacade::DQGetItem(const mxDQStore& store, int32_t Index,
                              std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  RunGuarded(Tag("DQGetItem"), kSpacedWording, [&] {
    bool qOK = false;
    store.getItem(Index, NewDQ, qOK);
  });
}

void DQStoreFacade::DQSetItem(mxDQStore& store, int32_t Index,
                              const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  RunGuarded(Tag("DQSetItem"), kSpacedWording, [&] {
    bool qOK = false;
    store.SetItem(Index, NewDQ, qOK);
  });
}

void DQStoreFacade::ReinitialiseDQ(mxDQStore& store) {
  RunGuarded(Tag("ReinitialiseDQ"), kSpacedWording, [&] { store.ReInitialise(); });
}

int32_t DQStoreFacade::DQNumberOfDerivedQuantities(const mxDQStore& store) {
  int32_t n = 0;
  RunGuarded(Tag("DQNumberOfDerivedQuantities"), kSpacedWording, [&] { n = store.Count(); });
  return n;
}

}  // namespace vndata
