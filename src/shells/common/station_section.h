// station_section.h: the isotropic section of an element for the records of its stations.
#ifndef FINITES_STATION_SECTION_H
#define FINITES_STATION_SECTION_H

#include "common/pair.h"
#include "finites/records.h"
#include "plate_results/station_record.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"

// The moment of a temperature difference is tb (DB11 + DB12) / h in both directions (stresses.h).
inline STATION_SECTION station_section(const PLATEELEM_RECORD& EL, const ISOTROPIC_SECTION& ISO,
                                       const ELEM_LOADS& LOADS) {
  const double h = EL.THICKNESS;
  const double tm = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  const double tb = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  return {ISO.DM11, ISO.DM12, ISO.DM33, ISO.DB11,      ISO.DB12, ISO.DB33,
          ISO.DS1,  h,        1.0 / h,  6.0 / (h * h), tm,       tb * (ISO.DB11 + ISO.DB12) / h};
}

// x - x is 0, or NaN where x is infinite or NaN.
inline bool finite(const STATION_SECTION& S) {
  const PAIR moduli = PAIR{S.DM11, S.DB11} + PAIR{S.DM33, S.DB33} + PAIR{S.DS, S.h} + PAIR{S.DM12, S.DB12};
  const PAIR factors = PAIR{S.per_h, S.six_per_h2} + PAIR{S.tm, S.moment};
  return total((moduli - moduli) + (factors - factors)) == 0.0;
}

template <int COUNT>
inline bool finite(const STATION_STRAINS (&at)[COUNT]) {
  PAIR difference = both(0.0);
  for (const STATION_STRAINS& s : at) {
    const PAIR all = (s.e + s.k) + (s.g + PAIR{s.exy, s.kxy});
    difference += all - all;
  }
  return total(difference) == 0.0;
}

#endif
