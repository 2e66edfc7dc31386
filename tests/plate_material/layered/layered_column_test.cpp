// layered_column_test.cpp: thickness points two at a time against the general routines, point by point and bit by bit,
// and against their reference.
#include <gtest/gtest.h>

#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "plate_material/layered_column.h"
#include "plate_material/layered_store.h"
#include "prepared_point.h"

using layered_reference::THICK;
using layered_reference::THIN;
using support::seeded_random;

namespace {

constexpr int P = prepared_point::PLATE;

const PLATE_STATE_RECORD& plate() { return SOLANAELEM.PLATE_STATE(P); }

VECTOR<3> in_plane(const LAYERED_STRAINS& e, double z) {
  return {{e.m(1) + z * e.b(1), e.m(2) + z * e.b(2), e.m(3) + z * e.b(3)}};
}

// The update of layered_point.h by its parts: predictor, yield test and return, without any short cut.
bool update_in_general(const LAYERED_STRAINS& e, double z, int gp, int k, int theory, int op) {
  const POINT_STATE_RECORD& s = plate().POINT_STATE(gp);
  VECTOR<5> ep;
  VECTOR<5> trial;
  double f = 0.0;
  VEC6_TO_LOCAL5(PLATEELEM, global_values(s.EP_START, k), ep);
  PLATE_TRIAL_STRESS(PLATEELEM, trial, ep, in_plane(e, z), e.s);
  PLATE_YIELD_TRIAL(PLATEELEM, trial, f, thickness_point(P, gp, k), theory);
  if (f <= 0.0) {
    VECTOR<6> stress;
    VEC5_TO_GLOBAL6(PLATEELEM, trial, stress);
    store_point(s, SOLANAELEM.EP_INC_FROM_CUR != 0, k, stress, global_values(s.EP_START, k), s.EPBAR_START(k),
                elastic_matrix(PLATEELEM, theory));
    return true;
  }
  std::int32_t ok = 1;
  PLATE_RADIAL_RETURN(PLATEELEM, trial, thickness_point(P, gp, k), theory, op, ok);
  return false;
}

// Membrane and bending strains, `level` times the strain of first yielding.
LAYERED_STRAINS random_strains(seeded_random& random, const prepared_point& p, int theory, double level) {
  LAYERED_STRAINS e{};
  const double size = level * p.m.sy / p.m.E;
  for (int i = 1; i <= 3; ++i) {
    e.m(i) = random.uniform(-0.5, 0.5) * size;
    e.b(i) = random.uniform(-1.0, 1.0) * size / PLATEELEM.THICKNESS;
  }
  if (theory == THICK) e.s = {{random.uniform(-0.3, 0.3) * size, random.uniform(-0.3, 0.3) * size}};
  return e;
}

struct column_case {
  int theory, op, n;
  point_layout layout;
  bool fresh, from_current;
};

// Zero and no zero: a state without plastic strains, and one of random values.
void prepare(prepared_point& p, seeded_random& random, const column_case& c) {
  p.fill_random(random);
  if (c.fresh) {
    for (int gp = 1; gp <= 4; ++gp) {
      for (int k = 1; k <= c.n; ++k) {
        for (int i = 1; i <= 6; ++i) p.state(gp).EP_START(i, k) = k % 2 == 0 ? -0.0 : 0.0;
      }
    }
  }
  SOLANAELEM.EP_INC_FROM_CUR = c.from_current ? 1 : 0;
}

// Both ways from the same state: the same fields, and whether all points were elastic.
void expect_the_general_state(const column_case& c, std::uint64_t seed, double level, int& plastic) {
  seeded_random random(static_cast<unsigned>(seed));
  prepared_point p(random, seed % 2 == 0 ? 0.0 : 0.2, c.n, c.layout);
  const LAYERED_STRAINS e = random_strains(random, p, c.theory, level);
  const THICKNESS_SECTION rule(c.n, PLATEELEM.THICKNESS);
  seeded_random fill(static_cast<unsigned>(seed) + 1000);
  prepare(p, fill, c);
  bool all_elastic = true;
  for (int k = 1; k <= c.n; ++k) all_elastic &= update_in_general(e, rule.z(k), 2, k, c.theory, c.op);
  const std::vector<std::uint64_t> expected = bits_of(plate());
  seeded_random again(static_cast<unsigned>(seed) + 1000);
  prepare(p, again, c);
  const LAYERED_LAW law = law_of_call(c.theory, c.op);
  EXPECT_EQ(update_layered_points(column_at(law, 2), e, rule, c.n), all_elastic);
  EXPECT_EQ(bits_of(plate()), expected) << "theory " << c.theory << " op " << c.op << " n " << c.n;
  EXPECT_TRUE(p.storage.guards_hold());
  plastic += all_elastic ? 0 : 1;
}

}  // namespace

TEST(LayeredColumn, HasTheBitsOfTheGeneralRoutines) {
  int plastic = 0, all = 0;
  std::uint64_t seed = 770;
  for (const int theory : {THIN, THICK}) {
    for (const int op : {3, 33}) {
      for (const int n : {3, 5, 9, 15}) {
        for (const point_layout layout : {point_layout::packed, point_layout::scattered}) {
          for (const bool fresh : {false, true}) {
            for (const bool from_current : {false, true}) {
              for (const double level : {0.01, 1.0, 3.0}) {
                expect_the_general_state({theory, op, n, layout, fresh, from_current}, ++seed, level, plastic);
                ++all;
              }
            }
          }
        }
      }
    }
  }
  EXPECT_GT(plastic, all / 4);
  EXPECT_LT(plastic, 3 * all / 4);
}

TEST(LayeredColumn, StrainsThatAreNotFiniteStoreNothingAndAreReportedAtEachPoint) {
  seeded_random random(771);
  for (const double broken : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
    for (const int theory : {THIN, THICK}) {
      prepared_point p(random, 0.2, 5);
      prepare(p, random, {theory, 33, 5, point_layout::packed, true, false});
      LAYERED_STRAINS e = random_strains(random, p, theory, 0.01);
      e.m(2) = broken;
      const std::vector<std::uint64_t> before = bits_of(plate());
      support::forget_assertions();
      const LAYERED_LAW law = law_of_call(theory, 33);
      EXPECT_FALSE(update_layered_points(column_at(law, 2), e, THICKNESS_SECTION(5, 0.1), 5));
      EXPECT_EQ(support::recorded_assertions(), texts(5, RETURN));
      EXPECT_EQ(bits_of(plate()), before);
    }
  }
}

TEST(LayeredColumn, OneBrokenStateLeavesItsNeighbourAlone) {
  seeded_random random(772);
  for (int k = 1; k <= 5; ++k) {
    prepared_point p(random, 0.2, 5);
    prepare(p, random, {THICK, 33, 5, point_layout::packed, true, false});
    p.state(2).EP_START(3, k) = NOT_A_NUMBER;
    support::forget_assertions();
    const LAYERED_LAW law = law_of_call(THICK, 33);
    const LAYERED_STRAINS e = random_strains(random, p, THICK, 0.01);
    EXPECT_FALSE(update_layered_points(column_at(law, 2), e, THICKNESS_SECTION(5, 0.1), 5));
    EXPECT_EQ(support::recorded_assertions(), texts{RETURN});
    for (int other = 1; other <= 5; ++other) {
      EXPECT_EQ(p.state(2).EPBAR_CUR(other) == p.state(2).EPBAR_START(other), other != k) << k;
    }
  }
}

// One plastic strain of the six, at one point alone, is taken off the strain as it is by the general routines.
TEST(LayeredColumn, EachPlasticStrainAloneCounts) {
  constexpr column_case c = {THICK, 33, 5, point_layout::packed, true, false};
  seeded_random random(777);
  prepared_point p(random, 0.2, c.n);
  const LAYERED_STRAINS e = random_strains(random, p, c.theory, 0.01);
  const THICKNESS_SECTION rule(c.n, PLATEELEM.THICKNESS);
  for (int k = 1; k <= c.n; ++k) {
    for (int i = 1; i <= 6; ++i) {
      const auto start = [&] {
        seeded_random fill(778);
        prepare(p, fill, c);
        p.state(2).EP_START(i, k) = 0.1 * p.m.sy / p.m.E;
      };
      start();
      for (int point = 1; point <= c.n; ++point) update_in_general(e, rule.z(point), 2, point, c.theory, c.op);
      const std::vector<std::uint64_t> expected = bits_of(plate());
      start();
      const LAYERED_LAW law = law_of_call(c.theory, c.op);
      EXPECT_TRUE(update_layered_points(column_at(law, 2), e, rule, c.n));
      EXPECT_EQ(bits_of(plate()), expected) << "strain " << i << " of point " << k;
    }
  }
}

// Of two elastic neighbours one holds the elastic tangent already, the other that of an earlier step.
TEST(LayeredColumn, AnElasticPointLosesTheTangentOfItsLastStepBesideOneThatHasNone) {
  seeded_random random(774);
  for (int stale = 1; stale <= 5; ++stale) {
    const int theory = stale % 2 == 0 ? THIN : THICK;
    prepared_point p(random, 0.2, 5);
    prepare(p, random, {theory, 33, 5, point_layout::packed, true, false});
    const layered_reference::matrix5 elastic = layered_reference::elastic(p.m, theory);
    const LAYERED_STRAINS e = random_strains(random, p, theory, 0.01);
    const LAYERED_LAW law = law_of_call(theory, 33);
    EXPECT_TRUE(update_layered_points(column_at(law, 2), e, THICKNESS_SECTION(5, 0.1), 5));
    for (int i = 1; i <= 5; ++i) p.state(2).TANGENT(i, i, stale) *= 0.5;
    EXPECT_TRUE(update_layered_points(column_at(law, 2), e, THICKNESS_SECTION(5, 0.1), 5));
    for (int k = 1; k <= 5; ++k) {
      const std::vector<double> C = field_of(values_of(p.state(2), k), "TANGENT");
      EXPECT_WITHIN(C, layered_reference::listed(elastic), p.m.E, 1e-6) << "stale " << stale << ", point " << k;
    }
  }
}

// Each of two plastic neighbours keeps the tangent of its own multiplier.
TEST(LayeredColumn, ConsistentTangentsOfNeighboursAreTheirOwn) {
  seeded_random random(775);
  for (const int theory : {THIN, THICK}) {
    for (int trial = 0; trial < 10; ++trial) {
      prepared_point p(random, trial % 2 == 0 ? 0.0 : 0.2, 5);
      prepare(p, random, {theory, 33, 5, point_layout::packed, true, false});
      LAYERED_STRAINS e = random_strains(random, p, theory, 1.0);
      e.m(1) += 4.0 * p.m.sy / p.m.E;
      PLATE_STATE_IN_USE in_use = state_of_element(prepared_point::ELEMENT);
      in_use.tangent = TANGENT::CONSISTENT;
      const LAYERED_LAW law(PLATEELEM, theory, 33, in_use);
      const THICKNESS_SECTION rule(5, PLATEELEM.THICKNESS);
      std::vector<layered_reference::point_answer> expected;
      for (int k = 1; k <= 5; ++k) {
        const VECTOR<3> m = in_plane(e, rule.z(k));
        const VECTOR<5> strain{{m(1), m(2), m(3), e.s(1), e.s(2)}};
        expected.push_back(p.expected(2, k, theory, rounded(strain)));
      }
      EXPECT_FALSE(update_layered_points(column_at(law, 2), e, rule, 5));
      for (int k = 1; k <= 5; ++k) {
        const layered_reference::point_answer& a = expected[static_cast<std::size_t>(k) - 1];
        ASSERT_TRUE(a.plastic) << k;
        EXPECT_WITHIN(field_of(values_of(p.state(2), k), "TANGENT"), layered_reference::listed(a.algorithmic),
                      p.m.E / (1.0 - p.m.nu), 3e-7)
            << "theory " << theory << ", point " << k;
      }
    }
  }
}

// A gap in any dimension of any field: the column must not be taken for a plain array.
TEST(LayeredColumn, AFieldWithGapsInOneDimensionIsNotPacked) {
  seeded_random random(776);
  prepared_point p(random, 0.2, 5);
  POINT_STATE_RECORD s = p.state(2);
  EXPECT_TRUE(PACKED_FIELDS(s));
  std::vector<ARRAY_DIMENSION*> dimensions{&s.EPBAR_START.DIMENSION[0], &s.EPBAR_CUR.DIMENSION[0]};
  for (ARRAY_REFERENCE<double, 2>* const field : {&s.SIG, &s.EP_START, &s.EP_CUR, &s.EP_INC}) {
    for (ARRAY_DIMENSION& d : field->DIMENSION) dimensions.push_back(&d);
  }
  for (ARRAY_DIMENSION& d : s.TANGENT.DIMENSION) dimensions.push_back(&d);
  ASSERT_EQ(dimensions.size(), 13U);
  int number = 0;
  for (ARRAY_DIMENSION* const d : dimensions) {
    d->STRIDE *= 2;
    EXPECT_FALSE(PACKED_FIELDS(s)) << "dimension " << number++;
    d->STRIDE /= 2;
  }
  EXPECT_TRUE(PACKED_FIELDS(s));
}

TEST(LayeredColumn, SectionsOfOneTangentAreThoseOfItsPoints) {
  seeded_random random(773);
  for (const int n : {3, 7, 15, 4}) {
    for (const int theory : {THIN, THICK}) {
      prepared_point p(random, 0.2, n);
      MATRIX<5, 5> C;
      for (double& v : C.V) v = random.uniform(-1.0, 1.0);
      for (int k = 1; k <= n; ++k) {
        for (int j = 1; j <= 5; ++j) {
          for (int i = 1; i <= 5; ++i) p.state(2).TANGENT(i, j, k) = C(i, j);
        }
      }
      const THICKNESS_SECTION rule(n, 0.3);
      SECTION_INTEGRALS one, points;
      integrate_section(rule, theory, C, one);
      integrate_section(rule, theory, p.state(2), points);
      EXPECT_EQ(listed(one.membrane), listed(points.membrane));
      EXPECT_EQ(listed(one.coupling), listed(points.coupling));
      EXPECT_EQ(listed(one.bending), listed(points.bending));
      EXPECT_EQ(listed(one.shear), listed(points.shear));
      EXPECT_EQ(listed(one.memshear), listed(points.memshear));
      EXPECT_EQ(listed(one.bendshear), listed(points.bendshear));
    }
  }
}
