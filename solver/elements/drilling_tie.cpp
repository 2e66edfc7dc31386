// drilling_tie.cpp: a stiffness that ties the rotation of the nodes about the normal to the rotation of the sheet.
//
// The drilling term of the library answers to differences of the rotations about the normal. Their mean is free; on a
// curved surface it enters the twist, whose stiffness it can take away. Hughes and Brezzi (1989) tie it to the membrane:
//
//     E = 1/2 c G h A (mean of theta_z - (dv/dx - du/dy) / 2)^2
//
// at the centre of the element, c being the DRILLING of the section; little depends on its size, 1 is theirs. A rigid
// motion and a constant strain meet no resistance.
//
// Quadrilaterals are about as many as nodes: the rotations can meet all their ties, and in a plane the membrane does not
// feel them. Triangles are twice as many. Their ties cannot all be met and stiffen the sheet, and yet leave rotations free
// whose mean vanishes in every triangle, as long as the elements are small beside the thickness. With s = h^2 / 2A,
//
//     E = 1/2 G h A c min(1, 0.3 s) (mean of theta_z - (dv/dx - du/dy) / 2)^2
//       + 1/2 G h A c min(0.1, 0.003 s) sum of (theta_z - mean of theta_z)^2
//
// On a surface of radius R a rotation theta_z that is free saves a bending energy of (h/R)^2 / 4 times G h theta_z^2 at most:
// the first term is larger as soon as the sides are shorter than R. The second is that of a couple stress on the gradient of
// theta_z, of a hundredth of the bending stiffness; it fades with A once 2A is less than 0.03 h^2. Neither locks thin shells.
#include <cmath>

#include "elements/library_model.h"
#include "elements/scatter_map.h"

namespace solver {

namespace {

double in_plane_shear_modulus(const material& mat) { return mat.orthotropic ? mat.G12 : mat.E1 / (2 * (1 + mat.NU12)); }

// Local x and y of a corner, from node 1.
std::array<double, 2> local(const model& m, const element& e, const MATRIX<3, 3>& axes, std::size_t corner) {
  const auto& origin = m.nodes[static_cast<std::size_t>(e.nodes[0])].xyz;
  const auto& at = m.nodes[static_cast<std::size_t>(e.nodes[corner])].xyz;
  std::array<double, 2> xy{};
  for (int a = 1; a <= 2; ++a)
    for (int i = 1; i <= 3; ++i)
      xy[static_cast<std::size_t>(a - 1)] +=
          axes(a, i) * (at[static_cast<std::size_t>(i - 1)] - origin[static_cast<std::size_t>(i - 1)]);
  return xy;
}

// K += k b b^T
void add_square(element_matrix& K, int freedoms, double k, const element_vector& b) {
  for (int j = 1; j <= freedoms; ++j)
    for (int i = 1; i <= freedoms; ++i) K(i, j) += k * b(i) * b(j);
}

// theta_z of a corner less the mean of all corners.
element_vector difference(std::size_t corner, std::size_t corners, const MATRIX<3, 3>& axes) {
  element_vector b{};
  for (std::size_t n = 0; n < corners; ++n)
    for (int i = 1; i <= 3; ++i)
      b(DIRECTIONS * static_cast<int>(n) + 3 + i) =
          axes(3, i) * ((n == corner ? 1.0 : 0.0) - 1.0 / static_cast<double>(corners));
  return b;
}

struct weights {
  double mean = 1, differences = 0;
};

weights weights_of(std::size_t corners, double thickness, double twice_area) {
  if (corners == 4) return {};
  const double s = thickness * thickness / twice_area;
  return {std::fmin(1, 0.3 * s), std::fmin(0.1, 0.003 * s)};
}

// Is the rotation of a node about this normal prescribed, or a part of it?
bool is_prescribed_about(const std::array<double, 3>& normal, int node, const load_case& loads) {
  constexpr double SQUARE = 1e-4;  // a direction with so small a cosine has no part in the rotation about the normal
  for (int i = 0; i < 3; ++i)
    if (loads.prescribed[freedom(node, 3 + i)] && std::fabs(normal[static_cast<std::size_t>(i)]) > SQUARE) return true;
  return false;
}

bool is_prescribed_about(const MATRIX<3, 3>& axes, int node, const load_case& loads) {
  return is_prescribed_about(std::array<double, 3>{axes(3, 1), axes(3, 2), axes(3, 3)}, node, loads);
}

// Is the sheet held across the side between two nodes, for the larger part, so that the side cannot turn?
bool is_held_across(const model& m, const MATRIX<3, 3>& axes, int from, int to, const load_case& loads) {
  const auto& a = m.nodes[static_cast<std::size_t>(from)].xyz;
  const auto& b = m.nodes[static_cast<std::size_t>(to)].xyz;
  const std::array<double, 3> side{b[0] - a[0], b[1] - a[1], b[2] - a[2]};
  double whole = 0, held = 0;
  for (int i = 0; i < 3; ++i) {
    const int j = (i + 1) % 3, k = (i + 2) % 3;
    const double across = axes(3, j + 1) * side[static_cast<std::size_t>(k)] -
                          axes(3, k + 1) * side[static_cast<std::size_t>(j)];  // normal cross side
    whole += across * across;
    if (loads.prescribed[freedom(from, i)] && loads.prescribed[freedom(to, i)]) held += across * across;
  }
  return held > whole / 2;
}

// The only node of a flat part whose rotation is prescribed; -1: none, or several.
int only_prescribed(const flat_part& part, const load_case& loads) {
  int only = -1;
  for (const int n : part.nodes) {
    if (!is_prescribed_about(part.normal, n, loads)) continue;
    if (only >= 0) return -1;
    only = n;
  }
  return only;
}

// The nodes with a prescribed rotation whose ties stay. Those of a curved part where the sheet does not turn: at a side
// that is held across. And one that is alone in a flat part: all its ties can still be met, and it may be what holds
// the part.
std::vector<char> nodes_with_ties(const model& m, const std::vector<flat_part>& parts,
                                  const std::vector<char>& on_flat_part, const load_case& loads) {
  std::vector<char> held(m.nodes.size(), 0);
  for (const flat_part& part : parts)
    if (const int n = only_prescribed(part, loads); n >= 0) held[static_cast<std::size_t>(n)] = 1;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (!is_tied(m, m.elements[e]) || on_flat_part[e] != 0) continue;
    const std::vector<int>& nodes = m.elements[e].nodes;
    const MATRIX<3, 3> axes = plate_axes(m, m.elements[e]);
    for (std::size_t n = 0; n < nodes.size(); ++n) {
      const int a = nodes[n], b = nodes[(n + 1) % nodes.size()];
      if (is_prescribed_about(axes, a, loads) && is_prescribed_about(axes, b, loads) &&
          is_held_across(m, axes, a, b, loads))
        held[static_cast<std::size_t>(a)] = held[static_cast<std::size_t>(b)] = 1;
    }
  }
  return held;
}

// Is no rotation about the normal prescribed at the nodes of an element but at those, and not at all of them?
bool can_follow(const model& m, const element& e, const std::vector<char>& held, const load_case& loads) {
  const MATRIX<3, 3> axes = plate_axes(m, e);
  bool follows = false;
  for (const int n : e.nodes) {
    const bool prescribed = is_prescribed_about(axes, n, loads);
    if (prescribed && held[static_cast<std::size_t>(n)] == 0) return false;
    follows = follows || !prescribed;
  }
  return follows;
}

}  // namespace

// A rotation that is prescribed does not follow the sheet, and a tie to it would make the sheet follow the rotation.
// Decks hold it all over a plane structure that has no use for it, or at some of its nodes: the membrane must not feel
// that. Ties between free rotations alone can all be met in a plane, and flat parts have no others. On a curved surface
// an element at a line of symmetry or a clamped edge keeps its tie: there the sheet does not turn either.
void library_model::choose_ties(const load_case& loads) {
  const std::vector<char> held = nodes_with_ties(model_, flat_parts_, on_flat_part_, loads);
  for (std::size_t e = 0; e < tied_.size(); ++e)
    tied_[e] = is_tied(model_, at(e)) && can_follow(model_, at(e), held, loads) ? 1 : 0;
}

// The strain of the tie by freedom, b: K += c G h A w b b^T. q is half the curl of a corner's shape function; the corner
// lies at the end of the arm -d of its node.
void library_model::add_drilling_tie(std::size_t element, element_matrix& K) {
  const auto& e = at(element);
  const shell_section& section = model_.shell_sections[static_cast<std::size_t>(e.section)];
  const MATRIX<3, 3> axes = plate_axes(model_, e);
  const std::size_t corners = e.nodes.size();
  std::array<std::array<double, 2>, 4> xy{};
  double twice_area = 0;
  for (std::size_t n = 0; n < corners; ++n) xy[n] = local(model_, e, axes, n);
  for (std::size_t n = 0; n < corners; ++n) {
    const std::size_t next = (n + 1) % corners;
    twice_area += xy[n][0] * xy[next][1] - xy[next][0] * xy[n][1];
  }
  element_vector b{};
  for (std::size_t n = 0; n < corners; ++n) {
    const std::size_t before = (n + corners - 1) % corners, next = (n + 1) % corners;
    const double gx = (xy[next][1] - xy[before][1]) / twice_area, gy = (xy[before][0] - xy[next][0]) / twice_area;
    std::array<double, 3> q{}, d{};
    const int first = DIRECTIONS * static_cast<int>(n);
    for (int i = 1; i <= 3; ++i) {
      q[static_cast<std::size_t>(i - 1)] = (gx * axes(2, i) - gy * axes(1, i)) / 2;
      d[static_cast<std::size_t>(i - 1)] = plate_records_[element].NODE_OFFSETS(static_cast<int>(n) + 1, i);
      b(first + i) = -q[static_cast<std::size_t>(i - 1)];
    }
    for (std::size_t i = 0; i < 3; ++i)
      b(first + 4 + static_cast<int>(i)) = axes(3, static_cast<int>(i) + 1) / static_cast<double>(corners) +
                                           d[(i + 1) % 3] * q[(i + 2) % 3] - d[(i + 2) % 3] * q[(i + 1) % 3];
  }
  const material& mat = model_.materials[static_cast<std::size_t>(section.material)];
  const double stiffness = section.drilling * in_plane_shear_modulus(mat) * section.thickness * twice_area / 2;
  const weights w = weights_of(corners, section.thickness, twice_area);
  add_square(K, element_freedoms(e), stiffness * w.mean, b);
  if (w.differences == 0) return;
  for (std::size_t n = 0; n < corners; ++n)
    add_square(K, element_freedoms(e), stiffness * w.differences, difference(n, corners, axes));
}

}  // namespace solver
