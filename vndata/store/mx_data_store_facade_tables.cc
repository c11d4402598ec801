// mxDataStore: the per-data-set members of a data set's table and of its
// ternary saturation columns.
#include "vndata/dataset/mx_table.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

// ---- The table ---------------------------------------------------------------------------

void mxDataStore::DSSetTable(int32_t iDataSet, const std::shared_ptr<mxTable>& cTable, bool& qOK) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (DSSetTable)", iDataSet,
              [&](mxDataSet& ds) { ds.SetTable(cTable, qOK); });
}

bool mxDataStore::DSTableSet(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSTableSet)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_qTableSet(); });
}

void mxDataStore::DSGetTabulatedValue(int32_t iDataSet, const Array<int32_t>& iVars, float& dVal,
                                      bool& qOK) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (DSGetTabulatedValue)", iDataSet,
              [&](mxDataSet& ds) { ds.GetTabulatedValue(iVars, dVal, qOK); });
}

void mxDataStore::DSGetTableVariableValue(int32_t iDataSet, int32_t iVariable, int32_t Index,
                                          float& vData, bool& qOK) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (DSGetTableVariableValue)", iDataSet,
              [&](mxDataSet& ds) { ds.GetTableVariableValue(iVariable, Index, vData, qOK); });
}

void mxDataStore::DSGetNumberVarsInTable(int32_t iDataSet, int32_t& nVariables, bool& qOK) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (DSGetNumberVarsInTable)", iDataSet,
              [&](mxDataSet& ds) { ds.GetNumberVarsInTable(nVariables, qOK); });
}

// ---- Ternary columns --------------------------------------------------------------------------

void mxDataStore::GetTernaryColumns(int32_t iDataSet, bool& qTernExists, Array<int32_t>& iTern,
                                    float& sTernOilMin, float& sTernGasMin, float& sTernWatMin,
                                    bool& qOK) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (GetTernaryColumns)", iDataSet, [&](mxDataSet& ds) {
    ds.GetTernaryColumns(qTernExists, iTern, sTernOilMin, sTernGasMin, sTernWatMin, qOK);
  });
}

void mxDataStore::GetTernaryColumnsDP(int32_t iDataSet, bool& qTernExists, Array<int32_t>& iTern,
                                      float& sTernOilMin, float& sTernGasMin, float& sTernWatMin,
                                      bool qDPMatrix, bool& qOK) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (GetTernaryColumnsDP)", iDataSet, [&](mxDataSet& ds) {
    ds.GetTernaryColumnsDP(qTernExists, iTern, sTernOilMin, sTernGasMin, sTernWatMin, qDPMatrix,
                           qOK);
  });
}

bool mxDataStore::get_qTernaryColsExist(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (qTernaryColsExist)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.qTernaryColsExist(); });
}

bool mxDataStore::get_qTernaryColsExistDP(int32_t iDataSet, bool qDPMatrix) {
  return Forward("mxDataStore (Code) (qTernaryColsExistDP)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.qTernaryColsExistDP(qDPMatrix); });
}

void mxDataStore::GetTernaryDataLimits(int32_t iDataSet, float& sTernOilLimit, float& sTernGasLimit,
                                       float& sTernWatLimit) {
  ForwardVoid("mxDataStore (Code) (GetTernaryDataLimits)", iDataSet, [&](mxDataSet& ds) {
    ds.GetTernaryDataLimits(sTernOilLimit, sTernGasLimit, sTernWatLimit);
  });
}

}  // namespace vndata
