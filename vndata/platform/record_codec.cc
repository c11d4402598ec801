// RecordCodec: headers and single values.
#include "vndata/platform/record_codec.h"
#include "vndata/platform/internal/record_bytes.h"
#include "vndata/platform/internal/run_guarded.h"

#include <algorithm>

#include "vndata/platform/internal/record_payload.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

using P = RecordPayload;

// The fewest bytes a payload of count values of this type occupies, so that
// a header whose count the rest of the file cannot hold is refused at once.
int64_t MinimumPayloadBytes(RecordType type, bool qSimulator, int64_t count) {
  if (count <= 0) return 0;
  if (type == RecordType::Char && !qSimulator) return count * 8;  // markers of empty texts
  return count * RecordValueWidth(type) + 8;
}

std::string CutOrPad(const std::string& text, std::size_t width) {
  std::string out = text.substr(0, std::min(text.size(), width));
  out.resize(width, ' ');
  return out;
}

std::string WithoutTrailingBlanks(std::string text) {
  std::size_t end = text.find_last_not_of(' ');
  text.erase(end == std::string::npos ? 0 : end + 1);
  return text;
}

// Reads the next value of the open record into its natural variant type.
bool ReadNatural(RecordFile& file, Variant& out) {
  if (!P::Reading(file)) return P::Fail(file, "the file is not open for reading");
  if (!P::RecordOpen(file)) return P::Fail(file, "no record value to read");
  RecordType type = P::CurrentType(file);
  switch (type) {
    case RecordType::Inte:
    case RecordType::Logi: {
      int32_t v = 0;
      if (!P::ReadValues(file, &v, 1, 4)) return false;
      record_bytes::SwapInPlace(&v, 1, 4);
      out = type == RecordType::Logi ? Variant(v != 0) : Variant(v);
      break;
    }
    case RecordType::Real: {
      float v = 0;
      if (!P::ReadValues(file, &v, 1, 4)) return false;
      record_bytes::SwapInPlace(&v, 1, 4);
      out = Variant(v);
      break;
    }
    case RecordType::Doub: {
      double v = 0;
      if (!P::ReadValues(file, &v, 1, 8)) return false;
      record_bytes::SwapInPlace(&v, 1, 8);
      out = Variant(v);
      break;
    }
    case RecordType::Byte: {
      uint8_t v = 0;
      if (!P::ReadValues(file, &v, 1, 1)) return false;
      out = Variant(static_cast<int16_t>(v));
      break;
    }
    case RecordType::Char: {
      std::string text;
      if (P::CurrentSimulator(file)) {
        text.assign(kSimulatorNameWidth, ' ');
        if (!P::ReadValues(file, text.data(), 1, kSimulatorNameWidth)) return false;
        text = WithoutTrailingBlanks(std::move(text));
      } else if (!P::ReadWholeRecord(file, text)) {
        return false;
      }
      out = Variant(std::move(text));
      break;
    }
    case RecordType::Mess:
    case RecordType::None: return P::Fail(file, "no record value to read");
  }
  return P::Consume(file, 1);
}

// Gives target the value read, converted to the type the target holds.
void AssignToTarget(Variant& target, const Variant& read) {
  switch (target.Type()) {
    case VarType::Integer: target = Variant(read.ToInteger()); break;
    case VarType::Long: target = Variant(read.ToLong()); break;
    case VarType::Single: target = Variant(read.ToSingle()); break;
    case VarType::Double: target = Variant(read.ToDouble()); break;
    case VarType::Boolean: target = Variant(read.ToBool()); break;
    case VarType::String: target = Variant(read.ToText()); break;
    case VarType::Date: target = Variant(read.ToDate()); break;
    default: target = read; break;
  }
}

void FromVariant(const Variant& v, std::string& out) { out = v.ToText(); }
void FromVariant(const Variant& v, int32_t& out) { out = v.ToLong(); }
void FromVariant(const Variant& v, int16_t& out) { out = v.ToInteger(); }
void FromVariant(const Variant& v, float& out) { out = v.ToSingle(); }
void FromVariant(const Variant& v, double& out) { out = v.ToDouble(); }
void FromVariant(const Variant& v, bool& out) { out = v.ToBool(); }

}  // namespace

// ---- headers -----------------------------------------------------------

void RecordCodec::ReadHeader(RecordFile& file, std::string& keyword, int32_t& count,
                             std::string& type, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadHeader)", [&] {
    uint8_t buf[kStoreHeaderBytes];
    int32_t n = 0;
    if (!P::ReadHeaderRecord(file, buf, n)) return;
    bool simulator = n == kSimulatorHeaderBytes;
    std::size_t width = static_cast<std::size_t>(n - 8);
    keyword = WithoutTrailingBlanks(std::string(reinterpret_cast<const char*>(buf), width));
    count = record_bytes::GetBigEndian32(buf + width);
    type.assign(reinterpret_cast<const char*>(buf + width + 4), 4);
    RecordType t = ParseRecordType(type);
    if (t == RecordType::None) {
      P::Fail(file, "unknown record type");
      return;
    }
    if (count < 0) {
      P::Fail(file, "negative count");
      return;
    }
    if (t == RecordType::Mess && count != 0) {
      P::Fail(file, "a MESS record with values");
      return;
    }
    if (MinimumPayloadBytes(t, simulator, count) > P::BytesLeft(file)) {
      P::Fail(file, "count beyond the end of the file");
      return;
    }
    P::BeginRecord(file, t, simulator, count);
    qOK = true;
  });
}

void RecordCodec::WriteHeader(RecordFile& file, const std::string& keyword, int32_t count,
                              const std::string& type, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteHeader)",
             [&] { WriteHeaderOf(file, keyword, count, type, false, qOK); });
}

void RecordCodec::WriteSimulatorHeader(RecordFile& file, const std::string& keyword, int32_t count,
                                       const std::string& type, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteSimulatorHeader)",
             [&] { WriteHeaderOf(file, keyword, count, type, true, qOK); });
}

void RecordCodec::WriteHeaderOf(RecordFile& file, const std::string& keyword, int32_t count,
                                const std::string& type, bool qSimulator, bool& qOK) {
  if (!P::Writing(file)) {
    P::Fail(file, "the file is not open for writing");
    return;
  }
  RecordType t = ParseRecordType(type);
  if (t == RecordType::None) {
    P::Fail(file, "unknown record type");
    return;
  }
  if (count < 0) {
    P::Fail(file, "negative count");
    return;
  }
  if (t == RecordType::Mess && count != 0) {
    P::Fail(file, "a MESS record with values");
    return;
  }
  int32_t width = qSimulator ? kSimulatorKeywordWidth : kStoreKeywordWidth;
  uint8_t buf[kStoreHeaderBytes];
  std::string field = CutOrPad(keyword, static_cast<std::size_t>(width));
  std::copy(field.begin(), field.end(), buf);
  record_bytes::PutBigEndian32(buf + width, count);
  std::copy_n(type.data(), 4, buf + width + 4);
  if (!P::WritePhysical(file, buf, width + 8, 1)) return;
  P::BeginRecord(file, t, qSimulator, count);
  if (keyword.size() > static_cast<std::size_t>(width)) {
    P::Fail(file, "keyword too long: written cut");
    // The record stays open: its values still belong behind this header.
    P::BeginRecord(file, t, qSimulator, count);
    return;
  }
  qOK = true;
}

// ---- single values -----------------------------------------------------

void RecordCodec::ReadValue(RecordFile& file, Variant& value, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadValue)", [&] {
    Variant read;
    if (!ReadNatural(file, read)) return;
    AssignToTarget(value, read);
    qOK = true;
  });
}

template <class T>
void RecordCodec::ReadValueAs(RecordFile& file, T& value, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (ReadValue)", [&] {
    Variant read;
    if (!ReadNatural(file, read)) return;
    FromVariant(read, value);
    qOK = true;
  });
}

void RecordCodec::ReadValue(RecordFile& file, std::string& value, bool& qOK) {
  ReadValueAs(file, value, qOK);
}
void RecordCodec::ReadValue(RecordFile& file, int32_t& value, bool& qOK) {
  ReadValueAs(file, value, qOK);
}
void RecordCodec::ReadValue(RecordFile& file, int16_t& value, bool& qOK) {
  ReadValueAs(file, value, qOK);
}
void RecordCodec::ReadValue(RecordFile& file, float& value, bool& qOK) {
  ReadValueAs(file, value, qOK);
}
void RecordCodec::ReadValue(RecordFile& file, double& value, bool& qOK) {
  ReadValueAs(file, value, qOK);
}
void RecordCodec::ReadValue(RecordFile& file, bool& value, bool& qOK) {
  ReadValueAs(file, value, qOK);
}

void RecordCodec::WriteValue(RecordFile& file, const Variant& value, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteValue)", [&] {
    if (!P::Writing(file)) {
      P::Fail(file, "the file is not open for writing");
      return;
    }
    if (!P::RecordOpen(file)) {
      P::Fail(file, "no record value is due");
      return;
    }
    bool ok = false;
    switch (P::CurrentType(file)) {
      case RecordType::Inte: {
        int32_t v = value.ToLong();
        ok = P::WritePhysical(file, &v, 4, 4);
        break;
      }
      case RecordType::Logi: {
        int32_t v = value.ToBool() ? -1 : 0;
        ok = P::WritePhysical(file, &v, 4, 4);
        break;
      }
      case RecordType::Real: {
        float v = value.ToSingle();
        ok = P::WritePhysical(file, &v, 4, 4);
        break;
      }
      case RecordType::Doub: {
        double v = value.ToDouble();
        ok = P::WritePhysical(file, &v, 8, 8);
        break;
      }
      case RecordType::Byte: {
        int32_t v = value.ToLong();
        if (v < 0 || v > 255) RaiseFault(kFaultOverflow);
        uint8_t b = static_cast<uint8_t>(v);
        ok = P::WritePhysical(file, &b, 1, 1);
        break;
      }
      case RecordType::Char: {
        std::string text = value.ToText();
        if (P::CurrentSimulator(file)) text = CutOrPad(text, kSimulatorNameWidth);
        ok = P::WritePhysical(file, text.data(), static_cast<int64_t>(text.size()), 1);
        break;
      }
      case RecordType::Mess:
      case RecordType::None: P::Fail(file, "no record value is due"); return;
    }
    if (!ok || !P::Consume(file, 1)) return;
    qOK = true;
  });
}

void RecordCodec::SkipValues(int32_t count, RecordFile& file, bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (SkipValues)", [&] {
    if (!P::Reading(file)) {
      P::Fail(file, "the file is not open for reading");
      return;
    }
    if (count < 0) {
      P::Fail(file, "negative count");
      return;
    }
    bool open = P::RecordOpen(file);
    if (open && count > P::ValuesLeft(file)) {
      P::Fail(file, "more values than the record holds");
      return;
    }
    RecordType type = open ? P::CurrentType(file) : RecordType::Inte;
    if (type == RecordType::Char && !P::CurrentSimulator(file)) {
      for (int32_t i = 0; i < count; ++i) {
        if (!P::SkipWholeRecord(file)) return;
      }
    } else if (count > 0) {
      int32_t w = RecordValueWidth(type);
      if (int64_t{count} * w > P::BytesLeft(file)) {
        P::Fail(file, "count beyond the end of the file");
        return;
      }
      if (!P::SkipValues(file, count, w)) return;
    }
    if (!P::Consume(file, count)) return;
    qOK = true;
  });
}

void RecordCodec::WriteCharValue(int32_t width, const std::string& text, RecordFile& file,
                                 bool& qOK) {
  qOK = false;
  RunGuarded("RecordCodec (WriteCharValue)", [&] {
    if (!P::Writing(file)) {
      P::Fail(file, "the file is not open for writing");
      return;
    }
    if (width < 1) {
      P::Fail(file, "a name must be at least 1 character wide");
      return;
    }
    if (P::RecordOpen(file)) {
      if (P::CurrentType(file) != RecordType::Char) {
        P::Fail(file, "the record is of another type");
        return;
      }
      if (P::CurrentSimulator(file) && width != kSimulatorNameWidth) {
        P::Fail(file, "a simulator name is 8 characters wide");
        return;
      }
    }
    std::string field = CutOrPad(text, static_cast<std::size_t>(width));
    if (!P::WritePhysical(file, field.data(), width, 1) || !P::Consume(file, 1)) return;
    qOK = true;
  });
}

}  // namespace vndata
