// layered_matrices.cpp: yield metric, elastic matrix, their spectral form, and the tangents.
//
//     P  = [2/3 -1/3 0; -1/3 2/3 0; 0 0 2],  2 for the transverse shears      sigma^T P sigma = (2/3) (von Mises)^2
//     Ce = E / (1 - nu^2) [1 nu 0; nu 1 0; 0 0 (1 - nu)/2],  (5/6) G for the transverse shears
//
// Both have the eigenvectors (1, 1), (1, -1) and the shears, the rows of Q:
//
//     P  = Q^T Lp Q,    Lp = (1/3, 1, 2, 2, 2)
//     Ce = Q^T Lc Q,    Lc = (E / (1 - nu), E / (1 + nu), G, 5/6 G, 5/6 G)
//
#include "plate_material/layered_matrices.h"

#include "common/small_products.h"
#include "finites/records.h"
#include "plate_material/layered_limits.h"
#include "plate_material/plastic_material.h"
#include "plate_material/through_thickness.h"

MATRIX5 yield_metric(int theory) {
  MATRIX5 P{};
  P(1, 1) = P(2, 2) = TWO_THIRDS_SINGLE;
  P(1, 2) = P(2, 1) = -ONE_THIRD_SINGLE;
  P(3, 3) = 2.0;
  if (theory == THICK_THEORY) P(4, 4) = P(5, 5) = 2.0;
  return P;
}

MATRIX5 elastic_matrix(const PLATEELEM_RECORD& EL, int theory) {
  const double E = EL.E1;
  const double nu = EL.NU1;
  MATRIX5 C{};
  C(1, 1) = C(2, 2) = E / (1.0 - nu * nu);
  C(1, 2) = C(2, 1) = nu * E / (1.0 - nu * nu);
  C(3, 3) = 0.5 * E / (1.0 + nu);
  if (theory == THICK_THEORY) C(4, 4) = C(5, 5) = FIVE_TWELFTHS_SINGLE * E / (1.0 + nu);
  return C;
}

MATRIX5 metric_eigenvalues(int theory) {
  MATRIX5 L{};
  L(1, 1) = ONE_THIRD_SINGLE;
  L(2, 2) = 1.0;
  L(3, 3) = 2.0;
  if (theory == THICK_THEORY) L(4, 4) = L(5, 5) = 2.0;
  return L;
}

MATRIX5 elastic_eigenvalues(const PLATEELEM_RECORD& EL, int theory) {
  const double E = EL.E1;
  const double nu = EL.NU1;
  MATRIX5 L{};
  L(1, 1) = E / (1.0 - nu);
  L(2, 2) = E / (1.0 + nu);
  L(3, 3) = 0.5 * E / (1.0 + nu);
  if (theory == THICK_THEORY) L(4, 4) = L(5, 5) = FIVE_TWELFTHS_SINGLE * E / (1.0 + nu);
  return L;
}

MATRIX5 eigenvectors(int theory) {
  MATRIX5 Q{};
  Q(1, 1) = Q(1, 2) = Q(2, 2) = ROOT_1_2_SINGLE;
  Q(2, 1) = -ROOT_1_2_SINGLE;
  Q(3, 3) = 1.0;
  if (theory == THICK_THEORY) Q(4, 4) = Q(5, 5) = 1.0;
  return Q;
}

//     C = Ce - n n^T / (alpha + (2/3) beta H),    n = Ce P sigma,  alpha = sigma^T P n,  beta = sigma^T P sigma
//
// the elastoplastic tangent of the rate equations, H being the plastic modulus.
MATRIX5 continuum_tangent(const PLATEELEM_RECORD& EL, const VECTOR<5>& sigma, const MATRIX5& P, int theory) {
  const MATRIX5 Ce = elastic_matrix(EL, theory);
  const VECTOR<5> n = times(product(Ce, P), sigma);
  const double alpha = dot(times(P, sigma), n);
  const double beta = metric_norm(P, sigma);
  const double divisor = alpha + TWO_THIRDS_SINGLE * beta * plastic_modulus(EL);
  MATRIX5 C;
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= 5; ++i) C(i, j) = Ce(i, j) - n(i) * n(j) / divisor;
  }
  return C;
}

//     C = X - n n^T / (a + 2 H b / (3 - 2 H dlam)),    X = Q^T D Lc Q,  D = 1 / (1 + dlam Lp Lc)
//     n = X P sigma,  a = sigma^T P n,  b = sigma^T P sigma
//
// the consistent tangent of the return mapping (Simo and Taylor, 1986): X = (Ce^-1 + dlam P)^-1.
void PLATE_TANGENT_ALGO(const PLATEELEM_RECORD& EL, double dlam, const VECTOR<5>& sigma, const MATRIX5& P,
                        const MATRIX5& Lp, const MATRIX5& Lc, const MATRIX5& Q, MATRIX5& C) {
  MATRIX5 scaled_Q;  // D Lc Q
  MATRIX5 QT;
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= 5; ++i) {
      const double D = 1.0 / (dlam * Lp(i, i) * Lc(i, i) + 1.0);
      scaled_Q(i, j) = D * Lc(i, i) * Q(i, j);
      QT(j, i) = Q(i, j);
    }
  }
  const MATRIX5 X = product(QT, scaled_Q);
  const VECTOR<5> v = times(P, sigma);
  const VECTOR<5> n = times(X, v);
  const double H = plastic_modulus(EL);
  const double a = dot(v, n);
  const double b = dot(sigma, v);
  const double divisor = a + 2.0 * H * b / (3.0 - 2.0 * H * dlam);
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= 5; ++i) C(i, j) = X(i, j) - n(i) * n(j) / divisor;
  }
}
