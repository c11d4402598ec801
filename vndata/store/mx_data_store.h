// mxDataStore: the one object a host creates and keeps.
//
// It owns the ordered registry of data sets and the derived-quantity store.
// After adding, a data set's one-based position is the host's only handle.
// Positions 1 .. NextDataSetPos-1 hold the data sets in order of arrival;
// position NextDataSetPos is a spare slot that counts as valid (it holds an
// empty data set after ReInitialise and the checked adds, a null reference
// after AddItemAuto).
//
// Every public operation is guarded: a fault inside writes one trace line
// "Error: <text> (No. <n>) In [mxDataStore (Code) (<procedure>)] " and the
// operation returns with its outputs as they stood. A bad position is not a
// fault: per-data-set operations return their default silently.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/mx_notify_data.h"
#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/date.h"
#include "vndata/platform/host_services.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/variant.h"

namespace vndata {

class mxDQStore;
class mxDerivedQuantity;
class mxTable;

class VNDATA_API mxDataStore {
 public:
  mxDataStore();
  ~mxDataStore();
  mxDataStore(const mxDataStore&) = delete;
  mxDataStore& operator=(const mxDataStore&) = delete;

  // ---- Registry ----------------------------------------------------------
  // Adds with the duplicate check; qOK reports the check, not the add.
  void AddDataSet(std::shared_ptr<mxDataSet> cNewDataSet, bool& qOK);
  // Adds, with the check only when qCheckIfLoaded; a rename also sets
  // RenamedDataSet.
  void AddDataSetAfterCheck(std::shared_ptr<mxDataSet> cNewDataSet, bool& qOK,
                            bool qCheckIfLoaded = true);
  void AddItem(std::shared_ptr<mxDataSet> cNewDataSet);
  // Renames a duplicate without asking and appends; the new spare slot stays
  // null and the data set gets no event handlers.
  void AddItemAuto(std::shared_ptr<mxDataSet> cNewDataSet);
  void ExtendDataSets(int32_t nDataSets, bool& qOK);
  bool GetDataSet(int32_t iDataSet, std::shared_ptr<mxDataSet>& cNewDataSet);
  bool GetItem(int32_t iDataSet, std::shared_ptr<mxDataSet>& cNewDataSet);
  bool SetItem(int32_t iDataSet, std::shared_ptr<mxDataSet> cDataSet);
  void SetItemFromData(int32_t iDataSet, const Array2<float>& NewXY,
                       const Array<std::string>& NewHeaders, bool& qOKL);
  void SetAttribute(int32_t iDataSet, int32_t iAttribute, const std::string& zValue);
  void SetDSFileName(int32_t iDataSet, const std::string& zFilename);
  // Overwrites zAttributes(4) with the data set's Origin, then appends.
  void AppendColumnToDataSet(int32_t iDataSet, const Array<float>& dVals,
                             Array<std::string>& zAttributes, bool& qOK,
                             int32_t iCreationType = 0);
  // Appends a column described by a derived quantity. The attribute row
  // comes from the derived-quantity evaluation, which is not built yet: until
  // then this reports false.
  void AppendGRFColumnToDataSet(const std::shared_ptr<mxDerivedQuantity>& Derived,
                                int32_t iDataSet, const Array<float>& dVals, bool& qOK,
                                int32_t iCreationType = 0);
  void ReInitialise();
  bool ValidDataSet(int32_t iDataSet);
  int32_t get_NumberOfDataSets() const { return NextDataSetPos_ - 1; }

  // ---- Previously loaded and duplicates ---------------------------------------
  void CheckPreviouslyLoaded(const std::shared_ptr<mxDataSet>& cDataSet, int32_t& iDataSet,
                             bool& qOK);
  void CheckPreviouslyLoaded2(const std::shared_ptr<mxDataSet>& cDataSet, int32_t& iDataSet,
                              bool& qOK);

  // ---- Null values -------------------------------------------------------------
  void SET_GLOBAL_NULLVALUES();
  void SET_GLOBAL_USING_NULLS();
  void SetDataNULLVALUE(int32_t iDataSet, int32_t qUseNull, double sNullVal);
  void GetDataNULLVALUE(int32_t iDataSet, int32_t& qUseNull, double& sNullVal);

  // ---- Derived quantities --------------------------------------------------------
  // The store's definitions, held as deep copies (each member forwards to the mxDQStore under its own guard).
  void DQAdd(const std::shared_ptr<mxDerivedQuantity>& NewDQ);
  void DQUpdate(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& NewDQ);
  void DQDeleteItem(int32_t Index);
  void DQGetItem(int32_t Index, std::shared_ptr<mxDerivedQuantity>& NewDQ) const;
  void DQSetItem(int32_t Index, const std::shared_ptr<mxDerivedQuantity>& NewDQ);
  void ReinitialiseDQ();
  int32_t DQNumberOfDerivedQuantities() const;

  // ---- Properties ------------------------------------------------------------
  int32_t get_AddedDataSetPos() const { return AddedDataSetPos_; }
  bool get_OverWrittenDataSet() const { return OverWrittenDataSet_; }
  bool get_RenamedDataSet() const { return RenamedDataSet_; }
  void let_RenamedDataSet(bool v) { RenamedDataSet_ = v; }
  bool get_CheckDataSetNames() const { return CheckDataSetNames_; }
  void let_CheckDataSetNames(bool v) { CheckDataSetNames_ = v; }
  bool get_AutomaticOverWrite() const { return AutomaticOverWrite_; }
  void let_AutomaticOverWrite(bool v) { AutomaticOverWrite_ = v; }
  bool get_AutomaticRename() const { return AutomaticRename_; }
  void let_AutomaticRename(bool v) { AutomaticRename_ = v; }
  bool get_AutomaticCancel() const { return AutomaticCancel_; }
  void let_AutomaticCancel(bool v) { AutomaticCancel_ = v; }
  int32_t get_UseNullVal() const { return UseNullVal_; }
  void let_UseNullVal(int32_t v) { UseNullVal_ = v; }
  double get_NullValue() const { return NullValue_; }
  void let_NullValue(double v) { NullValue_ = v; }
  const std::string& get_RootKey() const { return RootKey_; }
  void let_RootKey(const std::string& v);
  const std::string& get_MainKey() const { return MainKey_; }
  void let_MainKey(const std::string& v);
  const std::string& get_FolderKey() const { return FolderKey_; }
  bool get_IsModified() const { return IsModified_; }
  int32_t get_NextDataSetPos() const { return NextDataSetPos_; }
  // Library-wide: shared by every store of the thread.
  bool get_CancelLoad() const;
  void let_CancelLoad(bool v);
  std::shared_ptr<ProgressContainer> get_pctContainer() const;
  void set_pctContainer(std::shared_ptr<ProgressContainer> container);
  std::shared_ptr<mxDQStore> get_DerivedQuantities() const { return DerivedQuantities_; }

  // ---- Notifications ----------------------------------------------------------
  // Never null after a set: a null argument puts a fresh object in place.
  // Sends "DATASTORE EVENTHANDLER INITIALISED".
  void set_EventHandler(std::shared_ptr<mxNotifyData> handler);
  // Sends "DATASTORE EVENTHANDLER RETRIEVED" first.
  std::shared_ptr<mxNotifyData> get_EventHandler();
  void set_IOEventHandler(std::shared_ptr<mxNotifyData> handler);
  std::shared_ptr<mxNotifyData> get_IOEventHandler() const { return IOEventHandler_; }

  // ======== Origin resolution ===================================================
  // The first data set whose origin (any case) and type fit, or -1. zType
  // comes back upper-cased; the type decides what Index and zName must fit.
  int32_t GetOriginIndex(std::string zOrigin);
  int32_t GetOriginIndex(std::string zOrigin, std::string& zType, int32_t Index = -1,
                         const std::string& zName = "");
  // The same with branch data sets told apart by their branch number.
  int32_t GetOriginIndexEx(std::string zOrigin);
  int32_t GetOriginIndexEx(std::string zOrigin, std::string& zType, int32_t Index = -1,
                           int32_t iBranch = -1, const std::string& zName = "");
  // Whether the data set's origin is zOrigin (upper case) in full, or, for
  // the type "DATA", as zOrigin followed by "_" and a number. qOK is not
  // written.
  void CheckOriginMatch(const std::string& zOrigin, int32_t iDataSet, const std::string& zType,
                        bool& qPartialMatch, bool& qFullMatch, bool& qOK);
  // The extracted data set whose key (group, first subclass, grid and
  // member of its first column) is zGROUPtoFind; zGROUPtoFind then becomes
  // its UniqueKey.
  bool CheckExtractedKey(const std::string& zOrigin, const std::string& zTVGroupName,
                         std::string& zGROUPtoFind, int32_t& iDataSet);
  // Distinct origins (any case), first spelling and order kept.
  void GetAllOrigins(Array<std::string>& zOrigins, int32_t& nOrigins, bool& qOK);
  // The summary or plot data set of exactly that origin, or -1.
  int32_t get_GetDatasetFromOrigin(const std::string& zOrigin);
  // Well names of a data set, by its file type and data class.
  void GetAllWells(int32_t iDataSet, Array<std::string>& zWells, int32_t& nWells, bool& qOK);
  // Upper-case origins of the data sets whose description attribute fits.
  void GetOriginsByDataAttribute(int32_t iAttribute, const std::string& zAttribute,
                                 Array<std::string>& zOrigins, bool& qOK);
  // The data set whose root and group make the folder part of the key; 0
  // when none does.
  int32_t GetDataSetFromTreeViewKey(const std::string& zTreeViewKey);
  // Origin, group and tree path of a column as one path; "" for a bad
  // position.
  std::string GetUniquePath(int32_t iDataSet, int32_t iColumn);
  // Kilobytes of one column, rounded half to even.
  int32_t GetVectorSize(int32_t iDataSet);
  void GetUniqueTabStripHeaders(const std::string& zOrigin, int32_t iType,
                                Array<std::string>& zHeaders, int32_t& nHeaders, bool& qOK);
  // Values of the first column whose tree view key is zName, in the first
  // data set whose group or display root is zOrigin (any data set when it
  // is empty); rows iStart..iEnd when either is 2 or more.
  void GetValues(const std::string& zName, const std::string& zOrigin, Array<float>& dVals,
                 std::string& zSourceFileName, bool& qOK, int32_t iStart = -1, int32_t iEnd = -1);
  // Values of the first column with that variable.
  bool DSGetValuesFromName(int32_t iDataSet, const std::string& zVector, Array<float>& sVals,
                           bool qCleanUp);

  // ======== Store search ==========================================================
  // The conversation: SearchClear, optionally SearchDataSets and the two
  // settings, SearchAddAttribute for each criterion, a Create, then
  // SearchPointers as often as wanted.
  void SearchClear();
  void SearchDataSets(const Array<int32_t>& iDataSets, bool& qOK);
  // Write only. SearchClear switches the first off; the second outlives it.
  void let_SearchExitAfter1(bool q) { SearchExitAfter1_ = q; }
  void let_MultiSetSearch(bool q) { MultiSetSearch_ = q; }
  // Column criteria (ids up to 14) and data set criteria (ids up to 66) on
  // one list; an id already there has its value replaced.
  void SearchAddAttribute(int32_t iAttribute, const std::string& zValue, bool& qOK);
  void SearchDataSetAddAttribute(int32_t iAttribute, const std::string& zValue, bool& qOK);
  // Builds the hit table from the column criteria, starting each data set's
  // columns at iStart and wrapping round.
  void SearchCreatePointers(bool& qOK, int32_t iStart = 1, bool qForward = true);
  // The same with the values upper-cased, the data sets visited from place
  // iSetStart and wrapping round, and at most one hit a data set under
  // MultiSetSearch.
  void SearchCreatePointersEx(bool& qOK, int32_t iStart = 1, bool qForward = true,
                              int32_t iSetStart = 1, bool qSetForward = true);
  // Builds the hit table (column 0) from the data set criteria.
  void SearchDataSetCreatePointers(bool& qOK, int32_t iStart = 1, bool qForward = true);
  // The hit table, 2 by nResults: data set, column.
  void SearchPointers(Array2<int32_t>& iResults, int32_t& nResults, bool& qOK);
  // The distinct data sets of the hits, ascending.
  void SearchPointersDS(Array<int32_t>& iDataSets, int32_t& nDataSets, bool& qOK);
  // Keeps the listed data sets whose first column has the wanted TYPE.
  void SearchType(Array<int32_t>& iDataSetList, int32_t& nDataSets, bool& qMatchType, bool& qOK);
  // One-shot: the first column that fits the given texts (-1, -1 for none).
  // The criteria and hits stay in the search state.
  void Search(int32_t& iDataSet, int32_t& iColumn, bool& qOK, const std::string& zOrigin = "",
              const std::string& zVariable = "", const std::string& zType = "",
              const std::string& zClass = "", const std::string& zMember = "",
              const std::string& zSubClass1 = "", const std::string& zSubClass2 = "",
              const std::string& zIndex = "");
  // One-shot over one data set by attribute texts (upper case). A zIndex
  // switches on the VARIABLE test without a text of its own. iEnd may be
  // rewritten to 1 for a backward range ending below column 1.
  void SearchaDataSet(int32_t iDataSet, Array<int32_t>& iResults, int32_t& nResults, bool& qOK,
                      const std::string& zVector, const std::string& zClass,
                      const std::string& zMember, const std::string& zIndex,
                      const std::string& zSubClass1, const std::string& zSubClass2,
                      bool qEndAfter1, int32_t iStart, int32_t& iEnd);
  void SearchaDataSet(int32_t iDataSet, Array<int32_t>& iResults, int32_t& nResults, bool& qOK,
                      const std::string& zVector = "", const std::string& zClass = "",
                      const std::string& zMember = "", const std::string& zIndex = "",
                      const std::string& zSubClass1 = "", const std::string& zSubClass2 = "",
                      bool qEndAfter1 = false, int32_t iStart = -1);
  // One-shot over one data set by VARIABLE and CLASS (upper-cased).
  void SearchForDataSetVariables(int32_t iDataSet, const std::string& zVector,
                                 const std::string& zClass, Array<int32_t>& iResults, bool& qOK,
                                 bool qEndAfter1 = false, int32_t iStart = -1, int32_t iEnd = -1);
  // The same giving the address of each column's first value.
  void SearchForDataSetVariablePointers(int32_t iDataSet, const std::string& zVector,
                                        const std::string& zClass, Array<std::intptr_t>& iPointers,
                                        bool& qOK, bool qEndAfter1 = false, int32_t iStart = -1,
                                        int32_t iEnd = -1);

  // ---- The forwarder shape -----------------------------------------------------
  // Runs call(dataSet) for a valid position under the store's guard, whose
  // trace tag is "mxDataStore (Code) (<procedure>)", and returns its result;
  // returns fallback silently for a bad position.
  template <class R, class Call>
  R Forward(std::string_view zTag, int32_t iDataSet, R fallback, Call&& call);
  // The same for operations with no result.
  template <class Call>
  void ForwardVoid(std::string_view zTag, int32_t iDataSet, Call&& call);

  // ==== Per-data-set family ===================================================
  // The data set's operations offered again with the position first, declared
  // in slot order (vndata/store/internal/store_family.h numbers the slots and marks
  // those still waiting for their piece). Each validates the position with
  // ValidDataSet and gives the declared default silently on a bad one: false,
  // 0, the empty text, or outputs left as they were. Reads named DS plus a
  // property (DSOrigin, DSUnits, ...) give the value through the reference
  // and report the position through the result; a setter with nothing to
  // report returns true once it reached the data set; an operation with a
  // qOK reports through it. Members of the registry (GetDataSet, SetItem,
  // ValidDataSet, ...) keep their places in the slot list from the sections
  // above.

  // 2..39: indexed properties.
  int32_t get_UnitDataSource(int32_t iDataSet);
  void let_UnitDataSource(int32_t iDataSet, int32_t iUnitDataSource);
  bool get_DSDeleteAfterFetch(int32_t iDataSet);
  void let_DSDeleteAfterFetch(int32_t iDataSet, bool qDeleteAfterFetch);
  double get_DSNullValue(int32_t iDataSet);
  bool get_Child(int32_t iDataSet);
  std::string get_CaseName(int32_t iDataSet);
  std::string get_DataRootPath(int32_t iDataSet);
  std::string get_DateStamp(int32_t iDataSet);
  void let_DateStamp(int32_t iDataSet, const std::string& zDateStamp);
  std::string get_FileName(int32_t iDataSet);
  int32_t get_FileType(int32_t iDataSet);
  bool get_Formatted(int32_t iDataSet);
  std::string get_GroupName(int32_t iDataSet);
  int32_t get_iEnd(int32_t iDataSet);
  int32_t get_Index(int32_t iDataSet);
  void let_Index(int32_t iDataSet, int32_t iIndex);
  bool get_Initialised(int32_t iDataSet);
  bool get_IsDirty(int32_t iDataSet);
  void let_IsDirty(int32_t iDataSet, bool qIsDirty);
  int32_t get_iStart(int32_t iDataSet);
  int32_t get_MaxRows(int32_t iDataSet);
  bool get_NoRestart(int32_t iDataSet);
  void let_NoRestart(int32_t iDataSet, bool qNoRestart);
  bool get_NoInactive(int32_t iDataSet);
  int32_t get_NumCols(int32_t iDataSet);
  int32_t get_NumMarkers(int32_t iDataSet);
  std::string get_UCaseOrigin(int32_t iDataSet);
  std::string get_Origin(int32_t iDataSet);
  std::string get_SourceType(int32_t iDataSet);
  bool get_Unified(int32_t iDataSet);
  int32_t get_Units(int32_t iDataSet);
  std::string get_GetDataClass(int32_t iDataSet);
  bool get_DSHysteresis(int32_t iDataSet);
  bool get_DSEndPointScaling(int32_t iDataSet);
  bool get_DSDirEndPointScaling(int32_t iDataSet);
  bool get_DSRevEndPointScaling(int32_t iDataSet);
  bool get_DSAltEndPointScaling(int32_t iDataSet);
  int32_t get_DSIPHASE(int32_t iDataSet);
  std::string get_DSSimulator(int32_t iDataSet);
  bool get_DSIgnoreInGRF(int32_t iDataSet);

  // 44..92: identity reads and writes, extraction, values, attributes,
  // limits, tree paths.
  bool DSDataIndex(int32_t iDataSet, int32_t& iIndex);
  bool DSSetDateStamp(int32_t iDataSet, const std::string& zDateStamp);
  bool DSDateStamp(int32_t iDataSet, std::string& zDateStamp);
  void DSbExtractData(int32_t iDataSet, Array2<float>& arr2d, Array2<uint8_t>& bHeaders, bool& qOK);
  void DSbExtract2dArrays(int32_t iDataSet, Array2<float>& arr2d, Array2<uint8_t>& bHeaders,
                          bool& qOK);
  bool DSExtract2dArrays(int32_t iDataSet, Array2<float>& arr2d, Array<std::string>& attrib2d);
  // The older name of DSbExtractHeaders.
  void DSExtractbHeaders(int32_t iDataSet, Array2<uint8_t>& bHeaders, bool& qOK);
  bool DSFileType(int32_t iDataSet, int32_t& iFileType);
  bool DSGetAttributes(int32_t iDataSet, int32_t ThisCol, Array<std::string>& Attributes);
  void DSGetByteStoreArray(int32_t iDataSet, AttributePools& xStore, bool& qOK);
  void DSSetByteStore(int32_t iDataSet, int32_t iAtt, const std::shared_ptr<ByteStore>& xStore,
                      bool& qOK);
  void DSGetByteStore(int32_t iDataSet, int32_t iAtt, std::shared_ptr<ByteStore>& xStore, bool& qOK);
  void DSSetByteStoreArray(int32_t iDataSet, const AttributePools& xStore, bool& qOK);
  int32_t DSGetDefaultX(int32_t iDataSet);
  bool DSSetDefaultX(int32_t iDataSet, int32_t iDefaultX);
  // The column's "VARIABLE".
  std::string DSGetColumnVariable(int32_t iDataSet, int32_t iColumn);
  bool DSGetValues(int32_t iDataSet, int32_t ThisCol, Array<float>& ThisColumnValues);
  bool DSGetValue(int32_t iDataSet, int32_t Row, int32_t Column, float& dVal);
  std::string DSGetzOnly(int32_t iDataSet);
  bool DSGroupName(int32_t iDataSet, std::string& zGroupName);
  // The first column whose "VARIABLE" is zVariable (any case), or 0.
  int32_t DSIndexFromVariable(int32_t iDataSet, const std::string& zVariable);
  bool DSGetColMinMax(int32_t iDataSet, int32_t ThisCol, float& dMinVal, float& dMaxVal,
                      bool qReCalc = false);
  bool DSSetColMinMax(int32_t iDataSet, int32_t ThisCol, float dMinVal, float dMaxVal);
  bool DSOrigin(int32_t iDataSet, std::string& zOrigin);
  bool DSSetFileType(int32_t iDataSet, int32_t iFileType);
  // The column's path (attribute id 1).
  std::string DSGetTreeViewPath(int32_t iDataSet, int32_t iColumn);
  bool DSMakeTreeViewPath(int32_t iDataSet, int32_t Index, std::string& zTreeViewPath);
  // Makes the column's kept path lengths those of its absolute path:
  // DataRootPath, GroupName and the column's path joined by `\`. True when
  // the lengths now kept are that path's.
  bool DSUpdateTreeViewPath(int32_t iDataSet, int32_t iColumn);
  bool DSSetTreeViewPath(int32_t iDataSet, int32_t Index, const std::string& zTreeViewPath);
  bool DSSetUnits(int32_t iDataSet, int32_t iUnits);
  bool DSSetValue(int32_t iDataSet, int32_t Row, int32_t Column, float dVal);
  void DSSetValues(int32_t iDataSet, int32_t Index, const Array<float>& sVals, bool& qOK);
  bool DSSetZOnly(int32_t iDataSet, const std::string& zOnly);
  bool DSSourceType(int32_t iDataSet, std::string& zSourceType);
  // The column's key under the data set's DataRootUnique.
  bool DSTreeViewPath(int32_t iDataSet, int32_t iColumn, std::string& zTreeViewPath);
  bool DSTVGroupName(int32_t iDataSet, std::string& zTVGroupName);
  bool DSSetIsDirty(int32_t iDataSet, bool qIsDirty);
  bool DSGetIsDirty(int32_t iDataSet);
  bool DSUnits(int32_t iDataSet, int32_t& iUnits);
  bool DSSetUnitSource(int32_t iDataSet, const std::string& zUnitSource);
  bool DSSetUnitCurrent(int32_t iDataSet, const std::string& zUnitCurrent);
  bool DSSetUnitDataSource(int32_t iDataSet, int32_t iUnitDataSource);
  int32_t DSGetUnitDataSource(int32_t iDataSet);
  std::string DSGetUnitSource(int32_t iDataSet);
  std::string DSGetUnitCurrent(int32_t iDataSet);

  // 94..97: reads with the value as result.
  // The store's own numbering: 1 Origin, 3 SourceType, 4 DateStamp, 10 Index
  // (as text), 14 GroupName; every other id gives "".
  std::string GetDataSetAttribute(int32_t iDataSet, int32_t iAttribute);
  std::string GetDataRootPath(int32_t iDataSet);
  std::string GetDataSetDate(int32_t iDataSet);
  std::string GetFileName(int32_t iDataSet);

  // 106: with a file name and a valid position, makes zFilename the data
  // set's FileName and writes the data set there (WriteAsCSV, which asks for
  // the layout). A non-empty zOrigin first renames the data set and its
  // columns' ORIGIN.
  void WriteTextFile(int32_t iDataSet, const std::string& zFilename,
                     const std::string& zOrigin = std::string());

  // 107..108
  std::string get_LGRName(int32_t iDataSet);
  bool get_AllData(int32_t iDataSet);

  // 109, 113..114: queries of one data set.
  // Distinct members of the columns of a class, as the data set keeps them.
  void GetUniqueMembersOfClass(int32_t iDataSet, const std::string& zClass,
                               Array<std::string>& zMembers, int32_t& nMembers, bool& qOK);
  // The data set's description by the numbering of the description array
  // ("Unknown" for a number without an answer; "" for a bad position).
  std::string DSGetDataSetAttribute(int32_t iDataSet, int32_t iType);
  bool DSCompareDataSetAttribute(int32_t iDataSet, int32_t iType, const std::string& zValue,
                                 bool qCaseSensitive);

  // 115..153
  bool DSGetAttribute(int32_t iDataSet, int32_t Index, int32_t iType, std::string& zAttribute);
  bool DSSetAttribute(int32_t iDataSet, int32_t iAttribute, const std::string& zValue);
  // The name filter of a partial load as its 56-byte records, with its flag.
  bool DSGetOnlyList(int32_t iDataSet, Array2<uint8_t>& bOnly, bool& qOnly);
  bool DSSetOnlyList(int32_t iDataSet, const Array2<uint8_t>& bOnly, bool qOnly);
  std::string get_UniqueKey(int32_t iDataSet);
  bool get_DualPorosity(int32_t iDataSet);
  int32_t DSGetUseNulls(int32_t iDataSet);
  bool DSSetUseNulls(int32_t iDataSet, int32_t iUseNullVal);
  double DSGetNullValue(int32_t iDataSet);
  bool DSSetNullValue(int32_t iDataSet, double dNullValue);
  bool DSGetPerforationsSet(int32_t iDataSet);
  bool DSGetPerforations(int32_t iDataSet);
  double DSGetReaderNullValue(int32_t iDataSet);
  bool DSSetReaderNullValue(int32_t iDataSet, double dReaderNullValue);
  bool DSGetReaderSetNull(int32_t iDataSet);
  bool DSSetReaderSetNull(int32_t iDataSet, bool qReaderSetNull);
  bool DSDataClass(int32_t iDataSet, std::string& zDataClass);
  bool DSTableName(int32_t iDataSet, std::string& zTableName);
  bool get_qSelectionOnly(int32_t iDataSet);
  void let_qSelectionOnly(int32_t iDataSet, bool qSelectionOnly);
  int32_t get_DataSetDerivedFrom(int32_t iDataSet);
  void let_DataSetDerivedFrom(int32_t iDataSet, int32_t iDataSetDerivedFrom);
  void DSInitialiseFrom2D(int32_t iDataSet, const Array2<float>& dArray,
                          const Array<std::string>& zHeaders, bool& qOK);

  // 156..193
  std::string DSGetObsName(int32_t iDataSet);
  // The data set's description array (66 slots), as a reader would fill it.
  bool DSGetClassVarsFromAttributes(int32_t iDataSet, Array<Variant>& vAttributes);
  bool DSbGetAttributes(int32_t iDataSet, int32_t ThisCol, Array<uint8_t>& bAttributes);
  bool DSGetRowValues(int32_t iDataSet, int32_t iRow, Array<float>& sVals);
  // AppendColumnToDataSet for each column k of dVals, with the attribute
  // texts zAttributes(1..14, k); each column's ORIGIN is overwritten with
  // the data set's Origin. qOK is true when every column was appended.
  void AppendColumnsToDataSet(int32_t iDataSet, const Array2<float>& dVals,
                              Array2<std::string>& zAttributes, bool& qOK,
                              int32_t iCreationType = 0);
  // Gives every column the creation type.
  bool DSSetAllCreationTypes(int32_t iDataSet, int16_t iCreationType);
  int16_t DSGetCreationType(int32_t iDataSet, int32_t iColumn);
  bool DSSetCreationType(int32_t iDataSet, int32_t iColumn, int16_t iCreationType);
  int32_t DSGetReadPosition(int32_t iDataSet);
  bool DSSetReadPosition(int32_t iDataSet, int32_t iPos);
  float DSGetTimeInDays(int32_t iDataSet);
  int32_t get_CreationMethod(int32_t iDataSet);
  void let_CreationMethod(int32_t iDataSet, int32_t iCreationMethod);
  void DSbExtractHeaders(int32_t iDataSet, Array2<uint8_t>& bHeaders, bool& qOK);
  // The header records as texts.
  void DSExtractDataHeaders(int32_t iDataSet, Array<std::string>& zHeaders, bool& qOK);
  void DSbInitialiseFrom2D(int32_t iDataSet, Array2<float>& dArray, const Array2<uint8_t>& bHeaders,
                           bool& qOK);
  bool DSSetAccRates(int32_t iDataSet, int32_t iAccRates);
  bool DSSetAccumulate(int32_t iDataSet, bool qAccumulate);
  bool DSGetAccumulate(int32_t iDataSet);
  int32_t DSGetAccRates(int32_t iDataSet);
  bool DSSetAccFrequency(int32_t iDataSet, int32_t iAccFrequency);
  int32_t DSGetAccFrequency(int32_t iDataSet);
  bool DSSetAccInterval(int32_t iDataSet, const std::string& zAccInterval);
  std::string DSGetAccInterval(int32_t iDataSet);
  bool DSSetAccSimDate(int32_t iDataSet, Date dAccSimDate);
  Date DSGetAccSimDate(int32_t iDataSet);
  bool DSSetAccAccDate(int32_t iDataSet, Date dAccAccDate);
  Date DSGetAccAccDate(int32_t iDataSet);
  void DSExtractDataArrays(int32_t iDataSet, Array2<float>& arr2d, Array<std::string>& zAttrib2d,
                           bool& qOK);
  // One of the text reader's settings as text (the name in any case); true
  // once the position is valid, an unknown name leaving vData alone.
  bool DSGetTextFileProperty(int32_t iDataSet, const std::string& zProperty, Variant& vData);
  std::string DSGetSimCase(int32_t iDataSet);
  // Writes DateStamp, as let DateStamp does.
  bool SetDataSetDate(int32_t iDataSet, const std::string& zDateStamp);
  bool GetNxNyNz(int32_t iDataSet, int32_t& nx, int32_t& ny, int32_t& nz);

  // ---- Markers and wells (54, 99..101, 160, 161, 199..201)
  // The "MK32" bytes of the data set's markers, cut to its sector box when
  // one is set.
  void DSGetMarkers(int32_t iDataSet, int32_t& nMarker, Array<uint8_t>& bMarker, bool& qOK);
  // The marker table (vMarkers, 1..55 by marker).
  void GetMarkers(int32_t iDataSet, int32_t& n, Array2<Variant>& vMarkers, bool& qOK);
  // Looks a "WELL" marker up in that table across the direction zDir ("I"
  // compares J and K, "J" compares I and K, "K" compares I and J).
  bool GetMarkerName(int32_t iDataSet, const std::string& zDir, int32_t iU, int32_t iV,
                     std::string& zMarkName, int32_t& iW);
  bool GetMarkerPosition(int32_t iDataSet, const std::string& zDir, const std::string& zMarkName,
                         int32_t& iU, int32_t& iV, int32_t& iW);
  void DSGetSectorBox(int32_t iDataSet, int32_t& iXL, int32_t& iXU, int32_t& jYL, int32_t& jYU,
                      int32_t& kZL, int32_t& kZU);
  void DSSetSectorBox(int32_t iDataSet, int32_t iXL, int32_t iXU, int32_t jYL, int32_t jYU,
                      int32_t kZL, int32_t kZU);
  std::intptr_t get_WellsPtr(int32_t iDataSet);
  std::intptr_t get_MarkersPtr(int32_t iDataSet);
  bool GetMarkerFromIJK(int32_t iDataSet, int32_t i, int32_t j, int32_t k, int32_t& iFound,
                        std::string& zWellName, std::string& zStyle, int32_t& iStatus,
                        std::string& zStatus);

  // ---- Monitoring of a running simulation (212..215)
  bool get_RTMMonitoring(int32_t iDataSet);
  void let_RTMMonitoring(int32_t iDataSet, bool qMonitoring);
  bool get_RTMRecurseFolders(int32_t iDataSet);
  void let_RTMRecurseFolders(int32_t iDataSet, bool qRecurse);
  std::string get_RTMFolder(int32_t iDataSet);
  void let_RTMFolder(int32_t iDataSet, const std::string& zFolder);
  std::string get_RTMFilePattern(int32_t iDataSet);
  void let_RTMFilePattern(int32_t iDataSet, const std::string& zPattern);
  // Every data set stops being monitored.
  void ClearRTMSettings();
  // The same, and every data set forgets its folder and pattern.
  void ResetRTMSettings();

  // 194..198, 227
  Array<int32_t> get_INITA2N(int32_t iDataSet);
  int32_t get_NumRows(int32_t iDataSet);
  std::intptr_t get_ValuesPtr(int32_t iDataSet, int32_t ThisCol);
  std::intptr_t get_ValuesRowPtr(int32_t iDataSet, int32_t ThisCol, int32_t ThisRow);
  int32_t get_NumWells(int32_t iDataSet);
  bool get_qIsVectorLoaded(int32_t iDataSet, int32_t iVector);
  void let_qIsVectorLoaded(int32_t iDataSet, int32_t iVector, bool qLoaded);

  // 119..123: the data set's table, and 216..220: its ternary columns.
  void DSSetTable(int32_t iDataSet, const std::shared_ptr<mxTable>& cTable, bool& qOK);
  // Whether the data set holds a table (its qTableSet).
  bool DSTableSet(int32_t iDataSet);
  void DSGetTabulatedValue(int32_t iDataSet, const Array<int32_t>& iVars, float& dVal, bool& qOK);
  void DSGetTableVariableValue(int32_t iDataSet, int32_t iVariable, int32_t Index, float& vData,
                               bool& qOK);
  void DSGetNumberVarsInTable(int32_t iDataSet, int32_t& nVariables, bool& qOK);
  void GetTernaryColumns(int32_t iDataSet, bool& qTernExists, Array<int32_t>& iTern,
                         float& sTernOilMin, float& sTernGasMin, float& sTernWatMin, bool& qOK);
  void GetTernaryColumnsDP(int32_t iDataSet, bool& qTernExists, Array<int32_t>& iTern,
                           float& sTernOilMin, float& sTernGasMin, float& sTernWatMin,
                           bool qDPMatrix, bool& qOK);
  bool get_qTernaryColsExist(int32_t iDataSet);
  bool get_qTernaryColsExistDP(int32_t iDataSet, bool qDPMatrix);
  void GetTernaryDataLimits(int32_t iDataSet, float& sTernOilLimit, float& sTernGasLimit,
                            float& sTernWatLimit);

  // 221..226, 228, 233, 236: columns fetched on demand. The two loads raise
  // FODDataLoaded with the position and the column, on the store's own
  // events, for each column they bring into memory.
  void AssignFODPointers(int32_t iDataSet, const Array<bool>& qFileTypeSettings,
                         const Array2<int32_t>& iPosArray, bool& qOK);
  void AssignFODPlusPointers(int32_t iDataSet, const Array<bool>& qFileTypeSettings,
                             const Array2<int32_t>& iPosArray, const Array<int32_t>& iDQArray,
                             const Array<float>& sUCFactors, bool& qOK, bool qConvertUnitsNow = false,
                             bool qCalculateDQsNow = false);
  void LoadFODVector(int32_t iDataSet, int32_t ThisCol, bool& qOK);
  void DSLoadFODVectors(int32_t iDataSet, const Array<int32_t>& iColumns, int32_t nCols, bool& qOK);
  bool get_FetchOnDemandActive(int32_t iDataSet);
  void let_FetchOnDemandActive(int32_t iDataSet, bool qActive);
  void let_LoadAllVectors(int32_t iDataSet, bool qLoadAll);
  void GetLoadedFODVectors(int32_t iDataSet, Array<int32_t>& iColumns, int32_t& nCols, bool& qOK);
  bool FetchOnDemandColumnLoaded(int32_t iDataSet, int32_t ThisCol);
  // -1 for a bad position, as for a column without a type.
  int32_t DSGetFODVarType(int32_t iDataSet, int32_t iCol);
  // The store's own events (FODDataLoaded): a host subscribes a listener to
  // this object. It is apart from EventHandler, which the data sets share.
  const std::shared_ptr<mxNotifyData>& get_StoreEvents() const { return StoreEvents_; }

 private:
  std::shared_ptr<mxNotifyData> StoreEvents_ = std::make_shared<mxNotifyData>();

 public:
  // 235: the rows of an item's active life; false always, as the data set
  // answers, with the rows in iStart and iEnd.
  bool DSGetIndexRange(int32_t iDataSet, const std::string& zClass, const std::string& zItem,
                       int32_t& iStart, int32_t& iEnd);

  // ---- Grid names, files, row and column lists, well lists: one block, each
  // member's slot before it.
  // 3, 4: the lists as values (unallocated for no list).
  Array<int32_t> get_DSColumnList(int32_t iDataSet);
  void let_DSColumnList(int32_t iDataSet, const Array<int32_t>& iColumnList);
  Array<int32_t> get_DSRowList(int32_t iDataSet);
  void let_DSRowList(int32_t iDataSet, const Array<int32_t>& iRowList);
  // 5
  bool get_DSqUseWellList(int32_t iDataSet);
  void let_DSqUseWellList(int32_t iDataSet, bool qUseWellList);
  // 71, 72. The file list is taken over only by a valid position.
  void DSSetMask(int32_t iDataSet, bool qMask, const Array<int32_t>& iMask, int32_t nMask,
                 bool& qOK);
  void DSSetFileList(int32_t iDataSet, std::shared_ptr<ByteStore>& xFileList, int32_t nFiles,
                     bool& qOK);
  // 116..118
  void DSSetGridNames(int32_t iDataSet, const Array<uint8_t>& bGridNames, bool& qOK);
  void DSGetGridNames(int32_t iDataSet, Array<std::string>& zGridNames, bool& qOK);
  void DSGetGridName(int32_t iDataSet, int32_t iRow, std::string& zGridName, bool& qOK);
  // 131: the only-list, the row and the column list back to none.
  bool DSClearLists(int32_t iDataSet);
  // 146..149
  void DSGetColumnList(int32_t iDataSet, Array<int32_t>& iColumnList, int32_t& nColumnList,
                       bool& qOK);
  void DSGetRowList(int32_t iDataSet, Array<int32_t>& iRowList, int32_t& nRowList, bool& qOK);
  void DSSetColumnList(int32_t iDataSet, const Array<int32_t>& iColumnList, int32_t nColumnList,
                       bool& qOK);
  void DSSetRowList(int32_t iDataSet, const Array<int32_t>& iRowList, int32_t nRowList, bool& qOK);
  // 154, 155: the name after (or before) zWell, any case; a name not in the
  // list gives the first (or the last). WellListNextItem steps through the
  // active list and only while the host uses it; WellNextItem through that
  // list or else all the wells of the data set.
  void WellListNextItem(int32_t iDataSet, const std::string& zWell, bool qWrapSearch,
                        bool qBackwards, std::string& zNextWell, bool& qOK);
  void WellNextItem(int32_t iDataSet, const std::string& zWell, bool qWrapSearch, bool qBackwards,
                    std::string& zNextWell, bool& qOK);
  // 165: the active list when the host uses it and it has a first name,
  // else GetAllWells. qOK is true whatever the position.
  void DSGetWellListOrAll(int32_t iDataSet, Array<std::string>& zWells, int32_t& NumFound,
                          bool& qOK);
  // 202..211
  bool DSqSetWellList(int32_t iDataSet);
  // Sets the active list from those of the names that are wells of the data
  // set (GetAllWells). With none a well, the names go as they came and qOK
  // stays false; a bad position gives qOK true.
  void DSSetWellList(int32_t iDataSet, const Array<std::string>& zWellList, bool& qOK);
  void DSGetWellsInWellList(int32_t iDataSet, Array<std::string>& zWells, int32_t& nWells,
                            bool& qOK);
  void DSGetWellList(int32_t iDataSet, Array<std::string>& zWells, int32_t& nWells, bool& qOK);
  void WDS_DSGetOriginWellLists(int32_t iDataSet, int32_t& nLists, Array<std::string>& zNames,
                                Array<std::string>& zDelimited, bool& qOK);
  void WDS_DSGetWellListArray(int32_t iDataSet, const std::string& zName, int32_t& nWells,
                              Array<std::string>& zWells, bool& qOK);
  void WDS_GetWellList(int32_t iDataSet, Array<std::string>& zWells, int32_t& nWells, bool& qOK);
  void WDS_GetWellListDetailsByName(int32_t iDataSet, const std::string& zName, int32_t& nWells,
                                    Array<std::string>& zWells, std::string& zDelimited,
                                    bool& qOK);
  // The name may come back changed (see mxDataSet::WH_AppendWellList).
  bool WSH_AppendNamedWellList(int32_t iDataSet, const Array<std::string>& zWellList,
                               std::string& zThisListName);
  bool WSH_AppendNamedWellList(int32_t iDataSet, const Array<std::string>& zWellList);
  void WSH_DeleteWellListByName(int32_t iDataSet, const std::string& zName, bool& qOK);

  // ---- Outside the slot list
  // The time history of one cell over the array data sets: for each data set
  // of exactly the same Origin, FileType and LGRName as iDataSet that has the
  // "VARIABLE" of iColumn, its TimeInDays (when not below 0) and the value of
  // row iRow. Each such data set is asked to drop fetched columns after the
  // read. qOK is true with at least one point, the arrays cut to the count.
  void DSArrays(int32_t iRow, int32_t iDataSet, int32_t iColumn, Array<float>& xARR,
                Array<float>& yArr, bool& qOK);

  // ---- Text export of the whole store
  // When the store holds something (IsModified), offers each data set in
  // turn to the host's save dialog ("Save File", its base name and ".csv",
  // filter "*.csv") and writes it with WriteTextFile; an empty answer ends
  // the dump, the files already written staying.
  void DumpDataStoreToTextFiles();

 private:
  // One-based position within 1 .. NextDataSetPos (the spare included).
  bool ValidIndex(int32_t iDataSet) const;
  // The data set at a position already checked by ValidDataSet.
  mxDataSet& At(int32_t iDataSet) { return *DataSets_(iDataSet); }
  void AddChecked(std::shared_ptr<mxDataSet> cNewDataSet, bool& qOK, bool qCheck,
                  bool qMarkRenamed);
  // The steps of an add once the duplicate question is settled.
  void StoreOverwrite(int32_t iFound, std::shared_ptr<mxDataSet> cNewDataSet, bool qClearFirst);
  void Append(std::shared_ptr<mxDataSet> cNewDataSet, bool qFound);
  int32_t AskDuplicateQuestion(const mxDataSet& cNewDataSet);
  void PassEventHandlers(int32_t iDataSet);
  bool IsSameDataSet(mxDataSet& loaded, mxDataSet& incoming, const std::string& zUGroup,
                     const std::string& zUOrigin);

  Array<std::shared_ptr<mxDataSet>> DataSets_;
  int32_t NextDataSetPos_ = 1;
  std::shared_ptr<mxDQStore> DerivedQuantities_;
  bool IsModified_ = false;
  int32_t AddedDataSetPos_ = 0;
  bool OverWrittenDataSet_ = false;
  bool RenamedDataSet_ = false;
  bool CheckDataSetNames_ = true;
  bool AutomaticOverWrite_ = false;
  bool AutomaticRename_ = false;
  bool AutomaticCancel_ = false;
  int32_t UseNullVal_ = 0;
  double NullValue_ = 0.0;
  std::string RootKey_, MainKey_, FolderKey_;
  std::shared_ptr<mxNotifyData> EventHandler_;
  std::shared_ptr<mxNotifyData> IOEventHandler_;

  // ---- Origin resolution internals
  // The data set held at a registered position (nullptr for an empty slot).
  mxDataSet* Slot(int32_t iDataSet) const;
  // The data set at a position taken on trust: a bad one is a fault.
  mxDataSet& Trusted(int32_t iDataSet) const;
  bool OriginRows(mxDataSet& ds, const std::string& zType, int32_t Index, const std::string& zName,
                  const Array<std::string>& zParts, int32_t nParts);
  bool OriginRowsEx(mxDataSet& ds, const std::string& zType, int32_t Index, int32_t iBranch,
                    const std::string& zName, const Array<std::string>& zParts, int32_t nParts);
  bool SampleOrExtractRows(mxDataSet& ds, const std::string& zType, const std::string& zName,
                           bool& qAccept);
  static bool HeaderColumnRows(mxDataSet& ds, const std::string& zName, bool qHistoryAndSplit);
  int32_t ResolveOrigin(std::string zOrigin, std::string& zType, int32_t Index, int32_t iBranch,
                        const std::string& zName, bool qEx);
  // The fetch-on-demand clean-up of a column read just for DSGetValuesFromName.
  void CleanUpFetchedColumn(int32_t iDataSet, int32_t iColumn);

  // ---- Search internals
  void SearchAddCriterion(int32_t iAttribute, const std::string& zValue, int32_t iMaxId, bool& qOK);
  void SearchOrigin(Array<int32_t>& iDataSetList, int32_t& nDataSets, bool& qMatchOrigin, bool& qOK);
  // Candidates and the checks shared by the two column searches; false when
  // the run does not take place (qOK stays false).
  bool SearchCandidates(Array<int32_t>& iCands, int32_t& nCands, bool& qOnlyOriginType);
  void SearchColumnsOf(int32_t iDataSet, const Array<int32_t>& iWork,
                       const Array<std::string>& zWork, int32_t nWork, int32_t iStart,
                       bool qForward, bool qFirstOnly, Array<int32_t>& iScratch);
  void SearchOriginTypeOnly(const Array<int32_t>& iCands, int32_t nCands, bool& qOK);
  // Hits are gathered in a scratch list kept between runs and become the
  // table, cut to their number, when the run completes.
  void StartHits(int32_t nCapacity);
  // Room for the hits of a column search over the candidates: all their
  // columns, or one hit (one a data set under a multi-set search) when the
  // search ends at its first hit. 0 when the candidates have no columns.
  int32_t ColumnHitCapacity(const Array<int32_t>& iCands, int32_t nCands, bool qMultiSet);
  // The common start of the column searches: candidates, room for the hits
  // and the working criteria (upper-cased with qUpper). False when the run
  // is settled already (no criteria, no candidates, no columns, or only
  // origin and type criteria, whose result it then makes).
  bool StartColumnSearch(bool qMultiSet, bool qUpper, Array<int32_t>& iCands, int32_t& nCands,
                         Array<int32_t>& iWork, Array<std::string>& zWork, int32_t& nWork,
                         bool& qOK);
  void AppendHit(int32_t iDataSet, int32_t iColumn) {
    hitScratch_.push_back(iDataSet);
    hitScratch_.push_back(iColumn);
  }
  int32_t HitCount() const { return static_cast<int32_t>(hitScratch_.size() / 2); }
  void CommitHits();
  void SearchaDataSetCore(int32_t iDataSet, Array<int32_t>& iResults, int32_t& nResults, bool& qOK,
                          const std::string* zTexts, bool qEndAfter1, int32_t iStart, int32_t& iEnd);
  template <class T, class Fill>
  void SearchForVariables(int32_t iDataSet, const std::string& zVector, const std::string& zClass,
                          Array<T>& iOut, bool& qOK, bool qEndAfter1, int32_t iStart, int32_t iEnd,
                          Fill&& fill);

  // ---- Search state, one per store, kept between calls
  int32_t nSearchAttributes_ = 0;
  Array<int32_t> iSearchAttributes_ = Array<int32_t>(1, 1);
  Array<std::string> zSearchValues_ = Array<std::string>(1, 1);
  int32_t nSearchPointers_ = 0;
  Array2<int32_t> iSearchPointers_ = Array2<int32_t>(1, 2, 1, 1);
  int32_t nSearchDataSets_ = 0;
  Array<int32_t> iSearchDataSets_ = Array<int32_t>(1, 1);
  bool SearchExitAfter1_ = false;
  bool MultiSetSearch_ = false;
  std::vector<int32_t> hitScratch_;
};

}  // namespace vndata
