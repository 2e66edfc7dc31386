// builders.cpp: blocks of MODEL_DATA and the records of plates, members and solids, filled with what most need.
#include "finites/builders.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <initializer_list>

#include "finites/views.hpp"

namespace {

// Sine of the angle between a member and its up direction below which the plane of the two is left to rounding.
constexpr double LEAST_ASIDE = 1e-9;

double isotropic_shear_modulus(double E, double nu) { return E / (2.0 * (1.0 + nu)); }

// A(start + name) := value for each name.
void set(double* A, std::int64_t start, std::initializer_list<std::int32_t> names, double value) {
  const MODEL_DATA fields(A);
  for (const std::int32_t name : names) fields(start + name) = value;
}

void refer_to_nodes(std::int32_t* to, const std::int32_t* ptr, std::int32_t count) {
  if (ptr != nullptr) std::copy_n(ptr, count, to);
}

}  // namespace

void finites_fill_header(double* A, std::int32_t exchange, std::int32_t entry_start, std::int32_t entry_stride) {
  if (A == nullptr) return;
  set(A, 0, {NONLIN_MATERIAL, STEP_COUNTER, ANALYSIS_STATE, SECOND_ORDER}, 0.0);
  set(A, 0, {SHEAR_DEFORMATION}, 1.0);
  set(A, 0, {RES_BASE}, exchange);
  set(A, 0, {ENTRY_START}, entry_start);
  set(A, 0, {ENTRY_STRIDE}, entry_stride);
}

void finites_fill_node_block(double* A, std::int32_t ptr, double x, double y, double z) {
  if (A == nullptr) return;
  set(A, ptr, {NODE_X}, x);
  set(A, ptr, {NODE_X + 1}, y);
  set(A, ptr, {NODE_X + 2}, z);
  set(A, ptr, {NODE_LOCAL_AXES}, 0.0);
}

void finites_fill_plate_block(double* A, std::int32_t k, std::int32_t number, std::int32_t nodes,
                              std::int32_t formulation) {
  if (A == nullptr) return;
  set(A, k, {ELEM_ID}, number);
  set(A, k, {BLOCK_NODE_COUNT}, nodes);
  set(A, k, {FORMULATION}, formulation);
  set(A, k, {MASS_FACTOR, MODIFIER_MEMBRANE, MODIFIER_BENDING, MODIFIER_SHEAR}, 1.0);
  set(A, k, {OFFSET_SWITCH, COMMON_OFFSET, COMMON_OFFSET + 1, COMMON_OFFSET + 2, ORTHO_ANGLE_IN, PLASTIC_SWITCH}, 0.0);
}

void finites_fill_section_of_plate(double* A, std::int32_t sec, std::int32_t number, double thickness) {
  if (A == nullptr) return;
  set(A, sec, {SECTION_NUMBER}, number);
  set(A, sec, {SECTION_TYPE}, HOMOGENEOUS_SECTION);
  set(A, sec, {SECTION_THICKNESS}, thickness);
}

void finites_fill_material_of_plate(double* A, std::int32_t mat, std::int32_t number, double E, double nu,
                                    double unit_weight) {
  if (A == nullptr) return;
  set(A, mat, {MATERIAL_NUMBER}, number);
  set(A, mat, {MATERIAL_YIELD_STRESS, MATERIAL_EXPANSION}, 0.0);
  set(A, mat, {MATERIAL_YOUNG}, E);
  set(A, mat, {MATERIAL_POISSON}, nu);
  set(A, mat, {MATERIAL_UNIT_WEIGHT}, unit_weight);
  set(A, mat, {MATERIAL_SHEAR_MODULUS}, isotropic_shear_modulus(E, nu));
}

void finites_fill_plate_record(PLATE_RECORD* record, std::int32_t sec, std::int32_t mat, std::int32_t nodes,
                               const std::int32_t* node_ptr) {
  if (record == nullptr) return;
  *record = PLATE_RECORD{};
  record->SECTION_PTR = sec;
  record->MATERIAL_PTR = mat;
  record->NODE_COUNT = nodes;
  refer_to_nodes(record->NODE_PTR.data(), node_ptr, std::clamp(nodes, 0, 4));
}

void finites_fill_section_state(PLATE_STATE_RECORD* state, double* memory) {
  if (state == nullptr || memory == nullptr) return;
  constexpr int P = 4;
  std::fill_n(memory, FINITES_SECTION_STATE_REALS, 0.0);
  *state = PLATE_STATE_RECORD{};
  const auto take = [&memory](int count) {
    double* const place = memory;
    memory += count;
    return place;
  };
  for (auto* const field : {&state->SEC_EP_START, &state->SEC_EP_CUR, &state->SEC_EP_INC}) {
    *field = REFER_TO(take(12 * P), 12, P);
  }
  for (auto* const field : {&state->SEC_EPBAR_START, &state->SEC_EPBAR_CUR, &state->SEC_CURV_INC, &state->SEC_AUX,
                            &state->SEC_SIGN_CUR, &state->SEC_SIGN_START}) {
    *field = REFER_TO(take(P), P);
  }
  state->SEC_TANGENT = REFER_TO(take(64 * P), 8, 8, P);
}

void finites_fill_layered_state(PLATE_STATE_RECORD* state, POINT_STATE_RECORD points[4], std::int32_t layers,
                                double* memory) {
  if (state == nullptr || points == nullptr || memory == nullptr || layers < 1) return;
  const std::int64_t n = layers;
  std::fill_n(memory, FINITES_LAYERED_STATE_REALS(n), 0.0);
  *state = PLATE_STATE_RECORD{};
  const auto take = [&memory](std::int64_t count) {
    double* const place = memory;
    memory += count;
    return place;
  };
  for (int gp = 0; gp < 4; ++gp) {
    POINT_STATE_RECORD& p = points[gp];
    for (auto* const field : {&p.SIG, &p.EP_START, &p.EP_CUR, &p.EP_INC}) *field = REFER_TO(take(6 * n), 6, n);
    for (auto* const field : {&p.EPBAR_START, &p.EPBAR_CUR}) *field = REFER_TO(take(n), n);
    p.TANGENT = REFER_TO(take(25 * n), 5, 5, n);
  }
  state->POINT_STATE = REFER_TO(points, 4);
}

namespace {

// to := from, both contiguous as the builders make them, or with any strides.
void copy(const ARRAY_REFERENCE<double, 1>& from, const ARRAY_REFERENCE<double, 1>& to) {
  if (!ALLOCATED(from) || !ALLOCATED(to)) return;
  for (std::int64_t i = 0; i < from.DIMENSION[0].EXTENT; ++i) {
    to(to.DIMENSION[0].LOWER + i) = from(from.DIMENSION[0].LOWER + i);
  }
}

void copy(const ARRAY_REFERENCE<double, 2>& from, const ARRAY_REFERENCE<double, 2>& to) {
  if (!ALLOCATED(from) || !ALLOCATED(to)) return;
  for (std::int64_t j = 0; j < from.DIMENSION[1].EXTENT; ++j) {
    for (std::int64_t i = 0; i < from.DIMENSION[0].EXTENT; ++i) {
      to(to.DIMENSION[0].LOWER + i, to.DIMENSION[1].LOWER + j) =
          from(from.DIMENSION[0].LOWER + i, from.DIMENSION[1].LOWER + j);
    }
  }
}

}  // namespace

void finites_accept_plate_state(PLATE_STATE_RECORD* state) {
  if (state == nullptr) return;
  copy(state->SEC_EP_CUR, state->SEC_EP_START);
  copy(state->SEC_EPBAR_CUR, state->SEC_EPBAR_START);
  copy(state->SEC_SIGN_CUR, state->SEC_SIGN_START);
  for (int gp = 1; gp <= 4; ++gp) {
    if (!HAS_ELEMENT(state->POINT_STATE, gp)) continue;
    const POINT_STATE_RECORD& point = state->POINT_STATE(gp);
    copy(point.EP_CUR, point.EP_START);
    copy(point.EPBAR_CUR, point.EPBAR_START);
  }
}

void finites_fill_member_block(double* A, std::int32_t entry, std::int32_t number, std::int32_t section,
                               std::int32_t material, std::int32_t node_1, std::int32_t node_2) {
  if (A == nullptr) return;
  set(A, entry, {ELEM_ID}, number);
  set(A, entry, {FIXITY_Y1, FIXITY_Z1, FIXITY_Y2, FIXITY_Z2}, 1.0);
  set(A, entry, {MEMBER_SECTION}, section);
  set(A, entry, {MEMBER_MATERIAL}, material);
  set(A, entry, {MEMBER_NODE_1}, node_1);
  set(A, entry, {MEMBER_NODE_2}, node_2);
  set(A, entry, {FACTOR_AREA, FACTOR_I1, FACTOR_I2, FACTOR_J, FACTOR_TORSION}, 1.0);
  set(A, entry, {RELEASE_AXIAL, RELEASE_Y, RELEASE_Z, RELEASE_TORSION}, 0.0);
  set(A, entry, {MEMBER_WEIGHT, PROPERTY_ADDRESS, UNSTRESSED_LENGTH, PRETENSION_STRESS, REMOVE_MIN, REDUCTION_INDEX},
      0.0);
}

void finites_fill_section_of_member(double* A, std::int32_t section, double area, double Iz, double Iy, double J) {
  if (A == nullptr) return;
  set(A, section, {FRAME_SECTION_TYPE}, HOMOGENEOUS_SECTION);
  set(A, section, {SECTION_AREA}, area);
  set(A, section, {SECTION_SHEAR_AREA_Z, SECTION_SHEAR_AREA_Y}, 0.0);
  set(A, section, {SECTION_I1}, Iz);
  set(A, section, {SECTION_I2}, Iy);
  set(A, section, {SECTION_J}, J);
}

void finites_fill_material_of_member(double* A, std::int32_t material, double E, double nu, double G) {
  if (A == nullptr) return;
  set(A, material, {MEMBER_E1, MEMBER_E2}, E);
  set(A, material, {MEMBER_G}, G != 0.0 ? G : isotropic_shear_modulus(E, nu));
  set(A, material, {MEMBER_MATERIAL_KIND}, 0.0);
}

void finites_fill_member_record(MEMBER_RECORD* record, double length) {
  if (record == nullptr) return;
  *record = MEMBER_RECORD{};
  record->LENGTH = length;
}

double finites_fill_rotation(double* T, const double first[3], const double second[3], const double up[3]) {
  if (T == nullptr || first == nullptr || second == nullptr || up == nullptr) return 0.0;
  double R[3][3];
  for (int i = 0; i < 3; ++i) R[0][i] = second[i] - first[i];
  const auto unit = [](double* v) {
    const double length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    for (int i = 0; i < 3; ++i) v[i] /= length;
    return length;
  };
  const auto cross = [](const double* a, const double* b, double* c) {
    for (int i = 0; i < 3; ++i) c[i] = a[(i + 1) % 3] * b[(i + 2) % 3] - a[(i + 2) % 3] * b[(i + 1) % 3];
  };
  const double length = unit(R[0]);
  cross(R[0], up, R[2]);
  const double aside = std::sqrt(R[2][0] * R[2][0] + R[2][1] * R[2][1] + R[2][2] * R[2][2]);
  const double size = std::sqrt(up[0] * up[0] + up[1] * up[1] + up[2] * up[2]);
  if (!std::isfinite(length) || !(length > 0.0) || !(aside > LEAST_ASIDE * size)) return 0.0;
  unit(R[2]);
  cross(R[2], R[0], R[1]);
  std::fill_n(T, 144, 0.0);
  for (int block = 0; block < 12; block += 3) {
    for (int j = 0; j < 3; ++j) {
      for (int i = 0; i < 3; ++i) T[(block + j) * 12 + block + i] = R[i][j];
    }
  }
  return length;
}

void finites_fill_property_address(double* A, std::int32_t entry, const void* property) {
  if (A == nullptr) return;
  static_assert(sizeof property == sizeof *A, "an address fits a real");
  std::memcpy(&MODEL_DATA(A)(std::int64_t{entry} + PROPERTY_ADDRESS), &property, sizeof property);
}

void finites_fill_solid_record(SOLID_RECORD* record, std::int32_t number, std::int32_t mat, std::int32_t nodes,
                               const std::int32_t* node_ptr) {
  if (record == nullptr) return;
  *record = SOLID_RECORD{};
  record->ELEM_NO = number;
  record->MAT_OFF = mat;
  record->NNODE = nodes;
  record->STIFF_FACTOR = 1.0F;
  refer_to_nodes(record->NODE_OFF.data(), node_ptr, std::clamp(nodes, 0, 9));
}
