// extremes.cpp: one pass over each list of results.
#include "analyses/extremes.h"

#include <cmath>

#include <fmt/format.h>

#include "elements/load_case.h"

namespace solver {

namespace {

constexpr const char* SURFACE_NAMES[SURFACES] = {"top", "middle", "bottom"};

bool is_beyond(double value, double than) { return value - than > BEYOND_END * std::fabs(than); }

class range_search {
 public:
  explicit range_search(std::string name) { found_.name = std::move(name); }

  void take(double value, const value_place& at) {
    if (none_ || is_beyond(-value, -found_.least.value)) found_.least = {value, at};
    if (none_ || is_beyond(value, found_.largest.value)) found_.largest = {value, at};
    none_ = false;
    nonzero_ = nonzero_ || value != 0;
  }
  void put_into(std::vector<quantity_range>& all) const {
    if (nonzero_) all.push_back(found_);
  }

 private:
  quantity_range found_;
  bool none_ = true, nonzero_ = false;
};

value_place at_node(int node) { return {node, -1, -1}; }
value_place in_element(std::size_t e) { return {-1, number_of(e), -1}; }
value_place along(const member_field& f, double xi) { return {-1, number_of(f.element), f.before + xi * f.length}; }

void find_displacements(const model& m, const static_solution& solution, const step_results& results,
                        std::vector<quantity_range>& all) {
  range_search length("displacement");
  for (int d = 0; d < DIRECTIONS; ++d) {
    range_search one(direction_short_name(d));
    for (int n = 0; n < count_of(m.nodes); ++n) one.take(solution.displacement[freedom(n, d)], at_node(n));
    one.put_into(all);
  }
  for (int n = 0; n < count_of(m.nodes); ++n) {
    const double* const u = solution.displacement.data() + freedom(n, 0);
    length.take(std::hypot(u[0], u[1], u[2]), at_node(n));
  }
  for (const member_field& f : results.fields) {
    if (f.hanging) continue;  // far from its chord, on which the deck puts it
    const extreme most = largest_displacement(f);
    length.take(most.value, along(f, most.xi));
  }
  length.put_into(all);
}

void find_reactions(const model& m, const static_solution& solution, std::vector<quantity_range>& all) {
  for (int d = 0; d < DIRECTIONS; ++d) {
    range_search one(std::string("reaction_") + direction_short_name(d));
    for (int n = 0; n < count_of(m.nodes); ++n) {
      const double value = solution.reaction[freedom(n, d)];
      if (value != 0) one.take(value, at_node(n));
    }
    one.put_into(all);
  }
}

// Of what the nodes exert at the ends of a spring or link, that of the first end changes its sign.
void take_ends(const model& m, const step_results& results, std::size_t e, std::size_t i, range_search& one) {
  for (std::size_t end = 0; end < m.elements[e].nodes.size(); ++end) {
    one.take(results.members[e][SECTION_FORCES * end + i] * (end == 0 ? -1 : 1), in_element(e));
  }
}

void find_section_forces(const model& m, const step_results& results, std::vector<quantity_range>& all) {
  for (std::size_t i = 0; i < SECTION_FORCES; ++i) {
    range_search one(SECTION_FORCE_NAMES[i]);
    for (const member_field& f : results.fields) {
      const value_range range = range_of_force(f, i);
      one.take(range.least.value, along(f, range.least.xi));
      one.take(range.largest.value, along(f, range.largest.xi));
    }
    for (std::size_t e = 0; e < m.elements.size(); ++e) {
      if (is_member(m.elements[e].type) && !has_field(m, m.elements[e])) take_ends(m, results, e, i, one);
    }
    one.put_into(all);
  }
}

void find_plate_stresses(const step_results& results, std::vector<quantity_range>& all) {
  const auto search = [&](const char* name, std::size_t s, double surface_stress::*value) {
    range_search one(fmt::format("{}_{}", name, SURFACE_NAMES[s]));
    for (const nodal_part& part : results.parts) one.take(part.at[s].*value, at_node(part.node));
    one.put_into(all);
  };
  for (std::size_t s = 0; s < SURFACES; ++s) {
    search("first", s, &surface_stress::first);
    search("second", s, &surface_stress::second);
    search("von_mises", s, &surface_stress::equivalent);
  }
}

void find_plate_forces(const model& m, const step_results& results, std::vector<quantity_range>& all) {
  const auto search = [&](const char* name, const auto& value) {
    range_search one(name);
    for (std::size_t e = 0; e < m.elements.size(); ++e) {
      if (is_plate(m.elements[e].type)) one.take(value(results.elements[e]), in_element(e));
    }
    one.put_into(all);
  };
  static constexpr const char* FORCES[] = {"N1", "N2", "N12"};
  static constexpr const char* MOMENTS[] = {"M1", "M2", "M12"};
  static constexpr const char* SHEARS[] = {"Q1", "Q2"};
  for (std::size_t i = 0; i < 3; ++i) search(FORCES[i], [i](const element_result& r) { return r.force[i]; });
  for (std::size_t i = 0; i < 3; ++i) search(MOMENTS[i], [i](const element_result& r) { return r.moment[i]; });
  for (std::size_t i = 0; i < 2; ++i) search(SHEARS[i], [i](const element_result& r) { return r.shear_force[i]; });
}

void find_solid_stresses(const step_results& results, std::vector<quantity_range>& all) {
  const auto search = [&](const char* name, const auto& value) {
    range_search one(name);
    for (const solid_part& part : results.solids) one.take(value(part.at), at_node(part.node));
    one.put_into(all);
  };
  static constexpr const char* NAMES[] = {"solid_sxx", "solid_syy", "solid_szz", "solid_sxy", "solid_syz", "solid_sxz"};
  for (std::size_t i = 0; i < 6; ++i) search(NAMES[i], [i](const solid_stress& s) { return s.stress[i]; });
  search("solid_first", [](const solid_stress& s) { return s.principal[0]; });
  search("solid_third", [](const solid_stress& s) { return s.principal[2]; });
  search("solid_von_mises", [](const solid_stress& s) { return s.equivalent; });
}

}  // namespace

std::vector<quantity_range> ranges_of(const model& m, const static_solution& solution, const step_results& results) {
  std::vector<quantity_range> all;
  find_displacements(m, solution, results, all);
  find_reactions(m, solution, all);
  find_section_forces(m, results, all);
  find_plate_stresses(results, all);
  find_plate_forces(m, results, all);
  find_solid_stresses(results, all);
  return all;
}

std::string place_name(const model& m, const value_place& at) {
  if (at.node >= 0) return node_name(m, at.node);
  if (at.distance < 0) return element_name(m.elements[at.element]);
  return fmt::format("element {} at {:.6g}", m.elements[at.element].id, at.distance);
}

}  // namespace solver
