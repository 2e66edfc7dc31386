// random_calls_test.cpp: seeded random and degenerate input. Whatever the records hold, a call ends, and it writes
// nothing but what its operation is said to write. Under the sanitizers the same calls show that nothing else goes
// wrong either.
//
// The environment variable FINITES_ROBUSTNESS_CALLS sets the number of calls; without it there are 20,000.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "finites/fields.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "plate_model.h"
#include "random_shapes.h"

namespace {

using support::plate_description;
using support::plate_model;
using support::seeded_random;

constexpr int MODEL_SIZE = 25;
constexpr int CALLS_A_MODEL = 250;

int call_count() {
  const char* text = std::getenv("FINITES_ROBUSTNESS_CALLS");
  const long count = text != nullptr ? std::strtol(text, nullptr, 10) : 20000;
  return count < 1 ? 1 : count > 10000000 ? 10000000 : static_cast<int>(count);
}

// A number that a broken model may hold.
double broken_value(seeded_random& random) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double values[] = {0.0,    -0.0, 1.0,  -1.0,   2.0,  3.0, 6.0,  98.0, 1e-308, 1e308,
                               -1e308, 4e9,  -4e9, 1e-320, 1e19, inf, -inf, nan,  0.5,    1e-9};
  return values[random.integer(0, static_cast<int>(std::size(values)) - 1)];
}

void break_shape(seeded_random& random, plate_description& description) {
  switch (random.integer(0, 5)) {
    case 0: description.nodes[1] = description.nodes[0]; break;  // two nodes in one place
    case 1: description.nodes[1] = description.nodes[2] = description.nodes[0]; break;
    case 2:  // all on a line
      for (std::size_t i = 0; i < 3; ++i) {
        description.nodes[2][i] = 2.0 * description.nodes[1][i] - description.nodes[0][i];
      }
      break;
    case 3: description.nodes[0][1] = broken_value(random); break;
    case 4:  // so small that squares of lengths underflow
      for (support::point& node : description.nodes) {
        for (double& component : node) component *= 1e-200;
      }
      break;
    default: break;
  }
}

void break_section(seeded_random& random, plate_description& description) {
  double* const fields[] = {&description.thickness,         &description.young,           &description.poisson,
                            &description.shear_modulus,     &description.unit_weight,     &description.expansion,
                            &description.modifier_membrane, &description.ortho_angle,     &description.mass_factor,
                            &description.offsets[1][2],     &description.common_offset[0]};
  *fields[random.integer(0, static_cast<int>(std::size(fields)) - 1)] = broken_value(random);
}

void break_records(seeded_random& random, plate_description& description) {
  const auto narrow = [&random] {
    const double value = broken_value(random);
    return std::abs(value) > 1e38 ? std::numeric_limits<float>::infinity() : static_cast<float>(value);
  };
  for (float* field : {&description.material.E1, &description.material.NU1, &description.material.G12,
                       &description.composite.E2, &description.composite.NU2, &description.composite.CLT_FACTOR_1}) {
    if (random.integer(0, 2) == 0) *field = narrow();
  }
  description.material.mtype = random.integer(-1, 4);
}

plate_description random_description(seeded_random& random) {
  const std::vector<support::point> nodes =
      random.integer(0, 1) == 0 ? support::random_quadrilateral(random) : support::random_triangle(random);
  plate_description description;
  switch (random.integer(0, 2)) {
    case 0: description = support::random_isotropic(random, nodes); break;
    case 1: description = support::random_orthotropic(random, nodes, support::orthotropy::arbitrary); break;
    default: description = support::random_composite(random, nodes, support::orthotropy::arbitrary); break;
  }
  constexpr int formulations[] = {1, 1, 1, 2, 3, 98, 0, 0, 5, -7};
  description.formulation = formulations[random.integer(0, 9)];
  if (random.integer(0, 1) == 0) support::add_random_offsets(random, description);
  if (random.integer(0, 2) == 0) break_shape(random, description);
  if (random.integer(0, 2) == 0) break_section(random, description);
  if (random.integer(0, 3) == 0) break_records(random, description);
  if (random.integer(0, 9) == 0) description.section_type = random.integer(-1, 9);
  return description;
}

// Switches of the analysis and single fields of the blocks that a description cannot break. The plastic behaviours,
// whose state a solver allocates, are left out: the material code of the plates stays 0.
void break_model(seeded_random& random, plate_model& model) {
  for (const int name : {NONLIN_MATERIAL, STEP_COUNTER, ANALYSIS_STATE, SECOND_ORDER}) {
    model.set_header(name, random.integer(0, 1) == 0 ? random.integer(0, 3) : broken_value(random));
  }
  if (random.integer(0, 1) == 0) {
    model.allocate_state();
    for (int elem = 1; elem <= model.count(); ++elem) {
      for (double& force : model.state(elem).STORED_NODAL_FORCES.V) force = broken_value(random);
      for (double& value : model.state(elem).STORED_DISPLACEMENTS.V) value = random.uniform(-1.0, 1.0);
    }
  }
  if (random.integer(0, 2) == 0) model.deallocate_plate_of_elem();
  if (random.integer(0, 1) == 0) model.set_stiffness_factors({10, 30, 70}, {0.5F, 0.0F, -1.0F, 2.0F, 1.0F, 1.0F}, 2);
  for (int elem = 1; elem <= model.count(); ++elem) {
    constexpr int fields[] = {ELEM_ID, BLOCK_NODE_COUNT, FORMULATION, OFFSET_SWITCH, PLASTIC_SWITCH};
    if (random.integer(0, 4) == 0) model.A()(model.block(elem) + fields[random.integer(0, 4)]) = broken_value(random);
    if (random.integer(0, 9) == 0) model.plate(elem).NODE_COUNT = random.integer(-2, 9);
  }
}

int random_operation(seeded_random& random) {
  constexpr int known[] = {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10};
  if (random.integer(0, 19) == 0) return random.integer(-100, 1000);
  return known[random.integer(0, static_cast<int>(std::size(known)) - 1)];
}

// May operation op write A(i)?
bool may_write(int op, std::int64_t i, std::int64_t res_base) {
  const std::int64_t at = i - res_base;
  if (op == 3 || op == 33) return at >= EXCHANGE_FORCES && at < EXCHANGE_FORCES + 24;
  if (op == 5) return at >= EXCHANGE_NODES && at < EXCHANGE_NODES + 720;
  return false;
}

int forbidden_writes(plate_model& model, const std::vector<double>& before, int op) {
  const std::int64_t res_base = model.A().INTEGER(RES_BASE);
  int count = 0;
  for (std::int64_t i = 1; i <= model.extent(); ++i) {
    const double& old = before[static_cast<std::size_t>(i - 1)];
    if (std::memcmp(&model.A()(i), &old, sizeof old) != 0 && !may_write(op, i, res_base)) ++count;
  }
  return count;
}

// Which positions of the arguments an operation may write; all of them lie in the arrays themselves.
void check_arguments(int op, const support::guarded_buffer& data, const support::guarded_buffer& forces,
                     const support::guarded_buffer& matrix) {
  const bool gives_forces = op == 4 || op == 41 || op == 401 || op == 10;
  const bool gives_matrix = op == 1 || op == 2 || op == 7 || op == 71;
  for (const int i : data.changed()) {
    EXPECT_TRUE((op == 9 && i >= 10 && i <= 12)) << "operation " << op << " wrote data(" << i << ")";
  }
  for (const int i : forces.changed()) {
    EXPECT_TRUE((gives_forces && i >= 1 && i <= 24)) << "operation " << op << " wrote forces(" << i << ")";
  }
  for (const int i : matrix.changed()) {
    EXPECT_TRUE((gives_matrix && i >= 1 && i <= 576)) << "operation " << op << " wrote matrix(" << i << ")";
  }
}

void random_call(seeded_random& random, plate_model& model) {
  const int elem = random.integer(1, model.count());
  const int op = random_operation(random);
  support::guarded_buffer data(12), forces(24), matrix(24 * 24);
  if (random.integer(0, 9) != 0) data.set_input(random.vector(9, 2.0));
  std::vector<double> u = random.vector(24, 1e-2);
  if (random.integer(0, 9) == 0) u[static_cast<std::size_t>(random.integer(0, 23))] = broken_value(random);
  model.set_displacements(u);

  const std::vector<double> before(model.raw(), model.raw() + model.extent());
  model.call(op, elem, data.data(), forces.data(), matrix.data());
  check_arguments(op, data, forces, matrix);
  EXPECT_EQ(forbidden_writes(model, before, op), 0) << "operation " << op << " of element " << elem;

  const std::int32_t element = elem, n = model.extent();
  std::int32_t kind = 0, behav = -1, parts = 0;
  INFO_FINITES(&element, model.raw(), &n, &kind, &behav, &parts);
  EXPECT_TRUE(kind >= 10 && kind <= 22) << kind;
  EXPECT_TRUE(behav >= 0 && behav <= 3) << behav;
  EXPECT_TRUE(parts >= 1 && parts <= 15) << parts;
}

}  // namespace

TEST(RandomCalls, EndAndWriteOnlyWhatTheirOperationSays) {
  seeded_random random(20000);
  int left = call_count();
  while (left > 0 && !HasFailure()) {
    std::vector<plate_description> descriptions;
    for (int i = 0; i < MODEL_SIZE; ++i) descriptions.push_back(random_description(random));
    plate_model model(descriptions);
    break_model(random, model);
    for (int i = 0; i < CALLS_A_MODEL && left > 0; ++i, --left) random_call(random, model);
  }
}

TEST(RandomPoints, IntegrationRulesAreDefinedForEveryNumber) {
  seeded_random random(3);
  const std::vector<double> xyz = random.vector(12, 1.0);
  for (int i = 0; i < 2000; ++i) {
    const std::int32_t rule = random.integer(-3, 6), point = random.integer(1, 100), nodes = random.integer(-1, 9);
    support::guarded_buffer out(12);
    double* o = out.data();
    GAUSS_INT_2D(&rule, &point, &nodes, xyz.data(), o, o + 1, o + 2, o + 3, o + 4, o + 5, o + 6, o + 7, o + 8, o + 9,
                 o + 10, o + 11);
    EXPECT_EQ(out.changed(), support::range(1, 12));
    if (rule < 1 || rule > 3 || point > 4) {
      EXPECT_EQ(out(1), 0.0);
      EXPECT_EQ(out(2), 0.0);
      EXPECT_EQ(out(4), 0.0);
    }
  }
}

TEST(RandomStresses, PrincipalValuesKeepToTheirColumns) {
  seeded_random random(4);
  for (int i = 0; i < 2000; ++i) {
    support::guarded_buffer record(100);
    std::vector<double> stresses(47);
    for (double& stress : stresses) stress = random.integer(0, 9) == 0 ? broken_value(random) : random.uniform(-9, 9);
    std::copy(stresses.begin(), stresses.end(), record.data());
    UPDATE_PRINCIPAUX_RES100_PLA_DBL(record.data());
    for (const int at : record.changed()) EXPECT_TRUE(at >= 1 && at <= 47) << at;
    for (int column = 1; column <= 47; ++column) {
      const bool output = (column >= 7 && column <= 9) || (column >= 34 && column <= 45);
      const double value = record(column);
      const bool kept = std::memcmp(&value, &stresses[static_cast<std::size_t>(column - 1)], sizeof value) == 0;
      EXPECT_TRUE(output || kept) << "column " << column;
    }
  }
}
