// Linear conditions between degrees of freedom: against Lagrange's multipliers in a dense matrix, and models whose
// elements have nodes of their own, joined by conditions, against the same models with shared nodes, in every analysis.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

#include <Eigen/Dense>

#include "analyses/condition_forces.h"
#include "analyses/modal_analysis.h"
#include "elastoplastic/elastoplastic.h"
#include "elements/constraints.h"
#include "frame_decks.h"
#include "plastic_support.h"
#include "pushover_support.h"
#include "system/assembly.h"

using namespace analysis_test;
using namespace solver;

namespace {

linear_constraint condition(std::vector<constraint_term> terms, double value = 0, int line = 1) {
  linear_constraint c;
  c.terms = std::move(terms);
  c.value = value;
  c.line = line;
  return c;
}

Eigen::MatrixXd dense_stiffness(const model& m, library_model& library) {
  const auto size = static_cast<Eigen::Index>(6 * m.nodes.size());
  Eigen::MatrixXd K = Eigen::MatrixXd::Zero(size, size);
  element_matrix stiffness;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    library.stiffness(e, stiffness);
    for (int i = 0; i < element_freedoms(m.elements[e]); ++i)
      for (int j = 0; j < element_freedoms(m.elements[e]); ++j)
        K(static_cast<Eigen::Index>(element_freedom(m.elements[e], i)),
          static_cast<Eigen::Index>(element_freedom(m.elements[e], j))) += stiffness(i + 1, j + 1);
  }
  return K;
}

// K u + C^T l = p with C u = d, supports being conditions of one term: u, and C^T l of the supports with the sign of a
// reaction.
struct by_multipliers {
  Eigen::VectorXd u, reaction, constraint;
  std::map<int, Eigen::VectorXd> of_line;  // of the conditions of a line of the deck
};

by_multipliers solve_dense(const model& m) {
  const step& s = m.steps.front();
  library_model library(m);
  const load_case loads = gather_load_case(m, s);
  library.plates().choose_ties(loads);
  const Eigen::MatrixXd K = dense_stiffness(m, library);
  std::vector<linear_constraint> all = loads.conditions;
  const auto conditions = static_cast<Eigen::Index>(all.size());
  for (std::size_t f = 0; f < loads.prescribed.size(); ++f)
    if (loads.prescribed[f])
      all.push_back(condition({{static_cast<int>(f / 6), static_cast<int>(f % 6) + 1, 1}}, loads.prescribed_value[f]));
  const Eigen::Index n = K.rows(), c = static_cast<Eigen::Index>(all.size());
  Eigen::MatrixXd C = Eigen::MatrixXd::Zero(c, n);
  Eigen::VectorXd right = Eigen::VectorXd::Zero(n + c);
  for (Eigen::Index i = 0; i < c; ++i) {
    for (const constraint_term& t : all[static_cast<std::size_t>(i)].terms) C(i, 6 * t.node + t.dof - 1) += t.factor;
    right(n + i) = all[static_cast<std::size_t>(i)].value;
  }
  const std::vector<double> load = assemble_loads(m, s, library, loads);
  for (Eigen::Index i = 0; i < n; ++i) right(i) = load[static_cast<std::size_t>(i)];
  Eigen::MatrixXd A = Eigen::MatrixXd::Zero(n + c, n + c);
  const double scale = K.cwiseAbs().maxCoeff();
  A.topLeftCorner(n, n) = K;
  A.topRightCorner(n, c) = scale * C.transpose();
  A.bottomLeftCorner(c, n) = scale * C;
  right.tail(c) *= scale;
  const Eigen::VectorXd x = A.fullPivLu().solve(right);
  const Eigen::VectorXd l = -scale * x.tail(c);
  by_multipliers result;
  result.u = x.head(n);
  result.constraint = C.topRows(conditions).transpose() * l.head(conditions);
  for (Eigen::Index i = 0; i < conditions; ++i) {
    Eigen::VectorXd& sum = result.of_line[all[static_cast<std::size_t>(i)].line];
    if (sum.size() == 0) sum = Eigen::VectorXd::Zero(n);
    sum += C.row(i).transpose() * l(i);
  }
  result.reaction = C.bottomRows(c - conditions).transpose() * l.tail(c - conditions);
  return result;
}

// A sheet in space, fixed at one edge and loaded all over.
grid loaded_sheet() {
  const auto wave = [](double u, double v) { return point{3 * u, 2 * v, 0.4 * u * u + 0.3 * u * v}; };
  grid g(4, 3, wave, isotropic(1000, 0.3), 0.2);
  g.fix(g.along_y(0), "xyzXYZ");
  g.pressure(0.01);
  g.load(g.node(4, 1), 'x', 0.3);
  g.load(g.node(3, 2), 'Y', 0.1);
  return g;
}

void expect_like_dense(const model& m) {
  const solved s = solve(m);
  const by_multipliers dense = solve_dense(m);
  const double size = dense.u.cwiseAbs().maxCoeff(), force = dense.reaction.cwiseAbs().maxCoeff();
  for (std::size_t f = 0; f < s.solution.displacement.size(); ++f) {
    const auto i = static_cast<Eigen::Index>(f);
    EXPECT_WITHIN(s.solution.displacement[f], dense.u(i), size, 1e-8);
    EXPECT_WITHIN(s.solution.reaction[f], dense.reaction(i), force, 1e-8);
    EXPECT_WITHIN(s.solution.constraint[f], dense.constraint(i), force, 1e-8);
  }
  const std::vector<card_force> cards = forces_of_conditions(m, s.solution);
  EXPECT_EQ(cards.size(), dense.of_line.size());
  for (const card_force& card : cards) {
    Eigen::VectorXd left = dense.of_line.at(card.line);
    for (const node_force& at : card.nodes)
      for (int d = 0; d < 6; ++d) left(6 * at.node + d) -= at.force[static_cast<std::size_t>(d)];
    EXPECT_WITHIN(left.cwiseAbs().maxCoeff(), 0, force, 1e-8) << "line " << card.line;
  }
}

}  // namespace

// Chains, prescribed degrees of freedom in conditions, values other than 0, and a first term that is held.
TEST(AnalysisConstraints, AgainstMultipliersInADenseMatrix) {
  grid g = loaded_sheet();
  const int a = g.node(4, 0), b = g.node(4, 3), c = g.node(2, 1), d = g.node(1, 3), held = g.node(0, 2);
  g.fix({g.node(4, 2)}, "z", 0.05);
  g.m.constraints = {
      condition({{a, 3, 1}, {b, 3, -1}}, 0, 1),
      condition({{b, 3, 2}, {c, 3, -1}, {d, 1, 0.5}}, 0, 2),          // b depends on others now: a chain
      condition({{c, 1, 1}, {d, 2, -3}}, 0.02, 2),                    // with a value; on the same line
      condition({{g.node(4, 2), 3, 1}, {d, 3, 2}, {a, 5, 1}}, 0, 3),  // the first term is prescribed, and moves
      condition({{held, 1, 1}, {g.node(3, 1), 1, 1}, {g.node(3, 1), 2, 1}}, 0, 4),
      condition({{c, 3, 1}, {d, 5, 1}}, 0, 5),
  };
  expect_like_dense(g.m);
}

TEST(AnalysisConstraints, RandomConditionsAgainstMultipliers) {
  std::mt19937 engine(17);
  for (int trial = 0; trial < 8; ++trial) {
    grid g = loaded_sheet();
    const auto nodes = static_cast<unsigned>(g.m.nodes.size());
    for (int k = 0; k < 12; ++k) {
      std::vector<constraint_term> terms;
      for (unsigned i = 0; i < 2 + engine() % 4; ++i) {
        const double factor = (static_cast<double>(engine() % 2000) - 999.5) / 1000;
        terms.push_back({static_cast<int>(engine() % nodes), static_cast<int>(1 + engine() % 6), factor});
      }
      g.m.constraints.push_back(condition(terms));
    }
    expect_like_dense(g.m);
  }
}

// The answer hangs neither on the order of cards and terms nor on the last digits of the factors.
TEST(AnalysisConstraints, OrderAndRoundingOfConditions) {
  std::mt19937 engine(5);
  grid g = loaded_sheet();
  for (int i = 1; i < 4; ++i) {
    g.m.constraints.push_back(condition({{g.node(i, 0), 3, 1}, {g.node(i + 1, 1), 3, -1}}));
    g.m.constraints.push_back(condition({{g.node(i, 0), 1, 1}, {g.node(i, 3), 1, 1}, {g.node(i, 2), 6, 0.3}}));
    g.m.constraints.push_back(condition({{g.node(i + 1, 1), 3, 1}, {g.node(i, 2), 3, 0.5}, {g.node(i, 1), 4, -1}}));
  }
  const solved first = solve(g.m);
  const double size = max_norm(first.solution.displacement), force = max_norm(first.solution.reaction);
  for (int trial = 0; trial < 6; ++trial) {
    grid other = g;
    std::shuffle(other.m.constraints.begin(), other.m.constraints.end(), engine);
    for (linear_constraint& c : other.m.constraints) {
      std::shuffle(c.terms.begin(), c.terms.end(), engine);
      for (constraint_term& t : c.terms) t.factor *= 1 + 1e-13 * (static_cast<double>(engine() % 3) - 1);
    }
    const solved s = solve(other.m);
    for (std::size_t f = 0; f < s.solution.displacement.size(); ++f) {
      EXPECT_WITHIN(s.solution.displacement[f], first.solution.displacement[f], size, 1e-9);
      EXPECT_WITHIN(s.solution.reaction[f], first.solution.reaction[f], force, 1e-9);
    }
  }
}

// a = b, b = c, c = a says the last thing twice: the same answer, and a note.
TEST(AnalysisConstraints, CyclesAndRepetitions) {
  grid g = loaded_sheet();
  const int a = g.node(4, 0), b = g.node(4, 1), c = g.node(4, 3);
  g.m.constraints = {condition({{a, 3, 1}, {b, 3, -1}}), condition({{b, 3, 1}, {c, 3, -1}})};
  const solved open = solve(g.m);
  g.m.constraints.push_back(condition({{c, 3, 1}, {a, 3, -1}}, 0, 7));
  g.m.constraints.push_back(g.m.constraints.front());
  g.m.constraints.push_back(condition({{g.node(0, 0), 1, 1}, {g.node(0, 1), 1, -1}}));  // both are held
  const solved closed = solve(g.m);
  for (std::size_t f = 0; f < open.solution.displacement.size(); ++f) {
    EXPECT_WITHIN(closed.solution.displacement[f], open.solution.displacement[f], max_norm(open.solution.displacement),
                  1e-12);
  }
  const std::vector<std::string>& notes = closed.solution.notes;
  EXPECT_TRUE(std::any_of(notes.begin(), notes.end(), [](const std::string& note) {
    return note ==
           "3 conditions follow from the supports and the other conditions, the first the *EQUATION of "
           "grid.inp:7";
  }));
}

TEST(AnalysisConstraints, ContradictionsNameBothCards) {
  grid g = loaded_sheet();
  const int a = g.node(4, 0), b = g.node(4, 1), c = g.node(4, 3);
  g.m.constraints = {condition({{a, 3, 1}, {b, 3, -1}}, 0.1, 11), condition({{b, 3, 1}, {c, 3, -1}}, 0, 12),
                     condition({{a, 3, 1}, {c, 3, -1}}, 0, 13)};
  EXPECT_EQ(
      error_of(g.m),
      "grid.inp:13: *EQUATION: the condition contradicts the *EQUATION of grid.inp:11: together they hold all its "
      "degrees of freedom at other values; take one of them away");
  g.m.constraints = {condition({{a, 3, 1}, {g.node(0, 0), 3, -1}}, 0, 11)};
  g.fix({a}, "z", 0.2);
  g.m.boundaries.back().line = 21;
  EXPECT_EQ(error_of(g.m),
            "grid.inp:11: *EQUATION: the condition contradicts the *BOUNDARY of grid.inp:21: together they hold all "
            "its degrees of freedom at other values; take one of them away");
}

// Without an element or a support a node that conditions tie to nothing is held, unless a load acts on it.
TEST(AnalysisConstraints, NodesThatConditionsTieToNothing) {
  grid g = loaded_sheet();
  const solved alone = solve(g.m);
  node lone;
  lone.id = 900;
  lone.xyz = {9, 9, 9};
  const int first = static_cast<int>(g.m.nodes.size());
  g.m.nodes.push_back(lone);
  lone.id = 901;
  g.m.nodes.push_back(lone);
  g.m.constraints = {condition({{first, 1, 1}, {first + 1, 1, -1}})};
  const solved tied = solve(g.m);
  EXPECT_EQ(tied.u(first, 'x'), 0);
  EXPECT_WITHIN(tied.u(g.node(4, 1), 'z'), alone.u(g.node(4, 1), 'z'), 1.0, 1e-12);
  g.load(first, 'x', 1);
  EXPECT_NE(error_of(g.m).find("mechanism: node 901 is loaded in translation x"), std::string::npos) << error_of(g.m);
}

namespace {

// Gives an element a node of its own in the place of one that it shares, and ties it there.
void split(model& m, std::size_t at, std::size_t corner) {
  element& e = m.elements[at];
  const int shared = e.nodes[corner], own = static_cast<int>(m.nodes.size());
  solver::node copy = m.nodes[shared];
  copy.id += 100000;
  m.nodes.push_back(copy);
  e.nodes[corner] = own;
  for (int dof = 1; dof <= freedoms_per_node(e); ++dof) {
    m.constraints.push_back(condition({{own, dof, 1}, {shared, dof, -1}}));
  }
}

// Every third element gets a node of its own.
model split_model(model m) {
  const std::size_t elements = m.elements.size();
  for (std::size_t e = 0; e < elements; e += 3) split(m, e, e % m.elements[e].nodes.size());
  return m;
}

void expect_equal(const static_solution& whole, const static_solution& tied, double tolerance) {
  for (std::size_t f = 0; f < whole.displacement.size(); ++f) {
    EXPECT_WITHIN(tied.displacement[f], whole.displacement[f], max_norm(whole.displacement), tolerance);
    EXPECT_WITHIN(tied.reaction[f], whole.reaction[f], max_norm(whole.reaction), tolerance);
  }
}

std::vector<double> modes_of(const model& m, const step& s) {
  library_model library(m);
  const auto equations = make_linear_solver(default_solver());
  stopwatch watch;
  static_solution state;
  const modal_solution found = s.kind == step_kind::FREQUENCY ? solve_frequencies(m, s, library, *equations, watch)
                                                              : solve_buckling(m, s, library, *equations, watch, state);
  std::vector<double> values;
  for (const mode& one : found.modes) values.push_back(one.value);
  return values;
}

void expect_equal_modes(const model& whole) {
  const std::vector<double> of_whole = modes_of(whole, whole.steps.front());
  const model tied = split_model(whole);
  const std::vector<double> of_tied = modes_of(tied, tied.steps.front());
  ASSERT_FALSE(of_whole.empty());
  ASSERT_EQ(of_whole.size(), of_tied.size());
  for (std::size_t k = 0; k < of_whole.size(); ++k) EXPECT_WITHIN(of_tied[k], of_whole[k], of_whole[k], 1e-8);
}

}  // namespace

TEST(AnalysisConstraints, SplitSheetIsTheWhole) {
  const grid g = loaded_sheet();
  expect_equal(solve(g.m).solution, solve(split_model(g.m)).solution, 1e-10);
}

// A body that is held by its reference is the clamp of its nodes; its reactions come together at the reference.
TEST(AnalysisConstraints, HeldBodyIsAClamp) {
  const grid clamped = loaded_sheet();
  grid g = loaded_sheet();
  g.m.boundaries.clear();
  node reference;
  reference.id = 900;
  const int at = static_cast<int>(g.m.nodes.size());
  g.m.nodes.push_back(reference);
  for (const int n : g.along_y(0)) {
    const point& r = g.m.nodes[n].xyz;  // the reference stands in the origin
    g.m.constraints.push_back(condition({{n, 1, 1}, {at, 1, -1}, {at, 5, -r[2]}, {at, 6, r[1]}}));
    g.m.constraints.push_back(condition({{n, 2, 1}, {at, 2, -1}, {at, 6, -r[0]}, {at, 4, r[2]}}));
    g.m.constraints.push_back(condition({{n, 3, 1}, {at, 3, -1}, {at, 4, -r[1]}, {at, 5, r[0]}}));
    for (int dof = 4; dof <= 6; ++dof) g.m.constraints.push_back(condition({{n, dof, 1}, {at, dof, -1}}));
  }
  g.fix({at}, "xyzXYZ");
  const solved whole = solve(clamped.m), held = solve(g.m);
  for (std::size_t f = 0; f < whole.solution.displacement.size(); ++f) {
    EXPECT_WITHIN(held.solution.displacement[f], whole.solution.displacement[f], max_norm(whole.solution.displacement),
                  1e-10);
  }
  double moment = 0;  // about x
  for (const int n : clamped.along_y(0)) {
    const point& r = clamped.m.nodes[static_cast<std::size_t>(n)].xyz;
    moment += whole.reaction(n, 'X') + r[1] * whole.reaction(n, 'z') - r[2] * whole.reaction(n, 'y');
  }
  const double size = max_norm(whole.solution.reaction);
  EXPECT_WITHIN(held.reaction(at, 'X'), moment, size, 1e-9);
  EXPECT_WITHIN(held.reaction(at, 'z'), whole.reaction(clamped.along_y(0), 'z'), size, 1e-9);
}

// Without DRILLING the rotation about the normal of a plate is nobody's; of two halves that conditions join it is one.
TEST(AnalysisConstraints, HalvesOfAPlateWithoutDrilling) {
  grid g(
      4, 2, [](double u, double v) { return rectangle(4, 1, u, v); }, isotropic(1000, 0.3), 0.1);
  g.m.shell_sections.front().drilling = 0;
  g.fix(g.along_y(0), "xyzXY");
  g.pressure(0.01);
  model cut = g.m;
  std::vector<int> twin(cut.nodes.size(), -1);
  for (const int n : g.along_y(2)) {
    twin[static_cast<std::size_t>(n)] = static_cast<int>(cut.nodes.size());
    cut.nodes.push_back(cut.nodes[n]);
    cut.nodes.back().id += 1000;
    for (int dof = 1; dof <= 6; ++dof) {
      cut.constraints.push_back(condition({{twin[static_cast<std::size_t>(n)], dof, 1}, {n, dof, -1}}));
    }
  }
  for (element& e : cut.elements) {
    double x = 0;
    for (const int n : e.nodes) x += cut.nodes[n].xyz[0] / 3;
    for (int& n : e.nodes)
      if (x > 2 && twin[static_cast<std::size_t>(n)] >= 0) n = twin[static_cast<std::size_t>(n)];
  }
  const solved whole = solve(g.m), halves = solve(cut);
  expect_equal(whole.solution, halves.solution, 1e-10);
  EXPECT_EQ(whole.solution.notes, halves.solution.notes);
}

TEST(AnalysisConstraints, SplitSheetWithPDelta) {
  grid g = loaded_sheet();
  g.step().p_delta = true;
  g.load_line(g.along_y(4), 'x', 0.5);
  expect_equal(solve(g.m).solution, solve(split_model(g.m)).solution, 1e-8);
}

TEST(AnalysisConstraints, SplitSheetHasTheSameFrequenciesAndBucklingFactors) {
  grid g = loaded_sheet();
  g.m.materials.front().density = 0.1;
  g.step() = step{};
  g.fix(g.along_y(0), "xyzXYZ");
  g.step().kind = step_kind::FREQUENCY;
  g.step().modes = 6;
  expect_equal_modes(g.m);
  g.step().kind = step_kind::BUCKLE;
  g.step().modes = 2;
  g.load_line(g.along_y(4), 'x', -1);
  expect_equal_modes(g.m);
}

TEST(AnalysisConstraints, SplitCablesHangAlike) {
  const model m = frame_test::deck("hanging_cable.inp");
  expect_equal(solve(m).solution, solve(split_model(m)).solution, 1e-9);
}

TEST(AnalysisConstraints, SplitSolidsAreTheWhole) {
  const model m = frame_test::deck("solid_cantilever.inp");
  expect_equal(solve(m).solution, solve(split_model(m)).solution, 1e-9);
}

TEST(AnalysisConstraints, SplitFrameFormsTheSameHinges) {
  for (const char* const name : {"pushover_portal.inp", "pushover_two_storeys_p_delta.inp"}) {
    const model m = frame_test::deck(name);
    const auto whole = pushover_test::push(m), tied = pushover_test::push(split_model(m));
    ASSERT_EQ(whole.size(), tied.size());
    const std::vector<double> of_whole = pushover_test::factors(whole.back()),
                              of_tied = pushover_test::factors(tied.back());
    ASSERT_EQ(of_whole.size(), of_tied.size());
    for (std::size_t k = 0; k < of_whole.size(); ++k) EXPECT_WITHIN(of_tied[k], of_whole[k], of_whole[k], 1e-8);
    EXPECT_EQ(whole.back().end, tied.back().end);
    expect_equal(whole.back().frame, tied.back().frame, 1e-7);
  }
}

TEST(AnalysisConstraints, SplitPlateYieldsAlike) {
  const model m = frame_test::deck("plastic_strip_tension.inp");
  const auto whole = plastic_test::load(m), tied = plastic_test::load(split_model(m));
  ASSERT_EQ(whole.size(), tied.size());
  EXPECT_WITHIN(tied.back().factor, whole.back().factor, whole.back().factor, 1e-5);
  EXPECT_WITHIN(tied.back().first_yield, whole.back().first_yield, whole.back().first_yield, 1e-6);
  expect_equal(whole.back().plates, tied.back().plates, 1e-4);
}
