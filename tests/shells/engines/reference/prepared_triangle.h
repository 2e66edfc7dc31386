// prepared_triangle.h: the geometry store and the scratch record as the engines have them before they call a kernel of
// three nodes, for tests that call kernels directly.
#ifndef FINITES_TESTS_PREPARED_TRIANGLE_H
#define FINITES_TESTS_PREPARED_TRIANGLE_H

#include <array>
#include <vector>

#include "element_stores.h"
#include "finites/records.h"
#include "flat_element.h"
#include "random_shapes.h"
#include "shells/triangle/geometry.h"

struct prepared_triangle {
  // Clears PLATEELEM; frame, geometry and LOCAL_XYZ from the nodes.
  explicit prepared_triangle(const std::vector<support::point>& nodes) : xyz{}, local{} {
    double* at = xyz.data();
    for (const support::point& node : nodes) {
      for (const double component : node) *at++ = component;
    }
    PLATEELEM = PLATEELEM_RECORD{};
    TRI_LOCAL_FRAME(xyz.data(), TRI, local);
    TRI_GEOMETRY(local, TRI);
    PLATEELEM.AXES = TRI.AXES;
    PLATEELEM.LOCAL_XYZ = local;
  }

  // The local coordinates of the store.
  shell_reference::corners flat() const {
    shell_reference::corners X(2, 3);
    for (int n = 1; n <= 3; ++n) X.col(n - 1) << local(1, n), local(2, n);
    return X;
  }

  std::array<double, 9> xyz;
  MATRIX<3, 3> local;
};

// A triangle of the plane: node 1 in the origin, node 2 at (x2, 0), node 3 at (x3, y3).
inline std::vector<support::point> plane_triangle(double x2, double x3, double y3) {
  return {support::point{0.0, 0.0, 0.0}, support::point{x2, 0.0, 0.0}, support::point{x3, y3, 0.0}};
}

// Numbers that are easy by hand: sides (5, 0), (-3, 3), (-2, -3); area 7.5.
inline std::vector<support::point> plane_triangle() { return plane_triangle(5.0, 2.0, 3.0); }

// ISO with different numbers for all constants: DM11 is not DM22, DB11 is not DB22, as no isotropic section has it; and
// the matrices that they stand for.
inline void set_distinct_constants(support::seeded_random& random) {
  for (double* constant : {&ISO.DM11, &ISO.DM12, &ISO.DM22, &ISO.DM33, &ISO.DB11, &ISO.DB12, &ISO.DB22, &ISO.DB33}) {
    *constant = random.uniform(0.5, 2.0);
  }
}

inline shell_reference::matrix3 membrane_constants() {
  shell_reference::matrix3 D;
  D << ISO.DM11, ISO.DM12, 0.0L, ISO.DM12, ISO.DM22, 0.0L, 0.0L, 0.0L, ISO.DM33;
  return D;
}

inline shell_reference::matrix3 bending_constants() {
  shell_reference::matrix3 D;
  D << ISO.DB11, ISO.DB12, 0.0L, ISO.DB12, ISO.DB22, 0.0L, 0.0L, 0.0L, ISO.DB33;
  return D;
}

// The full symmetric matrix of order n.
inline shell_reference::matrix full_of(int n, const double* packed) {
  shell_reference::matrix K(n, n);
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i <= j; ++i) K(i, j) = K(j, i) = *packed++;
  }
  return K;
}

#endif
