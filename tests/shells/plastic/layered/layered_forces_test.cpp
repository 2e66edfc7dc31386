// layered_forces_test.cpp: what operations 3 and 33 return and keep: the material follows the sum of displacements and
// stored ones, the forces are the tangents as they then stand times the displacements alone.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "layered_element_reference.h"

using layered_reference::point_answer;
using layered_reference::real;
using shell_reference::column;
using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using support::plate_description;
using support::seeded_random;

namespace {

struct expected_point {
  int gp, k;
  point_answer answer;
};

// What each thickness point becomes for total displacements in element axes.
std::vector<expected_point> expected_points(const layered_element_reference& r, layered_model& model,
                                            const column& total) {
  const int n = SOLANAELEM.NPT_THICK;
  const layered_reference::rule rule = layered_reference::lobatto(n);
  std::vector<expected_point> all;
  for (int gp = 1; gp <= 4; ++gp) {
    const column e = r.strains(total, gp);
    for (int k = 1; k <= n; ++k) {
      const layered_values v = values_of(model.point(gp), k);
      const layered_reference::point_start start{layered_reference::vector6_of(field_of(v, "EP_START")),
                                                 field_of(v, "EPBAR_START")[0]};
      const real z = rule.xi[static_cast<std::size_t>(k - 1)] * r.d.thickness / 2;
      all.push_back({gp, k, layered_reference::update(r.m, r.axes, r.s.theory, start, r.strain_at(e, z))});
    }
  }
  return all;
}

bool on_the_edge(const std::vector<expected_point>& all, double sy) {
  for (const expected_point& p : all) {
    if (std::fabs(static_cast<double>(p.answer.f)) < 1e-6 * sy * sy) return true;
  }
  return false;
}

double yield_strain(const plate_description& d) { return d.yield_stress / d.young; }

// Starts that no plate reaches by itself would have transverse plastic strains: what has been accepted is a start.
void yield_and_accept(layered_model& model, seeded_random& random, const plate_description& d) {
  model.internal_forces(1, random_displacements(random, d, 10.0 * yield_strain(d)), 33);
  model.promote_all();
}

}  // namespace

TEST(LayeredForces, Operation33StoresTheStateOfTheTotalDisplacements) {
  seeded_random random(771);
  for (const layered_subject& s : SUBJECTS) {
    for (const int n : STATE_COUNTS) {
      const plate_description d = random_layered(random, s, n % 4 == 1 ? 0.0 : 0.3);
      layered_model model(d, n, n == 7 ? point_layout::scattered : point_layout::packed);
      yield_and_accept(model, random, d);
      const std::vector<double> u = random_displacements(random, d, 4.0 * yield_strain(d)),
                                us = random_displacements(random, d, 8.0 * yield_strain(d));
      model.set_stored(us);
      const layered_element_reference r(s, d);
      const std::vector<expected_point> all = expected_points(r, model, r.e.to_local(column_of(sum(u, us))));
      support::forget_assertions();
      const std::vector<double> f = model.internal_forces(1, u, 33);
      EXPECT_EQ(support::recorded_assertions(), texts());
      ASSERT_FALSE(on_the_edge(all, d.yield_stress));
      int plastic = 0;
      for (const auto& [gp, k, a] : all) {
        const layered_values v = values_of(model.point(gp), k);
        // Rounding of the displacements, over the thickness, moves the trial stress; its size is far above the yield
        // stress.
        const double size = d.young * support::max_norm(u) / d.thickness * 10.0;
        EXPECT_CLOSE(field_of(v, "SIG"), layered_reference::listed(a.sig), size, 200) << s.name << gp << k;
        EXPECT_CLOSE(field_of(v, "EP_CUR"), layered_reference::listed(a.ep), size / d.young, 200);
        EXPECT_CLOSE(field_of(v, "EPBAR_CUR")[0], static_cast<double>(a.ebar), size / d.young, 200);
        EXPECT_CLOSE(field_of(v, "TANGENT"), layered_reference::listed(a.tangent), size / yield_strain(d), 200);
        plastic += a.plastic ? 1 : 0;
      }
      EXPECT_GT(plastic, 0);
      // Forces: the stored tangents, integrated, on u alone.
      const column local = r.e.to_local(column_of(u));
      EXPECT_CLOSE(f, listed(r.forces(model, local)), largest(r.elastic_stiffness()) * support::max_norm(u), 200)
          << s.name;
      EXPECT_TRUE(model.storage->guards_hold());
    }
  }
}

TEST(LayeredForces, Operation3OfAFirstPlasticExcursionReturnsElasticForces) {
  seeded_random random(772);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description d = random_layered(random, s, 0.2);
    const std::vector<double> u = random_displacements(random, d, yield_strain(d)),
                              far = even_strains(layered_element_reference(s, d), {9.0 * yield_strain(d), 0.0, 0.0},
                                                 {0.0, 0.0, 0.0});
    layered_model model(d, 5);
    model.set_stored(listed(-column_of(u)));  // a total of zero: elastic
    const std::vector<double> elastic = model.internal_forces(1, u, 3);
    const std::vector<double> K = model.stiffness(1);
    model.set_stored(sum(far, u, -1.0));
    const std::vector<std::uint64_t> before = model.bits();
    EXPECT_EQ(model.internal_forces(1, u, 3), elastic) << s.name;
    EXPECT_EQ(model.bits(), before) << "plastic points keep what they had";
    EXPECT_EQ(model.stiffness(1), K);
    // After operation 33 the same displacements have other forces.
    model.internal_forces(1, u, 33);
    EXPECT_NE(model.bits(), before);
    const std::vector<double> plastic = model.internal_forces(1, u, 3);
    const layered_element_reference r(s, d);
    const column local = r.e.to_local(column_of(u));
    EXPECT_CLOSE(plastic, listed(r.e.to_global(r.forces(model, local))),
                 largest(r.elastic_stiffness()) * support::max_norm(u), 200);
    EXPECT_GT(support::max_norm(sum(plastic, elastic, -1.0)), 1e-3 * support::max_norm(elastic)) << s.name;
  }
}

TEST(LayeredForces, CoverTheWholeCouplingOfTheTangents) {
  // Operation 3 of a plastic total leaves the tangents: any numbers may stand there. The coupling matrix is taken as it
  // is; the stiffness has its transpose below.
  seeded_random random(773);
  for (const layered_subject& s : SUBJECTS) {
    for (const int n : STATE_COUNTS) {
      const plate_description d = random_layered(random, s, 0.2);
      layered_model model(d, n);
      model.fill_random(random);
      const layered_element_reference r(s, d);
      const std::vector<double> far = even_strains(r, {99.0 * yield_strain(d), 0.0, 0.0}, {0.0, 0.0, 0.0});
      const std::vector<double> u = random_displacements(random, d, 1e-3 * yield_strain(d));
      model.set_stored(far);
      const std::vector<std::uint64_t> before = model.bits();
      const column local = r.e.to_local(column_of(u)), forces = r.forces(model, local);
      const double size = largest(r.elastic_stiffness()) * support::max_norm(u);
      EXPECT_CLOSE(model.internal_forces(1, u, 3), listed(r.e.to_global(forces)), size, 200) << s.name;
      EXPECT_EQ(model.bits(), before) << s.name;
      EXPECT_GT(largest(forces - r.stiffness(model) * local), 1e-6 * largest(forces)) << "without symmetry";
    }
  }
}

TEST(LayeredForces, RepeatedOperation3ChangesNothingAndOperation33Nothing) {
  seeded_random random(774);
  for (const layered_subject& s : SUBJECTS) {
    for (const int op : {3, 33}) {
      const plate_description d = random_layered(random, s, 0.2);
      layered_model model(d, 5);
      yield_and_accept(model, random, d);
      const std::vector<double> u = random_displacements(random, d, 6.0 * yield_strain(d));
      const std::vector<double> f = model.internal_forces(1, u, op);
      const std::vector<std::uint64_t> before = model.bits();
      EXPECT_EQ(model.internal_forces(1, u, op), f) << s.name;
      EXPECT_EQ(model.bits(), before) << s.name;
    }
  }
}

TEST(LayeredForces, IncrementIsCountedFromEitherReference) {
  seeded_random random(775);
  for (const layered_subject& s : SUBJECTS) {
    for (const int from_cur : {0, 1}) {
      const plate_description d = random_layered(random, s, 0.2);
      layered_model model(d, 5);
      yield_and_accept(model, random, d);
      model.internal_forces(1, random_displacements(random, d, 8.0 * yield_strain(d)), 33);
      std::vector<layered_values> before;
      for (int gp = 1; gp <= 4; ++gp) before.push_back(values_of(model.point(gp)));
      SOLANAELEM.EP_INC_FROM_CUR = from_cur;
      model.internal_forces(1, random_displacements(random, d, 8.0 * yield_strain(d)), 33);
      for (int gp = 1; gp <= 4; ++gp) {
        const layered_values after = values_of(model.point(gp));
        const std::vector<double>& from =
            field_of(before[static_cast<std::size_t>(gp - 1)], from_cur == 0 ? "EP_START" : "EP_CUR");
        EXPECT_EQ(field_of(after, "EP_INC"), sum(field_of(after, "EP_CUR"), from, -1.0)) << s.name;
      }
    }
  }
}

TEST(LayeredForces, DrillingGoesPastTheMaterial) {
  seeded_random random(776);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 5);
    const layered_element_reference r(s, d);
    column local = column::Zero(s.order());
    for (int i = 0; i < s.nodes; ++i) local(r.e.drill(i)) = random.uniform(-1e6, 1e6);  // far beyond any yielding
    const column u = r.e.to_global(local), f = r.drilling() * local;
    // The turn back to element axes leaves rounding in the other degrees of freedom.
    const double noise = largest(r.elastic_stiffness()) * 1e6;
    EXPECT_CLOSE(model.internal_forces(1, listed(u), 33), listed(f), noise, 64) << s.name;
    // The stored displacements have no share in it.
    model.set_stored(listed(u));
    const std::vector<double> zeros(static_cast<std::size_t>(s.order()), 0.0);
    EXPECT_EQ(model.internal_forces(1, zeros, 33), zeros) << s.name;
  }
}

// ---- a strip of one element in bending, through FINITES

TEST(LayeredForces, ElementInEvenBendingHasTheExactStressesAndMoment) {
  // Equal curvatures both ways: the stress is E / (1 - nu) k z up to the yield stress and stays there.
  seeded_random random(780);
  for (const layered_subject& s : SUBJECTS) {
    plate_description d = random_layered(random, s, 0.0);
    d.poisson = 0.3;
    layered_model model(d, 15);
    const layered_element_reference r(s, d);
    const double M = d.young / 0.7, t = d.thickness, first = 2.0 * d.yield_stress / (M * t);
    for (const double times : {0.8, 1.5, 4.0}) {
      const double k = times * first;
      model.internal_forces(1, even_strains(r, {0.0, 0.0, 0.0}, {k, k, 0.0}), 33);
      const layered_reference::rule rule = layered_reference::lobatto(15);
      for (int gp = 1; gp <= 4; ++gp) {
        real moment = 0;
        for (int at = 1; at <= 15; ++at) {
          const std::size_t i = static_cast<std::size_t>(at - 1);
          const double z = static_cast<double>(rule.xi[i]) * t / 2.0;
          const auto local = layered_reference::to_local(
              layered_reference::vector6_of(field_of(values_of(model.point(gp), at), "SIG")), r.axes);
          const double expected = std::max(-d.yield_stress, std::min(d.yield_stress, M * k * z));
          EXPECT_WITHIN(static_cast<double>(local(0)), expected, times * d.yield_stress, 4e-7) << s.name << at;
          EXPECT_WITHIN(static_cast<double>(local(1)), expected, times * d.yield_stress, 4e-7) << s.name << at;
          moment += rule.w[i] * t / 2 * z * local(0);
        }
        const double first_moment = d.yield_stress * t * t / 6.0;
        const double exact = times < 1.0 ? times * first_moment : first_moment * (1.5 - 0.5 / (times * times));
        EXPECT_WITHIN(static_cast<double>(moment), exact, exact, times < 1.0 ? 4e-7 : 0.01) << s.name << times;
      }
    }
  }
}

// ---- texts

TEST(LayeredForces, EachFailingPointSaysItsTextAndTheNextGoesOn) {
  seeded_random random(781);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 5);
    model.point(2).EP_START(1, 3) = NOT_A_NUMBER;
    const std::vector<double> u = random_displacements(random, d, 6.0 * yield_strain(d));
    const layered_values failing = values_of(model.point(2), 4);
    const std::vector<double> tangent = field_of(values_of(model.point(2), 3), "TANGENT");
    support::forget_assertions();
    model.internal_forces(1, u, 33);
    EXPECT_EQ(support::recorded_assertions(), texts{RETURN}) << s.name;
    EXPECT_EQ(field_of(values_of(model.point(2), 3), "TANGENT"), tangent) << s.name;
    EXPECT_EQ(field_of(values_of(model.point(2), 3), "EP_CUR"), std::vector<double>(6, 0.0));
    EXPECT_NE(values_of(model.point(2), 4), failing) << s.name;
    // Displacements that are not a number: every point of the plate.
    std::vector<double> broken = u;
    broken[1] = NOT_A_NUMBER;
    const std::vector<std::uint64_t> before = model.bits();
    support::forget_assertions();
    model.internal_forces(1, broken, 33);
    EXPECT_EQ(support::recorded_assertions(), texts(20, RETURN)) << s.name;
    EXPECT_EQ(model.bits(), before);
  }
}
