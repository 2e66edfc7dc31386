// step_states.cpp: on what state a step stands, and whether materials yield in it: what the steps of a deck say
// together, and together with its elements.
#include <algorithm>
#include <set>
#include <utility>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "model/base_step.h"
#include "model/driven.h"
#include "model/yielding.h"

namespace solver::deck {

namespace {

const char* keyword_of(step_kind kind) {
  switch (kind) {
    case step_kind::STATIC: return "*STATIC";
    case step_kind::FREQUENCY: return "*FREQUENCY";
    case step_kind::BUCKLE: return "*BUCKLE";
    case step_kind::PUSHOVER: return "*PUSHOVER";
    default: return "*ELASTOPLASTIC";
  }
}

bool is_path(const step& s) { return s.kind == step_kind::PUSHOVER || s.kind == step_kind::ELASTOPLASTIC; }

bool goes_on(const step& s) {
  return s.kind == step_kind::PUSHOVER ? s.pushover.goes_on
                                       : s.kind == step_kind::ELASTOPLASTIC && s.elastoplastic.goes_on;
}

void note(build& b, const step& s, const char* keyword, const std::string& text) {
  b.result.notes.push_back(place_of(b.result, s.file, s.line) + ": " + keyword + ": " + text);
}

std::string step_number(const build& b, const step& s) { return "step " + std::to_string(number_of(b.result, s)); }

// A path of hinges or of plates that yield is no linear response; from the unloaded state it starts anyway.
void settle_path(build& b, step& s) {
  const std::string keyword = keyword_of(s.kind);
  const step* const before = last_state_before(b.result, s);
  if (before != nullptr && !goes_on(s)) {
    b.deck.fail(s.file, s.line, "*STEP",
                "PERTURBATION: a step with " + keyword + " starts from the unloaded state and cannot stand on " +
                    step_number(b, *before) + "; without PERTURBATION it is an analysis of its own");
  }
  note(b, s, "*STEP", "PERTURBATION has no effect: a step with " + keyword + " is no linear response");
  s.perturbation = false;
}

void check_base(const build& b, const step& s) {
  const model& m = b.result;
  if (s.p_delta) {
    b.deck.fail(s.file, s.line, "*STEP",
                "PERTURBATION asks for the linear response, PDELTA for that in the displaced position: take one of "
                "them away");
  }
  const auto cable =
      std::find_if(m.elements.begin(), m.elements.end(), [&](const element& e) { return is_cable(m, e); });
  if (cable != m.elements.end()) {
    b.deck.fail(s.file, s.line, "*STEP",
                "PERTURBATION is not supported with cables (element " + std::to_string(cable->id) +
                    "): their stiffness belongs to the position in which they hang");
  }
  const step* const base = base_step(m, s);
  if (base == nullptr || !is_path(*base)) return;
  b.deck.fail(s.file, s.line, "*STEP",
              "PERTURBATION: " + step_number(b, *base) + " (" + keyword_of(base->kind) +
                  ") ends in a state that has yielded, and small motions about it are not supported; a step with "
                  "*STATIC, ELASTIC in between gives an elastic state of the same loads");
}

// Other programs count the forces of the state only where it was found with large displacements.
void note_stiffening(build& b, const step& s) {
  const step* const base = base_step(b.result, s);
  if (s.kind != step_kind::FREQUENCY || !s.perturbation || base == nullptr || !is_driven(b.result, *base)) return;
  note(b, s, "*FREQUENCY",
       "the stiffness holds that of the forces of " + step_number(b, *base) +
           ", as in Abaqus after a step with NLGEOM=YES; without PERTURBATION on *STEP it does not");
}

std::set<std::pair<int, int>> freedoms_of(const std::vector<boundary_condition>& conditions) {
  std::set<std::pair<int, int>> all;
  for (const boundary_condition& c : conditions) {
    for (int dof = c.first_dof; dof <= c.last_dof; ++dof) all.emplace(c.node, dof);
  }
  return all;
}

// Conditions that the step before alone has, and that neither the model nor this step repeats: they go on elsewhere.
void note_lost_conditions(build& b, const step& s) {
  const step& before = *(&s - 1);
  const bool on_purpose = b.own_steps.count(static_cast<int>(&s - b.result.steps.data())) > 0;  // OP=NEW
  if (before.boundaries.empty() || on_purpose) return;
  std::set<std::pair<int, int>> held = freedoms_of(b.result.boundaries);
  held.merge(freedoms_of(s.boundaries));
  for (const boundary_condition& c : before.boundaries) {
    for (int dof = c.first_dof; dof <= c.last_dof; ++dof) {
      if (held.count({c.node, dof}) > 0) continue;
      note(b, s, "*STEP",
           "the *BOUNDARY of " + place_of(b.result, c.file, c.line) + " holds in " + step_number(b, before) +
               " alone: a step does not inherit conditions; those before the first *STEP hold in all of them");
      return;
    }
  }
}

// Loads, or displacements, that a user may think carried over.
static bool any_loads_before(const model& m, const step& s) {
  return std::any_of(m.steps.data(), &s, [&](const step& before) { return is_driven(m, before); });
}

void note_own_analysis(build& b, const step& s) {
  if (&s == &b.result.steps.front() || s.perturbation || goes_on(s) || solves_nothing(s)) return;
  if (b.further_cases.count(number_of(&s - b.result.steps.data())) > 0) return;
  note_lost_conditions(b, s);
  if (!any_loads_before(b.result, s)) return;
  std::string text = "a step is an analysis of its own; the loads of earlier steps do not carry over";
  const step* const before = last_state_before(b.result, s);
  const bool small_motions = s.kind == step_kind::FREQUENCY || s.kind == step_kind::BUCKLE;
  if (small_motions && before != nullptr && is_driven(b.result, *before)) {
    text += "; it stands on the unloaded state, with PERTURBATION it would stand on the state at the end of " +
            step_number(b, *before);
  }
  note(b, s, "*STEP", text);
}

}  // namespace

void check_states(build& b) {
  for (step& s : b.result.steps) {
    if (s.perturbation && is_path(s)) settle_path(b, s);
    if (s.perturbation) check_base(b, s);
    note_stiffening(b, s);
    note_own_analysis(b, s);
  }
}

namespace {

constexpr const char* WAY_OUT = "; ELASTIC on *STATIC solves the step elastically";

// Why the yielding of an element cannot be followed; null when it can, or when the element does not yield.
const char* why_not_followed(const model& m, const element& e) {
  if (!has_yield_stress(m, e) || is_shell(e.type)) return nullptr;
  if (is_membrane(e.type)) return "membranes do not yield";
  if (is_solid(e.type)) return "solids do not yield";
  if (e.hinges >= 0) return nullptr;
  return e.type == element_type::T3D2 ? "trusses and cables do not yield" : "beams yield in a *PLASTIC HINGE alone";
}

void check_elements(const build& b, const step& s) {
  const model& m = b.result;
  for (const element& e : m.elements) {
    const char* const why = why_not_followed(m, e);
    if (why == nullptr) continue;
    const material& mat = m.materials[material_of(m, e)];
    b.deck.fail(s.file, s.line, "*STEP",
                "the material " + in_quotes(mat.name) + " of element " + std::to_string(e.id) + " has *PLASTIC, and " +
                    why + " here" + WAY_OUT);
  }
}

// What the paths of yielding shells and of hinges do not know: all loads grow with one factor there.
void check_loads(const build& b, const step& s, const std::string& what) {
  const model& m = b.result;
  const std::string beside = " has no place beside " + what + WAY_OUT;
  for (const auto* const list : {&m.boundaries, &s.boundaries}) {
    for (const boundary_condition& condition : *list) {
      if (condition.value != 0) {
        b.deck.fail(condition.file, condition.line, "*BOUNDARY", "a prescribed displacement other than 0" + beside);
      }
    }
  }
  for (const frame_section& section : m.frame_sections) {
    if (section.pretension != 0) b.deck.fail(section.file, section.line, "*SOLID SECTION", "PRETENSION" + beside);
    if (section.kind == frame_section_kind::CABLE) {
      b.deck.fail(section.file, section.line, "*CABLE SECTION", "a cable" + beside);
    }
  }
  if (!m.solid_sections.empty()) {
    b.deck.fail(m.solid_sections.front().file, m.solid_sections.front().line, "*SOLID SECTION", "a solid" + beside);
  }
}

void check_yielding_static(const build& b, const step& s) {
  const model& m = b.result;
  check_elements(b, s);
  const bool shells = follows_shells(m, s), hinges = follows_hinges(m, s);
  if (shells && !m.hinges.empty()) {
    b.deck.fail(s.file, s.line, "*STEP",
                std::string("shells that yield and members with *PLASTIC HINGE are not followed together") + WAY_OUT);
  }
  if (shells) check_loads(b, s, "shells that yield");
  if (hinges) check_loads(b, s, "members with *PLASTIC HINGE");
  if (!shells) return;
  if (s.p_delta) {
    b.deck.fail(s.file, s.line, "*STEP", std::string("PDELTA has no place beside shells that yield") + WAY_OUT);
  }
  if (!s.temperatures.empty()) {
    b.deck.fail(s.temperatures.front().file, s.temperatures.front().line, "*TEMPERATURE",
                std::string("a temperature has no place beside shells that yield") + WAY_OUT);
  }
}

// The whole-section model grows its equivalent plastic strain by another measure than the line of the deck.
void note_hardening(build& b, const step& s) {
  const model& m = b.result;
  for (const element& e : m.elements) {
    if (!is_shell(e.type) || !has_yield_stress(m, e)) continue;
    const shell_section& section = m.shell_sections[e.section];
    const material& mat = m.materials[section.material];
    if (section.yielding != plate_model::SECTION || mat.plastic_modulus == 0) continue;
    note(b, s, "*STATIC",
         "the material " + in_quotes(mat.name) +
             " hardens, which the whole-section model follows roughly: in tension its plastic strains are 0.79 to 1.10 "
             "times those of the line, by the direction of the elements; MODEL=LAYERED of the *SHELL SECTION follows "
             "the line of *PLASTIC");
    return;
  }
}

// On the paths of hinges and of plates the rest of the model stays elastic.
void note_what_stays_elastic(build& b, const step& s) {
  const model& m = b.result;
  for (const element& e : m.elements) {
    const bool shell = is_shell(e.type) && s.kind == step_kind::ELASTOPLASTIC;
    const bool hinged = e.hinges >= 0 && s.kind == step_kind::PUSHOVER;
    if (!has_yield_stress(m, e) || shell || hinged) continue;
    const material& mat = m.materials[material_of(m, e)];
    note(b, s, keyword_of(s.kind),
         "the material " + in_quotes(mat.name) + " of element " + std::to_string(e.id) +
             " has *PLASTIC; the element stays elastic in this step");
    return;
  }
}

}  // namespace

void check_yielding_statics(build& b) {
  const model& m = b.result;
  const bool something = !m.hinges.empty() || std::any_of(m.elements.begin(), m.elements.end(),
                                                          [&](const element& e) { return has_yield_stress(m, e); });
  for (const step& s : m.steps) {
    if (is_path(s)) note_what_stays_elastic(b, s);
    if (s.kind != step_kind::STATIC || s.perturbation) continue;
    if (!s.elastic) check_yielding_static(b, s);
    if (follows_shells(m, s)) note_hardening(b, s);
    if (s.elastic) {
      note(b, s, "*STATIC",
           something ? "ELASTIC: nothing yields in this step, whatever its stresses"
                     : "ELASTIC has no effect: the model has neither *PLASTIC nor *PLASTIC HINGE");
    }
  }
}

}  // namespace solver::deck
