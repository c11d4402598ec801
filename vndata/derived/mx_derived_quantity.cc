#include "vndata/derived/mx_derived_quantity.h"

#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {
}  // namespace

mxDerivedQuantity::mxDerivedQuantity() {
  InitialiseArray(-1);
  TargetDataSet_ = -1;
  ResultSolIndex_ = -1;
}

void mxDerivedQuantity::AddArguments(const std::string& Argument, const std::string& FileName,
                                     const std::string& Source, const std::string& ColHead,
                                     bool Hide, const std::string& zOrigin, int32_t SolIndex,
                                     const std::string& Class) {
  RunGuarded("mxDerivedQuantity (Code) (AddArguments)", [&] {
    NumberOfArguments_ += 1;
    Arguments_.ReDimPreserve(NumberOfArguments_);
    SetArguments(NumberOfArguments_, Argument, FileName, Source, ColHead, Hide, zOrigin, SolIndex,
                 Class);
  });
}

void mxDerivedQuantity::SetArguments(int32_t Index, const std::string& Argument,
                                     const std::string& FileName, const std::string& Source,
                                     const std::string& ColHead, bool Hide,
                                     const std::string& zOrigin, int32_t SolIndex,
                                     const std::string& Class) {
  RunGuarded("mxDerivedQuantity (Code) (SetArguments)", [&] {
    if (!ValidIndxe(Index)) return;
    DQArgument& a = Arguments_(Index);
    // Overwriting an argument discards its resampling.
    a.Method = kResampleNone;
    a.Argument = Argument;
    a.FileName = FileName;
    a.Source = Source;
    a.ColHead = ColHead;
    a.zOrigin = zOrigin;
    a.Hide = Hide;
    a.SolIndex = SolIndex;
    a.Class = Class;
  });
}

void mxDerivedQuantity::GetArguments(int32_t Index, std::string& Argument, std::string& FileName,
                                     std::string& Source, std::string& ColHead, bool& Hide,
                                     std::string& zOrigin, int32_t& SolIndex,
                                     std::string& Class) const {
  RunGuarded("mxDerivedQuantity (Code) (GetArguments)", [&] {
    if (!ValidIndxe(Index)) return;
    const DQArgument& a = Arguments_(Index);
    Argument = a.Argument;
    FileName = a.FileName;
    Source = a.Source;
    ColHead = a.ColHead;
    Hide = a.Hide;
    zOrigin = a.zOrigin;
    SolIndex = a.SolIndex;
    Class = a.Class;
  });
}

// The shorter forms leave out trailing outputs the caller does not want.
void mxDerivedQuantity::GetArguments(int32_t Index, std::string& Argument, std::string& FileName,
                                     std::string& Source, std::string& ColHead, bool& Hide,
                                     std::string& zOrigin, int32_t& SolIndex) const {
  std::string Class;
  GetArguments(Index, Argument, FileName, Source, ColHead, Hide, zOrigin, SolIndex, Class);
}

void mxDerivedQuantity::GetArguments(int32_t Index, std::string& Argument, std::string& FileName,
                                     std::string& Source, std::string& ColHead, bool& Hide,
                                     std::string& zOrigin) const {
  int32_t SolIndex = 0;
  GetArguments(Index, Argument, FileName, Source, ColHead, Hide, zOrigin, SolIndex);
}

void mxDerivedQuantity::GetArguments(int32_t Index, std::string& Argument, std::string& FileName,
                                     std::string& Source, std::string& ColHead, bool& Hide) const {
  std::string zOrigin;
  GetArguments(Index, Argument, FileName, Source, ColHead, Hide, zOrigin);
}

void mxDerivedQuantity::GetResampleMethod(int32_t Index, int32_t& Method) const {
  RunGuarded("mxDerivedQuantity (Code) (GetResampleMethod)", [&] {
    if (!ValidIndxe(Index)) return;
    Method = Arguments_(Index).Method;
  });
}

void mxDerivedQuantity::GetResampleStepSize(int32_t Index, int32_t& StepSize) const {
  RunGuarded("mxDerivedQuantity (Code) (GetResampleStepSize)", [&] {
    if (!ValidIndxe(Index)) return;
    StepSize = Arguments_(Index).StepSize;
  });
}

void mxDerivedQuantity::GetResamplePeriod(int32_t Index, int32_t& Interval, std::string& Units,
                                          Date& StartDate) const {
  RunGuarded("mxDerivedQuantity (Code) (GetResamplePeriod)", [&] {
    if (!ValidIndxe(Index)) return;
    const DQArgument& a = Arguments_(Index);
    Interval = a.Interval;
    Units = a.Units;
    StartDate = a.StartDate;
  });
}

void mxDerivedQuantity::SetResampleStepSize(int32_t Index, int32_t StepSize) {
  RunGuarded("mxDerivedQuantity (Code) (SetResampleStepSize)", [&] {
    if (!ValidIndxe(Index)) return;
    DQArgument& a = Arguments_(Index);
    a.Method = kResampleByStepSize;
    a.StepSize = StepSize;
  });
}

void mxDerivedQuantity::SetResamplePeriod(int32_t Index, int32_t Interval, const std::string& Units,
                                          Date StartDate) {
  RunGuarded("mxDerivedQuantity (Code) (SetResamplePeriod)", [&] {
    if (!ValidIndxe(Index)) return;
    DQArgument& a = Arguments_(Index);
    a.Method = kResampleByPeriod;
    a.Interval = Interval;
    a.Units = Units;
    a.StartDate = StartDate;
  });
}

void mxDerivedQuantity::InitialiseArray(int32_t NumArgs) {
  RunGuarded("mxDerivedQuantity (Code) (InitialiseArray)", [&] {
    if (NumArgs > 0) {
      NumberOfArguments_ = NumArgs;
      Arguments_.ReDimPreserve(NumArgs);
    } else {
      NumberOfArguments_ = 0;
      Arguments_.ReDim(1, 1);
    }
  });
}

void mxDerivedQuantity::SetList(const Array<std::string>& zList, int32_t nList) {
  RunGuarded("mxDerivedQuantity (Code) (SetList)", [&] {
    nList_ = nList;
    if (nList > 0) zList_ = zList;
  });
}

void mxDerivedQuantity::GetList(Array<std::string>& zList, int32_t& nList) const {
  RunGuarded("mxDerivedQuantity (Code) (GetList)", [&] {
    nList = nList_;
    if (nList_ > 0) zList = zList_;
  });
}

bool mxDerivedQuantity::GetArgument_ReAssociate(int32_t Index, bool& qOK) const {
  bool qFlag = false;
  qOK = false;
  RunGuarded("mxDerivedQuantity (Code) (GetArgument_ReAssociate)", [&] {
    if (!ValidIndxe(Index)) return;
    qFlag = Arguments_(Index).ReAssociate;
    qOK = true;
  });
  return qFlag;
}

void mxDerivedQuantity::SetArgument_ReAssociate(int32_t Index, bool qReassociate, bool& qOK) {
  qOK = false;
  RunGuarded("mxDerivedQuantity (Code) (SetArgument_ReAssociate)", [&] {
    if (!ValidIndxe(Index)) return;
    Arguments_(Index).ReAssociate = qReassociate;
    qOK = true;
  });
}

std::string mxDerivedQuantity::GetArgumentName(int32_t Index) const {
  std::string zName;
  RunGuarded("mxDerivedQuantity (Code) (GetArgumentName)", [&] {
    if (!ValidIndxe(Index)) return;
    zName = Arguments_(Index).Argument;
  });
  return zName;
}

}  // namespace vndata
