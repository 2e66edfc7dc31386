// plate_fields.h: strains and forces of a plate from the fields of its displacements, without strain matrices.
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
//
// A thin plate is the thick one without flexibility in shear: the increment of a side then makes its middle follow the
// cubic deflection along it, which is the condition of the discrete Kirchhoff elements (Batoz and Ben Tahar, 1982).
#ifndef FINITES_PLATE_FIELDS_H
#define FINITES_PLATE_FIELDS_H

#include "common/finiteness.h"
#include "common/lanes.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/side_fields.h"
#include "shells/common/slopes.h"
#include "shells/common/surface_points.h"
#include "shells/plastic/strain_cases.h"

// Directions of the sides and A_DELTA, of a plate with N nodes.
template <int N>
struct FIELD_SIDES {
  const double *C, *S;
  const double* A_DELTA;
};

// The functions of N nodes and N sides at a point. GX and GY are those of a thick plate alone.
template <int N>
struct FIELD_POINT {
  SLOPES<N> n;
  VECTOR<N> X, Y, XY, GX, GY;

  // p: the slopes of the functions of the sides.
  void set_side_curvatures(const SLOPES<N>& p, const FIELD_SIDES<N>& sides) {
    for (int k = 1; k <= N; ++k) {
      const double C = sides.C[k - 1];
      const double S = sides.S[k - 1];
      X(k) = p.X(k) * C;
      Y(k) = p.Y(k) * S;
      XY(k) = p.X(k) * S + p.Y(k) * C;
    }
  }
};

// The functions of the nodes and of the sides of a quadrilateral (quadrilateral/thick/bending.cpp) and of a triangle
// (triangle/thick/bending.cpp).
inline void set_curvatures(const SURFACE_POINT& s, const FIELD_SIDES<4>& sides, FIELD_POINT<4>& at) {
  const double xi = s.xi;
  const double eta = s.eta;
  const double p_xi[4] = {-xi * (1.0 - eta), (1.0 - eta * eta) / 2.0, -xi * (eta + 1.0), (eta * eta - 1.0) / 2.0};
  const double p_eta[4] = {(xi * xi - 1.0) / 2.0, -eta * (xi + 1.0), (1.0 - xi * xi) / 2.0, -eta * (1.0 - xi)};
  at.n = bilinear_slopes(xi, eta, s.g11, s.g12, s.g21, s.g22);
  at.set_side_curvatures(slopes_of(p_xi, p_eta, s.g11, s.g12, s.g21, s.g22), sides);
}

inline void set_curvatures(const SURFACE_POINT& s, const FIELD_SIDES<3>& sides, FIELD_POINT<3>& at) {
  const double xi = s.xi;
  const double eta = s.eta;
  const double lambda = 1.0 - xi - eta;
  const double p_xi[3] = {4.0 * (lambda - xi), 4.0 * eta, -4.0 * eta};
  const double p_eta[3] = {-4.0 * xi, 4.0 * xi, 4.0 * (lambda - eta)};
  at.n = linear_slopes(s.g11, s.g12, s.g21, s.g22);
  at.set_side_curvatures(slopes_of(p_xi, p_eta, s.g11, s.g12, s.g21, s.g22), sides);
}

// Transverse shears of the increments (quadrilateral/thick/shear.cpp, triangle/thick/shear.cpp).
inline void set_shears(const SURFACE_POINT& s, const PLATEELEM_RECORD& EL, FIELD_POINT<4>& at) {
  const VECTOR<4> side{{-(1.0 - s.eta) * EL.SIDE_LPHI(1) / 6.0, -(1.0 + s.xi) * EL.SIDE_LPHI(2) / 6.0,
                        (1.0 + s.eta) * EL.SIDE_LPHI(3) / 6.0, (1.0 - s.xi) * EL.SIDE_LPHI(4) / 6.0}};
  at.GX = {{s.g11 * side(1), s.g12 * side(2), s.g11 * side(3), s.g12 * side(4)}};
  at.GY = {{s.g21 * side(1), s.g22 * side(2), s.g21 * side(3), s.g22 * side(4)}};
}

inline void set_shears(const SURFACE_POINT& s, const PLATEELEM_RECORD& EL, FIELD_POINT<3>& at) {
  const double xi = s.xi;
  const double eta = s.eta;
  const double lambda = 1.0 - xi - eta;
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
}

// The sides of a thin plate, from the local coordinates (3, N) of its nodes.
template <int N>
PLATE_SIDES<N> thin_sides(const double* local) {
  const MATRIX_VIEW<3, const double> nodes(local);
  PLATE_SIDES<N> sides;
  VECTOR<N> x;
  VECTOR<N> y;
  for (int k = 1; k <= N; ++k) {
    const int next = k % N + 1;
    x(k) = nodes(1, next) - nodes(1, k);
    y(k) = nodes(2, next) - nodes(2, k);
    set_side_direction(k, x(k), y(k), sides);
    sides.PHI(k) = 0.0;
  }
  set_side_matrix(x, y, sides);
  return sides;
}

// Displacements of the nodes and increments of the sides, of the call and total.
template <int N>
struct PLATE_FIELDS {
  LANES u[N], v[N], bx[N], by[N], dB[N];

  PLATE_FIELDS(const FIELD_SIDES<N>& sides, const STRAIN_CASES<2 * N>& membrane, const STRAIN_CASES<3 * N>& plate) {
    const MATRIX_VIEW<N, const double> A(sides.A_DELTA);
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

  template <int WIDTH>
  void set_strains(const FIELD_POINT<N>& at, LANES (&e)[WIDTH]) const {
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
      if constexpr (WIDTH == 8) {
        e[6] = e[6] + at.GX.V[i] * dB[i];
        e[7] = e[7] + at.GY.V[i] * dB[i];
      }
    }
  }
};

// Forces of the points on u, v, bx, by and dB.
template <int N>
struct FIELD_FORCES {
  double u[N] = {}, v[N] = {}, bx[N] = {}, by[N] = {}, dB[N] = {};

  // += those of the section forces n of a point, times c.
  template <int WIDTH>
  void add(const FIELD_POINT<N>& at, const VECTOR<WIDTH>& n, double c) {
    const double N1 = c * n(1), N2 = c * n(2), N12 = c * n(3);
    const double M1 = c * n(4), M2 = c * n(5), M12 = c * n(6);
    for (int i = 0; i < N; ++i) {
      const double x = at.n.X.V[i];
      const double y = at.n.Y.V[i];
      u[i] += x * N1 + y * N12;
      v[i] += y * N2 + x * N12;
      bx[i] += x * M1 + y * M12;
      by[i] += y * M2 + x * M12;
      double increment = at.X.V[i] * M1 + at.Y.V[i] * M2 + at.XY.V[i] * M12;
      if constexpr (WIDTH == 8) increment += at.GX.V[i] * (c * n(7)) + at.GY.V[i] * (c * n(8));
      dB[i] += increment;
    }
  }

  // f += those of the nodes, at the degrees of freedom of membrane and plate.
  void give_to(const FIELD_SIDES<N>& sides, const int (&membrane)[2 * N], const int (&plate)[3 * N], double* f) const {
    const MATRIX_VIEW<N, const double> A(sides.A_DELTA);
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
