// read_quadratic.cpp: quadratic elements become linear ones (elements/parts.h) as they are read.
#include <algorithm>

#include "deck/build.h"
#include "deck/fields.h"
#include "elements/parts.h"
#include "model/vectors.h"

namespace solver::deck {

static std::string type_name(element_type type) {
  switch (type) {
    case element_type::S3: return "S3";
    case element_type::S4: return "S4";
    case element_type::M3D3: return "M3D3";
    case element_type::M3D4: return "M3D4";
    case element_type::C3D6: return "C3D6";
    case element_type::C3D8: return "C3D8";
    default: return "B31";
  }
}

static bool has_tetrahedra(const build& b) {
  return std::any_of(b.deck.cards.begin(), b.deck.cards.end(), [](const card& c) {
    return squeezed(c.keyword) == "*ELEMENT" && squeezed(c.value("TYPE")).rfind("C3D10", 0) == 0;
  });
}

// The faces of a wedge fit those of tetrahedra where its triangles are divided as theirs are.
static whole_kind kind_of(const build& b, whole_kind kind) {
  return kind == whole_kind::WEDGE && has_tetrahedra(b) ? whole_kind::WEDGE_IN_BRICKS : kind;
}

static element_type part_type(element_type type, whole_kind kind) {
  return kind == whole_kind::WEDGE_IN_BRICKS ? element_type::C3D8 : type;
}

static const char* const COUNTS[] = {"none", "one", "two", "three", "four", "five", "six", "seven", "eight"};

void open_quadratic(build& b, const card& c, element_type type, whole_kind& kind) {
  kind = kind_of(b, kind);
  type = part_type(type, kind);
  const std::string name = squeezed(c.value("TYPE"));
  const whole_form& form = form_of(kind);
  if (is_solid(type) && !b.quadratic.refine) {
    b.deck.fail(c, "the element type " + in_quotes(c.value("TYPE")) +
                       " is quadratic, and the solids of the library are linear: its record of a solid has places for "
                       "nine nodes. The option --refine divides each " +
                       name + " into " + COUNTS[form.parts.size()] + " " + type_name(type));
  }
  const auto known = std::find_if(b.quadratic.types.begin(), b.quadratic.types.end(),
                                  [&](const quadratic_type& q) { return q.name == name; });
  if (known != b.quadratic.types.end()) {
    std::rotate(known, known + 1, b.quadratic.types.end());  // the last one is that of the card
    return;
  }
  b.quadratic.types.push_back({name, 0, 0, type, c.line, c.file});
}

void refuse_quadratic(const build& b, const card& c) {
  const std::string name = squeezed(c.value("TYPE"));
  const auto begins = [&](const char* with) { return name.rfind(with, 0) == 0; };
  const std::string type = "the element type " + in_quotes(c.value("TYPE")) + " is not supported";
  if (begins("C3D10") || begins("C3D15") || begins("C3D20") || begins("C3D27")) {
    b.deck.fail(c, type + "; the option --refine divides C3D10, C3D10M, C3D10HS, C3D15, C3D20, C3D20R and C3D20RI");
  }
  if (begins("T3D3")) {
    b.deck.fail(c, type + ": nothing holds the middle of a bar across it; give a T3D2 from end to end");
  }
}

// The places of all nodes of a form, those of the deck and those that are made. Distances count from the first node, so
// that a place far from the origin loses no digits.
static std::vector<vector3> places_of(const model& m, const element& e, whole_kind kind) {
  const whole_form& form = form_of(kind);
  std::vector<vector3> at;
  for (const int n : e.nodes) at.push_back(m.nodes[n].xyz);
  for (std::size_t k = 0; k < form.made.size(); ++k) {
    const std::vector<double> weights = weights_of_made(kind, k);
    const vector3 first = at[subscript(form.made[k][0] - 1)];
    vector3 place = first;
    for (std::size_t i = 0; i < weights.size(); ++i) {
      const vector3 from_first = difference(first, at[subscript(form.made[k][i] - 1)]);
      for (std::size_t d = 0; d < 3; ++d) place[d] += weights[i] * from_first[d];
    }
    at.push_back(place);
  }
  return at;
}

// A node in the middle of an edge lies somewhere between the ends: else it stands in the wrong place of the data line,
// or in the wrong place of the model.
static void check_edges(const build& b, const data_fields& row, const element& e, whole_kind kind,
                        const std::vector<vector3>& at) {
  const auto id = [&](int n) { return std::to_string(b.result.nodes[e.nodes[n - 1]].id); };
  for (const whole_edge& edge : form_of(kind).edges) {
    const vector3& from = at[subscript(edge.from - 1)];
    const vector3 chord = difference(from, at[subscript(edge.to - 1)]);
    const double along = dot(difference(from, at[subscript(edge.middle - 1)]), chord) / dot(chord, chord);
    if (along > 0 && along < 1) continue;
    row.fail("element " + std::to_string(e.id) + ": node " + id(edge.middle) + " does not lie between the nodes " +
             id(edge.from) + " and " + id(edge.to) +
             (kind == whole_kind::LINE ? ": the nodes go from end to end, the middle is the second"
                                       : ": the corners come first, then the middles of the edges"));
  }
}

// The parts of a plate show the same side at all of their corners: none turns over.
static void check_sides(const data_fields& row, const element& e, whole_kind kind, const std::vector<vector3>& at) {
  std::vector<vector3> normals;
  vector3 sum{};
  for (const std::vector<int>& part : form_of(kind).parts) {
    const std::size_t corners = part.size();
    for (std::size_t n = 0; n < corners; ++n) {
      const auto corner = [&](std::size_t k) { return at[subscript(part[k % corners] - 1)]; };
      normals.push_back(cross(difference(corner(n), corner(n + 1)), difference(corner(n), corner(n + corners - 1))));
      for (std::size_t i = 0; i < 3; ++i) sum[i] += normals.back()[i];
    }
  }
  const bool sound = std::all_of(normals.begin(), normals.end(), [&](const vector3& n) { return dot(n, sum) > 0; });
  if (sound) return;
  row.fail("element " + std::to_string(e.id) +
           " folds over: the nodes in the middle of its edges, or its corners, are out of place");
}

void check_whole(const build& b, const data_fields& row, const element& e, whole_kind kind) {
  const std::vector<vector3> at = places_of(b.result, e, kind);
  check_edges(b, row, e, kind, at);
  if (is_plate(e.type)) check_sides(row, e, kind, at);
}

// The index of the node in the middle of a face or of the element, which a neighbour may have made.
static int made_node_of(build& b, const element& e, whole_kind kind, std::size_t which, const vector3& place) {
  model& m = b.result;
  made_node made;
  for (const int n : form_of(kind).made[which]) made.from.push_back(e.nodes[n - 1]);
  std::array<int, 8> key{};
  key.fill(-1);
  const bool in_face = made.from.size() <= key.size();
  if (in_face) {
    std::copy(made.from.begin(), made.from.end(), key.begin());
    std::sort(key.begin(), key.begin() + signed_index(made.from.size()));
    const auto known = b.quadratic.in_faces.find(key);
    if (known != b.quadratic.in_faces.end()) return known->second;
  }
  node n;
  n.xyz = place;
  n.line = e.line;
  n.file = e.file;
  made.node = count_of(m.nodes);
  made.element = count_of(m.elements);
  made.in_face = in_face && is_solid(e.type);
  made.weights = weights_of_made(kind, which);
  if (in_face) b.quadratic.in_faces.emplace(key, made.node);
  m.nodes.push_back(n);
  m.made_nodes.push_back(std::move(made));
  return count_of(m.nodes) - 1;
}

void add_parts(build& b, const element& whole, whole_kind kind) {
  const whole_form& form = form_of(kind);
  const std::vector<vector3> at = places_of(b.result, whole, kind);
  std::vector<int> nodes = whole.nodes;
  for (std::size_t k = 0; k < form.made.size(); ++k) {
    nodes.push_back(made_node_of(b, whole, kind, k, at[whole.nodes.size() + k]));
  }
  element e = whole;
  e.type = part_type(whole.type, kind);
  e.whole = kind;
  e.parts = count_of(form.parts);
  for (e.part = 0; e.part < e.parts; ++e.part) {
    e.nodes.clear();
    for (const int n : form.parts[subscript(e.part)]) e.nodes.push_back(nodes[subscript(n - 1)]);
    b.result.elements.push_back(e);
  }
  quadratic_type& counts = b.quadratic.types.back();
  counts.elements += 1;
  counts.parts += e.parts;
}

// The figures are those of a cantilever ten times as long as high, of one layer of elements under a load at its end
// (solver/README.md, Solids).
static std::string how_it_is(const quadratic_type& q) {
  if (is_solid(q.type)) {
    const bool tetrahedra = q.name.rfind("C3D10", 0) == 0;
    return std::string(
               ", with nodes in the middle of faces and elements where the functions of the element put them. Linear "
               "solids are stiff in bending: a beam of one layer of ") +
           q.name + " deflects " + (tetrahedra ? "22" : "12") +
           " per cent too little where they are as long as high, " + (tetrahedra ? "49" : "30") +
           " where they are twice as long (solver/README.md, Solids)";
  }
  if (q.type != element_type::S4 && q.type != element_type::M3D4) return "";
  return ", with a node in the middle of each where the functions of the element put it; it moves freely";
}

void note_quadratic(build& b) {
  std::sort(b.quadratic.types.begin(), b.quadratic.types.end(), [](const quadratic_type& p, const quadratic_type& q) {
    return p.file != q.file ? p.file < q.file : p.line < q.line;
  });
  for (const quadratic_type& q : b.quadratic.types) {
    if (q.elements == 0) continue;
    const int each = q.parts / q.elements;
    b.result.notes.push_back(place_of(b.result, q.file, q.line) + ": *ELEMENT: " + std::to_string(q.elements) + " " +
                             q.name + (q.elements == 1 ? " is" : " are") + " read as " + std::to_string(q.parts) + " " +
                             type_name(q.type) + (q.elements == 1 ? "" : std::string(", ") + COUNTS[each] + " each") +
                             how_it_is(q));
  }
}

}  // namespace solver::deck
