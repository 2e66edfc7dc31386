// member_cases.h: seeded random members as both doors describe them.
#ifndef FINITES_TESTS_PLAIN_MEMBER_CASES_H
#define FINITES_TESTS_PLAIN_MEMBER_CASES_H

#include <vector>

#include "finites/elements.h"
#include "frame_model.h"
#include "random_shapes.h"

namespace plain_members {

using support::member_description;
using support::seeded_random;

// Somewhere in space, with or without shear areas, offsets, semi-rigid ends and releases.
finites_beam random_beam(seeded_random& random);
finites_truss random_truss(seeded_random& random);

// A beam of length L along global x, y up to z, with round numbers.
finites_beam plain_beam(double L);

// The same in the protocol: its record takes the length of the measures.
member_description protocol_beam(const finites_beam& beam);
member_description protocol_truss(const finites_truss& truss);

// Rotation of both ends, packed, from the axes of the measures; the rigid links of both ends.
std::vector<double> rotation_of(const finites_member_measures& measures);
std::vector<double> links_of(const finites_beam& beam);

finites_member_measures measures_of(const finites_beam& beam);
finites_member_measures measures_of(const finites_truss& truss);

// A weight and a density with the same mass, to the last bit. gravity: that of the protocol.
struct same_mass {
  double weight, density;
};
same_mass find_mass(seeded_random& random, double volume, double gravity);

}  // namespace plain_members

#endif
