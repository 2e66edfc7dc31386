// quadratic_test.cpp: forces, results and loads of the quadratic kinds. Their node lists do not fit into a record, so
// that the entry refuses them; the routines behind it serve them all the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "comparison.h"
#include "reference_solid.h"
#include "solid_cases.h"
#include "solids/integration.h"
#include "solids/operations.h"

namespace {

using reference::body;
using reference::column;
using reference::listed;
using reference::rounded;
using support::point;
using support::seeded_random;

// The kinds whose derivatives are those of their functions.
constexpr int TRUE_KINDS[] = {20, 21};

// An element of a kind, with axes of its own, as the entry would prepare it.
struct prepared {
  body b;
  SOLID_RECORD record{};
  SOLID_CALL S{};
};

void prepare(seeded_random& random, int kind, prepared& P) {
  P.b = body{kind, reference::node_coordinates(kind), 1000, 0.25, 9810, 0.5};
  for (dense::index k = 0; k < P.b.XYZ.cols(); ++k) {
    for (dense::index i = 0; i < 3; ++i)
      P.b.XYZ(i, k) = static_cast<double>(P.b.XYZ(i, k)) + random.uniform(-0.05, 0.05);
  }
  const std::vector<double> nodes = rounded(P.b.XYZ);
  std::copy(nodes.begin(), nodes.end(), P.S.XYZ.data());
  P.S.KIND = kind;
  P.S.NN = reference::node_count(kind);
  P.S.factor = 0.5;
  P.S.U = P.record.U_ELEM.data();
  P.S.record = &P.record;
  P.S.AX = MATRIX<3, 3>{{0, 0, 1, 1, 0, 0, 0, 1, 0}};  // x' = y, y' = z, z' = x
  P.S.E = 1000;
  P.S.nu = 0.25;
  SOLID_GAUSS_COUNT(kind, SOLID_RULE, P.S.points);
  SOLID_GAUSS_RULE(kind, SOLID_RULE, P.S.points, P.S.station, P.S.weight);
}

// Components of a vector of the nodes in global axes, from those in element axes: x = z', y = x', z = y'.
std::vector<double> to_global(const std::vector<double>& local) {
  std::vector<double> out(local.size());
  for (std::size_t at = 0; at < local.size(); at += 3) {
    out[at] = local[at + 2];
    out[at + 1] = local[at];
    out[at + 2] = local[at + 1];
  }
  return out;
}

}  // namespace

TEST(SolidQuadratic, ForcesAreTheFullProduct) {
  seeded_random random(6331);
  for (const int kind : TRUE_KINDS) {
    prepared P;
    prepare(random, kind, P);
    const std::vector<double> local = random.vector(3 * P.S.NN, 1e-3), global = to_global(local);
    std::copy(global.begin(), global.end(), P.record.U_ELEM.data());
    const std::vector<double> expected = rounded(reference::stiffness(P.b) * listed(local));
    const double scale = support::max_norm(expected);
    SOLID_VECTORS f;
    std::int32_t ok = 1;
    SOLID_INTERNAL_FORCE(P.S, 33, f, ok);
    EXPECT_EQ(ok, 1);
    EXPECT_CLOSE(std::vector<double>(f.V, f.V + 3 * P.S.NN), expected, scale, 500) << "kind " << kind;
    SOLID_INTERNAL_FORCE(P.S, 3, f, ok);
    EXPECT_CLOSE(std::vector<double>(f.V, f.V + 3 * P.S.NN), to_global(expected), scale, 500) << "kind " << kind;
  }
}

TEST(SolidQuadratic, LoadIsTheIntegralOfTheFunctions) {
  seeded_random random(6332);
  for (const int kind : TRUE_KINDS) {
    prepared P;
    prepare(random, kind, P);
    const double G[3] = {3, 1, 2};  // (1, 2, 3) in element axes
    SOLID_VECTORS f;
    std::int32_t ok = 1;
    SOLID_BODY_LOAD(P.S, G, f, ok);
    column g(3);
    g << 1, 2, 3;
    const std::vector<double> expected = to_global(rounded(reference::body_load(P.b, g)));
    EXPECT_CLOSE(std::vector<double>(f.V, f.V + 3 * P.S.NN), expected, support::max_norm(expected), 200) << kind;
  }
}

// The wedges and the tetrahedron have functions and derivatives that do not belong together: with what the routines of
// the shapes give, taken as they stand, load and forces are the sums over the points of the rule, negative weights too.
TEST(SolidQuadratic, SumsOverThePointsOfTheOtherKinds) {
  seeded_random random(6334);
  for (const int kind : {22, 23, 24}) {
    prepared P;
    prepare(random, kind, P);
    const dense::index n = P.S.NN;
    const std::vector<double> local = random.vector(3 * P.S.NN, 1e-3), global = to_global(local);
    std::copy(global.begin(), global.end(), P.record.U_ELEM.data());
    column load = column::Zero(3 * n), force = column::Zero(3 * n), g(3);
    reference::matrix terms = reference::matrix::Zero(3 * n, 1);  // sizes of what the forces are sums of
    reference::real smallest = 1e9L;
    g << 1, 2, 3;
    for (const reference::station& s : reference::rule(kind)) {
      const std::vector<double> N = solid_cases::shape(kind, {s.xi, s.eta, s.zeta});
      const std::vector<double> DN = solid_cases::shape_derivatives(kind, {s.xi, s.eta, s.zeta});
      const reference::matrix D = dense::widened(DN.data(), 3, n);
      const reference::tensor J = D * P.b.XYZ.transpose();
      const reference::real volume = s.weight * std::fabs(J.determinant());
      smallest = std::min(smallest, std::fabs(J.determinant()));
      const reference::matrix B = reference::strain_matrix(J.inverse() * D);
      const column part = B.transpose() * (reference::elasticity(P.b) * (B * listed(local))) * volume;
      force += part;
      terms += part.cwiseAbs();
      for (dense::index k = 0; k < n; ++k) load.segment(3 * k, 3) += N[static_cast<std::size_t>(k)] * volume * g;
    }
    ASSERT_GT(smallest, 1e-3L) << "kind " << kind;
    const double G[3] = {3, 1, 2};  // (1, 2, 3) in element axes
    SOLID_VECTORS f;
    std::int32_t ok = 1;
    SOLID_BODY_LOAD(P.S, G, f, ok);
    EXPECT_CLOSE(std::vector<double>(f.V, f.V + 3 * n), to_global(rounded(load)), 10.0, 200) << "kind " << kind;
    SOLID_INTERNAL_FORCE(P.S, 3, f, ok);
    EXPECT_EQ(ok, 1);
    EXPECT_CLOSE(std::vector<double>(f.V, f.V + 3 * n), to_global(rounded(force)), reference::norm(terms), 3000)
        << "kind " << kind;
  }
}

// Results of a linear field are the same at every node and point in the kinds whose derivatives belong to one set of
// functions. Kinds 23 and 24 have gradients of their own.
TEST(SolidQuadratic, ResultsOfALinearFieldAreConstant) {
  seeded_random random(6333);
  for (const int kind : TRUE_KINDS) {
    prepared P;
    prepare(random, kind, P);
    std::vector<double> local;
    for (dense::index k = 0; k < P.S.NN; ++k) {
      const double x = static_cast<double>(P.b.XYZ(0, k)), y = static_cast<double>(P.b.XYZ(1, k));
      const double z = static_cast<double>(P.b.XYZ(2, k));
      local.insert(local.end(), {0.01 * x + 0.04 * y + 0.05 * z, 0.02 * y + 0.06 * z, 0.03 * z});
    }
    const std::vector<double> global = to_global(local);
    std::copy(global.begin(), global.end(), P.record.U_ELEM.data());
    std::int32_t ok = 1;
    SOLID_RESULTS(P.S, ok);
    ASSERT_EQ(ok, 1);
    const std::vector<double> strain = {0.01, 0.02, 0.03, 0.04, 0.05, 0.06}, stress = {16, 20, 24, 8, 10, 12};
    for (int k = 1; k <= P.S.NN; ++k) {
      const double* r = &P.record.RES50_NODE(1, k);
      EXPECT_CLOSE(std::vector<double>(r + 3, r + 9), strain, 0.06, 300) << "kind " << kind << ", node " << k;
      EXPECT_CLOSE(std::vector<double>(r + 9, r + 15), stress, 24.0, 300) << "kind " << kind << ", node " << k;
    }
    for (int p = 1; p <= P.S.points; ++p) {
      const double* r = &P.record.RES50_GAUSS(1, p);
      EXPECT_CLOSE(std::vector<double>(r + 3, r + 9), strain, 0.06, 300) << "kind " << kind << ", point " << p;
    }
  }
}
