// plastic_reference.cpp: sums over the four points, and the state of each.
#include "plastic_reference.h"

#include <cmath>

#include "comparison.h"

using section_reference::point_answer;
using shell_reference::column;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::real;
using shell_reference::station;

namespace {

section_reference::plate plate_of(const support::plate_description& d) {
  return {d.thickness, d.yield_stress, d.young, d.poisson, static_cast<double>(d.material.HARDENING)};
}

support::plate_description elastic_twin(support::plate_description d) {
  if (d.formulation == 3) d.formulation = 2;
  return d;
}

}  // namespace

plastic_reference::plastic_reference(const support::plate_description& d, const plastic_kind& k)
    : kind(k), e(elastic_twin(d)), p(plate_of(d)), D(section_reference::isotropic_section(p)) {
  for (reference_point& point : points) point.tangent = D;  // the first state has bending in a membrane too
  if (kind.membrane_only()) D.block(3, 3, 5, 5).setZero();
}

matrix plastic_reference::B(double xi, double eta) const {
  matrix all = matrix::Zero(kind.width, 6 * e.n);
  const matrix m = shell_reference::membrane_B(e.X, xi, eta), b = e.bending_B(xi, eta);
  for (int i = 0; i < 2 * e.n; ++i) all.block(0, e.membrane(i), 3, 1) = m.col(i);
  for (int i = 0; i < 3 * e.n; ++i) all.block(3, e.bending(i), 3, 1) = b.col(i);
  if (kind.thick()) {
    const matrix s = e.shear_B(xi, eta);
    for (int i = 0; i < 3 * e.n; ++i) all.block(6, e.bending(i), 2, 1) = s.col(i);
  }
  return all;
}

matrix plastic_reference::C(int point) const {
  return points[static_cast<std::size_t>(point)].tangent.topLeftCorner(kind.width, kind.width);
}

namespace {

// The drilling rotations alone.
matrix drilling(const shell_reference::reference_element& e) {
  const matrix K = e.stiffness();
  matrix only = matrix::Zero(6 * e.n, 6 * e.n);
  for (int j = 0; j < e.n; ++j) {
    for (int i = 0; i < e.n; ++i) only(e.drill(i), e.drill(j)) = K(e.drill(i), e.drill(j));
  }
  return only;
}

}  // namespace

matrix plastic_reference::stiffness() const {
  matrix K = drilling(e);
  for (int i = 0; i < 4; ++i) {
    const station& s = shell_reference::element_rule(e.n)[static_cast<std::size_t>(i)];
    K += B(s.xi, s.eta).transpose() * C(i) * B(s.xi, s.eta) *
         (s.weight * shell_reference::determinant(e.X, s.xi, s.eta));
  }
  return K;
}

column plastic_reference::forces(const column& u, const column& us, bool commit) {
  column f = drilling(e) * u;
  for (std::size_t i = 0; i < 4; ++i) {
    const station& s = shell_reference::element_rule(e.n)[i];
    const matrix b = B(s.xi, s.eta);
    reference_point& point = points[i];
    const point_answer a = section_reference::update(p, D, e.axes, b * (u + us), point.start);
    last[i] = a;
    f += b.transpose() * a.C * (b * u) * (s.weight * shell_reference::determinant(e.X, s.xi, s.eta));
    if (!commit) continue;
    point.ep_inc = a.ep - point.ep;
    point.ep = a.ep;
    point.ebar = a.ebar;
    point.curvature = a.dkap;
    point.sign = a.qtm;
    point.tangent = matrix::Zero(8, 8);
    point.tangent.topLeftCorner(kind.width, kind.width) = a.C;
  }
  return f;
}

void plastic_reference::promote() {
  for (reference_point& point : points) {
    point.start.ep0 = point.ep;
    point.start.ebar0 = point.ebar;
    point.start.ref = static_cast<double>(point.sign);
  }
}

std::vector<double> plastic_reference::displacements(support::seeded_random& random, double level) const {
  column u(6 * e.n);
  const double size = std::sqrt(static_cast<double>(std::abs(shell_reference::determinant(e.X, 0.3L, 0.3L))));
  for (int i = 0; i < 6 * e.n; ++i)
    u(i) = random.uniform(-1.0, 1.0) * (i % 6 < 2 ? 1.0 : i % 6 == 2 ? 10.0 : 10.0 / size);
  real largest = 0;
  section_reference::plate ideal = p;
  ideal.Et = 0.0;
  for (const station& s : shell_reference::element_rule(e.n)) {
    const column sig = D.topLeftCorner(kind.width, kind.width) * (B(s.xi, s.eta) * u);
    largest = std::max(largest, section_reference::yield_function(ideal, sig, 0) + 1);
  }
  return listed(e.to_global(u * (level / std::sqrt(largest))));
}

namespace {

std::vector<double> units(const plastic_reference& r, bool tangent) {
  // Membrane, bending and shear entries of a tangent; strains and curvatures of twelve values.
  const double N = r.p.E * r.p.h, y = r.p.sy / r.p.E;
  std::vector<double> scale;
  if (!tangent) {
    for (int i = 0; i < 12; ++i) scale.push_back(i < 6 ? y : y / r.p.h);
    return scale;
  }
  const auto arm = [&r](int i) { return i >= 3 && i < 6 ? r.p.h : 1.0; };
  for (int j = 0; j < 8; ++j) {
    for (int i = 0; i < 8; ++i) scale.push_back(N * arm(i) * arm(j));
  }
  return scale;
}

std::vector<double> over(std::vector<double> values, const std::vector<double>& scale) {
  for (std::size_t i = 0; i < values.size(); ++i) values[i] /= scale[i];
  return values;
}

template <class VALUE>
std::vector<double> of_points(const plastic_reference& r, const VALUE& value) {
  std::vector<double> all;
  for (const reference_point& point : r.points) all.push_back(static_cast<double>(value(point)));
  return all;
}

}  // namespace

void expect_state(const PLATE_STATE_RECORD& record, const plastic_reference& r, const std::string& where) {
  constexpr double LIMIT = 1e-10;  // of the order of 1: rounding through the spectral form and Newton's steps
  const section_values values = values_of(record);
  const double y = r.p.sy / r.p.E, mixed = static_cast<double>(r.p.N0() * r.p.M0());
  for (std::size_t i = 0; i < 4; ++i) {
    const reference_point& point = r.points[i];
    const auto expect_strains = [&](const char* name, const column& expected) {
      const std::vector<double> all = field_of(values, name);
      const auto from = all.begin() + 12 * static_cast<std::ptrdiff_t>(i);
      EXPECT_WITHIN(over({from, from + 12}, units(r, false)), over(listed(expected), units(r, false)), 1.0, LIMIT)
          << where << " " << name << " point " << i + 1;
    };
    expect_strains("SEC_EP_START", point.start.ep0);
    expect_strains("SEC_EP_CUR", point.ep);
    expect_strains("SEC_EP_INC", point.ep_inc);
    const std::vector<double> tangents = field_of(values, "SEC_TANGENT");
    const auto from = tangents.begin() + 64 * static_cast<std::ptrdiff_t>(i);
    EXPECT_WITHIN(over({from, from + 64}, units(r, true)), over(listed(point.tangent), units(r, true)), 1.0, LIMIT)
        << where << " SEC_TANGENT point " << i + 1;
  }
  const auto expect_points = [&](const char* name, double scale, const std::vector<double>& expected) {
    EXPECT_WITHIN(field_of(values, name), expected, scale, LIMIT) << where << " " << name;
  };
  expect_points("SEC_EPBAR_START", y, of_points(r, [](const reference_point& q) { return q.start.ebar0; }));
  expect_points("SEC_EPBAR_CUR", y, of_points(r, [](const reference_point& q) { return q.ebar; }));
  expect_points("SEC_CURV_INC", y / r.p.h, of_points(r, [](const reference_point& q) { return q.curvature; }));
  expect_points("SEC_SIGN_CUR", 1.0 + mixed, of_points(r, [](const reference_point& q) { return q.sign; }));
  expect_points("SEC_SIGN_START", 1.0 + mixed, of_points(r, [](const reference_point& q) { return q.start.ref; }));
}

double stiffness_scale(const plastic_reference& r) { return shell_reference::largest(r.e.stiffness()); }

double force_scale(const plastic_reference& r, const std::vector<double>& u) {
  return stiffness_scale(r) * support::max_norm(u);
}
