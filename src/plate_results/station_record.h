// station_record.h: the records of an elastic element, from strains and resultants at a station.
//
// The same values as element_record.h gives, with the divisions by the thickness done once for all stations of an
// element.
#ifndef FINITES_STATION_RECORD_H
#define FINITES_STATION_RECORD_H

#include "common/constants.h"
#include "common/lanes.h"
#include "finites/fields.h"
#include "plate_results/res_record.h"

// Strains and curvatures, x and y side by side, then xy; transverse shears gxz, gyz.
struct STATION_STRAINS {
  LANES e, k, g;
  double exy, kxy;
};

// Stresses of the mid surface, moments and shear forces.
struct STATION_STRESSES {
  LANES s, M, Q;
  double sxy, Mxy;
};

// faces e +- k h / 2, s +- 6 M / h^2;  forces s h;  mean shear stress Q / (SHEAR_FACTOR h)
struct FACE_FACTORS {
  double h, half_h, six_per_h2, per_shear_h;

  explicit FACE_FACTORS(double thickness)
      : h(thickness),
        half_h(0.5 * thickness),
        six_per_h2(6.0 / (thickness * thickness)),
        per_shear_h(1.0 / (SHEAR_FACTOR * thickness)) {}
};

// Columns from `column` on: x, y, xy.
inline void set_plane(double* block, int column, LANES xy, double twist) {
  store_lanes(block + column - 1, xy);
  block[column + 1] = twist;
}

// Columns 1 to 62 except the principal values.
inline void fill_station(const FACE_FACTORS& F, LANES place, const STATION_STRAINS& e, const STATION_STRESSES& s,
                         double* block) {
  const LANES bent = F.half_h * e.k;
  const double twisted = F.half_h * e.kxy;
  const LANES face = F.six_per_h2 * s.M;
  const double face_xy = F.six_per_h2 * s.Mxy;
  set_plane(block, COL_X, place, 0.0);
  set_plane(block, COL_STRAIN_TOP, e.e + bent, e.exy + twisted);
  set_plane(block, COL_STRESS_TOP, s.s + face, s.sxy + face_xy);
  set_plane(block, COL_STRAIN_MID, e.e, e.exy);
  set_plane(block, COL_STRESS_MID, s.s, s.sxy);
  set_plane(block, COL_STRAIN_BOTTOM, e.e - bent, e.exy - twisted);
  set_plane(block, COL_STRESS_BOTTOM, s.s - face, s.sxy - face_xy);
  set_plane(block, COL_FORCES, F.h * s.s, F.h * s.sxy);
  set_plane(block, COL_MOMENTS, s.M, s.Mxy);
  store_lanes(block + COL_SHEAR_STRAIN - 1, e.g * both(1.0 / SHEAR_FACTOR));
  store_lanes(block + COL_SHEAR_FORCE - 1, s.Q);
  store_lanes(block + COL_SHEAR_STRESS - 1, F.per_shear_h * s.Q);
  for (int column = COL_SPARE; column <= COL_LAST; column += 2) store_lanes(block + column - 1, both(0.0));
}

#endif
