// first_pass_test.cpp: the first state through FINITES, and the stiffness that it gives.
#include "assert_recorder.h"
#include "comparison.h"
#include "finites/fields.h"
#include "plastic_reference.h"

using shell_reference::listed;
using shell_reference::matrix;
using support::seeded_random;
using texts = std::vector<std::string>;

TEST(FirstPass, GivesTheFirstStateAndTheElasticStiffness) {
  seeded_random random(701);
  for (const plastic_kind& kind : shell_kinds()) {
    for (const array_layout layout : {array_layout::packed, array_layout::scattered}) {
      const support::plate_description d = random_plate(random, kind, 0.2);
      plastic_reference reference(d, kind);
      plastic_model model(d, layout);
      model.storage->fill(7.0);
      support::forget_assertions();
      const std::vector<double> K = model.first_pass();
      EXPECT_EQ(support::recorded_assertions(), texts()) << kind.name;
      expect_state(model.record(), reference, kind.name);
      EXPECT_EQ(field_of(model.values(), "SEC_AUX"), std::vector<double>(4, 0.0));
      EXPECT_CLOSE(K, listed(reference.e.to_global_matrix(reference.stiffness())), stiffness_scale(reference), 200)
          << kind.name;
      EXPECT_TRUE(model.storage->guards_hold()) << kind.name;
    }
  }
}

TEST(FirstPass, StiffnessOfTrianglesIsTheGeneralElasticOne) {
  seeded_random random(702);
  for (const plastic_kind& kind : shell_kinds()) {
    if (kind.nodes == 4) continue;
    const support::plate_description d = random_plate(random, kind, 0.2);
    support::plate_description general = d;
    general.plastic_switch = 0;
    general.material = MATERIAL_RECORD{};
    general.material.E1 = static_cast<float>(d.young);
    general.material.NU1 = static_cast<float>(d.poisson);
    general.material.G12 = static_cast<float>(d.young / (2.0 * (1.0 + d.poisson)));
    std::vector<double> elastic;
    {
      support::plate_model model({general});
      model.set_stiffness_factors({10}, {1.0F, 1.0F});
      elastic = model.stiffness(1);
      EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1);
    }
    plastic_model model(d);
    const std::vector<double> K = model.first_pass();
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, 2);
    // The record of the general section is in single precision.
    EXPECT_WITHIN(K, elastic, support::max_norm(elastic), 1e-6) << kind.name;
    std::vector<double> isotropic;
    {
      support::plate_description plain = d;
      plain.plastic_switch = 0;
      isotropic = support::plate_model({plain}).stiffness(1);
    }
    EXPECT_CLOSE(K, isotropic, support::max_norm(isotropic), 100) << kind.name;
  }
}

TEST(FirstPass, StiffnessOfQuadrilateralsIntegratesTheShearOfTheirPlaneInFull) {
  // The elastic route takes it at the centre: bending agrees, the membrane does not.
  seeded_random random(703);
  for (const plastic_kind& kind : shell_kinds()) {
    if (kind.nodes == 3) continue;
    const support::plate_description d = random_plate(random, kind, 0.2);
    const plastic_reference reference(d, kind);
    plastic_model model(d);
    const std::vector<double> K = model.first_pass();
    const matrix R = shell_reference::groups(reference.e.axes, 4);
    const matrix local = R * dense::widened(K.data(), 24, 24) * R.transpose();
    const matrix elastic = reference.e.stiffness();
    matrix membrane(8, 8), bending(12, 12);
    for (int j = 0; j < 12; ++j) {
      for (int i = 0; i < 12; ++i) {
        bending(i, j) = (local - elastic)(reference.e.bending(i), reference.e.bending(j));
        if (i < 8 && j < 8) membrane(i, j) = (local - elastic)(reference.e.membrane(i), reference.e.membrane(j));
      }
    }
    EXPECT_GT(shell_reference::largest(membrane), 1e-2 * shell_reference::largest(elastic)) << kind.name;
    EXPECT_CLOSE(shell_reference::largest(bending), 0.0, shell_reference::largest(elastic), 200) << kind.name;
  }
}

TEST(FirstPass, GivesTheFirstStateOnEveryCallThatResolvesTheMaterial) {
  seeded_random random(704);
  for (const plastic_kind& kind : shell_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.2);
    plastic_reference reference(d, kind);
    for (const int op : {1, 3, 5, 401, 6, 7, 71}) {
      plastic_model model(d);
      model.storage->fill(7.0);
      std::array<double, 12> data{};
      std::array<double, 24> forces{};
      std::array<double, 576> full{};
      model.call(op, 1, data.data(), forces.data(), full.data());
      expect_state(model.record(), reference, std::string(kind.name) + " operation " + std::to_string(op));
    }
    for (const int op : {2, 4, 41, 8, 9, 10}) {
      plastic_model model(d);
      model.storage->fill(7.0);
      std::array<double, 12> data{};
      std::array<double, 24> forces{};
      std::array<double, 576> full{};
      model.call(op, 1, data.data(), forces.data(), full.data());
      for (const auto& field : model.values()) {
        EXPECT_EQ(field.second, std::vector<double>(field.second.size(), 7.0)) << kind.name << " " << op;
      }
    }
  }
}

TEST(FirstPass, ForgetsWhatWasStoredBefore) {
  // Forces of the first pass start from the first state; what operation 33 stored is gone with the next call.
  seeded_random random(705);
  for (const plastic_kind& kind : shell_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.0);
    plastic_reference reference(d, kind), untouched(d, kind);
    plastic_model model(d);
    const std::vector<double> u = reference.displacements(random, 2.0);
    const shell_reference::column local = reference.e.to_local(shell_reference::column_of(u));
    const std::vector<double> f = model.internal_forces(1, u, 33);
    EXPECT_WITHIN(f, listed(reference.forces(local, 0 * local, true)), force_scale(reference, u), 1e-11) << kind.name;
    expect_state(model.record(), reference, kind.name);
    model.results(1, u);
    expect_state(model.record(), untouched, kind.name);
  }
}

TEST(FirstPass, IsThatOfARunInProgressAtItsFirstStep) {
  seeded_random random(706);
  for (const plastic_kind& kind : shell_kinds()) {
    for (const auto& state_and_step : {std::array<double, 2>{1.0, 1.0}, {0.0, 0.0}, {2.0, 0.0}, {1.0, 2.0}}) {
      plastic_model model(random_plate(random, kind, 0.0));
      model.storage->fill(7.0);
      model.set_header(ANALYSIS_STATE, state_and_step[0]);
      model.set_header(STEP_COUNTER, state_and_step[1]);
      model.stiffness(1);
      for (const auto& field : model.values()) {
        EXPECT_EQ(field.second, std::vector<double>(field.second.size(), 7.0)) << kind.name << " " << field.first;
      }
    }
  }
}

TEST(FirstPass, DoesNotTurnTheSectionByTheOrthotropyAngle) {
  seeded_random random(707);
  for (const plastic_kind& kind : shell_kinds()) {
    support::plate_description d = random_plate(random, kind, 0.2);
    std::vector<double> straight;
    { straight = plastic_model(d).first_pass(); }
    d.ortho_angle = 0.7;
    plastic_model model(d);
    EXPECT_EQ(model.first_pass(), straight) << kind.name;
    EXPECT_EQ(PLATEELEM.ORTHO_ANGLE, 0.0F);
  }
}
