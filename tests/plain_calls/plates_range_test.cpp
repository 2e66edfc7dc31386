// plates_range_test.cpp: what the checks let through has finite matrices, forces and loads, at the ends of the range
// too; results and the load at a point say FINITES_RESULT where theirs are not.
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "finites/elements.h"
#include "gtest/gtest.h"
#include "plate_subjects.h"

namespace {

using support::seeded_random;
using vector = std::vector<double>;

constexpr int PLATES = 20000;

// Numbers at both ends of the range, near 1, or anywhere between.
double extreme(seeded_random& random) {
  switch (random.integer(0, 4)) {
    case 0: return 1e30;
    case 1: return 1.0000001e-30;
    case 2: return 1.0;
    default: return random.log_uniform(1e-30, 1e30);
  }
}

double with_sign(seeded_random& random, double x) { return random.integer(0, 1) == 0 ? x : -x; }

// A corner drawn near the limits of degeneration on any scale, warped or not.
void draw_shape(seeded_random& random, finites_plate& p) {
  p.nodes = random.integer(3, 4);
  const double a = 0.3 * extreme(random), ratio = random.integer(0, 1) == 0 ? 1.0 : random.log_uniform(1e-12, 1.0);
  const double x[4] = {0.0, 1.0, p.nodes == 3 ? random.uniform(0.0, 1.0) : random.log_uniform(1e-12, 1.0), 0.0};
  const double y[4] = {0.0, 0.0, 1.0, 1.0};
  for (int m = 0; m < 4; ++m) {
    p.xyz[m][0] = a * x[m];
    p.xyz[m][1] = a * ratio * y[m];
    p.xyz[m][2] = m == 2 ? a * random.uniform(0.0, 1.0) * random.integer(0, 1) : 0.0;
  }
  if (random.integer(0, 1) == 0) return;
  for (std::size_t i = 0; i < 3; ++i) {
    const double d = with_sign(random, extreme(random));
    for (auto& offset : p.offset) offset[i] = d;
  }
}

void draw_section(seeded_random& random, finites_plate& p) {
  const int theories[] = {FINITES_THICK, FINITES_THIN, FINITES_MEMBRANE, FINITES_MEMBRANE_REDUCED};
  p.theory = theories[random.integer(0, 3)];
  p.orthotropic = random.integer(0, 1);
  for (const auto field :
       {&finites_plate::thickness, &finites_plate::E, &finites_plate::density, &finites_plate::expansion,
        &finites_plate::E2, &finites_plate::G12, &finites_plate::G13, &finites_plate::expansion2, &finites_plate::angle,
        &finites_plate::twist_factor, &finites_plate::inplane_shear_factor, &finites_plate::membrane_factor,
        &finites_plate::bending_factor, &finites_plate::shear_factor, &finites_plate::mass_factor}) {
    p.*field = extreme(random);
  }
  p.G23 = p.G13 * random.log_uniform(1e-10, 1e10);
  const double nu[] = {-1.0 + 1e-15, 0.3, 0.5};
  p.nu = nu[random.integer(0, 2)];
  // nu12 nu21 up to 1.
  if (p.orthotropic == 1) p.nu = random.uniform(0.0, 1.0) * std::sqrt(p.E / p.E2);
}

void expect_finite(const char* what, const vector& values, int count) {
  for (int i = 0; i < count; ++i) ASSERT_TRUE(std::isfinite(values[static_cast<std::size_t>(i)])) << what;
}

// Returns whether the results had a finite answer.
bool compute_all(seeded_random& random, const finites_plate& p) {
  const auto draw = [&random](int count) {
    vector values;
    for (int i = 0; i < count; ++i) values.push_back(with_sign(random, extreme(random)));
    return values;
  };
  const int n = 6 * p.nodes;
  vector K(24 * 24), F(24);
  double forces[4][6];
  for (auto& f : forces) {
    for (double& value : f) value = with_sign(random, extreme(random));
  }
  const vector u = draw(24), q = draw(6), t = draw(2);
  EXPECT_EQ(finites_plate_stiffness(&p, K.data()), FINITES_OK);
  expect_finite("stiffness", K, n * n);
  EXPECT_EQ(finites_plate_mass(&p, K.data()), FINITES_OK);
  expect_finite("mass", K, n * n);
  EXPECT_EQ(finites_plate_geometric(&p, u.data(), K.data()), FINITES_OK);
  expect_finite("geometric", K, n * n);
  EXPECT_EQ(finites_plate_geometric_of_forces(&p, forces, K.data()), FINITES_OK);
  expect_finite("geometric of forces", K, n * n);
  EXPECT_EQ(finites_plate_forces(&p, u.data(), F.data()), FINITES_OK);
  expect_finite("forces", F, n);
  EXPECT_EQ(finites_plate_surface_load(&p, &q[0], &q[3], F.data()), FINITES_OK);
  expect_finite("surface load", F, n);
  EXPECT_EQ(finites_plate_body_load(&p, &q[0], F.data()), FINITES_OK);
  expect_finite("body load", F, n);
  EXPECT_EQ(finites_plate_temperature_load(&p, t[0], t[1], F.data()), FINITES_OK);
  expect_finite("temperature load", F, n);
  if (finites_plate_point_load(&p, &q[0], &q[3], nullptr, F.data()) == FINITES_OK) expect_finite("point load", F, n);
  finites_plate_measures size;
  EXPECT_EQ(finites_plate_measure(&p, &size), FINITES_OK);
  EXPECT_GT(size.area, 0.0);
  EXPECT_TRUE(std::isfinite(size.area) && std::isfinite(size.volume) && std::isfinite(size.mass));
  finites_location location;
  EXPECT_EQ(finites_plate_locate(&p, &q[0], &location), FINITES_OK);
  EXPECT_TRUE(std::isfinite(location.distance));
  finites_plate_results results;
  if (finites_plate_result(&p, u.data(), t.data(), &results) != FINITES_OK) return false;
  EXPECT_TRUE(std::isfinite(results.node[0].top.von_mises));
  return true;
}

}  // namespace

TEST(PlateRange, WhatIsLetThroughHasFiniteAnswers) {
  seeded_random random(31);
  int through = 0, with_results = 0;
  for (int i = 0; i < PLATES && !HasFailure(); ++i) {
    finites_plate p;
    finites_plate_init(&p);
    draw_shape(random, p);
    draw_section(random, p);
    finites_plate_measures size;
    if (finites_plate_measure(&p, &size) != FINITES_OK) continue;
    ++through;
    if (compute_all(random, p)) ++with_results;
  }
  EXPECT_GT(through, PLATES / 5);
  EXPECT_GT(with_results, through / 2);
}

// A rotation of 1e30 on sides of 1e-29 in a plate of 1e30, with 1 - nu^2 of 2e-15: the stress is 1e160, its square
// overflows. The forces do not.
TEST(PlateRange, SquaresOfStressesOverflow) {
  finites_plate p = subjects::rectangle(4, FINITES_THIN, 2e-29, 1e-29);
  p.thickness = p.E = 1e30;
  p.nu = -1.0 + 1e-15;
  double u[24] = {}, F[24];
  u[2] = 1e30;
  EXPECT_EQ(finites_plate_forces(&p, u, F), FINITES_OK);
  finites_plate_results results;
  results.nodes = -7;
  results.node[0].top.von_mises = 3.0;
  EXPECT_EQ(finites_plate_result(&p, u, nullptr, &results), FINITES_RESULT);
  EXPECT_EQ(results.nodes, -7);
  EXPECT_EQ(results.node[0].top.von_mises, 3.0);
  u[2] = 1e-30;
  EXPECT_EQ(finites_plate_result(&p, u, nullptr, &results), FINITES_OK);
  EXPECT_EQ(results.nodes, 4);
}

// The natural coordinates of a point far outside are found by iteration, which leaves the range at some distance.
TEST(PlateRange, PointsFarOutside) {
  finites_plate p = subjects::rectangle(4, FINITES_THICK, 2.0, 1.0);
  p.xyz[2][0] = 1.7;
  p.xyz[3][1] = 1.3;
  const double force[3] = {1.0, 1.0, 1.0};
  int beyond = 0;
  for (double d = 1.0; d < 1e30; d *= 10.0) {
    const double point[3] = {d, -0.7 * d, 0.3 * d};
    vector F(24, -7.0);
    const finites_status status = finites_plate_point_load(&p, point, force, nullptr, F.data());
    if (status == FINITES_OK) {
      expect_finite("point load", F, 24);
      continue;
    }
    EXPECT_EQ(status, FINITES_RESULT);
    EXPECT_EQ(F, vector(24, -7.0));
    EXPECT_GT(d, 1e6);
    ++beyond;
  }
  EXPECT_GT(beyond, 0);
}
