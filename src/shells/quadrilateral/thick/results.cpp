// results.cpp: strains, stresses and stress resultants of the thick quadrilateral at its nodes and integration points.
//
//     e = B_m u,    k = B_b u,    g = B_s u,    s and M by shells/common/stresses.h,    Q = DS g
//
// Values at nodes are computed there, not extrapolated. With a split shear e(3) is that of the centre everywhere.
//
// Mirror: shells/triangle/thick/results.cpp.
#include "shells/quadrilateral/thick/results.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_results/element_record.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/stresses.h"
#include "shells/quadrilateral/forces.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/bending.h"
#include "shells/quadrilateral/thick/shear.h"
#include "shells/quadrilateral/thick/side_constants.h"

void RES_PT_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                           const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_DISPLACEMENTS& QUAD_U, double tm,
                           double tb, int split, double x, double y, double xi, double eta, double* block) {
  MATRIX<3, 12> B_b;
  MATRIX<2, 12> B_s;
  const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
  B_BEND_QUAD_ISO(QUAD_SIDES, J, xi, eta, B_b);
  B_SHEAR_QUAD_ISO(QUAD_SIDES, J, xi, eta, B_s);
  const VECTOR<3> k = strains_of(B_b, QUAD_U.BENDING);
  const VECTOR<2> g = strains_of(B_s, QUAD_U.BENDING);
  const VECTOR<3> e = QUAD_MEMBRANE_STRAINS_ISO(QUAD, QUAD_U, split, xi, eta);
  fill_thick_record(x, y, e, k, stresses_of(EL, ISO, e, tm), moments_of(EL, ISO, k, tb), g, shear_forces(ISO, g),
                    EL.THICKNESS, block);
}

void RES_PT_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, int split, double x, double y,
                           const SURFACE_POINT& s, double* block) {
  MATRIX<3, 12> B_b;
  MATRIX<2, 12> B_s;
  B_BEND_QUAD(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_b);
  B_SHEAR_QUAD(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_s);
  const VECTOR<3> k = product(B_b, QUAD_U.BENDING);
  const VECTOR<2> g = product(B_s, QUAD_U.BENDING);
  const VECTOR<3> e = QUAD_MEMBRANE_STRAINS_GENERAL(EL, QUAD_U, split, s);
  fill_thick_record(x, y, e, k, general_stresses_of(EL, e), general_moments_of(EL, k), g, product(EL.D_SHEAR, g),
                    EL.THICKNESS, block);
}

void RES_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                        const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int split,
                        double* nodes, double* points) {
  const QUADRILATERAL_SIDES QUAD_SIDES = SIDE_CONST_QUAD_ISO(EL, QUAD, LOADS);
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  const auto write = [&](double x, double y, const SURFACE_STATION& s, double* block) {
    RES_PT_QUAD_THICK_ISO(EL, QUAD, ISO, QUAD_SIDES, QUAD_U, tm, tb, split, x, y, s.xi, s.eta, block);
  };
  fill_records(local, QUAD_RULE_COUNT, station_in(QUAD_RULE_NODES), station_in(QUAD_RULE_FULL), write, nodes, points);
}

void RES_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, const MATRIX<3, 4>& local,
                        int split, double* nodes, double* points) {
  const auto write = [&](double x, double y, const SURFACE_POINT& s, double* block) {
    RES_PT_QUAD_THICK_GEN(EL, QUAD_U, split, x, y, s, block);
  };
  fill_records(local, QUAD_RULE_COUNT, quad_point_of(EL, RULE_NODES), quad_point_of(EL, RULE_FULL), write, nodes,
               points);
}
