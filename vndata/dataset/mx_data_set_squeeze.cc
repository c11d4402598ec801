// mxDataSet: loading a block of values by way of a scratch file, for when
// memory is too fragmented for a second copy to stand beside the first.
//
// A scratch file is a record file of two records:
//   "DIMENS"  INTE  3 values: 2 (the count of sizes that follow), rows, columns
//   "VALUES"  REAL  rows * columns values, column after column
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <string>

#include <unistd.h>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/array_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/message_log.h"
#include "vndata/platform/record_codec.h"
#include "vndata/platform/record_file.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

// Values in one physical record of the scratch file (4 MB).
constexpr int32_t kScratchBlock = 1 << 20;

// A fresh file name of our own, "MX" and a unique tail, in the temporary folder.
std::string TemporaryScratchName() {
  std::string path = (std::filesystem::temp_directory_path() / "MXXXXXXX").string();
  const int fd = mkstemp(path.data());
  if (fd < 0) RaiseFault(kFaultFileNotFound);
  close(fd);
  return path;
}

}  // namespace

bool mxDataSet::WriteScratchFile(const std::string& zFileName, const Array2<float>& dArray) {
  bool qOK = false;
  RunGuarded("mxDataSet  (WriteScratchFile)", [&] {
    const int64_t nRows = static_cast<int64_t>(dArray.Rows()), nCols = static_cast<int64_t>(dArray.Cols());
    if (nRows < 1 || nCols < 1) return;
    const int64_t nValues = nRows * nCols;
    if (nValues > INT32_MAX) RaiseFault(kFaultOverflow);
    auto file = std::make_shared<RecordFile>();
    RecordCodec codec;
    bool qStep = false;
    file->OpenForWrite(zFileName, qStep);
    if (!qStep) return;
    const Array<int32_t> sizes{2, static_cast<int32_t>(nRows), static_cast<int32_t>(nCols)};
    codec.WriteHeader(*file, "DIMENS", 3, "INTE", qStep);
    if (qStep) codec.WriteIntegerArray(3, 0, sizes, *file, qStep);
    if (qStep) codec.WriteHeader(*file, "VALUES", static_cast<int32_t>(nValues), "REAL", qStep);
    if (qStep) codec.WriteRealArray(static_cast<int32_t>(nValues), kScratchBlock, dArray.data(), *file, qStep);
    bool qClosed = false;
    file->Close(qClosed);
    qOK = qStep && qClosed;
  });
  return qOK;
}

// Reads a scratch file into the buffer's own array; false when the file is
// not one.
void mxDataSet::ReadScratchFile(const std::string& zFileName, DATABUFFER& buf, bool& qOK) {
  qOK = false;
  auto file = std::make_shared<RecordFile>();
  RecordCodec codec;
  bool qStep = false;
  file->OpenForRead(zFileName, qStep);
  if (!qStep) return;
  std::string keyword, type;
  int32_t count = 0;
  codec.ReadHeader(*file, keyword, count, type, qStep);
  if (!qStep || keyword != "DIMENS" || type != "INTE" || count < 3) return;
  Array<int32_t> sizes;
  codec.ReadIntegerArray(count, "", *file, sizes, qStep);
  // The first integer tells how many sizes follow: rows and columns.
  if (!qStep || sizes(1) != 2 || sizes(2) < 1 || sizes(3) < 1) return;
  const int32_t nRows = sizes(2), nCols = sizes(3);
  codec.ReadHeader(*file, keyword, count, type, qStep);
  if (!qStep || keyword != "VALUES" || type != "REAL" ||
      static_cast<int64_t>(count) != static_cast<int64_t>(nRows) * nCols)
    return;
  Array2<float> values(1, nRows, 1, nCols);
  codec.ReadRealArray(count, "", *file, values.data(), qStep);
  file->Close();
  if (!qStep) return;
  buf.values.Swap(values);
  buf.nRowsInUse = nRows;
  buf.nColumns = nCols;
  buf.nCapacity = buf.values.UBound(1);
  qOK = true;
}

void mxDataSet::RemoveScratchFile(const std::string& zFileName) {
  MessageLog::Shared().Add("Removing scratch file " + zFileName, false);
  std::remove(zFileName.c_str());
}

void mxDataSet::copySingleData(Array2<float>& dArray, DATABUFFER& buf, bool& qOK) {
  qOK = false;
  if (source_.qScratchFile) {
    MessageLog::Shared().Add("Using scratch file " + source_.zScratchFileName, false);
    // Values handed over in memory go to disk first and are released, so that
    // only one copy exists at any time; otherwise the reader has staged them.
    if (dArray.IsAllocated()) {
      if (!WriteScratchFile(source_.zScratchFileName, dArray)) return;
      dArray.Erase();
    }
    bool qRead = false;
    ReadScratchFile(source_.zScratchFileName, buf, qRead);
    if (!qRead) return;
    RemoveScratchFile(source_.zScratchFileName);
    qOK = true;
    return;
  }
  const int32_t nRows = dArray.UBound(1), nCols = dArray.UBound(2);
  try {
    Array2<float> copy(1, nRows, 1, nCols);
    ArrayTools::CopyRows2(dArray, dArray.LBound(1), copy, 1, nRows, nCols);
    buf.values.Swap(copy);
    buf.nRowsInUse = nRows;
    buf.nColumns = nCols;
    buf.nCapacity = buf.values.UBound(1);
    qOK = true;
    return;
  } catch (const std::bad_alloc&) {
    // No room for a second copy: by way of a file of our own.
  }
  const std::string zName = TemporaryScratchName();
  if (!WriteScratchFile(zName, dArray)) {
    std::remove(zName.c_str());
    return;
  }
  dArray.Erase();
  bool qRead = false;
  ReadScratchFile(zName, buf, qRead);
  if (!qRead) {
    std::remove(zName.c_str());
    return;
  }
  RemoveScratchFile(zName);
  qOK = true;
}

void mxDataSet::MemorySqeeezeBuffer(int32_t iBuffer, Array2<float>& dArray, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (MemorySqeeezeBuffer)", [&] {
    DATABUFFER& buf = rows_.buffers(iBuffer);
    bool qStep = false;
    copySingleData(dArray, buf, qStep);
    if (!qStep) return;
    if (buf.nRowsInUse >= 1 && buf.nColumns >= 1) {
      // Sizes only: the data are already in the buffer's array, which is
      // then its own source.
      DimensionDataBuffer(iBuffer, buf.nColumns, buf.nRowsInUse, qStep, false, true);
      if (!qStep) return;
      InitialiseColumnValuesBuffer(iBuffer, buf.values, qStep);
      if (!qStep) return;
    }
    qOK = true;
  });
}

}  // namespace vndata
