// beam_shapes.h: constants of the shapes of a beam's cross-section, about its principal axes 1 and 2.
#ifndef FINITES_SOLVER_DECK_BEAM_SHAPES_H
#define FINITES_SOLVER_DECK_BEAM_SHAPES_H

namespace solver::deck {

struct beam_shape {
  double area = 0;
  double I11 = 0, I22 = 0;                        // of bending about axis 1, about axis 2
  double torsion = 0;                             // J
  double shear_factor_1 = 0, shear_factor_2 = 0;  // shear area by area, of forces along axis 1, along axis 2
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

}  // namespace solver::deck

#endif
