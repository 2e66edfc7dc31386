// Axis 1 of orthotropic plates: the same whichever node an element begins with, where the conventions say, and in
// closed forms of off-axis laminae, orthotropic plates and cylinders wound round their axis.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "elements/material_axes.h"
#include "finites/fields.h"
#include "orientation_support.h"
#include "plastic_support.h"

using namespace orientation_test;
using shell_test::read;

namespace {

const double PI = std::acos(-1.0);

// A plane askew to all three axes.
constexpr point E_A = {2.0 / 3, 1.0 / 3, 2.0 / 3}, E_B = {-2.0 / 3, 2.0 / 3, 1.0 / 3},
                E_N = {-1.0 / 3, -2.0 / 3, 2.0 / 3};

point in_askew_plane(double a, double b) {
  return {a * E_A[0] + b * E_B[0], a * E_A[1] + b * E_B[1], a * E_A[2] + b * E_B[2]};
}

// A cantilever of skew cells under a pull, a shear and, where it can bear it, a force across.
std::string cantilever(const lamina& l) {
  std::string loads = "*CLOAD\n";
  for (int i = 0; i < 3; ++i) {
    const auto k = static_cast<std::size_t>(i);
    loads += edge_load(l.column(l.nx), i + 1, 7 * E_A[k] + 3 * E_B[k] + (l.membrane() ? 0 : 0.02 * E_N[k]));
  }
  return l.deck(held(l.column(0), 1, 6), loads);
}

lamina skew(lamina l) {
  l.place = [](double u, double v) { return in_askew_plane(4 * u + 0.7 * v, 2 * v); };
  return l;
}

std::vector<double> all_of(const solver::element_result& e, int half_turned) {
  // A turned normal exchanges top and bottom and turns axis 2 round: shears 12 and everything that counts the normal
  // once change their signs.
  const double s = half_turned != 0 ? -1 : 1;
  std::vector<double> v = {e.force[0],      e.force[1],  s * e.force[2],       s * e.moment[0],
                           s * e.moment[1], e.moment[2], s * e.shear_force[0], e.shear_force[1]};
  const std::size_t top = half_turned != 0 ? solver::BOTTOM : solver::TOP;
  const std::size_t bottom = half_turned != 0 ? solver::TOP : solver::BOTTOM;
  for (const std::size_t face : {top, static_cast<std::size_t>(solver::MIDDLE), bottom}) {
    const auto& stress = e.at[face].stress;
    v.insert(v.end(), {stress[0], stress[1], s * stress[2], e.at[face].equivalent});
  }
  return v;
}

// In single precision, in which the library keeps angles and constants, with the ratio of the moduli.
constexpr double TURNED = 2e-5;

void expect_same(const solved& a, const solved& b, const std::function<bool(std::size_t)>& half_turned) {
  EXPECT_WITHIN(b.solution.displacement, a.solution.displacement, max_norm(a.solution.displacement), TURNED);
  std::vector<double> all_a, all_b;
  std::vector<double> scale(20, 0.0);
  for (const auto& e : a.results.elements) {
    const std::vector<double> v = all_of(e, 0);
    for (std::size_t i = 0; i < v.size(); ++i) scale[i] = std::fmax(scale[i], std::fabs(v[i]));
  }
  const double moment = std::fmax(scale[3], scale[4]), stress = std::fmax(scale[8], scale[9]);
  const double force = std::fmax(scale[0], scale[1]), shear = std::fmax(scale[6], scale[7]);
  for (std::size_t e = 0; e < a.results.elements.size(); ++e) {
    const std::vector<double> x = all_of(a.results.elements[e], 0),
                              y = all_of(b.results.elements[e], half_turned(e) ? 1 : 0);
    for (std::size_t i = 0; i < x.size(); ++i) {
      const double size = i < 3 ? force : i < 6 ? moment : i < 8 ? shear : stress;
      EXPECT_LE(std::fabs(x[i] - y[i]), TURNED * size) << "element " << e + 1 << " value " << i;
    }
  }
}

std::function<int(int)> random_begin(unsigned seed) {
  return [seed](int number_of) {
    std::mt19937 engine(seed + static_cast<unsigned>(number_of));
    return static_cast<int>(engine() % 12);
  };
}

}  // namespace

TEST(AnalysisOrientation, AnyNodeMayComeFirst) {
  for (const lamina& form : all_types()) {
    lamina l = skew(form);
    l.section += std::string(l.section.empty() ? "" : ", ") + "ORIENTATION ANGLE=25.";
    const solved base = solve(read(cantilever(l)));
    for (int k = 1; k <= 4; ++k) {
      SCOPED_TRACE(name_of(l) + " " + std::to_string(k));
      l.begin = [k](int) { return k; };
      if (k == 4) l.begin = random_begin(3);
      expect_same(base, solve(read(cantilever(l))), [](std::size_t) { return false; });
    }
  }
}

TEST(AnalysisOrientation, ATurnedNormalTurnsNoMaterial) {
  // The orientation holds axis 1 in space; every other element, or every one, turns the other way round.
  for (const lamina& form : all_types()) {
    lamina l = skew(form);
    l.cards = "*ORIENTATION, NAME=PLY, SYSTEM=RECTANGULAR\n2., 1., 2., -2., 2., 1.\n3, 25.\n";
    l.section += std::string(l.section.empty() ? "" : ", ") + "ORIENTATION=ply";
    const solved base = solve(read(cantilever(l)));
    for (const int every : {1, 2}) {
      SCOPED_TRACE(name_of(l) + " every " + std::to_string(every));
      l.reversed = [every](int n) { return n % every == 0; };
      l.begin = random_begin(8);
      expect_same(base, solve(read(cantilever(l))),
                  [every](std::size_t e) { return (static_cast<int>(e) + 1) % every == 0; });
    }
  }
}

TEST(AnalysisOrientation, OffAxisTensionOfAFreeMesh) {
  // A uniform pull: one stress everywhere, s1 = s c^2, s2 = s s^2, s12 = -s c s (Jones 1975), with
  // 1 / E(t) = c^4 / E1 + s^4 / E2 + (1 / G12 - 2 nu12 / E1) s^2 c^2.
  for (const lamina& form : all_types()) {
    for (const double degrees : {30.0, -55.0, 90.0}) {
      SCOPED_TRACE(name_of(form) + " " + std::to_string(degrees));
      lamina l = form;
      l.nx = 6;
      l.ny = 4;
      l.place = shaken(l, 5, 0.28);
      l.begin = random_begin(21);
      l.falling = [](int cell) { return (cell * 7 + 3) % 5 < 2; };
      l.section += (l.section.empty() ? "" : ", ") + ("ORIENTATION ANGLE=" + std::to_string(degrees));
      const double stress = 11, force = stress * l.thickness * 2;
      const solved s =
          solve(read(l.deck("ALL, 3\n1, 1, 2\n" + std::to_string(l.node(0, l.ny) + 1) + ", 1\n",
                            "*CLOAD\n" + edge_load(l.column(l.nx), 1, force) + edge_load(l.column(0), 1, -force))));
      const double t = degrees * PI / 180, c = std::cos(t), sn = std::sin(t);
      const double flexibility =
          std::pow(c, 4) / l.E1 + std::pow(sn, 4) / l.E2 + (1 / l.G12 - 2 * l.nu12 / l.E1) * sn * sn * c * c;
      const double extension = s.u(l.node(l.nx, 0), 'x') - s.u(l.node(0, 0), 'x');
      EXPECT_WITHIN(extension, 4 * stress * flexibility, 4 * stress * flexibility, 1e-6);
      const double S11 = 1 / l.E1, S22 = 1 / l.E2, S12 = -l.nu12 / l.E1, S66 = 1 / l.G12;
      const double shear = (2 * S11 - 2 * S12 - S66) * sn * c * c * c - (2 * S22 - 2 * S12 - S66) * sn * sn * sn * c;
      EXPECT_WITHIN(s.u(l.node(l.nx, 0), 'y'), 4 * stress * shear, 4 * stress * flexibility, 1e-6);
      for (const solver::element_result& e : s.results.elements) {
        EXPECT_WITHIN((std::vector<double>{e.force[0], e.force[1], e.force[2]}),
                      (std::vector<double>{force / 2 * c * c, force / 2 * sn * sn, -force / 2 * c * sn}), force, 1e-6);
        EXPECT_WITHIN(e.at[solver::TOP].stress[2], -stress * c * sn, stress, 1e-6);
        // The first principal stress lies along the pull, which is -t from axis 1.
        EXPECT_WITHIN(std::cos(2 * (e.at[solver::TOP].angle + t)), 1.0, 1.0, 1e-6);
      }
    }
  }
}

namespace {

// The middle of a simply supported orthotropic plate under unit pressure, by the double series of Navier; axis 1 along
// x.
double navier(double a, double b, double D11, double D12, double D22, double D66) {
  double sum = 0;
  for (int m = 1; m < 80; m += 2) {
    for (int n = 1; n < 80; n += 2) {
      const double x = m / a, y = n / b;
      const double stiffness = D11 * std::pow(x, 4) + 2 * (D12 + 2 * D66) * x * x * y * y + D22 * std::pow(y, 4);
      sum += ((m + n) / 2 % 2 == 1 ? 1 : -1) / (m * n * stiffness);
    }
  }
  return 16 / std::pow(PI, 6) * sum;
}

}  // namespace

TEST(AnalysisOrientation, OrthotropicPlateOfAFreeMesh) {
  const double a = 1.3, b = 1;
  for (const lamina& form : all_types()) {
    if (form.membrane()) continue;
    for (const bool along_y : {false, true}) {
      SCOPED_TRACE(name_of(form) + (along_y ? " along y" : " along x"));
      lamina l = form;
      l.nx = l.ny = 20;
      l.thickness = 0.01;
      l.place = [=](double u, double v) { return point{a * u, b * v, 0}; };
      l.place = shaken(l, 9, 0.2);
      l.begin = random_begin(2);
      l.falling = [](int cell) { return (cell * 11 + 4) % 7 < 3; };
      if (along_y) {
        l.cards = "*ORIENTATION, NAME=ACROSS\n0., 3., 0., -1., 2., 0.\n3, 0.\n";
        l.section += ", ORIENTATION=ACROSS";
      }
      const std::string supports = held(l.column(0), 3, 4) + held(l.column(l.nx), 3, 4) + held(l.row(0), 3, 3) +
                                   held(l.row(0), 5, 5) + held(l.row(l.ny), 3, 3) + held(l.row(l.ny), 5, 5) +
                                   "1, 1, 2\n" + std::to_string(l.node(l.nx, 0) + 1) + ", 2\n";
      const solved s = solve(read(l.deck(supports, "*DLOAD\nSKIN, P, 1.\n")));
      const double h = std::pow(l.thickness, 3) / 12;
      const double D11 = h * l.Q11(), D22 = h * l.Q22(), D12 = h * l.Q12(), D66 = h * l.G12;
      const double w = along_y ? navier(a, b, D22, D12, D11, D66) : navier(a, b, D11, D12, D22, D66);
      EXPECT_GT(std::fabs(navier(a, b, D22, D12, D11, D66) / navier(a, b, D11, D12, D22, D66) - 1), 0.5);
      // The middle node has moved a little: the largest deflection is that of the middle.
      double largest = 0;
      for (std::size_t f = 2; f < s.solution.displacement.size(); f += 6)
        largest = std::fmax(largest, s.solution.displacement[f]);
      EXPECT_WITHIN(largest, w, w, 0.015);
    }
  }
}

namespace {

// A quarter of a cylinder round an axis along y through (2, 0, -1), of facets under equal radial forces on its nodes: a
// regular polygon that only grows. Per length, N = F / (2 sin(d / 2)) for a node's force F and an angle d of a facet.
struct quarter {
  lamina l;
  double radius = 3, length = 2;
  quarter(const std::string& type, const std::string& section, const std::string& cards) {
    l.type = type;
    l.nx = 9;
    l.ny = 2;
    l.section = section;
    l.cards = cards;
    l.place = [this](double u, double v) {
      return point{2 + radius * std::cos(PI / 2 * u), length * v, -1 + radius * std::sin(PI / 2 * u)};
    };
    l.begin = random_begin(6);
  }
  quarter(const quarter&) = delete;
  quarter& operator=(const quarter&) = delete;

  std::string deck(double F) const {
    std::string loads = "*CLOAD\n";
    for (int i = 0; i <= l.nx; ++i) {
      const double angle = PI / 2 * i / l.nx, share = (i == 0 || i == l.nx ? F / 2 : F) * length;
      if (i < l.nx) loads += edge_load(l.column(i), 1, share * std::cos(angle));
      if (i > 0) loads += edge_load(l.column(i), 3, share * std::sin(angle));
    }
    return l.deck(held(l.column(0), 3, 4) + held(l.column(0), 5, 6) + held(l.column(l.nx), 1, 1) +
                      held(l.column(l.nx), 5, 6) + "1, 2\n" + std::to_string(l.node(l.nx, 0) + 1) + ", 2\n",
                  loads);
  }
};

}  // namespace

TEST(AnalysisOrientation, CylinderWoundRoundItsAxis) {
  const std::string system = "*ORIENTATION, NAME=WOUND, SYSTEM=CYLINDRICAL\n2., 0., -1., 2., 5., -1.\n";
  struct turn {
    const char* second;  // the second data line
    bool hoop;
  };
  for (const char* const type : {"S3", "S4"}) {
    for (const turn& t : {turn{"1, 0.\n", true},
                          {"", true},
                          {"1, 90.\n", false},
                          {"3, 90.\n", true},
                          {"1\n", true},
                          {"2, 0.\n", false}}) {
      SCOPED_TRACE(std::string(type) + " " + t.second);
      const quarter q(type, "ORIENTATION=WOUND, FORMULATION=THIN", system + t.second);
      const double F = 0.8, N = F / (2 * std::sin(PI / 2 / q.l.nx / 2));
      const solver::model m = read(q.deck(F));
      const solved s = solve(m);
      const double modulus = t.hoop ? q.l.E1 : q.l.E2;
      const double growth = N / (modulus * q.l.thickness) * q.radius;
      EXPECT_WITHIN(s.u(q.l.node(0, 1), 'x'), growth, growth, 1e-5);
      EXPECT_WITHIN(s.u(q.l.node(q.l.nx, 0), 'z'), growth, growth, 1e-5);
      for (const solver::element_result& e : s.results.elements) {
        EXPECT_WITHIN(e.force[t.hoop ? 0 : 1], N, N, 1e-5);
        EXPECT_WITHIN(e.force[t.hoop ? 1 : 0], 0.0, N, 1e-5);
        EXPECT_WITHIN(e.force[2], 0.0, N, 1e-5);
      }
      EXPECT_EQ(m.notes.size(), t.second[0] == '\0' ? 2U : 1U);  // one is on alpha33
    }
  }
}

TEST(AnalysisOrientation, GlobalZWhereXIsTheNormal) {
  // A wall whose normal is x or lies `tilt` from it towards y. Its height is along z, its width across.
  for (const lamina& form : all_types()) {
    for (const double tilt : {0.0, 0.05, -0.09, 0.11, 0.5, 180.0}) {
      SCOPED_TRACE(name_of(form) + " " + std::to_string(tilt));
      const double c = std::cos(tilt * PI / 180), s = std::sin(tilt * PI / 180);
      lamina l = form;
      l.place = [=](double u, double v) { return point{-s * 2 * v, c * 2 * v, 4 * u}; };
      l.begin = random_begin(1);
      const double stress = 5, force = stress * l.thickness * 2;
      const solved r = solve(
          read(l.deck(held(l.column(0), 3, 3) + "ALL, 1\n1, 2\n", "*CLOAD\n" + edge_load(l.column(l.nx), 3, force))));
      const bool z_takes_its_place = std::fabs(s) < std::sin(0.1 * PI / 180);
      const double modulus = z_takes_its_place ? l.E1 : l.E2;
      EXPECT_WITHIN(r.u(l.node(l.nx, 1), 'z'), 4 * stress / modulus, 4 * stress / modulus, 1e-5);
      for (const solver::element_result& e : r.results.elements)
        EXPECT_WITHIN(e.force[z_takes_its_place ? 0 : 1], force / 2, force, 1e-5);
    }
  }
}

TEST(AnalysisOrientation, TheAngleCountsFromTheOrientationAboutTheNormal) {
  // Axis 1 of the orientation at 20 degrees, 50 more about it, -15 about the normal: 55 from x, or 85 where the normal
  // points down.
  for (const bool down : {false, true}) {
    lamina l;
    l.cards = "*ORIENTATION, NAME=O\n" + std::to_string(std::cos(PI / 9)) + ", " + std::to_string(std::sin(PI / 9)) +
              ", 0., 0., 1., 0.\n3, 50.\n";
    l.section = "FORMULATION=THIN, ORIENTATION=O, ORIENTATION ANGLE=-15.";
    l.reversed = [down](int) { return down; };
    const double force = 5 * l.thickness * 2;
    const solved s =
        solve(read(l.deck("ALL, 3\n1, 1, 2\n" + std::to_string(l.node(0, l.ny) + 1) + ", 1\n",
                          "*CLOAD\n" + edge_load(l.column(l.nx), 1, force) + edge_load(l.column(0), 1, -force))));
    const double t = (down ? 85 : 55) * PI / 180, c = std::cos(t), sn = std::sin(t);
    for (const solver::element_result& e : s.results.elements)
      EXPECT_WITHIN((std::vector<double>{e.force[0], e.force[1], std::fabs(e.force[2])}),
                    (std::vector<double>{force / 2 * c * c, force / 2 * sn * sn, force / 2 * c * sn}), force, 1e-5);
  }
}

TEST(AnalysisOrientation, RectangularSystemWithAnOriginOfItsOwn) {
  // From (5, 5, 0) to (5, 8, 0) runs direction 1, along y.
  lamina l;
  l.type = "M3D4";
  l.section = "ORIENTATION=O";
  l.cards = "*ORIENTATION, NAME=O, DEFINITION=COORDINATES\n5., 8., 0., 4., 5., 0., 5., 5., 0.\n3\n";
  const double force = 5 * l.thickness * 2;
  const solved s = solve(read(l.deck("1, 1, 2\n2, 1\n3, 1\n", "*CLOAD\n" + edge_load(l.column(l.nx), 1, force))));
  EXPECT_WITHIN(s.u(l.node(l.nx, 0), 'x'), 4 * 5 / l.E2, 4 * 5 / l.E2, 1e-6);
}

TEST(AnalysisOrientation, IsotropicResultsHaveNoJumps) {
  // A shear, a pull and a bending of constant strain: one value in all elements, whatever node comes first.
  for (lamina l : all_types()) {
    if (l.membrane()) continue;
    SCOPED_TRACE(name_of(l));
    l.E2 = l.E1;
    l.G12 = l.G13 = l.G23 = l.E1 / 2.6;
    l.nx = l.ny = 4;
    l.place = shaken(l, 17, 0.25);
    l.begin = random_begin(77);
    std::string deck = l.deck("ALL, 1, 6\n", "");
    deck.replace(deck.find("*ELASTIC, TYPE=LAMINA\n"), std::string("*ELASTIC, TYPE=LAMINA\n").size(),
                 "*ELASTIC\n160000., 0.3\n** ");
    deck.replace(deck.find("*EXPANSION, TYPE=ORTHO"), std::string("*EXPANSION, TYPE=ORTHO\n").size(), "** ");
    const solver::model prepared = read(deck);
    solver::model m = prepared;
    m.boundaries.clear();
    // u = 2e-3 x + 1e-3 y, v = 0, w = x^2 / 100 + x y / 100.
    for (std::size_t n = 0; n < m.nodes.size(); ++n) {
      const double x = m.nodes[n].xyz[0], y = m.nodes[n].xyz[1];
      const double value[] = {2e-3 * x + 1e-3 * y, 0, x * x / 100 + x * y / 100, x / 100, -(2 * x + y) / 100};
      for (int d = 0; d < 5; ++d) {
        solver::boundary_condition b;
        b.node = static_cast<int>(n);
        b.first_dof = b.last_dof = d + 1;
        b.value = value[d];
        m.boundaries.push_back(b);
      }
    }
    const solved s = solve(m);
    const double h = l.thickness, Q = 160000 / 0.91, G = 160000 / 2.6, D = h * h * h / 12;
    for (const solver::element_result& e : s.results.elements) {
      EXPECT_WITHIN((std::vector<double>{e.force[0], e.force[1], e.force[2]}),
                    (std::vector<double>{h * Q * 2e-3, h * Q * 0.3 * 2e-3, h * G * 1e-3}), h * Q * 2e-3, 1e-9);
      // Strains at the height z are -z w,xx, -z w,yy, -2 z w,xy.
      EXPECT_WITHIN((std::vector<double>{e.moment[0], e.moment[1], e.moment[2]}),
                    (std::vector<double>{-D * Q * 0.02, -D * Q * 0.3 * 0.02, -D * G * 0.02}), D * Q * 0.02, 1e-9);
    }
  }
}

TEST(AnalysisOrientation, PlasticStrainsOfATurnedStrip) {
  // Uniaxial tension beyond the yield stress: plastic strains p, -p / 2 along and across the pull, and in axes turned
  // by t p (c^2 - s^2 / 2), p (s^2 - c^2 / 2) and the engineering shear strain -3 p s c.
  using namespace plastic_test;
  for (const sheet& form : all_forms()) {
    for (const char* const model : {"MODEL=LAYERED, POINTS=3", ""}) {
      SCOPED_TRACE(shell_test::name_of(form) + " " + model);
      strip s = a_strip(form);
      s.of = {YOUNG / 50, model};
      std::string text = s.tension("1.2, 400\n");
      const std::string card = "*SHELL SECTION, ";
      text.insert(text.find(card) + card.size(), "ORIENTATION ANGLE=30., ");
      const solver::elastoplastic_solution found = load(text).front();
      ASSERT_EQ(found.end, solver::elastoplastic_end::FACTOR_REACHED);
      const double c = std::cos(PI / 6), sn = std::sin(PI / 6), hardened = 0.2 * YIELD / (YOUNG / 50),
                   stress = 1.2 * YIELD;
      for (const solver::element_result& e : found.results.elements) {
        // The model of the whole section hardens by a rule of its own: its size of p is taken from the trace, p / 2.
        const double p = *model != '\0' ? hardened : 2 * (e.plastic[0][0] + e.plastic[0][1]);
        EXPECT_WITHIN(p, hardened, hardened, 0.15);
        EXPECT_WITHIN((std::vector<double>{e.plastic[0][0], e.plastic[0][1], e.plastic[0][2]}),
                      (std::vector<double>{p * (c * c - sn * sn / 2), p * (sn * sn - c * c / 2), -3 * p * sn * c}), p,
                      1e-4);
        const auto& top = e.at[solver::TOP].stress;
        EXPECT_WITHIN((std::vector<double>{top[0], top[1], top[2]}),
                      (std::vector<double>{stress * c * c, stress * sn * sn, -stress * c * sn}), stress, 1e-5);
      }
    }
  }
}

TEST(AnalysisOrientation, StrainsTurnWithHalfOfTheirShear) {
  // A shear of 0.02 is a stretch of 0.01 along one diagonal and as much a shortening along the other; one stretch of
  // 0.01 is half of it along both and a shear of 0.01.
  const double h = std::sqrt(0.5);
  const MATRIX<3, 3> from{{1, 0, 0, 0, 1, 0, 0, 0, 1}};
  MATRIX<3, 3> to{};
  to(1, 1) = to(1, 2) = to(2, 2) = h;
  to(2, 1) = -h;
  to(3, 3) = 1;
  const solver::plane_rotation turn(from, to);
  const double shear[3] = {0, 0, 0.02}, stretch[3] = {0.01, 0, 0};
  const std::array<double, 3> a = turn.strains(shear), b = turn.strains(stretch);
  const std::array<double, 3> of_shear{0.01, -0.01, 0}, of_stretch{0.005, 0.005, -0.01};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(a[i], of_shear[i], 1e-16) << i;
    EXPECT_NEAR(b[i], of_stretch[i], 1e-16) << i;
  }
}
