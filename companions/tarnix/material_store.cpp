// material_store.cpp: materials, composite sections and cold-formed section types, by number.
//
// The solver stores them before the analysis; elements fetch them on every call, so a fetch is one look-up in a hash
// table and a copy. Every number is valid, negative ones too.
#include <cstdint>
#include <unordered_map>

#include "stores.h"
#include "tarnix.h"

namespace {

template <class RECORD>
using STORE = std::unordered_map<std::int32_t, RECORD>;

STORE<MATERIAL_RECORD> materials;
STORE<CLT_SECTION_RECORD> composite_sections;
STORE<std::int32_t> cold_formed;

template <class RECORD>
void store(STORE<RECORD>& in, const std::int32_t* number, const RECORD* rec) {
  if (number != nullptr && rec != nullptr) in.insert_or_assign(*number, *rec);
}

// status 1 and a record of zeros when there is none of that number.
template <class RECORD>
void fetch(const STORE<RECORD>& from, const std::int32_t* number, RECORD* rec, std::int32_t* status) {
  const auto found = number != nullptr ? from.find(*number) : from.end();
  const bool known = found != from.end();
  if (rec != nullptr) *rec = known ? found->second : RECORD{};
  if (status != nullptr) *status = known ? 0 : 1;
}

}  // namespace

void TARNIX_STORE_MATERIAL(const std::int32_t* number, const MATERIAL_RECORD* rec) { store(materials, number, rec); }

void TARNIX_STORE_SECTION_CLT(const std::int32_t* number, const CLT_SECTION_RECORD* rec) {
  store(composite_sections, number, rec);
}

void TARNIX_STORE_KCOLDFORM(const std::int32_t* type, const std::int32_t* flag) { store(cold_formed, type, flag); }

void ZelkMaterialGetRec(const std::int32_t* number, MATERIAL_RECORD* rec, std::int32_t* status) {
  fetch(materials, number, rec, status);
}

void ZelkSectionCLTGetRec(const std::int32_t* number, CLT_SECTION_RECORD* rec, std::int32_t* status) {
  fetch(composite_sections, number, rec, status);
}

void GET_KCOLDFORM(const std::int32_t* type, std::int32_t* flag) {
  std::int32_t stored = 0;
  fetch(cold_formed, type, &stored, nullptr);
  if (flag != nullptr) *flag = stored != 0 ? 1 : 0;
}

void tarnix::forget_materials() {
  materials.clear();
  composite_sections.clear();
  cold_formed.clear();
}
