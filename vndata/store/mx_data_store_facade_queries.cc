// The store's per-data-set family: column queries of one data set, and the
// time history of a cell across the array data sets.
#include <string>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

int32_t mxDataStore::DSIndexFromVariable(int32_t iDataSet, const std::string& zVariable) {
  return Forward("mxDataStore (Code) (DSIndexFromVariable)", iDataSet, int32_t{0},
                 [&](mxDataSet& ds) { return ds.IndexFromVARIABLE(zVariable); });
}

void mxDataStore::GetUniqueMembersOfClass(int32_t iDataSet, const std::string& zClass,
                                          Array<std::string>& zMembers, int32_t& nMembers,
                                          bool& qOK) {
  ForwardVoid("mxDataStore (Code) (GetUniqueMembersOfClass)", iDataSet,
              [&](mxDataSet& ds) { ds.GetUniqueMembersOfClass(zClass, zMembers, nMembers, qOK); });
}

std::string mxDataStore::DSGetDataSetAttribute(int32_t iDataSet, int32_t iType) {
  return Forward("mxDataStore (Code) (DSGetDataSetAttribute)", iDataSet, std::string(),
                 [&](mxDataSet& ds) { return ds.GetDataSetAttribute(iType); });
}

bool mxDataStore::DSCompareDataSetAttribute(int32_t iDataSet, int32_t iType,
                                            const std::string& zValue, bool qCaseSensitive) {
  return Forward("mxDataStore (Code) (DSCompareDataSetAttribute)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.CompareDataSetAttribute(iType, zValue, qCaseSensitive); });
}

bool mxDataStore::DSGetIndexRange(int32_t iDataSet, const std::string& zClass,
                                  const std::string& zItem, int32_t& iStart, int32_t& iEnd) {
  return Forward("mxDataStore (Code) (DSGetIndexRange)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.GetIndexRange(zClass, zItem, iStart, iEnd); });
}

void mxDataStore::DSArrays(int32_t iRow, int32_t iDataSet, int32_t iColumn, Array<float>& xARR,
                           Array<float>& yArr, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (DSArrays)", kSpacedWording, [&] {
    if (!ValidDataSet(iDataSet) || iRow <= 0) return;
    const int32_t nDataSets = NextDataSetPos_ - 1;
    if (nDataSets < 1) return;
    mxDataSet& source = At(iDataSet);
    const std::string zOrigin = source.get_Origin();
    const std::string zLGRName = source.get_LGRName();
    const int32_t iFileType = source.get_FileType();
    std::string zVariable;
    source.GetAttribute(iColumn, ATT_VARIABLE, zVariable);

    xARR.ReDim(1, nDataSets);
    yArr.ReDim(1, nDataSets);
    int32_t nPoints = 0;
    for (int32_t d = 1; d <= nDataSets; ++d) {
      if (!ValidDataSet(d)) continue;
      mxDataSet& ds = At(d);
      if (ds.get_Origin() != zOrigin || ds.get_FileType() != iFileType ||
          ds.get_LGRName() != zLGRName)
        continue;
      const int32_t iFound = ds.IndexFromVARIABLE(zVariable);
      if (iFound < 1) continue;
      // A column fetched for this one value need not stay in memory.
      ds.let_DeleteAfterFetch(true);
      float dVal = 0.0f;
      if (!ds.GetValue(iRow, iFound, dVal) || ds.get_TimeInDays() < 0.0f) continue;
      ++nPoints;
      xARR(nPoints) = ds.get_TimeInDays();
      yArr(nPoints) = dVal;
    }
    if (nPoints < 1) return;
    xARR.ReDimPreserve(nPoints);
    yArr.ReDimPreserve(nPoints);
    qOK = true;
  });
}

}  // namespace vndata
