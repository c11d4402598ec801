// RecordCodec: the array reads and writes.
#include <algorithm>
#include <initializer_list>
#include <vector>

#include "vndata/platform/internal/record_payload.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/record_codec.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

using P = RecordPayload;

// Whether an open record of type `open` may be moved by an operation made
// for the types in `accepted`.
bool Accepts(RecordType open, std::initializer_list<RecordType> accepted) {
  return std::find(accepted.begin(), accepted.end(), open) != accepted.end();
}

// The checks every array read makes before it touches the file or memory.
// diskWidth is the width of one value on disk.
bool CheckRead(RecordFile& file, int64_t count, int32_t diskWidth,
               std::initializer_list<RecordType> accepted) {
  if (!P::Reading(file)) return P::Fail(file, "the file is not open for reading");
  if (count < 0) return P::Fail(file, "negative count");
  if (P::RecordOpen(file)) {
    if (!Accepts(P::CurrentType(file), accepted))
      return P::Fail(file, "the record is of another type");
    if (count > P::ValuesLeft(file)) return P::Fail(file, "more values than the record holds");
  }
  if (count * diskWidth > P::BytesLeft(file))
    return P::Fail(file, "count beyond the end of the file");
  return true;
}

bool CheckWrite(RecordFile& file, int64_t count, int32_t blockSize,
                std::initializer_list<RecordType> accepted) {
  if (!P::Writing(file)) return P::Fail(file, "the file is not open for writing");
  if (count < 0) return P::Fail(file, "negative count");
  if (blockSize < 0) return P::Fail(file, "negative block size");
  if (P::RecordOpen(file)) {
    if (!Accepts(P::CurrentType(file), accepted))
      return P::Fail(file, "the record is of another type");
    if (count > P::ValuesLeft(file)) return P::Fail(file, "more values than the record holds");
  }
  return true;
}

// The first element to fill: the array's own when it holds count elements,
// else a fresh 1..count array.
template <class T>
T* Target(Array<T>& values, int32_t count) {
  if (!values.IsAllocated() || values.size() < static_cast<std::size_t>(count))
    values.ReDim(1, count);
  return values.data();
}

template <class T>
const T* Source(const Array<T>& values, int32_t count) {
  if (values.size() < static_cast<std::size_t>(count)) RaiseFault(kFaultSubscript);
  return values.data();
}

// Reads count numbers of sizeof(T) bytes straight into dst and puts them
// into the host's byte order.
template <class T>
bool ReadNumbers(RecordFile& file, int32_t count, T* dst, int32_t maxPerRecord = 0) {
  if (count == 0) return true;
  if (dst == nullptr) return P::Fail(file, "no array to read into");
  constexpr int32_t w = sizeof(T);
  if (!P::ReadValues(file, dst, count, w, maxPerRecord, true)) return false;
  return P::Consume(file, count);
}

template <class T>
bool WriteNumbers(RecordFile& file, int32_t count, int32_t blockSize, const T* src) {
  if (count == 0) return true;
  if (src == nullptr) return P::Fail(file, "no array to write from");
  if (!P::WriteValues(file, src, count, sizeof(T), blockSize)) return false;
  return P::Consume(file, count);
}

constexpr std::initializer_list<RecordType> kIntegerTypes = {RecordType::Inte, RecordType::Logi};

}  // namespace

// ---- reads -------------------------------------------------------------

void RecordCodec::ReadByteArray(int32_t count, RecordFile& file, Array<uint8_t>& values,
                                bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadByteArray)", [&] {
    if (!CheckRead(file, count, 1, {RecordType::Byte})) return;
    if (count > 0) {
      if (!values.IsAllocated() || values.LBound() != 1 ||
          values.size() != static_cast<std::size_t>(count))
        values.ReDim(1, count);
      if (!P::ReadValues(file, values.data(), count, 1) || !P::Consume(file, count)) return;
    }
    qOK = true;
  });
}

void RecordCodec::ReadIntegerBlock(int32_t count, int32_t blockSize, RecordFile& file,
                                   Array<int32_t>& values, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadIntegerBlock)", [&] {
    if (blockSize < 0) {
      P::Fail(file, "negative block size");
      return;
    }
    if (!CheckRead(file, count, 4, kIntegerTypes)) return;
    if (count > 0 && !ReadNumbers(file, count, Target(values, count), blockSize)) return;
    qOK = true;
  });
}

void RecordCodec::ReadIntegerArray(int32_t count, const std::string& /*quote*/, RecordFile& file,
                                   Array<int32_t>& values, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadIntegerArray)", [&] {
    if (!CheckRead(file, count, 4, kIntegerTypes)) return;
    if (count > 0 && !ReadNumbers(file, count, Target(values, count))) return;
    qOK = true;
  });
}

void RecordCodec::ReadIntegerArray(int32_t count, const std::string& /*quote*/, RecordFile& file,
                                   int32_t* values, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadIntegerArray)", [&] {
    if (!CheckRead(file, count, 4, kIntegerTypes)) return;
    qOK = ReadNumbers(file, count, values);
  });
}

void RecordCodec::ReadRealArray(int32_t count, const std::string& /*quote*/, RecordFile& file,
                                Array<float>& values, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadRealArray)", [&] {
    if (!CheckRead(file, count, 4, {RecordType::Real})) return;
    if (count > 0 && !ReadNumbers(file, count, Target(values, count))) return;
    qOK = true;
  });
}

void RecordCodec::ReadRealArray(int32_t count, const std::string& /*quote*/, RecordFile& file,
                                float* values, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadRealArray)", [&] {
    if (!CheckRead(file, count, 4, {RecordType::Real})) return;
    qOK = ReadNumbers(file, count, values);
  });
}

void RecordCodec::ReadDoubleArray(int32_t count, const std::string& /*quote*/, RecordFile& file,
                                  Array<double>& values, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadDoubleArray)", [&] {
    if (!CheckRead(file, count, 8, {RecordType::Doub})) return;
    if (count > 0 && !ReadNumbers(file, count, Target(values, count))) return;
    qOK = true;
  });
}

void RecordCodec::ReadDoubleArray(int32_t count, const std::string& /*quote*/, RecordFile& file,
                                  double* values, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadDoubleArray)", [&] {
    if (!CheckRead(file, count, 8, {RecordType::Doub})) return;
    qOK = ReadNumbers(file, count, values);
  });
}

void RecordCodec::ReadLogicalArray(int32_t count, const std::string& /*quote*/, RecordFile& file,
                                   Array<int16_t>& values, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadLogicalArray)", [&] {
    // A "BYTE" record is read one byte a truth value; every other record
    // (and a raw payload) as 32-bit words.
    bool bytes = P::RecordOpen(file) && P::CurrentType(file) == RecordType::Byte;
    int32_t w = bytes ? 1 : 4;
    if (!CheckRead(file, count, w, {RecordType::Logi, RecordType::Inte, RecordType::Byte})) return;
    if (count > 0) {
      int16_t* out = Target(values, count);
      constexpr int32_t kChunk = 1 << 14;
      std::vector<uint8_t> stage(static_cast<std::size_t>(std::min(count, kChunk)) * w);
      for (int32_t done = 0; done < count;) {
        int32_t n = std::min(count - done, kChunk);
        if (!P::ReadValues(file, stage.data(), n, w)) return;
        for (int32_t i = 0; i < n; ++i) {
          bool q = false;
          for (int32_t k = 0; k < w; ++k) q = q || stage[static_cast<std::size_t>(i * w + k)] != 0;
          out[done + i] = q ? int16_t{-1} : int16_t{0};
        }
        done += n;
      }
      if (!P::Consume(file, count)) return;
    }
    qOK = true;
  });
}

// ---- writes ------------------------------------------------------------

void RecordCodec::WriteByteArray(int32_t count, const Array<uint8_t>& values, RecordFile& file,
                                 bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteByteArray)", [&] {
    if (!CheckWrite(file, count, 0, {RecordType::Byte})) return;
    if (count > 0 && !WriteNumbers(file, count, 0, Source(values, count))) return;
    qOK = true;
  });
}

void RecordCodec::WriteIntegerArray(int32_t count, int32_t blockSize, const Array<int32_t>& values,
                                    RecordFile& file, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteIntegerArray)", [&] {
    if (!CheckWrite(file, count, blockSize, kIntegerTypes)) return;
    if (count > 0 && !WriteNumbers(file, count, blockSize, Source(values, count))) return;
    qOK = true;
  });
}

void RecordCodec::WriteIntegerArray(int32_t count, int32_t blockSize, const int32_t* values,
                                    RecordFile& file, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteIntegerArray)", [&] {
    if (!CheckWrite(file, count, blockSize, kIntegerTypes)) return;
    qOK = WriteNumbers(file, count, blockSize, values);
  });
}

void RecordCodec::WriteRealArray(int32_t count, int32_t blockSize, const Array<float>& values,
                                 RecordFile& file, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteRealArray)", [&] {
    if (!CheckWrite(file, count, blockSize, {RecordType::Real})) return;
    if (count > 0 && !WriteNumbers(file, count, blockSize, Source(values, count))) return;
    qOK = true;
  });
}

void RecordCodec::WriteRealArray(int32_t count, int32_t blockSize, const float* values,
                                 RecordFile& file, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteRealArray)", [&] {
    if (!CheckWrite(file, count, blockSize, {RecordType::Real})) return;
    qOK = WriteNumbers(file, count, blockSize, values);
  });
}

void RecordCodec::WriteDoubleArray(int32_t count, int32_t blockSize, const Array<double>& values,
                                   RecordFile& file, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteDoubleArray)", [&] {
    if (!CheckWrite(file, count, blockSize, {RecordType::Doub})) return;
    if (count > 0 && !WriteNumbers(file, count, blockSize, Source(values, count))) return;
    qOK = true;
  });
}

void RecordCodec::WriteDoubleArray(int32_t count, int32_t blockSize, const double* values,
                                   RecordFile& file, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteDoubleArray)", [&] {
    if (!CheckWrite(file, count, blockSize, {RecordType::Doub})) return;
    qOK = WriteNumbers(file, count, blockSize, values);
  });
}

void RecordCodec::WriteCharArray(int32_t count, int32_t width, int32_t blockSize,
                                 const Array<std::string>& values, RecordFile& file, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteCharArray)", [&] {
    if (!CheckWrite(file, count, blockSize, {RecordType::Char})) return;
    if (width < 1) {
      P::Fail(file, "a name must be at least 1 character wide");
      return;
    }
    bool open = P::RecordOpen(file);
    if (open && P::CurrentSimulator(file) && width != kSimulatorNameWidth) {
      P::Fail(file, "a simulator name is 8 characters wide");
      return;
    }
    if (count == 0) {
      qOK = true;
      return;
    }
    const std::string* names = Source(values, count);
    // Store format: one physical record a text. Otherwise names packed in
    // blocks.
    int64_t perRecord = (open && !P::CurrentSimulator(file)) ? 1
                        : blockSize > 0                      ? blockSize
                                                             : count;
    perRecord = std::min<int64_t>(perRecord, kMaxPhysicalBytes / width);
    std::vector<char> block;
    for (int64_t done = 0; done < count;) {
      int64_t n = std::min<int64_t>(count - done, perRecord);
      block.assign(static_cast<std::size_t>(n * width), ' ');
      for (int64_t i = 0; i < n; ++i) {
        const std::string& s = names[done + i];
        std::size_t len = std::min(s.size(), static_cast<std::size_t>(width));
        std::copy_n(s.data(), len, block.data() + i * width);
      }
      if (!P::WritePhysical(file, block.data(), n * width, 1)) return;
      done += n;
    }
    qOK = P::Consume(file, count);
  });
}

}  // namespace vndata
