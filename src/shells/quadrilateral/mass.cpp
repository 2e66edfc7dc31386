// mass.cpp: consistent mass of the four-node elements: bilinear in all three translations, with the rotary inertia of
// the discrete Kirchhoff rotations (Batoz and Ben Tahar, 1982).
//
//     translations   M(u_i, u_j) = M(v_i, v_j) = M(w_i, w_j) = sum_p  m N_i N_j w DET
//     rotations      M(i, j) += sum_p  r (Hx(i) Hx(j) + Hy(i) Hy(j)) w DET,      1 <= i <= j <= 12
//
// m = rho h is the mass per area, r = rho h^3 / 12 its rotary inertia, rho = LOADS(LOAD_DENSITY).
//
// Mirror: shells/triangle/mass.cpp.
#include "shells/quadrilateral/mass.h"

#include "finites/records.h"
#include "shells/common/flat_parts.h"
#include "shells/common/translations.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/rotations.h"

void QUAD_MASS(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS, int count,
               const SURFACE_STATION* rule, FLAT_PARTS<4>& parts) {
  const double h = EL.THICKNESS;
  const double m = LOADS(LOAD_DENSITY) * h;
  const double r = LOADS(LOAD_DENSITY) * (h * h * h) / 12.0;
  double translation[SYM(4, 4)] = {};
  parts = FLAT_PARTS<4>{};
  VECTOR<12> Hx;
  VECTOR<12> Hy;
  for (int point = 0; point < count; ++point) {
    const SURFACE_STATION s = rule[point];
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    const double c = s.weight * J.DET;
    const VECTOR<4> N = bilinear(s.xi, s.eta);
    double* entry = translation;
    for (int j = 1; j <= 4; ++j) {
      for (int i = 1; i <= j; ++i) *entry++ += m * N(i) * N(j) * c;
    }
    DKQ_ROTATIONS(QUAD, s.xi, s.eta, Hx, Hy);
    entry = parts.plate;
    for (int j = 1; j <= 12; ++j) {
      for (int i = 1; i <= j; ++i) *entry++ += r * (Hx(i) * Hx(j) + Hy(i) * Hy(j)) * c;
    }
  }
  add_translations(translation, parts);
}
