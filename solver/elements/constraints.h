// constraints.h: linear conditions between degrees of freedom, resolved: u = T x + c.
//
// Each condition makes one degree of freedom dependent on others, by Gauss's elimination of sparse rows. The first term
// of a condition becomes the dependent one unless it is prescribed, depends on others already, or has a vanishing
// factor; then it is the term with the largest factor. Every choice gives the same displacements and forces. Conditions
// that follow from others are left out and counted; those that contradict others are errors that name both.
//
// The forces by which the conditions act on the nodes are C^T lambda. Out of balance, K u less the loads, is what they
// and the supports exert; the multipliers follow from its values at the dependent degrees of freedom.
#ifndef FINITES_SOLVER_CONSTRAINTS_H
#define FINITES_SOLVER_CONSTRAINTS_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "elements/load_case.h"
#include "model/model.h"

namespace solver {

struct freedom_term {
  std::size_t freedom = 0;
  double factor = 0;
};

// u(freedom) = constant + sum of factor u, over independent degrees of freedom in ascending order.
struct dependent_freedom {
  std::size_t freedom = 0;
  double constant = 0;
  std::vector<freedom_term> terms;
};

// How a condition became a row: row = (condition - sum of factor times earlier rows) / pivot. The row has the factor 1
// at its dependent degree of freedom and none at those of earlier rows.
struct elimination {
  int condition = 0;  // in load_case::conditions
  double pivot = 1;
  std::vector<std::pair<int, double>> earlier;  // row, factor
  std::vector<freedom_term> others;             // of the row, beside its dependent degree of freedom
};

struct resolved_constraints {
  std::vector<dependent_freedom> dependents;  // in the order of their rows
  std::vector<elimination> rows;
  numbered<int> row_of;  // by degree of freedom; -1: independent or prescribed. Empty without conditions
  std::string note;      // what follows from other conditions; empty: nothing does

  bool empty() const { return dependents.empty(); }
  bool is_dependent(std::size_t f) const { return !row_of.empty() && row_of[f] >= 0; }
};

// Throws model_error for conditions that contradict one another or the supports.
resolved_constraints resolve_constraints(const model& m, const load_case& loads);

// What conditions and supports exert on the nodes, by degree of freedom.
struct support_forces {
  std::vector<double> reaction;    // of *BOUNDARY, also in axes of its own
  std::vector<double> constraint;  // of all other conditions; empty without conditions
};

// The multipliers of the conditions, in the order of load_case::conditions; 0 of those that follow from others.
std::vector<double> condition_multipliers(const resolved_constraints& constraints, const load_case& loads,
                                          const std::vector<double>& out_of_balance);

// `out_of_balance`: K u less the loads, by degree of freedom, where something is prescribed or a condition acts.
support_forces split_forces(const resolved_constraints& constraints, const load_case& loads,
                            const std::vector<double>& out_of_balance);

// A support in axes of its own is a condition of one node.
inline bool is_support(const linear_constraint& condition) { return condition.keyword == "*BOUNDARY"; }

}  // namespace solver

#endif
