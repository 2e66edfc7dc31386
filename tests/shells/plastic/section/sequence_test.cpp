// sequence_test.cpp: the calls of a nonlinear run, step by step, against the reference.
#include "assert_recorder.h"
#include "comparison.h"
#include "plastic_reference.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::listed;
using shell_reference::matrix;
using support::seeded_random;
using texts = std::vector<std::string>;

namespace {

constexpr double LIMIT = 1e-11;

// A model and its reference on the same steps.
struct run {
  run(seeded_random& random, const plastic_kind& kind, double hardening, array_layout layout)
      : d(random_plate(random, kind, hardening)),
        reference(d, kind),
        model(d, layout),
        us(column::Zero(6 * kind.nodes)) {
    model.first_pass();
    model.record().SEC_AUX(1) = 11.0;  // the solver's own
  }
  column local(const std::vector<double>& u) const { return reference.e.to_local(column_of(u)); }
  void accept(const std::vector<double>& u) {
    model.accept(u);
    reference.promote();
    us += local(u);
  }
  bool yields() const {
    for (const auto& answer : reference.last) {
      if (answer.plastic == 1) return true;
    }
    return false;
  }

  support::plate_description d;
  plastic_reference reference;
  plastic_model model;
  column us;
};

// Operations 3, 33 and 1 of a step.
void expect_step(run& r, const std::vector<double>& u, const std::string& where) {
  const double scale = force_scale(r.reference, u);
  const section_values before = r.model.values();
  const std::vector<double> tried = r.model.internal_forces(1, u, 3);
  EXPECT_EQ(r.model.values(), before) << where << ": operation 3 stores nothing";
  EXPECT_EQ(r.model.internal_forces(1, u, 3), tried) << where;

  const column f = r.reference.forces(r.local(u), r.us, true);
  EXPECT_WITHIN(tried, listed(r.reference.e.to_global(f)), scale, LIMIT) << where << " operation 3";
  EXPECT_WITHIN(r.model.internal_forces(1, u, 33), listed(f), scale, LIMIT) << where << " operation 33";
  expect_state(r.model.record(), r.reference, where);
  EXPECT_EQ(field_of(r.model.values(), "SEC_AUX"), (std::vector<double>{11.0, 0.0, 0.0, 0.0})) << where;
  const section_values after = r.model.values();
  EXPECT_EQ(r.model.internal_forces(1, u, 3), tried) << where << ": stored, the forces are the same";
  EXPECT_EQ(r.model.values(), after) << where;

  const matrix K = r.reference.e.to_global_matrix(r.reference.stiffness());
  EXPECT_WITHIN(r.model.stiffness(1), listed(K), stiffness_scale(r.reference), LIMIT) << where << " operation 1";
  EXPECT_EQ(r.model.values(), after) << where << ": operation 1 stores nothing";
  r.model.results(1, u);
  EXPECT_EQ(r.model.values(), after) << where << ": operation 5 stores nothing";
}

}  // namespace

TEST(Sequence, OfLoadingYieldingAndUnloadingIsTheReference) {
  seeded_random random(711);
  support::forget_assertions();
  for (const plastic_kind& kind : shell_kinds()) {
    for (const array_layout layout : {array_layout::packed, array_layout::scattered}) {
      for (const double hardening : {0.0, 0.2}) {
        run r(random, kind, hardening, layout);
        const std::vector<double> direction = r.reference.displacements(random, 1.0);
        int yielded = 0, step = 0;
        for (const double level : {0.4, 0.9, 0.7, -0.3, -1.8, 0.0}) {
          std::vector<double> u = direction;
          for (double& v : u) v *= level;
          if (step == 2) u = r.reference.displacements(random, 0.8);
          const std::string where = std::string(kind.name) + " step " + std::to_string(++step);
          expect_step(r, u, where);
          yielded += r.yields() ? 1 : 0;
          r.accept(u);
          expect_state(r.model.record(), r.reference, where + " accepted");
        }
        EXPECT_GE(yielded, 2) << kind.name;
        EXPECT_TRUE(r.model.storage->guards_hold()) << kind.name;
      }
    }
  }
  EXPECT_EQ(support::recorded_assertions(), texts());
}

TEST(Sequence, OfIterationsWithinAStepStartsFromTheStartOfTheStep) {
  // 33 on the way replaces what is stored, and the increment is what it replaces: it is not a part of the step.
  seeded_random random(712);
  for (const plastic_kind& kind : shell_kinds()) {
    run r(random, kind, 0.1, array_layout::packed);
    const std::vector<double> u = r.reference.displacements(random, 2.0), v = r.reference.displacements(random, 1.5);
    expect_step(r, u, kind.name);
    expect_step(r, v, kind.name);
    r.model.internal_forces(1, v, 33);
    for (const double increment : field_of(r.model.values(), "SEC_EP_INC")) EXPECT_EQ(increment, 0.0) << kind.name;
    EXPECT_EQ(field_of(r.model.values(), "SEC_EP_START"), std::vector<double>(48, 0.0)) << kind.name;
    EXPECT_EQ(field_of(r.model.values(), "SEC_SIGN_START"), std::vector<double>(4, 1.0)) << kind.name;
  }
}

TEST(Sequence, LibraryNeverWritesWhatTheStepStartsFrom) {
  seeded_random random(713);
  for (const plastic_kind& kind : shell_kinds()) {
    run r(random, kind, 0.1, array_layout::packed);
    const std::vector<double> u = r.reference.displacements(random, 2.0);
    PLATE_STATE_RECORD& record = r.model.record();
    for (int gp = 1; gp <= 4; ++gp) {
      record.SEC_SIGN_START(gp) = -0.25 * gp;
      record.SEC_EPBAR_START(gp) = 1e-9 * gp;
    }
    const section_values before = r.model.values();
    const MATRIX<6, 4> us = record.STORED_DISPLACEMENTS, forces = record.STORED_NODAL_FORCES;
    for (const int op : {3, 33}) r.model.internal_forces(1, u, op);
    for (const char* name : {"SEC_EP_START", "SEC_EPBAR_START", "SEC_SIGN_START", "SEC_AUX"}) {
      EXPECT_EQ(field_of(r.model.values(), name), field_of(before, name)) << kind.name << " " << name;
    }
    EXPECT_EQ(support::values(record.STORED_DISPLACEMENTS.V, 24), support::values(us.V, 24));
    EXPECT_EQ(support::values(record.STORED_NODAL_FORCES.V, 24), support::values(forces.V, 24));
  }
}

TEST(Sequence, ForcesAreThoseOfTheDisplacementsAloneWhateverIsStored) {
  // Without displacements there is no force, however far the stored ones went; the material knows them.
  seeded_random random(714);
  for (const plastic_kind& kind : shell_kinds()) {
    run r(random, kind, 0.1, array_layout::packed);
    const std::vector<double> stored = r.reference.displacements(random, 2.0);
    const std::vector<double> none(stored.size(), 0.0);
    std::copy(stored.begin(), stored.end(), r.model.record().STORED_DISPLACEMENTS.V);
    for (const int op : {3, 33}) EXPECT_EQ(r.model.internal_forces(1, none, op), none) << kind.name;
    EXPECT_GT(support::max_norm(field_of(r.model.values(), "SEC_EP_CUR")), 0.0) << kind.name;
  }
}

TEST(Sequence, OfForcesAloneNeedsNoStiffnessInBetween) {
  // Forces of an elastic step are the stiffness of the first pass times the displacements.
  seeded_random random(715);
  for (const plastic_kind& kind : shell_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.1);
    const plastic_reference reference(d, kind);
    plastic_model model(d);
    const std::vector<double> K = model.first_pass();
    const std::vector<double> u = reference.displacements(random, 0.8);
    EXPECT_CLOSE(model.internal_forces(1, u, 3), support::product(K, u), force_scale(reference, u), 100) << kind.name;
  }
}

TEST(Sequence, SignOfTheMixedTermIsPositiveOfZeroAndOfNotANumber) {
  seeded_random random(716);
  for (const plastic_kind& kind : shell_kinds()) {
    run r(random, kind, 0.1, array_layout::packed);
    const std::vector<double> u = r.reference.displacements(random, 2.0);
    const auto forces_with = [&r, &u](double sign) {
      for (int gp = 1; gp <= 4; ++gp) r.model.record().SEC_SIGN_START(gp) = sign;
      return r.model.internal_forces(1, u, 3);
    };
    const std::vector<double> positive = forces_with(1.0);
    for (const double sign : {0.0, -0.0, 1e-300, std::numeric_limits<double>::quiet_NaN()}) {
      EXPECT_EQ(forces_with(sign), positive) << kind.name << " " << sign;
    }
    EXPECT_NE(forces_with(-1e-300), positive) << kind.name;
  }
}

TEST(Sequence, OfANegativeMultiplierStoresZeros) {
  // A modulus of the wrong sign: the text at each point that yields; what is stored is what the caller had, zeros.
  seeded_random random(717);
  for (const plastic_kind& kind : shell_kinds()) {
    support::plate_description d = random_plate(random, kind, 0.0);
    const std::vector<double> u = plastic_reference(d, kind).displacements(random, 20.0);
    d.young = -d.young;
    plastic_model model(d);
    model.first_pass();
    model.storage->fill(7.0);
    for (int gp = 1; gp <= 4; ++gp) model.record().SEC_EPBAR_START(gp) = 0.0;
    for (int gp = 1; gp <= 4; ++gp) {
      for (int i = 1; i <= 12; ++i) model.record().SEC_EP_START(i, gp) = 0.0;
    }
    support::forget_assertions();
    model.internal_forces(1, u, 33);
    EXPECT_EQ(support::recorded_assertions(), texts(4, "Negative Plastic_Multip")) << kind.name;
    const section_values values = model.values();
    for (const char* name : {"SEC_EP_CUR", "SEC_EPBAR_CUR", "SEC_SIGN_CUR", "SEC_CURV_INC", "SEC_TANGENT"}) {
      EXPECT_EQ(support::max_norm(field_of(values, name)), 0.0) << kind.name << " " << name;
    }
    EXPECT_EQ(field_of(values, "SEC_EP_INC"), std::vector<double>(48, -7.0)) << kind.name;
  }
}
