// plate_subjects.h: random plates for the tests of the plain calls: as numbers, and as the protocol takes them.
#ifndef FINITES_TESTS_PLATE_SUBJECTS_H
#define FINITES_TESTS_PLATE_SUBJECTS_H

#include <array>
#include <string>
#include <vector>

#include "finites/elements.h"
#include "plate_model.h"
#include "random_shapes.h"

namespace subjects {

enum class behaviour { isotropic, orthotropic, composite };

// One row of the table: what a plate can be.
struct plate_kind {
  int nodes;
  int theory;
  behaviour section;
  bool offsets;
};

std::vector<plate_kind> all_plate_kinds();
std::string name_of(const plate_kind& kind);

support::plate_description random_plate(support::seeded_random& random, const plate_kind& kind);

// The same plate as numbers. The density is the unit weight over GRAVITY, as masses of the protocol have it.
finites_plate as_numbers(const support::plate_description& description);

// Displacements of a size that the protocol's elements see too.
std::vector<double> random_displacements(support::seeded_random& random, int nodes);

// A rectangle a by b in the global x-y plane, or its half below the diagonal; isotropic.
finites_plate rectangle(int nodes, int theory, double a, double b);

// The values of every call on one plate, one behind the other.
std::vector<double> every_answer(const finites_plate& plate, const std::vector<double>& u);

}  // namespace subjects

#endif
