// vtu_envelope.h: an envelope for a viewer.
//
// Points and cells are those of a step (vtu_writer.h). Each array of values stands there four times, component by
// component:
//   <name>_min, <name>_max                 the least and the largest value
//   <name>_min_case, <name>_max_case       the number of the step that governs, from 1; 0: the point has no such value
// Point data: node_id; displacement, rotation, reaction_force, reaction_moment; station_element, station_distance and
// N, Vy, Vz, T, My, Mz of stations; nodal_parts, nodal_axis_x, nodal_normal and part_stress_top, part_principal_top
// (without the angle), part_von_mises_top and so on, of the part with the largest von Mises stress; solid_stress,
// solid_principal, solid_von_mises.
// Cell data: element_id, element_part, axis_x, normal; membrane_force, moment, shear_force, von_mises_top and so on;
// solid_stress, solid_principal, solid_von_mises; arrays of the model and of sets are those of a step.
// Field data: that of a step, and case_numbers and case_names, the steps that the envelope spans.
#ifndef FINITES_SOLVER_VTU_ENVELOPE_H
#define FINITES_SOLVER_VTU_ENVELOPE_H

#include "analyses/envelope.h"
#include "model/model.h"
#include "output/vtu_writer.h"

namespace solver {

pugi::xml_document envelope_vtu(const model& m, const step& s, const envelope& e, int station_count, vtu_form form);

}  // namespace solver

#endif
