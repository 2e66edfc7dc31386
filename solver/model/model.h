// model.h: a structural model as a deck describes it, before anything is computed.
//
// The deck reader fills it; everything else in the solver reads it. Nodes and elements are named by their index in the
// vectors here; `id` is the user's number. Every record remembers the line that defined it, and the file when the deck
// includes others, so that a later finding can name it: place_of().
#ifndef FINITES_SOLVER_MODEL_H
#define FINITES_SOLVER_MODEL_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "finites/fields.h"
#include "model/index.h"
#include "model/laminate.h"
#include "model/temperature_table.h"

namespace solver {

struct node {
  int id = 0;  // 0: made inside a quadratic element (model::made_nodes), without a number of the deck
  std::array<double, 3> xyz{};
  int line = 0;
  int file = 0;  // index into model::files
};

// Shells and membranes of three and four nodes; then the frame elements, of two nodes except SPRING1, which stands
// between a node and the ground. B31 is Timoshenko's beam, B33 the slender one of Euler and Bernoulli. A T3D2 is a
// truss or a cable: its section says which. SPRINGA acts along the line between its nodes, CONN3D2 is a link of six
// stiffnesses. Then the solids: tetrahedron, wedge and brick; and a mass and a rotary inertia at a single node.
enum class element_type {
  S3,
  S4,
  M3D3,
  M3D4,
  B31,
  B33,
  T3D2,
  SPRING1,
  SPRING2,
  SPRINGA,
  CONN3D2,
  C3D4,
  C3D6,
  C3D8,
  MASS,
  ROTARYI
};

inline bool is_shell(element_type type) { return type == element_type::S3 || type == element_type::S4; }
inline bool is_membrane(element_type type) { return type == element_type::M3D3 || type == element_type::M3D4; }
inline bool is_plate(element_type type) { return is_shell(type) || is_membrane(type); }
inline bool is_solid(element_type type) {
  return type == element_type::C3D4 || type == element_type::C3D6 || type == element_type::C3D8;
}
inline bool is_beam(element_type type) { return type == element_type::B31 || type == element_type::B33; }
inline bool is_point(element_type type) { return type == element_type::MASS || type == element_type::ROTARYI; }
inline bool is_member(element_type type) { return !is_plate(type) && !is_solid(type) && !is_point(type); }

// Quadratic elements of a deck, which are read as several linear ones (elements/parts.h): shells and membranes of eight
// and six nodes, beams of three, solids of ten, fifteen and twenty.
enum class whole_kind { NONE, QUADRILATERAL, TRIANGLE, LINE, TETRAHEDRON, WEDGE, WEDGE_IN_BRICKS, BRICK };

struct element {
  int id = 0;  // the parts of one element of the deck have its number and follow one another
  element_type type = element_type::S3;
  numbered<int> nodes;  // indices into model::nodes
  int section = -1;     // index into model::shell_sections, frame_sections, solid_sections or point_masses; -1: none
  int ends = -1;        // index into model::ends; -1: both ends of the member are rigid connections
  int hinges = -1;      // index into model::hinges; -1: the member stays elastic
  // What it is a part of, which of the parts, from 0, and how many they are.
  whole_kind whole = whole_kind::NONE;
  int part = 0, parts = 1;
  int line = 0;
  int file = 0;  // index into model::files
};

struct named_set {
  std::string name;
  std::vector<int> members;  // indices, ascending, each once
};

// A face of an element: 1 to 6 of a solid (solid_faces.h); of a shell or membrane one of its sides or edges.
constexpr int BOTH_SIDES = 10, POSITIVE_SIDE = 11, NEGATIVE_SIDE = 12;  // the positive side is that of the normal
constexpr int EDGE = 20;                                                // EDGE + 1: from node 1 to node 2

struct surface_face {
  int element = 0;
  int face = 1;
};

// Faces of elements, or nodes alone. Its faces are of one kind: areas or edges.
struct named_surface {
  std::string name;
  std::vector<surface_face> faces;  // by element and face, each once; none where the deck names nodes
  std::vector<int> nodes;           // all of its nodes, ascending
  // One for each node: the part of the area (of edges: of the length) that belongs to it; where the deck names nodes
  // the number that it gives them, or 1.
  std::vector<double> weights;
  int line = 0;
  int file = 0;  // index into model::files
};

struct material {
  std::string name;
  bool elastic = false;  // an *ELASTIC was given
  bool orthotropic = false;
  bool expansion = false;  // an *EXPANSION was given; alpha1 and alpha2 may differ
  // Isotropic: E1, NU12 and G12 = E1 / (2 (1 + NU12)) hold everything. Orthotropic: in the axes 1, 2 of the
  // orientation.
  double E1 = 0, E2 = 0, NU12 = 0, G12 = 0, G13 = 0, G23 = 0;
  bool isotropic_in_space = false;  // orthotropic constants that are isotropic to rounding: by E1 and NU12
  double density = 0;               // mass per volume
  double alpha1 = 0, alpha2 = 0, alpha3 = 0;
  // Of a material that changes with its temperature; the constants above are then those of the first line, and of an
  // expansion the largest of the table, by which thermal strains are measured (thermal_strain).
  temperature_table elastic_table, density_table, expansion_table;
  double expansion_zero = 0;   // the temperature from which the coefficients of expansion_table count
  double yield_stress = 0;     // 0: does not yield
  double plastic_modulus = 0;  // stress per plastic strain beyond the yield stress, uniaxial; 0: perfectly plastic
  int line = 0;
  int file = 0;  // index into model::files
};

// Thin: Kirchhoff's plate, no transverse shear strain. Thick: Mindlin's.
enum class shell_formulation { THIN, THICK };

// A node that no deck has: in the middle of a quadratic element or of a face of one. Its place, and what the deck gives
// at nodes (temperatures, conditions), follow from the nodes around it by the functions of the element.
struct made_node {
  int node = 0;          // index into model::nodes
  int element = 0;       // index into model::elements: the first part of the first element that has it
  bool in_face = false;  // of a solid, with its neighbour; else in the middle of the element
  std::vector<int> from;
  std::vector<double> weights;  // of `from`; their sum is 1
};

// What a plate of a material with a yield stress follows in a step with *ELASTOPLASTIC: a yield condition of section
// forces, or stresses at points through the thickness.
enum class plate_model { ELASTIC, SECTION, LAYERED };

// Straight: directions 1, 2, 3 are the same everywhere. Round an axis: 3 along it, 1 away from it, 2 = 3 cross 1. Round
// a point: 1 away from it, 2 round the polar axis, 3 = 1 cross 2 along the meridian.
enum class orientation_system { RECTANGULAR, CYLINDRICAL, SPHERICAL };

// Three directions in space, turned by an angle about one of them, which is the one that shells have for their normal,
// more or less. Of the other two the next one in the cycle 1, 2, 3 gives axis 1 of a shell, projected on it.
struct orientation {
  std::string name;
  orientation_system system = orientation_system::RECTANGULAR;
  // Unit vectors; of a CYLINDRICAL one the third alone, and a point of the axis; of a SPHERICAL one the polar axis as
  // the third, and the centre.
  std::array<std::array<double, 3>, 3> direction{};
  std::array<double, 3> origin{};
  int axis = 3;      // 1 to 3: about which the directions are turned
  double angle = 0;  // degrees
  int line = 0;
  int file = 0;  // index into model::files
};

struct shell_section {
  std::string elset;
  int material = -1;                                         // index into model::materials
  shell_formulation formulation = shell_formulation::THICK;  // of shells; membranes have none
  double drilling = 1;  // ties the rotation about the normal to the sheet (drilling_tie.cpp); 0: not tied
  double thickness = 0;
  plate_model yielding = plate_model::SECTION;
  int thickness_points = 5;      // of the layered model
  double offset = 0;             // from the mid surface to the nodes, in thicknesses along the element's normal
  int orientation = -1;          // index into model::orientations; -1: axis 1 is the projection of a global axis
  double orientation_angle = 0;  // degrees, from there to axis 1 of the material, about the normal
  int layup = -1;                // index into model::laminates; its material is then that of their membrane stiffness
  int of_deck = -1;              // the section of the deck of which this is a copy at a temperature; -1: it is one
  int line = 0;
  int file = 0;  // index into model::files
};

enum class frame_section_kind { BEAM, TRUSS, CABLE, SPRING, LINK };

// Where the cross-section of a beam lies about the line of its nodes: places along axes 1 and 2, from that line. The
// axial force acts in the centroid, shear forces in the shear centre.
struct section_placement {
  std::array<double, 2> centroid{}, shear_centre{};
  double angle = 0;  // radians: from axis 1 to the first principal axis, towards axis 2
};

inline bool is_placed(const section_placement& p) {
  return p.centroid[0] != 0 || p.centroid[1] != 0 || p.shear_centre[0] != 0 || p.shear_centre[1] != 0 || p.angle != 0;
}

// A point of a cross-section at which stresses are given: its place along axes 1 and 2, from the line of nodes.
struct section_point {
  int number = 0;
  double x1 = 0, x2 = 0;
};

// Closed polygons of a cross-section, by their places along axes 1 and 2 from the line of nodes: the first is the outer
// one, run through from axis 1 to axis 2, the others are hollows. Round shapes have 32 corners on the curve.
using section_outline = std::vector<std::vector<std::array<double, 2>>>;

// Local axes of a member: x from node 1 to node 2, y along n1 as far as it is square to x, z = x cross y. Axes 1 and 2
// of the section are y and z; its moments of inertia and shear stiffnesses are those of its principal axes.
struct frame_section {
  frame_section_kind kind = frame_section_kind::BEAM;
  std::string keyword = "*BEAM GENERAL SECTION";  // as the deck writes it
  std::string elset;
  int material = -1;  // index into model::materials; springs and links have none
  double area = 0;
  double inertia_xy = 0, inertia_xz = 0;                // of bending in the x-y plane and in the x-z plane
  double torsion = 0;                                   // torsion constant J
  double shear_stiffness_y = 0, shear_stiffness_z = 0;  // G times shear area along y and z; 0: no shear deformation
  bool shear_given = false;                             // by *TRANSVERSE SHEAR STIFFNESS; else the shape has it
  section_placement place;
  bool has_shape = false;             // else it is given by its constants
  std::vector<section_point> points;  // of a shape, or of *SECTION POINTS
  section_outline outline;            // of a shape
  bool has_n1 = false;
  std::array<double, 3> n1{0, 0, -1};
  double pretension = 0;               // stress of a truss in the state without displacements
  double unstressed_length = 0;        // of a cable; or
  double length_ratio = 0;             // unstressed length by chord
  std::array<double, 6> stiffness{};   // of a spring (global directions) or link (local axes)
  bool deforms_at_mid_length = false;  // link: the deformable point lies at mid-length, not in the nodes
  int of_deck = -1;                    // as of a shell_section
  int line = 0;
  int file = 0;  // index into model::files
};

struct solid_section {
  std::string elset;
  int material = -1;  // index into model::materials
  int of_deck = -1;   // as of a shell_section
  int line = 0;
  int file = 0;  // index into model::files
};

// What MASS and ROTARYI carry.
struct point_mass {
  std::string elset;
  double mass = 0;
  std::array<double, 6> inertia{};  // about the node, global axes: xx, yy, zz, xy, xz, yz; xy is minus the integral
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

// The numbers of the library.
enum class yield_curve { SINGLE = 1, ORBISON = 2, LINEAR = 3 };

// Plastic hinges form at both ends of a member where its forces reach the yield surface. P is the axial force, My the
// moment about local y (axis 1 of the section), Mz that about local z (axis 2).
struct hinge_model {
  yield_curve curve = yield_curve::ORBISON;
  int force_set = 7;                         // which forces interact: 1 P, 2 My, 3 Mz, 4 P My, 5 P Mz, 6 My Mz, 7 all
  double cap_p = 0, cap_my = 0, cap_mz = 0;  // plastic capacities
  int line = 0;
  int file = 0;  // index into model::files
};

struct boundary_condition {
  int node = 0;
  int first_dof = 1, last_dof = 1;  // 1 to 6
  double value = 0;
  int line = 0;
  int file = 0;  // index into model::files
};

// A linear condition between degrees of freedom: the sum of factor times displacement over its terms is the value.
struct constraint_term {
  int node = 0;
  int dof = 1;  // 1 to 6
  double factor = 0;
};

// Of a condition that holds a node to a rigid body: what second order needs, the rotations of the body and the arm from
// its reference to the node.
struct rigid_arm {
  int node = -1;           // whose degrees of freedom turn the body; -1: the condition is no arm
  int first_rotation = 4;  // the one about x
  int component = 0;       // of the displacement that the condition ties, 0 to 2
  std::array<double, 3> along{};
};

// It holds exactly: the freedom of the first term depends on the others where nothing else decides it.
struct linear_constraint {
  std::vector<constraint_term> terms;
  double value = 0;
  std::string keyword = "*EQUATION";  // as the deck writes it, for a message
  int line = 0;
  int file = 0;  // index into model::files
  rigid_arm arm = {};
  bool first_order = false;  // an arm that has no geometric stiffness
};

// The axes in which *TRANSFORM gives conditions and loads of a node: those of dof 1, 2, 3 in global components.
struct node_axes {
  int node = 0;
  std::array<std::array<double, 3>, 3> axes{};
};

struct nodal_load {
  int node = 0;
  int dof = 1;
  double value = 0;
  int line = 0;
  int file = 0;  // index into model::files
};

// BODY: per volume, along a global axis. LINE_GLOBAL and LINE_LOCAL: per length of a member, along a global axis or
// along an axis of the section. FACE: a pressure on a face of a solid.
//
// HYDROSTATIC: a pressure on a face or side, linear in global z. TRACTION: per area of a face or side, per length of an
// edge, in a global direction; SHEAR_TRACTION: in its projection on the face. EDGE_NORMAL, EDGE_SHEAR, EDGE_TRANSVERSE
// and EDGE_MOMENT: per length of an edge, in its own directions (surface_forces.h). CENTRIFUGAL: density times squared
// angular velocity times the distance from an axis, away from it.
enum class element_load_kind {
  PRESSURE,
  GRAVITY,
  BODY,
  LINE_GLOBAL,
  LINE_LOCAL,
  FACE,
  HYDROSTATIC,
  TRACTION,
  SHEAR_TRACTION,
  EDGE_NORMAL,
  EDGE_SHEAR,
  EDGE_TRANSVERSE,
  EDGE_MOMENT,
  CENTRIFUGAL,
};

struct element_load {
  int element = 0;
  element_load_kind kind = element_load_kind::PRESSURE;
  double magnitude = 0;               // pressure along the positive normal, acceleration, force per volume or length
  std::array<double, 3> direction{};  // a unit vector, of LINE_LOCAL in local axes; PRESSURE and FACE have none
  int face = 0;                       // of FACE: from 1 (solid_faces.h); of the kinds after it as in surface_face
  // Of CENTRIFUGAL a point of the axis; of HYDROSTATIC the z of no pressure and that of the magnitude.
  std::array<double, 3> origin{};
  const char* keyword = "*DLOAD";  // as the deck writes it
  int line = 0;
  int file = 0;  // index into model::files
};

struct nodal_temperature {
  int node = 0;
  double change = 0;    // of the mid surface: against its initial temperature, with PERTURBATION against the base state
  double gradient = 0;  // temperature per length along the normal of a shell
  int line = 0;
  int file = 0;  // index into model::files
};

// COMBINATION and ENVELOPE solve nothing: they stand behind the steps whose results they put together.
enum class step_kind { STATIC, FREQUENCY, BUCKLE, PUSHOVER, ELASTOPLASTIC, COMBINATION, ENVELOPE };

// How far a pushover goes, and whose displacement its curve shows.
struct pushover_request {
  double largest_factor = std::numeric_limits<double>::infinity();
  int largest_events = 1000;
  int node = -1, dof = 1;  // -1: the translation that the loads move most
  bool goes_on = false;    // from the state that the pushover before has reached, under its loads
};

// How far plates are loaded while they yield, and whose displacement the curve shows.
struct elastoplastic_request {
  double largest_factor = std::numeric_limits<double>::infinity();
  int largest_increments = 400;
  double increment = 0.25;     // largest increment, by the displacement at first yield
  bool own_increment = false;  // of the deck; without one it grows with the displacement that is reached
  int node = -1, dof = 1;      // -1: the translation that the loads move most
  bool goes_on = false;        // from the state that the step before has reached, under its loads
};

// What *NODE PRINT, *EL PRINT and *SECTION PRINT ask for: quantities of the nodes or elements of a set, or of what goes
// through a surface, in a table of the .dat file.
enum class print_kind { NODES, ELEMENTS, SURFACES };
enum class print_totals { NO, YES, ONLY };

struct print_request {
  print_kind kind = print_kind::NODES;
  std::string set;                      // its name, or that of the surface; empty: all
  std::vector<int> members;             // indices of nodes or elements, ascending; of SURFACES that of the surface
  std::vector<std::string> quantities;  // known ones (deck/read_prints.cpp), in the order of the deck
  print_totals totals = print_totals::NO;
  bool centroids = false;    // means of the elements instead of their integration points
  bool global_axes = false;  // of stresses and strains of plates
  int line = 0;
  int file = 0;  // index into model::files
};

// Of a COMBINATION a static step whose results it takes, and how many times; of an ENVELOPE a step or a combination,
// whose factor is 1.
struct combined_step {
  int step = 0;  // index into model::steps
  double factor = 1;
};

// One *STEP, an analysis of its own. The conditions before the first step (model::boundaries) hold in every step; where
// a step prescribes the same degree of freedom again, the value of the step replaces them. Loads on the same place add.
// A step with PERTURBATION is the linear response to its own loads about the state in which an earlier step has ended
// (base_step.h); what that step has prescribed stays where it is.
struct step {
  std::string name;
  std::string title;  // the text lines below *STEP
  step_kind kind = step_kind::STATIC;
  int modes = 0;                                                       // how many FREQUENCY and BUCKLE are to find
  double lowest_frequency = -std::numeric_limits<double>::infinity();  // FREQUENCY: what lies outside is not given
  double highest_frequency = std::numeric_limits<double>::infinity();
  bool lumped_mass = false;  // FREQUENCY: masses stand in the nodes, not consistent with the displacements between them
  bool perturbation = false;
  bool elastic = false;  // STATIC: the deck knows that materials with a yield stress do not yield in it
  bool p_delta = false;  // STATIC, PUSHOVER: members and shells carry their loads in the displaced position
  pushover_request pushover;
  elastoplastic_request elastoplastic;
  std::vector<boundary_condition> boundaries;
  std::vector<linear_constraint> constraints;  // beside those of the model
  std::vector<nodal_load> nodal_loads;
  std::vector<element_load> element_loads;
  std::vector<nodal_temperature> temperatures;
  std::vector<print_request> prints;    // those of earlier steps that go on among them
  std::vector<combined_step> combined;  // COMBINATION, ENVELOPE: each step once, in the order of the deck
  int line = 0;
  int file = 0;  // index into model::files
};

struct model {
  std::string deck;   // the file that it came from
  std::string title;  // *HEADING
  numbered<node> nodes;
  numbered<element> elements;
  std::vector<made_node> made_nodes;  // by node
  numbered<named_set> nsets, elsets;
  numbered<named_surface> surfaces;
  numbered<material> materials;
  numbered<laminate> laminates;
  numbered<laminate_part> laminate_parts;
  numbered<double> initial_temperature;  // by node; empty: 0
  numbered<orientation> orientations;
  numbered<shell_section> shell_sections;
  numbered<frame_section> frame_sections;
  numbered<solid_section> solid_sections;
  numbered<point_mass> point_masses;
  numbered<member_ends> ends;
  numbered<hinge_model> hinges;
  std::vector<boundary_condition> boundaries;
  std::vector<linear_constraint> constraints;  // they hold in every step
  std::vector<node_axes> turned_nodes;
  numbered<step> steps;
  numbered<std::string> files;     // files[0] is the deck, then the included ones
  std::vector<std::string> notes;  // what the deck asks for and has no effect here, one sentence each, with its place
  // Of several processes that share a run: which of them has an element, and which one this is. Empty: it has them all.
  numbered<int> process_of;
  int process = 0;
  // Each of them has the results of its elements and of their nodes; else the first one alone has results, all of them.
  bool pieces = false;
};

// Whether this process has the element: its record, and all that is computed for it.
inline bool is_own(const model& m, std::size_t element) {
  return m.process_of.empty() || m.process_of[element] == m.process;
}

// Whether a material is the mean of the layers of a section, which no card of the deck names.
inline bool is_of_layers(const model& m, int material) {
  return std::any_of(m.shell_sections.begin(), m.shell_sections.end(),
                     [&](const shell_section& s) { return s.layup >= 0 && s.material == material; });
}

// The section of a frame element that has one.
inline const frame_section& frame_section_of(const model& m, const element& e) { return m.frame_sections[e.section]; }

// Does the rotation about the normal of an element follow its sheet?
inline bool is_tied(const model& m, const element& e) {
  return is_shell(e.type) && e.section >= 0 && m.shell_sections[e.section].drilling > 0;
}

// The material of an element that has a section; -1: none, as of springs and point masses.
inline int material_of(const model& m, const element& e) {
  if (is_point(e.type)) return -1;
  if (is_solid(e.type)) return m.solid_sections[e.section].material;
  return is_plate(e.type) ? m.shell_sections[e.section].material : m.frame_sections[e.section].material;
}

// The section of the deck to which a section belongs, which may be a copy of it.
template <class SECTION>
int section_of_deck(const numbered<SECTION>& sections, int section) {
  return sections[section].of_deck < 0 ? section : sections[section].of_deck;
}

// The connections of a member's ends: rigid ones where the deck says nothing.
inline member_ends ends_of(const model& m, const element& e) { return e.ends < 0 ? member_ends{} : m.ends[e.ends]; }

inline bool is_cable(const model& m, const element& e) {
  return e.type == element_type::T3D2 && e.section >= 0 && frame_section_of(m, e).kind == frame_section_kind::CABLE;
}

// "deck.inp:12": where a record comes from, for a message.
inline std::string place_of(const model& m, int file, int line) {
  const bool known = file >= 0 && file < count_of(m.files);
  return (known ? m.files[file] : m.deck) + ":" + std::to_string(line);
}

// Nodes that the deck has have a number.
inline bool is_made(const node& n) { return n.id == 0; }

// "node 12", for a message; of a made node "the node in the middle of element 7" or "in a face of element 7".
inline std::string node_name(const model& m, int node) {
  if (!is_made(m.nodes[node])) return "node " + std::to_string(m.nodes[node].id);
  const auto found =
      std::find_if(m.made_nodes.begin(), m.made_nodes.end(), [&](const made_node& made) { return made.node == node; });
  if (found == m.made_nodes.end()) return "a node without a number";
  return std::string("the node in ") + (found->in_face ? "a face" : "the middle") + " of element " +
         std::to_string(m.elements[found->element].id);
}

// "element 7", or "element 7 (part 2 of 4)".
inline std::string element_name(const element& e) {
  std::string name = "element " + std::to_string(e.id);
  if (e.parts > 1) name += " (part " + std::to_string(e.part + 1) + " of " + std::to_string(e.parts) + ")";
  return name;
}

}  // namespace solver

#endif
