// Trusses: the bits of the protocol, statics, and the faults of their description.
#include <cstring>
#include <functional>
#include <limits>
#include <vector>

#include "common/constants.h"
#include "comparison.h"
#include "finites/elements.h"
#include "gtest/gtest.h"
#include "member_cases.h"

namespace {

using plain_members::measures_of;
using plain_members::random_truss;
using support::frame_model;
using support::seeded_random;

constexpr int STEP = 0;
constexpr std::size_t ENTRIES = 36;
using matrix = std::vector<double>;

bool same_bits(const matrix& a, const matrix& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

// 3-4-5 in the plane of x and y.
finites_truss plain_truss() {
  finites_truss t;
  finites_truss_init(&t);
  t.xyz[1][0] = 3.0;
  t.xyz[1][1] = 4.0;
  t.E = 2.0e5;
  t.area = 0.01;
  t.density = 7.8;
  t.expansion = 1.0e-5;
  return t;
}

}  // namespace

TEST(PlainTrusses, BitsOfTheProtocol) {
  seeded_random random(8201);
  for (int trial = 0; trial < 2000; ++trial) {
    SCOPED_TRACE(trial);
    finites_truss t = random_truss(random);
    const finites_member_measures measures = measures_of(t);
    const plain_members::same_mass m = plain_members::find_mass(random, t.area * measures.length, GRAVITY);
    t.density = m.density;
    support::member_description d = plain_members::protocol_truss(t);
    d.weight = m.weight;
    d.axial_force = random.uniform(-30.0, 30.0);
    const bool pretensioned = random.integer(0, 1) == 0;
    if (pretensioned) {
      d.section_type = 14;
      d.pretension_stress = random.uniform(10.0, 200.0);
      t.pretension = t.area * d.pretension_stress;
    }
    frame_model model({d});
    model.set_kind(3.0);
    model.set_rotation(plain_members::rotation_of(measures));
    const support::member_matrices both = model.truss(STEP);
    matrix K(ENTRIES);
    ASSERT_EQ(finites_truss_stiffness(&t, K.data()), FINITES_OK);
    ASSERT_TRUE(same_bits(K, both.K));
    ASSERT_EQ(finites_truss_geometric_of_force(&t, d.axial_force, K.data()), FINITES_OK);
    ASSERT_TRUE(same_bits(K, both.KG));
    for (int lumped = 0; lumped < 2; ++lumped) {
      model.set_lumped_mass(lumped);
      ASSERT_EQ(finites_truss_mass(&t, lumped, K.data()), FINITES_OK);
      ASSERT_TRUE(same_bits(K, model.truss_mass()));
    }
  }
}

TEST(PlainTrusses, ForceAndLoadsOfAnInclinedTruss) {
  finites_truss t = plain_truss();
  const matrix u = {0.0, 0.0, 0.0, 0.003, 0.004, 0.1};  // 0.005 along 5
  double N = 0.0;
  ASSERT_EQ(finites_truss_axial_force(&t, u.data(), 0.0, &N), FINITES_OK);
  EXPECT_CLOSE(N, 2.0, 2.0, 10.0);
  ASSERT_EQ(finites_truss_axial_force(&t, u.data(), 100.0, &N), FINITES_OK);
  EXPECT_CLOSE(N, 0.0, 2.0, 10.0);  // it grew freely
  t.pretension = 0.5;
  ASSERT_EQ(finites_truss_axial_force(&t, u.data(), 0.0, &N), FINITES_OK);
  EXPECT_CLOSE(N, 2.5, 2.5, 10.0);

  matrix F(6);
  const double line[3] = {1.0, 2.0, -3.0};
  ASSERT_EQ(finites_truss_loads(&t, line, 0.0, F.data()), FINITES_OK);
  EXPECT_CLOSE(F, (matrix{2.5, 5.0, -7.5, 2.5, 5.0, -7.5}), 7.5, 4.0);
  ASSERT_EQ(finites_truss_loads(&t, nullptr, 100.0, F.data()), FINITES_OK);
  EXPECT_CLOSE(F, (matrix{-1.2, -1.6, 0.0, 1.2, 1.6, 0.0}), 2.0, 10.0);  // E A alpha t = 2
}

// A string of pretension P resists a transverse displacement w with P w / L; the displacement does not stretch it.
TEST(PlainTrusses, PretensionIsAString) {
  finites_truss t = plain_truss();
  t.pretension = 0.5;
  const matrix u = {0.0, 0.0, 0.0, 0.0, 0.0, 0.02};
  matrix F(6), KG(ENTRIES);
  ASSERT_EQ(finites_truss_forces(&t, u.data(), F.data()), FINITES_OK);
  EXPECT_CLOSE(F, (matrix{0.0, 0.0, -0.002, 0.0, 0.0, 0.002}), 0.002, 20.0);
  const matrix stretched = {0.0, 0.0, 0.0, 0.003, 0.004, 0.0};
  ASSERT_EQ(finites_truss_geometric(&t, stretched.data(), KG.data()), FINITES_OK);
  EXPECT_CLOSE(KG[35], 2.0 / 5.0, 0.4, 10.0);  // of the force of u alone
}

TEST(PlainTrusses, Measures) {
  const finites_member_measures m = measures_of(plain_truss());
  EXPECT_DOUBLE_EQ(m.length, 5.0);
  EXPECT_DOUBLE_EQ(m.volume, 0.05);
  EXPECT_DOUBLE_EQ(m.mass, 0.39);
  EXPECT_DOUBLE_EQ(m.axes[0][1], 0.8);
  EXPECT_DOUBLE_EQ(m.center[0], 1.5);
}

namespace {

void expect_fault(finites_status expected, const std::function<void(finites_truss&)>& spoil) {
  finites_truss t = plain_truss();
  spoil(t);
  matrix K(ENTRIES, 7.0), F(6, 7.0);
  const matrix u(6, 0.0);
  double N = 7.0;
  finites_member_measures m{};
  EXPECT_EQ(finites_truss_stiffness(&t, K.data()), expected);
  EXPECT_EQ(finites_truss_mass(&t, 1, K.data()), expected);
  EXPECT_EQ(finites_truss_geometric(&t, u.data(), K.data()), expected);
  EXPECT_EQ(finites_truss_geometric_of_force(&t, 1.0, K.data()), expected);
  EXPECT_EQ(finites_truss_forces(&t, u.data(), F.data()), expected);
  EXPECT_EQ(finites_truss_loads(&t, nullptr, 1.0, F.data()), expected);
  EXPECT_EQ(finites_truss_axial_force(&t, u.data(), 0.0, &N), expected);
  EXPECT_EQ(finites_truss_measure(&t, &m), expected);
  EXPECT_EQ(K, matrix(ENTRIES, 7.0));
  EXPECT_EQ(F, matrix(6, 7.0));
  EXPECT_EQ(N, 7.0);
}

}  // namespace

TEST(PlainTrusses, EveryFaultHasItsStatus) {
  for (double finites_truss::*field : {&finites_truss::E, &finites_truss::area, &finites_truss::density,
                                       &finites_truss::expansion, &finites_truss::pretension}) {
    expect_fault(FINITES_NAN, [&](finites_truss& t) { t.*field = std::numeric_limits<double>::quiet_NaN(); });
    expect_fault(FINITES_RANGE, [&](finites_truss& t) { t.*field = 2e30; });
  }
  expect_fault(FINITES_NAN, [](finites_truss& t) { t.xyz[0][0] = std::numeric_limits<double>::infinity(); });
  expect_fault(FINITES_COINCIDENT, [](finites_truss& t) { t.xyz[1][0] = t.xyz[1][1] = 0.0; });
  expect_fault(FINITES_MODULUS, [](finites_truss& t) { t.E = 0.0; });
  expect_fault(FINITES_DENSITY, [](finites_truss& t) { t.density = -1.0; });
  expect_fault(FINITES_SECTION, [](finites_truss& t) { t.area = 0.0; });
  finites_truss t = plain_truss();
  matrix K(ENTRIES, 7.0), F(6, 7.0), u(6, 0.0);
  const double bad[3] = {0.0, std::numeric_limits<double>::quiet_NaN(), 0.0};
  double N = 7.0;
  EXPECT_EQ(finites_truss_mass(&t, 3, K.data()), FINITES_BAD_CODE);
  EXPECT_EQ(finites_truss_loads(&t, bad, 1.0, F.data()), FINITES_NAN);
  EXPECT_EQ(finites_truss_loads(&t, nullptr, 2e30, F.data()), FINITES_RANGE);
  EXPECT_EQ(finites_truss_axial_force(&t, u.data(), bad[1], &N), FINITES_NAN);
  EXPECT_EQ(finites_truss_axial_force(&t, nullptr, 0.0, &N), FINITES_NULL);
  EXPECT_EQ(finites_truss_stiffness(nullptr, K.data()), FINITES_NULL);
  EXPECT_EQ(finites_truss_measure(&t, nullptr), FINITES_NULL);
  u[2] = bad[1];
  EXPECT_EQ(finites_truss_forces(&t, u.data(), F.data()), FINITES_NAN);
  EXPECT_EQ(F, matrix(6, 7.0));
  EXPECT_EQ(N, 7.0);
}
