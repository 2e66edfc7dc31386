// second_order_notes.cpp: what steps of second order (PDELTA, *BUCKLE, steps on a loaded state) take in first order, or
// too stiff, and is in the deck.
#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "deck/keywords.h"
#include "model/base_step.h"
#include "model/driven.h"
#include "model/vectors.h"

namespace solver::deck {

namespace {

bool is_of_second_order(const model& m, const step& s) {
  if (s.p_delta || s.kind == step_kind::BUCKLE) return true;
  const step* const base = solves_nothing(s) ? nullptr : base_step(m, s);
  return base != nullptr && is_driven(m, *base);
}

// Arms by keyword, and the first line of one.
class arm_count {
 public:
  explicit arm_count(const model& m) : model_(m) {}

  void add(const std::string& keyword, int file, int line) {
    ++count_[keyword];
    if (keyword_.empty() || std::make_pair(file, line) < std::make_pair(file_, line_)) {
      keyword_ = keyword;
      file_ = file;
      line_ = line;
    }
  }
  bool empty() const { return count_.empty(); }
  std::string place() const { return place_of(model_, file_, line_) + ": " + keyword_ + ": "; }
  // "1 arm of *TIE", "3 arms (2 of *TIE, 1 of *DISTRIBUTING)"
  std::string text() const {
    int sum = 0;
    std::string parts;
    for (const auto& [keyword, count] : count_) {
      sum += count;
      parts += (parts.empty() ? "" : ", ") + (count_.size() > 1 ? std::to_string(count) + " " : "") + "of " + keyword;
    }
    const std::string arms = std::to_string(sum) + (sum == 1 ? " arm " : " arms ");
    return arms + (count_.size() > 1 ? "(" + parts + ")" : parts);
  }

 private:
  const model& model_;
  std::map<std::string, int> count_;
  std::string keyword_;
  int file_ = 0, line_ = 0;
};

// Up to three conditions are one arm. Rigid arms turn everywhere but in a pushover.
void count_conditions(const model& m, bool pushover, arm_count& arms) {
  std::set<std::tuple<int, int, int>> seen;  // file, line, node
  for (const linear_constraint& each : m.constraints) {
    const bool counts = each.first_order || (pushover && each.arm.node >= 0);
    if (!counts || !seen.insert({each.file, each.line, each.terms.front().node}).second) continue;
    arms.add(each.keyword, each.file, each.line);
  }
}

bool lies_off(const frame_section& s) {
  constexpr double ROUNDING = 1e-6;  // by the size of the section
  const auto is_off = [&](const std::array<double, 2>& p) {
    return std::hypot(p[0], p[1]) > ROUNDING * std::sqrt(s.area);
  };
  return is_off(s.place.centroid) || is_off(s.place.shear_centre);
}

void note_arms(build& b, bool pushover) {
  model& m = b.result;
  arm_count arms(m);
  count_conditions(m, pushover, arms);
  for (const element& e : m.elements) {
    if (!is_beam(e.type) || !lies_off(frame_section_of(m, e))) continue;
    const frame_section& s = frame_section_of(m, e);
    arms.add(s.keyword, s.file, s.line);
  }
  if (arms.empty()) return;
  m.notes.push_back(arms.place() + arms.text() +
                    " between nodes and where their forces act: the steps of second order take them in first order, "
                    "without what their forces do as they turn");
}

bool is_hinged(const member_ends& ends, std::size_t end) { return ends.fixity[end][0] < 1 || ends.fixity[end][1] < 1; }

// Does the member go on beyond this end: by one more beam of its section in its line, rigidly joined, and nothing else?
bool goes_on(const model& m, const std::vector<std::vector<int>>& at_node, int index, std::size_t end) {
  const element& e = m.elements[index];
  const std::vector<int>& joined = at_node[subscript(e.nodes[end])];
  if (joined.size() != 2 || is_hinged(ends_of(m, e), end)) return false;
  const element& next = m.elements[joined[0] == index ? joined[1] : joined[0]];
  if (!is_beam(next.type) || next.section != e.section) return false;
  if (is_hinged(ends_of(m, next), next.nodes[0] == e.nodes[end] ? 0 : 1)) return false;
  const auto along = [&](const element& of) { return difference(m.nodes[of.nodes[0]].xyz, m.nodes[of.nodes[1]].xyz); };
  const vector3 a = along(e), c = along(next);
  constexpr double STRAIGHT = 1e-3;
  return length_of(cross(a, c)) <= STRAIGHT * length_of(a) * length_of(c);
}

// With a pin the library's geometric stiffness is that of an element that may deflect between its ends by its own
// functions alone.
void note_hinged_members(build& b) {
  model& m = b.result;
  if (m.ends.empty()) return;
  std::vector<std::vector<int>> at_node(m.nodes.size());
  for (int i = 0; i < count_of(m.elements); ++i) {
    for (const int n : m.elements[i].nodes) at_node[subscript(n)].push_back(i);
  }
  const element* first = nullptr;
  int count = 0;
  bool springs = false;
  for (int i = 0; i < count_of(m.elements); ++i) {
    const element& e = m.elements[i];
    if (e.ends < 0 || !is_beam(e.type)) continue;
    const member_ends ends = ends_of(m, e);
    const bool hinged = is_hinged(ends, 0) || is_hinged(ends, 1);
    if (!hinged || goes_on(m, at_node, i, 0) || goes_on(m, at_node, i, 1)) continue;
    for (const auto& end : ends.fixity) {
      springs = springs || std::any_of(end.begin(), end.end(), [](double f) { return f > 0 && f < 1; });
    }
    if (first == nullptr) first = &e;
    ++count;
  }
  if (first == nullptr) return;
  const bool one = count == 1;
  m.notes.push_back(
      place_of(m, first->file, first->line) + ": *ELEMENT: " +
      (one ? "element " + std::to_string(first->id) + ", with a pin or *FIXITY at an end, is"
           : std::to_string(count) + " beams with a pin or *FIXITY at an end, element " + std::to_string(first->id) +
                 " the first, are") +
      " the whole of " + (one ? "its member" : "their members") +
      ": with one element the geometric stiffness of steps of second order misses that it bends between " +
      "its ends; divide it into several (a column pinned at one end: buckling load 13 % too high with 2 " +
      "elements, 0.8 % with 4)" + (springs ? "; for a *FIXITY between 0 and 1 take a rotational spring there" : ""));
}

}  // namespace

void note_second_order(build& b) {
  const std::vector<step>& steps = b.result.steps;
  const auto second = [&](const step& s) { return is_of_second_order(b.result, s); };
  if (std::none_of(steps.begin(), steps.end(), second)) return;
  const bool pushover =
      std::any_of(steps.begin(), steps.end(), [](const step& s) { return s.p_delta && s.kind == step_kind::PUSHOVER; });
  note_arms(b, pushover);
  note_hinged_members(b);
}

}  // namespace solver::deck
