// RecordPayload: the physical-record level under RecordCodec.
//
// Moves values between memory and the physical records of a RecordFile
// (length marker, bytes, length marker; see record_codec.h), keeps the
// file's record cursor (type, values still due, the physical record open on
// reading) and checks every length against the bytes the file holds. Every
// function returns false on failure with the reason in the file's
// LastError(); none throws except std::bad_alloc.
#pragma once

#include <cstdint>
#include <string>

#include "vndata/platform/record_file.h"

namespace vndata {

class RecordPayload {
 public:
  // The record cursor.
  static void BeginRecord(RecordFile& file, RecordType type, bool qSimulator, int32_t count);
  static void EndRecord(RecordFile& file) { file.cur_ = RecordFile::Cursor{}; }
  static bool RecordOpen(const RecordFile& file) { return file.cur_.recordOpen; }
  static RecordType CurrentType(const RecordFile& file) { return file.cur_.type; }
  static bool CurrentSimulator(const RecordFile& file) { return file.cur_.simulator; }
  static int64_t ValuesLeft(const RecordFile& file) { return file.cur_.valuesLeft; }
  // Marks n more values of the open record as moved; when the record is
  // complete it is closed, and on reading its last physical record must be
  // complete too. False when that fails.
  static bool Consume(RecordFile& file, int64_t n);

  static bool Fail(RecordFile& file, const char* zWhy) {
    file.Fail(zWhy);
    return false;
  }
  static bool Writing(const RecordFile& file) { return file.mode_ == RecordFileMode::Write; }
  static bool Reading(const RecordFile& file) { return file.Reading(); }
  static int64_t BytesLeft(const RecordFile& file) { return file.BytesLeft(); }
  // True when the position is between physical records.
  static bool AtBoundary(const RecordFile& file) { return file.cur_.physLeft < 0; }

  // Writes one physical record of nBytes from data, reversing the byte
  // order of each value of swapWidth bytes (1: as they are).
  static bool WritePhysical(RecordFile& file, const void* data, int64_t nBytes, int32_t swapWidth);
  // Writes count values of width bytes in physical records of at most
  // blockSize values (0: as few records as the length marker allows).
  static bool WriteValues(RecordFile& file, const void* data, int64_t count, int32_t width,
                          int32_t blockSize);

  // Reads count values of width bytes into dst, continuing the open
  // physical record and opening further ones as needed. maxPerRecord above
  // 0 refuses a physical record of more values. With qSwap the values are
  // put into the host's byte order, a cache-sized piece at a time right
  // after it is read; without, they stay as on disk.
  static bool ReadValues(RecordFile& file, void* dst, int64_t count, int32_t width,
                         int32_t maxPerRecord = 0, bool qSwap = false);
  // Steps over count values of width bytes without reading them: the
  // length markers are read and checked, the values are jumped.
  static bool SkipValues(RecordFile& file, int64_t count, int32_t width);
  // Steps over one whole physical record (a store-format text).
  static bool SkipWholeRecord(RecordFile& file);
  // Reads one whole physical record as bytes (a store-format text).
  static bool ReadWholeRecord(RecordFile& file, std::string& bytes);
  // Reads exactly n bytes from the position, as they are on disk, with no
  // length marker: the text of a formatted simulator file, or one value a
  // reader found the offset of itself.
  static bool ReadRaw(RecordFile& file, void* dst, int64_t n) {
    if (n < 0) return Fail(file, "negative byte count");
    return file.ReadExact(dst, static_cast<std::size_t>(n));
  }
  // Reads the physical record of a header into buf (24 bytes of room);
  // nBytes receives its length, 24 (store) or 16 (simulator).
  static bool ReadHeaderRecord(RecordFile& file, uint8_t* buf, int32_t& nBytes);

 private:
  static bool OpenPhysical(RecordFile& file, int32_t width, int32_t maxPerRecord);
  static bool ClosePhysical(RecordFile& file);
};

}  // namespace vndata
