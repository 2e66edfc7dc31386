// solid_faces.cpp: faces of tetrahedra, wedges and bricks; the points of their rules.
#include "plain_calls/solid_faces.h"

namespace {

constexpr SOLID_FACE BRICK_FACES[6] = {{4, {0, 3, 2, 1}}, {4, {4, 5, 6, 7}}, {4, {0, 1, 5, 4}},
                                       {4, {1, 2, 6, 5}}, {4, {2, 3, 7, 6}}, {4, {3, 0, 4, 7}}};
constexpr SOLID_FACE WEDGE_FACES[5] = {
    {3, {0, 2, 1, 0}}, {3, {3, 4, 5, 0}}, {4, {0, 1, 4, 3}}, {4, {1, 2, 5, 4}}, {4, {2, 0, 3, 5}}};
constexpr SOLID_FACE TETRA_FACES[4] = {{3, {0, 2, 1, 0}}, {3, {0, 1, 3, 0}}, {3, {1, 2, 3, 0}}, {3, {2, 0, 3, 0}}};

constexpr double GAUSS_2 = 0.57735026918962576451;  // 1/sqrt 3
constexpr double CORNER[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};

void cross(const double a[3], const double b[3], double weight, double product[3]) {
  for (int i = 0; i < 3; ++i) {
    const int j = (i + 1) % 3;
    const int k = (i + 2) % 3;
    product[i] = (a[j] * b[k] - a[k] * b[j]) * weight;
  }
}

// Corners of the face, from the origin.
void corners(const finites_solid& solid, const SOLID_FACE& face, const double origin[3], double corner[4][3]) {
  for (int k = 0; k < face.count; ++k) {
    for (int i = 0; i < 3; ++i) corner[k][i] = solid.xyz[face.node[k]][i] - origin[i];
  }
}

void set_triangle(const double corner[4][3], FACE_POINT& point) {
  double a[3];
  double b[3];
  for (int i = 0; i < 3; ++i) {
    a[i] = corner[1][i] - corner[0][i];
    b[i] = corner[2][i] - corner[0][i];
    point.x[i] = corner[0][i] + (a[i] + b[i]) / 3.0;
    point.N[i] = 1.0 / 3.0;
  }
  point.N[3] = 0.0;
  cross(a, b, 0.5, point.n);
}

void set_bilinear(const double corner[4][3], double xi, double eta, FACE_POINT& point) {
  double by_xi[3] = {};
  double by_eta[3] = {};
  for (double& x : point.x) x = 0.0;
  for (int k = 0; k < 4; ++k) {
    const double along_xi = 1.0 + CORNER[k][0] * xi;
    const double along_eta = 1.0 + CORNER[k][1] * eta;
    point.N[k] = 0.25 * along_xi * along_eta;
    for (int i = 0; i < 3; ++i) {
      point.x[i] += point.N[k] * corner[k][i];
      by_xi[i] += 0.25 * CORNER[k][0] * along_eta * corner[k][i];
      by_eta[i] += 0.25 * CORNER[k][1] * along_xi * corner[k][i];
    }
  }
  cross(by_xi, by_eta, 1.0, point.n);
}

}  // namespace

int solid_face_count(std::int32_t nodes) { return nodes == 8 ? 6 : nodes == 6 ? 5 : 4; }

const SOLID_FACE& solid_face(std::int32_t nodes, int face) {
  if (nodes == 8) return BRICK_FACES[face - 1];
  return nodes == 6 ? WEDGE_FACES[face - 1] : TETRA_FACES[face - 1];
}

int face_points(const finites_solid& solid, const SOLID_FACE& face, const double origin[3], FACE_POINT point[4]) {
  double corner[4][3];
  corners(solid, face, origin, corner);
  if (face.count == 3) {
    set_triangle(corner, point[0]);
    return 1;
  }
  for (int p = 0; p < 4; ++p) set_bilinear(corner, CORNER[p][0] * GAUSS_2, CORNER[p][1] * GAUSS_2, point[p]);
  return 4;
}
