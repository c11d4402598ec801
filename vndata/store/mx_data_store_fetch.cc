// mxDataStore: the per-data-set members of columns fetched on demand, and
// the store's own FODDataLoaded.
#include <vector>

#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

void mxDataStore::AssignFODPointers(int32_t iDataSet, const Array<bool>& qFileTypeSettings,
                                    const Array2<int32_t>& iPosArray, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (AssignFODPointers)", iDataSet,
              [&](mxDataSet& ds) { ds.AssignFODPointers(qFileTypeSettings, iPosArray, qOK); });
}

void mxDataStore::AssignFODPlusPointers(int32_t iDataSet, const Array<bool>& qFileTypeSettings,
                                        const Array2<int32_t>& iPosArray, const Array<int32_t>& iDQArray,
                                        const Array<float>& sUCFactors, bool& qOK, bool qConvertUnitsNow,
                                        bool qCalculateDQsNow) {
  ForwardVoid("mxDataStore (Code) (AssignFODPlusPointers)", iDataSet, [&](mxDataSet& ds) {
    ds.AssignFODPlusPointers(qFileTypeSettings, iPosArray, iDQArray, sUCFactors, qOK, qConvertUnitsNow,
                             qCalculateDQsNow);
  });
}

void mxDataStore::LoadFODVector(int32_t iDataSet, int32_t ThisCol, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (LoadFODVector)", iDataSet, [&](mxDataSet& ds) {
    ds.LoadFODVector(ThisCol, qOK);
    if (!qOK) return;
    int32_t iSet = iDataSet, iColumn = ThisCol;
    StoreEvents_->FODDataLoaded(iSet, iColumn);
  });
}

void mxDataStore::DSLoadFODVectors(int32_t iDataSet, const Array<int32_t>& iColumns, int32_t nCols,
                                   bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSLoadFODVectors)", iDataSet, [&](mxDataSet& ds) {
    // The columns not in memory before: those the load brings in are told.
    std::vector<int32_t> fresh;
    for (int32_t i = 1; i <= nCols && iColumns.InBounds(i); ++i)
      if (ds.ValidColumnIndex(iColumns(i)) && !ds.get_qLoaded(iColumns(i))) fresh.push_back(iColumns(i));
    ds.LoadFODVectors(iColumns, nCols, qOK);
    for (int32_t c : fresh) {
      if (!ds.get_qLoaded(c)) continue;
      int32_t iSet = iDataSet, iColumn = c;
      StoreEvents_->FODDataLoaded(iSet, iColumn);
    }
  });
}

bool mxDataStore::get_FetchOnDemandActive(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (FetchOnDemandActive)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_FetchOnDemandActive(); });
}

void mxDataStore::let_FetchOnDemandActive(int32_t iDataSet, bool qActive) {
  ForwardVoid("mxDataStore (Code) (FetchOnDemandActive)", iDataSet,
              [&](mxDataSet& ds) { ds.let_FetchOnDemandActive(qActive); });
}

void mxDataStore::let_LoadAllVectors(int32_t iDataSet, bool qLoadAll) {
  ForwardVoid("mxDataStore (Code) (LoadAllVectors)", iDataSet,
              [&](mxDataSet& ds) { ds.let_LoadAllVectors(qLoadAll); });
}

void mxDataStore::GetLoadedFODVectors(int32_t iDataSet, Array<int32_t>& iColumns, int32_t& nCols,
                                      bool& qOK) {
  ForwardVoid("mxDataStore (Code) (GetLoadedFODVectors)", iDataSet,
              [&](mxDataSet& ds) { ds.GetLoadedVectors(iColumns, nCols, qOK); });
}

bool mxDataStore::FetchOnDemandColumnLoaded(int32_t iDataSet, int32_t ThisCol) {
  return Forward("mxDataStore (Code) (FetchOnDemandColumnLoaded)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.FetchOnDemandColumnLoaded(ThisCol); });
}

int32_t mxDataStore::DSGetFODVarType(int32_t iDataSet, int32_t iCol) {
  return Forward("mxDataStore (Code) (DSGetFODVarType)", iDataSet, int32_t{-1},
                 [&](mxDataSet& ds) { return ds.GetFODVarType(iCol); });
}

}  // namespace vndata
