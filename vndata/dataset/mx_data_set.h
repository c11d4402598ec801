// mxDataSet: one table of results, rows by columns of 32-bit floats, with
// the attributes of its columns and everything that says where it came from.
//
// The numbers live in one or more row buffers sharing the same columns (rows
// vary fastest, so a column of a buffer is contiguous and moves with one
// block copy). Columns hold no text: each attribute id has a pool of distinct
// texts and a column keeps a cell number per attribute. Each column also
// keeps its minimum and maximum.
//
// The implementation is split by concern: properties, storage, attributes,
// limits, packed headers and the memory squeeze each have their own file.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vndata/foundation/column_attributes.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/foundation/well_info.h"
#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/byte_store.h"
#include "vndata/platform/date.h"
#include "vndata/platform/variant.h"

namespace vndata {

class mxAutomaticDQ;
class mxDataStore;
class mxNotifyData;
class mxTable;
class RecordFile;
class SimFileIO;

// InitSourceData with the success flag of the description-array operations.
VNDATA_API void InitSourceData(Array<Variant>& vAttributes, bool& qOK);

class VNDATA_API mxDataSet {
 public:
  mxDataSet();
  ~mxDataSet();
  mxDataSet(const mxDataSet&) = delete;
  mxDataSet& operator=(const mxDataSet&) = delete;

  // ======== Identity and source =================================================
  const std::string& get_Origin() const { return source_.zOrigin; }
  // Keeps the upper-case copy and points every column's ORIGIN at the text,
  // so that the columns follow the data set's name.
  void let_Origin(const std::string& zOrigin);
  const std::string& get_UCaseOrigin() const { return source_.zUCaseOrigin; }
  const std::string& get_UniqueKey() const { return source_.zUniqueKey; }
  void let_UniqueKey(const std::string& z) { source_.zUniqueKey = z; }
  int32_t get_Index() const { return source_.iIndex; }
  void let_Index(int32_t i) { source_.iIndex = i; }
  const std::string& get_FileName() const { return source_.zFileName; }
  void let_FileName(const std::string& z) { source_.zFileName = z; }
  // Write only: a non-empty name turns the scratch file path of large loads
  // on, an empty one turns it off.
  void let_ScratchFileName(const std::string& zName);
  const std::string& get_CaseName() const { return source_.zCaseName; }
  void let_CaseName(const std::string& z) { source_.zCaseName = z; }
  const std::string& get_SimCase() const { return source_.zSimCase; }
  void let_SimCase(const std::string& z) { source_.zSimCase = z; }
  const std::string& get_GroupName() const { return source_.zGroupName; }
  void let_GroupName(const std::string& zGroupName);
  const std::string& get_UCaseGroupName() const { return source_.zUCaseGroupName; }
  const std::string& get_TVGroupName() const { return source_.zTVGroupName; }
  void let_TVGroupName(const std::string& z) { source_.zTVGroupName = z; }
  const std::string& get_TVDisplayRoot() const { return source_.zTVDisplayRoot; }
  void let_TVDisplayRoot(const std::string& zRoot);
  const std::string& get_UCaseTVDisplayRoot() const { return source_.zUCaseTVDisplayRoot; }
  const std::string& get_DataRootPath() const { return source_.zDataRootPath; }
  void let_DataRootPath(const std::string& z) { source_.zDataRootPath = z; }
  const std::string& get_DataRootUnique() const { return source_.zDataRootUnique; }
  // Also keeps the text behind the last `\` as DataRootLeaf, but only when a
  // `\` stands before the last character.
  void let_DataRootUnique(const std::string& zRoot);
  const std::string& get_DataRootLeaf() const { return source_.zDataRootLeaf; }
  const std::string& get_DataClass() const { return source_.zDataClass; }
  void let_DataClass(const std::string& z) { source_.zDataClass = z; }
  const std::string& get_SourceType() const { return source_.zSourceType; }
  void let_SourceType(const std::string& z) { source_.zSourceType = z; }
  const std::string& get_Simulator() const { return source_.zSimulator; }
  void let_Simulator(const std::string& z) { source_.zSimulator = z; }
  bool get_EclipseNames() const { return source_.qEclipseNames; }
  int32_t get_FileType() const { return source_.iFileType; }
  void let_FileType(int32_t i) { source_.iFileType = i; }
  int32_t get_Units() const { return source_.iUnits; }
  void let_Units(int32_t i) { source_.iUnits = i; }
  const std::string& get_UnitSource() const { return source_.zUnitSource; }
  void let_UnitSource(const std::string& z) { source_.zUnitSource = z; }
  const std::string& get_UnitCurrent() const { return source_.zUnitCurrent; }
  void let_UnitCurrent(const std::string& z) { source_.zUnitCurrent = z; }
  int32_t get_UnitDataSource() const { return source_.iUnitDataSource; }
  void let_UnitDataSource(int32_t i) { source_.iUnitDataSource = i; }
  const std::string& get_DateStamp() const { return source_.zDateStamp; }
  // Also splits the text under "dd/mm/yyyy" into the held day, month, year.
  void let_DateStamp(const std::string& zDate);
  // The day, month and year held from the last DateStamp (0 when it did not
  // read as a date).
  void GetDateStampParts(int32_t& iDay, int32_t& iMonth, int32_t& iYear) const;
  const std::string& get_LGRName() const { return source_.zLGRName; }
  // Trims blanks from both ends.
  void let_LGRName(const std::string& zName);
  const std::string& get_TableName() const { return source_.zTableName; }
  void let_TableName(const std::string& z) { source_.zTableName = z; }
  const std::string& get_ObsName() const { return source_.zObsName; }
  void let_ObsName(const std::string& z) { source_.zObsName = z; }
  int32_t get_CreationMethod() const { return source_.iCreationMethod; }
  void let_CreationMethod(int32_t i) { source_.iCreationMethod = i; }
  int32_t get_DataSetDerivedFrom() const { return source_.iDataSetDerivedFrom; }
  void let_DataSetDerivedFrom(int32_t i) { source_.iDataSetDerivedFrom = i; }
  bool get_Child() const { return source_.qChild; }
  void let_Child(bool q) { source_.qChild = q; }
  float get_TimeInDays() const { return source_.sTimeInDays; }
  void let_TimeInDays(float s) { source_.sTimeInDays = s; }
  // The branch number of segment-branch data (1 in a new object).
  int32_t get_Branch() const { return source_.iBranch; }
  void let_Branch(int32_t i) { source_.iBranch = i; }
  // The file name or pattern a monitoring data set watches; blanks at both
  // ends are trimmed. (Deriving a pattern from the source file when none is
  // set arrives with real-time monitoring.)
  // ---- Monitoring of a running simulation: what to watch. The watching is
  // the host's; an empty folder or pattern asked for is worked out from the
  // source file first.
  bool get_RTMMonitoring() const { return source_.qRTMMonitoring; }
  void let_RTMMonitoring(bool q) { source_.qRTMMonitoring = q; }
  bool get_RTMRecurseFolders() const { return source_.qRTMRecurseFolders; }
  void let_RTMRecurseFolders(bool q) { source_.qRTMRecurseFolders = q; }
  const std::string& get_RTMFolder();
  void let_RTMFolder(const std::string& z);
  const std::string& get_RTMFilePattern();
  void let_RTMFilePattern(const std::string& z);
  // True for the data sets a running simulation adds to: summary data
  // (FileType 13) and plot files (FileType 40 of class "PLOT").
  bool CheckifRTMDataSet() const;
  void CreateRTMPatternAndFolder();

  // ======== Reading state =======================================================
  int32_t get_iStart() const { return reading_.iStart; }
  void let_iStart(int32_t i) { reading_.iStart = i; }
  int32_t get_iEnd() const { return reading_.iEnd; }
  void let_iEnd(int32_t i) { reading_.iEnd = i; }
  // The source position as two 32-bit words: the value is the low word, the
  // optional argument the high word (0 when not given on writing).
  int32_t get_ReadPosition64() const { return reading_.iReadPosL; }
  int32_t get_ReadPosition64(int32_t& iPosH) const;
  void let_ReadPosition64(int32_t iPosL) { let_ReadPosition64(0, iPosL); }
  void let_ReadPosition64(int32_t iPosH, int32_t iPosL);
  // The low word alone; writing makes the high word 0.
  int32_t get_ReadPosition() const { return reading_.iReadPosL; }
  void let_ReadPosition(int32_t iPos);
  bool get_NoRestart() const { return reading_.qNoRestart; }
  void let_NoRestart(bool q) { reading_.qNoRestart = q; }
  bool get_Unified() const { return reading_.qUnified; }
  void let_Unified(bool q) { reading_.qUnified = q; }
  bool get_Formatted() const { return reading_.qFormatted; }
  void let_Formatted(bool q) { reading_.qFormatted = q; }
  bool get_AllData() const { return reading_.qAllData; }
  void let_AllData(bool q) { reading_.qAllData = q; }
  bool get_NoInactive() const { return reading_.qNoInactive; }
  void let_NoInactive(bool q) { reading_.qNoInactive = q; }
  bool get_qSelectionOnly() const { return reading_.qSelectionOnly; }
  void let_qSelectionOnly(bool q) { reading_.qSelectionOnly = q; }
  bool get_Perforations() const { return reading_.qPerforations; }
  bool get_PerforationsSet() const { return reading_.qPerforationsSet; }
  bool get_DeleteAfterFetch() const { return reading_.qDeleteAfterFetch; }
  // Writes the standing wish and its working copy used by column fetches.
  void let_DeleteAfterFetch(bool q);
  bool get_IgnoreInGRF() const { return reading_.qIgnoreInGRF; }
  void let_IgnoreInGRF(bool q) { reading_.qIgnoreInGRF = q; }
  // Model options of the source: set only through the description array.
  bool get_DualPorosity() const { return reading_.qDualPorosity; }
  bool get_Hysteresis() const { return reading_.qHysteresis; }
  bool get_EndPointScaling() const { return reading_.qEndPointScaling; }
  bool get_DirEndPointScaling() const { return reading_.qDirEndPointScaling; }
  bool get_RevEndPointScaling() const { return reading_.qRevEndPointScaling; }
  bool get_AltEndPointScaling() const { return reading_.qAltEndPointScaling; }
  int32_t get_iPhase() const { return reading_.iPhase; }
  const std::string& get_zOnly() const { return lists_.zOnly; }
  void let_zOnly(const std::string& z) { lists_.zOnly = z; }
  // The name filter of a partial load as 56-byte records, with its flag.
  void SetbOnly(const Array2<uint8_t>& bOnly, bool qOnly);
  void GetbOnly(Array2<uint8_t>& bOnly, bool& qOnly) const;

  // ======== Nulls ===============================================================
  double get_NullValue() const { return plot_.dNullValue; }
  void let_NullValue(double d) { plot_.dNullValue = d; }
  int32_t get_UseNullVal() const { return plot_.iUseNullVal; }
  void let_UseNullVal(int32_t i) { plot_.iUseNullVal = i; }
  double get_ReaderNullValue() const { return plot_.dReaderNullValue; }
  void let_ReaderNullValue(double d) { plot_.dReaderNullValue = d; }
  bool get_ReaderSetNull() const { return plot_.qReaderSetNull; }
  void let_ReaderSetNull(bool q) { plot_.qReaderSetNull = q; }

  // ======== Plot default ========================================================
  int32_t get_DefaultX() const { return plot_.iDefaultX; }
  void let_DefaultX(int32_t i) { plot_.iDefaultX = i; }
  // DefaultX becomes the first column whose "VARIABLE" is zHeader; false and
  // DefaultX unchanged when there is none.
  bool SetDefaultXByHeader(const std::string& zHeader);

  // ======== Accumulation (held for the host) ======================================
  bool get_Accumulate() const { return plot_.qAccumulate; }
  void let_Accumulate(bool q) { plot_.qAccumulate = q; }
  int32_t get_AccFrequency() const { return plot_.iAccFrequency; }
  void let_AccFrequency(int32_t i) { plot_.iAccFrequency = i; }
  const std::string& get_AccInterval() const { return plot_.zAccInterval; }
  void let_AccInterval(const std::string& z) { plot_.zAccInterval = z; }
  Date get_AccSimDate() const { return plot_.dAccSimDate; }
  void let_AccSimDate(Date d) { plot_.dAccSimDate = d; }
  Date get_AccAccDate() const { return plot_.dAccAccDate; }
  void let_AccAccDate(Date d) { plot_.dAccAccDate = d; }
  int32_t get_AccRates() const { return plot_.iAccRates; }
  void let_AccRates(int32_t i) { plot_.iAccRates = i; }

  // ======== Text import rows ======================================================
  int32_t get_TextRowName() const { return plot_.iTextRowName; }
  void let_TextRowName(int32_t i) { plot_.iTextRowName = i; }
  int32_t get_TextRowUnits() const { return plot_.iTextRowUnits; }
  void let_TextRowUnits(int32_t i) { plot_.iTextRowUnits = i; }
  int32_t get_TextRowLGR() const { return plot_.iTextRowLGR; }
  void let_TextRowLGR(int32_t i) { plot_.iTextRowLGR = i; }
  int32_t get_TextRowIndex() const { return plot_.iTextRowIndex; }
  void let_TextRowIndex(int32_t i) { plot_.iTextRowIndex = i; }
  int32_t get_TextRowVerbose() const { return plot_.iTextRowVerbose; }
  void let_TextRowVerbose(int32_t i) { plot_.iTextRowVerbose = i; }
  int32_t get_TextRowWell() const { return plot_.iTextRowWell; }
  void let_TextRowWell(int32_t i) { plot_.iTextRowWell = i; }
  int32_t get_TextRowData() const { return plot_.iTextRowData; }
  void let_TextRowData(int32_t i) { plot_.iTextRowData = i; }
  int32_t get_TextRowFixed() const { return plot_.iTextRowFixed; }
  void let_TextRowFixed(int32_t i) { plot_.iTextRowFixed = i; }
  const std::string& get_TextRowDateFormat() const { return plot_.zTextRowDateFormat; }
  void let_TextRowDateFormat(const std::string& z) { plot_.zTextRowDateFormat = z; }

  // ======== Simulator grid header ====================================================
  bool get_INITA2NSet() const { return grid_.qINITA2NSet; }
  const Array<int32_t>& get_INITA2N() const { return grid_.iINITA2N; }
  // qA2N true and a copy when a map is held; false and length 0 otherwise.
  void GetINITA2N(bool& qA2N, Array<int32_t>& A2N, int32_t& nA2N, bool& qOK) const;
  // Takes a copy and sets the flag; an empty array clears the flag and keeps
  // the length 1.
  void SetINITA2N(const Array<int32_t>& A2N, bool& qOK);
  void GetNxNyNz(int32_t& nx, int32_t& ny, int32_t& nz) const;
  void SetNxNyNz(int32_t nx, int32_t ny, int32_t nz);

  // ======== Sizes and counts ======================================================
  int32_t get_NumCols() const { return headers_.nCols; }
  // The sum of the rows in use of all buffers.
  int32_t get_NumRows() const;
  // The same as NumRows: the capacity of the buffers is never shown.
  int32_t get_MaxRows() const { return get_NumRows(); }
  int32_t get_NumberOfBuffers() const { return rows_.nBuffers; }
  int32_t get_NumCellsUncompressed() const { return grid_.nCellsUncompressed; }
  void SetNumCellsUncompressed(int32_t iNumCells) { grid_.nCellsUncompressed = iNumCells; }
  int32_t get_NumMarkers() const { return wells_.markers.NumMarkers; }
  int32_t get_NumWells() const { return wells_.markers.NumWells; }
  bool get_Initialised() const { return qInitialised_; }
  bool get_IsDirty() const { return qIsDirty_; }
  void let_IsDirty(bool q) { qIsDirty_ = q; }
  // Write only: a row map for column reads; an empty array leaves the old one.
  void let_ColumnMap(const Array<int32_t>& iMap);

  // ======== Notifications =============================================================
  // Never null after a set: a null argument puts a fresh object in place.
  // Sends "DATASET Initialised:" through the handler.
  void set_EventHandler(std::shared_ptr<mxNotifyData> handler);
  std::shared_ptr<mxNotifyData> get_EventHandler() const { return source_.EventHandler; }
  void set_IOEventHandler(std::shared_ptr<mxNotifyData> handler);
  std::shared_ptr<mxNotifyData> get_IOEventHandler() const { return source_.IOEventHandler; }

  // ======== Description array ==========================================================
  // Takes the data set's identity from the 66 slots a reader filled.
  bool SetClassVarsFromAttributes(const Array<Variant>& vAttributes);

  // ======== Tree view paths ==============================================================
  // The path's tokens (1..7) with their lengths, the total length with one
  // separator between tokens, and the count.
  void BuildTreeViewPathArray(int32_t iColumn, Array<std::string>& zTokens, Array<int32_t>& iLengths,
                              int32_t& nTotal, int32_t& nTokens, bool& qOK);
  // The tokens joined by `\`; what attribute id 1 reads.
  void BuildTreeViewPath(int32_t iColumn, std::string& zPath, int32_t& nLength, bool& qOK);
  // The key, and the section before its leaf. For more than two tokens the
  // section is the key buffer as it stood when the token before the leaf was
  // written (blanks still at its end): use nSection, not its text length.
  void BuildTreeViewData(int32_t iColumn, std::string& zKey, std::string& zSection,
                         int32_t& nSection, Array<std::string>& zTokens, Array<int32_t>& iLengths,
                         int32_t& nTokens, bool& qOK, bool qKeys);
  void GetTreeViewKey(int32_t ThisCol, std::string& zTreeViewKey, int32_t& iCreationType, bool& qOK);
  void GetTreeViewKeyData(int32_t ThisCol, std::string& zTreeViewKey, int32_t& LenKey,
                          std::string& zSection, int32_t& LenSection,
                          Array<std::string>& zTreeViewKeyArray, Array<int32_t>& LenKeyArray,
                          int32_t& nLevel, int32_t& iCreationType, bool& qOK, bool qKeys);
  void GetTreeViewKeyArray(int32_t ThisCol, int32_t& iCreationType, Array<std::string>& zTV,
                           int32_t& iNTV);
  // The level above the leaf; DataRootLeaf for a path of one token.
  std::string TreeViewLastLevel(int32_t ThisCol);
  // DataRootUnique and the key as one path, when the column's path length is
  // known; "" otherwise.
  std::string TreeViewPath(int32_t ThisCol);
  // Keeps only the lengths of the text.
  void SetTreeViewPath(int32_t Index, const std::string& zTreeViewPath);
  void SetTreeViewPathLengths(int32_t Index, int32_t iLenTreeViewPath,
                              int32_t iLenTreeViewLastLevel, bool& qOK);
  int32_t LenTreeViewPath(int32_t iCol) const;
  int32_t LenTreeViewLastLevel(int32_t iCol) const;
  bool MakeTreeViewPath(int32_t Index, std::string& zTreeViewPath);
  // Whether the column has the key of the tokens, without building its key.
  void CompareTreeViewPathArray(const Array<std::string>& zTokens, const Array<int32_t>& iLengths,
                                int32_t nTokens, int32_t iColumn, bool qCheck, bool& qResult);
  bool CompareKeyPathAttributeSize(int32_t iAttribute, int32_t iColumn, int32_t nLength,
                                   bool qCheck);
  bool CompareKeyPathAttribute(int32_t iAttribute, int32_t iColumn, int32_t nLength,
                               const std::string& zText, bool qCheck);

  // ======== Column queries and search ============================================
  // The data set's own description by the numbering of the description
  // array, as text; "Unknown" for a number without an answer.
  std::string GetDataSetAttribute(int32_t iType);
  // GetDataSetAttribute(iType) against zValue. For 29 (LGRName) the root
  // grid has two spellings: an empty name fits "ROOT" and "ROOT" fits an
  // empty value, both without regard to case.
  bool CompareDataSetAttribute(int32_t iType, const std::string& zValue, bool qCaseSensitive);
  // The first column whose "VARIABLE" is zVariable (any case), or 0.
  int32_t IndexFromVARIABLE(const std::string& zVariable);
  // The first column whose tree path fits the `\`-separated header, or -1.
  int32_t IndexFromHEADERCOLUMN(const std::string& zHeader);
  // The first column whose full key (the data set's key prefix joined with
  // the column's tree view key) is zKey, which comes back upper-cased; -1.
  int32_t IndexFromTVInfo(std::string& zKey);
  // The first column whose TreeViewPath is exactly zKey, or -1.
  int32_t IndexFromTVKEY(const std::string& zKey);
  // Distinct non-empty texts of one attribute (compared without regard to
  // case), first spelling kept. The array grows 10 at a time and is not cut:
  // nHeaders tells how many entries count.
  void GetUniqueTabStripHeaders(int32_t iType, Array<std::string>& zHeaders, int32_t& nHeaders,
                                bool& qOK);
  // Distinct members of the columns of a class, in order of first sight;
  // cached for the class last asked (the cache goes when attributes change).
  void GetUniqueMembersOfClass(const std::string& zClass, Array<std::string>& zMembers,
                               int32_t& nMembers, bool& qOK);
  // The texts of the "VARIABLE" pool.
  void GetUniqueVectors(Array<std::string>& zVectors, int32_t& nVectors, bool& qOK);
  // The texts of the pool of an id from 1 to 13; another id gives qOK false
  // with the outputs untouched.
  void GetStoredItems(int32_t iType, Array<std::string>& zItems, int32_t& nItems, bool& qOK);
  // Which of the packed records (233 by nHeaders) are columns of this data
  // set: iCols(k) is the last column whose record equals record k (without
  // regard to case), 0 for none; nFound counts every match.
  void ReturnListOfExistingCols(const Array2<uint8_t>& bHeaders, int32_t nHeaders,
                                Array<int32_t>& iCols, int32_t& nFound, bool& qOK);
  // The columns of iStart..iEnd (-1: first, last) whose attributes are all
  // the wanted texts. Each text is turned into its pool cell once, and a text
  // the data set does not hold refuses the search before any column is
  // read. Faults are ignored without a trace line.
  void SearchDataSet(const Array<int32_t>& iAttribute, const Array<std::string>& zAttribute,
                     int32_t nAttribute, Array<int32_t>& iList, int32_t& nList, bool& qOK,
                     int32_t iStart = -1, int32_t iEnd = -1, bool qExitAfterOne = false);
  // The rows of the active life of an item (rates of production and
  // injection), computed once per class and item. Always returns false;
  // the answer is in iStart and iEnd.
  bool GetIndexRange(const std::string& zClass, const std::string& zItem, int32_t& iStart,
                     int32_t& iEnd);
  // The rate and total names that tell an item's life, as a string array
  // (empty when the simulator or class has none).
  Variant GetAutoScaleVectorList(const std::string& zClass, const std::string& zPhase);
  // The rows between which the first of those vectors that has data carries
  // it; -1, -1 when none does.
  void GetAutoScaleLimits(const std::string& zClass, const std::string& zMember,
                          const std::string& zPhase, int32_t& iStart, int32_t& iEnd);
  // The stretch of a series with values above 0, widened by one row at each
  // end where there is room; the outputs stay as they were when no value is
  // above 0.
  void GetStartAndEndTime(const Array<float>& values, int32_t& iStart, int32_t& iEnd);

  // ======== Fetch on demand ==========================================================
  // A data set on fetch on demand knows only where each column lies in its
  // source file (the location table a reader gives); a column is read, or
  // computed from other columns, when it is first asked for, and can be
  // dropped again. Reads go through SimFileIO; the file stays open between
  // reads of the same file.

  // One entry of the location table. For a stored column: its count of
  // values, the two words of its record's position and the flag word. For a
  // derived column the position words hold the run of its arguments
  // (iDQPtr, nDQPars), or the two operands of the complement rule.
  struct FODPointer {
    int32_t nValues = 0;
    int32_t iPos1 = 0;
    int32_t iPos2 = 0;
    int32_t iFlags = 0;
  };

  bool get_FetchOnDemandActive() const { return fetch_.qFetchOnDemand; }
  void let_FetchOnDemandActive(bool q) { fetch_.qFetchOnDemand = q; }
  // True moves every column into the row buffers for good (LoadAllData).
  bool get_LoadAllVectors() const { return fetch_.qLoadAllVectors; }
  void let_LoadAllVectors(bool q);
  // The location table from iPosArray(1..5, 1..NumCols): rows 1 to 4 the
  // count, flags and the two position words, row 5 the file index. Every
  // column becomes unloaded. A table for another column count changes
  // nothing and gives qOK false. Settings 3 and 4 are kept swapped, and
  // swapped back when a file is opened.
  void AssignFODPointers(const Array<bool>& qFileTypeSettings, const Array2<int32_t>& iPosArray,
                         bool& qOK);
  // The same, with the argument columns of derived columns and the factors
  // of converted ones. Under fetch on demand both wait for the load;
  // otherwise the columns are converted and computed now when asked.
  void AssignFODPlusPointers(const Array<bool>& qFileTypeSettings, const Array2<int32_t>& iPosArray,
                             const Array<int32_t>& iDQArray, const Array<float>& sUCFactors,
                             bool& qOK, bool qConvertUnitsNow = false, bool qCalculateDQsNow = false);
  // Opens the column's file, loads the column and closes the file. False
  // for a column already loaded; on a failed read the file stays open.
  void LoadFODVector(int32_t ThisCol, bool& qOK);
  // The same for a list of columns, with one open and one close.
  void LoadFODVectors(const Array<int32_t>& iColumns, int32_t nCols, bool& qOK);
  // One value read from the file without loading the column.
  void LoadFODValue(int32_t ThisColumn, int32_t ThisRow, float& sValue, bool& qOK);
  // DeleteAVector with the host told, under fetch on demand only.
  void DeleteFODVector(int32_t iCol, bool& qOK);
  // Drops a loaded column's values and clears its computed and converted
  // bits. qUnload false keeps the column counted as loaded (its values then
  // live in the row buffers). qOK is always true.
  void DeleteAVector(int32_t iCol, bool& qOK, bool qUnload);
  // The whole column (its column-list check passed), loaded when needed and
  // dropped again afterwards when a drop was asked for.
  bool GetFODVector(int32_t ThisCol, Array<float>& ThisColumnValues);
  // The same, through the row list when one is in force.
  bool GetFODValues(int32_t ThisCol, Array<float>& ThisColumnValues);
  // The columns whose values are in memory.
  void GetLoadedVectors(Array<int32_t>& iColumns, int32_t& nCols, bool& qOK);
  // False unless on fetch on demand, for a valid column, loaded.
  bool FetchOnDemandColumnLoaded(int32_t ThisCol) const;
  // Limits of the loaded columns, or of iColumn alone when it is valid.
  void InitialiseColumnLimitsFOD(bool& qOK, int32_t iColumn = 0);
  // The flag word, read by field. Without a table, or for an invalid column,
  // each answers its default.
  int32_t GetFODVarType(int32_t iCol);
  // For a stored column false with -1, -1, 0.
  bool GetFODDerivedFlags(int32_t iCol, int32_t& iADQ, int32_t& iDQPtr, int32_t& nDQPars);
  bool GetFODDQLoaded(int32_t iCol);
  bool GetFODConverted(int32_t iCol);
  // iConvPtr is -1 when nConvPars is below 1.
  bool GetFODConvertFlags(int32_t iCol, int32_t& iConvPtr, int32_t& nConvPars);
  // Bit 3 or bit 15.
  bool GetFODCompress(int32_t iCol);
  // Every field at once; the compression here is bit 3 alone.
  void GetAllFODFlags(int32_t iCol, int32_t& iVarType, bool& qCompress, bool& qDerived,
                      int32_t& iADQ, int32_t& iDQPtr, int32_t& nDQPars, bool& qConvert,
                      int32_t& iConvPtr, int32_t& nConvPars, bool& qOK);

  // The steps the operations above are made of.
  // Reads or computes one column into its own values (the file must be
  // open). An already loaded column answers true at once.
  void LoadAVector(int32_t iCol, bool& qOK, bool qEvent);
  // One value of a stored column from the file. A derived column computes
  // its whole column instead and leaves sValue alone.
  void LoadAValue(int32_t iCol, int32_t iRow, float& sValue, bool& qOK);
  // The column's values, loaded when needed. qOK is always true.
  void GetAVector(int32_t iCol, Array<float>& sValues, bool& qOK);
  // The row mask's count, or the longest uncompressed column; -1 for none.
  int32_t RowCount() const;
  // Moves every column into one row buffer and leaves fetch on demand. The
  // host may cancel between columns, leaving the data set half moved.
  void LoadAllData(bool& qOK);
  // Opens the file of column iCol into cFILETYPE (a file already open under
  // that name is kept), or closes it; xIO goes too when qCloseIO.
  void InitFOD(bool qOpen, int32_t iCol, std::shared_ptr<RecordFile>& cFILETYPE,
               std::shared_ptr<SimFileIO>& xIO, bool qCloseIO, bool& qOK);
  void GetFODValue(int32_t iRow, int32_t iCol, float& sValue, bool& qOK);
  // Row iRow of every column (1..NumCols).
  void GetRowValuesFOD(int32_t iRow, Array<float>& sValues, bool& qOK);
  // Rows iRow1..iRow2 of every column; the two are put in order in the
  // caller's variables. The columns stay loaded.
  void GetMultipleRowValuesFOD(int32_t& iRow1, int32_t& iRow2, Array2<float>& sValues, bool& qOK);
  // The extracts of the loaded columns (of the column list, when one is in
  // force); FODExtractArray reads every column.
  void FODExtractHeaders(Array<std::string>& zHeaders, bool& qOK);
  void FODbExtractHeaders(Array2<uint8_t>& bHeaders, bool& qOK);
  void FODExtractDataArray(Array2<float>& sData, int32_t& nCols, bool& qOK);
  void FODExtractArray(Array2<float>& sData, int32_t& nCols, bool& qOK);
  // A cell written into the column's own values (loading it first).
  void SetValuesFOD(int32_t Row, int32_t Column, float dVal);


 private:
  // The column's entry of the location table; null without a table or for
  // a column outside it.
  const FODPointer* FODEntry(int32_t iCol) const;
  FODPointer* FODEntry(int32_t iCol);
  // The values a column holds: its own, or for a column moved into the row
  // buffers by LoadAllData its cells there. Null with n 0 for none.
  const float* HeldValues(int32_t iCol, int32_t& n) const;
  // Whether the column list lets the column through.
  bool InColumnList(int32_t iCol) const;
  // Branch A of LoadAVector: a column stored in the file.
  void LoadStoredColumn(int32_t iCol, bool& qOK);
  // Branch B: a column computed from others. False when the load ends
  // without its completion (an argument could not be read).
  bool LoadDerivedColumn(int32_t iCol, int32_t iADQ, int32_t iDQPtr, int32_t nDQPars, bool& qOK);
  // The complement rule of a derived column (value 1 less its operands).
  bool LoadComplementColumn(int32_t iCol, bool& qOK);
  // The column's cells at rows as held, for writing (own values, or the
  // row buffer of a column moved there); null for none.
  float* HeldCells(int32_t iCol, int32_t& n);
  // The work block of a derived column: its nDQPars argument columns, each
  // of nRows values. qDrop drops arguments that were loaded for it.
  bool DerivedArguments(int32_t iDQPtr, int32_t nDQPars, int32_t nRows, bool qDrop,
                        Array2<float>& work);
  // The factors of a converted column, when the table holds them.
  bool ConversionFactors(int32_t iCol, Array<float>& factors, int32_t& nFactors);
  // The location table's copy steps shared by the two Assign operations.
  void AssignTable(const Array<bool>& qFileTypeSettings, const Array2<int32_t>& iPosArray);
  void ConvertAndComputeNow(bool qConvertUnitsNow, bool qCalculateDQsNow);
  // The common frame of GetFODVector and GetFODValues.
  bool FetchColumn(int32_t ThisCol, Array<float>& out, bool qRowList);

 public:

  // ======== Lifecycle and checks ====================================================
  // Marks the data set no longer initialised; the data stay until release.
  void Terminate() { qInitialised_ = false; }
  bool ValidColumn(int32_t iColumn, bool qCheckActive) const;
  bool ValidColumnIndex(int32_t iColumn) const { return iColumn >= 1 && iColumn <= headers_.nCols; }
  bool ValidWellIndex(int32_t iWell) const { return iWell >= 1 && iWell <= wells_.markers.NumWells; }
  bool IsMarkers() const { return wells_.markers.IsMarkers(); }

  // ======== Buffers and dimensions ==================================================
  // Column records to nItems afresh; with rows, buffer 1's array too.
  void Dimension(int32_t nItems, int32_t nRows = 0);
  void DimensionBuffer(int32_t iBuffer, int32_t nItems, bool& qOK, int32_t nRows = 0,
                       int32_t nCapacity = 0);
  void DimensionData(int32_t nItems, int32_t nRows, bool& qOK, bool qData = true);
  void DimensionDataBuffer(int32_t iBuffer, int32_t nItems, int32_t nRows, bool& qOK, bool qData,
                           bool qColumns);
  void RedimensionAllBuffersArray(int32_t nCount, bool qKeep);
  void RedimensionColumnData(int32_t nCount, bool& qOK, bool qAfresh);
  void Redimension(int32_t Rows);
  void ReDimensionBuffer(int32_t iBuffer, int32_t Rows);
  void RedimensionColumns(int32_t nColumns);
  void reDimensionColumnsBuffer(int32_t iBuffer, int32_t nColumns);
  // Finds the buffer of a row the way the appended buffers were always
  // searched: with several buffers the search starts at buffer 2 and the row
  // in the buffer is counted back from the previous buffer's rows in use.
  void TranslateRowToBufferAndRow(int32_t iRow, int32_t& iBuffer, int32_t& iRowInBuffer,
                                  bool& qOK) const;

  // ======== Whole arrays ============================================================
  void InitialiseColumnValues(const Array2<float>& dArr, bool& qOK);
  void InitialiseColumnValuesBuffer(int32_t iBuffer, const Array2<float>& dArr, bool& qOK);
  void InitialiseFrom2d(const Array2<float>& dArray, const Array<std::string>& zHeaders, bool& qOK);
  // Builds the data set from a block of values and packed headers. With a
  // scratch file name set, the values come by way of that file and dArray is
  // released.
  void bInitialiseFrom2d(Array2<float>& dArray, const Array2<uint8_t>& bHeaders, bool& qOK);
  void InitialiseFromByteStore(Array2<float>& dArray, const AttributePools& xStore,
                               const Array2<uint8_t>& bPointers, bool& qOK);
  // Appends the rows of dArray from iRowIn on behind the last row.
  void AddRowsToDatasetBuffer(const Array2<float>& dArray, bool& qOK, int32_t iRowIn = 1);
  // Appends the rows of dArray whose iColumn value is above the last stored.
  void AddRowsToDatasetBuffer_AsColumn(const Array2<float>& dArray, bool& qOK, int32_t iColumn = 1);
  // Moves the rows of all buffers into buffer 1.
  void MergeArrays(bool& qOK);
  void ExtractDataArray(Array2<float>& arr2d, bool& qOK);
  void ExtractArray(Array2<float>& arr2d, bool& qOK);
  void ExtractDataArrayBuffer(int32_t iBuffer, Array2<float>& arr2d, bool& qOK);

  // ======== Columns =================================================================
  // Adds one column after the last (merging buffers first when there are
  // several). zAttributes holds the 14 texts by attribute id.
  void AddDataColumn(const Array<float>& sVals, const Array<std::string>& zAttributes, bool& qOK,
                     int32_t iCreationType = 0);
  void AddColumn(const Array<float>& sVals, const Array<std::string>& zAttributes, bool& qOK,
                 int32_t iCreationType = 0);
  // The light form: extends only the column records (for columns held
  // outside the buffers).
  void AddColumn(const Array<float>& sVals, const Array<std::string>& zAttributes, bool& qOK,
                 int32_t iCreationType, bool qRecordsOnly);
  // One column of all rows, buffer after buffer. The output keeps its
  // allocation when it already has bounds 1..NumRows.
  bool GetValues(int32_t ThisCol, Array<float>& ThisColumnValues);
  bool GetValue(int32_t Row, int32_t Column, float& dVal);
  bool GetValueBuffer(int32_t iBuffer, int32_t Row, int32_t Column, float& dVal);
  // Always writes buffer 1, then widens the column's limits.
  void SetValue(int32_t Row, int32_t Column, float dVal);
  void SetValueBuffer(int32_t iBuffer, int32_t Row, int32_t Column, float dVal);
  void SetValues(int32_t Index, const Array<float>& sVals, bool& qOK);
  void SetColumnValues(int32_t Index, const Array<float>& sVals, bool& qOK);
  void SetValuesOnly(int32_t Index, const Array<float>& sVals, bool& qOK);
  void SetValuesBuffer(int32_t iBuffer, int32_t Index, const Array<float>& sVals, bool& qOK,
                       bool qUpdateLimits);
  // One row across all columns (1..NumCols), or rows iRowFirst..iRowLast as
  // (1..n, 1..NumCols).
  bool GetRowValues(int32_t iRow, Array<float>& sVals);
  bool GetRowValuesMulti(int32_t iRowFirst, int32_t iRowLast, Array2<float>& sVals);
  bool GetRowValuesBuffer(int32_t iBuffer, int32_t iRowInBuffer, float* sRow) const;
  // The column's values at the rows whose mask entry is true.
  void GetMaskedValues(int32_t iColumn, const Array<bool>& qMask, Array<float>& sVals,
                       int32_t& nVals, bool& qOK);
  // Address of row 1 (or of iRow) of the column in buffer 1, 0 when none.
  // Several buffers are merged first. Valid until the storage next changes.
  std::intptr_t ValuesPtr(int32_t ThisCol);
  std::intptr_t ValuesRowPtr(int32_t ThisCol, int32_t ThisRow);
  int16_t GetCreationType(int32_t iColumn) const;
  void SetCreationType(int32_t iColumn, int16_t iCreationType);
  bool get_qLoaded(int32_t iVector) const;
  void let_qLoaded(int32_t iVector, bool qLoaded);

  // ======== Column attributes =========================================================
  void GetStoredAttribute(int32_t iColumn, int32_t iAttribute, std::string& zAttribute,
                          int32_t& nLength, bool& qOK, bool qCheck);
  bool GetAttribute(int32_t Index, int32_t iType, std::string& zAttribute);
  // ids 1..14 into Attributes(1..14), sizing it when shorter.
  bool GetAttributes(int32_t ThisCol, Array<std::string>& Attributes);
  // The ids of iList; nList below 1 means all of iList.
  bool GetListedAttributes(int32_t ThisCol, const Array<int32_t>& iList,
                           Array<std::string>& Attributes, int32_t nList);
  int32_t GetStoredAttributeSize(int32_t iColumn, int32_t iAttribute, bool qCheck);
  int32_t NumberStoredAttributes(int32_t iAttribute) const;
  void SetAttributes(int32_t ThisCol, const Array<std::string>& zAttributes, bool& qOK);
  // One value for the whole data set.
  bool SetAttribute(int32_t iAttribute, const std::string& zValue);
  bool SetColumnAttribute(int32_t iColumn, int32_t iAttribute, const std::string& zValue);
  int32_t FindAttributePosition(int32_t iAttribute, const std::string& zText);
  void CompareAttribute(int32_t iColumn, int32_t iAttribute, const std::string& zText, int32_t iCell,
                        bool qCheck, bool& qResult);
  void SetByteStore(int32_t iAtt, const std::shared_ptr<ByteStore>& xStore, bool& qOK);
  void GetByteStore(int32_t iAtt, std::shared_ptr<ByteStore>& xStore, bool& qOK) const;
  void SetByteStoreArray(const AttributePools& xStore, bool& qOK);
  void GetByteStoreArray(AttributePools& xStore, bool& qOK) const;
  // Takes the 14 pools by reference and the 24-byte pointer records
  // (1..24, 1..NumCols) as they stand.
  void InitialiseByteStore(const AttributePools& xStore, const Array2<uint8_t>& bPointers, bool& qOK);
  void bInitialiseColumnAttributes(const Array2<uint8_t>& bHeaders, bool& qOK);
  void InitialiseColumnAttributes(const Array<std::string>& zHeaders, bool& qOK);
  // Resets the attribute pointers of the columns from iFirstColumn on.
  void InitColumnDataArray(int32_t iFirstColumn, bool& qOK);
  // The class index and the well names taken from it.
  void GetClassIndex(Array<CLASSDATA>& ClassData, int32_t& nClasses, Array<int32_t>& ClassMemberList,
                     int32_t& nList) const;
  std::string getMemberName(int32_t n) const;
  const Array<WELLINFO>& get_Wells() const { return wells_.markers.Wells; }
  // The kernel object of the columns computed at load time.
  const std::shared_ptr<mxAutomaticDQ>& get_ADQ() const { return xADQ_; }

  // ======== Limits ==================================================================
  bool GetColMinMax(int32_t ThisCol, float& dMinVal, float& dMaxVal, bool qReCalc = false);
  bool SetColMinMax(int32_t ThisCol, float dMinVal, float dMaxVal);
  void CalcMinMax(int32_t iColumn, float& dMinVal, float& dMaxVal, bool& qOK);
  void VectorMinMax(const Array<float>& sVals, float& dMinVal, float& dMaxVal, bool& qOK) const;
  void InitialiseColumnLimits(bool& qOK);
  void UpDateColumnLimits(int32_t iColumn, float dVal);

  // ======== Packed headers ============================================================
  void packSinglebHeaders(const std::shared_ptr<ByteStore>& xPool, int32_t iAttribute,
                          Array2<uint8_t>& bHeaders, bool& qOK);
  void packbHeaders(Array2<uint8_t>& bHeaders, bool& qOK);
  void packbHeader(int32_t iColumn, const std::shared_ptr<ByteStore>& xPool, int32_t iAttribute,
                   Array<uint8_t>& bRecord, bool& qOK);
  void packbHeader(int32_t iColumn, Array<uint8_t>& bRecord, bool& qOK);
  void UnpackbHeader(const Array2<uint8_t>& bHeaders, int32_t iAttribute,
                     std::shared_ptr<ByteStore>& xPool, bool& qOK, int32_t nReserve,
                     int32_t iFirstColumn);
  void UnpackbHeaders(const Array2<uint8_t>& bHeaders, bool& qOK, int32_t iFirstColumn = 1);
  void UnpackSinglebHeader(int32_t iColumn, const Array<uint8_t>& bRecord, int32_t iAttribute,
                           std::shared_ptr<ByteStore>& xPool, bool& qOK);
  void unPackSinglebHeaders(int32_t iColumn, const Array<uint8_t>& bRecord, bool& qOK);
  // For an active column: the first 233 characters of the text as its record.
  bool SetUDTAttribute(int32_t Index, const std::string& zAttrib232);
  // True: a new, empty array of 14 pools. False: the array is erased.
  void InitByteStorage(bool qCreate, bool& qOK);
  void bExtractDataHeaders(Array2<uint8_t>& bHeaders, bool& qOK);
  void bExtractHeaders(Array2<uint8_t>& bHeaders, bool& qOK);
  void bgetHeaders(Array2<uint8_t>& bHeaders, bool& qOK);
  void bExtract2dArrays(Array2<float>& arr2d, Array2<uint8_t>& bHeaders, bool& qOK);
  void bExtractData(Array2<float>& arr2d, Array2<uint8_t>& bHeaders, bool& qOK);
  void ExtractHeaders(Array<std::string>& zHeaders, bool& qOK);
  void ExtractDataArrays(Array2<float>& arr2d, Array<std::string>& zAttrib2d, bool& qOK);
  void Extract2dArrays(Array2<float>& arr2d, Array<std::string>& attrib2d);
  bool bGetAttributes(int32_t ThisCol, Array<uint8_t>& bAttributes);

  // ======== Text export ===================================================================
  // Asks whether to write the extended layout ("[MXINFO]", "[HEADERS]",
  // "[DATA]") and writes the file named by zAlternativeFile, or by FileName
  // when that is empty, as comma-separated text with CR LF line ends. The
  // plain layout stops silently on a data set that is not initialised, has no
  // rows or no columns, or on an empty name. A file that cannot be written
  // logs the trace line and leaves the data set as it was; otherwise the
  // host is told the file was saved and IsDirty is cleared.
  void WriteAsCSV(const std::string& zAlternativeFile = std::string());
  // One of the text reader's settings as text in vData: "DATA", "DATEFORMAT",
  // "FIXEDLENGTH", "INDEX", "LGR", "NAME", "UNIT", "VERBOSE", "WELL" in any
  // case; another name leaves vData alone.
  void GetTextFileProperty(const std::string& zProperty, Variant& vData) const;
  // A diagnostic hook: reads the data set's main properties and does nothing
  // with them.
  void DEBUGPRINT() const;

  // ======== Markers and wells ===========================================================
  // The well and marker records cross the boundary raw (92 and 36 bytes a
  // record, host byte order), as a marker byte array ("MK32", "MKEX" or the
  // older form) or as the variant table vMarkers (1..55, 1..n). Each building
  // operation replaces both arrays as a whole.
  Array<uint8_t> get_WELLINFO() const;
  void let_WELLINFO(const Array<uint8_t>& bWellInfo);
  // Sized from the well records allocated, not from NumMarkers, and its let
  // sets that count: the pair has always worked so.
  Array<uint8_t> get_MARKERINFO() const;
  void let_MARKERINFO(const Array<uint8_t>& bMarkerInfo);
  void SetMarkersb(int32_t nMarker, const Array<uint8_t>& bMarker, bool& qOK);
  // "MK32" of every marker, or of the markers inside the sector box when one
  // is set, shifted to it.
  void GetMarkersByte(int32_t& nMarker, Array<uint8_t>& bMarker, bool& qOK);
  void SetMarkers(int32_t n, const Array2<Variant>& vMarkers, bool& qOK);
  void GetMarkers(int32_t& n, Array2<Variant>& vMarkers, bool& qOK);
  void setMarkerINTEHead(int32_t n, int32_t iH12, int32_t iH13, Array<int32_t>& iHead,
                         int32_t& nHead, bool& qOK, bool qExtended = false, bool qFloats = false);
  void getMarkerINTEHead(const Array<uint8_t>& bMarker, Array<int32_t>& iHead, int32_t& nHead,
                         bool& qOK);
  void MoveAllMarkersToTopLayer();
  bool GetMarkerFromIJK(int32_t i, int32_t j, int32_t k, int32_t& iFound, std::string& zWellName,
                        std::string& zStyle, int32_t& iStatus, std::string& zStatus);
  // The wells of the markers, in well order.
  void getWellNamesfromMarkers(Array<std::string>& zWells, int32_t& nWells);
  std::intptr_t get_WellsPtr() const;
  std::intptr_t get_MarkersPtr() const;
  // The most connections of a well, as the records were last built.
  int32_t getMaxMarkerCount() const { return wells_.markers.nMaxConnections; }
  void GetSectorBox(int32_t& iXL, int32_t& iXU, int32_t& jYL, int32_t& jYU, int32_t& kZL,
                    int32_t& kZU) const;
  void SetSectorBox(int32_t iXL, int32_t iXU, int32_t jYL, int32_t jYU, int32_t kZL, int32_t kZU);

  // ======== Grid names, files, row and column lists ================================  // Names ended by a blank, each cut to 16 bytes: a name after the last
  // blank is dropped; with no blank at all the first 16 bytes are one name.
  void SetGridNames(const Array<uint8_t>& bGridNames, bool& qOK);
  // One name per element 1..UBound, each cut to 16 bytes.
  void SetGridNamesString(const Array<std::string>& zGridNames, bool& qOK);
  // The names trimmed; one empty name when there are none.
  void GetGridNames(Array<std::string>& zGridNames, bool& qOK) const;
  // Names 1 .. nGrids-1 only: the last name is never given here, so a data
  // set of one grid answers false. That bound has always stood.
  void GetGridName(int32_t iRow, std::string& zGridName, bool& qOK) const;
  // Takes the caller's pool of source file names over (xFileList comes back
  // null); nFiles 0 means the data set reads FileName alone.
  void SetFileList(std::shared_ptr<ByteStore>& xFileList, int32_t nFiles, bool& qOK);
  // The source file of a column: FileName without a file list, else the
  // list's name of the column's file ("" when the list has none).
  std::string GetFileName(int32_t iColumn);
  // 1, or the column's file in the list when the location table keeps one
  // file a column.
  void GetFileIndex(int32_t iColumn, int32_t& index) const;
  // A list of 1 .. NumRows-1 entries is kept (the first nRowList entries of
  // iRowList, in the caller's order); an empty one, or one as long as the
  // table or longer, means all rows and leaves no list.
  void SetRowList(const Array<int32_t>& iRowList, int32_t nRowList, bool& qOK);
  // The same against NumCols. The column list is the column mask of the
  // extracts and of bExtractHeaders.
  void SetColumnList(const Array<int32_t>& iColumnList, int32_t nColumnList, bool& qOK);
  // nRowList 0 and iRowList untouched when there is no list.
  void GetRowList(Array<int32_t>& iRowList, int32_t& nRowList, bool& qOK) const;
  void GetColumnList(Array<int32_t>& iColumnList, int32_t& nColumnList, bool& qOK) const;
  // The lists as one value: the entries (unallocated for no list); a let is
  // SetRowList / SetColumnList of the whole array.
  Array<int32_t> get_RowList() const;
  void let_RowList(const Array<int32_t>& iRowList);
  Array<int32_t> get_ColumnList() const;
  void let_ColumnList(const Array<int32_t>& iColumnList);
  // The selections back to their start: the only-list (one blank record,
  // flag off), no row list, no column list.
  void ClearLists();
  // Texts of a volumetric calculation, kept for the host as given.
  void AddVCParameters(const std::string& zTimeSteps, const std::string& zVectors,
                       const std::string& zRegions, const std::string& zCalculations,
                       const std::string& zWeight, bool& qOK);
  int32_t get_NumberOfVolumetricCalcs() const { return lists_.nVolumetricCalcs; }
  // A position outside 1..NumberOfVolumetricCalcs is fault 9, traced, with
  // the outputs untouched.
  void GetVCParameters(int32_t iVolCalc, std::string& zTimeSteps, std::string& zVectors,
                       std::string& zRegions, std::string& zCalculations, std::string& zWeight,
                       bool& qOK) const;

  // ======== Well lists =====================================================================
  // Lists hold positions in the well records, so a name that is no well
  // never enters one. Names of lists compare with case; the wells of a list
  // are joined with ";" for comparison and for the host.
  // Named lists gone, the active list empty; qSetWELLLIST, qUseWellList and
  // the row mask keep their values.
  void ClearWellLists(bool& qOK);
  // The active list ("ACTIVE") from names; no non-empty name: qOK false and
  // nothing changed; no name a well: qOK true, qSetWELLLIST false.
  void SetWELLLIST(const Array<std::string>& zWellList, bool& qOK);
  // Makes or replaces the named list.
  void addWellList(const std::string& zName, const Array<std::string>& zWellList, bool& qOK,
                   int32_t MasterList = -1);
  // "ACTIVE" in any case sets the active list; any other name appends as
  // WH_AppendWellList does.
  void SetNamedWellList(const Array<std::string>& zWellList, const std::string& zThisWellListName);
  // The names of the active list; with no wells the array is untouched.
  void GetWellList(Array<std::string>& zWellList, int32_t& nWells, bool& qOK) const;
  // A named list's wells; an unknown name leaves the outputs, qOK true.
  void WH_GetWellListDetails(const std::string& zName, int32_t& nWells, Array<std::string>& zWells,
                             bool& qOK) const;
  // The same with the names joined by ";" (written only for a known name).
  void WH_GetWellListDetailsByName(const std::string& zName, int32_t& nWells,
                                   Array<std::string>& zWells, std::string& zDelimited,
                                   bool& qOK) const;
  // Adds the list unless a list of the same wells (any case) exists. A list
  // k of the same name (any case) turns the name into name-k, so the
  // caller's text may change; an empty name becomes Origin-<lists so far>.
  void WH_AppendWellList(const Array<std::string>& zWellList, std::string& zThisListName);
  // Every named list as its name and its wells joined by ";"; the arrays are
  // untouched when there are none.
  void WH_GetDelimitedLists(int32_t& nLists, Array<std::string>& zNames,
                            Array<std::string>& zDelimited, bool& qOK) const;
  // Takes the list out, the rest keeping their order; deleting the last
  // named list also empties the active list.
  void WH_DeleteWellListByName(const std::string& zName, bool& qOK);
  // The active list has wells: set and cleared by the active list alone.
  bool get_qSetWELLLIST() const { return wells_.qSetWELLLIST; }
  // Whether the host wants the active list used.
  bool get_qUseWellList() const { return wells_.qUseWellList; }
  void let_qUseWellList(bool q) { wells_.qUseWellList = q; }
  int32_t get_nWellLists() const { return wells_.nWellLists; }
  int32_t get_nWellListsAllocated() const { return wells_.nWellListsAllocated; }
  // The row mask of reads: with qMask and nMask above 0 the count and a copy
  // of iMask, otherwise no mask.
  void SetMask(bool qMask, const Array<int32_t>& iMask, int32_t nMask, bool& qOK);
  // ======== Table and derived views =====================================================
  // One tabulated function, held by reference (a copy of the data set shares
  // it). While a table is set, column limits are always computed afresh from
  // the table's column view and an extract is filled from its product form.
  bool get_qTableSet() const { return table_.qTableSet; }
  void let_qTableSet(bool q);
  void SetTable(const std::shared_ptr<mxTable>& cTable, bool& qOK);
  // The table held; qOK false when none is set.
  void GetTable(std::shared_ptr<mxTable>& cTable, bool& qOK) const;
  // Forwarded to the table when one is set; false otherwise.
  void GetTabulatedValue(const Array<int32_t>& iVars, float& dVal, bool& qOK);
  void GetTableVariableValue(int32_t iVariable, int32_t Index, float& vData, bool& qOK);
  void GetNumberVarsInTable(int32_t& nVariables, bool& qOK);
  // The saturation columns of a ternary diagram: iTern(1..3) the oil, gas and
  // water columns ("SO"/"SOM", "SG"/"SGM", "SW"/"SWM", any case), the last
  // match of a phase winning; with all three the minima of their records.
  void GetTernaryColumns(bool& qTernExists, Array<int32_t>& iTern, float& sTernOilMin,
                         float& sTernGasMin, float& sTernWatMin, bool& qOK);
  // The same with the names of the simulator: "SOIL"/"SO"... outside VIP;
  // in VIP the matrix ("SOM"/"SO"...) or the fracture ("SOF"...) names.
  void GetTernaryColumnsDP(bool& qTernExists, Array<int32_t>& iTern, float& sTernOilMin,
                           float& sTernGasMin, float& sTernWatMin, bool qDPMatrix, bool& qOK);
  // Whether the three columns exist; when they do their minima are kept for
  // GetTernaryDataLimits.
  bool qTernaryColsExist();
  bool qTernaryColsExistDP(bool qDPMatrix);
  void GetTernaryDataLimits(float& sTernOilLimit, float& sTernGasLimit, float& sTernWatLimit) const;
  // Every column's address, name and limits in one call, with the ternary
  // columns by phase in iTern(1..6) (the fracture slots 4..6 in VIP only).
  // Columns still on disk are not loaded for it: address and limits 0.
  void GetAllValuesPtrs(Array<std::intptr_t>& iPtrs, int32_t& NumPtrs, Array<std::string>& zHeads,
                        Array<uint8_t>& bHeads, Array<float>& sMins, Array<float>& sMaxs,
                        Array<std::intptr_t>& iTern);
  // The matrix and fracture names and columns of a dual porosity array. Only
  // VIP and NEXUS data sets have two halves; otherwise, and when only one
  // half is present, both halves are the column given or found.
  void DualPorosityArrayNames(const std::string& zArray, int32_t iCol, std::string& zMatrix,
                              int32_t& iMatrix, std::string& zFracture, int32_t& iFracture,
                              bool& qOK);
  // The matrix values then the fracture values, nValues each; nValues is
  // doubled.
  void getDualPorosityArray(const std::string& zArray, int32_t iCol, int32_t& nValues,
                            int32_t& iMatrix, int32_t& iFracture, Array<float>& sValues, bool& qOK);

  // ======== Memory squeeze ==============================================================
  // Fills a buffer from dArray by way of the scratch file when memory is too
  // fragmented for a second copy to stand beside the first.
  void MemorySqeeezeBuffer(int32_t iBuffer, Array2<float>& dArray, bool& qOK);
  // Writes a block of values in the scratch file layout that the squeeze path
  // reads (a dimensions record, then the values); for readers that stage
  // their data on disk before handing it over.
  static bool WriteScratchFile(const std::string& zFileName, const Array2<float>& dArray);

 private:
  // One row buffer: rows vary fastest, so a column is contiguous.
  struct DATABUFFER {
    Array2<float> values;     // (1..capacity, 1..columns)
    int32_t nRowsInUse = 0;
    int32_t nColumns = 0;
    int32_t nCapacity = 0;
  };

  // Memory that appended buffers are carved from, a few megabytes at a time,
  // so that an append does not take fresh memory page by page. Fresh memory
  // is zero, and none of it is handed out twice.
  struct AppendChunk {
    uint8_t* base = nullptr;
    std::size_t bytes = 0, used = 0;
    AppendChunk() = default;
    AppendChunk(const AppendChunk&) = delete;
    AppendChunk& operator=(const AppendChunk&) = delete;
    ~AppendChunk();
  };

  void InitialiseVariables();
  void MakeAppendedBuffer(DATABUFFER& buf, int32_t nRows, int32_t nColumns, int32_t nCapacity);

  // Storage internals (no guard: they run under the caller's).
  void DimensionBufferArray(DATABUFFER& buf, bool qKeep, int32_t nRows, int32_t nColumns,
                            int32_t nCapacity);
  void ResizeColumnRecords(int32_t nCount, bool qAfresh);
  void CopyIntoBuffer(DATABUFFER& buf, const Array2<float>& dArr, int32_t nRows, int32_t nCols);
  bool CopyWithLimits(DATABUFFER& buf, const Array2<float>& dArr, int32_t nRows, int32_t nCols);
  void SetValuesBufferCore(int32_t iBuffer, int32_t Index, const float* sVals, int32_t nVals,
                           bool qUpdateLimits);
  void MergeArraysCore();
  void ApplyDefaultX();
  std::intptr_t ColumnAddress(int32_t ThisCol, int32_t ThisRow);
  void LoadWholeArray(Array2<float>& dArray, bool qZeroTest, bool& qGo);

  // Tree path internals.
  std::string_view AttributeView(int32_t iColumn, int32_t iAttribute) const;
  static int32_t TreePathAttributes(std::string_view zType, bool qLastTokenRule,
                                    std::array<int32_t, 6>& ids);
  std::string BuildTreeViewPathLastToken(int32_t iColumn);

  // The description array handed back; used when a data set is stored or
  // made like another.
  bool GetClassVarsFromAttributes(Array<Variant>& vAttributes);
  // The store offers it to the host by position (DSGetClassVarsFromAttributes).
  friend class mxDataStore;

  // Attribute internals.
  ByteStore* Pool(int32_t iAttribute) const;
  ByteStore& MakePool(int32_t iAttribute);
  std::string ComputedTreePath(int32_t iColumn);
  void SetStoreAttribute(int32_t iAttribute, const std::string& zValue);
  void SetSingleStoreAttribute(int32_t iColumn, int32_t iAttribute, const std::string& zValue);
  void StoredAttributeCore(int32_t iColumn, int32_t iAttribute, std::string& zAttribute,
                           int32_t& nLength, bool& qOK, bool qCheck);
  void RebuildClassIndex(bool& qOK);
  void RebuildWellNames(bool qOK);
  bool UnpackbHeadersCore(const Array2<uint8_t>& bHeaders, int32_t iFirstColumn);
  void UnpackSingleCore(int32_t iColumn, const Array<uint8_t>& bRecord, int32_t iAttribute);
  void PackRecordCore(int32_t iColumn, const ByteStore* pool, int32_t iAttribute,
                      Array<uint8_t>& bRecord);

  // Query internals.
  // Drops what is derived from the columns' attribute pointers: the members
  // cache and the pointer index. Every write of a column's pointers calls it.
  void ColumnPointersChanged() {
    caches_.qMembersCached = false;
    caches_.pointerIndexValid.fill(false);
  }
  // The pointers of an id with a field, by column (element c-1 for column c).
  const int32_t* PointerColumn(int32_t iAttribute);
  void CalculateTimeRange(const std::string& zClass, const std::string& zItem);
  void SearchDataSetCore(const Array<int32_t>& iAttribute, const Array<std::string>& zAttribute,
                         int32_t nAttribute, Array<int32_t>& iList, int32_t& nList, bool& qOK,
                         int32_t iStart, int32_t iEnd, bool qExitAfterOne);
  void MembersFromCache(Array<std::string>& zMembers, int32_t& nMembers);
  void CacheMembers(const std::string& zClass, const Array<std::string>& zMembers, int32_t nMembers);

  // Limits internals.
  bool InitialiseColumnLimitsCore();  // false when the host cancelled
  bool LimitsOfColumns(int32_t iFirst, int32_t iLast);
  void VectorMinMaxCore(const float* s, int64_t n, float& dMin, float& dMax) const;

  // Text export internals.
  void WriteAsCSVExt(const std::string& zFile);
  // Writes the file in one of the two layouts and tells the host.
  void WriteCSVFile(const std::string& zFile, bool qExtended);

  // Memory squeeze internals.
  void copySingleData(Array2<float>& dArray, DATABUFFER& buf, bool& qOK);
  void ReadScratchFile(const std::string& zFileName, DATABUFFER& buf, bool& qOK);
  void RemoveScratchFile(const std::string& zFileName);

  // Grid name, file and well list internals (no guard: they run under the
  // caller's).
  struct WellListRecord {
    Array<uint8_t> bName;   // the name, single-byte
    int32_t nName = 0;
    Array<int32_t> iWells;  // positions in the well records
    int32_t nWells = 0;
    int32_t MasterList = 0;  // kept for the host
  };
  static constexpr int32_t kGridNameWidth = 16;
  static std::string WellListName(const WellListRecord& list);
  static void SetWellListName(WellListRecord& list, const std::string& zName);
  // Back to one unused named record and an empty "ACTIVE" list.
  void InitWellLists();
  // Names to well positions, in the order of the names; every free well of
  // an equal name (with case) enters once.
  void GetPointersToWellList(const Array<std::string>& zWellList, Array<int32_t>& iWells,
                             int32_t& nWells) const;
  void SetActiveWellList(const Array<std::string>& zWellList, bool& qOK, int32_t MasterList);
  // The place of the named list of exactly that name, or -1.
  int32_t FindWellListPosition(const std::string& zName) const;
  void GetOneNamedWellList(const std::string& zName, Array<std::string>& zWells, int32_t& nWells,
                           bool& qOK) const;
  // The wells of a list as names joined by ";".
  std::string DelimitedWellList(const WellListRecord& list) const;

  // ======== State, grouped by concern ===================================================
  // Each group's defaults are written once, here; InitialiseVariables resets
  // a group by assigning a fresh one and then sets what needs a computation
  // (today's date stamp, the blank only-record, the first buffer).

  // Where the data set came from and what it is called.
  struct SourceFields {
    std::string zOrigin, zUCaseOrigin, zUniqueKey;
    int32_t iIndex = -1;
    std::string zFileName, zScratchFileName;
    bool qScratchFile = false;
    std::string zCaseName, zSimCase;
    std::string zGroupName{kDefaultGroup}, zUCaseGroupName, zTVGroupName;
    std::string zTVDisplayRoot, zUCaseTVDisplayRoot, zDataRootPath, zDataRootUnique,
        zDataRootLeaf;
    std::string zDataClass, zSourceType, zSimulator;
    bool qEclipseNames = false;
    int32_t iFileType = kDefaultFileType, iUnits = 0;
    std::string zUnitSource, zUnitCurrent;
    int32_t iUnitDataSource = 0;
    std::string zDateStamp;
    int32_t iDateDay = 0, iDateMonth = 0, iDateYear = 0;
    std::string zLGRName, zTableName, zObsName;
    int32_t iCreationMethod = 0, iDataSetDerivedFrom = 0;
    bool qChild = false;
    float sTimeInDays = kDefaultTimeInDays;
    int32_t iBranch = 1;
    std::string zRTMFilePattern, zRTMFolder;
    bool qRTMMonitoring = false, qRTMRecurseFolders = false;
    std::shared_ptr<mxNotifyData> EventHandler, IOEventHandler;
  };

  // How the reader read the source: ranges, file positions and options.
  struct ReadingFields {
    int32_t iStart = -1, iEnd = -1, iReadPosL = -1, iReadPosH = -1;
    bool qNoRestart = true, qUnified = true, qFormatted = true, qAllData = true;
    bool qNoInactive = false, qSelectionOnly = false;
    bool qPerforations = false, qPerforationsSet = false;
    bool qDeleteAfterFetch = false, qDeleteNow = false, qIgnoreInGRF = false;
    bool qDualPorosity = false, qHysteresis = false, qEndPointScaling = false,
         qDirEndPointScaling = false, qRevEndPointScaling = false, qAltEndPointScaling = false;
    int32_t iPhase = 0;
  };

  // Nulls, the plot's default X column, accumulation and text-file rows.
  struct PlotFields {
    double dNullValue = kDefaultNullValue;
    int32_t iUseNullVal = 1;
    double dReaderNullValue = 0.0;
    bool qReaderSetNull = false;
    int32_t iDefaultX = -1;
    bool qAccumulate = false;
    int32_t iAccFrequency = 0;
    std::string zAccInterval;
    Date dAccSimDate, dAccAccDate;
    int32_t iAccRates = 0;
    int32_t iTextRowName = 0, iTextRowUnits = 0, iTextRowLGR = 0, iTextRowIndex = 0,
            iTextRowVerbose = 0, iTextRowWell = 0, iTextRowData = 0, iTextRowFixed = 0;
    std::string zTextRowDateFormat;
  };

  // The grid behind array data: dimensions, active-to-natural map, column map.
  struct GridFields {
    bool qINITA2NSet = false;
    Array<int32_t> iINITA2N;
    int32_t nINITA2N = 0;
    int32_t nx = 0, ny = 0, nz = 0;
    bool qColumnMap = false;
    Array<int32_t> iColumnMap;
    int32_t nCellsUncompressed = 0;
  };

  // The numbers: row buffers sharing the same columns.
  struct RowFields {
    int32_t nBuffers = 1;
    Array<DATABUFFER> buffers;
    std::shared_ptr<AppendChunk> appendChunk;
  };

  // The columns' headers: attribute pointers, limits, pools, class index.
  struct HeaderFields {
    int32_t nCols = 0;
    Array<COLUMNDATA> columns;
    AttributePools pools;
    Array<CLASSDATA> classData;
    Array<int32_t> classMemberList;
    int32_t nClasses = 0, nClassList = 0;
  };

  // Wells and markers, and the sector of the grid the markers are cut to.
  struct WellFields {
    MarkerSet markers;
    SectorBox box;
    bool qSectorBox = false;
    // Well lists: the named ones (records 1..nWellListsAllocated, the first
    // nWellLists in use) and the active one; InitWellLists fills them.
    Array<WellListRecord> WellLists;
    int32_t nWellLists = 0;
    int32_t nWellListsAllocated = 0;
    WellListRecord ActiveWellList;
    bool qSetWELLLIST = false;
    bool qUseWellList = false;
  };

  // Selections and small lists: the only-list, the row mask (SetMask), the
  // row and column lists (the column list is the extracts' column mask),
  // grid names, source files and the texts of volumetric calculations.
  struct ListFields {
    std::string zOnly;
    Array2<uint8_t> bOnly;
    bool qOnly = false;
    bool qRowMask = false;
    Array<int32_t> iRowMask;
    int32_t nRowMask = 0;
    bool qRowList = false;
    Array<int32_t> iRowList = Array<int32_t>(1, 1);
    int32_t nRowList = 0;
    bool qColumnList = false;
    Array<int32_t> iColumnList = Array<int32_t>(1, 1);
    int32_t nColumnList = 0;
    // Grid names: 16 bytes a record, (1..16, 1..nGrids), blank filled.
    Array2<uint8_t> bGridNames;
    int32_t nGrids = 1;
    std::shared_ptr<ByteStore> xFileList;
    int32_t nFiles = 0;
    int32_t nVolumetricCalcs = 0;
    Array<std::string> zVCTimeSteps, zVCVectors, zVCRegions, zVCCalculations, zVCWeight;
  };

  // Row ranges of items, by "class item".
  struct INDEXRANGE {
    int32_t iStart = 0;
    int32_t iEnd = 0;
    std::string zKey;
  };
  // The pointers of one attribute id for all columns, one after the other,
  // for searches that read an attribute of every column: a scan then reads
  // four bytes a column instead of a whole column record.
  static constexpr std::size_t kPointerIds = 15;  // ids 1..14

  // What queries keep between calls; every write of a column's pointers drops
  // what depends on them (ColumnPointersChanged).
  struct CacheFields {
    // Members of the class last asked for, 40 bytes a name, blank-padded.
    bool qMembersCached = false;
    std::string zMembersClass;
    int32_t nMembersCached = 0;
    Array2<uint8_t> bMembersCached;
    Array<INDEXRANGE> indexRanges;
    int32_t nIndexRanges = 0;
    std::array<std::vector<int32_t>, kPointerIds> pointerIndex;
    std::array<bool, kPointerIds> pointerIndexValid{};
  };

  // Columns that live on disk, and a tabulated function shown as rows (the
  // table's flag stays off until tables exist).
  struct FetchFields {
    bool qFetchOnDemand = false;
    bool qTableMode = false;
    // Columns on disk: the location table, how the file is opened, and
    // what derived and converted columns are computed from.
    bool qLoadAllVectors = false;
    bool qFODPointersSet = false;
    int32_t nFODPointers = 0;
    Array<FODPointer> FODPointers;
    bool qFileIndexSet = false;
    Array<int32_t> iFileIndex;
    // Element 0: assigned; 1 to 5 the reader's file settings, 3 and 4
    // swapped.
    std::array<bool, 6> qFODSettings{};
    bool qDQArraySet = false;
    Array<int32_t> iDQArray;
    bool qUCFactorsSet = false;
    Array<float> sUCFactors;
    // The open file and its reader, kept between reads.
    std::shared_ptr<RecordFile> cFILETYPE;
    std::shared_ptr<SimFileIO> xIO;
    // Columns whose load is under way: a derived column that names itself,
    // directly or through others, fails instead of recursing.
    std::vector<int32_t> loading;
  };

  // The table held, and the minima of the ternary columns last found.
  struct TableFields {
    bool qTableSet = false;
    std::shared_ptr<mxTable> cTable;
    float sTernOilLimit = 0.0f, sTernGasLimit = 0.0f, sTernWatLimit = 0.0f;
  };
  // The table's column view for CalcMinMax.
  bool TableColumn(int32_t iColumn, Array<float>& sValues);
  // Fills a buffer from the table's product form before an extract.
  void FillBufferFromTable(int32_t iBuffer);
  // Reads a column for a one-off view. Seam for the column fetch: a column
  // not loaded yet is to be read with qDeleteNow set, so that it goes back to
  // disk after the read; today every column read is in memory.
  bool ReadColumnOnce(int32_t iColumn, Array<float>& sValues);
  void TernaryScan(const std::array<std::array<const char*, 2>, 3>& zNames, bool& qTernExists,
                   Array<int32_t>& iTern, float& sOil, float& sGas, float& sWat, bool& qOK);

  SourceFields source_;
  ReadingFields reading_;
  PlotFields plot_;
  GridFields grid_;
  RowFields rows_;
  HeaderFields headers_;
  WellFields wells_;
  ListFields lists_;
  CacheFields caches_;
  FetchFields fetch_;
  TableFields table_;
  std::shared_ptr<mxAutomaticDQ> xADQ_;
  bool qInitialised_ = false, qIsDirty_ = false;
};

}  // namespace vndata
