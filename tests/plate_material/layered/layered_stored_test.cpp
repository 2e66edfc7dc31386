// layered_stored_test.cpp: what a thickness point keeps of an update: elastic and plastic, in each operation, with
// either reference of the increment, field by field; and what a failing update leaves.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "prepared_point.h"

using layered_reference::listed;
using layered_reference::material;
using layered_reference::point_answer;
using layered_reference::THICK;
using layered_reference::THIN;
using layered_reference::vector5;
using layered_reference::vector6;
using layered_reference::vector6_of;
using support::seeded_random;

namespace {

const PLATE_STATE_RECORD& plate() { return SOLANAELEM.PLATE_STATE(prepared_point::PLATE); }

// The state with the values of one thickness point taken out.
std::vector<layered_values> all_but(int gp, int k) {
  std::vector<layered_values> all;
  for (int point = 1; point <= 4; ++point) {
    for (int at = 1; at <= SOLANAELEM.NPT_THICK; ++at) {
      if (point != gp || at != k) all.push_back(values_of(plate().POINT_STATE(point), at));
    }
  }
  return all;
}

vector5 five(double a, double b, double c = 0.0, double d = 0.0, double e = 0.0) {
  vector5 v;
  v << a, b, c, d, e;
  return rounded(vector_of<5>(v));
}

// What a call said.
template <class CALL>
texts said(const CALL& call) {
  support::forget_assertions();
  call();
  return support::recorded_assertions();
}

}  // namespace

TEST(LayeredStored, ElasticPointsStoreInEveryOperation) {
  seeded_random random(741);
  for (const int op : {3, 33, 1, 5}) {
    for (const int from_cur : {0, 1, 7}) {
      for (const int theory : {THIN, THICK}) {
        prepared_point p(random, 0.2, 5, op == 3 ? point_layout::scattered : point_layout::packed);
        p.fill_random(random);
        SOLANAELEM.EP_INC_FROM_CUR = from_cur;
        const vector5 e = p.strain_at(random, 3, 4, theory, 0.7);
        const point_answer a = p.expected(3, 4, theory, e);
        const layered_values before = values_of(p.state(3), 4);
        const std::vector<layered_values> others = all_but(3, 4);
        p.update(e, 3, 4, theory, op);
        const layered_values after = values_of(p.state(3), 4);
        EXPECT_CLOSE(field_of(after, "SIG"), listed(a.sig), p.m.sy, 64);
        EXPECT_EQ(field_of(after, "EP_CUR"), field_of(before, "EP_START"));
        EXPECT_EQ(field_of(after, "EPBAR_CUR"), field_of(before, "EPBAR_START"));
        for (const char* constant : {"EP_START", "EPBAR_START"}) {
          EXPECT_EQ(field_of(after, constant), field_of(before, constant)) << constant;
        }
        const std::string reference = from_cur == 0 ? "EP_START" : "EP_CUR";
        for (std::size_t i = 0; i < 6; ++i) {
          EXPECT_EQ(field_of(after, "EP_INC")[i], field_of(before, "EP_START")[i] - field_of(before, reference)[i]);
        }
        EXPECT_CLOSE(field_of(after, "TANGENT"), listed(layered_reference::stored_elastic(p.m, theory)), 2.0 * p.m.E,
                     4);
        EXPECT_EQ(field_of(after, "TANGENT")[24],
                  theory == THICK ? 0.8333333134651184 * (0.5 * p.m.E) / (1.0 + p.m.nu) : 0.0);
        EXPECT_EQ(all_but(3, 4), others);
        EXPECT_TRUE(p.storage.guards_hold());
      }
    }
  }
}

TEST(LayeredStored, PlasticPointsStoreNothingButInOperation33) {
  seeded_random random(742);
  for (const int op : {3, 1, 5, 4, 0, -33}) {
    for (const int from_cur : {0, 1}) {
      for (const int theory : {THIN, THICK}) {
        prepared_point p(random, 0.2);
        p.fill_random(random);
        SOLANAELEM.EP_INC_FROM_CUR = from_cur;
        const std::vector<std::uint64_t> before = bits_of(plate());
        EXPECT_EQ(said([&] { p.update(p.strain_at(random, 3, 4, theory, 1.7), 3, 4, theory, op); }), texts());
        EXPECT_EQ(bits_of(plate()), before) << op;
      }
    }
  }
}

TEST(LayeredStored, PlasticPointsInOperation33) {
  seeded_random random(743);
  for (const int from_cur : {0, 1, -1}) {
    for (const int theory : {THIN, THICK}) {
      for (const point_layout layout : {point_layout::packed, point_layout::scattered}) {
        prepared_point p(random, 0.2, 5, layout);
        p.fill_random(random);
        SOLANAELEM.EP_INC_FROM_CUR = from_cur;
        const vector5 e = p.strain_at(random, 3, 4, theory, 1.7);
        const point_answer a = p.expected(3, 4, theory, e);
        const layered_values before = values_of(p.state(3), 4);
        const std::vector<layered_values> others = all_but(3, 4);
        p.update(e, 3, 4, theory, 33);
        const layered_values after = values_of(p.state(3), 4);
        const double strain = 4.0 * p.m.sy / p.m.E;
        EXPECT_CLOSE(field_of(after, "SIG"), listed(a.sig), 4.0 * p.m.sy, 64);
        EXPECT_CLOSE(field_of(after, "EP_CUR"), listed(a.ep), strain, 64);
        // The increment from the value that EP_CUR had before.
        const std::string reference = from_cur == 0 ? "EP_START" : "EP_CUR";
        for (std::size_t i = 0; i < 6; ++i) {
          EXPECT_EQ(field_of(after, "EP_INC")[i], field_of(after, "EP_CUR")[i] - field_of(before, reference)[i]);
        }
        EXPECT_CLOSE(field_of(after, "EPBAR_CUR")[0], static_cast<double>(a.ebar), strain, 64);
        EXPECT_GT(field_of(after, "EPBAR_CUR")[0], field_of(before, "EPBAR_START")[0]);
        EXPECT_CLOSE(field_of(after, "TANGENT"), listed(a.tangent), 2.0 * p.m.E, 64);
        for (const char* constant : {"EP_START", "EPBAR_START"}) {
          EXPECT_EQ(field_of(after, constant), field_of(before, constant)) << constant;
        }
        EXPECT_EQ(all_but(3, 4), others);
        EXPECT_TRUE(p.storage.guards_hold());
      }
    }
  }
}

TEST(LayeredStored, CallsOfOneStepStartAgainFromItsStart) {
  // However often a point is updated within a step, the state is that of the last strain.
  seeded_random random(744);
  prepared_point p(random, 0.2);
  p.fill_random(random);
  SOLANAELEM.EP_INC_FROM_CUR = 0;
  const vector5 e = p.strain_at(random, 1, 1, THICK, 2.0);
  p.update(e, 1, 1, THICK, 33);
  const layered_values once = values_of(p.state(), 1);
  p.update(p.strain_at(random, 1, 1, THICK, 5.0), 1, 1, THICK, 33);
  EXPECT_NE(values_of(p.state(), 1), once);
  p.update(e, 1, 1, THICK, 33);
  EXPECT_EQ(values_of(p.state(), 1), once);
  // Counted from the current state the increment of a repeated strain is zero.
  SOLANAELEM.EP_INC_FROM_CUR = 1;
  p.update(e, 1, 1, THICK, 33);
  EXPECT_EQ(field_of(values_of(p.state(), 1), "EP_INC"), std::vector<double>(6, 0.0));
}

TEST(LayeredStored, PointThatReturnsToTheElasticRangeHasTheStrainsOfTheStart) {
  seeded_random random(745);
  for (const int op : {3, 33}) {
    prepared_point p(random, 0.2);
    p.fill_random(random);
    p.update(p.strain_at(random, 1, 1, THICK, 2.0), 1, 1, THICK, 33);
    EXPECT_NE(field_of(values_of(p.state(), 1), "EP_CUR"), field_of(values_of(p.state(), 1), "EP_START"));
    p.update(p.strain_at(random, 1, 1, THICK, 0.5), 1, 1, THICK, op);
    EXPECT_EQ(field_of(values_of(p.state(), 1), "EP_CUR"), field_of(values_of(p.state(), 1), "EP_START"));
    EXPECT_EQ(field_of(values_of(p.state(), 1), "EPBAR_CUR"), field_of(values_of(p.state(), 1), "EPBAR_START"));
  }
}

TEST(LayeredStored, UnloadingFromAPromotedStateIsElastic) {
  const material m{2.0e5, 0.5, 200.0, 2.0e4};
  prepared_point p(m);
  p.update(five(0.004, -0.002), 1, 1, THIN, 33);
  promote(p.state());
  p.update(five(0.0035, -0.00175), 1, 1, THIN, 33);
  EXPECT_WITHIN(p.state().SIG(1, 1), 200.0 + 2.0e4 * 0.003 - 2.0e5 * 0.0005, 200.0, 1e-6);
  EXPECT_EQ(p.state().TANGENT(1, 1, 1), 2.0e5 / 0.75);
  EXPECT_EQ(field_of(values_of(p.state(), 1), "EP_INC"), std::vector<double>(6, 0.0));
}

// ---- failures

TEST(LayeredStored, ValuesThatAreNotANumberEndInTheTextOfTheReturnOnce) {
  seeded_random random(746);
  for (const int theory : {THIN, THICK}) {
    for (const int op : {3, 33}) {
      for (int i = 0; i < (theory == THICK ? 5 : 3); ++i) {
        for (const double broken : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
          prepared_point p(random, 0.2);
          p.fill_random(random);
          vector5 e = p.strain_at(random, 2, 2, theory, 0.5);
          e(i) = broken;
          const std::vector<std::uint64_t> before = bits_of(plate());
          EXPECT_EQ(said([&] { p.update(e, 2, 2, theory, op); }), texts{RETURN}) << i << " " << broken;
          EXPECT_EQ(bits_of(plate()), before);
        }
      }
    }
  }
}

TEST(LayeredStored, BrokenMaterialsAndStatesEndInTheTextOfTheReturn) {
  seeded_random random(747);
  for (const int theory : {THIN, THICK}) {
    prepared_point p(random, 0.2);
    p.fill_random(random);
    const vector5 e = p.strain_at(random, 1, 1, theory, 0.5);
    const PLATEELEM_RECORD whole = PLATEELEM;
    for (double* value : {&PLATEELEM.YIELD_STRESS, &PLATEELEM.TANGENT_MOD, &PLATEELEM.E1, &PLATEELEM.NU1,
                          &p.state().EPBAR_START(1), &p.state().EP_START(2, 1)}) {
      const double kept = *value;
      *value = NOT_A_NUMBER;
      const std::vector<std::uint64_t> before = bits_of(plate());
      EXPECT_EQ(said([&] { p.update(e, 1, 1, theory, 33); }), texts{RETURN});
      EXPECT_EQ(bits_of(plate()), before);
      *value = kept;
    }
    PLATEELEM = whole;
    // A tangent modulus of E divides by zero in the plastic modulus; with no plastic strain yet, the yield stress is
    // infinity times zero.
    PLATEELEM.TANGENT_MOD = PLATEELEM.E1;
    p.state().EPBAR_START(1) = 0.0;
    EXPECT_EQ(said([&] { p.update(e, 1, 1, theory, 33); }), texts{RETURN});
  }
}

TEST(LayeredStored, StressesBelowTheSmallestDivideByZero) {
  // The norm of the trial stress is 2/3 s^2 for equal stresses: below 1e-15 at 3e-8.
  prepared_point p(material{1.0, 0.0, 1e-8, 0.0});
  p.storage.fill(0.0);
  const std::vector<std::uint64_t> before = bits_of(plate());
  EXPECT_EQ(said([&] { p.update(five(3e-8, 3e-8), 1, 1, THIN, 33); }), (texts{DIVISION, RETURN}));
  EXPECT_EQ(bits_of(plate()), before);
}

TEST(LayeredStored, DerivativeBelowTheSmallestHasTheTextOfTheReturnAlone) {
  prepared_point p(material{1e-15, 0.0, 1.0, 0.0});
  const std::vector<std::uint64_t> before = bits_of(plate());
  EXPECT_EQ(said([&] { p.update(five(2e15, 2e15), 1, 1, THIN, 33); }), texts{RETURN});
  EXPECT_EQ(bits_of(plate()), before);
}

TEST(LayeredStored, RadialReturnSaysWhetherItFailed) {
  prepared_point p(material{3.0, 0.0, 3.0, 0.0});
  std::int32_t ok = -5;
  PLATE_RADIAL_RETURN(PLATEELEM, {{6.0, 6.0, 0.0, 0.0, 0.0}}, thickness_point(prepared_point::PLATE, 1, 1), THIN, 3,
                      ok);
  EXPECT_EQ(ok, 1);
  ok = -5;
  EXPECT_EQ(said([&] {
              PLATE_RADIAL_RETURN(PLATEELEM, {{NOT_A_NUMBER, 6.0, 0.0, 0.0, 0.0}},
                                  thickness_point(prepared_point::PLATE, 1, 1), THIN, 33, ok);
            }),
            texts());
  EXPECT_EQ(ok, 0);
}

TEST(LayeredStored, NegativeMultiplierIsReportedAndGoesOn) {
  // Inside the surface the root lies below zero: s / (1 + x) = 3 at s = 2.4 is x = -0.2; the stress grows to the yield
  // stress.
  prepared_point p(material{3.0, 0.0, 3.0, 0.0});
  for (const int op : {3, 33}) {
    p.storage.fill(0.0);
    std::int32_t ok = -5;
    EXPECT_EQ(said([&] {
                PLATE_RADIAL_RETURN(PLATEELEM, {{2.4, 2.4, 0.0, 0.0, 0.0}},
                                    thickness_point(prepared_point::PLATE, 1, 1), THIN, op, ok);
              }),
              texts{NEGATIVE});
    EXPECT_EQ(ok, 1);
    EXPECT_WITHIN(p.state().SIG(1, 1), op == 33 ? 3.0 : 0.0, 3.0, 2e-7);
    EXPECT_WITHIN(p.state().EP_CUR(1, 1), op == 33 ? -0.2 : 0.0, 0.2, 2e-7);
    EXPECT_WITHIN(p.state().EPBAR_CUR(1), op == 33 ? -0.4 : 0.0, 0.2, 4e-7);
  }
}

TEST(LayeredStored, BetweenTheTwoSurfacesThePointReportsANegativeMultiplier) {
  // The yield test has 2/3 of single precision, the consistency function the exact fractions: between the two lies a
  // band of 3e-8 in the square of the stress.
  const double E = 2.1e5, s = 235.0 * (1.0 - 1e-8);
  prepared_point p(material{E, 0.0, 235.0, 0.0});
  EXPECT_EQ(said([&] { p.update(five(s / E, 0.0), 1, 1, THIN, 33); }), texts{NEGATIVE});
  EXPECT_WITHIN(p.state().SIG(1, 1), 235.0, 235.0, 1e-7);
  EXPECT_EQ(said([&] { p.update(five(235.0 * (1.0 - 3e-8) / E, 0.0), 1, 1, THIN, 33); }), texts());
  EXPECT_EQ(p.state().EPBAR_CUR(1), 0.0) << "elastic";
  EXPECT_EQ(said([&] { p.update(five(235.0 * (1.0 + 1e-8) / E, 0.0), 1, 1, THIN, 33); }), texts());
  EXPECT_GT(p.state().EPBAR_CUR(1), 0.0) << "plastic";
}
