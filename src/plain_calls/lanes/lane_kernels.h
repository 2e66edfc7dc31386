// lane_kernels.h: elements of a batch side by side, one in every lane of a vector.
//
// The kernels are compiled once for each width of vectors that the processor may have, from the formulas of the single
// calls (common/lane_pair.h): each element gets the bits of its own single call. They are for elements whose input was
// checked.
#ifndef FINITES_LANE_KERNELS_H
#define FINITES_LANE_KERNELS_H

#include <cstdint>

#include "finites/elements.h"
#include "shells/common/isotropic_section.h"
#include "solids/linear_kinds.h"

// The value of element e, counted from the first of a group, begins at first[e * stride].
struct LANE_INPUT {
  const double* first;
  std::int64_t stride;
};

// Isotropic plates without offsets: 3 reals of each corner, thickness, E, nu, density, which only the checks read.
struct PLATE_LANES {
  LANE_INPUT xyz, h, E, nu, density;
  STIFFNESS_MODIFIERS modifiers;
};

// Bricks: 3 reals of each node, the axes of each (3, 3), E, nu, density, which only the checks read; their tables. The
// checks do not read the axes.
struct SOLID_LANES {
  LANE_INPUT xyz, axes, E, nu, density;
  double factor;
  const LINEAR_KIND* brick;
};

// Beams without releases and offsets: 3 reals of each end, the direction `up`, which is not read where it is the usual
// one, and constants; what all beams share. Only the checks read the density.
struct BEAM_LANES {
  LANE_INPUT xyz, up, E, G, density, area, Iz, Iy, J;
  const finites_beam* common;
  bool usual_direction;
};

// The matrix of element e begins at K[e * stride]. streamed: past the caches: K and the stride are then
// multiples of 16 bytes, and the batch waits for the stores before it returns.
struct LANE_OUTPUT {
  double* K;
  std::int64_t stride;
  bool streamed;
};

// Writes the matrices of `width` elements. False, with nothing written, where one of them is not finite.
using PLATE_LANES_KERNEL = bool (*)(const PLATE_LANES& plates, const LANE_OUTPUT& out);
using SOLID_LANES_KERNEL = bool (*)(const SOLID_LANES& solids, const LANE_OUTPUT& out);
using BEAM_LANES_KERNEL = bool (*)(const BEAM_LANES& beams, const LANE_OUTPUT& out);

// Whether all elements pass the checks of the single call: numbers within their ranges, a shape that is none of the
// doubtful ones. False where one of them may not: the checks of the single call decide then.
using PLATE_CHECK_KERNEL = bool (*)(const PLATE_LANES& plates);
using SOLID_CHECK_KERNEL = bool (*)(const SOLID_LANES& solids);
using BEAM_CHECK_KERNEL = bool (*)(const BEAM_LANES& beams);

// Each works off `width` elements.
struct LANE_KERNELS {
  int width;
  PLATE_LANES_KERNEL thin_triangle, thick_triangle, membrane_triangle;
  PLATE_LANES_KERNEL thin_quadrilateral, thick_quadrilateral, membrane_quadrilateral;
  PLATE_CHECK_KERNEL check_triangle, check_quadrilateral;
  SOLID_LANES_KERNEL brick;
  SOLID_CHECK_KERNEL check_brick;
  BEAM_LANES_KERNEL beam;
  BEAM_CHECK_KERNEL check_beam;
};

// The kernels of a width: 2, 4 or 8. Null where this processor, or this build, has no vectors of that width.
const LANE_KERNELS* lane_kernels(int width);

// Those of the widest vectors of this processor.
const LANE_KERNELS& widest_lanes();

#endif
