// tensors.cpp: vectors and symmetric tensors of the second order between global and local axes.
//
// The rows of R, as those of AX, are the local axes. A tensor may return into its own storage.
#include "finites/services.h"
#include "finites/views.hpp"

namespace {

// P := A B
MATRIX<3, 3> product(const MATRIX<3, 3>& A, const MATRIX<3, 3>& B) {
  MATRIX<3, 3> P;
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) P(i, j) = A(i, 1) * B(1, j) + A(i, 2) * B(2, j) + A(i, 3) * B(3, j);
  }
  return P;
}

MATRIX<3, 3> copied(const double* base) {
  MATRIX<3, 3> M;
  for (int i = 0; i < 9; ++i) M.V[i] = base[i];
  return M;
}

MATRIX<3, 3> transposed(const MATRIX<3, 3>& M) {
  MATRIX<3, 3> T;
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) T(i, j) = M(j, i);
  }
  return T;
}

void copy_out(const MATRIX<3, 3>& M, double* out) {
  for (int i = 0; i < 9; ++i) out[i] = M.V[i];
}

}  // namespace

void TRANS_VEC_G2L1_DBL(const double* x, const double* y, const double* z, const double* AX, double* xl, double* yl,
                        double* zl) {
  const MATRIX_VIEW<3, const double> R(AX);
  const double gx = *x, gy = *y, gz = *z;  // the results may lie where the arguments do
  *xl = R(1, 1) * gx + R(1, 2) * gy + R(1, 3) * gz;
  *yl = R(2, 1) * gx + R(2, 2) * gy + R(2, 3) * gz;
  *zl = R(3, 1) * gx + R(3, 2) * gy + R(3, 3) * gz;
}

// out := (R T) R^T
void TENSEUR_G2L_DBL(const double* T, const double* R, double* out) {
  const MATRIX<3, 3> axes = copied(R);
  copy_out(product(product(axes, copied(T)), transposed(axes)), out);
}

// out := (R^T T) R
void TENSEUR_L2G_DBL(const double* T, const double* R, double* out) {
  const MATRIX<3, 3> axes = copied(R);
  copy_out(product(product(transposed(axes), copied(T)), axes), out);
}
