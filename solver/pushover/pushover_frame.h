// pushover_frame.h: the equilibrium of a frame whose hinges are known.
//
// The state holds displacements, forces and plastic flow in double precision throughout. The plastic stiffness of the
// library is the matrix that is assembled and factorised; its inverse for two hinges of one beam is single precision,
// which leaves some 1e-7 of a stiffness where there is none. Conjugate gradients with that matrix in front of them
// solve with the exact one: load factors are as exact as doubles allow, and a mechanism is known by having no
// stiffness.
#ifndef FINITES_SOLVER_PUSHOVER_FRAME_H
#define FINITES_SOLVER_PUSHOVER_FRAME_H

#include <string>
#include <vector>

#include "elements/library_model.h"
#include "elements/load_case.h"
#include "elements/scatter_map.h"
#include "model/model.h"
#include "pushover/hinged_beam.h"
#include "pushover/pushover.h"
#include "system/linear_solver.h"

namespace solver {

struct frame_state {
  double factor = 0;
  std::vector<double> displacement;  // by degree of freedom
  std::vector<beam_state> beams;     // in the order of pushover_frame::beams
};

// How the frame goes on under a growing factor.
struct frame_direction {
  std::vector<double> displacement;  // by degree of freedom, per factor; of a mechanism its motion
  std::vector<beam_rates> beams;
  double compliance = 0;     // work of the loads on the displacements, per factor squared
  bool resists = false;      // false: a mechanism
  bool only_motion = false;  // of a mechanism without any stiffness: no rate of forces is meant
};

// From now on the stiffness of beams holds their hinges and the geometric stiffness of their axial forces, or no longer
// does.
void follow_hinges(library_model& library, bool on);

class pushover_frame {
 public:
  struct beam {
    std::size_t element;
    const hinge_model* hinges;  // null: stays elastic
    end_forces load{}, held{};  // fixed-end forces: of the step's loads at factor 1, of the steps before
    MATRIX<12, 12> K{};         // elastic, local axes; with the geometric stiffness in second order
  };

  pushover_frame(const model& m, library_model& library, linear_solver& solver, const step& s);

  // The loads of a further step; those of the step before stay at the factor that they have reached.
  void next_step(const step& s);

  frame_state& now() { return now_; }
  // A state that an earlier run has reached, with the matrices that belong to it.
  void take(const frame_state& state);
  const std::vector<beam>& beams() const { return beams_; }

  // The direction from the present state with its active equations.
  frame_direction find_direction();

  // Brings a state to equilibrium at its factor, with the active equations on their surfaces; `start` is the state
  // from which the flow of this step counts. Uses the stiffness of the last find_direction(). False when no equilibrium
  // was found.
  bool settle(const frame_state& start, frame_state& state);

  // Whether a state with the present hinges resists every motion: in second order it may have passed a buckling load.
  bool stands(const frame_state& state);

  // Displacements, loads and reactions of the present state.
  static_solution solution() const;
  std::vector<end_forces> member_forces() const;
  std::vector<member_state> member_states() const;
  // The forces of a beam between its ends, by its place in beams().
  member_field field(std::size_t place, const frame_state& state) const;
  // The resistance of the frame without hinges, against which mechanisms are judged.
  double elastic_compliance() const { return elastic_compliance_; }

 private:
  void take_loads(const step& s);
  // The matrices of the present state: the library's, which is factorised, and the exact ones of the beams.
  bool form_tangent();
  bool factorise_library_matrix();
  // Solves with the exact matrix and a share of the elastic diagonal; false where it has no stiffness.
  bool solve(const std::vector<double>& force, double share, std::vector<double>& displacement);
  std::vector<double> exact_product(const std::vector<double>& scaled) const;
  std::vector<double> spread(const std::vector<double>& scaled) const;
  end_forces local_displacements(const beam& b, const std::vector<double>& displacement) const;
  void add_beam_forces(const beam& b, const end_forces& f, std::vector<double>& sum) const;
  void add_other_forces(const std::vector<double>& displacement, std::vector<double>& sum) const;
  void refresh_stiffness(const frame_state& state);
  bool move_beams(const frame_state& start, frame_state& state, double& axial_change);
  std::vector<double> unbalance(const frame_state& state, double& size) const;
  std::vector<double> rate_unbalance(const std::vector<double>& displacement, std::vector<beam_rates>& rates) const;
  distributed_load element_load(std::size_t element, double factor) const;
  double scaled_norm(const std::vector<double>& by_freedom) const;
  double work(const std::vector<double>& force, const std::vector<double>& displacement) const;
  bool try_direction(frame_direction& direction);
  void clear_rounding(frame_direction& direction, const std::vector<double>& left) const;
  double size_of_terms(const beam& b, const std::vector<double>& displacement) const;
  double natural_compliance() const;
  void find_motion(frame_direction& direction);

  const model& model_;
  library_model& library_;
  linear_solver& solver_;
  const step* step_;  // whose loads grow
  bool second_order_;
  load_case loads_;
  std::vector<double> applied_, held_;          // by degree of freedom, without the loads along beams
  std::vector<double> all_applied_, all_held_;  // with them
  std::vector<distributed_load> held_element_loads_;
  std::vector<beam> beams_;
  std::vector<MATRIX<12, 12>> plastic_;          // of the beams, local axes
  std::vector<std::size_t> others_;              // elements that are no beams
  std::vector<element_matrix> other_stiffness_;  // global axes
  symmetric_matrix K_;
  scatter_map map_;
  std::vector<double> scale_;  // by equation, of the elastic frame
  double elastic_compliance_ = 0;
  std::vector<std::string> notes_;
  frame_state now_;
};

}  // namespace solver

#endif
