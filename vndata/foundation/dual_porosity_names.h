// The matrix and fracture names of a dual porosity grid array: a fixed list
// of families (base, matrix, fracture), then the last letter of the name.
// Shared by the data set's dual porosity views and the simulator name
// dictionaries, which both need it.
#pragma once

#include <string>

#include "vndata/platform/api.h"

namespace vndata {

// A name of a family (its base, matrix or fracture name, compared exactly)
// gives the family's matrix and fracture names. Another name ending in "F"
// is a fracture name and its matrix name ends in "M", and the other way
// round; any other name leaves both outputs alone.
VNDATA_API void DualPorosityFamilyNames(const std::string& zName, std::string& zMatrix,
                                        std::string& zFracture);

}  // namespace vndata
