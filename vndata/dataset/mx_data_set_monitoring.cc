// mxDataSet: the folder and file pattern a host watches while a simulation
// runs, worked out from the source file when the host has set none.
#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/file_names.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

constexpr int32_t kSummaryFileType = 13;
constexpr int32_t kPlotFileType = 40;

// The extension of the file a running simulation writes its summary steps
// to, so that the formatted or unified form of the case is found whichever
// file was loaded. A three-character extension asks for the short names.
std::string SummaryExtensionToWatch(bool qFormatted, bool qUnified, bool qShort) {
  if (qUnified) {
    if (qShort) return qFormatted ? "FUN" : "UNS";
    return qFormatted ? "FUNSMRY" : "UNSMRY";
  }
  return qFormatted ? "A*" : "S*";
}

}  // namespace

bool mxDataSet::CheckifRTMDataSet() const {
  return source_.iFileType == kSummaryFileType ||
         (source_.iFileType == kPlotFileType && StringTools::Upper(source_.zDataClass) == "PLOT");
}

void mxDataSet::CreateRTMPatternAndFolder() {
  RunGuarded("mxDataSet  (CreateRTMPatternAndFolder)", [&] {
    const std::string& zFile = source_.zFileName;
    std::string zFolder, zPattern;
    if (!CheckifRTMDataSet()) {
      zFolder = FileFolder(zFile);
      zPattern = "*." + FileExtension(zFile);
    } else if (!source_.zRTMFilePattern.empty()) {
      return;  // an explicit pattern stands, and so does its folder
    } else if (source_.iFileType == kSummaryFileType) {
      const std::string zExtension = FileExtension(zFile);
      zFolder = FileFolder(zFile);
      zPattern =
          FileBaseName(zFile) + "." +
          SummaryExtensionToWatch(reading_.qFormatted, reading_.qUnified, zExtension.size() == 3);
    } else {
      const std::string zWatch = FileFolder(zFile) + "\\" + source_.zCaseName + "\\" + "PLOT.BIN";
      zFolder = FileFolder(zWatch);
      zPattern = FileNameOnly(zWatch);
    }
    source_.zRTMFilePattern = zPattern;
    source_.zRTMFolder = zFolder;
  });
}

const std::string& mxDataSet::get_RTMFolder() {
  if (source_.zRTMFolder.empty()) CreateRTMPatternAndFolder();
  return source_.zRTMFolder;
}

void mxDataSet::let_RTMFolder(const std::string& z) { source_.zRTMFolder = StringTools::Trim(z); }

const std::string& mxDataSet::get_RTMFilePattern() {
  if (source_.zRTMFilePattern.empty()) CreateRTMPatternAndFolder();
  return source_.zRTMFilePattern;
}

void mxDataSet::let_RTMFilePattern(const std::string& z) {
  source_.zRTMFilePattern = StringTools::Trim(z);
}

}  // namespace vndata
