// Beams with hinges: forces on the surface, the nearest point, tangents, closed forms, reversal, and state objects.
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "comparison.h"
#include "finites/elements.h"
#include "finites/records.h"
#include "gtest/gtest.h"
#include "hinges/hinge_stiffness.h"
#include "member_cases.h"

namespace {

using plain_members::plain_beam;
using plain_members::random_beam;
using support::seeded_random;
using numbers = std::vector<double>;

struct destroy {
  void operator()(finites_beam_state* s) const { finites_beam_state_free(s); }
};
using state = std::unique_ptr<finites_beam_state, destroy>;

state make(const finites_beam& b, const finites_yield& y, int ends = 3) {
  finites_beam_state* s = nullptr;
  EXPECT_EQ(finites_beam_state_create(&b, &y, ends, &s), FINITES_OK);
  return state(s);
}

state copy_of(const state& s) {
  finites_beam_state* c = nullptr;
  EXPECT_EQ(finites_beam_state_copy(s.get(), &c), FINITES_OK);
  return state(c);
}

struct tried {
  finites_status status;
  numbers F = numbers(12), K = numbers(144);
};

tried try_u(const state& s, const numbers& u) {
  tried t{};
  t.status = finites_beam_state_try(s.get(), u.data(), t.F.data(), t.K.data());
  return t;
}

std::array<finites_hinge, 2> hinges_of(const state& s) {
  std::array<finites_hinge, 2> h{};
  EXPECT_EQ(finites_beam_state_hinges(s.get(), h.data()), FINITES_OK);
  return h;
}

void commit(const state& s, const numbers& u) { EXPECT_EQ(finites_beam_state_commit(s.get(), u.data()), FINITES_OK); }
void accept(const state& s) { EXPECT_EQ(finites_beam_state_accept(s.get()), FINITES_OK); }

constexpr double L = 4.0;

finites_beam level_beam() {
  finites_beam b = plain_beam(L);
  b.up[1] = 1.0;
  return b;
}

// Capacities that displacements of a few thousandths reach.
finites_yield random_yield(seeded_random& random) {
  finites_yield y{};
  y.curve = random.integer(1, 3);
  y.forces = y.curve == FINITES_SINGLE ? random.integer(1, 3) : random.integer(2, 7);
  y.capacity[0] = random.uniform(3.0, 30.0);
  y.capacity[1] = random.uniform(0.05, 0.2);
  y.capacity[2] = random.uniform(0.05, 0.2);
  return y;
}

double value_of(const finites_yield& y, const double* f) {
  double value = 0.0;
  EXPECT_EQ(finites_yield_value(&y, f, &value), FINITES_OK);
  return value;
}

// Section forces of a beam without links, from its end forces.
std::array<std::array<double, 3>, 2> sections_of(const finites_beam& b, const numbers& F) {
  const finites_member_measures m = plain_members::measures_of(b);
  std::array<std::array<double, 3>, 2> s{};
  for (std::size_t end = 0; end < 2; ++end) {
    const double sign = end == 0 ? -1.0 : 1.0;
    for (std::size_t i = 0; i < 3; ++i) {
      s[end][0] += sign * m.axes[0][i] * F[6 * end + i];
      s[end][1] += sign * m.axes[1][i] * F[6 * end + 3 + i];
      s[end][2] += sign * m.axes[2][i] * F[6 * end + 3 + i];
    }
  }
  return s;
}

}  // namespace

// ------------------------------------------------------------------------------------------------ laws of the return

TEST(HingedBeam, ForcesLieOnTheSurfaceWhateverTheStep) {
  seeded_random random(8501);
  int yielding = 0, failed = 0;
  for (int trial = 0; trial < 3000; ++trial) {
    SCOPED_TRACE(trial);
    finites_beam b = random_beam(random);
    for (auto& end : b.offset) end[0] = end[1] = end[2] = 0.0;
    const finites_yield y = random_yield(random);
    const int ends = random.integer(1, 3);
    const state s = make(b, y, ends);
    for (int step = 0; step < 3; ++step) {
      const numbers u = random.vector(12, random.log_uniform(1e-4, 1e2));
      const tried t = try_u(s, u);
      if (t.status == FINITES_RETURN) {
        ++failed;
        continue;
      }
      ASSERT_EQ(t.status, FINITES_OK);
      const auto before = hinges_of(s);
      commit(s, u);
      const auto h = hinges_of(s);
      const auto sections = sections_of(b, t.F);
      for (std::size_t end = 0; end < 2; ++end) {
        if ((ends & (1 << end)) == 0) {
          EXPECT_EQ(h[end].yields, 0);
          continue;
        }
        EXPECT_LE(h[end].value, 1.0 + 1e-10);
        if (h[end].yields == 1) {
          ++yielding;
          EXPECT_NEAR(h[end].value, 1.0, 1e-10) << "curve " << y.curve << " forces " << y.forces;
          double work = 0.0, size = 0.0;
          for (int c = 0; c < 3; ++c) {
            const double flow = h[end].plastic[c] - before[end].plastic[c];
            work += h[end].force[c] * flow;
            size += std::fabs(h[end].force[c] * flow);
          }
          EXPECT_GE(work, -1e-10 * size);
        }
        for (std::size_t c = 0; c < 3; ++c) {
          EXPECT_WITHIN(sections[end][c], h[end].force[static_cast<int>(c)], y.capacity[c] + support::max_norm(t.F),
                        1e-12);
        }
      }
      accept(s);
    }
  }
  EXPECT_GT(yielding, 5000);
  EXPECT_LT(failed, 20);  // where the smooth surface is hollow
}

// No other point of the surface is nearer to the trial forces in the energy of the elastic stiffness: with deformations
// e of the step and forces s, 1/2 s C^-1 s - e s is least. Points are drawn from all over the surface and from around
// the answer.
TEST(HingedBeam, TheAnswerIsTheNearestPoint) {
  seeded_random random(8502);
  for (int trial = 0; trial < 200; ++trial) {
    SCOPED_TRACE(trial);
    const finites_beam b = level_beam();
    const finites_yield y = random_yield(random);
    const state s = make(b, y);
    const numbers u = random.vector(12, random.log_uniform(1e-3, 3e-2));
    commit(s, u);
    const auto h = hinges_of(s);
    const double EA = b.E * b.area / L, EIz = b.E * b.Iz / L, EIy = b.E * b.Iy / L;
    const double dz = (u[7] - u[1]) / L, dy = (u[2] - u[8]) / L;
    const double e[5] = {u[6] - u[0], dy - u[4], dz - u[5], u[10] - dy, u[11] - dz};
    // The inverse of E I / L (4 -2; -2 4) of section moments is L / (E I) (1/3 1/6; 1/6 1/3).
    const auto energy = [&](const double* f) {
      const auto plane = [](double k, double m1, double m2) { return (m1 * m1 + m1 * m2 + m2 * m2) / (6.0 * k); };
      double sum = f[0] * f[0] / (2.0 * EA) + plane(EIy, f[1], f[3]) + plane(EIz, f[2], f[4]);
      for (int i = 0; i < 5; ++i) sum -= e[i] * f[i];
      return sum;
    };
    const double answer[5] = {h[0].force[0], h[0].force[1], h[0].force[2], h[1].force[1], h[1].force[2]};
    const double least = energy(answer);
    const double cap[5] = {y.capacity[0], y.capacity[1], y.capacity[2], y.capacity[1], y.capacity[2]};
    for (int sample = 0; sample < 400; ++sample) {
      double f[5];
      const double spread = random.log_uniform(1e-3, 2.0);
      for (int i = 0; i < 5; ++i)
        f[i] = (sample % 2 == 0 ? answer[i] : 0.0) + cap[i] * spread * random.uniform(-1.0, 1.0);
      const double first[3] = {f[0], f[1], f[2]}, second[3] = {f[0], f[3], f[4]};
      if (value_of(y, first) > 1.0 || value_of(y, second) > 1.0) continue;
      EXPECT_GE(energy(f), least - 1e-9 * std::fabs(least));
    }
  }
}

TEST(HingedBeam, TheTangentIsTheSlopeOfTheForces) {
  seeded_random random(8503);
  int compared = 0;
  for (int trial = 0; trial < 1500; ++trial) {
    SCOPED_TRACE(trial);
    const finites_beam b = random_beam(random);
    const finites_yield y = random_yield(random);
    const state s = make(b, y, random.integer(1, 3));
    const numbers first = random.vector(12, 3e-3);
    commit(s, first);
    accept(s);
    const numbers u = random.vector(12, random.log_uniform(1e-3, 3e-2));
    const numbers du = random.vector(12, 1.0);
    const auto moved = [&](double h) {
      numbers v = u;
      for (std::size_t i = 0; i < 12; ++i) v[i] += h * du[i];
      return v;
    };
    constexpr double h = 1e-8;
    const tried plus = try_u(s, moved(h)), minus = try_u(s, moved(-h)), half = try_u(s, moved(h / 2)),
                other = try_u(s, moved(-h / 2)), at = try_u(s, u);
    ASSERT_EQ(at.status, FINITES_OK);
    numbers slope(12), finer(12);
    for (std::size_t i = 0; i < 12; ++i) {
      slope[i] = (plus.F[i] - minus.F[i]) / (2 * h);
      finer[i] = (half.F[i] - other.F[i]) / h;
    }
    numbers elastic(144);
    ASSERT_EQ(finites_beam_stiffness(&b, elastic.data()), FINITES_OK);
    const double scale = b.E * b.area / plain_members::measures_of(b).length;
    double kink = 0.0;  // a corner between the points has two slopes
    for (std::size_t i = 0; i < 12; ++i) kink = std::fmax(kink, std::fabs(slope[i] - finer[i]) / scale);
    if (kink > 2e-6) continue;
    ++compared;
    EXPECT_WITHIN(support::product(at.K, du), slope, scale, 1e-5);
    EXPECT_CLOSE(at.K, support::transposed(at.K), scale, 1e4);
  }
  EXPECT_GT(compared, 1400);
}

TEST(HingedBeam, ElasticStepsAreThoseOfTheBeam) {
  seeded_random random(8504);
  for (int trial = 0; trial < 300; ++trial) {
    const finites_beam b = random_beam(random);
    const finites_yield y{FINITES_ORBISON, 7, {1e6, 1e6, 1e6}};
    const state s = make(b, y);
    const numbers u = random.vector(12, 1e-2);
    const tried t = try_u(s, u);
    numbers K(144), F(12);
    ASSERT_EQ(finites_beam_stiffness(&b, K.data()), FINITES_OK);
    ASSERT_EQ(finites_beam_forces(&b, u.data(), F.data()), FINITES_OK);
    EXPECT_EQ(std::memcmp(t.K.data(), K.data(), sizeof(double) * 144), 0);
    EXPECT_CLOSE(t.F, F, b.E * b.area / plain_members::measures_of(b).length * 1e-1, 100.0);
  }
}

// The hinges of the protocol, for the segments of the returned forces: KP = -K N (N^T K N)^-1 N^T K. The gradients of
// the segments have 8/9 in double, their values in single precision.
TEST(HingedBeam, SegmentsHaveTheMatrixOfTheProtocol) {
  seeded_random random(8505);
  int one = 0, both = 0;
  for (int trial = 0; trial < 5000; ++trial) {
    SCOPED_TRACE(trial);
    const finites_beam b = level_beam();
    finites_yield y = random_yield(random);
    y.curve = FINITES_SEGMENTS;
    y.forces = random.integer(4, 7);
    const state s = make(b, y);
    const numbers u = random.vector(12, random.log_uniform(1e-4, 1e-2));
    const tried t = try_u(s, u);
    commit(s, u);
    const auto h = hinges_of(s);
    HINGE_RECORD record{};
    record.HINGE_MODEL = 1;
    record.CURVE_KIND = y.curve;
    record.FORCE_SET = y.forces;
    record.CAP_P = y.capacity[0];
    record.CAP_MY = y.capacity[1];
    record.CAP_MZ = y.capacity[2];
    bool corner = false;
    for (std::size_t end = 0; end < 2; ++end) {
      std::int32_t count = 0, segment[4] = {};
      ASSERT_EQ(finites_yield_equations(&y, h[end].force, &count, segment, nullptr, nullptr), FINITES_OK);
      (end == 0 ? record.END1_STATE : record.END2_STATE) = h[end].yields;
      if (h[end].yields == 1) (end == 0 ? record.END1_SEG : record.END2_SEG)(1) = segment[0];
      for (int c = 1; c < 3; ++c) corner = corner || std::fabs(h[end].force[c]) < 1e-8 * y.capacity[c];
      const double p = std::fabs(h[end].force[0]) / y.capacity[0];  // the planes meet at 0 and 0.2
      corner = corner || p < 1e-8 || std::fabs(p - 0.2) < 1e-6;
    }
    if (corner || h[0].yields + h[1].yields == 0) continue;
    // Two hinges invert in single precision there: the two are equal as far as that goes.
    const double limit = h[0].yields + h[1].yields == 2 ? 2e-4 : 1e-7;
    ++(h[0].yields + h[1].yields == 2 ? both : one);
    numbers K(144), KP(144, 0.0);
    ASSERT_EQ(finites_beam_stiffness(&b, K.data()), FINITES_OK);
    ASSERT_TRUE(plastic_matrix(record, HINGE_FORCES{}, K.data(), KP.data()));
    for (std::size_t i = 0; i < 144; ++i) KP[i] += K[i];
    EXPECT_WITHIN(t.K, KP, support::max_norm(K), limit);
  }
  EXPECT_GT(one, 100);
  EXPECT_GT(both, 30);
}

TEST(HingedBeam, TheLastBitsDoNotMatter) {
  seeded_random random(8506);
  for (int trial = 0; trial < 1000; ++trial) {
    SCOPED_TRACE(trial);
    const finites_beam b = level_beam();
    const finites_yield y = random_yield(random);
    const state s = make(b, y);
    numbers u = random.vector(12, random.log_uniform(1e-3, 1.0));
    if (trial % 4 == 0) u[2] = u[8] = u[4] = u[10] = 0.0;      // no My
    if (trial % 8 == 0) u[1] = u[7] = u[5] = u[11] = 0.0;      // a stretch alone
    if (trial % 3 == 0) u[5] = -(u[11] = u[7] = u[1] = 0.01);  // as much at both ends
    const tried t = try_u(s, u);
    for (double& v : u) v *= 1.0 + 1e-13 * random.uniform(-1.0, 1.0);
    const tried other = try_u(s, u);
    ASSERT_EQ(t.status, other.status);
    if (t.status == FINITES_RETURN) continue;
    EXPECT_WITHIN(t.F, other.F, support::max_norm(t.F), 1e-8);
  }
}

// ------------------------------------------------------------------------------------------------ closed forms

// A beam fixed at its first end and pinned at its second, whose tip moves: M = 3 E I v / L^2 until Mp.
TEST(HingedBeam, LoadingAndReversal) {
  finites_beam b = level_beam();
  b.fixity_z[1] = b.fixity_y[1] = 0.0;
  const finites_yield y{FINITES_SINGLE, 3, {1.0, 1.0, 0.9}};
  const state s = make(b, y, 1);
  const double yield = 0.9 * L * L / (3.0 * b.E * b.Iz);
  const auto go = [&](double v) {
    numbers u(12, 0.0);
    u[7] = v * yield;
    commit(s, u);
    accept(s);
    return hinges_of(s)[0];
  };
  finites_hinge h = go(0.5);
  EXPECT_NEAR(h.force[2], 0.45, 1e-13);
  EXPECT_EQ(h.yields, 0);
  h = go(3.0);
  EXPECT_NEAR(h.force[2], 0.9, 1e-13);
  EXPECT_EQ(h.yields, 1);
  EXPECT_NEAR(h.plastic[2], 2.0 * yield / L, 1e-12);
  h = go(2.0);
  EXPECT_NEAR(h.force[2], 0.0, 1e-13);
  EXPECT_EQ(h.yields, 0);
  EXPECT_NEAR(h.plastic[2], 2.0 * yield / L, 1e-12);
  h = go(1.0);
  EXPECT_NEAR(h.force[2], -0.9, 1e-13);
  h = go(0.0);
  EXPECT_NEAR(h.force[2], -0.9, 1e-13);
  EXPECT_EQ(h.yields, 1);
  EXPECT_NEAR(h.plastic[2], yield / L, 1e-12);
}

// Axial force and strong moment alone, Orbison's surface: 1.15 p^2 + m^2 + 3.67 p^2 m^2 = 1.
TEST(HingedBeam, OrbisonsInteraction) {
  finites_beam b = level_beam();
  const finites_yield y{FINITES_ORBISON, 5, {10.0, 1.0, 2.0}};
  const state s = make(b, y);
  for (const double stretch : {1e-3, 5e-3, 0.02}) {
    numbers u(12, 0.0);
    u[6] = stretch;
    u[5] = 0.2;
    u[11] = -0.2;
    commit(s, u);
    const auto h = hinges_of(s);
    const double p = h[0].force[0] / 10.0, m = h[0].force[2] / 2.0;
    EXPECT_NEAR(1.15 * p * p + m * m + 3.67 * p * p * m * m, 1.0, 1e-12);
    EXPECT_NEAR(h[1].force[2], h[0].force[2], 1e-9);  // symmetric
    // Flow along the gradient.
    const double slope = (2.3 * p + 7.34 * p * m * m) / 10.0 / ((2.0 * m + 7.34 * p * p * m) / 2.0);
    EXPECT_NEAR(h[0].plastic[0] / h[0].plastic[2], slope, 1e-8 * std::fabs(slope));
  }
}

// The planes p + 8/9 m = 1 and p/2 + m = 1 meet at p = 0.2, m = 0.9; a deformation between their normals ends there.
TEST(HingedBeam, TheCornerOfTwoSegments) {
  const finites_beam b = level_beam();
  const finites_yield y{FINITES_SEGMENTS, 5, {10.0, 1.0, 2.0}};
  const state s = make(b, y, 1);
  const double EA = b.E * b.area / L, EI = b.E * b.Iz / L;
  // Forces at the corner, and flow l1 (1/10, 8/18) + l2 (1/20, 1/2) of the first end. The moment M at the first end
  // alone turns the ends of a simple beam by -M L / (3 E I) and M L / (6 E I).
  const double l1 = 0.02, l2 = 0.03;
  const double axial = l1 / 10.0 + l2 / 20.0, turn = l1 * 4.0 / 9.0 + l2 / 2.0;
  numbers u(12, 0.0);
  u[6] = 2.0 / EA + axial;
  u[5] = -(1.8 / (3.0 * EI) + turn);
  u[11] = 1.8 / (6.0 * EI);
  commit(s, u);
  const auto h = hinges_of(s);
  EXPECT_NEAR(h[0].force[0], 2.0, 1e-6);
  EXPECT_NEAR(h[0].force[2], 1.8, 1e-6);
  EXPECT_NEAR(h[0].value, 1.0, 1e-10);
  EXPECT_NEAR(h[0].plastic[0], axial, 1e-8);
  EXPECT_NEAR(h[0].plastic[2], turn, 1e-8);
  // A small move between the normals does not move the forces.
  const tried t = try_u(s, u);
  u[6] += 1e-4;
  const tried other = try_u(s, u);
  EXPECT_NEAR(other.F[6], t.F[6], 1e-9);
  EXPECT_NEAR(other.F[5], t.F[5], 1e-9);
}

// An axial hinge at both ends stretches each of them by half.
TEST(HingedBeam, AxialHingesShareTheirFlow) {
  const finites_beam b = level_beam();
  const finites_yield y{FINITES_SINGLE, 1, {10.0, 1.0, 1.0}};
  const state s = make(b, y);
  numbers u(12, 0.0);
  u[6] = 0.05;
  commit(s, u);
  const auto h = hinges_of(s);
  for (int end = 0; end < 2; ++end) {
    EXPECT_EQ(h[static_cast<std::size_t>(end)].yields, 1);
    EXPECT_NEAR(h[static_cast<std::size_t>(end)].plastic[0], (0.05 - 10.0 * L / (b.E * b.area)) / 2.0, 1e-14);
  }
}

// ------------------------------------------------------------------------------------------------ the state object

TEST(HingedBeam, TryingLeavesNoTrace) {
  seeded_random random(8507);
  for (int trial = 0; trial < 100; ++trial) {
    const finites_beam b = random_beam(random);
    const state s = make(b, random_yield(random)), untouched = copy_of(s);
    const numbers u = random.vector(12, 1e-2);
    for (int i = 0; i < 3; ++i) try_u(s, random.vector(12, 1e-1));
    const tried t = try_u(s, u), other = try_u(untouched, u);
    EXPECT_EQ(t.F, other.F);
    EXPECT_EQ(t.K, other.K);
    numbers F(12), K(144);
    ASSERT_EQ(finites_beam_state_forces(s.get(), F.data(), K.data()), FINITES_OK);
    EXPECT_EQ(support::max_norm(F), 0.0);
    commit(s, u);
    ASSERT_EQ(finites_beam_state_forces(s.get(), F.data(), K.data()), FINITES_OK);
    EXPECT_EQ(F, t.F);
    EXPECT_EQ(K, t.K);
    EXPECT_EQ(try_u(s, u).F, t.F);  // not accepted: from the same start
    accept(s);
    EXPECT_EQ(try_u(untouched, u).F, other.F);  // the copy knows nothing of it
  }
}

TEST(HingedBeam, AcceptedForcesStay) {
  seeded_random random(8508);
  for (int trial = 0; trial < 300; ++trial) {
    const finites_beam b = random_beam(random);
    const state s = make(b, random_yield(random));
    const numbers u = random.vector(12, 1e-2);
    commit(s, u);
    accept(s);
    numbers F(12), K(144);
    ASSERT_EQ(finites_beam_state_forces(s.get(), F.data(), nullptr), FINITES_OK);
    const tried again = try_u(s, u);
    EXPECT_WITHIN(again.F, F, support::max_norm(F), 1e-10);
    ASSERT_EQ(finites_beam_stiffness(&b, K.data()), FINITES_OK);
    EXPECT_EQ(again.K, K);  // nothing flows
  }
}

TEST(HingedBeam, EveryFaultHasItsStatus) {
  const finites_beam b = level_beam();
  const finites_yield y{FINITES_SEGMENTS, 7, {10.0, 1.0, 2.0}};
  finites_beam_state* s = nullptr;
  EXPECT_EQ(finites_beam_state_create(nullptr, &y, 3, &s), FINITES_NULL);
  EXPECT_EQ(finites_beam_state_create(&b, nullptr, 3, &s), FINITES_NULL);
  EXPECT_EQ(finites_beam_state_create(&b, &y, 3, nullptr), FINITES_NULL);
  for (const int ends : {-1, 0, 4}) EXPECT_EQ(finites_beam_state_create(&b, &y, ends, &s), FINITES_BAD_CODE);
  finites_beam bad = b;
  bad.E = 0.0;
  EXPECT_EQ(finites_beam_state_create(&bad, &y, 3, &s), FINITES_MODULUS);
  finites_yield weak = y;
  weak.capacity[0] = 0.0;
  EXPECT_EQ(finites_beam_state_create(&b, &weak, 3, &s), FINITES_YIELD);
  weak = y;
  weak.curve = 9;
  EXPECT_EQ(finites_beam_state_create(&b, &weak, 3, &s), FINITES_BAD_CODE);
  EXPECT_EQ(s, nullptr);
  EXPECT_EQ(finites_beam_state_copy(nullptr, &s), FINITES_NULL);
  finites_beam_state_free(nullptr);

  const state good = make(b, y);
  EXPECT_EQ(finites_beam_state_copy(good.get(), nullptr), FINITES_NULL);
  numbers u(12, 0.0), F(12, 7.0), K(144, 7.0);
  std::array<finites_hinge, 2> h{};
  EXPECT_EQ(finites_beam_state_try(nullptr, u.data(), F.data(), K.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_state_try(good.get(), nullptr, F.data(), K.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_state_commit(nullptr, u.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_state_commit(good.get(), nullptr), FINITES_NULL);
  EXPECT_EQ(finites_beam_state_accept(nullptr), FINITES_NULL);
  EXPECT_EQ(finites_beam_state_forces(nullptr, F.data(), K.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_state_hinges(nullptr, h.data()), FINITES_NULL);
  EXPECT_EQ(finites_beam_state_hinges(good.get(), nullptr), FINITES_NULL);
  u[3] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(finites_beam_state_try(good.get(), u.data(), F.data(), K.data()), FINITES_NAN);
  EXPECT_EQ(finites_beam_state_commit(good.get(), u.data()), FINITES_NAN);
  u[3] = 2e30;
  EXPECT_EQ(finites_beam_state_try(good.get(), u.data(), F.data(), K.data()), FINITES_RANGE);
  EXPECT_EQ(F, numbers(12, 7.0));
  EXPECT_EQ(K, numbers(144, 7.0));
  u[3] = 0.0;
  EXPECT_EQ(finites_beam_state_try(good.get(), u.data(), nullptr, nullptr), FINITES_OK);
}

// Huge steps end on the surface or say that they do not.
TEST(HingedBeam, StepsOfAnySize) {
  seeded_random random(8509);
  for (int trial = 0; trial < 500; ++trial) {
    SCOPED_TRACE(trial);
    const finites_beam b = level_beam();
    const finites_yield y = random_yield(random);
    const state s = make(b, y);
    const numbers u = random.vector(12, random.log_uniform(1e2, 1e30));
    const tried t = try_u(s, u);
    ASSERT_TRUE(t.status == FINITES_OK || t.status == FINITES_RETURN || t.status == FINITES_RESULT) << t.status;
    if (t.status != FINITES_OK) continue;
    commit(s, u);
    for (const finites_hinge& h : hinges_of(s)) EXPECT_LE(h.value, 1.0 + 1e-10);
  }
}
