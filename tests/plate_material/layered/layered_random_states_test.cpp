// layered_random_states_test.cpp: seeded random updates with broken values: each ends, says nothing but its texts, and
// writes nothing but its point. Under the sanitizers the same calls show that nothing else goes wrong.
#include <algorithm>
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "prepared_point.h"

using layered_reference::THICK;
using layered_reference::THIN;
using layered_reference::vector5;
using support::seeded_random;

namespace {

double broken_value(seeded_random& random) {
  constexpr double values[] = {0.0,  -0.0, 1.0,   -1.0,     1e-308,    1e308,        -1e308, 1e-320,
                               1e19, 1e-9, 1e160, INFINITE, -INFINITE, NOT_A_NUMBER, 1e-160, -1e-9};
  return values[random.integer(0, 15)];
}

void break_one(seeded_random& random, prepared_point& p) {
  POINT_STATE_RECORD& s = p.state(2);
  const int i = random.integer(1, 6);
  double* const values[] = {&PLATEELEM.E1,        &PLATEELEM.NU1,     &PLATEELEM.YIELD_STRESS, &PLATEELEM.TANGENT_MOD,
                            &s.EP_START(i, 3),    &s.EPBAR_START(3),  &s.EP_CUR(i, 3),         &PLATEELEM.AXES(1, 2),
                            &PLATEELEM.THICKNESS, &s.TANGENT(1, 2, 3)};
  *values[random.integer(0, 9)] = broken_value(random);
}

std::vector<layered_values> others(prepared_point& p) {
  std::vector<layered_values> all;
  for (int gp = 1; gp <= 4; ++gp) {
    for (int k = 1; k <= 5; ++k) {
      if (gp != 2 || k != 3) all.push_back(values_of(p.state(gp), k));
    }
  }
  return all;
}

}  // namespace

TEST(LayeredRandomStates, EndWithinTheirPassesAndTouchTheirPointAlone) {
  seeded_random random(751);
  prepared_point p(random, 0.3, 5, point_layout::scattered);
  const PLATEELEM_RECORD whole = PLATEELEM;
  int failed = 0;
  for (int call = 0; call < 20000 && !HasFailure(); ++call) {
    PLATEELEM = whole;
    p.fill_random(random);
    const int theory = random.integer(THIN, THICK);
    vector5 e = p.strain_at(random, 2, 3, theory, random.log_uniform(0.1, 100.0));
    for (int broken = random.integer(0, 3); broken > 0; --broken) break_one(random, p);
    if (random.integer(0, 3) == 0) e(random.integer(0, 4)) = broken_value(random);
    const std::vector<layered_values> before = others(p);
    support::forget_assertions();
    p.update(e, 2, 3, theory, random.integer(0, 1) == 0 ? 3 : 33);
    const texts& said = support::recorded_assertions();
    EXPECT_LE(said.size(), 3U);
    for (const std::string& text : said) {
      EXPECT_TRUE(text == DIVISION || text == NEGATIVE || text == RETURN) << text;
    }
    EXPECT_LE(std::count(said.begin(), said.end(), RETURN), 1);
    if (std::count(said.begin(), said.end(), DIVISION) > 0) {
      EXPECT_EQ(said.back(), RETURN);
    }
    failed += !said.empty() && said.back() == RETURN ? 1 : 0;
    EXPECT_EQ(others(p), before);
    EXPECT_TRUE(p.storage.guards_hold());
  }
  EXPECT_GT(failed, 1000);
}
