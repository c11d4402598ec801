// The store's derived quantity members: one line each onto its mxDQStore.
#include "vndata/derived/dq_store_facade.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

void mxDataStore::DQAdd(const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  DQStoreFacade::DQAdd(*DerivedQuantities_, NewDQ);
}

void mxDataStore::DQUpdate(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  DQStoreFacade::DQUpdate(*DerivedQuantities_, Index, NewDQ);
}

void mxDataStore::DQDeleteItem(int32_t Index) {
  DQStoreFacade::DQDeleteItem(*DerivedQuantities_, Index);
}

void mxDataStore::DQGetItem(int32_t Index, std::shared_ptr<mxDerivedQuantity>& NewDQ) const {
  DQStoreFacade::DQGetItem(*DerivedQuantities_, Index, NewDQ);
}

void mxDataStore::DQSetItem(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  DQStoreFacade::DQSetItem(*DerivedQuantities_, Index, NewDQ);
}

void mxDataStore::ReinitialiseDQ() { DQStoreFacade::ReinitialiseDQ(*DerivedQuantities_); }

int32_t mxDataStore::DQNumberOfDerivedQuantities() const {
  return DQStoreFacade::DQNumberOfDerivedQuantities(*DerivedQuantities_);
}

}  // namespace vndata
