// neighbours_test.cpp: plates that yield beside others: each element has the state and the stored displacements of its
// own record, and each point an answer of its own.
#include <memory>

#include "assert_recorder.h"
#include "comparison.h"
#include "finites/fields.h"
#include "plastic_reference.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::listed;
using shell_reference::matrix;
using support::seeded_random;
using texts = std::vector<std::string>;

namespace {

constexpr double LIMIT = 1e-11;

std::vector<support::plate_description> random_plates(seeded_random& random, const plastic_kind& kind, int count) {
  std::vector<support::plate_description> all;
  for (int i = 0; i < count; ++i) all.push_back(random_plate(random, kind, 0.1));
  return all;
}

// Plates of one kind with their references, in a run whose first pass is over.
struct neighbours {
  neighbours(seeded_random& random, const plastic_kind& kind, int count) : model(random_plates(random, kind, count)) {
    model.set_header(NONLIN_MATERIAL, 1.0);
    model.set_header(ANALYSIS_STATE, 1.0);
    model.set_header(STEP_COUNTER, 0.0);
    model.set_plate_material_code(1);
    model.allocate_state();
    for (int elem = 1; elem <= count; ++elem) {
      storage.push_back(std::make_unique<section_storage>(array_layout::packed));
      storage.back()->give_to(model.state(elem));
      references.emplace_back(model.at(elem), kind);
      us.push_back(column::Zero(6 * kind.nodes));
    }
    for (int elem = 1; elem <= count; ++elem) model.stiffness(elem);
    model.set_header(STEP_COUNTER, 1.0);
  }
  plastic_reference& reference(int elem) { return references[static_cast<std::size_t>(elem - 1)]; }
  column& stored(int elem) { return us[static_cast<std::size_t>(elem - 1)]; }
  void accept(int elem, const std::vector<double>& u) {
    promote(model.state(elem));
    reference(elem).promote();
    for (std::size_t i = 0; i < u.size(); ++i) model.state(elem).STORED_DISPLACEMENTS.V[i] += u[i];
    stored(elem) += reference(elem).e.to_local(column_of(u));
  }
  void expect_states(const std::string& where) {
    for (int elem = 1; elem <= model.count(); ++elem) {
      expect_state(model.state(elem), reference(elem), where + " state " + std::to_string(elem));
    }
  }

  support::plate_model model;
  std::vector<std::unique_ptr<section_storage>> storage;
  std::vector<plastic_reference> references;
  std::vector<column> us;
};

// Resultants of the points in columns 37 to 42 of their records.
void expect_point_resultants(const std::vector<double>& points, const plastic_reference& r, const column& u,
                             double scale, const std::string& where) {
  for (std::size_t gp = 0; gp < 4; ++gp) {
    const shell_reference::station& s = shell_reference::element_rule(r.e.n)[gp];
    const column n = r.C(static_cast<int>(gp)) * (r.B(s.xi, s.eta) * u);
    const auto from = points.begin() + static_cast<std::ptrdiff_t>(90 * gp) + 36;
    EXPECT_WITHIN((std::vector<double>{from, from + 3}), listed(n.head(3)), scale, 1e-10) << where;
    EXPECT_WITHIN((std::vector<double>{from + 3, from + 6}), listed(n.segment(3, 3)), scale * r.p.h, 1e-10) << where;
  }
}

}  // namespace

TEST(Neighbours, StepsUseTheStateAndTheStoredDisplacementsOfTheirOwnElement) {
  seeded_random random(751);
  for (const plastic_kind& kind : shell_kinds()) {
    neighbours t(random, kind, 3);
    t.expect_states(std::string(kind.name) + " first pass");
    for (const double level : {0.8, 1.6}) {
      for (const int elem : {3, 1, 2}) {
        const std::string where = std::string(kind.name) + " element " + std::to_string(elem);
        plastic_reference& r = t.reference(elem);
        const std::vector<double> u = r.displacements(random, level);
        const column local = r.e.to_local(column_of(u)), f = r.forces(local, t.stored(elem), true);
        const double scale = force_scale(r, u);
        EXPECT_WITHIN(t.model.internal_forces(elem, u, 3), listed(r.e.to_global(f)), scale, LIMIT) << where;
        EXPECT_WITHIN(t.model.internal_forces(elem, u, 33), listed(f), scale, LIMIT) << where;
        t.expect_states(where);
        EXPECT_WITHIN(t.model.stiffness(elem), listed(r.e.to_global_matrix(r.stiffness())), stiffness_scale(r), LIMIT)
            << where;
        expect_point_resultants(t.model.results(elem, u).points, r, local, 4.0 * r.p.sy * r.p.h, where);
        t.accept(elem, u);
      }
    }
    for (const auto& storage : t.storage) EXPECT_TRUE(storage->guards_hold()) << kind.name;
  }
}

TEST(Neighbours, GeometricStiffnessTakesTheStoredForcesOfItsOwnElement) {
  seeded_random random(752);
  for (const plastic_kind& kind : shell_kinds()) {
    neighbours t(random, kind, 3);
    t.model.set_header(SECOND_ORDER, 1.0);
    for (int elem = 1; elem <= 3; ++elem) {
      const double force = t.model.at(elem).young * t.model.at(elem).thickness;
      for (double& v : t.model.state(elem).STORED_NODAL_FORCES.V) v = random.uniform(-force, force);
    }
    for (int elem = 1; elem <= 3; ++elem) {
      std::vector<shell_reference::vector3> N;
      for (int gp = 1; gp <= 4; ++gp) {
        const auto& stored = t.model.state(elem).STORED_NODAL_FORCES;
        N.emplace_back(stored(1, gp), stored(2, gp), stored(3, gp));
      }
      const plastic_reference& r = t.reference(elem);
      const matrix both = r.stiffness() + r.e.geometric(N);
      EXPECT_CLOSE(t.model.stiffness(elem), listed(r.e.to_global_matrix(both)), stiffness_scale(r), 400) << kind.name;
    }
  }
}

TEST(Neighbours, PointThatReportsHasZerosWhateverThePointsBeforeItHave) {
  // A modulus of the wrong sign and a plastic strain at the third point alone: it yields and reports; the others are
  // elastic, with a tangent and an equivalent plastic strain to leave behind.
  seeded_random random(753);
  for (const plastic_kind& kind : shell_kinds()) {
    support::plate_description d = random_plate(random, kind, 0.0);
    d.young = -d.young;
    plastic_model model(d);
    model.first_pass();
    const plastic_reference reference(d, kind);
    PLATE_STATE_RECORD& r = model.record();
    for (int gp = 1; gp <= 4; ++gp) r.SEC_EPBAR_START(gp) = 1e-9 * gp;
    for (const int i : {1, 2, 3}) r.SEC_EP_START(i, 3) = r.SEC_EP_START(6 + i, 3) = 100.0 * d.yield_stress / d.young;
    r.SEC_EP_START(1, 3) *= 3.0;
    support::forget_assertions();
    model.internal_forces(1, std::vector<double>(static_cast<std::size_t>(6 * kind.nodes), 0.0), 33);
    EXPECT_EQ(support::recorded_assertions(), texts{"Negative Plastic_Multip"}) << kind.name;
    EXPECT_EQ(field_of(model.values(), "SEC_EPBAR_CUR"), (std::vector<double>{1e-9, 2e-9, 0.0, 4e-9})) << kind.name;
    const std::vector<double> tangents = field_of(model.values(), "SEC_TANGENT");
    for (std::size_t gp = 0; gp < 4; ++gp) {
      const double expected = gp == 2 ? 0.0 : static_cast<double>(reference.D(0, 0));
      EXPECT_CLOSE(tangents[64 * gp], expected, static_cast<double>(-reference.D(0, 0)), 8) << kind.name << gp + 1;
    }
    for (int gp = 1; gp <= 4; ++gp) {
      for (int i = 1; i <= 12; ++i) EXPECT_EQ(r.SEC_EP_CUR(i, gp), 0.0) << kind.name;
    }
  }
}
