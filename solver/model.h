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

enum class element_type { S3, M3D3 };  // thin shell triangle, membrane triangle

struct element {
  int id = 0;
  element_type type = element_type::S3;
  std::vector<int> nodes;  // indices into model::nodes
  int section = -1;        // index into model::shell_sections; -1: none was assigned
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

enum class element_load_kind { PRESSURE, GRAVITY };

struct element_load {
  int element = 0;
  element_load_kind kind = element_load_kind::PRESSURE;
  double magnitude = 0;               // pressure along the positive normal, or acceleration
  std::array<double, 3> direction{};  // GRAVITY: a unit vector
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

// One *STEP, an analysis of its own. The conditions before the first step (model::boundaries) hold in every step; where
// a step prescribes the same freedom again, the value of the step replaces them. Loads on the same place add.
struct step {
  std::string name;
  std::string title;  // the text lines below *STEP
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
  std::vector<boundary_condition> boundaries;
  std::vector<step> steps;
  std::vector<std::string> files;  // files[0] is the deck, then the included ones
  std::vector<std::string> notes;  // what the deck asks for and has no effect here, one sentence each, with its place
};

// "deck.inp:12": where a record comes from, for a message.
inline std::string place_of(const model& m, int file, int line) {
  const bool known = file >= 0 && file < static_cast<int>(m.files.size());
  return (known ? m.files[static_cast<std::size_t>(file)] : m.deck) + ":" + std::to_string(line);
}

}  // namespace solver

#endif
