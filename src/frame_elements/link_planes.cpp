// link_planes.cpp: the matrices of six stiffnesses between two nodes, or between a node and the ground.
//
//     link without length, spring   K = [k -k; -k k],  k = diag(k1, ..., k6)
//
// A link with length deforms at its mid-length, a = L / 2 from the first end and b = L - a from the second. The
// relative displacements there, besides the differences of u and of the three rotations, are
//
//     v: (v2 - b theta z2) - (v1 + a theta z1),      w: (w2 + b theta y2) - (w1 - a theta y1)
//
// and K is the sum over the six of k g g^T, g being the row of the relative displacement.
#include "frame_elements/link_planes.h"

#include "common/clear.h"
#include "frame_elements/plane_pattern.h"

// K11 = K22 = diag(k), K12 = K21 = -K11.
void set_link_blocks(const VECTOR<6>& k, PLANE_MATRIX& K) {
  clear(K.V, PLANE_MATRIX::ENTRIES);
  for (int d = 1; d <= 6; ++d) {
    K(d, d) = K(d + 6, d + 6) = k(d);
    K(d + 6, d) = -k(d);
  }
}

// The deformable point at mid-length, a from the first end and b from the second.
void set_link_mid_length(const VECTOR<6>& k, double L, PLANE_MATRIX& K) {
  const double a = L * 0.5;
  const double b = L - a;
  const double ky = k(2);
  const double kz = k(3);
  const double kyy = k(5);
  const double kzz = k(6);
  // clang-format off
  K(1, 1) = K(7, 7) = k(1);        K(7, 1) = -k(1);
  K(4, 4) = K(10, 10) = k(4);      K(10, 4) = -k(4);
  K(2, 2) = K(8, 8) = ky;          K(8, 2) = -ky;
  K(3, 3) = K(9, 9) = kz;          K(9, 3) = -kz;
  K(6, 2) = ky * a;                K(12, 2) = ky * b;
  K(8, 6) = -ky * a;               K(12, 8) = -ky * b;
  K(5, 3) = -kz * a;               K(11, 3) = -kz * b;
  K(9, 5) = kz * a;                K(11, 9) = kz * b;
  K(5, 5) = kyy + kz * a * a;      K(11, 5) = -kyy + kz * a * b;      K(11, 11) = kyy + kz * b * b;
  K(6, 6) = kzz + ky * a * a;      K(12, 6) = -kzz + ky * a * b;      K(12, 12) = kzz + ky * b * b;
  // clang-format on
}

void write_or_turn_link(const PLANE_MATRIX& planes, bool turn, const double* T, double* K) {
  if (turn) {
    turn_planes(PLANE_ROTATION(T), planes, T, 0, nullptr, K);
  } else {
    write_planes(planes, K);
  }
}
