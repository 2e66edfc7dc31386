// membrane_test.cpp: bilinear membrane, its shear at the centre, and the drilling term.
#include "shells/quadrilateral/membrane.h"

#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_stores.h"
#include "element_subject.h"
#include "guarded_buffer.h"
#include "prepared_quadrilateral.h"

using shell_reference::column;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using support::seeded_random;
using support::values;

TEST(BilinearMembrane, IsTheGradientOfItsFunctions) {
  seeded_random random(421);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    const matrix expected = shell_reference::membrane_B(q.flat(), xi, eta);
    MATRIX<3, 8> stored, given;
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
    QUAD_B_MEMBRANE_STORED(J, xi, eta, stored);
    EXPECT_CLOSE(values(stored.data(), 24), listed(expected), largest(expected), 32);
    QUAD_B_MEMBRANE(xi, eta, 1.0, 2.0, 3.0, 4.0, given);
    const auto slope = [&](int node, double by_xi, double by_eta) {
      const double sx[4] = {-1, 1, 1, -1}, sy[4] = {-1, -1, 1, 1};
      return by_xi * sx[node] * (1 + sy[node] * eta) / 4 + by_eta * sy[node] * (1 + sx[node] * xi) / 4;
    };
    for (int n = 0; n < 4; ++n) {
      const double x = slope(n, 1.0, 2.0), y = slope(n, 3.0, 4.0);
      EXPECT_CLOSE(values(&given(1, 2 * n + 1), 6), (std::vector<double>{x, 0.0, y, 0.0, y, x}), 4.0, 8);
    }
  }
}

TEST(BilinearMembrane, PlaneTwistHasNoShearEnergy) {
  // The hourglass mode of any shape: a change of the in-plane shear stiffness does not reach it.
  seeded_random random(422);
  for (const int kind : {20, 21, 22}) {
    for (int trial = 0; trial < 10; ++trial) {
      const std::vector<support::point> nodes =
          trial == 0 ? rectangle(1.0, 1.0) : support::random_quadrilateral(random);
      const support::plate_description d = random_element(random, isotropic_subject(kind), nodes);
      std::vector<double> K[2];
      column twist = column::Zero(24);
      for (const double modifier : {0.0, 1.0}) {
        element_call call(d);
        call.LOADS(LOAD_MOD_INPLANE) = modifier;
        call.run(1);
        K[modifier > 0.0 ? 1 : 0] = call.matrix_values();
        for (int n = 0; n < 4; ++n) {
          twist(6 * n) = n % 2 == 0 ? 1.0L : -1.0L;
          twist(6 * n + 1) = n % 2 == 0 ? 0.5L : -0.5L;
        }
        if (modifier > 0.0) twist = call.reference.to_global(twist);
      }
      std::vector<double> shear(576);
      for (std::size_t i = 0; i < 576; ++i) shear[i] = K[1][i] - K[0][i];
      EXPECT_GT(support::max_norm(shear), 0.01 * support::max_norm(K[0]));
      EXPECT_CLOSE(support::product(shear, listed(twist)), std::vector<double>(24, 0.0), support::max_norm(K[0]), 64);
      // The direct strains feel it.
      EXPECT_GT(support::max_norm(support::product(K[0], listed(twist))), 0.01 * support::max_norm(K[0])) << kind;
    }
  }
}

TEST(BilinearMembrane, ShearOfEveryRecordIsThatOfTheCentre) {
  seeded_random random(423);
  for (const element_subject& s : subjects()) {
    if (s.nodes != 4) continue;
    element_call call(random_element(random, s));
    const std::vector<double> u = random.vector(8, 1e-2);
    column local = column::Zero(24);
    for (int i = 0; i < 8; ++i) local(call.reference.membrane(i)) = u[static_cast<std::size_t>(i)];
    const std::vector<double> global = listed(call.reference.to_global(local));
    std::copy(global.begin(), global.end(), call.U.begin());
    call.run(5);
    const double gxy = call.point_record(1)[16];
    for (int p = 1; p <= 4; ++p) {
      for (const std::vector<double>& R : {call.point_record(p), call.node_record(p)}) {
        // Mid, top and bottom: no curvature arises.
        EXPECT_CLOSE((std::vector<double>{R[16], R[5], R[27]}), std::vector<double>(3, gxy), 0.1, 64) << s.name;
        if (s.isotropic()) {
          EXPECT_CLOSE(columns(R, 9, 1), columns(call.point_record(1), 9, 1), call.element.young * 0.1, 64) << s.name;
          EXPECT_CLOSE(columns(R, 39, 1), columns(call.point_record(1), 39, 1), call.element.young * 0.1, 64) << s.name;
        }
      }
      EXPECT_NE(call.point_record(1)[14], call.point_record(3)[14]) << s.name;  // ex is the point's own
    }
    EXPECT_GT(std::fabs(call.point_record(1)[38]), 0.0) << s.name;  // and the force is not lost with the split
  }
}

TEST(QuadrilateralDrilling, IsAMillionthOfTheMembrane) {
  const prepared_quadrilateral q(plane_quadrilateral());  // area 13
  PLATEELEM.E1 = 2000.0;
  PLATEELEM.THICKNESS = 0.5;
  support::guarded_buffer K(300), Kd(10);
  QUAD_KDRILL(PLATEELEM, q.local, K.data(), Kd.data());
  const double e = 1e-6 * 2000.0 * 0.5 * 13.0;
  const int places[10] = {21, 72, 78, 159, 165, 171, 282, 288, 294, 300};
  for (int i = 0; i < 10; ++i) {
    const bool diagonal = i == 0 || i == 2 || i == 5 || i == 9;
    EXPECT_CLOSE(Kd(i + 1), diagonal ? e : -e / 3.0, e, 8) << i;
    EXPECT_EQ(K(places[i]), Kd(i + 1)) << i;
  }
  EXPECT_EQ(K.changed(), std::vector<int>(std::begin(places), std::end(places)));
  EXPECT_EQ(Kd.changed(), support::range(1, 10));
}

TEST(QuadrilateralDrilling, RowsAddUpToZero) {
  seeded_random random(424);
  const prepared_quadrilateral q(support::random_quadrilateral(random));
  PLATEELEM.E1 = 3.0e5;
  PLATEELEM.THICKNESS = 0.2;
  std::vector<double> K(300, 0.0), Kd(10);
  QUAD_KDRILL(PLATEELEM, q.local, K.data(), Kd.data());
  const auto entry = [&Kd](int i, int j) {
    return Kd[static_cast<std::size_t>(SYM(std::min(i, j), std::max(i, j)) - 1)];
  };
  for (int i = 1; i <= 4; ++i) {
    EXPECT_CLOSE(entry(i, 1) + entry(i, 2) + entry(i, 3) + entry(i, 4), 0.0, entry(1, 1), 4);
  }
}

TEST(QuadrilateralDrilling, AreaHasNoSign) {
  // Nodes the other way round, and a bow-tie, whose two triangles are counted against each other.
  PLATEELEM.E1 = 1.0e6;
  PLATEELEM.THICKNESS = 1.0;
  MATRIX<3, 4> local{};
  const auto area = [&local](const std::vector<double>& x, const std::vector<double>& y) {
    for (int n = 1; n <= 4; ++n) {
      local(1, n) = x[static_cast<std::size_t>(n - 1)];
      local(2, n) = y[static_cast<std::size_t>(n - 1)];
    }
    std::vector<double> K(300), Kd(10);
    QUAD_KDRILL(PLATEELEM, local, K.data(), Kd.data());
    return Kd[0];
  };
  EXPECT_CLOSE(area({0, 4, 5, 2}, {0, 0, 3, 4}), 13.0, 13.0, 8);
  EXPECT_CLOSE(area({0, 2, 5, 4}, {0, 4, 3, 0}), 13.0, 13.0, 8);
  // Two corners exchanged: (4 * 3 + (2 - 0)(0 - 3)) / 2, and its mirror image.
  EXPECT_CLOSE(area({0, 4, 0, 2}, {0, 0, 3, 3}), 3.0, 12.0, 8);
  EXPECT_CLOSE(area({0, -4, 0, -2}, {0, 0, 3, 3}), 3.0, 12.0, 8);
}

TEST(QuadrilateralDrilling, AreaDoesNotDependOnTheDirectionOfTheAxes) {
  // In the element's own frame side 1-2 is parallel to x, and half of its product is zero: here every difference
  // counts.
  PLATEELEM.E1 = 1.0e6;
  PLATEELEM.THICKNESS = 1.0;
  MATRIX<3, 4> local{};
  const double x[4] = {0, 4, 5, 2}, y[4] = {0, 0, 3, 4};
  for (const auto& [c, s] : {std::pair{0.6, 0.8}, std::pair{-0.28, 0.96}}) {
    for (int n = 1; n <= 4; ++n) {
      local(1, n) = c * x[n - 1] - s * y[n - 1] + 7.0;
      local(2, n) = s * x[n - 1] + c * y[n - 1] - 3.0;
    }
    std::vector<double> K(300), Kd(10);
    QUAD_KDRILL(PLATEELEM, local, K.data(), Kd.data());
    EXPECT_CLOSE(Kd[0], 13.0, 100.0, 8) << c;
  }
}
