// mxDataSet: the source file of a column and the selections that reads of
// columns honour (the row mask, the row list and the column list).
#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/internal/run_guarded.h"

namespace vndata {

namespace {

// Keeps the first n entries of a list that is shorter than the table's
// count; anything else means all and leaves no list.
void SetSelection(const Array<int32_t>& iList, int32_t nList, int32_t nAll, bool& qSet,
                  Array<int32_t>& iKept, int32_t& nKept) {
  iKept.ReDim(1, 1);
  qSet = false;
  nKept = 0;
  if (nList <= 0 || nList >= nAll) return;
  Array<int32_t> kept(1, nList);
  for (int32_t i = 1; i <= nList; ++i) kept(i) = iList(iList.LBound() + i - 1);
  iKept.Swap(kept);
  nKept = nList;
  qSet = true;
}

}  // namespace

std::string mxDataSet::GetFileName(int32_t iColumn) {
  std::string zName;
  RunGuarded("mxDataSet  (GetFileName)", [&] {
    if (!ValidColumn(iColumn, true)) return;
    zName = source_.zFileName;
  });
  return zName;
}

void mxDataSet::GetFileIndex(int32_t iColumn, int32_t& index) const {
  index = 1;
  if (fetch_.qFileIndexSet && ValidColumnIndex(iColumn) && fetch_.iFileIndex.InBounds(iColumn))
    index = fetch_.iFileIndex(iColumn);
}

void mxDataSet::SetMask(bool qMask, const Array<int32_t>& iMask, int32_t nMask, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetMask)", [&] {
    if (qMask && nMask > 0) {
      Array<int32_t> kept(1, nMask);
      for (int32_t i = 1; i <= nMask; ++i) kept(i) = iMask(iMask.LBound() + i - 1);
      lists_.iRowMask.Swap(kept);
      lists_.nRowMask = nMask;
      lists_.qRowMask = true;
    } else {
      lists_.qRowMask = false;
    }
    qOK = true;
  });
}

void mxDataSet::SetRowList(const Array<int32_t>& iRowList, int32_t nRowList, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetRowList)", [&] {
    SetSelection(iRowList, nRowList, get_NumRows(), lists_.qRowList, lists_.iRowList, lists_.nRowList);
    qOK = true;
  });
}

void mxDataSet::SetColumnList(const Array<int32_t>& iColumnList, int32_t nColumnList, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetColumnList)", [&] {
    SetSelection(iColumnList, nColumnList, headers_.nCols, lists_.qColumnMask, lists_.iColumnMask,
                 lists_.nColumnMask);
    qOK = true;
  });
}

}  // namespace vndata
