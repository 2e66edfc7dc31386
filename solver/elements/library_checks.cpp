// library_checks.cpp: the checker of the library over the header, the records and every element of a model.
#include <algorithm>

#include "elements/library_model.h"
#include "finites/checks.h"
#include "finites/fields.h"
#include "model/index.h"

namespace solver {

namespace {

constexpr std::int32_t ROOM = 32;  // findings of one element that are kept

std::int32_t kind_of(const model& m, const element& e) {
  if (is_plate(e.type)) return FINITES_ELEMENT_PLATE;
  if (is_solid(e.type)) return FINITES_ELEMENT_SOLID;
  if (is_cable(m, e)) return FINITES_ELEMENT_CABLE;
  switch (e.type) {
    case element_type::B31:
    case element_type::B33: return FINITES_ELEMENT_BEAM;
    case element_type::T3D2: return FINITES_ELEMENT_TRUSS;
    case element_type::SPRINGA:
    case element_type::CONN3D2: return FINITES_ELEMENT_LINK;
    default: return FINITES_ELEMENT_SPRING;
  }
}

template <class CALL>
void add_findings(CALL call, std::vector<finites_finding>& all) {
  finites_finding found[ROOM];
  const std::int32_t count = std::min(call(found), ROOM);
  all.insert(all.end(), found, found + count);
}

}  // namespace

// Solids share one record, which is made that of each in its turn.
std::vector<finites_finding> library_model::findings() {
  const model& m = data_.of();
  const double* const A = data_.values();
  const std::int64_t n = data_.length();
  std::vector<finites_finding> all;
  add_findings(
      [&](finites_finding* found) { return finites_check_model(nullptr, count_of(m.elements), A, n, found, ROOM); },
      all);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (is_point(m.elements[e].type)) continue;  // the library has no part in them
    const std::int32_t kind = kind_of(m, m.elements[e]);
    const std::int32_t number = data_.number(e), entry = data_.entry(e);
    if (kind == FINITES_ELEMENT_SOLID) solids_.take(e);
    add_findings(
        [&](finites_finding* found) {
          if (kind == FINITES_ELEMENT_PLATE) return finites_check_plate(number, entry, A, n, found, ROOM);
          if (kind == FINITES_ELEMENT_SOLID) return finites_check_solid(number, A, n, found, ROOM);
          return finites_check_member(kind, number, entry, A, n, found, ROOM);
        },
        all);
  }
  return all;
}

}  // namespace solver
