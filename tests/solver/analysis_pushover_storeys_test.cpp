// An invented space frame of two storeys to collapse: limit analysis, the mechanism, second order.
//
// Its load factors come from decks/limit_analysis.py: linear programmes over equilibrium and yield surfaces, which know
// neither stiffness nor path.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "finites/fields.h"
#include "pushover_support.h"

using namespace pushover_test;
using solver::pushover_end;

namespace {

constexpr double FLAT_FACES = 1.22246859;
constexpr double SMOOTH_LOWER = 1.29547, SMOOTH_UPPER = 1.29549;

const solver::hinge_model& hinges_of(const solver::model& m, std::size_t e) {
  return m.hinges[static_cast<std::size_t>(m.elements[e].hinges)];
}

// Displacements of the ends of a beam in its local axes, in the order of its end forces.
solver::end_forces end_motion(const solver::model& m, std::size_t e, const std::vector<double>& displacement) {
  const auto axes = solver::member_axes(m, m.elements[e]);
  solver::end_forces local{};
  for (std::size_t part = 0; part < 4; ++part)
    for (int a = 1; a <= 3; ++a)
      for (int i = 1; i <= 3; ++i)
        local[3 * part + static_cast<std::size_t>(a - 1)] +=
            axes(a, i) *
            displacement[solver::freedom(m.elements[e].nodes[part / 2], 3 * static_cast<int>(part % 2) + i - 1)];
  return local;
}

double length_of(const solver::model& m, std::size_t e) {
  double sum = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    const auto xyz = [&](std::size_t end) {
      return m.nodes[static_cast<std::size_t>(m.elements[e].nodes[end])].xyz[i];
    };
    sum += std::pow(xyz(1) - xyz(0), 2);
  }
  return std::sqrt(sum);
}

// The largest value of the yield surfaces over all ends, by their formulas: the smooth one, m1 + m2, m2 alone.
double largest_value(const solver::model& m, const solver::pushover_solution& s) {
  double largest = 0;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const solver::hinge_model& h = hinges_of(m, e);
    for (std::size_t k = 0; k < 12; k += 6) {
      const double p = std::fabs(s.members[e][k] / h.cap_p), m1 = std::fabs(s.members[e][k + 4] / h.cap_my),
                   m2 = std::fabs(s.members[e][k + 5] / h.cap_mz);
      double value = m2;
      if (h.curve == solver::yield_curve::ORBISON) value = orbison(p, m1, m2);
      if (h.curve == solver::yield_curve::LINEAR) value = m1 + m2;
      if (h.curve == solver::yield_curve::LINEAR && h.force_set == 7)
        value = std::fmax(p / 2 + m1 + m2, p + 8.0 / 9 * (m1 + m2));
      largest = std::fmax(largest, value);
    }
  }
  return largest;
}

// The deck with flat faces, with other forces in the yield surfaces of its columns.
solver::model with_column_forces(int force_set) {
  solver::model m = deck("pushover_two_storeys.inp");
  for (solver::hinge_model& h : m.hinges)
    if (h.curve == solver::yield_curve::LINEAR) h.force_set = force_set;
  return m;
}

double work_of_loads(const solver::pushover_solution& s, const std::vector<double>& motion) {
  double sum = 0;
  for (std::size_t f = 0; f < motion.size(); ++f) sum += s.frame.load[f] * motion[f];
  return sum / s.factor;
}

// What a motion dissipates in hinges under bending, and the largest of what no hinge allows: stretching and twisting of
// a member, rotation about axis 1 of an end that yields about axis 2 alone. In parts of the largest rotation of a
// hinge.
struct dissipation {
  double work = 0, forbidden = 0;
};

dissipation dissipated(const solver::model& m, const std::vector<double>& motion) {
  dissipation d;
  double fastest = 0;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const solver::end_forces u = end_motion(m, e, motion);
    const solver::hinge_model& h = hinges_of(m, e);
    const double length = length_of(m, e);
    d.forbidden = std::max({d.forbidden, std::fabs(u[6] - u[0]) / length, std::fabs(u[9] - u[3])});
    for (std::size_t k = 0; k < 12; k += 6) {
      const double about_1 = std::fabs(u[k + 4] + (u[8] - u[2]) / length),
                   about_2 = std::fabs(u[k + 5] - (u[7] - u[1]) / length);
      fastest = std::max({fastest, about_1, about_2});
      if (h.curve == solver::yield_curve::SINGLE) {
        d.forbidden = std::fmax(d.forbidden, about_1);
        d.work += h.cap_mz * about_2;
      } else {  // the largest work of moments with m1 + m2 <= 1
        d.work += std::fmax(h.cap_my * about_1, h.cap_mz * about_2);
      }
    }
  }
  d.forbidden /= fastest;
  return d;
}

// The largest moment that is left over about the first end of a member whose second end has moved, by the largest
// plastic moment: L Vy + Mz1 + Mz2 = N dv, -L Vz + My1 + My2 = -N dw. In first order the members stay where they were.
double moment_imbalance(const solver::model& m, const solver::pushover_solution& s, bool second_order) {
  double worst = 0, largest = 0;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const solver::end_forces& f = s.members[e];
    const solver::end_forces u = end_motion(m, e, s.frame.displacement);
    const double N = second_order ? f[6] : 0, length = length_of(m, e);
    worst = std::max({worst, std::fabs(length * f[7] + f[5] + f[11] - N * (u[7] - u[1])),
                      std::fabs(-length * f[8] + f[4] + f[10] + N * (u[8] - u[2]))});
    largest = std::fmax(largest, hinges_of(m, e).cap_mz);
  }
  return worst / largest;
}

// The work of the axial forces on a motion that turns the members of a displaced frame: sum of N (dv dv' + dw dw') / L.
double work_of_axial_forces(const solver::model& m, const solver::pushover_solution& s,
                            const std::vector<double>& motion) {
  double sum = 0;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const solver::end_forces u = end_motion(m, e, s.frame.displacement), v = end_motion(m, e, motion);
    sum += s.members[e][6] / length_of(m, e) * ((u[7] - u[1]) * (v[7] - v[1]) + (u[8] - u[2]) * (v[8] - v[2]));
  }
  return sum;
}

}  // namespace

TEST(PushoverStoreys, FlatFacesReachTheLimitFactor) {
  const solver::model m = deck("pushover_two_storeys.inp");
  for (const solver::solver_kind kind : solvers()) {
    const solver::pushover_solution s = push(m, kind).front();
    EXPECT_EQ(s.end, pushover_end::MECHANISM);
    EXPECT_WITHIN(s.factor, FLAT_FACES, FLAT_FACES, 1e-7);
    EXPECT_LT(imbalance(m, s), 1e-9);
    EXPECT_LT(moment_imbalance(m, s, false), 1e-9);
    EXPECT_LT(largest_value(m, s), 1 + 1e-9);
  }
}

TEST(PushoverStoreys, TheMechanismGivesTheSameFactor) {
  // Kinematic theorem: what the hinges dissipate in the motion, by what the loads work on it, is no less than the
  // factor, and equal to it in the mechanism of collapse.
  const solver::model m = deck("pushover_two_storeys.inp");
  const solver::pushover_solution s = push(m).front();
  ASSERT_FALSE(s.motion.empty());
  const dissipation d = dissipated(m, s.motion);
  EXPECT_LT(d.forbidden, 1e-5);
  EXPECT_WITHIN(d.work / work_of_loads(s, s.motion), FLAT_FACES, FLAT_FACES, 1e-5);
}

TEST(PushoverStoreys, AxialForcesOnFlatFaces) {
  // Columns that yield under an axial force with one moment: limit_analysis.py with these words in the deck's FORCES.
  const struct {
    int force_set;
    double factor;
  } cases[] = {{4, 1.25585754}, {5, 2.24372030}};  // N-M1, N-M2
  for (const auto& c : cases) {
    const solver::pushover_solution s = push(with_column_forces(c.force_set)).front();
    EXPECT_EQ(s.end, pushover_end::MECHANISM);
    EXPECT_WITHIN(s.factor, c.factor, c.factor, 1e-7);
  }
}

TEST(PushoverStoreys, ThreeFacesEndBelowTheLimitFactor) {
  // With N, M1 and M2 an end comes to a vertex, where the path stops with a message: equilibrium and yield conditions
  // hold there, so that its factor is no more than that of limit_analysis.py.
  const solver::model m = with_column_forces(7);
  const solver::pushover_solution s = push(m).front();
  EXPECT_EQ(s.end, pushover_end::VERTEX);
  EXPECT_LT(imbalance(m, s), 1e-9);
  EXPECT_LT(largest_value(m, s), 1 + 1e-7);  // faces above p = 0.2 take 8/9 in single precision
  EXPECT_LT(s.factor, 1.18887255 * (1 + 1e-7));
}

TEST(PushoverStoreys, SmoothSurfacesReachTheLimitFactor) {
  // Equilibrium with no end outside its surface: by the static theorem no more than the upper bound. The path stops
  // where a ten thousandth of the stiffness is left.
  const solver::model m = deck("pushover_two_storeys_orbison.inp");
  const solver::pushover_solution s = push(m).front();
  EXPECT_EQ(s.end, pushover_end::MECHANISM);
  EXPECT_LT(imbalance(m, s), 1e-7);
  EXPECT_LT(moment_imbalance(m, s, false), 1e-7);
  EXPECT_LT(largest_value(m, s), 1 + 1e-9);
  EXPECT_LT(s.factor, SMOOTH_UPPER);
  EXPECT_GT(s.factor, SMOOTH_LOWER * (1 - 1e-3));
  for (std::size_t k = 1; k < s.curve.size(); ++k) {
    EXPECT_GE(s.curve[k].factor, s.curve[k - 1].factor);
    EXPECT_GE(s.curve[k].displacement, s.curve[k - 1].displacement);
  }
}

TEST(PushoverStoreys, SecondOrderStandsInItsDisplacedPlace) {
  // Equilibrium of the members where the nodes have gone, with no end outside its surface, below the first-order
  // factor.
  for (const char* const name : {"pushover_two_storeys.inp", "pushover_two_storeys_p_delta.inp"}) {
    solver::model m = deck(name);
    m.steps[0].p_delta = true;
    const solver::pushover_solution s = push(m).front();
    EXPECT_EQ(s.end, pushover_end::LIMIT) << name;
    EXPECT_LT(imbalance(m, s), 1e-7) << name;
    EXPECT_LT(moment_imbalance(m, s, true), 1e-7) << name;
    EXPECT_GT(moment_imbalance(m, s, false), 1e-2) << name;
    EXPECT_LT(largest_value(m, s), 1 + 1e-9) << name;
    m.steps[0].p_delta = false;
    EXPECT_LT(s.factor, 0.95 * push(m).front().factor) << name;
  }
}

TEST(PushoverStoreys, SecondOrderFollowsTheRigidPlasticLine) {
  // Virtual work of the displaced frame on the first-order mechanism v: x q v - sum of N du dv / L is no more than what
  // the hinges dissipate, x1 q v, and is as much where all hinges of the mechanism yield. So x <= x1 + sum / q v, the
  // rigid-plastic line that falls with the displacements. Under small vertical forces the path ends on it, when the
  // last hinge forms; under large ones before, when fewer hinges have made the frame unstable.
  const solver::model first_order = deck("pushover_two_storeys.inp");
  for (const double share : {0.02, 0.1, 1.0}) {
    solver::model m = first_order;
    for (solver::nodal_load& load : m.steps[0].nodal_loads)
      if (load.dof == 3) load.value *= share;
    const solver::pushover_solution first = push(m).front();
    EXPECT_WITHIN(first.factor, FLAT_FACES, FLAT_FACES, 1e-7);  // the floors keep their height in the mechanism
    m.steps[0].p_delta = true;
    const solver::pushover_solution second = push(m).front();
    const double line =
        first.factor + work_of_axial_forces(m, second, first.motion) / work_of_loads(first, first.motion);
    EXPECT_LT(second.factor, line + 1e-6);
    if (share < 0.5) {
      EXPECT_WITHIN(second.factor, line, first.factor - line, 1e-5);
    }
  }
}
