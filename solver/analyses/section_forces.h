// section_forces.h: what goes through a surface inside a body.
#ifndef FINITES_SOLVER_SECTION_FORCES_H
#define FINITES_SOLVER_SECTION_FORCES_H

#include <array>

#include "analyses/static_analysis.h"
#include "elements/library_model.h"
#include "model/model.h"
#include "model/vectors.h"

namespace solver {

// What the other side exerts through the surface on the elements that it belongs to: a bar that is pulled has a force
// along the normal, which points out of these elements.
struct section_force {
  vector3 force{}, moment{};   // the moment is about the origin of the global axes
  vector3 centre{}, normal{};  // of the area; the normal is the mean, of length 1, or 0 of a closed surface
  double area = 0;             // of edges length times thickness
};

// The sum over the nodes of the surface and the elements of its side (section_sides.h):
//
//   F = sum (K u - f),    M = sum x cross (K u - f) + nodal moments,
//
// f: the loads of these elements, but for those on faces of the surface itself, which come through it. The parts of a
// body are in equilibrium whatever the mesh, so that F and M are exact where the surface cuts it through: they balance
// loads and reactions of the part beyond. With P-delta x is the displaced place, where forces are in equilibrium.
//
// The library holds the state that the solution has come from.
section_force force_through(const model& m, const step& s, const named_surface& surface, library_model& library,
                            const static_solution& solution);

}  // namespace solver

#endif
