// extremes.cpp: one pass over each list of results, or over the bounds of an envelope.
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

// Of an envelope: the bounds of its bounds.

void take(const placed_value& least, const placed_value& largest, quantity_range& all) {
  if (all.least.step < 0 || least.value < all.least.value) all.least = least;
  if (all.largest.step < 0 || largest.value > all.largest.value) all.largest = largest;
}

// place(row) says where a row of the table lies; only rows for which counts(row) holds.
template <class PLACE, class COUNTS>
void find(const bounds_table& table, std::size_t column, std::string name, const PLACE& place, const COUNTS& counts,
          std::vector<quantity_range>& all) {
  quantity_range found{std::move(name), {}, {}};
  for (std::size_t r = 0; r < table.rows(); ++r) {
    const bounds& b = table.at(r, column);
    if (!counts(r) || b.least_step < 0) continue;
    take({b.least, place(r), b.least_step}, {b.largest, place(r), b.largest_step}, found);
  }
  if (found.least.value != 0 || found.largest.value != 0) all.push_back(found);
}

bool all_rows(std::size_t) { return true; }

void find_at_nodes(const envelope& e, std::vector<quantity_range>& all) {
  const auto node = [](std::size_t r) { return value_place{number_of(r), -1, -1}; };
  for (int d = 0; d < DIRECTIONS; ++d) {
    find(e.displacement, subscript(d), direction_short_name(d), node, all_rows, all);
  }
  for (int d = 0; d < DIRECTIONS; ++d) {
    const auto reacts = [&](std::size_t r) {
      return e.reaction.at(r, subscript(d)).least != 0 || e.reaction.at(r, subscript(d)).largest != 0;
    };
    find(e.reaction, subscript(d), std::string("reaction_") + direction_short_name(d), node, reacts, all);
  }
}

void find_along_members(const envelope& e, std::vector<quantity_range>& all) {
  const auto search = [&](const char* name, const auto& of) {
    quantity_range found{name, {}, {}};
    for (std::size_t f = 0; f < e.members.size(); ++f) {
      const placed_bounds& b = of(e.members[f]);
      if (b.least_step < 0 && b.largest_step < 0) continue;
      const int element = number_of(e.fields[f].element);
      take({b.least, {-1, element, b.least_at}, b.least_step}, {b.largest, {-1, element, b.largest_at}, b.largest_step},
           found);
    }
    if (found.least.value != 0 || found.largest.value != 0) all.push_back(found);
  };
  for (std::size_t i = 0; i < SECTION_FORCES; ++i) {
    search(SECTION_FORCE_NAMES[i], [i](const member_bounds& b) -> const placed_bounds& { return b.force[i]; });
  }
}

void find_in_plates(const model& m, const envelope& e, std::vector<quantity_range>& all) {
  static constexpr const char* FORCES[] = {"N1", "N2", "N12", "M1", "M2", "M12", "Q1", "Q2"};
  const auto at_part = [&](std::size_t r) { return value_place{e.at_parts[r].node, -1, -1}; };
  for (std::size_t s = 0; s < SURFACES; ++s) {
    for (const auto& [column, name] : {std::pair(FIRST, "first"), {SECOND, "second"}, {VON_MISES, "von_mises"}}) {
      find(e.parts, STRESS_COLUMNS * s + column, fmt::format("{}_{}", name, SURFACE_NAMES[s]), at_part, all_rows, all);
    }
  }
  const auto is_one = [&](std::size_t r) { return is_plate(m.elements[r].type); };
  for (std::size_t i = 0; i < OF_VON_MISES; ++i) {
    find(
        e.plates, i, FORCES[i],
        [](std::size_t r) {
          return value_place{-1, number_of(r), -1};
        },
        is_one, all);
  }
}

void find_in_solids(const envelope& e, std::vector<quantity_range>& all) {
  static constexpr const char* STRESSES[] = {"sxx", "syy", "szz", "sxy", "syz", "sxz"};
  const auto at_part = [&](std::size_t r) { return value_place{e.at_solids[r].node, -1, -1}; };
  const auto search = [&](std::size_t column, const char* name) {
    find(e.solids, column, std::string("solid_") + name, at_part, all_rows, all);
  };
  for (std::size_t i = 0; i < 6; ++i) search(OF_STRESS + i, STRESSES[i]);
  search(OF_PRINCIPAL, "first");
  search(OF_PRINCIPAL + 2, "third");
  search(OF_EQUIVALENT, "von_mises");
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

std::vector<quantity_range> ranges_of(const model& m, const envelope& e) {
  std::vector<quantity_range> all;
  find_at_nodes(e, all);
  find_along_members(e, all);
  find_in_plates(m, e, all);
  find_in_solids(e, all);
  return all;
}

std::string place_name(const model& m, const value_place& at) {
  if (at.node >= 0) return node_name(m, at.node);
  if (at.distance < 0) return element_name(m.elements[at.element]);
  return fmt::format("element {} at {:.6g}", m.elements[at.element].id, at.distance);
}

}  // namespace solver
