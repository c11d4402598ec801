// mxDataSet: the tabulated function a data set may hold, and the reads that
// are answered from it.
#include "vndata/dataset/mx_data_set.h"
#include "vndata/dataset/mx_table.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {
// A table asked for while the flag is set without one is the platform's
// "object not set".
mxTable& Held(const std::shared_ptr<mxTable>& cTable) {
  if (!cTable) RaiseFault(kFaultObjectNotSet);
  return *cTable;
}
}  // namespace

void mxDataSet::let_qTableSet(bool q) {
  table_.qTableSet = q;
  // Column reads come from the table only when there is one to read.
  fetch_.qTableMode = q && table_.cTable != nullptr;
}

void mxDataSet::SetTable(const std::shared_ptr<mxTable>& cTable, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetTable)", [&] {
    table_.cTable = cTable;
    let_qTableSet(true);
    qOK = true;
  });
}

void mxDataSet::GetTable(std::shared_ptr<mxTable>& cTable, bool& qOK) const {
  qOK = false;
  if (!table_.qTableSet) return;
  cTable = table_.cTable;
  qOK = true;
}

void mxDataSet::GetTabulatedValue(const Array<int32_t>& iVars, float& dVal, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (GetTabulatedValue)", [&] {
    if (!table_.qTableSet) return;
    Held(table_.cTable).GetTabulatedValue(iVars, dVal, qOK);
  });
}

void mxDataSet::GetTableVariableValue(int32_t iVariable, int32_t Index, float& vData, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (GetTableVariableValue)", [&] {
    if (!table_.qTableSet) return;
    Held(table_.cTable).GetTableVariableValue(iVariable, Index, vData, qOK);
  });
}

void mxDataSet::GetNumberVarsInTable(int32_t& nVariables, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (GetNumberVarsInTable)", [&] {
    if (!table_.qTableSet) return;
    nVariables = Held(table_.cTable).get_nVariables();
    qOK = true;
  });
}

bool mxDataSet::TableColumn(int32_t iColumn, Array<float>& sValues) {
  bool qOK = false;
  Held(table_.cTable).GetColumnData(iColumn, sValues, qOK);
  return qOK;
}

void mxDataSet::FillBufferFromTable(int32_t iBuffer) {
  Array2<float> dXYData;
  bool qOK = false;
  Held(table_.cTable).GetDataSetData(dXYData, qOK);
  if (!qOK) return;
  DATABUFFER& buf = rows_.buffers(iBuffer);
  buf.nCapacity = dXYData.UBound(1);
  buf.nColumns = dXYData.UBound(2);
  buf.nRowsInUse = buf.nCapacity;
  buf.values.Swap(dXYData);
}

}  // namespace vndata
