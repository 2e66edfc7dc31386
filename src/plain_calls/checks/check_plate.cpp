// check_plate.cpp: finites_check_plate: blocks and records of a plate, and the fields of its entry.
#include "plain_calls/checks/check_plate.h"

#include <cmath>

#include "element_calls/plate_material_choice.h"
#include "finites/fields.h"
#include "finites/services.h"

#pragma weak TARNIX_EXCHANGE_AREA

namespace {

constexpr std::int64_t LAST_OF_ENTRY = PLASTIC_SWITCH;
constexpr std::int64_t LAST_OF_HEADER = ENTRY_STRIDE;
constexpr double FULL_TURN = 6.2832;

// The index by which the library finds the records of a plate. False where PLATE_OF_ELEM does not have the element.
bool find_plate(CHECK& check, CHECKED_PLATE& p) {
  const auto& of_elem = SOLANAELEM.PLATE_OF_ELEM;
  p.plate = check.elem();
  if (!ALLOCATED(of_elem)) return true;
  const std::int32_t* const plate = required_record(check, of_elem, check.elem(), "PLATE_OF_ELEM");
  if (plate == nullptr) return false;
  p.plate = *plate;
  return true;
}

void check_node_count(CHECK& check, CHECKED_PLATE& p) {
  const std::int32_t count = p.record->NODE_COUNT;
  p.three_nodes = count == 3;
  if (count != 3 && count != 4) {
    check.find(ERROR, FINITES_FOUND_NODE_COUNT, record_field("NODE_COUNT", "PLATE_RECORDS", p.plate, count),
               "a quadrilateral is made of three nodes and the origin, the matrix is wrong or NaN; set it to 3 or 4");
    return;
  }
  const SUBJECT of_block = check.field(p.entry, NAMED(BLOCK_NODE_COUNT));
  if ((TRUNCATED(of_block.value) == 3) == p.three_nodes && std::isfinite(of_block.value)) return;
  check.find(WARNING, FINITES_FOUND_NODE_COUNTS_DIFFER,
             SENTENCE() << of_block.name.text() << " is " << of_block.value << ", NODE_COUNT of the plate record "
                        << std::int64_t{count} << ": INFO_FINITES takes the plate for one of "
                        << (p.three_nodes ? "four" : "three") << " nodes; set both to the same");
}

// Formulation, angle, mass factor. What INTEGER makes of NaN is 0, the thick shell.
void check_entry(CHECK& check, CHECKED_PLATE& p) {
  const SUBJECT formulation = check.field(p.entry, NAMED(FORMULATION));
  p.formulation = TRUNCATED(formulation.value);
  const std::int32_t kind = element_kind(p.three_nodes, p.formulation);
  p.membrane = kind == KIND_TRI_MEMBRANE || kind == KIND_QUAD_MEMBRANE;
  p.thick = kind == KIND_TRI_THICK || kind == KIND_QUAD_THICK;
  if (check.finite(formulation) && p.thick && formulation.value != FORMULATION_THICK) {
    check.find(NOTE, FINITES_FOUND_FORMULATION, formulation,
               "no formulation of fields.h, the plate is a thick shell; set it to 0, 1, 2, 3, 98 or 99");
  }
  const SUBJECT angle = check.field(p.entry, NAMED(ORTHO_ANGLE_IN));
  if (std::isfinite(angle.value) && std::fabs(angle.value) > FULL_TURN) {
    check.find(WARNING, FINITES_FOUND_ANGLE, angle, "more than a full turn; the angle is in radians, not in degrees");
  }
  const SUBJECT mass = check.field(p.entry, NAMED(MASS_FACTOR));
  check.above_zero(mass, FINITES_FOUND_MASS_FACTOR, WARNING, "operation 2 gives a mass of zero; set it to 1");
}

// Offsets that are there but not read.
void check_offsets(CHECK& check, const CHECKED_PLATE& p) {
  const SUBJECT on = check.field(p.entry, NAMED(OFFSET_SWITCH));
  bool by_node = false, common = false;
  for (int i = 1; i <= 3; ++i) {
    for (int m = 1; m <= (p.three_nodes ? 3 : 4); ++m) by_node |= std::fabs(p.record->NODE_OFFSETS(m, i)) > 0.0;
    common |= std::fabs(check.A(p.entry.start + COMMON_OFFSET + i - 1)) > 0.0;
  }
  const bool reads_nodes = ALLOCATED(SOLANAELEM.PLATE_OF_ELEM);
  if (!(on.value >= 1.0)) {
    if (!(reads_nodes ? by_node : common)) return;
    check.find(WARNING, FINITES_FOUND_OFFSETS, on, "the offsets of this plate are not read; set it to 1 for them");
  } else if (by_node && !reads_nodes) {
    check.find(WARNING, FINITES_FOUND_OFFSETS,
               SENTENCE() << "NODE_OFFSETS of the plate record are not read, since PLATE_OF_ELEM is not allocated: all "
                             "nodes have A(k + COMMON_OFFSET); allocate PLATE_OF_ELEM, or fill that");
  } else if (!by_node && common && reads_nodes) {
    check.find(WARNING, FINITES_FOUND_OFFSETS,
               SENTENCE() << "A(k + COMMON_OFFSET) is not read, since PLATE_OF_ELEM is allocated: the offsets are "
                             "NODE_OFFSETS of the plate record, which are 0; fill those");
  }
}

// Operations 3, 33, 5 and 7 exchange their vectors there.
void check_exchange_area(CHECK& check) {
  if (TARNIX_EXCHANGE_AREA != nullptr && TARNIX_EXCHANGE_AREA() != nullptr) return;
  const SUBJECT base = check.field(HEADER, NAMED(RES_BASE));
  const std::int64_t start = TRUNCATED(base.value);
  if (start >= 1 && start + EXCHANGE_LENGTH - 1 <= check.A.length()) {
    if (start > LAST_OF_HEADER) return;
    check.find(WARNING, FINITES_FOUND_EXCHANGE_AREA, base,
               "the exchange area lies on the header of A, which operations 3, 33 and 5 overwrite; set it beyond");
    return;
  }
  check.find(ERROR, FINITES_FOUND_EXCHANGE_AREA, base,
             "operations 3, 33, 5 and 7 read and write 768 reals from there, which A does not have; set RES_BASE or "
             "call TARNIX_SET_EXCHANGE_AREA");
}

// Stiffnesses of a second-order analysis hold the geometric part of the stored forces, except on the very first pass.
void check_stored_forces(CHECK& check, const CHECKED_PLATE& p) {
  const bool first_pass = check.A.INTEGER(ANALYSIS_STATE) == 1 && check.A.INTEGER(STEP_COUNTER) == 0;
  if (check.A.INTEGER(SECOND_ORDER) != GEOMETRIC_ADDED || first_pass) return;
  if (optional_record(check, SOLANAELEM.PLATE_STATE, p.plate, "SOLANAELEM.PLATE_STATE") != nullptr) return;
  check.find(WARNING, FINITES_FOUND_NO_STORED_FORCES,
             SENTENCE() << "A(SECOND_ORDER) is 1, but SOLANAELEM.PLATE_STATE(" << std::int64_t{p.plate}
                        << ") is not there: the stiffness has no geometric part; allocate it and fill "
                           "STORED_NODAL_FORCES");
}

void check_records(CHECK& check, CHECKED_PLATE& p) {
  if (!find_plate(check, p)) return;
  const PLATE_RECORD* const record = required_record(check, SOLANAELEM.PLATE_RECORDS, p.plate, "PLATE_RECORDS");
  if (record == nullptr) return;
  p.record = record;
  check_node_count(check, p);
  check_entry(check, p);
  check_offsets(check, p);
  check_exchange_area(check);
  check_stored_forces(check, p);
  check_plate_shape(check, p);

  const SUBJECT section = record_field("SECTION_PTR", "PLATE_RECORDS", p.plate, record->SECTION_PTR);
  const SUBJECT material = record_field("MATERIAL_PTR", "PLATE_RECORDS", p.plate, record->MATERIAL_PTR);
  const bool has_section = check.has_block(section, SECTION_THICKNESS, "section block");
  const bool has_material = check.has_block(material, MATERIAL_SHEAR_MODULUS, "material block");
  if (!has_section || !has_material) return;
  p.section = {"sec", record->SECTION_PTR};
  p.material = {"mat", record->MATERIAL_PTR};
  check_plate_material(check, p);
}

}  // namespace

std::int32_t finites_check_plate(std::int32_t elem, std::int32_t k, const double* A, std::int64_t n,
                                 finites_finding* findings, std::int32_t capacity) {
  CHECK check(A, n, findings, capacity);
  check.begin(elem, 0);
  if (check.A.length() < LAST_OF_HEADER) {
    check.find(ERROR, FINITES_FOUND_NO_MODEL_DATA,
               SENTENCE() << "MODEL_DATA is missing or shorter than its header of " << LAST_OF_HEADER
                          << " reals: the library reads beyond it or crashes; pass the array and its length");
    return check.count();
  }
  const SUBJECT start{SENTENCE() << "k, the start of the block of the plate,", static_cast<double>(k)};
  if (!check.has_block(start, LAST_OF_ENTRY, "block of the plate")) return check.count();
  check.begin(elem, check.A.INTEGER(k + std::int64_t{ELEM_ID}));
  CHECKED_PLATE plate;
  plate.entry = {"k", k};
  check_records(check, plate);
  return check.count();
}
