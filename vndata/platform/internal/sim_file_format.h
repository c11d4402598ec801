// The two encodings of simulator result files under SimFileIO: headers,
// whole payloads as floats, single values and the header index, for the
// binary (sim_file_binary.cc) and the formatted (sim_file_text.cc) files.
// Every function returns false with the reason in the file's LastError().
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vndata/platform/record_file.h"
#include "vndata/platform/record_layout.h"
#include "vndata/platform/sim_file_io.h"

namespace vndata::detail {

// What a record header says, and where its payload starts.
struct SimHeader {
  std::string keyword;  // without trailing blanks
  int32_t count = 0;
  std::string type;  // the 4 characters
  // Inte, Real, Doub, Logi, Char (CHAR and C0nn) or Mess.
  RecordType kind = RecordType::None;
  // Bytes of one value in a binary file (characters of a name for CHAR and
  // C0nn); 0 for MESS.
  int32_t width = 0;
  int64_t headerPos = 0;
  int64_t payloadPos = 0;  // the first byte after the header record or line
  int32_t newline = 1;     // formatted: bytes of the line end of the header
};

// Values a block holds: 1000 numbers or 105 names.
inline int32_t SimBlockSize(RecordType kind) {
  return kind == RecordType::Char ? kSimulatorNameBlock : kSimulatorNumberBlock;
}

// The flag word type of a kind of record (0 for one that holds no numbers).
int32_t SimVarTypeOf(RecordType kind);

// Reads the 4 type characters: the kind and its width. False for a type
// that is not one of the simulator files'.
bool ParseSimType(const std::string& zType, RecordType& kind, int32_t& width);

// Combines the two position words; -1 for one beyond a 63-bit offset.
int64_t SimPosition(int32_t iPos1, int32_t iPos2);

// The same for a record listed in the index.
SimRecordInfo SimInfoOf(const SimHeader& h);

// Binary files.
bool ReadBinaryHeader(RecordFile& file, int64_t pos, SimHeader& h);
// The fewest bytes the payload can take; the caller compares them with the
// bytes after the header before it allocates anything.
int64_t MinimumBinaryPayload(const SimHeader& h);
// All count values of a numeric record, as floats, into out.
bool ReadBinaryValues(RecordFile& file, const SimHeader& h, float* out);
// Value index (0-based) of a numeric record.
bool ReadBinaryValue(RecordFile& file, const SimHeader& h, int64_t index, float& out);
bool IndexBinary(RecordFile& file, std::vector<SimRecordInfo>& records);

// Formatted files.
bool ReadTextHeader(RecordFile& file, int64_t pos, SimHeader& h);
int64_t MinimumTextPayload(const SimHeader& h);
bool ReadTextValues(RecordFile& file, const SimHeader& h, float* out);
bool ReadTextValue(RecordFile& file, const SimHeader& h, int64_t index, float& out);
bool IndexText(RecordFile& file, std::vector<SimRecordInfo>& records);

}  // namespace vndata::detail
