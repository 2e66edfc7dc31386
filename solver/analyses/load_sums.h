// load_sums.h: the resultants of the loads of a step, card by card.
#ifndef FINITES_SOLVER_LOAD_SUMS_H
#define FINITES_SOLVER_LOAD_SUMS_H

#include <array>
#include <string>
#include <vector>

#include "elements/library_model.h"
#include "elements/load_case.h"
#include "model/model.h"

namespace solver {

// The sum of forces by degree of freedom, and that of their moments about the origin.
std::array<double, DIRECTIONS> resultant_of(const model& m, const std::vector<double>& by_freedom);

struct load_sum {
  std::string name;                        // "*DLOAD, line 31"; of a keyword with many lines "*DLOAD"
  std::array<double, DIRECTIONS> total{};  // forces, and moments about the origin
};

// By keyword and data line; all *CLOAD in one. Temperatures and pretension have no resultant. Empty for a model with
// cables, whose loads act along their own shape.
std::vector<load_sum> sum_loads(const model& m, const step& s, library_model& library);

}  // namespace solver

#endif
