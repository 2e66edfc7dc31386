// prepared_thick_triangle.h: the geometry store and the scratch record as the engine has them before it calls a kernel
// of the thick triangle, for tests that call kernels directly.
#ifndef FINITES_TESTS_PREPARED_THICK_TRIANGLE_H
#define FINITES_TESTS_PREPARED_THICK_TRIANGLE_H

#include <array>
#include <vector>

#include "element_stores.h"
#include "finites/records.h"
#include "random_shapes.h"
#include "shells/triangle/geometry.h"
#include "thick_sections.h"

struct prepared_thick_triangle {
  explicit prepared_thick_triangle(const std::vector<support::point>& nodes) : local{} {
    std::array<double, 9> xyz{};
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

  shell_reference::corners flat() const {
    shell_reference::corners X(2, 3);
    for (int n = 1; n <= 3; ++n) X.col(n - 1) << local(1, n), local(2, n);
    return X;
  }

  MATRIX<3, 3> local;
};

#endif
