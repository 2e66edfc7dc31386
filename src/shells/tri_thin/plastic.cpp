// plastic.cpp: the thin triangle with the whole-section model.
#include "shells/tri_thin/plastic.h"

#include <algorithm>

#include "plate_material/section_element.h"
#include "shells/common/packed.h"
#include "shells/tri_thin/engine_steps.h"
#include "shells/tri_thin/forces.h"
#include "shells/tri_thin/plate_kernel.h"

void KSTIF_TRI_THIN_PLAST(double* K) {
  std::fill_n(K, TRI_DOFS * TRI_DOFS, 0.0);
  section_stiffness(TRI_THIN_PLATE{EL, TRI, TRI_U}, K);
  tri_set_drilling(K);
}

void KGEOM_TRI_THIN_PLAST(const double* points, double* K) { section_geometric_stiffness(TRI_THIN_PLATE{EL, TRI, TRI_U}, points, K); }

void FINT_TRI_THIN_PLAST(const ELEM_LOADS& LOADS, double* f, int op) {
  std::fill_n(f, 24, 0.0);
  VECTOR<6> us_membrane;
  VECTOR<9> us_plate;
  tri_stored_displacements(us_membrane, us_plate);
  section_forces(TRI_THIN_PLATE{EL, TRI, TRI_U}, op, us_membrane, us_plate, f);
  TRI_FINISH_FORCES(LOADS, op, f);
}

void RES_TRI_THIN_PLAST(const MATRIX<3, 3>& local, double* nodes, double* points) {
  section_results(TRI_THIN_PLATE{EL, TRI, TRI_U}, local, nodes, points);
}
