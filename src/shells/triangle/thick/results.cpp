// results.cpp: strains, stresses and stress resultants of the thick triangle at its nodes and integration points.
//
//     e = B_m u,    k = B_b u,    g = B_s u,    s and M by shells/common/stresses.h,    Q = DS g
//
// Values at nodes are computed there, not extrapolated.
//
// Mirror: shells/quadrilateral/thick/results.cpp.
#include "shells/triangle/thick/results.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_results/element_record.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/stresses.h"
#include "shells/triangle/forces.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/thick/bending.h"
#include "shells/triangle/thick/shear.h"
#include "shells/triangle/thick/side_constants.h"

void RES_PT_TRI_THICK_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          const TRIANGLE_SIDES& TRI_SIDES, const TRI_DISPLACEMENTS& TRI_U, double tm, double tb,
                          double x, double y, double xi, double eta, double* block) {
  MATRIX<3, 6> B_m;
  MATRIX<3, 9> B_b;
  MATRIX<2, 9> B_s;
  B_BEND_TRI_ISO(TRI, TRI_SIDES, xi, eta, TRI_SIDES.A_DELTA, B_b);
  B_SHEAR_TRI_ISO(TRI_SIDES, xi, eta, B_s);
  TRI_B_MEMBRANE_STORED(TRI, B_m);
  const VECTOR<3> k = strains_of(B_b, TRI_U.BENDING);
  const VECTOR<2> g = strains_of(B_s, TRI_U.BENDING);
  const VECTOR<3> e = strains_of(B_m, TRI_U.MEMBRANE);
  fill_thick_record(x, y, e, k, stresses_of(EL, ISO, e, tm), moments_of(EL, ISO, k, tb), g, shear_forces(ISO, g),
                    EL.THICKNESS, block);
}

void RES_PT_TRI_THICK_GEN(const PLATEELEM_RECORD& EL, const TRI_DISPLACEMENTS& TRI_U, double x, double y,
                          const SURFACE_POINT& s, double* block) {
  MATRIX<3, 6> B_m;
  MATRIX<3, 9> B_b;
  MATRIX<2, 9> B_s;
  B_BEND_TRI(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, s.detj, B_b);
  B_SHEAR_TRI(EL, s.xi, s.eta, B_s);
  TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B_m);
  const VECTOR<3> k = product(B_b, TRI_U.BENDING);
  const VECTOR<2> g = product(B_s, TRI_U.BENDING);
  const VECTOR<3> e = product(B_m, TRI_U.MEMBRANE);
  fill_thick_record(x, y, e, k, general_stresses_of(EL, e), general_moments_of(EL, k), g, product(EL.D_SHEAR, g),
                    EL.THICKNESS, block);
}

void RES_TRI_THICK_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                       const TRI_DISPLACEMENTS& TRI_U, const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local,
                       double* nodes, double* points) {
  const TRIANGLE_SIDES TRI_SIDES = SIDE_CONST_TRI_ISO(EL, TRI, LOADS);
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  const auto write = [&](double x, double y, const SURFACE_STATION& s, double* block) {
    RES_PT_TRI_THICK_ISO(EL, TRI, ISO, TRI_SIDES, TRI_U, tm, tb, x, y, s.xi, s.eta, block);
  };
  fill_records(local, TRI_RULE_COUNT, station_in(TRI_RULE_NODES), station_in(TRI_RULE_FOUR), write, nodes, points);
}

void RES_TRI_THICK_GEN(const PLATEELEM_RECORD& EL, const TRI_DISPLACEMENTS& TRI_U, const MATRIX<3, 3>& local,
                       double* nodes, double* points) {
  const auto write = [&](double x, double y, const SURFACE_POINT& s, double* block) {
    RES_PT_TRI_THICK_GEN(EL, TRI_U, x, y, s, block);
  };
  fill_records(local, TRI_RULE_COUNT, tri_point_of(EL, RULE_NODES), tri_point_of(EL, RULE_ELEMENT), write, nodes,
               points);
}
