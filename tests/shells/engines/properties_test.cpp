// properties_test.cpp: the laws that every kind and behaviour keeps, from one list, through FINITES, on seeded random
// elements in space with random sections and modifiers.
//
// A line of PROPERTIES is a law; a line of EXCEPTIONS names a law that a section is not meant to keep, and why.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <ostream>

#include "laws.h"

namespace {

struct property {
  const char* name;
  void (*check)(const element_subject&, support::seeded_random&);
};

constexpr property PROPERTIES[] = {
    {"symmetry", law::symmetry},
    {"rigid_motions_give_no_force_and_no_strain", law::rigid_motions_give_no_force_and_no_strain},
    {"rigid_motions_have_no_stiffness", law::rigid_motions_have_no_stiffness},
    {"rigid_motions_with_offsets_give_no_force", law::rigid_motions_with_offsets_give_no_force},
    {"constant_strain_is_found", law::constant_strain_is_found},
    {"whole_element_may_turn_and_move", law::whole_element_may_turn_and_move},
    {"forces_are_stiffness_times_displacements", law::forces_are_stiffness_times_displacements},
    {"stiffness_is_the_difference_quotient_of_forces", law::stiffness_is_the_difference_quotient_of_forces},
    {"forces_in_element_axes_turn_to_global_ones", law::forces_in_element_axes_turn_to_global_ones},
    {"stiffness_has_its_rank", law::stiffness_has_its_rank},
    {"mass_has_the_energy_of_rigid_motions", law::mass_has_the_energy_of_rigid_motions},
    {"offsets_join_the_nodes_rigidly", law::offsets_join_the_nodes_rigidly},
    {"modifiers_scale_their_parts", law::modifiers_scale_their_parts},
    {"stored_forces_add_their_stiffness", law::stored_forces_add_their_stiffness_with_second_order},
    {"nodes_may_be_cycled", law::nodes_may_be_cycled},
    {"nothing_else_is_written", law::nothing_else_is_written},
};

struct exception {
  const char* subject;   // a part of its name
  const char* property;  // its whole name
};

constexpr exception EXCEPTIONS[] = {
    // A section without symmetry: the packed stiffness keeps the upper triangle of the product, the forces take the
    // whole; the mirrored matrix is not an integral of B^T D B and has no exact zero modes.
    {"arbitrary", "forces_are_stiffness_times_displacements"},
    {"arbitrary", "stiffness_is_the_difference_quotient_of_forces"},
    {"arbitrary", "rigid_motions_have_no_stiffness"},
    {"arbitrary", "stiffness_has_its_rank"},
    // The material angle is counted from side 1-2, which moves with the numbers.
    {"orthotropic", "nodes_may_be_cycled"},
    {"composite", "nodes_may_be_cycled"},
    {"factors", "nodes_may_be_cycled"},
};

struct asked {
  element_subject s;
  property p;
};

void PrintTo(const asked& a, std::ostream* out) { *out << a.s.name << " " << a.p.name; }

std::vector<asked> all_asked() {
  std::vector<asked> list;
  for (const element_subject& s : subjects(true)) {
    for (const property& p : PROPERTIES) {
      const bool excepted = std::any_of(std::begin(EXCEPTIONS), std::end(EXCEPTIONS), [&](const exception& e) {
        return s.name.find(e.subject) != std::string::npos && std::strcmp(p.name, e.property) == 0;
      });
      if (!excepted) list.push_back({s, p});
    }
  }
  return list;
}

class EveryElement : public ::testing::TestWithParam<asked> {};

TEST_P(EveryElement, Keeps) {
  support::seeded_random random(381);
  for (int trial = 0; trial < 4 && !HasFailure(); ++trial) GetParam().p.check(GetParam().s, random);
}

INSTANTIATE_TEST_SUITE_P(Properties, EveryElement, ::testing::ValuesIn(all_asked()),
                         [](const auto& test) { return test.param.s.name + "_" + test.param.p.name; });

}  // namespace
