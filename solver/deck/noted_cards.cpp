// noted_cards.cpp: keywords and parameters of other programs that have no effect on what is computed here.
#include "deck/noted_cards.h"

#include <iterator>
#include <unordered_map>

#include "deck/fields.h"
#include "deck/hints.h"
#include "deck/keywords.h"

namespace solver::deck {

namespace {

struct noted_keyword {
  const char* name;
  const char* text;
  bool empty_only = false;  // with data lines it is refused
};

struct noted_parameter {
  const char* keyword;
  const char* name;
  const char* text;
};

constexpr char FIXED_OUTPUT[] = "this solver writes its results in one fixed form; the request has no effect";
constexpr char NO_ITERATION[] = "the card has no effect: it steers the increments and iterations of other programs";
constexpr char PART_OF_CONTACT[] = "the card has no effect: it belongs to contact, of which the deck has none";
constexpr char NO_SUCH_STEP[] = "the card has no effect: no step here uses it";
constexpr char NO_HEAT_LOADS[] = "the card has no effect: it ends heat loads, of which there are none";
constexpr char ECHO[] = "the card has no effect: it concerns what other programs print";

// clang-format off
constexpr noted_keyword NOTED_KEYWORDS[] = {
    {"*OUTPUT", FIXED_OUTPUT},
    {"*NODE OUTPUT", FIXED_OUTPUT},
    {"*ELEMENT OUTPUT", FIXED_OUTPUT},
    {"*CONTACT OUTPUT", FIXED_OUTPUT},
    {"*ENERGY OUTPUT", FIXED_OUTPUT},
    {"*RADIATION OUTPUT", FIXED_OUTPUT},
    {"*MODAL OUTPUT", FIXED_OUTPUT},
    {"*INTEGRATED OUTPUT", FIXED_OUTPUT},
    {"*INTEGRATED OUTPUT SECTION", FIXED_OUTPUT},
    {"*CONTACT FILE", FIXED_OUTPUT},
    {"*CONTACT PRINT", FIXED_OUTPUT},
    {"*ENERGY FILE", FIXED_OUTPUT},
    {"*ENERGY PRINT", FIXED_OUTPUT},
    {"*MODAL FILE", FIXED_OUTPUT},
    {"*MODAL PRINT", FIXED_OUTPUT},
    {"*SECTION FILE", FIXED_OUTPUT},
    {"*ELEMENT MATRIX OUTPUT", FIXED_OUTPUT},
    {"*FACE PRINT", FIXED_OUTPUT},
    {"*FILE FORMAT", FIXED_OUTPUT},
    {"*FILE OUTPUT", FIXED_OUTPUT},
    {"*TIME POINTS", FIXED_OUTPUT},
    {"*FILTER", FIXED_OUTPUT},
    {"*RESTART", FIXED_OUTPUT},
    {"*MONITOR", ECHO},
    {"*PRINT", ECHO},
    {"*PREPRINT", ECHO},
    {"*DIAGNOSTICS", ECHO},
    {"*CONTROLS", NO_ITERATION},
    {"*SOLVER CONTROLS", NO_ITERATION},
    {"*CONTACT CONTROLS", PART_OF_CONTACT},
    {"*SURFACE INTERACTION", PART_OF_CONTACT},
    {"*SURFACE BEHAVIOR", PART_OF_CONTACT},
    {"*FRICTION", PART_OF_CONTACT},
    {"*CONTACT DAMPING", PART_OF_CONTACT},
    {"*GAP CONDUCTANCE", PART_OF_CONTACT},
    {"*GAP HEAT GENERATION", PART_OF_CONTACT},
    {"*PHYSICAL CONSTANTS", NO_SUCH_STEP},
    {"*SECTION CONTROLS", NO_ITERATION},
    {"*CFLUX", NO_HEAT_LOADS, true},
    {"*DFLUX", NO_HEAT_LOADS, true},
    {"*DSFLUX", NO_HEAT_LOADS, true},
    {"*FILM", NO_HEAT_LOADS, true},
    {"*SFILM", NO_HEAT_LOADS, true},
    {"*CFILM", NO_HEAT_LOADS, true},
    {"*RADIATE", NO_HEAT_LOADS, true},
    {"*SRADIATE", NO_HEAT_LOADS, true},
    {"*CRADIATE", NO_HEAT_LOADS, true},
};

constexpr char ONE_SOLUTION[] = "a linear step is solved at once";
constexpr char OWN_INTEGRATION[] = "elements are integrated by their own rules";
constexpr char OWN_MODES[] = "frequencies, factors and their shapes are found by this solver's own method";
constexpr char WHERE_CLICKED[] = "it concerns the program that wrote the deck";

constexpr noted_parameter NOTED_PARAMETERS[] = {
    {"*SHELL SECTION", "CONTROLS", OWN_INTEGRATION},
    {"*SHELL SECTION", "SECTION INTEGRATION", OWN_INTEGRATION},
    {"*SHELL SECTION", "TEMPERATURE", OWN_INTEGRATION},
    {"*SHELL SECTION", "POISSON", "the thickness keeps its size in what is small"},
    {"*SHELL SECTION", "THICKNESS MODULUS", "the thickness keeps its size in what is small"},
    {"*MEMBRANE SECTION", "CONTROLS", OWN_INTEGRATION},
    {"*MEMBRANE SECTION", "POISSON", "the thickness keeps its size in what is small"},
    {"*SOLID SECTION", "CONTROLS", OWN_INTEGRATION},
    {"*STEP", "AMPLITUDE", ONE_SOLUTION},
    {"*STEP", "UNSYMM", ONE_SOLUTION},
    {"*STEP", "UNSYMMETRIC", ONE_SOLUTION},
    {"*STEP", "EXTRAPOLATION", ONE_SOLUTION},
    {"*STEP", "SOLVER", ONE_SOLUTION},
    {"*STEP", "CONVERT SDI", ONE_SOLUTION},
    {"*STEP", "INCF", ONE_SOLUTION},
    {"*STEP", "INCT", ONE_SOLUTION},
    {"*STEP", "MINCF", ONE_SOLUTION},
    {"*STEP", "SUBMAX", ONE_SOLUTION},
    {"*STATIC", "STABILIZE", ONE_SOLUTION},
    {"*STATIC", "ALLSDTOL", ONE_SOLUTION},
    {"*STATIC", "CONTINUE", ONE_SOLUTION},
    {"*STATIC", "FACTOR", ONE_SOLUTION},
    {"*STATIC", "LONG TERM", ONE_SOLUTION},
    {"*STATIC", "ADIABATIC", ONE_SOLUTION},
    {"*STATIC", "TIME RESET", ONE_SOLUTION},
    {"*FREQUENCY", "SOLVER", OWN_MODES},
    {"*FREQUENCY", "STORAGE", "the modes are in the results; no further step takes them"},
    {"*FREQUENCY", "GLOBAL", "results are in global directions"},
    {"*FREQUENCY", "SIM", OWN_MODES},
    {"*FREQUENCY", "NSET", OWN_MODES},
    {"*FREQUENCY", "ACOUSTIC COUPLING", "there are no acoustic elements"},
    {"*FREQUENCY", "PROPERTY EVALUATION", "materials do not depend on the frequency"},
    {"*BUCKLE", "EIGENSOLVER", OWN_MODES},
    {"*BUCKLE", "SOLVER", OWN_MODES},
    {"*BOUNDARY", "REGION TYPE", WHERE_CLICKED},
    {"*CLOAD", "REGION TYPE", WHERE_CLICKED},
    {"*DLOAD", "REGION TYPE", WHERE_CLICKED},
    {"*DSLOAD", "REGION TYPE", WHERE_CLICKED},
    {"*DLOAD", "CONSTANT RESULTANT", "displacements are small: a pressure has one resultant"},
    {"*DSLOAD", "CONSTANT RESULTANT", "displacements are small: a pressure has one resultant"},
    {"*MATERIAL", "DESCRIPTION", WHERE_CLICKED},
    {"*MATERIAL", "RTOL", ONE_SOLUTION},
    {"*MATERIAL", "SRATE FACTOR", ONE_SOLUTION},
};
// clang-format on

void note_card(build& b, const card& c) {
  const std::string name = squeezed(c.keyword);
  for (const noted_keyword& each : NOTED_KEYWORDS) {
    if (name != squeezed(each.name)) continue;
    if (each.empty_only && c.count > 0) b.deck.fail(c, refusal_of(name));
    b.note(c, each.text);
  }
}

}  // namespace

const keyword_rule* find_noted_rule(const std::string& keyword) {
  static const auto BY_NAME = [] {
    std::unordered_map<std::string, keyword_rule> map;
    for (const noted_keyword& each : NOTED_KEYWORDS) {
      map.emplace(squeezed(each.name), keyword_rule{each.name, place::ANYWHERE, stage::STEPS, data::OPTIONAL, note_card,
                                                    std::vector<parameter_rule>{}, true});
    }
    return map;
  }();
  const auto found = BY_NAME.find(keyword);
  return found == BY_NAME.end() ? nullptr : &found->second;
}

const char* without_effect(const std::string& keyword, const std::string& parameter) {
  for (const noted_parameter& each : NOTED_PARAMETERS) {
    if (parameter == squeezed(each.name) && keyword == squeezed(each.keyword)) return each.text;
  }
  return nullptr;
}

void note_idle_parameters(build& b, const card& c) {
  for (const parameter& p : c.parameters) {
    const char* const reason = without_effect(squeezed(c.keyword), p.name);
    if (reason != nullptr) b.note(c, p.written + " has no effect: " + reason);
  }
}

}  // namespace solver::deck
