// read_prints.cpp: *NODE PRINT, *EL PRINT and *SECTION PRINT: quantities as tables in a .dat file beside the results.
//
// What a card asks for and this solver does not print is noted by its name.
#include <algorithm>
#include <array>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/surfaces.h"
#include "elements/element_faces.h"
#include "elements/section_sides.h"
#include "model/yielding.h"

namespace solver::deck {

namespace {

constexpr std::array<const char*, 19> OF_NODES = {"U",   "UT",  "UR",  "U1", "U2",  "U3",  "UR1", "UR2", "UR3",  "RF",
                                                  "RF1", "RF2", "RF3", "RM", "RM1", "RM2", "RM3", "NT",  "COORD"};
constexpr std::array<const char*, 6> OF_ELEMENTS = {"S", "MISES", "E", "ME", "SF", "PEEQ"};
constexpr std::array<const char*, 3> OF_SURFACES = {"SOF", "SOM", "SOAREA"};

// Other names of the same, and parts of what is printed as a whole.
struct other_name {
  const char *asked, *printed;
};
constexpr std::array<other_name, 3> OTHER_NODE_NAMES = {{{"RT", "RF"}, {"NT11", "NT"}, {"RF", "RF"}}};
constexpr std::array<other_name, 4> OTHER_ELEMENT_NAMES = {
    {{"SM", "SF"}, {"SINV", "MISES"}, {"EE", "ME"}, {"PE", "PEEQ"}}};

template <class LIST>
bool is_in(const LIST& list, const std::string& name) {
  return std::any_of(list.begin(), list.end(), [&](const char* each) { return name == each; });
}

template <class LIST>
std::string known_by(const LIST& others, const std::string& name) {
  const auto found = std::find_if(others.begin(), others.end(), [&](const other_name& o) { return name == o.asked; });
  return found == others.end() ? name : found->printed;
}

// "S" of "S11", "SF" of "SM2": components of a table of elements come with the others.
std::string whole_of(const std::string& name) {
  const std::size_t digits = name.find_last_not_of("0123456789") + 1;
  return known_by(OTHER_ELEMENT_NAMES, name.substr(0, digits));
}

// The name under which a quantity is printed; empty where it is not.
std::string printed_name(print_kind kind, const std::string& asked) {
  if (kind == print_kind::NODES) {
    const std::string name = known_by(OTHER_NODE_NAMES, asked);
    return is_in(OF_NODES, name) ? name : "";
  }
  if (kind == print_kind::SURFACES) return is_in(OF_SURFACES, asked) ? asked : "";
  const std::string name = whole_of(asked);
  return is_in(OF_ELEMENTS, name) ? name : "";
}

template <class LIST>
std::string listed(const LIST& list) {
  std::string text;
  for (const char* name : list) text += (text.empty() ? "" : ", ") + std::string(name);
  return text;
}

std::string all_printed(print_kind kind) {
  if (kind == print_kind::SURFACES) return listed(OF_SURFACES);
  return kind == print_kind::NODES ? listed(OF_NODES) : listed(OF_ELEMENTS);
}

void ask_for(build& b, const card& c, print_request& request, const std::string& asked) {
  const std::string name = printed_name(request.kind, asked);
  if (name.empty()) {
    b.note(c, in_quotes(asked) + " is not printed by this solver; it prints " + all_printed(request.kind));
    return;
  }
  const std::vector<std::string>& all = request.quantities;
  if (std::find(all.begin(), all.end(), name) == all.end()) request.quantities.push_back(name);
}

void read_quantities(build& b, const card& c, print_request& request) {
  if (c.count == 0) {
    b.note(c, "no data line names a quantity: nothing is printed");
    return;
  }
  b.each_line(c, [&](data_fields& row) {
    for (int i = 0; i < row.count(); ++i) {
      if (row.has(i)) ask_for(b, c, request, upper(row.text(i)));
    }
  });
}

print_totals totals_of(build& b, const card& c, print_kind kind) {
  const parameter* const p = c.find("TOTALS");
  const std::string value = p == nullptr ? "NO" : squeezed(p->value);
  if (value != "NO" && value != "YES" && value != "ONLY") {
    b.deck.fail(c, "TOTALS is YES, ONLY or NO, not " + in_quotes(p->value));
  }
  if (value == "NO") return print_totals::NO;
  if (kind == print_kind::ELEMENTS) {
    b.note(c, "TOTALS has no effect: nothing that this solver prints of elements adds up");
    return print_totals::NO;
  }
  return value == "YES" ? print_totals::YES : print_totals::ONLY;
}

bool yes_or_no(build& b, const card& c, const char* name) {
  const parameter* const p = c.find(name);
  if (p == nullptr) return false;
  const std::string value = squeezed(p->value);
  if (value != "YES" && value != "NO") {
    b.deck.fail(c, std::string(name) + " is YES or NO, not " + in_quotes(p->value));
  }
  return value == "YES";
}

// Only FREQUENCY=0, which asks for nothing, changes what is printed: the end of a step, which is always.
bool is_silenced(build& b, const card& c) {
  bool silenced = false;
  for (const char* const name : {"FREQUENCY", "FREQUENCYF"}) {
    if (c.find(name) == nullptr) continue;
    int every = 0;
    if (parse_integer(c.value(name), every) != number_fault::NONE || every < 0) {
      b.deck.fail(c, std::string(name) + ": " + in_quotes(c.value(name)) + " is not a number from 0");
    }
    silenced = silenced || every == 0;
  }
  return silenced;
}

bool at_centroids(build& b, const card& c) {
  const parameter* const p = c.find("POSITION");
  const std::string value = p == nullptr ? "INTEGRATIONPOINTS" : squeezed(p->value);
  if (value == "INTEGRATIONPOINTS") return false;
  if (value == "CENTROIDAL") return true;
  if (value != "NODES" && value != "AVERAGEDATNODES") {
    b.deck.fail(c,
                "POSITION is INTEGRATION POINTS, CENTROIDAL, NODES or AVERAGED AT NODES, not " + in_quotes(p->value));
  }
  b.note(c, "POSITION=" + p->value +
                " has no effect, integration points are printed; --stresses and --solids have tables at nodes");
  return false;
}

void note_other_parameters(build& b, const card& c, bool of_nodes) {
  constexpr std::array<const char*, 4> BOTH = {"FREQUENCY", "FREQUENCYF", "TOTALS", "GLOBAL"};
  for (const parameter& p : c.parameters) {
    const bool own = of_nodes ? p.name == "NSET" : p.name == "ELSET" || p.name == "POSITION";
    if (own || is_in(BOTH, p.name)) continue;
    b.note(c, p.written + " has no effect: the whole table is printed at the end of the step");
  }
}

void take_set(build& b, const card& c, catalogue& all, const char* name, print_request& request) {
  if (c.find(name) == nullptr) return;
  request.set = upper(c.value(name));
  request.members = all.members(set_of_parameter(b, c, all, name));
}

bool has_values(const std::string& quantity, element_type type) {
  if (is_plate(type)) return true;
  if (quantity == "SF") return is_member(type);
  return quantity != "PEEQ" && (is_solid(type) || (quantity == "S" && type == element_type::T3D2));
}

// A quantity that none of the elements has leaves no table.
void note_missing_quantities(build& b, const card& c, const print_request& request) {
  const numbered<element>& all = b.result.elements;
  const auto none = [&](const auto& holds) {
    if (request.set.empty()) {
      return std::none_of(all.begin(), all.end(), [&](const element& e) { return holds(e.type); });
    }
    return std::none_of(request.members.begin(), request.members.end(), [&](int e) { return holds(all[e].type); });
  };
  for (const std::string& quantity : request.quantities) {
    if (!none([&](element_type type) { return has_values(quantity, type); })) continue;
    const bool members = quantity != "SF" && !none([](element_type type) { return is_member(type); });
    b.note(c, quantity + " is not printed: " +
                  (request.set.empty() ? "no element" : "no element of the set " + in_quotes(request.set)) + " has it" +
                  (members ? "; members have SF" : ""));
  }
}

void read_print(build& b, const card& c, print_kind kind) {
  if (!b.inside_step) {
    b.note(c, "outside of a step it has no effect");
    return;
  }
  const bool of_nodes = kind == print_kind::NODES;
  print_request request;
  request.kind = kind;
  request.line = c.line;
  request.file = c.file;
  take_set(b, c, of_nodes ? b.nodes : b.elements, of_nodes ? "NSET" : "ELSET", request);
  request.totals = totals_of(b, c, kind);
  request.global_axes = yes_or_no(b, c, "GLOBAL");
  request.centroids = !of_nodes && at_centroids(b, c);
  note_other_parameters(b, c, of_nodes);
  if (!is_silenced(b, c)) read_quantities(b, c, request);
  if (!of_nodes) note_missing_quantities(b, c, request);
  b.result.steps.back().prints.push_back(request);
}

// The surface of a *SECTION PRINT: faces of solids, edges of shells and membranes.
int surface_to_cut(build& b, const card& c) {
  if (c.find("SURFACE") == nullptr) b.deck.fail(c, "SURFACE is missing: the name of a surface of faces or edges");
  const int index = surface_of_parameter(b, c, "SURFACE");
  const named_surface& s = b.result.surfaces[index];
  if (s.faces.empty()) {
    b.deck.fail(c, "the surface " + in_quotes(s.name) +
                       " is one of nodes, which have no sides; make it of element faces or edges (TYPE=ELEMENT), or "
                       "use *NODE PRINT with RF and TOTALS=ONLY");
  }
  if (is_side(s.faces.front().face)) {
    b.deck.fail(c, "the surface " + in_quotes(s.name) +
                       " is a side of shells, through which no section goes; name their edges (E1 to E4)");
  }
  return index;
}

void check_axes(build& b, const card& c) {
  const parameter* const p = c.find("AXES");
  if (p != nullptr && squeezed(p->value) != "GLOBAL") {
    b.deck.fail(c, "AXES=" + p->value + " is not supported: forces and moments stand in global axes; leave it away");
  }
}

void note_other_section_parameters(build& b, const card& c) {
  constexpr std::array<const char*, 5> KNOWN = {"NAME", "SURFACE", "AXES", "FREQUENCY", "FREQUENCYF"};
  for (const parameter& p : c.parameters) {
    if (is_in(KNOWN, p.name)) continue;
    b.note(c, p.written + " has no effect: the whole table is printed at the end of the step, in global axes");
  }
}

// What the force through a surface cannot say of itself is said here, once for all steps.
void check_sides(build& b, const card& c, const named_surface& s) {
  const section_sides sides = sides_of(b.result, s);
  if (sides.doubled >= 0) {
    b.deck.fail(c, "the surface " + in_quotes(s.name) + " has a face from both sides, at " +
                       element_name(b.result.elements[sides.doubled]) +
                       ": what goes through it cancels; name the elements of one side");
  }
  if (sides.rim >= 0) {
    b.note(c, "the surface " + in_quotes(s.name) + " ends inside the body, at " + node_name(b.result, sides.rim) +
                  ": at such nodes only the forces of its own elements count, which depends on the mesh");
  }
}

bool has_kind(const step& s, print_kind kind) {
  return std::any_of(s.prints.begin(), s.prints.end(), [&](const print_request& p) { return p.kind == kind; });
}

bool belongs_to_modes(const std::string& quantity) { return quantity[0] == 'U' || quantity == "COORD"; }

const char* keyword_of(print_kind kind) {
  if (kind == print_kind::SURFACES) return ": *SECTION PRINT: ";
  return kind == print_kind::NODES ? ": *NODE PRINT: " : ": *EL PRINT: ";
}

// Modes have displacements and nothing else.
void note_modes(build& b, const step& s) {
  if (s.kind != step_kind::FREQUENCY && s.kind != step_kind::BUCKLE) return;
  for (const print_request& p : s.prints) {
    for (const std::string& quantity : p.quantities) {
      if (belongs_to_modes(quantity)) continue;
      b.result.notes.push_back(place_of(b.result, p.file, p.line) + keyword_of(p.kind) + quantity +
                               " is not printed: a step that looks for modes has displacements alone");
    }
  }
}

bool is_followed(const step& s) { return s.kind == step_kind::PUSHOVER || s.kind == step_kind::ELASTOPLASTIC; }

bool is_heated(const model& m, const step& s) {
  return !s.temperatures.empty() || std::any_of(s.combined.begin(), s.combined.end(), [&](const combined_step& term) {
    return is_heated(m, m.steps[term.step]);
  });
}

// Strains come from stresses by Hooke's law, or as the elastic elements give them.
void drop_strains(build& b, step& s) {
  const bool heated = is_heated(b.result, s), yields = is_followed(s) || follows_shells(b.result, s);
  if (!heated && !yields) return;
  for (print_request& p : s.prints) {
    std::vector<std::string>& all = p.quantities;
    const auto is_strain = [](const std::string& q) { return q == "E" || q == "ME"; };
    const auto kept = std::remove_if(all.begin(), all.end(), is_strain);
    if (kept == all.end()) continue;
    all.erase(kept, all.end());
    b.result.notes.push_back(place_of(b.result, p.file, p.line) + ": *EL PRINT: strains are not printed in step " +
                             std::to_string(&s - b.result.steps.data() + 1) + ", in which " +
                             (heated ? "temperatures act" : "something may yield"));
  }
}

// Forces through a surface come from elastic stiffnesses.
void drop_sections(build& b, step& s) {
  const bool yields = is_followed(s) || follows_shells(b.result, s) || follows_hinges(b.result, s);
  if (!yields) return;
  for (print_request& p : s.prints) {
    if (p.kind != print_kind::SURFACES || p.quantities.empty()) continue;
    p.quantities.clear();
    b.result.notes.push_back(
        place_of(b.result, p.file, p.line) + ": *SECTION PRINT: forces through a surface are not printed in step " +
        std::to_string(&s - b.result.steps.data() + 1) + ", in which something may yield; *STATIC, ELASTIC has them");
  }
}

}  // namespace

void read_node_print(build& b, const card& c) { read_print(b, c, print_kind::NODES); }
void read_element_print(build& b, const card& c) { read_print(b, c, print_kind::ELEMENTS); }

void read_section_print(build& b, const card& c) {
  if (!b.inside_step) {
    b.note(c, "outside of a step it has no effect");
    return;
  }
  print_request request;
  request.kind = print_kind::SURFACES;
  request.line = c.line;
  request.file = c.file;
  const int surface = surface_to_cut(b, c);
  const named_surface& s = b.result.surfaces[surface];
  request.set = s.name;
  request.members = {surface};
  check_axes(b, c);
  check_sides(b, c, s);
  note_other_section_parameters(b, c);
  if (!is_silenced(b, c)) read_quantities(b, c, request);
  b.result.steps.back().prints.push_back(request);
}

// As in CalculiX: what a step asks for stands in later steps until one of them has a card of the same keyword.
void carry_prints(build& b) {
  std::vector<step>& steps = b.result.steps;
  for (const step& s : steps) note_modes(b, s);
  for (std::size_t s = 1; s < steps.size(); ++s) {
    for (const print_kind kind : {print_kind::NODES, print_kind::ELEMENTS, print_kind::SURFACES}) {
      if (has_kind(steps[s], kind)) continue;
      for (const print_request& p : steps[s - 1].prints) {
        if (p.kind == kind) steps[s].prints.push_back(p);
      }
    }
  }
  for (step& s : steps) {
    if (s.kind != step_kind::FREQUENCY && s.kind != step_kind::BUCKLE && s.kind != step_kind::ENVELOPE) {
      drop_strains(b, s);
      drop_sections(b, s);
    }
  }
}

}  // namespace solver::deck
