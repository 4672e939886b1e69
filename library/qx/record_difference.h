// Where two records of one type differ, byte by byte, by their plan.
#pragma once

#include "library/qx/record_plan.h"

namespace qxsh {

/// Fills an empty list, as a dict: place -> its value in the first and in the second record. A
/// difference in a union is reported once, in the view that the plan shows if that has it, else in
/// the first view that has it; bytes in no field are padding(OFFSET). Both must be readable.
void differences(const record_plan &plan, const unsigned char *first, const unsigned char *second,
                 Tcl_Obj *result);

} // namespace qxsh
