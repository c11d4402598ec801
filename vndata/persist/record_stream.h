// RecordStreamReader: the read loop shared by every reader of the store file
// (the store, each data set, the derived quantity group).
//
// A reader registers handlers by record type and keyword, names the closing
// tag of its level, and runs the loop:
//
//   1. Read the next header. No header (end of file, damage): leave.
//   2. Find the type among "INTE", "CHAR", "REAL", "DOUB", "LOGI", "BYTE",
//      then the keyword among that type's handlers, exactly, case included.
//      A keyword is known only under the type it was registered with.
//   3. A known keyword runs its handler, which reads the payload.
//   4. An unknown keyword of one of the six types runs that type's fallback
//      handler if the reader set one, and otherwise is skipped: "CHAR" one
//      value read at a time, any other type its `count` values stepped over
//      in one call; nothing at all for a count below 1.
//   5. A record of any other type ("MESS", or a type the codec does not
//      know) is not skipped: its header is consumed and nothing else, so a
//      stream holds no such record with a payload.
//   6. qOK false (from any read): leave.
//   7. Count the record; every tenth calls file.ProgressTick().
//   8. With SetYieldAfterEachRecord, yield to the host (YieldToHost); a
//      CancelLoad set meanwhile leaves the loop.
//   9. Ask file.AtEndOfFile; leave at the end of the file or once the
//      closing tag of this level ("CHAR" with that keyword) has been handled
//      or a handler has noted the end.
//
// Run reports true only when the end was noted and qOK is true: a stream
// that ends, fails or is cancelled before its closing tag reports false. A
// reader consumes a nested group by calling the nested reader from the
// handler of the group's opening tag, so it never sees the inner tags.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>

#include "vndata/platform/arrays.h"
#include "vndata/platform/record_codec.h"
#include "vndata/platform/record_file.h"

namespace vndata {

class RecordStreamReader {
 public:
  // The record being handled, with the reads a handler needs. Every read
  // sets qOK; a false qOK ends the loop after the handler returns.
  class Record {
   public:
    Record(RecordCodec& codec, RecordFile& file, const std::string& keyword, int32_t count,
           const std::string& type, bool& qOK)
        : codec(codec), file(file), keyword(keyword), count(count), type(type), qOK(qOK) {}

    RecordCodec& codec;
    RecordFile& file;
    const std::string& keyword;
    const int32_t count;
    const std::string& type;
    bool& qOK;

    // The whole payload as an array (nothing read for a count below 1; the
    // array is then left as it was).
    void ReadIntegers(Array<int32_t>& values);
    void ReadReals(Array<float>& values);
    void ReadDoubles(Array<double>& values);
    void ReadLogicals(Array<int16_t>& values);
    void ReadBytes(Array<uint8_t>& values);
    // The payload's first value into the target, the rest read and dropped.
    // False, with the target left alone, for a count below 1.
    bool ReadText(std::string& zText);
    bool ReadInteger(int32_t& iValue);
    bool ReadLogical(bool& qValue);
    bool ReadReal(float& sValue);
    bool ReadDouble(double& dValue);
    // The payload read and dropped by the skip rule of the record's type.
    void Skip();
    // The closing tag of this level has been met: leave after this record.
    void NoteEnd() { end_ = true; }
    // Leave after this record without noting the end (a cancelled load).
    void Stop() { stop_ = true; }

   private:
    friend class RecordStreamReader;
    bool end_ = false;
    bool stop_ = false;
  };

  using Handler = std::function<void(Record&)>;

  // zClosingTag: the "CHAR" keyword that closes this level ("<DQSTORE").
  explicit RecordStreamReader(std::string zClosingTag);

  // Handles records of type zType (one of the six) with keyword zKeyword.
  void On(const std::string& zType, const std::string& zKeyword, Handler handler);
  // Handles every record of type zType whose keyword has no handler, in
  // place of the skip rule.
  void OnUnknown(const std::string& zType, Handler handler);
  // Yield to the host after every record (the derived quantity reader).
  void SetYieldAfterEachRecord(bool qYield) { yieldEachRecord_ = qYield; }

  // Runs the loop over file from its position; see above. Returns qOK.
  bool Run(RecordCodec& codec, RecordFile& file, bool& qOK) const;

  // The skip rule on its own: reads or steps over count values of type.
  static void SkipPayload(RecordCodec& codec, RecordFile& file, const std::string& type,
                          int32_t count, bool& qOK);

 private:
  struct TypeHandlers {
    std::unordered_map<std::string, Handler> byKeyword;
    Handler unknown;
  };
  // Index 0..5 of a type in the dispatch order, -1 for any other type.
  static int32_t TypeIndex(const std::string& zType);
  void Dispatch(Record& rec) const;

  std::string closingTag_;
  TypeHandlers handlers_[6];
  bool yieldEachRecord_ = false;
};

}  // namespace vndata
