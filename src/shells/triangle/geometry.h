// geometry.h: local frame and geometry of the three-node elements.
#ifndef FINITES_TRI_GEOMETRY_H
#define FINITES_TRI_GEOMETRY_H

#include "finites/views.hpp"

// Node 1 is the origin of the element axes and node 2 lies on x.
template <class REAL>
struct TRIANGLE_GEOMETRY_OF {
  MATRIX<3, 3, REAL> AXES;  // AXES(a, i): component i of local axis a
  REAL X21, X32, X13;
  REAL Y21, Y32, Y13;
  REAL TWO_AREA;
  REAL G11, G12, G21, G22;  // inverse Jacobian: d/dx = G11 d/dxi + G12 d/deta, d/dy = G21 d/dxi + G22 d/deta
};
using TRIANGLE_GEOMETRY = TRIANGLE_GEOMETRY_OF<double>;

// Displacements in element axes, part by part.
struct TRI_DISPLACEMENTS {
  VECTOR<6> MEMBRANE;  // u, v of each node
  VECTOR<9> BENDING;   // w, theta x, theta y of each node
  VECTOR<3> DRILL;     // theta z of each node
};

// The axes and the local coordinates.
//
//   xyz (3, 3)    in   (component, node), global
//   local (3, 3)  out  (component, node), element axes; z is zero up to rounding
//
// A side 1-2 of length zero gives zero axes; a side 1-3 along it or of length zero, zero second and third axes.
void TRI_LOCAL_FRAME(const double* xyz, TRIANGLE_GEOMETRY& TRI, MATRIX<3, 3>& local);

// Side differences, twice the area and the inverse Jacobian, from the local coordinates; AXES is left alone. An area of
// zero gives infinite values or NaN, which reach the results.
void TRI_GEOMETRY(const MATRIX<3, 3>& local, TRIANGLE_GEOMETRY& TRI);

#endif
