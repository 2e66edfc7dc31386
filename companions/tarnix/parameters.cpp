// parameters.cpp: the solution parameters. All are zero until the solver stores them.
#include <cstdint>

#include "stores.h"
#include "tarnix.h"

namespace {

SOLPARAM_RECORD solution_parameters{};
std::int32_t plate_material_code = 0;
std::int32_t member_material_flag = 0;

template <class VALUE>
void copy(const VALUE* from, VALUE* to) {
  if (from != nullptr && to != nullptr) *to = *from;
}

}  // namespace

void TARNIX_STORE_SOLPARAM(const SOLPARAM_RECORD* rec) { copy(rec, &solution_parameters); }
void TARNIX_STORE_KNLMATERIAL_PLATE(const std::int32_t* code) { copy(code, &plate_material_code); }
void TARNIX_STORE_KNLMATERIAL_MEMBER(const std::int32_t* flag) { copy(flag, &member_material_flag); }

void ZelkuSolParamGetRec(SOLPARAM_RECORD* rec) { copy(&solution_parameters, rec); }
void ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE(std::int32_t* code) { copy(&plate_material_code, code); }
void ZELKU_SOLPARAM_GET_KNLMATERIAL_MEMBER(std::int32_t* flag) { copy(&member_material_flag, flag); }

void tarnix::forget_parameters() {
  solution_parameters = SOLPARAM_RECORD{};
  plate_material_code = 0;
  member_material_flag = 0;
}
