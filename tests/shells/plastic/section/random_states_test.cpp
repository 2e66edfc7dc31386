// random_states_test.cpp: states and displacements that no run makes: every call ends, and writes where it may.
#include <cmath>
#include <limits>

#include "assert_recorder.h"
#include "comparison.h"
#include "finites/fields.h"
#include "guarded_buffer.h"
#include "plastic_reference.h"

using support::seeded_random;

namespace {

double any_number(seeded_random& random, double magnitude) {
  constexpr double SPECIAL[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(), -0.0,
                                std::numeric_limits<double>::max(),       std::numeric_limits<double>::denorm_min()};
  if (random.integer(1, 40) == 1) return SPECIAL[random.integer(0, 5)];
  return random.uniform(-magnitude, magnitude);
}

void fill_at_random(seeded_random& random, PLATE_STATE_RECORD& r, double strain, double tangent) {
  for (int gp = 1; gp <= 4; ++gp) {
    for (int i = 1; i <= 12; ++i) {
      r.SEC_EP_START(i, gp) = any_number(random, strain);
      r.SEC_EP_CUR(i, gp) = any_number(random, strain);
      r.SEC_EP_INC(i, gp) = any_number(random, strain);
    }
    r.SEC_EPBAR_START(gp) = any_number(random, strain);
    r.SEC_SIGN_START(gp) = any_number(random, 1.0);
    r.SEC_AUX(gp) = any_number(random, 1.0);
    for (int j = 1; j <= 8; ++j) {
      for (int i = 1; i <= 8; ++i) r.SEC_TANGENT(i, j, gp) = any_number(random, tangent);
    }
  }
  for (double& v : r.STORED_DISPLACEMENTS.V) v = any_number(random, strain);
  for (double& v : r.STORED_NODAL_FORCES.V) v = any_number(random, tangent);
}

}  // namespace

TEST(RandomStates, EveryOperationEndsAndKeepsToItsPlaces) {
  seeded_random random(741);
  std::vector<plastic_kind> kinds = shell_kinds();
  kinds.insert(kinds.end(), membrane_kinds().begin(), membrane_kinds().end());
  for (const plastic_kind& kind : kinds) {
    for (int trial = 0; trial < 12; ++trial) {
      const support::plate_description d = random_plate(random, kind, 0.3);
      plastic_model model(d, trial % 2 == 0 ? array_layout::packed : array_layout::scattered);
      model.go_on();
      model.set_header(SECOND_ORDER, trial % 3 == 0 ? 1.0 : 0.0);
      const double strain = 2.0 * d.yield_stress / d.young;
      for (const int op : {1, 3, 33, 5, 71, 7, 401}) {
        fill_at_random(random, model.record(), strain, d.young * d.thickness);
        std::vector<double> u;
        for (int i = 0; i < 24; ++i) u.push_back(any_number(random, strain));
        model.set_displacements(u);
        support::guarded_buffer data(12), forces(24), matrix(576);
        data.set_input(std::vector<double>(12, 1.0));
        model.call(op, 1, data.data(), forces.data(), matrix.data());
        EXPECT_EQ(data.changed(), std::vector<int>()) << kind.name << " " << op;
        for (const support::guarded_buffer* buffer : {&forces, &matrix}) {
          for (const int place : buffer->changed()) {
            EXPECT_GE(place, 1) << kind.name << " " << op;
            EXPECT_LE(place, 576) << kind.name << " " << op;
          }
        }
        EXPECT_TRUE(model.storage->guards_hold()) << kind.name << " " << op;
      }
    }
  }
}

TEST(RandomStates, NotANumberStaysAtTheFieldsOfItsPoint) {
  // One point of the state is not a number: what operation 33 stores for the others is what it would store without it.
  seeded_random random(742);
  for (const plastic_kind& kind : shell_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.1);
    plastic_model model(d);
    model.first_pass();
    const std::vector<double> u = plastic_reference(d, kind).displacements(random, 2.0);
    model.internal_forces(1, u, 33);
    const section_values sound = model.values();
    support::forget_assertions();
    model.record().SEC_EP_START(1, 2) = std::numeric_limits<double>::quiet_NaN();
    model.internal_forces(1, u, 33);
    EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>()) << kind.name;
    const std::vector<double> ebar = field_of(model.values(), "SEC_EPBAR_CUR"),
                              before = field_of(sound, "SEC_EPBAR_CUR");
    EXPECT_TRUE(std::isnan(ebar[1])) << kind.name;
    for (const std::size_t gp : {0U, 2U, 3U}) EXPECT_EQ(ebar[gp], before[gp]) << kind.name;
  }
}
