// page_skin.h: what is seen of a model: plates, the outward skin of solids, and the edges that outline both.
#ifndef FINITES_SOLVER_PAGE_SKIN_H
#define FINITES_SOLVER_PAGE_SKIN_H

#include <array>
#include <vector>

#include "model/model.h"

namespace solver {

// A plate, or a face of a solid that no other solid has. By the right hand round the corners the normal of a plate is
// its own, and that of a face of a solid points outwards.
struct page_face {
  int element = 0;
  std::vector<int> corners;  // places in element::nodes
};

// Plates in the order of the elements, and with them the faces of solids.
std::vector<page_face> faces_of_page(const model& m);

// Pairs of nodes: edges of one face alone, or of more than two, and those at which two faces meet at an angle. Faces
// of plates and of solids are looked at apart from one another. Then springs and links between nodes, and where
// `members` is set all other members too.
std::vector<std::array<int, 2>> edges_of_page(const model& m, const std::vector<page_face>& faces, bool members);

}  // namespace solver

#endif
