#include "vndata/platform/internal/record_payload.h"
#include "vndata/platform/internal/record_bytes.h"

#include <algorithm>

namespace vndata {

void RecordPayload::BeginRecord(RecordFile& file, RecordType type, bool qSimulator, int32_t count) {
  RecordFile::Cursor c;
  c.recordOpen = count > 0;
  c.type = type;
  c.simulator = qSimulator;
  c.valuesLeft = count > 0 ? count : 0;
  file.cur_ = c;
}

bool RecordPayload::Consume(RecordFile& file, int64_t n) {
  RecordFile::Cursor& c = file.cur_;
  if (!c.recordOpen) return true;
  c.valuesLeft -= n;
  if (c.valuesLeft > 0) return true;
  if (c.physLeft > 0) return Fail(file, "the payload holds more values than its count");
  c = RecordFile::Cursor{};
  return true;
}

bool RecordPayload::WritePhysical(RecordFile& file, const void* data, int64_t nBytes,
                                  int32_t swapWidth) {
  if (nBytes < 0 || nBytes > kMaxPhysicalBytes) return Fail(file, "record too long");
  uint8_t marker[4];
  record_bytes::PutBigEndian32(marker, static_cast<int32_t>(nBytes));
  if (!file.WriteExact(marker, 4)) return false;
  if (!file.WriteExact(data, static_cast<std::size_t>(nBytes), swapWidth)) return false;
  return file.WriteExact(marker, 4);
}

bool RecordPayload::WriteValues(RecordFile& file, const void* data, int64_t count, int32_t width,
                                int32_t blockSize) {
  int64_t perRecord = kMaxPhysicalBytes / width;
  if (blockSize > 0) perRecord = std::min<int64_t>(perRecord, blockSize);
  const auto* src = static_cast<const uint8_t*>(data);
  while (count > 0) {
    int64_t n = std::min(count, perRecord);
    if (!WritePhysical(file, src, n * width, width)) return false;
    src += n * width;
    count -= n;
  }
  return true;
}

bool RecordPayload::OpenPhysical(RecordFile& file, int32_t width, int32_t maxPerRecord) {
  uint8_t b[4];
  if (!file.ReadExact(b, 4)) return false;
  int32_t length = record_bytes::GetBigEndian32(b);
  if (length < 0) return Fail(file, "negative record length");
  if (width > 1 && length % width != 0)
    return Fail(file, "record length is not a whole number of values");
  if (static_cast<int64_t>(length) + 4 > file.BytesLeft())
    return Fail(file, "record length beyond the end of the file");
  if (maxPerRecord > 0 && length / width > maxPerRecord)
    return Fail(file, "physical record larger than the block size");
  file.cur_.physLeft = length;
  file.cur_.physLength = length;
  return true;
}

bool RecordPayload::ClosePhysical(RecordFile& file) {
  uint8_t b[4];
  if (!file.ReadExact(b, 4)) return false;
  if (record_bytes::GetBigEndian32(b) != file.cur_.physLength)
    return Fail(file, "length markers disagree");
  file.cur_.physLeft = -1;
  return true;
}

bool RecordPayload::ReadValues(RecordFile& file, void* dst, int64_t count, int32_t width,
                               int32_t maxPerRecord, bool qSwap) {
  if (!file.Reading()) return Fail(file, "the file is not open for reading");
  auto* out = static_cast<uint8_t*>(dst);
  int64_t need = count * width;
  while (need > 0) {
    if (file.cur_.physLeft < 0) {
      if (!OpenPhysical(file, width, maxPerRecord)) return false;
    }
    int64_t& left = file.cur_.physLeft;
    if (left % width != 0) return Fail(file, "values cut across physical records");
    int64_t take = std::min(need, left);
    if (!file.ReadExact(out, static_cast<std::size_t>(take), qSwap ? width : 1)) return false;
    out += take;
    need -= take;
    left -= take;
    if (left == 0 && !ClosePhysical(file)) return false;
  }
  return true;
}

bool RecordPayload::SkipValues(RecordFile& file, int64_t count, int32_t width) {
  if (!file.Reading()) return Fail(file, "the file is not open for reading");
  int64_t need = count * width;
  while (need > 0) {
    if (file.cur_.physLeft < 0) {
      if (!OpenPhysical(file, width, 0)) return false;
    }
    int64_t& left = file.cur_.physLeft;
    if (left % width != 0) return Fail(file, "values cut across physical records");
    int64_t take = std::min(need, left);
    if (!file.MoveTo(file.pos_ + take)) return Fail(file, "cannot move in the file");
    need -= take;
    left -= take;
    if (left == 0 && !ClosePhysical(file)) return false;
  }
  return true;
}

bool RecordPayload::SkipWholeRecord(RecordFile& file) {
  if (!file.Reading()) return Fail(file, "the file is not open for reading");
  if (file.cur_.physLeft >= 0) return Fail(file, "a text must start a physical record");
  if (!OpenPhysical(file, 1, 0)) return false;
  if (!file.MoveTo(file.pos_ + file.cur_.physLeft)) return Fail(file, "cannot move in the file");
  file.cur_.physLeft = 0;
  return ClosePhysical(file);
}

bool RecordPayload::ReadWholeRecord(RecordFile& file, std::string& bytes) {
  if (!file.Reading()) return Fail(file, "the file is not open for reading");
  if (file.cur_.physLeft >= 0) return Fail(file, "a text must start a physical record");
  if (!OpenPhysical(file, 1, 0)) return false;
  std::string text(static_cast<std::size_t>(file.cur_.physLeft), '\0');
  if (!file.ReadExact(text.data(), text.size())) return false;
  if (!ClosePhysical(file)) return false;
  bytes.swap(text);
  return true;
}

bool RecordPayload::ReadHeaderRecord(RecordFile& file, uint8_t* buf, int32_t& nBytes) {
  if (!file.Reading()) return Fail(file, "the file is not open for reading");
  if (file.cur_.physLeft >= 0) return Fail(file, "a header cannot start inside a payload record");
  if (file.BytesLeft() == 0) return Fail(file, "end of file");
  uint8_t b[4];
  if (!file.ReadExact(b, 4)) return false;
  int32_t length = record_bytes::GetBigEndian32(b);
  if (length != kStoreHeaderBytes && length != kSimulatorHeaderBytes)
    return Fail(file, "not a record header");
  if (!file.ReadExact(buf, static_cast<std::size_t>(length))) return false;
  if (!file.ReadExact(b, 4)) return false;
  if (record_bytes::GetBigEndian32(b) != length) return Fail(file, "length markers disagree");
  nBytes = length;
  return true;
}

}  // namespace vndata
