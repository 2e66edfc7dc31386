// tri_thin.cpp: SHELL_TRI_THIN.
#include "shells/engines/tri_thin.h"

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/engines/engines.h"
#include "shells/engines/plate_engine.h"

void SHELL_TRI_THIN(PLATEELEM_RECORD& EL, std::int32_t /*ident*/, std::int32_t op, const double* xyz,
                    const ELEM_LOADS& LOADS, const double* U, double* F, int geometric, int membrane_only,
                    const double* /*U_TOTAL*/, double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES,
                    double& area, double& volume, double& weight, int& point_flag1, int& point_flag2, double& distance,
                    const PLATE_STATE_IN_USE& state, int leading) {
  run_operation(TRI_THIN{EL, LOADS, membrane_only},
                {op, xyz, U, F, geometric, matrix, nodes, points, AXES, area, volume, weight, point_flag1, point_flag2,
                 distance, state, leading});
}
