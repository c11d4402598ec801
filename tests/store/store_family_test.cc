// The family table of the store's per-data-set members: its shape, the text
// kept in docs/STORE_FAMILY.md, and a walk over every member marked present
// with a bad position.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "tests/store/store_fixtures.h"
#include "vndata/dataset/mx_table.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/platform/byte_store.h"
#include "vndata/store/internal/store_family.h"

namespace vndata {
namespace {

using Walk = std::function<void(mxDataStore&, int32_t)>;

// One call of each present member with a bad position p, checking the
// declared default (and that outputs are left as they were).
const std::map<std::string, Walk>& PresentMembers() {
  static const std::map<std::string, Walk> kWalks = {
      {"UnitDataSource", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.get_UnitDataSource(p), 0);
         const auto before = s.get_UnitDataSource(1);
         s.let_UnitDataSource(p, 7);
         EXPECT_EQ(s.get_UnitDataSource(1), before);
       }},
      {"DSDeleteAfterFetch", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_DSDeleteAfterFetch(p));
         const auto before = s.get_DSDeleteAfterFetch(1);
         s.let_DSDeleteAfterFetch(p, true);
         EXPECT_EQ(s.get_DSDeleteAfterFetch(1), before);
       }},
      {"DSNullValue", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_DSNullValue(p), 0.0); }},
      {"Child", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_Child(p)); }},
      {"CaseName", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_CaseName(p), ""); }},
      {"DataRootPath", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_DataRootPath(p), ""); }},
      {"DateStamp", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.get_DateStamp(p), "");
         const auto before = s.get_DateStamp(1);
         s.let_DateStamp(p, "changed");
         EXPECT_EQ(s.get_DateStamp(1), before);
       }},
      {"FileName", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_FileName(p), ""); }},
      {"FileType", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_FileType(p), 0); }},
      {"Formatted", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_Formatted(p)); }},
      {"GroupName", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_GroupName(p), ""); }},
      {"iEnd", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_iEnd(p), 0); }},
      {"Index", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.get_Index(p), 0);
         const auto before = s.get_Index(1);
         s.let_Index(p, 7);
         EXPECT_EQ(s.get_Index(1), before);
       }},
      {"Initialised", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_Initialised(p)); }},
      {"IsDirty", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_IsDirty(p));
         const auto before = s.get_IsDirty(1);
         s.let_IsDirty(p, true);
         EXPECT_EQ(s.get_IsDirty(1), before);
       }},
      {"iStart", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_iStart(p), 0); }},
      {"MaxRows", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_MaxRows(p), 0); }},
      {"NoRestart", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_NoRestart(p));
         const auto before = s.get_NoRestart(1);
         s.let_NoRestart(p, true);
         EXPECT_EQ(s.get_NoRestart(1), before);
       }},
      {"NoInactive", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_NoInactive(p)); }},
      {"NumCols", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_NumCols(p), 0); }},
      {"NumMarkers", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_NumMarkers(p), 0); }},
      {"UCaseOrigin", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_UCaseOrigin(p), ""); }},
      {"Origin", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_Origin(p), ""); }},
      {"SourceType", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_SourceType(p), ""); }},
      {"Unified", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_Unified(p)); }},
      {"Units", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_Units(p), 0); }},
      {"GetDataClass", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_GetDataClass(p), ""); }},
      {"DSHysteresis", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_DSHysteresis(p)); }},
      {"DSEndPointScaling", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_DSEndPointScaling(p)); }},
      {"DSDirEndPointScaling", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_DSDirEndPointScaling(p)); }},
      {"DSRevEndPointScaling", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_DSRevEndPointScaling(p)); }},
      {"DSAltEndPointScaling", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_DSAltEndPointScaling(p)); }},
      {"DSIPHASE", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_DSIPHASE(p), 0); }},
      {"DSSimulator", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_DSSimulator(p), ""); }},
      {"DSIgnoreInGRF", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_DSIgnoreInGRF(p)); }},
      {"LGRName", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_LGRName(p), ""); }},
      {"AllData", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_AllData(p)); }},
      {"UniqueKey", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_UniqueKey(p), ""); }},
      {"DualPorosity", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.get_DualPorosity(p)); }},
      {"qSelectionOnly", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_qSelectionOnly(p));
         const auto before = s.get_qSelectionOnly(1);
         s.let_qSelectionOnly(p, true);
         EXPECT_EQ(s.get_qSelectionOnly(1), before);
       }},
      {"DataSetDerivedFrom", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.get_DataSetDerivedFrom(p), 0);
         const auto before = s.get_DataSetDerivedFrom(1);
         s.let_DataSetDerivedFrom(p, 7);
         EXPECT_EQ(s.get_DataSetDerivedFrom(1), before);
       }},
      {"CreationMethod", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.get_CreationMethod(p), 0);
         const auto before = s.get_CreationMethod(1);
         s.let_CreationMethod(p, 7);
         EXPECT_EQ(s.get_CreationMethod(1), before);
       }},
      {"NumRows", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_NumRows(p), 0); }},
      {"NumWells", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_NumWells(p), 0); }},
      {"DSDataIndex", [](mxDataStore& s, int32_t p) {
         int32_t out = 7;
         EXPECT_FALSE(s.DSDataIndex(p, out));
         EXPECT_EQ(out, 7);
       }},
      {"DSDateStamp", [](mxDataStore& s, int32_t p) {
         std::string out = "changed";
         EXPECT_FALSE(s.DSDateStamp(p, out));
         EXPECT_EQ(out, "changed");
       }},
      {"DSFileType", [](mxDataStore& s, int32_t p) {
         int32_t out = 7;
         EXPECT_FALSE(s.DSFileType(p, out));
         EXPECT_EQ(out, 7);
       }},
      {"DSGroupName", [](mxDataStore& s, int32_t p) {
         std::string out = "changed";
         EXPECT_FALSE(s.DSGroupName(p, out));
         EXPECT_EQ(out, "changed");
       }},
      {"DSOrigin", [](mxDataStore& s, int32_t p) {
         std::string out = "changed";
         EXPECT_FALSE(s.DSOrigin(p, out));
         EXPECT_EQ(out, "changed");
       }},
      {"DSSourceType", [](mxDataStore& s, int32_t p) {
         std::string out = "changed";
         EXPECT_FALSE(s.DSSourceType(p, out));
         EXPECT_EQ(out, "changed");
       }},
      {"DSTVGroupName", [](mxDataStore& s, int32_t p) {
         std::string out = "changed";
         EXPECT_FALSE(s.DSTVGroupName(p, out));
         EXPECT_EQ(out, "changed");
       }},
      {"DSUnits", [](mxDataStore& s, int32_t p) {
         int32_t out = 7;
         EXPECT_FALSE(s.DSUnits(p, out));
         EXPECT_EQ(out, 7);
       }},
      {"DSDataClass", [](mxDataStore& s, int32_t p) {
         std::string out = "changed";
         EXPECT_FALSE(s.DSDataClass(p, out));
         EXPECT_EQ(out, "changed");
       }},
      {"DSTableName", [](mxDataStore& s, int32_t p) {
         std::string out = "changed";
         EXPECT_FALSE(s.DSTableName(p, out));
         EXPECT_EQ(out, "changed");
       }},
      {"DSGetDefaultX", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetDefaultX(p), 0); }},
      {"DSGetzOnly", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetzOnly(p), ""); }},
      {"DSGetIsDirty", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSGetIsDirty(p)); }},
      {"DSGetUnitDataSource", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetUnitDataSource(p), 0); }},
      {"DSGetUnitSource", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetUnitSource(p), ""); }},
      {"DSGetUnitCurrent", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetUnitCurrent(p), ""); }},
      {"GetDataRootPath", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.GetDataRootPath(p), ""); }},
      {"GetDataSetDate", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.GetDataSetDate(p), ""); }},
      {"GetFileName", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.GetFileName(p), ""); }},
      {"DSGetUseNulls", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetUseNulls(p), 0); }},
      {"DSGetNullValue", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetNullValue(p), 0.0); }},
      {"DSGetPerforationsSet", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSGetPerforationsSet(p)); }},
      {"DSGetPerforations", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSGetPerforations(p)); }},
      {"DSGetReaderNullValue", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetReaderNullValue(p), 0.0); }},
      {"DSGetReaderSetNull", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSGetReaderSetNull(p)); }},
      {"DSGetObsName", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetObsName(p), ""); }},
      {"DSGetReadPosition", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetReadPosition(p), 0); }},
      {"DSGetTimeInDays", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetTimeInDays(p), 0.0f); }},
      {"DSGetAccumulate", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSGetAccumulate(p)); }},
      {"DSGetAccRates", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetAccRates(p), 0); }},
      {"DSGetAccFrequency", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetAccFrequency(p), 0); }},
      {"DSGetAccInterval", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetAccInterval(p), ""); }},
      {"DSGetAccSimDate", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetAccSimDate(p), Date()); }},
      {"DSGetAccAccDate", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetAccAccDate(p), Date()); }},
      {"DSGetSimCase", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetSimCase(p), ""); }},
      {"DSSetDateStamp", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetDateStamp(p, "changed")); }},
      {"DSSetDefaultX", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetDefaultX(p, 7)); }},
      {"DSSetFileType", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetFileType(p, 7)); }},
      {"DSSetUnits", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetUnits(p, 7)); }},
      {"DSSetZOnly", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetZOnly(p, "changed")); }},
      {"DSSetIsDirty", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetIsDirty(p, true)); }},
      {"DSSetUnitSource", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetUnitSource(p, "changed")); }},
      {"DSSetUnitCurrent", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetUnitCurrent(p, "changed")); }},
      {"DSSetUnitDataSource", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetUnitDataSource(p, 7)); }},
      {"DSSetUseNulls", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetUseNulls(p, 7)); }},
      {"DSSetNullValue", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetNullValue(p, 12.5)); }},
      {"DSSetReaderNullValue", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetReaderNullValue(p, 12.5)); }},
      {"DSSetReaderSetNull", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetReaderSetNull(p, true)); }},
      {"DSSetReadPosition", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetReadPosition(p, 7)); }},
      {"DSSetAccRates", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetAccRates(p, 7)); }},
      {"DSSetAccumulate", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetAccumulate(p, true)); }},
      {"DSSetAccFrequency", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetAccFrequency(p, 7)); }},
      {"DSSetAccInterval", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetAccInterval(p, "changed")); }},
      {"DSSetAccSimDate", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetAccSimDate(p, Date(40000.0))); }},
      {"DSSetAccAccDate", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSSetAccAccDate(p, Date(40000.0))); }},
      {"SetDataSetDate", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.SetDataSetDate(p, "changed")); }},
      // ---- Registry members in the slot list
      {"AppendColumnToDataSet", [](mxDataStore& s, int32_t p) {
         Array<float> vals{1.f};
         Array<std::string> atts(1, kNumAttributes);
         atts(ATT_ORIGIN) = "MINE";
         bool qOK = true;
         s.AppendColumnToDataSet(p, vals, atts, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(atts(ATT_ORIGIN), "MINE");
       }},
      {"ValidDataSet", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.ValidDataSet(p)); }},
      {"GetDataSet", [](mxDataStore& s, int32_t p) {
         auto held = std::make_shared<mxDataSet>();
         auto out = held;
         EXPECT_FALSE(s.GetDataSet(p, out));
         EXPECT_EQ(out, held);
       }},
      {"GetItem", [](mxDataStore& s, int32_t p) {
         std::shared_ptr<mxDataSet> out;
         EXPECT_FALSE(s.GetItem(p, out));
         EXPECT_EQ(out, nullptr);
       }},
      {"SetAttribute", [](mxDataStore& s, int32_t p) {
         s.SetAttribute(p, ATT_ORIGIN, "OTHER");
         std::string z;
         s.DSGetAttribute(1, 1, ATT_ORIGIN, z);
         EXPECT_EQ(z, "CASE");
       }},
      {"SetDSFileName", [](mxDataStore& s, int32_t p) {
         s.SetDSFileName(p, "other.csv");
         EXPECT_EQ(s.get_FileName(1), "");
       }},
      {"SetItem", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.SetItem(p, std::make_shared<mxDataSet>()));
       }},
      {"SetItemFromData", [](mxDataStore& s, int32_t p) {
         Array2<float> xy(1, 2, 1, 1);
         Array<std::string> headers(1, 1);
         bool qOKL = true;
         s.SetItemFromData(p, xy, headers, qOKL);
         EXPECT_FALSE(qOKL);
       }},
      {"SetDataNULLVALUE", [](mxDataStore& s, int32_t p) {
         s.SetDataNULLVALUE(p, 0, 5.0);
         EXPECT_EQ(s.DSGetNullValue(1), -999.0);
       }},
      {"GetDataNULLVALUE", [](mxDataStore& s, int32_t p) {
         int32_t qUseNull = 7;
         double dNull = 1.0;
         s.GetDataNULLVALUE(p, qUseNull, dNull);
         EXPECT_EQ(qUseNull, 0);
         EXPECT_EQ(dNull, -999999.0);
       }},

      // ---- Whole tables and headers
      {"DSbExtractData", [](mxDataStore& s, int32_t p) {
         Array2<float> arr(1, 2, 1, 2);
         Array2<uint8_t> b(1, 3, 1, 1);
         bool qOK = true;
         s.DSbExtractData(p, arr, b, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(arr.UBound(1), 2);
         EXPECT_EQ(b.UBound(1), 3);
       }},
      {"DSbExtract2dArrays", [](mxDataStore& s, int32_t p) {
         Array2<float> arr(1, 2, 1, 2);
         Array2<uint8_t> b(1, 3, 1, 1);
         bool qOK = true;
         s.DSbExtract2dArrays(p, arr, b, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(arr.UBound(1), 2);
       }},
      {"DSExtract2dArrays", [](mxDataStore& s, int32_t p) {
         Array2<float> arr(1, 2, 1, 2);
         Array<std::string> att{"kept"};
         EXPECT_FALSE(s.DSExtract2dArrays(p, arr, att));
         EXPECT_EQ(att(1), "kept");
       }},
      {"DSExtractbHeaders", [](mxDataStore& s, int32_t p) {
         Array2<uint8_t> b(1, 3, 1, 1);
         bool qOK = true;
         s.DSExtractbHeaders(p, b, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(b.UBound(1), 3);
       }},
      {"DSbExtractHeaders", [](mxDataStore& s, int32_t p) {
         Array2<uint8_t> b(1, 3, 1, 1);
         bool qOK = true;
         s.DSbExtractHeaders(p, b, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(b.UBound(1), 3);
       }},
      {"DSExtractDataHeaders", [](mxDataStore& s, int32_t p) {
         Array<std::string> z{"kept"};
         bool qOK = true;
         s.DSExtractDataHeaders(p, z, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(z(1), "kept");
       }},
      {"DSExtractDataArrays", [](mxDataStore& s, int32_t p) {
         Array2<float> arr(1, 2, 1, 2);
         Array<std::string> z{"kept"};
         bool qOK = true;
         s.DSExtractDataArrays(p, arr, z, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(z(1), "kept");
       }},
      {"DSInitialiseFrom2D", [](mxDataStore& s, int32_t p) {
         Array2<float> arr(1, 2, 1, 1);
         Array<std::string> z(1, 1);
         bool qOK = true;
         s.DSInitialiseFrom2D(p, arr, z, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(s.get_NumRows(1), 3);
       }},
      {"DSbInitialiseFrom2D", [](mxDataStore& s, int32_t p) {
         Array2<float> arr(1, 2, 1, 1);
         Array2<uint8_t> b(1, kPackedRecordSize, 1, 1);
         bool qOK = true;
         s.DSbInitialiseFrom2D(p, arr, b, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(s.get_NumRows(1), 3);
       }},
      {"AppendColumnsToDataSet", [](mxDataStore& s, int32_t p) {
         Array2<float> vals(1, 3, 1, 1);
         Array2<std::string> atts(1, kNumAttributes, 1, 1);
         atts(ATT_ORIGIN, 1) = "MINE";
         bool qOK = true;
         s.AppendColumnsToDataSet(p, vals, atts, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(atts(ATT_ORIGIN, 1), "MINE");
         EXPECT_EQ(s.get_NumCols(1), 1);
       }},

      // ---- Values
      {"DSGetValues", [](mxDataStore& s, int32_t p) {
         Array<float> v{9.f, 8.f};
         EXPECT_FALSE(s.DSGetValues(p, 1, v));
         EXPECT_EQ(v.UBound(), 2);
         EXPECT_EQ(v(1), 9.f);
       }},
      {"DSGetValue", [](mxDataStore& s, int32_t p) {
         float d = 4.f;
         EXPECT_FALSE(s.DSGetValue(p, 1, 1, d));
         EXPECT_EQ(d, 4.f);
       }},
      {"DSSetValue", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.DSSetValue(p, 1, 1, 50.f));
         float d = 0.f;
         s.DSGetValue(1, 1, 1, d);
         EXPECT_EQ(d, 1.f);
       }},
      {"DSSetValues", [](mxDataStore& s, int32_t p) {
         Array<float> v{5.f, 5.f, 5.f};
         bool qOK = true;
         s.DSSetValues(p, 1, v, qOK);
         EXPECT_TRUE(qOK);
       }},
      {"DSGetRowValues", [](mxDataStore& s, int32_t p) {
         Array<float> v{9.f};
         EXPECT_FALSE(s.DSGetRowValues(p, 1, v));
         EXPECT_EQ(v(1), 9.f);
       }},

      // ---- Attributes and pools
      {"DSGetAttributes", [](mxDataStore& s, int32_t p) {
         Array<std::string> a{"kept"};
         EXPECT_FALSE(s.DSGetAttributes(p, 1, a));
         EXPECT_EQ(a.UBound(), 1);
       }},
      {"DSGetAttribute", [](mxDataStore& s, int32_t p) {
         std::string z = "kept";
         EXPECT_FALSE(s.DSGetAttribute(p, 1, ATT_VARIABLE, z));
         EXPECT_EQ(z, "kept");
       }},
      {"DSSetAttribute", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.DSSetAttribute(p, ATT_CLASS, "GROUPS"));
       }},
      {"DSGetColumnVariable", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.DSGetColumnVariable(p, 1), "");
       }},
      {"DSbGetAttributes", [](mxDataStore& s, int32_t p) {
         Array<uint8_t> b{1, 2};
         EXPECT_FALSE(s.DSbGetAttributes(p, 1, b));
         EXPECT_EQ(b.UBound(), 2);
       }},
      {"DSGetByteStoreArray", [](mxDataStore& s, int32_t p) {
         AttributePools pools;
         bool qOK = true;
         s.DSGetByteStoreArray(p, pools, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_FALSE(pools.IsAllocated());
       }},
      {"DSSetByteStore", [](mxDataStore& s, int32_t p) {
         bool qOK = true;
         s.DSSetByteStore(p, ATT_UNITS, std::make_shared<ByteStore>(), qOK);
         EXPECT_TRUE(qOK);
       }},
      {"DSGetByteStore", [](mxDataStore& s, int32_t p) {
         std::shared_ptr<ByteStore> pool;
         bool qOK = true;
         s.DSGetByteStore(p, ATT_ORIGIN, pool, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(pool, nullptr);
       }},
      {"DSSetByteStoreArray", [](mxDataStore& s, int32_t p) {
         AttributePools pools;
         bool qOK = true;
         s.DSSetByteStoreArray(p, pools, qOK);
         EXPECT_TRUE(qOK);
       }},
      {"DSGetOnlyList", [](mxDataStore& s, int32_t p) {
         Array2<uint8_t> b;
         bool qOnly = true;
         EXPECT_FALSE(s.DSGetOnlyList(p, b, qOnly));
         EXPECT_TRUE(qOnly);
         EXPECT_FALSE(b.IsAllocated());
       }},
      {"DSSetOnlyList", [](mxDataStore& s, int32_t p) {
         Array2<uint8_t> b(1, kOnlyRecordSize, 1, 1);
         EXPECT_FALSE(s.DSSetOnlyList(p, b, true));
       }},
      {"DSGetClassVarsFromAttributes", [](mxDataStore& s, int32_t p) {
         Array<Variant> v;
         EXPECT_FALSE(s.DSGetClassVarsFromAttributes(p, v));
         EXPECT_FALSE(v.IsAllocated());
       }},
      {"DSSetAllCreationTypes", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.DSSetAllCreationTypes(p, 3));
         EXPECT_EQ(s.DSGetCreationType(1, 1), 0);
       }},
      {"DSGetCreationType", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.DSGetCreationType(p, 1), 0);
       }},
      {"DSSetCreationType", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.DSSetCreationType(p, 1, 3));
       }},

      // ---- Limits and tree paths
      {"DSGetColMinMax", [](mxDataStore& s, int32_t p) {
         float lo = 5.f, hi = 6.f;
         EXPECT_FALSE(s.DSGetColMinMax(p, 1, lo, hi));
         EXPECT_EQ(lo, 5.f);
         EXPECT_EQ(hi, 6.f);
       }},
      {"DSSetColMinMax", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.DSSetColMinMax(p, 1, -1.f, 1.f));
       }},
      {"DSGetTreeViewPath", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.DSGetTreeViewPath(p, 1), "");
       }},
      {"DSMakeTreeViewPath", [](mxDataStore& s, int32_t p) {
         std::string z = "kept";
         EXPECT_FALSE(s.DSMakeTreeViewPath(p, 1, z));
         EXPECT_EQ(z, "kept");
       }},
      {"DSUpdateTreeViewPath", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.DSUpdateTreeViewPath(p, 1));
       }},
      {"DSSetTreeViewPath", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.DSSetTreeViewPath(p, 1, "a\\b"));
       }},
      {"DSTreeViewPath", [](mxDataStore& s, int32_t p) {
         std::string z = "kept";
         EXPECT_FALSE(s.DSTreeViewPath(p, 1, z));
         EXPECT_EQ(z, "kept");
       }},

      // ---- Reads of more than one value
      {"GetDataSetAttribute", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.GetDataSetAttribute(p, 1), "");
       }},
      {"GetNxNyNz", [](mxDataStore& s, int32_t p) {
         int32_t nx = 1, ny = 2, nz = 3;
         EXPECT_FALSE(s.GetNxNyNz(p, nx, ny, nz));
         EXPECT_EQ(nx + ny + nz, 6);
       }},
      {"INITA2N", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_INITA2N(p).IsAllocated());
       }},
      {"ValuesPtr", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_ValuesPtr(p, 1), 0); }},
      {"ValuesRowPtr", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.get_ValuesRowPtr(p, 1, 1), 0);
       }},
      {"WriteTextFile", [](mxDataStore& s, int32_t p) {
         s.WriteTextFile(p, "never_written.csv", "OTHER");
         EXPECT_EQ(s.get_FileName(1), "");
         EXPECT_EQ(s.get_Origin(1), "CASE");
       }},
      {"DSGetTextFileProperty", [](mxDataStore& s, int32_t p) {
         Variant v(std::string("kept"));
         EXPECT_FALSE(s.DSGetTextFileProperty(p, "NAME", v));
         EXPECT_EQ(v.ToText(), "kept");
       }},
      // ---- Queries, lookups and the search
      {"DSIndexFromVariable", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.DSIndexFromVariable(p, "WOPR"), 0);
       }},
      {"GetUniqueMembersOfClass", [](mxDataStore& s, int32_t p) {
         Array<std::string> members{"kept"};
         int32_t n = 5;
         bool qOK = true;
         s.GetUniqueMembersOfClass(p, "WELLS", members, n, qOK);
         EXPECT_EQ(n, 5);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(members.UBound(), 1);
       }},
      {"DSGetDataSetAttribute", [](mxDataStore& s, int32_t p) {
         EXPECT_EQ(s.DSGetDataSetAttribute(p, 1), "");
       }},
      {"DSCompareDataSetAttribute", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.DSCompareDataSetAttribute(p, 1, "CASE", false));
       }},
      {"DSGetIndexRange", [](mxDataStore& s, int32_t p) {
         int32_t i1 = 7, i2 = 8;
         EXPECT_FALSE(s.DSGetIndexRange(p, "WELLS", "P1", i1, i2));
         EXPECT_EQ(i1, 7);
         EXPECT_EQ(i2, 8);
       }},
      {"DSGetMarkers", [](mxDataStore& s, int32_t p) {
         int32_t n = 4;
         Array<uint8_t> b{9};
         bool qOK = true;
         s.DSGetMarkers(p, n, b, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 4);
         EXPECT_EQ(b(1), 9);
       }},
      {"GetMarkers", [](mxDataStore& s, int32_t p) {
         int32_t n = 4;
         Array2<Variant> v;
         bool qOK = true;
         s.GetMarkers(p, n, v, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 4);
         EXPECT_FALSE(v.IsAllocated());
       }},
      {"GetMarkerName", [](mxDataStore& s, int32_t p) {
         std::string name = "kept";
         int32_t w = 3;
         EXPECT_FALSE(s.GetMarkerName(p, "K", 1, 1, name, w));
         EXPECT_EQ(name, "kept");
         EXPECT_EQ(w, 3);
       }},
      {"GetMarkerPosition", [](mxDataStore& s, int32_t p) {
         int32_t u = 1, v = 2, w = 3;
         EXPECT_FALSE(s.GetMarkerPosition(p, "K", "P1", u, v, w));
         EXPECT_EQ(u + v + w, 6);
       }},
      {"DSGetSectorBox", [](mxDataStore& s, int32_t p) {
         int32_t a = 1, b = 2, c = 3, d = 4, e = 5, f = 6;
         s.DSGetSectorBox(p, a, b, c, d, e, f);
         EXPECT_EQ(a + b + c + d + e + f, 21);
       }},
      {"DSSetSectorBox", [](mxDataStore& s, int32_t p) {
         s.DSSetSectorBox(p, 1, 2, 3, 4, 5, 6);
         EXPECT_TRUE(MessageLog::Shared().Lines().empty());
       }},
      {"WellsPtr", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_WellsPtr(p), 0); }},
      {"MarkersPtr", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.get_MarkersPtr(p), 0); }},
      {"GetMarkerFromIJK", [](mxDataStore& s, int32_t p) {
         int32_t found = 7, status = 8;
         std::string well = "w", style = "s", text = "t";
         EXPECT_FALSE(s.GetMarkerFromIJK(p, 1, 1, 1, found, well, style, status, text));
         EXPECT_EQ(found, 7);
         EXPECT_EQ(well + style + text, "wst");
       }},
      {"RTMMonitoring", [](mxDataStore& s, int32_t p) {
         s.let_RTMMonitoring(p, true);
         EXPECT_FALSE(s.get_RTMMonitoring(p));
       }},
      {"RTMRecurseFolders", [](mxDataStore& s, int32_t p) {
         s.let_RTMRecurseFolders(p, true);
         EXPECT_FALSE(s.get_RTMRecurseFolders(p));
       }},
      {"RTMFolder", [](mxDataStore& s, int32_t p) {
         s.let_RTMFolder(p, "x");
         EXPECT_EQ(s.get_RTMFolder(p), "");
       }},
      {"RTMFilePattern", [](mxDataStore& s, int32_t p) {
         s.let_RTMFilePattern(p, "x");
         EXPECT_EQ(s.get_RTMFilePattern(p), "");
       }},
      {"GetAllWells", [](mxDataStore& s, int32_t p) {
         Array<std::string> wells{"kept"};
         int32_t n = 5;
         bool qOK = true;
         s.GetAllWells(p, wells, n, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 5);
         EXPECT_EQ(wells(1), "kept");
       }},
      {"GetUniquePath", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.GetUniquePath(p, 1), ""); }},
      {"GetVectorSize", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.GetVectorSize(p), 0); }},
      {"DSGetValuesFromName", [](mxDataStore& s, int32_t p) {
         Array<float> v{9.f};
         EXPECT_FALSE(s.DSGetValuesFromName(p, "WOPR", v, true));
         EXPECT_EQ(v(1), 9.f);
       }},
      {"SearchaDataSet", [](mxDataStore& s, int32_t p) {
         Array<int32_t> hits{4};
         int32_t n = 3;
         bool qOK = true;
         s.SearchaDataSet(p, hits, n, qOK, "WOPR");
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 0);
       }},
      {"SearchForDataSetVariables", [](mxDataStore& s, int32_t p) {
         Array<int32_t> hits{4};
         bool qOK = true;
         s.SearchForDataSetVariables(p, "WOPR", "", hits, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(hits(1), 4);
       }},
      {"SearchForDataSetVariablePointers", [](mxDataStore& s, int32_t p) {
         Array<std::intptr_t> ptrs{4};
         bool qOK = true;
         s.SearchForDataSetVariablePointers(p, "WOPR", "", ptrs, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(ptrs(1), 4);
       }},
      // The members of the search that take no position: called so that
      // they find nothing, they give their miss values.
      {"Search", [](mxDataStore& s, int32_t) {
         int32_t iDataSet = 9, iColumn = 9;
         bool qOK = false;
         s.Search(iDataSet, iColumn, qOK);
         EXPECT_EQ(iDataSet, -1);
         EXPECT_EQ(iColumn, -1);
         EXPECT_TRUE(qOK);
         s.SearchClear();
       }},
      {"SearchDataSets", [](mxDataStore& s, int32_t p) {
         bool qOK = false;
         s.SearchDataSets(Array<int32_t>{p}, qOK);
         EXPECT_TRUE(qOK);
         s.SearchClear();
       }},
      {"SearchPointersDS", [](mxDataStore& s, int32_t) {
         s.SearchClear();
         Array<int32_t> sets{4};
         int32_t n = 3;
         bool qOK = false;
         s.SearchPointersDS(sets, n, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(n, 0);
         EXPECT_EQ(sets(1), 4);
       }},
      {"SearchType", [](mxDataStore& s, int32_t p) {
         s.SearchClear();
         Array<int32_t> list{p};
         int32_t n = 1;
         bool qMatch = true, qOK = false;
         s.SearchType(list, n, qMatch, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_FALSE(qMatch);
         EXPECT_EQ(n, 1);
       }},
      // Grid names, files, row and column lists, well lists.
      {"DSColumnList", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_DSColumnList(p).IsAllocated());
         s.let_DSColumnList(p, Array<int32_t>{1});
         EXPECT_FALSE(s.get_DSColumnList(1).IsAllocated());
       }},
      {"DSRowList", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_DSRowList(p).IsAllocated());
         s.let_DSRowList(p, Array<int32_t>{1});
         EXPECT_FALSE(s.get_DSRowList(1).IsAllocated());
       }},
      {"DSqUseWellList", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_DSqUseWellList(p));
         s.let_DSqUseWellList(p, true);
         EXPECT_FALSE(s.get_DSqUseWellList(1));
       }},
      {"DSSetMask", [](mxDataStore& s, int32_t p) {
         bool qOK = false;
         s.DSSetMask(p, true, Array<int32_t>{1}, 1, qOK);
         EXPECT_FALSE(qOK);
       }},
      {"DSSetFileList", [](mxDataStore& s, int32_t p) {
         auto files = std::make_shared<ByteStore>();
         bool qOK = false;
         s.DSSetFileList(p, files, 1, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_NE(files, nullptr);
       }},
      {"DSSetGridNames", [](mxDataStore& s, int32_t p) {
         bool qOK = false;
         s.DSSetGridNames(p, Array<uint8_t>{'A', ' '}, qOK);
         EXPECT_FALSE(qOK);
       }},
      {"DSGetGridNames", [](mxDataStore& s, int32_t p) {
         Array<std::string> z{"kept"};
         bool qOK = false;
         s.DSGetGridNames(p, z, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(z(1), "kept");
       }},
      {"DSGetGridName", [](mxDataStore& s, int32_t p) {
         std::string z = "kept";
         bool qOK = false;
         s.DSGetGridName(p, 1, z, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(z, "kept");
       }},
      {"DSClearLists", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSClearLists(p)); }},
      {"DSGetColumnList", [](mxDataStore& s, int32_t p) {
         Array<int32_t> z{4};
         int32_t n = 3;
         bool qOK = false;
         s.DSGetColumnList(p, z, n, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 3);
         EXPECT_EQ(z(1), 4);
       }},
      {"DSGetRowList", [](mxDataStore& s, int32_t p) {
         Array<int32_t> z{4};
         int32_t n = 3;
         bool qOK = false;
         s.DSGetRowList(p, z, n, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 3);
         EXPECT_EQ(z(1), 4);
       }},
      {"DSSetColumnList", [](mxDataStore& s, int32_t p) {
         bool qOK = false;
         s.DSSetColumnList(p, Array<int32_t>{1}, 1, qOK);
         EXPECT_FALSE(qOK);
       }},
      {"DSSetRowList", [](mxDataStore& s, int32_t p) {
         bool qOK = false;
         s.DSSetRowList(p, Array<int32_t>{1}, 1, qOK);
         EXPECT_FALSE(qOK);
       }},
      {"WellListNextItem", [](mxDataStore& s, int32_t p) {
         std::string z = "kept";
         bool qOK = true;
         s.WellListNextItem(p, "P1", true, false, z, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(z, "");
       }},
      {"WellNextItem", [](mxDataStore& s, int32_t p) {
         std::string z = "kept";
         bool qOK = true;
         s.WellNextItem(p, "P1", true, false, z, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(z, "");
       }},
      {"DSGetWellListOrAll", [](mxDataStore& s, int32_t p) {
         // Reports true whatever the position, with nothing found.
         Array<std::string> z{"kept"};
         int32_t n = 3;
         bool qOK = false;
         s.DSGetWellListOrAll(p, z, n, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_EQ(n, 0);
         EXPECT_EQ(z(1), "kept");
       }},
      {"DSqSetWellList", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSqSetWellList(p)); }},
      {"DSSetWellList", [](mxDataStore& s, int32_t p) {
         // A bad position reports true here.
         bool qOK = false;
         s.DSSetWellList(p, Array<std::string>{"P1"}, qOK);
         EXPECT_TRUE(qOK);
         EXPECT_FALSE(s.DSqSetWellList(1));
       }},
      {"DSGetWellsInWellList", [](mxDataStore& s, int32_t p) {
         Array<std::string> z{"kept"};
         int32_t n = 3;
         bool qOK = false;
         s.DSGetWellsInWellList(p, z, n, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 3);
         EXPECT_EQ(z(1), "kept");
       }},
      {"DSGetWellList", [](mxDataStore& s, int32_t p) {
         Array<std::string> z{"kept"};
         int32_t n = 3;
         bool qOK = false;
         s.DSGetWellList(p, z, n, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 3);
         EXPECT_EQ(z(1), "kept");
       }},
      {"WDS_DSGetOriginWellLists", [](mxDataStore& s, int32_t p) {
         Array<std::string> names{"kept"}, joined{"kept"};
         int32_t n = 3;
         bool qOK = false;
         s.WDS_DSGetOriginWellLists(p, n, names, joined, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 3);
         EXPECT_EQ(names(1), "kept");
       }},
      {"WDS_DSGetWellListArray", [](mxDataStore& s, int32_t p) {
         Array<std::string> z{"kept"};
         int32_t n = 3;
         bool qOK = false;
         s.WDS_DSGetWellListArray(p, "A", n, z, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 3);
       }},
      {"WDS_GetWellList", [](mxDataStore& s, int32_t p) {
         Array<std::string> z{"kept"};
         int32_t n = 3;
         bool qOK = false;
         s.WDS_GetWellList(p, z, n, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 3);
       }},
      {"WDS_GetWellListDetailsByName", [](mxDataStore& s, int32_t p) {
         Array<std::string> z{"kept"};
         int32_t n = 3;
         std::string joined = "kept";
         bool qOK = false;
         s.WDS_GetWellListDetailsByName(p, "A", n, z, joined, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(joined, "kept");
       }},
      {"WSH_AppendNamedWellList", [](mxDataStore& s, int32_t p) {
         std::string zName = "A";
         EXPECT_FALSE(s.WSH_AppendNamedWellList(p, Array<std::string>{"P1"}, zName));
         EXPECT_EQ(zName, "A");
         EXPECT_FALSE(s.WSH_AppendNamedWellList(p, Array<std::string>{"P1"}));
       }},
      {"WSH_DeleteWellListByName", [](mxDataStore& s, int32_t p) {
         bool qOK = false;
         s.WSH_DeleteWellListByName(p, "A", qOK);
         EXPECT_FALSE(qOK);
       }},
      // ---- The table and the ternary columns
      {"DSSetTable", [](mxDataStore& s, int32_t p) {
         bool qOK = true;
         s.DSSetTable(p, std::make_shared<mxTable>(), qOK);
         EXPECT_FALSE(qOK);
         EXPECT_FALSE(s.DSTableSet(1));
       }},
      {"DSTableSet", [](mxDataStore& s, int32_t p) { EXPECT_FALSE(s.DSTableSet(p)); }},
      {"DSGetTabulatedValue", [](mxDataStore& s, int32_t p) {
         float v = 4.f;
         bool qOK = true;
         s.DSGetTabulatedValue(p, Array<int32_t>{1}, v, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(v, 4.f);
       }},
      {"DSGetTableVariableValue", [](mxDataStore& s, int32_t p) {
         float v = 4.f;
         bool qOK = true;
         s.DSGetTableVariableValue(p, 1, 1, v, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(v, 4.f);
       }},
      {"DSGetNumberVarsInTable", [](mxDataStore& s, int32_t p) {
         int32_t n = 4;
         bool qOK = true;
         s.DSGetNumberVarsInTable(p, n, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 4);
       }},
      {"GetTernaryColumns", [](mxDataStore& s, int32_t p) {
         bool qExists = true, qOK = true;
         Array<int32_t> iTern{9};
         float a = 1.f, b = 2.f, c = 3.f;
         s.GetTernaryColumns(p, qExists, iTern, a, b, c, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_TRUE(qExists);
         EXPECT_EQ(iTern.UBound(), 1);
         EXPECT_EQ(a + b + c, 6.f);
       }},
      {"GetTernaryColumnsDP", [](mxDataStore& s, int32_t p) {
         bool qExists = true, qOK = true;
         Array<int32_t> iTern{9};
         float a = 1.f, b = 2.f, c = 3.f;
         s.GetTernaryColumnsDP(p, qExists, iTern, a, b, c, true, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_TRUE(qExists);
         EXPECT_EQ(iTern.UBound(), 1);
         EXPECT_EQ(a + b + c, 6.f);
       }},
      {"qTernaryColsExist", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_qTernaryColsExist(p));
       }},
      {"qTernaryColsExistDP", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_qTernaryColsExistDP(p, false));
       }},
      {"GetTernaryDataLimits", [](mxDataStore& s, int32_t p) {
         float a = 1.f, b = 2.f, c = 3.f;
         s.GetTernaryDataLimits(p, a, b, c);
         EXPECT_EQ(a + b + c, 6.f);
       }},
      {"qIsVectorLoaded", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_qIsVectorLoaded(p, 1));
         s.let_qIsVectorLoaded(p, 1, true);
         EXPECT_FALSE(s.get_qIsVectorLoaded(1, 1));
       }},
      {"AssignFODPointers", [](mxDataStore& s, int32_t p) {
         bool qOK = true;
         s.AssignFODPointers(p, Array<bool>{false, true, false, false, false}, Array2<int32_t>(1, 5, 1, 1),
                             qOK);
         EXPECT_TRUE(qOK);  // left as it was
         EXPECT_EQ(s.DSGetFODVarType(1, 1), -1);
       }},
      {"AssignFODPlusPointers", [](mxDataStore& s, int32_t p) {
         bool qOK = false;
         s.AssignFODPlusPointers(p, Array<bool>{false, true, false, false, false},
                                 Array2<int32_t>(1, 5, 1, 1), Array<int32_t>{1}, Array<float>{1.f}, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(s.DSGetFODVarType(1, 1), -1);
       }},
      {"LoadFODVector", [](mxDataStore& s, int32_t p) {
         bool qOK = true;
         s.LoadFODVector(p, 1, qOK);
         EXPECT_TRUE(qOK);
       }},
      {"DSLoadFODVectors", [](mxDataStore& s, int32_t p) {
         bool qOK = true;
         s.DSLoadFODVectors(p, Array<int32_t>{1}, 1, qOK);
         EXPECT_TRUE(qOK);
       }},
      {"FetchOnDemandActive", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.get_FetchOnDemandActive(p));
         s.let_FetchOnDemandActive(p, true);
         EXPECT_FALSE(s.get_FetchOnDemandActive(1));
       }},
      {"LoadAllVectors", [](mxDataStore& s, int32_t p) {
         const auto before = s.get_NumRows(1);
         s.let_LoadAllVectors(p, true);
         EXPECT_EQ(s.get_NumRows(1), before);
         EXPECT_FALSE(s.get_FetchOnDemandActive(1));
       }},
      {"GetLoadedFODVectors", [](mxDataStore& s, int32_t p) {
         Array<int32_t> cols{5};
         int32_t n = 3;
         bool qOK = false;
         s.GetLoadedFODVectors(p, cols, n, qOK);
         EXPECT_FALSE(qOK);
         EXPECT_EQ(n, 3);
         EXPECT_EQ(cols(1), 5);
       }},
      {"FetchOnDemandColumnLoaded", [](mxDataStore& s, int32_t p) {
         EXPECT_FALSE(s.FetchOnDemandColumnLoaded(p, 1));
       }},
      {"DSGetFODVarType", [](mxDataStore& s, int32_t p) { EXPECT_EQ(s.DSGetFODVarType(p, 1), -1); }},
  };
  return kWalks;
}

class StoreFamilyTest : public StoreTest {};

TEST_F(StoreFamilyTest, TableHoldsTheWholeFamilyInSlotOrder) {
  const auto& family = StoreFamily();
  std::set<std::string_view> names;
  for (int32_t k = 0; k < kFamilySize; ++k) {
    EXPECT_EQ(family[k].iSlot, k + 1);
    EXPECT_TRUE(names.insert(family[k].zName).second) << family[k].zName;
  }
  EXPECT_EQ(family.front().zName, "Search");
  EXPECT_EQ(family[68].zName, "ValidDataSet");
  EXPECT_EQ(family.back().zName, "DSSetINITPlotFilter");
}

// The table as kept in docs/STORE_FAMILY.md.
std::string RenderFamilyTable() {
  std::ostringstream out;
  out << "# The store's per-data-set family\n\n"
         "A host holds one object, the store, and reaches a data set by its position.\n"
         "These are the store's members that take that position first, in the slot\n"
         "order hosts bind to. A member marked as waiting keeps its slot; its\n"
         "data-set side comes with the piece named.\n\n"
         "This file is checked against `vndata/store/internal/store_family.h` by\n"
         "`tests/store/store_family_test.cc`; when the table changes, the test\n"
         "writes the new text to `STORE_FAMILY.md.expected` in its working folder.\n\n"
         "| Slot | Member | Kind | State |\n"
         "|---:|---|---|---|\n";
  std::map<std::string_view, int32_t> counts;
  for (const FamilyMember& m : StoreFamily()) {
    out << "| " << m.iSlot << " | `" << m.zName << "` | " << FamilyKindText(m.kind) << " | "
        << FamilyPieceText(m.piece) << " |\n";
    ++counts[FamilyPieceText(m.piece)];
  }
  out << "\n## Members outside the slot list\n\n"
         "Rows of the facade that do more than forward and sit elsewhere in the\n"
         "store's order.\n\n"
         "| Member | State |\n"
         "|---|---|\n";
  for (const FacadeExtra& e : FacadeExtras())
    out << "| `" << e.zName << "` | " << FamilyPieceText(e.piece) << " |\n";
  out << "\n## Count by state\n\n"
         "| State | Members |\n"
         "|---|---:|\n";
  for (const auto& [state, n] : counts) out << "| " << state << " | " << n << " |\n";
  return out.str();
}

TEST_F(StoreFamilyTest, DocsTableMatchesTheCode) {
  const std::string expected = RenderFamilyTable();
  std::ifstream in(std::string(VNDATA_SOURCE_DIR) + "/docs/STORE_FAMILY.md", std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  if (text.str() != expected) {
    std::ofstream("STORE_FAMILY.md.expected", std::ios::binary) << expected;
    ADD_FAILURE() << "docs/STORE_FAMILY.md differs from the family table; the expected text "
                     "is in STORE_FAMILY.md.expected";
  }
}

TEST_F(StoreFamilyTest, EveryPresentMemberHasACallAndNoOther) {
  const auto& walks = PresentMembers();
  std::set<std::string> present;
  for (const FamilyMember& m : StoreFamily()) {
    if (m.piece != FamilyPiece::kPresent) continue;
    present.insert(std::string(m.zName));
    EXPECT_EQ(walks.count(std::string(m.zName)), 1u) << m.zName << " is present but not called";
  }
  for (const auto& [name, walk] : walks)
    EXPECT_EQ(present.count(name), 1u) << name << " is called but not marked present";
}

TEST_F(StoreFamilyTest, CellHistoryOnABadPositionOrRowIsFalseAndSilent) {
  store.AddItem(MakeSummary("CASE"));
  for (int32_t p : {0, -1, 3}) {
    Array<float> x{1.f}, y{2.f};
    bool qOK = true;
    store.DSArrays(1, p, 1, x, y, qOK);
    EXPECT_FALSE(qOK);
    EXPECT_EQ(x.UBound(), 1);
    EXPECT_EQ(y(1), 2.f);
  }
  Array<float> x, y;
  bool qOK = true;
  store.DSArrays(0, 1, 1, x, y, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(x.IsAllocated());
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(StoreFamilyTest, EveryPresentMemberGivesItsDefaultSilentlyOnABadPosition) {
  store.AddItem(MakeSummary("CASE"));
  ASSERT_EQ(store.get_NumberOfDataSets(), 1);
  const int32_t beyond = store.get_NumberOfDataSets() + 2;
  for (const auto& [name, walk] : PresentMembers()) {
    for (int32_t p : {0, -1, beyond}) {
      SCOPED_TRACE(name + " at " + std::to_string(p));
      walk(store, p);
      EXPECT_TRUE(MessageLog::Shared().Lines().empty());
      MessageLog::Shared().Clear();
    }
  }
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
}

}  // namespace
}  // namespace vndata
