// read_orientations.cpp: *ORIENTATION, and what a section takes from it.
#include <algorithm>
#include <cmath>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "elements/material_axes.h"
#include "model/vectors.h"

namespace solver::deck {

namespace {

using vector = vector3;

// At unit length, by way of the largest part, so that no square is too large or too small. False for the zero vector.
bool to_unit(vector& v) {
  const double largest = std::max({std::abs(v[0]), std::abs(v[1]), std::abs(v[2])});
  if (!(largest > 0) || !std::isfinite(largest)) return false;
  for (double& part : v) part /= largest;
  const double size = length_of(v);
  for (double& part : v) part /= size;
  return true;
}

vector point_of(const data_fields& row, int first, const char* name) {
  static const char* const PARTS[] = {"x of ", "y of ", "z of "};
  vector p{};
  for (int i = 0; i < 3; ++i) p[subscript(i)] = row.real(first + i, (PARTS[i] + std::string(name)).c_str());
  return p;
}

}  // namespace

static orientation_system system_of(const build& b, const card& c) {
  const std::string word = squeezed(c.value("SYSTEM"));
  if (word.empty() || word == "RECTANGULAR") return orientation_system::RECTANGULAR;
  if (word == "ZRECTANGULAR") return orientation_system::RECTANGULAR;
  if (word == "CYLINDRICAL") return orientation_system::CYLINDRICAL;
  if (word != "SPHERICAL") {
    b.deck.fail(c, "SYSTEM=" + c.value("SYSTEM") +
                       " is not supported; RECTANGULAR, Z RECTANGULAR, CYLINDRICAL and SPHERICAL are");
  }
  return orientation_system::SPHERICAL;
}

// The points a, b and the origin, by coordinates or by the nodes that lie there.
struct three_points {
  vector a{}, b{}, origin{};
};

static vector node_of(const build& b, const data_fields& row, int field, const char* name) {
  const int id = row.number(field, name);
  const int index = b.nodes.index_of(id);
  if (index < 0) fail_undefined(b.nodes, id, row, "node " + std::to_string(id) + " is not defined");
  return b.result.nodes[index].xyz;
}

static three_points points_of(const build& b, const data_fields& row, bool by_nodes, bool has_origin) {
  three_points p;
  if (by_nodes) {
    row.expect(2, has_origin ? 3 : 2, has_origin ? "node a, node b, node at the origin" : "node a, node b", 3);
    p.a = node_of(b, row, 0, "node a");
    p.b = node_of(b, row, 1, "node b");
    if (row.has(2)) p.origin = node_of(b, row, 2, "node at the origin");
    return p;
  }
  if (row.count() > 9) row.refuse_decimal_comma(9, 9);
  if (!has_origin) row.expect(6, 6, "x, y, z of a, x, y, z of b: two points of the axis");
  if (row.count() != 6 && row.count() != 9) row.expect(6, 6, "x, y, z of a, x, y, z of b");
  p.a = point_of(row, 0, "a");
  p.b = point_of(row, 3, "b");
  if (row.count() == 9) p.origin = point_of(row, 6, "the origin");
  return p;
}

// RECTANGULAR: direction 1 runs from the origin to a, direction 2 lies in the plane of b, on its side. Z RECTANGULAR:
// likewise direction 3 and direction 1.
static void read_rectangular(const data_fields& row, const three_points& p, bool from_z, orientation& o) {
  o.origin = p.origin;
  vector first = difference(p.origin, p.a), towards_b = difference(p.origin, p.b);
  if (!to_unit(first)) row.fail("point a is the origin: no direction leads to it");
  if (!to_unit(towards_b)) row.fail("point b is the origin: no direction leads to it");
  // Twice the area of a triangle with two sides of length 1.
  constexpr double ON_ONE_LINE = 1e-9;
  vector third = cross(first, towards_b);
  if (!(length_of(third) > ON_ONE_LINE)) {
    row.fail("the origin, point a and point b lie on one line: they do not span a plane");
  }
  to_unit(third);
  const vector second = cross(third, first);
  o.direction = from_z ? std::array<vector, 3>{second, third, first} : std::array<vector, 3>{first, second, third};
}

// CYLINDRICAL: two points of the axis. SPHERICAL: the centre and a point of the polar axis.
static void read_round(const data_fields& row, const three_points& p, orientation& o) {
  o.origin = p.a;
  o.direction[2] = difference(p.a, p.b);
  if (!to_unit(o.direction[2])) row.fail("the points a and b are the same: they are to be two points of the axis");
}

// Which direction is nearest to the normal of a shell, and how far the others are turned about it. Programs differ in
// what they take where nothing is said.
static void read_turn(build& b, const card& c, orientation& o) {
  const bool cylindrical = o.system != orientation_system::RECTANGULAR;
  if (c.count < 2) {
    o.axis = cylindrical ? 1 : 3;
    b.note(c, "no second data line says which direction is nearest to the normal of the shells: " +
                  (cylindrical ? std::string("direction 1 is taken, axis 1 of the material then runs round the axis "
                                             "(write '1, 0' to say so, '3, 0' for plates across the axis)")
                               : std::string("direction 3 is taken, axis 1 of the material is then the projection of "
                                             "direction 1 (write '3, 0' to say so, '1, 0' for that of direction 2)")));
    return;
  }
  const data_fields row(b, c, b.deck.begin_of(c)[1]);
  row.expect(1, 2, "axis of the additional rotation (1, 2 or 3), angle", 1);
  o.axis = row.integer(0, "axis of the additional rotation");
  if (o.axis < 1 || o.axis > 3) {
    row.fail("the axis of the additional rotation is 1, 2 or 3, not " + in_quotes(row.text(0)));
  }
  if (row.has(1)) o.angle = row.real(1, "angle of the additional rotation");
}

void read_orientation(build& b, const card& c) {
  orientation o;
  o.name = checked_name(b, c, c.value("NAME"));
  o.line = c.line;
  o.file = c.file;
  const auto [place, is_new] = b.orientations.emplace(o.name, count_of(b.result.orientations));
  if (!is_new) {
    const orientation& first = b.result.orientations[place->second];
    b.deck.fail(c, "the orientation " + in_quotes(o.name) + " is defined already, in " +
                       b.other_place(c, first.file, first.line));
  }
  o.system = system_of(b, c);
  const std::string definition = squeezed(c.value("DEFINITION"));
  if (!definition.empty() && definition != "COORDINATES" && definition != "NODES") {
    b.deck.fail(c, "DEFINITION=" + c.value("DEFINITION") + " is not supported; COORDINATES and NODES are");
  }
  if (c.count > 2) b.deck.fail(c, b.deck.begin_of(c)[2], "a third data line: two belong here");
  const data_fields row(b, c, *b.deck.begin_of(c));
  const bool straight = o.system == orientation_system::RECTANGULAR;
  const three_points points = points_of(b, row, definition == "NODES", straight);
  const bool from_z = squeezed(c.value("SYSTEM")) == "ZRECTANGULAR";
  straight ? read_rectangular(row, points, from_z, o) : read_round(row, points, o);
  read_turn(b, c, o);
  b.result.orientations.push_back(o);
}

int orientation_of_parameter(const build& b, const card& c) {
  if (c.find("ORIENTATION") == nullptr) return -1;
  const std::string name = c.value("ORIENTATION");
  const auto found = b.orientations.find(upper(name));
  if (found == b.orientations.end() &&
      b.lost_orientations.count(upper(name)) + b.lost_orientations.count(ANY_NAME) > 0) {
    throw consequence{};
  }
  if (found == b.orientations.end()) b.deck.fail(c, "the orientation " + in_quotes(name) + " is not defined");
  return found->second;
}

// Every element with an orientation must get its axis 1 from it. Where the direction is nearly the normal, the axis
// hangs on small differences of the mesh: most likely another direction was meant.
void check_orientations(build& b) {
  constexpr double NEARLY_NORMAL = 0.17364817766693033;  // the sine of 10 degrees
  const model& m = b.result;
  const element* first = nullptr;
  int count = 0;
  for (const element& e : m.elements) {
    if (!is_plate(e.type) || m.shell_sections[e.section].orientation < 0) continue;
    material_axes(m, e);
    if (projection_of_axis(m, e) > NEARLY_NORMAL) continue;
    if (first == nullptr) first = &e;
    ++count;
  }
  if (first == nullptr) return;
  b.result.notes.push_back(
      place_of(m, first->file, first->line) +
      ": *ELEMENT: the direction that gives axis 1 lies within 10 degrees of the " + "normal of " +
      (count == 1 ? "1 element" : std::to_string(count) + " elements") + ", element " + std::to_string(first->id) +
      " the first: the second line of the *ORIENTATION names the direction that is nearest " + "to the normal");
}

}  // namespace solver::deck
