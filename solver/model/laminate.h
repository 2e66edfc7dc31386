// laminate.h: a shell section of several layers.
//
// Classical lamination theory (Reddy, Mechanics of Laminated Composite Plates and Shells, 2004): with the stiffness Q
// of a layer in plane stress, turned to the axes 1, 2 of the section,
//
//     A = sum of Q (z1 - z0),   D = sum of Q (z1^3 - z0^3) / 3,   N = A e,   M = D k,
//
// for layers from z0 to z1 above the mid surface. The order of strains is 11, 22, 12, the last an engineering strain.
#ifndef FINITES_SOLVER_LAMINATE_H
#define FINITES_SOLVER_LAMINATE_H

#include <array>
#include <vector>

namespace solver {

struct layer {
  int material = -1;  // index into model::materials
  double thickness = 0;
  double angle = 0;  // degrees, from axis 1 of the section to axis 1 of the material, about the normal
};

using plane_matrix = std::array<std::array<double, 3>, 3>;
using plane_vector = std::array<double, 3>;

// The library knows one orthotropic material for membrane and bending of an element. The stiffness of a laminate is the
// sum of several such elements in one place: those that carry membrane forces alone, and those that carry bending and
// transverse shear alone. Constants are those of a homogeneous section as thick as the laminate.
struct laminate_part {
  bool bends = false;  // else it carries membrane forces
  double angle = 0;    // degrees, from axis 1 of the section to axis 1 of the part
  double E1 = 0, E2 = 0, NU12 = 0, G12 = 0, G13 = 0, G23 = 0;
};

struct laminate {
  std::vector<layer> layers;              // from the bottom, along the normal
  plane_matrix flexibility_in_plane{};    // the inverse of A
  plane_matrix flexibility_in_bending{};  // the inverse of D
  plane_vector expansion{};               // strains per degree
  plane_vector bending_expansion{};       // curvatures per temperature gradient
  int first_part = 0;                     // index into model::laminate_parts
  int part_count = 0;
};

}  // namespace solver

#endif
