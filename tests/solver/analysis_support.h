// analysis_support.h: models built in memory, and their solution in one call.
#ifndef FINITES_TESTS_ANALYSIS_SUPPORT_H
#define FINITES_TESTS_ANALYSIS_SUPPORT_H

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "comparison.h"
#include "model/model.h"
#include "system/linear_solver.h"

namespace analysis_test {

using support::max_norm;
using point = std::array<double, 3>;

solver::material isotropic(double E, double nu);

// Squares of a rectangle, each cut in two along alternating diagonals. Side 1-2 of every triangle runs along the first
// parameter, forwards or backwards, and the normal is that of the parameters' right-handed plane. One section, one
// material, one step without loads.
class grid {
 public:
  // `place` takes parameters 0 to 1 to coordinates.
  grid(int nx, int ny, const std::function<point(double, double)>& place, const solver::material& mat, double thickness,
       solver::element_type type = solver::element_type::S3);

  int node(int i, int j) const { return i * (ny_ + 1) + j; }
  int nx() const { return nx_; }
  int ny() const { return ny_; }
  std::vector<int> along_y(int i) const;  // nodes with this i
  std::vector<int> along_x(int j) const;
  std::vector<int> border() const;

  // Directions by letters: x y z for translations, X Y Z for rotations.
  void fix(const std::vector<int>& nodes, const std::string& directions, double value = 0);
  void load(int node, char direction, double value);
  void load_line(const std::vector<int>& nodes, char direction, double total);  // uniform on equal sides
  void pressure(double p);
  void gravity(double acceleration, const point& direction);
  void temperature(double change, double gradient);

  solver::step& step() { return m.steps.front(); }

  solver::model m;

 private:
  int nx_, ny_;
};

int direction_of(char letter);  // 0 to 5

struct solved {
  solver::static_solution solution;
  solver::step_results results;

  double u(int node, char direction) const;
  double reaction(int node, char direction) const;
  double reaction(const std::vector<int>& nodes, char direction) const;
};

solved solve(const solver::model& m, solver::solver_kind kind = solver::default_solver());

// The text of the error that solving throws; empty when it throws none.
std::string error_of(const solver::model& m, solver::solver_kind kind = solver::default_solver());

point rectangle(double a, double b, double u, double v);

// Every solver of this build.
std::vector<solver::solver_kind> solvers();

}  // namespace analysis_test

#endif
