// integration.h: integration rules of the solid elements.
#ifndef FINITES_SOLID_INTEGRATION_H
#define FINITES_SOLID_INTEGRATION_H

#include <cstdint>

#include "finites/views.hpp"
#include "solids/shapes.h"

// The rule flag that every solid routine passes; 1 gives kind 21 its 27 points.
constexpr std::int32_t SOLID_RULE = 0;

// NP := the points of a kind; another kind leaves it.
void SOLID_GAUSS_COUNT(std::int32_t KIND, std::int32_t RULE, std::int32_t& NP);

// Points and weights, NP of them. Several weights are not what a textbook has: they are part of the results.
void SOLID_GAUSS_RULE(std::int32_t KIND, std::int32_t RULE, std::int32_t NP, SOLID_STATIONS& XI3,
                      VECTOR<SOLID_ROOM>& W);

#endif
