// solid_faces.cpp: face tables and the surface integral.
#include "elements/solid_faces.h"

#include "model/vectors.h"

namespace solver {

namespace {

using vector = vector3;

// clang-format off
constexpr int TETRAHEDRON[4][4] = {{1, 2, 3, 0}, {1, 4, 2, 0}, {2, 4, 3, 0}, {3, 4, 1, 0}};
constexpr int WEDGE[5][4] = {{1, 2, 3, 0}, {4, 6, 5, 0}, {1, 4, 5, 2}, {2, 5, 6, 3}, {3, 6, 4, 1}};
constexpr int BRICK[6][4] = {{1, 2, 3, 4}, {5, 8, 7, 6}, {1, 5, 6, 2}, {2, 6, 7, 3}, {3, 7, 8, 4}, {4, 8, 5, 1}};
// clang-format on

void add(vector& sum, double factor, const vector& part) {
  for (std::size_t i = 0; i < 3; ++i) sum[i] += factor * part[i];
}

// Half the cross product of two sides is area and normal; each corner has a third.
std::vector<vector> on_triangle(const std::vector<vector>& x) {
  vector share{};
  add(share, 1.0 / 6, cross(difference(x[0], x[1]), difference(x[0], x[2])));
  return {share, share, share};
}

// F(a) = integral of N(a) dx/dxi x dx/deta: of second degree in each coordinate, exact with two points along each.
std::vector<vector> on_quadrilateral(const std::vector<vector>& x) {
  constexpr double POINT = 0.57735026918962576, XI[4] = {-1, 1, 1, -1}, ETA[4] = {-1, -1, 1, 1};
  std::vector<vector> forces(4);
  for (std::size_t p = 0; p < 4; ++p) {
    const double xi = POINT * XI[p], eta = POINT * ETA[p];
    vector along_xi{}, along_eta{};
    for (std::size_t a = 0; a < 4; ++a) {
      add(along_xi, XI[a] * (1 + eta * ETA[a]) / 4, x[a]);
      add(along_eta, ETA[a] * (1 + xi * XI[a]) / 4, x[a]);
    }
    const vector normal = cross(along_xi, along_eta);
    for (std::size_t a = 0; a < 4; ++a) add(forces[a], (1 + xi * XI[a]) * (1 + eta * ETA[a]) / 4, normal);
  }
  return forces;
}

}  // namespace

int solid_face_count(element_type type) {
  return type == element_type::C3D4 ? 4 : type == element_type::C3D6 ? 5 : type == element_type::C3D8 ? 6 : 0;
}

std::vector<int> solid_face(element_type type, int face) {
  const int* const row = type == element_type::C3D4   ? TETRAHEDRON[face - 1]
                         : type == element_type::C3D6 ? WEDGE[face - 1]
                                                      : BRICK[face - 1];
  std::vector<int> nodes;
  for (int i = 0; i < 4 && row[i] > 0; ++i) nodes.push_back(row[i] - 1);
  return nodes;
}

std::vector<std::array<double, 3>> unit_pressure_forces(const model& m, const element& e, int face) {
  std::vector<vector> x;
  for (const int place : solid_face(e.type, face)) x.push_back(m.nodes[e.nodes[place]].xyz);
  return x.size() == 3 ? on_triangle(x) : on_quadrilateral(x);
}

}  // namespace solver
