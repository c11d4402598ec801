// mxDataSet: identity and source properties, defaults, lifecycle and checks.
#include <chrono>
#include <ctime>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/derived/mx_automatic_dq.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/date_tools.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

// The present moment as a platform date: days since 30 December 1899 with
// the local time of day as the fraction.
Date Now() {
  const std::time_t t = std::time(nullptr);
  std::tm local{};
  localtime_r(&t, &local);
  const Date day = Date::FromYMD(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
  const double seconds = local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec;
  return Date(day.Days() + seconds / 86400.0);
}

}  // namespace

mxDataSet::mxDataSet() { InitialiseVariables(); }

// Release drops the pools first, then the kernel object and everything else.
mxDataSet::~mxDataSet() {
  pools_.Erase();
  xADQ_.reset();
}

void mxDataSet::InitialiseVariables() {
  zOrigin_.clear();
  zUCaseOrigin_.clear();
  zUniqueKey_.clear();
  iIndex_ = -1;
  zFileName_.clear();
  zScratchFileName_.clear();
  qScratchFile_ = false;
  zCaseName_.clear();
  zSimCase_.clear();
  zGroupName_ = std::string(kDefaultGroup);
  zUCaseGroupName_ = StringTools::Upper(zGroupName_);
  zTVGroupName_.clear();
  zTVDisplayRoot_.clear();
  zUCaseTVDisplayRoot_.clear();
  zDataRootPath_.clear();
  zDataRootUnique_.clear();
  zDataRootLeaf_.clear();
  zDataClass_.clear();
  zSourceType_.clear();
  zSimulator_.clear();
  qEclipseNames_ = false;
  iFileType_ = kDefaultFileType;
  iUnits_ = 0;
  zUnitSource_.clear();
  zUnitCurrent_.clear();
  iUnitDataSource_ = 0;
  let_DateStamp(DateTools::DayMonthYearText(Date::Today()));
  zLGRName_.clear();
  zTableName_.clear();
  zObsName_.clear();
  iCreationMethod_ = 0;
  iDataSetDerivedFrom_ = 0;
  qChild_ = false;
  sTimeInDays_ = kDefaultTimeInDays;

  iStart_ = iEnd_ = -1;
  iReadPosL_ = iReadPosH_ = -1;
  qNoRestart_ = qUnified_ = qFormatted_ = qAllData_ = true;
  qNoInactive_ = qSelectionOnly_ = false;
  qPerforations_ = qPerforationsSet_ = false;
  qDeleteAfterFetch_ = qDeleteNow_ = qIgnoreInGRF_ = false;
  qDualPorosity_ = qHysteresis_ = qEndPointScaling_ = false;
  qDirEndPointScaling_ = qRevEndPointScaling_ = qAltEndPointScaling_ = false;
  iPhase_ = 0;
  zOnly_.clear();
  bOnly_.ReDim(1, kOnlyRecordSize, 1, 1);
  bOnly_.Fill(' ');
  qOnly_ = false;

  dNullValue_ = kDefaultNullValue;
  iUseNullVal_ = 1;
  dReaderNullValue_ = 0.0;
  qReaderSetNull_ = false;
  iDefaultX_ = -1;
  qAccumulate_ = false;
  iAccFrequency_ = 0;
  zAccInterval_.clear();
  dAccSimDate_ = dAccAccDate_ = Now();
  iAccRates_ = 0;
  iTextRowName_ = iTextRowUnits_ = iTextRowLGR_ = iTextRowIndex_ = 0;
  iTextRowVerbose_ = iTextRowWell_ = iTextRowData_ = iTextRowFixed_ = 0;
  zTextRowDateFormat_.clear();

  qINITA2NSet_ = false;
  iINITA2N_.Erase();
  nINITA2N_ = 0;
  nx_ = ny_ = nz_ = 0;
  qColumnMap_ = false;
  iColumnMap_.Erase();

  // One buffer of 1 by 1 with no rows in use, one column record, no columns.
  buffers_.ReDim(1, 1);
  nBuffers_ = 1;
  appendChunk_.reset();
  DimensionBufferArray(buffers_(1), false, 1, 1, 1);
  buffers_(1).nRowsInUse = 0;
  columns_.ReDim(1, 1);
  nCols_ = 0;
  nCellsUncompressed_ = nMarkers_ = nWells_ = 0;
  qInitialised_ = qIsDirty_ = false;

  pools_.ReDim(1, kNumAttributes);
  classData_.Erase();
  classMemberList_.Erase();
  nClasses_ = nClassList_ = 0;
  wells_.Erase();
  xADQ_ = std::make_shared<mxAutomaticDQ>();
  // The table and the file objects of column fetches are created by the
  // pieces that use them.
}

// ---- Identity and source ------------------------------------------------------------

void mxDataSet::let_Origin(const std::string& zOrigin) {
  zOrigin_ = zOrigin;
  zUCaseOrigin_ = StringTools::Upper(zOrigin);
  RunGuarded("mxDataSet  (Origin)", [&] { SetStoreAttribute(ATT_ORIGIN, zOrigin); });
}

void mxDataSet::let_ScratchFileName(const std::string& zName) {
  zScratchFileName_ = zName;
  qScratchFile_ = !zName.empty();
}

void mxDataSet::let_GroupName(const std::string& zGroupName) {
  zGroupName_ = zGroupName;
  zUCaseGroupName_ = StringTools::Upper(zGroupName);
}

void mxDataSet::let_TVDisplayRoot(const std::string& zRoot) {
  zTVDisplayRoot_ = zRoot;
  zUCaseTVDisplayRoot_ = StringTools::Upper(zRoot);
}

void mxDataSet::let_DataRootUnique(const std::string& zRoot) {
  zDataRootUnique_ = zRoot;
  const std::size_t p = zRoot.rfind('\\');
  if (p != std::string::npos && p + 1 < zRoot.size()) zDataRootLeaf_ = zRoot.substr(p + 1);
}

void mxDataSet::let_DateStamp(const std::string& zDate) {
  zDateStamp_ = zDate;
  DateTools::SplitDate(zDate, std::string(kDateFormat), iDateDay_, iDateMonth_, iDateYear_);
}

void mxDataSet::GetDateStampParts(int32_t& iDay, int32_t& iMonth, int32_t& iYear) const {
  iDay = iDateDay_;
  iMonth = iDateMonth_;
  iYear = iDateYear_;
}

void mxDataSet::let_LGRName(const std::string& zName) { zLGRName_ = StringTools::Trim(zName); }

// ---- Reading state -----------------------------------------------------------------

int32_t mxDataSet::get_ReadPosition64(int32_t& iPosH) const {
  iPosH = iReadPosH_;
  return iReadPosL_;
}

void mxDataSet::let_ReadPosition64(int32_t iPosH, int32_t iPosL) {
  iReadPosL_ = iPosL;
  iReadPosH_ = iPosH;
}

void mxDataSet::let_ReadPosition(int32_t iPos) {
  iReadPosL_ = iPos;
  iReadPosH_ = 0;
}

void mxDataSet::let_DeleteAfterFetch(bool q) {
  qDeleteAfterFetch_ = q;
  qDeleteNow_ = q;
}

void mxDataSet::SetbOnly(const Array2<uint8_t>& bOnly, bool qOnly) {
  bOnly_ = bOnly;
  qOnly_ = qOnly;
}

void mxDataSet::GetbOnly(Array2<uint8_t>& bOnly, bool& qOnly) const {
  bOnly = bOnly_;
  qOnly = qOnly_;
}

// ---- Plot default ---------------------------------------------------------------------

bool mxDataSet::SetDefaultXByHeader(const std::string& zHeader) {
  const int32_t iColumn = FindAttributePosition(ATT_VARIABLE, zHeader);
  if (iColumn < 1) return false;
  iDefaultX_ = iColumn;
  return true;
}

// At the end of a whole-array load: the "TIME" column plots as x, or column
// 1 when there is none. A DefaultX of -1 means the reader wants none.
void mxDataSet::ApplyDefaultX() {
  if (iDefaultX_ == -1) return;
  const int32_t iTime = FindAttributePosition(ATT_VARIABLE, std::string(kTimeVectorName));
  iDefaultX_ = iTime >= 1 ? iTime : 1;
}

// ---- Simulator grid header ------------------------------------------------------------

void mxDataSet::GetINITA2N(bool& qA2N, Array<int32_t>& A2N, int32_t& nA2N, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (GetINITA2N)", [&] {
    if (qINITA2NSet_) {
      qA2N = true;
      A2N = iINITA2N_;
      nA2N = nINITA2N_;
    } else {
      qA2N = false;
      nA2N = 0;
    }
    qOK = true;
  });
}

void mxDataSet::SetINITA2N(const Array<int32_t>& A2N, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetINITA2N)", [&] {
    if (A2N.IsAllocated() && A2N.size() > 0) {
      iINITA2N_ = A2N;
      nINITA2N_ = static_cast<int32_t>(A2N.size());
      qINITA2NSet_ = true;
    } else {
      qINITA2NSet_ = false;
      nINITA2N_ = 1;
    }
    qOK = true;
  });
}

void mxDataSet::GetNxNyNz(int32_t& nx, int32_t& ny, int32_t& nz) const {
  nx = nx_;
  ny = ny_;
  nz = nz_;
}

void mxDataSet::SetNxNyNz(int32_t nx, int32_t ny, int32_t nz) {
  nx_ = nx;
  ny_ = ny;
  nz_ = nz;
}

// ---- Sizes ------------------------------------------------------------------------------

int32_t mxDataSet::get_NumRows() const {
  // Columns fetched from disk count their rows from the location table; that
  // count arrives with the column fetch machinery, until which every data set
  // holds its rows in the buffers.
  int64_t n = 0;
  for (int32_t b = 1; b <= nBuffers_; ++b) n += buffers_(b).nRowsInUse;
  return static_cast<int32_t>(n);
}

void mxDataSet::let_ColumnMap(const Array<int32_t>& iMap) {
  if (!iMap.IsAllocated() || iMap.size() == 0) return;
  iColumnMap_ = iMap;
  qColumnMap_ = true;
}

bool mxDataSet::ValidColumn(int32_t iColumn, bool qCheckActive) const {
  if (!qCheckActive) return true;
  return ValidColumnIndex(iColumn) && columns_.InBounds(iColumn) && columns_(iColumn).qActive;
}

}  // namespace vndata
