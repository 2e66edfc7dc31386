// links_test.cpp: links and springs as plain calls: the bits of the protocol, equilibrium, springs in line and across,
// axes, and what they refuse.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

#include "allocation_counter.h"
#include "comparison.h"
#include "finites/elements.h"
#include "frame_model.h"
#include "random_shapes.h"

namespace {

using support::frame_model;
using support::member_description;
using support::member_family;
using support::point;
using support::seeded_random;

constexpr int ELEMENTS = 2000;
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

using stiffnesses = std::array<float, 6>;

stiffnesses random_stiffnesses(seeded_random& random) {
  stiffnesses k;
  for (float& value : k) value = static_cast<float>(random.log_uniform(1e-2, 1e6));
  return k;
}

void set(double (&to)[6], const stiffnesses& k) {
  for (std::size_t i = 0; i < 6; ++i) to[i] = static_cast<double>(k[i]);
}

void set(double (&to)[3], const point& p) { std::copy(p.begin(), p.end(), to); }

point random_point(seeded_random& random, double size) {
  return {random.uniform(-size, size), random.uniform(-size, size), random.uniform(-size, size)};
}

point less(const point& a, const point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
double dot(const point& a, const point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
point cross(const point& a, const point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
point unit(const point& a) {
  const double size = std::sqrt(dot(a, a));
  return {a[0] / size, a[1] / size, a[2] / size};
}

// Rows x, y, z.
using axes3 = std::array<point, 3>;

axes3 axes_of(const point& along, const point& up) {
  const point x = unit(along), z = unit(cross(x, up));
  return {x, cross(z, x), z};
}

std::vector<double> rotation_of(const axes3& axes) {
  std::vector<double> T(144);
  for (std::size_t block = 0; block < 12; block += 3) {
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) T[12 * (block + j) + block + i] = axes[i][j];
    }
  }
  return T;
}

finites_link random_link(seeded_random& random, const stiffnesses& k, int at_ends) {
  finites_link link;
  finites_link_init(&link);
  set(link.xyz[0], random_point(random, 5));
  set(link.xyz[1], random_point(random, 5));
  set(link.up, random_point(random, 1));
  set(link.k, k);
  link.at_ends = at_ends;
  return link;
}

point first(const finites_link& link) { return {link.xyz[0][0], link.xyz[0][1], link.xyz[0][2]}; }
point second(const finites_link& link) { return {link.xyz[1][0], link.xyz[1][1], link.xyz[1][2]}; }

std::vector<double> stiffness(const finites_link& link) {
  std::vector<double> K(144, NOT_A_NUMBER);
  EXPECT_EQ(finites_link_stiffness(&link, K.data()), FINITES_OK);
  return K;
}

std::vector<double> stiffness(const finites_spring& spring) {
  std::vector<double> K(144, NOT_A_NUMBER);
  EXPECT_EQ(finites_spring_stiffness(&spring, K.data()), FINITES_OK);
  return K;
}

std::vector<double> forces(const finites_link& link, const std::vector<double>& u) {
  std::vector<double> F(12, NOT_A_NUMBER);
  EXPECT_EQ(finites_link_forces(&link, u.data(), F.data()), FINITES_OK);
  return F;
}

bool same_bits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

point part(const std::vector<double>& v, std::size_t at) { return {v[at], v[at + 1], v[at + 2]}; }

// The axes that a call has used, from the forces of a link that is stiff along one direction alone.
point direction_of_component(finites_link link, std::size_t component) {
  for (double& k : link.k) k = 0.0;
  link.k[component] = 1.0;
  link.at_ends = 1;
  const std::vector<double> K = stiffness(link);
  // K11 = a a^T.
  point a{std::sqrt(K[0]), std::sqrt(K[13]), std::sqrt(K[26])};
  if (a[0] > 1e-7) {
    a[1] = std::copysign(a[1], K[1]);
    a[2] = std::copysign(a[2], K[2]);
  } else {
    a[2] = std::copysign(a[2], K[14]);
  }
  return a;
}

void expect_along(const point& a, const point& b) { EXPECT_NEAR(std::fabs(dot(a, b)), 1.0, 1e-12); }

}  // namespace

TEST(LinksBothDoors, Links) {
  seeded_random random(9501);
  for (int e = 0; e < ELEMENTS; ++e) {
    const stiffnesses k = random_stiffnesses(random);
    const finites_link link = random_link(random, k, e % 2);
    const point along = less(second(link), first(link));
    member_description m;
    m.family = member_family::link;
    m.length = std::sqrt(dot(along, along));
    m.property = support::link_property({}, k, 0, 0, e % 2);
    frame_model model({m});
    // The axes as they are worked out: z across x and up.
    point x{}, z{};
    double up = 0.0, size = 0.0;
    for (const double c : link.up) up = std::fmax(up, std::fabs(c));
    for (std::size_t i = 0; i < 3; ++i) x[i] = along[i] / m.length;
    z = cross(x, {link.up[0] / up, link.up[1] / up, link.up[2] / up});
    size = std::sqrt(dot(z, z));
    for (double& c : z) c /= size;
    model.set_rotation(rotation_of({x, cross(z, x), z}));
    EXPECT_TRUE(same_bits(stiffness(link), model.link(2).K)) << e;
  }
}

TEST(LinksBothDoors, Springs) {
  seeded_random random(9502);
  for (int e = 0; e < ELEMENTS; ++e) {
    const stiffnesses k = random_stiffnesses(random);
    const support::rotation R = support::random_rotation(random);
    finites_spring spring;
    finites_spring_init(&spring);
    set(spring.k, k);
    member_description m;
    m.family = member_family::spring;
    m.property = support::spring_property({}, k);
    m.local_axes = e % 2;
    if (e % 2 == 1) {
      for (std::size_t a = 0; a < 3; ++a) set(spring.axes[a], R[a]);
    }
    frame_model model({m});
    model.set_rotation(rotation_of({R[0], R[1], R[2]}));
    EXPECT_TRUE(same_bits(stiffness(spring), model.spring(2).K)) << e;
  }
}

TEST(LinksLaws, AxesOfALink) {
  seeded_random random(9503);
  const auto with = [](const point& along, const point& up) {
    finites_link link{};
    set(link.xyz[1], along);
    set(link.up, up);
    return link;
  };
  const auto expect_axes = [](const finites_link& link, const axes3& axes) {
    for (std::size_t c = 0; c < 3; ++c) expect_along(direction_of_component(link, c), axes[c]);
  };
  for (int e = 0; e < 20; ++e) {
    const point along = random_point(random, 3), up = random_point(random, 1e-20);
    expect_axes(with(along, up), axes_of(along, up));
    expect_axes(with(along, {}), axes_of(along, {0, 0, 1}));
  }
  expect_axes(with({0, 0, 2}, {}), axes_of({0, 0, 1}, {1, 0, 0}));
  expect_axes(with({0, 0, -2}, {}), axes_of({0, 0, -1}, {1, 0, 0}));
  expect_axes(with({1e-7, 0, 1}, {}), axes_of({0, 0, 1}, {1, 0, 0}));
  expect_axes(with({1e-5, 0, 1}, {}), axes_of({1e-5, 0, 1}, {0, 0, 1}));
  expect_axes(with({}, {1, 2, 3}), {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}});
}

TEST(LinksLaws, RigidMotionsAreFreeAndForcesAreInEquilibrium) {
  seeded_random random(9504);
  for (int e = 0; e < 50; ++e) {
    const finites_link link = random_link(random, random_stiffnesses(random), 0);
    const std::vector<double> K = stiffness(link);
    EXPECT_EQ(K, support::transposed(K));
    const double size = support::max_norm(K);
    const point shift = random_point(random, 1), turn = random_point(random, 1);
    std::vector<double> rigid;
    for (const point& x : {first(link), second(link)}) {
      const point v = cross(turn, x);
      for (std::size_t i = 0; i < 3; ++i) rigid.push_back(shift[i] + v[i]);
      rigid.insert(rigid.end(), turn.begin(), turn.end());
    }
    EXPECT_CLOSE(forces(link, rigid), std::vector<double>(12), 10 * size, 20);
    const std::vector<double> u = random.vector(12, 1e-3), F = forces(link, u);
    EXPECT_CLOSE(F, support::product(K, u), size * 1e-3, 100);
    const point f1 = part(F, 0), f2 = part(F, 6), m1 = part(F, 3), m2 = part(F, 9);
    const point moment = cross(less(second(link), first(link)), f2);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_CLOSE(f1[i] + f2[i], 0.0, size * 1e-3, 100);
      EXPECT_CLOSE(m1[i] + m2[i] + moment[i], 0.0, size * 1e-2, 100);
    }
  }
}

// A link along X, shear k in y: both ends held against turning, the second moved by v. The point at mid-length opens by
// v, the shear is k v, and turns the ends with k v L / 2; at_ends without.
TEST(LinksLaws, ShearAtMidLength) {
  finites_link link{};
  link.xyz[1][0] = 4.0;
  link.k[1] = 50.0;
  // up is global Z, so that y of the link is Z and z is -Y: along global Y the link has k[2], which is 0.
  std::vector<double> along_y(12), along_z(12);
  along_y[7] = along_z[8] = 0.1;
  EXPECT_EQ(forces(link, along_y), std::vector<double>(12));
  EXPECT_CLOSE(forces(link, along_z), (std::vector<double>{0, 0, -5, 0, 10, 0, 0, 0, 5, 0, 10, 0}), 10.0, 10);
  link.at_ends = 1;
  EXPECT_CLOSE(forces(link, along_z), (std::vector<double>{0, 0, -5, 0, 0, 0, 0, 0, 5, 0, 0, 0}), 10.0, 10);
}

TEST(LinksLaws, ComponentsOfASpring) {
  finites_spring spring{};
  for (int i = 0; i < 6; ++i) spring.k[i] = 2.0 + i;
  const double axes[3][3] = {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}};  // x = Y, y = Z, z = X
  std::copy_n(&axes[0][0], 9, &spring.axes[0][0]);
  const double u[12] = {0, 0, 0, 0, 0, 0, 1, 10, 100, 1e3, 1e4, 1e5};
  double F[12];
  ASSERT_EQ(finites_spring_forces(&spring, u, F), FINITES_OK);
  const std::vector<double> expected = {-4, -20, -300, -7e3, -5e4, -6e5, 4, 20, 300, 7e3, 5e4, 6e5};
  EXPECT_EQ(std::vector<double>(F, F + 12), expected);
}

namespace {

using link_call = std::function<finites_status(const finites_link*, double*)>;
using spring_call = std::function<finites_status(const finites_spring*, double*)>;

constexpr double QUIET[12] = {};

const std::vector<link_call>& link_calls() {
  static const std::vector<link_call> calls = {
      [](const finites_link* link, double* to) { return finites_link_stiffness(link, to); },
      [](const finites_link* link, double* to) { return finites_link_forces(link, QUIET, to); }};
  return calls;
}

const std::vector<spring_call>& spring_calls() {
  static const std::vector<spring_call> calls = {
      [](const finites_spring* spring, double* to) { return finites_spring_stiffness(spring, to); },
      [](const finites_spring* spring, double* to) { return finites_spring_forces(spring, QUIET, to); }};
  return calls;
}

template <class ELEMENT, class CALLS>
void expect_refused(const CALLS& calls, const ELEMENT* element, finites_status status) {
  for (const auto& call : calls) {
    std::vector<double> to(144, 7.25);
    EXPECT_EQ(call(element, to.data()), status);
    EXPECT_EQ(to, std::vector<double>(144, 7.25));
  }
}

void refuse(finites_status status, const std::function<void(finites_link&)>& change) {
  finites_link link{};
  link.xyz[1][0] = 2.0;
  std::fill_n(link.k, 6, 1.0);
  change(link);
  expect_refused(link_calls(), &link, status);
}

void refuse_spring(finites_status status, const std::function<void(finites_spring&)>& change) {
  finites_spring spring{};
  std::fill_n(spring.k, 6, 1.0);
  for (int a = 0; a < 3; ++a) spring.axes[a][a] = 1.0;
  change(spring);
  expect_refused(spring_calls(), &spring, status);
}

}  // namespace

TEST(LinksStatus, OfALink) {
  expect_refused<finites_link>(link_calls(), nullptr, FINITES_NULL);
  for (const double bad : {NOT_A_NUMBER, ENDLESS, -ENDLESS}) {
    refuse(FINITES_NAN, [&](finites_link& l) { l.xyz[1][2] = bad; });
    refuse(FINITES_NAN, [&](finites_link& l) { l.up[2] = bad; });
    refuse(FINITES_NAN, [&](finites_link& l) { l.k[5] = bad; });
  }
  refuse(FINITES_RANGE, [](finites_link& l) { l.xyz[0][0] = -2e30; });
  refuse(FINITES_RANGE, [](finites_link& l) { l.up[0] = 2e30; });
  refuse(FINITES_RANGE, [](finites_link& l) { l.k[0] = 2e30; });
  refuse(FINITES_RANGE, [](finites_link& l) { l.xyz[1][0] = 1e-31; });
  refuse(FINITES_BAD_CODE, [](finites_link& l) { l.at_ends = 2; });
  refuse(FINITES_BAD_CODE, [](finites_link& l) { l.at_ends = -1; });
  refuse(FINITES_STIFFNESS, [](finites_link& l) { l.k[3] = -1e-9; });
  refuse(FINITES_ORIENTATION, [](finites_link& l) { l.up[0] = -3.0; });
  refuse(FINITES_ORIENTATION, [](finites_link& l) { l.up[0] = 1.0, l.up[1] = 1e-7; });
}

TEST(LinksStatus, OfASpring) {
  expect_refused<finites_spring>(spring_calls(), nullptr, FINITES_NULL);
  for (const double bad : {NOT_A_NUMBER, ENDLESS, -ENDLESS}) {
    refuse_spring(FINITES_NAN, [&](finites_spring& s) { s.k[5] = bad; });
    refuse_spring(FINITES_NAN, [&](finites_spring& s) { s.axes[2][2] = bad; });
  }
  refuse_spring(FINITES_RANGE, [](finites_spring& s) { s.k[0] = 2e30; });
  refuse_spring(FINITES_RANGE, [](finites_spring& s) { s.axes[0][0] = 2e30; });
  refuse_spring(FINITES_STIFFNESS, [](finites_spring& s) { s.k[2] = -1.0; });
  refuse_spring(FINITES_ORIENTATION, [](finites_spring& s) { s.axes[2][2] = -1.0; });
  refuse_spring(FINITES_ORIENTATION, [](finites_spring& s) { s.axes[1][1] = 1.0 + 1e-5; });
  refuse_spring(FINITES_ORIENTATION, [](finites_spring& s) { s.axes[1][0] = 1e-5; });
  refuse_spring(FINITES_ORIENTATION, [](finites_spring& s) { s.axes[0][0] = 0.0; });
}

TEST(LinksStatus, PointersAndDisplacements) {
  finites_link link{};
  finites_spring spring{};
  double u[12] = {}, F[144];
  std::fill_n(F, 144, 7.25);
  EXPECT_EQ(finites_link_stiffness(&link, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_link_forces(&link, u, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_link_forces(&link, nullptr, F), FINITES_NULL);
  EXPECT_EQ(finites_spring_stiffness(&spring, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_spring_forces(&spring, u, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_spring_forces(&spring, nullptr, F), FINITES_NULL);
  for (const double bad : {NOT_A_NUMBER, ENDLESS, 2e30}) {
    u[11] = bad;
    const finites_status status = bad == 2e30 ? FINITES_RANGE : FINITES_NAN;
    EXPECT_EQ(finites_link_forces(&link, u, F), status);
    EXPECT_EQ(finites_spring_forces(&spring, u, F), status);
  }
  EXPECT_EQ(std::vector<double>(F, F + 144), std::vector<double>(144, 7.25));
  finites_link_init(nullptr);
  finites_spring_init(nullptr);
}

TEST(LinksStatus, NothingIsAllocated) {
  if (!support::allocation_counter::available()) GTEST_SKIP() << "the sanitizer has the heap";
  seeded_random random(9505);
  const finites_link link = random_link(random, random_stiffnesses(random), 0);
  finites_spring spring{};
  double K[144];
  const support::allocation_counter counter;
  finites_link_stiffness(&link, K);
  finites_link_forces(&link, QUIET, K);
  finites_spring_stiffness(&spring, K);
  finites_spring_forces(&spring, QUIET, K);
  EXPECT_EQ(counter.count(), 0);
}
