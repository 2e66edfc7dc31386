// section_stresses.h: normal stresses at the points of a beam's cross-section.
#ifndef FINITES_SOLVER_SECTION_STRESSES_H
#define FINITES_SOLVER_SECTION_STRESSES_H

#include "elements/member_field.h"
#include "model/model.h"

namespace solver {

// Tension is positive. Axes 1 and 2 of the section are y and z of the section forces:
//     axial N / A,   bending My' z' / Iy' - Mz' y' / Iz'   about the principal axes through the centroid.
struct point_stress {
  double axial = 0, bending = 0;
};

point_stress stress_at(const frame_section& section, const section_point& point,
                       const std::array<double, SECTION_FORCES>& force);

}  // namespace solver

#endif
