// engine.h: SHELL_TRI_THICK, the engine of kind 11 (thick shell).
#ifndef FINITES_TRI_THICK_ENGINE_H
#define FINITES_TRI_THICK_ENGINE_H

#include <cstdint>

#include "element_calls/elem_loads.h"
#include "finites/records.h"

// One operation on the element in PLATEELEM: the arguments of SHELL_TRI_THIN, without its membrane-only flag.
void SHELL_TRI_THICK(PLATEELEM_RECORD& EL, std::int32_t ident, std::int32_t op, const double* xyz,
                     const ELEM_LOADS& LOADS, const double* U, double* F, int geometric, const double* U_TOTAL,
                     double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES, double& area, double& volume,
                     double& weight, int& point_flag1, int& point_flag2, double& distance);

#endif
