// element_faces.cpp: nodes and integration points of faces, sides and edges.
#include "elements/element_faces.h"

#include <numeric>

#include "elements/parts.h"
#include "elements/solid_faces.h"
#include "model/vectors.h"

namespace solver {

namespace {

constexpr double GAUSS = 0.57735026918962576;

vector3 place_between(const std::vector<vector3>& x, const std::array<double, 4>& share) {
  vector3 place{};
  for (std::size_t a = 0; a < x.size(); ++a) {
    for (std::size_t i = 0; i < 3; ++i) place[i] += share[a] * x[a][i];
  }
  return place;
}

std::vector<face_point> edge_points(const std::vector<vector3>& x) {
  const vector3 half = scaled(difference(x[0], x[1]), 0.5);
  std::vector<face_point> points;
  for (const double xi : {-GAUSS, GAUSS}) {
    face_point p;
    p.share = {(1 - xi) / 2, (1 + xi) / 2};
    p.place = place_between(x, p.share);
    p.area = half;
    points.push_back(p);
  }
  return points;
}

// Each middle of a side has a third of the area: exact to the second degree.
std::vector<face_point> triangle_points(const std::vector<vector3>& x) {
  const vector3 third = scaled(cross(difference(x[0], x[1]), difference(x[0], x[2])), 1.0 / 6);
  std::vector<face_point> points;
  for (std::size_t side = 0; side < 3; ++side) {
    face_point p;
    p.share[side] = p.share[(side + 1) % 3] = 0.5;
    p.place = place_between(x, p.share);
    p.area = third;
    points.push_back(p);
  }
  return points;
}

constexpr double CORNER_XI[4] = {-1, 1, 1, -1}, CORNER_ETA[4] = {-1, -1, 1, 1};

face_point in_quadrilateral(const std::vector<vector3>& x, double xi, double eta) {
  face_point p;
  std::array<double, 4> by_xi{}, by_eta{};
  for (std::size_t a = 0; a < 4; ++a) {
    p.share[a] = (1 + xi * CORNER_XI[a]) * (1 + eta * CORNER_ETA[a]) / 4;
    by_xi[a] = CORNER_XI[a] * (1 + eta * CORNER_ETA[a]) / 4;
    by_eta[a] = CORNER_ETA[a] * (1 + xi * CORNER_XI[a]) / 4;
  }
  p.place = place_between(x, p.share);
  p.area = cross(place_between(x, by_xi), place_between(x, by_eta));
  return p;
}

// Of a load linear in space the integrand N(a) p dx/dxi x dx/deta is of third degree in each coordinate.
std::vector<face_point> quadrilateral_points(const std::vector<vector3>& x) {
  std::vector<face_point> points;
  for (std::size_t g = 0; g < 4; ++g) {
    points.push_back(in_quadrilateral(x, GAUSS * CORNER_XI[g], GAUSS * CORNER_ETA[g]));
  }
  return points;
}

std::vector<vector3> corners_of(const model& m, const element& e, int face) {
  std::vector<vector3> x;
  for (const int n : nodes_of_face(e, face)) x.push_back(m.nodes[n].xyz);
  return x;
}

}  // namespace

int face_count(const element& e) {
  if (is_solid(e.type)) return face_count_of(e);
  if (!is_plate(e.type)) return 0;
  return e.whole == whole_kind::NONE ? count_of(e.nodes) : count_of(form_of(e.whole).sides);
}

bool has_face(const element& e, int face) {
  if (is_solid(e.type)) return face >= 1 && face <= face_count(e);
  if (!is_plate(e.type)) return false;
  return is_side(face) || (is_edge(face) && face <= EDGE + face_count(e));
}

int face_of_part(const element& e, int face) {
  if (e.whole == whole_kind::NONE || is_side(face)) return face;
  const int own = side_of_part(e, is_edge(face) ? face - EDGE : face);
  return is_edge(face) && own != 0 ? EDGE + own : own;
}

std::string face_name(int face) {
  if (is_edge(face)) return "E" + std::to_string(face - EDGE);
  if (face == BOTH_SIDES) return "both sides";
  if (face == POSITIVE_SIDE) return "SPOS";
  return face == NEGATIVE_SIDE ? "SNEG" : "S" + std::to_string(face);
}

std::vector<int> places_of_face(const element& e, int face) {
  if (is_solid(e.type)) return solid_face(e.type, face);
  const int count = count_of(e.nodes);
  if (is_edge(face)) return {face - EDGE - 1, (face - EDGE) % count};
  std::vector<int> all(e.nodes.size());
  std::iota(all.begin(), all.end(), 0);
  return all;
}

std::vector<int> nodes_of_face(const element& e, int face) {
  std::vector<int> nodes = places_of_face(e, face);
  for (int& n : nodes) n = e.nodes[n];
  return nodes;
}

std::vector<face_point> points_of_face(const model& m, const element& e, int face) {
  const std::vector<vector3> x = corners_of(m, e, face);
  if (x.size() == 2) return edge_points(x);
  return x.size() == 3 ? triangle_points(x) : quadrilateral_points(x);
}

face_point face_point_at(const model& m, const element& e, int face, double xi, double eta) {
  const std::vector<vector3> x = corners_of(m, e, face);
  if (x.size() == 4) return in_quadrilateral(x, xi, eta);
  face_point p;
  p.share = {1 - xi - eta, xi, eta};
  p.place = place_between(x, p.share);
  p.area = cross(difference(x[0], x[1]), difference(x[0], x[2]));
  return p;
}

}  // namespace solver
