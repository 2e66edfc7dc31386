// element_faces.cpp: nodes and integration points of faces, sides and edges.
#include "elements/element_faces.h"

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

vector3 scaled(const vector3& v, double factor) { return {factor * v[0], factor * v[1], factor * v[2]}; }

std::vector<face_point> on_edge(const std::vector<vector3>& x) {
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
std::vector<face_point> on_triangle(const std::vector<vector3>& x) {
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

// Of a load linear in space the integrand N(a) p dx/dxi x dx/deta is of third degree in each coordinate.
std::vector<face_point> on_quadrilateral(const std::vector<vector3>& x) {
  constexpr double XI[4] = {-1, 1, 1, -1}, ETA[4] = {-1, -1, 1, 1};
  std::vector<face_point> points;
  for (std::size_t g = 0; g < 4; ++g) {
    const double xi = GAUSS * XI[g], eta = GAUSS * ETA[g];
    face_point p;
    std::array<double, 4> by_xi{}, by_eta{};
    for (std::size_t a = 0; a < 4; ++a) {
      p.share[a] = (1 + xi * XI[a]) * (1 + eta * ETA[a]) / 4;
      by_xi[a] = XI[a] * (1 + eta * ETA[a]) / 4;
      by_eta[a] = ETA[a] * (1 + xi * XI[a]) / 4;
    }
    p.place = place_between(x, p.share);
    p.area = cross(place_between(x, by_xi), place_between(x, by_eta));
    points.push_back(p);
  }
  return points;
}

}  // namespace

bool has_face(element_type type, int face) {
  if (is_solid(type)) return face >= 1 && face <= solid_face_count(type);
  if (!is_plate(type)) return false;
  const int sides = type == element_type::S3 || type == element_type::M3D3 ? 3 : 4;
  return is_side(face) || (is_edge(face) && face <= EDGE + sides);
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
  std::vector<int> all;
  for (int i = 0; i < count; ++i) all.push_back(i);
  return all;
}

std::vector<int> nodes_of_face(const element& e, int face) {
  std::vector<int> nodes = places_of_face(e, face);
  for (int& n : nodes) n = e.nodes[n];
  return nodes;
}

std::vector<face_point> points_of_face(const model& m, const element& e, int face) {
  std::vector<vector3> x;
  for (const int n : nodes_of_face(e, face)) x.push_back(m.nodes[n].xyz);
  if (x.size() == 2) return on_edge(x);
  return x.size() == 3 ? on_triangle(x) : on_quadrilateral(x);
}

}  // namespace solver
