// The derived quantity group of the store file: mxDQStore::WriteDQ and
// mxDQStore::ReadDQ.
//
//   "DQSTORE>"
//     "DERQ>"  quantity fields  ("DERQARG>" argument fields "<DERQARG")*  "<DERQ"
//   "<DQSTORE"
//
// Every field is written whether empty or not. "DQCLASS" appears at both
// levels; the reader gives it to the quantity and to the argument buffer.
#include <memory>
#include <string>

#include "vndata/derived/mx_dq_store.h"
#include "vndata/persist/record_stream.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/variant.h"

namespace vndata {

namespace {


// ---- writing -----------------------------------------------------------------

// Writes one record; the writer does not look at qOK between records.
class DQWriter {
 public:
  DQWriter(RecordCodec& codec, RecordFile& file) : codec_(codec), file_(file) {}

  void TagRecord(const char* zKeyword) { codec_.WriteHeader(file_, zKeyword, 0, "CHAR", qOK_); }
  void Text(const char* zKeyword, const std::string& zValue) { One(zKeyword, "CHAR", zValue); }
  void Integer(const char* zKeyword, int32_t iValue) { One(zKeyword, "INTE", iValue); }
  void Logical(const char* zKeyword, bool qValue) { One(zKeyword, "LOGI", qValue); }

  void Quantity(const mxDerivedQuantity& dq);

 private:
  void One(const char* zKeyword, const char* zType, const Variant& value) {
    codec_.WriteHeader(file_, zKeyword, 1, zType, qOK_);
    codec_.WriteValue(file_, value, qOK_);
  }
  void Arguments(const mxDerivedQuantity& dq);

  RecordCodec& codec_;
  RecordFile& file_;
  bool qOK_ = false;
};

void DQWriter::Quantity(const mxDerivedQuantity& dq) {
  TagRecord("DERQ>");
  Text("DQCLASS", dq.get_Class());
  Text("DQEXPRESSION", dq.get_Expression());
  Text("DQINDEX", dq.get_Index());
  Text("DQMEMBER", dq.get_Member());
  Text("DQRESCOLHEADER", dq.get_ResultColumnHeader());
  Text("DQRESCOLBASE", dq.get_ResultColumnHeaderBase());
  Text("DQRESORIGIN", dq.get_ResultOrigin());
  Text("DQRESUNITS", dq.get_ResultUnits());
  Text("DQRESVARIABLE", dq.get_ResultVariable());
  Text("DQTARGDESC", dq.get_TargetDataDesc());
  Text("DQVARIABLE", dq.get_Variable());
  Text("DQWELL", dq.get_Well());
  Text("DQVERBOSE", dq.get_Verbose());
  Integer("DQRESSOLINDEX", dq.get_ResultSolIndex());
  Integer("DQTARGSET", dq.get_TargetDataSet());
  Integer("DQNUMARGS", dq.get_NumberOfArguments());
  Integer("DQAMENDEDDATASET", dq.get_AmendedDataSetUsed());
  Logical("DQSTANDARDFNC", dq.get_StandardFunction());
  Logical("DQAPPLYALL", dq.get_qApplyToAll());
  Logical("DQAPPLYLIST", dq.get_qApplyToList());
  Arguments(dq);
  TagRecord("<DERQ");
}

void DQWriter::Arguments(const mxDerivedQuantity& dq) {
  std::string zArgument, zFileName, zSource, zColHead, zOrigin, zClass;
  bool qHide = false, qOK = false;
  int32_t iSolIndex = 0;
  for (int32_t i = 1; i <= dq.get_NumberOfArguments(); ++i) {
    dq.GetArguments(i, zArgument, zFileName, zSource, zColHead, qHide, zOrigin, iSolIndex, zClass);
    bool qReassociate = dq.GetArgument_ReAssociate(i, qOK);
    TagRecord("DERQARG>");
    Integer("DQWHICHARG", i);
    Text("DQARGUMENT", zArgument);
    Text("DQFILENAME", zFileName);
    Text("DQSOURCE", zSource);
    Text("DQCOLHEAD", zColHead);
    Text("DQORIGIN", zOrigin);
    Text("DQCLASS", zClass);
    Integer("DQSOLINDEX", iSolIndex);
    Logical("DQHIDE", qHide);
    Logical("DQREASSOCIATE", qReassociate);
    TagRecord("<DERQARG");
  }
}

// ---- reading -----------------------------------------------------------------

// What ReadDQ keeps between records: the quantity being read and the
// buffers of the argument being read.
struct DQReadState {
  std::shared_ptr<mxDerivedQuantity> dq;
  bool qValid = false;
  int32_t nGroups = 0;  // argument groups met in the current quantity
  int32_t iWhich = 0;
  std::string zArgument, zFileName, zSource, zColHead, zOrigin, zClass;
  int32_t iSolIndex = 0;
  bool qHide = false;
  bool qReassociate = false;
};

mxDerivedQuantity& Current(DQReadState& st) {
  if (!st.dq) RaiseFault(kFaultObjectNotSet);  // a field outside "DERQ>"
  return *st.dq;
}

// The n-th argument group of a quantity fills argument n: a count read from
// "DQNUMARGS" is not added to, and groups beyond it extend the list.
void AddArgument(DQReadState& st) {
  mxDerivedQuantity& dq = Current(st);
  int32_t k = ++st.nGroups;
  if (k > dq.get_NumberOfArguments()) {
    dq.AddArguments(st.zArgument, st.zFileName, st.zSource, st.zColHead, st.qHide, st.zOrigin,
                    st.iSolIndex, st.zClass);
  } else {
    dq.InitialiseArray(dq.get_NumberOfArguments());  // the array may be short of the count
    dq.SetArguments(k, st.zArgument, st.zFileName, st.zSource, st.zColHead, st.qHide, st.zOrigin,
                    st.iSolIndex, st.zClass);
  }
  bool qOK = false;
  dq.SetArgument_ReAssociate(k, st.qReassociate, qOK);
}

using Rec = RecordStreamReader::Record;

void TextField(RecordStreamReader& r, const char* zKeyword, DQReadState& st,
               void (mxDerivedQuantity::*let)(const std::string&)) {
  r.On("CHAR", zKeyword, [&st, let](Rec& rec) {
    std::string z;
    if (rec.ReadText(z)) (Current(st).*let)(z);
  });
}

void IntegerField(RecordStreamReader& r, const char* zKeyword, DQReadState& st,
                  void (mxDerivedQuantity::*let)(int32_t)) {
  r.On("INTE", zKeyword, [&st, let](Rec& rec) {
    int32_t v = 0;
    if (rec.ReadInteger(v)) (Current(st).*let)(v);
  });
}

void LogicalField(RecordStreamReader& r, const char* zKeyword, DQReadState& st,
                  void (mxDerivedQuantity::*let)(bool)) {
  r.On("LOGI", zKeyword, [&st, let](Rec& rec) {
    bool q = false;
    if (rec.ReadLogical(q)) (Current(st).*let)(q);
  });
}

void QuantityFields(RecordStreamReader& r, DQReadState& st) {
  using DQ = mxDerivedQuantity;
  r.On("CHAR", "DQCLASS", [&st](Rec& rec) {
    std::string z;
    if (!rec.ReadText(z)) return;
    Current(st).let_Class(z);
    st.zClass = z;
  });
  TextField(r, "DQEXPRESSION", st, &DQ::let_Expression);
  TextField(r, "DQINDEX", st, &DQ::let_Index);
  TextField(r, "DQMEMBER", st, &DQ::let_Member);
  TextField(r, "DQRESCOLHEADER", st, &DQ::let_ResultColumnHeader);
  TextField(r, "DQRESCOLBASE", st, &DQ::let_ResultColumnHeaderBase);
  TextField(r, "DQRESORIGIN", st, &DQ::let_ResultOrigin);
  TextField(r, "DQRESUNITS", st, &DQ::let_ResultUnits);
  TextField(r, "DQRESVARIABLE", st, &DQ::let_ResultVariable);
  TextField(r, "DQTARGDESC", st, &DQ::let_TargetDataDesc);
  TextField(r, "DQVARIABLE", st, &DQ::let_Variable);
  TextField(r, "DQWELL", st, &DQ::let_Well);
  TextField(r, "DQVERBOSE", st, &DQ::let_Verbose);
  IntegerField(r, "DQRESSOLINDEX", st, &DQ::let_ResultSolIndex);
  IntegerField(r, "DQTARGSET", st, &DQ::let_TargetDataSet);
  IntegerField(r, "DQNUMARGS", st, &DQ::let_NumberOfArguments);
  IntegerField(r, "DQAMENDEDDATASET", st, &DQ::let_AmendedDataSetUsed);
  LogicalField(r, "DQSTANDARDFNC", st, &DQ::let_StandardFunction);
  LogicalField(r, "DQAPPLYALL", st, &DQ::let_qApplyToAll);
  LogicalField(r, "DQAPPLYLIST", st, &DQ::let_qApplyToList);
}

void ArgumentFields(RecordStreamReader& r, DQReadState& st) {
  auto text = [&r](const char* zKeyword, std::string& zBuffer) {
    r.On("CHAR", zKeyword, [&zBuffer](Rec& rec) { rec.ReadText(zBuffer); });
  };
  text("DQARGUMENT", st.zArgument);
  text("DQFILENAME", st.zFileName);
  text("DQSOURCE", st.zSource);
  text("DQCOLHEAD", st.zColHead);
  text("DQORIGIN", st.zOrigin);
  r.On("INTE", "DQWHICHARG", [&st](Rec& rec) { rec.ReadInteger(st.iWhich); });
  r.On("INTE", "DQSOLINDEX", [&st](Rec& rec) { rec.ReadInteger(st.iSolIndex); });
  r.On("LOGI", "DQHIDE", [&st](Rec& rec) { rec.ReadLogical(st.qHide); });
  r.On("LOGI", "DQREASSOCIATE", [&st](Rec& rec) { rec.ReadLogical(st.qReassociate); });
}

}  // namespace

void mxDQStore::WriteDQ(RecordFile& file) {
  RunGuarded("mxDQStore (Code) (WriteDQ)", [&] {
    DQWriter w(DQIO_, file);
    w.TagRecord("DQSTORE>");
    for (int32_t i = 1; i <= Count(); ++i) {
      const std::shared_ptr<mxDerivedQuantity>& dq = DQItems_(i);
      if (!dq) RaiseFault(kFaultObjectNotSet);
      w.Quantity(*dq);
      YieldToHost();
    }
    w.TagRecord("<DQSTORE");
  });
}

void mxDQStore::ReadDQ(RecordFile& file, bool& qOK) {
  qOK = false;
  bool qDone = RunGuarded("mxDQStore (Code) (ReadDQ)", [&] {
    DQReadState st;
    RecordStreamReader r("<DQSTORE");
    r.SetYieldAfterEachRecord(true);
    r.On("CHAR", "DQSTORE>", [&st](Rec& rec) {
      std::string z;
      rec.ReadText(z);
      st.qValid = true;
    });
    r.On("CHAR", "DERQ>", [&st](Rec& rec) {
      rec.Skip();
      st.dq = std::make_shared<mxDerivedQuantity>();
      st.nGroups = 0;
      st.qValid = true;
    });
    r.On("CHAR", "<DERQARG", [&st](Rec& rec) {
      rec.Skip();
      AddArgument(st);
    });
    r.On("CHAR", "<DERQ", [this, &st](Rec& rec) {
      rec.Skip();
      if (st.qValid && st.dq) AddItem(st.dq);
      st.dq.reset();
    });
    QuantityFields(r, st);
    ArgumentFields(r, st);
    r.Run(DQIO_, file, qOK);
  });
  if (!qDone) qOK = false;
}

}  // namespace vndata
