// SimFileIO: random reads of simulator result files, and the record writes
// of the simulator writers.
//
// Files
// =====
// Eclipse-format result files (INIT, UNRST, EGRID, SMSPEC, RFT ...) are a
// sequence of records, each a header (keyword, value count, 4-character
// type) and a payload. Two encodings carry the same records:
//   - binary ("unformatted"): big-endian Fortran records as record_codec.h
//     describes them, a 16-byte header record and the payload in physical
//     records of at most 1000 numbers or 105 names;
//   - formatted (FINIT, FUNRST, ...): text, one header line
//         'KEYWORD '         300 'REAL'
//     and the values in fixed columns, a new line every 6 INTE (12
//     characters each), 4 REAL (17), 3 DOUB (23), 25 LOGI (3) or 7 CHAR (11)
//     values, and a new line at the start of every block of 1000 numbers or
//     105 names. A REAL or DOUB value may use "D" for its exponent or, with
//     a three-digit exponent, no letter at all ("0.1+301").
// The types are INTE, REAL, DOUB, LOGI, CHAR (8 characters), C0nn (nn
// characters) and MESS (no values). OpenForRead tells the two encodings
// apart by the file's first bytes and records the answer in the file's
// option 1 (true: formatted), which every read then follows.
//
// Positions and flags
// ===================
// A record is found by two 32-bit position words: iPos1 the low and iPos2
// the high 32 bits of the byte offset at which its header begins (the
// leading length marker, or the first byte of the header line). The flag
// word's bits 0-2 name the type of the values: 0 whatever the header says,
// 1 INTE, 2 REAL, 3 DOUB, 4 LOGI; a record of another type is refused. Bit 3
// (8) or bit 15 (32768) marks a compressed record, one that holds active
// cells only: it is delivered as stored, may be shorter than nValues, and
// nValues is rewritten to the count delivered. Any other record must hold
// exactly nValues values. The other bits are the caller's.
//
// Values are always delivered as 32-bit floats: INTE converted, DOUB
// rounded (beyond the float range: infinity), LOGI 1 for true (any non-zero
// word, or T) and 0 for false. A row mask (its count above 0) delivers
// value i = record value mask(i), the mask taken from its lower bound.
//
// Failures
// ========
// No operation throws. Each sets qOK false on entry and true as its last
// step, leaving its outputs as they were on failure. A position that holds
// no record header, a record of a length other than the column's, values
// that are not numbers, a mask row outside the record, length markers that
// disagree, a truncated file or a file that cannot be opened give qOK
// false, with the reason in file.LastError(); nothing is allocated for a
// record before the bytes left in the file are known to hold it. A run-time
// fault inside an operation (memory, an array subscript) writes one trace
// line "Error:<text> (No.<n>) In [SimFileIO (<operation>)] ".
//
// Writing
// =======
// The simulator writers write through the RecordCodec operations, which
// this class inherits: WriteSimulatorHeader, WriteIntegerArray,
// WriteRealArray, WriteDoubleArray, WriteCharArray and WriteCharValue, with
// the block sizes of the format (kSimulatorNumberBlock,
// kSimulatorNameBlock), on a RecordFile opened for writing.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/record_codec.h"
#include "vndata/platform/record_file.h"

namespace vndata {

// The library's event object: the reader only keeps it for the caller.
class mxNotifyData;

// Flag word bits of a column read through SimFileIO.
inline constexpr int32_t kSimFlagTypeMask = 7;
inline constexpr int32_t kSimFlagCompressed = 8;
inline constexpr int32_t kSimFlagCompressed2 = 32768;

// The value types of the flag word.
enum SimVarType : int32_t {
  kSimVarFromHeader = 0,
  kSimVarInte = 1,
  kSimVarReal = 2,
  kSimVarDoub = 3,
  kSimVarLogi = 4,
};

// One record of a file, as IndexRecords lists it.
struct SimRecordInfo {
  std::string zKeyword;  // without trailing blanks
  int32_t nValues = 0;   // the count of the header
  std::string zType;     // the 4 characters of the header
  int32_t iPos1 = 0;     // low 32 bits of the header's byte offset
  int32_t iPos2 = 0;     // high 32 bits
  int32_t iVarType = 0;  // the flag word type that reads it: 1 to 4, 0 for no numbers

  int64_t Offset() const {
    return static_cast<int64_t>((static_cast<uint64_t>(static_cast<uint32_t>(iPos2)) << 32) |
                                static_cast<uint32_t>(iPos1));
  }
};

class VNDATA_API SimFileIO : public RecordCodec {
 public:
  using RecordCodec::ReadValue;

  // Opens zName for reading at the positions of the caller's choice and
  // sets the file's option 1 to whether the file is formatted: it is when
  // its first character other than a blank or a line end is a quote. The
  // shared-pointer form makes the RecordFile when it is given none.
  void OpenForRead(const std::string& zName, RecordFile& file, bool& qOK);
  void OpenForRead(const std::string& zName, std::shared_ptr<RecordFile>& file, bool& qOK);
  // Closes the file (nothing to do for a closed file or no file).
  void CloseFile(RecordFile& file, bool& qOK);
  void CloseFile(const std::shared_ptr<RecordFile>& file, bool& qOK);

  // The data set's IOEventHandler. The reader raises no event of its own;
  // it keeps the handler so that the caller's routing is in one place.
  void SetEventHandler(std::shared_ptr<mxNotifyData> handler) { handler_ = std::move(handler); }
  const std::shared_ptr<mxNotifyData>& get_EventHandler() const { return handler_; }

  // Reads the record at (iPos1, iPos2) into values, dimensioned 1 to the
  // count delivered: the record's count, or nMask with a mask. For a
  // compressed record nValues becomes the count delivered.
  void ReadVector(RecordFile& file, int32_t& iPos1, int32_t& iPos2, int32_t& iFlags,
                  int32_t& nValues, const Array<int32_t>& iMask, int32_t nMask,
                  Array<float>& values, bool& qOK);
  void ReadVector(RecordFile& file, int32_t& iPos1, int32_t& iPos2, int32_t& iFlags,
                  int32_t& nValues, Array<float>& values, bool& qOK);
  // Reads value iRow (1 to the record's count) of the record at (iPos1,
  // iPos2) from the block that holds it, without reading the rest. For a
  // compressed record nValues becomes the record's count.
  void ReadValue(RecordFile& file, int32_t& iPos1, int32_t& iPos2, int32_t& iFlags,
                 int32_t& nValues, int32_t iRow, float& sValue, bool& qOK);

  // Lists every record of the file in order, reading only the headers: a
  // payload is stepped over by its size in the format's blocking, and only
  // where that does not land on the next header are its length markers (or
  // its text) followed. On failure records holds those before the damage.
  void IndexRecords(RecordFile& file, std::vector<SimRecordInfo>& records, bool& qOK);

 private:
  std::shared_ptr<mxNotifyData> handler_;
};

}  // namespace vndata
