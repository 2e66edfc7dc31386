// read_beam_section.cpp: *BEAM GENERAL SECTION, *BEAM SECTION, and the cards below them: *TRANSVERSE SHEAR STIFFNESS,
// *CENTROID, *SHEAR CENTER, *SECTION POINTS.
#include <cmath>

#include "deck/fields.h"
#include "deck/frame_sections.h"
#include "deck/keywords.h"

namespace solver::deck {

// Abaqus gives the constants of a *BEAM GENERAL SECTION in its last data line, CalculiX and *BEAM SECTION in a
// *MATERIAL. The number of data lines before it.
static std::size_t take_constants(build& b, const card& c, frame_section& s) {
  if (s.material >= 0) {
    if (c.find("DENSITY") != nullptr) b.deck.fail(c, "DENSITY belongs to a section without MATERIAL: give a *DENSITY");
    return c.count;
  }
  if (c.count < 2) {
    b.deck.fail(c, "the parameter MATERIAL is missing, and so is a last data line with E, G and the expansion");
  }
  const data_fields row(b, c, b.deck.begin_of(c)[c.count - 1]);
  row.expect(2, 3, "Young's modulus, shear modulus, coefficient of expansion; or MATERIAL in the keyword line");
  material mat;
  mat.name = "BEAM_SECTION_" + s.elset;
  mat.elastic = true;
  mat.E1 = mat.E2 = row.positive(0, "Young's modulus");
  mat.G12 = mat.G13 = mat.G23 = row.positive(1, "shear modulus");
  mat.NU12 = mat.E1 / (2 * mat.G12) - 1;
  if (!(mat.NU12 > -1) || !std::isfinite(mat.NU12)) row.fail("the shear modulus is out of proportion to Young's");
  if (row.has(2)) {
    mat.expansion = true;
    mat.alpha1 = mat.alpha2 = row.real(2, "coefficient of expansion");
  }
  if (c.find("DENSITY") != nullptr) mat.density = real_parameter(b, c, "DENSITY");
  if (mat.density < 0) b.deck.fail(c, "DENSITY: " + in_quotes(c.value("DENSITY")) + " is negative");
  mat.line = c.line;
  mat.file = c.file;
  s.material = count_of(b.result.materials);
  b.result.materials.push_back(mat);
  return c.count - 1;
}

static void note_parameters(build& b, const card& c) {
  if (c.find("TEMPERATURE") != nullptr) {
    b.note(c, "TEMPERATURE has no effect: temperatures of beams are those of their axis");
  }
  if (c.find("POISSON") != nullptr) {
    b.note(c, "POISSON has no effect: the section keeps its size, displacements are small");
  }
  if (c.find("LUMPED") != nullptr) {
    b.note(c, "LUMPED has no effect: masses are consistent; MASS=LUMPED in *FREQUENCY puts them in the nodes");
  }
  if (c.find("ZERO") != nullptr && real_parameter(b, c, "ZERO") != 0) {
    b.deck.fail(c, "ZERO other than 0 is not supported: temperatures are changes from the state without strain");
  }
}

// The integral of warping stresses, which the elements do not have.
static void note_warping(build& b, const card& c, const data_fields& row) {
  for (int i = 5; i < row.count(); ++i) {
    if (!row.has(i) || row.real(i, "constant of warping") == 0) continue;
    b.note(c, "the constants of warping have no effect: torsion is Saint-Venant's");
    return;
  }
}

static void read_constants(build& b, const card& c, frame_section& s) {
  const data_fields row(b, c, *b.deck.begin_of(c));
  row.expect(5, 7, "area, I11, I12, I22, J");
  s.area = row.positive(0, "area");
  const double I11 = row.positive(1, "I11"), I12 = row.real(2, "I12"), I22 = row.positive(3, "I22");
  s.torsion = row.positive(4, "J");
  note_warping(b, c, row);
  if (!(I12 / I11 * (I12 / I22) < 1)) row.fail("I12 is too large: I11 I22 must be above I12 I12");
  take_inertia(I11, I22, I12, s);
}

// CalculiX's OFFSET1 and OFFSET2: where the nodes are, from the middle of the section, by its size along each axis.
static void read_offsets(const build& b, const card& c) {
  if (c.find("OFFSET1") == nullptr && c.find("OFFSET2") == nullptr) return;
  b.deck.fail(c,
              "OFFSET1 and OFFSET2 count by the size of a shape, which SECTION=GENERAL does not have: *CENTROID and "
              "*SHEAR CENTER below the section say where it lies");
}

// Bending about axis 1 is bending in the plane of the member and axis 2, which is local z.
void read_beam_section(build& b, const card& c) {
  const std::string form = squeezed(c.value("SECTION"));
  frame_section s = start_section(b, c, frame_section_kind::BEAM);
  const std::size_t end = take_constants(b, c, s);
  note_parameters(b, c);
  std::size_t lines = take_beam_shape(b, c, form, s);
  if (lines == 0) {
    if (!form.empty() && form != "GENERAL") {
      b.deck.fail(c, "SECTION=" + c.value("SECTION") +
                         " is not supported; RECT, CIRC, PIPE, BOX, I, L, T, HEX, ARBITRARY and GENERAL are");
    }
    read_offsets(b, c);
    read_constants(b, c, s);
    lines = 1;
  }
  read_n1(b, c, lines, end, s);
  assign_section(b, c, s);
}

// K23 belongs to the force along axis 2, K13 to that along axis 1; with PRINCIPAL to the principal axes next to them.
void read_transverse_shear(build& b, const card& c) {
  frame_section& s = b.result.frame_sections.back();
  if (s.shear_given) b.deck.fail(c, "the section has one already");
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(2, 2, "K23, K13");
  s.shear_given = true;
  s.shear_stiffness_z = row.positive(0, "K23");
  s.shear_stiffness_y = row.positive(1, "K13");
  const bool along_others = s.place.angle != 0 && c.find("PRINCIPAL") == nullptr;
  if (along_others && s.shear_stiffness_y != s.shear_stiffness_z) {
    row.fail(
        "K23 and K13 differ, and axes 1 and 2 are not the principal axes of the section: PRINCIPAL in the keyword "
        "line says that they belong to these");
  }
}

static void read_place(const build& b, const card& c, std::array<double, 2>& place) {
  const frame_section& s = b.result.frame_sections.back();
  if (s.has_shape) b.deck.fail(c, "belongs to SECTION=GENERAL: a shape knows where it lies");
  if (place[0] != 0 || place[1] != 0) b.deck.fail(c, "the section has one already");
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(1, 2, "place along axis 1, along axis 2, from the nodes");
  place[0] = row.real(0, "place along axis 1");
  place[1] = row.has(1) ? row.real(1, "place along axis 2") : 0;
}

void read_centroid(build& b, const card& c) { read_place(b, c, b.result.frame_sections.back().place.centroid); }
// Up to four points in a line, x1 and x2 of each.
void read_section_points(build& b, const card& c) {
  frame_section& s = b.result.frame_sections.back();
  if (s.has_shape) b.deck.fail(c, "belongs to SECTION=GENERAL: a shape has points of its own");
  b.each_line(c, [&](data_fields& row) {
    row.expect(2, 8, "x1, x2 of a point, of up to four points");
    if (row.count() % 2 != 0) row.fail("a point has two places, x1 and x2");
    for (int i = 0; i < row.count(); i += 2) {
      s.points.push_back({count_of(s.points) + 1, row.real(i, "x1"), row.real(i + 1, "x2")});
    }
  });
}

void read_shear_centre(build& b, const card& c) { read_place(b, c, b.result.frame_sections.back().place.shear_centre); }

}  // namespace solver::deck
