// lost_effects.cpp: temperatures that reach no element which answers to them, and elements without mass in a step that
// looks for frequencies: where a part of the model has what it takes, the other is likely to have been forgotten.
#include <algorithm>
#include <cmath>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

namespace {

const material* material_at(const model& m, const element& e) {
  const int index = material_of(m, e);
  return index < 0 ? nullptr : &m.materials[index];
}

std::string number(int id) { return std::to_string(id); }

// The first gradient at a node that no shell joins.
void note_gradients(build& b, const step& s) {
  const model& m = b.result;
  numbered<char> has_shell(m.nodes.size(), 0);
  for (const element& e : m.elements) {
    for (const int n : e.nodes) {
      if (is_shell(e.type)) has_shell[n] = 1;
    }
  }
  const auto lost = std::find_if(s.temperatures.begin(), s.temperatures.end(),
                                 [&](const nodal_temperature& t) { return t.gradient != 0 && has_shell[t.node] == 0; });
  if (lost == s.temperatures.end()) return;
  b.result.notes.push_back(place_of(m, lost->file, lost->line) + ": *TEMPERATURE: the gradient at node " +
                           number(m.nodes[lost->node].id) +
                           " has no effect: gradients belong to shells, and none joins it");
}

// The first element that is heated and does not expand, where others do.
void note_expansions(build& b, const step& s) {
  const model& m = b.result;
  if (std::none_of(m.materials.begin(), m.materials.end(), [](const material& each) { return each.expansion; })) return;
  numbered<char> heated(m.nodes.size(), 0);
  for (const nodal_temperature& t : s.temperatures) {
    if (t.change != 0 || t.gradient != 0) heated[t.node] = 1;
  }
  for (const element& e : m.elements) {
    const material* const mat = material_at(m, e);
    const bool warm = std::any_of(e.nodes.begin(), e.nodes.end(), [&](int n) { return heated[n] != 0; });
    if (mat == nullptr || mat->expansion || !warm) continue;
    b.result.notes.push_back(place_of(m, mat->file, mat->line) + ": *MATERIAL: element " + number(e.id) +
                             " is heated and does not expand: the material " + in_quotes(mat->name) +
                             " has no *EXPANSION");
    return;
  }
}

// The first element without mass, where others have one. Springs and links never have.
void note_densities(build& b, const step& s) {
  const model& m = b.result;
  if (s.kind != step_kind::FREQUENCY) return;
  for (const element& e : m.elements) {
    const material* const mat = material_at(m, e);
    if (mat == nullptr || mat->density > 0) continue;
    b.result.notes.push_back(place_of(m, mat->file, mat->line) + ": *MATERIAL: element " + number(e.id) +
                             " has no mass in the step with *FREQUENCY: the material " + in_quotes(mat->name) +
                             " has no *DENSITY");
    return;
  }
}

}  // namespace

void note_lost_effects(build& b, const step& s) {
  note_gradients(b, s);
  note_expansions(b, s);
  note_densities(b, s);
}

}  // namespace solver::deck
