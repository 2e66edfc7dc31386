// assembly_motion.cpp: where an instance puts its part.
#include "deck/assembly_motion.h"

#include <cmath>

#include "deck/fields.h"

namespace solver::deck {

static std::vector<double> numbers_of(const card_deck& deck, const card& c, const data_line& l) {
  std::vector<std::string_view> fields;
  split_fields(l.text, fields);
  std::vector<double> numbers;
  for (const std::string_view field : fields) {
    double value = 0;
    const number_fault fault = field.empty() ? number_fault::NONE : parse_real(field, value);
    if (fault != number_fault::NONE) deck.fail(c, l, describe(fault, field, false));
    numbers.push_back(value);
  }
  return numbers;
}

// Rodrigues: v cos + (k x v) sin + k (k . v) (1 - cos). Quarter turns are exact.
static std::array<vector3, 3> rotation(const vector3& k, double degrees) {
  const double quarter = degrees / 90;
  double sine = std::sin(degrees * (PI / 180));
  double cosine = std::cos(degrees * (PI / 180));
  if (quarter == std::floor(quarter)) {
    const double turn = std::fmod(std::fmod(quarter, 4) + 4, 4);
    sine = turn == 1 ? 1 : turn == 3 ? -1 : 0;
    cosine = turn == 0 ? 1 : turn == 2 ? -1 : 0;
  }
  std::array<vector3, 3> r{};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) r[i][j] = (i == j ? cosine : 0) + k[i] * k[j] * (1 - cosine);
  }
  r[0][1] -= k[2] * sine;
  r[0][2] += k[1] * sine;
  r[1][2] -= k[0] * sine;
  r[1][0] += k[2] * sine;
  r[2][0] -= k[1] * sine;
  r[2][1] += k[0] * sine;
  return r;
}

vector3 rigid_motion::direction(const vector3& v) const {
  return turns ? vector3{dot(turn[0], v), dot(turn[1], v), dot(turn[2], v)} : v;
}

vector3 rigid_motion::position(const vector3& x) const {
  if (!moves()) return x;
  const vector3 arm = {x[0] + shift[0] - point[0], x[1] + shift[1] - point[1], x[2] + shift[2] - point[2]};
  const vector3 turned = direction(arm);
  return {turned[0] + point[0], turned[1] + point[1], turned[2] + point[2]};
}

rigid_motion read_motion(const card_deck& deck, const card& c, const data_line* lines, std::size_t count) {
  rigid_motion motion;
  if (count > 2) deck.fail(c, lines[2], "a third data line: a translation and a rotation belong here");
  if (count > 0) {
    std::vector<double> n = numbers_of(deck, c, lines[0]);
    if (n.size() > 3) deck.fail(c, lines[0], "too many fields (" + std::to_string(n.size()) + "): dx, dy, dz");
    n.resize(3);
    motion.shift = {n[0], n[1], n[2]};
    motion.shifts = n[0] != 0 || n[1] != 0 || n[2] != 0;
  }
  if (count < 2) return motion;
  const std::vector<double> n = numbers_of(deck, c, lines[1]);
  if (n.size() != 7) {
    deck.fail(c, lines[1],
              "7 fields belong here, not " + std::to_string(n.size()) +
                  ": x, y, z of point a, x, y, z of point b of the axis, angle in degrees");
  }
  motion.point = {n[0], n[1], n[2]};
  vector3 axis = {n[3] - n[0], n[4] - n[1], n[5] - n[2]};
  const double length = length_of(axis);
  if (!(length > 0) || !std::isfinite(length)) {
    deck.fail(c, lines[1], "the points a and b are the same: they are to be two points of the axis");
  }
  for (double& part : axis) part /= length;
  motion.turns = n[6] != 0;
  motion.turn = rotation(axis, n[6]);
  return motion;
}

}  // namespace solver::deck
