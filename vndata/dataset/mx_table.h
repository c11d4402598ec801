// mxTable: one tabulated function of a simulator deck (a lift curve and the
// like): a quantity tabulated over n independent variables, each with its own
// list of values. The quantity's values lie in one flat array, the first
// variable running fastest: for indices i1..in with counts c1..cn the cell is
// i1 + (i2 - 1) c1 + (i3 - 1) c1 c2 + ...
//
// A data set holds one table by reference (SetTable) and answers its column
// reads from it; the table can also be read as an ordinary data set of
// nVariables + 1 columns, the cartesian product of the variables beside the
// tabulated values.
//
// Text fields are byte strings, copied whole and never interpreted here.
//
// Operations taking a variable number check only that it is not above
// nVariables: above it they do nothing and report false; below 1 the
// subscript faults and the trace line is
// "Error:<text> (No.<n>) In [mxTable (Code) (<operation>)] ".
#pragma once

#include <cstdint>
#include <memory>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"

namespace vndata {

class mxDataSet;

// One independent variable: its name and its values 1..nData.
struct TableVariable {
  Array<uint8_t> bVariable;
  int32_t nData = 0;
  Array<float> vData;
};

class VNDATA_API mxTable {
 public:
  mxTable();
  ~mxTable();

  void SetOrigin(const Array<uint8_t>& bOrigin) { bOrigin_ = bOrigin; }
  void GetOrigin(Array<uint8_t>& bOrigin) const { bOrigin = bOrigin_; }
  void SetFileName(const Array<uint8_t>& bFileName) { bFileName_ = bFileName; }
  void GetFileName(Array<uint8_t>& bFileName) const { bFileName = bFileName_; }
  void SetFileSource(const Array<uint8_t>& bFileSource) { bFileSource_ = bFileSource; }
  void GetFileSource(Array<uint8_t>& bFileSource) const { bFileSource = bFileSource_; }
  void SetFileType(int32_t iFileType) { iFileType_ = iFileType; }
  void GetFileType(int32_t& iFileType) const { iFileType = iFileType_; }
  void SetTableType(const Array<uint8_t>& bTableType) { bTableType_ = bTableType; }
  void GetTableType(Array<uint8_t>& bTableType) const { bTableType = bTableType_; }
  void SetTabulatedQuantity(const Array<uint8_t>& bQuantity) { bTabulatedQuantity_ = bQuantity; }
  void GetTabulatedQuantity(Array<uint8_t>& bQuantity) const { bQuantity = bTabulatedQuantity_; }
  void SetUnits(const Array<uint8_t>& bUnits) { bUnits_ = bUnits; }
  void GetUnits(Array<uint8_t>& bUnits) const { bUnits = bUnits_; }

  // The name of variable Index.
  void SetVariable(int32_t Index, const Array<uint8_t>& bVariable, bool& qOK);
  void GetVariable(int32_t Index, Array<uint8_t>& bVariable, bool& qOK);
  // The values of variable Index; vData is written only when there are any.
  void GetVariableData(int32_t Index, Array<float>& vData, int32_t& nData, bool& qOK);
  // nData becomes the upper bound of vData.
  void SetVariableData(int32_t Index, const Array<float>& vData, bool& qOK);

  float get_BottomHoleDatumDepth() const { return sBottomHoleDatumDepth_; }
  void let_BottomHoleDatumDepth(float s) { sBottomHoleDatumDepth_ = s; }
  int32_t get_TableNumber() const { return iTableNumber_; }
  void let_TableNumber(int32_t i) { iTableNumber_ = i; }
  int32_t get_nVariables() const { return nVariables_; }
  // Above 0 the variables are made anew, 1..n, dropping what they held; a
  // count of 0 or less is stored and leaves them as they are.
  void let_nVariables(int32_t n);

  // Copies; qOK always true.
  void SetTableData(const Array<float>& dData, bool& qOK);
  void GetTableData(Array<float>& dData, bool& qOK) const;

  // A new data set of nVariables + 1 columns built from GetDataSetData and
  // GetDataSetHeaders. It takes its origin from the headers alone: the
  // table's Origin, FileName and FileSource do not reach its properties.
  void GetTableAsDataSet(std::shared_ptr<mxDataSet>& cDataSet, bool& qOK);
  // The cartesian product: one row per cell of TableData, the values of the
  // variables in columns 1..nVariables and the cell in the last column.
  // False, with dXYData untouched, when a variable has no values.
  void GetDataSetData(Array2<float>& dXYData, bool& qOK);
  // Packed headers (233 by nVariables + 1, blanks) of those columns.
  void GetDataSetHeaders(Array2<uint8_t>& bHeaders, bool& qOK);
  // The cell of the indices iVars(1..); fewer indices than variables count
  // the missing ones as 1. Only indices 2 on are checked (not below 1); a
  // cell beyond the data faults.
  void GetTabulatedValue(const Array<int32_t>& iVars, float& dVal, bool& qOK);
  // Column Index of the column view: a variable's values, or TableData for
  // nVariables + 1. The columns differ in length.
  void GetColumnData(int32_t Index, Array<float>& vData, bool& qOK);
  // Value Index of variable iVariable. An Index beyond the values reports
  // true and leaves vData as it was.
  void GetTableVariableValue(int32_t iVariable, int32_t Index, float& vData, bool& qOK);

 private:
  // The variables always hold at least 1..1.
  void ResetVariables();

  float sBottomHoleDatumDepth_ = 0.0f;
  Array<float> TableData_;
  int32_t iTableNumber_ = 0;
  int32_t nVariables_ = 0;
  Array<uint8_t> bUnits_, bTabulatedQuantity_, bTableType_, bFileName_, bFileSource_, bOrigin_;
  int32_t iFileType_ = 0;
  Array<TableVariable> Variables_;
};

}  // namespace vndata
