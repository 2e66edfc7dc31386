// point_operations.cpp: point location and point load of the three-node elements.
//
// The area coordinates of the point P = (p1, p2) in element axes, from p1 = a L2 + b L3 and p2 = c L2 + d L3:
//
//     L2 = (d p1 - b p2) / det,    L3 = (-c p1 + a p2) / det,    L1 = 1 - L2 - L3,    det = a d - b c
//
// and the nodal loads of the force F in element axes:
//
//     f(u_i) = L_i F1,    f(v_i) = L_i F2,    f(w, theta x, theta y of i) = F3 (functions of i at the point)
//
// Mirror: shells/quadrilateral/point_operations.cpp.
#include "shells/triangle/point_operations.h"

#include <algorithm>

#include "shells/common/frame.h"
#include "shells/common/groups.h"
#include "shells/common/packed.h"
#include "shells/common/point_location.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/loads.h"
#include "shells/triangle/shape.h"

void TRI_POINT_LOCATION(TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, const double* xyz, int& point_flag1,
                        int& point_flag2, double& distance) {
  distance = distance_from_plane(point_of(LOADS), xyz);
  MATRIX<3, 3> local;
  TRI_LOCAL_FRAME(xyz, TRI, local);
  locate_point(local_point(LOADS, TRI.AXES, node_of(xyz, 1)), local, distance, point_flag1, point_flag2);
}

// A membrane keeps f(w) but no moments.
void TRI_POINT_LOAD(TRIANGLE_GEOMETRY& TRI, const ELEM_LOADS& LOADS, const double* xyz, int mode, int membrane_only,
                    double* f) {
  MATRIX<3, 3> local;
  TRI_LOCAL_FRAME(xyz, TRI, local);
  const VECTOR<3> P = local_point(LOADS, TRI.AXES, node_of(xyz, 1));
  const double a = local(1, 2) - local(1, 1);
  const double b = local(1, 3) - local(1, 1);
  const double c = local(2, 2) - local(2, 1);
  const double d = local(2, 3) - local(2, 1);
  const double det = a * d - b * c;
  const double L2 = (d * P(1) - b * P(2)) / det;
  const double L3 = (-c * P(1) + a * P(2)) / det;
  const double L[3] = {1.0 - L2 - L3, L2, L3};

  const VECTOR<3> F_g = global_force(LOADS, TRI.AXES);
  std::fill_n(f, TRI_DOFS, 0.0);
  if (mode == LUMPED_LOADS) {
    for (int n = 0; n < 3; ++n) {
      for (int i = 0; i < 3; ++i) f[6 * n + i] = L[n] * F_g(i + 1);
    }
    return;
  }

  const VECTOR<3> F_l = to_local(TRI.AXES, F_g);
  for (int n = 0; n < 3; ++n) {
    f[6 * n] = L[n] * F_l(1);
    f[6 * n + 1] = L[n] * F_l(2);
  }
  TRI_GEOMETRY(local, TRI);
  const VECTOR<4> to_rotations = rotation_coefficients(TRI.G11, TRI.G12, TRI.G21, TRI.G22, TRI.TWO_AREA);
  VECTOR<9> w;
  TRI_W_SHAPE(L2, L3, w);
  TRI_W_LOAD(w, to_rotations, F_l(3), f);
  groups_to_global(TRI.AXES, TRI_GROUPS, f);
  if (membrane_only == 1) clear_rotations(3, f);
}
