// cable_field.cpp: the closed form of the elastic catenary.
#include "elements/cable_field.h"

#include <cmath>

#include "model/vectors.h"

namespace solver {

namespace {

using vector = vector3;

vector sum(const vector& a, double factor, const vector& b) {
  return {a[0] + factor * b[0], a[1] + factor * b[1], a[2] + factor * b[2]};
}
vector tension_vector(const catenary& c, double s) { return sum(c.tension, -s, c.load); }

}  // namespace

double tension_at(const catenary& c, double s) { return length_of(tension_vector(c, s)); }

// With the component a of the tension along the load and h across it, both integrals of t / T have a closed form:
//
//     int h / T ds = h (asinh(a0/h) - asinh(as/h)) / w,      int a / T ds = (T0 - Ts) / w.
//
// They are written without differences of numbers that a light load leaves nearly equal.
std::array<double, 3> position_at(const catenary& c, double s) {
  const double w = length_of(c.load), T0 = length_of(c.tension), Ts = tension_at(c, s);
  vector x = sum(c.first, s / c.EA, sum(c.tension, -s / 2, c.load));
  if (!(T0 + Ts > 0)) return x;
  if (!(w > 0)) return sum(x, c.stretch * s / T0, c.tension);
  const vector down = {c.load[0] / w, c.load[1] / w, c.load[2] / w};
  const double a0 = dot(c.tension, down), as = a0 - w * s;
  const vector across = sum(c.tension, -a0, down);
  const double h = length_of(across);
  x = sum(x, c.stretch * s * (a0 + as) / (T0 + Ts), down);
  if (!(h > 0)) return x;
  const double sine = w * s * (h * h + T0 * Ts - a0 * as) / (h * h * (T0 + Ts));
  return sum(x, c.stretch * std::asinh(sine) / w, across);
}

// The cable lies in the plane of chord and load. It is farthest from the chord where its tension is parallel to it.
extreme sag_of(const catenary& c) {
  const vector chord = sum(c.second, -1, c.first);
  const double size = length_of(chord);
  if (!(size > 0)) return {};
  const vector along = {chord[0] / size, chord[1] / size, chord[2] / size};
  const vector across = sum(c.load, -dot(c.load, along), along);  // not of unit length
  const double fall = dot(c.load, across) * c.length;
  if (!(fall > 0)) return {};
  extreme sag;
  sag.xi = std::fmin(1.0, std::fmax(0.0, dot(c.tension, across) / fall));
  const vector from_first = sum(position_at(c, sag.xi * c.length), -1, c.first);
  sag.value = length_of(sum(from_first, -dot(from_first, along), along));
  return sag;
}

}  // namespace solver
