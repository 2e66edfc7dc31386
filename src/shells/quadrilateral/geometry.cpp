// geometry.cpp: local frame and geometry of the four-node elements (geometry_formulas.h).
//
// Mirror: shells/triangle/geometry.cpp.
#include "shells/quadrilateral/geometry.h"

#include "shells/quadrilateral/geometry_formulas.h"

void QUAD_LOCAL_FRAME(const double* xyz, QUADRILATERAL_GEOMETRY& QUAD, MATRIX<3, 4>& local, double& cx, double& cy,
                      double& cz) {
  VECTOR<3> C;
  quad_local_frame(xyz, QUAD, local, C);
  cx = C(1);
  cy = C(2);
  cz = C(3);
}

void QUAD_GEOMETRY(const MATRIX<3, 4>& local, int mode, QUADRILATERAL_GEOMETRY& QUAD) {
  quad_geometry(local, mode, QUAD);
}

QUAD_POINT QUAD_JACOBIAN(const QUADRILATERAL_GEOMETRY& QUAD, double xi, double eta) {
  return quad_jacobian(QUAD, xi, eta);
}
