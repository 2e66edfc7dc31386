// element.cpp: what both theories do with a four-node element in the same way.
//
// Mirror: shells/triangle/element.cpp.
#include "shells/quadrilateral/element.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/behaviour.h"
#include "shells/common/flat_parts.h"
#include "shells/common/packed.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/forces.h"
#include "shells/quadrilateral/geometric_stiffness.h"
#include "shells/quadrilateral/mass.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/point_operations.h"
#include "shells/quadrilateral/stiffness.h"

void QUADRILATERAL_ELEMENT::set_frame(const double* xyz) {
  VECTOR<3> centroid;
  QUAD_LOCAL_FRAME(xyz, QUAD, local, centroid(1), centroid(2), centroid(3));
}

void QUADRILATERAL_ELEMENT::set_geometry(const double* xyz, SIDE_COEFFICIENTS wanted) {
  set_frame(xyz);
  QUAD_GEOMETRY(local, wanted == SIDE_COEFFICIENTS::WANTED ? WITH_SIDES : WITHOUT_SIDES, QUAD);
}

void QUADRILATERAL_ELEMENT::store_frame() const {
  EL.AXES = QUAD.AXES;
  EL.LOCAL_XYZ_QUAD = local;
}

void QUADRILATERAL_ELEMENT::split_displacements(const double* U) {
  double ul[QUAD_DOFS];
  QUAD_DISP_LOCAL(QUAD, U, ul);
  QUAD_U.MEMBRANE = picked(ul, QUAD_MEMBRANE_DOF);
  QUAD_U.BENDING = picked(ul, QUAD_BENDING_DOF);
  QUAD_U.DRILL = picked(ul, QUAD_DRILL_DOF);
}

void QUADRILATERAL_ELEMENT::geometric_stiffness(std::int32_t op, const double* ul, const double* points, double factor,
                                                double* K) const {
  if (isotropic(EL)) {
    QUAD_KG_ISO(EL, QUAD, ISO, op, split(), LOADS, QUAD_RULE_COUNT, QUAD_RULE_FULL, ul, points, factor, K);
  } else {
    QUAD_KG_GENERAL(EL, op, split(), QUAD_RULE_COUNT, ul, points, factor, K);
  }
}

void QUADRILATERAL_ELEMENT::finish_stiffness(int geometric, const double* points, FLAT_PARTS<4>& parts) const {
  quad_kdrill(EL, local, parts.drilling);
  if (LOADS(LOAD_FOUNDATION) == 0.0 && geometric != 1) return;
  double K[QUAD_PACKED];
  assemble_parts(parts, K);
  if (LOADS(LOAD_FOUNDATION) != 0.0) QUAD_FOUNDATION(QUAD, LOADS(LOAD_FOUNDATION), QUAD_RULE_COUNT, QUAD_RULE_FULL, K);
  if (geometric == 1) {
    double KG[QUAD_PACKED];
    geometric_stiffness(OP_STIFFNESS, nullptr, points, 1.0, KG);
    QUAD_ADD_GEOMETRIC(KG, K);
  }
  parts = parts_of<4>(K);
}

// Added to zeros: the plastic stiffness that K holds leaves these places zero.
void QUADRILATERAL_ELEMENT::place_drilling(double* K) const {
  double Kdrill[SYM(4, 4)];
  quad_kdrill(EL, local, Kdrill);
  const MATRIX_VIEW<QUAD_DOFS> KV(K);
  for (int j = 1; j <= 4; ++j) {
    for (int i = 1; i <= 4; ++i) {
      KV(QUAD_DRILL_DOF[i - 1], QUAD_DRILL_DOF[j - 1]) += Kdrill[SYM(std::min(i, j), std::max(i, j)) - 1];
    }
  }
}

void QUADRILATERAL_ELEMENT::mass(FLAT_PARTS<4>& M) const { QUAD_MASS(EL, QUAD, LOADS, QUAD_RULE_FULL, M); }

void QUADRILATERAL_ELEMENT::finish_forces(std::int32_t op, double* f) const {
  QUAD_FINISH_FORCES(EL, QUAD, QUAD_U, LOADS, local, op, f);
}

// area = sum over the points of w DET, each with its sign: DET can be negative near a re-entrant corner.
double QUADRILATERAL_ELEMENT::area() const {
  double area = 0.0;
  for (const SURFACE_STATION& s : QUAD_RULE_FULL) {
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    area += s.weight * J.DET;
  }
  return area;
}

void QUADRILATERAL_ELEMENT::locate_point(const double* xyz, int& point_flag1, int& point_flag2, double& distance) {
  QUAD_POINT_LOCATION(QUAD, LOADS, xyz, point_flag1, point_flag2, distance);
}

void QUADRILATERAL_ELEMENT::point_load(const double* xyz, double* f) {
  QUAD_POINT_LOAD(QUAD, LOADS, xyz, membrane_only, f);
}
