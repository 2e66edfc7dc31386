// geometry.h: local frame and geometry of the four-node elements.
#ifndef FINITES_QUAD_GEOMETRY_H
#define FINITES_QUAD_GEOMETRY_H

#include "finites/views.hpp"
#include "shells/common/slopes.h"

// The centroid is the origin of the element axes.
template <class REAL>
struct QUADRILATERAL_GEOMETRY_OF {
  MATRIX<3, 3, REAL> AXES;  // AXES(a, i): component i of local axis a
  REAL QX12, QX23, QX34, QX41;
  REAL QY12, QY23, QY34, QY41;
  REAL QJ0, QJ1, QJ2;                                 // determinant QJ0 + QJ1 xi + QJ2 eta
  REAL QA1, QA2, QA3, QA4, QA5, QA6;                  // linear terms of the Jacobian
  VECTOR<8, REAL> DKQ_A, DKQ_B, DKQ_C, DKQ_D, DKQ_E;  // 5 to 8: sides 1-2, 2-3, 3-4, 4-1
};
using QUADRILATERAL_GEOMETRY = QUADRILATERAL_GEOMETRY_OF<double>;

// Displacements in element axes, part by part.
struct QUAD_DISPLACEMENTS {
  VECTOR<8> MEMBRANE;  // u, v of each node
  VECTOR<12> BENDING;  // w, theta x, theta y of each node
  VECTOR<4> DRILL;     // theta z of each node
};

// At a point: the determinant and the inverse Jacobian, d/dx = G11 d/dxi + G12 d/deta, d/dy = G21 d/dxi + G22 d/deta.
template <class REAL>
struct QUAD_POINT_OF {
  REAL DET;
  REAL G11, G12, G21, G22;
};
using QUAD_POINT = QUAD_POINT_OF<double>;

// QUAD_GEOMETRY without the side coefficients.
constexpr int WITHOUT_SIDES = 1;
constexpr int WITH_SIDES = 0;

// The axes and the local coordinates.
//
//   xyz (3, 4)    in   (component, node), global
//   local (3, 4)  out  (component, node), element axes, from the centroid
//   cx, cy, cz    out  the centroid, global
//
// The normal is that of nodes 1, 2, 4. A warped element is projected along it: no kernel reads the local z. A side 1-2
// of length zero gives zero axes; a side 1-4 along it or of length zero, zero second and third axes.
void QUAD_LOCAL_FRAME(const double* xyz, QUADRILATERAL_GEOMETRY& QUAD, MATRIX<3, 4>& local, double& cx, double& cy,
                      double& cz);

// Side differences and the terms of the Jacobian, from the local coordinates; the side coefficients of the bending
// kernel unless mode is WITHOUT_SIDES, which leaves them as they are. AXES is left alone.
void QUAD_GEOMETRY(const MATRIX<3, 4>& local, int mode, QUADRILATERAL_GEOMETRY& QUAD);

// The Jacobian at a point. A determinant of zero gives infinite values or NaN, which reach the results.
QUAD_POINT QUAD_JACOBIAN(const QUADRILATERAL_GEOMETRY& QUAD, double xi, double eta);

// The same inline, of one point or of a pair.
template <class BASE, class REAL>
inline REAL quad_determinant(const QUADRILATERAL_GEOMETRY_OF<BASE>& QUAD, REAL xi, REAL eta) {
  return QUAD.QJ0 + QUAD.QJ1 * xi + QUAD.QJ2 * eta;
}

template <class BASE, class REAL>
inline QUAD_POINT_OF<REAL> quad_jacobian(const QUADRILATERAL_GEOMETRY_OF<BASE>& QUAD, REAL xi, REAL eta) {
  QUAD_POINT_OF<REAL> J;
  J.DET = quad_determinant(QUAD, xi, eta);
  J.G11 = (QUAD.QA6 + xi * QUAD.QA4) / J.DET;
  J.G12 = -(QUAD.QA3 + eta * QUAD.QA4) / J.DET;
  J.G21 = -(QUAD.QA5 + xi * QUAD.QA2) / J.DET;
  J.G22 = (QUAD.QA1 + eta * QUAD.QA2) / J.DET;
  return J;
}

#endif
