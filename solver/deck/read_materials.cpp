// read_materials.cpp: *MATERIAL, *ELASTIC, *DENSITY, *EXPANSION.
#include <cmath>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

static const char* const NO_TABLES = "constants that depend on temperature are not supported";

static material& current(build& b) { return b.result.materials.back(); }

void read_material(build& b, const card& c) {
  material m;
  m.name = checked_name(b, c, c.value("NAME"));
  m.line = c.line;
  m.file = c.file;
  const auto [place, is_new] = b.materials.emplace(m.name, count_of(b.result.materials));
  if (!is_new) {
    const material& first = b.result.materials[place->second];
    b.deck.fail(
        c, "the material " + in_quotes(m.name) + " is defined already, in " + b.other_place(c, first.file, first.line));
  }
  b.result.materials.push_back(m);
}

// Exactly `count` constants in the first line; one more would be a temperature.
static void expect_constants(const data_fields& row, int count, const char* form) {
  if (row.count() > count) row.refuse_decimal_comma(count, count);
  if (row.count() == count + 1) row.fail(std::string("one field too many: ") + NO_TABLES);
  row.expect(count, count, form);
}

static void read_isotropic(build& b, const card& c) {
  const data_fields row = only_line(b, c, NO_TABLES);
  expect_constants(row, 2, "Young's modulus, Poisson's ratio");
  material& m = current(b);
  m.E1 = m.E2 = row.positive(0, "Young's modulus");
  m.NU12 = row.real(1, "Poisson's ratio");
  // 0.5 is the incompressible material, regular in plane stress.
  if (!(m.NU12 > -1 && m.NU12 <= 0.5)) row.fail("Poisson's ratio must lie above -1 and not above 0.5");
  m.G12 = m.G13 = m.G23 = m.E1 / (2 * (1 + m.NU12));
}

// The strain energy is positive when |nu(i,j)| < sqrt(Ei / Ej).
static void check_ratio(const data_fields& row, const char* name, double ratio, double Ei, double Ej) {
  const double bound = std::sqrt(Ei) / std::sqrt(Ej);
  if (!(std::abs(ratio) < bound)) {
    row.fail(std::string(name) + " must lie between the positive and the negative root of the ratio of the moduli, " +
             std::to_string(bound));
  }
}

static void read_lamina(build& b, const card& c) {
  const data_fields row = only_line(b, c, NO_TABLES);
  expect_constants(row, 6, "E1, E2, nu12, G12, G13, G23");
  material& m = current(b);
  m.orthotropic = true;
  m.E1 = row.positive(0, "E1");
  m.E2 = row.positive(1, "E2");
  m.NU12 = row.real(2, "nu12");
  m.G12 = row.positive(3, "G12");
  m.G13 = row.positive(4, "G13");
  m.G23 = row.positive(5, "G23");
  check_ratio(row, "nu12", m.NU12, m.E1, m.E2);
}

// E1, E2, E3, nu12, nu13, nu23, G12, G13 and, in a second line as a rule, G23. In plane stress the constants of the
// third direction drop out; they are checked all the same.
static void read_engineering_constants(build& b, const card& c) {
  const data_line* line = b.deck.begin_of(c);
  data_fields row(b, c, *line);
  if (c.count > 1) row.append(line[1]);
  if (c.count > 2) b.deck.fail(c, line[2], std::string("a third data line: ") + NO_TABLES);
  expect_constants(row, 9, "E1, E2, E3, nu12, nu13, nu23, G12, G13, G23");
  material& m = current(b);
  m.orthotropic = true;
  m.E1 = row.positive(0, "E1");
  m.E2 = row.positive(1, "E2");
  const double E3 = row.positive(2, "E3");
  m.NU12 = row.real(3, "nu12");
  const double nu13 = row.real(4, "nu13");
  const double nu23 = row.real(5, "nu23");
  m.G12 = row.positive(6, "G12");
  m.G13 = row.positive(7, "G13");
  m.G23 = row.positive(8, "G23");

  check_ratio(row, "nu12", m.NU12, m.E1, m.E2);
  check_ratio(row, "nu13", nu13, m.E1, E3);
  check_ratio(row, "nu23", nu23, m.E2, E3);
  const double nu21 = m.NU12 * (m.E2 / m.E1), nu31 = nu13 * (E3 / m.E1), nu32 = nu23 * (E3 / m.E2);
  const double determinant = 1 - m.NU12 * nu21 - nu23 * nu32 - nu31 * nu13 - 2 * nu21 * nu32 * nu13;
  if (!(determinant > 0)) row.fail("the three Poisson's ratios together give a negative strain energy");
  b.note(c, "E3, nu13 and nu23 have no effect in plane stress");
}

void read_elastic(build& b, const card& c) {
  if (current(b).elastic) b.deck.fail(c, "the material has an *ELASTIC already");
  const std::string type = squeezed(c.value("TYPE"));
  if (type.empty() || type == "ISO" || type == "ISOTROPIC") {
    read_isotropic(b, c);
  } else if (type == "LAMINA") {
    read_lamina(b, c);
  } else if (type == "ENGINEERINGCONSTANTS") {
    read_engineering_constants(b, c);
  } else {
    b.deck.fail(c, "TYPE=" + c.value("TYPE") + " is not supported; ISO, LAMINA and ENGINEERING CONSTANTS are");
  }
  current(b).elastic = true;
}

void read_density(build& b, const card& c) {
  if (current(b).density > 0) b.deck.fail(c, "the material has a *DENSITY already");
  const data_fields row = only_line(b, c, NO_TABLES);
  expect_constants(row, 1, "density");
  current(b).density = row.positive(0, "density");
}

// The expansion is linear in the change of temperature, counted from the state without strain: ZERO has nothing to
// move.
static void check_zero(const build& b, const card& c) {
  if (c.find("ZERO") == nullptr) return;
  if (real_parameter(b, c, "ZERO") != 0) {
    b.deck.fail(c, "ZERO other than 0 is not supported: *TEMPERATURE gives the change against the strain-free state");
  }
}

void read_expansion(build& b, const card& c) {
  material& m = current(b);
  if (m.expansion) b.deck.fail(c, "the material has an *EXPANSION already");
  check_zero(b, c);
  const std::string type = squeezed(c.value("TYPE"));
  const data_fields row = only_line(b, c, NO_TABLES);
  m.expansion = true;
  if (type.empty() || type == "ISO" || type == "ISOTROPIC") {
    expect_constants(row, 1, "coefficient of expansion");
    m.alpha1 = m.alpha2 = row.real(0, "coefficient of expansion");
  } else if (type == "ORTHO" || type == "ORTHOTROPIC") {
    expect_constants(row, 3, "alpha11, alpha22, alpha33");
    m.alpha1 = row.real(0, "alpha11");
    m.alpha2 = row.real(1, "alpha22");
    row.real(2, "alpha33");
    b.note(c, "alpha33 has no effect: a thin shell is free to grow in its thickness");
  } else {
    b.deck.fail(c, "TYPE=" + c.value("TYPE") + " is not supported; ISO and ORTHO are");
  }
}

}  // namespace solver::deck
