// Frames pushed to collapse by Newton's method over the states of their beams: limit loads of the theorems of
// plasticity.
#include <cmath>
#include <memory>
#include <vector>

#include "comparison.h"
#include "elimination.h"
#include "finites/elements.h"
#include "gtest/gtest.h"
#include "member_cases.h"

namespace {

using numbers = std::vector<double>;

struct destroy {
  void operator()(finites_beam_state* s) const { finites_beam_state_free(s); }
};
using state = std::unique_ptr<finites_beam_state, destroy>;

constexpr double MP = 0.9;

// A plane frame in x and y: three displacements a node, u, v and the rotation about z.
class frame {
 public:
  explicit frame(const std::vector<std::vector<double>>& nodes) : nodes_(nodes), u_(3 * nodes.size(), 0.0) {
    held_.assign(u_.size(), false);
  }

  // One hinge a place: two at the same node would leave its rotation free.
  void add_beam(std::size_t first, std::size_t second, int ends) {
    finites_beam b = plain_members::plain_beam(1.0);
    for (std::size_t i = 0; i < 2; ++i) {
      b.xyz[0][i] = nodes_[first][i];
      b.xyz[1][i] = nodes_[second][i];
    }
    b.up[0] = nodes_[first][1] - nodes_[second][1];
    b.up[1] = nodes_[second][0] - nodes_[first][0];
    const finites_yield y{FINITES_SINGLE, 3, {1.0, 1.0, MP}};
    finites_beam_state* s = nullptr;
    EXPECT_EQ(finites_beam_state_create(&b, &y, ends, &s), FINITES_OK);
    beams_.push_back({first, second, state(s)});
  }

  void fix(std::size_t node) { held_[3 * node] = held_[3 * node + 1] = held_[3 * node + 2] = true; }

  // Newton's method for loads `factor` p with the displacement `control` held at `target`: both the displacements and
  // the factor are unknown. The residual of equilibrium, negative where it was not found.
  double push(const numbers& p, std::size_t control, double target, double& factor) {
    const std::size_t n = u_.size();
    for (int iteration = 0; iteration < 40; ++iteration) {
      std::vector<numbers> A(n + 1, numbers(n + 1, 0.0));
      numbers r(n + 1, 0.0);
      assemble(A, r);
      double residual = std::fabs(target - u_[control]);
      for (std::size_t i = 0; i < n; ++i) {
        r[i] = factor * p[i] - r[i];
        if (!held_[i]) residual = std::fmax(residual, std::fabs(r[i]));
        A[i][n] = -p[i];
        if (held_[i]) hold(A, r, i);
      }
      A[n][control] = 1.0;
      r[n] = target - u_[control];
      if (residual < 1e-11) return residual;
      solve(A, r);
      for (std::size_t i = 0; i < n; ++i) u_[i] += r[i];
      factor += r[n];
    }
    return -1.0;
  }

  void accept() {
    for (const member& m : beams_) {
      EXPECT_EQ(finites_beam_state_commit(m.s.get(), displacements(m).data()), FINITES_OK);
      EXPECT_EQ(finites_beam_state_accept(m.s.get()), FINITES_OK);
    }
  }

  int hinges() const {
    int count = 0;
    for (const member& m : beams_) {
      finites_hinge h[2];
      EXPECT_EQ(finites_beam_state_hinges(m.s.get(), h), FINITES_OK);
      for (const finites_hinge& hinge : h) {
        count += hinge.yields;
        EXPECT_LE(std::fabs(hinge.force[2]), MP * (1.0 + 1e-10));
      }
    }
    return count;
  }

 private:
  struct member {
    std::size_t first, second;
    state s;
  };

  static std::size_t freedom(const member& m, std::size_t i) { return 3 * (i < 3 ? m.first : m.second) + i % 3; }

  numbers displacements(const member& m) const {
    numbers u(12, 0.0);
    constexpr std::size_t place[6] = {0, 1, 5, 6, 7, 11};
    for (std::size_t i = 0; i < 6; ++i) u[place[i]] = u_[freedom(m, i)];
    return u;
  }

  void assemble(std::vector<numbers>& A, numbers& r) const {
    constexpr std::size_t place[6] = {0, 1, 5, 6, 7, 11};
    for (const member& m : beams_) {
      numbers F(12), K(144);
      ASSERT_EQ(finites_beam_state_try(m.s.get(), displacements(m).data(), F.data(), K.data()), FINITES_OK);
      for (std::size_t i = 0; i < 6; ++i) {
        r[freedom(m, i)] += F[place[i]];
        for (std::size_t j = 0; j < 6; ++j) A[freedom(m, i)][freedom(m, j)] += K[12 * place[j] + place[i]];
      }
    }
  }

  static void hold(std::vector<numbers>& A, numbers& r, std::size_t d) {
    for (double& a : A[d]) a = 0.0;
    A[d][d] = 1.0;
    r[d] = 0.0;
  }

  std::vector<std::vector<double>> nodes_;
  std::vector<member> beams_;
  numbers u_;
  std::vector<bool> held_;
};

}  // namespace

// Fixed at both ends, a force in the middle: elastic to 8 Mp / L, where the ends and the middle yield at once, or
// nearly so; from there the load stays.
TEST(Collapse, ABeamFixedAtBothEnds) {
  constexpr double L = 4.0;
  frame f({{0.0, 0.0}, {0.5 * L, 0.0}, {L, 0.0}});
  f.add_beam(0, 1, 3);
  f.add_beam(1, 2, 2);
  f.fix(0);
  f.fix(2);
  const numbers p = {0, 0, 0, 0, -1, 0, 0, 0, 0};
  const double EI = 2e5 * 3e-4, limit = 8.0 * MP / L;
  double factor = 0.0;
  const double yield = limit * L * L * L / (192.0 * EI);
  for (const double share : {0.5, 0.99, 1.1, 1.5, 4.0, 30.0}) {
    ASSERT_GE(f.push(p, 4, -share * yield, factor), 0.0) << share;
    f.accept();
    EXPECT_NEAR(factor, limit * std::fmin(share, 1.0), 1e-9);
  }
  EXPECT_EQ(f.hinges(), 3);
  ASSERT_GE(f.push(p, 4, -29.5 * yield, factor), 0.0);  // back, elastic
  f.accept();
  EXPECT_NEAR(factor, 0.5 * limit, 1e-9);
  EXPECT_EQ(f.hinges(), 0);
  ASSERT_GE(f.push(p, 4, -20.0 * yield, factor), 0.0);  // and to the limit of the other side
  EXPECT_NEAR(factor, -limit, 1e-9);
}

// A force at a third: 9 Mp / L (one end, the force, the other end yield one after the other).
TEST(Collapse, AForceAtAThird) {
  constexpr double L = 3.0;
  frame f({{0.0, 0.0}, {1.0, 0.0}, {L, 0.0}});
  f.add_beam(0, 1, 3);
  f.add_beam(1, 2, 2);
  f.fix(0);
  f.fix(2);
  const numbers p = {0, 0, 0, 0, -1, 0, 0, 0, 0};
  double factor = 0.0;
  for (const double v : {0.01, 0.02, 0.05, 0.2}) {
    ASSERT_GE(f.push(p, 4, -v, factor), 0.0) << v;
    f.accept();
  }
  EXPECT_NEAR(factor, 9.0 * MP / L, 1e-9);
}

namespace {

// Fixed columns of height h, a beam of span l, H at the left corner and V in the middle of the beam, both by the
// factor.
double collapse_of_portal(double h, double l, double H, double V) {
  frame f({{0.0, 0.0}, {0.0, h}, {0.5 * l, h}, {l, h}, {l, 0.0}});
  for (std::size_t i = 0; i < 4; ++i) f.add_beam(i, i + 1, i == 0 ? 3 : 2);
  f.fix(0);
  f.fix(4);
  numbers p(15, 0.0);
  p[3] = H;
  p[7] = -V;
  double factor = 0.0;
  const std::size_t control = V > H * 2.0 ? 7 : 3;  // what the mechanism moves
  for (int step = 1; step <= 80; ++step) {
    if (f.push(p, control, (control == 3 ? 0.002 : -0.002) * step, factor) < 0.0) {
      ADD_FAILURE() << "step " << step;
      return 0.0;
    }
    f.accept();
  }
  f.hinges();
  return factor;
}

}  // namespace

// The least of the mechanisms: sway H h = 4 Mp, beam V l / 2 = 4 Mp, both together H h + V l / 2 = 6 Mp.
TEST(Collapse, APortal) {
  EXPECT_NEAR(collapse_of_portal(3.0, 4.0, 1.0, 0.0), 4.0 * MP / 3.0, 1e-9);
  EXPECT_NEAR(collapse_of_portal(3.0, 4.0, 1.0, 1.5), 6.0 * MP / (3.0 + 3.0), 1e-9);
  EXPECT_NEAR(collapse_of_portal(3.0, 4.0, 1.0, 0.5), 4.0 * MP / 3.0, 1e-9);
  EXPECT_NEAR(collapse_of_portal(3.0, 4.0, 0.1, 2.0), 8.0 * MP / (2.0 * 4.0), 1e-9);
}
