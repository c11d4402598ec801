// mxDataSet: identity and source properties, defaults, lifecycle and checks.
#include <chrono>
#include <ctime>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/derived/mx_automatic_dq.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/date_tools.h"
#include "vndata/platform/internal/run_guarded.h"
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

// Release drops the pools first, then the kernel object, the file and its
// reader, and everything else.
mxDataSet::~mxDataSet() {
  headers_.pools.Erase();
  xADQ_.reset();
  fetch_.cFILETYPE.reset();
  fetch_.xIO.reset();
}

void mxDataSet::InitialiseVariables() {
  source_ = SourceFields{};
  source_.zUCaseGroupName = StringTools::Upper(source_.zGroupName);
  let_DateStamp(DateTools::DayMonthYearText(Date::Today()));
  reading_ = ReadingFields{};
  plot_ = PlotFields{};
  plot_.dAccSimDate = plot_.dAccAccDate = Now();
  grid_ = GridFields{};
  lists_ = ListFields{};
  lists_.bOnly.ReDim(1, kOnlyRecordSize, 1, 1);
  lists_.bOnly.Fill(' ');
  lists_.bGridNames.ReDim(1, kGridNameWidth, 1, 1);
  lists_.bGridNames.Fill(' ');

  // One buffer of 1 by 1 with no rows in use, one column record, no columns.
  rows_ = RowFields{};
  rows_.buffers.ReDim(1, 1);
  DimensionBufferArray(rows_.buffers(1), false, 1, 1, 1);
  rows_.buffers(1).nRowsInUse = 0;
  headers_ = HeaderFields{};
  headers_.columns.ReDim(1, 1);
  headers_.pools.ReDim(1, kNumAttributes);
  wells_ = WellFields{};
  InitWellLists();
  caches_ = CacheFields{};
  fetch_ = FetchFields{};
  qInitialised_ = qIsDirty_ = false;
  xADQ_ = std::make_shared<mxAutomaticDQ>();
  // The file objects of column fetches are made by the first read; the
  // table by the piece that uses it.
}

// ---- Identity and source ------------------------------------------------------------

void mxDataSet::let_Origin(const std::string& zOrigin) {
  source_.zOrigin = zOrigin;
  source_.zUCaseOrigin = StringTools::Upper(zOrigin);
  RunGuarded("mxDataSet  (Origin)", [&] { SetStoreAttribute(ATT_ORIGIN, zOrigin); });
}

void mxDataSet::let_ScratchFileName(const std::string& zName) {
  source_.zScratchFileName = zName;
  source_.qScratchFile = !zName.empty();
}

void mxDataSet::let_GroupName(const std::string& zGroupName) {
  source_.zGroupName = zGroupName;
  source_.zUCaseGroupName = StringTools::Upper(zGroupName);
}

void mxDataSet::let_TVDisplayRoot(const std::string& zRoot) {
  source_.zTVDisplayRoot = zRoot;
  source_.zUCaseTVDisplayRoot = StringTools::Upper(zRoot);
}

void mxDataSet::let_DataRootUnique(const std::string& zRoot) {
  source_.zDataRootUnique = zRoot;
  const std::size_t p = zRoot.rfind('\\');
  if (p != std::string::npos && p + 1 < zRoot.size()) source_.zDataRootLeaf = zRoot.substr(p + 1);
}

void mxDataSet::let_DateStamp(const std::string& zDate) {
  source_.zDateStamp = zDate;
  DateTools::SplitDate(zDate, std::string(kDateFormat), source_.iDateDay, source_.iDateMonth, source_.iDateYear);
}

void mxDataSet::GetDateStampParts(int32_t& iDay, int32_t& iMonth, int32_t& iYear) const {
  iDay = source_.iDateDay;
  iMonth = source_.iDateMonth;
  iYear = source_.iDateYear;
}

void mxDataSet::let_LGRName(const std::string& zName) { source_.zLGRName = StringTools::Trim(zName); }

// ---- Reading state -----------------------------------------------------------------

int32_t mxDataSet::get_ReadPosition64(int32_t& iPosH) const {
  iPosH = reading_.iReadPosH;
  return reading_.iReadPosL;
}

void mxDataSet::let_ReadPosition64(int32_t iPosH, int32_t iPosL) {
  reading_.iReadPosL = iPosL;
  reading_.iReadPosH = iPosH;
}

void mxDataSet::let_ReadPosition(int32_t iPos) {
  reading_.iReadPosL = iPos;
  reading_.iReadPosH = 0;
}

void mxDataSet::let_DeleteAfterFetch(bool q) {
  reading_.qDeleteAfterFetch = q;
  reading_.qDeleteNow = q;
}

void mxDataSet::SetbOnly(const Array2<uint8_t>& bOnly, bool qOnly) {
  lists_.bOnly = bOnly;
  lists_.qOnly = qOnly;
}

void mxDataSet::GetbOnly(Array2<uint8_t>& bOnly, bool& qOnly) const {
  bOnly = lists_.bOnly;
  qOnly = lists_.qOnly;
}

// ---- Plot default ---------------------------------------------------------------------

bool mxDataSet::SetDefaultXByHeader(const std::string& zHeader) {
  const int32_t iColumn = FindAttributePosition(ATT_VARIABLE, zHeader);
  if (iColumn < 1) return false;
  plot_.iDefaultX = iColumn;
  return true;
}

// At the end of a whole-array load: the "TIME" column plots as x, or column
// 1 when there is none. A DefaultX of -1 means the reader wants none.
void mxDataSet::ApplyDefaultX() {
  if (plot_.iDefaultX == -1) return;
  const int32_t iTime = FindAttributePosition(ATT_VARIABLE, std::string(kTimeVectorName));
  plot_.iDefaultX = iTime >= 1 ? iTime : 1;
}

// ---- Simulator grid header ------------------------------------------------------------

void mxDataSet::GetINITA2N(bool& qA2N, Array<int32_t>& A2N, int32_t& nA2N, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (GetINITA2N)", [&] {
    if (grid_.qINITA2NSet) {
      qA2N = true;
      A2N = grid_.iINITA2N;
      nA2N = grid_.nINITA2N;
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
      grid_.iINITA2N = A2N;
      grid_.nINITA2N = static_cast<int32_t>(A2N.size());
      grid_.qINITA2NSet = true;
    } else {
      grid_.qINITA2NSet = false;
      grid_.nINITA2N = 1;
    }
    qOK = true;
  });
}

void mxDataSet::GetNxNyNz(int32_t& nx, int32_t& ny, int32_t& nz) const {
  nx = grid_.nx;
  ny = grid_.ny;
  nz = grid_.nz;
}

void mxDataSet::SetNxNyNz(int32_t nx, int32_t ny, int32_t nz) {
  grid_.nx = nx;
  grid_.ny = ny;
  grid_.nz = nz;
}

// ---- Sizes ------------------------------------------------------------------------------

int32_t mxDataSet::get_NumRows() const {
  // Columns on disk count their rows from the location table.
  if (fetch_.qFetchOnDemand) return RowCount();
  int64_t n = 0;
  for (int32_t b = 1; b <= rows_.nBuffers; ++b) n += rows_.buffers(b).nRowsInUse;
  return static_cast<int32_t>(n);
}

void mxDataSet::let_ColumnMap(const Array<int32_t>& iMap) {
  if (!iMap.IsAllocated() || iMap.size() == 0) return;
  grid_.iColumnMap = iMap;
  grid_.qColumnMap = true;
}

bool mxDataSet::ValidColumn(int32_t iColumn, bool qCheckActive) const {
  if (!qCheckActive) return true;
  return ValidColumnIndex(iColumn) && headers_.columns.InBounds(iColumn) && headers_.columns(iColumn).qActive;
}

}  // namespace vndata
