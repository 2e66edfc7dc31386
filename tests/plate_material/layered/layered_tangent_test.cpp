// layered_tangent_test.cpp: the tangents of a thickness point: the continuum one, which is stored, and that of the
// return mapping.
#include "comparison.h"
#include "prepared_point.h"

using layered_reference::material;
using layered_reference::matrix5;
using layered_reference::point_answer;
using layered_reference::real;
using layered_reference::THICK;
using layered_reference::THIN;
using layered_reference::vector5;
using support::seeded_random;

namespace {

vector5 five(double a, double b, double c = 0.0, double d = 0.0, double e = 0.0) {
  vector5 v;
  v << a, b, c, d, e;
  return rounded(vector_of<5>(v));
}

vector5 stored_stress(prepared_point& p, int gp, int k) {
  return layered_reference::to_local(layered_reference::vector6_of(field_of(values_of(p.state(gp), k), "SIG")), p.axes);
}

MATRIX5 plain(const matrix5& M) {
  MATRIX5 out;
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= 5; ++i) out(i, j) = static_cast<double>(M(i - 1, j - 1));
  }
  return out;
}

}  // namespace

TEST(PlateLayeredPoint, TangentIsTheContinuumOne) {
  // It lets the stress run along the surface and, with hardening, out by its share: n = Ce P sigma is the flow
  // direction times Ce, and the flow itself is left with H / (H + flow part).
  seeded_random random(736);
  for (int trial = 0; trial < 100; ++trial) {
    const int theory = trial % 2 == 0 ? THIN : THICK;
    prepared_point p(random, trial % 4 < 2 ? 0.0 : 0.3);
    p.fill_random(random);
    const vector5 e = p.strain_at(random, 1, 1, theory, random.uniform(1.1, 4.0));
    const point_answer a = p.expected(1, 1, theory, e);
    p.update(e, 1, 1, theory, 33);
    const std::vector<double> C = field_of(values_of(p.state(), 1), "TANGENT");
    const matrix5 T = dense::widened(C.data(), 5, 5);
    const vector5 flow = layered_reference::metric(theory) * a.stress;
    const real alpha = flow.dot(layered_reference::elastic(p.m, theory) * flow), beta = a.stress.dot(flow);
    const real share = 2.0L / 3 * beta * p.m.hardening() / (alpha + 2.0L / 3 * beta * p.m.hardening());
    const vector5 left = T * flow, elastic = layered_reference::elastic(p.m, theory) * flow;
    EXPECT_WITHIN(layered_reference::listed(left), layered_reference::listed(share * elastic),
                  static_cast<double>(elastic.norm()), 1e-7);
    EXPECT_CLOSE(layered_reference::listed(T), layered_reference::listed(T.transpose()), p.m.E, 8);
  }
}

TEST(PlateLayeredPoint, ThinElementLosesTheShearsOfItsTangentInTheFirstReturn) {
  seeded_random random(737);
  prepared_point p(random, 0.1);
  LAYERED_STATE_INIT(PLATEELEM);
  EXPECT_GT(p.state().TANGENT(4, 4, 1), 0.0);
  EXPECT_GT(p.state().TANGENT(5, 5, 1), 0.0);
  vector5 e = p.strain_at(random, 1, 1, THIN, 3.0);
  e.tail(2).setZero();
  p.update(e, 1, 1, THIN, 3);
  EXPECT_GT(p.state().TANGENT(4, 4, 1), 0.0) << "operation 3 stores nothing";
  p.update(e, 1, 1, THIN, 33);
  for (int i = 1; i <= 5; ++i) {
    for (const int shear : {4, 5}) {
      EXPECT_EQ(p.state().TANGENT(i, shear, 1), 0.0);
      EXPECT_EQ(p.state().TANGENT(shear, i, 1), 0.0);
    }
  }
  const layered_reference::vector6 inc = layered_reference::vector6_of(field_of(values_of(p.state(), 1), "EP_INC"));
  EXPECT_CLOSE(layered_reference::listed(layered_reference::to_local(inc, p.axes).tail(2)), std::vector<double>(2, 0.0),
               static_cast<double>(inc.norm()), 16);
  // An elastic update has none either.
  LAYERED_STATE_INIT(PLATEELEM);
  p.update(0.1L * e, 1, 1, THIN, 3);
  EXPECT_EQ(p.state().TANGENT(4, 4, 1), 0.0);
  EXPECT_EQ(p.state().TANGENT(5, 5, 1), 0.0);
}

TEST(PlateTangentAlgo, IsThatOfTheReference) {
  seeded_random random(738);
  for (int trial = 0; trial < 200; ++trial) {
    const int theory = trial % 2 == 0 ? THIN : THICK;
    prepared_point p(random, trial % 3 == 0 ? 0.0 : 0.3);
    p.fill_random(random);
    const point_answer a = p.expected(1, 1, theory, p.strain_at(random, 1, 1, theory, random.uniform(1.01, 5.0)));
    matrix5 Lp = matrix5::Zero(), Lc = matrix5::Zero(), Q = matrix5::Zero();
    const real E = p.m.E, nu = p.m.nu;
    const double s = 0.7071067690849304;
    Lp.diagonal() << 0.3333333432674408, 1, 2, theory == THICK ? 2 : 0, theory == THICK ? 2 : 0;
    const real shear = theory == THICK ? 0.4166666567325592 * E / (1 + nu) : 0;
    Lc.diagonal() << E / (1 - nu), E / (1 + nu), 0.5L * E / (1 + nu), shear, shear;
    Q.topLeftCorner(2, 2) << s, s, -s, s;
    Q(2, 2) = 1;
    if (theory == THICK) Q(3, 3) = Q(4, 4) = 1;
    MATRIX5 C;
    PLATE_TANGENT_ALGO(PLATEELEM, static_cast<double>(a.multiplier), vector_of<5>(a.stress),
                       plain(layered_reference::metric(theory)), plain(Lp), plain(Lc), plain(Q), C);
    // The reference inverts (Ce^-1 + x P) as a whole; eigenvectors and eigenvalues are known to single precision.
    EXPECT_WITHIN(listed(C), layered_reference::listed(a.algorithmic), p.m.E / (1.0 - p.m.nu), 3e-7);
  }
}

TEST(PlateTangentAlgo, IsTheDifferenceQuotientOfTheUpdate) {
  seeded_random random(739);
  for (int trial = 0; trial < 60; ++trial) {
    const int theory = trial % 2 == 0 ? THIN : THICK, n = theory == THICK ? 5 : 3;
    prepared_point p(layered_reference::random_material(random, trial % 3 == 0 ? 0.0 : 0.3));
    p.fill_random(random);
    const vector5 e = p.strain_at(random, 1, 1, theory, random.uniform(1.2, 4.0));
    const double h = 1e-4 * p.m.sy / p.m.E;
    const point_answer a = p.expected(1, 1, theory, e);
    for (int j = 0; j < n; ++j) {
      std::vector<double> quotient(5, 0.0);
      const double weights[4] = {8.0, -8.0, -1.0, 1.0}, steps[4] = {1.0, -1.0, 2.0, -2.0};
      for (int side = 0; side < 4; ++side) {
        vector5 moved = e;
        moved(j) += steps[side] * h;
        p.update(moved, 1, 1, theory, 33);
        const vector5 s = stored_stress(p, 1, 1);
        for (int i = 0; i < 5; ++i) {
          quotient[static_cast<std::size_t>(i)] += weights[side] * static_cast<double>(s(i)) / (12.0 * h);
        }
      }
      // Newton's method stops at a step of 1e-6, which leaves 1e-12 of the multiplier: over h that is 1e-8; single
      // precision of the constants adds 1e-7.
      EXPECT_WITHIN(quotient, layered_reference::listed(a.algorithmic.col(j)), p.m.E / (1.0 - p.m.nu), 2e-6) << j;
    }
  }
}

TEST(PlateTangentAlgo, WithoutAMultiplierIsTheContinuumTangent) {
  prepared_point p(material{3.0, 0.0, 3.0, 1.0});
  const matrix5 Ce = layered_reference::elastic(p.m, THICK), metric = layered_reference::metric(THICK);
  matrix5 Lp = matrix5::Zero();
  Lp.diagonal() << 0.5, 1, 2, 3, 4;
  const matrix5 identity = matrix5::Identity();
  const vector5 s = five(1, 2, 3, 4, 5);
  MATRIX5 C;
  PLATE_TANGENT_ALGO(PLATEELEM, 0.0, vector_of<5>(s), plain(metric), plain(Lp), plain(Ce.diagonal().asDiagonal()),
                     plain(identity), C);
  const matrix5 X = Ce.diagonal().asDiagonal();
  const vector5 n = X * metric * s;
  const real a = s.dot(metric * n), b = s.dot(metric * s);
  EXPECT_CLOSE(listed(C), layered_reference::listed(matrix5(X - n * n.transpose() / (a + 2 * 1.5L * b / 3))), 3.0, 16);
}
