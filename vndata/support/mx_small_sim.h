// mxSmallSim: the fixed vocabularies that let grid arrays of one simulator be
// written in the terms of another: the record type of an Eclipse array, the
// matrix and fracture names of a VIP array, the Eclipse name of a VIP array,
// and the move of a connection array onto the Eclipse side of its faces.
// Every name comparison is exact, case included.
//
// Faults are logged as "... In [mxSmallSim (Code) (<operation>)] ".
#pragma once

#include <cstdint>
#include <string>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"

namespace vndata {

class VNDATA_API mxSmallSim {
 public:
  // "INTE", "DOUB", "REAL" or "CHAR" for an Eclipse array: by the exact name
  // first, then by rules on the name's length and first letters. qOK true.
  void EclipseArrayType(const std::string& zName, std::string& zType, bool& qOK) const;
  // The matrix and fracture names of zName's dual porosity family. A name
  // outside the families is judged by its last letter ("F" fracture, "M"
  // matrix); any other name leaves both outputs alone. qOK true.
  void VIPDualPorosityNames(const std::string& zName, std::string& zMatrix, std::string& zFracture,
                            bool& qOK) const;
  // The Eclipse keyword, record type and transmissibility flag of a VIP
  // array. An unknown name of two or more letters stands for itself; an
  // unknown one-letter name gives qOK false.
  void VIP2EclipseName(const std::string& zName, std::string& zEclipse, std::string& zType,
                       bool& qTrans, bool& qOK) const;
  // Moves a connection array one cell along the axis its name picks
  // ("TRANX", "TRANR", "MULTX", "MULTR" the first; "TRANY", "TRANTHT",
  // "MULTY", "MULTHT" the second; "TRANZ", "MULTZ" the third; other names are
  // left alone). A value held by the cell on the high side of a face goes to
  // the cell on its low side: cell (i,j,k) takes the value of (i+1,j,k) on
  // the first axis, and the last cell of every grid line takes 0.
  //
  // sValues(1..nValues) is either the whole grid in natural order (nValues =
  // NX*NY*NZ, IA2N not used) or the active cells, IA2N(a) giving the 1-based
  // natural cell of active cell a; an inactive neighbour then counts as 0.
  void AdjustTransArray(int32_t NX, int32_t NY, int32_t NZ, int32_t nValues,
                        const std::string& zName, Array<float>& sValues,
                        const Array<int32_t>& IA2N = Array<int32_t>()) const;
};

}  // namespace vndata
