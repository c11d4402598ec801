// mxCopySet: the copy of a data set, item by item in a fixed order.
#include "vndata/support/mx_copy_set.h"

#include "vndata/dataset/mx_table.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {
mxDataSet& Object(const std::shared_ptr<mxDataSet>& ds) {
  if (!ds) RaiseFault(kFaultObjectNotSet);
  return *ds;
}
}  // namespace

mxCopySet::mxCopySet() : NewDataSet_(std::make_shared<mxDataSet>()) {}

template <class Body>
void mxCopySet::Item(Body&& body) {
  RunGuarded("mxCopyDataSet (Code) (OldDataSet)",
             [&] { body(Object(OldDataSet_), Object(NewDataSet_)); });
}

template <class Get, class Let>
void mxCopySet::CopyProperty(Get get, Let let) {
  Item([&](mxDataSet& o, mxDataSet& n) { (n.*let)((o.*get)()); });
}

void mxCopySet::set_OldDataSet(const std::shared_ptr<mxDataSet>& cDataSet) {
  OldDataSet_ = cDataSet;
  using D = mxDataSet;
  // 1. Identity and reading state.
  CopyProperty(&D::get_CaseName, &D::let_CaseName);
  CopyProperty(&D::get_Child, &D::let_Child);
  CopyProperty(&D::get_DataRootPath, &D::let_DataRootPath);
  CopyProperty(&D::get_DateStamp, &D::let_DateStamp);
  CopyProperty(&D::get_DefaultX, &D::let_DefaultX);
  CopyProperty(&D::get_FileName, &D::let_FileName);
  CopyProperty(&D::get_FileType, &D::let_FileType);
  CopyProperty(&D::get_Formatted, &D::let_Formatted);
  CopyProperty(&D::get_GroupName, &D::let_GroupName);
  CopyProperty(&D::get_iEnd, &D::let_iEnd);
  CopyProperty(&D::get_Index, &D::let_Index);
  CopyProperty(&D::get_IsDirty, &D::let_IsDirty);
  CopyProperty(&D::get_iStart, &D::let_iStart);
  CopyProperty(&D::get_LGRName, &D::let_LGRName);
  CopyProperty(&D::get_NoRestart, &D::let_NoRestart);
  CopyProperty(&D::get_Origin, &D::let_Origin);
  CopyProperty(&D::get_qTableSet, &D::let_qTableSet);
  CopyProperty(&D::get_SourceType, &D::let_SourceType);
  // 2. The table, shared by reference.
  Item([](mxDataSet& o, mxDataSet& n) {
    if (!o.get_qTableSet()) return;
    std::shared_ptr<mxTable> cTable;
    bool qOK = false;
    o.GetTable(cTable, qOK);
    n.SetTable(cTable, qOK);
  });
  // 3. Tree view and units.
  CopyProperty(&D::get_TVDisplayRoot, &D::let_TVDisplayRoot);
  CopyProperty(&D::get_TVGroupName, &D::let_TVGroupName);
  CopyProperty(&D::get_Unified, &D::let_Unified);
  CopyProperty(&D::get_UniqueKey, &D::let_UniqueKey);
  CopyProperty(&D::get_Units, &D::let_Units);
  CopyProperty(&D::get_UnitSource, &D::let_UnitSource);
  CopyProperty(&D::get_UnitCurrent, &D::let_UnitCurrent);
  CopyProperty(&D::get_UnitDataSource, &D::let_UnitDataSource);
  CopyProperty(&D::get_zOnly, &D::let_zOnly);
  // 4. The only-list.
  Item([](mxDataSet& o, mxDataSet& n) {
    Array2<uint8_t> bOnly;
    bool qOnly = false;
    o.GetbOnly(bOnly, qOnly);
    n.SetbOnly(bOnly, qOnly);
  });
  // 5. Nulls and the rest of the description.
  CopyProperty(&D::get_NullValue, &D::let_NullValue);
  CopyProperty(&D::get_UseNullVal, &D::let_UseNullVal);
  CopyProperty(&D::get_ReaderNullValue, &D::let_ReaderNullValue);
  CopyProperty(&D::get_ReaderSetNull, &D::let_ReaderSetNull);
  CopyProperty(&D::get_qSelectionOnly, &D::let_qSelectionOnly);
  CopyProperty(&D::get_TimeInDays, &D::let_TimeInDays);
  CopyProperty(&D::get_CreationMethod, &D::let_CreationMethod);
  CopyProperty(&D::get_DataClass, &D::let_DataClass);
  CopyProperty(&D::get_NoInactive, &D::let_NoInactive);
  CopyProperty(&D::get_TableName, &D::let_TableName);
  CopyProperty(&D::get_ObsName, &D::let_ObsName);
  CopyProperty(&D::get_AllData, &D::let_AllData);
  // 6. The parent.
  CopyProperty(&D::get_DataSetDerivedFrom, &D::let_DataSetDerivedFrom);
  // 6 to 8. The well list choice, the well list and the grid names.
  CopyWellListsAndGridNames();
  // 9. Accumulation.
  CopyProperty(&D::get_Accumulate, &D::let_Accumulate);
  CopyProperty(&D::get_AccFrequency, &D::let_AccFrequency);
  CopyProperty(&D::get_AccInterval, &D::let_AccInterval);
  CopyProperty(&D::get_AccSimDate, &D::let_AccSimDate);
  CopyProperty(&D::get_AccAccDate, &D::let_AccAccDate);
  // 10. Text import rows.
  CopyProperty(&D::get_TextRowData, &D::let_TextRowData);
  CopyProperty(&D::get_TextRowDateFormat, &D::let_TextRowDateFormat);
  CopyProperty(&D::get_TextRowFixed, &D::let_TextRowFixed);
  CopyProperty(&D::get_TextRowIndex, &D::let_TextRowIndex);
  CopyProperty(&D::get_TextRowLGR, &D::let_TextRowLGR);
  CopyProperty(&D::get_TextRowName, &D::let_TextRowName);
  CopyProperty(&D::get_TextRowUnits, &D::let_TextRowUnits);
  CopyProperty(&D::get_TextRowVerbose, &D::let_TextRowVerbose);
  CopyProperty(&D::get_TextRowWell, &D::let_TextRowWell);
  // 11.
  CopyProperty(&D::get_SimCase, &D::let_SimCase);
  // 12. The rows and columns, as one block with its packed headers.
  if (!qCopyData_) return;
  Item([](mxDataSet& o, mxDataSet& n) {
    Array2<float> arr2d;
    Array2<uint8_t> bHeaders;
    bool qOK = false;
    o.bExtract2dArrays(arr2d, bHeaders, qOK);
    n.bInitialiseFrom2d(arr2d, bHeaders, qOK);
  });
}

void mxCopySet::CopyWellListsAndGridNames() {
  // qUseWellList, the well list (when qSetWELLLIST) and the grid names are
  // copied here once the data set has them (the well lists and grid names
  // piece): by get_qUseWellList/let_qUseWellList, GetWellList/SetWELLLIST and
  // GetGridNames/SetGridNamesString, each under its own Item guard.
}

}  // namespace vndata
