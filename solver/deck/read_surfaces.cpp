// read_surfaces.cpp: *SURFACE.
#include <algorithm>
#include <array>
#include <map>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/surfaces.h"
#include "elements/element_faces.h"
#include "elements/solid_faces.h"
#include "model/vectors.h"

namespace solver::deck {

int find_surface(const build& b, std::string_view name) {
  const auto found = b.surfaces.find(upper(name));
  return found == b.surfaces.end() ? -1 : found->second;
}

static bool surface_is_lost(const build& b, std::string_view name) {
  return b.lost_surfaces.count(upper(name)) + b.lost_surfaces.count(ANY_NAME) > 0;
}

int surface_of_parameter(const build& b, const card& c, const char* name) {
  const std::string value = c.value(name);
  const int index = find_surface(b, value);
  if (index >= 0) return index;
  if (surface_is_lost(b, value)) throw consequence{};
  b.deck.fail(c, "the surface " + in_quotes(value) + " is not defined");
}

int surface_of_field(const build& b, const data_fields& row, int i) {
  if (!row.has(i)) row.fail("a field is empty: it takes the name of a surface");
  const int index = find_surface(b, row.text(i));
  if (index >= 0) return index;
  if (surface_is_lost(b, row.text(i))) throw consequence{};
  if (b.elements.find_set(upper(row.text(i))) >= 0) {
    row.fail("the surface " + in_quotes(row.text(i)) +
             " is not defined; the element set of this name becomes one by a *SURFACE");
  }
  row.fail("the surface " + in_quotes(row.text(i)) + " is not defined");
}

// The faces of all solids by their nodes: how many elements have each.
namespace {
using face_corners = std::array<int, 4>;

face_corners sorted_corners(const element& e, int face) {
  face_corners key = {-1, -1, -1, -1};
  const std::vector<int> nodes = nodes_of_face(e, face);
  std::copy(nodes.begin(), nodes.end(), key.begin());
  std::sort(key.begin(), key.end());
  return key;
}

// The faces of solids that no other solid of the model shares.
class free_faces {
 public:
  explicit free_faces(const model& m) : model_(m) {}

  bool is_free(const element& e, int face) {
    if (count_.empty()) count();
    return count_[sorted_corners(e, face)] == 1;
  }

 private:
  void count() {
    for (const element& e : model_.elements) {
      for (int face = 1; face <= solid_face_count(e.type); ++face) ++count_[sorted_corners(e, face)];
    }
  }

  const model& model_;
  std::map<face_corners, int> count_;
};

}  // namespace

static constexpr char NO_FACES[] = ": members, springs and links have no faces; a surface of their nodes has TYPE=NODE";

// S1 to S6, SPOS, SNEG, E1 to E4; 0: none of them. On shells S1 and S2 are SNEG and SPOS, and S3 to S6 the edges, as
// CalculiX numbers them; on elements of plane stress S1 to S4 are the edges.
static int face_of_label(const std::string& label, element_type type, bool planar) {
  if (label == "SPOS") return POSITIVE_SIDE;
  if (label == "SNEG") return NEGATIVE_SIDE;
  const bool numbered_label = label.size() == 2 && label[1] >= '1' && label[1] <= '6';
  if (!numbered_label || (label[0] != 'S' && label[0] != 'E')) return 0;
  const int number = label[1] - '0';
  if (label[0] == 'E') return number <= 4 ? EDGE + number : 0;
  if (!is_plate(type)) return number;
  if (planar) return number <= 4 ? EDGE + number : 0;
  if (number == 1) return NEGATIVE_SIDE;
  return number == 2 ? POSITIVE_SIDE : EDGE + number - 2;
}

static std::string faces_of(const element& e) {
  return (is_solid(e.type) ? "the faces S1 to S" : "the sides SPOS and SNEG and the edges E1 to E") +
         std::to_string(face_count(e));
}

static void add_labelled(const build& b, const data_fields& row, const element& e, int index, named_surface& s) {
  const std::string name = "element " + std::to_string(e.id);
  const int face = face_of_label(squeezed(row.text(1)), e.type, b.planar.count(index) > 0);
  if (face == 0) {
    row.fail("the face " + in_quotes(row.text(1)) + " is none of S1 to S6, SPOS, SNEG and E1 to E4");
  }
  if (!has_face(e, face)) row.fail(name + " has no face " + in_quotes(row.text(1)) + ": it has " + faces_of(e));
  const int own = face_of_part(e, face);
  if (own != 0) s.faces.push_back({index, own});
}

// Without a label: the free faces of a solid, both sides of a shell.
static void add_unlabelled(const element& e, int index, free_faces& free, named_surface& s) {
  if (is_plate(e.type)) s.faces.push_back({index, BOTH_SIDES});
  for (int face = 1; face <= solid_face_count(e.type); ++face) {
    if (free.is_free(e, face)) s.faces.push_back({index, face});
  }
}

static void read_face_line(build& b, const data_fields& row, free_faces& free, named_surface& s) {
  row.expect(1, 2, "element or set, face", 2);
  const std::size_t before = s.faces.size();
  for (const int index : members_of(b, b.elements, row, 0)) {
    const element& e = b.result.elements[index];
    if (!is_plate(e.type) && !is_solid(e.type)) row.fail("element " + std::to_string(e.id) + NO_FACES);
    if (row.has(1)) {
      add_labelled(b, row, e, index, s);
    } else {
      add_unlabelled(e, index, free, s);
    }
  }
  if (s.faces.size() == before) row.fail("none of these elements has a free face: each is shared with another solid");
}

// Each face once, whole areas or edges alone.
static void settle_faces(const build& b, const card& c, named_surface& s) {
  const auto less = [](const surface_face& x, const surface_face& y) {
    return x.element != y.element ? x.element < y.element : x.face < y.face;
  };
  const auto same = [](const surface_face& x, const surface_face& y) {
    return x.element == y.element && x.face == y.face;
  };
  std::sort(s.faces.begin(), s.faces.end(), less);
  s.faces.erase(std::unique(s.faces.begin(), s.faces.end(), same), s.faces.end());
  const auto edges =
      std::count_if(s.faces.begin(), s.faces.end(), [](const surface_face& f) { return is_edge(f.face); });
  if (edges > 0 && edges < signed_index(s.faces.size())) {
    b.deck.fail(c, "the surface has faces and edges; make a surface of each");
  }
}

// The area that belongs to each node: the integral of its shape function over the surface. Of the two sides of a shell
// one counts.
static void share_out_area(const model& m, named_surface& s) {
  std::map<int, double> area;
  int last_side = -1;
  for (const surface_face& f : s.faces) {
    if (is_side(f.face) && f.element == last_side) continue;
    if (is_side(f.face)) last_side = f.element;
    const element& e = m.elements[f.element];
    const std::vector<int> nodes = nodes_of_face(e, f.face);
    for (const face_point& p : points_of_face(m, e, f.face)) {
      for (std::size_t a = 0; a < nodes.size(); ++a) area[nodes[a]] += p.share[a] * length_of(p.area);
    }
  }
  for (const auto& [node, share] : area) {
    s.nodes.push_back(node);
    s.weights.push_back(share);
  }
}

static void read_faces(build& b, const card& c, named_surface& s) {
  free_faces free(b.result);
  std::size_t read = 0;
  b.each_line(c, [&](data_fields& row) {
    read_face_line(b, row, free, s);
    ++read;
  });
  if (read < c.count) throw consequence{};
  settle_faces(b, c, s);
  share_out_area(b.result, s);
}

static void read_node_line(build& b, const data_fields& row, std::map<int, double>& weights) {
  row.expect(1, 2, "node or set, weight", 1);
  const double weight = row.has(1) ? row.positive(1, "weight") : 1;
  for (const int index : members_of(b, b.nodes, row, 0)) {
    const auto [place, is_new] = weights.emplace(index, weight);
    if (!is_new && place->second != weight) {
      row.fail("node " + std::to_string(b.result.nodes[index].id) + " has another weight already");
    }
  }
}

static void read_nodes_of_surface(build& b, const card& c, named_surface& s) {
  std::map<int, double> weights;
  std::size_t read = 0;
  b.each_line(c, [&](data_fields& row) {
    read_node_line(b, row, weights);
    ++read;
  });
  if (read < c.count) throw consequence{};
  for (const auto& [node, weight] : weights) {
    s.nodes.push_back(node);
    s.weights.push_back(weight);
  }
}

void read_surface(build& b, const card& c) {
  named_surface s;
  s.name = checked_name(b, c, c.value("NAME"));
  s.line = c.line;
  s.file = c.file;
  const int there = find_surface(b, s.name);
  if (there >= 0) {
    const named_surface& first = b.result.surfaces[there];
    b.deck.fail(
        c, "the surface " + in_quotes(s.name) + " is defined already, in " + b.other_place(c, first.file, first.line));
  }
  const std::string type = squeezed(c.value("TYPE"));
  if (type.empty() || type == "ELEMENT") {
    read_faces(b, c, s);
  } else if (type == "NODE") {
    read_nodes_of_surface(b, c, s);
  } else {
    b.deck.fail(c, "TYPE=" + c.value("TYPE") + " is not supported; ELEMENT and NODE are");
  }
  b.surfaces.emplace(s.name, count_of(b.result.surfaces));
  b.result.surfaces.push_back(std::move(s));
}

}  // namespace solver::deck
