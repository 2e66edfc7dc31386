// closed_form.h: the closed spectral form of a section without its zeros.
//
// The form (section_decomposition.cpp) separates the section: the forces N1, N2, M1, M2 belong to the modes 1, 3, 5, 6,
// the shears N12, M12 to the modes 2 and 4, and each transverse shear is a mode. Four pairs hold a section,
//
//     forces    direct (N1, N2)    moment (M1, M2)    shear (N12, M12)    across (Q1, Q2)
//     modes     first  (1, 3)      second (5, 6)      shear (2, 4)        across (7, 8)
//
// and every sum here runs over the same terms in the same order as that of the full matrices, without the products by
// zero: the bits are the same as long as all values are finite.
#ifndef FINITES_CLOSED_FORM_H
#define FINITES_CLOSED_FORM_H

#include "common/lanes.h"
#include "finites/records.h"
#include "finites/views.hpp"

struct FORCE_PAIRS {
  LANES direct, moment, shear, across;
};

struct MODE_PAIRS {
  LANES first, second, shear, across;
};

// Rows i and k of column j.
inline LANES rows(const MATRIX<8, 8>& M, int i, int k, int j) { return LANES{M(i, j), M(k, j)}; }

// The spectral form of PLATEELEM: a matrix as the columns of its blocks, each a pair of rows.
struct CLOSED_FORM {
  LANES P_direct[4], P_moment[4];  // rows 1, 2 and 4, 5; columns 1, 2, 4, 5
  LANES P_shear[2], P_across;      // rows 3, 6; columns 3, 6
  LANES Q_direct[4], Q_moment[4];  // rows 1, 2 and 4, 5; columns 1, 3, 5, 6
  LANES Q_shear[2], Q_across;      // rows 3, 6; columns 2, 4
  LANES R_first[4], R_second[4];   // of Q^-1: rows 1, 3 and 5, 6; columns 1, 2, 4, 5
  LANES R_shear[2], R_across;      // rows 2, 4; columns 3, 6
  MODE_PAIRS eigenvalue;

  explicit CLOSED_FORM(const PLATEELEM_RECORD& EL) {
    constexpr int direct[4] = {1, 2, 4, 5};
    constexpr int mode[4] = {1, 3, 5, 6};
    for (int k = 0; k < 4; ++k) {
      P_direct[k] = rows(EL.P8, 1, 2, direct[k]);
      P_moment[k] = rows(EL.P8, 4, 5, direct[k]);
      Q_direct[k] = rows(EL.Q8, 1, 2, mode[k]);
      Q_moment[k] = rows(EL.Q8, 4, 5, mode[k]);
      R_first[k] = rows(EL.QINV8, 1, 3, direct[k]);
      R_second[k] = rows(EL.QINV8, 5, 6, direct[k]);
    }
    for (int k = 0; k < 2; ++k) {
      P_shear[k] = rows(EL.P8, 3, 6, 3 * (k + 1));
      Q_shear[k] = rows(EL.Q8, 3, 6, 2 * (k + 1));
      R_shear[k] = rows(EL.QINV8, 2, 4, 3 * (k + 1));
    }
    P_across = LANES{EL.P8(7, 7), EL.P8(8, 8)};
    Q_across = LANES{EL.Q8(7, 7), EL.Q8(8, 8)};
    R_across = LANES{EL.QINV8(7, 7), EL.QINV8(8, 8)};
    const MATRIX<8, 8>& L = EL.LAM8;
    eigenvalue = {LANES{L(1, 1), L(3, 3)}, LANES{L(5, 5), L(6, 6)}, LANES{L(2, 2), L(4, 4)}, LANES{L(7, 7), L(8, 8)}};
  }
};

// The sum of four columns, of two and of one, from 0 as every sum here.
inline LANES combined(const LANES (&columns)[4], LANES u, LANES v) {
  return 0.0 + columns[0] * both(u[0]) + columns[1] * both(u[1]) + columns[2] * both(v[0]) + columns[3] * both(v[1]);
}
inline LANES combined(const LANES (&columns)[2], LANES u) {
  return 0.0 + columns[0] * both(u[0]) + columns[1] * both(u[1]);
}

// Q^-1 s, Q y and P s.
inline MODE_PAIRS modes_of(const CLOSED_FORM& F, const FORCE_PAIRS& s) {
  return {combined(F.R_first, s.direct, s.moment), combined(F.R_second, s.direct, s.moment),
          combined(F.R_shear, s.shear), 0.0 + F.R_across * s.across};
}
inline FORCE_PAIRS forces_of(const CLOSED_FORM& F, const MODE_PAIRS& y) {
  return {combined(F.Q_direct, y.first, y.second), combined(F.Q_moment, y.first, y.second),
          combined(F.Q_shear, y.shear), 0.0 + F.Q_across * y.across};
}
inline FORCE_PAIRS metric_times(const CLOSED_FORM& F, const FORCE_PAIRS& s) {
  return {combined(F.P_direct, s.direct, s.moment), combined(F.P_moment, s.direct, s.moment),
          combined(F.P_shear, s.shear), 0.0 + F.P_across * s.across};
}

inline MODE_PAIRS product(const MODE_PAIRS& a, const MODE_PAIRS& b) {
  return {a.first * b.first, a.second * b.second, a.shear * b.shear, a.across * b.across};
}

// Q A Q^-1, A diagonal, by its columns: rows 1, 2 and 4, 5 of columns 1, 2, 4, 5; rows 3, 6 of columns 3, 6; 7 and 8.
struct SPECTRAL_PRODUCT {
  LANES direct[4], moment[4], shear[2], across;

  SPECTRAL_PRODUCT(const CLOSED_FORM& F, const MODE_PAIRS& A) {
    const double a[4] = {A.first[0], A.first[1], A.second[0], A.second[1]};
    LANES QA_direct[4];
    LANES QA_moment[4];
    for (int k = 0; k < 4; ++k) {
      QA_direct[k] = F.Q_direct[k] * both(a[k]);
      QA_moment[k] = F.Q_moment[k] * both(a[k]);
    }
    const LANES QA_shear[2] = {F.Q_shear[0] * both(A.shear[0]), F.Q_shear[1] * both(A.shear[1])};
    for (int k = 0; k < 4; ++k) {
      direct[k] = combined(QA_direct, F.R_first[k], F.R_second[k]);
      moment[k] = combined(QA_moment, F.R_first[k], F.R_second[k]);
    }
    for (int k = 0; k < 2; ++k) shear[k] = combined(QA_shear, F.R_shear[k]);
    across = F.Q_across * A.across * F.R_across;
  }
};

#endif
