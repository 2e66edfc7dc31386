// shell_notes.cpp: what a deck of shells asks for that its user should know of.
#include <cmath>
#include <cstdio>

#include "deck/keywords.h"
#include "elements/flat_parts.h"
#include "elements/plate_axes.h"
#include "model/vectors.h"

namespace solver::deck {

static const shell_section& section_of(const model& m, const element& e) { return m.shell_sections[e.section]; }

// The elements are flat: four nodes that lie off one plane are carried on it by rigid arms, those of a membrane
// projected.
static void note_warp(build& b) {
  const model& m = b.result;
  const element* worst = nullptr;
  double largest = FLAT;
  int count = 0;
  for (const element& e : m.elements) {
    const double warp = is_plate(e.type) ? plate_warp(m, e) : 0;
    count += warp > FLAT ? 1 : 0;
    if (warp > largest) {
      worst = &e;
      largest = warp;
    }
  }
  if (worst == nullptr) return;
  char share[32];
  std::snprintf(share, sizeof share, "%.1e", largest);
  const bool advised = is_shell(worst->type) && !is_tied(m, *worst);
  b.result.notes.push_back(place_of(m, worst->file, worst->line) +
                           ": *ELEMENT: " + (count == 1 ? "1 element is" : std::to_string(count) + " elements are") +
                           " warped: flat elements stand for them. The largest warp, of element " +
                           std::to_string(worst->id) + ", is " + share + " of its diagonal" +
                           (advised ? "; DRILLING=1 is advised" : ""));
}

static double diagonal(const model& m, const element& e) {
  double longest = 0;
  for (const int a : e.nodes) {
    const auto& p = m.nodes[e.nodes.front()].xyz;
    const auto& q = m.nodes[a].xyz;
    longest = std::fmax(longest, length_of(difference(p, q)));
  }
  return longest;
}

// Thick shells hold the rotation about the normal of a curved surface by their transverse shear alone, and the less the
// smaller they are beside the thickness: the surface loses its stiffness against twist.
static void note_drilling(build& b) {
  constexpr double SMALL = 4;  // thicknesses
  const model& m = b.result;
  numbered<char> on_flat(m.nodes.size(), 0);
  for (const flat_part& part : find_flat_parts(m)) {
    for (const int n : part.nodes) on_flat[n] = 1;
  }
  const element* first = nullptr;
  int count = 0;
  for (const element& e : m.elements) {
    if (!is_shell(e.type) || on_flat[e.nodes.front()]) continue;
    const shell_section& s = section_of(m, e);
    if (s.formulation != shell_formulation::THICK || s.drilling > 0 || diagonal(m, e) > SMALL * s.thickness) continue;
    if (first == nullptr) first = &e;
    ++count;
  }
  if (first == nullptr) return;
  b.result.notes.push_back(place_of(m, first->file, first->line) +
                           ": *ELEMENT: " + (count == 1 ? "1 thick shell" : std::to_string(count) + " thick shells") +
                           " on a surface that is not flat, element " + std::to_string(first->id) +
                           " the first, measure less than 4 thicknesses: too soft against twist without DRILLING=1");
}

void note_shells(build& b) {
  note_warp(b);
  note_drilling(b);
}

}  // namespace solver::deck
