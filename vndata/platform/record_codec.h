// RecordCodec: the records of the store file, of the scratch files and of
// the simulator files, on an open RecordFile.
//
// Layout
// ======
// The layout is the Eclipse unformatted binary one, so that the simulator
// files open in any Eclipse-format reader. All numbers are big-endian.
//
// A file is a sequence of physical records (Fortran sequential records):
//
//     +----------+------------------------+----------+
//     | length L |  L bytes               | length L |
//     +----------+------------------------+----------+
//       int32                               int32
//
// L is a signed 32-bit byte count, 0 <= L < 2^31, the same at both ends.
//
// A logical record ("record" below) is a header physical record and then
// its payload. There are two header kinds, told apart by L:
//
//     store format,     L = 24:  keyword[16] | count (int32) | type[4]
//     simulator format, L = 16:  keyword[8]  | count (int32) | type[4]
//
// The keyword is blank-padded to its width (16 or 8). Trailing blanks are
// padding, so a keyword read back has none; everything else, case
// included, is kept exactly. count is the number of values of the payload
// (0: no payload at all, the next header follows at once). type is one of
//
//     "INTE"  int32                "LOGI"  int32, true -1, false 0
//     "REAL"  IEEE float32         "BYTE"  uint8
//     "DOUB"  IEEE float64         "MESS"  no values; count is 0
//     "CHAR"  texts, see below
//
// The payload is the count values, packed, in physical records of at most
// blockSize values each (blockSize 0: one physical record for the whole
// payload). The store format writes blockSize 0; the simulator files 1000
// for numbers and 105 for names. A reader follows the length markers, so it
// reads a payload however it was cut into physical records; a value never
// straddles two physical records.
//
// "CHAR" differs between the formats:
//   - simulator format: every value is 8 bytes, blank-padded (cut to 8),
//     packed like numbers (105 a physical record in the simulator files);
//   - store format: every value is one physical record holding exactly the
//     bytes of the text, so a text of any length, 0 included, survives.
//
// Example: the store record "NULLVAL", 1 value of type "DOUB", -999.0:
//
//     00000018 "NULLVAL         " 00000001 "DOUB" 00000018
//     00000008 C08F380000000000 00000008
//
// Record cursor
// =============
// The file remembers the record whose header was written or read last
// until its count of values has moved. While such a record is open:
//   - WriteValue and ReadValue encode and decode by the record's type (not
//     by the variant's), and by its format for "CHAR";
//   - no operation moves more values than the count still due; the array
//     operations accept a record of their own type, and in addition
//     WriteIntegerArray and ReadIntegerArray/Block accept "LOGI",
//     ReadLogicalArray accepts "INTE" and "BYTE" (a "BYTE" payload is read
//     one byte a value). Any other mix is refused.
// Outside a record (before the first header, after a complete record, after
// SetPosition or a failure) the array operations move raw payloads with
// their own type and nothing to check but the file's length.
//
// Failures
// ========
// No operation throws. Each sets qOK false on entry and true as its last
// step. Bad input never crashes and never allocates more than the bytes
// left in the file could fill: a truncated file, length markers that
// disagree, a count larger than the file can hold, a negative count, an
// unknown type, values beyond the record's count all give qOK false, with
// the reason in file.LastError() and the record cursor reset. A run-time
// fault inside an operation (a variant that does not convert, an array
// subscript outside its bounds, memory) writes one trace line
// "Error:<text> (No.<n>) In [RecordCodec (<operation>)] " and gives qOK
// false. After a false qOK on reading, the contents of the target array
// are not to be used.
//
// Arrays are one-based Array<T>: reads fill values from its lower bound
// when it holds at least count elements, and otherwise dimension it 1 to
// count; writes take count elements from its lower bound (fault 9 when it
// holds fewer). Pointer overloads serve bulk data that lives elsewhere (a
// two-dimensional table), the caller guaranteeing count elements.
//
// `quote` is the text delimiter of a formatted (text) file; this codec
// writes and reads the binary layout only and ignores it.
#pragma once

#include <cstdint>
#include <string>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/record_file.h"
#include "vndata/platform/variant.h"

namespace vndata {

class VNDATA_API RecordCodec {
 public:
  // Reads a "BYTE" payload of count bytes into values, dimensioned 1 to
  // count (left alone for count 0).
  void ReadByteArray(int32_t count, RecordFile& file, Array<uint8_t>& values, bool& qOK);
  // Reads an "INTE" payload like ReadIntegerArray. blockSize above 0 also
  // requires that no physical record holds more than blockSize values; 0
  // accepts any blocking (what WriteIntegerArray with block size 0 wrote).
  void ReadIntegerBlock(int32_t count, int32_t blockSize, RecordFile& file, Array<int32_t>& values,
                        bool& qOK);
  void ReadIntegerBlock(int32_t count, RecordFile& file, Array<int32_t>& values, bool& qOK) {
    ReadIntegerBlock(count, 0, file, values, qOK);
  }
  // Reads count "DOUB" values.
  void ReadDoubleArray(int32_t count, const std::string& quote, RecordFile& file,
                       Array<double>& values, bool& qOK);
  // Reads count "INTE" (or "LOGI") values as 32-bit integers.
  void ReadIntegerArray(int32_t count, const std::string& quote, RecordFile& file,
                        Array<int32_t>& values, bool& qOK);
  // Reads count truth values: -1 for any non-zero value on disk, 0 for 0.
  // Takes "LOGI", "INTE" and "BYTE" payloads.
  void ReadLogicalArray(int32_t count, const std::string& quote, RecordFile& file,
                        Array<int16_t>& values, bool& qOK);
  // Reads count "REAL" values.
  void ReadRealArray(int32_t count, const std::string& quote, RecordFile& file,
                     Array<float>& values, bool& qOK);

  // Writes count bytes as one physical record.
  void WriteByteArray(int32_t count, const Array<uint8_t>& values, RecordFile& file, bool& qOK);
  // Write count values in physical records of blockSize values (0: one).
  void WriteDoubleArray(int32_t count, int32_t blockSize, const Array<double>& values,
                        RecordFile& file, bool& qOK);
  // For an "INTE" or a "LOGI" record (the caller gives -1/0 or 1/0).
  void WriteIntegerArray(int32_t count, int32_t blockSize, const Array<int32_t>& values,
                         RecordFile& file, bool& qOK);
  void WriteRealArray(int32_t count, int32_t blockSize, const Array<float>& values,
                      RecordFile& file, bool& qOK);
  // Writes one "CHAR" value of width bytes, text cut or blank-padded to
  // it, as its own physical record. In a simulator record width must be 8.
  void WriteCharValue(int32_t width, const std::string& text, RecordFile& file, bool& qOK);
  void WriteCharValue(const std::string& text, RecordFile& file, bool& qOK) {
    WriteCharValue(kSimulatorNameWidth, text, file, qOK);
  }
  // Writes count fixed-width names, each cut or blank-padded to width, in
  // physical records of blockSize names (0: one). In a store-format record
  // every name is its own physical record instead, as the format requires.
  void WriteCharArray(int32_t count, int32_t width, int32_t blockSize,
                      const Array<std::string>& values, RecordFile& file, bool& qOK);
  void WriteCharArray(int32_t count, const Array<std::string>& values, RecordFile& file,
                      bool& qOK) {
    WriteCharArray(count, kSimulatorNameWidth, kSimulatorNameBlock, values, file, qOK);
  }

  // Reads the next header, of either format. keyword (trailing blanks
  // removed), count and type are set whenever the header record itself was
  // sound, even when qOK is false for an unknown type, a negative count, a
  // "MESS" with values, or a count the rest of the file cannot hold.
  void ReadHeader(RecordFile& file, std::string& keyword, int32_t& count, std::string& type,
                  bool& qOK);
  // Writes a store-format header. A keyword of more than 16 characters is
  // written cut to 16, so that the file stays readable, and gives qOK
  // false. An unknown type or a negative count writes nothing.
  void WriteHeader(RecordFile& file, const std::string& keyword, int32_t count,
                   const std::string& type, bool& qOK);
  // Writes a simulator-format header: the same with 8 characters.
  void WriteSimulatorHeader(RecordFile& file, const std::string& keyword, int32_t count,
                            const std::string& type, bool& qOK);

  // Reads the next value of the open record. value receives it as a 32-bit
  // integer ("INTE"), float ("REAL"), double ("DOUB"), Boolean ("LOGI"),
  // 16-bit integer ("BYTE") or text ("CHAR"; a simulator name loses its
  // trailing blanks); a value that already holds a number, a Boolean, a
  // date or a text is the target and keeps its type, the value read being
  // converted to it.
  void ReadValue(RecordFile& file, Variant& value, bool& qOK);
  void ReadValue(RecordFile& file, std::string& value, bool& qOK);
  void ReadValue(RecordFile& file, int32_t& value, bool& qOK);
  void ReadValue(RecordFile& file, int16_t& value, bool& qOK);
  void ReadValue(RecordFile& file, float& value, bool& qOK);
  void ReadValue(RecordFile& file, double& value, bool& qOK);
  void ReadValue(RecordFile& file, bool& value, bool& qOK);
  // Writes one value of the open record, converted to the record's type
  // (integers round half to even; a "LOGI" takes the value's truth; a
  // "BYTE" must be 0 to 255; "CHAR" takes the value's text). Each value is
  // its own physical record.
  void WriteValue(RecordFile& file, const Variant& value, bool& qOK);

  // Steps over the next count values of the open record without reading
  // them (the length markers on the way are read and checked), so that a
  // reader can go to value i of a record: ReadHeader, SkipValues(i - 1),
  // then a read. Outside a record, steps over count 32-bit values.
  void SkipValues(int32_t count, RecordFile& file, bool& qOK);

  // Bulk overloads on plain memory.
  void ReadDoubleArray(int32_t count, const std::string& quote, RecordFile& file, double* values,
                       bool& qOK);
  void ReadIntegerArray(int32_t count, const std::string& quote, RecordFile& file, int32_t* values,
                        bool& qOK);
  void ReadRealArray(int32_t count, const std::string& quote, RecordFile& file, float* values,
                     bool& qOK);
  void WriteDoubleArray(int32_t count, int32_t blockSize, const double* values, RecordFile& file,
                        bool& qOK);
  void WriteIntegerArray(int32_t count, int32_t blockSize, const int32_t* values, RecordFile& file,
                         bool& qOK);
  void WriteRealArray(int32_t count, int32_t blockSize, const float* values, RecordFile& file,
                      bool& qOK);

 private:
  void WriteHeaderOf(RecordFile& file, const std::string& keyword, int32_t count,
                     const std::string& type, bool qSimulator, bool& qOK);
  template <class T>
  void ReadValueAs(RecordFile& file, T& value, bool& qOK);
};

}  // namespace vndata
