// solid_faces.h: the faces of solids and what a pressure on one of them does to its nodes.
#ifndef FINITES_SOLVER_SOLID_FACES_H
#define FINITES_SOLVER_SOLID_FACES_H

#include <array>
#include <vector>

#include "model/model.h"

namespace solver {

int solid_face_count(element_type type);

// Nodes of a face, numbered from 1 as in the decks of CalculiX and Abaqus, as places in element::nodes. By the right
// hand round them the normal points into the element.
std::vector<int> solid_face(element_type type, int face);

// Nodal forces of a unit pressure, which pushes towards the element, in the order of solid_face: consistent with linear
// functions on a triangle and bilinear ones on a quadrilateral, warped or not.
std::vector<std::array<double, 3>> unit_pressure_forces(const model& m, const element& e, int face);

}  // namespace solver

#endif
