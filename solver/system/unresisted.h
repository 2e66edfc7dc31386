// unresisted.h: degrees of freedom that no element resists by its nature, and what becomes of them.
//
// Four sorts do not make a model a mechanism as long as nothing loads them:
//
//   - every degree of freedom of a node that no element joins;
//   - the rotations of a node that only membranes, only solids, or only trusses, cables and springs along a direction,
//     join;
//   - the translation across a flat membrane, at a node that only membranes join;
//   - the common rotation about the normal of a flat part that is not tied to the sheet (drilling_tie.cpp): the
//     drilling stiffness of the elements answers only to differences of that rotation, and where all elements of a part
//     lie in one plane nothing else answers.
//
// They are held at zero, and the analysis says how many they were. A load on one of them is an error that names node
// and direction.
//
// A degree of freedom in a linear condition is none of them: what the condition ties it to may resist it. Where nothing
// does, the equations show it: a direction in which a node's own block of the reduced matrix has no stiffness. Nodes
// that no element joins, and rotations that none resists, are held along such directions.
#ifndef FINITES_SOLVER_UNRESISTED_H
#define FINITES_SOLVER_UNRESISTED_H

#include <string>
#include <vector>

#include "elements/flat_parts.h"
#include "elements/load_case.h"
#include "elements/scatter_map.h"
#include "model/model.h"

namespace solver {

// The first two sorts, before equations are numbered: they become prescribed zeros. Returns notes for the summary.
std::vector<std::string> hold_meaningless_freedoms(const model& m, const step& s, load_case& loads);

// The last two sorts and directions of nodes in conditions, after assembly: a stiffness is added on the direction,
// which nothing but a load on it would strain.
std::vector<std::string> hold_free_directions(const model& m, const step& s, const std::vector<flat_part>& parts,
                                              const load_case& loads, const std::vector<double>& load,
                                              const scatter_map& map, symmetric_matrix& K);

}  // namespace solver

#endif
