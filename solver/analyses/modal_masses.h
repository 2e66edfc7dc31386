// modal_masses.h: how much of the mass moves in each mode.
//
// With the rigid motions R, three translations and three rotations about the origin, and a mode phi, both on the
// degrees of freedom that are free,
//
//     generalised mass  m = phi^T M phi,   participation factor  p = phi^T M R / m,   effective mass  p^2 m.
//
// The effective masses of all modes add up to R^T M R of the free degrees of freedom, since the modes are a basis.
#ifndef FINITES_SOLVER_MODAL_MASSES_H
#define FINITES_SOLVER_MODAL_MASSES_H

#include <array>
#include <cstddef>
#include <vector>

#include "elements/library_model.h"
#include "elements/load_case.h"
#include "model/model.h"

namespace solver {

struct modal_mass {
  double generalised = 0;
  std::array<double, DIRECTIONS> factor{}, effective{};
};

struct modal_masses {
  std::vector<modal_mass> modes;
  // Mass for translations, moments of inertia about the axes through the origin for rotations.
  std::array<double, DIRECTIONS> total{}, free{};
  std::array<double, 3> centre{};  // of the total mass
};

// The mass of an element in a step: consistent, or in the nodes. Lumped masses have no rotary inertia; each node has
// the share of its diagonal (E. Hinton, T. Rock and O. C. Zienkiewicz, 1976), the mean of the three directions, so that
// no direction is preferred. Masses of *MASS and *ROTARY INERTIA stay as they are.
void element_mass(const model& m, const step& s, library_model& library, std::size_t element, element_matrix& M);

// `shapes`: by degree of freedom, 0 where it is prescribed.
modal_masses find_modal_masses(const model& m, const step& s, library_model& library, const load_case& loads,
                               const std::vector<const std::vector<double>*>& shapes);

}  // namespace solver

#endif
