// kernel_table.h: the kernels of one width. Included by one source file for each width, which is compiled for the
// vectors of that width; nothing that it compiles may be shared with other files, which run on every processor. Its
// templates therefore take the vector as an argument.
#ifndef FINITES_KERNEL_TABLE_H
#define FINITES_KERNEL_TABLE_H

#include "plain_calls/lanes/beam_lanes.h"
#include "plain_calls/lanes/plate_checks_lanes.h"
#include "plain_calls/lanes/plate_lanes.h"
#include "plain_calls/lanes/solid_lanes.h"

template <class V>
inline constexpr LANE_KERNELS KERNEL_TABLE = {
    LANE_COUNT<V>,
    thin_triangle_lanes<V>,
    thick_triangle_lanes<V>,
    membrane_triangle_lanes<V>,
    thin_quadrilateral_lanes<V>,
    thick_quadrilateral_lanes<V>,
    membrane_quadrilateral_lanes<V>,
    plates_pass<3, V>,
    plates_pass<4, V>,
    brick_lanes<V>,
    bricks_pass<V>,
    beam_lanes<V>,
    beams_pass<V>,
};

#endif
