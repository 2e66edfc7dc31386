// fields_by_operation_test.cpp: the table of docs/calling.md, fields by operation of an elastic plate: the answer of an
// operation changes with a field that it needs, to the last bit not with another one.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "found.h"
#include "random_shapes.h"

namespace {

support::plate_description elastic(int formulation) {
  support::plate_description d;
  d.nodes = {{0, 0, 0}, {1000, 0, 0}, {1100, 900, 0}, {0, 1000, 0}};
  d.formulation = formulation;
  d.thickness = 20.0;
  return d;
}

// Everything that an operation writes, of a plate on which it is called.
std::vector<double> answer(support::plate_model& model, int op) {
  support::seeded_random random(5);
  const std::vector<double> u = random.vector(24, 0.1);
  switch (op) {
    case OP_STIFFNESS:
    case OP_MASS:
    case OP_GEOMETRIC_STORED: return model.matrix(op, 1);
    case OP_GEOMETRIC: model.set_displacements(u); return model.matrix(op, 1);
    case OP_FORCES:
    case OP_FORCES_COMMIT: return model.internal_forces(1, u, op);
    case OP_LOADS: return model.loads(op, 1, {1, 2, 3, 4, 5, 6});
    case OP_BODY_LOAD: return model.loads(op, 1, {1, 2, 3});
    case OP_TEMPERATURE_LOAD: return model.loads(op, 1, {10, 5});
    case OP_POINT_LOAD: return model.loads(op, 1, {400, 300, 0, 1, 2, 3, 4, 5, 6});
    case OP_RESULTS: return model.results(1, u, 10, 5).points;
    case OP_GEOMETRY: {
      double data[64] = {}, forces[24] = {}, matrix[576] = {};
      model.call(op, 1, data, forces, matrix);
      return {static_cast<double>(model.plate(1).AREA), static_cast<double>(model.plate(1).WEIGHT),
              static_cast<double>(model.plate(1).FACTORED_WEIGHT)};
    }
    default: {
      double data[64] = {400, 300, 1}, forces[24] = {}, matrix[576] = {};
      model.call(op, 1, data, forces, matrix);
      return {data, data + 12};
    }
  }
}

bool needs(int formulation, int op, int block, int name) {
  support::plate_model model({elastic(formulation)});
  model.allocate_state();
  const PLATE_RECORD& r = model.plate(1);
  const std::int32_t start = block == 0 ? model.block(1) : block == 1 ? r.SECTION_PTR : r.MATERIAL_PTR;
  const std::vector<double> before = answer(model, op);
  EXPECT_TRUE(all_finite(before)) << op;
  model.A()(start + name) *= 1.25;
  return answer(model, op) != before;
}

struct row {
  const char* field;
  int block, name;  // of the entry 0, the section 1, the material 2
  std::vector<int> operations;
};

const std::vector<int> ALL = {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10};
const std::vector<row> TABLE = {
    {"thickness", 1, SECTION_THICKNESS, {1, 2, 3, 33, 41, 401, 5, 7, 8}},
    {"E", 2, MATERIAL_YOUNG, {1, 3, 33, 401, 5, 7}},
    {"nu", 2, MATERIAL_POISSON, {1, 3, 33, 401, 5, 7}},
    {"membrane", 0, MODIFIER_MEMBRANE, {1, 3, 33, 401, 5, 7}},
    {"bending", 0, MODIFIER_BENDING, {1, 3, 33, 401, 5}},
    {"unit weight", 2, MATERIAL_UNIT_WEIGHT, {2, 8}},
    {"mass factor", 0, MASS_FACTOR, {2, 8}},
    {"expansion", 2, MATERIAL_EXPANSION, {401, 5}},
    {"shear modulus", 2, MATERIAL_SHEAR_MODULUS, {}},
    {"yield stress", 2, MATERIAL_YIELD_STRESS, {}},
};

}  // namespace

TEST(FieldsByOperation, AnOperationNeedsWhatTheTableSays) {
  for (const int formulation : {FORMULATION_THIN, FORMULATION_THICK}) {
    for (const row& field : TABLE) {
      for (const int op : ALL) {
        const bool expected = std::count(field.operations.begin(), field.operations.end(), op) > 0;
        EXPECT_EQ(needs(formulation, op, field.block, field.name), expected)
            << field.field << ", operation " << op << ", formulation " << formulation;
      }
    }
  }
}
