#include "vndata/platform/sim_file_io.h"
#include "vndata/platform/internal/run_guarded.h"

#include <algorithm>

#include "vndata/platform/internal/record_payload.h"
#include "vndata/platform/internal/sim_file_format.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace detail {

int32_t SimVarTypeOf(RecordType kind) {
  switch (kind) {
    case RecordType::Inte: return kSimVarInte;
    case RecordType::Real: return kSimVarReal;
    case RecordType::Doub: return kSimVarDoub;
    case RecordType::Logi: return kSimVarLogi;
    default: return 0;
  }
}

bool ParseSimType(const std::string& zType, RecordType& kind, int32_t& width) {
  kind = RecordType::None;
  width = 0;
  if (zType.size() != 4) return false;
  if (zType[0] == 'C' && zType[1] == '0' && zType[2] >= '0' && zType[2] <= '9' && zType[3] >= '0' &&
      zType[3] <= '9') {
    // C0nn: names of nn characters.
    width = (zType[2] - '0') * 10 + (zType[3] - '0');
    if (width == 0) return false;
    kind = RecordType::Char;
    return true;
  }
  RecordType t = ParseRecordType(zType);
  if (t == RecordType::None || t == RecordType::Byte) return false;
  kind = t;
  width = RecordValueWidth(t);
  return true;
}

int64_t SimPosition(int32_t iPos1, int32_t iPos2) {
  uint64_t pos = (static_cast<uint64_t>(static_cast<uint32_t>(iPos2)) << 32) |
                 static_cast<uint64_t>(static_cast<uint32_t>(iPos1));
  return pos > static_cast<uint64_t>(INT64_MAX) ? -1 : static_cast<int64_t>(pos);
}

SimRecordInfo SimInfoOf(const SimHeader& h) {
  SimRecordInfo info;
  info.zKeyword = h.keyword;
  info.nValues = h.count;
  info.zType = h.type;
  uint64_t pos = static_cast<uint64_t>(h.headerPos);
  info.iPos1 = static_cast<int32_t>(static_cast<uint32_t>(pos & 0xFFFFFFFFu));
  info.iPos2 = static_cast<int32_t>(static_cast<uint32_t>(pos >> 32));
  info.iVarType = SimVarTypeOf(h.kind);
  return info;
}

}  // namespace detail

namespace {

using P = RecordPayload;

bool Reading(const RecordFile& file) {
  return file.Mode() == RecordFileMode::Read || file.Mode() == RecordFileMode::RandomRead;
}

// A formatted file starts, after any blanks and line ends, with the quote
// of its first keyword; a binary one with a length marker.
bool LooksFormatted(RecordFile& file) {
  char head[256];
  int64_t n = std::min<int64_t>(file.FileSize(), static_cast<int64_t>(sizeof head));
  if (n <= 0 || !P::ReadRaw(file, head, n)) return false;
  for (int64_t i = 0; i < n; ++i) {
    char c = head[i];
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
    return c == '\'';
  }
  return false;
}

// Reads the header at the position words and checks the record against
// the column: a numeric record of the flag word's type, holding nValues
// values (at most that many when compressed).
bool LocateRecord(RecordFile& file, int32_t iPos1, int32_t iPos2, int32_t iFlags, int32_t nValues,
                  detail::SimHeader& h, bool& qCompressed) {
  if (!Reading(file)) return P::Fail(file, "the file is not open for reading");
  int64_t pos = detail::SimPosition(iPos1, iPos2);
  if (pos < 0 || pos >= file.FileSize()) return P::Fail(file, "position outside the file");
  bool ok = file.FileOption(1) ? detail::ReadTextHeader(file, pos, h)
                               : detail::ReadBinaryHeader(file, pos, h);
  if (!ok) return false;
  const int32_t varType = iFlags & kSimFlagTypeMask;
  if (varType > kSimVarLogi) return P::Fail(file, "unknown value type in the flag word");
  const int32_t onDisk = detail::SimVarTypeOf(h.kind);
  if (onDisk == 0) return P::Fail(file, "the record holds no numbers");
  if (varType != kSimVarFromHeader && varType != onDisk)
    return P::Fail(file, "the record's type differs from the flag word");
  qCompressed = (iFlags & (kSimFlagCompressed | kSimFlagCompressed2)) != 0;
  if (qCompressed ? h.count > nValues : h.count != nValues)
    return P::Fail(file, "the record's count differs from the column's");
  return true;
}

// All values of the located record, as floats, into out (count of them),
// once the file is known to hold them.
bool ReadAll(RecordFile& file, const detail::SimHeader& h, float* out) {
  return file.FileOption(1) ? detail::ReadTextValues(file, h, out)
                            : detail::ReadBinaryValues(file, h, out);
}

bool PayloadFits(RecordFile& file, const detail::SimHeader& h) {
  int64_t least =
      file.FileOption(1) ? detail::MinimumTextPayload(h) : detail::MinimumBinaryPayload(h);
  if (least > file.FileSize() - h.payloadPos)
    return P::Fail(file, "record length beyond the end of the file");
  return true;
}

}  // namespace

void SimFileIO::OpenForRead(const std::string& zName, RecordFile& file, bool& qOK) {
  qOK = false;
  RunGuarded("SimFileIO (OpenForRead)", [&] {
    bool ok = false;
    file.OpenForRandomRead(zName, ok);
    if (!ok) return;
    file.SetFileOption1(LooksFormatted(file));
    file.SetPosition(0, ok);
    qOK = ok;
  });
}

void SimFileIO::OpenForRead(const std::string& zName, std::shared_ptr<RecordFile>& file,
                            bool& qOK) {
  qOK = false;
  bool made = RunGuarded("SimFileIO (OpenForRead)", [&] {
    if (!file) file = std::make_shared<RecordFile>();
  });
  if (made) OpenForRead(zName, *file, qOK);
}

void SimFileIO::CloseFile(RecordFile& file, bool& qOK) { file.Close(qOK); }

void SimFileIO::CloseFile(const std::shared_ptr<RecordFile>& file, bool& qOK) {
  qOK = true;
  if (file) file->Close(qOK);
}

void SimFileIO::ReadVector(RecordFile& file, int32_t& iPos1, int32_t& iPos2, int32_t& iFlags,
                           int32_t& nValues, const Array<int32_t>& iMask, int32_t nMask,
                           Array<float>& values, bool& qOK) {
  qOK = false;
  RunGuarded("SimFileIO (ReadVector)", [&] {
    detail::SimHeader h;
    bool compressed = false;
    if (!LocateRecord(file, iPos1, iPos2, iFlags, nValues, h, compressed)) return;
    if (!PayloadFits(file, h)) return;
    Array<float> out;
    if (nMask > 0) {
      if (static_cast<std::size_t>(nMask) > iMask.size()) {
        P::Fail(file, "the row mask holds fewer rows than its count");
        return;
      }
      const int32_t* rows = iMask.data();
      for (int32_t i = 0; i < nMask; ++i) {
        if (rows[i] < 1 || rows[i] > h.count) {
          P::Fail(file, "a row of the mask lies outside the record");
          return;
        }
      }
      Array<float> all(1, h.count);
      if (!ReadAll(file, h, all.data())) return;
      out.ReDim(1, nMask);
      const float* from = all.data();
      float* to = out.data();
      for (int32_t i = 0; i < nMask; ++i) to[i] = from[rows[i] - 1];
    } else if (h.count > 0) {
      out.ReDim(1, h.count);
      if (!ReadAll(file, h, out.data())) return;
    }
    values.Swap(out);
    if (compressed) nValues = nMask > 0 ? nMask : h.count;
    qOK = true;
  });
}

void SimFileIO::ReadVector(RecordFile& file, int32_t& iPos1, int32_t& iPos2, int32_t& iFlags,
                           int32_t& nValues, Array<float>& values, bool& qOK) {
  ReadVector(file, iPos1, iPos2, iFlags, nValues, Array<int32_t>(), 0, values, qOK);
}

void SimFileIO::ReadValue(RecordFile& file, int32_t& iPos1, int32_t& iPos2, int32_t& iFlags,
                          int32_t& nValues, int32_t iRow, float& sValue, bool& qOK) {
  qOK = false;
  RunGuarded("SimFileIO (ReadValue)", [&] {
    detail::SimHeader h;
    bool compressed = false;
    if (!LocateRecord(file, iPos1, iPos2, iFlags, nValues, h, compressed)) return;
    if (iRow < 1 || iRow > h.count) {
      P::Fail(file, "row outside the record");
      return;
    }
    float v = 0;
    bool ok = file.FileOption(1) ? detail::ReadTextValue(file, h, iRow - 1, v)
                                 : detail::ReadBinaryValue(file, h, iRow - 1, v);
    if (!ok) return;
    sValue = v;
    if (compressed) nValues = h.count;
    qOK = true;
  });
}

void SimFileIO::IndexRecords(RecordFile& file, std::vector<SimRecordInfo>& records, bool& qOK) {
  qOK = false;
  RunGuarded("SimFileIO (IndexRecords)", [&] {
    records.clear();
    if (!Reading(file)) {
      P::Fail(file, "the file is not open for reading");
      return;
    }
    qOK =
        file.FileOption(1) ? detail::IndexText(file, records) : detail::IndexBinary(file, records);
  });
}

}  // namespace vndata
