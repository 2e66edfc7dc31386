// member_cases.h: seeded random members and transformations for these tests.
#ifndef FINITES_TESTS_MEMBER_CASES_H
#define FINITES_TESTS_MEMBER_CASES_H

#include <vector>

#include "frame_model.h"
#include "random_shapes.h"

namespace member_cases {

using support::member_description;
using support::member_family;
using support::seeded_random;

// A fixity factor: 0, 1, or between.
double random_fixity(seeded_random& random);

// A beam with all properties and factors different in the two planes. Rigid ends, no releases.
member_description random_beam(seeded_random& random);
member_description random_truss(seeded_random& random);

// 12 by 12, packed: the same rotation in the four diagonal blocks; blocks that all differ; a full matrix.
std::vector<double> node_rotation(const support::rotation& R);
std::vector<double> block_rotation(seeded_random& random);
std::vector<double> full_transformation(seeded_random& random);

}  // namespace member_cases

#endif
