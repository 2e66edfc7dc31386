// quadratic_support.cpp: nodes in the middle of edges lie between corners on the grid of half cells.
#include "quadratic_support.h"

#include <cmath>
#include <utility>

#include "deck/deck_reader.h"
#include "frame_decks.h"

namespace quadratic_test {

using frame_test::number;

namespace {

using pairs = std::vector<std::pair<std::size_t, std::size_t>>;

// Between which corners the further nodes lie, in the order of the manuals of Abaqus and CalculiX.
pairs middles(std::size_t corners, bool solid) {
  if (!solid && corners == 3) return {{0, 1}, {1, 2}, {2, 0}};
  if (!solid) return {{0, 1}, {1, 2}, {2, 3}, {3, 0}};
  if (corners == 4) return {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}};
  if (corners == 6) return {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}};
  return {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6}, {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
}

// Six tetrahedra round the diagonal from corner 0 to corner 6.
constexpr std::size_t PATHS[6][4] = {{0, 1, 2, 6}, {0, 2, 3, 6}, {0, 3, 7, 6},
                                     {0, 7, 4, 6}, {0, 4, 5, 6}, {0, 5, 1, 6}};

}  // namespace

mesh::mesh(char shape, const std::string& type, std::array<int, 3> count,
           std::function<point(double, double, double)> place)
    : type_(type), count_(count), place_(std::move(place)) {
  const bool flat = shape == 'Q' || shape == 'T';
  if (flat) count_[2] = 0;
  for (int i = 0; i < count_[0]; ++i)
    for (int j = 0; j < count_[1]; ++j)
      for (int k = 0; k < (flat ? 1 : count_[2]); ++k)
        add_cell(shape == 'M' ? (k == 0 ? 'W' : 'X') : shape, {2 * i, 2 * j, 2 * k});
}

void mesh::add_cell(char shape, half_steps o) {
  std::vector<half_steps> c;
  for (const int k : {0, 2})
    for (const auto& [i, j] : {std::pair{0, 0}, std::pair{2, 0}, std::pair{2, 2}, std::pair{0, 2}})
      c.push_back({o[0] + i, o[1] + j, o[2] + k});
  const std::string type = type_.empty() ? (shape == 'W' ? "C3D15" : "C3D10") : type_;
  switch (shape) {
    case 'Q': return add(type, {c[0], c[1], c[2], c[3]});
    case 'B': return add(type, c);
    case 'T': add(type, {c[0], c[1], c[2]}); return add(type, {c[0], c[2], c[3]});
    case 'W': add(type, {c[0], c[1], c[2], c[4], c[5], c[6]}); return add(type, {c[0], c[2], c[3], c[4], c[6], c[7]});
    default:
      for (const auto& path : PATHS) add(type, {c[path[0]], c[path[1]], c[path[2]], c[path[3]]});
  }
}

void mesh::add(const std::string& type, const std::vector<half_steps>& corners) {
  std::vector<int> nodes;
  for (const half_steps& c : corners) nodes.push_back(make(c));
  for (const auto& [a, b] : middles(corners.size(), count_[2] > 0)) {
    half_steps middle{};
    for (std::size_t d = 0; d < 3; ++d) middle[d] = (corners[a][d] + corners[b][d]) / 2;
    nodes.push_back(make(middle));
  }
  std::string& text = elements_[type];
  text += std::to_string(++element_count_);
  for (std::size_t n = 0; n < nodes.size(); ++n) text += (n == 10 ? ",\n" : ", ") + std::to_string(nodes[n]);
  text += "\n";
}

int mesh::make(half_steps at) { return ids_.emplace(at, static_cast<int>(ids_.size()) + 1).first->second; }

int mesh::id(half_steps at) const {
  const auto found = ids_.find(at);
  return found == ids_.end() ? 0 : found->second;
}

bool mesh::inside(half_steps at) const {
  for (std::size_t d = 0; d < 3; ++d)
    if (count_[d] > 0 && (at[d] == 0 || at[d] == 2 * count_[d])) return false;
  return true;
}

point mesh::at(half_steps h) const {
  const auto share = [&](std::size_t d) { return count_[d] == 0 ? 0.0 : 0.5 * h[d] / count_[d]; };
  return place_(share(0), share(1), share(2));
}

std::string mesh::text() const {
  std::string text = "*NODE, NSET=ALL\n";
  for (const auto& [h, n] : ids_) {
    const point p = at(h);
    text += std::to_string(n) + ", " + number(p[0]) + ", " + number(p[1]) + ", " + number(p[2]) + "\n";
  }
  for (const auto& [type, lines] : elements_) text += "*ELEMENT, TYPE=" + type + ", ELSET=BODY\n" + lines;
  for (std::size_t d = 0; d < 3; ++d) {
    if (count_[d] == 0) continue;
    for (const int end : {0, 1}) {
      text += "*NSET, NSET=" + std::string(1, "XYZ"[d]) + std::to_string(end) + "\n";
      for (const auto& [h, n] : ids_)
        if (h[d] == 2 * count_[d] * end) text += std::to_string(n) + "\n";
    }
  }
  return text;
}

point straight(double u, double v, double w) { return {u, v, w}; }

point bumped(double u, double v, double w) {
  const double bump = 2.5 * u * (1 - u) * v * (1 - v) * w * (1 - w);
  return {u + bump * std::sin(5 * v + w), v + bump * std::cos(4 * w + u), w + bump * std::sin(6 * u + 2 * v)};
}

point bumped_plane(double u, double v, double) {
  const double bump = 0.9 * u * (1 - u) * v * (1 - v);
  return {u + bump * std::sin(5 * v), v + bump * std::cos(4 * u), 0};
}

std::string deck(const mesh& m, const std::string& section, const std::string& supports, const std::string& step) {
  return m.text() + section + (supports.empty() ? "" : "*BOUNDARY\n" + supports) + "*STEP\n" + step + "*END STEP\n";
}

solver::model read(const std::string& text) { return solver::read_deck_text(text, "quadratic.inp", {true}); }

int index_of(const solver::model& m, int id) {
  for (int n = 0; n < solver::count_of(m.nodes); ++n)
    if (m.nodes[n].id == id) return n;
  return -1;
}

}  // namespace quadratic_test
