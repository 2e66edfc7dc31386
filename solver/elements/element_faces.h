// element_faces.h: what a surface is made of: faces of solids, sides and edges of shells and membranes, with the points
// at which loads on them are integrated.
#ifndef FINITES_SOLVER_ELEMENT_FACES_H
#define FINITES_SOLVER_ELEMENT_FACES_H

#include <array>
#include <string>
#include <vector>

#include "model/model.h"

namespace solver {

inline bool is_edge(int face) { return face > EDGE; }
inline bool is_side(int face) { return face >= BOTH_SIDES && face <= NEGATIVE_SIDE; }

// How many faces a solid or edges a plate has; and does the element have this face?
int face_count(const element& e);
bool has_face(const element& e, int face);

// Which face of this element lies in a face of the element of the deck, of which it is a part or the whole; 0: another
// part has it.
int face_of_part(const element& e, int face);

// "S1", "SPOS", "E1": as a deck writes it. Of BOTH_SIDES: "both sides".
std::string face_name(int face);

// Nodes of a face, as places in element::nodes. By the right hand round them the normal of a side is that of the
// element, and that of a face of a solid points into it (solid_faces.h).
std::vector<int> places_of_face(const element& e, int face);
std::vector<int> nodes_of_face(const element& e, int face);  // indices into model::nodes

// A point of integration: 2 x 2 Gauss points on a quadrilateral, the middles of the sides of a triangle, two Gauss
// points along an edge. They give the exact forces of a load that varies linearly in space.
struct face_point {
  std::array<double, 3> place{};
  std::array<double, 4> share{};  // linear or bilinear functions of the nodes in the order of places_of_face
  std::array<double, 3> area{};   // normal times area; of an edge the direction along it times length
};

std::vector<face_point> points_of_face(const model& m, const element& e, int face);

// The point of a face with the natural coordinates xi, eta: from -1 to 1 on a quadrilateral, the shares of corners 2
// and 3 on a triangle. Its area is that per unit of them.
face_point face_point_at(const model& m, const element& e, int face, double xi, double eta);

}  // namespace solver

#endif
