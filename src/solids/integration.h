// integration.h: integration rules of the solid elements.
#ifndef FINITES_SOLID_INTEGRATION_H
#define FINITES_SOLID_INTEGRATION_H

#include <cstdint>

#include "finites/views.hpp"
#include "solids/shapes.h"

// The usual rule; 1 gives kind 21 the 27 points. The library has the points of the linear kinds from tables
// (linear_kinds.h), so that only tests call the two routines below: for the quadratic kinds, and to compare the tables.
constexpr std::int32_t SOLID_RULE = 0;

// NP := the number of points of a kind; an unknown kind leaves it unchanged.
void SOLID_GAUSS_COUNT(std::int32_t KIND, std::int32_t RULE, std::int32_t& NP);

// Points and weights, NP of them. Several weights differ from those of textbooks: they are part of the results
// (docs/decisions.md).
void SOLID_GAUSS_RULE(std::int32_t KIND, std::int32_t RULE, std::int32_t NP, SOLID_STATIONS& XI3,
                      VECTOR<SOLID_ROOM>& W);

#endif
