// plastic_plates.h: the plates of a model while they yield: trial, update, nodal forces, tangent, promotion.
//
// The library keeps the plastic strains and answers tangents; what it returns as forces in operations 3 and 33 is the
// tangent at the end of an increment times the increment, which is right to first order only. Equilibrium is asked here
// of the section forces themselves:
//
//     s = D (B u - p)                 whole-section model: p the plastic strains that operation 33 has stored
//     s = integral of SIG, of z SIG   layered model: the stresses that operation 33 has stored
//     F = sum of w B^T s + R u
//
// B comes from operation 5, once: the strains at the four points under unit displacements; w from GAUSS_INT_2D; R is
// what the elastic stiffness holds beside B^T D B: the drilling stiffness, which does not yield.
#ifndef FINITES_SOLVER_PLASTIC_PLATES_H
#define FINITES_SOLVER_PLASTIC_PLATES_H

#include <array>
#include <vector>

#include "elements/library_model.h"
#include "elements/plastic_state.h"
#include "finites/elements.h"
#include "finites/views.hpp"

namespace solver {

constexpr int SURFACE_POINTS = 4;

// N1, N2, N12, M1, M2, M12, Q1, Q2, or the strains that they work on; element axes.
using section_vector = VECTOR<8>;
using section_matrix = MATRIX<8, 8>;

template <int M, int N>
VECTOR<M> times(const MATRIX<M, N>& A, const VECTOR<N>& v) {
  VECTOR<M> out{};
  for (int j = 1; j <= N; ++j) {
    for (int i = 1; i <= M; ++i) out(i) += A(i, j) * v(j);
  }
  return out;
}

// What a point shows: section forces, stresses and plastic strains at the bottom, in the middle, at the top.
struct point_values {
  section_vector force{};
  std::array<VECTOR<3>, 3> stress{}, plastic{};
  std::array<double, 2> shear_stress{}, plastic_shear{};
  double equivalent = 0;  // equivalent plastic strain, the largest through the thickness
};

// A return that fails, or that ends at a multiplier of rounding size, is found in the state. While this lives, the
// messages of the library about it are suppressed.
class quiet_assertions {
 public:
  quiet_assertions();
  ~quiet_assertions();
  quiet_assertions(const quiet_assertions&) = delete;
  quiet_assertions& operator=(const quiet_assertions&) = delete;
};

// Tangents, trials, updates and forces of different elements may be asked for side by side (library_model::divide). Of
// several processes each asks for its own elements; the accepted states are those of all of them.
class plastic_plates {
 public:
  // The first pass: state, strain matrices, elastic tangents. Both must outlive it.
  plastic_plates(const model& m, library_model& library);
  ~plastic_plates();
  plastic_plates(const plastic_plates&) = delete;
  plastic_plates& operator=(const plastic_plates&) = delete;

  bool yields(std::size_t element) const { return library_.plates().model_of(element) != plate_model::ELASTIC; }

  // The tangent of the state that was stored last; the constant stiffness of an element that does not yield.
  void tangent(std::size_t element, element_matrix& K);

  // Operation 3: tangent at the end of the increment times the increment. No point that yields stores its state;
  // elastic points of the layered model do, and the next update or restore() overwrites it.
  void try_increment(std::size_t element, const element_vector& increment, element_vector& forces);

  // Operation 33: the state at the end of the increment, from the accepted one. False when an assertion of the
  // material failed (whole-section model) or a point did not return to its surface (layered model).
  bool update(std::size_t element, const element_vector& increment);

  // Nodal forces of the state that was stored last; global axes.
  element_vector forces(std::size_t element, const element_vector& displacements) const;

  // How many points flow in the increment of the last update.
  int flowing_points(std::size_t element) const;

  // The state stored last is accepted; `displacements` are those of all increments.
  void accept(std::size_t element, const element_vector& displacements);

  // The accepted state again.
  void restore(std::size_t element) { states_[element].restore(); }

  // The accepted state of all plates one after the other, and back; false where it is of another model.
  std::vector<std::vector<double>> accepted() const;
  bool take_accepted(const std::vector<std::vector<double>>& states);

  point_values values(std::size_t element, int point, const element_vector& u) const;

 private:
  struct plate {
    MATRIX<3, 3> axes;
    std::array<MATRIX<8, 24>, SURFACE_POINTS> B;
    std::array<double, SURFACE_POINTS> area;
    section_matrix D;
    element_matrix rest;
    finites_section strength;
    std::array<section_vector, SURFACE_POINTS> accepted{};  // strains of the accepted displacements
  };

  void take_first_states();
  void begin(std::size_t element);
  void check_first_state(std::size_t element);
  void take_strain_matrices(std::size_t element, plate& p, std::array<MATRIX<8, 24>, SURFACE_POINTS>& forces);
  section_vector section_forces(std::size_t element, const plate& p, int point, const element_vector& u) const;
  section_vector plastic_strain(const plate& p, const double* record) const;
  bool update_section(std::size_t element, const element_vector& increment);
  bool stands(const plate& p, const PLATE_STATE_RECORD& record, int point, const section_vector& strain) const;
  void layered_values(std::size_t element, const plate& p, int point, point_values& v) const;
  double thickness(std::size_t element) const;

  const model& model_;
  library_model& library_;
  std::vector<plastic_state> states_;    // by element; empty ones of those that another process has
  std::vector<plate> plates_;            // those that yield
  std::vector<std::size_t> plate_of_;    // by element
  std::vector<element_matrix> elastic_;  // those that do not
};

// Stations and weights of the layered model between the faces, -1 and 1, which are points themselves.
struct thickness_rule {
  std::vector<double> station, weight;
};
const thickness_rule& lobatto_rule(int points);

}  // namespace solver

#endif
