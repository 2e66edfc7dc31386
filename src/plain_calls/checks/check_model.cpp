// check_model.cpp: finites_check_model: header, records and parameters that elements share, then each element.
#include <algorithm>
#include <iterator>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/services.h"
#include "plain_calls/checks/findings.h"

namespace {

// A switch of the header with its values.
void check_switch(CHECK& check, const FIELD_NAME& name, const char* effect, bool known) {
  const SUBJECT value = check.field(HEADER, name);
  if (check.finite(value) && !known) check.find(NOTE, FINITES_FOUND_SWITCH, value, effect);
}

void check_header(CHECK& check) {
  const auto of = [&check](std::int32_t name) { return check.A.INTEGER(name); };
  const std::int32_t order = of(SECOND_ORDER);
  check_switch(check, NAMED(SECOND_ORDER), "a linear analysis, as 0 is",
               order == 0 || order == GEOMETRIC_ADDED || order == GEOMETRIC_APART);
  check_switch(check, NAMED(NONLIN_MATERIAL), "no material yields, as with 0",
               of(NONLIN_MATERIAL) == 0 || of(NONLIN_MATERIAL) == 1);
  check_switch(check, NAMED(SHEAR_DEFORMATION), "beams do not deform in shear, as with 0",
               of(SHEAR_DEFORMATION) == 0 || of(SHEAR_DEFORMATION) == 1);
  check_switch(check, NAMED(ANALYSIS_STATE), "no nonlinear run is in progress, as with 0",
               of(ANALYSIS_STATE) == 0 || of(ANALYSIS_STATE) == 1);
  check_switch(check, NAMED(STEP_COUNTER), "steps count from 0", of(STEP_COUNTER) >= 0);
}

// Switches of the header with those of the common library.
void check_parameters(CHECK& check) {
  std::int32_t plates = 0, members = 0;
  ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE(&plates);
  ZELKU_SOLPARAM_GET_KNLMATERIAL_MEMBER(&members);
  const bool nonlinear = check.A.INTEGER(NONLIN_MATERIAL) == 1;
  if (plates < PLATE_MODEL_NONE || plates > PLATE_MODEL_LAYERED) {
    check.find(WARNING, FINITES_FOUND_SWITCH,
               SENTENCE() << "the plate model is " << std::int64_t{plates}
                          << ": TARNIX_STORE_KNLMATERIAL_PLATE takes 0 none, 1 whole-section, 2 layered");
  } else if (plates != PLATE_MODEL_NONE && !nonlinear) {
    check.find(NOTE, FINITES_FOUND_SWITCH,
               SENTENCE() << "a plate model is stored, but A(NONLIN_MATERIAL) is not 1: plates are elastic");
  }
  if (members == 1 && check.A.INTEGER(SECOND_ORDER) != GEOMETRIC_ADDED) {
    check.find(WARNING, FINITES_FOUND_SWITCH,
               SENTENCE() << "members yield (TARNIX_STORE_KNLMATERIAL_MEMBER 1), but A(SECOND_ORDER) is not 1: hinges "
                             "have no effect; set it to 1, with AXIAL_FORCE 0 for a first-order analysis");
  }
}

// An array without elements needs no address.
template <class T, int RANK>
void check_array(CHECK& check, const ARRAY_REFERENCE<T, RANK>& array, const char* name) {
  const bool empty = std::any_of(std::begin(array.DIMENSION), std::end(array.DIMENSION),
                                 [](const ARRAY_DIMENSION& d) { return d.EXTENT <= 0; });
  if (empty || ALLOCATED(array) == (array.BASE != nullptr)) return;
  check.find(ALLOCATED(array) ? ERROR : WARNING, FINITES_FOUND_RECORD_FLAG,
             SENTENCE() << name
                        << (ALLOCATED(array) ? " has the flag 1 but no address: the process crashes where it is read"
                                             : " has an address but the flag 0: it is mostly not read")
                        << "; fill it by REFER_TO or FINITES_REFER_1, _2, _3");
}

void check_arrays(CHECK& check) {
  const SOLANAELEM_RECORD& S = SOLANAELEM;
  check_array(check, S.ELEM_POS, "SOLANAELEM.ELEM_POS");
  check_array(check, S.PLATE_OF_ELEM, "SOLANAELEM.PLATE_OF_ELEM");
  check_array(check, S.SOLID_POS, "SOLANAELEM.SOLID_POS");
  check_array(check, S.MEMBER_REC, "SOLANAELEM.MEMBER_REC");
  check_array(check, S.MEMBER_FORCES, "SOLANAELEM.MEMBER_FORCES");
  check_array(check, S.SPRING_NL_REC, "SOLANAELEM.SPRING_NL_REC");
  check_array(check, S.HINGE_REC, "SOLANAELEM.HINGE_REC");
  check_array(check, S.PLATE_RECORDS, "SOLANAELEM.PLATE_RECORDS");
  check_array(check, S.PLATE_STATE, "SOLANAELEM.PLATE_STATE");
  check_array(check, S.SOLID_REC, "SOLANAELEM.SOLID_REC");
  check_array(check, S.SOLID_NL_REC, "SOLANAELEM.SOLID_NL_REC");
  check_array(check, S.ALT_STATE, "SOLANAELEM.ALT_STATE");
  check_array(check, SOLANA.STIFF_LIST, "SOLANA.STIFF_LIST");
  check_array(check, SOLANA.STIFF_FACTORS, "SOLANA.STIFF_FACTORS");
  check_array(check, SOLANA.STIFF_REDUCTION, "SOLANA.STIFF_REDUCTION");
}

// The list of stiffness factors is searched by halves.
void check_stiffness_list(CHECK& check) {
  const auto& list = SOLANA.STIFF_LIST;
  if (SOLANA.STIFF_LIST_COUNT <= 0 || !ALLOCATED(list) || list.BASE == nullptr) return;
  const ARRAY_DIMENSION& d = list.DIMENSION[0];
  if (d.EXTENT < SOLANA.STIFF_LIST_COUNT) {
    check.find(WARNING, FINITES_FOUND_STIFF_LIST,
               SENTENCE() << "STIFF_LIST_COUNT is " << std::int64_t{SOLANA.STIFF_LIST_COUNT} << ", STIFF_LIST has "
                          << d.EXTENT << " entries: only those are searched");
  }
  for (std::int64_t i = 1; i < std::min<std::int64_t>(d.EXTENT, SOLANA.STIFF_LIST_COUNT); ++i) {
    if (list(d.LOWER + i - 1) < list(d.LOWER + i)) continue;
    check.find(WARNING, FINITES_FOUND_STIFF_LIST,
               SENTENCE() << "STIFF_LIST does not ascend at its entry " << i + 1
                          << ": elements are not found in it; sort it, with the columns of STIFF_FACTORS");
    return;
  }
}

void check_entry_table(CHECK& check, std::int32_t count) {
  const SUBJECT start = check.field(HEADER, NAMED(ENTRY_START));
  const SUBJECT stride = check.field(HEADER, NAMED(ENTRY_STRIDE));
  const bool starts = check.above_zero(start, FINITES_FOUND_ENTRY_TABLE, WARNING,
                                       "INFO_FINITES and hinges find no entry; set it to the entry of element 1");
  if (count < 2 || !starts) return;
  check.above_zero(stride, FINITES_FOUND_ENTRY_TABLE, WARNING,
                   "every element has the entry of the first for INFO_FINITES and hinges; set it to the distance of "
                   "entries");
}

std::int32_t check_element(std::int32_t kind, std::int32_t elem, std::int64_t entry, const GUARDED_DATA& A,
                           finites_finding* to, std::int32_t room) {
  const double* const a = A.address(1);
  const std::int32_t at = TRUNCATED(static_cast<double>(entry));
  switch (kind) {
    case FINITES_ELEMENT_NONE: return 0;
    case FINITES_ELEMENT_PLATE: return finites_check_plate(elem, at, a, A.length(), to, room);
    case FINITES_ELEMENT_SOLID: return finites_check_solid(elem, a, A.length(), to, room);
    default: return finites_check_member(kind, elem, at, a, A.length(), to, room);
  }
}

}  // namespace

std::int32_t finites_check_model(const std::int32_t* kinds, std::int32_t count, const double* A, std::int64_t n,
                                 finites_finding* findings, std::int32_t capacity) {
  CHECK check(A, n, findings, capacity);
  if (check.A.length() < ENTRY_STRIDE) {
    check.find(ERROR, FINITES_FOUND_NO_MODEL_DATA,
               SENTENCE() << "MODEL_DATA is missing or shorter than its header of " << std::int64_t{ENTRY_STRIDE}
                          << " reals: the library reads beyond it or crashes; pass the array and its length");
    return check.count();
  }
  check_header(check);
  check_parameters(check);
  check_arrays(check);
  check_stiffness_list(check);
  check_entry_table(check, count);
  std::int32_t total = check.count();
  const std::int64_t start = check.A.INTEGER(ENTRY_START), stride = check.A.INTEGER(ENTRY_STRIDE);
  for (std::int32_t elem = 1; kinds != nullptr && elem <= count; ++elem) {
    const std::int32_t room = findings == nullptr ? 0 : std::max(capacity - total, 0);
    finites_finding* const to = room > 0 ? findings + total : nullptr;
    total += check_element(kinds[elem - 1], elem, start + (elem - 1) * stride, check.A, to, room);
  }
  return total;
}
