// reference_solid.cpp: matrices, loads and volumes of one element from full products in global axes.
#include "reference_solid.h"

#include <cmath>

namespace reference {

body body_of(const support::solid_description& d) {
  body b{kind_of(static_cast<int>(d.nodes.size())),
         matrix(3, static_cast<dense::index>(d.nodes.size())),
         d.young,
         d.poisson,
         d.unit_weight,
         static_cast<real>(d.stiff_factor)};
  for (std::size_t k = 0; k < d.nodes.size(); ++k) {
    for (std::size_t i = 0; i < 3; ++i)
      b.XYZ(static_cast<dense::index>(i), static_cast<dense::index>(k)) = d.nodes[k][i];
  }
  return b;
}

tensor axes(const body& b) {
  const dense::index other = b.kind == 10 ? 3 : 2;
  const dense::vector3 x = (b.XYZ.col(1) - b.XYZ.col(0)).normalized();
  const dense::vector3 edge = b.XYZ.col(other) - b.XYZ.col(0);
  const dense::vector3 y = (edge - x * x.dot(edge)).normalized();
  tensor R;
  R.row(0) = x.transpose();
  R.row(1) = y.transpose();
  R.row(2) = x.cross(y).transpose();
  return R;
}

tensor jacobian(const body& b, const std::vector<double>& p) { return derivatives(b.kind, p) * b.XYZ.transpose(); }

matrix gradients(const body& b, const std::vector<double>& p) {
  return dense::solve(jacobian(b, p), derivatives(b.kind, p));
}

matrix strain_matrix(const matrix& g) {
  matrix B = matrix::Zero(6, 3 * g.cols());
  for (dense::index k = 0; k < g.cols(); ++k) {
    const real x = g(0, k), y = g(1, k), z = g(2, k);
    B.middleCols(3 * k, 3) << x, 0, 0, 0, y, 0, 0, 0, z, y, x, 0, z, 0, x, 0, z, y;
  }
  return B;
}

matrix gradient_matrix(const matrix& g) {
  matrix G = matrix::Zero(9, 3 * g.cols());
  for (dense::index k = 0; k < g.cols(); ++k) {
    for (dense::index c = 0; c < 3; ++c) G.block(3 * c, 3 * k + c, 3, 1) = g.col(k);
  }
  return G;
}

matrix elasticity(const body& b) {
  matrix compliance = matrix::Zero(6, 6);
  compliance.topLeftCorner(3, 3).setConstant(-b.poisson / b.young);
  for (dense::index i = 0; i < 3; ++i) {
    compliance(i, i) = 1 / b.young;
    compliance(3 + i, 3 + i) = 2 * (1 + b.poisson) / b.young;
  }
  return b.factor * compliance.inverse();
}

namespace {

// Sum over the points of what `term` gives for the gradients and the number of the point, times weight and volume.
matrix integrated(const body& b, const std::function<matrix(const std::vector<double>&, std::size_t)>& term) {
  matrix sum;
  const std::vector<station> points = rule(b.kind);
  for (std::size_t n = 0; n < points.size(); ++n) {
    const std::vector<double> p = {points[n].xi, points[n].eta, points[n].zeta};
    const matrix part = term(p, n) * (points[n].weight * std::fabs(jacobian(b, p).determinant()));
    sum = n == 0 ? part : matrix(sum + part);
  }
  return sum;
}

}  // namespace

matrix stiffness(const body& b) {
  const matrix D = elasticity(b);
  return integrated(b, [&](const std::vector<double>& p, std::size_t /*n*/) -> matrix {
    const matrix B = strain_matrix(gradients(b, p));
    return B.transpose() * D * B;
  });
}

matrix mass(const body& b) {
  return integrated(b, [&](const std::vector<double>& p, std::size_t /*n*/) -> matrix {
    const column N = functions(b.kind, p);
    matrix H = matrix::Zero(3, 3 * N.size());
    for (dense::index k = 0; k < N.size(); ++k) H.middleCols(3 * k, 3) = N(k) * tensor::Identity();
    return b.unit_weight / 9810 * H.transpose() * H;
  });
}

column body_load(const body& b, const column& G) {
  return integrated(b, [&](const std::vector<double>& p, std::size_t /*n*/) -> matrix {
    const column N = functions(b.kind, p);
    column f(3 * N.size());
    for (dense::index k = 0; k < N.size(); ++k) f.segment(3 * k, 3) = N(k) * G;
    return f;
  });
}

matrix geometric(const body& b, const std::vector<tensor>& stress) {
  return integrated(b, [&](const std::vector<double>& p, std::size_t n) -> matrix {
    const matrix G = gradient_matrix(gradients(b, p));
    matrix T = matrix::Zero(9, 9);
    for (dense::index c = 0; c < 3; ++c) T.block(3 * c, 3 * c, 3, 3) = stress.at(n);
    return G.transpose() * T * G;
  });
}

column strain(const body& b, const std::vector<double>& p, const column& u) {
  return strain_matrix(gradients(b, p)) * u;
}

namespace {

using triple = dense::vector3;

// A third of the flux of the position vector through a bilinear face, corners in order.
real flux(const triple& a, const triple& b, const triple& c, const triple& d) {
  const real half = 0.5L / std::sqrt(3.0L);
  real sum = 0;
  for (const real s : {0.5L - half, 0.5L + half}) {
    for (const real t : {0.5L - half, 0.5L + half}) {
      const triple r = (1 - s) * (1 - t) * a + s * (1 - t) * b + s * t * c + (1 - s) * t * d;
      const triple along_s = (1 - t) * (b - a) + t * (c - d), along_t = (1 - s) * (d - a) + s * (c - b);
      sum += r.dot(along_s.cross(along_t)) / 12;
    }
  }
  return sum;
}

}  // namespace

real volume(const body& b) {
  const auto face = [&](int i, int j, int k, int l) {
    return flux(b.XYZ.col(i - 1), b.XYZ.col(j - 1), b.XYZ.col(k - 1), b.XYZ.col(l - 1));
  };
  // A triangle is a face whose last two corners are one.
  switch (b.kind) {
    case 13: return std::fabs(face(1, 3, 2, 2) + face(1, 2, 4, 4) + face(2, 3, 4, 4) + face(3, 1, 4, 4));
    case 12:
      return std::fabs(face(1, 3, 2, 2) + face(4, 5, 6, 6) + face(1, 2, 5, 4) + face(2, 3, 6, 5) + face(3, 1, 4, 6));
    default:
      return std::fabs(face(1, 4, 3, 2) + face(5, 6, 7, 8) + face(1, 2, 6, 5) + face(2, 3, 7, 6) + face(3, 4, 8, 7) +
                       face(4, 1, 5, 8));
  }
}

tensor stress_tensor(const column& s) {
  tensor T;
  T << s(0), s(3), s(4), s(3), s(1), s(5), s(4), s(5), s(2);
  return T;
}

column stress_column(const tensor& s) {
  column out(6);
  out << s(0, 0), s(1, 1), s(2, 2), s(0, 1), s(0, 2), s(1, 2);
  return out;
}

tensor strain_tensor(const column& e) {
  tensor T = stress_tensor(e) / 2;
  for (dense::index i = 0; i < 3; ++i) T(i, i) = e(i);
  return T;
}

column strain_column(const tensor& e) {
  column out = stress_column(e);
  out.tail(3) *= 2;
  return out;
}

matrix blocks(const tensor& R, int nodes) {
  matrix T = matrix::Zero(3 * nodes, 3 * nodes);
  for (dense::index k = 0; k < nodes; ++k) T.block(3 * k, 3 * k, 3, 3) = R;
  return T;
}

matrix square(const std::vector<double>& packed) {
  const dense::index n = std::lround(std::sqrt(static_cast<double>(packed.size())));
  return dense::widened(packed.data(), n, n);
}

column listed(const std::vector<double>& values) { return dense::column_of(values); }

std::vector<double> rounded(const matrix& M) { return dense::listed(M); }

double norm(const matrix& M) { return dense::largest(M); }

}  // namespace reference
