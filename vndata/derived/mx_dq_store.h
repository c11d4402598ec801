// mxDQStore: the derived quantity definitions of one data store.
//
// The store owns deep copies: what a caller passes in is copied, and what it
// hands out is a fresh copy, so no caller ever holds a stored record. Items
// sit at 1..NextDQPos-1 and the cell NextDQPos is always a spare, empty one
// (a null reference); the count is the upper bound minus 1.
//
// Faults are logged as "... In [mxDQStore (Code) (<operation>)] " and end the
// operation with its outputs as they stood.
#pragma once

#include <cstdint>
#include <memory>

#include "vndata/derived/mx_derived_quantity.h"
#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/record_codec.h"
#include "vndata/platform/record_file.h"

namespace vndata {

class VNDATA_API mxDQStore {
 public:
  mxDQStore();

  // Empties the store: one spare cell, NextDQPos 1, IsDirty false.
  void ReInitialise();
  // Appends a copy of DQ in the spare cell and opens a new spare; IsDirty.
  void AddItem(const std::shared_ptr<mxDerivedQuantity>& DQ);
  // Replaces the item at Index by a copy of DQ when ValidItem allows it.
  void DQUpdate(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& DQ);
  // Removes the item at Index; the survivors are re-added in order, so each
  // is copied once more and the store ends dirty. Removing the last item
  // empties the store without touching IsDirty.
  void DeleteItem(int32_t Index);
  // Hands out a copy of the item. Refused (qOK false, DQ as it was) outside
  // 1..NextDQPos or on an empty store. The spare cell passes the test and
  // then faults (logged) because it holds nothing.
  void getItem(int32_t Index, std::shared_ptr<mxDerivedQuantity>& DQ, bool& qOK) const;
  // Replaces the item by a copy of DQ with the test of getItem; the spare
  // cell can be filled this way without being counted.
  void SetItem(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& DQ, bool& qOK);
  // Number of items: the upper bound minus 1.
  int32_t Count() const;
  // True for 1..NextDQPos: the spare cell counts as valid, deliberately.
  bool ValidItem(int32_t Index, bool& qOK) const;
  // Makes `to` a new record and copies `from` into it through the
  // properties. A resampled argument keeps only its resampling: its names
  // come out empty and its ReAssociate flag clear, and every pass through
  // the store repeats that.
  static void copyDQClass(const mxDerivedQuantity& from, std::shared_ptr<mxDerivedQuantity>& to);

  // Writes the group "DQSTORE>" .. "<DQSTORE" of every item and argument
  // with the store's own codec; reports nothing. Yields to the host after
  // each quantity. (Implemented with the other file formats, in
  // vndata/persist/dq_format.cc.)
  void WriteDQ(RecordFile& file);
  // Reads a group written by WriteDQ, from behind "DQSTORE>" or at it, up
  // to "<DQSTORE", adding each complete quantity to the store. qOK is true
  // only when "<DQSTORE" was reached; a quantity cut off by the end of the
  // file is lost. Faults are traced as "... (ReadDQ)] " and give false.
  void ReadDQ(RecordFile& file, bool& qOK);

  int32_t get_NextDQPos() const { return NextDQPos_; }
  bool get_IsDirty() const { return IsDirty_; }

 private:
  void ResetItems();
  void AddItemUnguarded(const std::shared_ptr<mxDerivedQuantity>& DQ);
  bool InGetSetRange(int32_t Index) const;

  Array<std::shared_ptr<mxDerivedQuantity>> DQItems_;
  // The codec of the derived quantity reader and writer.
  RecordCodec DQIO_;
  int32_t NextDQPos_ = 1;
  bool IsDirty_ = false;
};

}  // namespace vndata
