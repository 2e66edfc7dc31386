// drilling_notes.h: where a model asks more of the rotation about the normal of a flat part than plates can answer.
//
// A sheet in its plane has displacements but no rotation at a point: a couple on a point turns that point by any
// amount. What the elements answer comes from their drilling stiffness alone, and goes to zero with their size.
#ifndef FINITES_SOLVER_DRILLING_NOTES_H
#define FINITES_SOLVER_DRILLING_NOTES_H

#include <string>
#include <vector>

#include "elements/flat_parts.h"
#include "elements/load_case.h"

namespace solver {

// Notes on nodes of flat parts that no other element joins: a rotation about the normal that is prescribed and not
// zero, unless the sheet is turned with it; a moment about the normal; a rotation that alone keeps the part from
// turning in its plane.
std::vector<std::string> note_drilling(const model& m, const std::vector<flat_part>& parts, const load_case& loads);

}  // namespace solver

#endif
