// laws.h: laws that every plate engine keeps. Each takes a subject, makes one random element of it and asks FINITES.
#ifndef FINITES_TESTS_ALL_ENGINES_LAWS_H
#define FINITES_TESTS_ALL_ENGINES_LAWS_H

#include "element_subject.h"

namespace law {

using support::seeded_random;

void symmetry(const element_subject& s, seeded_random& random);
void rigid_motions_give_no_force_and_no_strain(const element_subject& s, seeded_random& random);
void rigid_motions_have_no_stiffness(const element_subject& s, seeded_random& random);
void rigid_motions_with_offsets_give_no_force(const element_subject& s, seeded_random& random);
void constant_strain_is_found(const element_subject& s, seeded_random& random);
void whole_element_may_turn_and_move(const element_subject& s, seeded_random& random);
void forces_are_stiffness_times_displacements(const element_subject& s, seeded_random& random);
void stiffness_is_the_difference_quotient_of_forces(const element_subject& s, seeded_random& random);
void forces_in_element_axes_turn_to_global_ones(const element_subject& s, seeded_random& random);
void stiffness_has_its_rank(const element_subject& s, seeded_random& random);
void mass_has_the_energy_of_rigid_motions(const element_subject& s, seeded_random& random);
void offsets_join_the_nodes_rigidly(const element_subject& s, seeded_random& random);
void modifiers_scale_their_parts(const element_subject& s, seeded_random& random);
void stored_forces_add_their_stiffness_with_second_order(const element_subject& s, seeded_random& random);
void nodes_may_be_cycled(const element_subject& s, seeded_random& random);
void nothing_else_is_written(const element_subject& s, seeded_random& random);

}  // namespace law

#endif
