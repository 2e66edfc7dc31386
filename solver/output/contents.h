// contents.h: what a deck holds, in words and counts, for --check.
#ifndef FINITES_SOLVER_CONTENTS_H
#define FINITES_SOLVER_CONTENTS_H

#include <string>

#include "elements/library_model.h"
#include "model/model.h"

namespace solver {

// Nodes and the box that they fill, elements by type, materials, sections, sets, surfaces, conditions.
std::string model_contents(const model& m);

// The mass, its centre, and of each step its kind, the resultant of its loads and what is held: of a model without an
// error in its elements.
std::string step_contents(const model& m, library_model& library);

}  // namespace solver

#endif
