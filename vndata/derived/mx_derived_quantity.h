// mxDerivedQuantity: the definition of one user- or system-defined function
// over columns. It computes nothing: it says what the function is, which
// vectors it takes and how each is resampled, and where the result goes.
//
// Indexed operations accept 1..NumberOfArguments and otherwise do nothing.
// The let of NumberOfArguments changes the count alone, so the count can run
// past the argument array; an access beyond the array is then a logged fault
// ("mxDerivedQuantity (Code) (<operation>)") and the call returns.
#pragma once

#include <cstdint>
#include <string>

#include "vndata/derived/dq_argument.h"
#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/date.h"

namespace vndata {

class VNDATA_API mxDerivedQuantity {
 public:
  // A new record: one empty argument slot, TargetDataSet and ResultSolIndex -1.
  mxDerivedQuantity();

  void let_Verbose(const std::string& v) { Verbose_ = v; }
  const std::string& get_Verbose() const { return Verbose_; }
  void let_qApplyToList(bool v) { qApplyToList_ = v; }
  bool get_qApplyToList() const { return qApplyToList_; }
  void let_qApplyToAll(bool v) { qApplyToAll_ = v; }
  bool get_qApplyToAll() const { return qApplyToAll_; }
  void let_qApplyToAllGrids(bool v) { qApplyToAllGrids_ = v; }
  bool get_qApplyToAllGrids() const { return qApplyToAllGrids_; }
  void let_TargetDataDesc(const std::string& v) { TargetDataDesc_ = v; }
  const std::string& get_TargetDataDesc() const { return TargetDataDesc_; }
  void let_TargetDataSet(int32_t v) { TargetDataSet_ = v; }
  int32_t get_TargetDataSet() const { return TargetDataSet_; }
  // Writes the count alone; the argument array keeps its size.
  void let_NumberOfArguments(int32_t v) { NumberOfArguments_ = v; }
  int32_t get_NumberOfArguments() const { return NumberOfArguments_; }
  void let_ResultColumnHeaderBase(const std::string& v) { ResultColumnHeaderBase_ = v; }
  const std::string& get_ResultColumnHeaderBase() const { return ResultColumnHeaderBase_; }
  void let_ResultColumnHeader(const std::string& v) { ResultColumnHeader_ = v; }
  const std::string& get_ResultColumnHeader() const { return ResultColumnHeader_; }
  void let_ResultSolIndex(int32_t v) { ResultSolIndex_ = v; }
  int32_t get_ResultSolIndex() const { return ResultSolIndex_; }
  void let_Expression(const std::string& v) { Expression_ = v; }
  const std::string& get_Expression() const { return Expression_; }
  void let_StandardFunction(bool v) { StandardFunction_ = v; }
  bool get_StandardFunction() const { return StandardFunction_; }
  void let_AmendedDataSetUsed(int32_t v) { AmendedDataSetUsed_ = v; }
  int32_t get_AmendedDataSetUsed() const { return AmendedDataSetUsed_; }
  void let_HasLGRs(const bool& v) { HasLGRs_ = v; }
  bool get_HasLGRs() const { return HasLGRs_; }

  // Appends an argument: the count grows by one, then SetArguments fills it.
  void AddArguments(const std::string& Argument, const std::string& FileName,
                    const std::string& Source, const std::string& ColHead, bool Hide,
                    const std::string& zOrigin, int32_t SolIndex, const std::string& Class);
  // Overwrites an argument. Its resampling is switched off first (Method 0);
  // the resampling fields and ReAssociate keep their values.
  void SetArguments(int32_t Index, const std::string& Argument, const std::string& FileName,
                    const std::string& Source, const std::string& ColHead, bool Hide,
                    const std::string& zOrigin, int32_t SolIndex = -1,
                    const std::string& Class = "");
  // Reads an argument; a bad index leaves every output as it was.
  void GetArguments(int32_t Index, std::string& Argument, std::string& FileName,
                    std::string& Source, std::string& ColHead, bool& Hide, std::string& zOrigin,
                    int32_t& SolIndex, std::string& Class) const;
  void GetArguments(int32_t Index, std::string& Argument, std::string& FileName,
                    std::string& Source, std::string& ColHead, bool& Hide, std::string& zOrigin,
                    int32_t& SolIndex) const;
  void GetArguments(int32_t Index, std::string& Argument, std::string& FileName,
                    std::string& Source, std::string& ColHead, bool& Hide,
                    std::string& zOrigin) const;
  void GetArguments(int32_t Index, std::string& Argument, std::string& FileName,
                    std::string& Source, std::string& ColHead, bool& Hide) const;
  void GetResampleMethod(int32_t Index, int32_t& Method) const;
  void GetResampleStepSize(int32_t Index, int32_t& StepSize) const;
  void GetResamplePeriod(int32_t Index, int32_t& Interval, std::string& Units,
                         Date& StartDate) const;
  // Method 1 and the step; the period fields are left as they are.
  void SetResampleStepSize(int32_t Index, int32_t StepSize);
  // Method 2 and the period; the step is left as it is.
  void SetResamplePeriod(int32_t Index, int32_t Interval, const std::string& Units, Date StartDate);
  // Above 0: that many arguments, keeping those that fit. Otherwise none,
  // with the array made anew as one empty slot.
  void InitialiseArray(int32_t NumArgs = -1);

  void let_ResultVariable(const std::string& v) { ResultVariable_ = v; }
  const std::string& get_ResultVariable() const { return ResultVariable_; }
  void let_ResultOrigin(const std::string& v) { ResultOrigin_ = v; }
  const std::string& get_ResultOrigin() const { return ResultOrigin_; }
  void let_ResultUnits(const std::string& v) { ResultUnits_ = v; }
  const std::string& get_ResultUnits() const { return ResultUnits_; }
  void let_Variable(const std::string& v) { Variable_ = v; }
  const std::string& get_Variable() const { return Variable_; }
  void let_Index(const std::string& v) { Index_ = v; }
  const std::string& get_Index() const { return Index_; }
  void let_Member(const std::string& v) { Member_ = v; }
  const std::string& get_Member() const { return Member_; }
  void let_Class(const std::string& v) { Class_ = v; }
  const std::string& get_Class() const { return Class_; }
  void let_Well(const std::string& v) { Well_ = v; }
  const std::string& get_Well() const { return Well_; }

  // Stores the count; the names are copied only for a count above 0, so a
  // list set to 0 keeps its old names out of reach.
  void SetList(const Array<std::string>& zList, int32_t nList);
  // Gives the count and, when above 0, a fresh copy of the names.
  void GetList(Array<std::string>& zList, int32_t& nList) const;
  bool GetArgument_ReAssociate(int32_t Index, bool& qOK) const;
  void SetArgument_ReAssociate(int32_t Index, bool qReassociate, bool& qOK);
  // The argument's name in the expression, "" for a bad index.
  std::string GetArgumentName(int32_t Index) const;

 private:
  bool ValidIndxe(int32_t Index) const { return Index >= 1 && Index <= NumberOfArguments_; }

  // Fields in the order the record holds them.
  Array<DQArgument> Arguments_;
  std::string Expression_;
  std::string ResultColumnHeader_;
  std::string ResultColumnHeaderBase_;
  int32_t NumberOfArguments_ = 0;
  std::string ResultVariable_;
  std::string ResultOrigin_;
  std::string ResultUnits_;
  int32_t ResultSolIndex_ = -1;
  std::string Index_;
  std::string Variable_;
  std::string Member_;
  std::string Class_;
  std::string Well_;
  std::string Verbose_;
  int32_t TargetDataSet_ = -1;
  std::string TargetDataDesc_;
  int32_t nList_ = 0;
  Array<std::string> zList_;
  bool StandardFunction_ = false;
  bool qApplyToAll_ = false;
  bool qApplyToList_ = false;
  bool qApplyToAllGrids_ = false;
  int32_t AmendedDataSetUsed_ = 0;
  bool HasLGRs_ = false;
};

}  // namespace vndata
