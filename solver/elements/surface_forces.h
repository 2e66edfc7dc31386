// surface_forces.h: nodal forces of tractions on faces, sides and edges.
//
// Forces are consistent with linear or bilinear displacements of the face: F(a) = integral of N(a) t dA. They act on
// the nodes of a shell, also where its mid surface lies beside them.
//
// An edge has three directions: along it, from its first node to its second by the order of the nodes of the element;
// the normal of the element; and inwards, normal cross along.
#ifndef FINITES_SOLVER_SURFACE_FORCES_H
#define FINITES_SOLVER_SURFACE_FORCES_H

#include <array>
#include <vector>

#include "model/model.h"

namespace solver {

struct edge_axes {
  std::array<double, 3> along{}, normal{}, inward{};  // unit vectors
  double length = 0;
};
edge_axes axes_of_edge(const model& m, const element& e, int face);

// Does a shear traction in this direction have a projection on the face?
bool has_projection(const model& m, const element& e, int face, const std::array<double, 3>& direction);

// Adds to the nodal loads, by degree of freedom. Kinds of load: HYDROSTATIC to EDGE_MOMENT.
//
//   HYDROSTATIC      a pressure onto the face or side: magnitude (z0 - z) / (z0 - z1), z0 and z1 from `origin`; none
//                    where this ratio is negative, above the surface of the liquid
//   EDGE_NORMAL      inwards       EDGE_SHEAR  along the edge
//   EDGE_TRANSVERSE  against the normal of the element
//   EDGE_MOMENT      about the direction along the edge, by the right hand
void add_surface_forces(const model& m, const element_load& card, std::vector<double>& nodal_load);

}  // namespace solver

#endif
