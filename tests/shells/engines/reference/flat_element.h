// flat_element.h: the shapes of three and four nodes once more, from first principles and in extended precision.
//
// Nodes lie anywhere in their plane. A rotation field is written down from its definition and differentiated by central
// differences: it is at most quadratic in either natural coordinate, so that a difference over a step of one half is
// its derivative within rounding. Per node: u, v, w, theta x, theta y, theta z; the normal turns by
// beta x = theta y and beta y = -theta x.
#ifndef FINITES_TESTS_FLAT_ELEMENT_H
#define FINITES_TESTS_FLAT_ELEMENT_H

#include <vector>

#include "dense.h"
#include "plate_model.h"

namespace shell_reference {

using dense::column;
using dense::matrix;
using dense::matrix2;
using dense::matrix3;
using dense::real;
using dense::vector2;
using dense::vector3;
using corners = dense::matrix;  // a column a node; three or four

struct station {
  double xi, eta, weight;
};
const std::vector<station>& element_rule(int nodes);  // four points either way, with the digits of the library
const std::vector<station>& node_stations(int nodes);
station centre(int nodes);

inline int count_of(const corners& X) { return static_cast<int>(X.cols()); }

// ---- the straight-sided map

column functions(int nodes, real xi, real eta);
matrix2 jacobian(const corners& X, real xi, real eta);  // (dx/dxi dy/dxi; dx/deta dy/deta)
real determinant(const corners& X, real xi, real eta);
matrix gradients(const corners& X, real xi, real eta);  // (2, n): by x and y
vector2 position(const corners& X, real xi, real eta);

// ---- strains per degree of freedom

matrix membrane_B(const corners& X, real xi, real eta);  // (3, 2n)

// Rotations beta x, beta y (2, 3n) per w, theta x, theta y: of discrete Kirchhoff elements (the slope in the middle of
// a side: that of the cubic deflection along it, the mean of the corners across it) ...
matrix kirchhoff_rotations(const corners& X, real xi, real eta);
// ... and of discrete Kirchhoff-Mindlin elements with the flexibility ratios phi of their sides.
matrix mindlin_rotations(const corners& X, const column& phi, real xi, real eta);
// The increments dB of the sides, (n, 3n).
matrix side_increments(const corners& X, const column& phi);

matrix kirchhoff_B(const corners& X, real xi, real eta);                   // (3, 3n)
matrix mindlin_B(const corners& X, const column& phi, real xi, real eta);  // (3, 3n)
matrix shear_B(const corners& X, const column& phi, real xi, real eta);    // (2, 3n)

// The transverse displacement that loads and the mass of triangles use, 3n functions of w, theta x, theta y.
column w_functions(const corners& X, real xi, real eta);

// Side k runs from node k to the next.
vector2 side(const corners& X, int k);

// ---- in space

// Rows: x along side 1-2, y in the plane, z the normal: nodes 1, 2, 3 of a triangle, 1, 2, 4 of a quadrilateral.
matrix3 axes_of(const std::vector<support::point>& nodes);
vector3 origin_of(const std::vector<support::point>& nodes);  // node 1 of a triangle, the mean of four nodes
corners seen_from(const matrix3& axes, const std::vector<support::point>& nodes);
matrix groups(const matrix3& axes, int nodes);  // block diagonal, 6 n
vector3 wide(const support::point& p);

using dense::column_of;
using dense::largest;
using dense::listed;

// w, theta x, theta y of the nodes on w = c0 + c1 x + c2 y + c3 x^2 / 2 + c4 y^2 / 2 + c5 x y.
column quadratic_deflection(const corners& X, const std::vector<double>& c);

}  // namespace shell_reference

#endif
