// Beams: the bits of the protocol, the laws of their matrices, their measures and the faults of their description.
#include <cmath>
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

using plain_members::links_of;
using plain_members::measures_of;
using plain_members::plain_beam;
using plain_members::random_beam;
using plain_members::rotation_of;
using support::frame_model;
using support::seeded_random;

constexpr int STEP = 0;
constexpr std::size_t ENTRIES = 144;
using matrix = std::vector<double>;

bool same_bits(const matrix& a, const matrix& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

frame_model protocol_model(const finites_beam& b, double axial, double weight) {
  support::member_description m = plain_members::protocol_beam(b);
  m.axial_force = axial;
  m.weight = weight;
  return frame_model({m});
}

void set_up(frame_model& model, const finites_beam& b, double kind) {
  model.set_kind(kind);
  model.set_shear_deformation(1.0);
  model.set_rotation(rotation_of(measures_of(b)));
  const bool offsets = b.offset[0][0] != 0.0;
  model.set_second_transformation(offsets ? 2 : 0, links_of(b));
}

matrix stiffness_of(const finites_beam& b) {
  matrix K(ENTRIES);
  EXPECT_EQ(finites_beam_stiffness(&b, K.data()), FINITES_OK);
  return K;
}

matrix geometric_of(const finites_beam& b, double axial) {
  matrix KG(ENTRIES);
  EXPECT_EQ(finites_beam_geometric_of_force(&b, axial, KG.data()), FINITES_OK);
  return KG;
}

// Six motions of both nodes as one rigid body.
std::vector<matrix> rigid_motions(const finites_beam& b) {
  std::vector<matrix> all;
  for (std::size_t i = 0; i < 3; ++i) {
    matrix u(12, 0.0);
    u[i] = u[6 + i] = 1.0;
    all.push_back(u);
    matrix r(12, 0.0);
    const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
    for (std::size_t end = 0; end < 2; ++end) {
      r[6 * end + 3 + i] = 1.0;
      r[6 * end + k] = b.xyz[end][j];
      r[6 * end + j] = -b.xyz[end][k];
    }
    all.push_back(r);
  }
  return all;
}

}  // namespace

TEST(PlainBeams, BitsOfTheProtocol) {
  seeded_random random(8101);
  for (int trial = 0; trial < 2000; ++trial) {
    SCOPED_TRACE(trial);
    finites_beam b = random_beam(random);
    const finites_member_measures measures = measures_of(b);
    const plain_members::same_mass m = plain_members::find_mass(random, b.area * measures.length, GRAVITY);
    b.density = m.density;
    const double axial = random.uniform(-30.0, 30.0);
    frame_model model = protocol_model(b, axial, m.weight);
    set_up(model, b, 3.0);
    const support::member_matrices both = model.beam(STEP);
    ASSERT_TRUE(same_bits(stiffness_of(b), both.K));
    ASSERT_TRUE(same_bits(geometric_of(b, axial), both.KG));
    for (int lumped = 0; lumped < 2; ++lumped) {
      model.set_lumped_mass(lumped);
      matrix M(ENTRIES);
      ASSERT_EQ(finites_beam_mass(&b, lumped, M.data()), FINITES_OK);
      ASSERT_TRUE(same_bits(M, model.beam_mass()));
    }
  }
}

TEST(PlainBeams, RigidMotionsStressNothing) {
  seeded_random random(8102);
  for (int trial = 0; trial < 200; ++trial) {
    const finites_beam b = random_beam(random);
    const double scale = 10.0 * b.E * b.area / measures_of(b).length;
    for (const matrix& u : rigid_motions(b)) {
      matrix F(12);
      ASSERT_EQ(finites_beam_forces(&b, u.data(), F.data()), FINITES_OK);
      EXPECT_CLOSE(F, matrix(12, 0.0), scale, 50.0);
    }
  }
}

TEST(PlainBeams, MassOfARigidTranslation) {
  seeded_random random(8103);
  for (int trial = 0; trial < 100; ++trial) {
    finites_beam b = random_beam(random);
    b.density = random.uniform(1.0, 10.0);
    const finites_member_measures m = measures_of(b);
    EXPECT_CLOSE(m.mass, b.density * b.area * m.length, m.mass, 4.0);
    for (int lumped = 0; lumped < 2; ++lumped) {
      matrix M(ENTRIES), u(12, 0.0);
      ASSERT_EQ(finites_beam_mass(&b, lumped, M.data()), FINITES_OK);
      u[0] = u[6] = 0.6;
      u[1] = u[7] = 0.8;
      const bool released = b.release_y != 0 || b.release_z != 0 || b.release_axial != 0;
      if (lumped == 0 && released) continue;
      EXPECT_CLOSE(support::dot(u, support::product(M, u)), m.mass, m.mass, 100.0);
    }
  }
}

TEST(PlainBeams, MeasuresOfAnInclinedBeamWithLinks) {
  finites_beam b = plain_beam(1.0);
  b.xyz[0][0] = 1.0;
  b.xyz[0][1] = 2.0;
  b.xyz[1][0] = 4.0;
  b.xyz[1][1] = 6.5;
  b.offset[1][1] = -0.5;
  finites_member_measures m = measures_of(b);
  EXPECT_DOUBLE_EQ(m.length, 5.0);
  EXPECT_DOUBLE_EQ(m.volume, 0.1);
  EXPECT_DOUBLE_EQ(m.mass, 0.78);
  const double expected[3][3] = {{0.6, 0.8, 0.0}, {0.0, 0.0, 1.0}, {0.8, -0.6, 0.0}};
  for (int a = 0; a < 3; ++a) {
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(m.axes[a][i], expected[a][i], 1e-15);
  }
  EXPECT_DOUBLE_EQ(m.center[0], 2.5);
  EXPECT_DOUBLE_EQ(m.center[1], 4.0);
}

TEST(PlainBeams, AColumnTurnsItsYToGlobalX) {
  finites_beam b = plain_beam(1.0);
  b.xyz[1][0] = 0.0;
  b.xyz[1][2] = 3.0;
  const finites_member_measures m = measures_of(b);
  EXPECT_EQ(m.axes[1][0], 1.0);
  EXPECT_EQ(m.axes[2][1], 1.0);
  b.xyz[1][0] = 1e-9;  // upright but for rounding
  EXPECT_NEAR(measures_of(b).axes[1][0], 1.0, 1e-8);
}

TEST(PlainBeams, GeometricOfDisplacementsIsThatOfTheirForce) {
  seeded_random random(8104);
  for (int trial = 0; trial < 100; ++trial) {
    finites_beam b = random_beam(random);
    b.release_axial = 0;
    const finites_member_measures m = measures_of(b);
    const matrix u = random.vector(12, 1e-3);
    double growth = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
      for (std::size_t end = 0; end < 2; ++end) {
        const double* v = u.data() + 6 * end;
        const double moved = v[i] + v[3 + j] * b.offset[end][k] - v[3 + k] * b.offset[end][j];
        growth += (end == 0 ? -1.0 : 1.0) * m.axes[0][i] * moved;
      }
    }
    matrix KG(ENTRIES);
    ASSERT_EQ(finites_beam_geometric(&b, u.data(), KG.data()), FINITES_OK);
    const matrix expected = geometric_of(b, b.E * b.area / m.length * growth);
    EXPECT_CLOSE(KG, expected, support::max_norm(geometric_of(b, b.E * b.area / m.length * 1e-3)), 100.0);
    b.release_axial = 1;
    ASSERT_EQ(finites_beam_geometric(&b, u.data(), KG.data()), FINITES_OK);
    EXPECT_EQ(support::max_norm(KG), 0.0);
  }
}

// The buckling load of a cantilever of eight elements: pi^2 E I / (4 L^2), from above within a hundredth of a percent.
TEST(PlainBeams, AColumnBuckles) {
  constexpr std::size_t count = 8, n = 2 * (count + 1);
  const double L = 4.0;
  finites_beam b = plain_beam(L / static_cast<double>(count));
  const double euler = std::acos(-1.0) * std::acos(-1.0) * b.E * b.Iz / (4.0 * L * L);
  const matrix K = stiffness_of(b);
  const auto lowest_pivot = [&](double P) {
    const matrix KG = geometric_of(b, -P);
    std::vector<matrix> S(n, matrix(n, 0.0));
    constexpr std::size_t freedom[4] = {2, 4, 8, 10};  // y is global z here: w and the rotation about y
    for (std::size_t e = 0; e < count; ++e) {
      for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
          S[2 * e + i][2 * e + j] += K[12 * freedom[j] + freedom[i]] + KG[12 * freedom[j] + freedom[i]];
        }
      }
    }
    double lowest = std::numeric_limits<double>::infinity();
    for (std::size_t d = 2; d < n; ++d) {
      lowest = std::fmin(lowest, S[d][d]);
      for (std::size_t i = d + 1; i < n; ++i) {
        const double factor = S[i][d] / S[d][d];
        for (std::size_t j = d; j < n; ++j) S[i][j] -= factor * S[d][j];
      }
    }
    return lowest;
  };
  EXPECT_GT(lowest_pivot(0.99999 * euler), 0.0);
  EXPECT_LT(lowest_pivot(1.0001 * euler), 0.0);
}

// ------------------------------------------------------------------------------------------------ faults

namespace {

void expect_fault(finites_status expected, const std::function<void(finites_beam&)>& spoil) {
  finites_beam b = plain_beam(3.0);
  spoil(b);
  matrix K(ENTRIES, 7.0), F(12, 7.0);
  const matrix u(12, 0.0), untouched = K;
  EXPECT_EQ(finites_beam_stiffness(&b, K.data()), expected);
  EXPECT_EQ(finites_beam_mass(&b, 0, K.data()), expected);
  EXPECT_EQ(finites_beam_geometric(&b, u.data(), K.data()), expected);
  EXPECT_EQ(finites_beam_geometric_of_force(&b, 1.0, K.data()), expected);
  EXPECT_EQ(finites_beam_forces(&b, u.data(), F.data()), expected);
  finites_member_measures m{};
  EXPECT_EQ(finites_beam_measure(&b, &m), expected);
  EXPECT_EQ(K, untouched);
  EXPECT_EQ(F, matrix(12, 7.0));
  EXPECT_EQ(m.length, 0.0);
}

}  // namespace

TEST(PlainBeams, EveryFaultHasItsStatus) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  for (const double bad : {nan, infinite}) {
    expect_fault(FINITES_NAN, [&](finites_beam& b) { b.xyz[1][2] = bad; });
    expect_fault(FINITES_NAN, [&](finites_beam& b) { b.up[0] = bad; });
    expect_fault(FINITES_NAN, [&](finites_beam& b) { b.offset[1][2] = bad; });
    for (double finites_beam::*field :
         {&finites_beam::E, &finites_beam::G, &finites_beam::E2, &finites_beam::density, &finites_beam::expansion,
          &finites_beam::area, &finites_beam::Iz, &finites_beam::Iy, &finites_beam::J, &finites_beam::shear_area_y,
          &finites_beam::shear_area_z}) {
      expect_fault(FINITES_NAN, [&](finites_beam& b) { b.*field = bad; });
      expect_fault(FINITES_RANGE, [&](finites_beam& b) { b.*field = 1.1e30; });
    }
    expect_fault(FINITES_NAN, [&](finites_beam& b) { b.fixity_z[1] = bad; });
    expect_fault(FINITES_NAN, [&](finites_beam& b) { b.fixity_y[0] = bad; });
  }
  expect_fault(FINITES_RANGE, [](finites_beam& b) { b.xyz[0][1] = -1.1e30; });
  expect_fault(FINITES_RANGE, [](finites_beam& b) { b.xyz[1][0] = 1e-31; });
  expect_fault(FINITES_COINCIDENT, [](finites_beam& b) { b.xyz[1][0] = 0.0; });
  expect_fault(FINITES_COINCIDENT, [](finites_beam& b) { b.offset[1][0] = -3.0; });
  expect_fault(FINITES_ORIENTATION, [](finites_beam& b) { b.up[0] = -2.0; });
  expect_fault(FINITES_MODULUS, [](finites_beam& b) { b.E = 0.0; });
  expect_fault(FINITES_MODULUS, [](finites_beam& b) { b.G = -1.0; });
  expect_fault(FINITES_MODULUS, [](finites_beam& b) { b.E2 = -1.0; });
  expect_fault(FINITES_DENSITY, [](finites_beam& b) { b.density = -1.0; });
  for (double finites_beam::*field : {&finites_beam::area, &finites_beam::Iz, &finites_beam::Iy, &finites_beam::J}) {
    expect_fault(FINITES_SECTION, [&](finites_beam& b) { b.*field = 0.0; });
  }
  expect_fault(FINITES_SECTION, [](finites_beam& b) { b.shear_area_y = -0.1; });
  expect_fault(FINITES_SECTION, [](finites_beam& b) { b.shear_area_z = -0.1; });
  expect_fault(FINITES_FIXITY, [](finites_beam& b) { b.fixity_y[1] = 1.5; });
  expect_fault(FINITES_FIXITY, [](finites_beam& b) { b.fixity_z[0] = -0.1; });
  for (std::int32_t finites_beam::*code : {&finites_beam::release_axial, &finites_beam::release_y,
                                           &finites_beam::release_z, &finites_beam::release_torsion}) {
    expect_fault(FINITES_RELEASE, [&](finites_beam& b) { b.*code = 3; });
    expect_fault(FINITES_RELEASE, [&](finites_beam& b) { b.*code = -1; });
  }
}

TEST(PlainBeams, FaultsOfTheOtherArguments) {
  const finites_beam b = plain_beam(3.0);
  matrix K(ENTRIES, 7.0), u(12, 0.0), F(12, 7.0);
  EXPECT_EQ(finites_beam_stiffness(nullptr, K.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_stiffness(&b, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_beam_mass(nullptr, 0, K.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_mass(&b, 0, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_beam_mass(&b, 2, K.data()), FINITES_BAD_CODE);
  EXPECT_EQ(finites_beam_geometric(&b, nullptr, K.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_geometric_of_force(&b, 1.0, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_beam_geometric_of_force(&b, std::numeric_limits<double>::quiet_NaN(), K.data()), FINITES_NAN);
  EXPECT_EQ(finites_beam_geometric_of_force(&b, 2e30, K.data()), FINITES_RANGE);
  EXPECT_EQ(finites_beam_forces(&b, nullptr, F.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_measure(&b, nullptr), FINITES_NULL);
  u[5] = std::numeric_limits<double>::infinity();
  EXPECT_EQ(finites_beam_forces(&b, u.data(), F.data()), FINITES_NAN);
  EXPECT_EQ(finites_beam_geometric(&b, u.data(), K.data()), FINITES_NAN);
  EXPECT_EQ(K, matrix(ENTRIES, 7.0));
  EXPECT_EQ(F, matrix(12, 7.0));
  finites_beam_init(nullptr);
}

// The edge of the range answers a number or a status, never an infinite value.
TEST(PlainBeams, TheEdgeOfTheRangeIsFinite) {
  seeded_random random(8105);
  for (int trial = 0; trial < 2000; ++trial) {
    finites_beam b = random_beam(random);
    const auto edge = [&] { return random.integer(0, 1) == 0 ? 1e30 : 1e-30; };
    b.xyz[0][0] = b.xyz[0][1] = b.xyz[0][2] = b.xyz[1][1] = b.xyz[1][2] = 0.0;
    b.xyz[1][0] = random.integer(0, 1) == 0 ? 1e30 : 1.1e-30;
    for (auto& end : b.offset) end[0] = end[1] = end[2] = 0.0;
    for (double* value : {&b.E, &b.G, &b.area, &b.Iz, &b.Iy, &b.J, &b.shear_area_y, &b.shear_area_z}) *value = edge();
    matrix K(ENTRIES, 7.0);
    const finites_status status = finites_beam_stiffness(&b, K.data());
    EXPECT_TRUE(status == FINITES_OK || status == FINITES_RESULT) << status;
    for (const double k : K) EXPECT_TRUE(std::isfinite(k));
  }
}
