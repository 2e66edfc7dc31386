// whole_shear_test.cpp: the kernels of the thick quadrilateral with the in-plane shear integrated with the other
// strains, split 0.
#include "whole_shear.h"

#include <cmath>

#include "comparison.h"
#include "element_stores.h"
#include "guarded_buffer.h"
#include "shells/quadrilateral/forces.h"
#include "shells/quadrilateral/thick/forces.h"
#include "shells/quadrilateral/thick/results.h"
#include "shells/quadrilateral/thick/side_constants.h"
#include "shells/quadrilateral/thick/stiffness.h"
#include "shells/quadrilateral/thin/forces.h"

using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::upper_mirrored;
using shell_reference::vector2;
using shell_reference::vector3;
using support::seeded_random;
using support::values;

TEST(ThickQuadrilateralWholeShear, StiffnessIsTheIntegralOfAllStrains) {
  seeded_random random(561);
  for (const element_subject& s : subjects_of(21)) {
    const whole_shear q(random, s);
    FLAT_PARTS<4> parts{};
    if (s.isotropic()) {
      KSTIF_QUAD_THICK_ISO(PLATEELEM, QUAD, ISO, q.call.LOADS, 0, parts);
    } else {
      SIDE_CONST_QUAD(PLATEELEM);
      KSTIF_QUAD_THICK_GEN(PLATEELEM, 0, parts);
    }
    const std::vector<double> K = packed_of(parts);
    const matrix expected = upper_mirrored(q.stiffness(QUAD_RULE_FULL, 4));
    EXPECT_CLOSE(unpacked(K), listed(expected), largest(expected), 100) << s.name;
  }
}

TEST(ThickQuadrilateralWholeShear, ForcesAreTheIntegralOfAllStrains) {
  seeded_random random(562);
  for (const element_subject& s : subjects_of(21)) {
    const whole_shear q(random, s);
    const std::vector<double> u = random_local(random);
    QUAD_U = QUAD_DISP_SPLIT(u.data());
    std::vector<double> f(24, std::nan(""));
    if (s.isotropic()) {
      FINT_QUAD_THICK_ISO(PLATEELEM, QUAD, ISO, QUAD_U, q.call.LOADS, q.frame.local, 0, f.data(), 33);
    } else {
      SIDE_CONST_QUAD(PLATEELEM);
      FINT_QUAD_THICK_GEN(PLATEELEM, QUAD, QUAD_U, q.call.LOADS, q.frame.local, 0, f.data(), 33);
    }
    const matrix K = q.stiffness(QUAD_RULE_FULL, 4);
    EXPECT_CLOSE(f, listed(K * column_of(u)), largest(K), 100) << s.name;
  }
}

TEST(ThickQuadrilateralWholeShear, RecordsShowTheShearOfTheirPoint) {
  seeded_random random(563);
  for (const element_subject& s : subjects_of(21)) {
    const whole_shear q(random, s);
    const std::vector<double> u = random_local(random);
    QUAD_U = QUAD_DISP_SPLIT(u.data());
    const double h = q.call.element.thickness;
    support::guarded_buffer nodes(360), points(360);
    if (s.isotropic()) {
      RES_QUAD_THICK_ISO(PLATEELEM, QUAD, ISO, QUAD_U, q.call.LOADS, q.frame.local, 0, nodes.data(), points.data());
    } else {
      SIDE_CONST_QUAD(PLATEELEM);
      RES_QUAD_THICK_GEN(PLATEELEM, QUAD_U, q.frame.local, 0, nodes.data(), points.data());
    }
    const shell_reference::reference_element& e = q.call.reference;
    const double strain = 20.0, stress = strain * largest(e.s.whole()) / h;
    for (int n = 0; n < 4; ++n) {
      for (const bool at_node : {true, false}) {
        const SURFACE_STATION at = at_node ? QUAD_RULE_NODES[n] : QUAD_RULE_FULL[n];
        const double* const block = (at_node ? nodes : points).data() + 90 * n;
        const vector3 mid = q.strains(column_of(u), at.xi, at.eta), N = q.forces(column_of(u), at.xi, at.eta, 0.0);
        const vector2 g = e.shear_B(at.xi, at.eta) * e.bending_part(column_of(u));
        EXPECT_CLOSE(values(block + 14, 3), listed(mid), strain, 64) << s.name << " " << n;
        EXPECT_CLOSE(values(block + 17, 3), listed(N / h), stress, 64) << s.name << " " << n;
        EXPECT_CLOSE(values(block + 44, 2), listed(e.s.shear * g), strain * largest(e.s.shear), 100) << s.name;
      }
    }
  }
}

TEST(ThickQuadrilateralKernels, KeepTheConstantsOfTheTwoDirectionsApart) {
  // The section of an engine has the same ones in both; the kernels do not count on it.
  seeded_random random(564);
  whole_shear q(random, isotropic_subject(21));
  const shell_reference::reference_element& e = q.call.reference;
  unequal_directions(q.call.reference.s);
  const matrix K = q.stiffness(QUAD_RULE_FULL, 4);
  FLAT_PARTS<4> parts{};
  std::vector<double> f(24);
  KSTIF_QUAD_THICK_ISO(PLATEELEM, QUAD, ISO, q.call.LOADS, 0, parts);
  EXPECT_CLOSE(unpacked(packed_of(parts)), listed(K), largest(K), 100);
  const std::vector<double> u = random_local(random);
  QUAD_U = QUAD_DISP_SPLIT(u.data());
  FINT_QUAD_THICK_ISO(PLATEELEM, QUAD, ISO, QUAD_U, q.call.LOADS, q.frame.local, 0, f.data(), 33);
  EXPECT_CLOSE(f, listed(K * column_of(u)), largest(K), 100);
  support::guarded_buffer nodes(360), points(360);
  RES_QUAD_THICK_ISO(PLATEELEM, QUAD, ISO, QUAD_U, q.call.LOADS, q.frame.local, 0, nodes.data(), points.data());
  const shell_reference::column bent = e.bending_part(column_of(u));
  for (int p = 0; p < 4; ++p) {
    const SURFACE_STATION at = QUAD_RULE_FULL[p];
    const vector3 M = e.s.bending * e.bending_B(at.xi, at.eta) * bent;
    const vector2 Q = e.s.shear * e.shear_B(at.xi, at.eta) * bent;
    const double* const block = points.data() + 90 * p;
    EXPECT_CLOSE(values(block + 39, 3), listed(M), 200.0 * largest(e.s.bending), 64) << p;
    EXPECT_CLOSE(values(block + 44, 2), listed(Q), 20.0 * largest(e.s.shear), 100) << p;
  }
}
