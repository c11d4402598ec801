// Lookups of the store by position and by key: a column's unique path, its
// size, the tab strip texts of an origin, and values found by key or name.
#include <cstring>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/string_tools.h"
#include "vndata/platform/variant.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

std::string mxDataStore::GetUniquePath(int32_t iDataSet, int32_t iColumn) {
  return Forward("mxDataStore (Code) (GetUniquePath)", iDataSet, std::string(), [&](mxDataSet& ds) {
    Array<std::string> zAttributes;
    ds.GetAttributes(iColumn, zAttributes);
    return zAttributes(ATT_ORIGIN) + "\\" + ds.get_GroupName() + "\\" + zAttributes(TREEVIEWPATH);
  });
}

int32_t mxDataStore::GetVectorSize(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (GetVectorSize)", iDataSet, int32_t{0}, [&](mxDataSet& ds) {
    return RoundToLong(static_cast<double>(ds.get_NumRows()) * 4.0 / 1024.0);
  });
}

void mxDataStore::GetUniqueTabStripHeaders(const std::string& zOrigin, int32_t iType,
                                           Array<std::string>& zHeaders, int32_t& nHeaders,
                                           bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (GetUniqueTabStripHeaders)", kSpacedWording, [&] {
    std::string zType;
    const int32_t pos = GetOriginIndex(zOrigin, zType, -1, "");
    if (pos > 0) Trusted(pos).GetUniqueTabStripHeaders(iType, zHeaders, nHeaders, qOK);
  });
}

void mxDataStore::GetValues(const std::string& zName, const std::string& zOrigin,
                            Array<float>& dVals, std::string& zSourceFileName, bool& qOK,
                            int32_t iStart, int32_t iEnd) {
  qOK = false;
  zSourceFileName.clear();
  RunGuarded("mxDataStore (Code) (GetValues)", kSpacedWording, [&] {
    // The origin here is the group or the display root of the data set.
    const std::string zUOrigin = StringTools::Upper(zOrigin);
    for (int32_t pos = 1; pos <= get_NumberOfDataSets(); ++pos) {
      mxDataSet& ds = Trusted(pos);
      if (!zOrigin.empty() && zUOrigin != ds.get_UCaseGroupName() &&
          zUOrigin != ds.get_UCaseTVDisplayRoot())
        continue;
      for (int32_t c = 1; c <= ds.get_NumCols(); ++c) {
        std::string zKey;
        int32_t iCreationType = 0;
        bool qKey = false;
        ds.GetTreeViewKey(c, zKey, iCreationType, qKey);
        if (!zName.empty() && zKey != zName) continue;
        zSourceFileName = ds.get_FileName();
        if (iStart < 2 && iEnd < 2) {
          ds.GetValues(c, dVals);
          qOK = true;
          return;
        }
        qOK = true;
        Array<float> sScratch;
        if (!ds.GetValues(c, sScratch)) return;
        const int32_t n = iEnd - iStart + 1;
        (void)sScratch(iStart);
        (void)sScratch(iEnd);
        dVals.ReDim(1, n);
        std::memcpy(dVals.data(), &sScratch(iStart), sizeof(float) * static_cast<std::size_t>(n));
        return;
      }
    }
  });
}

bool mxDataStore::DSGetValuesFromName(int32_t iDataSet, const std::string& zVector,
                                      Array<float>& sVals, bool qCleanUp) {
  bool result = false;
  RunGuarded("mxDataStore (Code) (DSGetValuesFromName)", kSpacedWording, [&] {
    Array<int32_t> iResults;
    int32_t nResults = 0;
    bool qFound = false;
    // The first column of that variable; the flag and the range are the
    // legacy -1, which as a flag is true.
    int32_t iEnd = -1;
    SearchaDataSet(iDataSet, iResults, nResults, qFound, zVector, "", "", "", "", "", true, -1, iEnd);
    if (!qFound || nResults < 1) return;
    const int32_t iColumn = iResults(1);
    mxDataSet& ds = Trusted(iDataSet);
    const bool qWasLoaded = ds.get_qLoaded(iColumn);
    ds.GetValues(iColumn, sVals);
    if (qCleanUp && !qWasLoaded) CleanUpFetchedColumn(iDataSet, iColumn);
    result = true;
  });
  return result;
}

void mxDataStore::CleanUpFetchedColumn(int32_t /*iDataSet*/, int32_t /*iColumn*/) {
  // A column fetched from disk only for this read is dropped again through
  // DeleteVector, which arrives with deletion and fetch on demand; columns
  // held in memory are never dropped here.
}

}  // namespace vndata
