// page_model.cpp: nodes, elements, faces, axes, sets, members and parts of nodes.
#include "report_page/page_model.h"

#include <cstdint>

#include <nlohmann/json.hpp>

#include "elements/material_axes.h"
#include "elements/member_axes.h"
#include "elements/plate_axes.h"

namespace solver {

namespace {

constexpr std::array<const char*, 16> TYPE_NAMES = {"S3",   "S4",      "M3D3",    "M3D4",    "B31",     "B33",
                                                    "T3D2", "SPRING1", "SPRING2", "SPRINGA", "CONN3D2", "C3D4",
                                                    "C3D6", "C3D8",    "MASS",    "ROTARYI"};

void append(const MATRIX<3, 3>& axes, int row, std::vector<float>& to) {
  for (int i = 1; i <= 3; ++i) to.push_back(as_float(axes(row, i)));
}

page_json nodes_of_page(const page_mesh& mesh, page_buffers& buffers) {
  std::vector<std::int32_t> id;
  std::vector<float> xyz;
  for (const int n : mesh.nodes) {
    const node& each = mesh.m.nodes[n];
    id.push_back(is_made(each) ? -1 : each.id);
    for (std::size_t i = 0; i < 3; ++i) xyz.push_back(as_float(each.xyz[i] - mesh.origin[i]));
  }
  return {{"id", buffers.integers(id)}, {"xyz", buffers.exact(xyz, 3)}};
}

page_json elements_of_page(const page_mesh& mesh, page_json& types, page_buffers& buffers) {
  std::vector<std::int32_t> id, section, first(1, 0), nodes;
  std::vector<std::uint8_t> part, type;
  std::array<int, TYPE_NAMES.size()> number{};
  number.fill(-1);
  for (const element& e : mesh.m.elements) {
    int& own = number[static_cast<std::size_t>(e.type)];
    if (own < 0) {
      own = static_cast<int>(types.size());
      types.push_back(TYPE_NAMES[static_cast<std::size_t>(e.type)]);
    }
    id.push_back(e.id);
    part.push_back(static_cast<std::uint8_t>(e.parts > 1 ? e.part + 1 : 0));
    type.push_back(static_cast<std::uint8_t>(own));
    section.push_back(mesh.sections.of(mesh.m, e));
    for (const int n : e.nodes) nodes.push_back(mesh.number_of_node(n));
    first.push_back(count_of(nodes));
  }
  return {{"id", buffers.integers(id)},       {"part", buffers.bytes(part)},
          {"type", buffers.bytes(type)},      {"section", buffers.integers(section)},
          {"first", buffers.integers(first)}, {"nodes", buffers.integers(nodes)}};
}

// Where the nodes of each element begin in the list of all.
std::vector<std::int32_t> first_corners(const model& m) {
  std::vector<std::int32_t> first(1, 0);
  for (const element& e : m.elements) first.push_back(first.back() + count_of(e.nodes));
  return first;
}

page_json faces_as_data(const page_mesh& mesh, page_buffers& buffers) {
  const std::vector<std::int32_t> begin = first_corners(mesh.m);
  std::vector<std::int32_t> element, first(1, 0), nodes, corner;
  for (const page_face& face : mesh.faces) {
    element.push_back(face.element);
    for (const int k : face.corners) {
      nodes.push_back(mesh.number_of_node(mesh.m.elements[face.element].nodes[k]));
      corner.push_back(begin[subscript(face.element)] + k);
    }
    first.push_back(count_of(nodes));
  }
  return {{"element", buffers.integers(element)},
          {"first", buffers.integers(first)},
          {"nodes", buffers.integers(nodes)},
          {"corner", buffers.integers(corner)}};
}

page_json edges_as_data(const page_mesh& mesh, page_buffers& buffers) {
  std::vector<std::int32_t> nodes;
  for (const auto& edge : mesh.edges) {
    for (const int n : edge) nodes.push_back(mesh.number_of_node(n));
  }
  return buffers.integers(nodes, 2);
}

// Solids have global axes: their results are given in them. Points have none of their own either.
page_json axes_of_elements(const page_mesh& mesh, page_buffers& buffers) {
  constexpr MATRIX<3, 3> GLOBAL{{1, 0, 0, 0, 1, 0, 0, 0, 1}};
  std::vector<float> axes;
  for (const element& e : mesh.m.elements) {
    const MATRIX<3, 3> own = is_plate(e.type)    ? material_axes(mesh.m, e)
                             : is_member(e.type) ? member_axes(mesh.m, e)
                                                 : GLOBAL;
    append(own, 1, axes);
    append(own, 3, axes);
  }
  return buffers.exact(axes, 6);
}

// Without the nodes that an outline does not show.
page_json node_sets(const page_mesh& mesh, page_buffers& buffers) {
  page_json all = page_json::array();
  for (const named_set& set : mesh.m.nsets) {
    std::vector<std::int32_t> members;
    for (const int n : set.members) {
      if (mesh.number_of_node(n) >= 0) members.push_back(mesh.number_of_node(n));
    }
    all.push_back({{"name", set.name}, {"members", buffers.integers(members)}});
  }
  return all;
}

page_json element_sets(const page_mesh& mesh, page_buffers& buffers) {
  page_json all = page_json::array();
  for (const named_set& set : mesh.m.elsets) {
    const std::vector<std::int32_t> members(set.members.begin(), set.members.end());
    all.push_back({{"name", set.name}, {"members", buffers.integers(members)}});
  }
  return all;
}

void add_members(page_json& data, const page_mesh& mesh, page_buffers& buffers) {
  std::vector<std::int32_t> element, first(1, 0);
  std::vector<float> axes, length, distance, place;
  for (const page_member& each : mesh.members) {
    element.push_back(each.element);
    for (int row = 1; row <= 3; ++row) append(each.axes, row, axes);
    length.push_back(as_float(each.length));
    for (std::size_t k = 0; k < each.distance.size(); ++k) {
      distance.push_back(as_float(each.distance[k]));
      for (std::size_t i = 0; i < 3; ++i) place.push_back(as_float(each.place[k][i] - mesh.origin[i]));
    }
    first.push_back(count_of(distance));
  }
  data["members"] = {{"element", buffers.integers(element)},
                     {"first", buffers.integers(first)},
                     {"axes", buffers.exact(axes, 9)},
                     {"length", buffers.exact(length)}};
  data["stations"] = {{"distance", buffers.exact(distance)}, {"place", buffers.exact(place, 3)}};
}

// The first part of each node; one more entry than there are nodes.
template <class PART>
numbered<std::int32_t> first_parts(const model& m, const std::vector<PART>& parts) {
  numbered<std::int32_t> first(m.nodes.size() + 1, 0);
  for (const PART& part : parts) ++first[part.node + 1];
  for (std::size_t n = 1; n < first.size(); ++n) first[n] += first[n - 1];
  return first;
}

// Of the parts of a node that have the element's section the one whose normal is nearest to its own: the sides of a
// fold are apart by more than the elements of a part are.
std::vector<std::int32_t> part_of_corners(const page_mesh& mesh) {
  const model& m = mesh.m;
  const numbered<std::int32_t> first = first_parts(m, mesh.parts);
  std::vector<std::int32_t> corner;
  for (const element& e : m.elements) {
    if (!is_plate(e.type)) {
      corner.insert(corner.end(), e.nodes.size(), -1);
      continue;
    }
    const vector3 normal = row(plate_axes(m, e), 3);
    const int section = section_of_deck(m.shell_sections, e.section);
    for (const int n : e.nodes) {
      std::int32_t best = -1;
      double nearest = -2;
      for (std::int32_t p = first[n]; p < first[n + 1]; ++p) {
        const nodal_part& part = mesh.parts[subscript(p)];
        const double agreement = dot(row(part.axes, 3), normal);
        if (part.section != section || agreement <= nearest) continue;
        nearest = agreement;
        best = p;
      }
      corner.push_back(best);
    }
  }
  return corner;
}

page_json plate_parts(const page_mesh& mesh, page_buffers& buffers) {
  std::vector<std::int32_t> node, section;
  std::vector<float> axes;
  for (const nodal_part& part : mesh.parts) {
    node.push_back(mesh.number_of_node(part.node));
    section.push_back(part.section);
    append(part.axes, 1, axes);
    append(part.axes, 3, axes);
  }
  return {{"node", buffers.integers(node)},
          {"section", buffers.integers(section)},
          {"axes", buffers.exact(axes, 6)},
          {"corner", buffers.integers(part_of_corners(mesh))}};
}

page_json solid_parts(const page_mesh& mesh, page_buffers& buffers) {
  const model& m = mesh.m;
  const numbered<std::int32_t> first = first_parts(m, mesh.solids);
  std::vector<std::int32_t> node, section, corner;
  for (const solid_place& part : mesh.solids) {
    node.push_back(mesh.number_of_node(part.node));
    section.push_back(mesh.sections.solids + part.section);
  }
  for (const element& e : m.elements) {
    for (const int n : e.nodes) {
      std::int32_t own = -1;
      for (std::int32_t p = first[n]; is_solid(e.type) && p < first[n + 1]; ++p) {
        if (mesh.solids[subscript(p)].section == section_of_deck(m.solid_sections, e.section)) own = p;
      }
      corner.push_back(own);
    }
  }
  return {
      {"node", buffers.integers(node)}, {"section", buffers.integers(section)}, {"corner", buffers.integers(corner)}};
}

}  // namespace

void add_model(page_json& data, const page_mesh& mesh, page_buffers& buffers) {
  data["origin"] = mesh.origin;
  data["nodes"] = nodes_of_page(mesh, buffers);
  page_json types = page_json::array();
  if (!mesh.outline) {
    data["elements"] = elements_of_page(mesh, types, buffers);
    data["faces"] = faces_as_data(mesh, buffers);
    data["axes"] = axes_of_elements(mesh, buffers);
  }
  data["types"] = types;
  data["edges"] = edges_as_data(mesh, buffers);
  data["materials"] = materials_of_page(mesh.m);
  data["sections"] = sections_of_page(mesh);
  data["sets"] = {{"nodes", node_sets(mesh, buffers)},
                  {"elements", mesh.outline ? page_json::array() : element_sets(mesh, buffers)}};
  if (mesh.outline) return;
  add_members(data, mesh, buffers);
  data["plate_parts"] = plate_parts(mesh, buffers);
  data["solid_parts"] = solid_parts(mesh, buffers);
}

}  // namespace solver
