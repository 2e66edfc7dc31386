// section_matrices_test.cpp: section matrices that the stored tangents integrate to, and the first state.
#include <cmath>
#include <limits>

#include "comparison.h"
#include "prepared_point.h"

using layered_reference::material;
using layered_reference::matrix;
using layered_reference::real;
using support::seeded_random;

namespace {

constexpr int COUNTS[] = {3, 5, 7, 9, 11, 13, 15};
constexpr int P = prepared_point::PLATE;
const material STEEL{2.1e5, 0.3, 235.0, 0.0};

struct six_matrices {
  MATRIX<3, 3> membrane, coupling, bending;
  MATRIX<2, 2> shear;
  MATRIX<3, 2> memshear, bendshear;
};

six_matrices six(std::int32_t n, std::int32_t selector, int gp) {
  six_matrices D;
  for (double* V : {D.membrane.V, D.coupling.V, D.bending.V}) std::fill_n(V, 9, NOT_A_NUMBER);
  std::fill_n(D.shear.V, 4, NOT_A_NUMBER);
  for (double* V : {D.memshear.V, D.bendshear.V}) std::fill_n(V, 6, NOT_A_NUMBER);
  DSEC_MEMBRANE(PLATEELEM, n, selector, P, gp, D.membrane);
  DSEC_COUPLING(PLATEELEM, n, selector, P, gp, D.coupling);
  DSEC_BENDING(PLATEELEM, n, selector, P, gp, D.bending);
  DSEC_SHEAR(PLATEELEM, n, selector, P, gp, D.shear);
  DSEC_MEMSHEAR(PLATEELEM, n, selector, P, gp, D.memshear);
  DSEC_BENDSHEAR(PLATEELEM, n, selector, P, gp, D.bendshear);
  return D;
}

std::vector<double> listed(const six_matrices& D) {
  std::vector<double> all;
  for (const std::vector<double>& part : {::listed(D.membrane), ::listed(D.coupling), ::listed(D.bending),
                                          ::listed(D.shear), ::listed(D.memshear), ::listed(D.bendshear)}) {
    all.insert(all.end(), part.begin(), part.end());
  }
  return all;
}

std::vector<double> listed(const SECTION_INTEGRALS& D) {
  return listed(six_matrices{D.membrane, D.coupling, D.bending, D.shear, D.memshear, D.bendshear});
}

// Rows first to last of the tangents, integrated with z to a power over exact stations.
matrix integral(const POINT_STATE_RECORD& s, int n, double t, int row, int rows, int column, int columns, int power) {
  const layered_reference::rule r = layered_reference::lobatto(n);
  matrix D = matrix::Zero(rows, columns);
  for (int k = 1; k <= n; ++k) {
    const std::size_t at = static_cast<std::size_t>(k - 1);
    const real weight = r.w[at] * std::pow(r.xi[at] * t / 2, power) * t / 2;
    for (int j = 0; j < columns; ++j) {
      for (int i = 0; i < rows; ++i) D(i, j) += weight * s.TANGENT(row + i, column + j, k);
    }
  }
  return D;
}

}  // namespace

TEST(SectionMatrices, OfElasticTangentsAreThicknessAndInertia) {
  for (const int n : COUNTS) {
    prepared_point p(STEEL, layered_reference::matrix3::Identity(), n);
    LAYERED_STATE_INIT(PLATEELEM);
    const double t = 0.25, D0 = 2.1e5 / 0.91;
    PLATEELEM.THICKNESS = t;
    const std::vector<double> C{D0, 0.3 * D0, 0.0, 0.3 * D0, D0, 0.0, 0.0, 0.0, 0.35 * D0};
    std::vector<double> tC, iC;
    for (const double c : C) {
      tC.push_back(t * c);
      iC.push_back(t * t * t / 12.0 * c);
    }
    for (int gp = 1; gp <= 4; ++gp) {
      const six_matrices D = six(n, 1, gp);
      EXPECT_CLOSE(listed(D.membrane), tC, t * D0, 12) << n;
      EXPECT_CLOSE(listed(D.bending), iC, t * t * t / 12.0 * D0, 12) << n;
      EXPECT_CLOSE(listed(D.coupling), std::vector<double>(9, 0.0), t * t / 4.0 * D0, 8) << n;
      const double S = t * 0.8333333134651184 * 2.1e5 / 2.6;
      EXPECT_CLOSE(listed(D.shear), (std::vector<double>{S, 0.0, 0.0, S}), S, 12) << n;
      EXPECT_EQ(listed(D.memshear), std::vector<double>(6, 0.0));
      EXPECT_EQ(listed(D.bendshear), std::vector<double>(6, 0.0));
      EXPECT_EQ(D.membrane(3, 1), 0.0);
    }
  }
}

TEST(SectionMatrices, OfThreePointsFallShortOfTheThickness) {
  prepared_point p(STEEL, layered_reference::matrix3::Identity(), 3);
  p.storage.fill(1.0);
  PLATEELEM.THICKNESS = 2.0;
  EXPECT_EQ(six(3, 1, 1).membrane(2, 3), 1.9999999999999991);
}

TEST(SectionMatrices, IntegrateEveryEntryOfTheTangents) {
  seeded_random random(701);
  for (const int n : COUNTS) {
    for (const point_layout layout : {point_layout::packed, point_layout::scattered}) {
      prepared_point p(random, 0.1, n, layout);
      p.fill_random(random);
      const double t = PLATEELEM.THICKNESS = random.uniform(0.01, 2.0), E = p.m.E;
      for (int gp = 1; gp <= 4; ++gp) {
        const six_matrices D = six(n, 1, gp);
        const POINT_STATE_RECORD& s = p.state(gp);
        EXPECT_CLOSE(listed(D.membrane), layered_reference::listed(integral(s, n, t, 1, 3, 1, 3, 0)), E * t, 12);
        EXPECT_CLOSE(listed(D.coupling), layered_reference::listed(integral(s, n, t, 1, 3, 1, 3, 1)), E * t * t, 12);
        EXPECT_CLOSE(listed(D.bending), layered_reference::listed(integral(s, n, t, 1, 3, 1, 3, 2)), E * t * t * t, 12);
        EXPECT_CLOSE(listed(D.shear), layered_reference::listed(integral(s, n, t, 4, 2, 4, 2, 0)), E * t, 12);
        EXPECT_CLOSE(listed(D.memshear), layered_reference::listed(integral(s, n, t, 1, 3, 4, 2, 0)), E * t, 12);
        EXPECT_CLOSE(listed(D.bendshear), layered_reference::listed(integral(s, n, t, 1, 3, 4, 2, 1)), E * t * t, 12);
      }
      EXPECT_TRUE(p.storage.guards_hold());
    }
  }
}

TEST(SectionMatrices, OfOnePassHaveTheBitsOfTheSix) {
  seeded_random random(702);
  for (int trial = 0; trial < 40; ++trial) {
    for (const int n : {3, 5, 7, 9, 11, 13, 15, 4, 17}) {
      prepared_point p(random, 0.1, n, trial % 2 == 0 ? point_layout::packed : point_layout::scattered);
      p.fill_random(random);
      PLATEELEM.THICKNESS = random.uniform(0.01, 2.0);
      const six_matrices D = six(n, 1, 3);
      SECTION_INTEGRALS whole;
      integrate_section(THICKNESS_SECTION(SOLANAELEM.NPT_THICK, PLATEELEM.THICKNESS), THICK_THEORY, p.state(3), whole);
      EXPECT_EQ(listed(whole), listed(D)) << n;
      integrate_section(THICKNESS_SECTION(SOLANAELEM.NPT_THICK, PLATEELEM.THICKNESS), THIN_THEORY, p.state(3), whole);
      six_matrices thin = D;
      thin.shear = {};
      thin.memshear = thin.bendshear = {};
      EXPECT_EQ(listed(whole), listed(thin)) << n;
    }
  }
}

TEST(SectionMatrices, OfUnknownCountsAndSelectorTwoAreZero) {
  seeded_random random(703);
  prepared_point p(random, 0.1, 20);
  p.fill_random(random);
  const std::vector<double> zeros(43, 0.0);
  for (const std::int32_t n : {0, 1, 2, 4, 6, 14, 16, 17, -1, -5, std::numeric_limits<std::int32_t>::min(),
                               std::numeric_limits<std::int32_t>::max()}) {
    for (const std::int32_t selector : {0, 1, 2}) EXPECT_EQ(listed(six(n, selector, 2)), zeros) << n;
    SOLANAELEM.NPT_THICK = n;
    SECTION_INTEGRALS whole;
    integrate_section(THICKNESS_SECTION(SOLANAELEM.NPT_THICK, PLATEELEM.THICKNESS), THICK_THEORY, p.state(2), whole);
    EXPECT_EQ(listed(whole), zeros) << n;
  }
  for (const int n : COUNTS) {
    EXPECT_EQ(listed(six(n, 2, 2)), zeros) << n;
    EXPECT_EQ(listed(six(n, 0, 2)), listed(six(n, 1, 2))) << n;
    EXPECT_NE(listed(six(n, 1, 2)), zeros) << n;
  }
}

// ---- the first state

TEST(LayeredStateInit, ClearsTheStateAndSetsTheElasticTangent) {
  seeded_random random(704);
  for (const point_layout layout : {point_layout::packed, point_layout::scattered}) {
    for (const int n : {3, 5, 15, 4, 1}) {
      prepared_point p(random, 0.1, n, layout);
      p.storage.fill(7.0);
      LAYERED_STATE_INIT(PLATEELEM);
      const double E = p.m.E, nu = p.m.nu;
      for (int gp = 1; gp <= 4; ++gp) {
        for (const auto& [name, values] : values_of(p.state(gp))) {
          if (name != "TANGENT") {
            EXPECT_EQ(values, std::vector<double>(values.size(), 0.0)) << name;
          }
        }
        for (int k = 1; k <= n; ++k) {
          const std::vector<double> C = field_of(values_of(p.state(gp), k), "TANGENT");
          EXPECT_CLOSE(C, layered_reference::listed(layered_reference::stored_elastic(p.m, 2)), 2.0 * E, 4);
          EXPECT_EQ(C[24], 0.8333333134651184 * (0.5 * E) / (1.0 + nu));
          EXPECT_EQ(C[18], C[24]);
          EXPECT_EQ(C[12], 0.5 * E / (1.0 + nu));
        }
      }
      EXPECT_TRUE(p.storage.guards_hold());
    }
  }
}

TEST(LayeredStateInit, ClearsTheWholeExtents) {
  prepared_point p(STEEL, layered_reference::matrix3::Identity(), 9);
  p.storage.fill(7.0);
  SOLANAELEM.NPT_THICK = 5;
  LAYERED_STATE_INIT(PLATEELEM);
  for (int gp = 1; gp <= 4; ++gp) {
    for (const auto& [name, values] : values_of(p.state(gp))) {
      if (name != "TANGENT") {
        EXPECT_EQ(values, std::vector<double>(values.size(), 0.0)) << name;
      }
    }
    EXPECT_GT(p.state(gp).TANGENT(1, 1, 5), 2e5);
  }
}

TEST(LayeredStateInit, ClearsTheWholeExtentsOfOtherBounds) {
  // Nine columns with the subscripts -2 to 6: points 1 to 5 are the fourth to the eighth column.
  prepared_point p(STEEL, layered_reference::matrix3::Identity(), 9);
  p.storage.fill(7.0);
  SOLANAELEM.NPT_THICK = 5;
  auto& points = SOLANAELEM.PLATE_STATE(P).POINT_STATE;
  const auto start_at = [&](std::int64_t lower) {
    for (int gp = 1; gp <= 4; ++gp) {
      POINT_STATE_RECORD& s = points(gp);
      for (auto* field : {&s.SIG, &s.EP_START, &s.EP_CUR, &s.EP_INC}) field->DIMENSION[1].LOWER = lower;
      for (auto* field : {&s.EPBAR_START, &s.EPBAR_CUR}) field->DIMENSION[0].LOWER = lower;
      s.TANGENT.DIMENSION[2].LOWER = lower;
    }
  };
  start_at(-2);
  LAYERED_STATE_INIT(PLATEELEM);
  start_at(1);
  for (int gp = 1; gp <= 4; ++gp) {
    for (const auto& [name, values] : values_of(points(gp))) {
      if (name != "TANGENT") {
        EXPECT_EQ(values, std::vector<double>(values.size(), 0.0)) << name;
      }
    }
    for (int column = 1; column <= 9; ++column) {
      const bool point = column >= 4 && column <= 8;
      EXPECT_EQ(points(gp).TANGENT(3, 1, column), point ? 0.0 : 7.0) << column;
    }
  }
  EXPECT_TRUE(p.storage.guards_hold());
}

// One array with the subscripts 2 to n + 1 has no place for the first point.
TEST(LayeredStateInit, PassesOverArraysThatBeginAboveOne) {
  prepared_point p(STEEL);
  p.storage.fill(7.0);
  const PLATE_STATE_RECORD& plate = SOLANAELEM.PLATE_STATE(P);
  const std::vector<std::uint64_t> before = bits_of(plate);
  for (int gp = 1; gp <= 4; ++gp) {
    POINT_STATE_RECORD& r = plate.POINT_STATE(gp);
    for (ARRAY_DIMENSION* last :
         {&r.SIG.DIMENSION[1], &r.EP_START.DIMENSION[1], &r.EP_CUR.DIMENSION[1], &r.EP_INC.DIMENSION[1],
          &r.EPBAR_START.DIMENSION[0], &r.EPBAR_CUR.DIMENSION[0], &r.TANGENT.DIMENSION[2]}) {
      last->LOWER = 2;
      LAYERED_STATE_INIT(PLATEELEM);
      last->LOWER = 1;
      EXPECT_EQ(bits_of(plate), before) << "point " << gp;
    }
  }
}

TEST(LayeredStateInit, ToleratesArraysThatAreNotAllocated) {
  prepared_point p(STEEL);
  p.storage.fill(7.0);
  PLATE_STATE_RECORD& plate = SOLANAELEM.PLATE_STATE(P);
  const std::vector<std::uint64_t> before = bits_of(plate);
  for (int gp = 1; gp <= 4; ++gp) {
    POINT_STATE_RECORD& r = plate.POINT_STATE(gp);
    for (std::int32_t* flag :
         {&r.SIG.ALLOCATED_FLAG, &r.EP_START.ALLOCATED_FLAG, &r.EP_CUR.ALLOCATED_FLAG, &r.EP_INC.ALLOCATED_FLAG,
          &r.EPBAR_START.ALLOCATED_FLAG, &r.EPBAR_CUR.ALLOCATED_FLAG, &r.TANGENT.ALLOCATED_FLAG}) {
      *flag = 0;
      LAYERED_STATE_INIT(PLATEELEM);
      *flag = 1;
      EXPECT_EQ(bits_of(plate), before);
    }
  }
  const auto points = plate.POINT_STATE;
  plate.POINT_STATE.ALLOCATED_FLAG = 0;
  LAYERED_STATE_INIT(PLATEELEM);
  plate.POINT_STATE = points;
  EXPECT_EQ(bits_of(plate), before);
  const auto plates = SOLANAELEM.PLATE_STATE;
  SOLANAELEM.PLATE_STATE.ALLOCATED_FLAG = 0;
  LAYERED_STATE_INIT(PLATEELEM);
  SOLANAELEM.PLATE_STATE = plates;
  EXPECT_EQ(bits_of(plate), before);
  SOLANAELEM.NPT_THICK = 6;  // more points than the arrays have
  LAYERED_STATE_INIT(PLATEELEM);
  EXPECT_EQ(bits_of(plate), before);
}
