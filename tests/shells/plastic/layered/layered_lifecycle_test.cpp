// layered_lifecycle_test.cpp: first pass, counts without a rule, arrays that are not there, promotion over two steps,
// and random calls with broken values.
#include <algorithm>
#include <cmath>

#include "allocation_counter.h"
#include "assert_recorder.h"
#include "comparison.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "guarded_buffer.h"
#include "layered_element_reference.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using support::plate_description;
using support::seeded_random;

namespace {

double yield_strain(const plate_description& d) { return d.yield_stress / d.young; }

// Without modifiers: they would make the whole-section model, which the first pass prepares too, report its matrices.
plate_description plain_layered(seeded_random& random, const layered_subject& s) {
  plate_description d = random_layered(random, s, 0.2);
  d.modifier_membrane = d.modifier_bending = d.modifier_shear = 1.0;
  return d;
}

// The arrays of the whole-section model.
struct section_arrays {
  std::array<std::vector<double>, 10> arrays;

  explicit section_arrays(PLATE_STATE_RECORD& r) {
    for (std::vector<double>& a : arrays) a.assign(256, 7.0);
    r.SEC_EP_START = REFER_TO(arrays[0].data(), 12, 4);
    r.SEC_EP_CUR = REFER_TO(arrays[1].data(), 12, 4);
    r.SEC_EPBAR_START = REFER_TO(arrays[2].data(), 4);
    r.SEC_EPBAR_CUR = REFER_TO(arrays[3].data(), 4);
    r.SEC_EP_INC = REFER_TO(arrays[4].data(), 12, 4);
    r.SEC_TANGENT = REFER_TO(arrays[5].data(), 8, 8, 4);
    r.SEC_CURV_INC = REFER_TO(arrays[6].data(), 4);
    r.SEC_AUX = REFER_TO(arrays[7].data(), 4);
    r.SEC_SIGN_CUR = REFER_TO(arrays[8].data(), 4);
    r.SEC_SIGN_START = REFER_TO(arrays[9].data(), 4);
  }
};

}  // namespace

TEST(LayeredFirstPass, InitialisesBothModels) {
  seeded_random random(801);
  for (const layered_subject& s : SUBJECTS) {
    for (const int op : {1, 3, 33, 5, 7, 71, 401}) {
      const plate_description d = random_layered(random, s, 0.2);
      layered_model model(d, 5);
      const section_arrays section(model.state(1));
      model.storage->fill(7.0);
      const std::vector<std::uint64_t> neighbour = bits_of(model.state(2));
      model.set_header(STEP_COUNTER, 0.0);
      double data[12] = {}, forces[24], out[576];
      model.set_displacements({});
      model.call(op, 1, data, forces, out);
      for (int gp = 1; gp <= 4; ++gp) {
        for (const auto& [name, values] : values_of(model.point(gp))) {
          if (name == "TANGENT") continue;
          EXPECT_EQ(support::max_norm(values), 0.0) << s.name << " " << op << " " << name;
        }
        // Operations 3 and 33 update the points in the same call: what the first state gives to the shears of a thin
        // element is gone then.
        const bool updated = op == 3 || op == 33;
        const bool shears = s.theory == layered_reference::THICK || !updated;
        for (int k = 1; k <= 5; ++k) {
          EXPECT_CLOSE(field_of(values_of(model.point(gp), k), "TANGENT"),
                       layered_reference::listed(layered_reference::stored_elastic(model.m, shears ? 2 : 1)),
                       2.0 * d.young, 4)
              << s.name << " " << op;
        }
        EXPECT_EQ(model.state(1).SEC_SIGN_START(gp), 1.0) << s.name << " " << op;
        EXPECT_EQ(model.state(1).SEC_EPBAR_START(gp), 0.0);
        EXPECT_EQ(model.state(1).SEC_EP_START(3, gp), 0.0);
        EXPECT_NE(model.state(1).SEC_TANGENT(1, 1, gp), 7.0);
      }
      EXPECT_EQ(bits_of(model.state(2)), neighbour) << "the other plate";
    }
  }
}

TEST(LayeredFirstPass, IsTheFirstStepOfANonlinearRunAlone) {
  seeded_random random(802);
  const plate_description d = random_layered(random, SUBJECTS[3], 0.2);
  layered_model model(d, 5);
  model.fill_random(random);
  const std::vector<std::uint64_t> before = model.bits();
  for (const auto& [state, step] :
       {std::pair{1.0, 1.0}, std::pair{0.0, 0.0}, std::pair{2.0, 0.0}, std::pair{1.0, 5.0}}) {
    model.set_header(ANALYSIS_STATE, state);
    model.set_header(STEP_COUNTER, step);
    model.stiffness(1);
    EXPECT_EQ(model.bits(), before) << state << " " << step;
  }
}

TEST(LayeredCounts, WithoutARuleLeaveTheDrillingAndSayNothing) {
  seeded_random random(803);
  for (const layered_subject& s : SUBJECTS) {
    for (const int n : {4, 1, 2, 6, 16, 17, 0, -1, -5}) {
      const plate_description d = plain_layered(random, s);
      const layered_element_reference r(s, d);
      support::forget_assertions();
      layered_model model(d, n);
      const std::vector<double> u = random_displacements(random, d, yield_strain(d));
      const column local = r.e.to_local(column_of(u)), f = r.drilling() * local;
      const double drill = largest(r.drilling());
      EXPECT_CLOSE(model.stiffness(1), listed(r.e.to_global_matrix(r.drilling())), drill, 64) << s.name << n;
      EXPECT_CLOSE(model.internal_forces(1, u, 3), listed(r.e.to_global(f)), drill * support::max_norm(u), 64);
      EXPECT_CLOSE(model.internal_forces(1, u, 33), listed(f), drill * support::max_norm(u), 64) << s.name << n;
      const support::plate_results R = model.results(1, u);
      for (int p = 0; p < 4; ++p) {
        for (std::size_t c = 36; c < 42; ++c) EXPECT_EQ(R.points[static_cast<std::size_t>(90 * p) + c], 0.0);
      }
      EXPECT_EQ(support::recorded_assertions(), texts()) << s.name << n;
      EXPECT_TRUE(model.storage->guards_hold());
    }
  }
}

TEST(LayeredCounts, WithoutARuleHaveAllPointsInTheMiddle) {
  seeded_random random(804);
  for (const layered_subject& s : SUBJECTS) {
    for (const int n : {6, 2, 16, 17}) {
      const plate_description d = random_layered(random, s, 0.2);
      layered_model model(d, n);
      model.internal_forces(1, random_displacements(random, d, 6.0 * yield_strain(d)), 33);
      for (int gp = 1; gp <= 4; ++gp) {
        EXPECT_GT(support::max_norm(field_of(values_of(model.point(gp), 1), "SIG")), 0.0) << s.name;
        for (int k = 2; k <= n; ++k) EXPECT_EQ(values_of(model.point(gp), k), values_of(model.point(gp), 1)) << n;
      }
    }
  }
}

TEST(LayeredCounts, BelowOneShowNothing) {
  // There is no bottom, middle or top point to read: the records stay as the driver has cleared them.
  seeded_random random(809);
  for (const layered_subject& s : SUBJECTS) {
    for (const int n : {0, -1, -5}) {
      const plate_description d = plain_layered(random, s);
      layered_model model(d, n);
      const support::plate_results R = model.results(1, random_displacements(random, d, yield_strain(d)));
      EXPECT_EQ(R.points, std::vector<double>(360, 0.0)) << s.name << n;
      EXPECT_EQ(R.nodes, std::vector<double>(360, 0.0)) << s.name << n;
    }
  }
}

TEST(LayeredArrays, ThatAreNotAllocatedAreTolerated) {
  seeded_random random(805);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description d = plain_layered(random, s);
    const layered_element_reference r(s, d);
    const std::vector<double> u = random_displacements(random, d, yield_strain(d));
    const column local = r.e.to_local(column_of(u)), f = r.drilling() * local;
    for (const int missing : {0, 1, 2, 3}) {
      layered_model model(d, 5);
      if (missing == 0) model.state(1).POINT_STATE.ALLOCATED_FLAG = 0;
      if (missing == 1) model.state(1).POINT_STATE(4).TANGENT.ALLOCATED_FLAG = 0;
      if (missing == 2) model.state(1).POINT_STATE(2).SIG = {};
      if (missing == 3) SOLANAELEM.NPT_THICK = 7;  // more than the arrays have
      support::forget_assertions();
      model.first_pass();
      EXPECT_CLOSE(model.stiffness(1), listed(r.e.to_global_matrix(r.drilling())), largest(r.drilling()), 64)
          << missing;
      EXPECT_CLOSE(model.internal_forces(1, u, 3), listed(r.e.to_global(f)),
                   largest(r.drilling()) * support::max_norm(u), 64);
      EXPECT_CLOSE(model.internal_forces(1, u, 33), listed(f), largest(r.drilling()) * support::max_norm(u), 64);
      EXPECT_EQ(support::max_norm(model.results(1, u).points), 0.0) << missing;
      EXPECT_EQ(support::recorded_assertions(), texts());
    }
    layered_model model(d, 5);
    SOLANAELEM.PLATE_STATE.ALLOCATED_FLAG = 0;
    model.first_pass();
    EXPECT_CLOSE(model.stiffness(1), listed(r.e.to_global_matrix(r.drilling())), largest(r.drilling()), 64);
    EXPECT_CLOSE(model.internal_forces(1, u, 33), listed(f), largest(r.drilling()) * support::max_norm(u), 64);
  }
}

TEST(LayeredSteps, LoadingAndUnloadingInTwoStepsLeaveThePlasticStrain) {
  // Stretched both ways to three times the yield strain, accepted, and back to the displacements of the start: the
  // stress goes the elastic way down and yields on the other side.
  for (const layered_subject& s : SUBJECTS) {
    seeded_random random(806);
    plate_description d = random_layered(random, s, 0.0);
    d.poisson = 0.3;
    layered_model model(d, 5);
    const layered_element_reference r(s, d);
    const double M = d.young / 0.7, first = d.yield_stress / M;
    const std::vector<double> out = even_strains(r, {3.0 * first, 3.0 * first, 0.0}, {0.0, 0.0, 0.0});
    model.internal_forces(1, out, 33);
    model.promote_all();
    model.set_stored(out);
    const auto stress = [&] {
      const auto sig = layered_reference::vector6_of(field_of(values_of(model.point(1), 2), "SIG"));
      return static_cast<double>(layered_reference::to_local(sig, r.axes)(0));
    };
    EXPECT_WITHIN(stress(), d.yield_stress, d.yield_stress, 2e-7) << s.name;
    model.internal_forces(1, listed(-0.5L * column_of(out)), 33);  // down by 1.5 yield strains
    EXPECT_WITHIN(stress(), -0.5 * d.yield_stress, d.yield_stress, 1e-6) << s.name;
    model.internal_forces(1, listed(-column_of(out)), 33);
    EXPECT_WITHIN(stress(), -d.yield_stress, d.yield_stress, 1e-6) << s.name;
    const auto ep = layered_reference::vector6_of(field_of(values_of(model.point(1), 2), "EP_CUR"));
    EXPECT_WITHIN(static_cast<double>(layered_reference::to_local(ep, r.axes)(0)), first, first, 1e-6) << s.name;
  }
}

TEST(LayeredCalls, TakeNothingFromTheHeap) {
  if (!support::allocation_counter::available()) GTEST_SKIP() << "a sanitizer counts for itself";
  seeded_random random(808);
  for (const layered_subject& s : SUBJECTS) {
    const plate_description d = random_layered(random, s, 0.2);
    layered_model model(d, 15);
    model.set_displacements(random_displacements(random, d, 8.0 * yield_strain(d)));
    double data[12] = {}, forces[24], out[576];
    for (const int op : {33, 3, 1, 5, 7, 71}) {
      const support::allocation_counter counter;
      model.call(op, 1, data, forces, out);
      EXPECT_EQ(counter.count(), 0) << s.name << " " << op;
    }
  }
}

// ---- broken values

namespace {

double broken_value(seeded_random& random) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double values[] = {0.0, -0.0,   1.0, -1.0, 1e-308,       1e308, -1e308,
                               4e9, 1e-320, inf, -inf, NOT_A_NUMBER, 1e19,  1e-9};
  return values[random.integer(0, 13)];
}

void break_state(seeded_random& random, layered_model& model) {
  POINT_STATE_RECORD& p = model.point(random.integer(1, 4));
  const int k = random.integer(1, model.storage->extent());
  switch (random.integer(0, 5)) {
    case 0: p.EP_START(random.integer(1, 6), k) = broken_value(random); break;
    case 1: p.EPBAR_START(k) = broken_value(random); break;
    case 2: p.TANGENT(random.integer(1, 5), random.integer(1, 5), k) = broken_value(random); break;
    case 3: p.EP_INC(random.integer(1, 6), k) = broken_value(random); break;
    case 4: p.EP_CUR(random.integer(1, 6), k) = broken_value(random); break;
    default: model.state(1).STORED_DISPLACEMENTS(random.integer(1, 6), random.integer(1, 4)) = broken_value(random);
  }
}

void break_element(seeded_random& random, plate_description& d) {
  double* const fields[] = {&d.thickness,   &d.young,          &d.poisson,          &d.yield_stress,  &d.nodes[1][0],
                            &d.nodes[2][1], &d.modifier_shear, &d.modifier_bending, &d.shear_modulus, &d.nodes[0][2]};
  if (random.integer(0, 2) == 0) *fields[random.integer(0, 9)] = broken_value(random);
  if (random.integer(0, 5) == 0) d.material.HARDENING = static_cast<float>(d.young);
}

void one_call(seeded_random& random, layered_model& model, const layered_subject& s) {
  constexpr int operations[] = {1, 3, 33, 5, 7, 71, 401};
  const int op = operations[random.integer(0, 6)];
  support::guarded_buffer data(12), forces(24), out(576);
  data.set_input(std::vector<double>(12, 1.0));
  std::vector<double> u = random.vector(s.order(), 1e-2);
  if (random.integer(0, 3) == 0) u[static_cast<std::size_t>(random.integer(0, s.order() - 1))] = broken_value(random);
  model.set_displacements(u);
  model.set_header(SECOND_ORDER, random.integer(0, 1));
  model.call(op, 1, data.data(), forces.data(), out.data());
  EXPECT_EQ(data.changed(), std::vector<int>());
  EXPECT_EQ(forces.changed(), op == 401 ? support::range(1, 24) : std::vector<int>());
  if (op == 3 || op == 33 || op == 5 || op == 401) {
    EXPECT_EQ(out.changed(), std::vector<int>()) << op;
  }
  EXPECT_TRUE(model.storage->guards_hold());
}

}  // namespace

TEST(LayeredRandomCalls, EndAndWriteNothingElse) {
  seeded_random random(807);
  for (const layered_subject& s : SUBJECTS) {
    for (int element = 0; element < 60 && !HasFailure(); ++element) {
      plate_description d = random_layered(random, s, 0.3);
      break_element(random, d);
      constexpr int counts[] = {3, 5, 7, 15, 4, 17, 1, 0, -3};
      layered_model model(d, counts[random.integer(0, 8)],
                          element % 2 == 0 ? point_layout::packed : point_layout::scattered);
      for (int call = 0; call < 20 && !HasFailure(); ++call) {
        if (random.integer(0, 3) == 0) model.fill_random(random);
        if (random.integer(0, 2) == 0) break_state(random, model);
        support::forget_assertions();
        one_call(random, model, s);
        for (const std::string& text : support::recorded_assertions()) {
          EXPECT_TRUE(text == DIVISION || text == NEGATIVE || text == RETURN) << text;
        }
      }
    }
  }
}
