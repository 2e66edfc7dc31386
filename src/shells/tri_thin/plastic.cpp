// plastic.cpp: the thin triangle with the whole-section model.
#include "shells/tri_thin/plastic.h"

#include <algorithm>

#include "finites/records.h"
#include "plate_material/section_element.h"
#include "shells/common/packed.h"
#include "shells/tri_thin/engine_steps.h"
#include "shells/tri_thin/forces.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/plate_kernel.h"

void KSTIF_TRI_THIN_PLAST(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                          double* K) {
  std::fill_n(K, TRI_DOFS * TRI_DOFS, 0.0);
  section_stiffness(TRI_THIN_PLATE{EL, TRI, TRI_U}, K);
  tri_set_drilling(EL, TRI, K);
}

void KGEOM_TRI_THIN_PLAST(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                          const double* points, double* K) {
  section_geometric_stiffness(TRI_THIN_PLATE{EL, TRI, TRI_U}, points, K);
}

void FINT_TRI_THIN_PLAST(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                         const ELEM_LOADS& LOADS, double* f, int op) {
  std::fill_n(f, 24, 0.0);
  VECTOR<6> us_membrane;
  VECTOR<9> us_plate;
  tri_stored_displacements(EL, TRI, us_membrane, us_plate);
  section_forces(TRI_THIN_PLATE{EL, TRI, TRI_U}, op, us_membrane, us_plate, f);
  TRI_FINISH_FORCES(EL, TRI, TRI_U, LOADS, op, f);
}

void RES_TRI_THIN_PLAST(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                        const MATRIX<3, 3>& local, double* nodes, double* points) {
  section_results(TRI_THIN_PLATE{EL, TRI, TRI_U}, local, nodes, points);
}
