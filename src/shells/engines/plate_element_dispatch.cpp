// plate_element_dispatch.cpp: PLATE_ELEMENT_DISPATCH, which chooses the engine of a kind. A membrane is its thin engine
// with membrane_only = 1.
#include "shells/engines/plate_element_dispatch.h"

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/engines/engines.h"

void PLATE_ELEMENT_DISPATCH(PLATEELEM_RECORD& EL, std::int32_t ident, std::int32_t kind, std::int32_t op,
                            const double* xyz, const ELEM_LOADS& LOADS, const double* U, double* F,
                            const VECTOR<4, std::int32_t>& /*node_list*/, int geometric, const double* U_TOTAL,
                            double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES, double& area,
                            double& volume, double& weight, int& point_flag1, int& point_flag2, double& distance,
                            const PLATE_STATE_IN_USE& state, int leading) {
  const int membrane_only = kind == KIND_TRI_MEMBRANE || kind == KIND_QUAD_MEMBRANE ? 1 : 0;
  switch (kind) {
    case KIND_TRI_THIN:
    case KIND_TRI_MEMBRANE:
      SHELL_TRI_THIN(EL, ident, op, xyz, LOADS, U, F, geometric, membrane_only, U_TOTAL, matrix, nodes, points, AXES,
                     area, volume, weight, point_flag1, point_flag2, distance, state, leading);
      break;
    case KIND_QUAD_THIN:
    case KIND_QUAD_MEMBRANE:
      SHELL_QUAD_THIN(EL, ident, op, xyz, LOADS, U, F, geometric, membrane_only, U_TOTAL, matrix, nodes, points, AXES,
                      area, volume, weight, point_flag1, point_flag2, distance, state, leading);
      break;
    case KIND_TRI_THICK:
      SHELL_TRI_THICK(EL, ident, op, xyz, LOADS, U, F, geometric, U_TOTAL, matrix, nodes, points, AXES, area, volume,
                      weight, point_flag1, point_flag2, distance, state, leading);
      break;
    case KIND_QUAD_THICK:
      SHELL_QUAD_THICK(EL, ident, op, xyz, LOADS, U, F, geometric, U_TOTAL, matrix, nodes, points, AXES, area, volume,
                       weight, point_flag1, point_flag2, distance, state, leading);
      break;
    default: break;
  }
}
