// mxDataSet: comma-separated text export and the text reader's settings.
#include <algorithm>
#include <string>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/persist/text_export.h"
#include "vndata/platform/file_names.h"
#include "vndata/platform/file_types.h"
#include "vndata/platform/host_services.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

constexpr const char* kQuestionTitle = "CSV File";
constexpr const char* kQuestionText = "Write file in extended format (with detailed headers)?";
constexpr const char* kSavedTitle = "Data Set Saved";
constexpr double kUnwrittenNullValue = -999.0;

// The host's busy cursor for the life of a write; put back on every way out.
class BusyCursor {
 public:
  BusyCursor() { GetHostServices().SetBusyCursor(true); }
  ~BusyCursor() {
    try {
      Restore();
    } catch (...) {
    }
  }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;
  void Restore() {
    if (!busy_) return;
    busy_ = false;
    GetHostServices().SetBusyCursor(false);
  }

 private:
  bool busy_ = true;
};

// One attribute of every column, each cut out of its packed record.
std::vector<std::string> AttributeFields(const Array<std::string>& zHeaders, int32_t nHeaders,
                                         int32_t iAttribute) {
  std::vector<std::string> fields(static_cast<std::size_t>(nHeaders));
  for (int32_t c = 1; c <= nHeaders; ++c)
    fields[static_cast<std::size_t>(c - 1)] = ExtractAttribute(iAttribute, zHeaders(c));
  return fields;
}

}  // namespace

void mxDataSet::WriteAsCSV(const std::string& zAlternativeFile) {
  RunGuarded("mxDataSet  (WriteAsCSV)", [&] {
    const std::string zFile = zAlternativeFile.empty() ? source_.zFileName : zAlternativeFile;
    if (GetHostServices().YesNoQuestion(kQuestionTitle, kQuestionText)) {
      WriteAsCSVExt(zFile);
      return;
    }
    if (!qInitialised_ || get_NumRows() <= 0 || headers_.nCols <= 0 || zFile.empty()) return;
    WriteCSVFile(zFile, false);
  });
}

void mxDataSet::WriteAsCSVExt(const std::string& zFile) {
  RunGuarded("mxDataSet  (WriteAsCSVExt)", [&] {
    if (!qInitialised_ || zFile.empty() || get_NumRows() < 1) return;
    WriteCSVFile(zFile, true);
  });
}

void mxDataSet::WriteCSVFile(const std::string& zFile, bool qExtended) {
  BusyCursor busy;
  TextFileWriter out(zFile);
  Array2<float> arr2d;
  Array<std::string> zHeaders;
  Extract2dArrays(arr2d, zHeaders);
  const int32_t nHeaders = zHeaders.IsAllocated() ? zHeaders.UBound() : 0;
  const int32_t nCols = arr2d.IsAllocated() ? arr2d.UBound(2) : 0;
  // The extract holds the buffer's whole capacity: only the rows in use are
  // written.
  const int32_t nRows = arr2d.IsAllocated() ? std::min(get_NumRows(), arr2d.UBound(1)) : 0;

  if (qExtended) {
    out.WriteLine("[MXINFO]", {});
    out.WriteLine("ORIGIN=" + FileBaseName(zFile), {});
    out.WriteLine("TYPE=CSV", {});
    out.WriteLine("CLASS=" + source_.zDataClass, {});
    out.WriteLine("FILETYPE=" + FileTypeText(source_.iFileType), {});
    out.WriteLine("DATE=" + source_.zDateStamp, {});
    if (plot_.dNullValue != kUnwrittenNullValue) out.WriteLine("NULLVALUE=" + DoubleText(plot_.dNullValue), {});
    out.WriteLine("[HEADERS]", {});
    out.WriteLine("CLASS=", AttributeFields(zHeaders, nHeaders, ATT_CLASS));
    out.WriteLine("MEMBER=", AttributeFields(zHeaders, nHeaders, ATT_MEMBER));
    out.WriteLine("VARIABLE=", AttributeFields(zHeaders, nHeaders, ATT_VARIABLE));
    out.WriteLine("UNITS=", AttributeFields(zHeaders, nHeaders, ATT_UNITS));
    out.WriteLine("VERBOSE=", AttributeFields(zHeaders, nHeaders, ATT_VERBOSE));
    out.WriteLine("[DATA]", {});
  } else {
    std::vector<std::string> keys(static_cast<std::size_t>(nHeaders));
    for (int32_t c = 1; c <= nHeaders; ++c) {
      int32_t iCreationType = 0;
      bool qKey = false;
      GetTreeViewKey(c, keys[static_cast<std::size_t>(c - 1)], iCreationType, qKey);
    }
    out.WriteLine("", keys);
    out.WriteLine("", AttributeFields(zHeaders, nHeaders, ATT_UNITS));
    out.WriteLine("", AttributeFields(zHeaders, nHeaders, ATT_VERBOSE));
  }
  out.WriteRows(arr2d, nRows, nCols);
  out.Close();
  busy.Restore();

  const std::string zLastOrigin =
      nHeaders > 0 ? ExtractAttribute(ATT_ORIGIN, zHeaders(nHeaders)) : std::string();
  GetHostServices().InformationMessage(
      kSavedTitle, zFile + " Saved.\r\nOnly the selected data set (" + zLastOrigin + "\\" +
                       source_.zUCaseGroupName + ")\r\nhas been saved in ASCII format");
  qIsDirty_ = false;
}

void mxDataSet::GetTextFileProperty(const std::string& zProperty, Variant& vData) const {
  RunGuarded("mxDataSet  (GetTextFileProperty)", [&] {
    const std::string zName = StringTools::Upper(zProperty);
    if (zName == "DATA")
      vData = std::to_string(plot_.iTextRowData);
    else if (zName == "DATEFORMAT")
      vData = plot_.zTextRowDateFormat;
    else if (zName == "FIXEDLENGTH")
      vData = std::to_string(plot_.iTextRowFixed);
    else if (zName == "INDEX")
      vData = std::to_string(plot_.iTextRowIndex);
    else if (zName == "LGR")
      vData = std::to_string(plot_.iTextRowLGR);
    else if (zName == "NAME")
      vData = std::to_string(plot_.iTextRowName);
    else if (zName == "UNIT")
      vData = std::to_string(plot_.iTextRowUnits);
    else if (zName == "VERBOSE")
      vData = std::to_string(plot_.iTextRowVerbose);
    else if (zName == "WELL")
      vData = std::to_string(plot_.iTextRowWell);
  });
}

void mxDataSet::DEBUGPRINT() const {
  // Kept as a place to stop in a debugger: the values are read, not shown.
  [[maybe_unused]] const std::string& zOrigin = source_.zOrigin;
  [[maybe_unused]] const std::string& zGroupName = source_.zGroupName;
  [[maybe_unused]] const std::string& zFileName = source_.zFileName;
  [[maybe_unused]] const std::string& zDataClass = source_.zDataClass;
  [[maybe_unused]] const int32_t iFileType = source_.iFileType;
  [[maybe_unused]] const int32_t nCols = headers_.nCols;
  [[maybe_unused]] const int32_t nRows = get_NumRows();
  [[maybe_unused]] const bool qInitialised = qInitialised_;
}

}  // namespace vndata
