// kinematics.cpp: Jacobian, strain and gradient matrices of the solid elements (Zienkiewicz, 1977).
//
//     J(i, j)  = sum_k  DN(i, k) XYZ(j, k)               i: natural direction, j: coordinate
//     g(:, k)  = J^-1 DN(:, k)                           derivatives of the shape functions by x, y, z
//     strains  exx = u,x  eyy = v,y  ezz = w,z  gxy = u,y + v,x  gxz = u,z + w,x  gyz = v,z + w,y
#include "solids/kinematics.h"

// Along the first row.
void DET3_DBL(const MATRIX<3, 3>& M, double& DET, std::int32_t& OK) {
  DET = M(1, 1) * (M(2, 2) * M(3, 3) - M(2, 3) * M(3, 2)) - M(1, 2) * (M(2, 1) * M(3, 3) - M(2, 3) * M(3, 1)) +
        M(1, 3) * (M(2, 1) * M(3, 2) - M(2, 2) * M(3, 1));
  if (singular(DET)) OK = 0;
}

// MINV = adj(M) / det M: entry (j, i) is the cofactor of M(i, j), whose sign the cyclic order of the other two rows and
// columns brings. A singular M leaves zeros.
void INV3_DBL(const MATRIX<3, 3>& M, MATRIX<3, 3>& MINV, std::int32_t& OK) {
  MINV = MATRIX<3, 3>{};
  double det = 0.0;
  DET3_DBL(M, det, OK);
  if (OK != 1) return;
  for (int j = 1; j <= 3; ++j) {
    const int j1 = j % 3 + 1;
    const int j2 = j1 % 3 + 1;
    for (int i = 1; i <= 3; ++i) {
      const int i1 = i % 3 + 1;
      const int i2 = i1 % 3 + 1;
      MINV(j, i) = (M(i1, j1) * M(i2, j2) - M(i1, j2) * M(i2, j1)) / det;
    }
  }
}

namespace {

MATRIX<3, 3> jacobian_of(const SOLID_DERIVATIVES& DN, std::int32_t NN, const SOLID_VECTORS& XYZ) {
  MATRIX<3, 3> J{};
  for (std::int32_t k = 1; k <= NN; ++k) {
    for (int j = 1; j <= 3; ++j) {
      for (int i = 1; i <= 3; ++i) J(i, j) += DN(i, k) * XYZ(j, k);
    }
  }
  return J;
}

}  // namespace

// DETJ: volume of the element by volume of the natural coordinates at the point. OK is 0 where it vanishes.
void SOLID_JACOBIAN(double XI, double ETA, double ZETA, std::int32_t KIND, std::int32_t NN, const SOLID_VECTORS& XYZ,
                    MATRIX<3, 3>& J, double& DETJ, std::int32_t& OK) {
  OK = 1;
  SOLID_DERIVATIVES DN{};
  SOLID_SHAPE_DERIV(XI, ETA, ZETA, KIND, NN, DN);
  J = jacobian_of(DN, NN, XYZ);
  DET3_DBL(J, DETJ, OK);
}

void solid_gradients(std::int32_t KIND, double XI, double ETA, double ZETA, std::int32_t NN, const SOLID_VECTORS& XYZ,
                     SOLID_GRADIENTS& g, double& DETJ, std::int32_t& OK) {
  OK = 1;
  SOLID_DERIVATIVES DN;
  SOLID_SHAPE_DERIV(XI, ETA, ZETA, KIND, NN, DN);
  const MATRIX<3, 3> J = jacobian_of(DN, NN, XYZ);
  MATRIX<3, 3> JINV;
  DET3_DBL(J, DETJ, OK);
  INV3_DBL(J, JINV, OK);
  if (OK != 1) return;
  for (std::int32_t k = 1; k <= NN; ++k) {
    for (int i = 1; i <= 3; ++i) g(i, k) = JINV(i, 1) * DN(1, k) + JINV(i, 2) * DN(2, k) + JINV(i, 3) * DN(3, k);
  }
}

// The strains of the head, of displacements u, v, w node by node: rows xx, yy, zz, xy, xz, yz. Shear strains are the
// whole angles (engineering strains).
void SOLID_B_MATRIX(std::int32_t KIND, double XI, double ETA, double ZETA, std::int32_t NN, const SOLID_VECTORS& XYZ,
                    MATRIX<6, SOLID_DOFS>& B, std::int32_t& OK) {
  SOLID_GRADIENTS g;
  double detj = 0.0;
  solid_gradients(KIND, XI, ETA, ZETA, NN, XYZ, g, detj, OK);
  if (OK != 1) return;
  for (std::int32_t k = 1; k <= NN; ++k) {
    const int u = 3 * k - 2;
    const int v = 3 * k - 1;
    const int w = 3 * k;
    const double Nx = g(1, k);
    const double Ny = g(2, k);
    const double Nz = g(3, k);
    // clang-format off
    B(1, u) = Nx;   B(1, v) = 0.0;  B(1, w) = 0.0;
    B(2, u) = 0.0;  B(2, v) = Ny;   B(2, w) = 0.0;
    B(3, u) = 0.0;  B(3, v) = 0.0;  B(3, w) = Nz;
    B(4, u) = Ny;   B(4, v) = Nx;   B(4, w) = 0.0;
    B(5, u) = Nz;   B(5, v) = 0.0;  B(5, w) = Nx;
    B(6, u) = 0.0;  B(6, v) = Nz;   B(6, w) = Ny;
    // clang-format on
  }
}

// The nine derivatives u,x u,y u,z v,x ... w,z of the displacements: three blocks of three rows, one a component, by
// which the geometric stiffness is the sum of G^T S G with the stress tensor three times on the diagonal of S.
void SOLID_G_MATRIX(std::int32_t KIND, double XI, double ETA, double ZETA, std::int32_t NN, const SOLID_VECTORS& XYZ,
                    MATRIX<9, SOLID_DOFS>& G, std::int32_t& OK) {
  SOLID_GRADIENTS g;
  double detj = 0.0;
  solid_gradients(KIND, XI, ETA, ZETA, NN, XYZ, g, detj, OK);
  if (OK != 1) return;
  for (std::int32_t k = 1; k <= NN; ++k) {
    for (int component = 1; component <= 3; ++component) {
      const int column = 3 * (k - 1) + component;
      for (int row = 1; row <= 9; ++row) G(row, column) = 0.0;
      for (int i = 1; i <= 3; ++i) G(3 * (component - 1) + i, column) = g(i, k);
    }
  }
}

// B u without the matrix.
VECTOR<6> solid_strain(const SOLID_GRADIENTS& g, std::int32_t NN, const SOLID_VECTORS& u) {
  VECTOR<6> e{};
  for (std::int32_t k = 1; k <= NN; ++k) {
    e(1) += g(1, k) * u(1, k);
    e(2) += g(2, k) * u(2, k);
    e(3) += g(3, k) * u(3, k);
    e(4) += g(2, k) * u(1, k) + g(1, k) * u(2, k);
    e(5) += g(3, k) * u(1, k) + g(1, k) * u(3, k);
    e(6) += g(3, k) * u(2, k) + g(2, k) * u(3, k);
  }
  return e;
}
