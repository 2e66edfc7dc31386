// plastic.cpp: the thick quadrilateral with the whole-section model.
#include "shells/quad_thick/plastic.h"

#include <algorithm>

#include "plate_material/section_element.h"
#include "plate_material/section_state.h"
#include "shared_records.h"
#include "shells/common/packed.h"
#include "shells/quad_thick/bending.h"
#include "shells/quad_thick/shear.h"
#include "shells/quad_thin/engine_steps.h"
#include "shells/quad_thin/forces.h"
#include "shells/quad_thin/geometry.h"
#include "shells/quad_thin/membrane.h"

namespace {

struct QUAD_THICK_SECTION {
  static constexpr int NODES = 4, WIDTH = 8, MEMBRANE = 8, PLATE = 12;
  static constexpr const int (&MEMBRANE_DOF)[MEMBRANE] = QUAD_MEMBRANE_DOF;
  static constexpr const int (&PLATE_DOF)[PLATE] = QUAD_BENDING_DOF;

  static SURFACE_POINT point(int gp) { return quad_point_of(RULE_FULL)(gp); }
  static SURFACE_POINT node(int n) { return quad_point_of(RULE_NODES)(n); }
  static const VECTOR<MEMBRANE>& u_membrane() { return QUAD.U_MEMBRANE; }
  static const VECTOR<PLATE>& u_plate() { return QUAD.U_BENDING; }
  static void extrapolate(const VECTOR<WIDTH> (&at_points)[SECTION_POINTS], VECTOR<WIDTH> (&at_nodes)[NODES]) {
    EXTRAP_QUAD_8(at_points, at_nodes);
  }

  static void matrices(const SURFACE_POINT& s, SECTION_MATRICES<WIDTH, MEMBRANE, PLATE>& B) {
    QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B.m);
    MATRIX<3, 12> bending;
    MATRIX<2, 12> shear;
    B_BEND_QUAD(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, bending);
    B_SHEAR_QUAD(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, shear);
    stack_plate_rows(bending, shear, B.p);
  }

  static SLOPES<4> slopes(const SURFACE_POINT& s) { return bilinear_slopes(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22); }
};

}  // namespace

void KSTIF_QUAD_THICK_PLAST(const MATRIX<3, 4>& local, double* K) {
  std::fill_n(K, QUAD_DOFS * QUAD_DOFS, 0.0);
  section_stiffness<QUAD_THICK_SECTION>(K);
  quad_set_drilling(local, K);
}

void KGEOM_QUAD_THICK_PLAST(const double* points, double* K) {
  section_geometric_stiffness<QUAD_THICK_SECTION>(points, K);
}

void FINT_QUAD_THICK_PLAST(const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, double* f, int op) {
  std::fill_n(f, QUAD_DOFS, 0.0);
  VECTOR<8> us_membrane;
  VECTOR<12> us_plate;
  quad_stored_displacements(us_membrane, us_plate);
  section_forces<QUAD_THICK_SECTION>(op, us_membrane, us_plate, f);
  QUAD_FINISH_FORCES(LOADS, local, op, f);
}

void RES_QUAD_THICK_PLAST(const MATRIX<3, 4>& local, double* nodes, double* points) {
  section_results<QUAD_THICK_SECTION>(local, nodes, points);
}
