// page_skin.cpp: faces that occur once, and edges by the faces that meet in them.
#include "report_page/page_skin.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "elements/member_field.h"
#include "elements/solid_faces.h"
#include "model/vectors.h"

namespace solver {

namespace {

constexpr double CREASE = 0.93969262078590838;  // the cosine of 20 degrees

// One face of one solid, by its nodes in ascending order; -1 in the first place of a triangle.
struct solid_side {
  std::array<int, 4> nodes{-1, -1, -1, -1};
  int element = 0, face = 1;
};

std::vector<solid_side> sides_of_solids(const model& m) {
  std::vector<solid_side> sides;
  for (int e = 0; e < count_of(m.elements); ++e) {
    const element& solid = m.elements[e];
    if (!is_solid(solid.type)) continue;
    for (int face = 1; face <= solid_face_count(solid.type); ++face) {
      solid_side side;
      side.element = e;
      side.face = face;
      std::size_t k = 0;
      for (const int place : solid_face(solid.type, face)) side.nodes[k++] = solid.nodes[place];
      std::sort(side.nodes.begin(), side.nodes.end());  // of a triangle the one that is missing comes first
      sides.push_back(side);
    }
  }
  return sides;
}

// Two solids share an inner face. Where three or more have one, which no sound mesh does, it is shown.
std::vector<page_face> skin_of_solids(const model& m) {
  std::vector<solid_side> sides = sides_of_solids(m);
  const auto before = [](const solid_side& a, const solid_side& b) {
    return a.nodes != b.nodes ? a.nodes < b.nodes : a.element < b.element;
  };
  std::sort(sides.begin(), sides.end(), before);
  std::vector<page_face> skin;
  for (std::size_t i = 0, next = 0; i < sides.size(); i = next) {
    while (next < sides.size() && sides[next].nodes == sides[i].nodes) ++next;
    if (next - i == 2) continue;
    std::vector<int> corners = solid_face(m.elements[sides[i].element].type, sides[i].face);
    std::reverse(corners.begin(), corners.end());  // that of a solid points into it
    skin.push_back({sides[i].element, std::move(corners)});
  }
  std::stable_sort(skin.begin(), skin.end(),
                   [](const page_face& a, const page_face& b) { return a.element < b.element; });
  return skin;
}

int node_of(const model& m, const page_face& face, std::size_t corner) {
  return m.elements[face.element].nodes[face.corners[corner % face.corners.size()]];
}

// Newell's normal of a polygon that may be warped; a unit vector, or 0.
vector3 normal_of(const model& m, const page_face& face) {
  vector3 sum{};
  const vector3& origin = m.nodes[node_of(m, face, 0)].xyz;
  for (std::size_t k = 1; k + 1 < face.corners.size(); ++k) {
    const vector3 part = cross(difference(origin, m.nodes[node_of(m, face, k)].xyz),
                               difference(origin, m.nodes[node_of(m, face, k + 1)].xyz));
    for (std::size_t i = 0; i < 3; ++i) sum[i] += part[i];
  }
  const double length = length_of(sum);
  return length > 0 ? scaled(sum, 1 / length) : sum;
}

struct face_edge {
  int low = 0, high = 0;
  int face = 0;
  bool solid = false;
};

bool same_edge(const face_edge& a, const face_edge& b) {
  return a.low == b.low && a.high == b.high && a.solid == b.solid;
}

}  // namespace

std::vector<page_face> faces_of_page(const model& m) {
  std::vector<page_face> plates;
  for (int e = 0; e < count_of(m.elements); ++e) {
    if (!is_plate(m.elements[e].type)) continue;
    page_face face{e, std::vector<int>(m.elements[e].nodes.size())};
    std::iota(face.corners.begin(), face.corners.end(), 0);
    plates.push_back(std::move(face));
  }
  const std::vector<page_face> skin = skin_of_solids(m);
  std::vector<page_face> all(plates.size() + skin.size());
  std::merge(plates.begin(), plates.end(), skin.begin(), skin.end(), all.begin(),
             [](const page_face& a, const page_face& b) { return a.element < b.element; });
  return all;
}

std::vector<std::array<int, 2>> edges_of_page(const model& m, const std::vector<page_face>& faces, bool members) {
  std::vector<face_edge> edges;
  std::vector<vector3> normals;
  for (int f = 0; f < count_of(faces); ++f) {
    const page_face& face = faces[subscript(f)];
    normals.push_back(normal_of(m, face));
    for (std::size_t k = 0; k < face.corners.size(); ++k) {
      const auto [low, high] = std::minmax({node_of(m, face, k), node_of(m, face, k + 1)});
      edges.push_back({low, high, f, is_solid(m.elements[face.element].type)});
    }
  }
  std::sort(edges.begin(), edges.end(), [](const face_edge& a, const face_edge& b) {
    return std::array<int, 4>{a.low, a.high, a.solid ? 1 : 0, a.face} <
           std::array<int, 4>{b.low, b.high, b.solid ? 1 : 0, b.face};
  });
  std::vector<std::array<int, 2>> shown;
  for (std::size_t i = 0, next = 0; i < edges.size(); i = next) {
    while (next < edges.size() && same_edge(edges[next], edges[i])) ++next;
    bool outline = next - i != 2;
    if (!outline) {
      // Neighbouring plates may have opposite normals; the skin of solids points outwards everywhere.
      const double c = dot(normals[subscript(edges[i].face)], normals[subscript(edges[i + 1].face)]);
      outline = (edges[i].solid ? c : std::fabs(c)) < CREASE;
    }
    if (outline && edges[i].low != edges[i].high) shown.push_back({edges[i].low, edges[i].high});
  }
  for (const element& e : m.elements) {
    if (!is_member(e.type) || e.section < 0 || e.nodes.size() != 2) continue;
    if (members || !has_field(m, e)) shown.push_back({e.nodes[0], e.nodes[1]});
  }
  return shown;
}

}  // namespace solver
