// plate_material_choice.h: the material behaviour of a plate element.
#ifndef FINITES_PLATE_MATERIAL_CHOICE_H
#define FINITES_PLATE_MATERIAL_CHOICE_H

#include <cstdint>

#include "element_calls/plate_call.h"

// MAT_BEHAV and the constants of PLATEELEM for the element of a call. A composite section brings its own unit weight.
void resolve_plate_material(PLATE_CALL& call);

// MAT_BEHAV as INFO_FINITES reports it. It differs from resolve_plate_material on purpose: it does not ask whether
// material nonlinearity is active, accepts every plastic switch except 0, and ignores the list of stiffness factors.
std::int32_t classify_plate_material(std::int32_t section_type, std::int32_t material_number, std::int32_t formulation,
                                     std::int32_t plastic_switch);

#endif
