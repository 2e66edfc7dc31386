// plate_material_choice.h: which kind a plate is, and which material behaviour it has.
#ifndef FINITES_PLATE_MATERIAL_CHOICE_H
#define FINITES_PLATE_MATERIAL_CHOICE_H

#include <cstdint>

#include "element_calls/plate_call.h"

// Element kind of a formulation code: thin for 1, membrane for 2, 3, 98, 99, thick for every other.
std::int32_t element_kind(bool three_nodes, std::int32_t formulation);

// ACTIVE_PARTS of a kind and a behaviour.
std::int32_t active_parts(std::int32_t kind, std::int32_t behav);

// MAT_BEHAV and the constants of PLATEELEM for the element of a call. A composite section brings its own unit weight.
void resolve_plate_material(PLATE_CALL& call);

// MAT_BEHAV as INFO_FINITES tells it. Differs from the resolution on purpose: it does not ask whether material
// nonlinearity is active, takes any plastic switch but 0, and knows no list of stiffness factors.
std::int32_t classify_plate_material(std::int32_t section_type, std::int32_t material_number, std::int32_t formulation,
                                     std::int32_t plastic_switch);

#endif
