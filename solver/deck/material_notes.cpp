// material_notes.cpp: cards of a material that say nothing about elastic statics and vibrations.
#include <algorithm>
#include <iterator>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

namespace {

struct idle_card {
  const char* keyword;
  const char* why;
};

constexpr idle_card CARDS[] = {
    {"*CONDUCTIVITY", "heat does not flow here: temperatures are those of *TEMPERATURE"},
    {"*SPECIFIC HEAT", "heat does not flow here: temperatures are those of *TEMPERATURE"},
    {"*LATENT HEAT", "heat does not flow here: temperatures are those of *TEMPERATURE"},
    {"*ELECTRICAL CONDUCTIVITY", "no current flows here"},
    {"*DAMPING", "steps with *STATIC, *BUCKLE and *FREQUENCY are those of the structure without damping"},
    {"*USER DEFINED FIELD", "constants depend on temperature alone"},
};

}  // namespace

void note_material_card(build& b, const card& c) {
  const auto* const found = std::find_if(std::begin(CARDS), std::end(CARDS), [&](const idle_card& each) {
    return squeezed(each.keyword) == squeezed(c.keyword);
  });
  b.note(c, std::string("the card has no effect: ") + found->why);
}

}  // namespace solver::deck
