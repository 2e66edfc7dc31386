// geometry.cpp: local frame and geometry of the three-node elements (geometry_formulas.h).
//
// Mirror: shells/quadrilateral/geometry.cpp.
#include "shells/triangle/geometry.h"

#include "shells/triangle/geometry_formulas.h"

void TRI_LOCAL_FRAME(const double* xyz, TRIANGLE_GEOMETRY& TRI, MATRIX<3, 3>& local) {
  tri_local_frame(xyz, TRI, local);
}

void TRI_GEOMETRY(const MATRIX<3, 3>& local, TRIANGLE_GEOMETRY& TRI) { tri_geometry(local, TRI); }
