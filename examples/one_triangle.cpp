// one_triangle.cpp: the smallest caller. One thin triangle of steel, its area, its stiffness, and the forces of a
// displacement. Units are newton and millimetre: the library divides weights by gravity in mm/s^2.
//
// It does what every solver does: lay out MODEL_DATA, fill the shared records, then call FINITES once per operation.
//
// Built with -Iinclude -Icompanions/tarnix; docs/calling.md, "A first program", has the whole command.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/views.hpp"
#include "tarnix.h"

namespace {

// Where this model keeps its blocks. The library fixes the header and the fields inside a block, not the places.
constexpr std::int32_t exchange_start = 201;  // 768 reals
constexpr std::int32_t node_start = 1001;     // 10 reals per node
constexpr std::int32_t section_start = 1101;
constexpr std::int32_t material_start = 1201;
constexpr std::int32_t element_start = 1301;
constexpr std::int32_t length = 1400;

void fill_model(MODEL_DATA A) {
  A(RES_BASE) = exchange_start;
  A(ENTRY_START) = element_start;
  A(ENTRY_STRIDE) = 70;

  const double xyz[3][3] = {{0, 0, 0}, {2000, 0, 0}, {0, 1000, 0}};
  for (int n = 0; n < 3; ++n) {
    for (int i = 0; i < 3; ++i) A(node_start + 10 * n + NODE_X + i) = xyz[n][i];
  }
  A(section_start + SECTION_NUMBER) = 1;
  A(section_start + SECTION_TYPE) = HOMOGENEOUS_SECTION;
  A(section_start + SECTION_THICKNESS) = 10;
  A(material_start + MATERIAL_NUMBER) = 1;
  A(material_start + MATERIAL_YOUNG) = 210e3;
  A(material_start + MATERIAL_POISSON) = 0.3;
  A(material_start + MATERIAL_UNIT_WEIGHT) = 7.7e-5;

  A(element_start + ELEM_ID) = 1;
  A(element_start + MASS_FACTOR) = 1;
  A(element_start + BLOCK_NODE_COUNT) = 3;
  A(element_start + FORMULATION) = 1;  // thin shell
  A(element_start + MODIFIER_MEMBRANE) = 1;
  A(element_start + MODIFIER_BENDING) = 1;
  A(element_start + MODIFIER_SHEAR) = 1;
}

PLATE_RECORD plate_record() {
  PLATE_RECORD record{};
  record.SECTION_PTR = section_start;
  record.MATERIAL_PTR = material_start;
  record.NODE_COUNT = 3;
  for (int n = 1; n <= 3; ++n) record.NODE_PTR(n) = node_start + 10 * (n - 1);
  return record;
}

}  // namespace

int main() {
  std::vector<double> storage(length, 0.0);
  const MODEL_DATA A(storage.data());
  fill_model(A);

  PLATE_RECORD record = plate_record();
  SOLANAELEM.PLATE_RECORDS = REFER_TO(&record, 1);  // PLATE_OF_ELEM stays unallocated: plate 1 is element 1
  const MATERIAL_RECORD elastic{};                  // type 0, not orthotropic: constants of the material block
  const std::int32_t material_number = 1;
  TARNIX_STORE_MATERIAL(&material_number, &elastic);

  const std::int32_t elem = 1;
  const std::int32_t k = element_start;
  const std::int32_t n = length;
  double data[64] = {};
  double forces[24] = {};
  double matrix[24 * 24] = {};
  const auto call = [&](std::int32_t op) { FINITES(&op, &elem, &k, storage.data(), &n, data, forces, matrix); };

  call(8);  // area and weight, into the plate record
  std::printf("area %g, weight %g\n", static_cast<double>(record.AREA), static_cast<double>(record.WEIGHT));

  call(1);  // stiffness
  std::printf("stiffness of u1: %g\n", matrix[0]);

  A(exchange_start + EXCHANGE_DISPLACEMENTS + 6) = 0.1;  // u of node 2
  call(3);                                               // internal forces
  // K u is the same: column 7 of the stiffness times the displacement.
  double worst = 0;
  for (int i = 0; i < 18; ++i) {
    const double from_matrix = matrix[6 * 24 + i] * 0.1;
    worst = std::fmax(worst, std::fabs(from_matrix - A(exchange_start + EXCHANGE_FORCES + i)));
  }
  std::printf("force on node 2: %g, differs from K u by at most %.1e\n", A(exchange_start + EXCHANGE_FORCES + 6),
              worst);
  return record.AREA == 1e6F && worst < 1e-6 ? 0 : 1;
}
