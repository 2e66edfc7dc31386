// mean_motion.cpp: the rigid body that follows a cloud of nodes.
#include <cmath>

#include <Eigen/Eigenvalues>

#include "deck/conditions.h"

namespace solver::deck {

// Moments of the cloud, by the largest: one below it is that of nodes on a line, to the digits of a deck.
static constexpr double ON_A_LINE = 1e-10;

mean_motion::mean_motion(const model& m, std::vector<int> nodes, std::vector<double> weights)
    : model_(m), nodes_(std::move(nodes)), weights_(std::move(weights)) {
  double whole = 0;
  for (const double weight : weights_) whole += weight;
  for (double& weight : weights_) weight /= whole;
  for (std::size_t n = 0; n < nodes_.size(); ++n) {
    for (std::size_t i = 0; i < 3; ++i) centre_[i] += weights_[n] * m.nodes[nodes_[n]].xyz[i];
  }
  Eigen::Matrix3d T = Eigen::Matrix3d::Zero();
  double reach = 0;
  for (std::size_t n = 0; n < nodes_.size(); ++n) {
    const vector3 arm = difference(centre_, m.nodes[nodes_[n]].xyz);
    const Eigen::Vector3d r(arm[0], arm[1], arm[2]);
    T += weights_[n] * (r.squaredNorm() * Eigen::Matrix3d::Identity() - r * r.transpose());
    reach = std::fmax(reach, length_of(m.nodes[nodes_[n]].xyz));
  }
  const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> principal(T);
  const double largest = principal.eigenvalues()(2);
  constexpr double ROUNDING = 1e-12;  // of coordinates: nodes in one place
  for (int k = 0; k < 3; ++k) {
    const double moment = principal.eigenvalues()(2 - k);
    const bool shown = moment > ON_A_LINE * largest && std::sqrt(largest) > ROUNDING * reach;
    for (int i = 0; i < 3; ++i) axes_[subscript(k)][subscript(i)] = principal.eigenvectors()(i, 2 - k);
    compliance_[subscript(k)] = shown ? 1 / moment : 0;
    rank_ += shown ? 1 : 0;
  }
}

// axis . theta = sum over k of (axis . a_k) / T_k a_k . sum w r cross u; a . (r cross u) = (a cross r) . u
void mean_motion::add_rotation(linear_constraint& condition, const vector3& axis, double factor) const {
  vector3 b{};
  for (std::size_t k = 0; k < 3; ++k) {
    const double share = dot(axis, axes_[k]) * compliance_[k];
    for (std::size_t i = 0; i < 3; ++i) b[i] += share * axes_[k][i];
  }
  for (std::size_t n = 0; n < nodes_.size(); ++n) {
    const vector3 along = cross(b, difference(centre_, model_.nodes[nodes_[n]].xyz));
    for (std::size_t i = 0; i < 3; ++i) {
      if (along[i] != 0) condition.terms.push_back({nodes_[n], number_of(i) + 1, factor * weights_[n] * along[i]});
    }
  }
}

void mean_motion::add_displacement(linear_constraint& condition, const vector3& place, std::size_t i,
                                   double factor) const {
  for (std::size_t n = 0; n < nodes_.size(); ++n) {
    condition.terms.push_back({nodes_[n], number_of(i) + 1, factor * weights_[n]});
  }
  // e_i . (theta cross arm) = theta . (arm cross e_i)
  vector3 unit{};
  unit[i] = 1;
  const vector3 axis = cross(difference(centre_, place), unit);
  if (dot(axis, axis) > 0) add_rotation(condition, axis, factor);
}

}  // namespace solver::deck
