// yield_surface.h: the yield surfaces of the library as questions about one equation of one end.
//
// A surface is a list of equations, numbered from 1 as the library numbers them: one of the Orbison surface, the two
// signs of a single force, the faces of a polyhedron. The end is elastic where all values are below 1.
#ifndef FINITES_SOLVER_YIELD_SURFACE_H
#define FINITES_SOLVER_YIELD_SURFACE_H

#include <array>
#include <cstddef>

#include "elements/frame_records.h"
#include "model/model.h"

namespace solver {

struct hinge_forces {
  double P, My, Mz;
};

// Rows of the twelve end forces that a hinge sees: P, My, Mz of the first end, then of the second.
constexpr std::array<std::array<std::size_t, 3>, 2> HINGE_ROWS = {{{0, 4, 5}, {6, 10, 11}}};

inline hinge_forces forces_of_end(const end_forces& f, std::size_t end) {
  return {f[HINGE_ROWS[end][0]], f[HINGE_ROWS[end][1]], f[HINGE_ROWS[end][2]]};
}

int equation_count(const hinge_model& h);

// The forces that the surface knows, by their capacities; of the others the capacity may be any number.
double size_of(const hinge_model& h, const hinge_forces& f);

double yield_value(const hinge_model& h, int equation, const hinge_forces& f);
hinge_forces yield_gradient(const hinge_model& h, int equation, const hinge_forces& f);

// The smallest x > 0 at which the value of f + x rate, below 1 before, reaches 1; infinity when it never does. Exact
// for flat surfaces, by bisection for the curved one.
double distance_to_yield(const hinge_model& h, int equation, const hinge_forces& f, const hinge_forces& rate);

}  // namespace solver

#endif
