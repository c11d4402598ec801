// mxDataStore: grid names, the file list, the row and column lists and the
// row mask of a data set, by position.
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

Array<int32_t> mxDataStore::get_DSColumnList(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSColumnList)", iDataSet, Array<int32_t>(),
                 [](mxDataSet& ds) { return ds.get_ColumnList(); });
}

void mxDataStore::let_DSColumnList(int32_t iDataSet, const Array<int32_t>& iColumnList) {
  ForwardVoid("mxDataStore (Code) (DSColumnList)", iDataSet,
              [&](mxDataSet& ds) { ds.let_ColumnList(iColumnList); });
}

Array<int32_t> mxDataStore::get_DSRowList(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSRowList)", iDataSet, Array<int32_t>(),
                 [](mxDataSet& ds) { return ds.get_RowList(); });
}

void mxDataStore::let_DSRowList(int32_t iDataSet, const Array<int32_t>& iRowList) {
  ForwardVoid("mxDataStore (Code) (DSRowList)", iDataSet,
              [&](mxDataSet& ds) { ds.let_RowList(iRowList); });
}

void mxDataStore::DSSetMask(int32_t iDataSet, bool qMask, const Array<int32_t>& iMask,
                            int32_t nMask, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSSetMask)", iDataSet,
              [&](mxDataSet& ds) { ds.SetMask(qMask, iMask, nMask, qOK); });
}

void mxDataStore::DSSetFileList(int32_t iDataSet, std::shared_ptr<ByteStore>& xFileList,
                                int32_t nFiles, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSSetFileList)", iDataSet,
              [&](mxDataSet& ds) { ds.SetFileList(xFileList, nFiles, qOK); });
}

void mxDataStore::DSSetGridNames(int32_t iDataSet, const Array<uint8_t>& bGridNames, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSSetGridNames)", iDataSet,
              [&](mxDataSet& ds) { ds.SetGridNames(bGridNames, qOK); });
}

void mxDataStore::DSGetGridNames(int32_t iDataSet, Array<std::string>& zGridNames, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSGetGridNames)", iDataSet,
              [&](mxDataSet& ds) { ds.GetGridNames(zGridNames, qOK); });
}

void mxDataStore::DSGetGridName(int32_t iDataSet, int32_t iRow, std::string& zGridName,
                                bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSGetGridName)", iDataSet,
              [&](mxDataSet& ds) { ds.GetGridName(iRow, zGridName, qOK); });
}

bool mxDataStore::DSClearLists(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSClearLists)", iDataSet, false, [](mxDataSet& ds) {
    ds.ClearLists();
    return true;
  });
}

void mxDataStore::DSGetColumnList(int32_t iDataSet, Array<int32_t>& iColumnList,
                                  int32_t& nColumnList, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSGetColumnList)", iDataSet,
              [&](mxDataSet& ds) { ds.GetColumnList(iColumnList, nColumnList, qOK); });
}

void mxDataStore::DSGetRowList(int32_t iDataSet, Array<int32_t>& iRowList, int32_t& nRowList,
                               bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSGetRowList)", iDataSet,
              [&](mxDataSet& ds) { ds.GetRowList(iRowList, nRowList, qOK); });
}

void mxDataStore::DSSetColumnList(int32_t iDataSet, const Array<int32_t>& iColumnList,
                                  int32_t nColumnList, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSSetColumnList)", iDataSet,
              [&](mxDataSet& ds) { ds.SetColumnList(iColumnList, nColumnList, qOK); });
}

void mxDataStore::DSSetRowList(int32_t iDataSet, const Array<int32_t>& iRowList, int32_t nRowList,
                               bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSSetRowList)", iDataSet,
              [&](mxDataSet& ds) { ds.SetRowList(iRowList, nRowList, qOK); });
}

}  // namespace vndata
