// laminate_stiffness.h: the section of a laminate, and the parts of which the library can make it.
#ifndef FINITES_SOLVER_LAMINATE_STIFFNESS_H
#define FINITES_SOLVER_LAMINATE_STIFFNESS_H

#include <string>
#include <vector>

#include "model/model.h"

namespace solver {

constexpr double SHEAR_SHARE = 0.833333333333333;  // the library's shear area, by the thickness

// The thickness to which the constants of a part belong. The library's drilling term is proportional to E1 times the
// thickness; that of the laminate comes with its membrane. A part that bends is so thick, and so soft, that it has next
// to none.
inline double thickness_of(const laminate_part& part, double thickness) {
  return part.bends ? 1e3 * thickness : thickness;
}

struct laminate_section {
  laminate section;  // its parts follow here, not in the model
  std::vector<laminate_part> parts;
  material mean;        // of a homogeneous section with the same membrane stiffness, mass and expansion
  std::string refusal;  // why the library cannot hold it; empty: it can
};

laminate_section make_laminate(const std::vector<layer>& layers, const numbered<material>& materials,
                               shell_formulation formulation);

double thickness_of(const std::vector<layer>& layers);

// Stresses 11, 22, 12 of the top, the middle and the bottom in the axes of the section, from the forces N, the moments
// M, and the temperature of the mid surface and its gradient. Each is that of the layer that has this surface; in the
// middle between two layers that of the upper one.
std::array<plane_vector, 3> layer_stresses(const laminate& section, const numbered<material>& materials,
                                           const plane_vector& N, const plane_vector& M, double change,
                                           double gradient);

// At one face of a layer, z above the mid surface: stresses 11, 22, 12 in the axes of the section, and in those of the
// layer's material.
struct layer_face {
  double z = 0;
  plane_vector in_section{}, in_layer{};
};
struct layer_faces {
  layer_face bottom, top;
};

// Likewise of each layer, from the bottom.
std::vector<layer_faces> stresses_of_layers(const laminate& section, const numbered<material>& materials,
                                            const plane_vector& N, const plane_vector& M, double change,
                                            double gradient);

}  // namespace solver

#endif
