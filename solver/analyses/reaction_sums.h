// reaction_sums.h: what each group of supports carries.
#ifndef FINITES_SOLVER_REACTION_SUMS_H
#define FINITES_SOLVER_REACTION_SUMS_H

#include <array>
#include <string>
#include <vector>

#include "analyses/static_analysis.h"
#include "elements/load_case.h"
#include "model/model.h"

namespace solver {

struct set_reaction {
  std::string set;                       // the name of a node set; OTHER_SUPPORTS
  int nodes = 0;                         // how many of its nodes are held
  std::array<double, DIRECTIONS> sum{};  // forces, and moments about the origin
};

// A name that no set of a deck has, whose names are in capitals.
constexpr char OTHER_SUPPORTS[] = "other supports";

// By degree of freedom: whether a *BOUNDARY of the deck holds it in the step of the loads, along a global axis. An
// analysis also holds freedoms that nothing resists, such as rotations of solids: those are no supports.
std::vector<char> supported_freedoms(const model& m, const load_case& loads);

// By node: whether a degree of freedom of it is supported, along a global axis or one of its own.
std::vector<char> held_nodes(const model& m, const load_case& loads);

// The reactions of every node set that has held nodes, in the order of the deck; sets may have nodes in common, and
// each counts them. Held nodes of no set come last, together. A node made in a quadratic element belongs to the sets
// that have all of the nodes round it, and is not counted.
std::vector<set_reaction> reactions_by_set(const model& m, const static_solution& solution);

}  // namespace solver

#endif
