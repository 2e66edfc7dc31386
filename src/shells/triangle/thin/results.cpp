// results.cpp: strains, stresses and stress resultants of the thin triangle at its nodes and integration points.
//
//     e = B_m u,    k = B_b u,    s and M by shells/common/stresses.h,    the faces by plate_results/element_record.cpp
//
// Values at nodes are computed there, not extrapolated.
//
// Mirror: shells/quadrilateral/thin/results.cpp.
#include "shells/triangle/thin/results.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "plate_results/element_record.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/stresses.h"
#include "shells/triangle/forces.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/thin/bending.h"

void TRI_RESULT_POINT_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          const TRI_DISPLACEMENTS& TRI_U, double tm, double tb, double x, double y, double xi,
                          double eta, double* block) {
  MATRIX<3, 6> B_m;
  MATRIX<3, 9> B_b;
  DKT_BMATRIX_STORED(TRI, xi, eta, B_b);
  TRI_B_MEMBRANE_STORED(TRI, B_m);
  const VECTOR<3> k = strains_of(B_b, TRI_U.BENDING);
  const VECTOR<3> e = strains_of(B_m, TRI_U.MEMBRANE);

  const VECTOR<3> M = moments_of(EL, ISO, k, tb);
  const VECTOR<3> s = stresses_of(EL, ISO, e, tm);
  fill_thin_record(x, y, e, k, s, M, EL.THICKNESS, block);
}

void TRI_RESULT_POINT_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                              double x, double y, const SURFACE_POINT& s, double* block) {
  MATRIX<3, 6> B_m;
  MATRIX<3, 9> B_b;
  DKT_BMATRIX(TRI, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_b);
  TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B_m);
  const VECTOR<3> k = product(B_b, TRI_U.BENDING);
  const VECTOR<3> e = product(B_m, TRI_U.MEMBRANE);

  fill_thin_record(x, y, e, k, general_stresses_of(EL, e), general_moments_of(EL, k), EL.THICKNESS, block);
}

void TRI_RESULTS_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                     const TRI_DISPLACEMENTS& TRI_U, const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local, int count,
                     const SURFACE_STATION* rule, double* nodes, double* points) {
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  const auto write = [&](double x, double y, const SURFACE_STATION& s, double* block) {
    TRI_RESULT_POINT_ISO(EL, TRI, ISO, TRI_U, tm, tb, x, y, s.xi, s.eta, block);
  };
  fill_records(local, count, station_in(TRI_RULE_NODES), station_in(rule), write, nodes, points);
}

void TRI_RESULTS_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                         const MATRIX<3, 3>& local, int count, double* nodes, double* points) {
  const auto write = [&](double x, double y, const SURFACE_POINT& s, double* block) {
    TRI_RESULT_POINT_GENERAL(EL, TRI, TRI_U, x, y, s, block);
  };
  fill_records(local, count, tri_point_of(EL, RULE_NODES), tri_point_of(EL, RULE_ELEMENT), write, nodes, points);
}
