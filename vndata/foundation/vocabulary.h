// The numbers and words every module shares: column attribute ids and their
// packed positions, the attribute constant lists of stored files, the slots
// of a data set's description array, scalars and word lists.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/variant.h"

namespace vndata {

// ---- Column attribute ids -------------------------------------------------
// Ids 3 and 13 are reserved numbers that carry nothing; 1 is computed.
enum AttributeId : int32_t {
  TREEVIEWPATH = 1,
  ATT_UNITS = 2,
  UNUSED3 = 3,
  ATT_ORIGIN = 4,
  ATT_TYPE = 5,
  ATT_CLASS = 6,
  ATT_SUBCLASS1 = 7,
  ATT_SUBCLASS2 = 8,
  ATT_MEMBER = 9,
  ATT_INDEX = 10,
  ATT_VARIABLE = 11,
  ATT_VERBOSE = 12,
  UNUSED13 = 13,
  GRID = 14,
};

constexpr int32_t kNumAttributes = 14;
// Bytes of one current packed record (positions 1..232 carry text).
constexpr int32_t kPackedRecordSize = 233;
// Bytes of one legacy packed record.
constexpr int32_t kLegacyRecordSize = 273;
// Entries of an attribute constant list.
constexpr int32_t kAttConstSize = 25;

// The keyword of an id ("UNITS", "ORIGIN", ...; "TREEVIEWPATH", "UNUSED3",
// "UNUSED13", "GRID" for the others); "" outside 1..14.
VNDATA_API std::string AttributeKeyword(int32_t iAttribute);
// Whether the id names a field of a packed record (2, 4..12, 14).
VNDATA_API bool IsStoredAttribute(int32_t iAttribute);

// The order in which attributes are packed into and unpacked from bHeaders.
constexpr std::array<int32_t, 11> kPackOrder = {4, 6, 5, 11, 2, 9, 12, 7, 8, 14, 10};

// ---- Position table --------------------------------------------------------
// AttPos(1, id) is the 1-based position of the id's field in a current packed
// record and AttPos(2, id) its width; 0 for ids 1, 3 and 13.
VNDATA_API void InitAttributes(Array2<int32_t>& AttPos);
// The position and width of one id, from the thread's table (filled on first
// use). An id outside 1..14 gives 0, 0.
VNDATA_API void InitSingleAttPos(int32_t iAttribute, int32_t& iPos, int32_t& iWidth);
// The thread's position table, filled on first use.
VNDATA_API const Array2<int32_t>& AttPosTable();

// The "PACKEDATTS" triples: for ids 1..14 in turn, id, position, width (1..42).
VNDATA_API Array<int32_t> PackedAttsTriples();

// ---- Attribute constant lists ----------------------------------------------
// Field order of the 12 pairs after the dimension.
enum AttConstField : int32_t {
  ACF_ORIGIN = 1,
  ACF_TYPE,
  ACF_UNITS,
  ACF_CLASS,
  ACF_MEMBER,
  ACF_SUBCLASS1,
  ACF_SUBCLASS2,
  ACF_INDEX,
  ACF_VARIABLE,
  ACF_VERBOSE,
  ACF_TREEPATH,  // legacy tree path: position 0 in the current list (absent)
  ACF_GRID,
};
// The list written by EXPORTBINARYCONSTANTLIST (entries 1..25, dimension first).
VNDATA_API Array<int32_t> CurrentAttConst();
// The list assumed for a file that carries none (273-byte records).
VNDATA_API Array<int32_t> LegacyAttConst();
// Sets the thread's constant list to the legacy one, as a load does before it
// meets an "ATTCONST" record.
VNDATA_API void InitOldAttributeConstants();
// Position and width of field f (ACF_*) in a constant list.
VNDATA_API void AttConstField(const Array<int32_t>& list, int32_t f, int32_t& iPos,
                              int32_t& iWidth);

// ---- Source data slots (the description array vAttributes) -------------------
constexpr int32_t kNumSourceSlots = 66;
enum SourceSlot : int32_t {
  SD_ORIGIN = 1,
  SD_FILENAME = 2,
  SD_SOURCETYPE = 3,
  SD_DATESTAMP = 4,
  SD_SLOT5 = 5,
  SD_DATACLASS = 6,
  SD_UNITS = 7,
  SD_INDEX = 8,
  SD_ISTART = 9,
  SD_IEND = 10,
  SD_NORESTART = 11,
  SD_UNIFIED = 12,
  SD_FORMATTED = 13,
  SD_SIMWORD_OR_TABLENAME = 14,
  SD_SIMULATOR = 15,
  SD_NUMCOLS = 16,
  SD_DEFAULTX = 17,
  SD_TVGROUPNAME = 18,
  SD_GROUPNAME = 19,
  SD_DATAROOTPATH = 20,
  SD_UNIQUEKEY = 21,
  SD_ISDIRTY = 22,
  SD_FILETYPE = 23,
  SD_TVDISPLAYROOT = 24,
  SD_NUMROWS = 25,
  SD_NUMMARKERS = 26,
  SD_ZONLY = 27,
  SD_CASENAME = 28,
  SD_LGRNAME = 29,
  SD_SLOT30 = 30,
  SD_SLOT31 = 31,
  SD_ALLDATA = 32,
  SD_DUALPOROSITY = 33,
  SD_NULLVALUE = 34,
  SD_USENULLVAL = 35,
  SD_READERSETNULL = 36,
  SD_OBSNAME = 37,
  SD_SLOT38 = 38,
  SD_NOINACTIVE = 39,
  SD_TIMEINDAYS = 40,
  SD_CREATIONMETHOD = 41,
  SD_BRANCH = 42,
  SD_SLOT43 = 43,
  SD_TEXTROWNAME = 44,
  SD_TEXTROWUNITS = 45,
  SD_TEXTROWLGR = 46,
  SD_TEXTROWINDEX = 47,
  SD_TEXTROWVERBOSE = 48,
  SD_TEXTROWWELL = 49,
  SD_TEXTROWDATA = 50,
  SD_TEXTROWFIXED = 51,
  SD_TEXTROWDATEFORMAT = 52,
  SD_SIMCASE = 53,
  SD_PERFORATIONS = 54,
  SD_UCASETVDISPLAYROOT = 55,
  SD_READPOSITION64_LOW = 56,
  SD_READPOSITION64_HIGH = 57,
  SD_HYSTERESIS = 58,
  SD_ENDPOINTSCALING = 59,
  SD_DIRENDPOINTSCALING = 60,
  SD_REVENDPOINTSCALING = 61,
  SD_ALTENDPOINTSCALING = 62,
  SD_IPHASE = 63,
};
// Sizes vAttributes to 1..66 and gives every slot its initial value (slots
// with no initial value are left empty).
VNDATA_API void InitSourceData(Array<Variant>& vAttributes);

// ---- Data-set attribute ids of GetDataSetAttribute ---------------------------
// The answer for an id with no row, and for any id outside 1..57.
inline constexpr std::string_view kUnknownAttribute = "Unknown";
constexpr int32_t kMaxDataSetAttribute = 57;
// Whether iType has a row in the data-set attribute table.
VNDATA_API bool IsKnownDataSetAttribute(int32_t iType);

// ---- Scalars -----------------------------------------------------------------
constexpr double kDefaultNullValue = -999.0;
constexpr float kDefaultTimeInDays = -999.0f;
inline constexpr std::string_view kDateFormat = "dd/mm/yyyy";
inline constexpr std::string_view kDefaultGroup = "Data";
constexpr int32_t kDefaultFileType = 3;
inline constexpr std::string_view kTimeVectorName = "TIME";
inline constexpr std::string_view kPathSeparator = "\\";
// The marker derived-quantity vectors use by default.
constexpr float kDQDefaultNullValue = -9999.0f;

// ---- Word lists ----------------------------------------------------------------
// The groups of the common constant module. Words compare as they stand.
enum class WordGroup : int32_t {
  AttributeKeywords,
  TextFileKeywords,
  RecordKinds,
  StoreSectionWords,
  SimulatorsAndSources,
  WellOrientationAndRole,
  UnitSystems,
  LengthUnits,
  GridGeometry,
  DataClassWords,
  ObjectClassesAndTypes,
  TimeUnits,
  TreeRoots,
  SummaryFileExtensions,
  HeaderArrays,
  DefaultMarks,
};
constexpr int32_t kNumWordGroups = 16;
// The words of a group, in the module's order.
VNDATA_API const Array<std::string>& Words(WordGroup group);
// The group's name as a heading ("Attribute keywords", ...).
VNDATA_API std::string WordGroupName(WordGroup group);
// Whether zWord is one of the group's words, exactly.
VNDATA_API bool IsWord(WordGroup group, std::string_view zWord);

}  // namespace vndata
