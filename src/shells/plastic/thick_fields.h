// thick_fields.h: strains and forces of a thick plate from the fields of its displacements, without strain matrices.
//
// The rotations of the normal have nodal values and an increment along every side (common/side_fields.h),
//
//     chi x  = sum_i n.X bx_i              + sum_k X_k dB_k       ex  = sum_i n.X u_i
//     chi y  = sum_i n.Y by_i              + sum_k Y_k dB_k       ey  = sum_i n.Y v_i
//     chi xy = sum_i n.Y bx_i + n.X by_i   + sum_k XY_k dB_k      gxy = sum_i n.Y u_i + n.X v_i
//     gxz, gyz = sum_k GX_k dB_k, GY_k dB_k
//
// with bx = theta y, by = -theta x and the increments dB = A_DELTA (w, bx, by), which are formed once. The forces are
// the transposed sums: those of the points add up on u, v, bx, by and dB, and go on to the nodes once.
#ifndef FINITES_THICK_FIELDS_H
#define FINITES_THICK_FIELDS_H

#include "common/finiteness.h"
#include "common/two_lanes.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/slopes.h"
#include "shells/common/surface_points.h"
#include "shells/plastic/strain_cases.h"
#include "shells/quadrilateral/thick/plate_kernel.h"
#include "shells/triangle/thick/plate_kernel.h"

// The functions of N nodes and N sides at a point.
template <int N>
struct THICK_POINT {
  SLOPES<N> n;
  VECTOR<N> X, Y, XY, GX, GY;

  // p: the slopes of the functions of the sides, which have the directions C and S.
  void set_side_curvatures(const SLOPES<N>& p, const double* C, const double* S) {
    for (int k = 1; k <= N; ++k) {
      X(k) = p.X(k) * C[k - 1];
      Y(k) = p.Y(k) * S[k - 1];
      XY(k) = p.X(k) * S[k - 1] + p.Y(k) * C[k - 1];
    }
  }
};

// Of the functions and covariant shears of quadrilateral/thick/bending.cpp and shear.cpp.
inline THICK_POINT<4> thick_point(const QUAD_THICK_PLATE& plate, const SURFACE_POINT& s) {
  const PLATEELEM_RECORD& EL = plate.EL;
  const double xi = s.xi;
  const double eta = s.eta;
  const double p_xi[4] = {-xi * (1.0 - eta), (1.0 - eta * eta) / 2.0, -xi * (eta + 1.0), (eta * eta - 1.0) / 2.0};
  const double p_eta[4] = {(xi * xi - 1.0) / 2.0, -eta * (xi + 1.0), (1.0 - xi * xi) / 2.0, -eta * (1.0 - xi)};
  THICK_POINT<4> at;
  at.n = bilinear_slopes(xi, eta, s.g11, s.g12, s.g21, s.g22);
  at.set_side_curvatures(slopes_of(p_xi, p_eta, s.g11, s.g12, s.g21, s.g22), EL.SIDE_C.data(), EL.SIDE_S.data());
  const VECTOR<4> side{{-(1.0 - eta) * EL.SIDE_LPHI(1) / 6.0, -(1.0 + xi) * EL.SIDE_LPHI(2) / 6.0,
                        (1.0 + eta) * EL.SIDE_LPHI(3) / 6.0, (1.0 - xi) * EL.SIDE_LPHI(4) / 6.0}};
  at.GX = {{s.g11 * side(1), s.g12 * side(2), s.g11 * side(3), s.g12 * side(4)}};
  at.GY = {{s.g21 * side(1), s.g22 * side(2), s.g21 * side(3), s.g22 * side(4)}};
  return at;
}

// Of those of triangle/thick/bending.cpp and shear.cpp.
inline THICK_POINT<3> thick_point(const TRI_THICK_PLATE& plate, const SURFACE_POINT& s) {
  const PLATEELEM_RECORD& EL = plate.EL;
  const double xi = s.xi;
  const double eta = s.eta;
  const double lambda = 1.0 - xi - eta;
  const double p_xi[3] = {4.0 * (lambda - xi), 4.0 * eta, -4.0 * eta};
  const double p_eta[3] = {-4.0 * xi, 4.0 * xi, 4.0 * (lambda - eta)};
  THICK_POINT<3> at;
  at.n = linear_slopes(s.g11, s.g12, s.g21, s.g22);
  at.set_side_curvatures(slopes_of(p_xi, p_eta, s.g11, s.g12, s.g21, s.g22), EL.SIDE_C.data(), EL.SIDE_S.data());
  const auto& C = EL.SIDE_C;
  const auto& S = EL.SIDE_S;
  const auto& D = EL.SIDE_DET;
  const auto& phi = EL.SIDE_PHI;
  at.GX = {{phi(1) * (S(2) / D(2) * xi - S(3) / D(1) * lambda) / 1.5,
            phi(2) * (S(3) / D(3) * eta - S(1) / D(2) * xi) / 1.5,
            phi(3) * (S(1) / D(1) * lambda - S(2) / D(3) * eta) / 1.5}};
  at.GY = {{phi(1) * (C(3) / D(1) * lambda - C(2) / D(2) * xi) / 1.5,
            phi(2) * (C(1) / D(2) * xi - C(3) / D(3) * eta) / 1.5,
            phi(3) * (C(2) / D(3) * eta - C(1) / D(1) * lambda) / 1.5}};
  return at;
}

// Displacements of the nodes and increments of the sides, of the call and total.
template <int N>
struct THICK_FIELDS {
  LANES u[N], v[N], bx[N], by[N], dB[N];

  THICK_FIELDS(const PLATEELEM_RECORD& EL, const STRAIN_CASES<2 * N>& membrane, const STRAIN_CASES<3 * N>& plate) {
    const MATRIX_VIEW<N, const double> A(EL.A_DELTA.data());
    for (int i = 0; i < N; ++i) {
      u[i] = membrane.u[2 * i];
      v[i] = membrane.u[2 * i + 1];
      bx[i] = plate.u[3 * i + 2];
      by[i] = -plate.u[3 * i + 1];
    }
    for (int k = 1; k <= N; ++k) {
      const int i = k - 1;
      const int j = k % N;
      dB[i] = A(k, 3 * i + 1) * plate.u[3 * i] + A(k, 3 * i + 2) * bx[i] + A(k, 3 * i + 3) * by[i] +
              A(k, 3 * j + 1) * plate.u[3 * j] + A(k, 3 * j + 2) * bx[j] + A(k, 3 * j + 3) * by[j];
    }
  }

  void set_strains(const THICK_POINT<N>& at, LANES (&e)[8]) const {
    for (LANES& strain : e) strain = LANES{};
    for (int i = 0; i < N; ++i) {
      const double x = at.n.X.V[i];
      const double y = at.n.Y.V[i];
      e[0] = e[0] + x * u[i];
      e[1] = e[1] + y * v[i];
      e[2] = e[2] + y * u[i] + x * v[i];
      e[3] = e[3] + x * bx[i] + at.X.V[i] * dB[i];
      e[4] = e[4] + y * by[i] + at.Y.V[i] * dB[i];
      e[5] = e[5] + y * bx[i] + x * by[i] + at.XY.V[i] * dB[i];
      e[6] = e[6] + at.GX.V[i] * dB[i];
      e[7] = e[7] + at.GY.V[i] * dB[i];
    }
  }
};

// Forces of the points on u, v, bx, by and dB.
template <int N>
struct THICK_FORCES {
  double u[N] = {}, v[N] = {}, bx[N] = {}, by[N] = {}, dB[N] = {};

  // += those of the section forces n of a point, times c.
  void add(const THICK_POINT<N>& at, const VECTOR<8>& n, double c) {
    const double N1 = c * n(1), N2 = c * n(2), N12 = c * n(3);
    const double M1 = c * n(4), M2 = c * n(5), M12 = c * n(6);
    const double Q1 = c * n(7), Q2 = c * n(8);
    for (int i = 0; i < N; ++i) {
      const double x = at.n.X.V[i];
      const double y = at.n.Y.V[i];
      u[i] += x * N1 + y * N12;
      v[i] += y * N2 + x * N12;
      bx[i] += x * M1 + y * M12;
      by[i] += y * M2 + x * M12;
      dB[i] += at.X.V[i] * M1 + at.Y.V[i] * M2 + at.XY.V[i] * M12 + at.GX.V[i] * Q1 + at.GY.V[i] * Q2;
    }
  }

  // f += those of the nodes, at the degrees of freedom of membrane and plate.
  void give_to(const PLATEELEM_RECORD& EL, const int (&membrane)[2 * N], const int (&plate)[3 * N], double* f) const {
    const MATRIX_VIEW<N, const double> A(EL.A_DELTA.data());
    for (int i = 0; i < N; ++i) {
      const int k = i + 1;           // the side that begins here
      const int m = i == 0 ? N : i;  // the side that ends here
      const auto of_sides = [&](int column) { return A(k, column) * dB[k - 1] + A(m, column) * dB[m - 1]; };
      f[membrane[2 * i] - 1] += u[i];
      f[membrane[2 * i + 1] - 1] += v[i];
      f[plate[3 * i] - 1] += of_sides(3 * i + 1);
      f[plate[3 * i + 1] - 1] -= by[i] + of_sides(3 * i + 3);
      f[plate[3 * i + 2] - 1] += bx[i] + of_sides(3 * i + 2);
    }
  }

  bool finite() const { return all_finite(u, 5 * N); }
};

#endif
