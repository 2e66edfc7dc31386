// plate_laws.h: flat plates of every shape and theory, and their calls, for the tests against mechanics.
#ifndef FINITES_TESTS_PLATE_LAWS_H
#define FINITES_TESTS_PLATE_LAWS_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "comparison.h"
#include "finites/elements.h"
#include "gtest/gtest.h"
#include "plate_subjects.h"

namespace plate_laws {

using support::point;
using vector = std::vector<double>;

constexpr double K_EPS = 500.0;  // sums of some hundred products

// A plate of every shape and theory in the global x-y plane, so that element axes are global ones; side 1-2 along x.
inline std::vector<finites_plate> flat_plates() {
  std::vector<finites_plate> all;
  for (const int nodes : {3, 4}) {
    for (const int theory : {FINITES_THICK, FINITES_THIN, FINITES_MEMBRANE, FINITES_MEMBRANE_REDUCED}) {
      finites_plate plate = subjects::rectangle(nodes, theory, 2.0, 1.0);
      plate.xyz[2][0] -= nodes == 4 ? 0.3 : -0.4;
      plate.xyz[2][1] += 0.2;
      all.push_back(plate);
    }
  }
  return all;
}

inline std::string name_of(const finites_plate& p) {
  return std::to_string(p.nodes) + " nodes, theory " + std::to_string(p.theory);
}

inline bool bends(const finites_plate& p) { return p.theory == FINITES_THICK || p.theory == FINITES_THIN; }

inline int order_of(const finites_plate& p) { return 6 * p.nodes; }

// Node by node: what field(x, y, z) says at the node.
template <class FIELD>
vector at_nodes(const finites_plate& p, FIELD field) {
  vector u;
  for (int m = 0; m < p.nodes; ++m) {
    const std::array<double, 6> v = field(p.xyz[m][0], p.xyz[m][1], p.xyz[m][2]);
    u.insert(u.end(), v.begin(), v.end());
  }
  return u;
}

inline vector matrix_of(const finites_plate& p, finites_status (*call)(const finites_plate*, double*)) {
  vector K(static_cast<std::size_t>(order_of(p) * order_of(p)));
  EXPECT_EQ(call(&p, K.data()), FINITES_OK);
  return K;
}

inline vector forces_of(const finites_plate& p, const vector& u) {
  vector F(static_cast<std::size_t>(order_of(p)));
  EXPECT_EQ(finites_plate_forces(&p, u.data(), F.data()), FINITES_OK);
  return F;
}

inline finites_plate_results results_of(const finites_plate& p, const vector& u, const double* temperature = nullptr) {
  finites_plate_results r;
  EXPECT_EQ(finites_plate_result(&p, u.data(), temperature, &r), FINITES_OK);
  return r;
}

// Every node and point of the results.
inline std::vector<finites_plate_point> places(const finites_plate_results& r) {
  std::vector<finites_plate_point> all(r.node, r.node + r.nodes);
  all.insert(all.end(), r.point, r.point + r.points);
  return all;
}

inline vector as_vector(const double (&three)[3]) { return vector(three, three + 3); }

}  // namespace plate_laws

#endif
