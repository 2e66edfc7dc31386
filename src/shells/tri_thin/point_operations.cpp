// point_operations.cpp: point location and point load of the three-node elements.
#include "shells/tri_thin/point_operations.h"

#include <algorithm>
#include <cmath>

#include "constants.h"
#include "shells/common/frame.h"
#include "shells/common/groups.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/loads.h"
#include "shells/tri_thin/shape.h"

namespace {

// The point of LOADS in element axes, from node 1.
VECTOR<3> local_point(const ELEM_LOADS& LOADS, const double* xyz) {
  const VECTOR<3> d = difference(node_of(&LOADS(LOAD_POINT), 1), node_of(xyz, 1));
  VECTOR<3> p;
  vector_to_local(TRI.AXES, d.data(), p.data());
  return p;
}

double distance_from_plane(const VECTOR<3>& P, const double* xyz) {
  const VECTOR<3> X1 = node_of(xyz, 1);
  const VECTOR<3> n = cross(difference(node_of(xyz, 2), X1), difference(node_of(xyz, 3), X1));
  const double d = -(n(1) * X1(1) + n(2) * X1(2) + n(3) * X1(3));
  const double r = std::pow(n(1) * n(1) + n(2) * n(2) + n(3) * n(3), 0.5);
  return (n(1) * P(1) + n(2) * P(2) + n(3) * P(3) + d) / r;
}

}  // namespace

void TRI_POINT_LOCATION(const ELEM_LOADS& LOADS, const double* xyz, int& point_flag1, int& point_flag2,
                        double& distance) {
  distance = distance_from_plane(node_of(&LOADS(LOAD_POINT), 1), xyz);

  MATRIX<3, 3> local;
  TRI_LOCAL_FRAME(xyz, local);
  const VECTOR<3> p = local_point(LOADS, xyz);
  VECTOR<3> dx;
  VECTOR<3> dy;
  VECTOR<3> length;
  double longest = 0.0;
  for (int n = 1; n <= 3; ++n) {
    const int next = n % 3 + 1;
    dx(n) = local(1, next) - local(1, n);
    dy(n) = local(2, next) - local(2, n);
    length(n) = std::sqrt(dx(n) * dx(n) + dy(n) * dy(n));
    if (length(n) > longest) longest = length(n);
  }
  point_flag2 = distance / longest <= OUT_OF_PLANE_LIMIT ? 0 : 1;

  point_flag1 = 0;
  for (int n = 1; n <= 3; ++n) {
    const double qx = p(1) - local(1, n);
    const double qy = p(2) - local(2, n);
    const double sd = (-dy(n) * qx + dx(n) * qy) / length(n);
    if (sd < -INSIDE_LIMIT) point_flag1 = 1;
  }
}

void TRI_POINT_LOAD(const ELEM_LOADS& LOADS, const double* xyz, int mode, int membrane_only, double* f) {
  MATRIX<3, 3> local;
  TRI_LOCAL_FRAME(xyz, local);
  const VECTOR<3> P = local_point(LOADS, xyz);
  const double a = local(1, 2) - local(1, 1);
  const double b = local(1, 3) - local(1, 1);
  const double c = local(2, 2) - local(2, 1);
  const double d = local(2, 3) - local(2, 1);
  const double det = a * d - b * c;
  const double L2 = (d * P(1) - b * P(2)) / det;
  const double L3 = (-c * P(1) + a * P(2)) / det;
  const double L[3] = {1.0 - L2 - L3, L2, L3};

  VECTOR<3> F_g;
  vector_to_global(TRI.AXES, &LOADS(LOAD_FORCE_LOCAL), F_g.data());
  for (int i = 1; i <= 3; ++i) F_g(i) += LOADS(LOAD_FORCE + i - 1);

  std::fill_n(f, 18, 0.0);
  if (mode == LUMPED_LOADS) {
    for (int n = 0; n < 3; ++n) {
      for (int i = 0; i < 3; ++i) f[6 * n + i] = L[n] * F_g(i + 1);
    }
    return;
  }

  VECTOR<3> F_l;
  vector_to_local(TRI.AXES, F_g.data(), F_l.data());
  for (int n = 0; n < 3; ++n) {
    f[6 * n] = L[n] * F_l(1);
    f[6 * n + 1] = L[n] * F_l(2);
  }
  TRI_GEOMETRY(local);
  const VECTOR<4> to_rotations = rotation_coefficients(TRI.G11, TRI.G12, TRI.G21, TRI.G22, TRI.TWO_AREA);
  VECTOR<9> w;
  TRI_W_SHAPE(L2, L3, w);
  TRI_W_LOAD(w, to_rotations, F_l(3), f);
  groups_to_global(TRI.AXES, 6, f);
  if (membrane_only == 1) clear_rotations(3, f);
}
