// flat_deck.cpp: every record of a model as the card that the deck reader makes it from.
//
// Numbers are written with the fewest digits that read back as the same double.
#include "output/flat_deck.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "deck/deck_reader.h"
#include "elements/element_faces.h"
#include "model/base_step.h"
#include "model/element_names.h"
#include "model/model_error.h"
#include "output/flat_axes.h"
#include "output/flat_check.h"
#include "output/flat_materials.h"
#include "output/flat_steps.h"
#include "output/text.h"

namespace solver {

namespace {

using buffer = fmt::memory_buffer;

const char* name_of(const model& m, const element& e) {
  const char* const name = type_name(e.type);
  if (name == nullptr) {
    throw model_error(m, e, "*ELEMENT", "--write knows no card of a flat deck for the type of this element");
  }
  return name;
}

void append_nodes(buffer& out, const model& m) {
  append(out, "*NODE\n");
  for (const node& n : m.nodes) append(out, "{}, {}, {}, {}\n", n.id, n.xyz[0], n.xyz[1], n.xyz[2]);
}

// In the order of the model: a card for each run of one type.
void append_elements(buffer& out, const model& m) {
  const element* before = nullptr;
  for (const element& e : m.elements) {
    if (before == nullptr || before->type != e.type) append(out, "*ELEMENT, TYPE={}\n", name_of(m, e));
    append(out, "{}", e.id);
    for (const int n : e.nodes) append(out, ", {}", m.nodes[n].id);
    append(out, "\n");
    before = &e;
  }
}

template <class RECORDS>
void append_set(buffer& out, const char* keyword, const std::string& name, const std::vector<int>& members,
                const RECORDS& records) {
  constexpr std::size_t ON_A_LINE = 12;
  append(out, "*{0}, {0}={1}\n", keyword, name);
  for (std::size_t i = 0; i < members.size(); ++i) {
    const bool last = i + 1 == members.size() || (i + 1) % ON_A_LINE == 0;
    append(out, "{}{}", records[members[i]].id, last ? "\n" : ", ");
  }
}

void append_point(buffer& out, const std::array<double, 3>& p) { append(out, "{}, {}, {}", p[0], p[1], p[2]); }

void append_orientation(buffer& out, const orientation& o) {
  constexpr const char* SYSTEMS[] = {"RECTANGULAR", "CYLINDRICAL", "SPHERICAL"};
  const bool round = o.system != orientation_system::RECTANGULAR;
  append(out, "*ORIENTATION, NAME={}, SYSTEM={}\n", o.name, SYSTEMS[static_cast<std::size_t>(o.system)]);
  append_point(out, round ? o.origin : o.direction[0]);
  append(out, ", ");
  if (round) {
    // The second point of the axis lies as far away as the first lies from zero, or farther: so its digits suffice.
    const double far = 1 + std::fabs(o.origin[0]) + std::fabs(o.origin[1]) + std::fabs(o.origin[2]);
    std::array<double, 3> b{};
    for (std::size_t i = 0; i < 3; ++i) b[i] = o.origin[i] + far * o.direction[2][i];
    append_point(out, b);
  } else {
    append_point(out, o.direction[1]);
  }
  append(out, "\n{}, {}\n", o.axis, o.angle);
}

// ---- sections

// The elements of each section, of each hinge and so on, by the index that they hold.
template <class CHOICE>
std::vector<std::vector<int>> members_by(const model& m, std::size_t count, const CHOICE& index_of) {
  std::vector<std::vector<int>> members(count);
  for (int e = 0; e < count_of(m.elements); ++e) {
    const int index = index_of(m.elements[e]);
    if (index >= 0) members[subscript(index)].push_back(e);
  }
  return members;
}

// Finds or makes the set that holds exactly some elements.
class element_sets {
 public:
  explicit element_sets(const model& m) : model_(m) {}

  const std::string& name_of(buffer& out, const std::string& wanted, const std::vector<int>& members) {
    for (const named_set& set : model_.elsets) {
      if (set.name == wanted && set.members == members) return set.name;
    }
    made_.push_back(free_name());
    append_set(out, "ELSET", made_.back(), members, model_.elements);
    return made_.back();
  }

 private:
  std::string free_name() const {
    std::string name = fmt::format("SECTION_{}", made_.size() + 1);
    const auto taken = [&](const named_set& set) { return set.name == name; };
    while (std::any_of(model_.elsets.begin(), model_.elsets.end(), taken)) name.insert(name.begin(), '_');
    return name;
  }

  const model& model_;
  std::vector<std::string> made_;
};

void append_layers(buffer& out, const model& m, const laminate& made) {
  for (const layer& l : made.layers) append(out, "{}, , {}, {}\n", l.thickness, m.materials[l.material].name, l.angle);
}

void append_shell_section(buffer& out, const model& m, const shell_section& s, const std::string& set, bool membrane) {
  append(out, "*{} SECTION, ELSET={}", membrane ? "MEMBRANE" : "SHELL", set);
  if (s.layup >= 0) {
    append(out, ", COMPOSITE");
  } else {
    append(out, ", MATERIAL={}", m.materials[s.material].name);
  }
  if (s.orientation >= 0) append(out, ", ORIENTATION={}", m.orientations[s.orientation].name);
  if (s.orientation_angle != 0) append(out, ", ORIENTATION ANGLE={}", s.orientation_angle);
  if (!membrane) {
    append(out, ",\nFORMULATION={}, DRILLING={}", s.formulation == shell_formulation::THIN ? "THIN" : "THICK",
           s.drilling);
    if (s.offset != 0) append(out, ", OFFSET={}", s.offset);
    if (s.yielding == plate_model::LAYERED) append(out, ", MODEL=LAYERED, POINTS={}", s.thickness_points);
  }
  append(out, "\n");
  if (s.layup >= 0) return append_layers(out, m, m.laminates[s.layup]);
  append(out, "{}\n", s.thickness);
}

void append_n1(buffer& out, const frame_section& s) {
  if (!s.has_n1) return;
  append_point(out, s.n1);
  append(out, "\n");
}

// I12 is the integral of x1 x2. With y, z along the principal axes, x1 = y cos - z sin and x2 = y sin + z cos.
void append_constants(buffer& out, const frame_section& s) {
  const double c = std::cos(s.place.angle), d = std::sin(s.place.angle);
  const double yy = s.inertia_xy, zz = s.inertia_xz;
  const bool turned = s.place.angle != 0;
  append(out, "{}, {}, {}, {}, {}\n", s.area, turned ? zz * c * c + yy * d * d : zz, turned ? (yy - zz) * c * d : 0.0,
         turned ? zz * d * d + yy * c * c : yy, s.torsion);
}

void append_place(buffer& out, const char* keyword, const std::array<double, 2>& at) {
  if (at[0] != 0 || at[1] != 0) append(out, "{}\n{}, {}\n", keyword, at[0], at[1]);
}

void append_beam(buffer& out, const model& m, const frame_section& s, const std::string& set) {
  append(out, "*BEAM GENERAL SECTION, ELSET={}, MATERIAL={}\n", set, m.materials[s.material].name);
  append_constants(out, s);
  append_n1(out, s);
  append_place(out, "*CENTROID", s.place.centroid);
  append_place(out, "*SHEAR CENTER", s.place.shear_centre);
  if (s.shear_stiffness_y > 0 || s.shear_stiffness_z > 0) {
    append(out, "*TRANSVERSE SHEAR STIFFNESS{}\n{}, {}\n", s.place.angle != 0 ? ", PRINCIPAL" : "", s.shear_stiffness_z,
           s.shear_stiffness_y);
  }
  if (!s.points.empty()) append(out, "*SECTION POINTS\n");
  for (const section_point& p : s.points) append(out, "{}, {}\n", p.x1, p.x2);
}

void append_cable(buffer& out, const model& m, const frame_section& s, const std::string& set) {
  append(out, "*CABLE SECTION, ELSET={}, MATERIAL={}", set, m.materials[s.material].name);
  if (s.unstressed_length > 0) {
    append(out, "\n{}, {}\n", s.area, s.unstressed_length);
  } else {
    append(out, ", LENGTH RATIO={}\n{}\n", s.length_ratio, s.area);
  }
}

void append_spring(buffer& out, const frame_section& s, const std::string& set, element_type type) {
  append(out, "*SPRING, ELSET={}\n", set);
  const double* const stiff = std::find_if(s.stiffness.begin(), s.stiffness.end(), [](double k) { return k > 0; });
  const auto dof = std::distance(s.stiffness.begin(), stiff) + 1;
  if (type == element_type::SPRING1) append(out, "{}\n", dof);
  if (type == element_type::SPRING2) append(out, "{0}, {0}\n", dof);
  append(out, "{}\n", *stiff);
}

void append_frame_section(buffer& out, const model& m, const frame_section& s, const std::string& set,
                          element_type type) {
  switch (s.kind) {
    case frame_section_kind::BEAM: return append_beam(out, m, s, set);
    case frame_section_kind::CABLE: return append_cable(out, m, s, set);
    case frame_section_kind::SPRING: return append_spring(out, s, set, type);
    case frame_section_kind::TRUSS:
      append(out, "*SOLID SECTION, ELSET={}, MATERIAL={}", set, m.materials[s.material].name);
      if (s.pretension != 0) append(out, ", PRETENSION={}", s.pretension);
      return append(out, "\n{}\n", s.area);
    case frame_section_kind::LINK:
      append(out, "*LINK SECTION, ELSET={}, FORM={}\n", set, s.deforms_at_mid_length ? "MIDDLE" : "NODES");
      const std::array<double, 6>& k = s.stiffness;
      append(out, "{}, {}, {}, {}, {}, {}\n", k[0], k[1], k[2], k[3], k[4], k[5]);
      return append_n1(out, s);
  }
}

void append_shell_sections(buffer& out, const model& m, element_sets& sets) {
  const auto plates =
      members_by(m, m.shell_sections.size(), [](const element& e) { return is_plate(e.type) ? e.section : -1; });
  for (std::size_t i = 0; i < plates.size(); ++i) {
    if (plates[i].empty()) continue;
    const shell_section& s = m.shell_sections[i];
    const std::string& set = sets.name_of(out, s.elset, plates[i]);
    append_shell_section(out, m, s, set, is_membrane(m.elements[plates[i].front()].type));
  }
}

void append_frame_sections(buffer& out, const model& m, element_sets& sets) {
  const auto members =
      members_by(m, m.frame_sections.size(), [](const element& e) { return is_member(e.type) ? e.section : -1; });
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (members[i].empty()) continue;
    const frame_section& s = m.frame_sections[i];
    const std::string& set = sets.name_of(out, s.elset, members[i]);
    append_frame_section(out, m, s, set, m.elements[members[i].front()].type);
  }
}

void append_solid_sections(buffer& out, const model& m, element_sets& sets) {
  const auto solids =
      members_by(m, m.solid_sections.size(), [](const element& e) { return is_solid(e.type) ? e.section : -1; });
  for (std::size_t i = 0; i < solids.size(); ++i) {
    if (solids[i].empty()) continue;
    const solid_section& s = m.solid_sections[i];
    const std::string& set = sets.name_of(out, s.elset, solids[i]);
    append(out, "*SOLID SECTION, ELSET={}, MATERIAL={}\n", set, m.materials[s.material].name);
  }
}

void append_point_masses(buffer& out, const model& m, element_sets& sets) {
  const auto points =
      members_by(m, m.point_masses.size(), [](const element& e) { return is_point(e.type) ? e.section : -1; });
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (points[i].empty()) continue;
    const point_mass& p = m.point_masses[i];
    const std::string& set = sets.name_of(out, p.elset, points[i]);
    const std::array<double, 6>& I = p.inertia;
    if (m.elements[points[i].front()].type == element_type::MASS) {
      append(out, "*MASS, ELSET={}\n{}\n", set, p.mass);
    } else {
      append(out, "*ROTARY INERTIA, ELSET={}\n{}, {}, {}, {}, {}, {}\n", set, I[0], I[1], I[2], I[3], I[4], I[5]);
    }
  }
}

// ---- ends of members

void append_ends(buffer& out, const model& m) {
  constexpr const char* FORCES[] = {"N", "V1", "V2", "T"};
  for (const element& e : m.elements) {
    if (e.ends < 0) continue;
    const member_ends& ends = m.ends[e.ends];
    for (std::size_t end = 0; end < 2; ++end) {
      append(out, "*FIXITY\n{}, S{}, {}, {}\n", e.id, end + 1, ends.fixity[end][0], ends.fixity[end][1]);
    }
    for (std::size_t i = 0; i < ends.released.size(); ++i) {
      if (ends.released[i] != 0) append(out, "*RELEASE\n{}, S{}, {}\n", e.id, ends.released[i], FORCES[i]);
    }
  }
}

void append_hinges(buffer& out, const model& m, element_sets& sets) {
  constexpr const char* CURVES[] = {"SINGLE", "ORBISON", "LINEAR"};
  constexpr const char* FORCE_SETS[] = {"N", "M1", "M2", "N-M1", "N-M2", "M1-M2", "N-M1-M2"};
  const auto members = members_by(m, m.hinges.size(), [](const element& e) { return e.hinges; });
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (members[i].empty()) continue;
    const hinge_model& h = m.hinges[i];
    const std::string& set = sets.name_of(out, "", members[i]);
    append(out, "*PLASTIC HINGE, ELSET={}, CURVE={}, FORCES={}\n{}, {}, {}\n", set,
           CURVES[static_cast<std::size_t>(h.curve) - 1], FORCE_SETS[subscript(h.force_set - 1)], h.cap_p, h.cap_my,
           h.cap_mz);
  }
}

// The surfaces whose section forces a step prints; others have done their work.
void append_cut_surfaces(buffer& out, const model& m) {
  std::set<int> printed;
  for (const step& s : m.steps) {
    for (const print_request& p : s.prints) {
      if (p.kind == print_kind::SURFACES) printed.insert(p.members.front());
    }
  }
  for (const int index : printed) {
    append(out, "*SURFACE, NAME={}\n", m.surfaces[index].name);
    for (const surface_face& f : m.surfaces[index].faces) {
      append(out, "{}, {}\n", m.elements[f.element].id, face_name(f.face));
    }
  }
}

}  // namespace

namespace {

std::string text_of(const model& m) {
  buffer all;
  if (!m.title.empty()) append(all, "*HEADING\n{}\n", m.title);
  append(all, "** As finites-solve understands {}\n", m.deck);
  append_nodes(all, m);
  append_elements(all, m);
  for (const named_set& set : m.nsets) append_set(all, "NSET", set.name, set.members, m.nodes);
  for (const named_set& set : m.elsets) append_set(all, "ELSET", set.name, set.members, m.elements);
  append_cut_surfaces(all, m);
  for (int i = 0; i < count_of(m.materials); ++i) {
    if (!is_of_layers(m, i)) append_material(all, m.materials[i]);
  }
  for (const orientation& o : m.orientations) append_orientation(all, o);
  element_sets sets(m);
  append_shell_sections(all, m, sets);
  append_frame_sections(all, m, sets);
  append_solid_sections(all, m, sets);
  append_point_masses(all, m, sets);
  append_ends(all, m);
  append_hinges(all, m, sets);
  append_initial_temperatures(all, m);
  const flat_axes axes(m);
  axes.append_cards(all);
  axes.append_boundaries(all, m.boundaries);
  axes.append_constraints(all, m.constraints);
  for (const step& s : m.steps) append_step(all, m, axes, s);
  return {all.data(), all.size()};
}

[[noreturn]] void refuse(const model& m, const std::string& what) {
  throw model_error(m, "--write cannot say the whole model in one flat deck: " + what);
}

// The turning of a rigid arm counts in second order; an *EQUATION in its place has no arm.
void refuse_turning_arms(const model& m) {
  const auto arm = std::find_if(m.constraints.begin(), m.constraints.end(),
                                [](const linear_constraint& c) { return c.arm.node >= 0; });
  if (arm == m.constraints.end()) return;
  for (const step& s : m.steps) {
    if (s.kind != step_kind::BUCKLE && !s.p_delta && !(s.perturbation && last_state_before(m, s) != nullptr)) continue;
    throw model_error(m, *arm, arm->keyword,
                      "--write writes conditions as *EQUATION: the arm of this one would no longer turn in step " +
                          std::to_string(number_of(m, s)) + ", which is one of second order");
  }
}

}  // namespace

std::string flat_deck(const model& m) {
  refuse_turning_arms(m);
  std::string deck = text_of(m);
  model again;
  try {
    again = read_deck_text(deck, "the flat deck");
  } catch (const deck_error& error) {
    refuse(m, error.what());
  }
  const std::string difference = difference_between(m, again);
  if (!difference.empty()) refuse(m, difference + " would be another");
  return deck;
}

}  // namespace solver
