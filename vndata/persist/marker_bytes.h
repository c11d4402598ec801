// Well markers in bytes: the two record arrays a data set keeps its markers
// in, and the byte arrays in which they cross the library's boundary.
//
// A marker is a named position in a grid; consecutive markers of one name
// form a well. The markers are held in two packed arrays of fixed-size
// records, both one-based: WELLINFO, one record a well, and MARKERINFO, one
// record a marker, the markers of a well one after the other.
//
// WELLINFO record (92 bytes, host byte order; vndata/foundation/well_info.h)
//
//   0        4                          44                         84      88      92
//   +--------+--------------------------+--------------------------+-------+-------+
//   | iWell  | zWellName (40 bytes)     | zGridName (40 bytes)     | nWell | iFirst|
//   | int32  | blank-padded 8-bit text  | "GRIDNAME", blank-padded | Marker| Marker|
//   +--------+--------------------------+--------------------------+-------+-------+
//
//   iWell         the well's own number, from 1
//   nWellMarkers  markers of this well
//   iFirstMarker  the MARKERINFO record of its first marker (the well head;
//                 the others are its connections)
//
// MARKERINFO record (36 bytes, host byte order)
//
//   0        4        8        12       16       20       24       28               36
//   +--------+--------+--------+--------+--------+--------+--------+----------------+
//   |iMarker | iWell  |   i    |   j    |   k    |iStatus | iStyle | spare (8 bytes)|
//   +--------+--------+--------+--------+--------+--------+--------+----------------+
//
//   iStatus  1 "Gas", 2 "Water", 3 "Solvent", 4 "Producer", 104 "Gas
//            Producer", 5 "Undrilled", 0 or below "Shutin"; other words have
//            no text
//   iStyle   1 "WELL", 0 "PERF"
//   spare    set by no reader here; carried along with the record
//
// The raw forms of the two arrays (GetWELLINFO and the rest below) are these
// records back to back in the host's byte order.
//
// "MK32" and "MKEX" byte arrays. All numbers are 32-bit little-endian;
// positions are one-based byte positions in the array.
//
//   1      5      9                        89 = H6     H7      H8      H9              H10
//   +------+------+------------------------+-----------+-------+-------+---------------+
//   |magic | nHead| H1 ... H20             | integers  | floats|doubles| strings       |
//   |"MK32"|  20  | 4 * nHead bytes        | n*H1 words| n*H2  | n*H3  | n*H4 strings  |
//   |"MKEX"|      |                        | (int32)   |(float)|(doubl)| of H5 bytes   |
//   +------+------+------------------------+-----------+-------+-------+---------------+
//
//   word  content                               "MK32" written here   "MKEX"
//   H1    integer words a marker                6                     16
//   H2    float words a marker                  0                     0 or 35
//   H3    double words a marker                 0                     10
//   H4    strings a marker                      1                     1
//   H5    bytes a string                        40                    40
//   H6    start of the integer section          8 + 4 * nHead + 1 = 89
//   H7    start of the float section            H6 + n * H1 * 4
//   H8    start of the double section           H7 + n * H2 * 4
//   H9    start of the string section           H8 + n * H3 * 8
//   H10   length of the array, its upper bound  H9 + n * H4 * H5 - 1
//   H11   number of markers n
//   H12,  two numbers of the caller of setMarkerINTEHead, 0 where they have
//   H13   no use
//   H14.. 0
//   H20
//
// Integer block of marker m, at H6 + (m - 1) * H1 * 4:
//
//   word  1     2   3   4   5       6        7 .. H1
//         +-----+---+---+---+-------+--------+---------------+
//         |  0  | I | J | K | style | status | skipped here  |
//         +-----+---+---+---+-------+--------+---------------+
//
// The string of marker m, at H9 + (m - 1) * H4 * H5, is its well name in 40
// bytes. The floats, the doubles and integer words 7 onwards of the
// extended form are skipped.
//
// A reader accepts 1 to 20 header words. MarkerType takes an array for
// "MK32" or "MKEX" only when its magic matches, nHead is at least 2, H10 is
// the array's upper bound and H11 the caller's marker count; anything else
// is read as the older form below. Every reader checks that each byte it
// reads lies inside the array and refuses (qOK false, nothing changed) an
// array that does not hold the markers it claims.
//
// The older form (read only), n markers:
//
//   1                n*28+1           n*36+1
//   +----------------+----------------+--------------------------------------+
//   | 7 words a      | 8 bytes a      | 160 bytes a marker: four 40-byte     |
//   | marker; words  | marker, not    | strings: status as decimal text,     |
//   | 3, 4, 5 I,J,K  | read           | well name, style text, one not read  |
//   +----------------+----------------+--------------------------------------+
//
// vMarkers: a variant array (1 to 55, 1 to n), first index the field. Used
// are 3, 4, 5 (I, J, K), 10 (status), 11 (well name), 12 ("WELL" or
// "PERF") and 13 (grid name); fields 1, 2 and 6 to 9 (row, column, colour,
// associated variable, value, size) are not kept by the records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

#include "vndata/foundation/well_info.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/variant.h"

namespace vndata {

constexpr int32_t kWellInfoBytes = 92;
constexpr int32_t kMarkerInfoBytes = 36;
constexpr int32_t kMarkerHeadWords = 20;   // header words written here
constexpr int32_t kMarkerNameBytes = 40;   // a name in the string section
constexpr int32_t kMarkerPlainWords = 6;   // integer words of a "MK32" marker
constexpr int32_t kMarkerExtendedWords = 16;
constexpr int32_t kMarkerExtendedFloats = 35;
constexpr int32_t kMarkerExtendedDoubles = 10;
constexpr int32_t kOldMarkerWordBytes = 28;    // older form: 7 words a marker
constexpr int32_t kOldMarkerSkipBytes = 8;     // then 8 bytes a marker not read
constexpr int32_t kOldMarkerStringBytes = 160; // then four 40-byte strings a marker

// What MarkerType answers.
enum MarkerForm : int32_t { kMarkersMK32 = 1, kMarkersMKEX = 2, kMarkersOlder = 3 };

// The header words H1 to H13 of a marker byte array, unpacked.
struct MarkerHead {
  int32_t nIntWords = 0;     // H1
  int32_t nFloatWords = 0;   // H2
  int32_t nDoubleWords = 0;  // H3
  int32_t nStrings = 0;      // H4
  int32_t nStringBytes = 0;  // H5
  int32_t iIntStart = 0;     // H6
  int32_t iFloatStart = 0;   // H7
  int32_t iDoubleStart = 0;  // H8
  int32_t iStringStart = 0;  // H9
  int32_t iTotalLength = 0;  // H10
  int32_t nMarkers = 0;      // H11
  int32_t iCaller1 = 0;      // H12
  int32_t iCaller2 = 0;      // H13
};

// ---- Header words ---------------------------------------------------------------

// The form of bMarker: kMarkersMK32, kMarkersMKEX or kMarkersOlder.
int32_t MarkerType(int32_t nMarker, const Array<uint8_t>& bMarker);

// The 20 header words of an array of n markers (iHead 1..20, nHead 20).
// qExtended gives 16 integer words and 10 doubles a marker, qFloats 35
// floats; H12 and H13 take iH12 and iH13. A length beyond 32 bits is fault
// 6, logged, with qOK false.
void setMarkerINTEHead(int32_t n, int32_t iH12, int32_t iH13, Array<int32_t>& iHead, int32_t& nHead,
                       bool& qOK, bool qExtended = false, bool qFloats = false);
// The header words of bMarker: nHead from byte 5 and that many words from
// byte 9, in iHead 1..20 with 0 beyond nHead. False for an array of 12
// bytes or fewer, nHead outside 1..20, or header words past the array's end.
void getMarkerINTEHead(const Array<uint8_t>& bMarker, Array<int32_t>& iHead, int32_t& nHead, bool& qOK);
// Unpacks H1 to H13; words beyond nHead read 0. False when nHead is outside
// 1..20 or iHead does not hold words 1..nHead.
void getMarkerINTEHeadData(const Array<int32_t>& iHead, int32_t nHead, MarkerHead& head, bool& qOK);

// ---- Building the records ------------------------------------------------------
// Each replaces the records of the set as a whole on success and leaves
// them as they were when it answers false.

// MarkerType decides, and the matching reader below builds.
void SetMarkersUDTFromBMarkers(MarkerSet& set, int32_t nMarker, const Array<uint8_t>& bMarker,
                               bool& qOK);
// "MK32": nMarker markers; a new well starts wherever the trimmed name
// differs from the one before. nMarker 0 succeeds and changes nothing.
void SetMarkersUDTFromByte32(MarkerSet& set, int32_t nMarker, const Array<uint8_t>& bMarker,
                             bool& qOK);
// "MKEX": the same; with H11 below 1 the set becomes empty (no markers, one
// spare record in each array) and the answer is true.
void SetMarkersUDTFromByte32Ex(MarkerSet& set, int32_t nMarker, const Array<uint8_t>& bMarker,
                               bool& qOK);
// The older form.
void SetMarkersUDTFromByte(MarkerSet& set, int32_t nMarker, const Array<uint8_t>& bMarker, bool& qOK);
// From vMarkers (fields 3 to 13 of markers 1..n at least). n below 1 answers
// false and sets NumWells to 0, nothing else. A table too small for n
// markers is fault 9, logged.
void SetMarkersUDTFromVMarkers(MarkerSet& set, int32_t n, const Array2<Variant>& vMarkers, bool& qOK);

// ---- Giving the records out -----------------------------------------------------

// vMarkers (1..55, 1..NumMarkers) in well order: fields 3, 4, 5, 10, 11, 12,
// 13; the others empty. With no markers a one-cell table and n 0.
void GetTypeMarkers(const MarkerSet& set, int32_t& n, Array2<Variant>& vMarkers, bool& qOK);
// The whole "MK32" array, markers in well order. With no markers true, and
// n and bMarker left alone.
void SetMarkersByteFromUDT32(const MarkerSet& set, int32_t& n, Array<uint8_t>& bMarker, bool& qOK);
// The "MK32" array of the wells with a connection inside box, coordinates
// shifted to the box; nMarker is the number of markers written.
void GetMarkersByteFromUDT32(const MarkerSet& set, const SectorBox& box, int32_t& nMarker,
                             Array<uint8_t>& bMarker, bool& qOK);
// GetMarkersByteFromUDT32 when pBox is given, SetMarkersByteFromUDT32
// otherwise.
void GetMarkersByte(const MarkerSet& set, const SectorBox* pBox, int32_t& nMarker,
                    Array<uint8_t>& bMarker, bool& qOK);

// ---- Queries and edits ----------------------------------------------------------

// The largest nWellMarkers minus 1 over wells 1..NumWells; 0 with none.
int32_t getMaxMarkerCount(const MarkerSet& set);
// k becomes 1 in every marker; nothing else changes.
void MoveAllMarkersToTopLayer(MarkerSet& set);
// The first marker at (i, j, k): iFound its well, zWellName the well's
// trimmed name, zStyle "WELL" or "PERF", iStatus its status word and
// zStatus that word's text; a style or status without a text leaves the
// output as it was. No match: true with iFound 0. No markers: true at once.
bool GetMarkerFromIJK(const MarkerSet& set, int32_t i, int32_t j, int32_t k, int32_t& iFound,
                      std::string& zWellName, std::string& zStyle, int32_t& iStatus,
                      std::string& zStatus);
// The text of a status word; false, zStatus untouched, for a word with none.
bool MarkerStatusText(int32_t iStatus, std::string& zStatus);
// The trimmed names of wells 1..NumWells in well order (a name may occur
// more than once); count 0 and the array untouched with no wells.
void getWellNamesfromMarkers(const MarkerSet& set, Array<std::string>& zWells, int32_t& nWells);

// ---- Raw records ------------------------------------------------------------------

// nWellsAllocated records of 92 bytes; unallocated when that count or
// NumMarkers is below 1.
Array<uint8_t> GetWELLINFO(const MarkerSet& set);
// The records of b (its upper bound divided by 92 of them): Wells and
// nWellsAllocated. NumWells is left as it stands.
void LetWELLINFO(MarkerSet& set, const Array<uint8_t>& b);
// Deliberately as many 36-byte records as there are well records
// allocated, not NumMarkers; records beyond the marker array read as zeros.
// Unallocated when that count or NumMarkers is below 1.
Array<uint8_t> GetMARKERINFO(const MarkerSet& set);
// The records of b (upper bound divided by 36): Markers. Deliberately sets
// nWellsAllocated, not NumMarkers, to their count.
void LetMARKERINFO(MarkerSet& set, const Array<uint8_t>& b);
// Addresses of the first records; 0 when there are none.
std::intptr_t WellsPtr(const MarkerSet& set);
std::intptr_t MarkersPtr(const MarkerSet& set);

}  // namespace vndata
