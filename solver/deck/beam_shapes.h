// beam_shapes.h: constants of the shapes of a beam's cross-section, about its centroid and along axes 1 and 2.
#ifndef FINITES_SOLVER_DECK_BEAM_SHAPES_H
#define FINITES_SOLVER_DECK_BEAM_SHAPES_H

#include <array>
#include <vector>

#include "deck/thin_walled.h"
#include "model/model.h"

namespace solver::deck {

// Places count from the line of nodes. I12 is the integral of x1 x2. The inverse of the shear factors, area by shear
// area, are parts of a tensor, of which `shear_coupling` is the third.
struct beam_shape {
  double area = 0;
  double I11 = 0, I22 = 0, I12 = 0;               // of bending about axis 1, about axis 2
  double torsion = 0;                             // J
  double shear_factor_1 = 0, shear_factor_2 = 0;  // shear area by area, of forces along axis 1, along axis 2
  double shear_coupling = 0;
  plane_point centroid{}, shear_centre{};
  plane_point size{};  // over all, along axis 1, along axis 2
  section_outline outline;
  std::vector<section_point> points;
};

// The shear coefficients are those of Cowper (1966) and depend on Poisson's ratio.
beam_shape rectangle_shape(double a, double b, double nu);     // sides along axis 1, along axis 2
beam_shape ellipse_shape(double p, double q, double nu);       // half axes along axis 1, along axis 2
beam_shape pipe_shape(double radius, double wall, double nu);  // outer radius

// Outer sides a along axis 1 and b along axis 2; the walls at the ends of axis 1 are t1 thick, those at the ends of
// axis 2 t2.
beam_shape box_shape(double a, double b, double t1, double t2, double nu);

// Web along axis 2: depth over all, width of the flanges, thickness of a flange and of the web.
beam_shape i_shape(double depth, double width, double flange, double web, double nu);

// The shapes below are composed of thin walls (thin_walled.h): area and moments of inertia are those of the rectangles,
// torsion, shear centre and shear areas, which do not depend on Poisson's ratio, those of the middle lines.

// Walls t[0] and t[2] at the positive and negative end of axis 1, t[1] and t[3] at those of axis 2. Nodes in the middle
// of the outer sides.
beam_shape uneven_box_shape(double a, double b, const std::array<double, 4>& t);

// A flange below, one above, of which one may be missing (width 0), and the web between them; the nodes l above the
// bottom.
struct i_data {
  double l, depth, width_below, width_above, flange_below, flange_above, web;
};
beam_shape uneven_i_shape(const i_data& d);

// A T: the flange at the positive end of axis 2, the nodes l above the lower end of the web.
beam_shape t_shape(double width, double depth, double l, double flange, double web);

// Legs of lengths a along axis 1, t1 thick, and b along axis 2, t2 thick, over all. The nodes are where the middle
// lines of the legs meet.
beam_shape l_shape(double a, double b, double t1, double t2);

// A hollow regular hexagon with two corners on axis 1: outer radius of the corners, thickness of the wall.
beam_shape hexagon_shape(double radius, double wall);

// Any thin walls.
beam_shape walls_shape(const wall_section& walls);

// Outlines of the shapes (section_outlines.cpp), by the same data.
section_outline rectangle_outline(double a, double b);
section_outline ellipse_outline(double p, double q);
section_outline pipe_outline(double radius, double wall);
section_outline box_outline(double a, double b, const std::array<double, 4>& t);
section_outline i_outline(const i_data& d);
section_outline l_outline(double a, double b, double t1, double t2);
section_outline hexagon_outline(double radius, double wall);
section_outline walls_outline(const wall_section& walls);

// The points at which stresses are given, numbered as in Abaqus (section_points.cpp).
std::vector<section_point> rectangle_points(double a, double b);
std::vector<section_point> ellipse_points(double p, double q);
std::vector<section_point> pipe_points(double radius, double wall);
std::vector<section_point> box_points(double a, double b, const std::array<double, 4>& t);
std::vector<section_point> i_points(const i_data& d);
std::vector<section_point> t_points(double width, double depth, double l, double flange);
std::vector<section_point> l_points(double a, double b, double t1, double t2);
std::vector<section_point> hexagon_points(double radius, double wall);
std::vector<section_point> wall_points(const wall_section& walls);

}  // namespace solver::deck

#endif
