// keywords.h: the table of keywords: where each may stand, its parameters, its data, its reader.
#ifndef FINITES_SOLVER_DECK_KEYWORDS_H
#define FINITES_SOLVER_DECK_KEYWORDS_H

#include <string>
#include <string_view>
#include <vector>

#include "deck/build.h"
#include "deck/cards.h"

namespace solver::deck {

enum class place {
  HEAD,      // before the first *STEP
  MATERIAL,  // below a *MATERIAL
  BEAM,      // below a beam section
  COUPLING,  // below a *COUPLING
  STEP,      // between *STEP and *END STEP
  HEAD_OR_STEP,
  OUTSIDE,  // of all steps
  ANYWHERE,
};

// Cards are read stage by stage, in the order of the deck within a stage: the mesh may name nodes that come later, and
// a section a material that comes later.
enum class stage { NODES, ELEMENTS, SETS, SURFACES, MATERIALS, SECTIONS, CONDITIONS, STEPS };
constexpr stage STAGES[] = {stage::NODES,     stage::ELEMENTS, stage::SETS,       stage::SURFACES,
                            stage::MATERIALS, stage::SECTIONS, stage::CONDITIONS, stage::STEPS};

// UNLESS_OP: a card with OP and no line says what happens to earlier ones of its kind.
enum class data { NONE, OPTIONAL, NEEDED, UNLESS_OP };

struct parameter_rule {
  enum kind_type { REQUIRED, VALUE, FLAG, VALUE_OR_FLAG };
  const char* name;  // as a deck writes it: ORIENTATION ANGLE
  kind_type kind;
};

struct keyword_rule {
  const char* name;
  place where;
  stage when;
  data lines;
  void (*read)(build&, const card&);
  std::vector<parameter_rule> parameters;
  bool any_parameters = false;  // output requests: nothing in them has a meaning here
};

// Null for a keyword that this solver does not know.
const keyword_rule* find_rule(const std::string& keyword);

// "; is *BOUNDARY meant?" where a data line is a keyword without its star, alone or with a parameter; else empty.
std::string missing_star(std::string_view line);

// Every card against its rule, and the nesting of the steps. The rules of the cards, one each; null for a card in
// error, which is not read.
std::vector<const keyword_rule*> check_structure(const card_deck& deck, error_list& errors);

// read_mesh.cpp
void read_nodes(build& b, const card& c);
void read_elements(build& b, const card& c);
void read_nset(build& b, const card& c);
void read_elset(build& b, const card& c);
// read_surfaces.cpp
void read_surface(build& b, const card& c);
// plane_elements.cpp
bool takes_plane_section(build& b, const card& c);  // *SOLID SECTION of plane elements; false: of others
void hold_plane_nodes(build& b);
// amplitudes.cpp
void read_amplitude(build& b, const card& c);
void apply_amplitudes(build& b, card_deck& cards);
// read_materials.cpp
void read_material(build& b, const card& c);
void read_elastic(build& b, const card& c);
void read_density(build& b, const card& c);
void read_expansion(build& b, const card& c);
// material_notes.cpp
void note_material_card(build& b, const card& c);
// read_orientations.cpp
void read_orientation(build& b, const card& c);
int orientation_of_parameter(const build& b, const card& c);  // ORIENTATION of a section; -1: it has none
void check_orientations(build& b);
// read_sections.cpp
void read_shell_section(build& b, const card& c);
void read_membrane_section(build& b, const card& c);
// read_laminates.cpp
void read_layers(build& b, const card& c, shell_section& s);  // *SHELL SECTION, COMPOSITE, of the elements of the set
// read_frames.cpp
void read_solid_section(build& b, const card& c);
void read_cable_section(build& b, const card& c);
void read_spring(build& b, const card& c);
void read_link_section(build& b, const card& c);
// read_beam_section.cpp
void read_beam_section(build& b, const card& c);
void read_transverse_shear(build& b, const card& c);
void read_centroid(build& b, const card& c);
void read_shear_centre(build& b, const card& c);
void read_section_points(build& b, const card& c);
// read_beam_shapes.cpp
void settle_beams(build& b);  // shear deformation by the type of element
// placed_beams.cpp
void note_placed_beams(build& b);
void check_placed_beams(const build& b);
// read_masses.cpp
void read_mass(build& b, const card& c);
void read_rotary_inertia(build& b, const card& c);
void read_mass_choice(build& b, const card& c);  // MASS of *FREQUENCY
// read_solids.cpp
bool takes_solid_section(build& b, const card& c);  // *SOLID SECTION of solids; false: of trusses
void check_solids(const build& b, const step& s);
void note_solids(build& b);
// solid_shapes.cpp
void check_solid(const build& b, const element& e);
int folded_node(const model& m, const element& e);  // a corner with a negative volume; -1: none
// read_member_ends.cpp
void read_release(build& b, const card& c);
void read_fixity(build& b, const card& c);
// read_hinges.cpp
void read_plastic_hinge(build& b, const card& c);
void read_pushover(build& b, const card& c);
void check_pushovers(const build& b);
void read_curve_freedom(const build& b, const card& c, int& node, int& dof);  // NODE and DOF
// read_plastic.cpp
void read_plastic(build& b, const card& c);
void read_elastoplastic(build& b, const card& c);
void check_elastoplastics(const build& b);
void check_plastic_materials(const build& b);
// read_equations.cpp
void read_equation(build& b, const card& c);
void read_mpc(build& b, const card& c);
// read_rigid_bodies.cpp
void read_rigid_body(build& b, const card& c);
// read_couplings.cpp
void read_coupling(build& b, const card& c);
void read_kinematic(build& b, const card& c);
void read_distributing(build& b, const card& c);
void read_kinematic_coupling(build& b, const card& c);
void read_distributing_coupling(build& b, const card& c);
void read_coupling_elements(build& b, const card& c);  // *ELEMENT, TYPE=DCOUP3D
void check_coupling(build& b);                         // the last *COUPLING has its card
// read_ties.cpp
void read_tie(build& b, const card& c);
// read_transforms.cpp
void read_transform(build& b, const card& c);
// constraint_checks.cpp
void check_constraints(const build& b);
// step_states.cpp
void check_states(build& b);
void check_yielding_statics(build& b);
// lost_effects.cpp
void note_lost_effects(build& b, const step& s);
// read_loads.cpp
void read_boundary(build& b, const card& c);
void read_cload(build& b, const card& c);
void read_dload(build& b, const card& c);
void check_op(build& b, const card& c);  // OP of a load or a condition
// surface_loads.cpp
void read_dsload(build& b, const card& c);
// read_temperatures.cpp
void read_initial_conditions(build& b, const card& c);
void read_temperature(build& b, const card& c);
// read_steps.cpp
void read_heading(build& b, const card& c);
void read_step(build& b, const card& c);
void read_static(build& b, const card& c);
void read_frequency(build& b, const card& c);
void read_buckle(build& b, const card& c);
void read_end_step(build& b, const card& c);
void note_output_request(build& b, const card& c);
void read_load_case(build& b, const card& c);
// combinations.cpp
void read_combination(build& b, const card& c);
void read_envelope(build& b, const card& c);
void append_combinations(build& b);  // behind the steps of the deck
// superposition.cpp
void check_combinations(build& b);
// step_options.cpp
void check_nlgeom(const build& b, const card& c);
void check_increments(build& b, const card& c);
void read_static_line(build& b, const card& c);
void read_frequency_line(build& b, const card& c, step& s);
void read_buckle_line(build& b, const card& c, step& s);
// own_conditions.cpp
void check_boundary_options(const build& b, const card& c);
void open_own_conditions(build& b, const card& c);
void keep_second_case(build& b, const card& c, std::size_t before);  // conditions of the open step from this one on
void settle_own_conditions(build& b);

// read_prints.cpp
void read_node_print(build& b, const card& c);
void read_element_print(build& b, const card& c);
void read_section_print(build& b, const card& c);
void carry_prints(build& b);  // requests go on in later steps

// read_sections.cpp, for the other sections
int material_of_parameter(const build& b, const card& c);
void refuse_anisotropy(const build& b, const card& c, const char* what);   // of the material of a section
const char* sections_that_fit(element_type type);                          // "a shell (S3): it takes a *SHELL SECTION"
void check_carriers(build& b, const card& c, bool (*fits)(element_type));  // before what stands below the section

// shell_notes.cpp
void note_shells(build& b);
// pressed_sides.cpp
void note_pressed_sides(build& b);
// pressed_rims.cpp
void note_pressed_rims(build& b);
// second_order_notes.cpp
void note_second_order(build& b);

// checks.cpp: what can be said only when a stage is complete
void check_mesh(build& b);
void check_sections(build& b);
void check_steps(build& b);

}  // namespace solver::deck

#endif
