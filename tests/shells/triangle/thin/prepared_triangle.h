// prepared_triangle.h: the geometry store, the scratch record and the constants of the section as the engine has them
// before it calls a kernel, for tests that call kernels directly.
#ifndef FINITES_TESTS_PREPARED_TRIANGLE_H
#define FINITES_TESTS_PREPARED_TRIANGLE_H

#include <array>
#include <vector>

#include "random_shapes.h"
#include "reference_triangle.h"
#include "shells/common/constitutive.h"
#include "shells/triangle/geometry.h"

struct prepared_triangle {
  // Clears PLATEELEM; frame, geometry and LOCAL_XYZ from the nodes.
  explicit prepared_triangle(const std::vector<support::point>& nodes);
  reference::flat_triangle flat() const;  // the local coordinates of the store
  std::array<double, 9> xyz;
  MATRIX<3, 3> local;
};

// A triangle of the plane: node 1 in the origin, node 2 at (x2, 0), node 3 at (x3, y3).
std::vector<support::point> plane_triangle(double x2, double x3, double y3);

// ISO with different numbers for all constants: DM11 is not DM22, DB11 is not DB22, as no isotropic section has it.
void set_distinct_constants(support::seeded_random& random);

// A matrix without symmetry that is positive on its diagonal.
MATRIX<3, 3> unsymmetric_section(support::seeded_random& random);

reference::matrix3 wide(const MATRIX<3, 3>& D);
reference::matrix3 membrane_constants();  // of ISO
reference::matrix3 bending_constants();   // of ISO

// The degrees of freedom w, theta x, theta y of the nodes of X on w = c0 + c1 x + c2 y + c3 x^2 / 2 + c4 y^2 / 2 + c5 x
// y.
reference::column quadratic_deflection(const reference::flat_triangle& X, const std::vector<double>& c);

// Upper triangle by columns of a full matrix, and back.
std::vector<double> packed_of(const reference::matrix& K);
reference::matrix full_of(int n, const double* packed);

#endif
