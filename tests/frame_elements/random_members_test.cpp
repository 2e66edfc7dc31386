// random_members_test.cpp: seeded random and degenerate members. Whatever their records hold, a call ends, and it
// writes nothing but its results. Under the sanitizers the same calls show that nothing else goes wrong either.
//
// The environment variable FINITES_ROBUSTNESS_CALLS sets the number of calls; without it there are 20,000.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>

#include "assert_recorder.h"
#include "cable_recorder.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "member_cases.h"

namespace {

using support::frame_model;
using support::guarded_buffer;
using support::member_description;
using support::member_family;
using support::seeded_random;

constexpr int CALLS_A_MODEL = 20;

int call_count() {
  const char* text = std::getenv("FINITES_ROBUSTNESS_CALLS");
  const long count = text != nullptr ? std::strtol(text, nullptr, 10) : 20000;
  return count < 1 ? 1 : count > 10000000 ? 10000000 : static_cast<int>(count);
}

// A number that a broken model may hold.
double broken_value(seeded_random& random) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
  constexpr double broken[] = {0.0, -0.0, 1.0,  -1.0,   2.0, 3.0,  9.0,          8.0, 1e-308, 1e308, -1e308,
                               4e9, -4e9, 1e19, 1e-320, inf, -inf, not_a_number, 0.5, 1e-9,   14.0,  10.0};
  return broken[random.integer(0, static_cast<int>(std::size(broken)) - 1)];
}

int broken_integer(seeded_random& random) {
  constexpr int broken[] = {0, 1, 2, 3, -1, 9, 8, 77, -100, 2147483647, -2147483647 - 1};
  return broken[random.integer(0, static_cast<int>(std::size(broken)) - 1)];
}

float broken_float(seeded_random& random) {
  const double value = broken_value(random);
  return value > 1e38 || value < -1e38 ? std::numeric_limits<float>::infinity() : static_cast<float>(value);
}

void break_properties(seeded_random& random, member_description& m) {
  double* const fields[] = {&m.length,
                            &m.weight,
                            &m.factor_area,
                            &m.factor_i1,
                            &m.factor_i2,
                            &m.factor_j,
                            &m.factor_torsion,
                            &m.remove_min,
                            &m.area,
                            &m.shear_area_y,
                            &m.shear_area_z,
                            &m.i1,
                            &m.i2,
                            &m.j,
                            &m.e1,
                            &m.e2,
                            &m.g,
                            &m.material_kind,
                            &m.pretension_stress,
                            &m.section_type,
                            &m.fixity_y[0],
                            &m.fixity_y[1],
                            &m.fixity_z[0],
                            &m.fixity_z[1],
                            &m.axial_force,
                            &m.tau_b,
                            &m.local_axes,
                            &m.unstressed_length};
  for (int i = random.integer(0, 4); i > 0; --i) {
    *fields[random.integer(0, static_cast<int>(std::size(fields)) - 1)] = broken_value(random);
  }
  // Indices stay in their range: three springs, two reductions.
  m.reduction_index = random.integer(-1, 2);
  m.remove_step = broken_integer(random);
  for (std::size_t i = 0; i < 3; ++i) {
    m.nl_spring[i] = random.integer(-1, 3);
    m.remove_step_spring[i] = broken_integer(random);
  }
  for (int& code : m.release) code = random.integer(0, 4) == 0 ? broken_integer(random) : random.integer(0, 2);
  m.hinge.HINGE_MODEL = random.integer(0, 2);
  m.hinge.END1_STATE = random.integer(-1, 3);
  m.hinge.END2_STATE = random.integer(-1, 3);
  m.hinge.AXIAL_RELEASE = random.integer(0, 2);
}

member_description random_member(seeded_random& random) {
  member_description m = member_cases::random_beam(random);
  m.family = static_cast<member_family>(random.integer(0, 4));
  for (std::size_t end = 0; end < 2; ++end) {
    m.fixity_y[end] = member_cases::random_fixity(random);
    m.fixity_z[end] = member_cases::random_fixity(random);
  }
  m.axial_force = random.uniform(-1e4, 1e4);
  m.loads = random.vector(13 * random.integer(0, 2), 10.0);
  break_properties(random, m);
  std::array<int, 6> kinds{};
  std::array<float, 6> k{};
  for (std::size_t i = 0; i < 6; ++i) {
    kinds[i] = random.integer(0, 1) == 0 ? 8 + random.integer(0, 1) : broken_integer(random);
    k[i] = broken_float(random);
  }
  if (random.integer(0, 9) == 0) return m;  // no property record
  m.property = m.family == member_family::link ? support::link_property(kinds, k, broken_integer(random),
                                                                        broken_integer(random), random.integer(0, 1))
                                               : support::spring_property(kinds, k);
  return m;
}

std::vector<double> any_transformation(seeded_random& random) {
  std::vector<double> T =
      random.integer(0, 1) == 0 ? member_cases::block_rotation(random) : member_cases::full_transformation(random);
  if (random.integer(0, 5) == 0) T[static_cast<std::size_t>(random.integer(0, 143))] = broken_value(random);
  return T;
}

// One call; the outputs are as long as the family's matrices, between guards.
void call(seeded_random& random, const frame_model& model) {
  const int mode = random.integer(0, 3) == 0 ? broken_integer(random) : random.integer(0, 2);
  const member_family family = model.at(1).family;
  const bool six = family == member_family::truss || family == member_family::cable;
  const int entries = six ? 36 : 144;
  guarded_buffer K(entries), KG(entries);
  const bool mass = random.integer(0, 3) == 0;
  std::int32_t ierr = -1;
  std::string msg(520, '~');
  switch (family) {
    case member_family::beam:
      mass ? model.beam_mass_call(1, K.data()) : model.beam_call(mode, 1, K.data(), KG.data());
      break;
    case member_family::truss:
      mass ? model.truss_mass_call(1, K.data()) : model.truss_call(mode, 1, K.data(), KG.data());
      break;
    case member_family::link: model.link_call(mode, 1, K.data(), KG.data()); break;
    case member_family::spring: model.spring_call(mode, 1, K.data(), KG.data()); break;
    default: model.cable_call(mode, 1, broken_integer(random), K.data(), KG.data(), &ierr, msg.data());
  }
  for (const guarded_buffer* buffer : {&K, &KG}) {
    for (const int position : buffer->changed()) {
      ASSERT_TRUE(position >= 1 && position <= entries) << "family " << static_cast<int>(family);
    }
  }
  ASSERT_EQ(msg.substr(500), std::string(20, '~'));
}

}  // namespace

TEST(RandomMembers, EndAndWriteTheirResultsAlone) {
  seeded_random random(20261120);
  const int count = call_count();
  for (int done = 0; done < count;) {
    frame_model model({random_member(random)});
    model.set_nonlinear_springs({{1.0, 2.0}, {broken_value(random), broken_value(random)}, {0.0, 0.0}});
    model.set_stiff_reduction(random.integer(0, 1), {broken_float(random), 0.5F});
    model.set_remove_ratio(random.integer(0, 1) == 0 ? 2.0F : broken_float(random));
    model.set_members_yield(random.integer(0, 1));
    model.set_lumped_mass(random.integer(0, 1));
    SOLANA.LOAD_FACTOR = broken_value(random);
    SOLANA.RIGID_K_TRANS = SOLANA.RIGID_K_ROT = broken_value(random);
    cable_recorder::reset();
    cable_recorder::answers().tangent_status = random.integer(0, 1);
    cable_recorder::answers().KT.fill(broken_value(random));
    for (int i = 0; i < CALLS_A_MODEL && done < count; ++i, ++done) {
      model.set_kind(random.integer(0, 4) == 0 ? broken_value(random) : random.integer(0, 3));
      model.set_shear_deformation(random.integer(0, 1));
      model.set_rotation(any_transformation(random));
      model.set_second_transformation(random.integer(-1, 1), any_transformation(random));
      call(random, model);
      if (::testing::Test::HasFatalFailure()) return;
      support::forget_assertions();
    }
  }
}

TEST(RandomMembers, ReleasesOfAnyMatrix) {
  seeded_random random(20261121);
  const int count = call_count();
  for (int done = 0; done < count; ++done) {
    const std::int32_t n = random.integer(1, 12),
                       d = random.integer(0, 3) == 0 ? broken_integer(random) : random.integer(1, n);
    guarded_buffer K(n * n), M(144);
    std::vector<double> entries(144);
    for (double& entry : entries) entry = broken_value(random);
    M.set_input(entries);
    entries.resize(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
    K.set_input(entries);
    RELEASE_DOF(&d, K.data(), &n);
    RELEASE_DOF_MAS(&d, M.data());
    for (const int position : K.changed()) ASSERT_TRUE(position >= 1 && position <= n * n);
    for (const int position : M.changed()) ASSERT_TRUE(position >= 1 && position <= 144);
  }
}
