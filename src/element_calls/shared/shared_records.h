// shared_records.h: the records through which the solver, the element library and its companions exchange data.
//
// There is one SOLANAELEM, one PLATEELEM and one SOLANA in the process, defined by the common library. The solver fills
// SOLANAELEM and SOLANA and owns every array that they refer to; PLATEELEM is the scratch record of one plate call.
// Fields stand in the order and width of the records. Matrices are column-major and numbered from 1: AXES(a, i) is the
// component i of the local axis a. An array that the solver sizes is an ARRAY_REFERENCE; one of fixed size lies in the
// record itself.
#ifndef FINITES_SHARED_RECORDS_H
#define FINITES_SHARED_RECORDS_H

#include <cstdint>

#include "array_reference.h"
#include "views.h"

// ---------------------------------------------------------------------------------------------- frame members

struct MEMBER_RECORD {
  ARRAY_REFERENCE<double, 2> MEMBER_LOADS;  // element load vectors by load case; may be unallocated
  double AXIAL_FORCE;
  double K11_COPY;
  double PRESTRESS_FORCE;
  double TAU_B;  // stiffness reduction factor, active when positive
  VECTOR<3, std::int32_t> NL_SPRING_IDX;
  std::int32_t REMOVE_STEP;
  VECTOR<3, std::int32_t> REMOVE_STEP_SPR;
  double LENGTH;
};

struct MEMBER_FORCES_RECORD {
  VECTOR<12> F_END;
  VECTOR<12> F_END_STEP;
  VECTOR<12> F_END_ITER;
};

struct SPRING_NL_RECORD {
  double K_CURRENT;
  double K_INITIAL;
};

struct HINGE_RECORD {
  std::int32_t HINGE_MODEL;
  std::int32_t CURVE_KIND;
  std::int32_t FORCE_SET;
  double CAP_P;
  double CAP_MY;
  double CAP_MZ;
  std::int32_t AXIAL_RELEASE;
  std::int32_t END1_STATE;
  VECTOR<4, std::int32_t> END1_SEG;
  std::int32_t END2_STATE;
  VECTOR<4, std::int32_t> END2_SEG;
  MATRIX<12, 12> K_ELASTIC;
};

// The second state set of the nonlinear solver keeps no forces of the iteration.
struct ALT_FORCES_RECORD {
  VECTOR<12> F_END;
  VECTOR<12> F_END_STEP;
};

struct ALT_STATE_RECORD {
  double LOAD_STEP;
  ARRAY_REFERENCE<ALT_FORCES_RECORD, 1> MEMBER_FORCES;  // by pos
};

// ---------------------------------------------------------------------------------------------- solids

struct SOLID_RECORD {
  std::int32_t ELEM_NO;
  std::int32_t MAT_OFF;  // index of the material block
  std::int32_t NNODE;
  VECTOR<9, std::int32_t> NODE_OFF;  // indices of the node blocks
  float STIFF_FACTOR;
  MATRIX<3, 27> U_ELEM;
  MATRIX<3, 27> F_ELEM;
  MATRIX<50, 27> RES50_NODE;
  MATRIX<50, 27> RES50_GAUSS;
};

struct SOLID_NL_RECORD {
  MATRIX<6, 27> GAUSS_STRESS;
  MATRIX<3, 27> U_NL;
};

// ---------------------------------------------------------------------------------------------- plates

struct PLATE_RECORD {
  std::int32_t SECTION_PTR;             // index of the section block in MODEL_DATA
  std::int32_t MATERIAL_PTR;            // index of the material block
  std::int32_t NODE_COUNT;              // 3 or 4
  VECTOR<4, std::int32_t> NODE_PTR;     // indices of the node blocks; the fourth is read only for four nodes
  float AREA, WEIGHT, FACTORED_WEIGHT;  // written by operation 8
  MATRIX<4, 3> NODE_OFFSETS;            // (node, component), global axes
};

// State of the layered model at one surface point; n is NPT_THICK.
struct POINT_STATE_RECORD {
  ARRAY_REFERENCE<double, 2> SIG;       // (6, n) global axes: xx, yy, zz, xy, xz, yz
  ARRAY_REFERENCE<double, 2> EP_START;  // (6, n)
  ARRAY_REFERENCE<double, 2> EP_CUR;    // (6, n)
  ARRAY_REFERENCE<double, 2> EP_INC;    // (6, n)
  ARRAY_REFERENCE<double, 1> EPBAR_START;
  ARRAY_REFERENCE<double, 1> EPBAR_CUR;
  ARRAY_REFERENCE<double, 3> TANGENT;  // (5, 5, n) element axes: xx, yy, xy, xz, yz
};

// Persistent state of a plate. The two stored fields serve every analysis that keeps state and lie in the record; the
// solver allocates the fields of the plastic model that it runs: SEC_ for the whole-section one, POINT_STATE for the
// layered one.
struct PLATE_STATE_RECORD {
  MATRIX<6, 4> STORED_NODAL_FORCES;                    // per point: Nx, Ny, Nxy, Mx, My, Mxy
  MATRIX<6, 4> STORED_DISPLACEMENTS;                   // per node, global axes
  ARRAY_REFERENCE<double, 2> SEC_EP_START;             // (12, 4)
  ARRAY_REFERENCE<double, 2> SEC_EP_CUR;               // (12, 4)
  ARRAY_REFERENCE<double, 1> SEC_EPBAR_START;          // (4)
  ARRAY_REFERENCE<double, 1> SEC_EPBAR_CUR;            // (4)
  ARRAY_REFERENCE<double, 2> SEC_EP_INC;               // (12, 4)
  ARRAY_REFERENCE<double, 3> SEC_TANGENT;              // (8, 8, 4)
  ARRAY_REFERENCE<double, 1> SEC_CURV_INC;             // (4)
  ARRAY_REFERENCE<double, 1> SEC_AUX;                  // (4)
  ARRAY_REFERENCE<double, 1> SEC_SIGN_CUR;             // (4)
  ARRAY_REFERENCE<double, 1> SEC_SIGN_START;           // (4)
  ARRAY_REFERENCE<POINT_STATE_RECORD, 1> POINT_STATE;  // (4)
};

// ---------------------------------------------------------------------------------------------- the three globals

struct SOLANAELEM_RECORD {
  std::int32_t NPT_THICK;                          // through-thickness points of the layered plate model
  ARRAY_REFERENCE<std::int32_t, 1> ELEM_POS;       // element index to the position of its MEMBER_REC and HINGE_REC
  ARRAY_REFERENCE<std::int32_t, 1> PLATE_OF_ELEM;  // element index to plate index; may be unallocated
  ARRAY_REFERENCE<std::int32_t, 1> SOLID_POS;      // element index to the position of its SOLID_REC
  ARRAY_REFERENCE<MEMBER_RECORD, 1> MEMBER_REC;
  ARRAY_REFERENCE<MEMBER_FORCES_RECORD, 1> MEMBER_FORCES;
  ARRAY_REFERENCE<SPRING_NL_RECORD, 1> SPRING_NL_REC;
  ARRAY_REFERENCE<HINGE_RECORD, 1> HINGE_REC;
  ARRAY_REFERENCE<PLATE_RECORD, 1> PLATE_RECORDS;
  ARRAY_REFERENCE<PLATE_STATE_RECORD, 1> PLATE_STATE;  // may be unallocated
  ARRAY_REFERENCE<SOLID_RECORD, 1> SOLID_REC;
  ARRAY_REFERENCE<SOLID_NL_RECORD, 1> SOLID_NL_REC;  // may be unallocated
  std::int32_t EP_INC_FROM_CUR;
  double LOAD_STEP;
  ARRAY_REFERENCE<ALT_STATE_RECORD, 1> ALT_STATE;
};

// Scratch of one plate call, cleared to zeros at its start.
struct PLATEELEM_RECORD {
  std::int32_t ELEM_INDEX;  // set only for MAT_BEHAV 2 and 3
  std::int32_t ELEM_KIND;
  std::int32_t MAT_BEHAV;     // 0 isotropic, 1 general, 2 whole-section plasticity, 3 layered plasticity
  std::int32_t ACTIVE_PARTS;  // 1 membrane, 2 bending, 4 transverse shear, 8 whole-section plasticity
  double THICKNESS;
  double YIELD_STRESS;
  double E1, E2;
  double TANGENT_MOD;
  double NU1, NU2;
  double G12, G13, G23;
  double ALPHA1, ALPHA2;
  VECTOR<3> MOD_MEMBRANE;
  VECTOR<3> MOD_BENDING;
  VECTOR<2> MOD_SHEAR;
  float ORTHO_ANGLE;  // radians
  MATRIX<3, 3> D_MEMBRANE_TOTAL;
  MATRIX<3, 3> D_MEMBRANE_NORMAL;
  MATRIX<3, 3> D_MEMBRANE_SHEAR;
  MATRIX<3, 3> D_BENDING;
  MATRIX<2, 2> D_SHEAR;
  MATRIX<3, 3> AXES;
  double THERMAL_M1, THERMAL_M2;
  double THERMAL_B1, THERMAL_B2;
  MATRIX<3, 3> LOCAL_XYZ;       // (component, node) of a triangle
  MATRIX<3, 4> LOCAL_XYZ_QUAD;  // (component, node) of a quadrilateral
  VECTOR<48> A_DELTA;           // side matrix: 3 by 9 on a triangle, 4 by 12 on a quadrilateral
  VECTOR<4> SIDE_C;
  VECTOR<4> SIDE_S;
  VECTOR<4> SIDE_DET;
  VECTOR<4> SIDE_LPHI;
  VECTOR<4> SIDE_PHI;
  MATRIX<8, 8> D8, P8, Q8, QINV8, LAM8;
  double CLT_FACTOR_1;
  double CLT_FACTOR_2;
};

struct SOLANA_RECORD {
  std::int32_t STIFF_LIST_COUNT;                // 0: no list
  ARRAY_REFERENCE<std::int32_t, 1> STIFF_LIST;  // ascending element identifiers
  ARRAY_REFERENCE<float, 2> STIFF_FACTORS;      // (2, n)
  double LOAD_FACTOR;
  double RIGID_K_TRANS, RIGID_K_ROT;
  double MIN_K_ROT;
  ARRAY_REFERENCE<float, 1> STIFF_REDUCTION;
};

// ---------------------------------------------------------------------------------------------- fetched records

// The solution parameters, 97 words of 32 bits. Words without a name belong to other parts of the package.
struct SOLPARAM_RECORD {
  std::int32_t HINGE_FORCE_MODE;  // 0: stored end forces; otherwise they are rebuilt
  std::int32_t LUMPED_MASS;       // 0: consistent mass
  float REMOVE_RATIO;
  std::int32_t STIFF_REDUCTION_ON;  // above 0: stiffness factors and reductions apply
  std::int32_t OTHER_WORDS[93];
};
static_assert(sizeof(SOLPARAM_RECORD) == 97 * 4, "the record has 97 words");

struct MATERIAL_RECORD {
  std::int32_t mtype;  // 0, 1 or 3 matter to plates
  float E1, E2;
  float HARDENING;  // hardening modulus
  float G12, G13, G23;
  float NU1, NU2;
  float ALPHA1, ALPHA2;
  std::int32_t ortho;  // 1: orthotropic
};

struct CLT_SECTION_RECORD {
  float E1, E2;
  float NU1, NU2;
  float G12, G13, G23;
  float ALPHA1, ALPHA2;
  float UNIT_WEIGHT;
  float CLT_FACTOR_1, CLT_FACTOR_2;  // corrections of bending twist and of membrane shear
};

extern "C" {
extern SOLANAELEM_RECORD SOLANAELEM;
extern PLATEELEM_RECORD PLATEELEM;
extern SOLANA_RECORD SOLANA;
}

#endif
