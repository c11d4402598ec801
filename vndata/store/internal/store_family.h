// The per-data-set family of the store, in the slot order hosts bind to.
//
// Nearly every operation of a data set is offered again on mxDataStore with
// the position first. Hosts call members by their place in this list, so the
// order never changes; a member whose data-set side belongs to a piece not
// built yet keeps its slot and is marked with the piece it waits for.
// docs/STORE_FAMILY.md is this table as text; a test keeps the two equal and
// calls every member marked present.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace vndata {

// How a member is reached: an indexed property (get, let or both) or an
// operation.
enum class FamilyKind : int32_t { kGet, kGetLet, kLet, kOperation };

// Whether a member is callable, or which piece its data-set side comes with.
enum class FamilyPiece : int32_t {
  kPresent,
  kMarkers,            // marker and well byte formats
  kFilesAndWellLists,  // grid names, file lists, row and column lists, well lists
  kFetchOnDemand,
  kTables,
  kMonitoring,         // real-time monitoring
  kDerivedViews,       // ternary columns and the other derived views
  kDeletion,           // deletion and index remapping
  kLinking,            // observed and plot linking
  kSimulatorWriters,   // simulator file writers
  kUndescribed,        // no data-set member is described for it yet
};

struct FamilyMember {
  int32_t iSlot;
  std::string_view zName;
  FamilyKind kind;
  FamilyPiece piece;
};

constexpr int32_t kFamilySize = 238;

// The family in slot order (slot k at index k-1).
const std::array<FamilyMember, kFamilySize>& StoreFamily();

// Texts of the table's columns: "get", "get, let", "let", "operation";
// "present", or the name of the piece waited for.
std::string_view FamilyKindText(FamilyKind kind);
std::string_view FamilyPieceText(FamilyPiece piece);

// Members of the store that do more than forward but stand outside the
// slot list (they sit elsewhere in the store's order).
struct FacadeExtra {
  std::string_view zName;
  FamilyPiece piece;
};
constexpr int32_t kFacadeExtras = 3;
const std::array<FacadeExtra, kFacadeExtras>& FacadeExtras();

}  // namespace vndata
