// kernels_test.cpp: what the kernels of the thin triangle and those that both theories share can do beside what an
// engine asks of them: constants that differ in the two directions, section matrices of which an engine has two alike,
// a table of stations of the caller's, lumped loads, forces that are added to what is there.
#include "shells/triangle/point_pairs.h"

#include <cmath>

#include "comparison.h"
#include "element_stores.h"
#include "finites/records.h"
#include "guarded_buffer.h"
#include "prepared_triangle.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/forces.h"
#include "shells/triangle/geometric_stiffness.h"
#include "shells/triangle/loads.h"
#include "shells/triangle/mass.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/thin/bending.h"
#include "shells/triangle/thin/forces.h"
#include "shells/triangle/thin/loads.h"
#include "shells/triangle/thin/results.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::corners;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::matrix3;
using shell_reference::real;
using shell_reference::vector3;
using support::seeded_random;
using support::values;

namespace {

constexpr double THICKNESS = 0.25;

// A random triangle with four constants to a matrix, all different, four stations of no rule and random displacements
// in element axes; drilling rotations are zero.
struct unequal_triangle {
  explicit unequal_triangle(seeded_random& random) : t(support::random_triangle(random)), X(t.flat()) {
    PLATEELEM.THICKNESS = THICKNESS;
    set_distinct_constants(random);
    for (SURFACE_STATION& s : rule) {
      s.xi = random.uniform(0.0, 1.0);
      s.eta = random.uniform(0.0, 1.0 - s.xi);
      s.weight = random.uniform(0.5, 2.0);
    }
    u = random.vector(18, 1.0);
    for (const std::size_t z : {5U, 11U, 17U}) u[z] = 0.0;
    TRI_U = TRI_DISP_SPLIT(u.data());
  }

  matrix membrane_B() const { return shell_reference::membrane_B(X, 0.2L, 0.2L); }
  matrix bending_B(const SURFACE_STATION& s) const { return shell_reference::kirchhoff_B(X, s.xi, s.eta); }
  real two_area() const { return shell_reference::determinant(X, 0.2L, 0.2L); }
  column membrane_part() const { return column_of({u[0], u[1], u[6], u[7], u[12], u[13]}); }
  column bending_part() const { return column_of({u[2], u[3], u[4], u[8], u[9], u[10], u[14], u[15], u[16]}); }
  matrix3 axes() const { return dense::widened(TRI.AXES.data(), 3, 3); }

  prepared_triangle t;
  corners X;
  SURFACE_STATION rule[4];
  std::vector<double> u;
};

// The places of membrane and bending, as a vector of 18.
column placed(const column& membrane, const column& bending) {
  column f = column::Zero(18);
  for (int i = 0; i < 6; ++i) f(6 * (i / 2) + i % 2) = membrane(i);
  for (int i = 0; i < 9; ++i) f(6 * (i / 3) + 2 + i % 3) = bending(i);
  return f;
}

column in_global_axes(const unequal_triangle& e, const column& f) {
  return shell_reference::groups(e.axes(), 3).transpose() * f;
}

std::vector<double> packed_of(const matrix& K) {
  std::vector<double> packed;
  for (int j = 0; j < K.cols(); ++j) {
    for (int i = 0; i <= j; ++i) packed.push_back(static_cast<double>(K(i, j)));
  }
  return packed;
}

void fill_with_nan(MATRIX<3, 3>& D) {
  for (double& entry : D.V) entry = std::nan("");
}

}  // namespace

TEST(ThinTriangleKernels, StiffnessKeepsTheTwoDirectionsApartAndTakesTheTableOfItsCaller) {
  seeded_random random(171);
  for (int trial = 0; trial < 10; ++trial) {
    const unequal_triangle e(random);
    const matrix Bm = e.membrane_B(), Km = Bm.transpose() * membrane_constants() * Bm * (e.two_area() / 2.0L);
    matrix Kb = matrix::Zero(9, 9);
    for (const SURFACE_STATION& s : e.rule) {
      Kb += e.bending_B(s).transpose() * bending_constants() * e.bending_B(s) * (s.weight * e.two_area());
    }
    support::guarded_buffer membrane(21), bending(45);
    TRI_KM_ISO(TRI, ISO, membrane.data());
    TRI_KB_ISO(TRI, ISO, tri_pairs_iso(TRI, e.rule), bending.data());
    EXPECT_EQ(membrane.changed(), support::range(1, 21));
    EXPECT_EQ(bending.changed(), support::range(1, 45));
    EXPECT_CLOSE(values(membrane.data(), 21), packed_of(Km), largest(Km), 16);
    EXPECT_CLOSE(values(bending.data(), 45), packed_of(Kb), largest(Kb), 64);
  }
}

TEST(ThinTriangleKernels, ForcesKeepTheTwoDirectionsApartAndTakeTheTableOfTheirCaller) {
  // The membrane forces too are summed over the table: weights that do not add up to 1/2 show.
  seeded_random random(172);
  const unequal_triangle e(random);
  column membrane = column::Zero(6), bending = column::Zero(9);
  for (const SURFACE_STATION& s : e.rule) {
    const real c = s.weight * e.two_area();
    membrane += e.membrane_B().transpose() * membrane_constants() * e.membrane_B() * e.membrane_part() * c;
    bending += e.bending_B(s).transpose() * bending_constants() * e.bending_B(s) * e.bending_part() * c;
  }
  std::vector<double> f(24, std::nan(""));
  TRI_FORCES_ISO(PLATEELEM, TRI, ISO, TRI_U, ELEM_LOADS{}, f.data(), 4, e.rule, 33);
  std::vector<double> expected = listed(placed(membrane, bending));
  expected.resize(24, 0.0);  // values 19 to 24 are cleared
  EXPECT_CLOSE(f, expected, support::max_norm(expected), 200);
}

TEST(ThinTriangleKernels, MassTakesTheTableOfItsCaller) {
  seeded_random random(173);
  const unequal_triangle e(random);
  matrix expected = matrix::Zero(9, 9);
  for (const SURFACE_STATION& s : e.rule) {
    const column N = shell_reference::w_functions(e.X, s.xi, s.eta);
    expected += N * N.transpose() * (s.weight * e.two_area() * 0.7);
  }
  std::vector<double> M(45, std::nan(""));
  TRI_MASS_BENDING(TRI, 0.7, e.rule, M.data());
  EXPECT_CLOSE(M, packed_of(expected), largest(expected), 32);
}

TEST(ThinTriangleKernels, LoadsTakeTheTableOfTheirCallerAndAreAdded) {
  seeded_random random(174);
  const unequal_triangle e(random);
  ELEM_LOADS LOADS{};
  LOADS(LOAD_SURFACE_LOCAL) = 2.0;
  LOADS(LOAD_SURFACE_LOCAL + 1) = -3.0;
  LOADS(LOAD_SURFACE_LOCAL + 2) = 5.0;
  column membrane(6), bending = column::Zero(9);
  for (int n = 0; n < 3; ++n) {
    membrane(2 * n) = 2.0L * e.two_area() / 6.0L;
    membrane(2 * n + 1) = -3.0L * e.two_area() / 6.0L;
  }
  for (const SURFACE_STATION& s : e.rule) {
    bending += shell_reference::w_functions(e.X, s.xi, s.eta) * (5.0L * s.weight * e.two_area());
  }
  const column expected = in_global_axes(e, placed(membrane, bending)) + column::Constant(18, 10.0L);
  std::vector<double> f(18, 10.0);
  TRI_LOADS_ISO(PLATEELEM, TRI, LOADS, 4, e.rule, f.data(), TRI_LOAD_MODE, 0);
  EXPECT_CLOSE(f, listed(expected), largest(expected), 32);
  // The general form has the stations of the element: here those of the first form too.
  std::vector<double> isotropic(18, 10.0), general(18, 10.0);
  TRI_LOADS_ISO(PLATEELEM, TRI, LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, isotropic.data(), TRI_LOAD_MODE, 0);
  TRI_LOADS_GENERAL(PLATEELEM, TRI, LOADS, TRI_RULE_COUNT, general.data(), TRI_LOAD_MODE, 0);
  EXPECT_CLOSE(general, isotropic, largest(expected), 32);
}

TEST(ThinTriangleKernels, ThermalForcesTakeTheSumOfEachRowAndTheTableOfTheirCaller) {
  seeded_random random(175);
  const unequal_triangle e(random);
  const double tm = 0.02, tb = 0.5;
  const vector3 N = membrane_constants() * vector3(tm, tm, 0.0L), M = bending_constants() * vector3(tb, tb, 0.0L);
  const column membrane = e.membrane_B().transpose() * N * (e.two_area() / 2.0L);  // a closed form, without the table
  column bending = column::Zero(9);
  for (const SURFACE_STATION& s : e.rule) {
    bending += e.bending_B(s).transpose() * M * (s.weight * e.two_area() / THICKNESS);
  }
  std::vector<double> f(18, 0.0);
  TRI_THERMAL_ISO(PLATEELEM, TRI, ISO, tm, tb, 4, e.rule, f.data());
  const column expected = in_global_axes(e, placed(membrane, bending));
  EXPECT_CLOSE(f, listed(expected), largest(expected), 64);
}

TEST(ThinTriangleKernels, MembraneThermalForcesByHand) {
  // Half of the sides times the forces a = 2 (3 + 1) and b = 2 (1 + 5), on the triangle (0,0), (5,0), (2,3).
  const prepared_triangle t(plane_triangle());
  PLATEELEM.THICKNESS = 0.5;
  ISO = ISOTROPIC_SECTION{};
  ISO.DM11 = 3.0;
  ISO.DM12 = 1.0;
  ISO.DM22 = 5.0;
  std::vector<double> f(18, 0.0), expected(18, 0.0);
  TRI_THERMAL_ISO(PLATEELEM, TRI, ISO, 2.0, 0.0, TRI_RULE_COUNT, TRI_RULE_FOUR, f.data());
  expected[0] = -12.0;
  expected[1] = -18.0;
  expected[6] = 12.0;
  expected[7] = -12.0;
  expected[13] = 30.0;
  EXPECT_CLOSE(f, expected, 30.0, 8);
}

TEST(ThinTriangleKernels, ThermalMomentsOfAGeneralSectionAreNotReadWithoutATemperature) {
  const prepared_triangle t(plane_triangle());
  fill_with_nan(PLATEELEM.D_MEMBRANE_TOTAL);
  fill_with_nan(PLATEELEM.D_BENDING);
  std::vector<double> f(18, 0.0);
  TRI_LOADS_GENERAL(PLATEELEM, TRI, ELEM_LOADS{}, TRI_RULE_COUNT, f.data(), TRI_LOAD_MODE, 0);
  EXPECT_EQ(f, std::vector<double>(18, 0.0));
}

TEST(ThinTriangleKernels, LumpedLoadsAreAThirdAtEachNodeInGlobalAxes) {
  // No engine asks for them.
  seeded_random random(176);
  const unequal_triangle e(random);
  ELEM_LOADS LOADS{};
  const std::vector<double> v = random.vector(9, 1.0);
  for (int i = 0; i < 3; ++i) {
    LOADS(LOAD_BODY + i) = v[static_cast<std::size_t>(i)];
    LOADS(LOAD_SURFACE + i) = v[static_cast<std::size_t>(3 + i)];
    LOADS(LOAD_SURFACE_LOCAL + i) = v[static_cast<std::size_t>(6 + i)];
  }
  const vector3 q = vector3(v[0], v[1], v[2]) * THICKNESS + vector3(v[3], v[4], v[5]) +
                    e.axes().transpose() * vector3(v[6], v[7], v[8]);
  column expected = column::Zero(18);
  for (int n = 0; n < 3; ++n) expected.segment(6 * n, 3) = q * (e.two_area() / 6.0L);
  std::vector<double> iso(18, 0.0), general(18, 0.0);
  TRI_LOADS_ISO(PLATEELEM, TRI, LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, iso.data(), LUMPED_LOADS, 0);
  TRI_LOADS_GENERAL(PLATEELEM, TRI, LOADS, TRI_RULE_COUNT, general.data(), LUMPED_LOADS, 0);
  EXPECT_CLOSE(iso, listed(expected), largest(expected), 32);
  EXPECT_CLOSE(general, listed(expected), largest(expected), 32);
}

TEST(ThinTriangleKernels, RecordsKeepTheTwoDirectionsApart) {
  // The thermal moment of a record has the sum of the first row in both directions; the stresses have each row's.
  seeded_random random(177);
  const unequal_triangle e(random);
  const double tm = 0.02, tb = 0.5;
  PLATEELEM.ALPHA1 = 1.0;
  ELEM_LOADS LOADS{};
  LOADS(LOAD_TEMPERATURE) = tm;
  LOADS(LOAD_TEMPERATURE_DIFF) = tb;
  support::guarded_buffer nodes(360), points(360);
  TRI_RESULTS_ISO(PLATEELEM, TRI, ISO, TRI_U, LOADS, e.t.local, 3, e.rule, nodes.data(), points.data());
  const vector3 N = membrane_constants() * (e.membrane_B() * e.membrane_part() - vector3(tm, tm, 0.0L));
  const real c = real(tb) * (real(ISO.DB11) + ISO.DB12) / THICKNESS;
  for (std::size_t p = 0; p < 3; ++p) {
    const double* const R = points.data() + 90 * p;
    const vector3 M = bending_constants() * e.bending_B(e.rule[p]) * e.bending_part() - vector3(c, c, 0.0L);
    EXPECT_CLOSE(values(R + 36, 3), listed(N), 20.0, 100) << p;
    EXPECT_CLOSE(values(R + 39, 3), listed(M), 200.0, 100) << p;
  }
  EXPECT_FALSE(points.changed(271));  // three stations, three records
}

TEST(ThinTriangleKernels, RecordsStandWhereTheLocalCoordinatesSay) {
  // In the element's own frame node 1 is the origin and adds nothing to a position: here it does. The fourth point is
  // 0.2, 0.2, 0.6 of the nodes.
  prepared_triangle t(plane_triangle());
  PLATEELEM.THICKNESS = 1.0;
  TRI_U = TRI_DISPLACEMENTS{};
  ISO = ISOTROPIC_SECTION{};
  for (int n = 1; n <= 3; ++n) {
    t.local(1, n) += 10.0;
    t.local(2, n) += 20.0;
  }
  std::vector<double> nodes(360), points(360);
  for (const bool general : {false, true}) {
    if (general) {
      TRI_RESULTS_GENERAL(PLATEELEM, TRI, TRI_U, t.local, TRI_RULE_COUNT, nodes.data(), points.data());
    } else {
      TRI_RESULTS_ISO(PLATEELEM, TRI, ISO, TRI_U, ELEM_LOADS{}, t.local, TRI_RULE_COUNT, TRI_RULE_FOUR, nodes.data(),
                      points.data());
    }
    EXPECT_EQ((std::vector<double>{nodes[180], nodes[181]}), (std::vector<double>{12.0, 23.0}));
    EXPECT_CLOSE((std::vector<double>{points[270], points[271]}), (std::vector<double>{12.2, 21.8}), 20.0, 4);
  }
}

// An engine leaves D_MEMBRANE_SHEAR of a triangle zero, so that the normal part and the whole are the same. What reads
// which is fixed: stiffness and forces read the normal part, records and thermal forces the whole.
TEST(ThinTriangleKernels, StiffnessAndForcesReadTheNormalPartOfTheSection) {
  seeded_random random(178);
  const unequal_triangle e(random);
  fill_with_nan(PLATEELEM.D_MEMBRANE_TOTAL);
  fill_with_nan(PLATEELEM.D_MEMBRANE_SHEAR);
  std::vector<double> f(24, 1.0), KG(171, 0.0), Km(21, 1.0), big(360, 1.0);
  TRI_FORCES_GENERAL(PLATEELEM, TRI, TRI_U, ELEM_LOADS{}, f.data(), TRI_RULE_COUNT, 33);
  TRI_KG_GENERAL(PLATEELEM, 7, e.u.data(), big.data(), 1.0, KG.data());
  TRI_KM_GENERAL(PLATEELEM, tri_pairs_general(PLATEELEM), Km.data());
  EXPECT_EQ(f, std::vector<double>(24, 0.0));  // the normal part is zero
  EXPECT_EQ(KG, std::vector<double>(171, 0.0));
  EXPECT_EQ(Km, std::vector<double>(21, 0.0));
}

TEST(ThinTriangleKernels, RecordsAndThermalForcesReadTheWholeSection) {
  seeded_random random(179);
  const unequal_triangle e(random);
  fill_with_nan(PLATEELEM.D_MEMBRANE_NORMAL);
  fill_with_nan(PLATEELEM.D_MEMBRANE_SHEAR);
  PLATEELEM.THERMAL_M1 = 1.0;
  std::vector<double> nodes(360), points(360), f(18, 0.0);
  TRI_RESULTS_GENERAL(PLATEELEM, TRI, TRI_U, e.t.local, TRI_RULE_COUNT, nodes.data(), points.data());
  for (std::size_t p = 0; p < 4; ++p) {
    EXPECT_EQ(values(&points[90 * p + 36], 3), std::vector<double>(3, 0.0));  // the whole matrix is zero
    EXPECT_GT(support::max_norm(values(&points[90 * p + 14], 3)), 0.0);
  }
  TRI_LOADS_GENERAL(PLATEELEM, TRI, ELEM_LOADS{}, TRI_RULE_COUNT, f.data(), TRI_LOAD_MODE, 0);
  EXPECT_EQ(f, std::vector<double>(18, 0.0));
}

TEST(TriangleDisplacements, TurnByGroupsOfThreeWithTheAxes) {
  // Axes: local x is global y, local y global z, local z global x.
  const prepared_triangle t({{1.0, 2.0, 3.0}, {1.0, 5.0, 3.0}, {1.0, 2.0, 7.0}});
  std::vector<double> u(18), expected(18);
  for (std::size_t i = 0; i < 18; ++i) u[i] = static_cast<double>(i + 1);
  for (std::size_t g = 0; g < 18; g += 3) {
    expected[g] = u[g + 1];
    expected[g + 1] = u[g + 2];
    expected[g + 2] = u[g];
  }
  support::guarded_buffer ul(18);
  TRI_DISP_LOCAL(TRI, u.data(), ul.data());
  EXPECT_EQ(values(ul.data(), 18), expected);
  EXPECT_EQ(ul.changed(), support::range(1, 18));
}

TEST(TriangleDisplacements, SplitByPart) {
  std::vector<double> ul(18);
  for (std::size_t i = 0; i < 18; ++i) ul[i] = static_cast<double>(i + 1);
  const TRI_DISPLACEMENTS parts = TRI_DISP_SPLIT(ul.data());
  EXPECT_EQ(values(parts.MEMBRANE.data(), 6), (std::vector<double>{1, 2, 7, 8, 13, 14}));
  EXPECT_EQ(values(parts.BENDING.data(), 9), (std::vector<double>{3, 4, 5, 9, 10, 11, 15, 16, 17}));
  EXPECT_EQ(values(parts.DRILL.data(), 3), (std::vector<double>{6, 12, 18}));
}
