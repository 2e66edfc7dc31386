// reference_member.cpp: the references.
#include "reference_member.h"

#include <cmath>
#include <functional>

namespace reference {

matrix square(const std::vector<double>& packed) {
  const auto n = static_cast<dense::index>(std::lround(std::sqrt(static_cast<double>(packed.size()))));
  matrix M(n, n);
  for (dense::index j = 0; j < n; ++j) {
    for (dense::index i = 0; i < n; ++i) M(i, j) = packed[static_cast<std::size_t>(n * j + i)];
  }
  return M;
}

matrix turned(const matrix& M, const std::vector<double>& R) {
  const matrix part = square(R).topLeftCorner(M.rows(), M.cols());
  return part.transpose() * M * part;
}

namespace {

// Simpson's rule: exact for the products of linear moment diagrams.
real simpson(const std::function<real(real)>& f, real L) { return L / 6 * (f(0) + 4 * f(L / 2) + f(L)); }

// Gauss rule of four points on (0, L): exact for polynomials of degree seven.
real gauss(const std::function<real(real)>& f, real L) {
  const real near = std::sqrt(real(3) / 7 - real(2) / 7 * std::sqrt(real(6) / 5));
  const real far = std::sqrt(real(3) / 7 + real(2) / 7 * std::sqrt(real(6) / 5));
  const real heavy = (18 + std::sqrt(real(30))) / 36, light = (18 - std::sqrt(real(30))) / 36;
  const auto at = [&](real xi) { return f(L / 2 * (1 + xi)); };
  return L / 2 * (heavy * (at(-near) + at(near)) + light * (at(-far) + at(far)));
}

// The cubic functions of v1, theta1, v2, theta2, and their first derivatives.
real cubic(int i, real x, real L) {
  const real s = x / L;
  switch (i) {
    case 0: return 1 - 3 * s * s + 2 * s * s * s;
    case 1: return x * (1 - s) * (1 - s);
    case 2: return 3 * s * s - 2 * s * s * s;
    default: return x * s * (s - 1);
  }
}

real slope(int i, real x, real L) {
  const real s = x / L;
  switch (i) {
    case 0: return (-6 * s + 6 * s * s) / L;
    case 1: return 1 - 4 * s + 3 * s * s;
    case 2: return (6 * s - 6 * s * s) / L;
    default: return s * (3 * s - 2);
  }
}

}  // namespace

matrix plane_stiffness(real EI, real GA, real L, real f, real g) {
  // End moments m1, m2 on a beam on two supports: the moment -m1 (1 - x / L) + m2 x / L, the shear force (m1 + m2) / L.
  const std::function<real(real)> moment[2] = {[L](real x) { return -(1 - x / L); }, [L](real x) { return x / L; }};
  const real fixity[2] = {f, g};
  std::vector<dense::index> held;
  for (dense::index i = 0; i < 2; ++i) {
    if (fixity[i] != 0) held.push_back(i);
  }
  const auto n = static_cast<dense::index>(held.size());
  matrix F(n, n), chord = matrix::Zero(n, 4);
  for (dense::index a = 0; a < n; ++a) {
    for (dense::index b = 0; b < n; ++b) {
      const auto& ma = moment[held[static_cast<std::size_t>(a)]];
      const auto& mb = moment[held[static_cast<std::size_t>(b)]];
      F(a, b) = simpson([&](real x) { return ma(x) * mb(x); }, L) / EI;
      if (GA != 0) F(a, b) += 1 / (L * GA);
    }
    const dense::index end = held[static_cast<std::size_t>(a)];
    if (fixity[end] != 1) F(a, a) += L * (1 - fixity[end]) / (3 * EI * fixity[end]);
    chord(a, 0) = 1 / L;
    chord(a, 2) = -1 / L;
    chord(a, 1 + 2 * end) = 1;
  }
  if (n == 0) return matrix::Zero(4, 4);
  return chord.transpose() * F.inverse() * chord;
}

matrix plane_geometric(real P, real L) {
  matrix G(4, 4);
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) G(i, j) = P * gauss([&](real x) { return slope(i, x, L) * slope(j, x, L); }, L);
  }
  return G;
}

matrix plane_mass(real r, real L) {
  matrix M(4, 4);
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) {
      const auto density = [&](real x) {
        return cubic(i, x, L) * cubic(j, x, L) + r * L * L * slope(i, x, L) * slope(j, x, L);
      };
      M(i, j) = gauss(density, L) / L;
    }
  }
  return M;
}

namespace {

void place(const matrix& plane, const dense::index (&freedoms)[4], real rotation_sign, matrix& M) {
  const real sign[4] = {1, rotation_sign, 1, rotation_sign};
  for (dense::index i = 0; i < 4; ++i) {
    for (dense::index j = 0; j < 4; ++j) M(freedoms[i] - 1, freedoms[j] - 1) += sign[i] * sign[j] * plane(i, j);
  }
}

}  // namespace

void place_xy(const matrix& plane, matrix& M) { place(plane, {2, 6, 8, 12}, 1, M); }
void place_xz(const matrix& plane, matrix& M) { place(plane, {3, 5, 9, 11}, -1, M); }

matrix condensed(const matrix& K, const std::vector<int>& freedoms) {
  const auto n = static_cast<dense::index>(freedoms.size());
  if (n == 0) return K;
  matrix inner(n, n), cross(K.rows(), n);
  for (dense::index a = 0; a < n; ++a) {
    cross.col(a) = K.col(freedoms[static_cast<std::size_t>(a)] - 1);
    for (dense::index b = 0; b < n; ++b) {
      inner(a, b) = K(freedoms[static_cast<std::size_t>(a)] - 1, freedoms[static_cast<std::size_t>(b)] - 1);
    }
  }
  return K - cross * inner.inverse() * cross.transpose();
}

matrix rigid_motions(real L) {
  matrix R = matrix::Zero(12, 6);
  for (dense::index i = 0; i < 6; ++i) R(i, i) = R(i + 6, i) = 1;
  R(8, 4) = -L;  // a rotation about y lowers the second end
  R(7, 5) = L;
  return R;
}

beam_properties properties_of(const support::member_description& m, bool shear) {
  beam_properties p{};
  p.L = m.length;
  p.EA = real(m.e1) * m.area * m.factor_area;
  p.EI1 = real(m.e1) * m.i1 * m.factor_i1;
  p.EI2 = real(m.e2) * m.i2 * m.factor_i2;
  p.GJ = real(m.g) * m.j * m.factor_j * m.factor_torsion;
  p.GA1 = shear && m.g > 0 && m.shear_area_y > 0 ? real(m.g) * m.shear_area_y * m.factor_i1 : 0;
  p.GA2 = shear && m.g > 0 && m.shear_area_z > 0 ? real(m.g) * m.shear_area_z * m.factor_i2 : 0;
  return p;
}

matrix beam_stiffness(const beam_properties& p, const support::member_description& m) {
  matrix K = matrix::Zero(12, 12);
  place_xy(plane_stiffness(p.EI1, p.GA1, p.L, m.fixity_z[0], m.fixity_z[1]), K);
  place_xz(plane_stiffness(p.EI2, p.GA2, p.L, m.fixity_y[0], m.fixity_y[1]), K);
  K(0, 0) = K(6, 6) = p.EA / p.L;
  K(0, 6) = K(6, 0) = -p.EA / p.L;
  K(3, 3) = K(9, 9) = p.GJ / p.L;
  K(3, 9) = K(9, 3) = -p.GJ / p.L;
  return K;
}

matrix released_stiffness(const matrix& K, const support::member_description& m) {
  std::vector<int> freedoms;
  for (int i = 0; i < 4; ++i) {
    const int code = m.release[static_cast<std::size_t>(i)];
    const int freedom = i + 1 + (code == 2 ? 6 : 0);
    const bool stiff = K(freedom - 1, freedom - 1) != 0;
    if ((code == 1 || code == 2) && stiff) freedoms.push_back(freedom);
  }
  return condensed(K, freedoms);
}

std::vector<double> by_diagonal(const std::vector<double>& M, const matrix& scale) {
  std::vector<double> out;
  const dense::index n = scale.rows();
  for (std::size_t p = 0; p < M.size(); ++p) {
    const real d = std::sqrt(std::fabs(scale(static_cast<dense::index>(p) % n, static_cast<dense::index>(p) % n) *
                                       scale(static_cast<dense::index>(p) / n, static_cast<dense::index>(p) / n)));
    out.push_back(d > 0 ? static_cast<double>(M[p] / d) : M[p]);
  }
  return out;
}

}  // namespace reference
