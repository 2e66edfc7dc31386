// material_axes.h: the axes 1, 2 of plates, in which their material lies and their results are given.
//
// Axis 1 is the projection on the element of a direction that belongs to the section: of the global x axis, or of the
// global z axis where x lies within 0.1 degrees of the normal; of a section with an *ORIENTATION that of the axis which
// the orientation names. The angle of the section turns it about the normal. Axis 2 is normal cross axis 1. None of
// this depends on which node of a flat element comes first, as the library's own element axes (plate_axes) do; the
// plane of a warped quadrilateral is that of its nodes 1, 2, 4.
#ifndef FINITES_SOLVER_MATERIAL_AXES_H
#define FINITES_SOLVER_MATERIAL_AXES_H

#include <array>

#include "finites/views.hpp"
#include "model/model.h"

namespace solver {

// The sine of 0.1 degrees: a direction whose projection is shorter counts as the normal itself.
constexpr double ALONG_NORMAL = 1.7453283658983088e-3;

// Rows: axis 1, axis 2, normal. An orientation without a direction on the element is an error.
MATRIX<3, 3> material_axes(const model& m, const element& e);

// Axis 1 of an element by an orientation (-1: none) and an angle in degrees about the normal.
std::array<double, 3> first_axis(const model& m, const element& e, int orientation, double degrees);

// How long the projection of the orientation's unit direction is on an element whose section has an orientation.
double projection_of_axis(const model& m, const element& e);

// From the element's x axis to axis 1 about the normal, radians, above -pi/2 and not above pi/2: half a turn is none
// to a material.
double material_angle(const model& m, const element& e);

// A vector and a symmetric tensor of the plane, turned from one frame to another of the same normal.
struct plane_rotation {
  double c, s;  // of the angle from the x axis of `to` to that of `from`

  // The frames of an average may be slightly askew: what lies in the two planes is taken alike.
  plane_rotation(const MATRIX<3, 3>& from, const MATRIX<3, 3>& to);

  std::array<double, 2> vector(const double* v) const;   // x, y
  std::array<double, 3> tensor(const double* t) const;   // xx, yy, xy
  std::array<double, 3> strains(const double* e) const;  // xx, yy and the engineering shear strain
};

}  // namespace solver

#endif
