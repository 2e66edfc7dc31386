// solid_axes.cpp: the axes of a solid element, from three corners of its first face.
//
//     x  from the first corner to the second
//     z  normal to the plane of the first corner, the second, and the neighbour of the first on its other edge
//     y  z cross x
#include <cmath>
#include <cstdint>

#include "finites/services.h"
#include "finites/views.hpp"

namespace {

struct corner_nodes {
  int first, second, other;
};

// On a quadratic element nodes 1, 2 and 3 lie on one edge: node 2 is its middle and the corners are every second node
// around the face. A node count that is no kind takes its first three nodes.
corner_nodes corners_of(std::int32_t node_count) {
  switch (node_count) {
    case 8: return {1, 2, 4};  // brick
    case 10:                   // quadratic tetrahedron
    case 15:
    case 18: return {1, 3, 5};  // quadratic wedges
    case 20:
    case 27: return {1, 3, 7};  // quadratic bricks
    default: return {1, 2, 3};  // tetrahedron, wedge
  }
}

VECTOR<3> cross(const VECTOR<3>& a, const VECTOR<3>& b) {
  return {{a(2) * b(3) - a(3) * b(2), a(3) * b(1) - a(1) * b(3), a(1) * b(2) - a(2) * b(1)}};
}

// A vector without length stays zero: the element then has no volume in these axes, and its Jacobian is found singular.
VECTOR<3> unit(const VECTOR<3>& a) {
  const double length = std::sqrt(a(1) * a(1) + a(2) * a(2) + a(3) * a(3));
  if (length == 0.0) return {{0.0, 0.0, 0.0}};
  return {{a(1) / length, a(2) / length, a(3) / length}};
}

}  // namespace

void SOLIDELEM_AXE_DBL(const std::int32_t* NN, const double* XYZ, double* AX) {
  const MATRIX_VIEW<3> axes(AX);
  VECTOR<3> x{}, y{}, z{};
  if (*NN >= 3) {
    const MATRIX_VIEW<3, const double> node(XYZ);
    const corner_nodes corner = corners_of(*NN);
    VECTOR<3> edge, other_edge;
    for (int i = 1; i <= 3; ++i) {
      edge(i) = node(i, corner.second) - node(i, corner.first);
      other_edge(i) = node(i, corner.other) - node(i, corner.first);
    }
    x = unit(edge);
    z = unit(cross(x, other_edge));
    y = cross(z, x);
  }
  for (int i = 1; i <= 3; ++i) {
    axes(1, i) = x(i);
    axes(2, i) = y(i);
    axes(3, i) = z(i);
  }
}
