// keywords.cpp: the table of keywords, and the check of every card against it.
#include "deck/keywords.h"

#include <algorithm>
#include <unordered_map>

#include "deck/fields.h"
#include "deck/hints.h"
#include "deck/noted_cards.h"
#include "finites/fields.h"

namespace solver::deck {

using rule = parameter_rule;

// clang-format off
static const std::vector<keyword_rule> TABLE = {
    {"*HEADING",          place::HEAD,         stage::NODES,      data::OPTIONAL,  read_heading, {}},
    {"*NODE",             place::HEAD,         stage::NODES,      data::NEEDED,   read_nodes,
     {{"NSET", rule::VALUE}, {"SYSTEM", rule::VALUE}}},
    {"*ELEMENT",          place::HEAD,         stage::ELEMENTS,   data::NEEDED,   read_elements,
     {{"TYPE", rule::REQUIRED}, {"ELSET", rule::VALUE}}},
    {"*NSET",             place::HEAD,         stage::SETS,       data::OPTIONAL, read_nset,
     {{"NSET", rule::REQUIRED}, {"GENERATE", rule::FLAG}, {"ELSET", rule::VALUE}, {"INTERNAL", rule::FLAG},
      {"UNSORTED", rule::FLAG}}},
    {"*ELSET",            place::HEAD,         stage::SETS,       data::OPTIONAL, read_elset,
     {{"ELSET", rule::REQUIRED}, {"GENERATE", rule::FLAG}, {"INTERNAL", rule::FLAG}, {"UNSORTED", rule::FLAG}}},
    {"*AMPLITUDE",        place::HEAD,         stage::MATERIALS,  data::NEEDED,   read_amplitude,
     {{"NAME", rule::REQUIRED}, {"DEFINITION", rule::VALUE}, {"TIME", rule::VALUE}, {"VALUE", rule::VALUE},
      {"SMOOTH", rule::VALUE}, {"SHIFTX", rule::VALUE}, {"SHIFTY", rule::VALUE}}},
    {"*SURFACE",          place::HEAD,         stage::SURFACES,   data::NEEDED,   read_surface,
     {{"NAME", rule::REQUIRED}, {"TYPE", rule::VALUE}, {"INTERNAL", rule::FLAG}}},
    {"*MATERIAL",         place::HEAD,         stage::MATERIALS,  data::NONE,     read_material,
     {{"NAME", rule::REQUIRED}}},
    {"*ELASTIC",          place::MATERIAL,     stage::MATERIALS,  data::NEEDED,   read_elastic,
     {{"TYPE", rule::VALUE}, {"DEPENDENCIES", rule::VALUE}}},
    {"*DENSITY",          place::MATERIAL,     stage::MATERIALS,  data::NEEDED,   read_density,
     {{"DEPENDENCIES", rule::VALUE}}},
    {"*EXPANSION",        place::MATERIAL,     stage::MATERIALS,  data::NEEDED,   read_expansion,
     {{"TYPE", rule::VALUE}, {"ZERO", rule::VALUE}, {"DEPENDENCIES", rule::VALUE}}},
    {"*PLASTIC",          place::MATERIAL,     stage::MATERIALS,  data::NEEDED,   read_plastic, {}},
    {"*CONDUCTIVITY",     place::MATERIAL,     stage::MATERIALS,  data::OPTIONAL, note_material_card, {}, true},
    {"*SPECIFIC HEAT",    place::MATERIAL,     stage::MATERIALS,  data::OPTIONAL, note_material_card, {}, true},
    {"*LATENT HEAT",      place::MATERIAL,     stage::MATERIALS,  data::OPTIONAL, note_material_card, {}, true},
    {"*ELECTRICAL CONDUCTIVITY", place::MATERIAL, stage::MATERIALS, data::OPTIONAL, note_material_card, {}, true},
    {"*DAMPING",          place::MATERIAL,     stage::MATERIALS,  data::OPTIONAL, note_material_card, {}, true},
    {"*USER DEFINED FIELD", place::MATERIAL,   stage::MATERIALS,  data::OPTIONAL, note_material_card, {}, true},
    {"*ORIENTATION",      place::HEAD,         stage::MATERIALS,  data::NEEDED,   read_orientation,
     {{"NAME", rule::REQUIRED}, {"SYSTEM", rule::VALUE}, {"DEFINITION", rule::VALUE}}},
    {"*SHELL SECTION",    place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_shell_section,
     {{"ELSET", rule::REQUIRED}, {"MATERIAL", rule::VALUE}, {"OFFSET", rule::VALUE},
      {"ORIENTATION", rule::VALUE}, {"ORIENTATION ANGLE", rule::VALUE}, {"FORMULATION", rule::VALUE},
      {"DRILLING", rule::VALUE}, {"MODEL", rule::VALUE}, {"POINTS", rule::VALUE}, {"COMPOSITE", rule::FLAG},
      {"SYMMETRIC", rule::FLAG}, {"LAYUP", rule::VALUE}, {"STACK DIRECTION", rule::VALUE}}},
    {"*MEMBRANE SECTION", place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_membrane_section,
     {{"ELSET", rule::REQUIRED}, {"MATERIAL", rule::REQUIRED}, {"ORIENTATION", rule::VALUE},
      {"ORIENTATION ANGLE", rule::VALUE}}},
    {"*BEAM GENERAL SECTION", place::HEAD,     stage::SECTIONS,   data::NEEDED,   read_beam_section,
     {{"ELSET", rule::REQUIRED}, {"MATERIAL", rule::VALUE}, {"SECTION", rule::VALUE}, {"DENSITY", rule::VALUE},
      {"OFFSET1", rule::VALUE}, {"OFFSET2", rule::VALUE}, {"TEMPERATURE", rule::VALUE}, {"POISSON", rule::VALUE},
      {"LUMPED", rule::VALUE}, {"ZERO", rule::VALUE}}},
    {"*BEAM SECTION",     place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_beam_section,
     {{"ELSET", rule::REQUIRED}, {"MATERIAL", rule::REQUIRED}, {"SECTION", rule::REQUIRED},
      {"OFFSET1", rule::VALUE}, {"OFFSET2", rule::VALUE}, {"TEMPERATURE", rule::VALUE}, {"POISSON", rule::VALUE},
      {"LUMPED", rule::VALUE}}},
    {"*TRANSVERSE SHEAR STIFFNESS", place::BEAM, stage::SECTIONS, data::NEEDED,   read_transverse_shear,
     {{"PRINCIPAL", rule::FLAG}}},
    {"*CENTROID",         place::BEAM,         stage::SECTIONS,   data::NEEDED,   read_centroid, {}},
    {"*SHEAR CENTER",     place::BEAM,         stage::SECTIONS,   data::NEEDED,   read_shear_centre, {}},
    {"*SECTION POINTS",   place::BEAM,         stage::SECTIONS,   data::NEEDED,   read_section_points, {}},
    {"*MASS",             place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_mass,
     {{"ELSET", rule::REQUIRED}, {"TYPE", rule::VALUE}, {"ALPHA", rule::VALUE}, {"COMPOSITE", rule::VALUE}}},
    {"*ROTARY INERTIA",   place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_rotary_inertia,
     {{"ELSET", rule::REQUIRED}, {"ORIENTATION", rule::VALUE}, {"ALPHA", rule::VALUE}, {"COMPOSITE", rule::VALUE}}},
    {"*SOLID SECTION",    place::HEAD,         stage::SECTIONS,   data::OPTIONAL, read_solid_section,
     {{"ELSET", rule::REQUIRED}, {"MATERIAL", rule::REQUIRED}, {"PRETENSION", rule::VALUE},
      {"ACCEPT", rule::VALUE}}},
    {"*CABLE SECTION",    place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_cable_section,
     {{"ELSET", rule::REQUIRED}, {"MATERIAL", rule::REQUIRED}, {"LENGTH RATIO", rule::VALUE}}},
    {"*SPRING",           place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_spring,
     {{"ELSET", rule::REQUIRED}}},
    {"*LINK SECTION",     place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_link_section,
     {{"ELSET", rule::REQUIRED}, {"FORM", rule::VALUE}}},
    {"*RELEASE",          place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_release, {}},
    {"*FIXITY",           place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_fixity, {}},
    {"*PLASTIC HINGE",    place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_plastic_hinge,
     {{"ELSET", rule::REQUIRED}, {"CURVE", rule::REQUIRED}, {"FORCES", rule::VALUE}}},
    {"*TRANSFORM",        place::HEAD,         stage::SECTIONS,   data::NEEDED,   read_transform,
     {{"NSET", rule::REQUIRED}, {"TYPE", rule::VALUE}}},
    {"*EQUATION",         place::HEAD,         stage::CONDITIONS, data::NEEDED,   read_equation, {}},
    {"*MPC",              place::HEAD,         stage::CONDITIONS, data::NEEDED,   read_mpc, {}},
    {"*RIGID BODY",       place::HEAD,         stage::CONDITIONS, data::NONE,     read_rigid_body,
     {{"REF NODE", rule::REQUIRED}, {"ROT NODE", rule::VALUE}, {"NSET", rule::VALUE}, {"ELSET", rule::VALUE},
      {"PIN NSET", rule::VALUE}, {"TIE NSET", rule::VALUE}}},
    {"*COUPLING",         place::HEAD,         stage::CONDITIONS, data::NONE,     read_coupling,
     {{"CONSTRAINT NAME", rule::REQUIRED}, {"REF NODE", rule::REQUIRED}, {"SURFACE", rule::REQUIRED},
      {"ORIENTATION", rule::VALUE}, {"INFLUENCE RADIUS", rule::VALUE}}},
    {"*KINEMATIC",        place::COUPLING,     stage::CONDITIONS, data::OPTIONAL, read_kinematic, {}},
    {"*DISTRIBUTING",     place::COUPLING,     stage::CONDITIONS, data::OPTIONAL, read_distributing,
     {{"WEIGHTING METHOD", rule::VALUE}, {"COUPLING", rule::VALUE}}},
    {"*KINEMATIC COUPLING", place::HEAD,       stage::CONDITIONS, data::NEEDED,   read_kinematic_coupling,
     {{"REF NODE", rule::REQUIRED}}},
    {"*DISTRIBUTING COUPLING", place::HEAD,    stage::CONDITIONS, data::NEEDED,   read_distributing_coupling,
     {{"ELSET", rule::REQUIRED}}},
    {"*TIE",              place::HEAD,         stage::CONDITIONS, data::NEEDED,   read_tie,
     {{"NAME", rule::VALUE}, {"POSITION TOLERANCE", rule::VALUE}, {"ADJUST", rule::VALUE}, {"TYPE", rule::VALUE},
      {"NO ROTATION", rule::FLAG}}},
    {"*INITIAL CONDITIONS", place::HEAD,       stage::STEPS,      data::NEEDED,   read_initial_conditions,
     {{"TYPE", rule::REQUIRED}}},
    {"*BOUNDARY",         place::HEAD_OR_STEP, stage::STEPS,      data::UNLESS_OP, read_boundary,
     {{"OP", rule::VALUE}, {"AMPLITUDE", rule::VALUE}, {"TYPE", rule::VALUE}, {"LOAD CASE", rule::VALUE}}},
    {"*STEP",             place::ANYWHERE,     stage::STEPS,      data::OPTIONAL, read_step,
     {{"NAME", rule::VALUE}, {"PERTURBATION", rule::FLAG}, {"NLGEOM", rule::VALUE_OR_FLAG}, {"INC", rule::VALUE},
      {"PDELTA", rule::FLAG}}},
    {"*STATIC",           place::STEP,         stage::STEPS,      data::OPTIONAL, read_static,
     {{"DIRECT", rule::VALUE_OR_FLAG}, {"SOLVER", rule::VALUE}, {"ELASTIC", rule::FLAG}}},
    {"*FREQUENCY",        place::STEP,         stage::STEPS,      data::NEEDED,   read_frequency,
     {{"EIGENSOLVER", rule::VALUE}, {"NORMALIZATION", rule::VALUE}, {"MASS", rule::VALUE}}},
    {"*BUCKLE",           place::STEP,         stage::STEPS,      data::NEEDED,   read_buckle, {}},
    {"*PUSHOVER",         place::STEP,         stage::STEPS,      data::OPTIONAL, read_pushover,
     {{"NODE", rule::VALUE}, {"DOF", rule::VALUE}, {"CONTINUE", rule::FLAG}}},
    {"*ELASTOPLASTIC",    place::STEP,         stage::STEPS,      data::OPTIONAL, read_elastoplastic,
     {{"NODE", rule::VALUE}, {"DOF", rule::VALUE}, {"CONTINUE", rule::FLAG}}},
    {"*CLOAD",            place::STEP,         stage::STEPS,      data::UNLESS_OP, read_cload,
     {{"OP", rule::VALUE}, {"AMPLITUDE", rule::VALUE}}},
    {"*DLOAD",            place::STEP,         stage::STEPS,      data::UNLESS_OP, read_dload,
     {{"OP", rule::VALUE}, {"AMPLITUDE", rule::VALUE}, {"FOLLOWER", rule::VALUE}}},
    {"*DSLOAD",           place::STEP,         stage::STEPS,      data::UNLESS_OP, read_dsload,
     {{"OP", rule::VALUE}, {"AMPLITUDE", rule::VALUE}, {"FOLLOWER", rule::VALUE}}},
    {"*TEMPERATURE",      place::STEP,         stage::STEPS,      data::UNLESS_OP, read_temperature,
     {{"OP", rule::VALUE}, {"AMPLITUDE", rule::VALUE}}},
    {"*END STEP",         place::STEP,         stage::STEPS,      data::NONE,     read_end_step, {}},
    {"*LOAD CASE",        place::STEP,         stage::STEPS,      data::NONE,     read_load_case,
     {{"NAME", rule::REQUIRED}}},
    {"*END LOAD CASE",    place::STEP,         stage::STEPS,      data::NONE,     read_load_case, {}},
    {"*COMBINATION",      place::OUTSIDE,      stage::STEPS,      data::NEEDED,   read_combination,
     {{"NAME", rule::REQUIRED}}},
    {"*ENVELOPE",         place::OUTSIDE,      stage::STEPS,      data::OPTIONAL, read_envelope,
     {{"NAME", rule::REQUIRED}}},
    {"*NODE PRINT",       place::ANYWHERE,     stage::STEPS,      data::OPTIONAL, read_node_print, {}, true},
    {"*EL PRINT",         place::ANYWHERE,     stage::STEPS,      data::OPTIONAL, read_element_print, {}, true},
    {"*SECTION PRINT",    place::ANYWHERE,     stage::STEPS,      data::OPTIONAL, read_section_print, {}, true},
    {"*NODE FILE",        place::ANYWHERE,     stage::STEPS,      data::OPTIONAL, note_output_request, {}, true},
    {"*EL FILE",          place::ANYWHERE,     stage::STEPS,      data::OPTIONAL, note_output_request, {}, true},
};
// clang-format on

// How many letters have to be put in, left out or changed to come from one word to the other (Levenshtein, 1966).
static std::size_t letters_apart(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t changed = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, changed});
    }
  }
  return row[b.size()];
}

// What is seen in a wrong keyword itself; empty: nothing. An editor's blank that does not break looks like any other.
static std::string visible_fault(const std::string& wrong) {
  if (wrong.find('=') != std::string::npos) return "; a comma belongs between the keyword and each parameter";
  const bool plain = std::all_of(wrong.begin(), wrong.end(), [](char c) { return (c & 0x80) == 0; });
  return plain ? "" : "; it holds a letter or a blank that is not ASCII";
}

// A keyword that a wrong one is nearly like; empty: none.
static std::string similar_keyword(const std::string& wrong) {
  const std::size_t most = wrong.size() > 6 ? 2 : 1;
  const keyword_rule* nearest = nullptr;
  std::size_t apart = most + 1;
  for (const keyword_rule& r : TABLE) {
    const std::size_t here = letters_apart(squeezed(r.name), wrong);
    if (here >= apart) continue;
    apart = here;
    nearest = &r;
  }
  return nearest == nullptr ? "" : "; is " + std::string(nearest->name) + " meant?";
}

const keyword_rule* find_rule(const std::string& keyword) {
  static const auto BY_NAME = [] {
    std::unordered_map<std::string, const keyword_rule*> map;
    for (const keyword_rule& r : TABLE) map.emplace(squeezed(r.name), &r);
    return map;
  }();
  const auto found = BY_NAME.find(squeezed(keyword));
  return found == BY_NAME.end() ? find_noted_rule(squeezed(keyword)) : found->second;
}

std::string missing_star(std::string_view line) {
  std::vector<std::string_view> fields;
  split_fields(line, fields);
  // A word alone, or with a parameter: TIE and BEAM of an *MPC, which nodes follow, are none.
  const bool parameter = line.find('=') != std::string_view::npos;
  const bool keyword = fields.size() == 1 || (!fields.empty() && parameter);
  const keyword_rule* r = keyword ? find_rule("*" + std::string(fields[0])) : nullptr;
  return r == nullptr ? "" : "; is " + std::string(r->name) + " meant?";
}

static const parameter_rule* find_parameter(const keyword_rule& r, const std::string& name) {
  const auto found = std::find_if(r.parameters.begin(), r.parameters.end(),
                                  [&](const parameter_rule& p) { return name == squeezed(p.name); });
  return found == r.parameters.end() ? nullptr : &*found;
}

static std::string known_parameters(const keyword_rule& r) {
  if (r.parameters.empty()) return "there is none for this keyword";
  std::string list;
  for (const parameter_rule& p : r.parameters) list += (list.empty() ? "" : ", ") + std::string(p.name);
  return "known here: " + list;
}

static void check_parameters(const card_deck& deck, const card& c, const keyword_rule& r) {
  if (r.any_parameters) return;
  for (const parameter& p : c.parameters) {
    const parameter_rule* known = find_parameter(r, p.name);
    if (known == nullptr && without_effect(squeezed(c.keyword), p.name) != nullptr) continue;
    if (known == nullptr) {
      const char* const hint = hint_for_parameter(squeezed(c.keyword), p.name);
      if (hint != nullptr) deck.fail(c, "the parameter " + p.written + " is not supported: " + hint);
      deck.fail(c, "the parameter " + in_quotes(p.written) + " is not known; " + known_parameters(r));
    }
    const bool needs_value = known->kind == rule::REQUIRED || known->kind == rule::VALUE;
    if (p.has_value && known->kind == rule::FLAG) deck.fail(c, "the parameter " + p.written + " takes no value");
    if ((needs_value || p.has_value) && p.value.empty()) deck.fail(c, "the parameter " + p.written + " has no value");
  }
  for (const parameter_rule& p : r.parameters) {
    if (p.kind == rule::REQUIRED && c.find(squeezed(p.name)) == nullptr) {
      deck.fail(c, std::string("the parameter ") + p.name + " is missing");
    }
  }
}

static void check_data(const card_deck& deck, const card& c, const keyword_rule& r) {
  const bool needed = r.lines == data::NEEDED || (r.lines == data::UNLESS_OP && c.find("OP") == nullptr);
  if (needed && c.count == 0) deck.fail(c, "no data line follows");
  if (r.lines == data::NONE && c.count > 0) deck.fail(c, *deck.begin_of(c), "no data line belongs here");
}

namespace {

// Where the deck stands while its cards go by.
struct nesting {
  const card* step = nullptr;       // the open one
  const char* procedure = nullptr;  // what the open step computes
  bool after_first_step = false;
  bool in_material = false;
  bool in_beam_section = false;
  bool in_coupling = false;
  bool unsure = false;  // a keyword line was not understood: it may have been what a later card misses
};

}  // namespace

static bool is(const keyword_rule& r, const char* name) { return std::string(r.name) == name; }

static const char* wrong_place(const keyword_rule& r, const nesting& now) {
  if (r.where == place::STEP && now.step == nullptr) return "belongs between *STEP and *END STEP";
  if (r.where == place::MATERIAL && !now.in_material) return "belongs below a *MATERIAL";
  if (r.where == place::BEAM && !now.in_beam_section) return "belongs below a *BEAM GENERAL SECTION or *BEAM SECTION";
  if (r.where == place::COUPLING && !now.in_coupling) return "belongs below a *COUPLING";
  if (r.where == place::OUTSIDE && now.step != nullptr) {
    return "stands inside a step: it belongs below the last *END STEP";
  }
  const bool in_head = now.step == nullptr && !now.after_first_step;
  if ((r.where == place::HEAD || r.where == place::MATERIAL || r.where == place::BEAM || r.where == place::COUPLING) &&
      !in_head) {
    return "belongs before the first *STEP";
  }
  if (r.where == place::HEAD_OR_STEP && !in_head && now.step == nullptr) {
    return "stands between two steps: it belongs before the first *STEP or inside one";
  }
  return nullptr;
}

static void check_place(const card_deck& deck, const card& c, const keyword_rule& r, const nesting& now) {
  const char* const wrong = wrong_place(r, now);
  if (wrong == nullptr) return;
  if (now.unsure) throw consequence{};
  deck.fail(c, wrong);
}

static bool is_procedure(const keyword_rule& r) {
  return is(r, "*STATIC") || is(r, "*FREQUENCY") || is(r, "*BUCKLE") || is(r, "*PUSHOVER") || is(r, "*ELASTOPLASTIC");
}

static void check_nesting(const card_deck& deck, const card& c, const keyword_rule& r, const nesting& now) {
  if (is(r, "*STEP") && now.step != nullptr && !now.unsure) {
    deck.fail(c, "the *STEP of line " + std::to_string(now.step->line) + " has no *END STEP yet");
  }
  if (is_procedure(r) && now.procedure != nullptr) {
    deck.fail(c, std::string("the step has a ") + now.procedure + " already");
  }
  if (is(r, "*END STEP") && now.step != nullptr && now.procedure == nullptr && !now.unsure) {
    deck.fail(*now.step, "the step has no *STATIC, *FREQUENCY, *BUCKLE, *PUSHOVER or *ELASTOPLASTIC");
  }
}

static void advance(const card& c, const keyword_rule& r, nesting& now) {
  if (is(r, "*STEP")) {
    now.step = &c;
    now.procedure = nullptr;
    now.after_first_step = true;
  } else if (is_procedure(r)) {
    now.procedure = r.name;
  } else if (is(r, "*END STEP")) {
    now.step = nullptr;
  }
  now.in_beam_section = is(r, "*BEAM GENERAL SECTION") || is(r, "*BEAM SECTION") || r.where == place::BEAM;
  now.in_coupling = is(r, "*COUPLING") || r.where == place::COUPLING;
  now.in_material = is(r, "*MATERIAL") || r.where == place::MATERIAL;
}

static void check_card(const card_deck& deck, const card& c, const keyword_rule& r, const nesting& now) {
  check_place(deck, c, r, now);
  check_nesting(deck, c, r, now);
  if (c.broken) throw consequence{};
  check_parameters(deck, c, r);
  check_data(deck, c, r);
}

std::vector<const keyword_rule*> check_structure(const card_deck& deck, error_list& errors) {
  if (deck.cards.empty() && errors.empty()) {
    deck.fail(0, 1, "", "the file holds no keyword: it is blank or has nothing but comments");
  }
  std::vector<const keyword_rule*> rules;
  rules.reserve(deck.cards.size());
  nesting now;
  for (const card& c : deck.cards) {
    const keyword_rule* r = find_rule(c.keyword);
    bool sound = false;
    if (r != nullptr) {
      sound = errors.attempt([&] { check_card(deck, c, *r, now); });
      advance(c, *r, now);
    } else if (!c.broken) {
      errors.attempt([&] {
        const std::string wrong = squeezed(c.keyword);
        deck.fail(c, refusal_of(wrong) + visible_fault(wrong) + similar_keyword(wrong));
      });
    }
    now.unsure = now.unsure || r == nullptr || (!sound && is(*r, "*STEP"));
    rules.push_back(sound ? r : nullptr);
  }
  errors.attempt([&] {
    if (now.unsure) return;
    if (now.step != nullptr) deck.fail(*now.step, "the step has no *END STEP");
    if (!now.after_first_step) deck.fail(0, deck.last_line, "*STEP", "the deck ends without a step");
  });
  return rules;
}

}  // namespace solver::deck
