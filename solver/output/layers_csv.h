// layers_csv.h: the stresses of the single layers of shells as a table.
#ifndef FINITES_SOLVER_LAYERS_CSV_H
#define FINITES_SOLVER_LAYERS_CSV_H

#include <ostream>

#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

// A line of names, then two lines for each layer of each element whose section is COMPOSITE, from the bottom of the
// lowest layer to the top of the uppermost one: element, its part (from 1; 0: the element is whole), layer from 1 at
// the bottom, its material and angle, the face, its height above the mid surface, and stresses 11, 22, 12 in the axes
// of the layer and in those of the section. They are those of the mean of the integration points.
void write_layers_csv(std::ostream& out, const model& m, const static_solution& solution, const step_results& results);

}  // namespace solver

#endif
