// deck_beam_sections_test.cpp: shapes without two axes of symmetry, thin walls, section points, and how beams take
// them.
#include "deck/beam_shapes.h"
#include "deck_builder.h"

#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "deck/thin_walled.h"

using namespace deck_test;
using namespace solver::deck;

namespace {

constexpr double PI = 3.14159265358979323846;

struct moments {
  double area = 0, s1 = 0, s2 = 0, I11 = 0, I22 = 0, I12 = 0;
};

// Of a polygon by Green's theorem, about the origin; counterclockwise is positive.
moments polygon(const std::vector<plane_point>& p) {
  moments m;
  for (std::size_t i = 0; i < p.size(); ++i) {
    const plane_point &a = p[i], &b = p[(i + 1) % p.size()];
    const double w = a[0] * b[1] - b[0] * a[1];
    m.area += w / 2;
    m.s1 += w * (a[0] + b[0]) / 6;
    m.s2 += w * (a[1] + b[1]) / 6;
    m.I22 += w * (a[0] * a[0] + a[0] * b[0] + b[0] * b[0]) / 12;
    m.I11 += w * (a[1] * a[1] + a[1] * b[1] + b[1] * b[1]) / 12;
    m.I12 += w * (a[0] * b[1] + 2 * a[0] * a[1] + 2 * b[0] * b[1] + b[0] * a[1]) / 24;
  }
  return m;
}

void expect_section(const beam_shape& s, const moments& m) {
  const double c1 = m.s1 / m.area, c2 = m.s2 / m.area, size = std::sqrt(m.area);
  EXPECT_WITHIN(s.area, m.area, m.area, 1e-12);
  EXPECT_WITHIN(s.centroid[0], c1, size, 1e-12);
  EXPECT_WITHIN(s.centroid[1], c2, size, 1e-12);
  const double I11 = m.I11 - m.area * c2 * c2, I22 = m.I22 - m.area * c1 * c1;
  EXPECT_WITHIN(s.I11, I11, I11, 1e-12);
  EXPECT_WITHIN(s.I22, I22, I22, 1e-12);
  EXPECT_WITHIN(s.I12, m.I12 - m.area * c1 * c2, I11 + I22, 1e-12);
}

moments difference(const moments& a, const moments& b) {
  return {a.area - b.area, a.s1 - b.s1, a.s2 - b.s2, a.I11 - b.I11, a.I22 - b.I22, a.I12 - b.I12};
}

std::vector<plane_point> hexagon(double radius) {
  std::vector<plane_point> p;
  for (int i = 0; i < 6; ++i) p.push_back({radius * std::cos(i * PI / 3), radius * std::sin(i * PI / 3)});
  return p;
}

wall_section chain(const std::vector<plane_point>& points, double t) {
  wall_section s;
  for (std::size_t i = 1; i < points.size(); ++i) s.add(points[i - 1], points[i], t);
  return s;
}

// A circle of radius r from `first` to `last`, in degrees.
wall_section arc(double r, double t, double first, double last, int walls) {
  std::vector<plane_point> p;
  for (int i = 0; i <= walls; ++i) {
    const double angle = (first + (last - first) * i / walls) * PI / 180;
    p.push_back({r * std::cos(angle), r * std::sin(angle)});
  }
  if (last - first == 360) p.back() = p.front();
  return chain(p, t);
}

// GOOD_FRAME with another section of its beams, from line 19 on, and without rotational springs at their ends.
std::string shaped(const std::string& form, const std::string& data, const std::string& more = "",
                   const std::string& keyword = "*BEAM SECTION, MATERIAL=STEEL, ELSET=BEAMS, SECTION=") {
  std::vector<std::string> lines = GOOD_FRAME;
  lines[18] = keyword + form;
  lines[19] = data;
  lines[20] += more;
  lines.erase(lines.begin() + 32, lines.begin() + 34);  // rotational springs
  lines.erase(lines.begin() + 21, lines.begin() + 23);
  return text_of(lines);
}

solver::frame_section section(const std::string& form, const std::string& data, const std::string& more = "") {
  return read(shaped(form, data, more)).frame_sections[0];
}

void expect_wrong(const std::string& form, const std::string& data, const std::string& text, int line = 20) {
  expect_error(shaped(form, data), line, "*BEAM SECTION", text);
}

}  // namespace

TEST(DeckBeamSections, RectanglesByTheirOutline) {
  // L 120 x 80, legs 10 (along axis 1) and 12 thick, the origin where the middle lines meet.
  const std::vector<plane_point> angle = {{-6, -5}, {114, -5}, {114, 5}, {6, 5}, {6, 75}, {-6, 75}};
  expect_section(l_shape(120, 80, 10, 12), polygon(angle));
  // T, flange 100 x 14 above, web 8, depth 150, nodes 60 above its lower end.
  const std::vector<plane_point> tee = {{-4, -60}, {4, -60},  {4, 76},   {50, 76},
                                        {50, 90},  {-50, 90}, {-50, 76}, {-4, 76}};
  expect_section(t_shape(100, 150, 60, 14, 8), polygon(tee));
  // I, lower flange 160 x 20, upper 80 x 12, web 10, depth 300, nodes at the bottom.
  const std::vector<plane_point> eye = {{-80, 0},  {80, 0},    {80, 20},   {5, 20},   {5, 288}, {40, 288},
                                        {40, 300}, {-40, 300}, {-40, 288}, {-5, 288}, {-5, 20}, {-80, 20}};
  expect_section(uneven_i_shape({0, 300, 160, 80, 20, 12, 10}), polygon(eye));
  // Box 200 x 100, walls 10 at the positive and 4 at the negative end of axis 1, 6 and 8 on axis 2.
  expect_section(uneven_box_shape(200, 100, {10, 6, 4, 8}),
                 difference(polygon({{-100, -50}, {100, -50}, {100, 50}, {-100, 50}}),
                            polygon({{-96, -42}, {90, -42}, {90, 44}, {-96, 44}})));
  const double inner = 50 - 2 * 4 / std::sqrt(3.0);
  expect_section(hexagon_shape(50, 4), difference(polygon(hexagon(50)), polygon(hexagon(inner))));
}

// An angle of 100 x 100 x 10 without fillets, by hand: A = 1900, the centroid 28.684 from the outer faces,
// I = 1.800e6, I12 = -1.066e6 (by the two rectangles 100 x 10 and 10 x 90), so that the principal moments are 2.866e6
// and 0.734e6: bending about the axis of symmetry is the strong one.
TEST(DeckBeamSections, PrincipalAxesOfAnAngle) {
  const solver::frame_section s = section("L", "100, 100, 10, 10");
  const double c = (1000 * 5.0 + 900 * 55.0) / 1900;
  EXPECT_NEAR(s.place.centroid[0] + 5, c, 1e-10);
  EXPECT_NEAR(s.place.centroid[1] + 5, c, 1e-10);
  const double I = 100 * 1e3 / 12 + 1000 * (c - 5) * (c - 5) + 10 * 729e3 / 12 + 900 * (c - 55) * (c - 55);
  const double I12 = 1000 * (50 - c) * (5 - c) + 900 * (5 - c) * (55 - c);
  EXPECT_LT(I12, 0);
  EXPECT_NEAR(std::abs(s.place.angle), PI / 4, 1e-12);
  EXPECT_WITHIN(std::max(s.inertia_xy, s.inertia_xz), I - I12, I, 1e-12);
  EXPECT_WITHIN(std::min(s.inertia_xy, s.inertia_xz), I + I12, I, 1e-12);
  EXPECT_EQ(s.place.shear_centre, (std::array<double, 2>{0, 0}));
  EXPECT_WITHIN(s.torsion, 2 * 95 * 1000 / 3.0, s.torsion, 1e-12);
}

// Channel of middle lines, flanges b, web h, one thickness t: shear centre 3 b^2 / (h + 6 b) beyond the web, J the sum
// of b t^3 / 3, I = t h^3 / 12 + b t h^2 / 2 (Timoshenko and Goodier).
TEST(DeckBeamSections, ChannelOfWalls) {
  const double b = 60, h = 140, t = 2;
  const wall_constants c = constants_of(chain({{b, -h / 2}, {0, -h / 2}, {0, h / 2}, {b, h / 2}}, t));
  EXPECT_WITHIN(c.shear_centre[0], -3 * b * b / (h + 6 * b), b, 1e-12);
  EXPECT_NEAR(c.shear_centre[1], 0, 1e-10);
  EXPECT_WITHIN(c.torsion_of_strips, (2 * b + h) * t * t * t / 3, c.torsion_of_strips, 1e-13);
  EXPECT_NEAR(c.torsion_of_cells / c.torsion_of_strips, 0, 1e-12);
  EXPECT_WITHIN(c.centroid[0], b * b / (2 * b + h), b, 1e-13);
  // With the strips' own thickness: t h^3 / 12 + 2 (b t (h/2)^2 + b t^3 / 12).
  EXPECT_WITHIN(c.I11, t * h * h * h / 12 + b * t * h * h / 2 + b * t * t * t / 6, c.I11, 1e-13);
}

// Web and flanges of an I: the flow of a force 1 along axis 2 is S / I, S = s t_f h / 2 in a flange, and
// b t_f h / 2 + t_w (h^2 / 4 - y^2) / 2 in the web. Its energy by Simpson's rule, exact for the fourth degree in parts.
TEST(DeckBeamSections, ShearFlexibilityIsTheEnergyOfTheFlow) {
  const double b = 80, h = 200, f = 9, w = 6;
  wall_section s;
  for (const double side : {-0.5, 0.5}) {
    for (const double end : {-0.5, 0.5}) s.add({0, end * h}, {side * b, end * h}, f);
  }
  s.add({0, -h / 2}, {0, h / 2}, w);
  const wall_constants c = constants_of(s);
  const double I = w * h * h * h / 12 + b * f * h * h / 2;
  double energy = 4 * f * (h / 2) * (h / 2) * std::pow(b / 2, 3) / 3;
  const int n = 2000;
  for (int i = 0; i < n; ++i) {
    const double y = -h / 2 + (i + 0.5) * h / n, S = b * f * h / 2 + w * (h * h / 4 - y * y) / 2;
    energy += S * S / w * h / n;
  }
  EXPECT_WITHIN(c.flexibility[1], energy / (I * I), c.flexibility[1], 1e-6);
  EXPECT_WITHIN(c.flexibility[0], 1.2 / (2 * b * f), c.flexibility[0], 1e-12);  // two rectangles
  EXPECT_NEAR(c.flexibility[2] / c.flexibility[0], 0, 1e-12);
}

TEST(DeckBeamSections, CirclesOpenAndClosed) {
  const double r = 50, t = 1;
  const wall_constants closed = constants_of(arc(r, t, 0, 360, 360));
  EXPECT_WITHIN(closed.torsion_of_cells, 2 * PI * r * r * r * t, closed.torsion_of_cells, 1e-3);
  EXPECT_WITHIN(closed.flexibility[0] * closed.area, 2, 2, 1e-3);  // kappa = 1/2
  EXPECT_NEAR(std::hypot(closed.shear_centre[0], closed.shear_centre[1]), 0, 1e-9 * r);
  // A slit at the negative end of axis 1: the shear centre lies 2 r from the middle, on the far side of the slit's
  // opposite, and torsion falls to strips.
  const wall_constants open = constants_of(arc(r, t, -179.99, 179.99, 360));
  EXPECT_WITHIN(open.shear_centre[0], 2 * r, r, 2e-3);
  EXPECT_WITHIN(open.torsion_of_strips, 2 * PI * r * t * t * t / 3, 1, 0.1);
  EXPECT_LT(open.torsion_of_cells, 1e-6 * closed.torsion_of_cells);
}

// Two cells side by side, a1 and a2 wide, h high, walls of one thickness. Flows q1, q2 of a twist 1 (over G):
//     q1 (2 a1 + 2 h) - q2 h = 2 A1 t,   q2 (2 a2 + 2 h) - q1 h = 2 A2 t,   J = 2 (A1 q1 + A2 q2).
TEST(DeckBeamSections, TwoCellsByBredt) {
  const double a1 = 30, a2 = 70, h = 40, t = 0.5;
  wall_section s = chain({{0, 0}, {a1, 0}, {a1 + a2, 0}, {a1 + a2, h}, {a1, h}, {0, h}, {0, 0}}, t);
  s.add({a1, 0}, {a1, h}, t);
  const double A1 = a1 * h, A2 = a2 * h, k1 = 2 * (a1 + h), k2 = 2 * (a2 + h), determinant = k1 * k2 - h * h;
  const double q1 = (2 * A1 * t * k2 + 2 * A2 * t * h) / determinant;
  const double q2 = (2 * A2 * t * k1 + 2 * A1 * t * h) / determinant;
  const wall_constants c = constants_of(s);
  EXPECT_WITHIN(c.torsion_of_cells, 2 * (A1 * q1 + A2 * q2), c.torsion_of_cells, 1e-12);
  EXPECT_NEAR(c.shear_centre[1], h / 2, 1e-9 * h);
}

// The shear centre of an I lies where the lateral stiffnesses of its flanges balance: h I2 / (I1 + I2) above the lower
// one, I = t b^3 / 12; of a T it is where flange and web meet. Hollow shapes: Bredt.
TEST(DeckBeamSections, ShearCentresAndTorsionOfShapes) {
  const beam_shape s = uneven_i_shape({0, 300, 160, 80, 20, 12, 10});
  const double low = 20 * 160.0 * 160 * 160 / 12, high = 12 * 80.0 * 80 * 80 / 12, between = 300 - 10 - 6;
  EXPECT_WITHIN(s.shear_centre[1], 10 + between * high / (low + high), between, 1e-12);
  EXPECT_WITHIN(s.torsion, (160 * 8000.0 + 80 * 1728.0 + between * 1000.0) / 3, s.torsion, 1e-13);
  EXPECT_WITHIN(t_shape(100, 150, 60, 14, 8).shear_centre[1], 150 - 7 - 60, 150, 1e-12);
  const beam_shape even = box_shape(0.6, 1, 0.1, 0.2, 0), same = uneven_box_shape(0.6, 1, {0.1, 0.2, 0.1, 0.2});
  EXPECT_WITHIN(same.torsion, even.torsion, even.torsion, 1e-13);
  const double middle = 50 - 4 / std::sqrt(3.0), cell = 1.5 * std::sqrt(3.0) * middle * middle;
  EXPECT_WITHIN(hexagon_shape(50, 4).torsion, 4 * cell * cell / (6 * middle / 4), 1e6, 1e-9);
  // A thicker wall at the positive end of axis 1 draws centroid and shear centre to it.
  EXPECT_GT(uneven_box_shape(200, 100, {10, 6, 4, 6}).shear_centre[0], 0);
  EXPECT_EQ(uneven_box_shape(200, 100, {10, 6, 4, 6}).centroid[1], 0);
}

TEST(DeckBeamSections, DataLines) {
  // A channel: three walls, and the direction n1 behind them.
  const solver::frame_section channel = section("ARBITRARY", "3, 60., -70., 0., -70., 2.\n0., 70., 2.\n60., 70., 2.");
  EXPECT_DOUBLE_EQ(channel.area, 520);
  EXPECT_NEAR(channel.place.shear_centre[0], -3 * 3600 / 500.0, 1e-10);
  EXPECT_EQ(channel.place.angle, 0);
  EXPECT_EQ(channel.n1, (std::array<double, 3>{0, 0, 1}));
  ASSERT_EQ(channel.points.size(), 7U);
  EXPECT_DOUBLE_EQ(channel.points[3].x2, 0);  // the middle of the web
  // A closed square, and a fin behind a way back of thickness 0.
  const solver::frame_section closed =
      section("ARBITRARY", "6, 0., 0., 10., 0., 1.\n10., 10., 1.\n0., 10., 1.\n0., 0., 1.\n10., 0., 0.\n20., 0., 1.");
  EXPECT_DOUBLE_EQ(closed.area, 50);
  EXPECT_NEAR(closed.torsion, 4 * 1e4 / 40 + 50 / 3.0, 1e-9);
  // An I whose nodes are at its bottom; one flange missing makes a T.
  EXPECT_DOUBLE_EQ(section("I", "0., 0.3, 0.1, 0.1, 0.02, 0.02, 0.01").place.centroid[1], 0.15);
  EXPECT_DOUBLE_EQ(section("I", "0., 0.3, 0., 0.1, 0., 0.02, 0.01").area,
                   section("T", "0.1, 0.3, 0., 0.02, 0.01").area);
  // CalculiX: OFFSET2=0.5 has the nodes on the side to which axis 2 points.
  std::vector<std::string> lines = GOOD_FRAME;
  lines[18] = "*BEAM SECTION, ELSET=BEAMS, MATERIAL=STEEL, SECTION=RECT, OFFSET1=-0.25, OFFSET2=0.5";
  lines[19] = "0.2, 0.3";
  lines.erase(lines.begin() + 32, lines.begin() + 34);
  lines.erase(lines.begin() + 21, lines.begin() + 23);
  const solver::frame_section offset = read(text_of(lines)).frame_sections[0];
  EXPECT_DOUBLE_EQ(offset.place.centroid[0], 0.05);
  EXPECT_DOUBLE_EQ(offset.place.centroid[1], -0.15);
  EXPECT_DOUBLE_EQ(offset.points[0].x2, -0.3);
  EXPECT_DOUBLE_EQ(offset.points[24].x2, 0);
}

TEST(DeckBeamSections, NumbersOfSectionPoints) {
  const auto count = [](const std::string& form, const std::string& data) { return section(form, data).points.size(); };
  EXPECT_EQ(count("RECT", "2, 3"), 25U);
  EXPECT_EQ(count("CIRC", "2"), 17U);
  EXPECT_EQ(count("PIPE", "2, 0.1"), 8U);
  EXPECT_EQ(count("BOX", "2, 3, 0.1, 0.1, 0.1, 0.1"), 16U);
  EXPECT_EQ(count("I", "1, 2, 1, 1, 0.1, 0.1, 0.1"), 13U);
  EXPECT_EQ(count("T", "2, 3, 1, 0.1, 0.1"), 9U);
  EXPECT_EQ(count("L", "2, 3, 0.1, 0.1"), 9U);
  EXPECT_EQ(count("HEX", "2, 0.1"), 12U);
}

TEST(DeckBeamSections, ConstantsWithoutAMaterial) {
  const std::string keyword = "*BEAM GENERAL SECTION, ELSET=BEAMS, DENSITY=7800, SECTION=";
  const solver::model m = read(shaped("GENERAL", "0.01, 2e-5, 1e-6, 1e-5, 1e-6", "\n2e11, 8e10, 1e-5", keyword));
  const solver::frame_section& s = m.frame_sections[0];
  const solver::material& mat = m.materials[s.material];
  EXPECT_EQ(mat.E1, 2e11);
  EXPECT_DOUBLE_EQ(mat.E1 / (2 * (1 + mat.NU12)), 8e10);
  EXPECT_EQ(mat.density, 7800);
  EXPECT_EQ(mat.alpha1, 1e-5);
  // Mohr's circle: tan 2a = 2 I12 / (I22 - I11).
  EXPECT_NEAR(std::tan(2 * s.place.angle), 2e-6 / -1e-5, 1e-12);
  EXPECT_NEAR(s.inertia_xy * s.inertia_xz, 2e-5 * 1e-5 - 1e-12, 1e-22);
  EXPECT_NEAR(s.inertia_xy + s.inertia_xz, 3e-5, 1e-18);
  const solver::model shape = read(shaped("RECT", "0.1, 0.2", "\n2e11, 8e10", keyword));
  EXPECT_DOUBLE_EQ(shape.frame_sections[0].area, 0.02);
}

TEST(DeckBeamSections, CardsBelowAGeneralSection) {
  const std::string keyword = "*BEAM GENERAL SECTION, ELSET=BEAMS, MATERIAL=STEEL, SECTION=";
  const solver::frame_section s =
      read(shaped("GENERAL", "0.01, 2e-5, 0., 1e-5, 1e-6",
                  "\n*CENTROID\n0.1, -0.2\n*SHEAR CENTER\n0.3\n*SECTION POINTS\n1., 2., 3., 4.\n5., 6.\n"
                  "*TRANSVERSE SHEAR STIFFNESS\n5e8, 6e8",
                  keyword))
          .frame_sections[0];
  EXPECT_EQ(s.place.centroid, (std::array<double, 2>{0.1, -0.2}));
  EXPECT_EQ(s.place.shear_centre, (std::array<double, 2>{0.3, 0}));
  ASSERT_EQ(s.points.size(), 3U);
  EXPECT_EQ(s.points[2].x2, 6);
  EXPECT_EQ(s.shear_stiffness_z, 5e8);
  expect_error(shaped("RECT", "0.1, 0.2", "\n*CENTROID\n0.1, 0."), 22, "*CENTROID",
               "belongs to SECTION=GENERAL: a shape knows where it lies");
  expect_error(
      shaped("GENERAL", "0.01, 2e-5, 1e-6, 1e-5, 1e-6", "\n*TRANSVERSE SHEAR STIFFNESS\n5e8, 6e8", keyword), 23,
      "*TRANSVERSE SHEAR STIFFNESS",
      "K23 and K13 differ, and axes 1 and 2 are not the principal axes of the section: PRINCIPAL in the keyword "
      "line says that they belong to these");
  const std::string turned = "\n*TRANSVERSE SHEAR STIFFNESS, PRINCIPAL\n5e8, 6e8";
  const solver::model m = read(shaped("GENERAL", "0.01, 2e-5, 1e-6, 1e-5, 1e-6", turned, keyword));
  EXPECT_EQ(m.frame_sections[0].shear_stiffness_y, 6e8);
}

TEST(DeckBeamSections, WrongDataLines) {
  expect_wrong("L", "100, 100, 10",
               "too few fields (3): a, b, t1, t2: legs along axis 1 and axis 2, over all, and their thicknesses");
  expect_wrong("L", "100, 10, 10, 5", "a leg is thicker than the other is long: SECTION=RECT is a solid bar");
  expect_wrong("T", "100, 10, 5, 10, 5", "the flange leaves no web");
  expect_wrong("HEX", "10, 9", "the wall leaves no hollow: a HEX is a tube");
  expect_wrong("I", "0.15, 0.3, 0.1, 0., 0.02, 0.02, 0.01", "a flange has a width and a thickness, or neither");
  expect_wrong("I", "0.15, 0.3, 0., 0., 0., 0., 0.01", "both flanges are missing: SECTION=RECT is a solid bar");
}

TEST(DeckBeamSections, WrongWalls) {
  const auto arbitrary = [](const std::string& data) { return shaped("ARBITRARY", data); };
  expect_error(arbitrary("9, 0., 0., 1., 0., 0.1\n1., 1., 0.1"), 20, "*BEAM SECTION",
               "of 9 segments 3 have a data line");
  expect_error(arbitrary("2, 0., 0., 1., 0., 0.1\n1., 0., 0.1"), 21, "*BEAM SECTION",
               "the segment has no length: its two points are the same");
  expect_error(arbitrary("3, 0., 0., 1., 0., 0.1\n2., 0., 0.\n2., 1., 0.1"), 19, "*BEAM SECTION",
               "the segments with a thickness do not hang together");
  expect_error(arbitrary("2, 0., 0., 1., 0., -0.1\n1., 1., 0.1"), 20, "*BEAM SECTION", "thickness: '-0.1' is negative");
}

TEST(DeckBeamSections, WhatBeamsOffTheirNodesAreRefused) {
  const auto deck = [](const std::string& cards, const std::string& step) {
    return "*NODE\n1, 0., 0., 0.\n2, 1., 0., 0.\n*ELEMENT, TYPE=B31, ELSET=B\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n"
           "2e11, 0.3\n*BEAM SECTION, ELSET=B, MATERIAL=M, SECTION=L\n0.1, 0.1, 0.01, 0.01\n0., 1., 0.\n" +
           cards + "*BOUNDARY\n1, ENCASTRE\n*STEP\n" + step + "*CLOAD\n2, 2, 1.\n*END STEP\n";
  };
  const std::string way_out =
      " belongs to beams with their centroid and shear centre in the nodes and with principal axes 1 and 2; turn n1 to "
      "a principal axis, and put the nodes into the centroid";
  expect_error(deck("*FIXITY\nB, S1, 0.5, 1.\n", "*STATIC\n"), 9, "*BEAM SECTION",
               "element 1: a *FIXITY between 0 and 1" + way_out);
  expect_error(deck("*PLASTIC HINGE, ELSET=B, CURVE=ORBISON\n1., 1., 1.\n", "*STATIC\n"), 9, "*BEAM SECTION",
               "element 1: *PLASTIC HINGE, here or at other beams," + way_out);
}
