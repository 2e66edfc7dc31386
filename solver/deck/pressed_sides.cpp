// pressed_sides.cpp: a pressure on plates whose normals point opposite ways, where it is likely to be an oversight.
//
// Two plates on one side of a surface run through a common edge in opposite directions, whatever the angle between
// them.
#include <algorithm>
#include <set>
#include <utility>

#include "deck/keywords.h"

namespace solver::deck {

namespace {

struct pressed {
  int element = 0;
  bool against = false;  // pressed against its normal
};

// One side of a pressed plate; `from` < `to`, `onward` where the plate runs from the first to the second.
struct side {
  int from = 0, to = 0;
  bool onward = false;
  std::size_t plate = 0;  // subscript among the pressed ones
};

struct neighbour {
  std::size_t plate = 0;
  bool opposed = false;
};

std::vector<side> sides_of(const model& m, const std::vector<pressed>& plates) {
  std::vector<side> sides;
  for (std::size_t k = 0; k < plates.size(); ++k) {
    const numbered<int>& nodes = m.elements[plates[k].element].nodes;
    for (std::size_t n = 0; n < nodes.size(); ++n) {
      const int a = nodes[n], b = nodes[(n + 1) % nodes.size()];
      sides.push_back({std::min(a, b), std::max(a, b), (a < b) != plates[k].against, k});
    }
  }
  std::stable_sort(sides.begin(), sides.end(), [](const side& x, const side& y) {
    return std::make_pair(x.from, x.to) < std::make_pair(y.from, y.to);
  });
  return sides;
}

// Plates on the same nodes, as for layers, lie upon each other and not beside.
bool coincide(const model& m, const pressed& x, const pressed& y) {
  const numbered<int>&a = m.elements[x.element].nodes, &b = m.elements[y.element].nodes;
  return std::count_if(a.begin(), a.end(), [&](int n) { return std::find(b.begin(), b.end(), n) != b.end(); }) > 2;
}

// Of edges that two of the plates share; where three meet no one of them is out of line.
std::vector<std::vector<neighbour>> neighbours_of(const model& m, const std::vector<pressed>& plates) {
  std::vector<std::vector<neighbour>> result(plates.size());
  const std::vector<side> sides = sides_of(m, plates);
  for (std::size_t first = 0, end = 0; first < sides.size(); first = end) {
    end = first + 1;
    while (end < sides.size() && sides[end].from == sides[first].from && sides[end].to == sides[first].to) ++end;
    if (end - first != 2) continue;
    const side &x = sides[first], &y = sides[first + 1];
    if (coincide(m, plates[x.plate], plates[y.plate])) continue;
    result[x.plate].push_back({y.plate, x.onward == y.onward});
    result[y.plate].push_back({x.plate, x.onward == y.onward});
  }
  return result;
}

// Goes through what hangs together over edges; returns which plates are on the side with fewer elements of the deck.
class turned_plates {
 public:
  turned_plates(const model& m, const std::vector<pressed>& plates)
      : model_(m), plates_(plates), neighbours_(neighbours_of(m, plates)), way_(plates.size(), 0) {
    for (std::size_t k = 0; k < plates.size(); ++k) {
      if (way_[k] == 0) go_through(k);
    }
  }

  int count() const { return count_; }
  const std::pair<int, int>& first_pair() const {
    return first_;
  }  // elements, of the first edge that is run through twice

 private:
  void go_through(std::size_t start);
  void look_for_pair(std::size_t plate);

  const model& model_;
  const std::vector<pressed>& plates_;
  const std::vector<std::vector<neighbour>> neighbours_;
  std::vector<int> way_;  // 1 as the first plate that is met, -1 the other way; 0 not met yet
  int count_ = 0;
  std::pair<int, int> first_{-1, -1};
};

void turned_plates::go_through(std::size_t start) {
  std::vector<std::size_t> met{start};
  way_[start] = 1;
  int same = 0, other = 0;
  bool opposed = false;
  for (std::size_t next = 0; next < met.size(); ++next) {
    const std::size_t k = met[next];
    const bool counts = model_.elements[plates_[k].element].part == 0;
    (way_[k] > 0 ? same : other) += counts ? 1 : 0;
    for (const neighbour& n : neighbours_[k]) {
      opposed = opposed || n.opposed;
      if (n.opposed) look_for_pair(k);
      if (way_[n.plate] != 0) continue;
      way_[n.plate] = n.opposed ? -way_[k] : way_[k];
      met.push_back(n.plate);
    }
  }
  // A surface with one side, as a Moebius strip, has an edge of that kind wherever the count begins.
  if (opposed) count_ += std::max(1, std::min(same, other));
}

void turned_plates::look_for_pair(std::size_t plate) {
  if (first_.first >= 0) return;
  for (const neighbour& n : neighbours_[plate]) {
    if (n.opposed) first_ = {plates_[plate].element, plates_[n.plate].element};
  }
}

bool presses_plate(const model& m, const element_load& load) {
  const bool pressure = load.kind == element_load_kind::PRESSURE || load.kind == element_load_kind::HYDROSTATIC;
  return pressure && load.magnitude != 0 && is_plate(m.elements[load.element].type);
}

void note_load(build& b, const element_load& load, const std::vector<pressed>& plates) {
  model& m = b.result;
  const turned_plates turned(m, plates);
  if (turned.count() == 0) return;
  const auto all =
      std::count_if(plates.begin(), plates.end(), [&](const pressed& p) { return m.elements[p.element].part == 0; });
  const auto id = [&](int element) { return std::to_string(m.elements[element].id); };
  const bool one = turned.count() == 1;
  m.notes.push_back(place_of(m, load.file, load.line) + ": " + load.keyword + ": " + std::to_string(turned.count()) +
                    " of " + std::to_string(all) + " pressed elements " + (one ? "points" : "point") +
                    " the other way than " + (one ? "its" : "their") + " neighbours over a common edge (element " +
                    id(turned.first_pair().first) + " beside " + id(turned.first_pair().second) +
                    "): their pressures oppose each other; turn the order of the nodes of " +
                    (one ? "that one" : "those") + ", or give " + (one ? "it" : "them") +
                    " the opposite sign on a line of " + (one ? "its" : "their") + " own");
}

}  // namespace

void note_pressed_sides(build& b) {
  std::set<std::pair<int, int>> seen;  // file and line of a load that several steps have
  for (const step& s : b.result.steps) {
    const std::vector<element_load>& loads = s.element_loads;
    for (std::size_t first = 0, end = 0; first < loads.size(); first = end) {
      const std::pair<int, int> place{loads[first].file, loads[first].line};
      std::vector<pressed> plates;
      for (end = first; end < loads.size() && loads[end].file == place.first && loads[end].line == place.second;
           ++end) {
        const element_load& load = loads[end];
        const bool against = (load.magnitude < 0) != (load.face == POSITIVE_SIDE);
        if (presses_plate(b.result, load)) plates.push_back({load.element, against});
      }
      if (!plates.empty() && seen.insert(place).second) note_load(b, loads[first], plates);
    }
  }
}

}  // namespace solver::deck
