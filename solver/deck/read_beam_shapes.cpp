// read_beam_shapes.cpp: the shapes of *BEAM SECTION, and what beams say about their shear deformation.
#include <cmath>

#include "deck/beam_shapes.h"
#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

static constexpr char SYMMETRIC[] =
    "; only sections with two axes of symmetry are supported here: give the constants with SECTION=GENERAL";

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

// t1 and t3 stand at the ends of axis 1, t2 and t4 at those of axis 2.
static beam_shape read_box(const data_fields& row, double nu) {
  row.expect(6, 6, "side along axis 1, side along axis 2, walls t1, t2, t3, t4");
  const double a = row.positive(0, "side along axis 1"), b = row.positive(1, "side along axis 2");
  const double t1 = row.positive(2, "t1"), t2 = row.positive(3, "t2");
  if (row.positive(4, "t3") != t1 || row.positive(5, "t4") != t2) {
    row.fail(std::string("opposite walls of the box, t1 and t3 or t2 and t4, differ") + SYMMETRIC);
  }
  if (!(2 * t1 < a && 2 * t2 < b)) row.fail("the walls leave no hollow: SECTION=RECT is a solid bar");
  return box_shape(a, b, t1, t2, nu);
}

static beam_shape read_i(const data_fields& row, double nu) {
  row.expect(7, 7,
             "l, h, b1, b2, t1, t2, t3: node above the bottom, depth, widths of the flanges, their thicknesses, web");
  const double l = row.real(0, "l"), h = row.positive(1, "h"), b = row.positive(2, "b1"), t = row.positive(4, "t1");
  const double web = row.positive(6, "t3");
  if (row.positive(3, "b2") != b || row.positive(5, "t2") != t) {
    row.fail(std::string("the two flanges differ") + SYMMETRIC);
  }
  constexpr double WRITTEN = 1e-6;  // decks give lengths with some six digits
  if (std::abs(l - h / 2) > WRITTEN * h) {
    row.fail("l is not half of h: the line of nodes runs through the centroid here; offsets are not supported");
  }
  if (!(2 * t < h)) row.fail("the flanges leave no web");
  if (web > b) row.fail("the web is thicker than the flanges are wide");
  return i_shape(h, b, t, web, nu);
}

using shape_reader = beam_shape (*)(const data_fields& row, double nu);

static shape_reader reader_of(const std::string& form) {
  if (form == "RECT") return read_rectangle;
  if (form == "CIRC") return read_circle;
  if (form == "PIPE") return read_pipe;
  if (form == "BOX") return read_box;
  return form == "I" ? read_i : nullptr;
}

bool takes_beam_shape(const build& b, const card& c, const std::string& form, frame_section& s) {
  const shape_reader read = reader_of(form);
  if (read == nullptr) return false;
  const material& mat = b.result.materials[s.material];
  const data_fields row(b, c, *b.deck.begin_of(c));
  const beam_shape shape = read(row, mat.NU12);
  for (const double value : {shape.area, shape.I11, shape.I22, shape.torsion}) {
    if (!(value > 0) || !std::isfinite(value)) row.fail("the area or a moment of inertia is 0 or not finite");
  }
  s.area = shape.area;
  s.inertia_xz = shape.I11;
  s.inertia_xy = shape.I22;
  s.torsion = shape.torsion;
  const double GA = mat.E1 / (2 * (1 + mat.NU12)) * shape.area;
  s.shear_stiffness_y = shape.shear_factor_1 * GA;
  s.shear_stiffness_z = shape.shear_factor_2 * GA;
  return true;
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
