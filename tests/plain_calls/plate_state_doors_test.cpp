// Plates that yield: the same bits as the protocol where it answers the same thing, over histories of steps.
#include <cstring>

#include "comparison.h"
#include "finites/fields.h"
#include "plate_material/layered_axes.h"
#include "plate_material/section_axes.h"
#include "plate_state_support.h"

using namespace yielding;
using support::plate_description;
using support::seeded_random;

namespace {

constexpr int HISTORIES = 10, STEPS = 4;  // 10 of each of 32 kinds

// Element axes of an isotropic plate, as results refer to them.
MATRIX<3, 3> axes_of(const finites_plate& plate) {
  finites_plate_measures m{};
  EXPECT_EQ(finites_plate_measure(&plate, &m), FINITES_OK);
  MATRIX<3, 3> axes;
  for (int a = 0; a < 3; ++a) {
    for (int i = 0; i < 3; ++i) axes(a + 1, i + 1) = m.axes[a][i];
  }
  return axes;
}

void expect_layer(const PLATEELEM_RECORD& EL, const POINT_STATE_RECORD& s, std::int32_t k, const finites_surface& at,
                  const std::string& which) {
  VECTOR<6> stress, plastic;
  for (int i = 1; i <= 6; ++i) {
    stress(i) = s.SIG(i, k);
    plastic(i) = s.EP_CUR(i, k);
  }
  VECTOR<5> local, flow;
  VEC6_TO_LOCAL5(EL, stress, local);
  VEC6_TO_LOCAL5(EL, plastic, flow);
  EXPECT_EQ(std::memcmp(at.stress, local.data(), 3 * sizeof(double)), 0) << which;
  EXPECT_EQ(std::memcmp(at.plastic_strain, flow.data(), 3 * sizeof(double)), 0) << which;
}

// Stresses and plastic strains of the points that the protocol has stored.
void expect_stored(const plate_description& d, const state_kind& kind, const PLATE_STATE_RECORD& r,
                   const finites_plate_results& shown, const std::string& which) {
  PLATEELEM_RECORD EL{};
  EL.AXES = axes_of(subjects::as_numbers(d));
  for (int gp = 1; gp <= 4; ++gp) {
    const finites_plate_point& p = shown.point[gp - 1];
    if (kind.model == FINITES_LAYERED) {
      const POINT_STATE_RECORD& s = r.POINT_STATE(gp);
      expect_layer(EL, s, kind.layers, p.top, which);
      expect_layer(EL, s, (kind.layers + 1) / 2, p.middle, which);
      expect_layer(EL, s, 1, p.bottom, which);
      continue;
    }
    VECTOR<12> plastic;
    for (int i = 1; i <= 12; ++i) plastic(i) = r.SEC_EP_CUR(i, gp);
    VECTOR<8> local;
    SECTION_EP_TO_LOCAL(EL, plastic, local);
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(p.middle.plastic_strain[i], local(i + 1)) << which;
      EXPECT_EQ(p.top.plastic_strain[i], local(i + 1) + local(i + 4) * d.thickness * 0.5) << which;
    }
  }
}

// A plain call finds the side of the yield surface on which a point returns; the protocol takes that of its record.
bool on_own_side(const PLATE_STATE_RECORD& r) {
  for (int gp = 1; gp <= 4; ++gp) {
    const bool flows = r.SEC_EPBAR_CUR(gp) > r.SEC_EPBAR_START(gp);
    if (flows && (r.SEC_SIGN_CUR(gp) < 0.0) != (r.SEC_SIGN_START(gp) < 0.0)) return false;
  }
  return true;
}

struct tally {
  int yielded = 0, returned = 0;
};

// Steps that grow beyond first yielding, turn back and go on; each committed twice, as an iteration does.
void follow(seeded_random& random, const state_kind& kind, tally& count) {
  const plate_description d = random_yielding(random, kind);
  const held_state state = made(subjects::as_numbers(d), plastic_of(d, kind));
  protocol_plate protocol(d, kind);
  std::vector<double> u(6 * static_cast<std::size_t>(kind.nodes), 0.0);
  for (int step = 1; step <= STEPS; ++step) {
    const std::string which = name_of(kind) + ", step " + std::to_string(step);
    std::vector<double> target = u;
    for (const double share : {0.6, 1.0}) {
      const std::vector<double> more = random_step(random, d, 1.0);
      for (std::size_t i = 0; i < u.size(); ++i) target[i] = u[i] + share * more[i];
      const finites_status status = finites_plate_state_commit(state.get(), target.data());
      if (status != FINITES_OK) {
        EXPECT_EQ(status, FINITES_RETURN) << which;
        return;
      }
      protocol.commit(target);
      if (kind.model == FINITES_WHOLE_SECTION && !on_own_side(protocol.state(1))) return;
      const answers a = held(state);
      EXPECT_EQ(a.K, protocol.stiffness(1)) << which;
      const finites_plate_results shown = result_of(state);
      expect_stored(d, kind, protocol.state(1), shown, which);
      bool plastic = false;
      for (const finites_plate_point& p : shown.point) plastic = plastic || p.top.plastic_strain[0] != 0.0;
      count.yielded += plastic ? 1 : 0;
    }
    u = target;
    EXPECT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
    protocol.accept();
  }
  ++count.returned;
}

}  // namespace

TEST(PlateStateDoors, HistoriesHaveTheBitsOfTheProtocol) {
  seeded_random random(1601);
  tally count;
  for (const state_kind& kind : all_state_kinds()) {
    for (int i = 0; i < HISTORIES; ++i) follow(random, kind, count);
  }
  EXPECT_GE(count.returned, 200);
  EXPECT_GE(count.yielded, 1500);
}
