// reported_errors_test.cpp: wrong answers that a shell element can give unnoticed, each tested on every kind.
#include <cmath>

#include "asked_model.h"
#include "comparison.h"
#include "element_call.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::real;
using shell_reference::reference_element;
using shell_reference::vector3;
using support::plate_description;
using support::seeded_random;

namespace {

// w = -(kx x^2 + ky y^2) / 2 in element axes has the curvatures (kx, ky, 0), which are positive where the top strains.
column bent(const reference_element& e, double kx, double ky) {
  const column q = shell_reference::quadratic_deflection(e.X, {0.0, 0.0, 0.0, -kx, -ky, 0.0});
  column u = column::Zero(6 * e.n);
  for (int i = 0; i < 3 * e.n; ++i) u(e.bending(i)) = q(i);
  return e.to_global(u);
}

}  // namespace

TEST(ReportedErrors, CurvatureSignHiddenUntilASectionIsUnsymmetric) {
  // An offset along the normal makes the section unsymmetric about the nodes, so that the sign of the curvature shows
  // in the membrane strain. The nodes lie at the bottom face, which their motion leaves unstrained: the curvature k
  // strains the mid surface by k times the offset.
  seeded_random random(391);
  for (const element_subject& s : subjects(true)) {
    if (s.membrane_only()) continue;
    plate_description d = random_element(random, s);
    const reference_element e(d);
    d.offset_switch = 1;
    const double arm = 0.5 * d.thickness;
    for (int n = 0; n < s.nodes; ++n) {
      for (std::size_t i = 0; i < 3; ++i) {
        // Node minus offset is the corner: the element lies above its nodes along the normal.
        d.offsets[static_cast<std::size_t>(n)][i] = static_cast<double>(-arm * e.axes(2, static_cast<int>(i)));
      }
    }
    asked_model model(s, d);
    const double k = 0.01;
    const support::plate_results results = model.results(1, listed(bent(e, k, 0.0)));
    const std::vector<double> R(results.points.begin(), results.points.begin() + 90);
    EXPECT_CLOSE(columns(R, 15, 3), (std::vector<double>{k * arm, 0.0, 0.0}), 0.1, 64) << s.name;
    EXPECT_CLOSE(columns(R, 4, 3), (std::vector<double>{k * (arm + d.thickness / 2.0), 0.0, 0.0}), 0.1, 64) << s.name;
    EXPECT_CLOSE(columns(R, 26, 3), std::vector<double>(3, 0.0), 0.1, 64) << s.name;  // the face of the nodes
  }
}

TEST(ReportedErrors, RotationAppliedOnTheWrongSideInFiftyPositions) {
  // The same element in fifty random rotations: forces in element axes stay, global ones turn with it, and operation 3
  // is operation 33 in the element's own axes.
  seeded_random random(392);
  for (const element_subject& s : subjects(true)) {
    const plate_description d = random_element(random, s);
    const std::vector<double> u = random.vector(6 * s.nodes, 1.0);
    std::vector<double> global, local;
    {
      asked_model model(s, d);
      global = model.internal_forces(1, u);
      local = model.internal_forces(1, u, 33);
    }
    for (int position = 0; position < 50; ++position) {
      const support::rotation Q = support::random_rotation(random);
      plate_description turned = d;
      for (support::point& node : turned.nodes) node = support::rotate(Q, node);
      shell_reference::matrix3 R;
      for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) R(i, j) = Q[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
      }
      const matrix T = shell_reference::groups(R, s.nodes);
      asked_model model(s, turned);
      const std::vector<double> v = listed(T * column_of(u));
      const double scale = 10.0 * d.young * d.thickness + support::max_norm(global);
      EXPECT_CLOSE(model.internal_forces(1, v), listed(T * column_of(global)), scale, 200) << s.name;
      EXPECT_CLOSE(model.internal_forces(1, v, 33), local, scale, 200) << s.name;
    }
  }
}

TEST(ReportedErrors, LocalForcesLabelledGlobal) {
  // Forces of operation 33 and columns of the records stand in element axes, whatever the position: a pull along side
  // 1-2 is Nx; forces of operation 3 and loads stand in global axes.
  for (const int kind : {10, 11, 12, 20, 21, 22}) {
    const element_subject s = isotropic_subject(kind);
    plate_description d;
    d.poisson = 0.0;
    d.formulation = s.formulation;
    d.nodes = {{0, 0, 0}, {0, 0, 2}, {0, 1, 2}, {0, 1, 0}};  // side 1-2 along global z, the normal along -x
    if (s.nodes == 3) d.nodes = {{0, 0, 0}, {0, 0, 2}, {0, 1, 0}};
    asked_model model(s, d);
    std::vector<double> u(static_cast<std::size_t>(6 * s.nodes), 0.0);
    for (std::size_t n = 0; n < d.nodes.size(); ++n) u[6 * n + 2] = 1e-3 * d.nodes[n][2];
    const std::vector<double> R = model.results(1, u).points;
    EXPECT_CLOSE(columns(R, 37, 3), (std::vector<double>{1e-3 * d.young * d.thickness, 0.0, 0.0}), d.young, 16) << kind;
    const std::vector<double> local = model.internal_forces(1, u, 33), global = model.internal_forces(1, u, 3);
    EXPECT_GT(local[6], 0.0) << kind;  // node 2 is pulled along the local x
    EXPECT_CLOSE(global[8], local[6], local[6], 16) << kind;
    EXPECT_CLOSE(global[6], 0.0, local[6], 16) << kind;
    EXPECT_CLOSE(local[8], 0.0, local[6], 16) << kind;
    const std::vector<double> f = model.loads(4, 1, {0.0, 0.0, 3.0, 0.0, 0.0, 0.0});
    double along = 0.0, across = 0.0;
    for (std::size_t n = 0; n < d.nodes.size(); ++n) {
      along += f[6 * n + 2];
      across += std::fabs(f[6 * n]) + std::fabs(f[6 * n + 1]);
    }
    EXPECT_CLOSE(along, s.nodes == 3 ? 3.0 : 6.0, 6.0, 16) << kind;
    EXPECT_CLOSE(across, 0.0, 6.0, 16) << kind;
  }
}

TEST(ReportedErrors, ThermalStressOfAnOrthotropicPlateOffItsAxes) {
  // A held plate: N = -D alpha T with all three rows of the turned matrix, shear too; and the nodal loads are in
  // equilibrium with it. Moments have the two normal rows alone.
  seeded_random random(393);
  for (const element_subject& s : subjects()) {
    if (s.isotropic()) continue;
    element_call call(random_element(random, s));
    call.LOADS(LOAD_TEMPERATURE) = 20.0;
    call.LOADS(LOAD_TEMPERATURE_DIFF) = 35.0;
    call.run(5);
    const shell_reference::section& D = call.reference.s;
    const vector3 alpha(D.alpha1, D.alpha2, 0.0L);
    const vector3 N = -D.whole() * alpha * 20.0L, M = -D.bending * alpha * 35.0L / D.thickness;
    ASSERT_GT(std::fabs(static_cast<double>(N(2))), 1e-5 * largest(N)) << s.name;
    for (int p = 1; p <= 4; ++p) {
      const std::vector<double> R = call.point_record(p);
      EXPECT_CLOSE(columns(R, 37, 3), listed(N), largest(N), 64) << s.name;
      EXPECT_CLOSE(columns(R, 40, 2), listed(M.head(2)), largest(M), 64) << s.name;
      EXPECT_EQ(R[41], 0.0) << s.name;
    }
    // Nodal loads: side tractions of -N, as those of a constant strain.
    call.LOADS(LOAD_TEMPERATURE_DIFF) = 0.0;
    call.run(4);
    column f = column::Zero(call.order());
    for (int n = 0; n < s.nodes; ++n) {
      const shell_reference::vector2 d = shell_reference::side(call.reference.X, n);
      const shell_reference::vector2 traction(-N(0) * d(1) + N(2) * d(0), -N(2) * d(1) + N(1) * d(0));
      f.segment(6 * n, 2) += traction / 2.0L;
      f.segment(6 * ((n + 1) % s.nodes), 2) += traction / 2.0L;
    }
    EXPECT_CLOSE(call.force_values(), listed(call.reference.to_global(f)), largest(N), 100) << s.name;
  }
}

TEST(ReportedErrors, OffsetsForgottenInMassLoadsOrGeometricStiffness) {
  // A common offset along global z: each differs from the same element without it where the arm has a moment.
  seeded_random random(394);
  for (const element_subject& s : subjects()) {
    const plate_description plain = random_element(random, s);
    plate_description offset = plain;
    offset.offset_switch = 1;
    for (support::point& arm : offset.offsets) arm = {0.1, -0.2, 0.3};
    std::vector<std::vector<double>> with, without;
    for (const bool on : {true, false}) {
      asked_model model(s, on ? offset : plain);
      for (double& force : model.state(1).STORED_NODAL_FORCES.V) force = 1.0;
      std::vector<std::vector<double>>& all = on ? with : without;
      all = {model.mass(1), model.matrix(71, 1), model.loads(4, 1, {1.0, 2.0, 3.0}),
             model.loads(41, 1, {1.0, 2.0, 3.0}), model.loads(10, 1, {0.0, 0.0, 0.0, 1.0, 2.0, 3.0})};
    }
    for (std::size_t i = 0; i < with.size(); ++i) {
      double difference = 0.0;
      for (std::size_t j = 0; j < with[i].size(); ++j)
        difference = std::max(difference, std::fabs(with[i][j] - without[i][j]));
      EXPECT_GT(difference, 1e-3 * support::max_norm(without[i])) << s.name << " " << i;
    }
    // Of the mass: a turn about the nodes moves the element on its arm.
    const reference_element e(plain);
    column turn = column::Zero(6 * s.nodes), moved = column::Zero(6 * s.nodes);
    for (int n = 0; n < s.nodes; ++n) {
      turn(6 * n + 3) = 1.0L;                                         // about global x, at every node
      moved.segment(6 * n, 6) << 0.0L, 0.3L, 0.2L, 1.0L, 0.0L, 0.0L;  // (1, 0, 0) x (-0.1, 0.2, -0.3)
    }
    const double actual = support::dot(listed(turn), support::product(with[0], listed(turn)));
    const double expected = support::dot(listed(moved), support::product(without[0], listed(moved)));
    EXPECT_CLOSE(actual, expected, expected, 100) << s.name;
  }
}
