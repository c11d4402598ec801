// Binary simulator result files: headers, payloads, single values, index.
#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <vector>

#include "vndata/platform/internal/record_bytes.h"
#include "vndata/platform/internal/record_payload.h"
#include "vndata/platform/internal/sim_file_format.h"

namespace vndata::detail {

namespace {

using P = RecordPayload;

static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559,
              "values are converted by IEEE rules (a double beyond the float range is infinity)");

// The header record, the length markers around 16 bytes.
constexpr int64_t kHeaderRecordBytes = 4 + kSimulatorHeaderBytes + 4;
// Doubles converted to floats in pieces of this many, and payloads read in
// pieces of about this many bytes, so that the staging memory stays small
// whatever the record.
constexpr int64_t kDoublePiece = 1 << 15;
constexpr int64_t kPieceBytes = 1 << 18;

// The bytes of count values in the format's blocking: every block of at most
// block values adds its two length markers.
int64_t StandardPayloadBytes(int64_t count, int32_t width, int32_t block) {
  if (count <= 0) return 0;
  int64_t blocks = (count + block - 1) / block;
  return count * width + 8 * blocks;
}

bool ReadAt(RecordFile& file, int64_t pos, void* dst, int64_t n) {
  bool ok = false;
  file.SetPosition(pos, ok);
  return ok && P::ReadRaw(file, dst, n);
}

bool MarkerAt(RecordFile& file, int64_t pos, int32_t& marker) {
  uint8_t b[4];
  if (!ReadAt(file, pos, b, 4)) return false;
  marker = record_bytes::GetBigEndian32(b);
  return true;
}

// One value on disk, big-endian, as a float.
float DecodeOne(RecordType kind, const uint8_t* b) {
  switch (kind) {
    case RecordType::Inte: return static_cast<float>(record_bytes::GetBigEndian32(b));
    case RecordType::Logi: return record_bytes::GetBigEndian32(b) != 0 ? 1.0f : 0.0f;
    case RecordType::Real:
      return std::bit_cast<float>(static_cast<uint32_t>(record_bytes::GetBigEndian32(b)));
    case RecordType::Doub: {
      uint64_t u = 0;
      for (int i = 0; i < 8; ++i) u = (u << 8) | b[i];
      return static_cast<float>(std::bit_cast<double>(u));
    }
    default: return 0.0f;
  }
}

// After a payload has been read or stepped over: the last physical record
// must end with it.
bool PayloadEnded(RecordFile& file) {
  if (!P::AtBoundary(file)) return P::Fail(file, "the payload holds more values than its count");
  return true;
}

// Converts k big-endian values of the record's type at src into floats.
void DecodeBlock(RecordType kind, const uint8_t* src, int64_t k, float* out) {
  switch (kind) {
    case RecordType::Real:
      record_bytes::CopySwapped(out, src, static_cast<std::size_t>(k), 4);
      break;
    case RecordType::Inte:
      for (int64_t i = 0; i < k; ++i) {
        uint32_t u;
        std::memcpy(&u, src + 4 * i, 4);
        if constexpr (record_bytes::kSwapNeeded) u = __builtin_bswap32(u);
        out[i] = static_cast<float>(static_cast<int32_t>(u));
      }
      break;
    case RecordType::Logi:
      for (int64_t i = 0; i < k; ++i) {
        uint32_t u;
        std::memcpy(&u, src + 4 * i, 4);
        out[i] = u != 0 ? 1.0f : 0.0f;
      }
      break;
    case RecordType::Doub:
      for (int64_t i = 0; i < k; ++i) {
        uint64_t u;
        std::memcpy(&u, src + 8 * i, 8);
        if constexpr (record_bytes::kSwapNeeded) u = __builtin_bswap64(u);
        out[i] = static_cast<float>(std::bit_cast<double>(u));
      }
      break;
    default: break;
  }
}

// A payload in the format's blocking, read in pieces of whole blocks: one
// read from the system a piece, and each value swapped and converted on its
// way from the piece to out. False, with nothing to report, when the
// blocks are not where that blocking puts them.
bool ReadStandardBlocks(RecordFile& file, const SimHeader& h, float* out) {
  const int64_t w = h.width;
  const int64_t block = SimBlockSize(h.kind);
  const int64_t blockBytes = block * w + 8;
  const int64_t total = StandardPayloadBytes(h.count, h.width, static_cast<int32_t>(block));
  if (h.payloadPos + total > file.FileSize()) return false;
  const int64_t perPiece = std::max<int64_t>(1, kPieceBytes / blockBytes);
  std::vector<uint8_t> piece(static_cast<std::size_t>(std::min(total, perPiece * blockBytes)));
  int64_t done = 0;  // values delivered
  int64_t at = h.payloadPos;
  while (done < h.count) {
    const int64_t blocks = std::min(perPiece, (h.count - done + block - 1) / block);
    const int64_t bytes = std::min(blocks * blockBytes, h.payloadPos + total - at);
    if (!ReadAt(file, at, piece.data(), bytes)) return false;
    for (int64_t b = 0, off = 0; b < blocks; ++b) {
      const int64_t k = std::min(block, h.count - done);
      const int32_t length = static_cast<int32_t>(k * w);
      if (record_bytes::GetBigEndian32(piece.data() + off) != length ||
          record_bytes::GetBigEndian32(piece.data() + off + 4 + length) != length)
        return false;
      DecodeBlock(h.kind, piece.data() + off + 4, k, out + done);
      done += k;
      off += 8 + length;
    }
    at += bytes;
  }
  return true;
}

}  // namespace

bool ReadBinaryHeader(RecordFile& file, int64_t pos, SimHeader& h) {
  bool ok = false;
  file.SetPosition(pos, ok);
  if (!ok) return false;
  uint8_t buf[kStoreHeaderBytes];
  int32_t n = 0;
  if (!P::ReadHeaderRecord(file, buf, n)) return false;
  if (n != kSimulatorHeaderBytes) return P::Fail(file, "not a simulator record header");
  std::string keyword(reinterpret_cast<const char*>(buf), kSimulatorKeywordWidth);
  std::size_t end = keyword.find_last_not_of(' ');
  keyword.erase(end == std::string::npos ? 0 : end + 1);
  h.keyword = std::move(keyword);
  h.count = record_bytes::GetBigEndian32(buf + kSimulatorKeywordWidth);
  h.type.assign(reinterpret_cast<const char*>(buf) + kSimulatorKeywordWidth + 4, 4);
  h.headerPos = pos;
  h.payloadPos = pos + kHeaderRecordBytes;
  h.newline = 0;
  if (!ParseSimType(h.type, h.kind, h.width)) return P::Fail(file, "unknown record type");
  if (h.count < 0) return P::Fail(file, "negative value count");
  if (h.kind == RecordType::Mess && h.count != 0) return P::Fail(file, "a MESS record with values");
  return true;
}

int64_t MinimumBinaryPayload(const SimHeader& h) {
  return h.count > 0 ? static_cast<int64_t>(h.count) * h.width + 8 : 0;
}

bool ReadBinaryValues(RecordFile& file, const SimHeader& h, float* out) {
  if (SimVarTypeOf(h.kind) == 0) return P::Fail(file, "the record holds no numbers");
  if (ReadStandardBlocks(file, h, out)) return true;
  // Blocked otherwise, or cut short: follow the length markers.
  bool ok = false;
  file.SetPosition(h.payloadPos, ok);
  if (!ok) return false;
  const int64_t n = h.count;
  switch (h.kind) {
    case RecordType::Real:
      if (!P::ReadValues(file, out, n, 4, 0, true)) return false;
      break;
    case RecordType::Inte:
    case RecordType::Logi: {
      // The 32-bit words land in the floats' own memory and are converted
      // there, one pass, with no second buffer.
      if (!P::ReadValues(file, out, n, 4, 0, true)) return false;
      const bool logical = h.kind == RecordType::Logi;
      for (int64_t i = 0; i < n; ++i) {
        int32_t v;
        std::memcpy(&v, out + i, 4);
        out[i] = logical ? (v != 0 ? 1.0f : 0.0f) : static_cast<float>(v);
      }
      break;
    }
    case RecordType::Doub: {
      std::vector<double> piece(static_cast<std::size_t>(std::min(n, kDoublePiece)));
      for (int64_t done = 0; done < n;) {
        int64_t k = std::min(n - done, kDoublePiece);
        if (!P::ReadValues(file, piece.data(), k, 8, 0, true)) return false;
        for (int64_t i = 0; i < k; ++i) out[done + i] = static_cast<float>(piece[i]);
        done += k;
      }
      break;
    }
    default: return P::Fail(file, "the record holds no numbers");
  }
  return PayloadEnded(file);
}

bool ReadBinaryValue(RecordFile& file, const SimHeader& h, int64_t index, float& out) {
  const int64_t w = h.width;
  const int64_t block = SimBlockSize(h.kind);
  uint8_t b[8];
  // Where the format's blocking puts the value: straight there, once the
  // length markers of its block confirm that blocking.
  const int64_t iBlock = index / block;
  const int64_t inBlock = std::min(block, h.count - iBlock * block);
  const int64_t at = h.payloadPos + iBlock * (block * w + 8);
  const int64_t length = inBlock * w;
  if (at + 8 + length <= file.FileSize()) {
    int32_t lead = -1, trail = -1;
    if (MarkerAt(file, at, lead) && lead == length && MarkerAt(file, at + 4 + length, trail) &&
        trail == length) {
      if (!ReadAt(file, at + 4 + (index % block) * w, b, w)) return false;
      out = DecodeOne(h.kind, b);
      return true;
    }
  }
  // Blocked otherwise: follow the length markers to the value.
  bool ok = false;
  file.SetPosition(h.payloadPos, ok);
  if (!ok) return false;
  if (!P::SkipValues(file, index, h.width)) return false;
  if (!P::ReadValues(file, b, 1, h.width)) return false;
  out = DecodeOne(h.kind, b);
  return true;
}

bool IndexBinary(RecordFile& file, std::vector<SimRecordInfo>& records) {
  const int64_t size = file.FileSize();
  int64_t pos = 0;
  SimHeader h;
  while (pos < size) {
    if (!ReadBinaryHeader(file, pos, h)) return false;
    // Step over the payload by its size in the format's blocking when the
    // last block's trailing marker and the next header's leading marker are
    // where that size puts them; otherwise follow the markers.
    const int32_t block = SimBlockSize(h.kind);
    int64_t next = h.payloadPos + StandardPayloadBytes(h.count, h.width, block);
    bool stepped = false;
    if (next <= size) {
      int32_t marker = 0;
      bool lastBlockOK = true;
      if (h.count > 0) {
        int64_t last = h.count - (static_cast<int64_t>(h.count) - 1) / block * block;
        lastBlockOK = MarkerAt(file, next - 4, marker) && marker == last * h.width;
      }
      stepped = lastBlockOK &&
                (next == size || (MarkerAt(file, next, marker) && marker == kSimulatorHeaderBytes));
    }
    if (!stepped) {
      bool ok = false;
      file.SetPosition(h.payloadPos, ok);
      if (!ok) return false;
      if (h.count > 0 && !P::SkipValues(file, h.count, h.width)) return false;
      if (!PayloadEnded(file)) return false;
      next = file.Position();
    }
    records.push_back(SimInfoOf(h));
    pos = next;
  }
  return true;
}

}  // namespace vndata::detail
