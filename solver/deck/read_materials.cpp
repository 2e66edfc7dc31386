// read_materials.cpp: *MATERIAL, *ELASTIC, *DENSITY, *EXPANSION, and the cards of a material that have no effect.
#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

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

// One line of `count` constants, or several by rising temperature, which is the last field. In a single line it may
// stand, too, and says nothing.
static void read_table(const build& b, const card& c, int count, const char* form,
                       const std::function<void(const data_fields& row)>& read, temperature_table& table) {
  const std::string with_temperature = std::string(form) + ", temperature";
  for (const data_line* line = b.deck.begin_of(c); line != b.deck.end_of(c); ++line) {
    const data_fields row(b, c, *line);
    // "7850,5" in a line of its own is half a density rather than a temperature.
    if (c.count == 1 && row.count() == count + 1) row.refuse_decimal_comma(count, count);
    row.expect(c.count > 1 ? count + 1 : count, count + 1, c.count > 1 ? with_temperature.c_str() : form);
    read(row);
    temperature_line entry;
    if (row.has(count)) entry.temperature = row.real(count, "temperature");
    for (int i = 0; i < count; ++i) entry.value[subscript(i)] = row.real(i, "constant");
    if (!table.empty() && !(entry.temperature > table.back().temperature)) {
      row.fail("the temperatures must rise from line to line");
    }
    table.push_back(entry);
  }
}

// The constants of one temperature, in a record that may go over several lines; a temperature may follow them.
static data_fields read_constants(const build& b, const card& c, int count, std::size_t lines, const char* form) {
  const data_line* line = b.deck.begin_of(c);
  data_fields row(b, c, *line);
  std::size_t used = 1;
  for (; used < c.count && used < lines && row.count() < count; ++used) row.append(line[used]);
  row.expect(count, count + 1, form);
  if (row.has(count)) row.real(count, "temperature");
  if (c.count > used) {
    b.deck.fail(c, line[used],
                "another data line: constants of a material that is not isotropic are given once, for one temperature");
  }
  return row;
}

static void refuse_dependencies(const build& b, const card& c) {
  if (c.find("DEPENDENCIES") == nullptr || c.value("DEPENDENCIES") == "0") return;
  b.deck.fail(c, "constants that depend on field variables are not supported: give them by temperature");
}

static void read_isotropic(build& b, const card& c) {
  material& m = current(b);
  temperature_table table;
  read_table(
      b, c, 2, "Young's modulus, Poisson's ratio",
      [](const data_fields& row) {
        row.positive(0, "Young's modulus");
        const double nu = row.real(1, "Poisson's ratio");
        if (nu > -1 && nu <= 0.5) return;  // 0.5 is the incompressible material, regular in plane stress
        row.refuse_decimal_comma(2, 2);
        row.fail("Poisson's ratio must lie above -1 and not above 0.5");
      },
      table);
  m.E1 = m.E2 = table.front().value[0];
  m.NU12 = table.front().value[1];
  m.G12 = m.G13 = m.G23 = m.E1 / (2 * (1 + m.NU12));
  if (table.size() > 1) m.elastic_table = table;
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
  const data_fields row = read_constants(b, c, 6, 1, "E1, E2, nu12, G12, G13, G23");
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

namespace {

// Of the three axes of an orthotropic material.
struct spatial_constants {
  double E1, E2, E3, nu12, nu13, nu23, G12, G13, G23;
};

// Within the digits that decks give of such constants. A solid and a member then take E1 and nu12.
bool is_isotropic(const spatial_constants& s) {
  constexpr double WRITTEN = 1e-4;
  const double G = s.E1 / (2 * (1 + s.nu12));
  const auto same = [](double a, double b) { return std::abs(a - b) <= WRITTEN * std::abs(b); };
  return same(s.E2, s.E1) && same(s.E3, s.E1) && same(1 + s.nu13, 1 + s.nu12) && same(1 + s.nu23, 1 + s.nu12) &&
         same(s.G12, G) && same(s.G13, G) && same(s.G23, G);
}

void take(const spatial_constants& s, material& m) {
  m.orthotropic = true;
  m.E1 = s.E1;
  m.E2 = s.E2;
  m.NU12 = s.nu12;
  m.G12 = s.G12;
  m.G13 = s.G13;
  m.G23 = s.G23;
  m.isotropic_in_space = is_isotropic(s);
}

}  // namespace

// E1, E2, E3, nu12, nu13, nu23, G12, G13 and, in a second line as a rule, G23. In plane stress the constants of the
// third direction drop out; they are checked all the same.
static void read_engineering_constants(build& b, const card& c) {
  const data_fields row = read_constants(b, c, 9, 2, "E1, E2, E3, nu12, nu13, nu23, G12, G13, G23");
  spatial_constants s{};
  s.E1 = row.positive(0, "E1");
  s.E2 = row.positive(1, "E2");
  s.E3 = row.positive(2, "E3");
  s.nu12 = row.real(3, "nu12");
  s.nu13 = row.real(4, "nu13");
  s.nu23 = row.real(5, "nu23");
  s.G12 = row.positive(6, "G12");
  s.G13 = row.positive(7, "G13");
  s.G23 = row.positive(8, "G23");

  check_ratio(row, "nu12", s.nu12, s.E1, s.E2);
  check_ratio(row, "nu13", s.nu13, s.E1, s.E3);
  check_ratio(row, "nu23", s.nu23, s.E2, s.E3);
  const double nu21 = s.nu12 * (s.E2 / s.E1), nu31 = s.nu13 * (s.E3 / s.E1), nu32 = s.nu23 * (s.E3 / s.E2);
  const double determinant = 1 - s.nu12 * nu21 - s.nu23 * nu32 - nu31 * s.nu13 - 2 * nu21 * nu32 * s.nu13;
  if (!(determinant > 0)) row.fail("the three Poisson's ratios together give a negative strain energy");
  take(s, current(b));
  b.note(c, "E3, nu13 and nu23 have no effect in plane stress");
}

namespace {

using six_by_six = std::array<std::array<double, 6>, 6>;  // 11, 22, 33, 12, 13, 23; engineering shear strains

constexpr const char* ORTHO_FORM = "D1111, D1122, D2222, D1133, D2233, D3333, D1212, D1313, D2323";
constexpr const char* ANISO_FORM =
    "D1111, D1122, D2222, D1133, D2233, D3333, D1112, D2212, D3312, D1212, D1113, D2213, D3313, D1213, D1313, D1123, "
    "D2223, D3323, D1223, D1323, D2323";

// Is there a positive energy for every strain? Cholesky's pivots, after scaling to a unit diagonal.
bool is_positive(six_by_six D) {
  std::array<double, 6> size{};
  for (std::size_t i = 0; i < 6; ++i) {
    if (!(D[i][i] > 0)) return false;
    size[i] = std::sqrt(D[i][i]);
  }
  for (std::size_t i = 0; i < 6; ++i) {
    for (std::size_t j = 0; j < 6; ++j) D[i][j] /= size[i] * size[j];
  }
  constexpr double ROUNDING = 1e-12;
  for (std::size_t k = 0; k < 6; ++k) {
    if (!(D[k][k] > ROUNDING)) return false;
    for (std::size_t i = k + 1; i < 6; ++i) {
      for (std::size_t j = k + 1; j < 6; ++j) D[i][j] -= D[i][k] * D[k][j] / D[k][k];
    }
  }
  return true;
}

// The constants of an elasticity matrix without coupling of normal strains and shear, from its flexibility: the inverse
// of the block of the normal strains, by cofactors.
spatial_constants constants_of(const six_by_six& D) {
  const auto cofactor = [&](std::size_t i, std::size_t j) {
    const std::size_t a = (i + 1) % 3, b = (i + 2) % 3, c = (j + 1) % 3, d = (j + 2) % 3;
    return D[a][c] * D[b][d] - D[a][d] * D[b][c];
  };
  const double determinant = D[0][0] * cofactor(0, 0) + D[0][1] * cofactor(0, 1) + D[0][2] * cofactor(0, 2);
  spatial_constants s{};
  s.E1 = determinant / cofactor(0, 0);
  s.E2 = determinant / cofactor(1, 1);
  s.E3 = determinant / cofactor(2, 2);
  s.nu12 = -cofactor(0, 1) / cofactor(0, 0);
  s.nu13 = -cofactor(0, 2) / cofactor(0, 0);
  s.nu23 = -cofactor(1, 2) / cofactor(1, 1);
  s.G12 = D[3][3];
  s.G13 = D[4][4];
  s.G23 = D[5][5];
  return s;
}

// A triangle of rows, as the deck gives them.
six_by_six anisotropic_matrix(const data_fields& row) {
  six_by_six D{};
  int field = 0;
  for (std::size_t j = 0; j < 6; ++j) {
    for (std::size_t i = 0; i <= j; ++i) D[i][j] = D[j][i] = row.real(field++, "constant");
  }
  return D;
}

six_by_six orthotropic_matrix(const data_fields& row) {
  six_by_six D{};
  int field = 0;
  for (std::size_t j = 0; j < 3; ++j) {
    for (std::size_t i = 0; i <= j; ++i) D[i][j] = D[j][i] = row.real(field++, "constant");
  }
  for (std::size_t j = 3; j < 6; ++j) D[j][j] = row.real(field++, "constant");
  return D;
}

// Shear must not couple with what is not the same shear.
void check_orthotropic(const data_fields& row, const six_by_six& D) {
  constexpr double ROUNDING = 1e-9;
  static const char* const NAMES[] = {"11", "22", "33", "12", "13", "23"};
  for (std::size_t j = 3; j < 6; ++j) {
    for (std::size_t i = 0; i < j; ++i) {
      if (std::abs(D[i][j]) <= ROUNDING * std::sqrt(D[i][i] * D[j][j])) continue;
      row.fail(std::string("D") + NAMES[i] + NAMES[j] +
               " is not 0: the material is not orthotropic in its axes 1, 2, 3, and sections hold no other; where it "
               "is in other axes, give its constants in those and turn them by an *ORIENTATION");
    }
  }
}

}  // namespace

static void read_matrix(build& b, const card& c, bool anisotropic) {
  const data_fields row =
      anisotropic ? read_constants(b, c, 21, 3, ANISO_FORM) : read_constants(b, c, 9, 2, ORTHO_FORM);
  const six_by_six D = anisotropic ? anisotropic_matrix(row) : orthotropic_matrix(row);
  if (!is_positive(D)) row.fail("the constants give some strain no positive energy; look at their order");
  if (anisotropic) check_orthotropic(row, D);
  take(constants_of(D), current(b));
}

void read_elastic(build& b, const card& c) {
  if (current(b).elastic) b.deck.fail(c, "the material has an *ELASTIC already");
  refuse_dependencies(b, c);
  const std::string type = squeezed(c.value("TYPE"));
  if (type.empty() || type == "ISO" || type == "ISOTROPIC") {
    read_isotropic(b, c);
  } else if (type == "LAMINA") {
    read_lamina(b, c);
  } else if (type == "ENGINEERINGCONSTANTS") {
    read_engineering_constants(b, c);
  } else if (type == "ORTHO" || type == "ORTHOTROPIC") {
    read_matrix(b, c, false);
  } else if (type == "ANISO" || type == "ANISOTROPIC") {
    read_matrix(b, c, true);
  } else {
    b.deck.fail(
        c, "TYPE=" + c.value("TYPE") + " is not supported; ISO, LAMINA, ENGINEERING CONSTANTS, ORTHO and ANISO are");
  }
  current(b).elastic = true;
}

void read_density(build& b, const card& c) {
  material& m = current(b);
  if (m.density > 0) b.deck.fail(c, "the material has a *DENSITY already");
  refuse_dependencies(b, c);
  temperature_table table;
  read_table(
      b, c, 1, "density", [](const data_fields& row) { row.positive(0, "density"); }, table);
  m.density = table.front().value[0];
  if (table.size() > 1) m.density_table = table;
}

// The coefficients of a table count from the temperature ZERO. Constant ones have nothing to count: the strain is that
// of the change.
static void read_isotropic_expansion(build& b, const card& c, material& m) {
  temperature_table table;
  read_table(
      b, c, 1, "coefficient of expansion", [](const data_fields& row) { row.real(0, "coefficient of expansion"); },
      table);
  const auto largest = std::max_element(
      table.begin(), table.end(),
      [](const temperature_line& x, const temperature_line& y) { return std::abs(x.value[0]) < std::abs(y.value[0]); });
  m.alpha1 = m.alpha2 = m.alpha3 = largest->value[0];
  if (table.size() > 1) m.expansion_table = table;
}

void read_expansion(build& b, const card& c) {
  material& m = current(b);
  if (m.expansion) b.deck.fail(c, "the material has an *EXPANSION already");
  refuse_dependencies(b, c);
  if (c.find("ZERO") != nullptr) m.expansion_zero = real_parameter(b, c, "ZERO");
  const std::string type = squeezed(c.value("TYPE"));
  m.expansion = true;
  if (type.empty() || type == "ISO" || type == "ISOTROPIC") {
    read_isotropic_expansion(b, c, m);
  } else if (type == "ORTHO" || type == "ORTHOTROPIC") {
    const data_fields row = read_constants(b, c, 3, 1, "alpha11, alpha22, alpha33");
    m.alpha1 = row.real(0, "alpha11");
    m.alpha2 = row.real(1, "alpha22");
    m.alpha3 = row.real(2, "alpha33");
    b.note(c, "alpha33 has no effect: a thin shell is free to grow in its thickness");
  } else {
    b.deck.fail(c, "TYPE=" + c.value("TYPE") + " is not supported; ISO and ORTHO are");
  }
  if (m.expansion_zero != 0 && m.expansion_table.empty()) {
    b.note(c, "ZERO has no effect: the strain of a constant coefficient is that of the change of temperature");
  }
}

}  // namespace solver::deck
