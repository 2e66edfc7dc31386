// model.h: a structural model as a deck describes it, before anything is computed.
//
// The deck reader fills it; everything else in the solver reads it. Nodes and elements are named by their index in the
// vectors here; `id` is the user's number. Every record remembers the line that defined it, and the file when the deck
// includes others, so that a later finding can name it: place_of().
#ifndef FINITES_SOLVER_MODEL_H
#define FINITES_SOLVER_MODEL_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace solver {

struct node {
  int id = 0;
  std::array<double, 3> xyz{};
  int line = 0;
  int file = 0;  // index into model::files
};

// Thin shell triangle and membrane triangle; then the frame elements, of two nodes but for SPRING1, which stands
// between a node and the ground. A T3D2 is a truss or a cable: its section says which. SPRINGA acts along the line
// between its nodes, CONN3D2 is a link of six stiffnesses.
enum class element_type { S3, M3D3, B31, T3D2, SPRING1, SPRING2, SPRINGA, CONN3D2 };

inline bool is_plate(element_type type) { return type == element_type::S3 || type == element_type::M3D3; }

struct element {
  int id = 0;
  element_type type = element_type::S3;
  std::vector<int> nodes;  // indices into model::nodes
  int section = -1;        // index into model::shell_sections or, of a frame element, model::frame_sections; -1: none
  int ends = -1;           // index into model::ends; -1: both ends of the member are rigid connections
  int line = 0;
  int file = 0;  // index into model::files
};

struct named_set {
  std::string name;
  std::vector<int> members;  // indices, ascending, each once
};

struct material {
  std::string name;
  bool elastic = false;  // an *ELASTIC was given
  bool orthotropic = false;
  bool expansion = false;  // an *EXPANSION was given; alpha1 and alpha2 may differ
  // Isotropic: E1, NU12 and G12 = E1 / (2 (1 + NU12)) hold everything. Orthotropic: in the axes 1, 2 of the
  // orientation.
  double E1 = 0, E2 = 0, NU12 = 0, G12 = 0, G13 = 0, G23 = 0;
  double density = 0;  // mass per volume
  double alpha1 = 0, alpha2 = 0;
  int line = 0;
  int file = 0;  // index into model::files
};

struct shell_section {
  std::string elset;
  int material = -1;  // index into model::materials
  double thickness = 0;
  double offset = 0;             // from the mid surface to the nodes, in thicknesses along the element's normal
  double orientation_angle = 0;  // degrees, from the element's x axis to axis 1 of the material, about the normal
  int line = 0;
  int file = 0;  // index into model::files
};

enum class frame_section_kind { BEAM, TRUSS, CABLE, SPRING, LINK };

// Local axes of a member: x from node 1 to node 2, y along n1 as far as it is square to x, z = x cross y.
struct frame_section {
  frame_section_kind kind = frame_section_kind::BEAM;
  std::string elset;
  int material = -1;  // index into model::materials; springs and links have none
  double area = 0;
  double inertia_xy = 0, inertia_xz = 0;                // of bending in the x-y plane and in the x-z plane
  double torsion = 0;                                   // torsion constant J
  double shear_stiffness_y = 0, shear_stiffness_z = 0;  // G times shear area along y and z; 0: no shear deformation
  bool has_n1 = false;
  std::array<double, 3> n1{0, 0, -1};
  double pretension = 0;               // stress of a truss in the state without displacements
  double unstressed_length = 0;        // of a cable; or
  double length_ratio = 0;             // unstressed length by chord
  std::array<double, 6> stiffness{};   // of a spring (global directions) or link (local axes)
  bool deforms_at_mid_length = false;  // link: the deformable point lies at mid-length, not in the nodes
  int line = 0;
  int file = 0;  // index into model::files
};

// How the ends of one member are connected to its nodes.
struct member_ends {
  // [end][0] bending in the x-z plane (rotation about y), [end][1] in the x-y plane (about z): 0 pin, 1 rigid.
  std::array<std::array<double, 2>, 2> fixity{{{1, 1}, {1, 1}}};
  // Released forces: [0] axial, [1] along y, [2] along z, [3] torsion: 0 none, 1 at the first end, 2 at the second.
  std::array<int, 4> released{};
};

struct boundary_condition {
  int node = 0;
  int first_dof = 1, last_dof = 1;  // 1 to 6
  double value = 0;
  int line = 0;
  int file = 0;  // index into model::files
};

struct nodal_load {
  int node = 0;
  int dof = 1;
  double value = 0;
  int line = 0;
  int file = 0;  // index into model::files
};

// LINE_GLOBAL and LINE_LOCAL: per length of a member, along a global axis or along an axis of the section.
enum class element_load_kind { PRESSURE, GRAVITY, LINE_GLOBAL, LINE_LOCAL };

struct element_load {
  int element = 0;
  element_load_kind kind = element_load_kind::PRESSURE;
  double magnitude = 0;               // pressure along the positive normal, acceleration, or force per length
  std::array<double, 3> direction{};  // GRAVITY and LINE: a unit vector, of LINE_LOCAL in local axes
  int line = 0;
  int file = 0;  // index into model::files
};

struct nodal_temperature {
  int node = 0;
  double change = 0;      // of the mid surface, against the state without strain
  double difference = 0;  // top minus bottom
  int line = 0;
  int file = 0;  // index into model::files
};

enum class step_kind { STATIC, FREQUENCY, BUCKLE };

// One *STEP, an analysis of its own. The conditions before the first step (model::boundaries) hold in every step; where
// a step prescribes the same freedom again, the value of the step replaces them. Loads on the same place add.
struct step {
  std::string name;
  std::string title;  // the text lines below *STEP
  step_kind kind = step_kind::STATIC;
  int modes = 0;         // how many FREQUENCY and BUCKLE are to find
  bool p_delta = false;  // STATIC: members and shells carry their loads in the displaced position
  std::vector<boundary_condition> boundaries;
  std::vector<nodal_load> nodal_loads;
  std::vector<element_load> element_loads;
  std::vector<nodal_temperature> temperatures;
  int line = 0;
  int file = 0;  // index into model::files
};

struct model {
  std::string deck;   // the file that it came from
  std::string title;  // *HEADING
  std::vector<node> nodes;
  std::vector<element> elements;
  std::vector<named_set> nsets, elsets;
  std::vector<material> materials;
  std::vector<shell_section> shell_sections;
  std::vector<frame_section> frame_sections;
  std::vector<member_ends> ends;
  std::vector<boundary_condition> boundaries;
  std::vector<step> steps;
  std::vector<std::string> files;  // files[0] is the deck, then the included ones
  std::vector<std::string> notes;  // what the deck asks for and has no effect here, one sentence each, with its place
};

// The section of a frame element that has one.
inline const frame_section& frame_section_of(const model& m, const element& e) {
  return m.frame_sections[static_cast<std::size_t>(e.section)];
}

inline bool is_cable(const model& m, const element& e) {
  return e.type == element_type::T3D2 && e.section >= 0 && frame_section_of(m, e).kind == frame_section_kind::CABLE;
}

// "deck.inp:12": where a record comes from, for a message.
inline std::string place_of(const model& m, int file, int line) {
  const bool known = file >= 0 && file < static_cast<int>(m.files.size());
  return (known ? m.files[static_cast<std::size_t>(file)] : m.deck) + ":" + std::to_string(line);
}

}  // namespace solver

#endif
