// The store's per-data-set family: columns, values, attributes, limits, tree
// paths and whole-table transfers, by position.
#include <string>

#include "vndata/foundation/vocabulary.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

// ---- Whole tables and header records

void mxDataStore::DSbExtractData(int32_t iDataSet, Array2<float>& arr2d, Array2<uint8_t>& bHeaders,
                                 bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSbExtractData)", iDataSet,
              [&](mxDataSet& ds) { ds.bExtractData(arr2d, bHeaders, qOK); });
}

void mxDataStore::DSbExtract2dArrays(int32_t iDataSet, Array2<float>& arr2d,
                                     Array2<uint8_t>& bHeaders, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSbExtract2dArrays)", iDataSet,
              [&](mxDataSet& ds) { ds.bExtract2dArrays(arr2d, bHeaders, qOK); });
}

bool mxDataStore::DSExtract2dArrays(int32_t iDataSet, Array2<float>& arr2d,
                                    Array<std::string>& attrib2d) {
  return Forward("mxDataStore (Code) (DSExtract2dArrays)", iDataSet, false, [&](mxDataSet& ds) {
    ds.Extract2dArrays(arr2d, attrib2d);
    return true;
  });
}

void mxDataStore::DSExtractbHeaders(int32_t iDataSet, Array2<uint8_t>& bHeaders, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSExtractbHeaders)", iDataSet,
              [&](mxDataSet& ds) { ds.bExtractHeaders(bHeaders, qOK); });
}

void mxDataStore::DSbExtractHeaders(int32_t iDataSet, Array2<uint8_t>& bHeaders, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSbExtractHeaders)", iDataSet,
              [&](mxDataSet& ds) { ds.bExtractHeaders(bHeaders, qOK); });
}

void mxDataStore::DSExtractDataHeaders(int32_t iDataSet, Array<std::string>& zHeaders, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSExtractDataHeaders)", iDataSet,
              [&](mxDataSet& ds) { ds.ExtractHeaders(zHeaders, qOK); });
}

void mxDataStore::DSExtractDataArrays(int32_t iDataSet, Array2<float>& arr2d,
                                      Array<std::string>& zAttrib2d, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSExtractDataArrays)", iDataSet,
              [&](mxDataSet& ds) { ds.ExtractDataArrays(arr2d, zAttrib2d, qOK); });
}

void mxDataStore::DSInitialiseFrom2D(int32_t iDataSet, const Array2<float>& dArray,
                                     const Array<std::string>& zHeaders, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSInitialiseFrom2D)", iDataSet,
              [&](mxDataSet& ds) { ds.InitialiseFrom2d(dArray, zHeaders, qOK); });
}

void mxDataStore::DSbInitialiseFrom2D(int32_t iDataSet, Array2<float>& dArray,
                                      const Array2<uint8_t>& bHeaders, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSbInitialiseFrom2D)", iDataSet,
              [&](mxDataSet& ds) { ds.bInitialiseFrom2d(dArray, bHeaders, qOK); });
}

void mxDataStore::AppendColumnsToDataSet(int32_t iDataSet, const Array2<float>& dVals,
                                         Array2<std::string>& zAttributes, bool& qOK,
                                         int32_t iCreationType) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (AppendColumnsToDataSet)", iDataSet, [&](mxDataSet& ds) {
    const int32_t nCols = dVals.UBound(2) - dVals.LBound(2) + 1;
    if (nCols < 1) return;
    const int32_t nRows = dVals.UBound(1) - dVals.LBound(1) + 1;
    Array<float> column(1, nRows);
    Array<std::string> atts(1, kNumAttributes);
    for (int32_t k = 0; k < nCols; ++k) {
      const int32_t jVals = dVals.LBound(2) + k;
      const int32_t jAtts = zAttributes.LBound(2) + k;
      for (int32_t r = 1; r <= nRows; ++r) column(r) = dVals(dVals.LBound(1) + r - 1, jVals);
      // As for one column: the data set's own name stands in ORIGIN, also in
      // the caller's array.
      zAttributes(ATT_ORIGIN, jAtts) = ds.get_Origin();
      for (int32_t a = 1; a <= kNumAttributes; ++a) atts(a) = zAttributes(a, jAtts);
      bool qColumn = false;
      ds.AddDataColumn(column, atts, qColumn, iCreationType);
      if (!qColumn) return;
    }
    qOK = true;
  });
}

// ---- Values

bool mxDataStore::DSGetValues(int32_t iDataSet, int32_t ThisCol, Array<float>& ThisColumnValues) {
  return Forward("mxDataStore (Code) (DSGetValues)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.GetValues(ThisCol, ThisColumnValues); });
}

bool mxDataStore::DSGetValue(int32_t iDataSet, int32_t Row, int32_t Column, float& dVal) {
  return Forward("mxDataStore (Code) (DSGetValue)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.GetValue(Row, Column, dVal); });
}

bool mxDataStore::DSSetValue(int32_t iDataSet, int32_t Row, int32_t Column, float dVal) {
  return Forward("mxDataStore (Code) (DSSetValue)", iDataSet, false, [&](mxDataSet& ds) {
    ds.SetValue(Row, Column, dVal);
    return true;
  });
}

void mxDataStore::DSSetValues(int32_t iDataSet, int32_t Index, const Array<float>& sVals,
                              bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSSetValues)", iDataSet,
              [&](mxDataSet& ds) { ds.SetValues(Index, sVals, qOK); });
}

bool mxDataStore::DSGetRowValues(int32_t iDataSet, int32_t iRow, Array<float>& sVals) {
  return Forward("mxDataStore (Code) (DSGetRowValues)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.GetRowValues(iRow, sVals); });
}

// ---- Column attributes and pools

bool mxDataStore::DSGetAttributes(int32_t iDataSet, int32_t ThisCol,
                                  Array<std::string>& Attributes) {
  return Forward("mxDataStore (Code) (DSGetAttributes)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.GetAttributes(ThisCol, Attributes); });
}

bool mxDataStore::DSGetAttribute(int32_t iDataSet, int32_t Index, int32_t iType,
                                 std::string& zAttribute) {
  return Forward("mxDataStore (Code) (DSGetAttribute)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.GetAttribute(Index, iType, zAttribute); });
}

bool mxDataStore::DSSetAttribute(int32_t iDataSet, int32_t iAttribute, const std::string& zValue) {
  return Forward("mxDataStore (Code) (DSSetAttribute)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.SetAttribute(iAttribute, zValue); });
}

std::string mxDataStore::DSGetColumnVariable(int32_t iDataSet, int32_t iColumn) {
  return Forward("mxDataStore (Code) (DSGetColumnVariable)", iDataSet, std::string(),
                 [&](mxDataSet& ds) {
                   std::string zVariable;
                   ds.GetAttribute(iColumn, ATT_VARIABLE, zVariable);
                   return zVariable;
                 });
}

bool mxDataStore::DSbGetAttributes(int32_t iDataSet, int32_t ThisCol,
                                   Array<uint8_t>& bAttributes) {
  return Forward("mxDataStore (Code) (DSbGetAttributes)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.bGetAttributes(ThisCol, bAttributes); });
}

void mxDataStore::DSGetByteStoreArray(int32_t iDataSet, AttributePools& xStore, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSGetByteStoreArray)", iDataSet,
              [&](mxDataSet& ds) { ds.GetByteStoreArray(xStore, qOK); });
}

void mxDataStore::DSSetByteStore(int32_t iDataSet, int32_t iAtt,
                                 const std::shared_ptr<ByteStore>& xStore, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSSetByteStore)", iDataSet,
              [&](mxDataSet& ds) { ds.SetByteStore(iAtt, xStore, qOK); });
}

void mxDataStore::DSGetByteStore(int32_t iDataSet, int32_t iAtt, std::shared_ptr<ByteStore>& xStore,
                                 bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSGetByteStore)", iDataSet,
              [&](mxDataSet& ds) { ds.GetByteStore(iAtt, xStore, qOK); });
}

void mxDataStore::DSSetByteStoreArray(int32_t iDataSet, const AttributePools& xStore, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSSetByteStoreArray)", iDataSet,
              [&](mxDataSet& ds) { ds.SetByteStoreArray(xStore, qOK); });
}

bool mxDataStore::DSSetAllCreationTypes(int32_t iDataSet, int16_t iCreationType) {
  return Forward("mxDataStore (Code) (DSSetAllCreationTypes)", iDataSet, false,
                 [&](mxDataSet& ds) {
                   for (int32_t c = 1; c <= ds.get_NumCols(); ++c)
                     ds.SetCreationType(c, iCreationType);
                   return true;
                 });
}

int16_t mxDataStore::DSGetCreationType(int32_t iDataSet, int32_t iColumn) {
  return Forward("mxDataStore (Code) (DSGetCreationType)", iDataSet, int16_t{0},
                 [&](mxDataSet& ds) { return ds.GetCreationType(iColumn); });
}

bool mxDataStore::DSSetCreationType(int32_t iDataSet, int32_t iColumn, int16_t iCreationType) {
  return Forward("mxDataStore (Code) (DSSetCreationType)", iDataSet, false, [&](mxDataSet& ds) {
    ds.SetCreationType(iColumn, iCreationType);
    return true;
  });
}

// ---- Limits

bool mxDataStore::DSGetColMinMax(int32_t iDataSet, int32_t ThisCol, float& dMinVal,
                                 float& dMaxVal, bool qReCalc) {
  return Forward("mxDataStore (Code) (DSGetColMinMax)", iDataSet, false, [&](mxDataSet& ds) {
    return ds.GetColMinMax(ThisCol, dMinVal, dMaxVal, qReCalc);
  });
}

bool mxDataStore::DSSetColMinMax(int32_t iDataSet, int32_t ThisCol, float dMinVal,
                                 float dMaxVal) {
  return Forward("mxDataStore (Code) (DSSetColMinMax)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.SetColMinMax(ThisCol, dMinVal, dMaxVal); });
}

// ---- Tree paths

std::string mxDataStore::DSGetTreeViewPath(int32_t iDataSet, int32_t iColumn) {
  return Forward("mxDataStore (Code) (DSGetTreeViewPath)", iDataSet, std::string(),
                 [&](mxDataSet& ds) {
                   std::string zPath;
                   int32_t nLength = 0;
                   bool qOK = false;
                   ds.BuildTreeViewPath(iColumn, zPath, nLength, qOK);
                   return zPath;
                 });
}

bool mxDataStore::DSMakeTreeViewPath(int32_t iDataSet, int32_t Index, std::string& zTreeViewPath) {
  return Forward("mxDataStore (Code) (DSMakeTreeViewPath)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.MakeTreeViewPath(Index, zTreeViewPath); });
}

bool mxDataStore::DSUpdateTreeViewPath(int32_t iDataSet, int32_t iColumn) {
  return Forward("mxDataStore (Code) (DSUpdateTreeViewPath)", iDataSet, false,
                 [&](mxDataSet& ds) {
                   std::string zPath;
                   ds.MakeTreeViewPath(iColumn, zPath);
                   const std::string zAbsolute =
                       ds.get_DataRootPath() + "\\" + ds.get_GroupName() + "\\" + zPath;
                   ds.SetTreeViewPath(iColumn, zAbsolute);
                   return ds.ValidColumnIndex(iColumn) &&
                          ds.LenTreeViewPath(iColumn) == static_cast<int32_t>(zAbsolute.size());
                 });
}

bool mxDataStore::DSSetTreeViewPath(int32_t iDataSet, int32_t Index,
                                    const std::string& zTreeViewPath) {
  return Forward("mxDataStore (Code) (DSSetTreeViewPath)", iDataSet, false, [&](mxDataSet& ds) {
    ds.SetTreeViewPath(Index, zTreeViewPath);
    return true;
  });
}

bool mxDataStore::DSTreeViewPath(int32_t iDataSet, int32_t iColumn, std::string& zTreeViewPath) {
  return Forward("mxDataStore (Code) (DSTreeViewPath)", iDataSet, false, [&](mxDataSet& ds) {
    zTreeViewPath = ds.TreeViewPath(iColumn);
    return true;
  });
}

}  // namespace vndata
