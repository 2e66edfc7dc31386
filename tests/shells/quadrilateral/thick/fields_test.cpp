// fields_test.cpp: curvatures and transverse shears of the thick quadrilateral against rotations built from the
// conditions of its sides.
#include <cmath>

#include "comparison.h"
#include "element_stores.h"
#include "prepared_quadrilateral.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/thick/bending.h"
#include "shells/quadrilateral/thick/shear.h"
#include "shells/quadrilateral/thick/side_constants.h"
#include "shells/quadrilateral/thin/bending.h"
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
matrix wide_of(const MATRIX<M, 12>& B) {
  return dense::widened(B.data(), M, 12);
}

struct natural {
  double xi, eta;
};

natural random_point(seeded_random& random) {
  const double xi = random.uniform(-1.0, 1.0);
  return {xi, random.uniform(-1.0, 1.0)};
}

// Both kernels in both forms, for one isotropic plate.
struct isotropic_fields {
  explicit isotropic_fields(seeded_random& random) : t(support::random_quadrilateral(random)) {
    ELEM_LOADS LOADS{};
    set_isotropic(random, LOADS);
    QUAD_SIDES = SIDE_CONST_QUAD_ISO(PLATEELEM, QUAD, LOADS);
    SIDE_CONST_QUAD(PLATEELEM);
    X = t.flat();
    phi = column(4);
    for (int k = 1; k <= 4; ++k) phi(k - 1) = QUAD_SIDES.PHI(k);
  }
  matrix bending(const natural& p) const {
    MATRIX<3, 12> B;
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, p.xi, p.eta);
    B_BEND_QUAD_ISO(QUAD_SIDES, J, p.xi, p.eta, B);
    return wide_of(B);
  }
  matrix bending_general(const natural& p) const {
    MATRIX<3, 12> B;
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, p.xi, p.eta);
    B_BEND_QUAD(PLATEELEM, p.xi, p.eta, J.G11, J.G12, J.G21, J.G22, B);
    return wide_of(B);
  }
  matrix shear(const natural& p) const {
    MATRIX<2, 12> B;
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, p.xi, p.eta);
    B_SHEAR_QUAD_ISO(QUAD_SIDES, J, p.xi, p.eta, B);
    return wide_of(B);
  }
  matrix shear_general(const natural& p) const {
    MATRIX<2, 12> B;
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, p.xi, p.eta);
    B_SHEAR_QUAD(PLATEELEM, p.xi, p.eta, J.G11, J.G12, J.G21, J.G22, B);
    return wide_of(B);
  }
  prepared_quadrilateral t;
  corners X;
  column phi;
};

}  // namespace

TEST(ThickQuadrilateralCurvatures, AreDerivativesOfTheRotationsOfTheirSides) {
  seeded_random random(531);
  for (int trial = 0; trial < 100; ++trial) {
    const isotropic_fields f(random);
    const natural p = random_point(random);
    const matrix expected = shell_reference::mindlin_B(f.X, f.phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(f.bending(p)), listed(expected), largest(expected), 64);
    EXPECT_CLOSE(listed(f.bending_general(p)), listed(expected), largest(expected), 100);
  }
}

TEST(ThickQuadrilateralCurvatures, OfAGeneralSectionAreThoseOfItsRatios) {
  seeded_random random(532);
  for (int trial = 0; trial < 100; ++trial) {
    const prepared_quadrilateral t(support::random_quadrilateral(random));
    shell_reference::section s;
    set_random_section(random, s);
    SIDE_CONST_QUAD(PLATEELEM);
    const column phi = shell_reference::ratios(t.flat(), s);
    const natural p = random_point(random);
    MATRIX<3, 12> B;
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, p.xi, p.eta);
    B_BEND_QUAD(PLATEELEM, p.xi, p.eta, J.G11, J.G12, J.G21, J.G22, B);
    const matrix bending = shell_reference::mindlin_B(t.flat(), phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(wide_of(B)), listed(bending), largest(bending), 200);
    MATRIX<2, 12> G;
    B_SHEAR_QUAD(PLATEELEM, p.xi, p.eta, J.G11, J.G12, J.G21, J.G22, G);
    const matrix shear = shell_reference::shear_B(t.flat(), phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(wide_of(G)), listed(shear), largest(shear), 200);
  }
}

TEST(ThickQuadrilateralCurvatures, TakeTheInverseJacobianOfTheirCaller) {
  // Each entry alone gives its part, of curvatures and of shears.
  const prepared_quadrilateral t(plane_quadrilateral());
  seeded_random random(538);
  shell_reference::section s;
  set_random_section(random, s);
  SIDE_CONST_QUAD(PLATEELEM);
  const auto parts = [](double g11, double g12, double g21, double g22) {
    MATRIX<3, 12> B;
    MATRIX<2, 12> G;
    B_BEND_QUAD(PLATEELEM, 0.3, -0.55, g11, g12, g21, g22, B);
    B_SHEAR_QUAD(PLATEELEM, 0.3, -0.55, g11, g12, g21, g22, G);
    matrix both(5, 12);
    both << wide_of(B), wide_of(G);
    return both;
  };
  const matrix g11 = parts(1, 0, 0, 0), g12 = parts(0, 1, 0, 0), g21 = parts(0, 0, 1, 0), g22 = parts(0, 0, 0, 1);
  EXPECT_CLOSE(listed(parts(2, 3, 5, 7)), listed(2 * g11 + 3 * g12 + 5 * g21 + 7 * g22), 20.0, 16);
  for (const auto& [x, y] : {std::pair{g11, g21}, std::pair{g12, g22}}) {
    EXPECT_EQ(listed(x.row(0)), listed(y.row(2)));
    EXPECT_EQ(listed(x.row(2)), listed(y.row(1)));
    EXPECT_EQ(listed(x.row(3)), listed(y.row(4)));
    EXPECT_EQ(x.row(1).cwiseAbs().sum() + x.row(4).cwiseAbs().sum(), 0.0L);
    EXPECT_EQ(y.row(0).cwiseAbs().sum() + y.row(3).cwiseAbs().sum(), 0.0L);
  }
}

TEST(ThickQuadrilateralCurvatures, OfFieldsOfConstantCurvatureWhateverTheRatios) {
  seeded_random random(533);
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

TEST(ThickQuadrilateralCurvatures, WithVanishingRatiosAreThoseOfTheKirchhoffQuadrilateral) {
  seeded_random random(534);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_quadrilateral t(support::random_quadrilateral(random));
    ELEM_LOADS LOADS{};
    LOADS(LOAD_MOD_BENDING) = 0.0;
    LOADS(LOAD_MOD_SHEAR) = 1.0;
    PLATEELEM.THICKNESS = 0.1;
    QUAD_SIDES = SIDE_CONST_QUAD_ISO(PLATEELEM, QUAD, LOADS);
    const natural p = random_point(random);
    MATRIX<3, 12> thick, thin;
    MATRIX<2, 12> shear;
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, p.xi, p.eta);
    B_BEND_QUAD_ISO(QUAD_SIDES, J, p.xi, p.eta, thick);
    B_SHEAR_QUAD_ISO(QUAD_SIDES, J, p.xi, p.eta, shear);
    DKQ_BMATRIX_STORED(QUAD, J, p.xi, p.eta, thin);
    EXPECT_CLOSE(listed(wide_of(thick)), listed(wide_of(thin)), largest(wide_of(thin)), 64);
    EXPECT_EQ(largest(wide_of(shear)), 0.0);
  }
}

TEST(ThickQuadrilateralShears, AreTheReference) {
  seeded_random random(535);
  for (int trial = 0; trial < 100; ++trial) {
    const isotropic_fields f(random);
    const natural p = random_point(random);
    const matrix expected = shell_reference::shear_B(f.X, f.phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(f.shear(p)), listed(expected), largest(expected), 100);
    EXPECT_CLOSE(listed(f.shear_general(p)), listed(expected), largest(expected), 200);
  }
}

TEST(ThickQuadrilateralShears, AlongASideAreTwoThirdsOfItsRatioTimesItsIncrement) {
  // -(2/3) phi dB at every point of the side, with dB as the library has it.
  seeded_random random(536);
  for (int trial = 0; trial < 30; ++trial) {
    const isotropic_fields f(random);
    const std::vector<double> u = random.vector(12, 1.0);
    const column q = shell_reference::column_of(u);
    const double corner[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    for (int k = 1; k <= 4; ++k) {
      real dB = 0.0L;
      for (int n = 0; n < 4; ++n) {
        dB += QUAD_SIDES.A_DELTA(k, 3 * n + 1) * q(3 * n) + QUAD_SIDES.A_DELTA(k, 3 * n + 2) * q(3 * n + 2) -
              QUAD_SIDES.A_DELTA(k, 3 * n + 3) * q(3 * n + 1);
      }
      const real expected = -2.0L / 3.0L * f.phi(k - 1) * dB;
      const vector2 t = shell_reference::side(f.X, k - 1).normalized();
      for (const double s : {0.0, 0.3, 0.5, 1.0}) {
        const double* a = corner[k - 1];
        const double* b = corner[k % 4];
        const natural p = {(1 - s) * a[0] + s * b[0], (1 - s) * a[1] + s * b[1]};
        const vector2 g = f.shear(p) * q, h = f.shear_general(p) * q;
        EXPECT_CLOSE(static_cast<double>(t.dot(g)), static_cast<double>(expected), largest(f.shear(p)), 64) << k;
        EXPECT_CLOSE(static_cast<double>(t.dot(h)), static_cast<double>(expected), largest(f.shear(p)), 200) << k;
      }
    }
  }
}

TEST(ThickQuadrilateralShears, IntegralOnASideIsTheDeflectionAndTheRotations) {
  // The integral of w,s + beta_s along a side is its length times its shear: Simpson's rule on the quadratic rotations.
  seeded_random random(537);
  const isotropic_fields f(random);
  const column q = shell_reference::column_of(random.vector(12, 1.0));
  const double corner[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
  for (int k = 0; k < 4; ++k) {
    const int j = (k + 1) % 4;
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

TEST(ThickQuadrilateralShears, OfARectangleAreLinearBetweenItsSides) {
  // gxz goes linearly from side 1 to side 3, gyz from side 4 to side 2, each alone.
  const prepared_quadrilateral t(rectangle(4.0, 2.0));
  ELEM_LOADS LOADS{};
  seeded_random random(539);
  set_isotropic(random, LOADS);
  QUAD_SIDES = SIDE_CONST_QUAD_ISO(PLATEELEM, QUAD, LOADS);
  const column q = shell_reference::column_of(random.vector(12, 1.0));
  const auto g = [&q](double xi, double eta) -> vector2 {
    MATRIX<2, 12> B;
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
    B_SHEAR_QUAD_ISO(QUAD_SIDES, J, xi, eta, B);
    return wide_of(B) * q;
  };
  for (const double a : {-1.0, -0.3, 0.8}) {
    for (const double b : {-1.0, 0.1, 1.0}) {
      EXPECT_CLOSE(static_cast<double>(g(a, b)(0)),
                   static_cast<double>((1 - b) / 2 * g(0.0, -1.0)(0) + (1 + b) / 2 * g(0.0, 1.0)(0)), 2.0, 16);
      EXPECT_CLOSE(static_cast<double>(g(a, b)(1)),
                   static_cast<double>((1 - a) / 2 * g(-1.0, 0.0)(1) + (1 + a) / 2 * g(1.0, 0.0)(1)), 2.0, 16);
    }
  }
}

TEST(ThickQuadrilateralFields, AreIndependentOfTheOriginAndTheDirectionOfTheAxes) {
  // In the element's own frame the centroid is the origin and side 1-2 is parallel to x: here neither.
  seeded_random random(540);
  for (int trial = 0; trial < 20; ++trial) {
    prepared_quadrilateral t(support::random_quadrilateral(random));
    shell_reference::section s;
    set_random_section(random, s);
    for (int n = 1; n <= 4; ++n) {
      const double x = t.local(1, n), y = t.local(2, n);
      t.local(1, n) = 0.6 * x - 0.8 * y + 2.0;
      t.local(2, n) = 0.8 * x + 0.6 * y - 1.0;
    }
    PLATEELEM.LOCAL_XYZ_QUAD = t.local;
    QUAD_GEOMETRY(t.local, 0, QUAD);
    SIDE_CONST_QUAD(PLATEELEM);
    const column phi = shell_reference::ratios(t.flat(), s);
    const natural p = random_point(random);
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, p.xi, p.eta);
    MATRIX<3, 12> B;
    MATRIX<2, 12> G;
    B_BEND_QUAD(PLATEELEM, p.xi, p.eta, J.G11, J.G12, J.G21, J.G22, B);
    B_SHEAR_QUAD(PLATEELEM, p.xi, p.eta, J.G11, J.G12, J.G21, J.G22, G);
    const matrix bending = shell_reference::mindlin_B(t.flat(), phi, p.xi, p.eta);
    const matrix shear = shell_reference::shear_B(t.flat(), phi, p.xi, p.eta);
    EXPECT_CLOSE(listed(wide_of(B)), listed(bending), largest(bending), 400);
    EXPECT_CLOSE(listed(wide_of(G)), listed(shear), largest(shear), 400);
  }
}
