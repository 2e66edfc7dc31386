// cables_test.cpp: cables as plain calls: the bits of the protocol, textbook catenaries, the shape against integration
// of the law of the cable, the tangent against differences, and what they refuse.
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
using support::seeded_random;

constexpr int ELEMENTS = 2000;
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

// chord / unstressed length from slack to taut; loads in any direction.
finites_cable random_cable(seeded_random& random) {
  finites_cable cable;
  finites_cable_init(&cable);
  double chord = 0.0, load = 0.0;
  for (int i = 0; i < 3; ++i) {
    cable.xyz[0][i] = random.uniform(-50, 50);
    cable.xyz[1][i] = random.uniform(-50, 50);
    cable.load[i] = random.uniform(-1, 1);
    chord += std::pow(cable.xyz[1][i] - cable.xyz[0][i], 2);
    load += std::pow(cable.load[i], 2);
  }
  cable.length = std::sqrt(chord) / random.uniform(0.3, 1.02);
  cable.E = random.log_uniform(1e4, 2e11);
  cable.area = random.log_uniform(1e-4, 1e-1);
  cable.strain = random.uniform(-1e-3, 1e-3);
  // Weights of 1/10000 to 1/10 of the stiffness.
  const double size = cable.E * cable.area * random.log_uniform(1e-4, 1e-1) / cable.length / std::sqrt(load);
  for (double& w : cable.load) w *= size;
  return cable;
}

struct forces {
  std::vector<double> F = std::vector<double>(6, NOT_A_NUMBER);
  double tension[2] = {NOT_A_NUMBER, NOT_A_NUMBER};
};

forces solve(const finites_cable& cable) {
  forces out;
  EXPECT_EQ(finites_cable_forces(&cable, out.F.data(), out.tension), FINITES_OK);
  return out;
}

std::vector<double> stiffness(const finites_cable& cable) {
  std::vector<double> K(36, NOT_A_NUMBER);
  EXPECT_EQ(finites_cable_stiffness(&cable, K.data()), FINITES_OK);
  return K;
}

struct place {
  double xyz[3], tension;
};

place at(const finites_cable& cable, double s) {
  place p{};
  EXPECT_EQ(finites_cable_shape(&cable, 1, &s, &p.xyz, &p.tension), FINITES_OK);
  return p;
}

double norm(const double* a) { return std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]); }

double weight(const finites_cable& cable) { return norm(cable.load) * cable.length; }

using real = long double;

// x(s) - x1 by Gauss of five points on panels of the unstressed length, from the tension at the first node.
std::vector<double> integrated(const finites_cable& cable, const forces& f, double s) {
  constexpr int PANELS = 4000;
  const real inner = std::sqrt(5 - 2 * std::sqrt(10.0L / 7)) / 3, outer = std::sqrt(5 + 2 * std::sqrt(10.0L / 7)) / 3;
  const real point[5] = {-outer, -inner, 0, inner, outer};
  const real heavy = (322 + 13 * std::sqrt(70.0L)) / 900, light = (322 - 13 * std::sqrt(70.0L)) / 900;
  const real share[5] = {light, heavy, 128.0L / 225, heavy, light};
  const real EA = real(cable.E) * real(cable.area), panel = real(s) / PANELS;
  real x[3] = {};
  for (int p = 0; p < PANELS; ++p) {
    for (int g = 0; g < 5; ++g) {
      const real here = panel * (p + (1 + point[g]) / 2);
      real t[3], T = 0;
      for (std::size_t i = 0; i < 3; ++i) {
        t[i] = -real(f.F[i]) - real(cable.load[i]) * here;
        T += t[i] * t[i];
      }
      T = std::sqrt(T);
      for (std::size_t i = 0; i < 3; ++i) x[i] += share[g] * panel / 2 * (1 + real(cable.strain) + T / EA) * t[i] / T;
    }
  }
  return {static_cast<double>(x[0]), static_cast<double>(x[1]), static_cast<double>(x[2])};
}

// A cable of unstressed length L0 between supports at one level, load w downwards along -Y.
finites_cable level_cable(double span, double L0, double w, double EA) {
  finites_cable cable{};
  cable.xyz[1][0] = span;
  cable.length = L0;
  cable.E = EA;
  cable.area = 1.0;
  cable.load[1] = -w;
  return cable;
}

}  // namespace

TEST(CablesBothDoors, Stiffness) {
  seeded_random random(9601);
  for (int e = 0; e < ELEMENTS; ++e) {
    const finites_cable cable = random_cable(random);
    member_description m;
    m.family = member_family::cable;
    m.area = cable.area;
    m.e1 = cable.E;
    m.unstressed_length = cable.length;
    m.node1 = {cable.xyz[0][0], cable.xyz[0][1], cable.xyz[0][2]};
    m.node2 = {cable.xyz[1][0], cable.xyz[1][1], cable.xyz[1][2]};
    m.loads.assign(13, NOT_A_NUMBER);
    std::copy_n(cable.load, 3, m.loads.begin() + 6);
    m.loads[12] = cable.strain;
    frame_model model({m});
    const support::cable_answer answer = model.cable(2, 1);
    ASSERT_EQ(answer.ierr, 0);
    EXPECT_EQ(std::memcmp(stiffness(cable).data(), answer.K.data(), 36 * sizeof(double)), 0) << e;
  }
}

// The inextensible catenary between supports at one level: L0 = (2 H / w) sinh(w span / (2 H)), the sag is
// (H / w) (cosh(w span / (2 H)) - 1), the tension at the supports H cosh(w span / (2 H)).
TEST(CablesLaws, TextbookCatenary) {
  const double span = 100.0, w = 20.0;
  for (const double H : {200.0, 500.0, 1000.0, 5000.0}) {
    const double half = w * span / (2 * H);
    finites_cable cable = level_cable(span, 2 * H / w * std::sinh(half), w, 1e14);
    const forces f = solve(cable);
    EXPECT_WITHIN(f.F, (std::vector<double>{-H, w * cable.length / 2, 0, H, w * cable.length / 2, 0}), H, 1e-7);
    EXPECT_WITHIN(f.tension[0], H * std::cosh(half), H, 1e-7);
    const place middle = at(cable, cable.length / 2);
    EXPECT_WITHIN(middle.tension, H, H, 1e-7);
    EXPECT_WITHIN(std::vector<double>(middle.xyz, middle.xyz + 3),
                  (std::vector<double>{span / 2, -H / w * (std::cosh(half) - 1), 0}), span, 1e-8);
    // Any other place: from the middle the arc a reaches x = (H / w) asinh(w a / H).
    for (const double share : {0.1, 0.3, 0.8}) {
      const double arc = (share - 0.5) * cable.length;
      const place p = at(cable, share * cable.length);
      EXPECT_WITHIN(p.xyz[0] - span / 2, H / w * std::asinh(w * arc / H), span, 1e-8);
      EXPECT_WITHIN(p.tension, std::hypot(H, w * arc), H, 1e-7);
    }
  }
}

// The elastic catenary (Irvine, 1981, section 1.3): span = H L0 / EA + (2 H / w) asinh(w L0 / (2 H)).
TEST(CablesLaws, ElasticCatenary) {
  const double L0 = 100.0, w = 20.0, EA = 2e4;
  for (const double H : {200.0, 1000.0, 5000.0}) {
    const double span = H * L0 / EA + 2 * H / w * std::asinh(w * L0 / (2 * H));
    const finites_cable cable = level_cable(span, L0, w, EA);
    EXPECT_WITHIN(solve(cable).F, (std::vector<double>{-H, w * L0 / 2, 0, H, w * L0 / 2, 0}), H, 1e-11);
    const double sag = w * L0 * L0 / (8 * EA) + H / w * (std::hypot(1.0, w * L0 / (2 * H)) - 1);
    EXPECT_WITHIN(at(cable, L0 / 2).xyz[1], -sag, L0, 1e-12);
  }
}

TEST(CablesLaws, ForcesBalanceTheLoad) {
  seeded_random random(9602);
  for (int e = 0; e < 200; ++e) {
    const finites_cable cable = random_cable(random);
    const forces f = solve(cable);
    const double scale = std::fmax(f.tension[0], weight(cable));
    for (std::size_t i = 0; i < 3; ++i) EXPECT_CLOSE(f.F[i] + f.F[3 + i], -cable.load[i] * cable.length, scale, 20);
    EXPECT_CLOSE(f.tension[0], norm(f.F.data()), scale, 20);
    EXPECT_CLOSE(f.tension[1], norm(f.F.data() + 3), scale, 20);
    double alone[6];
    ASSERT_EQ(finites_cable_forces(&cable, alone, nullptr), FINITES_OK);
    EXPECT_EQ(std::vector<double>(alone, alone + 6), f.F);
  }
}

TEST(CablesLaws, ShapeIsTheIntegralOfTheLaw) {
  seeded_random random(9603);
  for (int e = 0; e < 60; ++e) {
    finites_cable cable = random_cable(random);
    if (e % 6 == 5) {  // light and taut: the load hardly bends it
      for (double& w : cable.load) w *= 1e-9;
      cable.length *= 0.29;
    }
    const forces f = solve(cable);
    for (const double share : {0.0, 1e-6, 0.25, 0.7, 1.0}) {
      const place p = at(cable, share * cable.length);
      const std::vector<double> expected = integrated(cable, f, share * cable.length);
      for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_WITHIN(p.xyz[i] - cable.xyz[0][i], expected[i], cable.length, 1e-11) << e << ", " << share;
      }
    }
    const place end = at(cable, cable.length);
    EXPECT_WITHIN(std::vector<double>(end.xyz, end.xyz + 3), std::vector<double>(cable.xyz[1], cable.xyz[1] + 3),
                  cable.length, 1e-10);
    EXPECT_WITHIN(end.tension, f.tension[1], f.tension[0] + f.tension[1], 1e-13);
    EXPECT_WITHIN(at(cable, 0.0).tension, f.tension[0], f.tension[0], 1e-14);
  }
}

// Straight along the load: x = s (1 + (t0 + t) / (2 EA)), hung at its upper end below which nothing holds it but the
// lower node.
TEST(CablesLaws, AnUprightTautCable) {
  finites_cable cable{};
  cable.E = 1000.0;
  cable.area = 2.0;
  cable.length = 10.0;
  cable.load[2] = -3.0;
  // Tension 20 below and 50 above: mean 35, elongation 35 * 10 / 2000.
  cable.xyz[0][2] = 10.0 + 0.175;
  const forces f = solve(cable);
  EXPECT_WITHIN(f.F, (std::vector<double>{0, 0, 50, 0, 0, -20}), 50.0, 1e-10);
  const place middle = at(cable, 5.0);
  EXPECT_WITHIN(middle.xyz[2], 10.175 - 5 - 5 * 42.5 / 2000, 10.0, 1e-11);
  EXPECT_WITHIN(middle.tension, 35.0, 50.0, 1e-10);
}

// Slack and with both nodes in one place: a loop that hangs half its length deep, folded.
TEST(CablesLaws, ALoopFromOneNode) {
  finites_cable cable = level_cable(0.0, 8.0, 5.0, 1e9);
  const forces f = solve(cable);
  EXPECT_WITHIN(f.F, (std::vector<double>{0, 20, 0, 0, 20, 0}), 20.0, 1e-12);
  EXPECT_WITHIN(at(cable, 4.0).xyz[1], -4.0, 4.0, 1e-6);
  EXPECT_WITHIN(at(cable, 6.0).xyz[1], -2.0, 4.0, 1e-6);
  EXPECT_WITHIN(at(cable, 8.0).xyz[1], 0.0, 4.0, 1e-12);
}

// Without load: a bar.
TEST(CablesLaws, ATautCableWithoutLoadIsABar) {
  finites_cable cable = level_cable(10.2, 10.0, 0.0, 5000.0);
  EXPECT_WITHIN(solve(cable).F, (std::vector<double>{-100, 0, 0, 100, 0, 0}), 100.0, 1e-12);
  EXPECT_WITHIN(at(cable, 2.5).xyz[0], 2.55, 10.0, 1e-14);
  EXPECT_WITHIN(at(cable, 2.5).tension, 100.0, 100.0, 1e-12);
  const std::vector<double> K = stiffness(cable);
  EXPECT_WITHIN(K[0], 500.0, 500.0, 1e-12);       // EA / L0
  EXPECT_WITHIN(K[7], 100 / 10.2, 500.0, 1e-12);  // of the string, T / L
}

TEST(CablesLaws, StrainIsALongerCable) {
  finites_cable warm = level_cable(90.0, 100.0, 20.0, 2e6), longer = warm;
  warm.strain = 0.01;
  longer.length = 101.0;
  longer.load[1] = -20.0 / 1.01;
  longer.E = 2e6 * 1.01;  // (1 + e + T/EA) ds = (1 + T / ((1 + e) EA)) (1 + e) ds
  EXPECT_WITHIN(solve(warm).F, solve(longer).F, 1000.0, 1e-13);
}

TEST(CablesLaws, StiffnessIsTheDerivativeOfTheForces) {
  seeded_random random(9604);
  for (int e = 0; e < 60; ++e) {
    const finites_cable cable = random_cable(random);
    const std::vector<double> K = stiffness(cable);
    const double step = 1e-5 * cable.length, size = support::max_norm(K);
    EXPECT_WITHIN(K, support::transposed(K), size, 1e-14);
    for (int j = 0; j < 6; ++j) {
      // Central differences of fourth order.
      std::vector<double> slope(6);
      for (const auto& [distance, share] : {std::pair<double, double>{1, 8}, {-1, -8}, {2, -1}, {-2, 1}}) {
        finites_cable moved = cable;
        (&moved.xyz[0][0])[j] += distance * step;
        const forces f = solve(moved);
        for (std::size_t i = 0; i < 6; ++i) slope[i] += share * f.F[i] / (12 * step);
      }
      EXPECT_WITHIN(std::vector<double>(K.begin() + 6 * j, K.begin() + 6 * (j + 1)), slope, size, 1e-6) << e;
    }
  }
}

namespace {

// Expects the status of all routines, which write nothing.
void expect_refused(const finites_cable* cable, finites_status status) {
  std::vector<double> out(40, 7.25);
  double s = 0.0;
  EXPECT_EQ(finites_cable_forces(cable, out.data(), out.data() + 6), status);
  EXPECT_EQ(finites_cable_stiffness(cable, out.data()), status);
  EXPECT_EQ(finites_cable_shape(cable, 1, &s, reinterpret_cast<double(*)[3]>(out.data()), out.data() + 3), status);
  EXPECT_EQ(out, std::vector<double>(40, 7.25));
}

void refuse(finites_status status, const std::function<void(finites_cable&)>& change) {
  finites_cable cable = level_cable(90.0, 100.0, 20.0, 2e6);
  change(cable);
  expect_refused(&cable, status);
}

}  // namespace

TEST(CablesStatus, OfACable) {
  expect_refused(nullptr, FINITES_NULL);
  for (const double bad : {NOT_A_NUMBER, ENDLESS, 2e30, -2e30}) {
    const finites_status status = std::fabs(bad) == 2e30 ? FINITES_RANGE : FINITES_NAN;
    refuse(status, [&](finites_cable& c) { c.xyz[1][2] = bad; });
    refuse(status, [&](finites_cable& c) { c.load[2] = bad; });
    for (const auto field : {&finites_cable::E, &finites_cable::area, &finites_cable::length, &finites_cable::strain}) {
      refuse(status, [&](finites_cable& c) { c.*field = bad; });
    }
  }
  refuse(FINITES_MODULUS, [](finites_cable& c) { c.E = 0.0; });
  refuse(FINITES_MODULUS, [](finites_cable& c) { c.E = -1.0; });
  refuse(FINITES_SECTION, [](finites_cable& c) { c.area = 0.0; });
  refuse(FINITES_LENGTH, [](finites_cable& c) { c.length = 0.0; });
  refuse(FINITES_LENGTH, [](finites_cable& c) { c.length = -2.0; });
  refuse(FINITES_LENGTH, [](finites_cable& c) { c.strain = -1.0; });
  refuse(FINITES_SLACK, [](finites_cable& c) { c.load[1] = 0.0; });
  refuse(FINITES_RESULT, [](finites_cable& c) { c.E = c.area = 1e-200; });
  // A force beyond the range of a double.
  refuse(FINITES_NO_CONVERGENCE, [](finites_cable& c) { c.E = c.area = 1e30, c.length = 1e-300; });
}

TEST(CablesStatus, PlacesAndPointers) {
  const finites_cable cable = level_cable(90.0, 100.0, 20.0, 2e6);
  std::vector<double> out(12, 7.25);
  const auto xyz = reinterpret_cast<double(*)[3]>(out.data());
  double s[3] = {1.0, 2.0, -1e-9};
  EXPECT_EQ(finites_cable_shape(&cable, 3, s, xyz, nullptr), FINITES_LENGTH);
  s[2] = 100.001;
  EXPECT_EQ(finites_cable_shape(&cable, 3, s, xyz, out.data() + 9), FINITES_LENGTH);
  s[2] = NOT_A_NUMBER;
  EXPECT_EQ(finites_cable_shape(&cable, 3, s, xyz, nullptr), FINITES_NAN);
  EXPECT_EQ(finites_cable_shape(&cable, -1, s, xyz, nullptr), FINITES_RANGE);
  EXPECT_EQ(finites_cable_shape(&cable, 2, nullptr, xyz, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_cable_shape(&cable, 2, s, nullptr, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_cable_forces(&cable, nullptr, out.data()), FINITES_NULL);
  EXPECT_EQ(finites_cable_stiffness(&cable, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_cable_shape(&cable, 0, nullptr, nullptr, nullptr), FINITES_OK);
  EXPECT_EQ(out, std::vector<double>(12, 7.25));
  EXPECT_EQ(finites_cable_shape(&cable, 2, s, xyz, nullptr), FINITES_OK);
  EXPECT_NE(out[5], 7.25);
  EXPECT_EQ(out[6], 7.25);
  finites_cable_init(nullptr);
}

TEST(CablesStatus, NothingIsAllocated) {
  if (!support::allocation_counter::available()) GTEST_SKIP() << "the sanitizer has the heap";
  const finites_cable cable = level_cable(90.0, 100.0, 20.0, 2e6);
  double F[6], tension[2], K[36], xyz[2][3];
  const double s[2] = {3.0, 60.0};
  const support::allocation_counter counter;
  finites_cable_forces(&cable, F, tension);
  finites_cable_stiffness(&cable, K);
  finites_cable_shape(&cable, 2, s, xyz, tension);
  EXPECT_EQ(counter.count(), 0);
}
