// The description array: a reader describes what it has read as 66 variant
// slots, and the data set takes its identity from them (and can give it
// back when one data set is made like another or is stored).
#include <cctype>
#include <cstdlib>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {
bool IsTableClass(const std::string& zDataClass) {
  return StringTools::Equal(zDataClass, "Tables", false) ||
         StringTools::Equal(zDataClass, "Table", false);
}

// The number at the head of a text, as the platform's Val reads it: leading
// blanks skipped, digits with an optional sign and decimal part, 0 when the
// text starts with anything else.
int32_t HeadNumber(const Variant& v) {
  if (!v.IsString()) return v.ToLong();
  const std::string text = v.ToText();
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  std::size_t start = i;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  while (i < text.size() && (std::isdigit(static_cast<unsigned char>(text[i])) || text[i] == '.')) ++i;
  if (i == start) return 0;
  return RoundToLong(std::strtod(text.substr(start, i - start).c_str(), nullptr));
}
}  // namespace

void InitSourceData(Array<Variant>& vAttributes, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (InitSourceData)", [&] {
    InitSourceData(vAttributes);
    qOK = true;
  });
}

bool mxDataSet::SetClassVarsFromAttributes(const Array<Variant>& v) {
  bool result = false;
  RunGuarded("mxDataSet  (SetClassVarsFromAttributes)", [&] {
    let_Origin(v(SD_ORIGIN).ToText());
    let_FileName(v(SD_FILENAME).ToText());
    source_.zSourceType = v(SD_SOURCETYPE).ToText();
    source_.zSimulator = v(SD_SIMULATOR).ToText();
    if (StringTools::Equal(v(SD_SIMWORD_OR_TABLENAME).ToText(), "ECLIPSE", false))
      source_.qEclipseNames = true;
    let_DateStamp(v(SD_DATESTAMP).ToText());
    source_.iUnits = HeadNumber(v(SD_UNITS));
    if (v(SD_INDEX).IsNumeric() && v(SD_INDEX).ToLong() != -1) source_.iIndex = v(SD_INDEX).ToLong();
    if (v(SD_ISTART).IsNumeric()) reading_.iStart = v(SD_ISTART).ToLong();
    if (v(SD_IEND).IsNumeric()) reading_.iEnd = v(SD_IEND).ToLong();
    reading_.qNoRestart = v(SD_NORESTART).ToBool();
    reading_.qUnified = v(SD_UNIFIED).ToBool();
    reading_.qFormatted = v(SD_FORMATTED).ToBool();
    if (v(SD_NUMCOLS).IsNumeric() && v(SD_NUMCOLS).ToLong() > 0) headers_.nCols = v(SD_NUMCOLS).ToLong();
    plot_.iDefaultX = v(SD_DEFAULTX).ToLong();
    source_.zTVGroupName = v(SD_TVGROUPNAME).ToText();
    let_GroupName(v(SD_GROUPNAME).ToText());
    source_.zDataRootPath = v(SD_DATAROOTPATH).ToText();
    source_.zUniqueKey = v(SD_UNIQUEKEY).ToText();
    qIsDirty_ = v(SD_ISDIRTY).ToBool();
    source_.iFileType = v(SD_FILETYPE).ToLong();
    source_.zTVDisplayRoot = v(SD_TVDISPLAYROOT).ToText();  // the upper-case copy is left as it was
    source_.zDataClass = v(SD_DATACLASS).ToText();
    if (v(SD_NUMROWS).IsNumeric() && v(SD_NUMROWS).ToLong() > 0)
      rows_.buffers(1).nRowsInUse = v(SD_NUMROWS).ToLong();
    if (v(SD_NUMMARKERS).IsNumeric()) wells_.markers.NumMarkers = v(SD_NUMMARKERS).ToLong();
    lists_.zOnly = v(SD_ZONLY).ToText();
    source_.zCaseName = v(SD_CASENAME).ToText();
    source_.zObsName = v(SD_OBSNAME).ToText();
    reading_.qAllData = v(SD_ALLDATA).ToBool();
    reading_.qDualPorosity = v(SD_DUALPOROSITY).ToBool();
    plot_.dNullValue = v(SD_NULLVALUE).ToDouble();
    plot_.iUseNullVal = v(SD_USENULLVAL).ToLong();
    plot_.qReaderSetNull = v(SD_READERSETNULL).ToBool();
    if (plot_.qReaderSetNull) plot_.dReaderNullValue = plot_.dNullValue;
    if (IsTableClass(source_.zDataClass))
      source_.zTableName = v(SD_SIMWORD_OR_TABLENAME).ToText();
    else if (StringTools::Equal(source_.zDataClass, "SEGBRAN", false))
      source_.iBranch = v(SD_BRANCH).ToLong();
    reading_.qNoInactive = v(SD_NOINACTIVE).ToBool();
    source_.sTimeInDays = v(SD_TIMEINDAYS).ToSingle();
    plot_.iTextRowName = v(SD_TEXTROWNAME).ToLong();
    plot_.iTextRowUnits = v(SD_TEXTROWUNITS).ToLong();
    plot_.iTextRowLGR = v(SD_TEXTROWLGR).ToLong();
    plot_.iTextRowIndex = v(SD_TEXTROWINDEX).ToLong();
    plot_.iTextRowVerbose = v(SD_TEXTROWVERBOSE).ToLong();
    plot_.iTextRowWell = v(SD_TEXTROWWELL).ToLong();
    plot_.iTextRowData = v(SD_TEXTROWDATA).ToLong();
    plot_.iTextRowFixed = v(SD_TEXTROWFIXED).ToLong();
    plot_.zTextRowDateFormat = v(SD_TEXTROWDATEFORMAT).ToText();
    source_.zSimCase = v(SD_SIMCASE).ToText();
    if (!v(SD_PERFORATIONS).IsNull()) {
      reading_.qPerforations = v(SD_PERFORATIONS).ToBool();
      reading_.qPerforationsSet = true;
    }
    let_ReadPosition64(v(SD_READPOSITION64_HIGH).ToLong(), v(SD_READPOSITION64_LOW).ToLong());
    reading_.qHysteresis = v(SD_HYSTERESIS).ToBool();
    reading_.qEndPointScaling = v(SD_ENDPOINTSCALING).ToBool();
    reading_.qDirEndPointScaling = v(SD_DIRENDPOINTSCALING).ToBool();
    reading_.qRevEndPointScaling = v(SD_REVENDPOINTSCALING).ToBool();
    reading_.qAltEndPointScaling = v(SD_ALTENDPOINTSCALING).ToBool();
    reading_.iPhase = v(SD_IPHASE).ToLong();
    result = true;
  });
  return result;
}

bool mxDataSet::GetClassVarsFromAttributes(Array<Variant>& v) {
  bool result = false;
  RunGuarded("mxDataSet  (GetClassVarsFromAttributes)", [&] {
    InitSourceData(v);
    v(SD_ORIGIN) = source_.zOrigin;
    v(SD_FILENAME) = source_.zFileName;
    v(SD_SOURCETYPE) = source_.zSourceType;
    v(SD_SIMULATOR) = source_.zSimulator;
    if (source_.qEclipseNames) v(SD_SIMWORD_OR_TABLENAME) = std::string("ECLIPSE");
    if (IsTableClass(source_.zDataClass)) v(SD_SIMWORD_OR_TABLENAME) = source_.zTableName;
    v(SD_DATESTAMP) = source_.zDateStamp;
    v(SD_UNITS) = source_.iUnits;
    v(SD_INDEX) = source_.iIndex;
    v(SD_ISTART) = reading_.iStart;
    v(SD_IEND) = reading_.iEnd;
    v(SD_NORESTART) = reading_.qNoRestart;
    v(SD_UNIFIED) = reading_.qUnified;
    v(SD_FORMATTED) = reading_.qFormatted;
    v(SD_NUMCOLS) = headers_.nCols;
    v(SD_DEFAULTX) = plot_.iDefaultX;
    v(SD_TVGROUPNAME) = source_.zTVGroupName;
    v(SD_GROUPNAME) = source_.zGroupName;
    v(SD_DATAROOTPATH) = source_.zDataRootPath;
    v(SD_UNIQUEKEY) = source_.zUniqueKey;
    v(SD_ISDIRTY) = qIsDirty_;
    v(SD_FILETYPE) = source_.iFileType;
    v(SD_TVDISPLAYROOT) = source_.zTVDisplayRoot;
    v(SD_DATACLASS) = source_.zDataClass;
    // Rows in use of the first buffer, not NumRows.
    v(SD_NUMROWS) = rows_.buffers(1).nRowsInUse;
    v(SD_NUMMARKERS) = wells_.markers.NumMarkers;
    v(SD_ZONLY) = lists_.zOnly;
    v(SD_CASENAME) = source_.zCaseName;
    v(SD_OBSNAME) = source_.zObsName;
    v(SD_ALLDATA) = reading_.qAllData;
    v(SD_DUALPOROSITY) = reading_.qDualPorosity;
    v(SD_NULLVALUE) = plot_.dNullValue;
    v(SD_USENULLVAL) = plot_.iUseNullVal;
    v(SD_READERSETNULL) = plot_.qReaderSetNull;
    // A read that changes a field, deliberately: the reader's null follows.
    if (plot_.qReaderSetNull) plot_.dReaderNullValue = plot_.dNullValue;
    if (StringTools::Equal(source_.zDataClass, "SEGBRAN", false)) v(SD_BRANCH) = source_.iBranch;
    if (reading_.qPerforations) v(SD_PERFORATIONS) = true;
    v(SD_NOINACTIVE) = reading_.qNoInactive;
    v(SD_TIMEINDAYS) = source_.sTimeInDays;
    v(SD_TEXTROWNAME) = plot_.iTextRowName;
    v(SD_TEXTROWUNITS) = plot_.iTextRowUnits;
    v(SD_TEXTROWLGR) = plot_.iTextRowLGR;
    v(SD_TEXTROWINDEX) = plot_.iTextRowIndex;
    v(SD_TEXTROWVERBOSE) = plot_.iTextRowVerbose;
    v(SD_TEXTROWWELL) = plot_.iTextRowWell;
    v(SD_TEXTROWDATA) = plot_.iTextRowData;
    v(SD_TEXTROWFIXED) = plot_.iTextRowFixed;
    v(SD_TEXTROWDATEFORMAT) = plot_.zTextRowDateFormat;
    v(SD_SIMCASE) = source_.zSimCase;
    v(SD_READPOSITION64_LOW) = reading_.iReadPosL;
    v(SD_READPOSITION64_HIGH) = reading_.iReadPosH;
    v(SD_HYSTERESIS) = reading_.qHysteresis;
    v(SD_ENDPOINTSCALING) = reading_.qEndPointScaling;
    v(SD_DIRENDPOINTSCALING) = reading_.qDirEndPointScaling;
    v(SD_REVENDPOINTSCALING) = reading_.qRevEndPointScaling;
    v(SD_ALTENDPOINTSCALING) = reading_.qAltEndPointScaling;
    v(SD_IPHASE) = reading_.iPhase;
    result = true;
  });
  return result;
}

}  // namespace vndata
