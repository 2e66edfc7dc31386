// csv_writer.h: displacements and reactions of all nodes as a table for other programs.
#ifndef FINITES_SOLVER_CSV_WRITER_H
#define FINITES_SOLVER_CSV_WRITER_H

#include <ostream>

#include "analyses/modal_analysis.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

// A line of names, then a line per node: number, coordinates, displacements, reactions; global axes.
void write_csv(std::ostream& out, const model& m, const static_solution& solution);

// A line of names, then a line per mode: number, value.
void write_modes_csv(std::ostream& out, const step& s, const modal_solution& solution);

// A line of names, then two lines per member, one per end: element, end, what the node exerts on the member in local
// axes; then, the same in both lines, the least and the largest section forces along the member, its largest
// displacement and the sag of a cable, each with its distance from the first end. Springs and links leave these empty.
void write_members_csv(std::ostream& out, const model& m, const step_results& results);

// A line of names, then a line per station of each beam, truss and cable: where it is, displacements and rotations in
// global axes, section forces in local axes (member_field.h).
void write_stations_csv(std::ostream& out, const model& m, const step_results& results, int station_count);

// A line of names, then a line per part of the surface at each node (nodal_parts.h): its section, how many elements,
// its x axis and normal, and for the top, the middle and the bottom the stresses, principal stresses, angle and von
// Mises stress in its frame.
void write_stresses_csv(std::ostream& out, const model& m, const step_results& results);

// A line of names, then a line per section of solids at each node: the section, how many elements, the mean stresses in
// global axes, principal stresses, von Mises stress.
void write_solids_csv(std::ostream& out, const model& m, const step_results& results);

}  // namespace solver

#endif
