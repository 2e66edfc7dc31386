// station_record.h: the records of an isotropic element, from the strains at a station.
//
// The same values as element_record.h and shells/common/stresses.h give, with the divisions by the thickness done once
// for all stations of an element.
#ifndef FINITES_STATION_RECORD_H
#define FINITES_STATION_RECORD_H

#include "common/constants.h"
#include "common/pair.h"
#include "finites/fields.h"
#include "plate_results/res_record.h"

// Strains and curvatures: x and y side by side, then xy; transverse shears gxz, gyz.
struct STATION_STRAINS {
  PAIR e, k, g;
  double exy, kxy;
};

// An isotropic section and its temperatures.
//
//     s = DM (e - (tm, tm, 0)) / h,    M = DB k - (moment, moment, 0),    Q = DS g
//     faces e +- k h / 2, s +- 6 M / h^2
struct STATION_SECTION {
  double DM11, DM12, DM33, DB11, DB12, DB33, DS;
  double h, per_h, six_per_h2;
  double tm, moment;
};

// Columns from `column` on: x, y, xy.
inline void set_plane(double* block, int column, PAIR xy, double twist) {
  set_pair(block + column - 1, xy);
  block[column + 1] = twist;
}

// Columns 1 to 62 but for the principal values.
inline void fill_station(const STATION_SECTION& S, PAIR place, const STATION_STRAINS& strains, double* block) {
  const PAIR e = strains.e;
  const PAIR k = strains.k;
  const PAIR elastic = e - both(S.tm);
  const PAIR s = S.per_h * (S.DM11 * elastic + S.DM12 * exchanged(elastic));
  const double sxy = S.per_h * (S.DM33 * strains.exy);
  const PAIR M = S.DB11 * k + S.DB12 * exchanged(k) - both(S.moment);
  const double Mxy = S.DB33 * strains.kxy;
  const PAIR k_face = (0.5 * S.h) * k;
  const double kxy_face = 0.5 * S.h * strains.kxy;
  const PAIR s_face = S.six_per_h2 * M;
  const double sxy_face = S.six_per_h2 * Mxy;
  set_plane(block, COL_X, place, 0.0);
  set_plane(block, COL_STRAIN_TOP, e + k_face, strains.exy + kxy_face);
  set_plane(block, COL_STRESS_TOP, s + s_face, sxy + sxy_face);
  set_plane(block, COL_STRAIN_MID, e, strains.exy);
  set_plane(block, COL_STRESS_MID, s, sxy);
  set_plane(block, COL_STRAIN_BOTTOM, e - k_face, strains.exy - kxy_face);
  set_plane(block, COL_STRESS_BOTTOM, s - s_face, sxy - sxy_face);
  set_plane(block, COL_FORCES, S.h * s, S.h * sxy);
  set_plane(block, COL_MOMENTS, M, Mxy);
  const PAIR Q = S.DS * strains.g;
  set_pair(block + COL_SHEAR_STRAIN - 1, strains.g * both(1.0 / SHEAR_FACTOR));
  set_pair(block + COL_SHEAR_FORCE - 1, Q);
  set_pair(block + COL_SHEAR_STRESS - 1, (S.per_h / SHEAR_FACTOR) * Q);
  for (int column = COL_SPARE; column <= COL_LAST; column += 2) set_pair(block + column - 1, both(0.0));
}

#endif
