// read_beam_shapes.cpp: the shapes of *BEAM SECTION, and what beams say about their shear deformation.
#include <algorithm>
#include <cmath>
#include <utility>

#include "deck/beam_shapes.h"
#include "deck/fields.h"
#include "deck/frame_sections.h"
#include "deck/keywords.h"
#include "model/vectors.h"

namespace solver::deck {

static beam_shape read_rectangle(const data_fields& row, double nu) {
  row.expect(2, 2, "side along axis 1, side along axis 2");
  return rectangle_shape(row.positive(0, "side along axis 1"), row.positive(1, "side along axis 2"), nu);
}

// One field is a radius, as in Abaqus; two are the diameters of an ellipse, as in CalculiX.
static beam_shape read_circle(const data_fields& row, double nu) {
  row.expect(1, 2, "radius; or diameter along axis 1, diameter along axis 2");
  if (row.count() == 1) {
    const double radius = row.positive(0, "radius");
    return ellipse_shape(radius, radius, nu);
  }
  return ellipse_shape(row.positive(0, "diameter along axis 1") / 2, row.positive(1, "diameter along axis 2") / 2, nu);
}

static beam_shape read_pipe(const data_fields& row, double nu) {
  row.expect(2, 2, "outer radius, thickness of the wall");
  const double radius = row.positive(0, "outer radius"), wall = row.positive(1, "thickness of the wall");
  if (!(wall < radius)) row.fail("the wall is not thinner than the outer radius: SECTION=CIRC is a solid bar");
  return pipe_shape(radius, wall, nu);
}

// t1 and t3 stand at the positive and negative end of axis 1, t2 and t4 at those of axis 2.
static beam_shape read_box(const data_fields& row, double nu) {
  row.expect(6, 6, "side along axis 1, side along axis 2, walls t1, t2, t3, t4");
  const double a = row.positive(0, "side along axis 1"), b = row.positive(1, "side along axis 2");
  const std::array<double, 4> t = {row.positive(2, "t1"), row.positive(3, "t2"), row.positive(4, "t3"),
                                   row.positive(5, "t4")};
  if (!(t[0] + t[2] < a && t[1] + t[3] < b)) row.fail("the walls leave no hollow: SECTION=RECT is a solid bar");
  return t[0] == t[2] && t[1] == t[3] ? box_shape(a, b, t[0], t[1], nu) : uneven_box_shape(a, b, t);
}

static double not_negative(const data_fields& row, int i, const char* what) {
  const double value = row.real(i, what);
  if (value < 0) row.fail(std::string(what) + ": " + in_quotes(row.text(i)) + " is negative");
  return value;
}

constexpr double WRITTEN = 1e-6;  // decks give lengths with some six digits

static beam_shape read_i(const data_fields& row, double nu) {
  row.expect(7, 7,
             "l, h, b1, b2, t1, t2, t3: node above the bottom, depth, widths of the flanges, their thicknesses, web");
  const i_data d = {row.real(0, "l"),           row.positive(1, "h"),       not_negative(row, 2, "b1"),
                    not_negative(row, 3, "b2"), not_negative(row, 4, "t1"), not_negative(row, 5, "t2"),
                    row.positive(6, "t3")};
  if ((d.width_below > 0) != (d.flange_below > 0) || (d.width_above > 0) != (d.flange_above > 0)) {
    row.fail("a flange has a width and a thickness, or neither");
  }
  if (d.width_below == 0 && d.width_above == 0) row.fail("both flanges are missing: SECTION=RECT is a solid bar");
  if (!(d.flange_below + d.flange_above < d.depth)) row.fail("the flanges leave no web");
  for (const double width : {d.width_below, d.width_above}) {
    if (width > 0 && d.web > width) row.fail("the web is thicker than the flanges are wide");
  }
  if (d.width_below != d.width_above || d.flange_below != d.flange_above) return uneven_i_shape(d);
  beam_shape s = i_shape(d.depth, d.width_below, d.flange_below, d.web, nu);
  if (std::abs(d.l - d.depth / 2) <= WRITTEN * d.depth) return s;
  s.centroid[1] = s.shear_centre[1] = d.depth / 2 - d.l;
  s.points = i_points(d);
  s.outline = i_outline(d);
  return s;
}

static beam_shape read_t(const data_fields& row, double) {
  row.expect(5, 5,
             "b, h, l, tf, tw: width of the flange, depth, node above the lower end, thickness of flange and web");
  const double width = row.positive(0, "b"), depth = row.positive(1, "h"), l = row.real(2, "l");
  const double flange = row.positive(3, "tf"), web = row.positive(4, "tw");
  if (!(flange < depth)) row.fail("the flange leaves no web");
  if (web > width) row.fail("the web is thicker than the flange is wide");
  return t_shape(width, depth, l, flange, web);
}

static beam_shape read_l(const data_fields& row, double) {
  row.expect(4, 4, "a, b, t1, t2: legs along axis 1 and axis 2, over all, and their thicknesses");
  const double a = row.positive(0, "a"), b = row.positive(1, "b"), t1 = row.positive(2, "t1");
  const double t2 = row.positive(3, "t2");
  if (!(t1 < b && t2 < a)) row.fail("a leg is thicker than the other is long: SECTION=RECT is a solid bar");
  return l_shape(a, b, t1, t2);
}

static beam_shape read_hexagon(const data_fields& row, double) {
  row.expect(2, 2, "outer radius of the corners, thickness of the wall");
  const double radius = row.positive(0, "outer radius of the corners");
  const double wall = row.positive(1, "thickness of the wall");
  if (!(2 * wall < std::sqrt(3.0) * radius)) row.fail("the wall leaves no hollow: a HEX is a tube");
  return hexagon_shape(radius, wall);
}

using shape_reader = beam_shape (*)(const data_fields& row, double nu);

static shape_reader reader_of(const std::string& form) {
  if (form == "RECT") return read_rectangle;
  if (form == "CIRC") return read_circle;
  if (form == "PIPE") return read_pipe;
  if (form == "BOX") return read_box;
  if (form == "L") return read_l;
  if (form == "T") return read_t;
  if (form == "HEX") return read_hexagon;
  return form == "I" ? read_i : nullptr;
}

static plane_point point_of(const data_fields& row, int i) {
  return {row.real(i, "place along axis 1"), row.real(i + 1, "place along axis 2")};
}

// The first line: how many segments, both ends of the first one, its thickness; each further line: the other end of a
// segment that begins where the one before has ended, its thickness. A thickness 0 leads back without a wall.
static beam_shape read_walls(const build& b, const card& c, std::size_t& lines) {
  static constexpr char FIRST[] = "number of segments, x1, x2 of the first point, x1, x2 of the second, thickness";
  data_fields row(b, c, *b.deck.begin_of(c));
  row.expect(6, 6, FIRST, 1);
  lines = subscript(row.number(0, "number of segments"));
  if (lines > c.count) {
    row.fail("of " + std::to_string(lines) + " segments " + std::to_string(c.count) + " have a data line");
  }
  std::vector<std::pair<plane_point, double>> ends;
  plane_point last = point_of(row, 1);
  double largest = 0;
  for (std::size_t i = 0; i < lines; ++i) {
    if (i > 0) {
      row.read(b.deck.begin_of(c)[i]);
      row.expect(3, 3, "x1, x2 of the next point, thickness");
    }
    const int at = i == 0 ? 3 : 0;
    ends.emplace_back(point_of(row, at), not_negative(row, at + 2, "thickness"));
    const plane_point& from = i == 0 ? last : ends[i - 1].first;
    const double length = std::hypot(ends[i].first[0] - from[0], ends[i].first[1] - from[1]);
    if (!(length > 0)) row.fail("the segment has no length: its two points are the same");
    largest = std::max(largest, length);
  }
  wall_section walls;
  for (const auto& [to, thickness] : ends) {
    walls.add(last, to, thickness, WRITTEN * largest);
    last = to;
  }
  if (!hangs_together(walls)) b.deck.fail(c, "the segments with a thickness do not hang together");
  return walls_shape(walls);
}

// CalculiX's OFFSET1 and OFFSET2: where the nodes are, from the middle of the section, by its size along each axis.
static void shift(const build& b, const card& c, beam_shape& s) {
  for (std::size_t i = 0; i < 2; ++i) {
    const char* const name = i == 0 ? "OFFSET1" : "OFFSET2";
    if (c.find(name) == nullptr) continue;
    const double by = -real_parameter(b, c, name) * s.size[i];
    s.centroid[i] += by;
    s.shear_centre[i] += by;
    for (section_point& p : s.points) (i == 0 ? p.x1 : p.x2) += by;
    for (auto& polygon : s.outline) {
      for (auto& corner : polygon) corner[i] += by;
    }
  }
}

// The principal axes are turned from axes 1 and 2 by an angle a of at most 45 degrees, tan 2a = 2 I12 / (I22 - I11), so
// that sections whose axes are principal ones keep them.
void take_inertia(double I11, double I22, double I12, frame_section& s) {
  constexpr double ROUNDING = 1e-12;
  const double sum = I11 + I22;
  s.inertia_xz = I11;
  s.inertia_xy = I22;
  if (!(std::abs(I12) > ROUNDING * sum)) return;
  double difference = I22 - I11;
  if (std::abs(difference) <= ROUNDING * sum) difference = 0;
  const double a = difference == 0 ? std::copysign(PI / 4, I12) : std::atan(2 * I12 / difference) / 2;
  const double cosine = std::cos(a), sine = std::sin(a);
  s.place.angle = a;
  s.inertia_xy = I22 * cosine * cosine + I11 * sine * sine + 2 * I12 * sine * cosine;
  s.inertia_xz = I22 * sine * sine + I11 * cosine * cosine - 2 * I12 * sine * cosine;
}

// In turned axes the flexibilities 1 / kappa are those of a turned tensor, whose mixed part is left out.
static void take_shear(const beam_shape& shape, double GA, frame_section& s) {
  s.shear_stiffness_y = shape.shear_factor_1 * GA;
  s.shear_stiffness_z = shape.shear_factor_2 * GA;
  if (s.place.angle == 0) return;
  const double c = std::cos(s.place.angle), d = std::sin(s.place.angle);
  const double f1 = 1 / shape.shear_factor_1, f2 = 1 / shape.shear_factor_2, f12 = shape.shear_coupling;
  s.shear_stiffness_y = GA / (f1 * c * c + f2 * d * d + 2 * f12 * c * d);
  s.shear_stiffness_z = GA / (f1 * d * d + f2 * c * c - 2 * f12 * c * d);
}

std::size_t take_beam_shape(const build& b, const card& c, const std::string& form, frame_section& s) {
  const shape_reader read = reader_of(form);
  std::size_t lines = 1;
  if (read == nullptr && form != "ARBITRARY") return 0;
  const material& mat = b.result.materials[s.material];
  const data_fields row(b, c, *b.deck.begin_of(c));
  beam_shape shape = read == nullptr ? read_walls(b, c, lines) : read(row, mat.NU12);
  shift(b, c, shape);
  take_inertia(shape.I11, shape.I22, shape.I12, s);
  for (const double value : {shape.area, s.inertia_xy, s.inertia_xz, shape.torsion}) {
    if (!(value > 0) || !std::isfinite(value)) row.fail("the area or a moment of inertia is 0 or not finite");
  }
  s.area = shape.area;
  s.torsion = shape.torsion;
  s.place.centroid = shape.centroid;
  s.place.shear_centre = shape.shear_centre;
  s.has_shape = true;
  s.points = shape.points;
  s.outline = shape.outline;
  take_shear(shape, mat.E1 / (2 * (1 + mat.NU12)) * shape.area, s);
  return lines;
}

// B33 has no shear deformation, whatever its section says. Where a section serves both types, B33 takes a copy of it.
static void make_slender(model& m, std::size_t section, bool alone) {
  std::size_t slender = section;
  if (!alone) {
    slender = m.frame_sections.size();
    m.frame_sections.push_back(frame_section(m.frame_sections[section]));
    for (element& e : m.elements) {
      if (e.type == element_type::B33 && e.section == number_of(section)) e.section = number_of(slender);
    }
  }
  m.frame_sections[slender].shear_stiffness_y = m.frame_sections[slender].shear_stiffness_z = 0;
}

void settle_beams(build& b) {
  model& m = b.result;
  const std::size_t count = m.frame_sections.size();
  numbered<char> with_shear(count, 0), slender(count, 0);
  for (const element& e : m.elements) {
    if (is_beam(e.type)) (e.type == element_type::B33 ? slender : with_shear)[e.section] = 1;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const frame_section s = m.frame_sections[i];
    const std::string place = place_of(m, s.file, s.line) + ": " + s.keyword + ": ";
    if (with_shear[i] && !(s.shear_stiffness_y > 0)) {
      m.notes.push_back(place + "the elements B31 of the set " + s.elset +
                        " count no shear deformation: their section has no shape, and no *TRANSVERSE SHEAR STIFFNESS "
                        "follows; B33 are the beams without it");
    }
    if (!slender[i]) continue;
    if (s.shear_given) {
      m.notes.push_back(place + "*TRANSVERSE SHEAR STIFFNESS has no effect on the elements B33 of the set " + s.elset +
                        ": they have no shear deformation");
    }
    make_slender(m, i, !with_shear[i]);
  }
}

}  // namespace solver::deck
