// point_results.h: stresses, strains and section forces at the integration points of the elements whose tables a deck
// asks for.
#ifndef FINITES_SOLVER_POINT_RESULTS_H
#define FINITES_SOLVER_POINT_RESULTS_H

#include <array>
#include <cstddef>
#include <vector>

#include "analyses/nodal_parts.h"
#include "elements/library_model.h"
#include "model/model.h"

namespace solver {

struct printed_values {
  // Of solids: xx, yy, zz, xy, yz, xz in global axes.
  std::array<double, 6> stress{};
  // Of plates, in the axes 1, 2 of their material: 11, 22, 12; strains with engineering shears.
  std::array<std::array<double, 3>, SURFACES> surface_stress{}, surface_strain{};
  std::array<double, 2> shear_stress{};  // mean transverse shear stresses 13, 23
  std::array<double, 8> resultants{};    // N11, N22, N12, M11, M22, M12, Q13, Q23
};

struct point_results {
  std::size_t element = 0;  // index into model::elements
  std::vector<printed_values> points;
};

// By element: whether a step asks for what stands at its points.
std::vector<char> elements_with_points(const model& m);

// From the records of the library: four points of a plate, `count` of a solid.
point_results plate_points(const model& m, std::size_t element, const MATRIX<3, 3>& axes, const double* points);
point_results solid_points(std::size_t element, const MATRIX<3, 3>& axes, const solid_records& records);

// The mean over the points.
printed_values mean_of(const point_results& all);

}  // namespace solver

#endif
