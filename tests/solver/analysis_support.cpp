// analysis_support.cpp: models built in memory, and their solution in one call.
#include "analysis_support.h"

#include "finites/fields.h"
#include "system/stopwatch.h"

namespace analysis_test {

using namespace solver;

solver::material isotropic(double E, double nu) {
  solver::material mat;
  mat.name = "ELASTIC";
  mat.elastic = true;
  mat.E1 = mat.E2 = E;
  mat.NU12 = nu;
  mat.G12 = mat.G13 = mat.G23 = E / (2 * (1 + nu));
  return mat;
}

grid::grid(int nx, int ny, const std::function<point(double, double)>& place, const solver::material& mat,
           double thickness, element_type type)
    : nx_(nx), ny_(ny) {
  m.deck = "grid.inp";
  m.files = {m.deck};
  m.materials = {mat};
  shell_section section;
  section.material = 0;
  section.formulation = shell_formulation::THIN;
  section.thickness = thickness;
  m.shell_sections = {section};
  m.steps.resize(1);
  for (int i = 0; i <= nx; ++i) {
    for (int j = 0; j <= ny; ++j) {
      solver::node n;
      n.id = static_cast<int>(m.nodes.size()) + 1;
      n.xyz = place(static_cast<double>(i) / nx, static_cast<double>(j) / ny);
      m.nodes.push_back(n);
    }
  }
  const auto add = [&](int a, int b, int c) {
    element e;
    e.id = static_cast<int>(m.elements.size()) + 1;
    e.type = type;
    e.nodes = {a, b, c};
    e.section = 0;
    m.elements.push_back(e);
  };
  for (int i = 0; i < nx; ++i) {
    for (int j = 0; j < ny; ++j) {
      const int a = node(i, j), b = node(i + 1, j), c = node(i + 1, j + 1), d = node(i, j + 1);
      if ((i + j) % 2 == 0) {
        add(a, b, c);
        add(c, d, a);
      } else {
        add(a, b, d);
        add(c, d, b);
      }
    }
  }
}

std::vector<int> grid::along_y(int i) const {
  std::vector<int> nodes;
  for (int j = 0; j <= ny_; ++j) nodes.push_back(node(i, j));
  return nodes;
}

std::vector<int> grid::along_x(int j) const {
  std::vector<int> nodes;
  for (int i = 0; i <= nx_; ++i) nodes.push_back(node(i, j));
  return nodes;
}

std::vector<int> grid::border() const {
  std::vector<int> nodes;
  for (int i = 0; i <= nx_; ++i)
    for (int j = 0; j <= ny_; ++j)
      if (i == 0 || j == 0 || i == nx_ || j == ny_) nodes.push_back(node(i, j));
  return nodes;
}

int direction_of(char letter) { return static_cast<int>(std::string("xyzXYZ").find(letter)); }

void grid::fix(const std::vector<int>& nodes, const std::string& directions, double value) {
  for (const int n : nodes) {
    for (const char letter : directions) {
      boundary_condition condition;
      condition.node = n;
      condition.first_dof = condition.last_dof = direction_of(letter) + 1;
      condition.value = value;
      m.boundaries.push_back(condition);
    }
  }
}

void grid::load(int node, char direction, double value) {
  nodal_load card;
  card.node = node;
  card.dof = direction_of(direction) + 1;
  card.value = value;
  step().nodal_loads.push_back(card);
}

void grid::load_line(const std::vector<int>& nodes, char direction, double total) {
  const double share = total / static_cast<double>(nodes.size() - 1);
  for (const int n : nodes) load(n, direction, n == nodes.front() || n == nodes.back() ? share / 2 : share);
}

void grid::pressure(double p) {
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    element_load card;
    card.element = static_cast<int>(e);
    card.magnitude = p;
    step().element_loads.push_back(card);
  }
}

void grid::gravity(double acceleration, const point& direction) {
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    element_load card;
    card.element = static_cast<int>(e);
    card.kind = element_load_kind::GRAVITY;
    card.magnitude = acceleration;
    card.direction = direction;
    step().element_loads.push_back(card);
  }
}

void grid::temperature(double change, double gradient) {
  for (std::size_t n = 0; n < m.nodes.size(); ++n) {
    nodal_temperature card;
    card.node = static_cast<int>(n);
    card.change = change;
    card.gradient = gradient;
    step().temperatures.push_back(card);
  }
}

double solved::u(int node, char direction) const {
  return solution.displacement[freedom(node, direction_of(direction))];
}

double solved::reaction(int node, char direction) const {
  return solution.reaction[freedom(node, direction_of(direction))];
}

double solved::reaction(const std::vector<int>& nodes, char direction) const {
  double sum = 0;
  for (const int n : nodes) sum += reaction(n, direction);
  return sum;
}

solved solve(const model& m, solver_kind kind) {
  library_model library(m);
  const std::unique_ptr<linear_solver> equations = make_linear_solver(kind);
  stopwatch watch;
  solved result;
  result.solution = solve_static(m, m.steps.front(), library, *equations, watch);
  result.results = recover_results(m, library, result.solution);
  return result;
}

std::string error_of(const model& m, solver_kind kind) {
  try {
    solve(m, kind);
  } catch (const std::exception& error) {
    return error.what();
  }
  return "";
}

point rectangle(double a, double b, double u, double v) { return {a * u, b * v, 0}; }

std::vector<solver_kind> solvers() {
  if (default_solver() == solver_kind::MUMPS) return {solver_kind::MUMPS, solver_kind::EIGEN};
  return {solver_kind::EIGEN};
}

}  // namespace analysis_test
