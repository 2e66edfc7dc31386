// reference_triangle.h: the thin triangle once more, from first principles and in extended precision, for the tests.
//
// Nothing here knows the element's local frame: a flat_triangle has its nodes anywhere in its plane, gradients come
// from area coordinates, the bending rotations from their definition on six nodes. Per node: u, v, w, theta
// x, theta y, theta z; theta x = dw/dy and theta y = -dw/dx.
#ifndef FINITES_TESTS_REFERENCE_TRIANGLE_H
#define FINITES_TESTS_REFERENCE_TRIANGLE_H

#include <vector>

#include "dense.h"
#include "plate_model.h"

namespace reference {

using dense::column;
using dense::matrix;
using dense::matrix3;
using dense::real;
using dense::vector3;
using flat_triangle = dense::fixed<2, 3>;  // a column a node

struct station {
  double xi, eta, weight;
};
constexpr station FOUR_POINTS[4] = {{1.0 / 3.0, 1.0 / 3.0, -0.28125},
                                    {0.2, 0.2, 0.260416666666667},
                                    {0.6, 0.2, 0.260416666666667},
                                    {0.2, 0.6, 0.260416666666667}};

// Places of the parts among the eighteen degrees of freedom, from 1.
constexpr int MEMBRANE[6] = {1, 2, 7, 8, 13, 14};
constexpr int BENDING[9] = {3, 4, 5, 9, 10, 11, 15, 16, 17};
constexpr int DRILL[3] = {6, 12, 18};

real twice_area(const flat_triangle& X);
matrix gradients(const flat_triangle& X);  // (2, 3): of the area coordinates

matrix membrane_B(const flat_triangle& X);                      // (3, 6)
matrix bending_B(const flat_triangle& X, real xi, real eta);    // (3, 9)
column w_functions(const flat_triangle& X, real xi, real eta);  // 9, of w, theta x, theta y of each node

// Forces per strain, moments per curvature, drilling stiffness per twice the area.
struct section {
  matrix3 membrane = matrix3::Zero(), bending = matrix3::Zero();
  real drill = 0.0L, thickness = 0.0L;
  real alpha1 = 0.0L, alpha2 = 0.0L;
};
section section_of(const support::plate_description& d);  // formulations 2, 3, 99: no bending

// 18 by 18 in the axes of X. Of a section that is not symmetric these are the full products.
matrix membrane_stiffness(const flat_triangle& X, const matrix3& D);  // (6, 6)
matrix bending_stiffness(const flat_triangle& X, const matrix3& D);   // (9, 9)
matrix drill_stiffness(const flat_triangle& X, real drill);           // (3, 3)
matrix stiffness(const flat_triangle& X, const section& s);
matrix mass(const flat_triangle& X, real mass_per_area);
matrix geometric(const flat_triangle& X, const vector3& N);
matrix placed(const matrix& membrane, const matrix& bending, const matrix& drill);
using dense::upper_mirrored;

// Rows: x along side 1-2, y in the plane towards node 3, z the normal.
matrix3 axes_of(const std::vector<support::point>& nodes);
// The same turned by `angle` about the normal.
matrix3 turned_axes(const matrix3& axes, real angle);
flat_triangle seen_from(const matrix3& axes, const std::vector<support::point>& nodes);
matrix eighteen(const matrix3& axes);  // block diagonal

using dense::column_of;
using dense::largest;
using dense::listed;

}  // namespace reference

#endif
