// engine_test.cpp: what the thick quadrilateral does beside the thin one: mass, limits of the section.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"

using shell_reference::largest;
using shell_reference::listed;
using support::range;
using support::seeded_random;

TEST(ThickQuadrilateralEngine, MassIsThatOfTheThinQuadrilateral) {
  seeded_random random(545);
  support::plate_description d = random_element(random, isotropic_subject(21));
  d.thickness = 1.5;  // the rotary term is that of the Kirchhoff rotations, not of the thick ones
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

TEST(ThickQuadrilateralEngine, WithoutShearModifierHasNoShearForceButAShearStrain) {
  // No division by zero: the energy is dropped, and the sides stay those of a normal plate.
  seeded_random random(546);
  support::plate_description d = random_element(random, isotropic_subject(21));
  d.modifier_shear = 0.0;
  element_call call(d);
  call.U = random.vector(24, 1e-2);
  call.run(5);
  for (int p = 1; p <= 4; ++p) {
    for (const std::vector<double>& R : {call.point_record(p), call.node_record(p)}) {
      EXPECT_EQ(columns(R, 45, 4), std::vector<double>(4, 0.0));
      EXPECT_GT(std::fabs(R[42]) + std::fabs(R[43]), 0.0);
      for (int i = 0; i < 62; ++i) EXPECT_TRUE(std::isfinite(R[static_cast<std::size_t>(i)])) << i + 1;
    }
  }
  call.run(1);
  const shell_reference::matrix expected = call.reference.to_global_matrix(call.reference.stiffness());
  EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 100);
}

TEST(ThickQuadrilateralEngine, ShearModifierOfAGeneralSectionOfZeroTravelsOn) {
  seeded_random random(547);
  support::plate_description d = random_element(random, subjects_of(21)[1]);
  d.modifier_shear = 0.0;
  element_call call(d);
  call.run(1);
  EXPECT_FALSE(std::isfinite(call.matrix(24 * 2 + 3)));
  EXPECT_EQ(call.matrix.changed(), range(1, 576));
}

TEST(ThickQuadrilateralEngine, VeryThinPlateIsTheKirchhoffQuadrilateral) {
  // h / L of 1e-4: the ratios are about 1e-8, and so is what the two stiffnesses differ by.
  seeded_random random(548);
  for (int trial = 0; trial < 10; ++trial) {
    support::plate_description d = random_element(random, isotropic_subject(21));
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
