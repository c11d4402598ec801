// The store's derived quantity members: each forwards to its mxDQStore under
// a guard of its own, so that a fault of the forwarding itself is traced in
// the store's wording; faults inside mxDQStore carry that class's tags.
#include "vndata/derived/mx_derived_quantity.h"
#include "vndata/derived/mx_dq_store.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

void mxDataStore::DQAdd(const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  RunGuarded("mxDataStore (Code) (DQAdd)", kSpacedWording,
             [&] { DerivedQuantities_->AddItem(NewDQ); });
}

void mxDataStore::DQUpdate(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  RunGuarded("mxDataStore (Code) (DQUpdate)", kSpacedWording,
             [&] { DerivedQuantities_->DQUpdate(Index, NewDQ); });
}

void mxDataStore::DQDeleteItem(int32_t Index) {
  RunGuarded("mxDataStore (Code) (DQDeleteItem)", kSpacedWording,
             [&] { DerivedQuantities_->DeleteItem(Index); });
}

// A refused position leaves NewDQ alone; the success flag of getItem is
// dropped, as the member has none to give.
void mxDataStore::DQGetItem(int32_t Index, std::shared_ptr<mxDerivedQuantity>& NewDQ) const {
  RunGuarded("mxDataStore (Code) (DQGetItem)", kSpacedWording, [&] {
    bool qOK = false;
    DerivedQuantities_->getItem(Index, NewDQ, qOK);
  });
}

void mxDataStore::DQSetItem(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
  RunGuarded("mxDataStore (Code) (DQSetItem)", kSpacedWording, [&] {
    bool qOK = false;
    DerivedQuantities_->SetItem(Index, NewDQ, qOK);
  });
}

void mxDataStore::ReinitialiseDQ() {
  RunGuarded("mxDataStore (Code) (ReinitialiseDQ)", kSpacedWording,
             [&] { DerivedQuantities_->ReInitialise(); });
}

int32_t mxDataStore::DQNumberOfDerivedQuantities() const {
  int32_t n = 0;
  RunGuarded("mxDataStore (Code) (DQNumberOfDerivedQuantities)", kSpacedWording,
             [&] { n = DerivedQuantities_->Count(); });
  return n;
}

}  // namespace vndata
