// beam_reductions_test.cpp: what reduces the stiffness of a beam: TAU_B, STIFF_REDUCTION, the removal coefficient.
#include <gtest/gtest.h>

#include "comparison.h"
#include "member_cases.h"
#include "reference_member.h"

namespace {

using member_cases::random_beam;
using reference::by_diagonal;
using reference::listed;
using reference::matrix;
using support::frame_model;
using support::member_description;
using support::seeded_random;

// The stiffness in local axes that the reference has when the four factors are multiplied so.
void expect_factors(const frame_model& model, int mode, double area, double i1, double i2) {
  member_description m = model.at(1);
  m.factor_area *= area;
  m.factor_i1 *= i1;
  m.factor_i2 *= i2;
  const matrix expected = reference::beam_stiffness(reference::properties_of(m, true), m);
  EXPECT_CLOSE(by_diagonal(model.beam(mode).K, expected), by_diagonal(listed(expected), expected), 1.0, 40);
}

member_description some_beam(unsigned seed) {
  seeded_random random(seed);
  return random_beam(random);
}

}  // namespace

TEST(BeamReductions, TauBReducesAreaAndInertiasAndLeavesTorsion) {
  member_description m = some_beam(4201);
  m.tau_b = 0.6;
  m.section_type = 4;
  m.material_kind = 1;
  frame_model model({m});
  model.set_shear_deformation(1.0);
  for (const int mode : {0, 1, 2}) expect_factors(model, mode, 0.8, 0.8 * 0.6, 0.8 * 0.6);
}

TEST(BeamReductions, TauBThatIsNotAboveZeroDoesNothing) {
  member_description m = some_beam(4202);
  for (const double tau : {0.0, -0.5}) {
    m.tau_b = tau;
    frame_model model({m});
    model.set_shear_deformation(1.0);
    expect_factors(model, 1, 1, 1, 1);
  }
}

TEST(BeamReductions, ColdFormedSectionsOfTheFirstMaterialKind) {
  member_description m = some_beam(4203);
  m.tau_b = 0.5;
  for (const double type : {4.0, 5.0}) {
    for (const double kind : {0.0, 1.0, 2.0}) {
      m.section_type = type;
      m.material_kind = kind;
      frame_model model({m});
      model.set_shear_deformation(1.0);
      model.set_cold_formed(5);
      const double c = type == 5.0 && kind == 1.0 ? 0.9 : 0.8;
      expect_factors(model, 1, c, c * 0.5, c * 0.5);
    }
  }
}

TEST(BeamReductions, StiffReductionReachesXYBendingAlone) {
  member_description m = some_beam(4204);
  const std::vector<float> factors{0.75F, 0.3F, 0.6F};
  for (const int on : {1, 2, 0, -1}) {
    for (const double index : {0.0, 1.0, 2.0, 3.0, 2.9, -1.0, 0.9}) {
      SCOPED_TRACE(::testing::Message() << "on " << on << ", index " << index);
      m.reduction_index = index;
      frame_model model({m});
      model.set_shear_deformation(1.0);
      model.set_stiff_reduction(on, factors);
      const int place = static_cast<int>(index);
      // Single precision, widened: 0.3F is not 0.3.
      const double f = on > 0 && place > 0 ? static_cast<double>(factors[static_cast<std::size_t>(place - 1)]) : 1.0;
      for (const int mode : {0, 1, 2}) expect_factors(model, mode, 1, f, 1);
    }
  }
}

TEST(BeamReductions, TauBAndStiffReductionTogether) {
  member_description m = some_beam(4205);
  m.tau_b = 0.4;
  m.reduction_index = 2;
  frame_model model({m});
  model.set_shear_deformation(1.0);
  model.set_stiff_reduction(1, {9.0F, 0.5F});
  expect_factors(model, 2, 0.8, 0.8 * 0.4 * 0.5, 0.8 * 0.4);
}

TEST(BeamReductions, AnIndexBeyondTheTableHasNoEffect) {
  for (const double index : {3.0, 2147483647.0, 1e300}) {
    member_description m = some_beam(4207);
    m.reduction_index = index;
    frame_model model({m});
    model.set_shear_deformation(1.0);
    model.set_stiff_reduction(1, {9.0F, 0.5F});
    expect_factors(model, 2, 1, 1, 1);
  }
}

TEST(BeamReductions, RemovalTakesTheAxialTermInModeZeroAlone) {
  member_description m = some_beam(4206);
  m.remove_step = -3;
  m.remove_min = 0.01;
  frame_model model({m});
  model.set_shear_deformation(1.0);
  model.set_remove_ratio(2.0F);
  expect_factors(model, 0, 0.125, 1, 1);
  for (const int mode : {1, 2, -1, 7}) expect_factors(model, mode, 1, 1, 1);
  model.record().REMOVE_STEP = -50;
  expect_factors(model, 0, 0.01, 1, 1);
  model.record().REMOVE_STEP = 0;
  expect_factors(model, 0, 1, 1, 1);
  model.record().REMOVE_STEP = 4;
  expect_factors(model, 0, 1, 1, 1);
}

TEST(BeamReductions, TheReducedInertiasGoToTheGeometricMatrix) {
  // The closed form of semi-rigid ends depends on E I: with tau and reduction it is that of a beam of lesser inertias.
  member_description m = some_beam(4207);
  m.axial_force = 50.0;
  m.fixity_y = {0.4, 0.7};
  m.fixity_z = {0.3, 0.9};
  member_description lesser = m;
  m.tau_b = 0.5;
  m.reduction_index = 1;
  lesser.factor_i1 *= 0.8 * 0.5 * 0.25;
  lesser.factor_i2 *= 0.8 * 0.5;
  std::vector<double> G[2];
  for (int i = 0; i < 2; ++i) {
    frame_model model({i == 0 ? m : lesser});
    model.set_kind(3);
    model.set_stiff_reduction(1, {0.25F});
    G[i] = model.beam(0).KG;
  }
  EXPECT_CLOSE(G[0], G[1], support::max_norm(G[1]), 20);
  EXPECT_GT(support::max_norm(G[1]), 0.0);
}

TEST(BeamReductions, EachModeWritesTheAxialCopyAndClearsThePrestress) {
  member_description m = some_beam(4208);
  m.remove_step = -1;
  for (const int kind : {0, 1, 2, 3}) {
    for (const int mode : {0, 1, 2}) {
      m.axial_force = 1000.0;
      frame_model model({m});
      model.set_kind(kind);
      model.record().K11_COPY = model.record().PRESTRESS_FORCE = -77.0;
      model.beam(mode);
      const double EA = m.e1 * m.area * m.factor_area * (mode == 0 ? 0.5 : 1.0);
      EXPECT_CLOSE(model.record().K11_COPY, EA / m.length, EA / m.length, 4);
      EXPECT_EQ(model.record().PRESTRESS_FORCE, 0.0);
    }
  }
  m.release[0] = 2;
  frame_model released({m});
  released.record().K11_COPY = -77.0;
  released.beam(0);
  EXPECT_EQ(released.record().K11_COPY, 0.0);
}
