// random_points_test.cpp: updates of points that no plate can have: each comes to an end and writes what it may.
#include <algorithm>
#include <cmath>

#include "assert_recorder.h"
#include "point_update.h"

using support::seeded_random;

namespace {

// A finite number, or one in `odds` of what no caller means.
double any_number(seeded_random& random, double magnitude, int odds) {
  constexpr double SPECIAL[] = {std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(),
                                0.0,
                                -0.0,
                                std::numeric_limits<double>::max(),
                                -std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::denorm_min(),
                                1e-300,
                                -1e160};
  if (random.integer(1, odds) == 1) return SPECIAL[random.integer(0, 9)];
  return random.uniform(-magnitude, magnitude);
}

template <int W>
struct guarded_answer {
  double before[16], after[16];
  SECTION_ANSWER<W> answer;
};

const std::vector<std::string> TEXTS = {"Division by 0, F1",           "Division by 0, DFONC_EVAL",
                                        "Division by 0, vMAT_LAM_GAM", "Division by 0, COEFF",
                                        "Division by 0, COEFF+xM",     "Negative Plastic_Multip"};

}  // namespace

template <class WIDTH>
struct RandomPoints : ::testing::Test {};
TYPED_TEST_SUITE(RandomPoints, both_widths, width_names);

TYPED_TEST(RandomPoints, EndWithOrWithoutATextAndWriteTheirAnswerAlone) {
  constexpr int W = TypeParam::value;
  seeded_random random(695);
  for (int trial = 0; trial < 1000; ++trial) {
    const int odds = trial % 3 == 0 ? 3 : 60;
    const prepared_section s(random, trial % 2 == 0 ? 0.0 : 0.3);
    if (trial % 4 == 3) {
      for (double* field : {&PLATEELEM.E1, &PLATEELEM.NU1, &PLATEELEM.TANGENT_MOD})
        *field = any_number(random, s.p.E, 2);
    }
    VECTOR<W> eps{};
    for (double& v : eps.V) v = any_number(random, 10.0 * s.p.sy / s.p.E, odds);
    SECTION_POINT from{};
    for (double& v : from.ep0.V) v = any_number(random, s.p.sy / s.p.E, odds);
    from.ebar0 = any_number(random, s.p.sy / s.p.E, odds);
    from.ref = any_number(random, 1.0, odds);
    from.aux = any_number(random, 1.0, odds);
    const double h = trial % 5 == 4 ? any_number(random, s.p.h, 2) : s.p.h;
    const double sy = trial % 7 == 6 ? any_number(random, s.p.sy, 2) : s.p.sy;
    guarded_answer<W> out{};
    for (double& v : out.before) v = 3.0;
    for (double& v : out.after) v = 3.0;
    const MATRIX<8, 8> D8 = PLATEELEM.D8;
    support::forget_assertions();
    routines<W>::update(PLATEELEM, h, sy, eps, from, out.answer);
    for (const double v : out.before) EXPECT_EQ(v, 3.0);
    for (const double v : out.after) EXPECT_EQ(v, 3.0);
    EXPECT_TRUE(out.answer.plastic == 0 || out.answer.plastic == 1);
    EXPECT_EQ(listed(PLATEELEM.D8), listed(D8));
    for (const std::string& text : support::recorded_assertions()) {
      EXPECT_NE(std::find(TEXTS.begin(), TEXTS.end(), text), TEXTS.end()) << text;
    }
    EXPECT_LE(support::recorded_assertions().size(), 5U);
  }
}

TYPED_TEST(RandomPoints, GiveTheSameAnswerWhateverAuxIs) {
  constexpr int W = TypeParam::value;
  seeded_random random(696);
  for (int trial = 0; trial < 20; ++trial) {
    const prepared_section s(random, 0.2);
    const section_reference::point_start start = random_start(random, s, 1.0);
    const VECTOR<W> eps = vector_of<W>(strain_beyond<W>(random, s, start, 2.0));
    SECTION_POINT from = section_point(start);
    SECTION_ANSWER<W> first{}, second{};
    from.aux = 1.0;
    routines<W>::update(PLATEELEM, s.p.h, s.p.sy, eps, from, first);
    from.aux = NOT_A_NUMBER;
    routines<W>::update(PLATEELEM, s.p.h, s.p.sy, eps, from, second);
    EXPECT_EQ(listed(first.sig), listed(second.sig));
    EXPECT_EQ(listed(first.C), listed(second.C));
    EXPECT_EQ(listed(first.ep), listed(second.ep));
  }
}
