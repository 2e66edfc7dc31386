// pushover_support.cpp: frames pushed to collapse in one call.
#include "pushover_support.h"

#include <cmath>

#include "system/stopwatch.h"

namespace pushover_test {

using namespace solver;

std::vector<pushover_solution> push(const model& m, solver_kind kind) {
  library_model library(m);
  const std::unique_ptr<linear_solver> equations = make_linear_solver(kind);
  stopwatch watch;
  pushover frame(m, library, *equations);
  std::vector<pushover_solution> all;
  for (const step& s : m.steps) all.push_back(frame.solve(s, watch));
  return all;
}

std::vector<double> factors(const pushover_solution& solution) {
  std::vector<double> list;
  for (const hinge_event& e : solution.events) list.push_back(e.factor);
  return list;
}

std::string hinges(const std::string& curve, double cap_p, double cap_1, double cap_2) {
  return "*PLASTIC HINGE, ELSET=MEMBER, CURVE=" + curve + "\n" + number(cap_p) + ", " + number(cap_1) + ", " +
         number(cap_2) + "\n";
}

std::string pushed(const std::string& loads, const std::string& options, const std::string& limits) {
  return "*PUSHOVER" + options + "\n" + limits + loads;
}

double orbison(double p, double my, double mz) {
  return 1.15 * p * p + mz * mz + std::pow(my, 4) + 3.67 * p * p * mz * mz + 3 * std::pow(p, 6) * my * my +
         4.65 * std::pow(mz, 4) * my * my;
}

std::vector<double> nodal_forces(const model& m, const std::vector<end_forces>& members) {
  std::vector<double> sum(6 * m.nodes.size(), 0.0);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const MATRIX<3, 3> axes = member_axes(m, m.elements[e]);
    for (std::size_t part = 0; part < 4; ++part) {  // force and moment of the first end, then of the second
      const auto node = static_cast<std::size_t>(m.elements[e].nodes[part / 2]);
      for (int i = 1; i <= 3; ++i)
        for (int a = 1; a <= 3; ++a)
          sum[6 * node + 3 * (part % 2) + static_cast<std::size_t>(i - 1)] +=
              axes(a, i) * members[e][3 * part + static_cast<std::size_t>(a - 1)];
    }
  }
  return sum;
}

double imbalance(const model& m, const pushover_solution& s) {
  const std::vector<double> taken = nodal_forces(m, s.members);
  double worst = 0, largest = 0;
  for (std::size_t f = 0; f < taken.size(); ++f) {
    largest = std::fmax(largest, std::fabs(s.frame.load[f]));
    if (!s.frame.loads.prescribed[f]) worst = std::fmax(worst, std::fabs(taken[f] - s.frame.load[f]));
  }
  return worst / largest;
}

}  // namespace pushover_test
