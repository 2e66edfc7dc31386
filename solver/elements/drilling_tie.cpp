// drilling_tie.cpp: a stiffness that ties the rotation of the nodes about the normal to the rotation of the sheet.
//
// The drilling term of the library answers to differences of the rotations about the normal. Their mean is free; on a
// curved surface it enters the twist, whose stiffness it can take away. Hughes and Brezzi (1989) tie it to the
// membrane:
//
//     E = 1/2 c G h A (mean of theta_z - (dv/dx - du/dy) / 2)^2
//
// at the centre of the element, c being the DRILLING of the section; little depends on its size, 1 is theirs. A rigid
// motion and a constant strain meet no resistance.
//
// Quadrilaterals are about as many as nodes: the rotations can meet all their ties, and in a plane the membrane does
// not feel them. Triangles are twice as many. Their ties cannot all be met and stiffen the sheet, and yet leave
// rotations free whose mean vanishes in every triangle, as long as the elements are small beside the thickness. With s
// = h^2 / 2A,
//
//     E = 1/2 G h A c min(1, 0.3 s) (mean of theta_z - (dv/dx - du/dy) / 2)^2
//       + 1/2 G h A c min(0.1, 0.003 s) sum of (theta_z - mean of theta_z)^2
//
// On a surface of radius R a rotation theta_z that is free saves a bending energy of (h/R)^2 / 4 times G h theta_z^2 at
// most: the first term is larger as soon as the sides are shorter than R. The second is that of a couple stress on the
// gradient of theta_z, of a hundredth of the bending stiffness; it fades with A once 2A is less than 0.03 h^2. Neither
// locks thin shells.
#include <algorithm>
#include <cmath>

#include "elements/plate_axes.h"
#include "elements/plate_group.h"
#include "elements/scatter_map.h"
#include "model/vectors.h"

namespace solver {

namespace {

double in_plane_shear_modulus(const material& mat) { return mat.orthotropic ? mat.G12 : mat.E1 / (2 * (1 + mat.NU12)); }

// A corner in local axes, from node 1.
vector3 local(const model& m, const element& e, const MATRIX<3, 3>& axes, std::size_t corner) {
  return product(axes, difference(m.nodes[e.nodes[0]].xyz, m.nodes[e.nodes[corner]].xyz));
}

// K += k b b^T
void add_square(element_matrix& K, int freedoms, double k, const element_vector& b) {
  for (int j = 1; j <= freedoms; ++j) {
    for (int i = 1; i <= freedoms; ++i) K(i, j) += k * b(i) * b(j);
  }
}

// theta_z of a corner less the mean of all corners.
element_vector difference_from_mean(int corner, int corners, const MATRIX<3, 3>& axes) {
  element_vector b{};
  for (int n = 0; n < corners; ++n) {
    for (int i = 1; i <= 3; ++i) b(DIRECTIONS * n + 3 + i) = axes(3, i) * ((n == corner ? 1.0 : 0.0) - 1.0 / corners);
  }
  return b;
}

struct weights {
  double mean = 1, differences = 0;
};

weights weights_of(int corners, double thickness, double twice_area) {
  if (corners == 4) return {};
  const double s = thickness * thickness / twice_area;
  return {std::fmin(1, 0.3 * s), std::fmin(0.1, 0.003 * s)};
}

// Is the rotation of a node about this normal prescribed, or a part of it?
bool is_prescribed_about(const vector3& normal, int node, const load_case& loads) {
  constexpr double SQUARE = 1e-4;  // a direction with so small a cosine has no part in the rotation about the normal
  for (std::size_t i = 0; i < 3; ++i) {
    if (loads.prescribed[freedom(node, 3 + i)] && std::fabs(normal[i]) > SQUARE) return true;
  }
  return false;
}

// Is the sheet held across the side between two nodes, for the larger part, so that the side cannot turn?
bool is_held_across(const model& m, const vector3& normal, int from, int to, const load_case& loads) {
  const vector3 across = cross(normal, difference(m.nodes[from].xyz, m.nodes[to].xyz));
  double whole = 0, held = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    whole += across[i] * across[i];
    if (loads.prescribed[freedom(from, i)] && loads.prescribed[freedom(to, i)]) held += across[i] * across[i];
  }
  return held > whole / 2;
}

// The only node of a flat part whose rotation is prescribed; -1: none, or several.
int only_prescribed(const model& m, const flat_part& part, const load_case& loads) {
  int only = -1;
  for (const int n : part.nodes) {
    if (!is_prescribed_about(part.normal, n, loads)) continue;
    // A twin that conditions keep in the same place counts once.
    if (only >= 0 && (loads.conditions.empty() || m.nodes[n].xyz != m.nodes[only].xyz)) return -1;
    only = n;
  }
  return only;
}

// The nodes with a prescribed rotation whose ties stay. Those of a curved part where the sheet does not turn: at a side
// that is held across. And one that is alone in a flat part: all its ties can still be met, and it may be what holds
// the part.
numbered<char> nodes_with_ties(const model& m, const std::vector<flat_part>& parts, const numbered<char>& on_flat_part,
                               const load_case& loads) {
  numbered<char> held(m.nodes.size(), 0);
  for (const flat_part& part : parts) {
    if (const int n = only_prescribed(m, part, loads); n >= 0) held[n] = 1;
  }
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (!is_tied(m, m.elements[e]) || on_flat_part[e] != 0) continue;
    const numbered<int>& nodes = m.elements[e].nodes;
    const vector3 normal = row(plate_axes(m, m.elements[e]), 3);
    for (std::size_t n = 0; n < nodes.size(); ++n) {
      const int a = nodes[n], b = nodes[(n + 1) % nodes.size()];
      if (is_prescribed_about(normal, a, loads) && is_prescribed_about(normal, b, loads) &&
          is_held_across(m, normal, a, b, loads)) {
        held[a] = held[b] = 1;
      }
    }
  }
  return held;
}

// Is no rotation about the normal prescribed at the nodes of an element but at those, and not at all of them?
bool can_follow(const model& m, const element& e, const numbered<char>& held, const load_case& loads) {
  const vector3 normal = row(plate_axes(m, e), 3);
  bool follows = false;
  for (const int n : e.nodes) {
    const bool prescribed = is_prescribed_about(normal, n, loads);
    if (prescribed && held[n] == 0) return false;
    follows = follows || !prescribed;
  }
  return follows;
}

// Two nodes that a condition keeps together stand for one.
void share_with_twins(const std::vector<linear_constraint>& conditions, numbered<char>& held) {
  for (const linear_constraint& c : conditions) {
    if (c.terms.size() != 2 || c.terms[0].dof != c.terms[1].dof || c.terms[0].factor != -c.terms[1].factor) continue;
    char &first = held[c.terms[0].node], &second = held[c.terms[1].node];
    first = second = std::max(first, second);
  }
}

// A degree of freedom that conditions tie to supports alone, as at a rigid body that is held, is as good as prescribed.
load_case with_settled(const model& m, const load_case& loads) {
  load_case all = loads;
  for (const dependent_freedom& d : resolve_constraints(m, loads).dependents) {
    if (d.terms.empty()) all.prescribed[d.freedom] = 1;
  }
  return all;
}

}  // namespace

// A rotation that is prescribed does not follow the sheet, and a tie to it would make the sheet follow the rotation.
// Decks hold it all over a plane structure that does not need it, or at some of its nodes: the membrane must not feel
// that. Ties between free rotations alone can all be met in a plane, and flat parts have no others. On a curved surface
// an element at a line of symmetry or a clamped edge keeps its tie: there the sheet does not turn either.
void plate_group::choose_ties(const load_case& loads_given) {
  const model& m = data_.of();
  load_case settled;
  if (!loads_given.conditions.empty()) settled = with_settled(m, loads_given);
  const load_case& loads = loads_given.conditions.empty() ? loads_given : settled;
  numbered<char> held = nodes_with_ties(m, flat_parts_, on_flat_part_, loads);
  share_with_twins(loads.conditions, held);
  for (std::size_t e = 0; e < tied_.size(); ++e) {
    tied_[e] = is_tied(m, data_.at(e)) && can_follow(m, data_.at(e), held, loads) ? 1 : 0;
  }
}

// The strain of the tie by degree of freedom, b: K += c G h A w b b^T. q is half the curl of a corner's shape function;
// the corner lies at the end of the arm -d of its node.
void plate_group::add_drilling_tie(std::size_t element, element_matrix& K) {
  const model& m = data_.of();
  const auto& e = data_.at(element);
  const shell_section& section = m.shell_sections[e.section];
  const MATRIX<3, 3> axes = plate_axes(m, e);
  const vector3 x = row(axes, 1), y = row(axes, 2), normal = row(axes, 3);
  const std::size_t corners = e.nodes.size();
  std::array<vector3, 4> xy{};
  double twice_area = 0;
  for (std::size_t n = 0; n < corners; ++n) xy[n] = local(m, e, axes, n);
  for (std::size_t n = 0; n < corners; ++n) {
    const std::size_t next = (n + 1) % corners;
    twice_area += xy[n][0] * xy[next][1] - xy[next][0] * xy[n][1];
  }
  element_vector b{};
  for (std::size_t n = 0; n < corners; ++n) {
    const std::size_t before = (n + corners - 1) % corners, next = (n + 1) % corners;
    const double gx = (xy[next][1] - xy[before][1]) / twice_area, gy = (xy[before][0] - xy[next][0]) / twice_area;
    double* const at_node = b.V + DIRECTIONS * n;
    vector3 q{};
    const vector3 d = row(records_[data_.place(element)].NODE_OFFSETS, number_of(n) + 1);
    for (std::size_t i = 0; i < 3; ++i) {
      q[i] = (gx * y[i] - gy * x[i]) / 2;
      at_node[i] = -q[i];
    }
    for (std::size_t i = 0; i < 3; ++i) {
      at_node[3 + i] =
          normal[i] / count_of(e.nodes) + d[(i + 1) % 3] * q[(i + 2) % 3] - d[(i + 2) % 3] * q[(i + 1) % 3];
    }
  }
  const material& mat = m.materials[section.material];
  const double stiffness = section.drilling * in_plane_shear_modulus(mat) * section.thickness * twice_area / 2;
  const weights w = weights_of(count_of(e.nodes), section.thickness, twice_area);
  add_square(K, element_freedoms(e), stiffness * w.mean, b);
  if (w.differences == 0) return;
  for (int n = 0; n < count_of(e.nodes); ++n) {
    add_square(K, element_freedoms(e), stiffness * w.differences, difference_from_mean(n, count_of(e.nodes), axes));
  }
}

}  // namespace solver
