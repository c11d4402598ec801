// Whether an incoming data set is already loaded, and renaming it when the
// user keeps both. Identity is a rule over properties that depends on the
// data's family, not a stored key.
#include <string>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/string_tools.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

namespace {
constexpr int32_t kRenameLimit = 100000;

bool Equal(const std::string& a, const std::string& b) { return StringTools::Equal(a, b, false); }

// Attribute 9 (MEMBER) of column 1, the member of a sample.
std::string FirstMember(mxDataSet& ds) {
  std::string zMember;
  ds.GetAttribute(1, ATT_MEMBER, zMember);
  return zMember;
}
}  // namespace

bool mxDataStore::IsSameDataSet(mxDataSet& L, mxDataSet& N, const std::string& zUGroup,
                                const std::string& zUOrigin) {
  if (L.get_UCaseGroupName() != zUGroup || L.get_UCaseOrigin() != zUOrigin) return false;
  if (zUGroup == "TABLE" || zUGroup == "TABLES")
    return Equal(L.get_TableName(), N.get_TableName()) && L.get_Index() == N.get_Index() &&
           L.get_Index() > 0;
  if (zUGroup == "SEGBRAN")
    return L.get_Branch() == N.get_Branch() && N.get_Branch() >= 1 &&
           L.get_Index() == N.get_Index() && L.get_Index() > 0;
  if (Equal(L.get_DataClass(), "Sample"))
    return L.get_Index() == N.get_Index() && Equal(L.get_LGRName(), N.get_LGRName()) &&
           Equal(FirstMember(L), FirstMember(N));
  const int32_t fileType = N.get_FileType();
  if (fileType == 322 || fileType == 323)
    return Equal(L.get_RTMFilePattern(), N.get_RTMFilePattern());
  if (fileType == 24 || fileType == 39 || Equal(N.get_GroupName(), "Extract")) return false;
  return Equal(L.get_LGRName(), N.get_LGRName());
}

void mxDataStore::CheckPreviouslyLoaded(const std::shared_ptr<mxDataSet>& cDataSet,
                                        int32_t& iDataSet, bool& qOK) {
  RunGuarded("mxDataStore (Code) (CheckPreviouslyLoaded)", kSpacedWording, [&] {
    iDataSet = -1;
    qOK = false;
    if (!CheckDataSetNames_) return;
    if (!cDataSet) RaiseFault(kFaultObjectNotSet);
    const std::string zUGroup = cDataSet->get_UCaseGroupName();
    const std::string zUOrigin = cDataSet->get_UCaseOrigin();
    for (int32_t i = 1; i <= get_NumberOfDataSets(); ++i) {
      if (!DataSets_(i)) continue;
      if (IsSameDataSet(*DataSets_(i), *cDataSet, zUGroup, zUOrigin)) {
        iDataSet = i;
        break;
      }
    }
    qOK = true;
  });
}

void mxDataStore::CheckPreviouslyLoaded2(const std::shared_ptr<mxDataSet>& cDataSet,
                                         int32_t& iDataSet, bool& qOK) {
  RunGuarded("mxDataStore (Code) (CheckPreviouslyLoaded2)", kSpacedWording, [&] {
    qOK = false;
    iDataSet = -1;
    bool qLocal = true;
    if (!cDataSet) RaiseFault(kFaultObjectNotSet);
    mxDataSet& N = *cDataSet;
    for (int32_t i = 1; i <= get_NumberOfDataSets(); ++i) {
      if (DataSets_(i) && Equal(DataSets_(i)->get_GroupName(), N.get_GroupName()) &&
          Equal(DataSets_(i)->get_Origin(), N.get_Origin())) {
        iDataSet = i;
        break;
      }
    }
    if (iDataSet == -1) {
      qOK = qLocal;
      return;
    }
    const std::string zOrigin = N.get_Origin(), zKey = N.get_UniqueKey(),
                      zRoot = N.get_DataRootPath(), zDisplay = N.get_TVDisplayRoot();
    int32_t iSuffix = 1, iLocal = -1;
    do {
      const std::string zSuffix = std::to_string(iSuffix);
      N.let_Origin(zOrigin + zSuffix);
      N.let_UniqueKey(zKey + zSuffix);
      N.let_DataRootPath(zRoot + zSuffix);
      N.let_TVDisplayRoot(zDisplay + zSuffix);
      CheckPreviouslyLoaded(cDataSet, iLocal, qLocal);
      ++iSuffix;
    } while (!(iLocal < 0 || !qLocal || iSuffix > kRenameLimit));
    qOK = qLocal;
  });
}

}  // namespace vndata
