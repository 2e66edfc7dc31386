// plate_model.cpp: the layout of a test model and the calls of FINITES on it.
#include "plate_model.h"

#include <algorithm>
#include <limits>

#include "finites/fields.h"
#include "finites/finites.h"
#include "tarnix.h"

namespace support {

namespace {

constexpr std::int32_t HEADER_LENGTH = 120;
constexpr std::int32_t EXCHANGE_LENGTH = 48 + 360 + 360;
constexpr std::int32_t ELEMENT_LENGTH = 70;
constexpr std::int32_t SECTION_LENGTH = 35;
constexpr std::int32_t MATERIAL_LENGTH = 10;
constexpr std::int32_t NODE_LENGTH = 10;
constexpr std::int32_t NODES_AN_ELEMENT = 4;

constexpr std::int32_t EXCHANGE_START = HEADER_LENGTH + 1;
constexpr std::int32_t BLOCK_START = EXCHANGE_START + EXCHANGE_LENGTH;  // k: the first field is A(k + 1)

std::int32_t storage_length(std::size_t elements) {
  return BLOCK_START + 1 +
         static_cast<std::int32_t>(elements) *
             (ELEMENT_LENGTH + SECTION_LENGTH + MATERIAL_LENGTH + NODES_AN_ELEMENT * NODE_LENGTH);
}

}  // namespace

plate_model::plate_model(const std::vector<plate_description>& elements)
    : descriptions_(elements),
      storage_(static_cast<std::size_t>(storage_length(elements.size())), std::numeric_limits<double>::quiet_NaN()),
      A_(storage_.data()),
      exchange_(EXCHANGE_START),
      sections_(BLOCK_START + 1 + static_cast<std::int32_t>(elements.size()) * ELEMENT_LENGTH),
      materials_(sections_ + static_cast<std::int32_t>(elements.size()) * SECTION_LENGTH),
      nodes_(materials_ + static_cast<std::int32_t>(elements.size()) * MATERIAL_LENGTH),
      plates_(elements.size()) {
  TARNIX_CLEAR();
  for (const int name : {NONLIN_MATERIAL, STEP_COUNTER, ANALYSIS_STATE, SECOND_ORDER}) A_(name) = 0.0;
  A_(RES_BASE) = exchange_;
  A_(ENTRY_START) = BLOCK_START;
  A_(ENTRY_STRIDE) = ELEMENT_LENGTH;
  std::fill_n(&A_(exchange_), EXCHANGE_LENGTH, 0.0);
  for (int elem = count(); elem >= 1; --elem) plate_of_elem_.push_back(elem);
  for (int elem = 1; elem <= count(); ++elem) {
    fill_element(elem);
    fill_plate(elem);
  }
  SOLANAELEM.PLATE_OF_ELEM = REFER_TO(plate_of_elem_.data(), count());
  refer_to_plates();
}

plate_model::~plate_model() { TARNIX_CLEAR(); }

std::int32_t plate_model::block(int elem) const { return BLOCK_START + (elem - 1) * ELEMENT_LENGTH; }

PLATE_RECORD& plate_model::plate(int elem) {
  return plates_[static_cast<std::size_t>(plate_of_elem_[static_cast<std::size_t>(elem - 1)] - 1)];
}

PLATE_STATE_RECORD& plate_model::state(int elem) {
  return states_.at(static_cast<std::size_t>(plate_of_elem_[static_cast<std::size_t>(elem - 1)] - 1));
}

void plate_model::refer_to_plates() {
  SOLANAELEM.PLATE_RECORDS = REFER_TO(plates_.data(), count());
  if (!states_.empty()) SOLANAELEM.PLATE_STATE = REFER_TO(states_.data(), count());
}

// The element block of MODEL_DATA.
void plate_model::fill_element(int elem) {
  const plate_description& description = at(elem);
  const std::int32_t k = block(elem);
  A_(k + ELEM_ID) = description.id != 0 ? description.id : 10 * elem;
  A_(k + MASS_FACTOR) = description.mass_factor;
  A_(k + BLOCK_NODE_COUNT) = static_cast<double>(description.nodes.size());
  A_(k + FORMULATION) = description.formulation;
  A_(k + OFFSET_SWITCH) = description.offset_switch;
  for (std::size_t i = 0; i < 3; ++i) {
    A_(k + COMMON_OFFSET + static_cast<std::int32_t>(i)) = description.common_offset[i];
  }
  A_(k + MODIFIER_MEMBRANE) = description.modifier_membrane;
  A_(k + MODIFIER_BENDING) = description.modifier_bending;
  A_(k + MODIFIER_SHEAR) = description.modifier_shear;
  A_(k + ORTHO_ANGLE_IN) = description.ortho_angle;
  A_(k + PLASTIC_SWITCH) = description.plastic_switch;
}

// The blocks that a plate record points to, the record, and what Tarnix stores by number.
void plate_model::fill_plate(int elem) {
  const plate_description& description = at(elem);
  const std::int32_t section = sections_ + (elem - 1) * SECTION_LENGTH;
  const std::int32_t material = materials_ + (elem - 1) * MATERIAL_LENGTH;
  const std::int32_t section_number = 1000 + elem;
  const std::int32_t material_number = 2000 + elem;
  A_(section + SECTION_NUMBER) = section_number;
  A_(section + SECTION_TYPE) = description.section_type;
  A_(section + SECTION_THICKNESS) = description.thickness;
  A_(material + MATERIAL_NUMBER) = material_number;
  A_(material + MATERIAL_YIELD_STRESS) = description.yield_stress;
  A_(material + MATERIAL_YOUNG) = description.young;
  A_(material + MATERIAL_POISSON) = description.poisson;
  A_(material + MATERIAL_UNIT_WEIGHT) = description.unit_weight;
  A_(material + MATERIAL_EXPANSION) = description.expansion;
  A_(material + MATERIAL_SHEAR_MODULUS) = description.shear_modulus != 0.0
                                              ? description.shear_modulus
                                              : description.young / (2.0 * (1.0 + description.poisson));

  PLATE_RECORD& record = plate(elem);
  record = PLATE_RECORD{};
  record.SECTION_PTR = section;
  record.MATERIAL_PTR = material;
  record.NODE_COUNT = static_cast<std::int32_t>(description.nodes.size());
  for (int m = 1; m <= record.NODE_COUNT; ++m) {
    const std::int32_t ptr = nodes_ + ((elem - 1) * NODES_AN_ELEMENT + m - 1) * NODE_LENGTH;
    record.NODE_PTR(m) = ptr;
    for (int i = 1; i <= 3; ++i) {
      A_(ptr + NODE_X + i - 1) = description.nodes[static_cast<std::size_t>(m - 1)][static_cast<std::size_t>(i - 1)];
    }
  }
  for (int m = 1; m <= 4; ++m) {
    for (int i = 1; i <= 3; ++i) {
      record.NODE_OFFSETS(m, i) = description.offsets[static_cast<std::size_t>(m - 1)][static_cast<std::size_t>(i - 1)];
    }
  }
  TARNIX_STORE_MATERIAL(&material_number, &description.material);
  if (description.section_type == COMPOSITE_SECTION) {
    TARNIX_STORE_SECTION_CLT(&section_number, &description.composite);
  }
}

void plate_model::allocate_state() {
  states_.assign(plates_.size(), PLATE_STATE_RECORD{});
  refer_to_plates();
}

void plate_model::deallocate_plate_of_elem() {
  std::reverse(plates_.begin(), plates_.end());
  std::reverse(states_.begin(), states_.end());
  std::reverse(plate_of_elem_.begin(), plate_of_elem_.end());
  SOLANAELEM.PLATE_OF_ELEM = {};
}

void plate_model::set_plate_material_code(int code) {
  const std::int32_t number = code;
  TARNIX_STORE_KNLMATERIAL_PLATE(&number);
}

void plate_model::set_stiffness_factors(const std::vector<std::int32_t>& ids, const std::vector<float>& factors,
                                        int stride) {
  const std::int64_t listed = static_cast<std::int64_t>(ids.size());
  stiff_list_.assign(ids.size() * static_cast<std::size_t>(stride), std::numeric_limits<std::int32_t>::max());
  for (std::size_t i = 0; i < ids.size(); ++i) stiff_list_[i * static_cast<std::size_t>(stride)] = ids[i];
  stiff_factors_ = factors;
  SOLANA.STIFF_LIST_COUNT = static_cast<std::int32_t>(listed);
  SOLANA.STIFF_LIST =
      REFER_TO_SECTION(stiff_list_.data(), listed, stride * static_cast<std::int64_t>(sizeof(std::int32_t)));
  SOLANA.STIFF_FACTORS = REFER_TO(stiff_factors_.data(), 2, listed);
  SOLPARAM_RECORD parameters{};
  parameters.STIFF_REDUCTION_ON = 1;
  TARNIX_STORE_SOLPARAM(&parameters);
}

void plate_model::set_displacements(const std::vector<double>& u) {
  std::fill_n(displacements(), 24, 0.0);
  std::copy_n(u.begin(), std::min<std::size_t>(u.size(), 24), displacements());
}

int plate_model::call(int op, int elem, double* data, double* forces, double* matrix) {
  std::int32_t code = op;
  const std::int32_t element = elem, k = block(elem), n = extent();
  FINITES(&code, &element, &k, storage_.data(), &n, data, forces, matrix);
  return code;
}

std::vector<double> plate_model::matrix(int op, int elem) {
  std::array<double, 12> data{};
  std::array<double, 24> forces{};
  std::array<double, 24 * 24> full{};
  call(op, elem, data.data(), forces.data(), full.data());
  const std::size_t n = static_cast<std::size_t>(order(elem));
  std::vector<double> packed(n * n);
  for (std::size_t j = 0; j < n; ++j) std::copy_n(&full[24 * j], n, &packed[n * j]);
  return packed;
}

std::vector<double> plate_model::internal_forces(int elem, const std::vector<double>& u, int op) {
  std::array<double, 12> data{};
  std::array<double, 24> forces{};
  std::array<double, 24 * 24> full{};
  set_displacements(u);
  call(op, elem, data.data(), forces.data(), full.data());
  return std::vector<double>(exchange_forces(), exchange_forces() + order(elem));
}

std::vector<double> plate_model::loads(int op, int elem, const std::vector<double>& data) {
  std::array<double, 12> parameters{};
  std::array<double, 24> forces{};
  std::array<double, 24 * 24> full{};
  std::copy_n(data.begin(), std::min(data.size(), parameters.size()), parameters.begin());
  call(op, elem, parameters.data(), forces.data(), full.data());
  return std::vector<double>(forces.begin(), forces.begin() + order(elem));
}

plate_results plate_model::results(int elem, const std::vector<double>& u, double change, double difference) {
  std::array<double, 12> data{change, difference};
  std::array<double, 24> forces{};
  std::array<double, 24 * 24> full{};
  set_displacements(u);
  call(5, elem, data.data(), forces.data(), full.data());
  const double* nodes = &A_(exchange_ + EXCHANGE_NODES);
  const double* points = &A_(exchange_ + EXCHANGE_POINTS);
  return {std::vector<double>(nodes, nodes + 360), std::vector<double>(points, points + 360)};
}

}  // namespace support
