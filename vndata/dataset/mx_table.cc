// mxTable: the tabulated function, its column view and its data set form.
#include "vndata/dataset/mx_table.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

// Copies sSource into column iColumn of dTarget, from row 1 on, as far as
// both reach. False when the column is not in the target or there is nothing
// to copy.
bool SetArrayColumn(const Array<float>& sSource, int32_t iColumn, Array2<float>& dTarget) {
  if (!sSource.IsAllocated() || !dTarget.IsAllocated()) return false;
  if (iColumn < dTarget.LBound(2) || iColumn > dTarget.UBound(2)) return false;
  const std::size_t n = std::min(sSource.size(), dTarget.Rows());
  std::memcpy(dTarget.Column(iColumn), sSource.data(), sizeof(float) * n);
  return true;
}

// Writes at most nMax bytes of bText at position iPos of record iColumn.
void PutBytes(Array2<uint8_t>& bHeaders, int32_t iColumn, int32_t iPos, int32_t nMax,
              const uint8_t* bText, std::size_t nText) {
  const std::size_t n = std::min(nText, static_cast<std::size_t>(nMax));
  if (n > 0) std::memcpy(&bHeaders(iPos, iColumn), bText, n);
}

void PutField(Array2<uint8_t>& bHeaders, int32_t iColumn, int32_t iAttribute, int32_t nMax,
              const uint8_t* bText, std::size_t nText) {
  int32_t iPos = 0, iWidth = 0;
  InitSingleAttPos(iAttribute, iPos, iWidth);
  PutBytes(bHeaders, iColumn, iPos, std::min(nMax, iWidth), bText, nText);
}

const uint8_t* BytesOf(const Array<uint8_t>& b) { return b.IsAllocated() ? b.data() : nullptr; }
std::size_t SizeOf(const Array<uint8_t>& b) { return b.IsAllocated() ? b.size() : 0; }

}  // namespace

mxTable::mxTable() { ResetVariables(); }

mxTable::~mxTable() = default;

void mxTable::ResetVariables() { Variables_.ReDim(1, 1); }

void mxTable::let_nVariables(int32_t n) {
  nVariables_ = n;
  if (n > 0) {
    Array<TableVariable> fresh(1, n);
    Variables_.Swap(fresh);
  }
}

// ---- Variables ----------------------------------------------------------------------------

void mxTable::SetVariable(int32_t Index, const Array<uint8_t>& bVariable, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (SetVariable)", [&] {
    if (Index > nVariables_) return;
    Variables_(Index).bVariable = bVariable;
    qOK = true;
  });
}

void mxTable::GetVariable(int32_t Index, Array<uint8_t>& bVariable, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (GetVariable)", [&] {
    if (Index > nVariables_) return;
    bVariable = Variables_(Index).bVariable;
    qOK = true;
  });
}

void mxTable::GetVariableData(int32_t Index, Array<float>& vData, int32_t& nData, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (GetVariableData)", [&] {
    if (Index > nVariables_) return;
    const TableVariable& v = Variables_(Index);
    nData = v.nData;
    if (nData > 0) vData = v.vData;
    qOK = true;
  });
}

void mxTable::SetVariableData(int32_t Index, const Array<float>& vData, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (SetVariableData)", [&] {
    if (Index > nVariables_) return;
    TableVariable& v = Variables_(Index);
    const int32_t n = vData.UBound();
    v.vData = vData;
    v.nData = n;
    qOK = true;
  });
}

// ---- The tabulated values -------------------------------------------------------------------

void mxTable::SetTableData(const Array<float>& dData, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (SetTableData)", [&] {
    TableData_ = dData;
    qOK = true;
  });
}

void mxTable::GetTableData(Array<float>& dData, bool& qOK) const {
  qOK = false;
  RunGuarded("mxTable (Code) (GetTableData)", [&] {
    dData = TableData_;
    qOK = true;
  });
}

void mxTable::GetTabulatedValue(const Array<int32_t>& iVars, float& dVal, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (GetTabulatedValue)", [&] {
    const int32_t nIndices = iVars.UBound();
    if (nIndices > nVariables_) return;
    int64_t mult = 1, offset = 0;
    for (int32_t k = 2; k <= nIndices; ++k) {
      if (iVars(k) < 1) return;
      mult *= Variables_(k - 1).nData;
      offset += (static_cast<int64_t>(iVars(k)) - 1) * mult;
    }
    // The first index is taken as it stands: the array's own bounds are the
    // only check on the cell.
    dVal = TableData_(iVars(1) + offset);
    qOK = true;
  });
}

void mxTable::GetColumnData(int32_t Index, Array<float>& vData, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (GetColumnData)", [&] {
    if (Index <= nVariables_) {
      vData = Variables_(Index).vData;
      qOK = true;
    } else if (Index == nVariables_ + 1) {
      vData = TableData_;
      qOK = true;
    }
  });
}

void mxTable::GetTableVariableValue(int32_t iVariable, int32_t Index, float& vData, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (GetTableVariableValue)", [&] {
    if (iVariable > nVariables_) return;
    const TableVariable& v = Variables_(iVariable);
    if (Index <= v.nData && v.nData >= 1) vData = v.vData(Index);
    qOK = true;
  });
}

// ---- The data set form ----------------------------------------------------------------------

void mxTable::GetDataSetData(Array2<float>& dXYData, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (GetDataSetData)", [&] {
    int64_t nRows = 1;
    for (int32_t i = 1; i <= nVariables_; ++i) {
      nRows *= Variables_(i).nData;
      if (nRows > std::numeric_limits<int32_t>::max()) RaiseFault(kFaultOverflow);
    }
    const int32_t nColumns = nVariables_ + 1;
    if (nRows < 1 || nColumns < 1) return;
    const int32_t rows = static_cast<int32_t>(nRows);
    Array2<float> out(1, rows, 1, nColumns);
    Array<float> work(1, rows);
    // Variable i repeats each of its values `repeat` times, and that run of
    // all its values `blocks` times: the first variable runs fastest.
    int32_t repeat = 1;
    for (int32_t i = 1; i <= nVariables_; ++i) {
      const TableVariable& v = Variables_(i);
      const int32_t blocks = rows / (v.nData * repeat);
      int32_t pos = 1;
      for (int32_t b = 1; b <= blocks; ++b)
        for (int32_t j = 1; j <= v.nData; ++j)
          for (int32_t r = 1; r <= repeat; ++r) work(pos++) = v.vData(j);
      SetArrayColumn(work, i, out);
      repeat *= v.nData;
    }
    const bool qSet = SetArrayColumn(TableData_, nColumns, out);
    dXYData.Swap(out);
    qOK = qSet;
  });
}

void mxTable::GetDataSetHeaders(Array2<uint8_t>& bHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (GetDataSetHeaders)", [&] {
    const int32_t nColumns = nVariables_ + 1;
    if (nColumns < 1) return;
    Array2<uint8_t> out(1, kPackedRecordSize, 1, nColumns);
    out.Fill(' ');
    const std::string zMember = std::to_string(iTableNumber_);
    static constexpr char kType[] = "Table";
    for (int32_t c = 1; c <= nColumns; ++c) {
      const Array<uint8_t>& bName = c <= nVariables_ ? Variables_(c).bVariable : bTabulatedQuantity_;
      PutField(out, c, ATT_VARIABLE, 16, BytesOf(bName), SizeOf(bName));
      PutField(out, c, ATT_VERBOSE, 40, BytesOf(bName), SizeOf(bName));
      PutField(out, c, ATT_ORIGIN, 32, BytesOf(bOrigin_), SizeOf(bOrigin_));
      PutField(out, c, ATT_CLASS, 16, BytesOf(bTableType_), SizeOf(bTableType_));
      PutField(out, c, ATT_MEMBER, 40, reinterpret_cast<const uint8_t*>(zMember.data()), zMember.size());
      PutField(out, c, ATT_TYPE, 5, reinterpret_cast<const uint8_t*>(kType), sizeof(kType) - 1);
    }
    bHeaders.Swap(out);
    qOK = true;
  });
}

void mxTable::GetTableAsDataSet(std::shared_ptr<mxDataSet>& cDataSet, bool& qOK) {
  qOK = false;
  RunGuarded("mxTable (Code) (GetTableAsDataSet)", [&] {
    Array2<uint8_t> bHeaders;
    Array2<float> dXYData;
    bool qStep = false;
    GetDataSetHeaders(bHeaders, qStep);
    GetDataSetData(dXYData, qStep);
    auto ds = std::make_shared<mxDataSet>();
    ds->bInitialiseFrom2d(dXYData, bHeaders, qStep);
    // The table's Origin, FileName and FileSource are deliberately not given
    // to the data set: it has always taken its origin from the headers alone,
    // and hosts rely on that.
    ds->let_FileType(iFileType_);
    cDataSet = std::move(ds);
    qOK = true;
  });
}

}  // namespace vndata
