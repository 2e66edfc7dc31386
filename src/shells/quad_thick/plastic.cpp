// plastic.cpp: the thick quadrilateral with the whole-section model.
#include "shells/quad_thick/plastic.h"

#include <algorithm>

#include "finites/records.h"
#include "plate_material/section_element.h"
#include "shells/common/packed.h"
#include "shells/quad_thick/plate_kernel.h"
#include "shells/quad_thin/engine_steps.h"
#include "shells/quad_thin/forces.h"
#include "shells/quad_thin/geometry.h"

void KSTIF_QUAD_THICK_PLAST(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                            const MATRIX<3, 4>& local, double* K) {
  std::fill_n(K, QUAD_DOFS * QUAD_DOFS, 0.0);
  section_stiffness(QUAD_THICK_PLATE{EL, QUAD, QUAD_U}, K);
  quad_add_drilling(EL, local, K);
}

void KGEOM_QUAD_THICK_PLAST(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                            const double* points, double* K) {
  section_geometric_stiffness(QUAD_THICK_PLATE{EL, QUAD, QUAD_U}, points, K);
}

void FINT_QUAD_THICK_PLAST(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                           const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, double* f, int op) {
  std::fill_n(f, QUAD_DOFS, 0.0);
  VECTOR<8> us_membrane;
  VECTOR<12> us_plate;
  quad_stored_displacements(EL, QUAD, us_membrane, us_plate);
  section_forces(QUAD_THICK_PLATE{EL, QUAD, QUAD_U}, op, us_membrane, us_plate, f);
  QUAD_FINISH_FORCES(EL, QUAD, QUAD_U, LOADS, local, op, f);
}

void RES_QUAD_THICK_PLAST(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                          const MATRIX<3, 4>& local, double* nodes, double* points) {
  section_results(QUAD_THICK_PLATE{EL, QUAD, QUAD_U}, local, nodes, points);
}
