// hinged_beam.h: one beam with plastic hinges: its state, the return of its forces to the yield surfaces, and the rates
// of its forces.
//
// The plastic deformations of the ends are gathered in the flow q, twelve components in the order of the end forces:
//
//     f = K (u - q) + f0,      dq = N dz,
//
// with the elastic stiffness K, the fixed-end forces f0 of its loads, the gradients of the active equations in the
// columns of N, and their plastic multipliers dz.
#ifndef FINITES_SOLVER_HINGED_BEAM_H
#define FINITES_SOLVER_HINGED_BEAM_H

#include <array>
#include <cstddef>
#include <vector>

#include "elements/library_model.h"
#include "model/model.h"
#include "pushover/yield_surface.h"

namespace solver {

// An end may yield on two equations at once: on the edge where two faces meet.
constexpr std::size_t MOST_ACTIVE = 2;

struct beam_state {
  end_forces forces{}, flow{};
  std::array<std::array<int, MOST_ACTIVE>, 2> active{};  // by end; 0: an empty place
  double axial_force = 0;                                // that of the geometric stiffness

  bool is_active(std::size_t end, int equation) const {
    return equation > 0 && (active[end][0] == equation || active[end][1] == equation);
  }
  bool yields(std::size_t end) const { return active[end][0] > 0; }
};

// One active equation of a beam, and how fast it flows.
struct flowing_equation {
  std::size_t end;
  int equation;
  double rate;  // of the plastic multiplier
};

struct beam_rates {
  end_forces forces{};
  std::vector<flowing_equation> flow;
};

// Lets an equation act, or no longer. False when the end has no place for another one.
bool activate(beam_state& state, std::size_t end, int equation);
void deactivate(beam_state& state, std::size_t end, int equation);

// Brings the trial forces of a step back to the active surfaces along K n, while the ends stay where they are. The
// cutting-plane iteration (Simo and Ortiz, 1985): one linear step for flat faces. False when it does not come home.
bool return_to_surface(const hinge_model& h, const MATRIX<12, 12>& K, beam_state& state);

// Rates of the end forces under rates of the displacements and of the fixed-end forces, all in local axes, with the
// active equations flowing freely: their sign is for the caller to judge.
beam_rates rates_of(const hinge_model* h, const MATRIX<12, 12>& K, const beam_state& state,
                    const end_forces& displacements, const end_forces& load);

// K - K N (N^T K N)^-1 N^T K: what KSTIFB gives, in double precision throughout.
MATRIX<12, 12> plastic_stiffness(const hinge_model* h, const MATRIX<12, 12>& K, const beam_state& state);

// The state as the library gets it. Where the flows of the two ends are one and the same motion, as at two ends
// that yield under the axial force, the matrix of both is singular, and the second end takes no part in it.
hinge_state library_state(const hinge_model* h, const MATRIX<12, 12>& K, const beam_state& state);

end_forces product(const MATRIX<12, 12>& K, const end_forces& u);

}  // namespace solver

#endif
