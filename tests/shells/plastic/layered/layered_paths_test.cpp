// layered_paths_test.cpp: what reaches the layered elements and what does not: modifiers, the membrane flag, the point
// at the centre, offsets.
#include "comparison.h"
#include "layered_element_reference.h"

using shell_reference::column;
using shell_reference::listed;
using support::plate_description;
using support::seeded_random;

namespace {

double yield_strain(const plate_description& d) { return d.yield_stress / d.young; }

}  // namespace

TEST(LayeredPaths, ModifiersReachTheSideRatiosAlone) {
  seeded_random random(777);
  for (const layered_subject& s : SUBJECTS) {
    plate_description d = random_layered(random, s, 0.2);
    d.modifier_membrane = 1.0;
    d.modifier_bending = d.modifier_shear = 0.5;  // their ratio is 1
    std::vector<double> K[3];
    for (const int which : {0, 1, 2}) {
      if (which == 1) d.modifier_membrane = 0.25;
      if (which >= 1) d.modifier_bending = d.modifier_shear = 1.0;
      if (which == 2) d.modifier_bending = 0.25;
      layered_model model(d, 5);
      K[which] = model.stiffness(1);
    }
    EXPECT_CLOSE(K[1], K[0], support::max_norm(K[0]), 200) << s.name;
    if (s.theory == layered_reference::THIN) {
      EXPECT_EQ(K[2], K[0]) << s.name;
    } else {
      EXPECT_GT(support::max_norm(sum(K[2], K[0], -1.0)), 1e-7 * support::max_norm(K[0])) << s.name;
    }
  }
}

TEST(LayeredPaths, MembraneCodeThatMayYieldIsAWholeThinPlate) {
  // Formulation 3 is a membrane kind; with the layered model nothing of the membrane flag is left.
  seeded_random random(778);
  for (const layered_subject& s : SUBJECTS) {
    if (s.theory != layered_reference::THIN) continue;
    plate_description d = random_layered(random, s, 0.2);
    const std::vector<double> u = random_displacements(random, d, 6.0 * yield_strain(d));
    std::vector<double> all[2];
    for (const int which : {0, 1}) {
      d.formulation = which == 0 ? 1 : 3;
      layered_model model(d, 5);
      all[which] = model.stiffness(1);
      for (const int op : {33, 3}) {
        for (const double f : model.internal_forces(1, u, op)) all[which].push_back(f);
      }
      for (const double x : model.results(1, u).nodes) all[which].push_back(x);
    }
    EXPECT_EQ(all[0], all[1]) << s.name;
  }
}

TEST(LayeredPaths, InPlaneShearOfQuadrilateralsIsIntegratedAtTheFourPoints) {
  // u = x y and v = 0: the shear strain is x, so that its mean at the centre of a square is zero. One point at the
  // centre would give no shear force; four points give G t times the integral of x times the test strain.
  for (const int formulation : {1, 0}) {
    plate_description d;
    d.nodes = {{-1.0, -1.0, 0.0}, {1.0, -1.0, 0.0}, {1.0, 1.0, 0.0}, {-1.0, 1.0, 0.0}};
    d.formulation = formulation;
    d.thickness = 0.5;
    d.young = 2600.0;
    d.poisson = 0.3;
    d.yield_stress = 1e9;
    d.plastic_switch = 1;
    d.material.mtype = 1;
    layered_model model(d, 5);
    column u = column::Zero(24);
    for (int n = 0; n < 4; ++n) {
      const std::size_t at = static_cast<std::size_t>(n);
      u(6 * n) = d.nodes[at][0] * d.nodes[at][1];
    }
    // Twice the energy: E / (1 - nu^2) t y^2 + G t x^2, each square integrating to 4/3.
    const double energy = support::dot(listed(u), model.internal_forces(1, listed(u)));
    EXPECT_WITHIN(energy, 4.0 / 3.0 * 0.5 * (2600.0 / 0.91 + 1000.0), energy, 1e-14) << formulation;
  }
}

TEST(LayeredPaths, OffsetsDoNotReachTheStoredDisplacementsOfTheState) {
  // The engines take the stored displacements as they stand; offsets have moved those of the call alone.
  seeded_random random(779);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description bare = random_layered(random, s, 0.2);
    plate_description d = bare;
    d.offset_switch = 1;
    for (std::size_t n = 0; n < d.nodes.size(); ++n) {
      d.offsets[n] = {0.1, -0.2, 0.3};
      for (std::size_t i = 0; i < 3; ++i) d.nodes[n][i] += d.offsets[n][i];
    }
    const std::vector<double> us = random_displacements(random, d, 6.0 * yield_strain(d));
    std::vector<double> stress[2];
    for (const int which : {0, 1}) {
      layered_model model(which == 0 ? bare : d, 5);
      model.set_stored(us);
      model.internal_forces(1, {}, 33);
      stress[which] = field_of(values_of(model.point(3)), "SIG");
    }
    EXPECT_CLOSE(stress[1], stress[0], d.young * support::max_norm(us) / d.thickness * 10.0, 200) << s.name;
  }
}
