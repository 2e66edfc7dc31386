// Loads and sections of beams: closed forms, two halves against the whole, equilibrium, and faults.
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "comparison.h"
#include "elimination.h"
#include "finites/elements.h"
#include "gtest/gtest.h"
#include "member_cases.h"

namespace {

using plain_members::measures_of;
using plain_members::plain_beam;
using plain_members::random_beam;
using support::seeded_random;
using numbers = std::vector<double>;

constexpr double L = 4.0;

// Local axes along the global ones: up is y.
finites_beam level_beam() {
  finites_beam b = plain_beam(L);
  b.up[1] = 1.0;
  return b;
}

finites_beam_load no_load() { return {}; }

finites_beam_load line_load(double x, double y, double z) {
  finites_beam_load load{};
  load.line[0] = x;
  load.line[1] = y;
  load.line[2] = z;
  return load;
}

finites_beam_load points_of(const std::vector<finites_beam_point_load>& points) {
  finites_beam_load load{};
  load.point_count = static_cast<std::int32_t>(points.size());
  load.points = points.data();
  return load;
}

numbers loads_of(const finites_beam& b, const finites_beam_load& load) {
  numbers F(12);
  EXPECT_EQ(finites_beam_loads(&b, &load, F.data()), FINITES_OK);
  return F;
}

finites_beam_section section_of(const finites_beam& b, const numbers& u, const finites_beam_load& load, double x) {
  finites_beam_section s{};
  EXPECT_EQ(finites_beam_sections(&b, u.data(), &load, 1, &x, &s), FINITES_OK);
  return s;
}

void set_fixity(finites_beam& b, double first, double second) {
  b.fixity_z[0] = b.fixity_y[0] = first;
  b.fixity_z[1] = b.fixity_y[1] = second;
}

const numbers AT_REST(12, 0.0);

}  // namespace

// ------------------------------------------------------------------------------------------------ closed forms

TEST(BeamLoads, UniformOnRigidEnds) {
  const double M = 6.0 * L * L / 12.0;
  EXPECT_CLOSE(loads_of(level_beam(), line_load(0.0, 6.0, 0.0)), (numbers{0, 12, 0, 0, 0, M, 0, 12, 0, 0, 0, -M}), 12.0,
               4.0);
  EXPECT_CLOSE(loads_of(level_beam(), line_load(0.0, 0.0, 6.0)), (numbers{0, 0, 12, 0, -M, 0, 0, 0, 12, 0, M, 0}), 12.0,
               4.0);
  EXPECT_CLOSE(loads_of(level_beam(), line_load(6.0, 0.0, 0.0)), (numbers{12, 0, 0, 0, 0, 0, 12, 0, 0, 0, 0, 0}), 12.0,
               4.0);
}

TEST(BeamLoads, UniformOnAPropped) {
  finites_beam b = level_beam();
  set_fixity(b, 1.0, 0.0);
  EXPECT_CLOSE(loads_of(b, line_load(0.0, 6.0, 0.0)), (numbers{0, 15, 0, 0, 0, 12, 0, 9, 0, 0, 0, 0}), 15.0, 4.0);
}

// Forces and moments at a point do work on the cubic functions of the rigid ends.
TEST(BeamLoads, PointsOnRigidEnds) {
  for (const double a : {0.0, 0.7, 2.0, 3.1, L}) {
    const double t = a / L;
    const double P = 5.0, C = 3.0;
    const finites_beam_point_load point{a, {0.0, P, 0.0}, {0.0, 0.0, C}};
    const numbers v = {1 - 3 * t * t + 2 * t * t * t, L * t * (1 - t) * (1 - t), t * t * (3 - 2 * t),
                       -L * t * t * (1 - t)};
    const numbers slope = {-6 * t * (1 - t) / L, 1 - 4 * t + 3 * t * t, 6 * t * (1 - t) / L, 3 * t * t - 2 * t};
    const numbers F = loads_of(level_beam(), points_of({point}));
    const numbers bending = {F[1], F[5], F[7], F[11]};
    numbers expected(4);
    for (std::size_t i = 0; i < 4; ++i) expected[i] = P * v[i] + C * slope[i];
    EXPECT_CLOSE(bending, expected, 5.0, 20.0);
    const double b = L - a;
    EXPECT_CLOSE(F[5] - C * slope[1], P * a * b * b / (L * L), 5.0, 20.0);
  }
}

TEST(BeamLoads, AxialAndTorsionalPoints) {
  const finites_beam_point_load point{1.0, {8.0, 0.0, 0.0}, {4.0, 0.0, 0.0}};
  EXPECT_CLOSE(loads_of(level_beam(), points_of({point})), (numbers{6, 0, 0, 3, 0, 0, 2, 0, 0, 1, 0, 0}), 8.0, 8.0);
  finites_beam b = level_beam();
  b.release_axial = 1;
  b.release_torsion = 2;
  EXPECT_CLOSE(loads_of(b, points_of({point})), (numbers{0, 0, 0, 4, 0, 0, 8, 0, 0, 0, 0, 0}), 8.0, 8.0);
}

// Springs of equal fixity r at both ends: M = (q L^2 / 12) / (1 + 2 E I / (k L)), k = 3 E I r / (L (1 - r)).
TEST(BeamLoads, UniformOnSprings) {
  for (const double r : {0.1, 0.5, 0.9}) {
    finites_beam b = level_beam();
    set_fixity(b, r, r);
    const double M = 8.0 / (1.0 + 2.0 * (1.0 - r) / (3.0 * r));
    EXPECT_CLOSE(loads_of(b, line_load(0.0, 6.0, 0.0))[5], M, 8.0, 10.0);
    EXPECT_CLOSE(loads_of(b, line_load(0.0, 0.0, 6.0))[10], M, 8.0, 10.0);
  }
}

TEST(BeamLoads, Temperature) {
  finites_beam_load load{};
  load.temperature = 40.0;
  load.gradient_y = 30.0;
  load.gradient_z = 20.0;
  const double N = 2e5 * 0.02 * 1e-5 * 40.0, Mz = 2e5 * 3e-4 * 1e-5 * 30.0, My = 2e5 * 1e-4 * 1e-5 * 20.0;
  // Warm on the side of +y, the beam wants to bend away from it; the ends push it back.
  EXPECT_CLOSE(loads_of(level_beam(), load), (numbers{-N, 0, 0, 0, -My, Mz, N, 0, 0, 0, My, -Mz}), N, 10.0);
  finites_beam b = level_beam();
  set_fixity(b, 0.0, 0.0);
  const finites_beam_section s = section_of(b, AT_REST, load, 2.0);
  EXPECT_CLOSE(s.force[0], -N, N, 10.0);
  EXPECT_EQ(s.moment[2], 0.0);
  EXPECT_CLOSE(s.displacement[1], 1e-5 * 30.0 * L * L / 8.0, 1e-3, 10.0);
  EXPECT_CLOSE(s.displacement[2], 1e-5 * 20.0 * L * L / 8.0, 1e-3, 10.0);
}

TEST(BeamSections, MidspanOfASimpleBeam) {
  finites_beam b = level_beam();
  set_fixity(b, 0.0, 0.0);
  const double EI = b.E * b.Iz;
  finites_beam_section s = section_of(b, AT_REST, line_load(0.0, -6.0, 0.0), 2.0);
  const double bend = 5.0 * 6.0 * L * L * L * L / (384.0 * EI);
  EXPECT_CLOSE(s.moment[2], 12.0, 12.0, 10.0);
  EXPECT_CLOSE(s.displacement[1], -bend, bend, 20.0);
  EXPECT_CLOSE(s.rotation[2], 0.0, 6.0 * L * L * L / (24.0 * EI), 20.0);
  b.shear_area_y = 0.012;
  s = section_of(b, AT_REST, line_load(0.0, -6.0, 0.0), 2.0);
  EXPECT_CLOSE(s.displacement[1], -bend - 6.0 * L * L / (8.0 * b.G * 0.012), bend, 20.0);
  // A load along z bends about y: tension on the side of -z, My negative.
  s = section_of(b, AT_REST, line_load(0.0, 0.0, -6.0), 2.0);
  EXPECT_CLOSE(s.moment[1], -12.0, 12.0, 10.0);
  EXPECT_CLOSE(s.displacement[2], -bend * b.Iz / b.Iy, bend, 60.0);
  const finites_beam_section end = section_of(b, AT_REST, line_load(0.0, -6.0, 0.0), 0.0);
  EXPECT_CLOSE(end.force[1], -12.0, 12.0, 10.0);
  EXPECT_CLOSE(end.rotation[2], -6.0 * L * L * L / (24.0 * EI), 1.0, 20.0);
}

// A beam whose second end is free, by a pin and a released force: P L^3 / (3 E I) + P L / (G As).
TEST(BeamSections, TipOfAFreeEnd) {
  finites_beam b = level_beam();
  set_fixity(b, 1.0, 0.0);
  b.release_y = 2;
  b.shear_area_y = 0.012;
  const finites_beam_point_load tip{L, {0.0, 7.0, 0.0}, {0.0, 0.0, 0.0}};
  const double expected = 7.0 * L * L * L / (3.0 * b.E * b.Iz) + 7.0 * L / (b.G * b.shear_area_y);
  const finites_beam_section s = section_of(b, AT_REST, points_of({tip}), L);
  EXPECT_CLOSE(s.displacement[1], expected, expected, 20.0);
  EXPECT_CLOSE(s.force[1], 7.0, 7.0, 4.0);  // just before the load
  EXPECT_CLOSE(section_of(b, AT_REST, points_of({tip}), 0.0).moment[2], 28.0, 28.0, 4.0);
  EXPECT_CLOSE(loads_of(b, points_of({tip})), (numbers{0, 7, 0, 0, 0, 28, 0, 0, 0, 0, 0, 0}), 28.0, 10.0);
  // The same from the other end.
  set_fixity(b, 0.0, 1.0);
  b.release_y = 1;
  const finites_beam_point_load other{0.0, {0.0, 7.0, 0.0}, {0.0, 0.0, 0.0}};
  EXPECT_CLOSE(section_of(b, AT_REST, points_of({other}), 0.0).displacement[1], expected, expected, 20.0);
  EXPECT_CLOSE(loads_of(b, points_of({other})), (numbers{0, 0, 0, 0, 0, 0, 0, 7, 0, 0, 0, -28}), 28.0, 10.0);
}

TEST(BeamSections, JumpsAtAPoint) {
  finites_beam b = level_beam();
  const finites_beam_point_load point{1.5, {2.0, 5.0, 0.0}, {1.0, 0.0, 3.0}};
  const finites_beam_section before = section_of(b, AT_REST, points_of({point}), 1.5);
  const finites_beam_section after = section_of(b, AT_REST, points_of({point}), 1.5 + 1e-13);
  EXPECT_NEAR(after.force[0] - before.force[0], -2.0, 1e-11);
  EXPECT_NEAR(after.force[1] - before.force[1], -5.0, 1e-11);
  EXPECT_NEAR(after.moment[0] - before.moment[0], -1.0, 1e-11);
  EXPECT_NEAR(after.moment[2] - before.moment[2], -3.0, 1e-11);
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR(after.displacement[i], before.displacement[i], 1e-12);
    EXPECT_NEAR(after.rotation[i], before.rotation[i], 1e-12);
  }
}

// ------------------------------------------------------------------------------------------------ laws

namespace {

finites_beam_load random_load(seeded_random& random, double length, std::vector<finites_beam_point_load>& points) {
  finites_beam_load load{};
  for (int i = 0; i < 3; ++i) {
    load.line[i] = random.uniform(-3.0, 3.0);
    load.line_local[i] = random.uniform(-3.0, 3.0);
  }
  load.temperature = random.uniform(-50.0, 50.0);
  load.gradient_y = random.uniform(-50.0, 50.0);
  load.gradient_z = random.uniform(-50.0, 50.0);
  for (auto& p : points) {
    p.x = random.uniform(0.1, 0.9) * length;
    for (int i = 0; i < 3; ++i) {
      p.force[i] = random.uniform(-5.0, 5.0);
      p.moment[i] = random.uniform(-5.0, 5.0);
    }
  }
  load.point_count = static_cast<std::int32_t>(points.size());
  load.points = points.data();
  return load;
}

bool mechanism(const finites_beam& b) {
  return (b.release_y != 0 && b.fixity_z[0] + b.fixity_z[1] == 0.0) ||
         (b.release_z != 0 && b.fixity_y[0] + b.fixity_y[1] == 0.0);
}

// The fixity of the same spring in a beam of another length: k L / (3 E I + k L).
double fixity_of_part(double r, double share) { return r == 0.0 || r == 1.0 ? r : r * share / (1.0 - r + r * share); }

struct halves {
  finites_beam part[2];
};

halves cut(const finites_beam& b, double share) {
  halves h{{b, b}};
  const finites_member_measures m = measures_of(b);
  for (int i = 0; i < 3; ++i) {
    const double place = b.xyz[0][i] + b.offset[0][i] + share * m.length * m.axes[0][i];
    h.part[0].xyz[1][i] = h.part[1].xyz[0][i] = place;
    h.part[0].offset[1][i] = h.part[1].offset[0][i] = 0.0;
    h.part[0].up[i] = h.part[1].up[i] = m.axes[1][i];
  }
  const double of_part[2] = {share, 1.0 - share};
  for (int p = 0; p < 2; ++p) {
    finites_beam& part = h.part[p];
    part.fixity_z[p] = fixity_of_part(b.fixity_z[p], of_part[p]);
    part.fixity_y[p] = fixity_of_part(b.fixity_y[p], of_part[p]);
    part.fixity_z[1 - p] = part.fixity_y[1 - p] = 1.0;
    for (std::int32_t* code : {&part.release_axial, &part.release_y, &part.release_z, &part.release_torsion}) {
      if (*code != p + 1) *code = 0;
    }
  }
  return h;
}

numbers stiffness_of(const finites_beam& b) {
  numbers K(144);
  EXPECT_EQ(finites_beam_stiffness(&b, K.data()), FINITES_OK);
  return K;
}

// Displacements of the middle node of both halves, whose ends have u.
numbers middle_of(const halves& h, const numbers (&loads)[2], const numbers& point, const numbers& u) {
  const numbers K[2] = {stiffness_of(h.part[0]), stiffness_of(h.part[1])};
  std::vector<numbers> A(6, numbers(6));
  numbers b(6);
  for (std::size_t i = 0; i < 6; ++i) {
    b[i] = loads[0][6 + i] + loads[1][i] + point[i];
    for (std::size_t j = 0; j < 6; ++j) {
      A[i][j] = K[0][12 * (6 + j) + 6 + i] + K[1][12 * j + i];
      b[i] -= K[0][12 * j + 6 + i] * u[j] + K[1][12 * (6 + j) + i] * u[6 + j];
    }
  }
  solve(A, b);
  return b;
}

numbers turned(const finites_member_measures& m, const double* v) {
  numbers local(3, 0.0);
  for (std::size_t a = 0; a < 3; ++a) {
    for (std::size_t i = 0; i < 3; ++i) local[a] += m.axes[a][i] * v[i];
  }
  return local;
}

}  // namespace

// A beam under a force and a moment at a point, and two beams that meet at the point, where node forces act.
TEST(BeamSections, TwoPartsAreTheWhole) {
  seeded_random random(8301);
  int compared = 0;
  for (int trial = 0; trial < 400; ++trial) {
    SCOPED_TRACE(trial);
    const finites_beam b = random_beam(random);
    const finites_member_measures m = measures_of(b);
    std::vector<finites_beam_point_load> points(1);
    const finites_beam_load load = random_load(random, m.length, points);
    if (mechanism(b)) continue;
    ++compared;
    const halves h = cut(b, points[0].x / m.length);
    finites_beam_load without = load;
    without.point_count = 0;
    const numbers loads[2] = {loads_of(h.part[0], without), loads_of(h.part[1], without)};
    numbers point(6);
    for (std::size_t i = 0; i < 3; ++i) {
      point[i] = points[0].force[i];
      point[3 + i] = points[0].moment[i];
    }
    const numbers u = random.vector(12, 1e-2);
    const numbers middle = middle_of(h, loads, point, u);
    const finites_beam_section s = section_of(b, u, load, points[0].x);
    const double scale = support::max_norm(middle);
    EXPECT_WITHIN(support::values(s.displacement, 3), turned(m, middle.data()), scale, 1e-9);
    EXPECT_WITHIN(support::values(s.rotation, 3), turned(m, middle.data() + 3), scale, 1e-9);

    // The ends of the whole carry what those of the parts do.
    numbers F(12), whole(12);
    ASSERT_EQ(finites_beam_forces(&b, u.data(), whole.data()), FINITES_OK);
    const numbers all = loads_of(b, load);
    for (std::size_t p = 0; p < 2; ++p) {
      numbers v(12);
      for (std::size_t i = 0; i < 6; ++i) {
        v[6 * p + i] = u[6 * p + i];
        v[6 * (1 - p) + i] = middle[i];
      }
      ASSERT_EQ(finites_beam_forces(&h.part[p], v.data(), F.data()), FINITES_OK);
      for (std::size_t i = 6 * p; i < 6 * p + 6; ++i) {
        EXPECT_WITHIN(whole[i] - all[i], F[i] - loads[p][i], support::max_norm(whole) + support::max_norm(all), 1e-9);
      }
    }
  }
  EXPECT_GT(compared, 250);
}

// Sections at the ends are the end forces: K u less the loads.
TEST(BeamSections, EndsAreInEquilibriumWithTheNodes) {
  seeded_random random(8302);
  for (int trial = 0; trial < 400; ++trial) {
    SCOPED_TRACE(trial);
    finites_beam b = random_beam(random);
    for (auto& end : b.offset) end[0] = end[1] = end[2] = 0.0;
    if (mechanism(b)) continue;
    const finites_member_measures m = measures_of(b);
    std::vector<finites_beam_point_load> points(4);
    const finites_beam_load load = random_load(random, m.length, points);
    const numbers u = random.vector(12, 1e-2);
    numbers F(12);
    ASSERT_EQ(finites_beam_forces(&b, u.data(), F.data()), FINITES_OK);
    const numbers loads = loads_of(b, load);
    const double scale = support::max_norm(F) + support::max_norm(loads);
    for (std::size_t i = 0; i < 12; ++i) F[i] -= loads[i];
    const double places[2] = {0.0, m.length};
    finites_beam_section s[2];
    ASSERT_EQ(finites_beam_sections(&b, u.data(), &load, 2, places, s), FINITES_OK);
    for (int end = 0; end < 2; ++end) {
      const double sign = end == 0 ? -1.0 : 1.0;
      const numbers force = turned(m, F.data() + 6 * end), moment = turned(m, F.data() + 6 * end + 3);
      for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_WITHIN(sign * s[end].force[i], force[i], scale, 1e-10);
        EXPECT_WITHIN(sign * s[end].moment[i], moment[i], scale, 1e-10);
      }
    }
  }
}

// The work of the loads on the sections' displacements is that of the nodal loads (Betti): for displacements u of the
// nodes without load, F.u = integral of q.v.
TEST(BeamLoads, WorkOnTheSections) {
  seeded_random random(8303);
  for (int trial = 0; trial < 100; ++trial) {
    const finites_beam b = random_beam(random);
    if (mechanism(b)) continue;
    const finites_member_measures m = measures_of(b);
    finites_beam_load load{};
    for (double& q : load.line_local) q = random.uniform(-3.0, 3.0);
    const numbers u = random.vector(12, 1e-2);
    double work = 0.0, size = 0.0;
    constexpr double place[3] = {0.1127016653792583, 0.5, 0.8872983346207417};  // Gauss, exact to the fifth order
    constexpr double weight[3] = {5.0 / 18.0, 8.0 / 18.0, 5.0 / 18.0};
    for (int g = 0; g < 3; ++g) {
      const finites_beam_section s = section_of(b, u, no_load(), place[g] * m.length);
      for (int i = 0; i < 3; ++i) {
        work += weight[g] * m.length * load.line_local[i] * s.displacement[i];
        size += std::fabs(load.line_local[i] * s.displacement[i]) * m.length;
      }
    }
    EXPECT_WITHIN(support::dot(loads_of(b, load), u), work, size, 1e-11);
  }
}

// ------------------------------------------------------------------------------------------------ faults

TEST(BeamSections, MechanismsHaveNoAnswer) {
  finites_beam b = level_beam();
  set_fixity(b, 0.0, 0.0);
  b.release_y = 1;
  finites_beam_load load = line_load(0.0, 1.0, 0.0);
  numbers F(12, 7.0);
  EXPECT_EQ(finites_beam_loads(&b, &load, F.data()), FINITES_MECHANISM);
  EXPECT_EQ(F, numbers(12, 7.0));
  const double x = 1.0;
  finites_beam_section s{};
  s.x = 7.0;
  EXPECT_EQ(finites_beam_sections(&b, AT_REST.data(), nullptr, 1, &x, &s), FINITES_MECHANISM);
  EXPECT_EQ(s.x, 7.0);
  load = line_load(0.0, 0.0, 1.0);  // the other plane carries
  EXPECT_EQ(finites_beam_loads(&b, &load, F.data()), FINITES_OK);
  EXPECT_CLOSE(F[2], 2.0, 2.0, 4.0);
  // Turned in space, what the axes leave of the load along y is rounding.
  finites_beam turned_beam = b;
  turned_beam.xyz[1][0] = 1.3;
  turned_beam.xyz[1][1] = 2.1;
  turned_beam.xyz[1][2] = 0.7;
  turned_beam.up[0] = turned_beam.up[1] = 0.0;
  turned_beam.up[2] = 1.0;
  const finites_member_measures m = measures_of(turned_beam);
  load = line_load(m.axes[2][0], m.axes[2][1], m.axes[2][2]);
  EXPECT_EQ(finites_beam_loads(&turned_beam, &load, F.data()), FINITES_OK);
}

TEST(BeamLoads, EveryFaultHasItsStatus) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const finites_beam b = level_beam();
  const auto expect = [&](finites_status expected,
                          const std::function<void(finites_beam_load&, finites_beam_point_load&)>& spoil) {
    finites_beam_point_load point{1.0, {1.0, 1.0, 1.0}, {1.0, 1.0, 1.0}};
    finites_beam_load load{};
    load.point_count = 1;
    load.points = &point;
    spoil(load, point);
    numbers F(12, 7.0);
    const double x = 1.0;
    finites_beam_section s{};
    EXPECT_EQ(finites_beam_loads(&b, &load, F.data()), expected);
    EXPECT_EQ(finites_beam_sections(&b, AT_REST.data(), &load, 1, &x, &s), expected);
    EXPECT_EQ(F, numbers(12, 7.0));
    EXPECT_EQ(s.x, 0.0);
  };
  expect(FINITES_NAN, [&](finites_beam_load& l, auto&) { l.line[1] = nan; });
  expect(FINITES_NAN, [&](finites_beam_load& l, auto&) { l.line_local[2] = nan; });
  expect(FINITES_NAN, [&](finites_beam_load& l, auto&) { l.temperature = nan; });
  expect(FINITES_RANGE, [&](finites_beam_load& l, auto&) { l.gradient_y = 2e30; });
  expect(FINITES_NAN, [&](auto&, finites_beam_point_load& p) { p.force[0] = nan; });
  expect(FINITES_RANGE, [&](auto&, finites_beam_point_load& p) { p.moment[2] = -2e30; });
  expect(FINITES_NAN, [&](auto&, finites_beam_point_load& p) { p.x = nan; });
  expect(FINITES_LENGTH, [&](auto&, finites_beam_point_load& p) { p.x = -0.1; });
  expect(FINITES_LENGTH, [&](auto&, finites_beam_point_load& p) { p.x = L + 0.1; });
  expect(FINITES_RANGE, [&](finites_beam_load& l, auto&) { l.point_count = -1; });
  expect(FINITES_NULL, [&](finites_beam_load& l, auto&) { l.points = nullptr; });
}

TEST(BeamSections, FaultsOfTheOtherArguments) {
  const finites_beam b = level_beam();
  const finites_beam_load load = no_load();
  double x[2] = {1.0, 2.0};
  finites_beam_section s[2] = {};
  s[0].x = s[1].x = 7.0;
  numbers u(12, 0.0);
  EXPECT_EQ(finites_beam_loads(nullptr, &load, u.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_loads(&b, nullptr, u.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_loads(&b, &load, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_beam_sections(nullptr, u.data(), &load, 2, x, s), FINITES_NULL);
  EXPECT_EQ(finites_beam_sections(&b, nullptr, &load, 2, x, s), FINITES_NULL);
  EXPECT_EQ(finites_beam_sections(&b, u.data(), &load, 2, nullptr, s), FINITES_NULL);
  EXPECT_EQ(finites_beam_sections(&b, u.data(), &load, 2, x, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_beam_sections(&b, u.data(), &load, -1, x, s), FINITES_RANGE);
  EXPECT_EQ(finites_beam_sections(&b, u.data(), nullptr, 0, nullptr, nullptr), FINITES_OK);
  x[1] = L * 1.01;
  EXPECT_EQ(finites_beam_sections(&b, u.data(), &load, 2, x, s), FINITES_LENGTH);
  x[1] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(finites_beam_sections(&b, u.data(), &load, 2, x, s), FINITES_NAN);
  x[1] = std::nextafter(L, 2.0 * L);  // an end, but for rounding
  u[3] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(finites_beam_sections(&b, u.data(), &load, 2, x, s), FINITES_NAN);
  EXPECT_EQ(s[0].x, 7.0);
  u[3] = 0.0;
  EXPECT_EQ(finites_beam_sections(&b, u.data(), &load, 2, x, s), FINITES_OK);
  EXPECT_EQ(s[1].x, L);
}
