// RecordFile: one open file of the record layer.
//
// The object owns the operating-system file, its 64-bit position and the
// state of the record being read or written (the type and the number of
// values still due, and on reading the bytes left in the physical record
// that is open). The bytes themselves are laid out and parsed by
// RecordCodec (record_codec.h describes the layout); the persistence code
// opens nothing itself, it is handed an open RecordFile.
//
// A file is opened in one of three modes:
//   - OpenForWrite: create, or replace, the file; records are appended.
//   - OpenForRead: read front to back, with a large read-ahead buffer.
//   - OpenForRandomRead: read from positions the caller jumps to (the
//     simulator files read on demand), with a small buffer so that a jump
//     does not pay for data it will not use.
// Both reading modes accept SetPosition; a file open for writing does not.
//
// No operation throws. A file that cannot be opened (missing, a folder, no
// permission) gives qOK false and leaves the object closed. LastError()
// tells, in a few words, why the last failing operation on this file
// failed. The object closes its file when destroyed; it is handed around as
// std::shared_ptr<RecordFile>.
//
// The file keeps its own buffer for the small records and passes bulk
// payloads straight between the caller's memory and the operating system.
// Written bytes may wait in the buffer: a write that the system refuses
// shows at a later write or at Close(qOK).
//
// The settings SetFileOption1 to SetFileOption4, SetUnitSize,
// SetRecordOption and SetEclipseFile are kept on the object, across Close
// and reopening, for the simulator-file reader; the record codec does not
// look at them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "vndata/platform/api.h"
#include "vndata/platform/record_layout.h"

namespace vndata {

enum class RecordFileMode : int32_t { Closed = 0, Write, Read, RandomRead };

class VNDATA_API RecordFile {
 public:
  RecordFile() = default;
  ~RecordFile();
  RecordFile(const RecordFile&) = delete;
  RecordFile& operator=(const RecordFile&) = delete;

  // Creates zName, or empties it if it exists, for writing. A file already
  // open on this object is closed first.
  void OpenForWrite(const std::string& zName, bool& qOK);
  // Opens an existing regular file for reading front to back.
  void OpenForRead(const std::string& zName, bool& qOK);
  // Opens an existing regular file for reading at positions of the caller's
  // choice.
  void OpenForRandomRead(const std::string& zName, bool& qOK);
  // Flushes and closes; does nothing when closed. The name is kept until the
  // next open.
  void Close();
  // The same, telling whether the bytes written reached the file.
  void Close(bool& qOK);

  // The name given to the last open (the empty string before any).
  const std::string& get_FileName() const { return name_; }
  RecordFileMode Mode() const { return mode_; }
  bool IsOpen() const { return mode_ != RecordFileMode::Closed; }

  // Byte offset of the next byte read or written.
  int64_t Position() const { return pos_; }
  // Bytes in the file: fixed while reading, growing while writing.
  int64_t FileSize() const { return size_; }
  // Moves a reading file to byte offset iPos (0 to FileSize()). Ends any
  // record being read: the next read starts a new header or payload. False
  // when writing, closed, or iPos is outside the file.
  void SetPosition(int64_t iPos, bool& qOK);
  // The same with the offset as two 32-bit words: iPos1 the low 32 bits
  // (taken unsigned), iPos2 the high 32 bits.
  void SetPosition(int32_t iPos1, int32_t iPos2, bool& qOK);

  // Tells whether a read loop has consumed the whole file: qEOF is true when
  // the position is at or past the end of the file, and always for a closed
  // or writing file. iPos1 and iPos2 receive the position's low and high 32
  // bits (what the caller zeroed is not looked at).
  void AtEndOfFile(int32_t& iPos1, int32_t& iPos2, bool& qEOF);
  // One step of a long read or write: forwarded to the thread's progress
  // container, when the host has given one.
  void ProgressTick();

  // Settings kept for the simulator-file reader (formatted file, unified
  // file, two reader options, values in 8-byte units, the record option of
  // the utility library, an Eclipse file).
  void SetFileOption1(bool qValue) { fileOption_[0] = qValue; }
  void SetFileOption2(bool qValue) { fileOption_[1] = qValue; }
  void SetFileOption3(bool qValue) { fileOption_[2] = qValue; }
  void SetFileOption4(bool qValue) { fileOption_[3] = qValue; }
  // Option i, 1 to 4 (false for any other i).
  bool FileOption(int32_t i) const { return i >= 1 && i <= 4 && fileOption_[i - 1]; }
  // Bytes of one value unit: 4 unless set (the readers set 8).
  void SetUnitSize(int32_t iSize) { unitSize_ = iSize; }
  int32_t UnitSize() const { return unitSize_; }
  void SetRecordOption(int32_t iOption) { recordOption_ = iOption; }
  int32_t RecordOption() const { return recordOption_; }
  void SetEclipseFile(bool qValue) { eclipseFile_ = qValue; }
  bool EclipseFile() const { return eclipseFile_; }

  // Why the last failing operation failed ("" after a success of an open).
  const std::string& LastError() const { return lastError_; }

 private:
  friend class RecordPayload;

  // The record being read or written. recordOpen is set by a header with a
  // count above 0 and cleared when its last value has moved; outside a
  // record, payload reads and writes are raw (no type or count to check).
  struct Cursor {
    bool recordOpen = false;
    RecordType type = RecordType::None;
    bool simulator = false;
    int64_t valuesLeft = 0;
    // Reading: bytes not yet read of the open physical record, -1 when the
    // position is between physical records; its length marker, to be
    // matched by the trailing one.
    int64_t physLeft = -1;
    int32_t physLength = 0;
  };

  void Open(const std::string& zName, RecordFileMode mode, bool& qOK);
  void Fail(const char* zWhy);
  bool Reading() const {
    return mode_ == RecordFileMode::Read || mode_ == RecordFileMode::RandomRead;
  }
  int64_t BytesLeft() const { return size_ > pos_ ? size_ - pos_ : 0; }
  // Exactly n bytes from the position; false (with the reason kept) when
  // the file ends first or the mode does not allow it. swapWidth 4 or 8
  // reverses the byte order of each value of that width (n is a multiple
  // of it). Every read from the system starts at an aligned offset.
  bool ReadExact(void* dst, std::size_t n, int32_t swapWidth = 1);
  // Appends n bytes, byte-swapped as above, through the buffer.
  bool WriteExact(const void* src, std::size_t n, int32_t swapWidth = 1);
  // Writes the buffered bytes out.
  bool Flush();
  // Moves a reading file to iPos (0 to FileSize()), keeping the record
  // cursor; false when the system refuses.
  bool MoveTo(int64_t iPos);

  int fd_ = -1;
  RecordFileMode mode_ = RecordFileMode::Closed;
  std::string name_;
  int64_t pos_ = 0;
  int64_t size_ = 0;
  Cursor cur_;
  std::string lastError_;

  // The file's own buffer. Reading: bytes [bufBegin_, bufEnd_) are unread
  // and buf_[0] holds file offset bufStart_. Writing: bufEnd_ bytes wait to
  // be written.
  std::unique_ptr<uint8_t[]> buf_;
  // Staging piece for bulk reads that are byte-swapped (made on first use).
  std::unique_ptr<uint8_t[]> bulk_;
  std::size_t bufCap_ = 0;
  std::size_t bufBegin_ = 0;
  std::size_t bufEnd_ = 0;
  int64_t bufStart_ = 0;

  bool fileOption_[4] = {false, false, false, false};
  int32_t unitSize_ = 4;
  int32_t recordOption_ = 0;
  bool eclipseFile_ = false;
};

}  // namespace vndata
