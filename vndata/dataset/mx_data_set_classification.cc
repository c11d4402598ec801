// The description array: a reader describes what it has read as 66 variant
// slots, and the data set takes its identity from them (and can give it
// back when one data set is made like another or is stored).
#include <cctype>
#include <cstdlib>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/vocabulary.h"
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
    zSourceType_ = v(SD_SOURCETYPE).ToText();
    zSimulator_ = v(SD_SIMULATOR).ToText();
    if (StringTools::Equal(v(SD_SIMWORD_OR_TABLENAME).ToText(), "ECLIPSE", false))
      qEclipseNames_ = true;
    let_DateStamp(v(SD_DATESTAMP).ToText());
    iUnits_ = HeadNumber(v(SD_UNITS));
    if (v(SD_INDEX).IsNumeric() && v(SD_INDEX).ToLong() != -1) iIndex_ = v(SD_INDEX).ToLong();
    if (v(SD_ISTART).IsNumeric()) iStart_ = v(SD_ISTART).ToLong();
    if (v(SD_IEND).IsNumeric()) iEnd_ = v(SD_IEND).ToLong();
    qNoRestart_ = v(SD_NORESTART).ToBool();
    qUnified_ = v(SD_UNIFIED).ToBool();
    qFormatted_ = v(SD_FORMATTED).ToBool();
    if (v(SD_NUMCOLS).IsNumeric() && v(SD_NUMCOLS).ToLong() > 0) nCols_ = v(SD_NUMCOLS).ToLong();
    iDefaultX_ = v(SD_DEFAULTX).ToLong();
    zTVGroupName_ = v(SD_TVGROUPNAME).ToText();
    let_GroupName(v(SD_GROUPNAME).ToText());
    zDataRootPath_ = v(SD_DATAROOTPATH).ToText();
    zUniqueKey_ = v(SD_UNIQUEKEY).ToText();
    qIsDirty_ = v(SD_ISDIRTY).ToBool();
    iFileType_ = v(SD_FILETYPE).ToLong();
    zTVDisplayRoot_ = v(SD_TVDISPLAYROOT).ToText();  // the upper-case copy is left as it was
    zDataClass_ = v(SD_DATACLASS).ToText();
    if (v(SD_NUMROWS).IsNumeric() && v(SD_NUMROWS).ToLong() > 0)
      buffers_(1).nRowsInUse = v(SD_NUMROWS).ToLong();
    if (v(SD_NUMMARKERS).IsNumeric()) nMarkers_ = v(SD_NUMMARKERS).ToLong();
    zOnly_ = v(SD_ZONLY).ToText();
    zCaseName_ = v(SD_CASENAME).ToText();
    zObsName_ = v(SD_OBSNAME).ToText();
    qAllData_ = v(SD_ALLDATA).ToBool();
    qDualPorosity_ = v(SD_DUALPOROSITY).ToBool();
    dNullValue_ = v(SD_NULLVALUE).ToDouble();
    iUseNullVal_ = v(SD_USENULLVAL).ToLong();
    qReaderSetNull_ = v(SD_READERSETNULL).ToBool();
    if (qReaderSetNull_) dReaderNullValue_ = dNullValue_;
    if (IsTableClass(zDataClass_))
      zTableName_ = v(SD_SIMWORD_OR_TABLENAME).ToText();
    else if (StringTools::Equal(zDataClass_, "SEGBRAN", false))
      iBranch_ = v(SD_BRANCH).ToLong();
    qNoInactive_ = v(SD_NOINACTIVE).ToBool();
    sTimeInDays_ = v(SD_TIMEINDAYS).ToSingle();
    iTextRowName_ = v(SD_TEXTROWNAME).ToLong();
    iTextRowUnits_ = v(SD_TEXTROWUNITS).ToLong();
    iTextRowLGR_ = v(SD_TEXTROWLGR).ToLong();
    iTextRowIndex_ = v(SD_TEXTROWINDEX).ToLong();
    iTextRowVerbose_ = v(SD_TEXTROWVERBOSE).ToLong();
    iTextRowWell_ = v(SD_TEXTROWWELL).ToLong();
    iTextRowData_ = v(SD_TEXTROWDATA).ToLong();
    iTextRowFixed_ = v(SD_TEXTROWFIXED).ToLong();
    zTextRowDateFormat_ = v(SD_TEXTROWDATEFORMAT).ToText();
    zSimCase_ = v(SD_SIMCASE).ToText();
    if (!v(SD_PERFORATIONS).IsNull()) {
      qPerforations_ = v(SD_PERFORATIONS).ToBool();
      qPerforationsSet_ = true;
    }
    let_ReadPosition64(v(SD_READPOSITION64_HIGH).ToLong(), v(SD_READPOSITION64_LOW).ToLong());
    qHysteresis_ = v(SD_HYSTERESIS).ToBool();
    qEndPointScaling_ = v(SD_ENDPOINTSCALING).ToBool();
    qDirEndPointScaling_ = v(SD_DIRENDPOINTSCALING).ToBool();
    qRevEndPointScaling_ = v(SD_REVENDPOINTSCALING).ToBool();
    qAltEndPointScaling_ = v(SD_ALTENDPOINTSCALING).ToBool();
    iPhase_ = v(SD_IPHASE).ToLong();
    result = true;
  });
  return result;
}

bool mxDataSet::GetClassVarsFromAttributes(Array<Variant>& v) {
  bool result = false;
  RunGuarded("mxDataSet  (GetClassVarsFromAttributes)", [&] {
    InitSourceData(v);
    v(SD_ORIGIN) = zOrigin_;
    v(SD_FILENAME) = zFileName_;
    v(SD_SOURCETYPE) = zSourceType_;
    v(SD_SIMULATOR) = zSimulator_;
    if (qEclipseNames_) v(SD_SIMWORD_OR_TABLENAME) = std::string("ECLIPSE");
    if (IsTableClass(zDataClass_)) v(SD_SIMWORD_OR_TABLENAME) = zTableName_;
    v(SD_DATESTAMP) = zDateStamp_;
    v(SD_UNITS) = iUnits_;
    v(SD_INDEX) = iIndex_;
    v(SD_ISTART) = iStart_;
    v(SD_IEND) = iEnd_;
    v(SD_NORESTART) = qNoRestart_;
    v(SD_UNIFIED) = qUnified_;
    v(SD_FORMATTED) = qFormatted_;
    v(SD_NUMCOLS) = nCols_;
    v(SD_DEFAULTX) = iDefaultX_;
    v(SD_TVGROUPNAME) = zTVGroupName_;
    v(SD_GROUPNAME) = zGroupName_;
    v(SD_DATAROOTPATH) = zDataRootPath_;
    v(SD_UNIQUEKEY) = zUniqueKey_;
    v(SD_ISDIRTY) = qIsDirty_;
    v(SD_FILETYPE) = iFileType_;
    v(SD_TVDISPLAYROOT) = zTVDisplayRoot_;
    v(SD_DATACLASS) = zDataClass_;
    // Rows in use of the first buffer, not NumRows.
    v(SD_NUMROWS) = buffers_(1).nRowsInUse;
    v(SD_NUMMARKERS) = nMarkers_;
    v(SD_ZONLY) = zOnly_;
    v(SD_CASENAME) = zCaseName_;
    v(SD_OBSNAME) = zObsName_;
    v(SD_ALLDATA) = qAllData_;
    v(SD_DUALPOROSITY) = qDualPorosity_;
    v(SD_NULLVALUE) = dNullValue_;
    v(SD_USENULLVAL) = iUseNullVal_;
    v(SD_READERSETNULL) = qReaderSetNull_;
    // A read that changes a field, deliberately: the reader's null follows.
    if (qReaderSetNull_) dReaderNullValue_ = dNullValue_;
    if (StringTools::Equal(zDataClass_, "SEGBRAN", false)) v(SD_BRANCH) = iBranch_;
    if (qPerforations_) v(SD_PERFORATIONS) = true;
    v(SD_NOINACTIVE) = qNoInactive_;
    v(SD_TIMEINDAYS) = sTimeInDays_;
    v(SD_TEXTROWNAME) = iTextRowName_;
    v(SD_TEXTROWUNITS) = iTextRowUnits_;
    v(SD_TEXTROWLGR) = iTextRowLGR_;
    v(SD_TEXTROWINDEX) = iTextRowIndex_;
    v(SD_TEXTROWVERBOSE) = iTextRowVerbose_;
    v(SD_TEXTROWWELL) = iTextRowWell_;
    v(SD_TEXTROWDATA) = iTextRowData_;
    v(SD_TEXTROWFIXED) = iTextRowFixed_;
    v(SD_TEXTROWDATEFORMAT) = zTextRowDateFormat_;
    v(SD_SIMCASE) = zSimCase_;
    v(SD_READPOSITION64_LOW) = iReadPosL_;
    v(SD_READPOSITION64_HIGH) = iReadPosH_;
    v(SD_HYSTERESIS) = qHysteresis_;
    v(SD_ENDPOINTSCALING) = qEndPointScaling_;
    v(SD_DIRENDPOINTSCALING) = qDirEndPointScaling_;
    v(SD_REVENDPOINTSCALING) = qRevEndPointScaling_;
    v(SD_ALTENDPOINTSCALING) = qAltEndPointScaling_;
    v(SD_IPHASE) = iPhase_;
    result = true;
  });
  return result;
}

}  // namespace vndata
