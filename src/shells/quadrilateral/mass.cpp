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

#include <algorithm>

#include "finites/records.h"
#include "shells/common/flat_parts.h"
#include "shells/common/point_pairs.h"
#include "shells/common/slopes.h"
#include "shells/common/translations.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/rotations.h"

namespace {

SHEAR_ROWS<12, LANES> rotations_at(const QUADRILATERAL_GEOMETRY& QUAD, const STATION_PAIR& s) {
  SHEAR_ROWS<12, LANES> H;
  dkq_rotations_at(QUAD, s.xi, s.eta, H.XZ, H.YZ);
  return H;
}

LANES area_of(const QUADRILATERAL_GEOMETRY& QUAD, const STATION_PAIR& s) {
  return s.weight * quad_determinant(QUAD, s.xi, s.eta);
}

}  // namespace

void QUAD_MASS(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ELEM_LOADS& LOADS,
               const SURFACE_STATION (&rule)[4], FLAT_PARTS<4>& parts) {
  const double h = EL.THICKNESS;
  const double m = LOADS(LOAD_DENSITY) * h;
  const double r = LOADS(LOAD_DENSITY) * (h * h * h) / 12.0;
  const STATION_PAIR s1 = station_pair(rule[0], rule[1]);
  const STATION_PAIR s2 = station_pair(rule[2], rule[3]);
  const LANES c1 = area_of(QUAD, s1);
  const LANES c2 = area_of(QUAD, s2);
  double translation[SYM(4, 4)];
  integrate_packed(bilinear(s1.xi, s1.eta), m * c1, bilinear(s2.xi, s2.eta), m * c2, translation);
  integrate_packed(rotations_at(QUAD, s1), r * c1, rotations_at(QUAD, s2), r * c2, parts.plate);
  std::fill_n(parts.membrane, SYM(8, 8), 0.0);
  std::fill_n(parts.drilling, SYM(4, 4), 0.0);
  add_translations(translation, parts);
}
