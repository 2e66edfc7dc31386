// layered_model.h: elements of the layered model as a solver keeps them, and the table of kinds that the tests run
// over.
#ifndef FINITES_TESTS_LAYERED_MODEL_H
#define FINITES_TESTS_LAYERED_MODEL_H

#include <array>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "layered_reference.h"
#include "layered_storage.h"
#include "plate_model.h"

inline constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
inline constexpr int STATE_COUNTS[] = {3, 5, 7, 9, 11, 13, 15};

struct layered_subject {
  const char* name;
  int kind, nodes, formulation, theory;
  int order() const { return 6 * nodes; }
};

inline constexpr layered_subject SUBJECTS[] = {{"tri_thin", 10, 3, 1, layered_reference::THIN},
                                               {"tri_thick", 11, 3, 0, layered_reference::THICK},
                                               {"quad_thin", 20, 4, 1, layered_reference::THIN},
                                               {"quad_thick", 21, 4, 0, layered_reference::THICK}};

// A random shape and section with modifiers; hardening: 0, or the largest tangent modulus over E.
support::plate_description random_layered(support::seeded_random& random, const layered_subject& s, double hardening);
layered_reference::material material_of(const support::plate_description& d);

// Element 1 is the element under test; its plate is the second. Past the first pass, with the state of a first one.
struct layered_model : support::plate_model {
  layered_model(const support::plate_description& d, int n, point_layout layout = point_layout::packed);
  ~layered_model();

  void first_pass();  // operation 3 without displacements
  POINT_STATE_RECORD& point(int gp) { return storage->point(gp); }
  void set_stored(const std::vector<double>& us);  // 6 a node, global axes
  void promote_all();
  std::vector<std::uint64_t> bits() { return bits_of(state(1)); }
  // Stresses, strains and full tangents without symmetry, of the sizes of the material.
  void fill_random(support::seeded_random& random);

  layered_reference::material m;
  std::unique_ptr<layered_storage> storage, other;
};

using texts = std::vector<std::string>;
inline const std::string DIVISION = "Plaque plasticite-Division par zero";
inline const std::string NEGATIVE = "Plasticite Plaque- multiplicateur plastique negatif";
inline const std::string RETURN = "Plasticite Plaque: pb avec algorithme de rabattement radial";

#endif
