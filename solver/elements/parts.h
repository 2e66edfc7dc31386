// parts.h: how quadratic elements of a deck are read as linear ones.
//
// A quadrilateral of eight nodes becomes four of four, a triangle of six nodes four of three, a beam two, a brick of
// twenty nodes eight, a wedge of fifteen eight wedges (or six bricks), a tetrahedron of ten four bricks. Nodes that
// this takes and the deck does not have lie in the middle of the element and of its faces, where the quadratic
// functions of the element put them; neighbours share those of a face.
//
// The parts of one element have its number, follow one another in model::elements and say in element::part which of
// them they are. They move on their own: a made node is a node like any other, tied to nothing.
#ifndef FINITES_SOLVER_ELEMENT_PARTS_H
#define FINITES_SOLVER_ELEMENT_PARTS_H

#include <array>
#include <vector>

#include "model/model.h"

namespace solver {

// Node numbers count from 1 as in a deck; those of made nodes go on after the nodes of the deck.
struct whole_edge {
  int from, to, middle;
};

struct whole_form {
  int nodes = 0;  // of the deck
  std::vector<whole_edge> edges;
  std::vector<std::vector<int>> sides;  // nodes of the deck: edges of plates, faces of solids, in the order of decks
  std::vector<std::vector<int>> made;   // from which nodes, corners first
  std::vector<std::vector<int>> parts;
};

const whole_form& form_of(whole_kind kind);

// The weights of the nodes of form_of(kind).made[which]: the element's functions in the middle of a face or element.
std::vector<double> weights_of_made(whole_kind kind, std::size_t which);

// The edge of a plate, or the face of a solid, of this element that lies in the edge or face `side` of the element of
// the deck; 0: none does, which says that another part has it. Of an element that is whole: `side` itself.
int side_of_part(const element& e, int side);

// How many faces the element of the deck has, of which this one is a part or the whole; 0 for other elements.
int face_count_of(const element& e);

// The nodes of an edge of a plate, from 1, as places in element::nodes.
std::vector<int> plate_edge(element_type type, int edge);

// The same model with a number for every node and element, as a deck of linear elements has: made nodes, and all parts
// of an element but the first, go on after the largest numbers.
model with_own_numbers(model m);

// Is this end of a member, 0 or 1, an end of the member of the deck?
inline bool is_outer_end(const element& e, std::size_t end) { return e.part == (end == 0 ? 0 : e.parts - 1); }

}  // namespace solver

#endif
