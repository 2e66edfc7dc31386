// keywords.h: the table of keywords: where each may stand, its parameters, its data, its reader.
#ifndef FINITES_SOLVER_DECK_KEYWORDS_H
#define FINITES_SOLVER_DECK_KEYWORDS_H

#include <string>
#include <vector>

#include "deck/build.h"
#include "deck/cards.h"

namespace solver::deck {

enum class place {
  HEAD,      // before the first *STEP
  MATERIAL,  // below a *MATERIAL
  BEAM,      // below a beam section
  STEP,      // between *STEP and *END STEP
  HEAD_OR_STEP,
  ANYWHERE,
};

// Cards are read stage by stage, in the order of the deck within a stage: the mesh may name nodes that come later, and
// a section a material that comes later.
enum class stage { NODES, ELEMENTS, SETS, MATERIALS, SECTIONS, STEPS };
constexpr stage STAGES[] = {stage::NODES,     stage::ELEMENTS, stage::SETS,
                            stage::MATERIALS, stage::SECTIONS, stage::STEPS};

enum class data { NONE, OPTIONAL, NEEDED };

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

// Every card against its rule, and the nesting of the steps. The rules of the cards, one each; null for a card in
// error, which is not read.
std::vector<const keyword_rule*> check_structure(const card_deck& deck, error_list& errors);

// read_mesh.cpp
void read_nodes(build& b, const card& c);
void read_elements(build& b, const card& c);
void read_nset(build& b, const card& c);
void read_elset(build& b, const card& c);
// read_materials.cpp
void read_material(build& b, const card& c);
void read_elastic(build& b, const card& c);
void read_density(build& b, const card& c);
void read_expansion(build& b, const card& c);
// read_orientations.cpp
void read_orientation(build& b, const card& c);
int orientation_of_parameter(const build& b, const card& c);  // ORIENTATION of a section; -1: it has none
void check_orientations(build& b);
// read_sections.cpp
void read_shell_section(build& b, const card& c);
void read_membrane_section(build& b, const card& c);
// read_frames.cpp
void read_beam_section(build& b, const card& c);
void read_transverse_shear(build& b, const card& c);
void read_solid_section(build& b, const card& c);
void read_cable_section(build& b, const card& c);
void read_spring(build& b, const card& c);
void read_link_section(build& b, const card& c);
// read_beam_shapes.cpp
bool takes_beam_shape(const build& b, const card& c, const std::string& form, frame_section& s);  // false: no shape
void settle_beams(build& b);  // shear deformation by the type of element
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
// step_states.cpp
void check_states(build& b);
void check_yielding_statics(build& b);
// lost_effects.cpp
void note_lost_effects(build& b, const step& s);
// read_loads.cpp
void read_boundary(build& b, const card& c);
void read_cload(build& b, const card& c);
void read_dload(build& b, const card& c);
void read_temperature(build& b, const card& c);
// read_steps.cpp
void read_heading(build& b, const card& c);
void read_step(build& b, const card& c);
void read_static(build& b, const card& c);
void read_frequency(build& b, const card& c);
void read_buckle(build& b, const card& c);
void read_end_step(build& b, const card& c);
void note_output_request(build& b, const card& c);

// read_prints.cpp
void read_node_print(build& b, const card& c);
void read_element_print(build& b, const card& c);
void read_section_print(build& b, const card& c);
void carry_prints(build& b);  // requests go on in later steps

// read_sections.cpp, for the other sections
int material_of_parameter(const build& b, const card& c);
const char* sections_that_fit(element_type type);  // "a shell (S3): it takes a *SHELL SECTION"

// shell_notes.cpp
void note_shells(build& b);

// checks.cpp: what can be said only when a stage is complete
void check_mesh(build& b);
void check_sections(build& b);
void check_steps(build& b);

}  // namespace solver::deck

#endif
