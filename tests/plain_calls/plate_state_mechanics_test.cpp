// Plates that yield: laws and lines by hand.
#include <algorithm>
#include <cmath>

#include "comparison.h"
#include "finites/thickness_rule.h"
#include "plate_state_support.h"

using namespace yielding;

namespace {

constexpr double E = 2e5, SY = 200.0, ET = 2e4, H_MODULUS = ET / (1.0 - ET / E);
constexpr double YIELD_STRAIN = SY / E;

// Degrees of freedom of node n (from 0): ux, uy, uz, rx, ry, rz.
int dof(int n, int component) { return 6 * n + component; }

finites_plate strip(int theory, double nu) {
  finites_plate p = subjects::rectangle(4, theory, 2.0, 1.0);
  p.E = E;
  p.nu = nu;
  return p;
}

double sum(const std::vector<double>& F, const std::vector<int>& at) {
  double s = 0.0;
  for (const int i : at) s += F[static_cast<std::size_t>(i)];
  return s;
}

std::vector<finites_plastic> models(double hardening) {
  return {{FINITES_LAYERED, 5, SY, hardening}, {FINITES_WHOLE_SECTION, 0, SY, hardening}};
}

// The edge y = 1 may contract.
std::vector<int> free_in_tension() { return {dof(2, 1), dof(3, 1)}; }

// Stretched along x to strain e, free across: the force on the end x = 2.
double tension(const held_state& state, double e, std::vector<double>& u) {
  const std::vector<double> from = u;
  u[static_cast<std::size_t>(dof(1, 0))] = u[static_cast<std::size_t>(dof(2, 0))] = 2.0 * e;
  EXPECT_GT(balance(state, free_in_tension(), std::vector<double>(24, 0.0), from, u), 0) << e;
  return sum(tried(state, u).F, {dof(1, 0), dof(2, 0)});
}

// Uniaxial stress beyond yield. A whole section stands at the edge of its surface, where there are no moments, and
// flows along both normals: it does not bend. It hardens by the length of the plastic strains (1, -1/2), without the
// one across the thickness: sqrt(2/3) sqrt(5/4) of the uniaxial one instead of 1.
double uniaxial(const finites_plastic& plastic, double e) {
  if (std::fabs(e) <= YIELD_STRAIN) return E * e;
  const double share = plastic.model == FINITES_LAYERED ? 1.0 : std::sqrt(2.0 / 3.0 * 1.25);
  const double H = plastic.hardening > 0.0 ? share * H_MODULUS : 0.0;
  return SY + E * H / (E + H) * (e - YIELD_STRAIN);
}

}  // namespace

TEST(PlateStateMechanics, TensionFollowsTheUniaxialCurve) {
  for (const double hardening : {0.0, ET}) {
    for (const finites_plastic& plastic : models(hardening)) {
      for (const int theory : {FINITES_THICK, FINITES_THIN}) {
        const finites_plate plate = strip(theory, 0.3);
        held_state state = made(plate, plastic);
        std::vector<double> u(24, 0.0);
        for (const double times : {0.3, 0.99, 1.5, 3.0, 10.0}) {
          const double e = times * YIELD_STRAIN;
          const double N = tension(state, e, u);
          EXPECT_WITHIN(N / plate.thickness, uniaxial(plastic, e), SY, 1e-5) << times << " " << plastic.model;
          ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
          const finites_plate_point p = result_of(state).point[0];
          EXPECT_WITHIN(p.middle.stress[0], uniaxial(plastic, e), SY, 1e-5);
          EXPECT_WITHIN(p.middle.stress[1], 0.0, SY, 1e-5);
          EXPECT_WITHIN(p.middle.plastic_strain[0], e - uniaxial(plastic, e) / E, YIELD_STRAIN, 1e-5);
          EXPECT_WITHIN(p.force[0], N, SY * plate.thickness, 1e-6);
          ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
        }
        // Back by 1.5 yield strains: elastic.
        const double top = uniaxial(plastic, 10.0 * YIELD_STRAIN);
        const double N = tension(state, 8.5 * YIELD_STRAIN, u);
        EXPECT_WITHIN(N / plate.thickness, top - 1.5 * SY, SY, 1e-5);
      }
    }
  }
}

namespace {

// A strip bent by the curvature k of its length, free to curve across. With nu 1/2 the stress is uniaxial at every
// height, elastic or plastic: E k z up to yield. M on the end x = 2 about y.
double moment(const held_state& state, double k, std::vector<double>& u, int* tangents = nullptr) {
  // theta y = -dw/dx. w = -k x^2 / 2 has the curvature k of theta y = k x, which stretches the top: fixed at x = 0.
  const std::vector<double> from = u;
  for (const int n : {1, 2}) u[static_cast<std::size_t>(dof(n, 4))] = 2.0 * k;
  std::vector<int> free = {dof(1, 2), dof(2, 2), dof(3, 2)};
  for (int n = 0; n < 4; ++n) free.push_back(dof(n, 3));
  for (const int i : {dof(1, 0), dof(2, 0), dof(2, 1), dof(3, 1)}) free.push_back(i);
  const int taken = balance(state, free, std::vector<double>(24, 0.0), from, u);
  EXPECT_GT(taken, 0) << k;
  if (tangents != nullptr) *tangents = taken;
  return sum(tried(state, u).F, {dof(1, 4), dof(2, 4)});
}

// sum_k w z s(z) over the heights of the rule.
double layered_moment(int n, double k, double h, double hardening) {
  double xi[MOST_THICKNESS_POINTS], w[MOST_THICKNESS_POINTS];
  THICKNESS_RULE(n, xi, w);
  double M = 0.0;
  for (int i = 0; i < n; ++i) {
    const double e = k * xi[i] * h / 2.0;
    const double beyond = SY + hardening * (std::fabs(e) - YIELD_STRAIN);
    const double s = std::fabs(e) <= YIELD_STRAIN ? E * e : std::copysign(beyond, e);
    M += w[i] * h / 2.0 * xi[i] * h / 2.0 * s;
  }
  return M;
}

}  // namespace

TEST(PlateStateMechanics, BendingFollowsTheLineOfTheLayers) {
  for (const double hardening : {0.0, ET}) {
    for (const int n : {3, 5, 9, 15}) {
      for (const int theory : {FINITES_THICK, FINITES_THIN}) {
        const finites_plate plate = strip(theory, 0.5);
        const double first = 2.0 * YIELD_STRAIN / plate.thickness;
        const double M_plastic = SY * plate.thickness * plate.thickness / 4.0;
        const held_state state = made(plate, {FINITES_LAYERED, n, SY, hardening});
        std::vector<double> u(24, 0.0);
        for (const double times : {0.5, 0.99, 1.3, 2.0, 5.0}) {
          const double M = moment(state, times * first, u);
          EXPECT_WITHIN(M, layered_moment(n, times * first, plate.thickness, hardening), M_plastic, 1e-5)
              << n << " " << times;
          ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
          ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
        }
        if (hardening == 0.0 && n == 15) {
          EXPECT_WITHIN(moment(state, 100.0 * first, u), M_plastic, M_plastic, 0.01);
        }
      }
    }
  }
}

TEST(PlateStateMechanics, WholeSectionsBendToTheFullPlasticMoment) {
  for (const int theory : {FINITES_THICK, FINITES_THIN}) {
    const finites_plate plate = strip(theory, 0.5);
    const double M_plastic = SY * plate.thickness * plate.thickness / 4.0;
    const double stiffness = E * std::pow(plate.thickness, 3) / 12.0;  // uniaxial
    const held_state state = made(plate, {FINITES_WHOLE_SECTION, 0, SY, 0.0});
    std::vector<double> u(24, 0.0);
    for (const double times : {0.5, 0.99, 1.01, 2.0, 10.0}) {
      const double k = times * M_plastic / stiffness;
      EXPECT_WITHIN(moment(state, k, u), std::min(times, 1.0) * M_plastic, M_plastic, 1e-6) << times;
    }
  }
}

TEST(PlateStateMechanics, OneStepOrTenEndAtTheSamePlace) {
  // Bending and tension of a strip: each layer follows one line of stress. The end must not depend on the steps.
  for (const double hardening : {0.0, ET}) {
    std::vector<double> ends;
    std::vector<double> moments;
    for (const int steps : {1, 10, 37}) {
      const finites_plate plate = strip(FINITES_THICK, 0.5);
      const held_state state = made(plate, {FINITES_LAYERED, 9, SY, hardening});
      const double last = 6.0 * 2.0 * YIELD_STRAIN / plate.thickness;
      std::vector<double> u(24, 0.0);
      double M = 0.0;
      for (int i = 1; i <= steps; ++i) {
        M = moment(state, last * i / steps, u);
        ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
        ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
      }
      moments.push_back(M);
      ends.push_back(result_of(state).point[2].top.plastic_strain[0]);
    }
    EXPECT_WITHIN(moments[1], moments[0], moments[0], 1e-5);
    EXPECT_WITHIN(moments[2], moments[0], moments[0], 1e-5);
    EXPECT_WITHIN(ends[1], ends[0], ends[0], 1e-5);
    EXPECT_WITHIN(ends[2], ends[0], ends[0], 1e-5);
  }
}

namespace {

// A load on the free end of a clamped strip that hardens, in the plane and across: Newton's method in `steps` parts.
std::vector<double> loaded_end(const finites_plastic& plastic, int theory, int steps, int& most) {
  const finites_plate plate = strip(theory, 0.3);
  const held_state state = made(plate, plastic);
  const double N = SY * plate.thickness;
  std::vector<double> u(24, 0.0), load(24, 0.0);
  std::vector<int> free;
  for (const int n : {1, 2}) {
    for (int i = 0; i < 6; ++i) free.push_back(dof(n, i));
  }
  most = 0;
  for (int step = 1; step <= steps; ++step) {
    const double share = static_cast<double>(step) / steps;
    const std::vector<double> from = u;
    for (const int n : {1, 2}) {
      load[static_cast<std::size_t>(dof(n, 0))] = 0.5 * 0.8 * N * share;
      load[static_cast<std::size_t>(dof(n, 2))] = -0.5 * 0.35 * N * plate.thickness / 4.0 * share;
    }
    const int taken = balance(state, free, load, from, u);
    EXPECT_GT(taken, 0) << steps << " steps, model " << plastic.model;
    most = std::max(most, taken);
    EXPECT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
    EXPECT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
  }
  EXPECT_NE(result_of(state).point[0].top.plastic_strain[0], 0.0);
  const std::vector<double> F = held(state).F;
  for (const int i : free) EXPECT_WITHIN(F[static_cast<std::size_t>(i)], load[static_cast<std::size_t>(i)], N, 1e-8);
  return u;
}

}  // namespace

TEST(PlateStateMechanics, NewtonsMethodEndsInEquilibriumWhateverTheStep) {
  for (const finites_plastic& plastic : models(ET)) {
    for (const int theory : {FINITES_THICK, FINITES_THIN}) {
      int in_one = 0, in_ten = 0, in_forty = 0;
      const std::vector<double> one = loaded_end(plastic, theory, 1, in_one);
      const std::vector<double> ten = loaded_end(plastic, theory, 10, in_ten);
      const std::vector<double> forty = loaded_end(plastic, theory, 40, in_forty);
      const double size = support::max_norm(forty);
      // The layers turn from bending to tension on the way, which steps follow to their size.
      const double limit = plastic.model == FINITES_LAYERED ? 0.01 : 1e-9;
      EXPECT_WITHIN(one, forty, size, limit);
      EXPECT_WITHIN(ten, forty, size, 0.5 * limit);
      EXPECT_LE(in_one, 6);
      EXPECT_LE(in_ten, 6);
      EXPECT_LE(in_forty, 6);
    }
  }
}

// Strains that grow in proportion and hold the direction of the stresses: equal tension of all directions, shear, equal
// bending. The forces are those of the yield condition, N = sy h, N12 = sy h / sqrt(3), M = sy h^2 / 4, whether one
// step leads there or many.
TEST(PlateStateMechanics, TheSizeOfTheStepsChangesNothing) {
  constexpr double REACHED = 12.0 * YIELD_STRAIN;
  for (const int theory : {FINITES_THICK, FINITES_THIN}) {
    const finites_plate plate = strip(theory, 0.3);
    const double h = plate.thickness;
    for (const int shape : {0, 1, 2}) {
      for (const int steps : {1, 2, 7, 40}) {
        const held_state state = made(plate, {FINITES_WHOLE_SECTION, 0, SY, 0.0});
        for (int step = 1; step <= steps; ++step) {
          std::vector<double> u(24, 0.0);
          for (int n = 0; n < 4; ++n) {
            const double x = plate.xyz[n][0], y = plate.xyz[n][1], e = REACHED * step / steps;
            const auto at = [&](int component) -> double& { return u[static_cast<std::size_t>(dof(n, component))]; };
            if (shape < 2) {
              at(0) = e * (shape == 0 ? x : y);
              at(1) = e * (shape == 0 ? y : x);
            }
            if (shape == 2) {  // w = -k (x^2 + y^2) / 2 with k h / 2 = e
              const double k = 2.0 * e / h;
              at(2) = -k * (x * x + y * y) / 2.0;
              at(3) = -k * y;
              at(4) = k * x;
            }
          }
          ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
          ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
        }
        const finites_plate_results r = result_of(state);
        for (const finites_plate_point& p : r.point) {
          const double N = shape == 0 ? SY * h : 0.0, S = shape == 1 ? SY * h / std::sqrt(3.0) : 0.0;
          const double M = shape == 2 ? SY * h * h / 4.0 : 0.0;
          for (const int i : {0, 1}) {
            EXPECT_WITHIN(p.force[i], N, SY * h, 1e-6) << shape << " " << steps;
            EXPECT_WITHIN(p.moment[i], M, SY * h * h, 1e-6) << shape << " " << steps;
          }
          EXPECT_WITHIN(p.force[2], S, SY * h, 1e-6) << shape << " " << steps;
          EXPECT_WITHIN(p.moment[2], 0.0, SY * h * h, 1e-6) << shape << " " << steps;
        }
      }
    }
  }
}
