// The store's per-data-set family: the data set's properties indexed by
// position. A bad position reads as false, 0 or "" and writes nothing.
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

int32_t mxDataStore::get_UnitDataSource(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (UnitDataSource)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_UnitDataSource(); });
}

void mxDataStore::let_UnitDataSource(int32_t iDataSet, int32_t iUnitDataSource) {
  ForwardVoid("mxDataStore (Code) (UnitDataSource)", iDataSet,
              [&](mxDataSet& ds) { ds.let_UnitDataSource(iUnitDataSource); });
}

bool mxDataStore::get_DSDeleteAfterFetch(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSDeleteAfterFetch)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_DeleteAfterFetch(); });
}

void mxDataStore::let_DSDeleteAfterFetch(int32_t iDataSet, bool qDeleteAfterFetch) {
  ForwardVoid("mxDataStore (Code) (DSDeleteAfterFetch)", iDataSet,
              [&](mxDataSet& ds) { ds.let_DeleteAfterFetch(qDeleteAfterFetch); });
}

double mxDataStore::get_DSNullValue(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSNullValue)", iDataSet, 0.0,
                 [](mxDataSet& ds) { return ds.get_NullValue(); });
}

bool mxDataStore::get_Child(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (Child)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_Child(); });
}

std::string mxDataStore::get_CaseName(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (CaseName)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_CaseName(); });
}

std::string mxDataStore::get_DataRootPath(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DataRootPath)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_DataRootPath(); });
}

std::string mxDataStore::get_DateStamp(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DateStamp)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_DateStamp(); });
}

void mxDataStore::let_DateStamp(int32_t iDataSet, const std::string& zDateStamp) {
  ForwardVoid("mxDataStore (Code) (DateStamp)", iDataSet,
              [&](mxDataSet& ds) { ds.let_DateStamp(zDateStamp); });
}

std::string mxDataStore::get_FileName(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (FileName)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_FileName(); });
}

int32_t mxDataStore::get_FileType(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (FileType)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_FileType(); });
}

bool mxDataStore::get_Formatted(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (Formatted)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_Formatted(); });
}

std::string mxDataStore::get_GroupName(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (GroupName)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_GroupName(); });
}

int32_t mxDataStore::get_iEnd(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (iEnd)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_iEnd(); });
}

int32_t mxDataStore::get_Index(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (Index)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_Index(); });
}

void mxDataStore::let_Index(int32_t iDataSet, int32_t iIndex) {
  ForwardVoid("mxDataStore (Code) (Index)", iDataSet,
              [&](mxDataSet& ds) { ds.let_Index(iIndex); });
}

bool mxDataStore::get_Initialised(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (Initialised)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_Initialised(); });
}

bool mxDataStore::get_IsDirty(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (IsDirty)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_IsDirty(); });
}

void mxDataStore::let_IsDirty(int32_t iDataSet, bool qIsDirty) {
  ForwardVoid("mxDataStore (Code) (IsDirty)", iDataSet,
              [&](mxDataSet& ds) { ds.let_IsDirty(qIsDirty); });
}

int32_t mxDataStore::get_iStart(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (iStart)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_iStart(); });
}

int32_t mxDataStore::get_MaxRows(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (MaxRows)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_MaxRows(); });
}

bool mxDataStore::get_NoRestart(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (NoRestart)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_NoRestart(); });
}

void mxDataStore::let_NoRestart(int32_t iDataSet, bool qNoRestart) {
  ForwardVoid("mxDataStore (Code) (NoRestart)", iDataSet,
              [&](mxDataSet& ds) { ds.let_NoRestart(qNoRestart); });
}

bool mxDataStore::get_NoInactive(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (NoInactive)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_NoInactive(); });
}

int32_t mxDataStore::get_NumCols(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (NumCols)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_NumCols(); });
}

int32_t mxDataStore::get_NumMarkers(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (NumMarkers)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_NumMarkers(); });
}

std::string mxDataStore::get_UCaseOrigin(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (UCaseOrigin)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_UCaseOrigin(); });
}

std::string mxDataStore::get_Origin(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (Origin)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_Origin(); });
}

std::string mxDataStore::get_SourceType(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (SourceType)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_SourceType(); });
}

bool mxDataStore::get_Unified(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (Unified)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_Unified(); });
}

int32_t mxDataStore::get_Units(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (Units)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_Units(); });
}

std::string mxDataStore::get_GetDataClass(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (GetDataClass)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_DataClass(); });
}

bool mxDataStore::get_DSHysteresis(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSHysteresis)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_Hysteresis(); });
}

bool mxDataStore::get_DSEndPointScaling(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSEndPointScaling)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_EndPointScaling(); });
}

bool mxDataStore::get_DSDirEndPointScaling(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSDirEndPointScaling)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_DirEndPointScaling(); });
}

bool mxDataStore::get_DSRevEndPointScaling(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSRevEndPointScaling)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_RevEndPointScaling(); });
}

bool mxDataStore::get_DSAltEndPointScaling(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSAltEndPointScaling)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_AltEndPointScaling(); });
}

int32_t mxDataStore::get_DSIPHASE(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSIPHASE)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_iPhase(); });
}

std::string mxDataStore::get_DSSimulator(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSSimulator)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_Simulator(); });
}

bool mxDataStore::get_DSIgnoreInGRF(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSIgnoreInGRF)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_IgnoreInGRF(); });
}

std::string mxDataStore::get_LGRName(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (LGRName)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_LGRName(); });
}

bool mxDataStore::get_AllData(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (AllData)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_AllData(); });
}

std::string mxDataStore::get_UniqueKey(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (UniqueKey)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_UniqueKey(); });
}

bool mxDataStore::get_DualPorosity(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DualPorosity)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_DualPorosity(); });
}

bool mxDataStore::get_qSelectionOnly(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (qSelectionOnly)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_qSelectionOnly(); });
}

void mxDataStore::let_qSelectionOnly(int32_t iDataSet, bool qSelectionOnly) {
  ForwardVoid("mxDataStore (Code) (qSelectionOnly)", iDataSet,
              [&](mxDataSet& ds) { ds.let_qSelectionOnly(qSelectionOnly); });
}

int32_t mxDataStore::get_DataSetDerivedFrom(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DataSetDerivedFrom)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_DataSetDerivedFrom(); });
}

void mxDataStore::let_DataSetDerivedFrom(int32_t iDataSet, int32_t iDataSetDerivedFrom) {
  ForwardVoid("mxDataStore (Code) (DataSetDerivedFrom)", iDataSet,
              [&](mxDataSet& ds) { ds.let_DataSetDerivedFrom(iDataSetDerivedFrom); });
}

int32_t mxDataStore::get_CreationMethod(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (CreationMethod)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_CreationMethod(); });
}

void mxDataStore::let_CreationMethod(int32_t iDataSet, int32_t iCreationMethod) {
  ForwardVoid("mxDataStore (Code) (CreationMethod)", iDataSet,
              [&](mxDataSet& ds) { ds.let_CreationMethod(iCreationMethod); });
}

int32_t mxDataStore::get_NumRows(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (NumRows)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_NumRows(); });
}

int32_t mxDataStore::get_NumWells(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (NumWells)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_NumWells(); });
}

Array<int32_t> mxDataStore::get_INITA2N(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (INITA2N)", iDataSet, Array<int32_t>(),
                 [](mxDataSet& ds) { return ds.get_INITA2N(); });
}

std::intptr_t mxDataStore::get_ValuesPtr(int32_t iDataSet, int32_t ThisCol) {
  return Forward("mxDataStore (Code) (ValuesPtr)", iDataSet, std::intptr_t{0},
                 [&](mxDataSet& ds) { return ds.ValuesPtr(ThisCol); });
}

std::intptr_t mxDataStore::get_ValuesRowPtr(int32_t iDataSet, int32_t ThisCol, int32_t ThisRow) {
  return Forward("mxDataStore (Code) (ValuesRowPtr)", iDataSet, std::intptr_t{0},
                 [&](mxDataSet& ds) { return ds.ValuesRowPtr(ThisCol, ThisRow); });
}

bool mxDataStore::get_qIsVectorLoaded(int32_t iDataSet, int32_t iVector) {
  return Forward("mxDataStore (Code) (qIsVectorLoaded)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.get_qLoaded(iVector); });
}

void mxDataStore::let_qIsVectorLoaded(int32_t iDataSet, int32_t iVector, bool qLoaded) {
  ForwardVoid("mxDataStore (Code) (qIsVectorLoaded)", iDataSet,
              [&](mxDataSet& ds) { ds.let_qLoaded(iVector, qLoaded); });
}

}  // namespace vndata
