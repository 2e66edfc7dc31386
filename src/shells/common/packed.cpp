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

// A block of a full matrix with ORDER rows above the diagonal, and its mirror below it.
template <int ORDER>
inline void place_block(const MATRIX<3, 3>& b, int row, int column, double* matrix) {
  for (int j = 0; j < 3; ++j) {
    for (int i = 0; i < 3; ++i) matrix[(column + j) * ORDER + row + i] = b(i + 1, j + 1);
  }
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) matrix[(row + i) * ORDER + column + j] = b(i + 1, j + 1);
  }
}

// A block on the diagonal: its upper triangle counts, the lower one is its mirror.
template <int ORDER>
inline void place_diagonal_block(const MATRIX<3, 3>& b, int at, double* matrix) {
  for (int j = 0; j < 3; ++j) {
    for (int i = 0; i < 3; ++i) matrix[(at + j) * ORDER + at + i] = i <= j ? b(i + 1, j + 1) : b(j + 1, i + 1);
  }
}

// t := c1 u + c2 v, started from 0 as the sums of a product are.
inline VECTOR<3> combined(double c1, const VECTOR<3>& u, double c2, const VECTOR<3>& v) {
  return {{0.0 + c1 * u(1) + c2 * v(1), 0.0 + c1 * u(2) + c2 * v(2), 0.0 + c1 * u(3) + c2 * v(3)}};
}

// Rows of AXES, and the three kinds of blocks that a flat element has.
struct FLAT_ROTATION {
  VECTOR<3> a1, a2, a3;

  explicit FLAT_ROTATION(const MATRIX<3, 3>& AXES)
      : a1{{AXES(1, 1), AXES(1, 2), AXES(1, 3)}},
        a2{{AXES(2, 1), AXES(2, 2), AXES(2, 3)}},
        a3{{AXES(3, 1), AXES(3, 2), AXES(3, 3)}} {}

  MATRIX<3, 3> alike(double b11, double b21, double b12, double b22, double b33) const {
    const VECTOR<3> t1 = combined(b11, a1, b12, a2);
    const VECTOR<3> t2 = combined(b21, a1, b22, a2);
    MATRIX<3, 3> b;
    for (int j = 1; j <= 3; ++j) {
      const double t3 = b33 * a3(j);
      for (int i = 1; i <= 3; ++i) b(i, j) = a1(i) * t1(j) + a2(i) * t2(j) + a3(i) * t3;
    }
    return b;
  }

  MATRIX<3, 3> deflection_by_rotations(double b31, double b32) const {
    const VECTOR<3> t = combined(b31, a1, b32, a2);
    MATRIX<3, 3> b;
    for (int j = 1; j <= 3; ++j) {
      for (int i = 1; i <= 3; ++i) b(i, j) = 0.0 + a3(i) * t(j);
    }
    return b;
  }

  MATRIX<3, 3> rotations_by_deflection(double b13, double b23) const {
    MATRIX<3, 3> b;
    for (int j = 1; j <= 3; ++j) {
      const double t1 = b13 * a3(j);
      const double t2 = b23 * a3(j);
      for (int i = 1; i <= 3; ++i) b(i, j) = 0.0 + a1(i) * t1 + a2(i) * t2;
    }
    return b;
  }
};

// The six columns of a node in packed storage: entry (i, j) of its block with a node above it is column[j - 1][i - 1].
struct NODE_COLUMNS {
  const double* column[6];

  NODE_COLUMNS(const double* K, int node, int above) {
    for (int j = 0; j < 6; ++j) column[j] = K + SYM(1, 6 * node + j + 1) - 1 + 6 * above;
  }
  double operator()(int i, int j) const { return column[j - 1][i - 1]; }
};

template <int ORDER>
void place_diagonal_node(const FLAT_ROTATION& R, const NODE_COLUMNS& b, int at, double* matrix) {
  place_diagonal_block<ORDER>(R.alike(b(1, 1), b(1, 2), b(1, 2), b(2, 2), b(3, 3)), at, matrix);
  place_block<ORDER>(R.deflection_by_rotations(b(3, 4), b(3, 5)), at, at + 3, matrix);
  place_diagonal_block<ORDER>(R.alike(b(4, 4), b(4, 5), b(4, 5), b(5, 5), b(6, 6)), at + 3, matrix);
}

template <int ORDER>
void place_node_pair(const FLAT_ROTATION& R, const NODE_COLUMNS& b, int row, int column, double* matrix) {
  place_block<ORDER>(R.alike(b(1, 1), b(2, 1), b(1, 2), b(2, 2), b(3, 3)), row, column, matrix);
  place_block<ORDER>(R.rotations_by_deflection(b(4, 3), b(5, 3)), row + 3, column, matrix);
  place_block<ORDER>(R.deflection_by_rotations(b(3, 4), b(3, 5)), row, column + 3, matrix);
  place_block<ORDER>(R.alike(b(4, 4), b(5, 4), b(4, 5), b(5, 5), b(6, 6)), row + 3, column + 3, matrix);
}

}  // namespace

// Infinities and NaN go through the full products, which carry them into all that they touch.
template <int NODES>
void flat_to_global(const MATRIX<3, 3>& AXES, double* K, double* matrix) {
  constexpr int ORDER = 6 * NODES;
  if (!all_finite(K, SYM(ORDER, ORDER)) || !all_finite(AXES.data(), 9)) {
    packed_to_global(AXES, 2 * NODES, K);
    UNPACK_SYMMETRIC(ORDER, SYM(ORDER, ORDER), K, matrix);
    return;
  }
  const FLAT_ROTATION R(AXES);
  for (int J = 0; J < NODES; ++J) {
    for (int I = 0; I < J; ++I) place_node_pair<ORDER>(R, NODE_COLUMNS(K, J, I), 6 * I, 6 * J, matrix);
    place_diagonal_node<ORDER>(R, NODE_COLUMNS(K, J, J), 6 * J, matrix);
  }
}

template void flat_to_global<3>(const MATRIX<3, 3>& AXES, double* K, double* matrix);
template void flat_to_global<4>(const MATRIX<3, 3>& AXES, double* K, double* matrix);

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
