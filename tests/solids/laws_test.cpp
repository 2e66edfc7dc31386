// laws_test.cpp: what holds for every solid: patches under a constant strain, turning and moving, the numbers of the
// element not mattering.
#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using reference::listed;
using reference::rounded;
using reference::tensor;
using solid_cases::random_solid;
using support::point;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

constexpr int NODE_COUNTS[] = {4, 6, 8};

// A block of 2 by 2 by 2 cells with all its 27 nodes moved about; node (i, j, k) of 0 to 2 each is i + 3 j + 9 k.
struct patch {
  std::vector<point> nodes;
  std::vector<std::vector<std::size_t>> elements;
};

constexpr std::size_t MIDDLE = 13;

patch make_patch(seeded_random& random, int nodes) {
  patch P;
  const support::rotation R = support::random_rotation(random);
  for (int n = 0; n < 27; ++n) {
    point x{1.0 * (n % 3), 1.0 * (n / 3 % 3), 1.0 * (n / 9)};
    for (double& component : x) component += random.uniform(-0.15, 0.15);
    P.nodes.push_back(support::rotate(R, x));
  }
  for (const std::size_t corner : {0U, 1U, 3U, 4U, 9U, 10U, 12U, 13U}) {
    const std::vector<std::size_t> cell = {corner,     corner + 1,  corner + 4,  corner + 3,
                                           corner + 9, corner + 10, corner + 13, corner + 12};
    const auto add = [&](const std::vector<std::size_t>& picked) {
      P.elements.emplace_back();
      for (const std::size_t k : picked) P.elements.back().push_back(cell[k]);
    };
    if (nodes == 8) {
      P.elements.push_back(cell);
    } else if (nodes == 6) {
      add({0, 1, 2, 4, 5, 6});
      add({0, 2, 3, 4, 6, 7});
    } else {
      // Six tetrahedra round the diagonal from 0 to 6.
      for (const auto& [a, b] : {std::pair<std::size_t, std::size_t>{1, 2}, {2, 3}, {3, 7}, {7, 4}, {4, 5}, {5, 1}}) {
        add({0, a, b, 6});
      }
    }
  }
  return P;
}

constexpr std::array<point, 3> GRADIENT = {
    {{1.1e-3, -0.4e-3, 0.7e-3}, {0.9e-3, -0.6e-3, 0.2e-3}, {0.3e-3, 0.5e-3, 0.8e-3}}};

tensor strain_of_gradient() {
  tensor H;
  for (dense::index i = 0; i < 3; ++i) {
    for (dense::index j = 0; j < 3; ++j) H(i, j) = GRADIENT[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
  }
  return (H + H.transpose()) / 2;
}

solid_description element(const patch& P, std::size_t e) {
  solid_description d;
  d.poisson = 0.25;
  for (const std::size_t n : P.elements[e]) d.nodes.push_back(P.nodes[n]);
  return d;
}

}  // namespace

// Every place of every element has the strain of the field, and the forces of the middle node are in balance. Wedges
// have single-precision stations, a balance to seven digits.
TEST(SolidLaws, APatchUnderConstantStrain) {
  seeded_random random(6241);
  for (const int nodes : NODE_COUNTS) {
    const patch P = make_patch(random, nodes);
    std::vector<double> balance(3, 0.0);
    double largest = 0.0;
    int touching = 0;
    for (std::size_t e = 0; e < P.elements.size(); ++e) {
      const solid_description d = element(P, e);
      solid_model model({d});
      const std::vector<double> u = solid_cases::linear_field(d, {0.1, 0.2, 0.3}, GRADIENT);
      const std::vector<double> F = model.forces(3, 1, u);
      largest = std::max(largest, support::max_norm(F));
      for (std::size_t k = 0; k < P.elements[e].size(); ++k) {
        if (P.elements[e][k] != MIDDLE) continue;
        ++touching;
        for (std::size_t i = 0; i < 3; ++i) balance[i] += F[3 * k + i];
      }
      ASSERT_EQ(model.results(1, u).ierr, 0);
      const reference::body b = reference::body_of(d);
      const tensor R = reference::axes(b);
      const reference::column strain = reference::strain_column(R * strain_of_gradient() * R.transpose());
      const std::vector<double> expected_stress = rounded(reference::elasticity(b) * strain);
      const auto expect = [&](const double* record) {
        EXPECT_CLOSE(std::vector<double>(record + 3, record + 9), rounded(strain), 0.4, 100);
        EXPECT_CLOSE(std::vector<double>(record + 9, record + 15), expected_stress, 0.4 * 2.5e5, 100);
      };
      for (int k = 1; k <= nodes; ++k) expect(&model.record().RES50_NODE(1, k));
      for (int p = 1; p <= static_cast<int>(reference::rule(b.kind).size()); ++p)
        expect(&model.record().RES50_GAUSS(1, p));
    }
    EXPECT_GE(touching, 8);
    EXPECT_WITHIN(balance, std::vector<double>(3, 0.0), largest, nodes == 6 ? 1e-7 : 2e-12) << nodes << " nodes";
  }
}

TEST(SolidLaws, TurningTheElementTurnsItsMatrices) {
  seeded_random random(6242);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 4; ++i) {
      const solid_description d = random_solid(random, nodes);
      const support::rotation Q = support::random_rotation(random);
      const solid_description other = solid_cases::turned(d, Q, {3.0, -1.0, 2.0});
      tensor R;
      for (dense::index r = 0; r < 3; ++r) {
        for (dense::index c = 0; c < 3; ++c) R(r, c) = Q[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
      }
      const reference::matrix T = reference::blocks(R, nodes);
      solid_model model({d, other});
      model.allocate_nonlinear();
      const std::vector<double> u = random.vector(3 * nodes, 1e-3);
      model.set_displacements(1, u);
      model.set_displacements(2, rounded(T * listed(u)));
      for (int at = 0; at < 6 * 27; ++at) {
        model.nonlinear(1).GAUSS_STRESS.V[at] = model.nonlinear(2).GAUSS_STRESS.V[at] = random.uniform(-100, 100);
      }
      for (const int op : {1, 2, 7, 71}) {
        const reference::matrix expected = T * reference::square(model.matrix(op, 1)) * T.transpose();
        EXPECT_CLOSE(model.matrix(op, 2), rounded(expected), reference::norm(expected), 2000) << nodes << " " << op;
      }
      // In element axes nothing changes.
      const double scale = support::max_norm(model.matrix(1, 1)) * 1e-3;
      EXPECT_CLOSE(model.forces(33, 2, rounded(T * listed(u))), model.forces(33, 1, u), scale, 1000) << nodes;
    }
  }
}

TEST(SolidLaws, MovingTheElementChangesNothing) {
  seeded_random random(6243);
  constexpr support::rotation none = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  for (const int nodes : NODE_COUNTS) {
    const solid_description d = random_solid(random, nodes);
    solid_model model({d, solid_cases::turned(d, none, {16.0, -32.0, 8.0})});
    for (const int op : {1, 2}) {
      const std::vector<double> M = model.matrix(op, 1);
      EXPECT_CLOSE(model.matrix(op, 2), M, support::max_norm(M), 2000) << nodes << " nodes";
    }
  }
}

// The first node is the origin of the element: with coordinates and a shift that doubles hold exactly, an element far
// away has the matrices, forces and results of the one at home to the last bit.
TEST(SolidLaws, AShiftWithoutRoundingChangesNoBit) {
  seeded_random random(6246);
  for (const int nodes : NODE_COUNTS) {
    solid_description d = random_solid(random, nodes);
    solid_description far = d;
    for (std::size_t k = 0; k < d.nodes.size(); ++k) {
      for (std::size_t i = 0; i < 3; ++i) {
        d.nodes[k][i] = std::round(d.nodes[k][i] * 1024.0) / 1024.0;
        far.nodes[k][i] = d.nodes[k][i] + (i == 1 ? -1048576.0 : 2097152.0);
      }
    }
    solid_model model({d, far});
    const std::vector<double> u = random.vector(3 * nodes, 1e-3);
    model.set_displacements(1, u);
    model.set_displacements(2, u);
    for (const int op : {1, 2, 7}) EXPECT_EQ(model.matrix(op, 2), model.matrix(op, 1)) << nodes << " " << op;
    EXPECT_EQ(model.body_load(2, {1, 2, 3}), model.body_load(1, {1, 2, 3})) << nodes;
    EXPECT_EQ(model.forces(3, 2, u), model.forces(3, 1, u)) << nodes;
    const support::solid_answer there = model.answer(2, u), here = model.answer(1, u);
    EXPECT_EQ(there.RES, here.RES) << nodes;
  }
}

TEST(SolidLaws, StressesFollowTheElementAxes) {
  seeded_random random(6244);
  for (const int nodes : NODE_COUNTS) {
    const solid_description d = random_solid(random, nodes);
    const support::rotation Q = support::random_rotation(random);
    solid_model model({d, solid_cases::turned(d, Q, {1, 2, 3})});
    const std::vector<double> u = random.vector(3 * nodes, 1e-3);
    std::vector<double> turned;
    for (std::size_t k = 0; k < static_cast<std::size_t>(nodes); ++k) {
      for (const double x : support::rotate(Q, {u[3 * k], u[3 * k + 1], u[3 * k + 2]})) turned.push_back(x);
    }
    ASSERT_EQ(model.results(1, u).ierr, 0);
    ASSERT_EQ(model.results(2, turned).ierr, 0);
    for (int k = 1; k <= nodes; ++k) {
      const double *first = &model.record(1).RES50_NODE(1, k), *second = &model.record(2).RES50_NODE(1, k);
      EXPECT_CLOSE(std::vector<double>(second + 3, second + 9), std::vector<double>(first + 3, first + 9), 1e-2, 1000);
    }
  }
}

TEST(SolidLaws, ScaleByModulusAndFactor) {
  seeded_random random(6245);
  const solid_description d = random_solid(random, 8);
  solid_description stiffer = d;
  stiffer.young *= 4.0;
  stiffer.stiff_factor = d.stiff_factor / 2.0F;
  solid_model model({d, stiffer});
  std::vector<double> twice = model.matrix(1, 1);
  for (double& k : twice) k *= 2.0;
  EXPECT_EQ(model.matrix(1, 2), twice);  // powers of two: to the last bit
  EXPECT_EQ(model.matrix(2, 2), model.matrix(2, 1));
}
