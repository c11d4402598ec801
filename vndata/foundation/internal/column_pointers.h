// Column pointer access without a guard, for the library's own callers that
// run under a guard of theirs. Internal to the library.
#pragma once

#include <cstdint>

#include "vndata/foundation/column_attributes.h"

namespace vndata {

// The 16-bit field of VECTORDATA that holds an id's pointer; nullptr for
// "INDEX" (a 32-bit field) and for ids that carry nothing. The one place
// that maps ids to fields: every pointer read and write goes through it.
int16_t VECTORDATA::*AttributeField16(int32_t iAttribute);

// Unguarded forms for callers that run under their own guard: reading
// reports whether the id has a field; writing raises fault 6 on overflow.
bool ReadAttributePointer(const VECTORDATA& v, int32_t iAttribute, int32_t& iPointer);
void WriteAttributePointer(VECTORDATA& v, int32_t iAttribute, int32_t iPointer);
void ResetColumnPointers(Array<COLUMNDATA>& cols, int32_t iFirstColumn);

}  // namespace vndata
