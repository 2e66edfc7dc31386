// prepared_quadrilateral.h: the geometry store and the scratch record as the engines have them before they call a
// kernel of four nodes, for tests that call kernels directly.
#ifndef FINITES_TESTS_PREPARED_QUADRILATERAL_H
#define FINITES_TESTS_PREPARED_QUADRILATERAL_H

#include <array>
#include <vector>

#include "element_stores.h"
#include "finites/records.h"
#include "flat_element.h"
#include "random_shapes.h"
#include "shells/quadrilateral/geometry.h"

struct prepared_quadrilateral {
  // Clears PLATEELEM; frame, geometry with the side coefficients, and LOCAL_XYZ_QUAD from the nodes.
  explicit prepared_quadrilateral(const std::vector<support::point>& nodes) : xyz{}, local{} {
    double* at = xyz.data();
    for (const support::point& node : nodes) {
      for (const double component : node) *at++ = component;
    }
    PLATEELEM = PLATEELEM_RECORD{};
    double cx = 0.0, cy = 0.0, cz = 0.0;
    QUAD_LOCAL_FRAME(xyz.data(), QUAD, local, cx, cy, cz);
    QUAD_GEOMETRY(local, 0, QUAD);
    PLATEELEM.AXES = QUAD.AXES;
    PLATEELEM.LOCAL_XYZ_QUAD = local;
  }

  // The local coordinates of the store.
  shell_reference::corners flat() const {
    shell_reference::corners X(2, 4);
    for (int n = 1; n <= 4; ++n) X.col(n - 1) << local(1, n), local(2, n);
    return X;
  }

  std::array<double, 12> xyz;
  MATRIX<3, 4> local;
};

// Numbers that are easy by hand: sides (4, 0), (1, 3), (-3, 1), (-2, -4); area 13.
inline std::vector<support::point> plane_quadrilateral() {
  return {support::point{0.0, 0.0, 0.0}, support::point{4.0, 0.0, 0.0}, support::point{5.0, 3.0, 0.0},
          support::point{2.0, 4.0, 0.0}};
}

inline std::vector<support::point> rectangle(double a, double b) {
  return {support::point{0.0, 0.0, 0.0}, support::point{a, 0.0, 0.0}, support::point{a, b, 0.0},
          support::point{0.0, b, 0.0}};
}

#endif
