// mxDataStore: what the host watches while a simulation runs, by position,
// and the settings cleared for every data set at once.
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

bool mxDataStore::get_RTMMonitoring(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (RTMMonitoring)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_RTMMonitoring(); });
}

void mxDataStore::let_RTMMonitoring(int32_t iDataSet, bool qMonitoring) {
  ForwardVoid("mxDataStore (Code) (RTMMonitoring)", iDataSet,
              [&](mxDataSet& ds) { ds.let_RTMMonitoring(qMonitoring); });
}

bool mxDataStore::get_RTMRecurseFolders(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (RTMRecurseFolders)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_RTMRecurseFolders(); });
}

void mxDataStore::let_RTMRecurseFolders(int32_t iDataSet, bool qRecurse) {
  ForwardVoid("mxDataStore (Code) (RTMRecurseFolders)", iDataSet,
              [&](mxDataSet& ds) { ds.let_RTMRecurseFolders(qRecurse); });
}

std::string mxDataStore::get_RTMFolder(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (RTMFolder)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_RTMFolder(); });
}

void mxDataStore::let_RTMFolder(int32_t iDataSet, const std::string& zFolder) {
  ForwardVoid("mxDataStore (Code) (RTMFolder)", iDataSet,
              [&](mxDataSet& ds) { ds.let_RTMFolder(zFolder); });
}

std::string mxDataStore::get_RTMFilePattern(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (RTMFilePattern)", iDataSet, std::string(),
                 [](mxDataSet& ds) { return ds.get_RTMFilePattern(); });
}

void mxDataStore::let_RTMFilePattern(int32_t iDataSet, const std::string& zPattern) {
  ForwardVoid("mxDataStore (Code) (RTMFilePattern)", iDataSet,
              [&](mxDataSet& ds) { ds.let_RTMFilePattern(zPattern); });
}

void mxDataStore::ClearRTMSettings() {
  RunGuarded("mxDataStore (Code) (ClearRTMSettings)", kSpacedWording, [&] {
    for (int32_t i = 1; i <= get_NumberOfDataSets(); ++i)
      if (DataSets_(i)) DataSets_(i)->let_RTMMonitoring(false);
  });
}

void mxDataStore::ResetRTMSettings() {
  RunGuarded("mxDataStore (Code) (ResetRTMSettings)", kSpacedWording, [&] {
    for (int32_t i = 1; i <= get_NumberOfDataSets(); ++i) {
      if (!DataSets_(i)) continue;
      DataSets_(i)->let_RTMFolder("");
      DataSets_(i)->let_RTMFilePattern("");
      DataSets_(i)->let_RTMMonitoring(false);
    }
  });
}

}  // namespace vndata
