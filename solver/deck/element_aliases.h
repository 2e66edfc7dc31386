// element_aliases.h: element types of other programs that are read as one of this solver's.
#ifndef FINITES_SOLVER_DECK_ELEMENT_ALIASES_H
#define FINITES_SOLVER_DECK_ELEMENT_ALIASES_H

#include <string>

namespace solver::deck {

struct element_alias {
  const char* name;
  const char* becomes;
  const char* why;      // for a note: what differs
  bool thin = false;    // Kirchhoff's plate, whatever the section says
  bool planar = false;  // it lives in a plane z = constant
};

// Null for a type that is read as it is, or not at all.
const element_alias* find_alias(const std::string& type);

}  // namespace solver::deck

#endif
