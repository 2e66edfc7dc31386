// layered_results_test.cpp: the result records of the layered elements, column by column, at points and nodes.
#include <cmath>

#include "comparison.h"
#include "layered_element_reference.h"

using layered_reference::real;
using layered_reference::THICK;
using shell_reference::column;
using shell_reference::column_of;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::station;
using support::plate_description;
using support::seeded_random;

namespace {

// Forces (8), then stresses and plastic increments of bottom, middle and top (5 each).
struct shown {
  column forces = column::Zero(8), stress = column::Zero(15), plastic = column::Zero(15);
};

int middle_of(int n) { return (n + 2) / 2; }  // (n + 1) / 2, the half away from zero

shown shown_at(const layered_element_reference& r, layered_model& model, const column& u, int gp) {
  const int n = SOLANAELEM.NPT_THICK;
  const column e = r.strains(u, gp);
  const POINT_STATE_RECORD& state = model.point(gp);
  shown out;
  out.forces = section_of_point(state, n, r.d.thickness, r.s.theory).of_forces() * e;
  const int points[3] = {1, middle_of(n), n};
  for (int at = 0; at < 3; ++at) {
    const layered_values v = values_of(state, points[at]);
    matrix C = dense::widened(field_of(v, "TANGENT").data(), 5, 5);
    out.stress.segment(5 * at, 5) = C * r.strain_at(e, (at - 1) * real(r.d.thickness) / 2);
    out.plastic.segment(5 * at, 5) =
        layered_reference::to_local(layered_reference::vector6_of(field_of(v, "EP_INC")), r.axes);
    // A thin element has no shear stress across it. Its plastic shears are what stands in the array.
    if (r.s.theory != THICK) out.stress.segment(5 * at + 3, 2).setZero();
  }
  return out;
}

// Angle, principal stresses, largest shear, equivalent stress.
void set_principal(column& R, int stress, int principal, real xz, real yz) {
  const real a = R(stress - 1), b = R(stress), c = R(stress + 1);
  const real centre = (a + b) / 2, radius = std::hypot((a - b) / 2, c);
  const real s1 = centre + radius, s2 = centre - radius;
  R.segment(principal - 1, 5) << std::atan2(2 * c, a - b) / 2, s1, s2, radius,
      std::sqrt(s1 * s1 + s2 * s2 - s1 * s2) + std::sqrt(3 * (xz * xz + yz * yz));
}

column record_of(const layered_element_reference& r, real x, real y, const column& e, const shown& v) {
  column R = column::Zero(90);
  R(0) = x;
  R(1) = y;
  const real z = real(r.d.thickness) / 2;
  const int strain[3] = {26, 15, 4}, stress[3] = {29, 18, 7}, plastic[3] = {57, 54, 51};
  for (int at = 0; at < 3; ++at) {
    R.segment(strain[at] - 1, 3) = e.head(3) + (at - 1) * z * e.segment(3, 3);
    R.segment(stress[at] - 1, 3) = v.stress.segment(5 * at, 3);
    R.segment(plastic[at] - 1, 3) = v.plastic.segment(5 * at, 3);
  }
  R.segment(36, 6) = v.forces.head(6);
  R.segment(42, 2) = e.tail(2) / real(0.833333333333333);
  R.segment(44, 2) = v.forces.tail(2);
  R.segment(46, 2) = v.stress.segment(8, 2);
  R.segment(59, 2) = v.plastic.segment(8, 2);
  set_principal(R, 7, 10, 0, 0);
  set_principal(R, 29, 32, 0, 0);
  set_principal(R, 18, 21, R(46), R(47));
  return R;
}

std::vector<double> block(const std::vector<double>& all, int n) {
  return std::vector<double>(all.begin() + 90 * n, all.begin() + 90 * (n + 1));
}

matrix extrapolation(int nodes) {
  if (nodes == 3) {
    const double own = 1.9166667, other = -0.5833333;
    matrix X(3, 4);
    X << 0.25, own, other, other, 0.25, other, own, other, 0.25, other, other, own;
    return X;
  }
  const double a = 1.866025447845459, b = -0.5, c = 0.1339746117591858;
  matrix X(4, 4);
  X << a, b, c, b, b, a, b, c, c, b, a, b, b, c, b, a;
  return X;
}

struct column_group {
  int first, count;
  double size;
};

void compare(const std::vector<double>& actual, const column& expected, const layered_element_reference& r,
             double strain, const std::string& where) {
  const double E = 10.0 * r.m.E, t = r.d.thickness, plastic = r.m.sy / r.m.E;
  const column_group groups[] = {{1, 3, 1.0},         {4, 3, strain},          {7, 3, E * strain},
                                 {11, 4, E * strain}, {15, 3, strain},         {18, 3, E * strain},
                                 {22, 4, E * strain}, {26, 3, strain},         {29, 3, E * strain},
                                 {33, 4, E * strain}, {37, 3, E * t * strain}, {40, 3, E * t * t * strain},
                                 {43, 2, strain},     {45, 2, E * t * strain}, {47, 2, E * strain},
                                 {49, 2, 0.0},        {51, 9, 4.0 * plastic},  {60, 2, 4.0 * plastic},
                                 {62, 1, 0.0}};
  const std::vector<double> list = listed(expected);
  for (const column_group& g : groups) {
    const auto part = [&](const std::vector<double>& v) {
      return std::vector<double>(v.begin() + g.first - 1, v.begin() + g.first - 1 + g.count);
    };
    EXPECT_CLOSE(part(actual), part(list), g.size, 400) << where << " columns from " << g.first;
  }
  // Angles are as sharp as the difference of the principal stresses is large.
  for (const int angle : {10, 21, 32}) {
    const std::size_t at = static_cast<std::size_t>(angle - 1);
    const double radius = list[at + 3];
    const double turn = std::remainder(actual[at] - list[at], std::acos(-1.0));
    EXPECT_CLOSE(turn, 0.0, E * strain / radius, 400) << where << " angle " << angle;
  }
  for (std::size_t at = 62; at < 90; ++at) EXPECT_EQ(actual[at], 0.0) << where << " column " << at + 1;
}

}  // namespace

TEST(LayeredResults, EveryColumnAtPointsAndNodes) {
  // Tangents and increments are any numbers; 4, 1, 2 and 17 points have no rule, so that section forces are zero while
  // the stresses of the three heights are not; the middle of four points is the third.
  seeded_random random(791);
  for (const layered_subject& s : SUBJECTS) {
    for (const int n : {3, 5, 7, 9, 11, 13, 15, 4, 1, 2, 6, 17}) {
      const plate_description d = random_layered(random, s, 0.2);
      layered_model model(d, n, n % 3 == 0 ? point_layout::scattered : point_layout::packed);
      model.fill_random(random);
      const layered_element_reference r(s, d);
      const std::vector<double> u = random_displacements(random, d, 1e-3);
      const column local = r.e.to_local(column_of(u));
      const std::vector<std::uint64_t> before = model.bits();
      model.set_stored(random_displacements(random, d, 1.0));                   // no share in results
      const support::plate_results results = model.results(1, u, 30.0, -20.0);  // nor has temperature
      EXPECT_EQ(model.bits(), before) << "results only read";
      const double strain = support::max_norm(u) / d.thickness * 20.0;
      matrix forces(8, 4), stress(15, 4), plastic(15, 4);
      for (int gp = 1; gp <= 4; ++gp) {
        const station p = shell_reference::element_rule(s.nodes)[static_cast<std::size_t>(gp - 1)];
        const shown v = shown_at(r, model, local, gp);
        const auto at = shell_reference::position(r.e.X, p.xi, p.eta);
        compare(block(results.points, gp - 1), record_of(r, at(0), at(1), r.strains(local, gp), v), r, strain,
                std::string(s.name) + " point " + std::to_string(gp) + " of " + std::to_string(n));
        forces.col(gp - 1) = v.forces;
        stress.col(gp - 1) = v.stress;
        plastic.col(gp - 1) = v.plastic;
      }
      const matrix X = extrapolation(s.nodes).transpose();
      for (int i = 1; i <= s.nodes; ++i) {
        const station p = shell_reference::node_stations(s.nodes)[static_cast<std::size_t>(i - 1)];
        const shown v{forces * X.col(i - 1), stress * X.col(i - 1), plastic * X.col(i - 1)};
        compare(block(results.nodes, i - 1),
                record_of(r, r.e.X(0, i - 1), r.e.X(1, i - 1), r.B(p.xi, p.eta) * local, v), r, 4.0 * strain,
                std::string(s.name) + " node " + std::to_string(i) + " of " + std::to_string(n));
      }
      if (s.nodes == 3) {
        EXPECT_EQ(block(results.nodes, 3), std::vector<double>(90, 0.0)) << "stays as cleared";
      }
    }
  }
}

TEST(LayeredResults, ColumnsOfThinElementsHaveNoShears) {
  seeded_random random(792);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 5);
    const std::vector<double> u = random_displacements(random, d, 8.0 * d.yield_stress / d.young);
    model.internal_forces(1, u, 33);
    const std::vector<double> R = model.results(1, u).points;
    for (int p = 0; p < 4; ++p) {
      const std::vector<double> b = block(R, p);
      for (const std::size_t first : {43U, 45U, 47U}) {
        const double size = std::fabs(b[first - 1]) + std::fabs(b[first]);
        if (s.theory == THICK) {
          EXPECT_GT(size, 0.0) << s.name << first;
        } else {
          EXPECT_EQ(size, 0.0) << s.name << first;
        }
      }
      // The middle may be elastic; then there is no increment at all.
      const double increments = support::max_norm(std::vector<double>(b.begin() + 53, b.begin() + 56));
      const double shears = std::fabs(b[59]) + std::fabs(b[60]);
      if (s.theory != THICK) {
        EXPECT_CLOSE(shears, 0.0, increments, 64) << s.name;
      } else if (increments > 0.0) {
        EXPECT_GT(shears, 1e-6 * increments) << s.name;
      }
    }
  }
}

// Elements in the plane y-z whose axes 1, 2, 3 are the global y, z, x, so that the local xz is the global xy and the
// local yz the global xz; in the plane x-y the axes are the global ones.
TEST(LayeredResults, PlasticShearsAcrossAreThoseOfTheMiddleAsStored) {
  for (const layered_subject& s : SUBJECTS) {
    for (const bool upright : {false, true}) {
      plate_description d;
      d.nodes = {{0, 0, 0}, {2, 0, 0}, {2, 1.5, 0}, {0, 1.5, 0}};
      if (s.nodes == 3) d.nodes = {{0, 0, 0}, {2, 0, 0}, {0, 1.5, 0}};
      if (upright) {
        for (support::point& x : d.nodes) x = {x[2], x[0], x[1]};
      }
      d.formulation = s.formulation;
      d.plastic_switch = 1;
      d.material.mtype = 1;
      layered_model model(d, 5);
      const int xz = upright ? 4 : 5, yz = upright ? 5 : 6;  // rows of EP_INC: xx, yy, zz, xy, xz, yz
      for (int gp = 1; gp <= 4; ++gp) {
        for (int k = 1; k <= 5; ++k) {
          for (int i = 1; i <= 6; ++i) model.point(gp).EP_INC(i, k) = 0.0;
          model.point(gp).EP_INC(xz, k) = k == 3 ? 0.25 : 8.0;
          model.point(gp).EP_INC(yz, k) = k == 3 ? -0.125 : 16.0;
        }
      }
      const support::plate_results shown = model.results(1, std::vector<double>(6U * d.nodes.size(), 0.0));
      for (int p = 0; p < 4; ++p) {
        const std::vector<double> b = block(shown.points, p);
        EXPECT_CLOSE(std::vector<double>(b.begin() + 59, b.begin() + 61), (std::vector<double>{0.25, -0.125}), 1.0, 4)
            << s.name << upright;
        EXPECT_CLOSE(std::vector<double>(b.begin() + 50, b.begin() + 59), std::vector<double>(9, 0.0), 16.0, 4);
      }
      // The same at all points is extrapolated to the nodes as it is, in the digits of the single-precision factors.
      for (int n = 0; n < s.nodes; ++n) {
        const std::vector<double> b = block(shown.nodes, n);
        EXPECT_WITHIN(b[59], 0.25, 0.25, 2e-7) << s.name << upright;
        EXPECT_WITHIN(b[60], -0.125, 0.125, 2e-7) << s.name << upright;
      }
    }
  }
}

TEST(LayeredResults, StressOfTheMiddleHasNothingOfBending) {
  seeded_random random(793);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 5);
    const layered_element_reference r(s, d);
    // Nodes that move across the element alone: there is no membrane strain, except from the turn to space and back.
    column local = column::Zero(s.order());
    for (int i = 0; i < 3 * s.nodes; ++i) local(r.e.bending(i)) = random.uniform(-1.0, 1.0);
    const std::vector<double> R = model.results(1, listed(r.e.to_global(local))).points;
    for (int p = 0; p < 4; ++p) {
      const std::vector<double> b = block(R, p);
      const double face = support::max_norm(std::vector<double>(b.begin() + 6, b.begin() + 9));
      EXPECT_GT(face, 0.0);
      EXPECT_CLOSE(std::vector<double>(b.begin() + 17, b.begin() + 20), std::vector<double>(3, 0.0), 10.0 * d.young,
                   64);
    }
  }
}

TEST(LayeredResults, MeanShearStressIsThatOfTheMiddleNotOfTheForce) {
  // With the tangent of the middle softened, columns 45 and 47 part.
  seeded_random random(794);
  for (const layered_subject& s : SUBJECTS) {
    if (s.theory != THICK) continue;
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 5);
    const std::vector<double> u = random_displacements(random, d, 1e-6);
    const std::vector<double> before = model.results(1, u).points;
    for (int gp = 1; gp <= 4; ++gp) model.point(gp).TANGENT(4, 4, 3) *= 0.5;
    const std::vector<double> after = model.results(1, u).points;
    const double share = 1.0 - 0.5 * 0.7111111111111111 / 2.0;  // of the middle in the rule
    for (int p = 0; p < 4; ++p) {
      EXPECT_WITHIN(block(after, p)[46], 0.5 * block(before, p)[46], std::fabs(block(before, p)[46]), 1e-13);
      EXPECT_WITHIN(block(after, p)[44], share * block(before, p)[44], std::fabs(block(before, p)[44]), 1e-12);
      EXPECT_WITHIN(block(before, p)[44], block(before, p)[46] * d.thickness, std::fabs(block(before, p)[44]), 1e-12)
          << "the stress of the layered model has no factor to the force";
    }
  }
}
