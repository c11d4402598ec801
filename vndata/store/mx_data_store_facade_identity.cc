// The store's per-data-set family: the data set's identity, source, null,
// accumulation and text-read settings, read and written by position.
#include <string>

#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

// ---- Reads that give the value through a reference and report the position

bool mxDataStore::DSDataIndex(int32_t iDataSet, int32_t& iIndex) {
  return Forward("mxDataStore (Code) (DSDataIndex)", iDataSet, false, [&](mxDataSet& ds) {
    iIndex = ds.get_Index();
    return true;
  });
}

bool mxDataStore::DSDateStamp(int32_t iDataSet, std::string& zDateStamp) {
  return Forward("mxDataStore (Code) (DSDateStamp)", iDataSet, false, [&](mxDataSet& ds) {
    zDateStamp = ds.get_DateStamp();
    return true;
  });
}

bool mxDataStore::DSFileType(int32_t iDataSet, int32_t& iFileType) {
  return Forward("mxDataStore (Code) (DSFileType)", iDataSet, false, [&](mxDataSet& ds) {
    iFileType = ds.get_FileType();
    return true;
  });
}

bool mxDataStore::DSGroupName(int32_t iDataSet, std::string& zGroupName) {
  return Forward("mxDataStore (Code) (DSGroupName)", iDataSet, false, [&](mxDataSet& ds) {
    zGroupName = ds.get_GroupName();
    return true;
  });
}

bool mxDataStore::DSOrigin(int32_t iDataSet, std::string& zOrigin) {
  return Forward("mxDataStore (Code) (DSOrigin)", iDataSet, false, [&](mxDataSet& ds) {
    zOrigin = ds.get_Origin();
    return true;
  });
}

bool mxDataStore::DSSourceType(int32_t iDataSet, std::string& zSourceType) {
  return Forward("mxDataStore (Code) (DSSourceType)", iDataSet, false, [&](mxDataSet& ds) {
    zSourceType = ds.get_SourceType();
    return true;
  });
}

bool mxDataStore::DSTVGroupName(int32_t iDataSet, std::string& zTVGroupName) {
  return Forward("mxDataStore (Code) (DSTVGroupName)", iDataSet, false, [&](mxDataSet& ds) {
    zTVGroupName = ds.get_TVGroupName();
    return true;
  });
}

bool mxDataStore::DSUnits(int32_t iDataSet, int32_t& iUnits) {
  return Forward("mxDataStore (Code) (DSUnits)", iDataSet, false, [&](mxDataSet& ds) {
    iUnits = ds.get_Units();
    return true;
  });
}

bool mxDataStore::DSDataClass(int32_t iDataSet, std::string& zDataClass) {
  return Forward("mxDataStore (Code) (DSDataClass)", iDataSet, false, [&](mxDataSet& ds) {
    zDataClass = ds.get_DataClass();
    return true;
  });
}

bool mxDataStore::DSTableName(int32_t iDataSet, std::string& zTableName) {
  return Forward("mxDataStore (Code) (DSTableName)", iDataSet, false, [&](mxDataSet& ds) {
    zTableName = ds.get_TableName();
    return true;
  });
}

// ---- Reads with the value as result

int32_t mxDataStore::DSGetDefaultX(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetDefaultX)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_DefaultX(); });
}

std::string mxDataStore::DSGetzOnly(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetzOnly)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_zOnly(); });
}

bool mxDataStore::DSGetIsDirty(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetIsDirty)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_IsDirty(); });
}

int32_t mxDataStore::DSGetUnitDataSource(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetUnitDataSource)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_UnitDataSource(); });
}

std::string mxDataStore::DSGetUnitSource(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetUnitSource)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_UnitSource(); });
}

std::string mxDataStore::DSGetUnitCurrent(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetUnitCurrent)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_UnitCurrent(); });
}

std::string mxDataStore::GetDataRootPath(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (GetDataRootPath)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_DataRootPath(); });
}

std::string mxDataStore::GetDataSetDate(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (GetDataSetDate)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_DateStamp(); });
}

std::string mxDataStore::GetFileName(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (GetFileName)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_FileName(); });
}

int32_t mxDataStore::DSGetUseNulls(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetUseNulls)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_UseNullVal(); });
}

double mxDataStore::DSGetNullValue(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetNullValue)", iDataSet, 0.0,
                 [](mxDataSet& ds) { return ds.get_NullValue(); });
}

bool mxDataStore::DSGetPerforationsSet(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetPerforationsSet)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_PerforationsSet(); });
}

bool mxDataStore::DSGetPerforations(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetPerforations)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_Perforations(); });
}

double mxDataStore::DSGetReaderNullValue(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetReaderNullValue)", iDataSet, 0.0,
                 [](mxDataSet& ds) { return ds.get_ReaderNullValue(); });
}

bool mxDataStore::DSGetReaderSetNull(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetReaderSetNull)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_ReaderSetNull(); });
}

std::string mxDataStore::DSGetObsName(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetObsName)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_ObsName(); });
}

int32_t mxDataStore::DSGetReadPosition(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetReadPosition)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_ReadPosition(); });
}

float mxDataStore::DSGetTimeInDays(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetTimeInDays)", iDataSet, 0.0f,
                 [](mxDataSet& ds) { return ds.get_TimeInDays(); });
}

bool mxDataStore::DSGetAccumulate(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetAccumulate)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_Accumulate(); });
}

int32_t mxDataStore::DSGetAccRates(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetAccRates)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_AccRates(); });
}

int32_t mxDataStore::DSGetAccFrequency(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetAccFrequency)", iDataSet, int32_t{0},
                 [](mxDataSet& ds) { return ds.get_AccFrequency(); });
}

std::string mxDataStore::DSGetAccInterval(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetAccInterval)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_AccInterval(); });
}

Date mxDataStore::DSGetAccSimDate(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetAccSimDate)", iDataSet, Date(),
                 [](mxDataSet& ds) { return ds.get_AccSimDate(); });
}

Date mxDataStore::DSGetAccAccDate(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetAccAccDate)", iDataSet, Date(),
                 [](mxDataSet& ds) { return ds.get_AccAccDate(); });
}

std::string mxDataStore::DSGetSimCase(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSGetSimCase)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_SimCase(); });
}

// ---- Writes: true once the value reached the data set

bool mxDataStore::DSSetDateStamp(int32_t iDataSet, const std::string& zDateStamp) {
  return Forward("mxDataStore (Code) (DSSetDateStamp)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_DateStamp(zDateStamp);
    return true;
  });
}

bool mxDataStore::DSSetDefaultX(int32_t iDataSet, int32_t iDefaultX) {
  return Forward("mxDataStore (Code) (DSSetDefaultX)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_DefaultX(iDefaultX);
    return true;
  });
}

bool mxDataStore::DSSetFileType(int32_t iDataSet, int32_t iFileType) {
  return Forward("mxDataStore (Code) (DSSetFileType)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_FileType(iFileType);
    return true;
  });
}

bool mxDataStore::DSSetUnits(int32_t iDataSet, int32_t iUnits) {
  return Forward("mxDataStore (Code) (DSSetUnits)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_Units(iUnits);
    return true;
  });
}

bool mxDataStore::DSSetZOnly(int32_t iDataSet, const std::string& zOnly) {
  return Forward("mxDataStore (Code) (DSSetZOnly)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_zOnly(zOnly);
    return true;
  });
}

bool mxDataStore::DSSetIsDirty(int32_t iDataSet, bool qIsDirty) {
  return Forward("mxDataStore (Code) (DSSetIsDirty)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_IsDirty(qIsDirty);
    return true;
  });
}

bool mxDataStore::DSSetUnitSource(int32_t iDataSet, const std::string& zUnitSource) {
  return Forward("mxDataStore (Code) (DSSetUnitSource)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_UnitSource(zUnitSource);
    return true;
  });
}

bool mxDataStore::DSSetUnitCurrent(int32_t iDataSet, const std::string& zUnitCurrent) {
  return Forward("mxDataStore (Code) (DSSetUnitCurrent)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_UnitCurrent(zUnitCurrent);
    return true;
  });
}

bool mxDataStore::DSSetUnitDataSource(int32_t iDataSet, int32_t iUnitDataSource) {
  return Forward("mxDataStore (Code) (DSSetUnitDataSource)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_UnitDataSource(iUnitDataSource);
    return true;
  });
}

bool mxDataStore::DSSetUseNulls(int32_t iDataSet, int32_t iUseNullVal) {
  return Forward("mxDataStore (Code) (DSSetUseNulls)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_UseNullVal(iUseNullVal);
    return true;
  });
}

bool mxDataStore::DSSetNullValue(int32_t iDataSet, double dNullValue) {
  return Forward("mxDataStore (Code) (DSSetNullValue)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_NullValue(dNullValue);
    return true;
  });
}

bool mxDataStore::DSSetReaderNullValue(int32_t iDataSet, double dReaderNullValue) {
  return Forward("mxDataStore (Code) (DSSetReaderNullValue)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_ReaderNullValue(dReaderNullValue);
    return true;
  });
}

bool mxDataStore::DSSetReaderSetNull(int32_t iDataSet, bool qReaderSetNull) {
  return Forward("mxDataStore (Code) (DSSetReaderSetNull)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_ReaderSetNull(qReaderSetNull);
    return true;
  });
}

bool mxDataStore::DSSetReadPosition(int32_t iDataSet, int32_t iPos) {
  return Forward("mxDataStore (Code) (DSSetReadPosition)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_ReadPosition(iPos);
    return true;
  });
}

bool mxDataStore::DSSetAccRates(int32_t iDataSet, int32_t iAccRates) {
  return Forward("mxDataStore (Code) (DSSetAccRates)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_AccRates(iAccRates);
    return true;
  });
}

bool mxDataStore::DSSetAccumulate(int32_t iDataSet, bool qAccumulate) {
  return Forward("mxDataStore (Code) (DSSetAccumulate)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_Accumulate(qAccumulate);
    return true;
  });
}

bool mxDataStore::DSSetAccFrequency(int32_t iDataSet, int32_t iAccFrequency) {
  return Forward("mxDataStore (Code) (DSSetAccFrequency)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_AccFrequency(iAccFrequency);
    return true;
  });
}

bool mxDataStore::DSSetAccInterval(int32_t iDataSet, const std::string& zAccInterval) {
  return Forward("mxDataStore (Code) (DSSetAccInterval)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_AccInterval(zAccInterval);
    return true;
  });
}

bool mxDataStore::DSSetAccSimDate(int32_t iDataSet, Date dAccSimDate) {
  return Forward("mxDataStore (Code) (DSSetAccSimDate)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_AccSimDate(dAccSimDate);
    return true;
  });
}

bool mxDataStore::DSSetAccAccDate(int32_t iDataSet, Date dAccAccDate) {
  return Forward("mxDataStore (Code) (DSSetAccAccDate)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_AccAccDate(dAccAccDate);
    return true;
  });
}

bool mxDataStore::SetDataSetDate(int32_t iDataSet, const std::string& zDateStamp) {
  return Forward("mxDataStore (Code) (SetDataSetDate)", iDataSet, false, [&](mxDataSet& ds) {
    ds.let_DateStamp(zDateStamp);
    return true;
  });
}

// ---- Reads and writes of more than one value

std::string mxDataStore::GetDataSetAttribute(int32_t iDataSet, int32_t iAttribute) {
  // Not the data set's own numbering: only these five ids answer, although
  // 1, 3 and 4 happen to agree with it.
  return Forward("mxDataStore (Code) (GetDataSetAttribute)", iDataSet, std::string(),
                 [&](mxDataSet& ds) -> std::string {
                   switch (iAttribute) {
                     case 1: return ds.get_Origin();
                     case 3: return ds.get_SourceType();
                     case 4: return ds.get_DateStamp();
                     case 10: return std::to_string(ds.get_Index());
                     case 14: return ds.get_GroupName();
                     default: return std::string();
                   }
                 });
}

bool mxDataStore::DSGetOnlyList(int32_t iDataSet, Array2<uint8_t>& bOnly, bool& qOnly) {
  return Forward("mxDataStore (Code) (DSGetOnlyList)", iDataSet, false, [&](mxDataSet& ds) {
    ds.GetbOnly(bOnly, qOnly);
    return true;
  });
}

bool mxDataStore::DSSetOnlyList(int32_t iDataSet, const Array2<uint8_t>& bOnly, bool qOnly) {
  return Forward("mxDataStore (Code) (DSSetOnlyList)", iDataSet, false, [&](mxDataSet& ds) {
    ds.SetbOnly(bOnly, qOnly);
    return true;
  });
}

bool mxDataStore::DSGetClassVarsFromAttributes(int32_t iDataSet, Array<Variant>& vAttributes) {
  return Forward("mxDataStore (Code) (DSGetClassVarsFromAttributes)", iDataSet, false,
                 [&](mxDataSet& ds) { return ds.GetClassVarsFromAttributes(vAttributes); });
}

bool mxDataStore::GetNxNyNz(int32_t iDataSet, int32_t& nx, int32_t& ny, int32_t& nz) {
  return Forward("mxDataStore (Code) (GetNxNyNz)", iDataSet, false, [&](mxDataSet& ds) {
    ds.GetNxNyNz(nx, ny, nz);
    return true;
  });
}

}  // namespace vndata
