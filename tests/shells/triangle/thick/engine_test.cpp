// engine_test.cpp: what the thick triangle does beside the thin one: outputs, set-up, limits of the section.
#include "shells/engines/engines.h"

#include <cmath>
#include <limits>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"
#include "finites/records.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/geometry.h"

using shell_reference::largest;
using shell_reference::listed;
using support::range;
using support::seeded_random;
using support::values;

TEST(ThickTriangleEngine, OtherOperationsDoNothing) {
  seeded_random random(521);
  for (const element_subject& s : subjects_of(11)) {
    for (const int op : {-1, 0, 11, 41, 72, 401, 1000000}) {
      element_call call(random_element(random, s));
      call.run(op);
      EXPECT_TRUE(call.F.changed().empty() && call.matrix.changed().empty() && call.nodes.changed().empty() &&
                  call.points.changed().empty())
          << s.name << " " << op;
      EXPECT_TRUE(std::isnan(call.area) && call.point_flag1 == -7) << s.name << " " << op;
    }
  }
}

TEST(ThickTriangleEngine, OperationsWriteTheirOwnOutputsOnly) {
  seeded_random random(522);
  for (const element_subject& s : subjects_of(11)) {
    for (const int op : {1, 2, 3, 33, 4, 5, 6, 71, 8, 9, 10}) {
      element_call call(random_element(random, s));
      call.LOADS(LOAD_DENSITY) = 1.0;
      if (op == 71) call.points.set_input(std::vector<double>(360, 1.0));
      call.run(op);
      const bool matrix = op == 1 || op == 2 || op == 71, forces = op == 3 || op == 33 || op == 4 || op == 10;
      EXPECT_EQ(call.matrix.changed(), matrix ? range(1, 324) : std::vector<int>()) << s.name << " " << op;
      const int written = op == 3 || op == 33 ? 24 : 18;
      EXPECT_EQ(call.F.changed(), forces ? range(1, written) : std::vector<int>()) << s.name << " " << op;
      EXPECT_EQ(call.nodes.changed().empty(), op != 5) << s.name << " " << op;
      EXPECT_EQ(std::isnan(call.area), op != 8) << s.name << " " << op;
      EXPECT_EQ(call.point_flag1 == -7, op != 9) << s.name << " " << op;
    }
  }
}

TEST(ThickTriangleEngine, FrameAlone) {
  seeded_random random(523);
  element_call call(random_element(random, isotropic_subject(11)));
  call.run(6);
  EXPECT_CLOSE(values(call.AXES.data(), 9), listed(call.reference.axes), 1.0, 16);
}

TEST(ThickTriangleEngine, GeneralBehaviourKeepsShearWithTheNormalPart) {
  seeded_random random(524);
  for (const element_subject& s : subjects_of(11)) {
    if (s.isotropic()) continue;
    for (const int op : {1, 3, 5, 7}) {
      element_call call(random_element(random, s));
      call.run(op);
      const shell_reference::section& D = call.reference.s;
      EXPECT_EQ(values(PLATEELEM.D_MEMBRANE_SHEAR.data(), 9), std::vector<double>(9, 0.0)) << s.name;
      EXPECT_CLOSE(values(PLATEELEM.D_MEMBRANE_NORMAL.data(), 9), listed(D.membrane), largest(D.membrane), 16)
          << s.name;
      EXPECT_CLOSE(values(PLATEELEM.D_BENDING.data(), 9), listed(D.bending), largest(D.bending), 16) << s.name;
      EXPECT_CLOSE(values(PLATEELEM.D_SHEAR.data(), 4), listed(D.shear), largest(D.shear), 16) << s.name;
    }
  }
}

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

TEST(ThickTriangleEngine, ElementsWithoutAreaDoNotStopTheRun) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<std::vector<support::point>> shapes = {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
                                                           {{0, 0, 0}, {0, 0, 0}, {1, 2, 0}},
                                                           {{0, 0, 0}, {1, 0, 0}, {3, 0, 0}},
                                                           {{0, 0, 0}, {1e200, 0, 0}, {0, 1e200, 0}},
                                                           {{nan, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
  seeded_random random(529);
  for (const element_subject& s : subjects_of(11)) {
    for (const std::vector<support::point>& nodes : shapes) {
      support::plate_description d = random_element(random, s);
      d.nodes = nodes;
      for (const int op : {1, 2, 3, 33, 4, 5, 6, 7, 71, 8, 9, 10}) {
        element_call call(d);
        call.LOADS(LOAD_DENSITY) = call.LOADS(12) = call.LOADS(LOAD_TEMPERATURE) = 1.0;
        call.U = random.vector(24, 1.0);
        call.run(op);
        for (int i = -20; i <= 0; ++i) EXPECT_FALSE(call.matrix.changed(i) || call.F.changed(i));
      }
    }
  }
}
