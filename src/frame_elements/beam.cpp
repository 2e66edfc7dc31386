// beam.cpp: KSTIFB, the stiffness of a prismatic two-node space beam with shear deformation, semi-rigid ends, end
// releases, geometric stiffness and plastic hinges: what the records and MODEL_DATA say of it. The formulas are in
// beam_planes.cpp.
#include <algorithm>

#include "common/clear.h"
#include "common/lanes.h"
#include "common/member_order.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "frame_elements/beam_geometric.h"
#include "frame_elements/beam_planes.h"
#include "frame_elements/member_axes.h"
#include "frame_elements/plane_pattern.h"

namespace {

// Direct analysis method of steel design: members with a TAU_B > 0 keep 0.8 of their axial and 0.8 TAU_B of their
// bending stiffness, cold-formed sections of COLD_FORMED_MATERIAL 0.9 in place of 0.8.
constexpr double REDUCTION = 0.8;
constexpr double REDUCTION_COLD_FORMED = 0.9;

// read_beam sets everything except the section properties; set_section sets those, with their reductions.
struct BEAM : BEAM_PROPERTIES {
  MODEL_DATA_READER A;
  std::int64_t I, S, M;
  MEMBER_RECORD* record;
  std::int64_t pos;
  int kind;

  explicit BEAM(const double* a) : A(a) {}
};

void read_beam(BEAM& B, std::int32_t elem, std::int32_t entry) {
  const MODEL_DATA_READER& A = B.A;
  B.I = entry;
  B.S = A.INTEGER(B.I + MEMBER_SECTION);
  B.M = A.INTEGER(B.I + MEMBER_MATERIAL);
  B.kind = A.INTEGER(SECOND_ORDER);
  B.pos = SOLANAELEM.ELEM_POS(elem);
  B.record = &SOLANAELEM.MEMBER_REC(B.pos);
  B.L = B.record->LENGTH;
  B.E1 = A(B.M + MEMBER_E1);
  B.E2 = A(B.M + MEMBER_E2);
  B.G = A(B.M + MEMBER_G);
  B.a1 = A(B.I + FIXITY_Y1);
  B.a2 = A(B.I + FIXITY_Y2);
  B.b1 = A(B.I + FIXITY_Z1);
  B.b2 = A(B.I + FIXITY_Z2);
  B.release_x = A.INTEGER(B.I + RELEASE_AXIAL);
  B.release_y = A.INTEGER(B.I + RELEASE_Y);
  B.release_z = A.INTEGER(B.I + RELEASE_Z);
  B.release_t = A.INTEGER(B.I + RELEASE_TORSION);
  B.shear = A.INTEGER(SHEAR_DEFORMATION) == 1;
  B.axial_force = B.record->AXIAL_FORCE;
}

// Has the analysis a geometric matrix, added or apart?
bool second_order(const BEAM& B) { return B.kind == GEOMETRIC_ADDED || B.kind == GEOMETRIC_APART; }

struct SECTION_FACTORS {
  double area, inertia1, inertia2;
};

double reduction_of(const BEAM& B) {
  const std::int32_t type = B.A.INTEGER(B.S + FRAME_SECTION_TYPE);
  std::int32_t cold_formed = 0;
  GET_KCOLDFORM(&type, &cold_formed);
  const bool first_kind = B.A.INTEGER(B.M + MEMBER_MATERIAL_KIND) == COLD_FORMED_MATERIAL;
  return cold_formed == 1 && first_kind ? REDUCTION_COLD_FORMED : REDUCTION;
}

// The factors of the element with the reductions of the analysis. STIFF_REDUCTION acts on bending in x-y only.
SECTION_FACTORS factors_of(const BEAM& B) {
  SECTION_FACTORS f{B.A(B.I + FACTOR_AREA), B.A(B.I + FACTOR_I1), B.A(B.I + FACTOR_I2)};
  const double tau = B.record->TAU_B;
  if (tau > 0.0) {
    const double c = reduction_of(B);
    f.area *= c;
    f.inertia1 = f.inertia1 * c * tau;
    f.inertia2 = f.inertia2 * c * tau;
  }
  const std::int32_t index = B.A.INTEGER(B.I + REDUCTION_INDEX);
  if (index > 0 && HAS_ELEMENT(SOLANA.STIFF_REDUCTION, index)) {
    SOLPARAM_RECORD parameters;
    ZelkuSolParamGetRec(&parameters);
    if (parameters.STIFF_REDUCTION_ON > 0) f.inertia1 *= static_cast<double>(SOLANA.STIFF_REDUCTION(index));
  }
  return f;
}

// The removal coefficient acts on the area only, not on bending or torsion. The shear areas have the factors of the
// inertias, so that the shear parameter p does not change with them.
void set_section(BEAM& B, std::int32_t mode) {
  const MODEL_DATA_READER& A = B.A;
  const SECTION_FACTORS f = factors_of(B);
  B.AREA = A(B.S + SECTION_AREA) * f.area;
  if (mode == MODE_STEP) {
    double coefficient = 1.0;
    GET_COEF_REMOVE(&B.record->REMOVE_STEP, &A(B.I + REMOVE_MIN), &coefficient);
    B.AREA *= coefficient;
  }
  B.I1 = A(B.S + SECTION_I1) * f.inertia1;
  B.I2 = A(B.S + SECTION_I2) * f.inertia2;
  B.AS1 = A(B.S + SECTION_SHEAR_AREA_Y) * f.inertia1;
  B.AS2 = A(B.S + SECTION_SHEAR_AREA_Z) * f.inertia2;
  const double J = A(B.S + SECTION_J) * A(B.I + FACTOR_J);
  B.GJ = B.G * J * A(B.I + FACTOR_TORSION);
}

void add_matrix(double* K, const double* other) {
  for (int j = 0; j < MEMBER_DOFS * MEMBER_DOFS; j += MEMBER_DOFS) {
    for (int i = j; i < j + MEMBER_DOFS; i += 2) store_lanes(K + i, lanes_at(K + i) + lanes_at(other + i));
  }
}

// The matrices in local axes: by their planes, or in full in the caller's K and KG.
struct LOCAL_MATRICES {
  PLANE_MATRIX K, KG;
  bool by_planes;  // K and KG of this record count
  bool geometric;  // there is a geometric matrix, added to K where the analysis says so
};

// As build_local, for values that are not finite: their products with zeros reach entries beside the planes.
void build_in_full(const BEAM& B, bool geometric, double* K, double* KG) {
  constexpr std::int32_t n = MEMBER_DOFS;
  PLANE_MATRIX elastic;
  elastic_planes(B, elastic);
  write_planes(elastic, K);
  for (const std::int32_t d : released_by(B).freedom) {
    if (d > 0) RELEASE_DOF(&d, K, &n);
  }
  B.record->K11_COPY = K[0];
  if (!geometric) return;
  const GEOMETRIC_DATA g = geometric_data(B);
  KSTIFB_GEOM(&g.P, &B.L, &B.E1, &B.E2, &B.I1, &B.I2, &g.semi_y, &g.semi_z, &g.release_y, &g.release_z, &g.a1, &g.b1,
              &g.a2, &g.b2, KG);
  if (B.kind == GEOMETRIC_ADDED) add_matrix(K, KG);
}

// The elastic and the geometric matrix. A geometric one is built in MODE_STEP for an axial force.
LOCAL_MATRICES build_local(const BEAM& B, std::int32_t mode, double* K, double* KG) {
  LOCAL_MATRICES local;
  local.geometric = mode == MODE_STEP && second_order(B) && B.axial_force != 0.0;
  elastic_planes(B, local.K);
  local.by_planes = release_ends(B, local.K) && (!local.geometric || geometric_planes(geometric_data(B), local.KG));
  B.record->PRESTRESS_FORCE = 0.0;
  if (!local.by_planes) {
    build_in_full(B, local.geometric, K, KG);
    return local;
  }
  B.record->K11_COPY = local.K(1, 1);
  if (local.geometric && B.kind == GEOMETRIC_ADDED) {
    for (int e = 0; e < PLANE_MATRIX::ENTRIES; ++e) local.K.V[e] += local.KG.V[e];
  }
  return local;
}

bool members_yield(const BEAM& B) {
  if (B.kind != GEOMETRIC_ADDED) return false;
  std::int32_t on = 0;
  ZELKU_SOLPARAM_GET_KNLMATERIAL_MEMBER(&on);
  return on == 1;
}

// K in full, local axes. K_ELASTIC stores it before the hinges are added, with the geometric matrix where one was
// added.
void add_hinges(const BEAM& B, std::int32_t mode, std::int32_t elem, const double* A, const std::int32_t* NDIM,
                double* K) {
  if (mode == MODE_STEP && HAS_ELEMENT(SOLANAELEM.HINGE_REC, B.pos)) {
    std::copy_n(K, MEMBER_DOFS * MEMBER_DOFS, SOLANAELEM.HINGE_REC(B.pos).K_ELASTIC.data());
  }
  const std::int32_t number = B.A.INTEGER(B.I + ELEM_ID);
  double KP[MEMBER_DOFS * MEMBER_DOFS];
  KSTIFB_PLAST(&number, A, NDIM, &elem, K, KP);
  add_matrix(K, KP);
}

}  // namespace

void KSTIFB(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A, const int32_t* NDIM,
            const double* T, const int32_t* NT2, const double* T2, double* K, double* KG) {
  BEAM B(A);
  read_beam(B, *IELEM, *IOFF);
  set_section(B, *MODE);
  const LOCAL_MATRICES local = build_local(B, *MODE, K, KG);
  const bool hinges = members_yield(B);
  const bool planes_of_K = local.by_planes && !hinges;
  const bool planes_of_KG = local.by_planes && local.geometric;

  if (local.by_planes && (hinges || *MODE == MODE_LOCAL)) write_planes(local.K, K);
  if (hinges) add_hinges(B, *MODE, *IELEM, A, NDIM, K);
  if (*MODE == MODE_LOCAL) {
    clear(KG, MEMBER_DOFS * MEMBER_DOFS);
    return;
  }
  const PLANE_ROTATION rotation(T);
  if (planes_of_K) {
    turn_planes(rotation, local.K, T, *NT2, T2, K);
  } else {
    turn_full(rotation, T, *NT2, T2, K);
  }
  if (planes_of_KG) {
    turn_planes(rotation, local.KG, T, *NT2, T2, KG);
  } else if (local.geometric) {
    turn_full(rotation, T, *NT2, T2, KG);
  } else if (second_order(B)) {
    // Not built: zero in any axes, but NaN where a transformation is not finite, as all matrices that it turns.
    turn_zero(rotation, T, *NT2, T2, KG);
  } else {
    clear(KG, MEMBER_DOFS * MEMBER_DOFS);
  }
}
