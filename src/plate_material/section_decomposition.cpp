// section_decomposition.cpp: closed spectral form of an isotropic section with the yield metric, and the first state.
//
//     D P = Q LAM Q^-1,      N0 = sy h,  M0 = sy h^2 / 4,  s = +1 or -1, the sign of the mixed term
//
//     P = [ A / N0^2                  s A / (2 sqrt(3) N0 M0) ]      A = [1 -1/2 0; -1/2 1 0; 0 0 3]
//         [ s A / (2 sqrt(3) N0 M0)   A / M0^2                ]
//
// and 3 / N0^2 for the transverse shears. sig^T P sig is the quadratic form of the yield function (Ilyushin, 1948),
// with s times the mixed term in place of its absolute value. D and A have the eigenvectors (1, -1), (0, 0, 1) and
// (1, 1), so that D P separates into 2 by 2 blocks of a membrane and a bending component, with the eigenvalues
//
//     (1, -1) and shear   (7 +- sqrt 5) E / (4 sy^2 h (1 + nu))
//     (1, 1)              (7 +- sqrt 5) E / (12 sy^2 h (1 - nu))
//     transverse shear    3 SHEAR_FACTOR E / (2 sy^2 h (1 + nu))
//
// The constants are single-precision values of irrational numbers, widened to double: their digits are part of the
// results (docs/decisions.md). Q LAM Q^-1 equals D P to about seven digits.
#include "plate_material/section_decomposition.h"

#include <cmath>

#include "common/constants.h"
#include "common/lanes.h"
#include "finites/records.h"
#include "finites/services.h"
#include "plate_material/closed_form.h"

namespace {

constexpr double TWO_ROOT_3 = 3.464101552963257;
constexpr double FOUR_ROOT_3 = 6.928203105926514;
constexpr double LARGE_ROOT = 9.236067771911621;  // 7 + sqrt 5
constexpr double SMALL_ROOT = 4.763932228088379;  // 7 - sqrt 5
constexpr double Q_A = 2.140932559967041;         // sqrt 15 - sqrt 3, times 1/h
constexpr double Q_B = 5.605034351348877;         // sqrt 15 + sqrt 3, times 1/h
constexpr double QI_G = 3.872983455657959;        // sqrt 15; times h/60, h/30
constexpr double QI_U = 0.36180341243743896;      // (1 + 1 / sqrt 5) / 4
constexpr double QI_V = 0.13819660246372223;      // (1 - 1 / sqrt 5) / 4
constexpr double QI_Y = 0.7236068248748779;       // (1 + 1 / sqrt 5) / 2
constexpr double QI_Z = 0.27639320492744446;      // (1 - 1 / sqrt 5) / 2

// The check compares D P with Q LAM Q^-1, entry by entry: |difference| / |entry + CHECK_GUARD| must stay below
// CHECK_LIMIT, a tenth. CHECK_GUARD keeps the quotient finite where an entry is zero; it is absolute, so that entries
// far below it are not checked. Both decide which sections are reported: for example those with stiffness modifiers
// that differ from 1 by about a tenth or more, which LAM does not have.
constexpr double CHECK_GUARD = 1e-07;
constexpr double CHECK_LIMIT = 0.1;
constexpr const char* CHECK_TEXT = "Décomposition spectrale, KOK_DS";

// D8 = diag(D_MEMBRANE_NORMAL, D_BENDING, D_SHEAR), without the coupling of the two shears.
void set_section_matrix(PLATEELEM_RECORD& EL) {
  PLATEELEM_RECORD& P = EL;
  P.D8 = MATRIX<8, 8>{};
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) {
      P.D8(i, j) = P.D_MEMBRANE_NORMAL(i, j);
      P.D8(3 + i, 3 + j) = P.D_BENDING(i, j);
    }
  }
  P.D8(7, 7) = P.D_SHEAR(1, 1);
  P.D8(8, 8) = P.D_SHEAR(2, 2);
}

void set_metric(PLATEELEM_RECORD& EL, double s, double h, double sy) {
  MATRIX<8, 8>& P = EL.P8;
  const double N0 = sy * h;
  const double M0 = sy * h * h * 0.25;
  P = MATRIX<8, 8>{};
  P(1, 1) = P(2, 2) = 1.0 / (N0 * N0);
  P(1, 2) = P(2, 1) = -1.0 / (2.0 * (N0 * N0));
  P(3, 3) = P(7, 7) = P(8, 8) = 3.0 / (N0 * N0);
  P(4, 4) = P(5, 5) = 1.0 / (M0 * M0);
  P(4, 5) = P(5, 4) = -1.0 / (2.0 * (M0 * M0));
  P(6, 6) = 3.0 / (M0 * M0);
  P(1, 4) = P(4, 1) = P(2, 5) = P(5, 2) = s / (TWO_ROOT_3 * M0 * N0);
  P(1, 5) = P(5, 1) = P(2, 4) = P(4, 2) = -s / (FOUR_ROOT_3 * M0 * N0);
  P(3, 6) = P(6, 3) = 3.0 * s / (TWO_ROOT_3 * M0 * N0);
}

void set_eigenvalues(PLATEELEM_RECORD& EL, double h, double sy) {
  MATRIX<8, 8>& L = EL.LAM8;
  const double E = EL.E1;
  const double nu = EL.NU1;
  const double sy2 = sy * sy;
  L = MATRIX<8, 8>{};
  L(1, 1) = L(2, 2) = LARGE_ROOT * E / (sy2 * 4.0 * h * (1.0 + nu));
  L(3, 3) = L(4, 4) = SMALL_ROOT * E / (sy2 * 4.0 * h * (1.0 + nu));
  L(5, 5) = LARGE_ROOT * E / (sy2 * 12.0 * h * (1.0 - nu));
  L(6, 6) = SMALL_ROOT * E / (sy2 * 12.0 * h * (1.0 - nu));
  L(7, 7) = L(8, 8) = 3.0 * SHEAR_FACTOR * E / (sy2 * 2.0 * h * (1.0 + nu));
}

void set_eigenvectors(PLATEELEM_RECORD& EL, double s, double h) {
  MATRIX<8, 8>& Q = EL.Q8;
  const double A = Q_A / h;
  const double B = Q_B / h;
  Q = MATRIX<8, 8>{};
  // clang-format off
  Q(1, 1) = -s * A;  Q(1, 3) = s * B;   Q(1, 5) = s * A;  Q(1, 6) = -s * B;
  Q(2, 1) = s * A;   Q(2, 3) = -s * B;  Q(2, 5) = s * A;  Q(2, 6) = -s * B;
  Q(3, 2) = s * A;   Q(3, 4) = -s * B;
  Q(4, 1) = -1.0;    Q(4, 3) = -1.0;    Q(4, 5) = 1.0;    Q(4, 6) = 1.0;
  Q(5, 1) = 1.0;     Q(5, 3) = 1.0;     Q(5, 5) = 1.0;    Q(5, 6) = 1.0;
  Q(6, 2) = 1.0;     Q(6, 4) = 1.0;
  // clang-format on
  Q(7, 7) = Q(8, 8) = 1.0;
}

void set_inverse(PLATEELEM_RECORD& EL, double s, double h) {
  MATRIX<8, 8>& QI = EL.QINV8;
  const double g = QI_G * h / 60.0;
  const double g2 = QI_G * h / 30.0;
  QI = MATRIX<8, 8>{};
  // clang-format off
  QI(1, 1) = -s * g;   QI(1, 2) = s * g;    QI(1, 4) = -QI_U;  QI(1, 5) = QI_U;
  QI(2, 3) = s * g2;   QI(2, 6) = QI_Y;
  QI(3, 1) = s * g;    QI(3, 2) = -s * g;   QI(3, 4) = -QI_V;  QI(3, 5) = QI_V;
  QI(4, 3) = -s * g2;  QI(4, 6) = QI_Z;
  QI(5, 1) = s * g;    QI(5, 2) = s * g;    QI(5, 4) = QI_U;   QI(5, 5) = QI_U;
  QI(6, 1) = -s * g;   QI(6, 2) = -s * g;   QI(6, 4) = QI_V;   QI(6, 5) = QI_V;
  // clang-format on
  QI(7, 7) = QI(8, 8) = 1.0;
}

void set_spectral_data(PLATEELEM_RECORD& EL, double s, double h, double sy) {
  set_metric(EL, s, h, sy);
  set_eigenvalues(EL, h, sy);
  set_eigenvectors(EL, s, h);
  set_inverse(EL, s, h);
}

}  // namespace

void MATMUL3(std::int32_t n, const double* A, const double* B, const double* C, double* out) {
  MATRIX<8, 8> AB;
  MATMUL_M1MN_M2MN_DBL(AB.data(), A, &n, &n, B, &n, &n);
  MATMUL_M1MN_M2MN_DBL(out, AB.data(), &n, &n, C, &n, &n);
}

void MATMUL4(std::int32_t n, const double* A, const double* B, const double* C, const double* D, double* out) {
  MATRIX<8, 8> ABC;
  MATMUL3(n, A, B, C, ABC.data());
  MATMUL_M1MN_M2MN_DBL(out, ABC.data(), &n, &n, D, &n, &n);
}

void SPECTRAL_CHECK(const MATRIX<8, 8>& D, const MATRIX<8, 8>& P, const MATRIX<8, 8>& Q, const MATRIX<8, 8>& L,
                    const MATRIX<8, 8>& QI, std::int32_t& ok) {
  constexpr std::int32_t n = 8;
  MATRIX<8, 8> M;
  MATRIX<8, 8> R;
  MATMUL_M1_M2_DBL(M.data(), D.data(), P.data(), &n);
  MATMUL3(n, Q.data(), L.data(), QI.data(), R.data());
  ok = 1;
  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i <= n; ++i) {
      const double e = std::fabs(M(i, j) - R(i, j)) / std::fabs(M(i, j) + CHECK_GUARD);
      if (e >= CHECK_LIMIT) {
        ok = 0;
        return;
      }
    }
  }
}

namespace {

// Whether two entries pass the check by a factor of two, so that rounding does not matter. False for NaN.
bool clearly_close(LANES m, LANES r) {
  const LANES difference = m - r;
  const LANES limit = 0.5 * CHECK_LIMIT * (m + CHECK_GUARD);
  return std::fabs(difference[0]) <= std::fabs(limit[0]) && std::fabs(difference[1]) <= std::fabs(limit[1]);
}

// SPECTRAL_CHECK of nearly every section: the entries within the blocks of the closed form (closed_form.h), and those
// of D P that a coupling of shears and direct components gives, without a division. Where the blocks hold an infinite
// or NaN value, each entry is passed by the full check too, whose products by zero are NaN, or not found close here.
bool clearly_fits(const PLATEELEM_RECORD& EL) {
  const CLOSED_FORM F(EL);
  const SPECTRAL_PRODUCT R(F, F.eigenvalue);
  const MATRIX<8, 8>& D = EL.D8;
  const LANES N[3] = {rows(D, 1, 2, 1), rows(D, 1, 2, 2), rows(D, 1, 2, 3)};
  const LANES M[3] = {rows(D, 4, 5, 4), rows(D, 4, 5, 5), rows(D, 4, 5, 6)};
  const LANES S[3] = {LANES{D(3, 1), D(6, 4)}, LANES{D(3, 2), D(6, 5)}, LANES{D(3, 3), D(6, 6)}};
  bool fits = true;
  for (int k = 0; k < 4; ++k) {
    const LANES p = F.P_direct[k];
    const LANES q = F.P_moment[k];
    const LANES first = LANES{p[0], q[0]};
    const LANES second = LANES{p[1], q[1]};
    fits &= clearly_close(N[0] * both(p[0]) + N[1] * both(p[1]), R.direct[k]);
    fits &= clearly_close(M[0] * both(q[0]) + M[1] * both(q[1]), R.moment[k]);
    fits &= clearly_close(S[0] * first + S[1] * second, both(0.0));
  }
  for (int k = 0; k < 2; ++k) {
    const LANES p = F.P_shear[k];
    fits &= clearly_close(N[2] * both(p[0]), both(0.0));
    fits &= clearly_close(M[2] * both(p[1]), both(0.0));
    fits &= clearly_close(S[2] * p, R.shear[k]);
  }
  return fits & clearly_close(LANES{D(7, 7), D(8, 8)} * F.P_across, R.across);
}

}  // namespace

void SECTION_SPECTRAL(PLATEELEM_RECORD& EL, const FAILURES& to_caller) {
  const PLATEELEM_RECORD& P = EL;
  set_section_matrix(EL);
  set_spectral_data(EL, 1.0, P.THICKNESS, P.YIELD_STRESS);
  if (clearly_fits(EL)) return;
  std::int32_t ok = 0;
  SPECTRAL_CHECK(P.D8, P.P8, P.Q8, P.LAM8, P.QINV8, ok);
  if (ok == 0) to_caller.remarked(CHECK_TEXT);
}

// Not checked: SECTION_SPECTRAL has checked the section, for the positive branch.
void SECTION_SPECTRAL_SIGN(PLATEELEM_RECORD& EL, double ref, double h, double sy) {
  set_spectral_data(EL, section_branch(ref), h, sy);
}
