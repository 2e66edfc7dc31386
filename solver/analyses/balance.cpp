// balance.cpp: sums about the middle of the model, by the size of their terms.
#include "analyses/balance.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "analyses/load_sums.h"
#include "model/vectors.h"

namespace solver {

namespace {

constexpr double NEARLY_SINGULAR = 1e-7;  // of the scaled system; above it a solution is one of a structure
constexpr double OUT_OF_BALANCE = 1e-3;   // by the terms of the sum

bool may_stand_out_of_balance(const model& m) {
  const auto apart = [](const element& e) {
    return e.type == element_type::SPRING1 || e.type == element_type::SPRING2 || e.type == element_type::CONN3D2;
  };
  const auto tense = [](const frame_section& f) { return f.pretension != 0 || f.kind == frame_section_kind::CABLE; };
  return std::any_of(m.elements.begin(), m.elements.end(), apart) ||
         std::any_of(m.frame_sections.begin(), m.frame_sections.end(), tense);
}

vector3 middle_of(const model& m) {
  vector3 middle{};
  for (const node& n : m.nodes) {
    for (std::size_t i = 0; i < 3; ++i) middle[i] += n.xyz[i] / count_of(m.nodes);
  }
  return middle;
}

// Of forces and moments by degree of freedom: the sizes of what is added up.
struct term_sizes {
  double forces = 0, moments = 0;
};

term_sizes sizes_of(const model& m, const std::vector<double>& by_freedom, const vector3& middle) {
  term_sizes sum;
  for (int n = 0; n < count_of(m.nodes); ++n) {
    const double* const f = by_freedom.data() + freedom(n, 0);
    const double force = length_of({f[0], f[1], f[2]});
    sum.forces += force;
    sum.moments += force * length_of(difference(middle, m.nodes[n].xyz)) + length_of({f[3], f[4], f[5]});
  }
  return sum;
}

}  // namespace

std::string note_imbalance(const model& m, const step& s, const base_state& base, const static_solution& solution) {
  const bool doubtful = solution.smallest_stiffness > 0 && solution.smallest_stiffness < NEARLY_SINGULAR;
  if (!doubtful || s.p_delta || is_loaded(base) || may_stand_out_of_balance(m)) return "";
  const vector3 middle = middle_of(m);
  std::array<double, DIRECTIONS> left{};
  term_sizes size;
  for (const std::vector<double>* part : {&solution.load, &solution.reaction, &solution.constraint}) {
    if (part->empty()) continue;
    const std::array<double, DIRECTIONS> sum = resultant_of(m, *part);
    for (std::size_t i = 0; i < DIRECTIONS; ++i) left[i] += sum[i];
    const term_sizes own = sizes_of(m, *part, middle);
    size.forces += own.forces;
    size.moments += own.moments;
  }
  const vector3 force = {left[0], left[1], left[2]}, moved = cross(middle, force);
  const double forces = length_of(force),
               moments = length_of({left[3] - moved[0], left[4] - moved[1], left[5] - moved[2]});
  if (forces <= OUT_OF_BALANCE * size.forces && moments <= OUT_OF_BALANCE * size.moments) return "";
  return fmt::format(
      "loads and reactions are out of balance, by {:.1e} in forces and {:.1e} in moments, and the stiffness is nearly "
      "singular: a part of the structure moves as a rigid body against next to nothing, and its displacements mean "
      "nothing; hold it",
      forces, moments);
}

}  // namespace solver
