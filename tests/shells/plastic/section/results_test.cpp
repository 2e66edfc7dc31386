// results_test.cpp: operation 5: records at the points from the stored tangents, and what is extrapolated to the nodes.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "plastic_reference.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::real;
using shell_reference::station;
using support::seeded_random;

namespace {

constexpr real KAPPA = 0.833333333333333;

std::vector<double> record(const std::vector<double>& blocks, int n) {
  const auto start = blocks.begin() + 90 * n;
  return std::vector<double>(start, start + 90);
}

std::vector<double> columns(const std::vector<double>& R, int first, int count) {
  const auto start = R.begin() + first - 1;
  return std::vector<double>(start, start + count);
}

// Row by node, column by point. The numbers of four nodes are single-precision ones.
matrix extrapolation(int nodes) {
  const double a = nodes == 3 ? 1.9166667 : 1.866025447845459, b = nodes == 3 ? -0.5833333 : -0.5;
  const double c = 0.1339746117591858;
  matrix E(nodes, 4);
  if (nodes == 3) {
    E << 0.25, a, b, b, 0.25, b, a, b, 0.25, b, b, a;
  } else {
    E << a, b, c, b, b, a, b, c, c, b, a, b, b, c, b, a;
  }
  return E;
}

// What a record shows: strains, resultants and plastic strains, each of the width.
struct shown {
  column strain, resultant, plastic;
};

shown at_point(const plastic_reference& r, const column& u, std::size_t point) {
  const station& s = shell_reference::element_rule(r.e.n)[point];
  const column strain = r.B(s.xi, s.eta) * u;
  return {strain, r.C(static_cast<int>(point)) * strain,
          section_reference::to_local(r.points[point].ep_inc, r.e.axes, r.kind.width)};
}

shown at_node(const plastic_reference& r, const column& u, int node) {
  const station& s = shell_reference::node_stations(r.e.n)[static_cast<std::size_t>(node)];
  shown all{r.B(s.xi, s.eta) * u, column::Zero(r.kind.width), column::Zero(r.kind.width)};
  for (std::size_t point = 0; point < 4; ++point) {
    const shown p = at_point(r, u, point);
    const real share = extrapolation(r.e.n)(node, static_cast<int>(point));
    all.resultant += share * p.resultant;
    all.plastic += share * p.plastic;
  }
  return all;
}

// Scales of strains and resultants of a set of displacements.
struct scales {
  double strain, force;
};

void expect_values(const std::vector<double>& R, int first, const column& expected, double scale,
                   const std::string& where) {
  EXPECT_WITHIN(columns(R, first, static_cast<int>(expected.size())), listed(expected), scale, 1e-10)
      << where << " column " << first;
}

void expect_record(const std::vector<double>& R, const shown& v, const plastic_reference& r, const scales& scale,
                   const std::string& where) {
  const real h = r.p.h;
  const column e = v.strain.head(3), k = v.strain.segment(3, 3), n = v.resultant.head(3), m = v.resultant.segment(3, 3);
  const double stress = scale.force / r.p.h;
  expect_values(R, 4, e + k * h / 2, scale.strain, where);
  expect_values(R, 15, e, scale.strain, where);
  expect_values(R, 26, e - k * h / 2, scale.strain, where);
  expect_values(R, 7, n / h + 6 * m / (h * h), stress, where);
  expect_values(R, 18, n / h, stress, where);
  expect_values(R, 29, n / h - 6 * m / (h * h), stress, where);
  expect_values(R, 37, n, scale.force, where);
  expect_values(R, 40, m, scale.force * r.p.h, where);
  column shears = column::Zero(6), plastic_shear = column::Zero(2);
  if (r.kind.thick()) {
    const column g = v.strain.tail(2), q = v.resultant.tail(2);
    shears << g / KAPPA, q / scale.force * scale.strain, q / (KAPPA * h) / stress * scale.strain;
    plastic_shear = v.plastic.tail(2);
  }
  std::vector<double> shown_shears = columns(R, 43, 6);
  for (std::size_t i = 2; i < 6; ++i) shown_shears[i] *= scale.strain / (i < 4 ? scale.force : stress);
  EXPECT_WITHIN(shown_shears, listed(shears), scale.strain, 1e-10) << where << " column 43";
  EXPECT_EQ(columns(R, 49, 2), std::vector<double>(2, 0.0)) << where;
  const column ep = v.plastic.head(3), kp = v.plastic.segment(3, 3);
  expect_values(R, 51, ep + kp * h / 2, scale.strain, where);
  expect_values(R, 54, ep, scale.strain, where);
  expect_values(R, 57, ep - kp * h / 2, scale.strain, where);
  expect_values(R, 60, plastic_shear, scale.strain, where);
  EXPECT_EQ(columns(R, 62, 29), std::vector<double>(29, 0.0)) << where;
}

// Principal values belong to the stresses of the same record.
void expect_principal(const std::vector<double>& R, const std::string& where) {
  const int stress[] = {7, 18, 29}, principal[] = {10, 21, 32};
  for (std::size_t i = 0; i < 3; ++i) {
    const std::vector<double> s = columns(R, stress[i], 3), p = columns(R, principal[i], 5);
    const double scale = std::fabs(s[0]) + std::fabs(s[1]) + std::fabs(s[2]);
    double mises = std::sqrt(s[0] * s[0] - s[0] * s[1] + s[1] * s[1] + 3.0 * s[2] * s[2]);
    if (i == 1) mises += std::sqrt(3.0) * std::hypot(R[46], R[47]);
    EXPECT_CLOSE(p[1] + p[2], s[0] + s[1], scale, 16) << where;
    EXPECT_CLOSE(p[4], mises, scale + mises, 64) << where;
  }
}

// Two accepted steps, the second of them plastic; then results of other displacements.
struct yielded_plate {
  yielded_plate(seeded_random& random, const plastic_kind& kind, array_layout layout = array_layout::packed)
      : d(random_plate(random, kind, 0.1)), reference(d, kind), model(d, layout), us(column::Zero(6 * kind.nodes)) {
    model.first_pass();
    for (const double level : {0.8, 1.5}) {
      const std::vector<double> step = reference.displacements(random, level);
      model.internal_forces(1, step, 33);
      reference.forces(reference.e.to_local(column_of(step)), us, true);
      model.accept(step);
      reference.promote();
      us += reference.e.to_local(column_of(step));
    }
    u = reference.displacements(random, 1.0);
  }
  support::plate_description d;
  plastic_reference reference;
  plastic_model model;
  column us;
  std::vector<double> u;
};

// A membrane field of constant strain, in global axes.
std::vector<double> constant_strain(const plastic_reference& r, double a, double b, double c) {
  column u = column::Zero(6 * r.e.n);
  for (int n = 0; n < r.e.n; ++n) {
    u(6 * n) = a * r.e.X(0, n) + c * r.e.X(1, n);
    u(6 * n + 1) = b * r.e.X(1, n);
  }
  return listed(r.e.to_global(u));
}

}  // namespace

TEST(PlasticResults, EveryColumnAtPointsAndNodes) {
  seeded_random random(721);
  for (const plastic_kind& kind : shell_kinds()) {
    for (const array_layout layout : {array_layout::packed, array_layout::scattered}) {
      yielded_plate t(random, kind, layout);
      const column u = t.reference.e.to_local(column_of(t.u));
      const support::plate_results results = t.model.results(1, t.u);
      const scales scale{4.0 * t.d.yield_stress / t.d.young, 4.0 * t.d.yield_stress * t.d.thickness};
      for (int n = 0; n < 4; ++n) {
        const std::string where = std::string(kind.name) + " point " + std::to_string(n + 1);
        expect_record(record(results.points, n), at_point(t.reference, u, static_cast<std::size_t>(n)), t.reference,
                      scale, where);
        expect_principal(record(results.points, n), where);
      }
      for (int n = 0; n < kind.nodes; ++n) {
        const std::string where = std::string(kind.name) + " node " + std::to_string(n + 1);
        expect_record(record(results.nodes, n), at_node(t.reference, u, n), t.reference, scale, where);
        expect_principal(record(results.nodes, n), where);
      }
      if (kind.nodes == 4) continue;
      EXPECT_EQ(record(results.nodes, 3), std::vector<double>(90, 0.0)) << kind.name << ": no fourth node";
    }
  }
}

TEST(PlasticResults, EveryColumnOfMembranesThatYield) {
  // Their strains of bending are shown, their moments are those of a section without bending.
  seeded_random random(727);
  for (const plastic_kind& kind : membrane_kinds()) {
    yielded_plate t(random, kind);
    const column u = t.reference.e.to_local(column_of(t.u));
    const support::plate_results results = t.model.results(1, t.u);
    const scales scale{4.0 * t.d.yield_stress / t.d.young, 4.0 * t.d.yield_stress * t.d.thickness};
    for (int n = 0; n < 4; ++n) {
      const std::string where = std::string(kind.name) + " point " + std::to_string(n + 1);
      expect_record(record(results.points, n), at_point(t.reference, u, static_cast<std::size_t>(n)), t.reference,
                    scale, where);
    }
    for (int n = 0; n < kind.nodes; ++n) {
      const std::string where = std::string(kind.name) + " node " + std::to_string(n + 1);
      expect_record(record(results.nodes, n), at_node(t.reference, u, n), t.reference, scale, where);
    }
  }
}

TEST(PlasticResults, StandAtTheNodesAndAtThePoints) {
  seeded_random random(722);
  for (const plastic_kind& kind : shell_kinds()) {
    yielded_plate t(random, kind);
    const support::plate_results results = t.model.results(1, t.u);
    const auto expect_place = [&](const std::vector<double>& R, const station& s) {
      const shell_reference::vector2 x = shell_reference::position(t.reference.e.X, s.xi, s.eta);
      EXPECT_CLOSE(columns(R, 1, 3), (std::vector<double>{static_cast<double>(x(0)), static_cast<double>(x(1)), 0.0}),
                   4.0, 32)
          << kind.name;
    };
    for (std::size_t n = 0; n < 4; ++n) {
      expect_place(record(results.points, static_cast<int>(n)), shell_reference::element_rule(kind.nodes)[n]);
    }
    for (int n = 0; n < kind.nodes; ++n) {
      expect_place(record(results.nodes, n), shell_reference::node_stations(kind.nodes)[static_cast<std::size_t>(n)]);
    }
  }
}

TEST(PlasticResults, DoNotFeelTheTemperature) {
  seeded_random random(723);
  for (const plastic_kind& kind : shell_kinds()) {
    yielded_plate t(random, kind);
    const support::plate_results cold = t.model.results(1, t.u), hot = t.model.results(1, t.u, 80.0, -50.0);
    EXPECT_EQ(hot.points, cold.points) << kind.name;
    EXPECT_EQ(hot.nodes, cold.nodes) << kind.name;
  }
}

TEST(PlasticResults, ShowTheIncrementOfTheLastStoredStateWhateverTheDisplacements) {
  seeded_random random(724);
  for (const plastic_kind& kind : shell_kinds()) {
    yielded_plate t(random, kind);
    const support::plate_results moved = t.model.results(1, t.u);
    const support::plate_results still = t.model.results(1, std::vector<double>(t.u.size(), 0.0));
    for (int n = 0; n < 4; ++n) {
      EXPECT_EQ(columns(record(still.points, n), 51, 11), columns(record(moved.points, n), 51, 11)) << kind.name;
      EXPECT_EQ(columns(record(still.points, n), 37, 12), std::vector<double>(12, 0.0)) << kind.name;
    }
  }
}

// ---- from the points to the nodes

TEST(Extrapolation, EntryByEntry) {
  // A plastic strain at one point alone, of one kind alone: its share at each node.
  seeded_random random(725);
  for (const plastic_kind& kind : shell_kinds()) {
    yielded_plate t(random, kind);
    const matrix E = extrapolation(kind.nodes);
    for (int point = 1; point <= 4; ++point) {
      PLATE_STATE_RECORD& r = t.model.record();
      for (int gp = 1; gp <= 4; ++gp) {
        column local = column::Zero(kind.width);
        if (gp == point) local(0) = 1.0;
        const column ep = section_reference::to_global(local, t.reference.e.axes);
        for (int i = 1; i <= 12; ++i) r.SEC_EP_INC(i, gp) = static_cast<double>(ep(i - 1));
      }
      const support::plate_results results = t.model.results(1, t.u);
      for (int n = 0; n < kind.nodes; ++n) {
        const double share = static_cast<double>(E(n, point - 1));
        EXPECT_CLOSE(record(results.nodes, n)[53], share, 1.0, 16) << kind.name << " " << n + 1 << " " << point;
      }
    }
  }
}

TEST(Extrapolation, RowsDoNotAddUpToOne) {
  for (const plastic_kind& kind : shell_kinds()) {
    const matrix E = extrapolation(kind.nodes);
    const double row_sum = kind.nodes == 3 ? 1.0000001 : 1.0000000596046448;
    for (int n = 0; n < kind.nodes; ++n) {
      EXPECT_CLOSE(static_cast<double>(E.row(n).sum()), row_sum, 1.0, 4) << kind.name;
    }
  }
}

TEST(Extrapolation, OfAConstantStateIsTheStateTimesTheSumOfARow) {
  // Constant strain with the tangent of the first pass: the resultants of the points are equal, those of the nodes are
  // larger by the excess of the rows, and strains at the nodes, which are not extrapolated, are not.
  seeded_random random(726);
  for (const plastic_kind& kind : shell_kinds()) {
    const support::plate_description d = random_plate(random, kind, 0.1);
    const plastic_reference reference(d, kind);
    plastic_model model(d);
    model.first_pass();
    const double y = d.yield_stress / d.young;
    const std::vector<double> strain = random.vector(2, 0.5 * y);
    const support::plate_results results = model.results(1, constant_strain(reference, y, strain[0], strain[1]));
    const double row_sum = kind.nodes == 3 ? 1.0000001 : 1.0000000596046448;
    const double scale = support::max_norm(columns(record(results.points, 0), 37, 3));
    for (int n = 0; n < kind.nodes; ++n) {
      std::vector<double> expected = columns(record(results.points, 0), 37, 3);
      EXPECT_CLOSE(columns(record(results.points, n), 37, 3), expected, scale, 200) << kind.name;
      for (double& v : expected) v *= row_sum;
      EXPECT_CLOSE(columns(record(results.nodes, n), 37, 3), expected, scale, 200) << kind.name;
      EXPECT_CLOSE(columns(record(results.nodes, n), 15, 3), columns(record(results.points, 0), 15, 3), y, 200)
          << kind.name;
    }
  }
}
