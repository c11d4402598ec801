// The packed header format: one fixed-width byte record per column.
//
// A record (zAttrib232) is 233 single-byte characters, blank where unused,
// each attribute left-aligned in its field and cut at the field's width;
// byte 233 is always a blank. bHeaders is a two-dimensional byte array
// (1..233, 1..NumCols) with the position varying fastest, so record c begins
// at byte (c-1)*233. No field holds a length or terminator: a field's text
// ends at its first NUL, if any, and loses its blanks on reading.
//
// This header holds the record-level helpers that need no data set: the
// field reader, the bulk field packers and unpackers over pools and pointer
// arrays, and the conversions of records and only-lists written by older
// versions.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/byte_store.h"

namespace vndata {

// Width of an only-list record: the "CLASS" field and the "MEMBER" field.
constexpr int32_t kOnlyRecordSize = 56;

// The number of distinct values each attribute is expected to have, as
// reserved in its pool when bHeaders first fill it (0 for ids that are not
// packed).
VNDATA_API int32_t UnpackReserve(int32_t iAttribute);

// The text of one field of a record given as text: "" for an id with no
// field; the characters before the first NUL (none when the NUL is the first
// character), or all of them, trimmed of blanks at both ends.
VNDATA_API std::string ExtractAttribute(int32_t iAttribute, std::string_view zAttrib232);
// The same on a record of nBytes bytes.
VNDATA_API std::string ExtractAttribute(int32_t iAttribute, const uint8_t* bRecord, int32_t nBytes);

// Dimensions bHeaders to (1..233, 1..nCols) filled with blanks.
VNDATA_API void BlankHeaders(Array2<uint8_t>& bHeaders, int32_t nCols);
// Leaves bHeaders as it is when it already has that shape; otherwise blanks
// it as BlankHeaders does.
VNDATA_API void ShapeHeaders(Array2<uint8_t>& bHeaders, int32_t nCols);

// Writes the cell texts of one attribute into records 1..nCols: record k gets
// the bytes of cell iPointers(k) at the id's position, cut to the field and
// blank-filled behind; a pointer below 1 leaves the record's field as it
// stands. One pass over the pool's bytes, no text per column.
VNDATA_API void PackField(const ByteStore& pool, int32_t iAttribute,
                          const Array<int32_t>& iPointers, int32_t nCols,
                          Array2<uint8_t>& bHeaders);
// Writes the bytes of cell p into the id's field of one 233-byte record, cut
// to the field and blank-filled behind; p below 1 leaves the field.
VNDATA_API void PackCell(const ByteStore& pool, int32_t iAttribute, int32_t p, uint8_t* bRecord);
// The id's field of every record of bHeaders as one block of width*nCols
// bytes, handed to the pool at once; returns one cell per record (-1 for an
// empty field).
VNDATA_API Array<int32_t> UnpackField(const Array2<uint8_t>& bHeaders, int32_t iAttribute,
                                      ByteStore& pool);

// Record c of bHeaders as a text of its 233 characters.
VNDATA_API std::string HeaderText(const Array2<uint8_t>& bHeaders, int32_t iColumn);
// Texts to records: each text's first 233 characters, blank-filled behind.
VNDATA_API void HeadersFromText(const Array<std::string>& zHeaders, Array2<uint8_t>& bHeaders);
// One record (1..233) from a text, cut at 233 characters.
VNDATA_API void RecordFromText(std::string_view zAttrib232, Array<uint8_t>& bRecord);

// Converts nRecords old records, laid out by the attribute constant list
// iAttConst (indexed by old position), to current records in bNew. The
// working record starts as zeros and is not cleared between records, so a
// field narrower in the old layout ends in NULs. Logs the trace line and
// returns false on a fault (a field running out of either record).
VNDATA_API bool Update2NewAttribs(const Array<int32_t>& iAttConst, const Array2<uint8_t>& bOld,
                                  Array2<uint8_t>& bNew, int32_t nRecords);
// Converts a flat old only-list of nRecords records, each the "CLASS" and
// "MEMBER" widths of iAttConst long, to bOnly (1..56, 1..nRecords).
VNDATA_API bool UpdateBONLY(int32_t nRecords, const Array<int32_t>& iAttConst,
                            const Array<uint8_t>& bOld, Array2<uint8_t>& bOnly);

}  // namespace vndata
