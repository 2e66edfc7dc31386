// Plates that yield: small displacements are elastic, forces and tangent belong to each other, offsets are rigid links.
#include <algorithm>
#include <cmath>

#include "comparison.h"
#include "plate_state_support.h"

using namespace yielding;
using support::plate_description;
using support::seeded_random;

namespace {

std::vector<double> elastic_stiffness(const finites_plate& plate) {
  std::vector<double> K(static_cast<std::size_t>(36 * plate.nodes * plate.nodes));
  EXPECT_EQ(finites_plate_stiffness(&plate, K.data()), FINITES_OK);
  return K;
}

// A quadrilateral without offsets in the global x-y plane. That of a plate that yields takes the in-plane shear at all
// points, the elastic one at the centre: they agree where it is the same everywhere.
std::vector<double> even_shear(const finites_plate& plate, seeded_random& random, double strain) {
  double g[3][2];
  for (auto& row : g) {
    for (double& value : row) value = random.uniform(-strain, strain);
  }
  std::vector<double> u = random.vector(6 * plate.nodes, strain);
  for (int n = 0; n < plate.nodes; ++n) {
    for (int i = 0; i < 2; ++i) {
      u[static_cast<std::size_t>(6 * n + i)] = g[i][0] * plate.xyz[n][0] + g[i][1] * plate.xyz[n][1];
    }
  }
  return u;
}

double largest_difference(const std::vector<double>& a, const std::vector<double>& b) {
  double largest = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::fabs(a[i] - b[i]));
  return largest;
}

// dF/du by central differences of F. The forces of a quadratic path between are those of its middle.
std::vector<double> differences(const held_state& state, const std::vector<double>& u, double step) {
  std::vector<double> K;
  for (std::size_t j = 0; j < u.size(); ++j) {
    std::vector<double> before = u, after = u;
    before[j] -= step;
    after[j] += step;
    const std::vector<double> a = tried(state, before).F, b = tried(state, after).F;
    for (std::size_t i = 0; i < u.size(); ++i) K.push_back((b[i] - a[i]) / (2.0 * step));
  }
  return K;
}

}  // namespace

TEST(PlateStateLaws, SmallDisplacementsAreThoseOfTheElasticPlate) {
  // The shear correction of the layers is a single-precision 5/6.
  seeded_random random(1611);
  for (const state_kind& kind : all_state_kinds()) {
    if (kind.offsets) continue;
    finites_plate plate = subjects::rectangle(kind.nodes, kind.theory, 1.3, 0.8);
    if (kind.nodes == 4) plate.xyz[2][0] = 1.6;
    const held_state state = made(plate, {kind.model, kind.layers, 200.0, 2e3});
    const std::vector<double> u = even_shear(plate, random, 1e-5), K = elastic_stiffness(plate);
    const answers a = tried(state, u);
    ASSERT_EQ(a.status, FINITES_OK);
    std::vector<double> F(u.size());
    ASSERT_EQ(finites_plate_forces(&plate, u.data(), F.data()), FINITES_OK);
    EXPECT_WITHIN(a.F, F, support::max_norm(F), 1e-7) << name_of(kind);
    EXPECT_WITHIN(a.F, support::product(a.K, u), support::max_norm(F), 1e-13) << name_of(kind);
    if (kind.nodes == 3) {
      EXPECT_WITHIN(a.K, K, support::max_norm(K), 1e-8) << name_of(kind);
    }
    // What it keeps of the elastic element beyond the section: the moments of drilling.
    for (std::size_t i = 5; i < u.size(); i += 6) {
      for (std::size_t j = 5; j < u.size(); j += 6) EXPECT_EQ(a.K[j * u.size() + i], K[j * u.size() + i]);
    }
  }
}

TEST(PlateStateLaws, RigidMotionsHaveNoForces) {
  seeded_random random(1612);
  for (const state_kind& kind : all_state_kinds()) {
    const plate_description d = random_yielding(random, kind);
    const finites_plate plate = subjects::as_numbers(d);
    const held_state state = made(plate, plastic_of(d, kind));
    std::vector<double> u = random_step(random, d, 3.0);
    ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
    ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
    const std::vector<double> F = held(state).F;
    // Offsets warp a quadrilateral, which then resists rotations.
    const double turn = kind.nodes == 4 && kind.offsets ? 0.0 : 1e-4;
    const double t[3] = {0.3, -0.2, 0.5}, w[3] = {4.0 * turn, 7.0 * turn, -5.0 * turn};
    for (std::size_t n = 0; n < static_cast<std::size_t>(kind.nodes); ++n) {
      const double* const x = plate.xyz[n];
      const double turned[3] = {w[1] * x[2] - w[2] * x[1], w[2] * x[0] - w[0] * x[2], w[0] * x[1] - w[1] * x[0]};
      for (std::size_t i = 0; i < 3; ++i) {
        u[6 * n + i] += t[i] + turned[i];
        u[6 * n + 3 + i] += w[i];
      }
    }
    const answers a = tried(state, u);
    ASSERT_EQ(a.status, FINITES_OK);
    EXPECT_WITHIN(a.F, F, support::max_norm(F), 1e-4) << name_of(kind);
  }
}

TEST(PlateStateLaws, AcceptedPointsStandOnTheirSurface) {
  // The same displacements again: nothing flows, in units of any size.
  seeded_random random(1616);
  for (const state_kind& kind : all_state_kinds()) {
    for (const double unit : {1e-3, 1.0, 1e6}) {
      plate_description d = random_yielding(random, kind);
      d.young *= unit;
      d.yield_stress *= unit;
      d.material.HARDENING *= static_cast<float>(unit);
      const held_state state = made(subjects::as_numbers(d), plastic_of(d, kind));
      const std::vector<double> u = random_step(random, d, 2.0);
      const finites_status status = finites_plate_state_commit(state.get(), u.data());
      if (status == FINITES_RETURN && kind.model == FINITES_WHOLE_SECTION) continue;
      ASSERT_EQ(status, FINITES_OK) << name_of(kind);
      const std::vector<double> F = held(state).F;
      for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
        const answers a = tried(state, u);
        ASSERT_EQ(a.status, FINITES_OK) << name_of(kind) << " " << unit;
        EXPECT_WITHIN(a.F, F, support::max_norm(F), kind.model == FINITES_LAYERED ? 1e-5 : 2e-3) << name_of(kind);
        ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
      }
    }
  }
}

TEST(PlateStateLaws, LayersHaveTheTangentOfTheirForces) {
  // The tangent of the return mapping, in a step far beyond yield and in the next one.
  seeded_random random(1613);
  double yielded = 0.0;
  for (const state_kind& kind : all_state_kinds()) {
    if (kind.model != FINITES_LAYERED) continue;
    const plate_description d = random_yielding(random, kind);
    const held_state state = made(subjects::as_numbers(d), plastic_of(d, kind));
    for (int step = 1; step <= 2; ++step) {
      const std::vector<double> u = random_step(random, d, 4.0 * step);
      const answers a = tried(state, u);
      ASSERT_EQ(a.status, FINITES_OK);
      const std::vector<double> K = elastic_stiffness(subjects::as_numbers(d));
      EXPECT_WITHIN(a.K, differences(state, u, 1e-4 * support::max_norm(u)), support::max_norm(K), 2e-3)
          << name_of(kind) << " " << step;
      yielded += largest_difference(a.K, K) / support::max_norm(K) > 0.02 ? 1 : 0;
      ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
      ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
    }
  }
  EXPECT_GT(yielded, 30.0);
}

TEST(PlateStateLaws, SectionsHaveTheTangentOfTheirForces) {
  seeded_random random(1614);
  for (const state_kind& kind : all_state_kinds()) {
    if (kind.model != FINITES_WHOLE_SECTION) continue;
    for (const float hardening : {0.0F, 0.2F}) {
      plate_description d = random_yielding(random, kind);
      d.material.HARDENING = hardening * static_cast<float>(d.young);
      const held_state state = made(subjects::as_numbers(d), plastic_of(d, kind));
      std::vector<double> u = random_step(random, d, 0.05);
      ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
      ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);  // the branch of the mixed term is now its own
      for (double& value : u) value *= 60.0;
      const answers a = tried(state, u);
      ASSERT_EQ(a.status, FINITES_OK) << name_of(kind);
      // With hardening the tangent leaves out how the length of the flow changes with the forces.
      const double scale = support::max_norm(elastic_stiffness(subjects::as_numbers(d)));
      EXPECT_WITHIN(a.K, differences(state, u, 1e-5 * support::max_norm(u)), scale, hardening > 0.0F ? 0.08 : 0.03)
          << name_of(kind) << " " << hardening;
      EXPECT_GT(largest_difference(a.K, elastic_stiffness(subjects::as_numbers(d))), 0.3 * scale);
    }
  }
}

TEST(PlateStateLaws, OffsetsAreRigidLinks) {
  // F does the same work on the nodes as that of the plate at its corners; so does what it stores.
  seeded_random random(1615);
  for (const state_kind& kind : all_state_kinds()) {
    if (!kind.offsets) continue;
    const plate_description d = random_yielding(random, kind);
    const finites_plate plate = subjects::as_numbers(d);
    finites_plate corners = plate;
    for (int n = 0; n < plate.nodes; ++n) {
      for (int i = 0; i < 3; ++i) {
        corners.xyz[n][i] += plate.offset[n][i];
        corners.offset[n][i] = 0.0;
      }
    }
    const held_state linked = made(plate, plastic_of(d, kind)), bare = made(corners, plastic_of(d, kind));
    const std::vector<double> u = random_step(random, d, 2.0), v = random_step(random, d, 1.0);
    const auto carried = [&](std::vector<double> x) {
      for (std::size_t n = 0; n < static_cast<std::size_t>(plate.nodes); ++n) {
        const double* const o = plate.offset[n];
        double* const at = &x[6 * n];
        at[0] += at[4] * o[2] - at[5] * o[1];
        at[1] += at[5] * o[0] - at[3] * o[2];
        at[2] += at[3] * o[1] - at[4] * o[0];
      }
      return x;
    };
    const answers a = tried(linked, u), b = tried(bare, carried(u));
    ASSERT_EQ(a.status, FINITES_OK);
    ASSERT_EQ(b.status, FINITES_OK);
    EXPECT_WITHIN(support::dot(v, a.F), support::dot(carried(v), b.F), support::max_norm(b.F), 1e-10) << name_of(kind);
    ASSERT_EQ(finites_plate_state_commit(linked.get(), u.data()), FINITES_OK);
    ASSERT_EQ(finites_plate_state_commit(bare.get(), carried(u).data()), FINITES_OK);
    EXPECT_WITHIN(result_of(linked).point[1].top.plastic_strain[0], result_of(bare).point[1].top.plastic_strain[0],
                  d.yield_stress / d.young, 1e-6);
  }
}
