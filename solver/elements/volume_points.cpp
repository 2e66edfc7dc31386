// volume_points.cpp: Gauss points of bricks; wedges and tetrahedra as bricks with edges of length zero.
//
// A wedge is a brick whose corners 3 and 4 are one node, and so are 7 and 8; of a tetrahedron the corners 3, 4 are its
// node 3 and the corners 5 to 8 its node 4. The functions of the collapsed brick, added up by nodes, are those of the
// element: for a wedge linear functions of its triangle times linear ones of its height, for a tetrahedron linear ones.
#include "elements/volume_points.h"

#include <cstddef>

#include "model/vectors.h"

namespace solver {

namespace {

constexpr double BRICK_XI[8] = {-1, 1, 1, -1, -1, 1, 1, -1};
constexpr double BRICK_ETA[8] = {-1, -1, 1, 1, -1, -1, 1, 1};
constexpr double BRICK_ZETA[8] = {-1, -1, -1, -1, 1, 1, 1, 1};

// Which node stands in each corner of the brick.
constexpr std::size_t OF_BRICK[8] = {0, 1, 2, 3, 4, 5, 6, 7};
constexpr std::size_t OF_WEDGE[8] = {0, 1, 2, 2, 3, 4, 5, 5};
constexpr std::size_t OF_TETRAHEDRON[8] = {0, 1, 2, 2, 3, 3, 3, 3};

volume_point point_in_brick(const std::vector<vector3>& x, const std::size_t* node, double xi, double eta,
                            double zeta) {
  volume_point p;
  std::array<vector3, 3> along{};  // dx/dxi, dx/deta, dx/dzeta
  for (std::size_t c = 0; c < 8; ++c) {
    const double a = 1 + xi * BRICK_XI[c], b = 1 + eta * BRICK_ETA[c], d = 1 + zeta * BRICK_ZETA[c];
    p.share[node[c]] += a * b * d / 8;
    for (std::size_t i = 0; i < 3; ++i) {
      along[0][i] += BRICK_XI[c] * b * d / 8 * x[node[c]][i];
      along[1][i] += a * BRICK_ETA[c] * d / 8 * x[node[c]][i];
      along[2][i] += a * b * BRICK_ZETA[c] / 8 * x[node[c]][i];
    }
  }
  for (std::size_t n = 0; n < x.size(); ++n) {
    for (std::size_t i = 0; i < 3; ++i) p.place[i] += p.share[n] * x[n][i];
  }
  p.volume = dot(cross(along[0], along[1]), along[2]);
  return p;
}

}  // namespace

// N(a) r det(dx/dxi) is of fourth degree in each coordinate: three points along each.
std::vector<volume_point> volume_points(const model& m, const element& e) {
  constexpr double POINT[3] = {-0.77459666924148338, 0, 0.77459666924148338};  // sqrt(3/5)
  constexpr double WEIGHT[3] = {5.0 / 9, 8.0 / 9, 5.0 / 9};
  std::vector<vector3> x;
  for (const int n : e.nodes) x.push_back(m.nodes[n].xyz);
  const std::size_t* const node = e.type == element_type::C3D8   ? OF_BRICK
                                  : e.type == element_type::C3D6 ? OF_WEDGE
                                                                 : OF_TETRAHEDRON;
  std::vector<volume_point> points;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      for (std::size_t k = 0; k < 3; ++k) {
        points.push_back(point_in_brick(x, node, POINT[i], POINT[j], POINT[k]));
        points.back().volume *= WEIGHT[i] * WEIGHT[j] * WEIGHT[k];
      }
    }
  }
  return points;
}

}  // namespace solver
