#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/record_codec.h"
#include "vndata/platform/record_file.h"

using namespace vndata;
using namespace vndata::testutil;

namespace {

namespace fs = std::filesystem;

// A folder of its own for each test, removed afterwards.
class ScratchTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() /
           ("vndata_squeeze_" + std::to_string(::getpid()) + "_" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }
  std::string Path(const std::string& name) const { return (dir_ / name).string(); }

  fs::path dir_;
  LogCapture log_;
};

std::vector<float> Column(mxDataSet& ds, int32_t c) {
  Array<float> v;
  if (!ds.GetValues(c, v)) return {};
  return std::vector<float>(v.begin(), v.end());
}

}  // namespace

TEST_F(ScratchTest, MemorySqueezeGoesByWayOfTheScratchFileAndRemovesIt) {
  const std::string name = Path("load.scr");
  mxDataSet ds;
  ds.let_ScratchFileName(name);
  Array2<float> a = Numbered(5, 3);
  bool qOK = false;
  ds.bInitialiseFrom2d(a, SimpleHeaders(3), qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(log_.Lines().size(), 3u);
  EXPECT_EQ(log_.Lines()[0], "Memory squeeze " + name);
  EXPECT_EQ(log_.Lines()[1], "Using scratch file " + name);
  EXPECT_EQ(log_.Lines()[2], "Removing scratch file " + name);
  EXPECT_FALSE(fs::exists(name));
  // The values arrived intact; the reader's copy was released.
  EXPECT_FALSE(a.IsAllocated());
  EXPECT_EQ(ds.get_NumRows(), 5);
  EXPECT_EQ(ds.get_NumCols(), 3);
  for (int32_t c = 1; c <= 3; ++c)
    EXPECT_EQ(Column(ds, c), (std::vector<float>{100.f * c + 1, 100.f * c + 2, 100.f * c + 3,
                                                 100.f * c + 4, 100.f * c + 5}));
  std::string z;
  EXPECT_TRUE(ds.GetAttribute(2, ATT_VARIABLE, z));
  EXPECT_EQ(z, "V2");
  float mn = 0, mx = 0;
  EXPECT_TRUE(ds.GetColMinMax(3, mn, mx));
  EXPECT_EQ(mn, 301.0f);
  EXPECT_EQ(mx, 305.0f);
  EXPECT_TRUE(ds.get_Initialised());
  EXPECT_FALSE(ds.get_IsDirty());
  EXPECT_TRUE(fs::is_empty(dir_));
}

TEST_F(ScratchTest, AFileStagedByTheReaderIsReadWithoutAnArray) {
  const std::string name = Path("staged.scr");
  ASSERT_TRUE(mxDataSet::WriteScratchFile(name, Numbered(4, 2)));
  ASSERT_TRUE(fs::exists(name));
  mxDataSet ds;
  ds.let_ScratchFileName(name);
  Array2<float> none;
  bool qOK = false;
  ds.bInitialiseFrom2d(none, SimpleHeaders(2), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{201, 202, 203, 204}));
  EXPECT_FALSE(fs::exists(name));
  ASSERT_EQ(log_.Lines().size(), 3u);
  EXPECT_EQ(log_.Lines()[2], "Removing scratch file " + name);
}

TEST_F(ScratchTest, AMissingScratchFileFailsAndRemovesNothing) {
  const std::string name = Path("missing.scr");
  mxDataSet ds;
  ds.let_ScratchFileName(name);
  Array2<float> none;
  bool qOK = true;
  ds.bInitialiseFrom2d(none, SimpleHeaders(2), qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(log_.Lines().size(), 2u);
  EXPECT_EQ(log_.Lines()[0], "Memory squeeze " + name);
  EXPECT_EQ(log_.Lines()[1], "Using scratch file " + name);
  EXPECT_EQ(ds.get_NumCols(), 0);
}

TEST_F(ScratchTest, AFileThatIsNotAScratchFileFailsAndIsKept) {
  const std::string name = Path("other.scr");
  {
    RecordFile f;
    RecordCodec codec;
    bool q = false;
    f.OpenForWrite(name, q);
    codec.WriteHeader(f, "OTHER", 1, "INTE", q);
    codec.WriteIntegerArray(1, 0, Array<int32_t>{5}, f, q);
    f.Close();
  }
  mxDataSet ds;
  ds.let_ScratchFileName(name);
  Array2<float> none;
  bool qOK = true;
  ds.bInitialiseFrom2d(none, SimpleHeaders(1), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(fs::exists(name));
}

TEST_F(ScratchTest, TheScratchFileHoldsItsDimensionsThenTheValues) {
  const std::string name = Path("layout.scr");
  ASSERT_TRUE(mxDataSet::WriteScratchFile(name, Numbered(3, 2)));
  RecordFile f;
  RecordCodec codec;
  bool q = false;
  f.OpenForRead(name, q);
  ASSERT_TRUE(q);
  std::string keyword, type;
  int32_t count = 0;
  codec.ReadHeader(f, keyword, count, type, q);
  ASSERT_TRUE(q);
  EXPECT_EQ(keyword, "DIMENS");
  EXPECT_EQ(type, "INTE");
  ASSERT_EQ(count, 3);
  Array<int32_t> sizes;
  codec.ReadIntegerArray(count, "", f, sizes, q);
  ASSERT_TRUE(q);
  EXPECT_EQ(sizes(1), 2);
  EXPECT_EQ(sizes(2), 3);
  EXPECT_EQ(sizes(3), 2);
  codec.ReadHeader(f, keyword, count, type, q);
  EXPECT_EQ(keyword, "VALUES");
  EXPECT_EQ(type, "REAL");
  ASSERT_EQ(count, 6);
  Array<float> v;
  codec.ReadRealArray(count, "", f, v, q);
  ASSERT_TRUE(q);
  EXPECT_EQ(v(1), 101.0f);
  EXPECT_EQ(v(3), 103.0f);
  EXPECT_EQ(v(4), 201.0f);
}

TEST_F(ScratchTest, InitialiseFromByteStoreTakesTheSqueezePathToo) {
  mxDataSet src;
  Build(src, 2, 2);
  AttributePools pools;
  bool qOK = false;
  src.GetByteStoreArray(pools, qOK);
  const std::string name = Path("bytestore.scr");
  mxDataSet ds;
  ds.let_ScratchFileName(name);
  Array2<float> a = Numbered(2, 2);
  Array2<uint8_t> bPointers(1, 24, 1, 2);
  bPointers.Fill(0xFF);  // every pointer -1
  ds.InitialiseFromByteStore(a, pools, bPointers, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Column(ds, 1), (std::vector<float>{101, 102}));
  EXPECT_FALSE(fs::exists(name));
  EXPECT_EQ(log_.Lines().size(), 3u);
}

TEST_F(ScratchTest, AnEmptyNameTurnsTheSqueezeOff) {
  mxDataSet ds;
  ds.let_ScratchFileName(Path("x.scr"));
  ds.let_ScratchFileName("");
  Array2<float> a = Numbered(2, 2);
  bool qOK = false;
  ds.bInitialiseFrom2d(a, SimpleHeaders(2), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_TRUE(log_.Lines().empty());
  EXPECT_TRUE(a.IsAllocated());  // an ordinary load copies
}

TEST_F(ScratchTest, MemorySqueezeWithoutANameCopies) {
  mxDataSet ds;
  Array2<float> a = Numbered(3, 2);
  bool qOK = false;
  ds.MemorySqeeezeBuffer(1, a, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_TRUE(log_.Lines().empty());
  EXPECT_EQ(ds.get_NumCols(), 2);
  EXPECT_EQ(ds.get_NumRows(), 3);
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{201, 202, 203}));
  EXPECT_TRUE(ds.get_Initialised());
}
