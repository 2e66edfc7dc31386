// placed_beams.cpp: what beams whose section lies off the line of their nodes, or whose principal axes are turned, are
// refused, and what their user is reminded of.
#include <cmath>
#include <cstdio>

#include "deck/keywords.h"

namespace solver::deck {

namespace {

bool is_placed_beam(const model& m, const element& e) {
  return is_beam(e.type) && e.section >= 0 && is_placed(frame_section_of(m, e).place);
}

std::string point_text(const std::array<double, 2>& p) {
  char text[64];
  std::snprintf(text, sizeof text, "(%.6g, %.6g)", p[0], p[1]);
  return text;
}

void refuse(const build& b, const element& e, const char* what) {
  const frame_section& s = frame_section_of(b.result, e);
  b.deck.fail(
      s.file, s.line, s.keyword,
      "element " + std::to_string(e.id) + ": " + what +
          " belongs to beams with their centroid and shear centre in the nodes and with principal axes 1 and 2; "
          "turn n1 to a principal axis, and put the nodes into the centroid");
}

bool is_semi_rigid(const member_ends& ends) {
  for (const auto& end : ends.fixity) {
    for (const double factor : end) {
      if (factor > 0 && factor < 1) return true;
    }
  }
  return false;
}

}  // namespace

// Places that are rounding beside the size of the section need no word.
void note_placed_beams(build& b) {
  model& m = b.result;
  numbered<char> used(m.frame_sections.size(), 0);
  for (const element& e : m.elements) {
    if (is_placed_beam(m, e)) used[e.section] = 1;
  }
  for (std::size_t i = 0; i < m.frame_sections.size(); ++i) {
    const frame_section& s = m.frame_sections[i];
    if (!used[i]) continue;
    const double size = std::sqrt(s.area);
    const auto is_off = [&](const std::array<double, 2>& p) { return std::hypot(p[0], p[1]) > 1e-6 * size; };
    const std::string place = place_of(m, s.file, s.line) + ": " + s.keyword + ": ";
    if (is_off(s.place.centroid)) {
      m.notes.push_back(place + "the centroid lies at " + point_text(s.place.centroid) +
                        " from the nodes: axial forces in the nodes bend the beam");
    }
    if (is_off(s.place.shear_centre)) {
      m.notes.push_back(place + "the shear centre lies at " + point_text(s.place.shear_centre) +
                        " from the nodes: forces across the beam in the nodes twist it");
    }
  }
}

// The hinges of a pushover, and rotational springs, act about the principal axes in the ends of the library's beam.
void check_placed_beams(const build& b) {
  const model& m = b.result;
  bool pushover = false;
  for (const step& s : m.steps) pushover = pushover || s.kind == step_kind::PUSHOVER;
  for (const element& e : m.elements) {
    if (!is_placed_beam(m, e)) continue;
    if (pushover) refuse(b, e, "a step with *PUSHOVER");
    if (!m.hinges.empty()) refuse(b, e, "*PLASTIC HINGE, here or at other beams,");
    if (is_semi_rigid(ends_of(m, e))) refuse(b, e, "a *FIXITY between 0 and 1");
  }
}

}  // namespace solver::deck
