// tied_element.cpp: u = L x + c of an element; and the passes between equations and degrees of freedom.
#include "elements/tied_element.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace solver {

namespace {

using columns_of_L = std::map<std::int32_t, std::vector<tied_element::term>>;

bool touches_dependent(const element& e, const resolved_constraints& constraints) {
  for (int i = 0; i < element_freedoms(e); ++i) {
    if (constraints.is_dependent(element_freedom(e, i))) return true;
  }
  return false;
}

// `freedoms`: those of the model that the local ones are, in their order.
tied_element tie(const std::vector<std::size_t>& freedoms, const load_case& loads, const scatter_map& map,
                 const numbered<int>& node_of) {
  tied_element tied;
  columns_of_L columns;
  for (int i = 0; i < number_of(freedoms.size()); ++i) {
    const std::size_t f = freedoms[subscript(i)];
    if (!map.constraints.is_dependent(f)) {
      tied.constant[subscript(i)] = loads.prescribed_value[f];
      if (map.equation[f] != PRESCRIBED) columns[map.equation[f]].push_back({i, 1});
      continue;
    }
    const dependent_freedom& d = map.constraints.dependents[subscript(map.constraints.row_of[f])];
    tied.constant[subscript(i)] = d.constant;
    for (const freedom_term& term : d.terms) columns[map.equation[term.freedom]].push_back({i, term.factor});
  }
  for (auto& [equation, terms] : columns) {
    tied.equations.push_back(equation);
    tied.columns.push_back(std::move(terms));
    if (tied.nodes.empty() || tied.nodes.back() != node_of[equation]) tied.nodes.push_back(node_of[equation]);
  }
  return tied;
}

// Equations ascend node by node.
numbered<int> nodes_of_equations(const scatter_map& map) {
  numbered<int> node_of(map.equations, 0);
  for (std::size_t f = 0; f < map.equation.size(); ++f) {
    if (map.equation[f] != PRESCRIBED) node_of[map.equation[f]] = number_of(f / DIRECTIONS);
  }
  return node_of;
}

std::vector<std::size_t> freedoms_of(const element& e) {
  std::vector<std::size_t> freedoms(subscript(element_freedoms(e)));
  for (int i = 0; i < element_freedoms(e); ++i) freedoms[subscript(i)] = element_freedom(e, i);
  return freedoms;
}

void find_bodies(const load_case& loads, const numbered<int>& node_of, scatter_map& map) {
  std::set<std::pair<int, int>> bodies;
  for (const linear_constraint& c : loads.conditions) {
    if (c.arm.node >= 0) bodies.emplace(c.arm.node, c.arm.first_rotation);
  }
  for (const auto& [node, first] : bodies) {
    const std::size_t f = freedom(node, first - 1);
    map.bodies.push_back({node, first, tie({f, f + 1, f + 2}, loads, map, node_of)});
  }
}

double lower(const element_matrix& K, int i, int j) { return i >= j ? K(i + 1, j + 1) : K(j + 1, i + 1); }

// L_a^T b
double along(const std::vector<tied_element::term>& column, const std::array<double, 24>& b) {
  double sum = 0;
  for (const tied_element::term& t : column) sum += t.factor * b[subscript(t.local)];
  return sum;
}

// K times a column of L, or times c.
std::array<double, 24> product(const element_matrix& K, int freedoms, const std::vector<tied_element::term>& column) {
  std::array<double, 24> result{};
  for (int i = 0; i < freedoms; ++i) {
    for (const tied_element::term& t : column) result[subscript(i)] += lower(K, i, t.local) * t.factor;
  }
  return result;
}

}  // namespace

void find_tied_elements(const model& m, const load_case& loads, scatter_map& map) {
  if (map.constraints.empty()) return;
  const numbered<int> node_of = nodes_of_equations(map);
  find_bodies(loads, node_of, map);
  map.tied_of.assign(m.elements.size(), -1);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (!touches_dependent(m.elements[e], map.constraints)) continue;
    map.tied_of[e] = count_of(map.tied);
    map.tied.push_back(tie(freedoms_of(m.elements[e]), loads, map, node_of));
  }
}

// Rows of a column of A ascend, and so do the equations: one walk down the column finds them all.
void add_tied(const tied_element& tied, int freedoms, const element_matrix& K, symmetric_matrix& A) {
  for (std::size_t b = 0; b < tied.equations.size(); ++b) {
    const std::array<double, 24> KL = product(K, freedoms, tied.columns[b]);
    std::size_t p = A.begin_of(subscript(tied.equations[b]));
    for (std::size_t a = b; a < tied.equations.size(); ++a) {
      while (A.row[p] != tied.equations[a]) ++p;
      A.value[p] += along(tied.columns[a], KL);
    }
  }
}

void move_tied(const tied_element& tied, int freedoms, const element_matrix& K, std::vector<double>& right) {
  if (std::all_of(tied.constant.begin(), tied.constant.end(), [](double value) { return value == 0; })) return;
  std::array<double, 24> Kc{};
  for (int i = 0; i < freedoms; ++i) {
    for (int j = 0; j < freedoms; ++j) Kc[subscript(i)] += lower(K, i, j) * tied.constant[subscript(j)];
  }
  for (std::size_t a = 0; a < tied.equations.size(); ++a) {
    right[subscript(tied.equations[a])] -= along(tied.columns[a], Kc);
  }
}

void add_tied_diagonal(const tied_element& tied, const element_matrix& K, std::vector<double>& diagonal) {
  for (std::size_t a = 0; a < tied.equations.size(); ++a) {
    double sum = 0;
    for (const tied_element::term& s : tied.columns[a]) {
      for (const tied_element::term& t : tied.columns[a]) sum += s.factor * t.factor * lower(K, s.local, t.local);
    }
    diagonal[subscript(tied.equations[a])] += sum;
  }
}

void expand(const scatter_map& map, const std::vector<double>& x, std::vector<double>& u) {
  for (std::size_t f = 0; f < map.equation.size(); ++f) {
    if (map.equation[f] != PRESCRIBED) u[f] = x[subscript(map.equation[f])];
  }
  for (const dependent_freedom& d : map.constraints.dependents) {
    double sum = d.constant;
    for (const freedom_term& term : d.terms) sum += term.factor * u[term.freedom];
    u[d.freedom] = sum;
  }
}

std::vector<double> spread(const scatter_map& map, const std::vector<double>& x) {
  std::vector<double> u(map.equation.size(), 0.0);
  for (std::size_t f = 0; f < u.size(); ++f) {
    if (map.equation[f] != PRESCRIBED) u[f] = x[subscript(map.equation[f])];
  }
  for (const dependent_freedom& d : map.constraints.dependents) {
    for (const freedom_term& term : d.terms) u[d.freedom] += term.factor * u[term.freedom];
  }
  return u;
}

std::vector<double> independent_part(const scatter_map& map, const std::vector<double>& displacement) {
  std::vector<double> result(map.equations);
  for (std::size_t f = 0; f < displacement.size(); ++f) {
    if (map.equation[f] != PRESCRIBED) result[subscript(map.equation[f])] = displacement[f];
  }
  return result;
}

std::vector<double> by_equation(const scatter_map& map, const std::vector<double>& force) {
  std::vector<double> result = independent_part(map, force);
  for (const dependent_freedom& d : map.constraints.dependents) {
    for (const freedom_term& term : d.terms) {
      result[subscript(map.equation[term.freedom])] += term.factor * force[d.freedom];
    }
  }
  return result;
}

std::vector<double> sizes_by_equation(const scatter_map& map, const std::vector<double>& size) {
  std::vector<double> result = independent_part(map, size);
  for (const dependent_freedom& d : map.constraints.dependents) {
    for (const freedom_term& term : d.terms) {
      result[subscript(map.equation[term.freedom])] += std::fabs(term.factor) * size[d.freedom];
    }
  }
  return result;
}

}  // namespace solver
