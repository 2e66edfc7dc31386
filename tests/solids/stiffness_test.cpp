// stiffness_test.cpp: operation 1 against the full product B^T D B in global axes, the elastic matrix, the switch of
// the geometric part.
#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "finites/fields.h"
#include "guarded_buffer.h"
#include "reference_solid.h"
#include "solid_cases.h"
#include "solids/operations.h"

namespace {

using reference::body_of;
using reference::norm;
using reference::real;
using reference::rounded;
using solid_cases::random_solid;
using support::guarded_buffer;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

constexpr int NODE_COUNTS[] = {4, 6, 8};

// Random stresses of the points; those of points that an element has not are there to show.
void set_stresses(seeded_random& random, SOLID_NL_RECORD& record) {
  for (double& s : record.GAUSS_STRESS.V) s = random.uniform(-1e3, 1e3);
  for (double& u : record.U_NL.V) u = random.uniform(-1, 1);
}

std::vector<reference::tensor> global_stresses(const solid_description& d, const SOLID_NL_RECORD& record) {
  const reference::body b = body_of(d);
  const reference::tensor R = reference::axes(b);
  std::vector<reference::tensor> all;
  for (int p = 1; p <= static_cast<int>(reference::rule(b.kind).size()); ++p) {
    const double* s = &record.GAUSS_STRESS(1, p);
    all.push_back(R.transpose() * reference::stress_tensor(reference::listed(std::vector<double>(s, s + 6))) * R);
  }
  return all;
}

}  // namespace

TEST(SolidStiffness, ElasticMatrixIsTheInverseOfTheCompliance) {
  seeded_random random(6201);
  for (int i = 0; i < 20; ++i) {
    const solid_description d = random_solid(random, 8);
    SOLID_CALL S{};
    S.factor = static_cast<double>(d.stiff_factor);
    S.E = d.young;
    S.nu = d.poisson;
    MATRIX<6, 6> D;
    SOLID_D_MATRIX(S, D);
    const reference::matrix expected = reference::elasticity(body_of(d));
    EXPECT_CLOSE(std::vector<double>(D.V, D.V + 36), rounded(expected), norm(expected), 20);
  }
}

TEST(SolidStiffness, IsTheFullProduct) {
  seeded_random random(6202);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 8; ++i) {
      const solid_description d = random_solid(random, nodes);
      solid_model model({random_solid(random, 8), d});
      const reference::matrix K = reference::stiffness(body_of(d));
      EXPECT_CLOSE(model.matrix(1, 2), rounded(K), norm(K), 100) << nodes << " nodes";
    }
  }
}

TEST(SolidStiffness, IsSymmetricWithSixRigidMotions) {
  seeded_random random(6203);
  for (const int nodes : NODE_COUNTS) {
    solid_model model({random_solid(random, nodes)});
    const reference::matrix K = reference::square(model.matrix(1));
    EXPECT_LE(norm(K - K.transpose()), 20 * 2.3e-16 * norm(K)) << nodes << " nodes";
    const dense::eigen_system solver((K + K.transpose()) / 2);
    const auto& values = solver.eigenvalues();
    for (dense::index i = 0; i < values.size(); ++i) {
      const double ratio = static_cast<double>(values(i) / values(values.size() - 1));
      if (i < 6) {
        EXPECT_LE(std::fabs(ratio), 1e-14) << nodes << " nodes, " << i;
      } else {
        EXPECT_GE(ratio, 1e-4) << nodes << " nodes, " << i;  // no mechanism
      }
    }
  }
}

// A box stretched by 1e-3 along x and held sideways: twice the energy is E (1 - v) / ((1 + v)(1 - 2 v)) strain^2 times
// the volume.
TEST(SolidStiffness, EnergyOfAStretchedBoxByHand) {
  solid_description d = solid_cases::box(2.0, 3.0, 5.0);
  d.young = 1000.0;
  d.poisson = 0.25;
  d.stiff_factor = 0.5F;
  solid_model model({d});
  const std::vector<double> K = model.matrix(1);
  const std::vector<double> u = solid_cases::linear_field(d, {}, {{{1e-3, 0, 0}, {0, 0, 0}, {0, 0, 0}}});
  EXPECT_CLOSE(support::dot(u, support::product(K, u)), 0.5 * 1200.0 * 1e-6 * 30.0, 0.018, 30);
}

// The one point of a tetrahedron weighs 1: six times the stiffness of its volume.
TEST(SolidStiffness, OfATetrahedronIsSixTimesThatOfItsVolume) {
  solid_description d = solid_cases::corner_tetrahedron(2.0);
  d.young = 1000.0;
  d.poisson = 0.25;
  solid_model model({d});
  const std::vector<double> K = model.matrix(1);
  const std::vector<double> u = solid_cases::linear_field(d, {}, {{{1e-3, 0, 0}, {0, 0, 0}, {0, 0, 0}}});
  const double volume = 8.0 / 6.0;
  EXPECT_CLOSE(support::dot(u, support::product(K, u)), 6.0 * 1200.0 * 1e-6 * volume, 0.0096, 30);
}

TEST(SolidStiffness, AnyOtherOperationIsTheFirst) {
  seeded_random random(6204);
  solid_model model({random_solid(random, 8)});
  const std::vector<double> K = model.matrix(1);
  for (const int op : {9, 0, -1, 4, 6, 8, 10, 32, 40, 70, 72, 401, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(model.matrix(op), K) << op;
  }
}

TEST(SolidStiffness, GeometricPartByTheSwitches) {
  seeded_random random(6205);
  for (const int nodes : NODE_COUNTS) {
    const solid_description d = random_solid(random, nodes);
    solid_model model({d, random_solid(random, 8)});
    model.allocate_nonlinear();
    set_stresses(random, model.nonlinear(1));
    const reference::matrix K = reference::stiffness(body_of(d));
    const reference::matrix KG = reference::geometric(body_of(d), global_stresses(d, model.nonlinear(1)));
    ASSERT_GT(norm(KG), 1e-6 * norm(K));
    for (const double kind : {0.0, 1.0, 1.9, 2.0, 3.0, -1.0}) {
      for (const double state : {0.0, 1.0, 1.5, 2.0}) {
        for (const double step : {0.0, 0.5, 1.0, 7.0, -1.0}) {
          model.set_header(SECOND_ORDER, kind);
          model.set_header(ANALYSIS_STATE, state);
          model.set_header(STEP_COUNTER, step);
          const bool first_pass = static_cast<int>(state) == 1 && static_cast<int>(step) == 0;
          const bool on = static_cast<int>(kind) == 1 && !first_pass;
          const reference::matrix expected = on ? reference::matrix(K + KG) : K;
          EXPECT_CLOSE(model.matrix(1, 1), rounded(expected), norm(K) + norm(KG), 100)
              << nodes << " nodes, A(41) " << kind << ", A(15) " << state << ", A(14) " << step;
        }
      }
    }
  }
}

TEST(SolidStiffness, WithoutANonlinearRecordHasNoGeometricPart) {
  seeded_random random(6206);
  solid_model model({random_solid(random, 8)});
  const std::vector<double> K = model.matrix(1);
  model.set_header(SECOND_ORDER, 1.0);
  EXPECT_EQ(model.matrix(1), K);
  EXPECT_EQ(model.matrix(71), std::vector<double>(576, 0.0));
}

TEST(SolidStiffness, StiffFactorOfZero) {
  seeded_random random(6207);
  for (const int nodes : NODE_COUNTS) {
    solid_description d = random_solid(random, nodes);
    d.stiff_factor = 0.0F;
    solid_model model({d});
    for (const double entry : model.matrix(1)) EXPECT_EQ(entry, 0.0);
    for (const double entry : model.forces(3, 1, random.vector(3 * nodes, 1e-3))) EXPECT_EQ(entry, 0.0);
    EXPECT_EQ(model.results(1, random.vector(3 * nodes, 1e-3)).ierr, 0);
    for (int k = 1; k <= nodes; ++k) {
      EXPECT_NE(model.record().RES50_NODE(4, k), 0.0);
      for (int word = 10; word <= 15; ++word) EXPECT_EQ(model.record().RES50_NODE(word, k), 0.0);
      EXPECT_EQ(model.record().RES50_NODE(22, k), 0.0);
    }
  }
}

// c divides by 1 - 2 v = 0: nothing catches it.
TEST(SolidStiffness, PoissonRatioOfAHalfIsNotCaught) {
  solid_description d = solid_cases::box(1, 1, 1);
  d.poisson = 0.5;
  solid_model model({d});
  double F[24], K[576] = {};
  const double G[3] = {};
  const support::solid_status status = model.call(1, 1, 8, G, F, K);
  EXPECT_EQ(status.ierr, 0);
  EXPECT_FALSE(std::isfinite(K[0]));
}

// A mirrored numbering gives the same element.
TEST(SolidStiffness, AMirroredNumberingGivesTheSameElement) {
  seeded_random random(6208);
  solid_description d = random_solid(random, 8);
  const std::vector<double> u = random.vector(24, 1e-3);
  double energy[2], load[2];
  for (int mirrored = 0; mirrored < 2; ++mirrored) {
    std::vector<double> moved = u;
    if (mirrored == 1) {
      std::swap_ranges(d.nodes.begin(), d.nodes.begin() + 4, d.nodes.begin() + 4);
      std::swap_ranges(moved.begin(), moved.begin() + 12, moved.begin() + 12);
    }
    solid_model model({d});
    energy[mirrored] = support::dot(moved, support::product(model.matrix(1), moved));
    const std::vector<double> F = model.body_load(1, {1, 0, 0});
    load[mirrored] = 0.0;
    for (std::size_t k = 0; k < 8; ++k) load[mirrored] += F[3 * k];
  }
  EXPECT_GT(energy[0], 0.0);
  EXPECT_GT(load[0], 0.0);
  EXPECT_CLOSE(energy[1], energy[0], energy[0], 200);
  EXPECT_CLOSE(load[1], load[0], load[0], 30);
}

TEST(SolidStiffness, MatricesHaveTheirColumnsTwentyFourApart) {
  seeded_random random(6209);
  for (const int nodes : NODE_COUNTS) {
    solid_model model({random_solid(random, nodes)});
    model.allocate_nonlinear();
    set_stresses(random, model.nonlinear());
    model.set_displacements(1, random.vector(3 * nodes, 1e-3));
    const std::vector<double> before = model.storage();
    for (const int op : {1, 2, 7, 71, 9}) {
      guarded_buffer K(24 * 24), F(27);
      const double G[3] = {};
      EXPECT_EQ(model.call(op, 1, nodes, G, F.data(), K.data()).ierr, 0);
      EXPECT_EQ(K.changed(), support::leading_block(3 * nodes, 24)) << nodes << " nodes, operation " << op;
      EXPECT_EQ(F.changed(), std::vector<int>{});
    }
  }
}
