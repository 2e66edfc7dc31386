// results.cpp: strains, stresses and stress resultants of the thin quadrilateral at its nodes and integration points.
//
//     e = B_m u,    k = B_b u,    s and M by shells/common/stresses.h,    the faces by plate_results/element_record.cpp
//
// Values at nodes are computed there, not extrapolated. With a split shear e(3) is that of the centre everywhere.
//
// Mirror: shells/triangle/thin/results.cpp.
#include "shells/quadrilateral/thin/results.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_results/element_record.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/stresses.h"
#include "shells/quadrilateral/forces.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thin/bending.h"

void QUAD_RESULT_POINT_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                           const QUAD_DISPLACEMENTS& QUAD_U, double tm, double tb, int split, double x, double y,
                           double xi, double eta, double* block) {
  MATRIX<3, 12> B_b;
  const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
  DKQ_BMATRIX_STORED(QUAD, J, xi, eta, B_b);
  const VECTOR<3> k = strains_of(B_b, QUAD_U.BENDING);
  const VECTOR<3> e = QUAD_MEMBRANE_STRAINS_ISO(QUAD, QUAD_U, split, xi, eta);
  fill_thin_record(x, y, e, k, stresses_of(EL, ISO, e, tm), moments_of(EL, ISO, k, tb), EL.THICKNESS, block);
}

void QUAD_RESULT_POINT_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                               const QUAD_DISPLACEMENTS& QUAD_U, int split, double x, double y, const SURFACE_POINT& s,
                               double* block) {
  MATRIX<3, 12> B_b;
  DKQ_BMATRIX(QUAD, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_b);
  const VECTOR<3> k = product(B_b, QUAD_U.BENDING);
  const VECTOR<3> e = QUAD_MEMBRANE_STRAINS_GENERAL(EL, QUAD_U, split, s);
  fill_thin_record(x, y, e, k, general_stresses_of(EL, e), general_moments_of(EL, k), EL.THICKNESS, block);
}

void QUAD_RESULTS_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                      const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int split,
                      int count, const SURFACE_STATION* rule, double* nodes, double* points) {
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  const auto write = [&](double x, double y, const SURFACE_STATION& s, double* block) {
    QUAD_RESULT_POINT_ISO(EL, QUAD, ISO, QUAD_U, tm, tb, split, x, y, s.xi, s.eta, block);
  };
  fill_records(local, count, station_in(QUAD_RULE_NODES), station_in(rule), write, nodes, points);
}

void QUAD_RESULTS_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                          const QUAD_DISPLACEMENTS& QUAD_U, const MATRIX<3, 4>& local, int split, int count,
                          double* nodes, double* points) {
  const auto write = [&](double x, double y, const SURFACE_POINT& s, double* block) {
    QUAD_RESULT_POINT_GENERAL(EL, QUAD, QUAD_U, split, x, y, s, block);
  };
  fill_records(local, count, quad_point_of(EL, RULE_NODES), quad_point_of(EL, RULE_FULL), write, nodes, points);
}
