// laws.h: laws that elements keep. Each takes a subject, makes one random element of it and asks FINITES.
#ifndef FINITES_TESTS_LAWS_H
#define FINITES_TESTS_LAWS_H

#include <string>

#include "element_cases.h"

struct subject {
  std::string name;
  element_case element;
  bool listed_factors;  // two stiffness factors of the element's list make an isotropic material orthotropic
};

namespace law {

void symmetry(const subject& s, support::seeded_random& random);
void rigid_motions_give_no_force_and_no_strain(const subject& s, support::seeded_random& random);
void rigid_motions_have_no_stiffness(const subject& s, support::seeded_random& random);
void rigid_motions_with_offsets_give_no_force(const subject& s, support::seeded_random& random);
void constant_strain_is_found(const subject& s, support::seeded_random& random);
void whole_element_may_turn(const subject& s, support::seeded_random& random);
void forces_are_stiffness_times_displacements(const subject& s, support::seeded_random& random);
void stiffness_is_the_difference_quotient_of_forces(const subject& s, support::seeded_random& random);
void forces_in_element_axes_turn_to_global_ones(const subject& s, support::seeded_random& random);
void stiffness_has_its_rank(const subject& s, support::seeded_random& random);
void mass_has_the_energy_of_rigid_motions(const subject& s, support::seeded_random& random);
void nodes_may_be_renumbered(const subject& s, support::seeded_random& random);
void nothing_else_is_written(const subject& s, support::seeded_random& random);

}  // namespace law

#endif
