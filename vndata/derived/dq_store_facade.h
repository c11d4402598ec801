// The data store's derived quantity members, as free-standing forwarders.
//
// mxDataStore exposes its mxDQStore through DQAdd, DQUpdate, DQDeleteItem,
// DQGetItem, DQSetItem, ReinitialiseDQ and DQNumberOfDerivedQuantities. Their
// behaviour lives here so that each of those members is one line:
//
//   void mxDataStore::DQAdd(const std::shared_ptr<mxDerivedQuantity>& NewDQ) {
//     DQStoreFacade::DQAdd(*DerivedQuantities_, NewDQ);
//   }
//
// A fault in a forwarder itself is logged in the data store's own wording,
// "Error: <text> (No. <n>) In [mxDataStore (Code) (<member>)] "; faults
// inside the mxDQStore operations carry that class's tags and wording.
#pragma once

#include <cstdint>
#include <memory>

#include "vndata/derived/mx_derived_quantity.h"
#include "vndata/derived/mx_dq_store.h"

namespace vndata {

struct DQStoreFacade {
  // Appends a copy of NewDQ (mxDQStore::AddItem).
  static void DQAdd(mxDQStore& store, const std::shared_ptr<mxDerivedQuantity>& NewDQ);
  // Replaces item Index by a copy of NewDQ (mxDQStore::DQUpdate).
  static void DQUpdate(mxDQStore& store, int32_t Index,
                       const std::shared_ptr<mxDerivedQuantity>& NewDQ);
  // Removes item Index (mxDQStore::DeleteItem).
  static void DQDeleteItem(mxDQStore& store, int32_t Index);
  // Hands out a copy of item Index; a refused position leaves NewDQ alone.
  // The success flag of mxDQStore::getItem is dropped.
  static void DQGetItem(const mxDQStore& store, int32_t Index,
                        std::shared_ptr<mxDerivedQuantity>& NewDQ);
  // Replaces item Index by a copy of NewDQ; the success flag is dropped.
  static void DQSetItem(mxDQStore& store, int32_t Index,
                        const std::shared_ptr<mxDerivedQuantity>& NewDQ);
  // Empties the store (mxDQStore::ReInitialise).
  static void ReinitialiseDQ(mxDQStore& store);
  // The number of stored definitions.
  static int32_t DQNumberOfDerivedQuantities(const mxDQStore& store);
};

}  // namespace vndata
