// results.cpp: strains, stresses and stress resultants of the thin triangle at its nodes and integration points.
#include "shells/tri_thin/results.h"

#include "plate_results/element_record.h"
#include "plate_results/res_record.h"
#include "shared_records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/strains.h"
#include "shells/tri_thin/bending.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/membrane.h"

void TRI_RESULT_POINT_ISO(double tm, double tb, double x, double y, double xi, double eta, double* block) {
  const double h = PLATEELEM.THICKNESS;
  MATRIX<3, 6> B_m;
  MATRIX<3, 9> B_b;
  DKT_BMATRIX_STORED(xi, eta, B_b);
  TRI_B_MEMBRANE_STORED(B_m);
  const VECTOR<3> k = strains_of(B_b, TRI.U_BENDING);
  const VECTOR<3> e = strains_of(B_m, TRI.U_MEMBRANE);

  // The same thermal moment in both directions; of this section DB11 and DB22 are equal.
  const double c = tb * (ISO.DB11 + ISO.DB12) / h;
  const VECTOR<3> M{{ISO.DB11 * k(1) + ISO.DB12 * k(2) - c, ISO.DB12 * k(1) + ISO.DB22 * k(2) - c, ISO.DB33 * k(3)}};
  const VECTOR<3> s{{(ISO.DM11 * (e(1) - tm) + ISO.DM12 * (e(2) - tm)) / h,
                     (ISO.DM12 * (e(1) - tm) + ISO.DM22 * (e(2) - tm)) / h, ISO.DM33 * e(3) / h}};
  fill_thin_record(x, y, e, k, s, M, h, block);
}

void TRI_RESULT_POINT_GENERAL(double x, double y, const SURFACE_POINT& s, double* block) {
  const PLATEELEM_RECORD& P = PLATEELEM;
  const double h = P.THICKNESS;
  MATRIX<3, 6> B_m;
  MATRIX<3, 9> B_b;
  DKT_BMATRIX(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_b);
  TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B_m);
  const VECTOR<3> k = product(B_b, TRI.U_BENDING);
  const VECTOR<3> e = product(B_m, TRI.U_MEMBRANE);

  // The twisting moment has no thermal term, whatever the material axes.
  VECTOR<3> M = product(P.D_BENDING, k);
  const VECTOR<3> M_thermal = product(P.D_BENDING, VECTOR<3>{{P.THERMAL_B1, P.THERMAL_B2, 0.0}});
  M(1) -= M_thermal(1) / h;
  M(2) -= M_thermal(2) / h;

  VECTOR<3> stress = product(P.D_MEMBRANE_NORMAL, VECTOR<3>{{e(1) - P.THERMAL_M1, e(2) - P.THERMAL_M2, e(3)}});
  for (int i = 1; i <= 3; ++i) stress(i) /= h;
  fill_thin_record(x, y, e, k, stress, M, h, block);
}

namespace {

// A local coordinate at (xi, eta), by linear interpolation.
double coordinate_at(const MATRIX<3, 3>& local, int component, double xi, double eta) {
  return (1.0 - xi - eta) * local(component, 1) + xi * local(component, 2) + eta * local(component, 3);
}

}  // namespace

void TRI_RESULTS_ISO(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& local, int count, const SURFACE_STATION* rule,
                     double* nodes, double* points) {
  const double tm = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = PLATEELEM.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  for (int n = 1; n <= 3; ++n) {
    const SURFACE_STATION& s = TRI_RULE_NODES[n - 1];
    TRI_RESULT_POINT_ISO(tm, tb, local(1, n), local(2, n), s.xi, s.eta, nodes + (n - 1) * RES_LENGTH);
  }
  for (int p = 1; p <= count; ++p) {
    const SURFACE_STATION& s = rule[p - 1];
    const double x = coordinate_at(local, 1, s.xi, s.eta);
    const double y = coordinate_at(local, 2, s.xi, s.eta);
    TRI_RESULT_POINT_ISO(tm, tb, x, y, s.xi, s.eta, points + (p - 1) * RES_LENGTH);
  }
}

void TRI_RESULTS_GENERAL(const MATRIX<3, 3>& local, int count, double* nodes, double* points) {
  for (int n = 1; n <= 3; ++n) {
    const SURFACE_POINT s = surface_point(RULE_NODES, n, 3, PLATEELEM.LOCAL_XYZ.data());
    TRI_RESULT_POINT_GENERAL(local(1, n), local(2, n), s, nodes + (n - 1) * RES_LENGTH);
  }
  for (int p = 1; p <= count; ++p) {
    const SURFACE_POINT s = surface_point(RULE_ELEMENT, p, 3, PLATEELEM.LOCAL_XYZ.data());
    const double x = coordinate_at(local, 1, s.xi, s.eta);
    const double y = coordinate_at(local, 2, s.xi, s.eta);
    TRI_RESULT_POINT_GENERAL(x, y, s, points + (p - 1) * RES_LENGTH);
  }
}
