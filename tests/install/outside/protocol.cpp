// protocol.cpp: FINITES from C++17, by the installed headers and libraries alone. A thin triangle under a load: its
// nodal forces add up to load times area.
#include <finites/fields.h>
#include <finites/finites.h>
#include <finites/records.h>
#include <finites/tarnix.h>

#include <cmath>
#include <cstdio>
#include <vector>

int main() {
  constexpr int nodes = 1001, section = 1101, material = 1201, element = 1301, length = 1400;
  std::vector<double> storage(length);
  const MODEL_DATA A(storage.data());
  A(RES_BASE) = 201;
  A(ENTRY_START) = element;
  A(ENTRY_STRIDE) = 70;
  A(section + SECTION_TYPE) = HOMOGENEOUS_SECTION;
  A(section + SECTION_THICKNESS) = 10;
  A(material + MATERIAL_YOUNG) = 210e3;
  A(nodes + 10 + NODE_X) = 4;
  A(nodes + 20 + NODE_X + 1) = 3;
  A(element + FORMULATION) = FORMULATION_THIN;
  A(element + MODIFIER_MEMBRANE) = A(element + MODIFIER_BENDING) = A(element + MODIFIER_SHEAR) = 1;

  PLATE_RECORD plate{};
  plate.SECTION_PTR = section;
  plate.MATERIAL_PTR = material;
  plate.NODE_COUNT = 3;
  for (int n = 1; n <= 3; ++n) plate.NODE_PTR(n) = nodes + 10 * (n - 1);
  SOLANAELEM.PLATE_RECORDS = REFER_TO(&plate, 1);

  const int32_t elem = 1, k = element, n = length;
  int32_t op = OP_LOADS;
  double data[12] = {0, 0, -5}, forces[24] = {}, matrix[576], sum = 0;
  FINITES(&op, &elem, &k, storage.data(), &n, data, forces, matrix);
  for (int i = 2; i < 18; i += 6) sum += forces[i];
  if (std::fabs(sum + 5 * 6) < 1e-12) return 0;
  std::printf("sum of the forces: actual %.17g, expected -30\n", sum);
  return 1;
}
