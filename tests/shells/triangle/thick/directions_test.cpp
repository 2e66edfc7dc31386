// directions_test.cpp: the isotropic kernels of the thick triangle with constants that differ in the two directions,
// and records with node 1 off the origin. An engine has neither; the kernels do not count on it.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_stores.h"
#include "element_subject.h"
#include "guarded_buffer.h"
#include "prepared_triangle.h"
#include "shells/common/constitutive.h"
#include "shells/triangle/forces.h"
#include "shells/triangle/thick/forces.h"
#include "shells/triangle/thick/results.h"
#include "shells/triangle/thick/stiffness.h"
#include "shells/triangle/thin/forces.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::vector2;
using shell_reference::vector3;
using support::seeded_random;
using support::values;

namespace {

// One element as the engine has prepared it, with another stiffness in the second direction, in ISO and in the
// reference.
struct unequal_triangle {
  explicit unequal_triangle(seeded_random& random)
      : nodes(support::random_triangle(random)), t(nodes), call(random_element(random, isotropic_subject(11), nodes)) {
    ISO = PLATE_D_ISOTROPIC(PLATEELEM, 0, call.LOADS);
    ISO.DM22 *= 1.75;
    ISO.DB22 *= 2.5;
    ISO.DS2 *= 1.25;
    call.reference.s.membrane(1, 1) *= 1.75L;
    call.reference.s.bending(1, 1) *= 2.5L;
    call.reference.s.shear(1, 1) *= 1.25L;
  }
  std::vector<support::point> nodes;
  prepared_triangle t;
  element_call call;
};

}  // namespace

TEST(ThickTriangleKernels, StiffnessAndForcesKeepTheTwoDirectionsApart) {
  seeded_random random(571);
  const unequal_triangle e(random);
  const matrix K = e.call.reference.stiffness();
  std::vector<double> packed(171), full(324);
  FLAT_PARTS<3> parts;
  KSTIF_TRI_THICK_ELAS(PLATEELEM, TRI, ISO, e.call.LOADS, parts);
  assemble_parts(parts, packed.data());
  for (std::size_t j = 0; j < 18; ++j) {
    for (std::size_t i = 0; i <= j; ++i) full[18 * j + i] = full[18 * i + j] = packed[j * (j + 1) / 2 + i];
  }
  EXPECT_CLOSE(full, listed(K), largest(K), 100);
  const std::vector<double> u = random.vector(18, 1.0);
  TRI_U = TRI_DISP_SPLIT(u.data());
  std::vector<double> f(24, std::nan(""));
  FINT_TRI_THICK_ISO(PLATEELEM, TRI, ISO, TRI_U, e.call.LOADS, f.data(), 33);
  std::vector<double> expected = listed(K * column_of(u));
  expected.resize(24, 0.0);  // values 19 to 24 are cleared
  EXPECT_CLOSE(f, expected, largest(K), 100);
}

TEST(ThickTriangleKernels, RecordsKeepTheTwoDirectionsApart) {
  seeded_random random(572);
  const unequal_triangle e(random);
  const shell_reference::reference_element& r = e.call.reference;
  const std::vector<double> u = random.vector(18, 1.0);
  TRI_U = TRI_DISP_SPLIT(u.data());
  support::guarded_buffer nodes(360), points(360);
  RES_TRI_THICK_ISO(PLATEELEM, TRI, ISO, TRI_U, e.call.LOADS, e.t.local, nodes.data(), points.data());
  for (std::size_t p = 0; p < 4; ++p) {
    const shell_reference::station& at = shell_reference::element_rule(3)[p];
    const column w = r.bending_part(column_of(u));
    const vector3 N = r.s.whole() * shell_reference::membrane_B(r.X, at.xi, at.eta) * r.membrane_part(column_of(u));
    const vector3 M = r.s.bending * r.bending_B(at.xi, at.eta) * w;
    const vector2 Q = r.s.shear * r.shear_B(at.xi, at.eta) * w;
    const double* const block = points.data() + 90 * p;
    EXPECT_CLOSE(values(block + 36, 3), listed(N), 20.0 * largest(r.s.whole()), 64) << p;
    EXPECT_CLOSE(values(block + 39, 3), listed(M), 200.0 * largest(r.s.bending), 64) << p;
    EXPECT_CLOSE(values(block + 44, 2), listed(Q), 20.0 * largest(r.s.shear), 100) << p;
  }
}

TEST(ThickTriangleKernels, RecordsStandWhereTheLocalCoordinatesSay) {
  // In the element's own frame node 1 is the origin and adds nothing to a position: here it does.
  seeded_random random(573);
  const unequal_triangle e(random);
  const std::vector<double> u(18, 0.0);
  TRI_U = TRI_DISP_SPLIT(u.data());
  MATRIX<3, 3> local{};
  const double x[3] = {3.0, 11.0, 5.0}, y[3] = {-2.0, 1.0, 7.0};
  for (int n = 1; n <= 3; ++n) {
    local(1, n) = x[n - 1];
    local(2, n) = y[n - 1];
  }
  support::guarded_buffer nodes(360), points(360);
  RES_TRI_THICK_ISO(PLATEELEM, TRI, ISO, TRI_U, e.call.LOADS, local, nodes.data(), points.data());
  for (int n = 0; n < 3; ++n) EXPECT_EQ(values(nodes.data() + 90 * n, 3), (std::vector<double>{x[n], y[n], 0.0}));
  // The centroid, and the points a fifth from two sides.
  const double L[4][3] = {{1.0 / 3, 1.0 / 3, 1.0 / 3}, {0.6, 0.2, 0.2}, {0.2, 0.6, 0.2}, {0.2, 0.2, 0.6}};
  for (int p = 0; p < 4; ++p) {
    const std::vector<double> at = {L[p][0] * x[0] + L[p][1] * x[1] + L[p][2] * x[2],
                                    L[p][0] * y[0] + L[p][1] * y[1] + L[p][2] * y[2]};
    EXPECT_CLOSE(values(points.data() + 90 * p, 2), at, 11.0, 8) << p;
  }
}
