// random_hinges_test.cpp: seeded random and degenerate hinge records. Whatever they hold, a call ends, and it writes
// nothing but its results. Under the sanitizers the same calls show that nothing else goes wrong either.
//
// The environment variable FINITES_ROBUSTNESS_CALLS sets the number of records; without it there are 20,000.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>

#include "assert_recorder.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "hinge_model.h"
#include "plastic_cases.h"
#include "plugin_recorder.h"

namespace {

using namespace hinge_tests;
using plugin_recorder::answer;
using support::guarded_buffer;
using support::seeded_random;

constexpr int RECORDS_A_MODEL = 50;

int record_count() {
  const char* text = std::getenv("FINITES_ROBUSTNESS_CALLS");
  const long count = text != nullptr ? std::strtol(text, nullptr, 10) : 20000;
  return count < 1 ? 1 : count > 10000000 ? 10000000 : static_cast<int>(count);
}

double broken_value(seeded_random& random) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
  constexpr double broken[] = {0.0,    -0.0,  1.0,    -1.0, 5e-324, 1e-308, 1e308,        -1e308,
                               1e-160, 1e160, -1e200, 1e40, inf,    -inf,   not_a_number, 0.2};
  return broken[random.integer(0, static_cast<int>(std::size(broken)) - 1)];
}

double some_value(seeded_random& random) {
  return random.integer(0, 5) == 0 ? broken_value(random) : random.uniform(-200, 200);
}

std::int32_t some_code(seeded_random& random, int low, int high) {
  constexpr std::int32_t broken[] = {0, -1, 5, 17, 99, -100, 2147483647, -2147483647 - 1};
  return random.integer(0, 7) == 0 ? broken[random.integer(0, static_cast<int>(std::size(broken)) - 1)]
                                   : random.integer(low, high);
}

double some_capacity(seeded_random& random) {
  return random.integer(0, 7) == 0 ? broken_value(random) : random.log_uniform(1, 1e3);
}

segments some_list(seeded_random& random) {
  segments list{};
  const int most = random.integer(0, 1) == 0 ? 16 : 4;
  for (std::size_t i = 0; i < 4; ++i) list[i] = random.integer(0, 2) == 0 ? 0 : some_code(random, 1, most);
  return list;
}

HINGE_RECORD some_record(seeded_random& random) {
  HINGE_RECORD h =
      hinge_of(some_code(random, 1, 3), some_code(random, 1, 7), some_code(random, 0, 2), some_code(random, 0, 2));
  h.HINGE_MODEL = random.integer(0, 9) == 0 ? some_code(random, 0, 2) : 1;
  h.AXIAL_RELEASE = random.integer(0, 9) == 0 ? some_code(random, 0, 1) : 0;
  h.CAP_P = some_capacity(random);
  h.CAP_MY = some_capacity(random);
  h.CAP_MZ = some_capacity(random);
  set_segments(h.END1_SEG, some_list(random));
  set_segments(h.END2_SEG, some_list(random));
  return h;
}

// Forces, load factors, the kind of the element and the library of the rotation.
void break_state(seeded_random& random, hinge_model& model) {
  for (int i = 1; i <= 12; ++i) {
    model.forces().F_END(i) = some_value(random);
    model.forces().F_END_STEP(i) = some_value(random);
    model.forces().F_END_ITER(i) = some_value(random);
    model.alt_forces().F_END(i) = some_value(random);
    model.alt_forces().F_END_STEP(i) = some_value(random);
  }
  SOLANAELEM.LOAD_STEP = some_value(random);
  model.alt_state().LOAD_STEP = some_value(random);
  constexpr double kinds[] = {1.0, 10.0, 14.0};
  model.set_element_kind(random.integer(0, 5) == 0 ? broken_value(random) : kinds[random.integer(0, 2)]);
  model.set_force_mode(some_code(random, 0, 1));
  constexpr answer answers[] = {answer::missing, answer::stand_in, answer::loaded};
  plugin_recorder::reset(answers[random.integer(0, 2)]);
  if (random.integer(0, 3) == 0) plugin_recorder::rotation().assign(144, broken_value(random));
}

void call_curves(seeded_random& random, hinge_model& model) {
  const int fmode = some_code(random, 0, 1);
  const equation_counts n = counts(model, fmode, some_list(random));
  ASSERT_TRUE(n.NTOT >= 0 && n.NTOT <= 8) << n.NTOT;
  ASSERT_TRUE(n.N1 >= 0 && n.N1 <= 4 && n.N2 >= 0 && n.N2 <= 4) << n.N1 << ", " << n.N2;
  if (n.NTOT > 0) gradients(model, fmode, n);
  // END and SET stay in their range: another END or SET has no forces to point to.
  forces_at(model, fmode, random.integer(1, 2), random.integer(1, 2));
}

// The routines without a model, on the same kind of numbers.
void call_plain_routines(seeded_random& random) {
  const section_forces C{some_capacity(random), some_capacity(random), some_capacity(random)};
  const section_forces F{some_value(random), some_value(random), some_value(random)};
  const std::int32_t FS = some_code(random, 1, 7), S = some_code(random, 1, 16);
  const segments SEG = some_list(random);
  phi_orbison(C, FS, F);
  phi_single(SEG, C, FS, F);
  phi_linear(SEG, C, FS, F);
  for (const selection& s : {select_single(C, FS, F), select_linear(C, FS, F)}) {
    ASSERT_TRUE(s.NEQ >= 0 && s.NEQ <= 3) << s.NEQ;
    for (const std::int32_t segment : s.SEG) ASSERT_TRUE(segment >= 0 && segment <= 16) << segment;
  }
  gradient_orbison(FS, C, F);
  gradient_single(S, FS, C, F);
  gradient_linear(FS, S, C, F);
}

// K stays except for the four entries of an axial release.
void call_stiffness(seeded_random& random, hinge_model& model) {
  std::vector<double> K = sound_stiffness(random);
  for (int i = random.integer(0, 2); i > 0; --i)
    K[static_cast<std::size_t>(random.integer(0, 143))] = some_value(random);
  const plastic_answer a = plastic(model, K);
  ASSERT_LE(a.texts.size(), 1U);
  for (std::size_t i = 0; i < 144; ++i) {
    if (i == 0 || i == 6 || i == 72 || i == 78 || std::isnan(K[i])) continue;
    ASSERT_EQ(a.K[i], K[i]) << i;
  }
}

std::vector<double> broken_vector(seeded_random& random, int count) {
  std::vector<double> v(static_cast<std::size_t>(count));
  for (double& x : v) x = some_value(random);
  return v;
}

}  // namespace

TEST(RandomHinges, EndAndWriteTheirResultsAlone) {
  seeded_random random(20261122);
  const int count = record_count();
  for (int done = 0; done < count;) {
    member_description member;
    member.loads = broken_vector(random, 13 * random.integer(0, 2));
    member.axial_force = random.uniform(-100, 100);
    hinge_model model(hinge_of(2, 7, 1, 1), member);
    model.frame().set_kind(1.0);
    model.frame().set_members_yield(1);
    for (int i = 0; i < RECORDS_A_MODEL && done < count; ++i, ++done) {
      model.hinge() = some_record(random);
      break_state(random, model);
      call_curves(random, model);
      call_plain_routines(random);
      call_stiffness(random, model);
      guarded_buffer K(144), KG(144);
      model.frame().beam_call(random.integer(0, 2), MEMBER, K.data(), KG.data());
      for (const int position : K.changed()) ASSERT_TRUE(position >= 1 && position <= 144);
      for (const int position : KG.changed()) ASSERT_TRUE(position >= 1 && position <= 144);
      if (::testing::Test::HasFailure()) return;
    }
  }
}

TEST(RandomHinges, InversesOfAnyMatrix) {
  seeded_random random(20261123);
  const int count = record_count();
  for (int done = 0; done < count; ++done) {
    const std::int32_t neq = random.integer(1, 4), ntot = random.integer(1, 8);
    const std::vector<double> KB = broken_vector(random, 36), K = broken_vector(random, 144),
                              N6 = broken_vector(random, 6 * neq), N12 = broken_vector(random, 12 * ntot),
                              D = broken_vector(random, 6);
    guarded_buffer BETA(neq * neq), G(12 * ntot), OUT(neq);
    BETA.set_input(std::vector<double>(static_cast<std::size_t>(neq * neq), 0.0));
    std::int32_t ierr = 77;
    CALCULATE_MAT_BETA_INVERSE(KB.data(), N6.data(), &neq, BETA.data(), &ierr);
    ASSERT_NE(ierr, 77);
    ierr = 77;
    MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(K.data(), N12.data(), &ntot, G.data(), &ierr);
    ASSERT_NE(ierr, 77);
    MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE(KB.data(), KB.data(), N6.data(), &neq, BETA.data(), D.data(), D.data(),
                                      OUT.data());
    for (const int position : BETA.changed()) ASSERT_TRUE(position >= 1 && position <= neq * neq);
    for (const int position : G.changed()) ASSERT_TRUE(position >= 1 && position <= 12 * ntot);
    for (const int position : OUT.changed()) ASSERT_TRUE(position >= 1 && position <= neq);
  }
}
