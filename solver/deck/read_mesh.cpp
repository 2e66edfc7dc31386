// read_mesh.cpp: *NODE, *ELEMENT, *NSET, *ELSET.
#include <algorithm>
#include <cmath>

#include "deck/element_aliases.h"
#include "deck/fields.h"
#include "deck/hints.h"
#include "deck/keywords.h"

namespace solver::deck {

// Volumes and moments of inertia are products of several lengths: they must be finite too.
static double coordinate(const data_fields& row, int i, const char* what) {
  constexpr double LARGEST = 1e50;
  const double value = row.real(i, what);
  if (!(std::abs(value) <= LARGEST)) {
    row.fail(std::string(what) + ": " + in_quotes(row.text(i)) + " is out of range: a coordinate reaches to 1e50");
  }
  return value;
}

// R: x, y, z. C: radius, angle in degrees from x, z. S: radius, angle in degrees from x, angle from the x-y plane.
static char coordinates_of(const build& b, const card& c) {
  const std::string word = squeezed(c.value("SYSTEM"));
  if (word.empty()) return 'R';
  if (word != "R" && word != "C" && word != "S") {
    b.deck.fail(c, "SYSTEM is R, C or S, not " + in_quotes(c.value("SYSTEM")));
  }
  return word[0];
}

static std::array<double, 3> in_system(char system, const std::array<double, 3>& p) {
  constexpr double DEGREE = 3.14159265358979323846 / 180;
  if (system == 'R') return p;
  const double along = system == 'S' ? p[0] * std::cos(p[2] * DEGREE) : p[0];
  const double z = system == 'S' ? p[0] * std::sin(p[2] * DEGREE) : p[2];
  return {along * std::cos(p[1] * DEGREE), along * std::sin(p[1] * DEGREE), z};
}

void read_nodes(build& b, const card& c) {
  model& m = b.result;
  const char system = coordinates_of(b, c);
  const bool named = c.find("NSET") != nullptr;
  const int set = named ? b.nodes.open_set(checked_name(b, c, c.value("NSET"))) : -1;
  b.nodes.reserve(m.nodes.size() + c.count);
  m.nodes.reserve(std::max(m.nodes.capacity(), m.nodes.size() + c.count));

  b.each_line(c, [&](data_fields& row) {
    row.expect(1, 4, "number, x, y, z", 1);
    node n;
    n.id = row.number(0, "node number");
    const auto part = [&](int i, const char* what) { return row.has(i) ? coordinate(row, i, what) : 0; };
    n.xyz = in_system(system, {part(1, "x"), part(2, "y"), part(3, "z")});
    n.line = row.line().line;
    n.file = row.line().file;
    const int index = count_of(m.nodes);
    if (!b.nodes.add(n.id, index)) {
      const node& first = m.nodes[b.nodes.index_of(n.id)];
      row.fail("node " + std::to_string(n.id) + " is defined already, in " + b.other_place(c, first.file, first.line));
    }
    m.nodes.push_back(n);
    if (named) b.nodes.append(set, index);
  });
}

namespace {

struct known_type {
  const char* name;
  element_type type;
  int corners;
  const char* form;  // of a data line
  whole_kind whole = whole_kind::NONE;
};

}  // namespace

static constexpr char THREE_NODES[] = "number, node 1, node 2, node 3";
static constexpr char FOUR_NODES[] = "number, node 1, node 2, node 3, node 4";
static constexpr char TWO_NODES[] = "number, node 1, node 2";
static constexpr char SIX_NODES[] = "number, node 1 to node 6";
static constexpr char EIGHT_NODES[] = "number, node 1 to node 8";
static constexpr char END_MIDDLE_END[] = "number, node at one end, in the middle, at the other end";
static constexpr char TEN_NODES[] = "number, node 1 to node 10";
static constexpr char TWENTY_NODES[] = "number, node 1 to node 20";
static constexpr known_type TYPES[] = {
    {"S3", element_type::S3, 3, THREE_NODES},
    {"S4", element_type::S4, 4, FOUR_NODES},
    {"M3D3", element_type::M3D3, 3, THREE_NODES},
    {"M3D4", element_type::M3D4, 4, FOUR_NODES},
    {"B31", element_type::B31, 2, TWO_NODES},
    {"B33", element_type::B33, 2, TWO_NODES},
    {"T3D2", element_type::T3D2, 2, TWO_NODES},
    {"SPRING1", element_type::SPRING1, 1, "number, node"},
    {"SPRING2", element_type::SPRING2, 2, TWO_NODES},
    {"SPRINGA", element_type::SPRINGA, 2, TWO_NODES},
    {"CONN3D2", element_type::CONN3D2, 2, TWO_NODES},
    {"C3D4", element_type::C3D4, 4, FOUR_NODES},
    {"C3D6", element_type::C3D6, 6, SIX_NODES},
    {"C3D8", element_type::C3D8, 8, EIGHT_NODES},
    {"S8", element_type::S4, 8, EIGHT_NODES, whole_kind::QUADRILATERAL},
    {"S8R", element_type::S4, 8, EIGHT_NODES, whole_kind::QUADRILATERAL},
    {"S8R5", element_type::S4, 8, EIGHT_NODES, whole_kind::QUADRILATERAL},
    {"S6", element_type::S3, 6, SIX_NODES, whole_kind::TRIANGLE},
    {"STRI65", element_type::S3, 6, SIX_NODES, whole_kind::TRIANGLE},
    {"M3D8", element_type::M3D4, 8, EIGHT_NODES, whole_kind::QUADRILATERAL},
    {"M3D8R", element_type::M3D4, 8, EIGHT_NODES, whole_kind::QUADRILATERAL},
    {"M3D6", element_type::M3D3, 6, SIX_NODES, whole_kind::TRIANGLE},
    {"B32", element_type::B31, 3, END_MIDDLE_END, whole_kind::LINE},
    {"B32R", element_type::B31, 3, END_MIDDLE_END, whole_kind::LINE},
    {"C3D10", element_type::C3D8, 10, TEN_NODES, whole_kind::TETRAHEDRON},
    {"C3D10M", element_type::C3D8, 10, TEN_NODES, whole_kind::TETRAHEDRON},
    {"C3D10HS", element_type::C3D8, 10, TEN_NODES, whole_kind::TETRAHEDRON},
    {"C3D15", element_type::C3D6, 15, "number, node 1 to node 15", whole_kind::WEDGE},
    {"C3D20", element_type::C3D8, 20, TWENTY_NODES, whole_kind::BRICK},
    {"C3D20R", element_type::C3D8, 20, TWENTY_NODES, whole_kind::BRICK},
    {"C3D20RI", element_type::C3D8, 20, TWENTY_NODES, whole_kind::BRICK},
    {"MASS", element_type::MASS, 1, "number, node"},
    {"ROTARYI", element_type::ROTARYI, 1, "number, node"},
};

static known_type type_of(build& b, const card& c, const element_alias* alias) {
  const std::string name = alias != nullptr ? alias->becomes : squeezed(c.value("TYPE"));
  for (known_type type : TYPES) {
    if (name != type.name) continue;
    if (type.whole != whole_kind::NONE) open_quadratic(b, c, type.type, type.whole);
    return type;
  }
  refuse_quadratic(b, c);
  const char* const hint = hint_for_type(name);
  if (hint != nullptr) {
    b.deck.fail(c, "the element type " + in_quotes(c.value("TYPE")) + " is not supported: " + hint);
  }
  b.deck.fail(c,
              "the element type " + in_quotes(c.value("TYPE")) +
                  " is not supported; S3, S4, S6, S8, M3D3, M3D4, M3D6, M3D8, B31, B32, B33, T3D2, SPRING1, SPRING2, "
                  "SPRINGA, CONN3D2, C3D4, C3D6, C3D8, MASS and ROTARYI are");
}

static int element_node(const build& b, const data_fields& row, const element& e, int i) {
  const int id = row.number(i, "node");
  const int index = b.nodes.index_of(id);
  const std::string name = "element " + std::to_string(e.id);
  if (index < 0) fail_undefined(b.nodes, id, row, name + ": node " + std::to_string(id) + " is not defined");
  if (std::find(e.nodes.begin(), e.nodes.end(), index) != e.nodes.end()) {
    row.fail(name + ": node " + std::to_string(id) + " is named twice");
  }
  return index;
}

static void append_number(const build& b, catalogue& all, int set, int index) {
  for (int k = 0; k < members_at(b, all, index); ++k) all.append(set, index + k);
}

// The index of the element of one data line, which may go on in further ones.
static int read_element(build& b, const card& c, const known_type& type, const data_fields& row, const data_line& at) {
  model& m = b.result;
  element e;
  e.line = at.line;
  e.file = at.file;
  row.expect(1 + type.corners, 1 + type.corners, type.form, 1 + type.corners);
  e.id = row.number(0, "element number");
  e.type = type.type;
  e.nodes.reserve(subscript(type.corners));
  for (int i = 1; i <= type.corners; ++i) e.nodes.push_back(element_node(b, row, e, i));
  if (type.whole != whole_kind::NONE) check_whole(b, row, e, type.whole);
  const int index = count_of(m.elements);
  if (!b.elements.add(e.id, index)) {
    const element& first = m.elements[b.elements.index_of(e.id)];
    row.fail("element " + std::to_string(e.id) + " is defined already, in " + b.other_place(c, first.file, first.line));
  }
  if (type.whole == whole_kind::NONE) {
    m.elements.push_back(std::move(e));
  } else {
    add_parts(b, e, type.whole);
  }
  return index;
}

void read_elements(build& b, const card& c) {
  if (squeezed(c.value("TYPE")) == "DCOUP3D") return read_coupling_elements(b, c);
  model& m = b.result;
  const element_alias* const alias = find_alias(squeezed(c.value("TYPE")));
  const known_type type = type_of(b, c, alias);
  if (alias != nullptr) b.note(c, std::string(alias->name) + " is read as " + alias->becomes + ": " + alias->why);
  const bool named = c.find("ELSET") != nullptr;
  const int set = named ? b.elements.open_set(checked_name(b, c, c.value("ELSET"))) : -1;
  b.elements.reserve(m.elements.size() + c.count);

  data_fields row(b, c, *b.deck.begin_of(c));
  for (const data_line* l = b.deck.begin_of(c); l != b.deck.end_of(c); ++l) {
    const data_line& first_line = *l;
    const bool sound = b.errors.attempt([&] {
      row.read(*l);
      // Twenty nodes do not fit on a line: it goes on whether or not it ends with a comma.
      while ((row.goes_on() || type.corners > 15) && row.count() < 1 + type.corners && l + 1 != b.deck.end_of(c)) {
        row.append(*++l);
      }
      const int index = read_element(b, c, type, row, first_line);
      if (named) append_number(b, b.elements, set, index);
      for (int part = index; alias != nullptr && part < index + members_at(b, b.elements, index); ++part) {
        if (alias->thin) b.thin.insert(part);
        if (alias->planar) b.planar.insert(part);
      }
    });
    if (!sound) b.lose(c, first_line);
  }
}

// first, last, increment: every member must be there, so the loop ends with the mesh at the latest.
static void generate(build& b, catalogue& all, int set, const data_fields& row) {
  row.expect(2, 3, "first, last, increment", 3);
  const int first = row.number(0, "first");
  const int last = row.number(1, "last");
  const int increment = row.has(2) ? row.number(2, "increment") : 1;
  if (last < first) row.fail("the last number is smaller than the first");
  if ((last - first) % increment != 0) row.fail("the increment does not lead from the first number to the last");
  for (long long id = first; id <= last; id += increment) {
    const int index = all.index_of(number_of(id));
    if (index < 0) fail_undefined(all, number_of(id), row, all.noun() + " " + std::to_string(id) + " is not defined");
    append_number(b, all, set, index);
  }
  all.members(set);  // ranges that repeat one another do not pile up
}

static void list_members(build& b, catalogue& all, int set, const data_fields& row) {
  for (int i = 0; i < row.count(); ++i) {
    const int other = set_in_field(all, without_quotes(row.text(i)));
    if (other >= 0) {
      all.append_set(set, other);
    } else {
      for (const int index : members_of(b, all, row, i)) all.append(set, index);
    }
  }
}

// *NSET, ELSET=set: the nodes of its elements.
static void append_nodes_of_elements(build& b, const card& c, int set) {
  for (const int index : b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"))) {
    for (const int n : b.result.elements[index].nodes) {
      if (!is_made(b.result.nodes[n])) b.nodes.append(set, n);
    }
  }
}

static void read_set(build& b, catalogue& all, const card& c, const char* name_parameter) {
  const std::string name = checked_name(b, c, c.value(name_parameter));
  const bool by_range = c.find("GENERATE") != nullptr;
  const int set = all.open_set(name);
  b.each_line(c, [&](data_fields& row) { by_range ? generate(b, all, set, row) : list_members(b, all, set, row); });
  if (c.find("ELSET") != nullptr && name_parameter == std::string("NSET")) append_nodes_of_elements(b, c, set);
  if (all.members(set).empty() && b.errors.empty()) b.note(c, "the set " + in_quotes(name) + " has no members");
}

void read_nset(build& b, const card& c) { read_set(b, b.nodes, c, "NSET"); }
void read_elset(build& b, const card& c) { read_set(b, b.elements, c, "ELSET"); }

}  // namespace solver::deck
