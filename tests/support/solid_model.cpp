// solid_model.cpp: the layout of a model of solids and the calls on it.
#include "solid_model.h"

#include <algorithm>
#include <limits>

#include "finites/fields.h"
#include "finites/finites.h"
#include "tarnix.h"

namespace support {

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

constexpr int ROOM = 9;  // nodes of a record
constexpr std::int32_t HEADER_LENGTH = 223;
constexpr std::int32_t ENTRY_LENGTH = 13;
constexpr std::int32_t MATERIAL_LENGTH = 9;
constexpr std::int32_t NODE_LENGTH = 17;
constexpr std::int32_t EQUATION_PLACES = 7;
constexpr std::int32_t RESULT_PLACES = 8;
constexpr std::int32_t JOINT_LENGTH = EQUATION_PLACES + RESULT_PLACES * solid_model::LOAD_CASE_COUNT;
constexpr std::int32_t ELEMENT_LENGTH = ENTRY_LENGTH + MATERIAL_LENGTH + ROOM * (NODE_LENGTH + JOINT_LENGTH);
constexpr std::int32_t NODELESS_BLOCK = HEADER_LENGTH - NODE_LENGTH;  // of NaN
constexpr int MATRIX_ROWS = 24;

std::int32_t integer(std::size_t count) { return static_cast<std::int32_t>(count); }

template <int M, int N>
void overwrite(MATRIX<M, N>& values) {
  std::fill_n(values.data(), M * N, NOT_A_NUMBER);
}

SOLID_RECORD unused_record() {
  SOLID_RECORD record{};
  record.ELEM_NO = record.NNODE = -1000;
  record.STIFF_FACTOR = std::numeric_limits<float>::quiet_NaN();
  for (std::int32_t& offset : record.NODE_OFF.V) offset = NODELESS_BLOCK;
  record.MAT_OFF = NODELESS_BLOCK;
  overwrite(record.U_ELEM);
  overwrite(record.F_ELEM);
  overwrite(record.RES50_NODE);
  overwrite(record.RES50_GAUSS);
  return record;
}

}  // namespace

solid_model::solid_model(const std::vector<solid_description>& elements, company with)
    : with_(with),
      descriptions_(elements),
      storage_(static_cast<std::size_t>(HEADER_LENGTH) + elements.size() * static_cast<std::size_t>(ELEMENT_LENGTH),
               NOT_A_NUMBER),
      A_(storage_.data()),
      records_(2 * elements.size() + 1, unused_record()) {
  if (with_ == company::alone) TARNIX_CLEAR();
  set_header(STEP_COUNTER, 0.0);
  set_header(ANALYSIS_STATE, 0.0);
  set_header(SECOND_ORDER, 0.0);
  const std::int32_t joints = HEADER_LENGTH + count() * (ELEMENT_LENGTH - ROOM * JOINT_LENGTH);
  set_header(EQUATION_TABLE, joints);
  set_header(LOAD_CASES, LOAD_CASE_COUNT);
  set_header(JOINT_RESULTS, joints + count() * ROOM * EQUATION_PLACES);
  std::fill(storage_.begin() + joints, storage_.end(), 0.0);
  for (int elem = 1; elem <= count(); ++elem) {
    solid_pos_.push_back(position(elem));
    fill_blocks(elem);
    fill_record(elem);
  }
  SOLANAELEM.SOLID_POS = REFER_TO(solid_pos_.data(), solid_pos_.size());
  SOLANAELEM.SOLID_REC = REFER_TO(records_.data(), records_.size());
}

solid_model::~solid_model() {
  if (with_ == company::alone) TARNIX_CLEAR();
}

std::int32_t solid_model::entry(int elem) const {
  return HEADER_LENGTH + (elem - 1) * (ELEMENT_LENGTH - ROOM * JOINT_LENGTH);
}
std::int32_t solid_model::material(int elem) const { return entry(elem) + ENTRY_LENGTH; }
std::int32_t solid_model::node_block(int elem, int node) const {
  return material(elem) + MATERIAL_LENGTH + (node - 1) * NODE_LENGTH;
}
std::int32_t solid_model::joint(int elem, int node) const { return (count() - elem) * ROOM + ROOM + 1 - node; }
std::int32_t solid_model::number(int elem) const { return at(elem).id != 0 ? at(elem).id : 10 * elem + 7; }
std::int32_t solid_model::joint_results(int joint, int load) const {
  return A_.INTEGER(JOINT_RESULTS) + ((joint - 1) * LOAD_CASE_COUNT + load - 1) * RESULT_PLACES;
}

void solid_model::fill_blocks(int elem) {
  const solid_description& d = at(elem);
  A_(entry(elem)) = SOLID_CODE;
  A_(material(elem) + MATERIAL_YOUNG) = d.young;
  A_(material(elem) + MATERIAL_POISSON) = d.poisson;
  A_(material(elem) + MATERIAL_UNIT_WEIGHT) = d.unit_weight;
  for (int k = 1; k <= std::min(nodes(elem), ROOM); ++k) {
    const point& node = d.nodes[static_cast<std::size_t>(k - 1)];
    for (int i = 0; i < 3; ++i) A_(node_block(elem, k) + NODE_X + i) = node[static_cast<std::size_t>(i)];
    A_(node_block(elem, k) + NODE_JOINT) = joint(elem, k);
  }
}

void solid_model::fill_record(int elem) {
  SOLID_RECORD& r = record(elem);
  r.ELEM_NO = number(elem);
  r.MAT_OFF = material(elem);
  r.NNODE = nodes(elem);
  r.STIFF_FACTOR = at(elem).stiff_factor;
  for (int k = 1; k <= std::min(nodes(elem), ROOM); ++k) r.NODE_OFF(k) = node_block(elem, k);
}

void solid_model::allocate_nonlinear() {
  nonlinear_.assign(records_.size(), SOLID_NL_RECORD{});
  SOLANAELEM.SOLID_NL_REC = REFER_TO(nonlinear_.data(), nonlinear_.size());
}

void solid_model::set_equations(int elem, int node, const std::array<double, 6>& equations) {
  const std::int32_t before = A_.INTEGER(EQUATION_TABLE) + (joint(elem, node) - 1) * EQUATION_PLACES;
  for (int j = 0; j < 6; ++j) A_(before + 1 + j) = equations[static_cast<std::size_t>(j)];
}

void solid_model::set_displacements(int elem, const std::vector<double>& u) {
  overwrite(record(elem).U_ELEM);
  std::copy(u.begin(), u.end(), record(elem).U_ELEM.data());
}

solid_status solid_model::call(int op, int elem, int node_count, const double* G, double* F, double* K) {
  const std::int32_t OP = op, IELEM = elem, NDIM = extent(), NN = node_count;
  const std::int32_t IOFF = elem >= 1 && elem <= count() ? entry(elem) : 0;
  solid_status status{-1, std::string(500, '~')};
  FINITES_SOLID_3D(&OP, &IELEM, &IOFF, storage_.data(), &NDIM, G, F, &NN, K, &status.ierr, status.msg.data());
  return status;
}

std::vector<double> solid_model::matrix(int op, int elem) {
  const double G[3] = {NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER};
  double F[3 * ROOM];
  std::vector<double> K(MATRIX_ROWS * MATRIX_ROWS, NOT_A_NUMBER);
  call(op, elem, nodes(elem), G, F, K.data());
  std::vector<double> packed;
  for (int j = 0; j < order(elem); ++j) {
    for (int i = 0; i < order(elem); ++i) packed.push_back(K[static_cast<std::size_t>(MATRIX_ROWS * j + i)]);
  }
  return packed;
}

std::vector<double> solid_model::forces(int op, int elem, const std::vector<double>& u) {
  set_displacements(elem, u);
  overwrite(record(elem).F_ELEM);
  const double G[3] = {NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER};
  call(op, elem, nodes(elem), G, nullptr, nullptr);
  const double* F = record(elem).F_ELEM.data();
  return std::vector<double>(F, F + order(elem));
}

std::vector<double> solid_model::body_load(int elem, const point& G) {
  std::vector<double> F(static_cast<std::size_t>(order(elem)), NOT_A_NUMBER);
  call(41, elem, nodes(elem), G.data(), F.data(), nullptr);
  return F;
}

solid_status solid_model::results(int elem, const std::vector<double>& u) {
  set_displacements(elem, u);
  overwrite(record(elem).RES50_NODE);
  overwrite(record(elem).RES50_GAUSS);
  const double G[3] = {NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER};
  return call(5, elem, nodes(elem), G, nullptr, nullptr);
}

solid_answer solid_model::answer(int elem, const std::vector<double>& U) {
  const std::size_t n = static_cast<std::size_t>(nodes(elem));
  solid_answer out{std::vector<double>(50 * n, NOT_A_NUMBER),
                   std::vector<double>(6 * n, NOT_A_NUMBER),
                   std::vector<double>(3 * n, NOT_A_NUMBER),
                   {-1, std::string(500, '~')}};
  const std::int32_t IELEM = elem, IOFF = entry(elem), ISPARE = -77, NDIM = extent(), NN = integer(n);
  GET_ELEM3D(&IELEM, &IOFF, &ISPARE, storage_.data(), &NDIM, &NN, out.RES.data(), out.S.data(), U.data(), out.FG.data(),
             &out.status.ierr, out.status.msg.data());
  return out;
}

}  // namespace support
