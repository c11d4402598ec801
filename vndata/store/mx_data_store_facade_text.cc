// The store's text export: one data set by position, or all of them through
// the host's save dialog.
#include <string>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/file_names.h"
#include "vndata/platform/host_services.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

void mxDataStore::WriteTextFile(int32_t iDataSet, const std::string& zFilename,
                                const std::string& zOrigin) {
  RunGuarded("mxDataStore (Code) (WriteTextFile)", kSpacedWording, [&] {
    if (zFilename.empty() || !ValidDataSet(iDataSet)) return;
    mxDataSet& ds = At(iDataSet);
    ds.let_FileName(zFilename);
    if (!zOrigin.empty()) {
      ds.let_Origin(zOrigin);
      ds.SetAttribute(ATT_ORIGIN, zOrigin);
    }
    ds.WriteAsCSV();
  });
}

bool mxDataStore::DSGetTextFileProperty(int32_t iDataSet, const std::string& zProperty,
                                        Variant& vData) {
  return Forward("mxDataStore (Code) (DSGetTextFileProperty)", iDataSet, false,
                 [&](mxDataSet& ds) {
                   ds.GetTextFileProperty(zProperty, vData);
                   return true;
                 });
}

void mxDataStore::DumpDataStoreToTextFiles() {
  RunGuarded("mxDataStore (Code) (DumpDataStoreToTextFiles)", kSpacedWording, [&] {
    if (!IsModified_) return;
    for (int32_t i = 1; i <= get_NumberOfDataSets(); ++i) {
      if (!ValidDataSet(i)) continue;
      const std::string zProposed = FileBaseName(At(i).get_FileName()) + ".csv";
      std::string zAnswer = GetHostServices().FileSaveDialog("Save File", zProposed, "*.csv");
      if (zAnswer.empty()) return;
      zAnswer.resize(zAnswer.find('\0') == std::string::npos ? zAnswer.size() : zAnswer.find('\0'));
      WriteTextFile(i, zAnswer);
    }
  });
}

}  // namespace vndata
