// hints.h: what a user can do about a keyword, a parameter or an element type that this solver refuses.
#ifndef FINITES_SOLVER_DECK_HINTS_H
#define FINITES_SOLVER_DECK_HINTS_H

#include <string>

namespace solver::deck {

// The sentence that refuses a keyword (squeezed: *HEATTRANSFER): why, and what to do where there is something.
std::string refusal_of(const std::string& keyword);

// Null where there is nothing to say.
const char* hint_for_parameter(const std::string& keyword, const std::string& parameter);
const char* hint_for_type(const std::string& type);

}  // namespace solver::deck

#endif
