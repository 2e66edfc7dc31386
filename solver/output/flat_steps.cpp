// flat_steps.cpp: steps from *STEP to *END STEP.
#include "output/flat_steps.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "elements/element_faces.h"
#include "elements/load_case.h"
#include "model/base_step.h"
#include "model/model_error.h"
#include "output/text.h"

namespace solver {

namespace {

using buffer = fmt::memory_buffer;

// The axis along which a unit vector points, 0 to 2; -1: none.
int axis_of(const std::array<double, 3>& d) {
  for (int i = 0; i < 3; ++i) {
    std::array<double, 3> unit{};
    unit[subscript(i)] = 1;
    if (d == unit) return i;
  }
  return -1;
}

int axis_of(const model& m, const element_load& load) {
  const int axis = axis_of(load.direction);
  if (axis < 0) throw model_error(m, load, "*DLOAD", "no card of a flat deck has a load of this direction");
  return axis;
}

// The number of the face or edge behind the word of a load; none of a side, which *DLOAD takes along the normal.
std::string face_number(const element_load& load) {
  if (is_side(load.face)) return "";
  return std::to_string(is_edge(load.face) ? load.face - EDGE : load.face);
}

void append_traction(buffer& out, const element_load& load, const char* word) {
  append(out, "{}{}, {}, {}, {}, {}\n", word, face_number(load), load.magnitude, load.direction[0], load.direction[1],
         load.direction[2]);
}

void append_edge_load(buffer& out, const element_load& load, const char* word) {
  append(out, "{}{}, {}\n", word, face_number(load), load.magnitude);
}

// A pressure on the side to which the normal points is one along the normal with the other sign.
void append_hydrostatic(buffer& out, const element_load& load) {
  append(out, "HP{}, {}, {}, {}\n", face_number(load), load.face == POSITIVE_SIDE ? -load.magnitude : load.magnitude,
         load.origin[0], load.origin[1]);
}

void append_element_load(buffer& out, const model& m, const element_load& load) {
  append(out, "{}, ", m.elements[load.element].id);
  switch (load.kind) {
    case element_load_kind::PRESSURE: append(out, "P, {}\n", load.magnitude); break;
    case element_load_kind::FACE: append(out, "P{}, {}\n", load.face, load.magnitude); break;
    case element_load_kind::BODY: append(out, "B{}, {}\n", "XYZ"[axis_of(m, load)], load.magnitude); break;
    case element_load_kind::LINE_GLOBAL: append(out, "P{}, {}\n", "XYZ"[axis_of(m, load)], load.magnitude); break;
    case element_load_kind::LINE_LOCAL: {
      const int axis = axis_of(m, load);  // of the section: 1 is local y
      if (axis == 0) throw model_error(m, load, "*DLOAD", "no card of a flat deck has a load along the axis of a beam");
      append(out, "P{}, {}\n", axis, load.magnitude);
      break;
    }
    case element_load_kind::GRAVITY:
      append(out, "GRAV, {}, {}, {}, {}\n", load.magnitude, load.direction[0], load.direction[1], load.direction[2]);
      break;
    case element_load_kind::CENTRIFUGAL: {
      const std::array<double, 3>&at = load.origin, &along = load.direction;
      append(out, "CENTRIF, {}, {}, {}, {}, {}, {}, {}\n", load.magnitude, at[0], at[1], at[2], along[0], along[1],
             along[2]);
      break;
    }
    case element_load_kind::HYDROSTATIC: append_hydrostatic(out, load); break;
    case element_load_kind::TRACTION: append_traction(out, load, is_edge(load.face) ? "EDLD" : "TRVEC"); break;
    case element_load_kind::SHEAR_TRACTION: append_traction(out, load, "TRSHR"); break;
    case element_load_kind::EDGE_NORMAL: append_edge_load(out, load, "EDNOR"); break;
    case element_load_kind::EDGE_SHEAR: append_edge_load(out, load, "EDSHR"); break;
    case element_load_kind::EDGE_TRANSVERSE: append_edge_load(out, load, "EDTRA"); break;
    case element_load_kind::EDGE_MOMENT: append_edge_load(out, load, "EDMOM"); break;
  }
}

void append_freedom(buffer& out, const model& m, int node, int dof) {
  if (node >= 0) append(out, ", NODE={}, DOF={}", m.nodes[node].id, dof);
}

void append_pushover(buffer& out, const model& m, const pushover_request& wanted) {
  append(out, "*PUSHOVER");
  append_freedom(out, m, wanted.node, wanted.dof);
  append(out, wanted.goes_on ? ", CONTINUE\n" : "\n");
  if (std::isfinite(wanted.largest_factor)) append(out, "{}", wanted.largest_factor);
  append(out, ", {}\n", wanted.largest_events);
}

void append_elastoplastic(buffer& out, const model& m, const elastoplastic_request& wanted) {
  append(out, "*ELASTOPLASTIC");
  append_freedom(out, m, wanted.node, wanted.dof);
  append(out, wanted.goes_on ? ", CONTINUE\n" : "\n");
  if (std::isfinite(wanted.largest_factor)) append(out, "{}", wanted.largest_factor);
  append(out, ", {}", wanted.largest_increments);
  if (wanted.own_increment) append(out, ", {}", wanted.increment);
  append(out, "\n");
}

void append_frequency(buffer& out, const step& s) {
  append(out, "*FREQUENCY{}\n{}", s.lumped_mass ? ", MASS=LUMPED" : "", s.modes);
  const bool above = std::isfinite(s.lowest_frequency), below = std::isfinite(s.highest_frequency);
  if (above || below) append(out, ", ");
  if (above) append(out, "{}", s.lowest_frequency);
  if (below) append(out, ", {}", s.highest_frequency);
  append(out, "\n");
}

void append_procedure(buffer& out, const model& m, const step& s) {
  switch (s.kind) {
    case step_kind::STATIC: return append(out, "*STATIC{}\n", s.elastic ? ", ELASTIC" : "");
    case step_kind::FREQUENCY: return append_frequency(out, s);
    case step_kind::BUCKLE: return append(out, "*BUCKLE\n{}\n", s.modes);
    case step_kind::PUSHOVER: return append_pushover(out, m, s.pushover);
    case step_kind::ELASTOPLASTIC: return append_elastoplastic(out, m, s.elastoplastic);
    case step_kind::COMBINATION:
    case step_kind::ENVELOPE: return;  // no *STEP
  }
}

// Temperatures, of which the model holds the changes; in a step that stands on a loaded state these are what a deck
// gives.
void append_temperatures(buffer& out, const model& m, const step& s) {
  if (s.temperatures.empty()) return;
  const bool increments = s.perturbation && last_state_before(m, s) != nullptr;
  append(out, "*TEMPERATURE\n");
  for (const nodal_temperature& t : s.temperatures) {
    const double initial = m.initial_temperature.empty() || increments ? 0 : m.initial_temperature[t.node];
    append(out, "{}, {}, {}\n", m.nodes[t.node].id, initial + t.change, t.gradient);
  }
}

void append_loads(buffer& out, const model& m, const flat_axes& axes, const step& s) {
  axes.append_loads(out, s.nodal_loads);
  if (!s.element_loads.empty()) append(out, "*DLOAD\n");
  for (const element_load& load : s.element_loads) append_element_load(out, m, load);
  append_temperatures(out, m, s);
}

void append_quantities(buffer& out, const print_request& p) {
  for (std::size_t i = 0; i < p.quantities.size(); ++i) append(out, "{}{}", i == 0 ? "\n" : ", ", p.quantities[i]);
  append(out, "\n");
}

void append_section_print(buffer& out, const print_request& p) {
  append(out, "*SECTION PRINT, NAME={}, SURFACE={}", p.set, p.set);
  if (p.quantities.empty()) return append(out, ", FREQUENCY=0\n");
  append_quantities(out, p);
}

// A request without quantities ends those of earlier steps.
void append_print(buffer& out, const print_request& p) {
  if (p.kind == print_kind::SURFACES) return append_section_print(out, p);
  const bool nodes = p.kind == print_kind::NODES;
  append(out, "*{} PRINT", nodes ? "NODE" : "EL");
  if (!p.set.empty()) append(out, ", {}={}", nodes ? "NSET" : "ELSET", p.set);
  if (p.quantities.empty()) return append(out, ", FREQUENCY=0\n");
  if (p.totals != print_totals::NO) append(out, ", TOTALS={}", p.totals == print_totals::YES ? "YES" : "ONLY");
  if (p.global_axes) append(out, ", GLOBAL=YES");
  if (p.centroids) append(out, ", POSITION=CENTROIDAL");
  append_quantities(out, p);
}

}  // namespace

// By the numbers of the steps, which do not change.
static void append_combination(buffer& out, const step& s) {
  const bool sum = s.kind == step_kind::COMBINATION;
  append(out, "*{}, NAME={}\n", sum ? "COMBINATION" : "ENVELOPE", s.name);
  for (const combined_step& term : s.combined) {
    append(out, "{}", term.step + 1);
    if (sum) append(out, ", {}", term.factor);
    append(out, "\n");
  }
}

void append_step(buffer& out, const model& m, const flat_axes& axes, const step& s) {
  if (solves_nothing(s)) return append_combination(out, s);
  append(out, "*STEP{}{}", s.perturbation ? ", PERTURBATION" : "", s.p_delta ? ", PDELTA" : "");
  if (!s.name.empty()) append(out, ", NAME={}", s.name);
  append(out, "\n{}{}", s.title, s.title.empty() ? "" : "\n");
  append_procedure(out, m, s);
  axes.append_boundaries(out, s.boundaries);
  axes.append_constraints(out, s.constraints);
  append_loads(out, m, axes, s);
  for (const print_request& p : s.prints) append_print(out, p);
  append(out, "*END STEP\n");
}

}  // namespace solver
