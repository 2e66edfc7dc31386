// quadratic.h: quadratic elements, which become linear ones as they are read (elements/parts.h).
#ifndef FINITES_SOLVER_DECK_QUADRATIC_H
#define FINITES_SOLVER_DECK_QUADRATIC_H

#include <array>
#include <map>
#include <string>
#include <vector>

#include "model/model.h"

namespace solver::deck {

struct build;
struct card;
class data_fields;

// Elements of one name that are read in parts.
struct quadratic_type {
  std::string name;  // as the deck writes it: S8R
  int elements = 0, parts = 0;
  element_type type = element_type::S4;  // of the parts
  int line = 0, file = 0;                // of the first card
};

struct quadratic_elements {
  bool refine = false;                         // solids are divided too
  std::map<std::array<int, 8>, int> in_faces;  // made nodes by the nodes of their face, ascending, then -1
  std::vector<quadratic_type> types;           // that of the last card is the last
};

// read_quadratic.cpp. A card of quadratic elements is opened; each of its elements is checked, then added.
void open_quadratic(build& b, const card& c, element_type type, whole_kind& kind);
void refuse_quadratic(const build& b, const card& c);  // quadratic elements that are not read
void check_whole(const build& b, const data_fields& row, const element& e, whole_kind kind);
void add_parts(build& b, const element& whole, whole_kind kind);
void note_quadratic(build& b);

// made_nodes.cpp: what the deck gives at nodes, at the nodes that were made.
void complete_made_nodes(build& b);

}  // namespace solver::deck

#endif
