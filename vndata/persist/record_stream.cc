#include "vndata/persist/record_stream.h"

#include <utility>

#include "vndata/platform/module_state.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

// The string delimiter of the codec's formatted mode, passed on every read.
const std::string kQuote = "'";

constexpr const char* kTypes[6] = {"INTE", "CHAR", "REAL", "DOUB", "LOGI", "BYTE"};

// A header whose type the codec refused: the header itself was read (four
// characters of type came back) but names none of the codec's types.
bool ForeignType(const std::string& zType) {
  if (zType.size() != 4) return false;
  for (const char* z : kTypes)
    if (zType == z) return false;
  return zType != "MESS";
}

}  // namespace

// ---- Record ---------------------------------------------------------------

void RecordStreamReader::Record::ReadIntegers(Array<int32_t>& values) {
  if (count >= 1) codec.ReadIntegerArray(count, kQuote, file, values, qOK);
}

void RecordStreamReader::Record::ReadReals(Array<float>& values) {
  if (count >= 1) codec.ReadRealArray(count, kQuote, file, values, qOK);
}

void RecordStreamReader::Record::ReadDoubles(Array<double>& values) {
  if (count >= 1) codec.ReadDoubleArray(count, kQuote, file, values, qOK);
}

void RecordStreamReader::Record::ReadLogicals(Array<int16_t>& values) {
  if (count >= 1) codec.ReadLogicalArray(count, kQuote, file, values, qOK);
}

void RecordStreamReader::Record::ReadBytes(Array<uint8_t>& values) {
  if (count >= 1) codec.ReadByteArray(count, file, values, qOK);
}

bool RecordStreamReader::Record::ReadText(std::string& zText) {
  if (count < 1) return false;
  std::string z;
  codec.ReadValue(file, z, qOK);
  if (!qOK) return false;
  zText = z;
  // Further values belong to the record and are dropped.
  for (int32_t i = 2; i <= count && qOK; ++i) codec.ReadValue(file, z, qOK);
  return true;
}

bool RecordStreamReader::Record::ReadInteger(int32_t& iValue) {
  if (count < 1) return false;
  Array<int32_t> v;
  codec.ReadIntegerArray(count, kQuote, file, v, qOK);
  if (!qOK) return false;
  iValue = v(v.LBound());
  return true;
}

bool RecordStreamReader::Record::ReadLogical(bool& qValue) {
  if (count < 1) return false;
  Array<int16_t> v;
  codec.ReadLogicalArray(count, kQuote, file, v, qOK);
  if (!qOK) return false;
  qValue = v(v.LBound()) != 0;
  return true;
}

bool RecordStreamReader::Record::ReadReal(float& sValue) {
  if (count < 1) return false;
  Array<float> v;
  codec.ReadRealArray(count, kQuote, file, v, qOK);
  if (!qOK) return false;
  sValue = v(v.LBound());
  return true;
}

bool RecordStreamReader::Record::ReadDouble(double& dValue) {
  if (count < 1) return false;
  Array<double> v;
  codec.ReadDoubleArray(count, kQuote, file, v, qOK);
  if (!qOK) return false;
  dValue = v(v.LBound());
  return true;
}

void RecordStreamReader::Record::Skip() { SkipPayload(codec, file, type, count, qOK); }

// ---- RecordStreamReader ------------------------------------------------------

RecordStreamReader::RecordStreamReader(std::string zClosingTag)
    : closingTag_(std::move(zClosingTag)) {}

int32_t RecordStreamReader::TypeIndex(const std::string& zType) {
  for (int32_t i = 0; i < 6; ++i)
    if (zType == kTypes[i]) return i;
  return -1;
}

void RecordStreamReader::On(const std::string& zType, const std::string& zKeyword,
                            Handler handler) {
  int32_t t = TypeIndex(zType);
  if (t < 0) RaiseFault(kFaultInvalidCall);
  handlers_[t].byKeyword[zKeyword] = std::move(handler);
}

void RecordStreamReader::OnUnknown(const std::string& zType, Handler handler) {
  int32_t t = TypeIndex(zType);
  if (t < 0) RaiseFault(kFaultInvalidCall);
  handlers_[t].unknown = std::move(handler);
}

void RecordStreamReader::SkipPayload(RecordCodec& codec, RecordFile& file,
                                     const std::string& type, int32_t count, bool& qOK) {
  if (count < 1) return;
  int32_t t = TypeIndex(type);
  if (t < 0) return;  // not one of the six: nothing is read
  if (type == "CHAR") {
    std::string z;
    for (int32_t i = 1; i <= count && qOK; ++i) codec.ReadValue(file, z, qOK);
    return;
  }
  // The values are stepped over rather than read into an array that would
  // be dropped; the length markers are checked all the same.
  codec.SkipValues(count, file, qOK);
}

void RecordStreamReader::Dispatch(Record& rec) const {
  int32_t t = TypeIndex(rec.type);
  if (t < 0) return;
  const TypeHandlers& h = handlers_[t];
  auto it = h.byKeyword.find(rec.keyword);
  if (it != h.byKeyword.end())
    it->second(rec);
  else if (h.unknown)
    h.unknown(rec);
  else
    rec.Skip();
}

bool RecordStreamReader::Run(RecordCodec& codec, RecordFile& file, bool& qOK) const {
  qOK = false;
  bool qEnd = false;
  int32_t nRecords = 0;
  std::string keyword, type;
  for (;;) {
    int32_t count = 0;
    keyword.clear();
    type.clear();
    codec.ReadHeader(file, keyword, count, type, qOK);
    bool qStop = false;
    if (!qOK) {
      if (!ForeignType(type)) break;
      // A type outside the codec's: the header is consumed, nothing else.
      qOK = true;
    } else {
      Record rec(codec, file, keyword, count, type, qOK);
      Dispatch(rec);
      qEnd = qEnd || rec.end_;
      qStop = rec.stop_;
    }
    if (!qOK) break;
    if (++nRecords % 10 == 0) file.ProgressTick();
    if (type == "CHAR" && keyword == closingTag_) qEnd = true;
    if (qStop) break;
    if (yieldEachRecord_ && YieldToHost()) break;
    int32_t iPos1 = 0, iPos2 = 0;
    bool qEOF = false;
    file.AtEndOfFile(iPos1, iPos2, qEOF);
    if (qEOF || qEnd) break;
  }
  if (!qEnd) qOK = false;
  return qOK;
}

}  // namespace vndata
