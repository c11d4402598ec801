// mxCopySet: makes a new data set from an existing one. Assigning the old
// data set (set_OldDataSet) is the whole operation: its description is read
// property by property and written to NewDataSet, so that the new object's
// writing rules run, then (with qCopyData) its rows and columns follow as one
// block of values with its packed headers. The host then adjusts what differs
// and adds NewDataSet to the store as a data set of its own.
//
// Not carried, deliberately: DualPorosity (read only), markers and wells,
// named well lists, the location table of columns on disk, the monitoring
// settings, the row and column lists. A table is shared, not copied.
//
// Each item has its own guard: a failed item is traced as
// "Error:<text> (No.<n>) In [mxCopyDataSet (Code) (OldDataSet)] " and the
// copy goes on with the next.
#pragma once

#include <memory>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/api.h"

namespace vndata {

class VNDATA_API mxCopySet {
 public:
  mxCopySet();

  bool get_qCopyData() const { return qCopyData_; }
  void let_qCopyData(bool q) { qCopyData_ = q; }
  // Made with the mxCopySet; a second assignment writes over the same one.
  const std::shared_ptr<mxDataSet>& get_NewDataSet() const { return NewDataSet_; }
  const std::shared_ptr<mxDataSet>& get_OldDataSet() const { return OldDataSet_; }
  // Keeps the reference and makes the copy.
  void set_OldDataSet(const std::shared_ptr<mxDataSet>& cDataSet);

 private:
  // Copies one property, under the item's own guard.
  template <class Get, class Let>
  void CopyProperty(Get get, Let let);
  // Runs one item of the copy under its own guard.
  template <class Body>
  void Item(Body&& body);
  // The old data set's well list choice, its well list and its grid names:
  // their members on the data set arrive with the well lists and grid names,
  // and the copy of them with those members.
  void CopyWellListsAndGridNames();

  bool qCopyData_ = true;
  std::shared_ptr<mxDataSet> NewDataSet_;
  std::shared_ptr<mxDataSet> OldDataSet_;
};

}  // namespace vndata
