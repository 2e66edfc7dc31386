// engine_test.cpp: what the thick triangle does beside the thin one: mass, limits of the section.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"
#include "shells/common/surface_points.h"

using shell_reference::largest;
using shell_reference::listed;
using support::range;
using support::seeded_random;

TEST(ThickTriangleEngine, MassIsThatOfTheThinTriangle) {
  seeded_random random(525);
  support::plate_description d = random_element(random, isotropic_subject(11));
  d.thickness = 1.5;  // a rotary term would show
  std::vector<double> M[2];
  for (const int formulation : {0, 1}) {
    d.formulation = formulation;
    element_call call(d);
    call.LOADS(LOAD_DENSITY) = 0.5;
    call.run(2);
    M[formulation] = call.matrix_values();
  }
  EXPECT_EQ(M[0], M[1]);
}

TEST(ThickTriangleEngine, WithoutShearModifierHasNoShearForceButAShearStrain) {
  // No division by zero: the energy is dropped, and the sides stay those of a normal plate.
  seeded_random random(526);
  support::plate_description d = random_element(random, isotropic_subject(11));
  d.modifier_shear = 0.0;
  element_call call(d);
  call.U = random.vector(24, 1e-2);
  call.run(5);
  for (int p = 1; p <= 4; ++p) {
    for (const std::vector<double>& R : {call.point_record(p), call.node_record(std::min(p, 3))}) {
      EXPECT_EQ(columns(R, 45, 4), std::vector<double>(4, 0.0));
      EXPECT_GT(std::fabs(R[42]) + std::fabs(R[43]), 0.0);
      for (int i = 0; i < 62; ++i) EXPECT_TRUE(std::isfinite(R[static_cast<std::size_t>(i)])) << i + 1;
    }
  }
  call.run(1);
  const shell_reference::matrix expected = call.reference.to_global_matrix(call.reference.stiffness());
  EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 100);
}

TEST(ThickTriangleEngine, ShearModifierOfAGeneralSectionOfZeroTravelsOn) {
  seeded_random random(527);
  support::plate_description d = random_element(random, subjects_of(11)[1]);
  d.modifier_shear = 0.0;
  element_call call(d);
  call.run(1);
  EXPECT_FALSE(std::isfinite(call.matrix(18 * 2 + 3)));
  EXPECT_EQ(call.matrix.changed(), range(1, 324));
}

TEST(ThickTriangleEngine, VeryThinPlateIsTheKirchhoffTriangle) {
  // h / L of 1e-4: the ratios are about 1e-8, and so is what the two stiffnesses differ by.
  seeded_random random(528);
  for (int trial = 0; trial < 10; ++trial) {
    support::plate_description d = random_element(random, isotropic_subject(11));
    d.thickness = 1e-4;
    d.modifier_membrane = 0.0;
    d.modifier_bending = d.modifier_shear = 1.0;
    std::vector<double> K[2];
    for (const int formulation : {0, 1}) {
      d.formulation = formulation;
      element_call call(d);
      call.run(1);
      K[formulation] = call.matrix_values();
    }
    EXPECT_WITHIN(K[0], K[1], support::max_norm(K[1]), 1e-5);
    EXPECT_NE(K[0], K[1]);
  }
}

TEST(ThickTriangleEngine, CentroidHasANegativeWeight) {
  // The four-point rule of every integral: on a constant field the weights add up to the area, whatever their signs.
  EXPECT_EQ(shell_reference::element_rule(3)[0].weight, -0.28125);
  for (int p = 0; p < 4; ++p) {
    EXPECT_EQ(TRI_RULE_FOUR[p].xi, shell_reference::element_rule(3)[static_cast<std::size_t>(p)].xi);
    EXPECT_EQ(TRI_RULE_FOUR[p].eta, shell_reference::element_rule(3)[static_cast<std::size_t>(p)].eta);
    EXPECT_EQ(TRI_RULE_FOUR[p].weight, shell_reference::element_rule(3)[static_cast<std::size_t>(p)].weight);
  }
}
