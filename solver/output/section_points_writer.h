// section_points_writer.h: stresses at the points of cross-sections as a table.
#ifndef FINITES_SOLVER_SECTION_POINTS_WRITER_H
#define FINITES_SOLVER_SECTION_POINTS_WRITER_H

#include <ostream>

#include "analyses/results.h"
#include "model/model.h"

namespace solver {

// A line of names, then a line per point at each station of each beam whose section has points: element, distance from
// its first end, number of the point, its place along axes 1 and 2 from the nodes, the axial, the bending and the whole
// normal stress, and apart from them the mean shear stresses V / A along axes 1 and 2.
void write_section_points_csv(std::ostream& out, const model& m, const step_results& results, int station_count);

}  // namespace solver

#endif
