// span_use.cpp: the yield conditions along a member.
#include "pushover/span_use.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "finites/fields.h"

namespace solver {

namespace {

const hinge_model* hinges_of(const model& m, std::size_t element) {
  const int hinges = m.elements[element].hinges;
  return hinges < 0 || !is_beam(m.elements[element].type) ? nullptr : &m.hinges[hinges];
}

hinge_forces at(const span_forces& f, double xi) { return {value(f.P, xi), value(f.My, xi), value(f.Mz, xi)}; }

bool is_straight(const quintic& p) {
  constexpr double NO_TERM = 1e-12;  // of a coefficient by the values at the ends: that of some thousand operations
  const double ends = std::fabs(p[0]) + std::fabs(p[1]);
  return std::all_of(p.begin() + 2, p.end(), [&](double c) { return std::fabs(c) <= NO_TERM * ends; });
}

// The value of a flat equation is linear in the forces and homogeneous: along the member it is a polynomial.
span_value largest_of_face(const hinge_model& h, int equation, const span_forces& f) {
  polynomial along;
  for (std::size_t k = 0; k < f.P.size(); ++k) along.push_back(yield_value(h, equation, {f.P[k], f.My[k], f.Mz[k]}));
  const extreme largest = range_of(along).largest;
  return {largest.value, largest.xi};
}

// The best of equal intervals, then its neighbourhood by thirds.
span_value largest_of_curve(const hinge_model& h, const span_forces& f) {
  constexpr int INTERVALS = 64, THIRDS = 60;
  const auto there = [&](double xi) { return yield_value(h, 1, at(f, xi)); };
  int best = 0;
  double value = there(0);
  for (int i = 1; i <= INTERVALS; ++i) {
    const double here = there(double(i) / INTERVALS);
    if (!(here > value * (1 + BEYOND_END))) continue;
    best = i;
    value = here;
  }
  double low = std::max(best - 1, 0), high = std::min(best + 1, INTERVALS);
  for (int k = 0; k < THIRDS; ++k) {
    const double first = low + (high - low) / 3, second = high - (high - low) / 3;
    if (there(first / INTERVALS) < there(second / INTERVALS)) {
      low = first;
    } else {
      high = second;
    }
  }
  const double xi = (low + high) / 2 / INTERVALS;
  if (!(there(xi) > std::max(there(0), there(1)) * (1 + BEYOND_END))) return {};
  return {there(xi), xi};
}

}  // namespace

span_forces span_of(const member_field& f) { return {f.force[0], f.force[4], f.force[5]}; }

span_forces between(const span_forces& a, const span_forces& b, double share) {
  span_forces f = a;
  for (std::size_t k = 0; k < f.P.size(); ++k) {
    f.P[k] += share * (b.P[k] - a.P[k]);
    f.My[k] += share * (b.My[k] - a.My[k]);
    f.Mz[k] += share * (b.Mz[k] - a.Mz[k]);
  }
  return f;
}

span_value largest_between_ends(const hinge_model& h, const span_forces& f) {
  span_value largest;
  if (is_straight(f.P) && is_straight(f.My) && is_straight(f.Mz)) return largest;
  if (h.curve == yield_curve::ORBISON) return largest_of_curve(h, f);
  for (int equation = 1; equation <= equation_count(h); ++equation) {
    const span_value face = largest_of_face(h, equation, f);
    if (face.value > largest.value && face.xi > 0 && face.xi < 1) largest = face;
  }
  return largest;
}

double capacity_ratio(const hinge_model& h, const hinge_forces& f) {
  double ratio = 0;
  for (int equation = 1; equation <= equation_count(h); ++equation) {
    ratio = std::fmax(ratio, 1 / distance_to_yield(h, equation, {0, 0, 0}, f));
  }
  return ratio;
}

use_of_capacity most_used_end(const model& m, const std::vector<end_forces>& members) {
  use_of_capacity most;
  for (std::size_t e = 0; e < members.size(); ++e) {
    const hinge_model* const h = hinges_of(m, e);
    for (std::size_t end = 0; end < 2 && h != nullptr; ++end) {
      const double ratio = capacity_ratio(*h, forces_of_end(members[e], end));
      if (ratio > most.ratio) most = {e, end == 0 ? 0 : member_length(m, m.elements[e]), ratio};
    }
  }
  return most;
}

use_of_capacity most_used_span(const model& m, const std::vector<member_field>& fields) {
  use_of_capacity most;
  for (const member_field& f : fields) {
    const hinge_model* const h = hinges_of(m, f.element);
    if (h == nullptr) continue;
    const span_value largest = largest_between_ends(*h, span_of(f));
    if (!(largest.value > 0)) continue;
    const double ratio = capacity_ratio(*h, at(span_of(f), largest.xi));
    if (ratio > most.ratio) most = {f.element, largest.xi * f.length, ratio};
  }
  return most;
}

std::string name_of(const model& m, const use_of_capacity& use) {
  return fmt::format("element {} at {:.6g} from its first end", m.elements[use.element].id, use.distance);
}

}  // namespace solver
