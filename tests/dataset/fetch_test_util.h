// Helpers of the fetch-on-demand tests: a result file written record by
// record, a data set whose columns are records of it, and a listener that
// keeps the events it hears.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/dataset/dataset_test_util.h"
#include "tests/platform/sim_file_test_util.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/mx_notify_data.h"
#include "vndata/platform/message_log.h"

namespace vndata::fetch_test {

using Entry = mxDataSet::FODPointer;

// One column of a location table: its entry and its file number.
struct Column {
  Entry e;
  int32_t iFile = 1;
};

// The flag word of a derived column of rule iADQ.
inline int32_t DerivedFlags(int32_t iADQ) { return 16 | (iADQ << 16); }
// The flag word of a column of type iType converted by nConvPars factors
// from iConvPtr on.
inline int32_t ConvertFlags(int32_t iType, int32_t nConvPars, int32_t iConvPtr) {
  return iType | (nConvPars << 5) | (iConvPtr << 16);
}

// iPosArray(1..5, 1..n) of the columns.
inline Array2<int32_t> PosArray(const std::vector<Column>& cols) {
  const int32_t n = static_cast<int32_t>(cols.size());
  Array2<int32_t> a(1, 5, 1, n);
  for (int32_t c = 1; c <= n; ++c) {
    const Column& col = cols[static_cast<std::size_t>(c - 1)];
    a(1, c) = col.e.nValues;
    a(2, c) = col.e.iFlags;
    a(3, c) = col.e.iPos1;
    a(4, c) = col.e.iPos2;
    a(5, c) = col.iFile;
  }
  return a;
}

inline Array<bool> Settings(bool s1 = false, bool s2 = true, bool s3 = false, bool s4 = false,
                            bool s5 = false) {
  return Array<bool>{s1, s2, s3, s4, s5};
}

// A stored column of the record whose header starts at pos.
inline Column Stored(int64_t pos, int32_t nValues, int32_t iFlags = 0) {
  Column c;
  c.e.nValues = nValues;
  c.e.iPos1 = sim_test::Low(pos);
  c.e.iPos2 = sim_test::High(pos);
  c.e.iFlags = iFlags;
  return c;
}

// A derived column: rule iADQ over the run of iDQArray from iDQPtr, or the
// two operands of the complement rule (iADQ 0).
inline Column Derived(int32_t iADQ, int32_t iPos1, int32_t iPos2, int32_t nValues) {
  Column c;
  c.e.nValues = nValues;
  c.e.iPos1 = iPos1;
  c.e.iPos2 = iPos2;
  c.e.iFlags = DerivedFlags(iADQ);
  return c;
}

// Makes ds a data set of n columns with simple headers, reading zFile on
// demand through the location table of cols.
inline bool MakeFetchDataSet(mxDataSet& ds, const std::string& zFile, const std::vector<Column>& cols,
                             const Array<int32_t>& iDQArray = Array<int32_t>(),
                             const Array<float>& sUCFactors = Array<float>()) {
  const int32_t n = static_cast<int32_t>(cols.size());
  bool qOK = false;
  ds.DimensionData(n, 1, qOK);
  if (!qOK) return false;
  ds.bInitialiseColumnAttributes(testutil::SimpleHeaders(n), qOK);
  if (!qOK) return false;
  ds.let_FileName(zFile);
  ds.let_FetchOnDemandActive(true);
  if (iDQArray.IsAllocated() || sUCFactors.IsAllocated())
    ds.AssignFODPlusPointers(Settings(), PosArray(cols), iDQArray, sUCFactors, qOK);
  else
    ds.AssignFODPointers(Settings(), PosArray(cols), qOK);
  return qOK;
}

// A listener that keeps every event as a line of text.
class Recorder : public mxNotifyDataListener {
 public:
  void Notify(std::string& zMsg) override { lines.push_back("Notify " + zMsg); }
  void FODDataTVKey(std::string& zKey, int32_t& iColumn) override {
    lines.push_back("FODDataTVKey " + zKey + " " + std::to_string(iColumn));
  }
  void FODDataLoaded(int32_t& iSet, int32_t& iColumn) override {
    lines.push_back("FODDataLoaded " + std::to_string(iSet) + " " + std::to_string(iColumn));
  }
  void FODDataUnloaded(std::string& zKey, int32_t& iColumn) override {
    lines.push_back("FODDataUnloaded " + zKey + " " + std::to_string(iColumn));
  }
  int Count(const std::string& prefix) const {
    int n = 0;
    for (const std::string& l : lines) n += l.rfind(prefix, 0) == 0 ? 1 : 0;
    return n;
  }
  std::vector<std::string> lines;
};

// Subscribes a recorder to a new handler given to the data set; the
// handler's own "DATASET Initialised:" is not kept.
inline std::shared_ptr<Recorder> Listen(mxDataSet& ds) {
  auto handler = std::make_shared<mxNotifyData>();
  ds.set_EventHandler(handler);
  auto rec = std::make_shared<Recorder>();
  handler->Subscribe(rec);
  return rec;
}

// Whether this process holds a descriptor open on the file.
inline bool FileHeldOpen(const std::string& zFile) {
  std::error_code ec;
  const std::filesystem::path want = std::filesystem::weakly_canonical(zFile, ec);
  for (const auto& fd : std::filesystem::directory_iterator("/proc/self/fd", ec)) {
    std::error_code e2;
    std::filesystem::path target = std::filesystem::read_symlink(fd.path(), e2);
    if (!e2 && (target == want || target.string() == want.string() + " (deleted)")) return true;
  }
  return false;
}

inline std::vector<float> Values(const Array<float>& a) {
  if (!a.IsAllocated()) return {};
  return std::vector<float>(a.begin(), a.end());
}

// The thread's trace lines with a true flag.
inline std::vector<std::string> TraceLines() {
  std::vector<std::string> out;
  const MessageLog& log = MessageLog::Shared();
  for (std::size_t i = 0; i < log.Lines().size(); ++i)
    if (log.Flags()[i]) out.push_back(log.Lines()[i]);
  return out;
}

}  // namespace vndata::fetch_test
