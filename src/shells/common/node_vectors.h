// node_vectors.h: displacements and forces of the nodes of a flat element, component by component in the order in
// which its fields need them.
//
//     u, v, w        in element axes
//     beta x, beta y the rotations of the normal: beta x = theta y, beta y = -theta x
//     theta z        the drilling rotation
//
// AXES(a, i) is the component i of the local axis a (groups.h).
#ifndef FINITES_NODE_VECTORS_H
#define FINITES_NODE_VECTORS_H

#include "common/lanes.h"
#include "finites/fields.h"
#include "finites/views.hpp"

// x and y of element axes side by side, by global components.
struct PLANE_AXES {
  LANES uv[3];    // (AXES(1, i), AXES(2, i))
  LANES beta[3];  // (AXES(2, i), -AXES(1, i))
  double normal[3];

  explicit PLANE_AXES(const MATRIX<3, 3>& AXES) {
    for (int i = 0; i < 3; ++i) {
      uv[i] = LANES{AXES(1, i + 1), AXES(2, i + 1)};
      beta[i] = turned(uv[i]);
      normal[i] = AXES(3, i + 1);
    }
  }
};

// Displacements of the nodes, or the forces on them: the force on beta x is the moment about y, that on beta y minus
// the moment about x.
template <int NODES>
struct NODE_VECTORS {
  LANES uv[NODES], beta[NODES];
  double w[NODES], theta_z[NODES];
};

namespace node_vectors {

inline LANES in_plane(const LANES (&axes)[3], const double* global) {
  return axes[0] * both(global[0]) + axes[1] * both(global[1]) + axes[2] * both(global[2]);
}

inline double along(const double (&axis)[3], const double* global) {
  return axis[0] * global[0] + axis[1] * global[1] + axis[2] * global[2];
}

// plane(i) . (components in the plane) + normal(i) times the component along the normal
inline void set_global(const LANES (&plane)[3], const double (&normal)[3], LANES in_plane, double out_of_plane,
                       double* global) {
  for (int i = 0; i < 3; ++i) global[i] = dot(plane[i], in_plane) + normal[i] * out_of_plane;
}

}  // namespace node_vectors

// From the displacements U(6 NODES) in global axes.
template <int NODES>
inline NODE_VECTORS<NODES> to_node_vectors(const PLANE_AXES& axes, const double* U) {
  NODE_VECTORS<NODES> n;
  for (int i = 0; i < NODES; ++i) {
    const double* const u = U + 6 * i;
    n.uv[i] = node_vectors::in_plane(axes.uv, u);
    n.w[i] = node_vectors::along(axes.normal, u);
    n.beta[i] = node_vectors::in_plane(axes.beta, u + 3);
    n.theta_z[i] = node_vectors::along(axes.normal, u + 3);
  }
  return n;
}

// f(6 NODES) := the forces in global axes.
template <int NODES>
inline void set_global_forces(const PLANE_AXES& axes, const NODE_VECTORS<NODES>& n, double* f) {
  for (int i = 0; i < NODES; ++i) {
    node_vectors::set_global(axes.uv, axes.normal, n.uv[i], n.w[i], f + 6 * i);
    node_vectors::set_global(axes.beta, axes.normal, n.beta[i], n.theta_z[i], f + 6 * i + 3);
  }
}

// f(6 NODES) := the forces in element axes.
template <int NODES>
inline void set_element_forces(const NODE_VECTORS<NODES>& n, double* f) {
  for (int i = 0; i < NODES; ++i) {
    double* const at = f + 6 * i;
    store_lanes(at, n.uv[i]);
    at[2] = n.w[i];
    at[3] = -n.beta[i][1];
    at[4] = n.beta[i][0];
    at[5] = n.theta_z[i];
  }
}

// Operation 33 returns forces in element axes, operation 3 in global axes.
template <int NODES>
inline void set_forces(int op, const PLANE_AXES& axes, const NODE_VECTORS<NODES>& n, double* f) {
  if (op == OP_FORCES_COMMIT) {
    set_element_forces(n, f);
  } else {
    set_global_forces(axes, n, f);
  }
}

#endif
