// rule_digits_test.cpp: the weights of a triangle have fifteen digits and add up to 0.500000000000001; what is summed
// over the points carries that, whatever it integrates.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"

namespace {

constexpr double SUM_OF_WEIGHTS = 0.500000000000001;  // 9 units of the last place above the area

// The unit right triangle with E = 1, nu = 0, h = 1: integrals of one.
support::plate_description unit_triangle(int formulation, bool general) {
  support::plate_description d;
  d.formulation = formulation;
  d.nodes = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
  d.thickness = d.young = 1.0;
  d.poisson = 0.0;
  if (general) {
    d.material.ortho = 1;
    d.material.E1 = d.material.E2 = 1.0F;
    d.material.G12 = d.material.G13 = d.material.G23 = 0.5F;
  }
  return d;
}

// Every case of the three kinds of triangles with both forms of the section.
template <class CHECK>
void for_triangles(CHECK check) {
  for (const int formulation : {0, 1, 2}) {
    for (const bool general : {false, true}) {
      SCOPED_TRACE(::testing::Message() << "formulation " << formulation << (general ? " general" : " isotropic"));
      check(unit_triangle(formulation, general), general);
    }
  }
}

void expect_sum_of_weights(double actual) { EXPECT_CLOSE(actual, SUM_OF_WEIGHTS, 0.5, 4); }

}  // namespace

TEST(RuleDigits, StandInTheMembraneStiffnessOfGeneralSectionsAlone) {
  // Strains of one: K(u2, u2) = E h times the integral of one. The isotropic form is closed.
  for_triangles([](const support::plate_description& d, bool general) {
    element_call call(d);
    call.run(1);
    if (general) {
      expect_sum_of_weights(call.matrix(18 * 6 + 7));
    } else {
      EXPECT_EQ(call.matrix(18 * 6 + 7), 0.5);
    }
  });
}

TEST(RuleDigits, StandInTheForcesOfBothForms) {
  for_triangles([](const support::plate_description& d, bool /*general*/) {
    element_call call(d);
    call.U[6] = 1.0;
    call.run(33);
    expect_sum_of_weights(call.F(7));
  });
}

TEST(RuleDigits, StandInLoadsAcrossTheElement) {
  // The functions of the deflections add up to one; loads in the plane are a closed third.
  for_triangles([](const support::plate_description& d, bool /*general*/) {
    element_call call(d);
    call.set(LOAD_SURFACE_LOCAL, {6.0, 0.0, 1.0});
    call.run(4);
    expect_sum_of_weights(call.F(3) + call.F(9) + call.F(15));
    EXPECT_EQ(call.F(1) + call.F(7) + call.F(13), 3.0);
  });
}

TEST(RuleDigits, StandInTheMassAcrossTheElement) {
  for_triangles([](const support::plate_description& d, bool /*general*/) {
    element_call call(d);
    call.LOADS(LOAD_DENSITY) = 1.0;
    call.run(2);
    double sum = 0.0;
    for (const int j : {3, 9, 15}) {
      for (const int i : {3, 9, 15}) sum += call.matrix(18 * (j - 1) + i);
    }
    expect_sum_of_weights(sum);
  });
}

TEST(RuleDigits, StandInThermalForcesOfGeneralSectionsAlone) {
  for_triangles([](const support::plate_description& d, bool general) {
    support::plate_description expanding = d;
    expanding.expansion = 1.0;
    expanding.material.ALPHA1 = expanding.material.ALPHA2 = 1.0F;
    element_call call(expanding);
    call.LOADS(LOAD_TEMPERATURE) = 1.0;
    call.run(4);
    if (general) {
      expect_sum_of_weights(call.F(7));
    } else {
      EXPECT_EQ(call.F(7), 0.5);
    }
  });
}
