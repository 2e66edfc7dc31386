// section_sides.h: the elements on one side of a surface that cuts through a body.
//
// The elements that a surface names have a face in it; others on their side only touch it with an edge or a node, and
// exert forces on its nodes too. Round a node of the surface they are found from the named ones by going through faces
// (of plates: edges) that have this node and are not in the surface. Where this leads to the back of the surface, the
// surface ends inside the body, and the node has no two sides: the named elements alone count there.
#ifndef FINITES_SOLVER_SECTION_SIDES_H
#define FINITES_SOLVER_SECTION_SIDES_H

#include <vector>

#include "model/model.h"

namespace solver {

struct section_sides {
  std::vector<std::vector<int>> elements;  // by place in named_surface::nodes: those of its side, ascending
  int rim = -1;                            // a node at which the surface ends inside the body; -1: none
  int doubled = -1;                        // an element whose face another element of the surface has too; -1: none
};

// Of faces of solids the solids, of edges the shells and membranes.
section_sides sides_of(const model& m, const named_surface& s);

}  // namespace solver

#endif
