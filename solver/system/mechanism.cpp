// mechanism.cpp: inverse iteration on one vector for the check, on several at once for the description.
//
// A singular matrix cannot be factorised, but with a shift far above rounding and far below any sound stiffness it can,
// and a few steps bring out the free motions.
#include "system/mechanism.h"

#include <algorithm>
#include <cmath>
#include <random>

#include "model/long_vectors.h"
#include "system/full_matrices.h"

namespace solver {

namespace {

// On the unit diagonal: makes a singular matrix definite, and is far below the softest elastic mode and above rounding
// (FREE_STIFFNESS), so that inverse iteration finds the free motions.
constexpr double SHIFT = 1e-11;
constexpr double ROTATION = 1e-3;  // a rotation counts as the displacement at this share of the size of the structure
constexpr int STEPS = 6;
constexpr Eigen::Index MOTIONS = 12;  // at most so many are distinguished

// The same start on every machine: the engine's numbers are fixed by the language, a distribution's are not.
double uniform(std::mt19937& engine) { return static_cast<double>(engine()) / 4294967296.0 - 0.5; }

Eigen::MatrixXd inverse_iteration(linear_solver& solver, Eigen::Index order, Eigen::Index count) {
  std::mt19937 engine(20011);
  Eigen::MatrixXd X(order, count);
  for (Eigen::Index j = 0; j < count; ++j) {
    for (Eigen::Index i = 0; i < order; ++i) X(i, j) = uniform(engine);
  }
  std::vector<double> column(subscript(order));
  for (int step = 0; step < STEPS; ++step) {
    for (Eigen::Index j = 0; j < count; ++j) {
      Eigen::Map<Eigen::VectorXd> x(column.data(), order);
      x = X.col(j);
      solver.solve(column);
      X.col(j) = x;
    }
    X = orthonormal(X);
  }
  return X;
}

// The combinations of the columns of X whose stiffness is zero.
Eigen::MatrixXd free_motions(const symmetric_matrix& K, const Eigen::MatrixXd& X) {
  Eigen::MatrixXd KX(X.rows(), X.cols());
  std::vector<double> column(subscript(X.rows()));
  for (Eigen::Index j = 0; j < X.cols(); ++j) {
    Eigen::Map<Eigen::VectorXd>(column.data(), X.rows()) = X.col(j);
    const std::vector<double> Kx = product(K, column);
    KX.col(j) = Eigen::Map<const Eigen::VectorXd>(Kx.data(), X.rows());
  }
  const eigen_system ritz = eigen_system_of(X.transpose() * KX);
  Eigen::Index count = 0;
  while (count < X.cols() && ritz.values(count) < FREE_STIFFNESS) ++count;
  return X * ritz.vectors.leftCols(count);
}

double model_size(const model& m) {
  double size = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    double low = m.nodes.front().xyz[i], high = low;
    for (const node& n : m.nodes) {
      low = std::min(low, n.xyz[i]);
      high = std::max(high, n.xyz[i]);
    }
    size = std::max(size, high - low);
  }
  return size;
}

// Picks the degree of freedom with the largest motion, takes its motion out of all the others, and goes on: so the
// named degrees of freedom hold the structure. A translation is named before a rotation unless the motion has hardly
// any.
std::vector<std::size_t> moving_freedoms(const std::vector<std::size_t>& free, const std::vector<double>& scale,
                                         double size, Eigen::MatrixXd motions) {
  for (Eigen::Index i = 0; i < motions.rows(); ++i) {
    const auto at = subscript(i);
    motions.row(i) *= scale[at] * (free[at] % DIRECTIONS < 3 ? 1.0 : ROTATION * size);
  }
  std::vector<std::size_t> chosen;
  for (Eigen::Index pick = 0; pick < motions.cols(); ++pick) {
    for (Eigen::Index j = 0; j < motions.cols(); ++j) {
      if (motions.col(j).norm() > 0) motions.col(j) /= motions.col(j).cwiseAbs().maxCoeff();
    }
    Eigen::Index row = 0, column = 0;
    motions.cwiseAbs().maxCoeff(&row, &column);
    chosen.push_back(free[subscript(row)]);
    const Eigen::VectorXd motion = motions.col(column);
    for (Eigen::Index j = 0; j < motions.cols(); ++j) motions.col(j) -= motion * (motions(row, j) / motion(row));
    motions.col(column).setZero();
  }
  return chosen;
}

}  // namespace

void normalise(std::vector<double>& x) {
  const double length = std::sqrt(dot(x, x));
  for (double& value : x) value /= length;
}

std::vector<double> start_of_iteration(std::size_t equations) {
  std::mt19937 engine(20011);
  std::vector<double> x(equations);
  for (double& value : x) value = uniform(engine);
  normalise(x);
  return x;
}

double stiffness_along(const symmetric_matrix& K, const std::vector<double>& x) {
  return std::fabs(dot(x, product(K, x)));
}

double smallest_stiffness(const symmetric_matrix& K, linear_solver& factorised) {
  std::vector<double> x = start_of_iteration(K.order());
  for (int step = 0; step < 2; ++step) {
    factorised.solve(x);
    normalise(x);
  }
  return stiffness_along(K, x);
}

std::string describe_mechanism(const model& m, const scatter_map& map, const symmetric_matrix& K,
                               const std::vector<double>& scale, linear_solver& solver) {
  symmetric_matrix shifted = K;
  add_to_diagonal(map, SHIFT, shifted);
  if (!solver.factorise(shifted)) return "";

  const auto order = signed_index(K.order());
  const Eigen::MatrixXd motions = free_motions(K, inverse_iteration(solver, order, std::min(order, MOTIONS)));
  if (motions.cols() == 0) return "";
  std::vector<std::size_t> free;
  for (std::size_t f = 0; f < map.equation.size(); ++f) {
    if (map.equation[f] != PRESCRIBED) free.push_back(f);
  }

  std::string text = std::string("mechanism: ") + (motions.cols() == MOTIONS ? "at least " : "") +
                     std::to_string(motions.cols()) + (motions.cols() == 1 ? " motion meets" : " motions meet") +
                     " no resistance beyond rounding; what moves, among others:";
  for (const std::size_t f : moving_freedoms(free, scale, model_size(m), motions)) {
    text +=
        "\n  " + node_name(m, number_of(f / DIRECTIONS)) + " in " + direction_with_number(number_of(f % DIRECTIONS));
  }
  return text;
}

}  // namespace solver
