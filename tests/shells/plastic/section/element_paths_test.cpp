// element_paths_test.cpp: offsets, geometric stiffness, loads, modifiers and missing state of plates that yield.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "finites/fields.h"
#include "plastic_reference.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::vector3;
using support::seeded_random;
using texts = std::vector<std::string>;

namespace {

const std::string CHECK_TEXT =
    "D\xC3\xA9"
    "composition spectrale, KOK_DS";

// Displacements of the element per those of its nodes, global axes: the element lies at the nodes less their offsets.
matrix links(const support::plate_description& d) {
  const int n = static_cast<int>(d.nodes.size());
  matrix J = matrix::Identity(6 * n, 6 * n);
  for (int node = 0; node < n; ++node) {
    const vector3 offset = shell_reference::wide(d.offsets[static_cast<std::size_t>(node)]);
    for (int axis = 0; axis < 3; ++axis) {
      J.block(6 * node, 6 * node + 3 + axis, 3, 1) = -vector3(vector3::Unit(axis)).cross(offset);
    }
  }
  return J;
}

support::plate_description moved_by_offsets(support::plate_description d) {
  for (std::size_t n = 0; n < d.nodes.size(); ++n) {
    for (std::size_t i = 0; i < 3; ++i) d.nodes[n][i] -= d.offsets[n][i];
  }
  return d;
}

// Offsets that keep a quadrilateral plane: the same one along the normal, others in its plane.
void add_plane_offsets(seeded_random& random, support::plate_description& d) {
  d.offset_switch = 1;
  const shell_reference::matrix3 axes = shell_reference::axes_of(d.nodes);
  const double height = random.uniform(-0.2, 0.2);
  for (support::point& offset : d.offsets) {
    const vector3 arm = axes.transpose() * vector3{random.uniform(-0.05, 0.05), random.uniform(-0.05, 0.05), height};
    for (std::size_t i = 0; i < 3; ++i) offset[i] = static_cast<double>(arm(static_cast<int>(i)));
  }
}

}  // namespace

TEST(PlasticOffsets, CarryTheDisplacementsAndNotTheStoredOnes) {
  // The material follows J u + the stored displacements as they stand, the forces go back by J^T.
  seeded_random random(731);
  for (const plastic_kind& kind : shell_kinds()) {
    support::plate_description d = random_plate(random, kind, 0.1);
    add_plane_offsets(random, d);
    const support::plate_description corners = moved_by_offsets(d);
    plastic_reference reference(corners, kind);
    plastic_model model(d);
    const matrix J = links(d);
    const std::vector<double> K = model.first_pass();
    EXPECT_WITHIN(K, listed(J.transpose() * reference.e.to_global_matrix(reference.stiffness()) * J),
                  stiffness_scale(reference), 1e-12)
        << kind.name;
    const column at_corners = column_of(reference.displacements(random, 0.9));
    const std::vector<double> u = listed(dense::solve(J, at_corners));
    const std::vector<double> stored = reference.displacements(random, 1.2);
    std::copy(stored.begin(), stored.end(), model.record().STORED_DISPLACEMENTS.V);
    const column local = reference.e.to_local(J * column_of(u)), us = reference.e.to_local(column_of(stored));
    const column f = reference.forces(local, us, true);
    const double scale = force_scale(reference, u) + force_scale(reference, stored);
    EXPECT_WITHIN(model.internal_forces(1, u, 3), listed(J.transpose() * reference.e.to_global(f)), scale, 1e-11)
        << kind.name;
    EXPECT_WITHIN(model.internal_forces(1, u, 33), listed(f), scale, 1e-11) << kind.name;
    expect_state(model.record(), reference, kind.name);
    EXPECT_GT(support::max_norm(field_of(model.values(), "SEC_EP_CUR")), 0.0) << kind.name;
  }
}

TEST(PlasticGeometric, StiffnessOfTheStoredForcesIsAddedToTheTangentsOne) {
  seeded_random random(732);
  for (const plastic_kind& kind : shell_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.1);
    plastic_reference reference(d, kind);
    plastic_model model(d);
    std::vector<vector3> N;
    for (int gp = 1; gp <= 4; ++gp) {
      N.push_back(shell_reference::column_of(random.vector(3, d.young * d.thickness)));
      for (int i = 1; i <= 3; ++i) model.record().STORED_NODAL_FORCES(i, gp) = static_cast<double>(N.back()(i - 1));
      for (int i = 4; i <= 6; ++i) model.record().STORED_NODAL_FORCES(i, gp) = 1e30;  // moments take no part
    }
    model.set_header(SECOND_ORDER, 1.0);
    const matrix material = reference.stiffness(), both = material + reference.e.geometric(N);
    EXPECT_CLOSE(model.first_pass(), listed(reference.e.to_global_matrix(material)), stiffness_scale(reference), 200)
        << kind.name << ": no forces exist on the very first pass";
    EXPECT_CLOSE(model.stiffness(1), listed(reference.e.to_global_matrix(both)), stiffness_scale(reference), 400)
        << kind.name;
    EXPECT_GT(shell_reference::largest(reference.e.geometric(N)), 1e-3 * stiffness_scale(reference)) << kind.name;
  }
}

TEST(PlasticGeometric, MatrixOfStoredForcesIsThatOfAnElasticPlate) {
  seeded_random random(733);
  for (const plastic_kind& kind : shell_kinds()) {
    support::plate_description d = random_plate(random, kind, 0.1);
    const std::vector<double> forces = random.vector(24, d.young * d.thickness);
    std::vector<double> plastic, elastic;
    {
      plastic_model model(d);
      std::copy(forces.begin(), forces.end(), model.record().STORED_NODAL_FORCES.V);
      plastic = model.matrix(71, 1);
    }
    d.plastic_switch = 0;
    plastic_model model(d);
    std::copy(forces.begin(), forces.end(), model.record().STORED_NODAL_FORCES.V);
    elastic = model.matrix(71, 1);
    EXPECT_CLOSE(plastic, elastic, support::max_norm(elastic), 32) << kind.name;
  }
}

TEST(PlasticLoads, OfSurfaceAndBodyAreThoseOfAnElasticPlateAndOfTemperatureNone) {
  // Thermal strains are set for the general elastic behaviour alone.
  seeded_random random(734);
  for (const plastic_kind& kind : shell_kinds()) {
    support::plate_description d = random_plate(random, kind, 0.1);
    const std::vector<double> q = random.vector(6, 1.0);
    std::vector<double> surface, body;
    {
      plastic_model model(d);
      model.first_pass();
      surface = model.loads(4, 1, q);
      body = model.loads(41, 1, q);
      EXPECT_EQ(support::max_norm(model.loads(401, 1, {50.0, 30.0})), 0.0) << kind.name;
    }
    d.plastic_switch = 0;
    plastic_model model(d);
    EXPECT_EQ(surface, model.loads(4, 1, q)) << kind.name;
    EXPECT_EQ(body, model.loads(41, 1, q)) << kind.name;
  }
}

TEST(PlasticModifiers, AreReportedFromATenthOnByEachCallThatFormsTheSection) {
  // Four points of the first state and the engine itself on the first pass; the engine alone afterwards.
  seeded_random random(735);
  for (const plastic_kind& kind : shell_kinds()) {
    for (const double modifier : {0.95, 0.85}) {
      const std::size_t reports = modifier < 0.9 ? 1 : 0;
      support::plate_description d = random_plate(random, kind, 0.1);
      const std::vector<double> u = plastic_reference(d, kind).displacements(random, 0.5);
      d.modifier_bending = modifier;
      plastic_model model(d);
      support::forget_assertions();
      model.first_pass();
      EXPECT_EQ(support::recorded_assertions(), texts(5 * reports, CHECK_TEXT)) << kind.name;
      for (const int op : {3, 33}) {
        support::forget_assertions();
        model.internal_forces(1, u, op);
        EXPECT_EQ(support::recorded_assertions(), texts(reports, CHECK_TEXT)) << kind.name << " " << op;
      }
      support::forget_assertions();
      model.results(1, u);
      EXPECT_EQ(support::recorded_assertions(), texts(reports, CHECK_TEXT)) << kind.name;
    }
  }
}

TEST(PlasticState, ThatIsNotAllocatedIsTolerated) {
  seeded_random random(736);
  for (const plastic_kind& kind : shell_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.1);
    const std::vector<double> u = plastic_reference(d, kind).displacements(random, 2.0);
    for (int missing = -1; missing < 10; ++missing) {
      plastic_model model(d);
      PLATE_STATE_RECORD& r = model.record();
      if (missing == -1) SOLANAELEM.PLATE_STATE = {};
      ARRAY_REFERENCE<double, 1>* const single[] = {&r.SEC_EPBAR_START, &r.SEC_EPBAR_CUR, &r.SEC_CURV_INC,
                                                    &r.SEC_AUX,         &r.SEC_SIGN_CUR,  &r.SEC_SIGN_START};
      ARRAY_REFERENCE<double, 2>* const twelve[] = {&r.SEC_EP_START, &r.SEC_EP_CUR, &r.SEC_EP_INC};
      if (missing >= 0 && missing < 6) *single[missing] = {};
      if (missing >= 6 && missing < 9) *twelve[missing - 6] = {};
      if (missing == 9) r.SEC_TANGENT = {};
      const std::vector<double> K = model.first_pass();
      for (const double v : K) EXPECT_TRUE(std::isfinite(v)) << kind.name << " " << missing;
      for (const int op : {3, 33}) {
        for (const double v : model.internal_forces(1, u, op)) EXPECT_TRUE(std::isfinite(v)) << kind.name;
      }
      model.results(1, u);
      EXPECT_TRUE(model.storage->guards_hold()) << kind.name;
    }
  }
}

// ---- membrane code 3: it can yield, and its section has no bending

TEST(PlasticMembrane, ReportsItsSectionByEachCallOfTheEngine) {
  seeded_random random(737);
  for (const plastic_kind& kind : membrane_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.1);
    const std::vector<double> u = plastic_reference(d, kind).displacements(random, 0.5);
    plastic_model model(d);
    support::forget_assertions();
    model.first_pass();
    EXPECT_EQ(support::recorded_assertions(), texts(1, CHECK_TEXT)) << kind.name << ": the first state has bending";
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, 2);
    for (const int op : {3, 33}) {
      support::forget_assertions();
      model.internal_forces(1, u, op);
      EXPECT_EQ(support::recorded_assertions(), texts(1, CHECK_TEXT)) << kind.name;
    }
    support::forget_assertions();
    model.results(1, u);
    EXPECT_EQ(support::recorded_assertions(), texts(1, CHECK_TEXT)) << kind.name;
  }
}

TEST(PlasticMembrane, StepsAreTheReferenceWithoutBending) {
  // The first state has the section of a whole shell; the first stored one has no bending.
  seeded_random random(738);
  for (const plastic_kind& kind : membrane_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.1);
    plastic_reference reference(d, kind);
    plastic_model model(d);
    EXPECT_CLOSE(model.first_pass(), listed(reference.e.to_global_matrix(reference.stiffness())),
                 support::max_norm(listed(reference.stiffness())), 200)
        << kind.name;
    column us = column::Zero(6 * kind.nodes);
    for (const double level : {0.5, 1.5, -0.7}) {
      const std::vector<double> u = reference.displacements(random, level);
      const column local = reference.e.to_local(column_of(u)), f = reference.forces(local, us, true);
      EXPECT_WITHIN(model.internal_forces(1, u, 33), listed(f), force_scale(reference, u), 1e-11) << kind.name;
      expect_state(model.record(), reference, kind.name);
      EXPECT_WITHIN(model.stiffness(1), listed(reference.e.to_global_matrix(reference.stiffness())),
                    stiffness_scale(reference), 1e-11)
          << kind.name;
      model.accept(u);
      reference.promote();
      us += local;
    }
  }
}
