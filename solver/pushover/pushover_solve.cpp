// pushover_solve.cpp: the matrices of a frame with hinges, and the solution with them.
#include <algorithm>
#include <cmath>

#include "model/long_vectors.h"
#include "pushover/pushover_frame.h"
#include "system/assembly.h"
#include "system/scaled_system.h"
#include "system/unresisted.h"

namespace solver {

namespace {

// Added to the scaled diagonal of the library's matrix where it is not positive definite: above what its single
// precision inverse leaves, far below a sound stiffness. It stands in front of the iteration only.
constexpr double FRONT_SHARE = 1e-6;

}  // namespace

// The matrix of the library with the hinges of the present state, on the scale of the frame without hinges.
bool pushover_frame::factorise_library_matrix() {
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    library_.members().set_hinges(beams_[i].element, library_state(beams_[i].hinges, beams_[i].K, now_.beams[i]));
  }
  member_group::set_load_factor(now_.factor);
  std::fill(K_.value.begin(), K_.value.end(), 0.0);
  std::vector<double> unused(map_.equations, 0.0);
  assemble_stiffness(model_, library_, loads_, map_, K_, unused, progress("", false));
  hold_free_directions(model_, *step_, library_.plates().flat_parts(), loads_, all_applied_, map_, K_);
  if (scale_.empty()) {
    scale_ = scale_to_unit_diagonal(model_, *step_, map_, K_);
  } else {
    scale_matrix(scale_, K_);
  }
  return solver_.factorise(K_) && solver_.negative_pivots() == 0;
}

// False when the frame is not stable. In first order a negative pivot is no more than the single precision of the
// library; in second order it is the buckling of the frame.
bool pushover_frame::form_tangent() {
  plastic_.resize(beams_.size());
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    plastic_[i] = plastic_stiffness(beams_[i].hinges, beams_[i].K, now_.beams[i]);
  }
  if (factorise_library_matrix()) return true;
  if (second_order_) return false;
  add_to_diagonal(map_, FRONT_SHARE, K_);
  return solver_.factorise(K_) && solver_.negative_pivots() == 0;
}

void pushover_frame::take(const frame_state& state) {
  now_ = state;
  refresh_stiffness(now_);
  form_tangent();
}

// Leaves the matrices of the present state behind, for the next step from there.
bool pushover_frame::stands(const frame_state& state) {
  if (!second_order_) return true;
  const frame_state present = now_;
  now_ = state;
  refresh_stiffness(now_);
  const bool stable = form_tangent();
  now_ = present;
  refresh_stiffness(now_);
  return form_tangent() && stable;
}

// From equations on one scale to degrees of freedom.
std::vector<double> pushover_frame::spread(const std::vector<double>& scaled) const {
  std::vector<double> x = scaled;
  for (std::size_t i = 0; i < x.size(); ++i) x[i] *= scale_[i];
  return solver::spread(map_, x);
}

std::vector<double> pushover_frame::exact_product(const std::vector<double>& scaled) const {
  const std::vector<double> displacement = spread(scaled);
  std::vector<double> force(displacement.size(), 0.0);
  for (std::size_t i = 0; i < beams_.size(); ++i) {
    add_beam_forces(beams_[i], product(plastic_[i], local_displacements(beams_[i], displacement)), force);
  }
  add_other_forces(displacement, force);
  std::vector<double> result = by_equation(map_, force);
  for (std::size_t i = 0; i < result.size(); ++i) result[i] *= scale_[i];
  return result;
}

// Conjugate gradients (Hestenes and Stiefel, 1952) with the library's matrix in front. The two matrices differ by a few
// small stiffnesses, each of which costs an iteration.
bool pushover_frame::solve(const std::vector<double>& force, double share, std::vector<double>& displacement) {
  constexpr int MOST_ITERATIONS = 200;
  // FREE: a curvature on the unit diagonal that is rounding. ENOUGH and ROUGH: of the residual; a direction is
  // corrected until its rates balance, so that a rough one serves where the iterations end early.
  constexpr double FREE = 1e-13, ENOUGH = 1e-8, ROUGH = 1e-3;
  std::vector<double> r = by_equation(map_, force);
  for (std::size_t i = 0; i < r.size(); ++i) r[i] *= scale_[i];
  const double whole = norm(r);
  std::vector<double> x(r.size(), 0.0), z = r;
  solver_.solve(z);
  std::vector<double> p = z;
  double rz = dot(r, z);
  for (int iteration = 0; iteration < MOST_ITERATIONS && norm(r) > ENOUGH * whole; ++iteration) {
    std::vector<double> Ap = exact_product(p);
    add_scaled(Ap, share, p);
    const double curvature = dot(p, Ap);
    if (!(curvature > FREE * dot(p, p)) || !std::isfinite(curvature)) return false;
    add_scaled(x, rz / curvature, p);
    add_scaled(r, -rz / curvature, Ap);
    z = r;
    solver_.solve(z);
    const double next = dot(r, z);
    for (std::size_t i = 0; i < p.size(); ++i) p[i] = z[i] + next / rz * p[i];
    rz = next;
  }
  displacement = spread(x);
  return norm(r) <= ROUGH * whole;
}

}  // namespace solver
