// shapes_test.cpp: kinds, their nodes and shape functions, the sums that are announced not to be 1 among them.
#include "solids/shapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "comparison.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using reference::real;
using solid_cases::random_place;
using solid_cases::shape;
using support::seeded_random;

// Kinds whose functions are those of their nodes everywhere; in the quadratic wedges (22, 23) the third triangle
// coordinate holds zeta too, and they are so in the middle layer alone.
constexpr int NODAL_KINDS[] = {10, 12, 13, 20, 21, 24};
constexpr int WEDGES_WITH_ZETA[] = {22, 23};

std::vector<double> node(int kind, int k) {
  const reference::matrix XI = reference::node_coordinates(kind);
  return reference::rounded(XI.col(k - 1));
}

std::vector<double> unit(int size, int at) {
  std::vector<double> e(static_cast<std::size_t>(size), 0.0);
  e[static_cast<std::size_t>(at - 1)] = 1.0;
  return e;
}

// Kind 22 and 23 in triangle coordinates (L, xi, eta), L free: with the L of the library and with that of a wedge.
std::vector<double> wedge_functions(int kind, const std::vector<double>& p, real L) {
  const real t[3] = {L, p[0], p[1]}, z = p[2];
  std::vector<double> N;
  const auto add = [&N](real value) { N.push_back(static_cast<double>(value)); };
  const auto triangle = [&](const auto& corner, const auto& middle) {
    for (int i = 0; i < 3; ++i) {
      add(corner(t[i]));
      add(middle(t[i], t[(i + 1) % 3]));
    }
  };
  for (const int layer : {-1, 0, 1}) {
    if (kind == 22) {
      const real q = layer == 0 ? (1 - z) * (1 + z) : z * (z + layer) / 2;
      triangle([&](real a) { return q * (2 * a * a - a); }, [&](real a, real b) { return 4 * q * a * b; });
    } else if (layer == 0) {
      for (const real a : t) add((1 - z) * (1 + z) * a);
    } else {
      const real half = (1 + layer * z) / 2;
      triangle([&](real a) { return half * a * (2 * a - 2 + layer * z); },
               [&](real a, real b) { return 4 * half * a * b; });
    }
  }
  return N;
}

double sum(const std::vector<double>& values) {
  double total = 0.0;
  for (const double value : values) total += value;
  return total;
}

}  // namespace

TEST(SolidShapes, KindOfEachNodeCount) {
  for (const reference::kind_facts& facts : reference::all_kinds()) {
    std::int32_t kind = -7;
    SOLID_KIND_OF_NODES(facts.nodes, kind);
    EXPECT_EQ(kind, facts.kind);
  }
}

TEST(SolidShapes, AnotherCountLeavesTheKindAsItWas) {
  for (const std::int32_t nodes : {0, 1, 2, 3, 5, 7, 9, 11, 16, 19, 21, 26, 28, -1, -8, 2147483647, -2147483647 - 1}) {
    for (const std::int32_t before : {0, 10, 13, -7}) {
      std::int32_t kind = before;
      SOLID_KIND_OF_NODES(nodes, kind);
      EXPECT_EQ(kind, before) << nodes;
    }
  }
}

TEST(SolidShapes, NodesOfEveryKind) {
  for (const reference::kind_facts& facts : reference::all_kinds()) {
    SOLID_STATIONS XI3;
    std::fill_n(XI3.data(), 81, -55.0);
    SOLID_NODE_COORDS(facts.kind, facts.nodes, XI3);
    std::vector<double> expected = reference::rounded(reference::node_coordinates(facts.kind));
    expected.resize(81, -55.0);  // columns beyond the nodes stay
    EXPECT_CLOSE(std::vector<double>(XI3.data(), XI3.data() + 81), expected, 0.0, 0) << "kind " << facts.kind;
  }
}

TEST(SolidShapes, AreOneAtTheirNodeAndZeroAtTheOthers) {
  for (const int kind : NODAL_KINDS) {
    const int n = reference::node_count(kind);
    for (int k = 1; k <= n; ++k) EXPECT_CLOSE(shape(kind, node(kind, k)), unit(n, k), 0.0, 0) << "kind " << kind;
  }
}

TEST(SolidShapes, AddUpToOne) {
  seeded_random random(6101);
  for (const int kind : NODAL_KINDS) {
    for (int i = 0; i < 50; ++i) EXPECT_CLOSE(sum(shape(kind, random_place(random, kind))), 1.0, 1.0, 20) << kind;
  }
}

TEST(SolidShapes, AreThePolynomialsOfTheirNodes) {
  seeded_random random(6102);
  for (const int kind : NODAL_KINDS) {
    for (int i = 0; i < 30; ++i) {
      const std::vector<double> p = random_place(random, kind);
      EXPECT_CLOSE(shape(kind, p), reference::rounded(reference::functions(kind, p)), 1.0, 10) << "kind " << kind;
    }
  }
}

TEST(SolidShapes, QuadraticWedgesAreNodalInTheMiddleLayerAlone) {
  for (const int kind : WEDGES_WITH_ZETA) {
    const int n = reference::node_count(kind);
    for (int k = 1; k <= n; ++k) {
      const std::vector<double> p = node(kind, k);
      if (p[2] == 0.0) {
        EXPECT_CLOSE(shape(kind, p), unit(n, k), 0.0, 0) << "kind " << kind << ", node " << k;
      } else {
        EXPECT_FALSE(shape(kind, p) == unit(n, k)) << "kind " << kind << ", node " << k;
      }
    }
  }
}

// The coordinates L, xi, eta add up to 1 - zeta, a quadratic in them to (1 - zeta)(1 - 2 zeta).
TEST(SolidShapes, QuadraticWedgesAddUpToOneWhereZetaIsZeroAlone) {
  seeded_random random(6103);
  for (const int kind : WEDGES_WITH_ZETA) {
    for (int i = 0; i < 50; ++i) {
      std::vector<double> p = random_place(random, kind);
      const double zeta = p[2];
      EXPECT_CLOSE(sum(shape(kind, p)), (1.0 - zeta) * (1.0 - 2.0 * zeta), 6.0, 30) << kind;
      p[2] = 0.0;
      EXPECT_CLOSE(sum(shape(kind, p)), 1.0, 1.0, 20) << kind;
    }
  }
}

TEST(SolidShapes, QuadraticWedgesHaveZetaInTheirThirdTriangleCoordinate) {
  seeded_random random(6104);
  for (const int kind : WEDGES_WITH_ZETA) {
    for (int i = 0; i < 50; ++i) {
      const std::vector<double> p = random_place(random, kind);
      const real base = 1 - real(p[0]) - p[1];
      EXPECT_CLOSE(shape(kind, p), wedge_functions(kind, p, base - p[2]), 6.0, 20) << "kind " << kind;
      // Without zeta these functions are those of the nodes: what is compared with is right itself.
      EXPECT_CLOSE(wedge_functions(kind, p, base), reference::rounded(reference::functions(kind, p)), 1.0, 10) << kind;
    }
  }
}

// xi = 1/4, eta = 1/8, zeta = 1/2: L = 1/8. Kind 22: -zeta (1 - zeta) / 2 = -1/8, L (2 L - 1) = -3/32. Kind 23:
// (1 - zeta) / 2 = 1/4, L (2 L - zeta - 2) = -9/32, L (2 L + zeta - 2) = -5/32.
TEST(SolidShapes, QuadraticWedgesByHand) {
  const std::vector<double> p = {0.25, 0.125, 0.5};
  const std::vector<double> lagrange = shape(22, p), serendipity = shape(23, p);
  EXPECT_EQ(lagrange[0], 3.0 / 256.0);
  EXPECT_EQ(lagrange[6], 0.75 * (-3.0 / 32.0));
  EXPECT_EQ(lagrange[12], 0.375 * (-3.0 / 32.0));
  EXPECT_EQ(lagrange[1], -0.125 * 4.0 * 0.25 * 0.125);
  EXPECT_EQ(serendipity[0], 0.25 * (-9.0 / 32.0));
  EXPECT_EQ(serendipity[6], 0.75 * 0.125);
  EXPECT_EQ(serendipity[9], 0.75 * (-5.0 / 32.0));
  EXPECT_EQ(serendipity[5], 4.0 * 0.25 * 0.125 * 0.125);
}

TEST(SolidShapes, TetrahedronAtItsPoint) {
  EXPECT_EQ(shape(13, {0.25, 0.25, 0.25}), std::vector<double>(4, 0.25));
  const std::vector<double> expected = {-1, -1, -1, 1, 0, 0, 0, 1, 0, 0, 0, 1};
  seeded_random random(6105);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(solid_cases::shape_derivatives(13, random_place(random, 13)), expected);
}

TEST(SolidShapes, LeaveWhatLiesBeyondTheNodes) {
  for (const reference::kind_facts& facts : reference::all_kinds()) {
    SOLID_FUNCTIONS N;
    SOLID_DERIVATIVES DN;
    std::fill_n(N.data(), SOLID_ROOM, -55.0);
    std::fill_n(DN.data(), 3 * SOLID_ROOM, -55.0);
    SOLID_SHAPE(facts.kind, 0.3, 0.2, 0.1, facts.nodes, N);
    SOLID_SHAPE_DERIV(0.3, 0.2, 0.1, facts.kind, facts.nodes, DN);
    for (int k = 1; k <= SOLID_ROOM; ++k) {
      EXPECT_EQ(N(k) == -55.0, k > facts.nodes) << facts.kind << " " << k;
      for (int i = 1; i <= 3; ++i) EXPECT_EQ(DN(i, k) == -55.0, k > facts.nodes) << facts.kind << " " << k;
    }
  }
}

TEST(SolidShapes, InterpolateANodalVector) {
  seeded_random random(6106);
  for (const reference::kind_facts& facts : reference::all_kinds()) {
    const std::vector<double> V = random.vector(3 * facts.nodes, 1.0);
    std::vector<double> places, expected;
    for (int p = 0; p < 5; ++p) {
      const std::vector<double> place = random_place(random, facts.kind);
      places.insert(places.end(), place.begin(), place.end());
      const std::vector<double> N = shape(facts.kind, place);
      for (std::size_t i = 0; i < 3; ++i) {
        real value = 0;
        for (std::size_t k = 0; k < N.size(); ++k) value += real(N[k]) * V[3 * k + i];
        expected.push_back(static_cast<double>(value));
      }
    }
    std::vector<double> OUT(17, -55.0);
    SOLID_INTERP_NODAL(facts.kind, facts.nodes, 5, places.data(), V.data(), OUT.data());
    EXPECT_EQ(OUT[15], -55.0);
    OUT.resize(15);
    EXPECT_CLOSE(OUT, expected, 10.0, 20) << "kind " << facts.kind;
  }
}

TEST(SolidShapes, InterpolationOfALinearFieldIsTheField) {
  seeded_random random(6107);
  for (const int kind : NODAL_KINDS) {
    std::vector<double> V, expected;
    const std::vector<double> place = random_place(random, kind);
    const auto field = [](const std::vector<double>& x) {
      return std::vector<double>{1.0 + x[0], 2.0 * x[1] - x[2], x[0] + 3.0 * x[2]};
    };
    for (int k = 1; k <= reference::node_count(kind); ++k) {
      const std::vector<double> value = field(node(kind, k));
      V.insert(V.end(), value.begin(), value.end());
    }
    std::vector<double> OUT(3);
    SOLID_INTERP_NODAL(kind, reference::node_count(kind), 1, place.data(), V.data(), OUT.data());
    EXPECT_CLOSE(OUT, field(place), 4.0, 20) << "kind " << kind;
  }
}

// A node count beyond the room of the functions: what lies behind column 27 is not read.
TEST(SolidShapes, InterpolationTakesTwentySevenNodesAtMost) {
  std::vector<double> V(81, 2.0), OUT(3, -55.0);
  V.resize(120, std::numeric_limits<double>::quiet_NaN());
  const std::vector<double> place = {0.3, -0.2, 0.1};
  for (const std::int32_t nodes : {28, 40}) {
    SOLID_INTERP_NODAL(20, nodes, 1, place.data(), V.data(), OUT.data());
    EXPECT_CLOSE(OUT, std::vector<double>(3, 2.0), 2.0, 20) << nodes;
  }
}
