// fields_test.cpp: curvatures and transverse shears of the thick triangle against rotations built from the conditions
// of its sides.
#include <cmath>

#include "comparison.h"
#include "element_stores.h"
#include "finites/fields.h"
#include "prepared_triangle.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/thick/bending.h"
#include "shells/triangle/thick/shear.h"
#include "shells/triangle/thick/side_constants.h"
#include "shells/triangle/thin/bending.h"
#include "thick_sections.h"

using shell_reference::column;
using shell_reference::corners;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::quadratic_deflection;
using shell_reference::real;
using shell_reference::vector2;
using support::seeded_random;

namespace {

template <int M>
matrix wide_of(const MATRIX<M, 9>& B) {
  return dense::widened(B.data(), M, 9);
}

struct natural {
  double xi, eta;
};

natural random_point(seeded_random& random) {
  const double xi = random.uniform(0.0, 1.0);
  return {xi, random.uniform(0.0, 1.0 - xi)};
}

// Both kernels in both forms, for one isotropic plate.
struct isotropic_fields {
  explicit isotropic_fields(seeded_random& random) : t(support::random_triangle(random)) {
    ELEM_LOADS LOADS{};
    set_isotropic(random, LOADS);
    TRI_SIDES = SIDE_CONST_TRI_ISO(PLATEELEM, TRI, LOADS);
    SIDE_CONST_TRI(PLATEELEM);
    X = t.flat();
    phi = column(3);
    for (int k = 1; k <= 3; ++k) phi(k - 1) = TRI_SIDES.PHI(k);
  }
  matrix bending(const natural& p) const {
    MATRIX<3, 9> B;
    B_BEND_TRI_ISO(TRI, TRI_SIDES, p.xi, p.eta, TRI_SIDES.A_DELTA, B);
    return wide_of(B);
  }
  matrix bending_general(const natural& p) const {
    MATRIX<3, 9> B;
    B_BEND_TRI(PLATEELEM, p.xi, p.eta, TRI.G11, TRI.G12, TRI.G21, TRI.G22, TRI.TWO_AREA, B);
    return wide_of(B);
  }
  matrix shear(const natural& p) const {
    MATRIX<2, 9> B;
    B_SHEAR_TRI_ISO(TRI_SIDES, p.xi, p.eta, B);
    return wide_of(B);
  }
  matrix shear_general(const natural& p) const {
    MATRIX<2, 9> B;
    B_SHEAR_TRI(PLATEELEM, p.xi, p.eta, B);
    return wide_of(B);
  }
  prepared_triangle t;
  corners X;
  column phi;
};

}  // namespace

TEST(ThickTriangleCurvatures, AreDerivativesOfTheRotationsOfTheirSides) {
  seeded_random random(511);
  for (int trial = 0; trial < 100; ++trial) {
    const isotropic_fields f(random);
    const natural p = random_point(random);
    const matrix expected = shell_reference::mindlin_B(f.X, f.phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(f.bending(p)), listed(expected), largest(expected), 64);
    EXPECT_CLOSE(listed(f.bending_general(p)), listed(expected), largest(expected), 100);
  }
}

TEST(ThickTriangleCurvatures, OfAGeneralSectionAreThoseOfItsRatios) {
  seeded_random random(512);
  for (int trial = 0; trial < 100; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    shell_reference::section s;
    set_random_section(random, s);
    SIDE_CONST_TRI(PLATEELEM);
    const column phi = shell_reference::ratios(t.flat(), s);
    const natural p = random_point(random);
    MATRIX<3, 9> B;
    const SURFACE_POINT at = surface_point(RULE_ELEMENT, 2, 3, t.local.data());
    B_BEND_TRI(PLATEELEM, p.xi, p.eta, at.g11, at.g12, at.g21, at.g22, at.detj, B);
    const matrix bending = shell_reference::mindlin_B(t.flat(), phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(wide_of(B)), listed(bending), largest(bending), 200);
    MATRIX<2, 9> G;
    B_SHEAR_TRI(PLATEELEM, p.xi, p.eta, G);
    const matrix shear = shell_reference::shear_B(t.flat(), phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(wide_of(G)), listed(shear), largest(shear), 200);
  }
}

TEST(ThickTriangleCurvatures, OfFieldsOfConstantCurvatureWhateverTheRatios) {
  seeded_random random(513);
  for (int trial = 0; trial < 30; ++trial) {
    const isotropic_fields f(random);
    const natural p = random_point(random);
    const std::vector<double> fields[4] = {
        {0.3, -0.7, 0.9, 0, 0, 0}, {0, 0, 0, 1, 0, 0}, {0, 0, 0, 0, 1, 0}, {0, 0, 0, 0, 0, 1}};
    const std::vector<double> curvature[4] = {{0, 0, 0}, {-1, 0, 0}, {0, -1, 0}, {0, 0, -2}};
    for (int i = 0; i < 4; ++i) {
      const column q = quadratic_deflection(f.X, fields[i]);
      EXPECT_CLOSE(listed(f.bending(p) * q), curvature[i], largest(f.bending(p)), 64);
      EXPECT_CLOSE(listed(f.bending_general(p) * q), curvature[i], largest(f.bending(p)), 64);
      EXPECT_CLOSE(listed(f.shear(p) * q), std::vector<double>(2, 0.0), largest(f.shear(p)), 64);
      EXPECT_CLOSE(listed(f.shear_general(p) * q), std::vector<double>(2, 0.0), largest(f.shear(p)), 64);
    }
  }
}

TEST(ThickTriangleCurvatures, WithVanishingRatiosAreThoseOfTheKirchhoffTriangle) {
  seeded_random random(514);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    ELEM_LOADS LOADS{};
    LOADS(LOAD_MOD_BENDING) = 0.0;
    LOADS(LOAD_MOD_SHEAR) = 1.0;
    PLATEELEM.THICKNESS = 0.1;
    TRI_SIDES = SIDE_CONST_TRI_ISO(PLATEELEM, TRI, LOADS);
    const natural p = random_point(random);
    MATRIX<3, 9> thick, thin;
    MATRIX<2, 9> shear;
    B_BEND_TRI_ISO(TRI, TRI_SIDES, p.xi, p.eta, TRI_SIDES.A_DELTA, thick);
    B_SHEAR_TRI_ISO(TRI_SIDES, p.xi, p.eta, shear);
    DKT_BMATRIX_STORED(TRI, p.xi, p.eta, thin);
    EXPECT_CLOSE(listed(wide_of(thick)), listed(wide_of(thin)), largest(wide_of(thin)), 64);
    EXPECT_EQ(largest(wide_of(shear)), 0.0);
  }
}

TEST(ThickTriangleShears, AreTheReference) {
  seeded_random random(515);
  for (int trial = 0; trial < 100; ++trial) {
    const isotropic_fields f(random);
    const natural p = random_point(random);
    const matrix expected = shell_reference::shear_B(f.X, f.phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(f.shear(p)), listed(expected), largest(expected), 100);
    EXPECT_CLOSE(listed(f.shear_general(p)), listed(expected), largest(expected), 200);
  }
}

TEST(ThickTriangleShears, AlongASideAreTwoThirdsOfItsRatioTimesItsIncrement) {
  // -(2/3) phi dB at every point of the side, with dB as the library has it.
  seeded_random random(516);
  for (int trial = 0; trial < 30; ++trial) {
    const isotropic_fields f(random);
    const std::vector<double> u = random.vector(9, 1.0);
    const column q = shell_reference::column_of(u);
    const double corner[3][2] = {{0, 0}, {1, 0}, {0, 1}};
    for (int k = 1; k <= 3; ++k) {
      real dB = 0.0L;
      for (int n = 0; n < 3; ++n) {
        dB += TRI_SIDES.A_DELTA(k, 3 * n + 1) * q(3 * n) + TRI_SIDES.A_DELTA(k, 3 * n + 2) * q(3 * n + 2) -
              TRI_SIDES.A_DELTA(k, 3 * n + 3) * q(3 * n + 1);
      }
      const real expected = -2.0L / 3.0L * f.phi(k - 1) * dB;
      const vector2 t = shell_reference::side(f.X, k - 1).normalized();
      for (const double s : {0.0, 0.3, 0.5, 1.0}) {
        const double* a = corner[k - 1];
        const double* b = corner[k % 3];
        const natural p = {(1 - s) * a[0] + s * b[0], (1 - s) * a[1] + s * b[1]};
        const vector2 g = f.shear(p) * q, h = f.shear_general(p) * q;
        EXPECT_CLOSE(static_cast<double>(t.dot(g)), static_cast<double>(expected), largest(f.shear(p)), 64) << k;
        EXPECT_CLOSE(static_cast<double>(t.dot(h)), static_cast<double>(expected), largest(f.shear(p)), 200) << k;
      }
    }
  }
}

TEST(ThickTriangleShears, IntegralOnASideIsTheDeflectionAndTheRotations) {
  // The integral of w,s + beta_s along a side is its length times its shear: Simpson's rule on the quadratic rotations.
  seeded_random random(517);
  const isotropic_fields f(random);
  const column q = shell_reference::column_of(random.vector(9, 1.0));
  const double corner[3][2] = {{0, 0}, {1, 0}, {0, 1}};
  for (int k = 0; k < 3; ++k) {
    const int j = (k + 1) % 3;
    const vector2 d = shell_reference::side(f.X, k);
    real sum = q(3 * j) - q(3 * k);
    const double weight[3] = {1.0 / 6.0, 4.0 / 6.0, 1.0 / 6.0};
    for (int i = 0; i < 3; ++i) {
      const double s = i / 2.0;
      const double xi = (1 - s) * corner[k][0] + s * corner[j][0], eta = (1 - s) * corner[k][1] + s * corner[j][1];
      sum += weight[i] * d.dot(shell_reference::mindlin_rotations(f.X, f.phi, xi, eta) * q);
    }
    const vector2 g = f.shear({corner[k][0], corner[k][1]}) * q;
    EXPECT_CLOSE(static_cast<double>(sum), static_cast<double>(d.dot(g)), 4.0, 64) << k;
  }
}

TEST(ThickTriangleFields, AreIndependentOfTheOriginAndTheDirectionOfTheAxes) {
  // In the element's own frame node 1 is the origin and side 1-2 lies on x: here neither.
  seeded_random random(518);
  for (int trial = 0; trial < 20; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    shell_reference::section s;
    set_random_section(random, s);
    MATRIX<3, 3>& local = PLATEELEM.LOCAL_XYZ;
    corners X(2, 3);
    for (int n = 1; n <= 3; ++n) {
      const double x = local(1, n), y = local(2, n);
      local(1, n) = 0.6 * x - 0.8 * y + 2.0;
      local(2, n) = 0.8 * x + 0.6 * y - 1.0;
      X.col(n - 1) << local(1, n), local(2, n);
    }
    SIDE_CONST_TRI(PLATEELEM);
    const column phi = shell_reference::ratios(X, s);
    const natural p = random_point(random);
    const SURFACE_POINT at = surface_point(RULE_ELEMENT, 1, 3, local.data());
    MATRIX<3, 9> B;
    MATRIX<2, 9> G;
    B_BEND_TRI(PLATEELEM, p.xi, p.eta, at.g11, at.g12, at.g21, at.g22, at.detj, B);
    B_SHEAR_TRI(PLATEELEM, p.xi, p.eta, G);
    const matrix bending = shell_reference::mindlin_B(X, phi, p.xi, p.eta);
    const matrix shear = shell_reference::shear_B(X, phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(wide_of(B)), listed(bending), largest(bending), 400);
    EXPECT_CLOSE(listed(wide_of(G)), listed(shear), largest(shear), 400);
  }
}
