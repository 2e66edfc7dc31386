// check_plate_shape.cpp: the nodes of a plate, where its offsets put them: sides, area, corners, warp.
#include <algorithm>
#include <cmath>

#include "finites/fields.h"
#include "plain_calls/checks/check_plate.h"
#include "plain_calls/checks/check_vectors.h"

namespace {

constexpr double MOST_WARP = 0.05;  // of the longest side

// The corner of the element: the node, less its offset.
VECTOR3 corner(const CHECK& check, const CHECKED_PLATE& p, int node) {
  const std::int64_t ptr = p.record->NODE_PTR(node);
  VECTOR3 x = node_at(check.A, ptr);
  if (check.A.INTEGER(p.entry.start + OFFSET_SWITCH) <= 0) return x;
  const bool by_node = ALLOCATED(SOLANAELEM.PLATE_OF_ELEM);
  double* const at[3] = {&x.x, &x.y, &x.z};
  for (int i = 0; i < 3; ++i) {
    *at[i] -= by_node ? p.record->NODE_OFFSETS(node, i + 1) : check.A(p.entry.start + COMMON_OFFSET + i);
  }
  return x;
}

// False where a node block is missing or a corner is not finite.
bool read_corners(CHECK& check, const CHECKED_PLATE& p, int count, VECTOR3* X) {
  bool read = true;
  for (int m = 1; m <= count; ++m) {
    const SENTENCE name = SENTENCE() << "NODE_PTR(" << std::int64_t{m} << ") of PLATE_RECORDS(" << std::int64_t{p.plate}
                                     << ")";
    const SUBJECT pointer{name, static_cast<double>(p.record->NODE_PTR(m))};
    if (!check.has_block(pointer, NODE_X + 2, "node block")) {
      read = false;
      continue;
    }
    X[m - 1] = corner(check, p, m);
    if (finite(X[m - 1])) continue;
    check.find(ERROR, FINITES_FOUND_NOT_FINITE,
               SENTENCE() << "a coordinate or offset of node " << std::int64_t{m} << ", A(ptr + NODE_X) = A("
                          << std::int64_t{p.record->NODE_PTR(m)} + NODE_X << "), is NaN or infinite: so is the matrix");
    read = false;
  }
  return read;
}

bool has_coincident_nodes(CHECK& check, const VECTOR3* X, int count, double longest) {
  bool found = false;
  for (int a = 0; a < count; ++a) {
    for (int b = a + 1; b < count; ++b) {
      if (size(X[b] - X[a]) > TINY * longest) continue;
      check.find(ERROR, FINITES_FOUND_COINCIDENT_NODES,
                 SENTENCE() << "nodes " << std::int64_t{a} + 1 << " and " << std::int64_t{b} + 1
                            << " coincide: matrices are NaN or infinite; a quadrilateral with a side of no length is a "
                               "triangle of three nodes");
      found = true;
    }
  }
  return found;
}

// The Jacobian at each corner, of the projection along z: the cross product of the sides that leave it.
void check_corners(CHECK& check, const VECTOR3* X, const VECTOR3& z, double longest) {
  for (int c = 0; c < 4; ++c) {
    const double j = dot(cross(X[(c + 1) % 4] - X[c], X[(c + 3) % 4] - X[c]), z);
    if (j > TINY * longest * longest) continue;
    check.find(WARNING, FINITES_FOUND_FOLDED,
               SENTENCE() << "the corner at node " << std::int64_t{c} + 1
                          << " is straight or re-entrant, or the nodes do not go round the element: the stiffness is "
                             "wrong; order the nodes round it, or cut it into triangles");
    return;
  }
  const double height = std::fabs(dot(X[2] - X[0], z));
  if (height <= MOST_WARP * longest) return;
  check.find(WARNING, FINITES_FOUND_WARPED,
             SENTENCE() << "node 3 lies off the plane of the others by " << height / longest
                        << " of the longest side: the element is flat, and its forces are out of balance by a moment; "
                           "take triangles, or carry the nodes by offsets");
}

}  // namespace

void check_plate_shape(CHECK& check, const CHECKED_PLATE& p) {
  const int count = p.record->NODE_COUNT == 4 ? 4 : 3;
  VECTOR3 X[4];
  if (!read_corners(check, p, count, X)) return;
  double longest = 0.0;
  for (int c = 0; c < count; ++c) longest = std::max(longest, size(X[(c + 1) % count] - X[c]));
  if (longest > 0.0 && has_coincident_nodes(check, X, count, longest)) return;
  const VECTOR3 normal = cross(X[1] - X[0], X[count - 1] - X[0]);
  const VECTOR3 whole = count == 4 ? cross(X[2] - X[0], X[3] - X[1]) : normal;
  if (!(std::min(size(normal), size(whole)) > TINY * longest * longest)) {
    check.find(ERROR, FINITES_FOUND_NO_AREA,
               SENTENCE() << (longest > 0.0 ? "the nodes, or those that the normal is taken from (1, 2 and the last), "
                                              "lie on a line"
                                            : "all nodes are at one place")
                          << ": the element has no area or no normal, and matrices are NaN or infinite; look at "
                             "NODE_PTR and at A(ptr + NODE_X)");
    return;
  }
  const double length = size(normal);
  if (count == 4) check_corners(check, X, {normal.x / length, normal.y / length, normal.z / length}, longest);
}
