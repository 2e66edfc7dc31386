// envelope_csv.h: the tables of an envelope: those of a step (csv_writer.h), with the least and the largest value in
// the place of each and the steps that govern: <name>_min, <name>_min_case, <name>_max, <name>_max_case.
#ifndef FINITES_SOLVER_ENVELOPE_CSV_H
#define FINITES_SOLVER_ENVELOPE_CSV_H

#include <ostream>

#include "analyses/envelope.h"
#include "model/model.h"

namespace solver {

// By node: displacements and reactions.
void write_envelope_csv(std::ostream& out, const model& m, const envelope& e);

// As reactions_csv.h: nodes that one of the steps holds, node sets with such nodes, and the sums of the steps. A set
// whose nodes a step does not hold has the reaction 0 there.
void write_envelope_reactions_csv(std::ostream& out, const model& m, const envelope& e);

// Two lines per member, one per end: what the node exerts; then, the same in both lines, what is least and largest
// along the member, with its distance from the first end: <name>_min, <name>_min_at, <name>_min_case and so on.
void write_envelope_members_csv(std::ostream& out, const model& m, const envelope& e);

// By station of each beam, truss and cable.
void write_envelope_stations_csv(std::ostream& out, const model& m, const envelope& e);

// By point of the section at each station of beams, as section_points_writer.h, where the envelope has gathered them.
void write_envelope_points_csv(std::ostream& out, const model& m, const envelope& e);

// By node and part of the surface.
void write_envelope_stresses_csv(std::ostream& out, const model& m, const envelope& e);

// By node and section of solids.
void write_envelope_solids_csv(std::ostream& out, const model& m, const envelope& e);

}  // namespace solver

#endif
