// integration.h: integration rules of the solid elements.
#ifndef FINITES_SOLID_INTEGRATION_H
#define FINITES_SOLID_INTEGRATION_H

#include <cstdint>

#include "finites/views.hpp"
#include "solids/shapes.h"

// The rule flag that every solid routine passes. No routine of the library passes 1, which gives kind 21 the 27 points.
constexpr std::int32_t SOLID_RULE = 0;

// NP := the number of points of a kind; an unknown kind leaves it unchanged.
void SOLID_GAUSS_COUNT(std::int32_t KIND, std::int32_t RULE, std::int32_t& NP);

// Points and weights, NP of them. Several weights differ from those of textbooks: they are part of the results
// (docs/decisions.md).
void SOLID_GAUSS_RULE(std::int32_t KIND, std::int32_t RULE, std::int32_t NP, SOLID_STATIONS& XI3,
                      VECTOR<SOLID_ROOM>& W);

#endif
