// element.cpp: what both theories do with a three-node element in the same way.
//
// Mirror: shells/quadrilateral/element.cpp.
#include "shells/triangle/element.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/behaviour.h"
#include "shells/common/flat_parts.h"
#include "shells/common/packed.h"
#include "shells/common/plate_matrices.h"
#include "shells/triangle/forces.h"
#include "shells/triangle/geometric_stiffness.h"
#include "shells/triangle/loads.h"
#include "shells/triangle/mass.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/point_operations.h"
#include "shells/triangle/stiffness.h"

void TRIANGLE_ELEMENT::set_frame(const double* xyz) { TRI_LOCAL_FRAME(xyz, TRI, local); }

void TRIANGLE_ELEMENT::set_geometry(const double* xyz, SIDE_COEFFICIENTS /*wanted*/) {
  set_frame(xyz);
  TRI_GEOMETRY(local, TRI);
}

void TRIANGLE_ELEMENT::store_frame() const {
  EL.AXES = TRI.AXES;
  EL.LOCAL_XYZ = local;
}

void TRIANGLE_ELEMENT::split_displacements(const double* U) {
  double ul[TRI_DOFS];
  TRI_DISP_LOCAL(TRI, U, ul);
  TRI_U.MEMBRANE = picked(ul, TRI_MEMBRANE_DOF);
  TRI_U.BENDING = picked(ul, TRI_BENDING_DOF);
  TRI_U.DRILL = picked(ul, TRI_DRILL_DOF);
}

void TRIANGLE_ELEMENT::geometric_stiffness(std::int32_t op, const double* ul, const double* points, double factor,
                                           double* K) const {
  if (isotropic(EL)) {
    TRI_KG_ISO(EL, TRI, ISO, op, LOADS, ul, points, factor, K);
  } else {
    TRI_KG_GENERAL(EL, op, ul, points, factor, K);
  }
}

void TRIANGLE_ELEMENT::finish_stiffness(int geometric, const double* points, FLAT_PARTS<3>& parts) const {
  if (LOADS(LOAD_FOUNDATION) == 0.0 && geometric != 1) return;
  double K[TRI_PACKED];
  assemble_parts(parts, K);
  if (LOADS(LOAD_FOUNDATION) != 0.0) TRI_FOUNDATION(TRI, LOADS(LOAD_FOUNDATION), K);
  if (geometric == 1) {
    double KG[TRI_PACKED];
    geometric_stiffness(OP_STIFFNESS, nullptr, points, 1.0, KG);
    TRI_ADD_GEOMETRIC(KG, K);
  }
  parts = parts_of<3>(K);
}

// Written, not added: the plastic stiffness that K holds leaves these places zero.
void TRIANGLE_ELEMENT::place_drilling(double* K) const {
  double Kdrill[SYM(3, 3)];
  TRI_KDRILL(EL, TRI, Kdrill);
  const MATRIX_VIEW<TRI_DOFS> KV(K);
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) {
      KV(TRI_DRILL_DOF[i - 1], TRI_DRILL_DOF[j - 1]) = Kdrill[SYM(std::min(i, j), std::max(i, j)) - 1];
    }
  }
}

void TRIANGLE_ELEMENT::mass(FLAT_PARTS<3>& M) const { TRI_MASS(TRI, LOADS(LOAD_DENSITY) * EL.THICKNESS, M); }

void TRIANGLE_ELEMENT::finish_forces(std::int32_t op, double* f) const {
  TRI_FINISH_FORCES(EL, TRI, TRI_U, LOADS, op, f);
}

double TRIANGLE_ELEMENT::area() const { return TRI.TWO_AREA / 2.0; }

void TRIANGLE_ELEMENT::locate_point(const double* xyz, int& point_flag1, int& point_flag2, double& distance) {
  TRI_POINT_LOCATION(TRI, LOADS, xyz, point_flag1, point_flag2, distance);
}

void TRIANGLE_ELEMENT::point_load(const double* xyz, double* f) {
  TRI_POINT_LOAD(TRI, LOADS, xyz, TRI_LOAD_MODE, membrane_only, f);
}
