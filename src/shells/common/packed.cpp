// packed.cpp: unpacking of symmetric matrices, and their rotation to global axes by blocks of three.
//
// AXES(a, i) is the component i of the local axis a: u_local = AXES u_global for each group of three degrees of
// freedom. The work u^T K u does not depend on the axes, so a block b(I, J) of two groups becomes AXES^T b AXES.
#include "shells/common/packed.h"

#include "common/finiteness.h"

void UNPACK_SYMMETRIC(int n, int /*count*/, const double* packed, double* M) {
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i <= j; ++i) {
      const double value = *packed++;
      M[j * n + i] = value;
      M[i * n + j] = value;
    }
  }
}

namespace {

// b := AXES^T b AXES
inline void rotate_block(const MATRIX<3, 3>& AXES, MATRIX<3, 3>& b) {
  MATRIX<3, 3> t;  // b AXES
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) t(i, j) = b(i, 1) * AXES(1, j) + b(i, 2) * AXES(2, j) + b(i, 3) * AXES(3, j);
  }
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) b(i, j) = AXES(1, i) * t(1, j) + AXES(2, i) * t(2, j) + AXES(3, i) * t(3, j);
  }
}

}  // namespace

void packed_to_global(const MATRIX<3, 3>& AXES, int groups, double* K) {
  MATRIX<3, 3> b;
  for (int J = 0; J < groups; ++J) {
    double* column[3];  // the three columns of the group, each from its first row
    for (int j = 0; j < 3; ++j) column[j] = K + SYM(1, 3 * J + j + 1) - 1;
    for (int I = 0; I < J; ++I) {
      for (int j = 0; j < 3; ++j) {
        for (int i = 0; i < 3; ++i) b(i + 1, j + 1) = column[j][3 * I + i];
      }
      rotate_block(AXES, b);
      for (int j = 0; j < 3; ++j) {
        for (int i = 0; i < 3; ++i) column[j][3 * I + i] = b(i + 1, j + 1);
      }
    }
    // On the diagonal only the upper triangle is stored.
    for (int j = 0; j < 3; ++j) {
      for (int i = 0; i <= j; ++i) b(i + 1, j + 1) = b(j + 1, i + 1) = column[j][3 * J + i];
    }
    rotate_block(AXES, b);
    for (int j = 0; j < 3; ++j) {
      for (int i = 0; i <= j; ++i) column[j][3 * J + i] = b(i + 1, j + 1);
    }
  }
}

void full_to_global(const MATRIX<3, 3>& AXES, int groups, double* K) {
  const int order = 3 * groups;
  MATRIX<3, 3> b;
  for (int J = 0; J < groups; ++J) {
    for (int I = 0; I < groups; ++I) {
      double* const corner = K + 3 * J * order + 3 * I;
      for (int j = 0; j < 3; ++j) {
        for (int i = 0; i < 3; ++i) b(i + 1, j + 1) = corner[j * order + i];
      }
      rotate_block(AXES, b);
      for (int j = 0; j < 3; ++j) {
        for (int i = 0; i < 3; ++i) corner[j * order + i] = b(i + 1, j + 1);
      }
    }
  }
}
