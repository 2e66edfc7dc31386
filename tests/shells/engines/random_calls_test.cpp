// random_calls_test.cpp: seeded random and degenerate calls of each kind: a call ends, and writes nothing but what its
// operation is said to write; what is not a number may travel on. Under the sanitizers the same calls show that nothing
// else goes wrong either.
//
// The environment variable FINITES_ROBUSTNESS_CALLS sets the number of calls of a kind; without it there are 20,000.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "asked_model.h"
#include "element_subject.h"
#include "finites/fields.h"
#include "guarded_buffer.h"

using support::plate_description;
using support::seeded_random;

namespace {

int calls_of_a_kind() {
  const char* text = std::getenv("FINITES_ROBUSTNESS_CALLS");
  const long count = text != nullptr ? std::strtol(text, nullptr, 10) : 20000;
  return count < 1 ? 1 : count > 10000000 ? 10000000 : static_cast<int>(count);
}

double broken_value(seeded_random& random) {
  constexpr double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double values[] = {0.0, -0.0, 1.0, -1.0, 1e-308, 1e308, -1e308, 4e9, 1e-320, inf, -inf, nan, 1e19, 1e-9};
  return values[random.integer(0, static_cast<int>(std::size(values)) - 1)];
}

// Two nodes in one place, all on a line, a concave and a crossed shape, a warped one, a huge and a tiny one, a broken
// coordinate, or none of these.
void break_shape(seeded_random& random, std::vector<support::point>& nodes) {
  const std::size_t last = nodes.size() - 1, one = static_cast<std::size_t>(random.integer(0, static_cast<int>(last)));
  switch (random.integer(0, 8)) {
    case 0: nodes[one] = nodes[(one + 1) % nodes.size()]; break;
    case 1:
      for (std::size_t n = 2; n <= last; ++n) {
        for (std::size_t i = 0; i < 3; ++i) {
          nodes[n][i] = nodes[0][i] + static_cast<double>(n) * (nodes[1][i] - nodes[0][i]);
        }
      }
      break;
    case 2:
      for (std::size_t i = 0; i < 3; ++i) nodes[last][i] = 0.9 * nodes[1][i] + 0.1 * nodes[0][i];
      break;
    case 3: std::swap(nodes[1], nodes[last]); break;
    case 4: nodes[one][static_cast<std::size_t>(random.integer(0, 2))] += random.uniform(-1.0, 1.0); break;
    case 5:
      for (support::point& node : nodes) {
        for (double& component : node) component *= random.integer(0, 1) == 0 ? 1e-160 : 1e160;
      }
      break;
    case 6: nodes[one][static_cast<std::size_t>(random.integer(0, 2))] = broken_value(random); break;
    case 7: std::swap(nodes[0], nodes[1]); break;
    default: break;
  }
}

void break_section(seeded_random& random, plate_description& d) {
  double* const fields[] = {&d.thickness,        &d.young,          &d.poisson,
                            &d.expansion,        &d.unit_weight,    &d.modifier_membrane,
                            &d.modifier_bending, &d.modifier_shear, &d.ortho_angle};
  *fields[random.integer(0, static_cast<int>(std::size(fields)) - 1)] = broken_value(random);
}

void one_call(seeded_random& random, support::plate_model& model, int nodes) {
  constexpr int operations[] = {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10};
  const int op = operations[random.integer(0, 12)];
  support::guarded_buffer data(12), forces(24), matrix(576);
  std::vector<double> parameters = random.vector(9, 2.0), u = random.vector(24, 1e-2);
  if (random.integer(0, 9) == 0) parameters[static_cast<std::size_t>(random.integer(0, 8))] = broken_value(random);
  if (random.integer(0, 9) == 0) u[static_cast<std::size_t>(random.integer(0, 23))] = broken_value(random);
  data.set_input(parameters);
  model.set_displacements(u);
  model.set_header(SECOND_ORDER, random.integer(0, 1));
  model.call(op, 1, data.data(), forces.data(), matrix.data());
  const bool makes_matrix = op == 1 || op == 2 || op == 7 || op == 71;
  const bool makes_loads = op == 4 || op == 41 || op == 401 || op == 10;
  const std::vector<int> none;
  EXPECT_EQ(matrix.changed(), makes_matrix ? support::leading_block(6 * nodes, 24) : none) << "operation " << op;
  EXPECT_EQ(forces.changed(), makes_loads ? support::range(1, 24) : none) << "operation " << op;
  EXPECT_EQ(data.changed(), op == 9 ? support::range(10, 12) : none) << "operation " << op;
}

class RandomCalls : public ::testing::TestWithParam<int> {};

}  // namespace

TEST_P(RandomCalls, EndAndWriteOnlyWhatTheirOperationSays) {
  seeded_random random(40000U + static_cast<unsigned>(GetParam()));
  std::vector<element_subject> some;
  for (const element_subject& s : subjects(true)) {
    if (s.kind == GetParam()) some.push_back(s);
  }
  int left = calls_of_a_kind();
  while (left > 0 && !HasFailure()) {
    const element_subject& s = some[static_cast<std::size_t>(random.integer(0, static_cast<int>(some.size()) - 1))];
    plate_description d = random_element(random, s);
    if (random.integer(0, 2) == 0) support::add_random_offsets(random, d);
    if (random.integer(0, 1) == 0) break_shape(random, d.nodes);
    if (random.integer(0, 2) == 0) break_section(random, d);
    asked_model model(s, d);
    for (double& force : model.state(1).STORED_NODAL_FORCES.V) force = random.uniform(-1.0, 1.0);
    for (int i = 0; i < 40 && left > 0; ++i, --left) one_call(random, model, s.nodes);
  }
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, RandomCalls, ::testing::Values(10, 11, 12, 20, 21, 22),
                         [](const auto& test) { return "kind_" + std::to_string(test.param); });
