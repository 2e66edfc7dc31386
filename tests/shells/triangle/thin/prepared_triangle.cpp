// prepared_triangle.cpp: set-up of kernels, and what their tests share.
#include "prepared_triangle.h"

#include "element_stores.h"
#include "finites/records.h"

prepared_triangle::prepared_triangle(const std::vector<support::point>& nodes) : xyz{}, local{} {
  double* at = xyz.data();
  for (int n = 0; n < 3; ++n) {
    for (const double component : nodes.at(static_cast<std::size_t>(n))) *at++ = component;
  }
  PLATEELEM = PLATEELEM_RECORD{};
  TRI_LOCAL_FRAME(xyz.data(), TRI, local);
  TRI_GEOMETRY(local, TRI);
  PLATEELEM.AXES = TRI.AXES;
  PLATEELEM.LOCAL_XYZ = local;
}

reference::flat_triangle prepared_triangle::flat() const {
  reference::flat_triangle X;
  X << local(1, 1), local(1, 2), local(1, 3), local(2, 1), local(2, 2), local(2, 3);
  return X;
}

std::vector<support::point> plane_triangle(double x2, double x3, double y3) {
  return {support::point{0.0, 0.0, 0.0}, support::point{x2, 0.0, 0.0}, support::point{x3, y3, 0.0}};
}

void set_distinct_constants(support::seeded_random& random) {
  for (double* constant : {&ISO.DM11, &ISO.DM12, &ISO.DM22, &ISO.DM33, &ISO.DB11, &ISO.DB12, &ISO.DB22, &ISO.DB33}) {
    *constant = random.uniform(0.5, 2.0);
  }
}

MATRIX<3, 3> unsymmetric_section(support::seeded_random& random) {
  MATRIX<3, 3> D;
  for (double& entry : D.V) entry = random.uniform(-0.5, 0.5);
  for (int i = 1; i <= 3; ++i) D(i, i) = random.uniform(1.0, 2.0);
  return D;
}

reference::matrix3 wide(const MATRIX<3, 3>& D) { return dense::widened(D.data(), 3, 3); }

namespace {

reference::matrix3 orthotropic(double d11, double d12, double d22, double d33) {
  reference::matrix3 D;
  D << d11, d12, 0.0, d12, d22, 0.0, 0.0, 0.0, d33;
  return D;
}

}  // namespace

reference::matrix3 membrane_constants() { return orthotropic(ISO.DM11, ISO.DM12, ISO.DM22, ISO.DM33); }
reference::matrix3 bending_constants() { return orthotropic(ISO.DB11, ISO.DB12, ISO.DB22, ISO.DB33); }

reference::column quadratic_deflection(const reference::flat_triangle& X, const std::vector<double>& c) {
  reference::column q(9);
  for (int n = 0; n < 3; ++n) {
    const reference::real x = X(0, n), y = X(1, n);
    q(3 * n) = c.at(0) + c.at(1) * x + c.at(2) * y + c.at(3) * x * x / 2 + c.at(4) * y * y / 2 + c.at(5) * x * y;
    q(3 * n + 1) = c.at(2) + c.at(4) * y + c.at(5) * x;     // dw/dy
    q(3 * n + 2) = -(c.at(1) + c.at(3) * x + c.at(5) * y);  // -dw/dx
  }
  return q;
}

std::vector<double> packed_of(const reference::matrix& K) {
  std::vector<double> packed;
  for (int j = 0; j < K.cols(); ++j) {
    for (int i = 0; i <= j; ++i) packed.push_back(static_cast<double>(K(i, j)));
  }
  return packed;
}

reference::matrix full_of(int n, const double* packed) {
  reference::matrix K(n, n);
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i <= j; ++i) K(i, j) = K(j, i) = *packed++;
  }
  return K;
}
