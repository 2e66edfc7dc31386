// lane_kernels.h: elements of a batch side by side, one in every lane of a vector.
//
// The kernels are compiled once for each width of vectors that the processor may have, from the formulas of the single
// calls (common/lane_pair.h): each element gets the bits of its own single call. They are for elements whose input was
// checked.
#ifndef FINITES_LANE_KERNELS_H
#define FINITES_LANE_KERNELS_H

#include <cstdint>

#include "shells/common/isotropic_section.h"

// The value of element e, counted from the first of a group, begins at first[e * stride].
struct LANE_INPUT {
  const double* first;
  std::int64_t stride;
};

// Isotropic plates: 3 reals of each corner, thickness, E, nu.
struct PLATE_LANES {
  LANE_INPUT xyz, h, E, nu;
  STIFFNESS_MODIFIERS modifiers;
};

// Solids: 3 reals of each node, E, nu.
struct SOLID_LANES {
  LANE_INPUT xyz, E, nu;
  double stiffness_factor;
};

// The matrix of element e begins at K[e * stride]. streamed: past the caches, where K and the stride allow it and the
// caller makes them seen before it returns (fence_streams).
struct LANE_OUTPUT {
  double* K;
  std::int64_t stride;
  bool streamed;
};

// Writes the matrices of `width` elements. False, with nothing written, where one of them is not finite.
using PLATE_LANES_KERNEL = bool (*)(const PLATE_LANES& plates, const LANE_OUTPUT& out);
using SOLID_LANES_KERNEL = bool (*)(const SOLID_LANES& solids, const LANE_OUTPUT& out);

// Each works off `width` elements.
struct LANE_KERNELS {
  int width;
  PLATE_LANES_KERNEL thin_triangle, thick_triangle, membrane_triangle;
  PLATE_LANES_KERNEL thin_quadrilateral, thick_quadrilateral, membrane_quadrilateral;
};

// The kernels of a width: 2, 4 or 8. Null where this processor, or this build, has no vectors of that width.
const LANE_KERNELS* lane_kernels(int width);

// Those of the widest vectors of this processor.
const LANE_KERNELS& widest_lanes();

#endif
