// elastic.h: the elastic matrix of a solid by its three numbers.
//
//     direct = c (1 - nu),  cross = c nu,  shear = c (1 - 2 nu) / 2,      c = factor E / ((1 + nu)(1 - 2 nu))
#ifndef FINITES_SOLID_ELASTIC_H
#define FINITES_SOLID_ELASTIC_H

#include "finites/views.hpp"

template <class REAL>
struct ELASTIC_TERMS_OF {
  REAL direct, cross, shear;
};
using ELASTIC_TERMS = ELASTIC_TERMS_OF<double>;

template <class REAL>
inline ELASTIC_TERMS_OF<REAL> elastic_terms(double factor, const REAL& E, const REAL& nu) {
  const REAL c = factor * E / ((1.0 + nu) * (1.0 - 2.0 * nu));
  return {c * (1.0 - nu), c * nu, c * (1.0 - 2.0 * nu) * 0.5};
}

// The stress of a strain; REAL: double or LANES.
template <class REAL>
VECTOR<6, REAL> stress_of(const ELASTIC_TERMS& D, const VECTOR<6, REAL>& e) {
  return {{D.direct * e(1) + D.cross * e(2) + D.cross * e(3), D.cross * e(1) + D.direct * e(2) + D.cross * e(3),
           D.cross * e(1) + D.cross * e(2) + D.direct * e(3), D.shear * e(4), D.shear * e(5), D.shear * e(6)}};
}

#endif
