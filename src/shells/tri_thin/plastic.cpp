// plastic.cpp: the thin triangle with the whole-section model.
#include "shells/tri_thin/plastic.h"

#include <algorithm>

#include "plate_material/section_element.h"
#include "plate_material/section_state.h"
#include "shared_records.h"
#include "shells/common/packed.h"
#include "shells/tri_thin/bending.h"
#include "shells/tri_thin/engine_steps.h"
#include "shells/tri_thin/forces.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/membrane.h"

namespace {

struct TRI_THIN_SECTION {
  static constexpr int NODES = 3, WIDTH = 6, MEMBRANE = 6, PLATE = 9;
  static constexpr const int (&MEMBRANE_DOF)[MEMBRANE] = TRI_MEMBRANE_DOF;
  static constexpr const int (&PLATE_DOF)[PLATE] = TRI_BENDING_DOF;

  static SURFACE_POINT point(int gp) { return tri_point_of(RULE_ELEMENT)(gp); }
  static SURFACE_POINT node(int n) { return tri_point_of(RULE_NODES)(n); }
  static const VECTOR<MEMBRANE>& u_membrane() { return TRI.U_MEMBRANE; }
  static const VECTOR<PLATE>& u_plate() { return TRI.U_BENDING; }
  static void extrapolate(const VECTOR<WIDTH> (&at_points)[SECTION_POINTS], VECTOR<WIDTH> (&at_nodes)[NODES]) {
    EXTRAP_TRI_6(at_points, at_nodes);
  }

  static void matrices(const SURFACE_POINT& s, SECTION_MATRICES<WIDTH, MEMBRANE, PLATE>& B) {
    TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B.m);
    DKT_BMATRIX(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B.p);
  }

  static SLOPES<3> slopes(const SURFACE_POINT& s) { return linear_slopes(s.g11, s.g12, s.g21, s.g22); }
};

}  // namespace

void KSTIF_TRI_THIN_PLAST(double* K) {
  std::fill_n(K, TRI_DOFS * TRI_DOFS, 0.0);
  section_stiffness<TRI_THIN_SECTION>(K);
  tri_set_drilling(K);
}

void KGEOM_TRI_THIN_PLAST(const double* points, double* K) { section_geometric_stiffness<TRI_THIN_SECTION>(points, K); }

void FINT_TRI_THIN_PLAST(const ELEM_LOADS& LOADS, double* f, int op) {
  std::fill_n(f, 24, 0.0);
  VECTOR<6> us_membrane;
  VECTOR<9> us_plate;
  tri_stored_displacements(us_membrane, us_plate);
  section_forces<TRI_THIN_SECTION>(op, us_membrane, us_plate, f);
  TRI_FINISH_FORCES(LOADS, op, f);
}

void RES_TRI_THIN_PLAST(const MATRIX<3, 3>& local, double* nodes, double* points) {
  section_results<TRI_THIN_SECTION>(local, nodes, points);
}
