// beam_shapes.cpp: areas, moments of inertia, torsion constants and shear coefficients of cross-sections.
//
// G. R. Cowper, The shear coefficient in Timoshenko's beam theory, Journal of Applied Mechanics 33 (1966): coefficients
// from the three-dimensional flexure of the section. At nu = 0.3 they are the 0.85, 0.89, 0.53 and 0.44 (box with
// b = h, t1 = t) that deck programs put in their tables for rectangle, circle, thin pipe and box.
#include "deck/beam_shapes.h"

#include <algorithm>
#include <cmath>

#include "model/vectors.h"

namespace solver::deck {

static double cubed(double x) { return x * x * x; }

// Saint-Venant's series: J = b s^3 / 3 (1 - 192 s / pi^5 b  sum over odd n of tanh(n pi b / 2 s) / n^5), s <= b.
static double torsion_of_rectangle(double x, double y) {
  const double s = std::min(x, y), b = std::max(x, y);
  double sum = 0;
  for (int n = 199; n >= 1; n -= 2) sum += std::tanh(n * PI * b / (2 * s)) / std::pow(n, 5);
  return b * cubed(s) / 3 * (1 - 192 / std::pow(PI, 5) * s / b * sum);
}

static double rectangle_factor(double nu) { return 10 * (1 + nu) / (12 + 11 * nu); }

beam_shape rectangle_shape(double a, double b, double nu) {
  beam_shape s;
  s.area = a * b;
  s.I11 = a * cubed(b) / 12;
  s.I22 = b * cubed(a) / 12;
  s.torsion = torsion_of_rectangle(a, b);
  s.shear_factor_1 = s.shear_factor_2 = rectangle_factor(nu);
  s.size = {a, b};
  s.points = rectangle_points(a, b);
  s.outline = rectangle_outline(a, b);
  return s;
}

// p: the half axis along the force.
//     kappa = 12 (1 + nu) p^2 (3 p^2 + q^2) / ((40 + 37 nu) p^4 + (16 + 10 nu) p^2 q^2 + nu q^4)
static double ellipse_factor(double p, double q, double nu) {
  const double r = q * q / (p * p);
  return 12 * (1 + nu) * (3 + r) / ((40 + 37 * nu) + (16 + 10 * nu) * r + nu * r * r);
}

beam_shape ellipse_shape(double p, double q, double nu) {
  beam_shape s;
  s.area = PI * p * q;
  s.I11 = PI / 4 * p * cubed(q);
  s.I22 = PI / 4 * q * cubed(p);
  s.torsion = PI * p * q * (p / std::hypot(p, q) * q) * (p / std::hypot(p, q) * q);
  s.shear_factor_1 = ellipse_factor(p, q, nu);
  s.shear_factor_2 = ellipse_factor(q, p, nu);
  s.size = {2 * p, 2 * q};
  s.points = ellipse_points(p, q);
  s.outline = ellipse_outline(p, q);
  return s;
}

// m = inner by outer radius:  kappa = 6 (1 + nu) (1 + m^2)^2 / ((7 + 6 nu) (1 + m^2)^2 + (20 + 12 nu) m^2)
beam_shape pipe_shape(double radius, double wall, double nu) {
  const double inner = radius - wall, m = inner / radius, sum = (1 + m * m) * (1 + m * m);
  beam_shape s;
  s.area = PI * wall * (radius + inner);
  s.I11 = s.I22 = s.area / 4 * (radius * radius + inner * inner);
  s.torsion = s.I11 + s.I22;
  s.shear_factor_1 = s.shear_factor_2 = 6 * (1 + nu) * sum / ((7 + 6 * nu) * sum + (20 + 12 * nu) * m * m);
  s.size = {2 * radius, 2 * radius};
  s.points = pipe_points(radius, wall);
  s.outline = pipe_outline(radius, wall);
  return s;
}

// Thin webs of height h along the force, thin flanges of width b across it. m: area of the flanges by that of the webs,
// n = b / h. With m = 0 the webs are rectangles.
//     kappa = 10 (1 + nu) (1 + 3 m)^2 / (12 + 72 m + 150 m^2 + 90 m^3 + nu (11 + 66 m + 135 m^2 + 90 m^3) + flanges)
static double web_factor(double m, double nu, double flanges) {
  const double webs = 12 + m * (72 + m * (150 + m * 90)) + nu * (11 + m * (66 + m * (135 + m * 90)));
  return 10 * (1 + nu) * (1 + 3 * m) * (1 + 3 * m) / (webs + flanges);
}

// Flanges held at both edges:  10 n^2 ((3 + nu) m + 3 m^2)
static double box_factor(double m, double n, double nu) {
  return web_factor(m, nu, 10 * n * n * ((3 + nu) * m + 3 * m * m));
}

// Flanges held in their middle:  30 n^2 (m + m^2) + 5 nu n^2 (8 m + 9 m^2)
static double i_factor(double m, double n, double nu) {
  return web_factor(m, nu, 30 * n * n * (m + m * m) + 5 * nu * n * n * (8 * m + 9 * m * m));
}

// Torsion by Bredt's formula: J = 4 (area within the middle line)^2 / (sum of length by thickness).
beam_shape box_shape(double a, double b, double t1, double t2, double nu) {
  const double in_a = a - 2 * t1, in_b = b - 2 * t2;  // the hollow
  const double mid_a = a - t1, mid_b = b - t2;        // between the middle lines of the walls
  beam_shape s;
  s.area = a * b - in_a * in_b;
  s.I11 = (a * cubed(b) - in_a * cubed(in_b)) / 12;
  s.I22 = (b * cubed(a) - in_b * cubed(in_a)) / 12;
  s.torsion = 2 * mid_a * mid_b * (mid_a * mid_b) / (mid_a / t2 + mid_b / t1);
  s.shear_factor_1 = box_factor(mid_b * t1 / (mid_a * t2), mid_b / mid_a, nu);
  s.shear_factor_2 = box_factor(mid_a * t2 / (mid_b * t1), mid_a / mid_b, nu);
  s.size = {a, b};
  s.points = box_points(a, b, {t1, t2, t1, t2});
  s.outline = box_outline(a, b, {t1, t2, t1, t2});
  return s;
}

// Along axis 1 the flanges alone carry the shear, each as a rectangle.
beam_shape i_shape(double depth, double width, double flange, double web, double nu) {
  const double hollow = depth - 2 * flange, h = depth - flange;
  beam_shape s;
  s.area = 2 * width * flange + hollow * web;
  s.I11 = (width * cubed(depth) - (width - web) * cubed(hollow)) / 12;
  s.I22 = (2 * flange * cubed(width) + hollow * cubed(web)) / 12;
  s.torsion = (2 * width * cubed(flange) + h * cubed(web)) / 3;
  s.shear_factor_1 = rectangle_factor(nu) * 2 * width * flange / s.area;
  s.shear_factor_2 = i_factor(2 * width * flange / (h * web), width / h, nu);
  s.size = {width, depth};
  s.points = i_points({depth / 2, depth, width, width, flange, flange, web});
  s.outline = i_outline({depth / 2, depth, width, width, flange, flange, web});
  return s;
}

}  // namespace solver::deck
