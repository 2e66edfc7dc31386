// conditions.h: what the readers of *EQUATION, *MPC, *RIGID BODY, *COUPLING, *TIE and *TRANSFORM share: linear
// conditions from cards, and the kinematics of a rigid body.
//
// Motions are small: u(x) = u0 + theta cross (x - x0), with the coordinates of the deck.
#ifndef FINITES_SOLVER_DECK_CONDITIONS_H
#define FINITES_SOLVER_DECK_CONDITIONS_H

#include <array>
#include <string>
#include <vector>

#include "deck/build.h"
#include "model/vectors.h"

namespace solver::deck {

// Where the conditions of a card come from.
struct condition_source {
  std::string keyword;
  int line = 0;
  int file = 0;
};
condition_source source_of(const card& c);
condition_source source_of(const card& c, const data_line& l);

linear_constraint start_condition(const condition_source& from);
// Of the whole model. Terms without a factor are left out; a condition without terms is none.
void add_condition(build& b, linear_constraint condition);

// Has the node rotations that follow what it is joined to? Where an element resists one, and where nothing stiff joins
// it.
bool turns(build& b, int node);

// The motion of a reference node: translations 1 to 3 of one node, rotations in three consecutive degrees of freedom of
// the same or another one.
struct body {
  int node = 0;
  int rotation_node = 0;
  int first_rotation = 4;
};
inline body body_of(int node) { return {node, node, 4}; }

// u(node, dof) = that of the body at the place of the node; dof from 1 to 6.
void follow_body(build& b, const condition_source& from, const body& of, int node, int dof);
// All three translations, and the rotations where they are wanted.
void join_to_body(build& b, const condition_source& from, const body& of, int node, bool with_rotations);

// condition += factor * (theta cross arm), component i, theta being the rotation of the body.
void add_rotation(linear_constraint& condition, const body& of, const vector3& arm, std::size_t i, double factor);

// A degree of freedom from 1 to 6 in a field.
int freedom_field(const data_fields& row, int i);
// The single node of a parameter.
int node_of_parameter(build& b, const card& c, const char* name);
// Members of a field in the order of the users' numbers, as sets are paired.
std::vector<int> nodes_of_field(build& b, const data_fields& row, int i);
std::string node_name(const build& b, int node);

// The motion of a cloud of nodes that fits a rigid body best, weights by mass (least squares): mean displacement and
// rotation theta = T^-1 sum w r cross u, T = sum w (r r 1 - r r^T). Weights may have any sum.
class mean_motion {
 public:
  mean_motion(const model& m, std::vector<int> nodes, std::vector<double> weights);

  const vector3& centre() const { return centre_; }
  // Independent rotations: 3, or less where the nodes lie on a line or in a point.
  int rank() const { return rank_; }
  // condition += factor * component i of the displacement at a place of the body.
  void add_displacement(linear_constraint& condition, const vector3& place, std::size_t i, double factor) const;
  // condition += factor * axis . theta; the axis must be one that the nodes can show.
  void add_rotation(linear_constraint& condition, const vector3& axis, double factor) const;
  // Unit vectors of the rotations that the nodes show, then of those that they do not.
  const std::array<vector3, 3>& axes() const { return axes_; }

 private:
  const model& model_;
  std::vector<int> nodes_;
  std::vector<double> weights_;  // with the sum 1
  vector3 centre_{};
  std::array<vector3, 3> axes_{};       // principal axes, by falling moment
  std::array<double, 3> compliance_{};  // of T along them; 0 where there is none
  int rank_ = 0;
};

}  // namespace solver::deck

#endif
