// transforms.h: the axes of nodes that *TRANSFORM turns. Conditions and loads at such nodes are in them; results are
// not.
#ifndef FINITES_SOLVER_DECK_TRANSFORMS_H
#define FINITES_SOLVER_DECK_TRANSFORMS_H

#include <array>
#include <vector>

#include "deck/build.h"
#include "model/vectors.h"

namespace solver::deck {

inline bool is_turned(const build& b, int node) { return !b.transform_of.empty() && b.transform_of[node] >= 0; }

// The direction of a degree of freedom, 1 to 6, in global axes: of a translation, or of the axis of a rotation.
vector3 direction_at(const build& b, int node, int dof);

// condition += the term, whose degree of freedom is one of the axes of the node.
void add_turned_term(const build& b, linear_constraint& condition, const constraint_term& term);

// *BOUNDARY at a turned node: as supports along global axes where its axes lie along them, or where it holds all three
// directions; as a condition of one node elsewhere.
void prescribe_turned(build& b, const boundary_condition& card);

// *CLOAD at a turned node, in its global components.
std::vector<nodal_load> turned_load(const build& b, const nodal_load& card);

}  // namespace solver::deck

#endif
