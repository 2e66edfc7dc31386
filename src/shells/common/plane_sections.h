// plane_sections.h: elastic sections of plates with their x and y components side by side, for the fields of an
// element (quadrilateral/elastic_fields.cpp, triangle/elastic_fields.cpp).
#ifndef FINITES_PLANE_SECTIONS_H
#define FINITES_PLANE_SECTIONS_H

#include "common/lanes.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_results/station_record.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/general_products.h"

// Nx, Ny, Nxy or Mx, My, Mxy.
struct PLANE_RESULTANTS {
  LANES xy;
  double twist;
};

// D = [D11 D12 0; D12 D11 0; 0 0 D33]
struct ISOTROPIC_PLANE {
  double D11, D12, D33;

  PLANE_RESULTANTS of(LANES e, double exy) const { return {D11 * e + D12 * swapped(e), D33 * exy}; }
};

// A full matrix, by its columns.
struct GENERAL_PLANE {
  LANES column1, column2, column3, row3;
  double D33;

  explicit GENERAL_PLANE(const MATRIX<3, 3>& D)
      : column1{D(1, 1), D(2, 1)},
        column2{D(1, 2), D(2, 2)},
        column3{D(1, 3), D(2, 3)},
        row3{D(3, 1), D(3, 2)},
        D33(D(3, 3)) {}

  PLANE_RESULTANTS of(LANES e, double exy) const {
    return {e[0] * column1 + e[1] * column2 + exy * column3, dot(row3, e) + D33 * exy};
  }
};

// The isotropic section. `points` and `centre` are the parts of a split membrane.
struct ISOTROPIC_PLATE {
  static constexpr bool POINTS_WITHOUT_SHEAR = true;
  ISOTROPIC_PLANE membrane, points, centre, bending;
  double DS;

  explicit ISOTROPIC_PLATE(const ISOTROPIC_SECTION& ISO)
      : membrane{ISO.DM11, ISO.DM12, ISO.DM33},
        points{ISO.DM11, ISO.DM12, 0.0},
        centre{0.0, 0.0, ISO.DM33},
        bending{ISO.DB11, ISO.DB12, ISO.DB33},
        DS(ISO.DS1) {}

  LANES shear(LANES g) const { return DS * g; }
};

// The matrices of PLATEELEM. D_MEMBRANE_TOTAL is D_MEMBRANE_NORMAL where the shear is not split.
struct GENERAL_PLATE {
  static constexpr bool POINTS_WITHOUT_SHEAR = false;
  GENERAL_PLANE membrane, points, centre, bending;
  LANES shear1, shear2;

  explicit GENERAL_PLATE(const PLATEELEM_RECORD& EL)
      : membrane(EL.D_MEMBRANE_TOTAL),
        points(EL.D_MEMBRANE_NORMAL),
        centre(EL.D_MEMBRANE_SHEAR),
        bending(EL.D_BENDING),
        shear1{EL.D_SHEAR(1, 1), EL.D_SHEAR(2, 1)},
        shear2{EL.D_SHEAR(1, 2), EL.D_SHEAR(2, 2)} {}

  LANES shear(LANES g) const { return g[0] * shear1 + g[1] * shear2; }
};

// Free thermal strains of the mid surface, and the moments of the temperature difference (stresses.h).
struct PLATE_TEMPERATURE {
  LANES strain, moment;
};

inline PLATE_TEMPERATURE isotropic_temperature(const PLATEELEM_RECORD& EL, const ISOTROPIC_SECTION& ISO,
                                               const ELEM_LOADS& LOADS) {
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  return {both(tm), both(tb * (ISO.DB11 + ISO.DB12) / EL.THICKNESS)};
}

inline PLATE_TEMPERATURE general_temperature(const PLATEELEM_RECORD& EL) {
  const VECTOR<3> thermal = product(EL.D_BENDING, VECTOR<3>{{EL.THERMAL_B1, EL.THERMAL_B2, 0.0}});
  return {LANES{EL.THERMAL_M1, EL.THERMAL_M2}, LANES{thermal(1), thermal(2)} / both(EL.THICKNESS)};
}

template <class PLATE>
inline STATION_STRESSES stresses_at(const PLATE& D, const PLATE_TEMPERATURE& T, double per_h,
                                    const STATION_STRAINS& e) {
  const PLANE_RESULTANTS N = D.membrane.of(e.e - T.strain, e.exy);
  const PLANE_RESULTANTS M = D.bending.of(e.k, e.kxy);
  return {per_h * N.xy, M.xy - T.moment, D.shear(e.g), per_h * N.twist, M.twist};
}

// False where a value is infinite or NaN, or their sum overflows.
template <int COUNT>
inline bool finite(const STATION_STRAINS (&e)[COUNT], const STATION_STRESSES (&s)[COUNT], const FACE_FACTORS& F) {
  LANES sum = both(F.six_per_h2);
  for (int i = 0; i < COUNT; ++i) {
    const LANES strains = (e[i].e + e[i].k) + (e[i].g + LANES{e[i].exy, e[i].kxy});
    const LANES stresses = (s[i].s + s[i].M) + (s[i].Q + LANES{s[i].sxy, s[i].Mxy});
    sum += strains + stresses;
  }
  return std::isfinite(sum_of(sum));
}

#endif
