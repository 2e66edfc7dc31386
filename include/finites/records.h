// records.h: the records through which the solver, the element library and its companions exchange data, for C99 and
// C++.
//
// There is one SOLANAELEM and one SOLANA per process and one PLATEELEM per thread, defined by the common library. The
// solver fills SOLANAELEM and SOLANA and owns every array that they refer to; PLATEELEM is the scratch record of one
// plate call. The fields have the order and width of the records, naturally aligned. Matrices are column-major and
// numbered from 1: AXES(a, i) is the component i of the local axis a.
//
// An array of fixed size is part of the record: FINITES_VECTOR and FINITES_MATRIX are VECTOR and MATRIX of views.hpp in
// C++, plain arrays in C, in which the entry (i, j) of a matrix is NAME[j - 1][i - 1]. An array that the solver sizes
// is an ARRAY_REFERENCE: its address, the length of an element, whether it is allocated, and for each dimension the
// extent, the stride in bytes and the lower bound. A reference of zeros is not allocated. For a contiguous array that
// is numbered from 1 it is filled by REFER_TO(base, extents...) in C++ and FINITES_REFER_1, _2, _3 in C.
//
// Sizes and offsets of all fields are checked in record_layout.h, which this header includes.
#ifndef FINITES_RECORDS_H
#define FINITES_RECORDS_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus

#include "finites/views.hpp"

#define FINITES_VECTOR(TYPE, N, NAME) VECTOR<N, TYPE> NAME
#define FINITES_MATRIX(TYPE, M, N, NAME) MATRIX<M, N, TYPE> NAME
#define FINITES_ARRAY(TYPE, RANK, NAME) ARRAY_REFERENCE<TYPE, RANK> NAME

#else

typedef struct ARRAY_DIMENSION {
  int64_t EXTENT;
  int64_t STRIDE;  // bytes from one element to the next
  int64_t LOWER;   // subscript of the first element
} ARRAY_DIMENSION;

#define FINITES_VECTOR(TYPE, N, NAME) TYPE NAME[N]
#define FINITES_MATRIX(TYPE, M, N, NAME) TYPE NAME[N][M]
#define FINITES_ARRAY(TYPE, RANK, NAME) \
  struct {                              \
    TYPE* BASE;                         \
    int64_t ELEMENT_LENGTH;             \
    int32_t ALLOCATED_FLAG;             \
    ARRAY_DIMENSION DIMENSION[RANK];    \
  } NAME

// FINITES_REFER_1(SOLANAELEM.MEMBER_REC, members, count): NAME refers to a contiguous array; of more dimensions the
// first runs fastest.
#define FINITES_REFER_DIMENSION(NAME, D, N, BYTES) \
  ((NAME).DIMENSION[D].EXTENT = (N), (NAME).DIMENSION[D].STRIDE = (BYTES), (NAME).DIMENSION[D].LOWER = 1)
#define FINITES_REFER_1(NAME, FIRST, N1)                                                                   \
  ((NAME).BASE = (FIRST), (NAME).ELEMENT_LENGTH = (int64_t)sizeof *(NAME).BASE, (NAME).ALLOCATED_FLAG = 1, \
   FINITES_REFER_DIMENSION(NAME, 0, N1, (NAME).ELEMENT_LENGTH))
#define FINITES_REFER_2(NAME, FIRST, N1, N2) \
  (FINITES_REFER_1(NAME, FIRST, N1), FINITES_REFER_DIMENSION(NAME, 1, N2, (NAME).ELEMENT_LENGTH * (int64_t)(N1)))
#define FINITES_REFER_3(NAME, FIRST, N1, N2, N3) \
  (FINITES_REFER_2(NAME, FIRST, N1, N2),         \
   FINITES_REFER_DIMENSION(NAME, 2, N3, (NAME).ELEMENT_LENGTH * (int64_t)(N1) * (int64_t)(N2)))

#endif

// ---------------------------------------------------------------------------------------------- frame members

typedef struct MEMBER_RECORD {
  FINITES_ARRAY(double, 2, MEMBER_LOADS);  // a column per load case, rows in fields.h; may be unallocated
  double AXIAL_FORCE;
  double K11_COPY;
  double PRESTRESS_FORCE;
  double TAU_B;  // stiffness reduction factor, active when positive
  FINITES_VECTOR(int32_t, 3, NL_SPRING_IDX);
  int32_t REMOVE_STEP;
  FINITES_VECTOR(int32_t, 3, REMOVE_STEP_SPR);
  double LENGTH;
} MEMBER_RECORD;

typedef struct MEMBER_FORCES_RECORD {
  FINITES_VECTOR(double, 12, F_END);
  FINITES_VECTOR(double, 12, F_END_STEP);
  FINITES_VECTOR(double, 12, F_END_ITER);
} MEMBER_FORCES_RECORD;

typedef struct SPRING_NL_RECORD {
  double K_CURRENT;
  double K_INITIAL;
} SPRING_NL_RECORD;

typedef struct HINGE_RECORD {
  int32_t HINGE_MODEL;
  int32_t CURVE_KIND;
  int32_t FORCE_SET;
  double CAP_P;
  double CAP_MY;
  double CAP_MZ;
  int32_t AXIAL_RELEASE;
  int32_t END1_STATE;
  FINITES_VECTOR(int32_t, 4, END1_SEG);
  int32_t END2_STATE;
  FINITES_VECTOR(int32_t, 4, END2_SEG);
  FINITES_MATRIX(double, 12, 12, K_ELASTIC);
} HINGE_RECORD;

// The second state set of the nonlinear solver keeps no forces of the iteration.
typedef struct ALT_FORCES_RECORD {
  FINITES_VECTOR(double, 12, F_END);
  FINITES_VECTOR(double, 12, F_END_STEP);
} ALT_FORCES_RECORD;

typedef struct ALT_STATE_RECORD {
  double LOAD_STEP;
  FINITES_ARRAY(ALT_FORCES_RECORD, 1, MEMBER_FORCES);  // by pos
} ALT_STATE_RECORD;

// ---------------------------------------------------------------------------------------------- solids

typedef struct SOLID_RECORD {
  int32_t ELEM_NO;
  int32_t MAT_OFF;  // index of the material block
  int32_t NNODE;
  FINITES_VECTOR(int32_t, 9, NODE_OFF);  // indices of the node blocks
  float STIFF_FACTOR;                    // factor on the elastic matrix, 1 without a reduction
  FINITES_MATRIX(double, 3, 27, U_ELEM);
  FINITES_MATRIX(double, 3, 27, F_ELEM);
  FINITES_MATRIX(double, 50, 27, RES50_NODE);
  FINITES_MATRIX(double, 50, 27, RES50_GAUSS);
} SOLID_RECORD;

typedef struct SOLID_NL_RECORD {
  FINITES_MATRIX(double, 6, 27, GAUSS_STRESS);
  FINITES_MATRIX(double, 3, 27, U_NL);
} SOLID_NL_RECORD;

// ---------------------------------------------------------------------------------------------- plates

typedef struct PLATE_RECORD {
  int32_t SECTION_PTR;                   // index of the section block in MODEL_DATA
  int32_t MATERIAL_PTR;                  // index of the material block
  int32_t NODE_COUNT;                    // 3 or 4; read by FINITES, while INFO_FINITES reads BLOCK_NODE_COUNT
  FINITES_VECTOR(int32_t, 4, NODE_PTR);  // indices of the node blocks; the fourth is read only for four nodes
  float AREA;                            // written by operation 8
  float WEIGHT;
  float FACTORED_WEIGHT;
  FINITES_MATRIX(double, 4, 3, NODE_OFFSETS);  // (node, component), global axes; read when PLATE_OF_ELEM is allocated
} PLATE_RECORD;

// State of the layered model at one surface point; n is NPT_THICK.
typedef struct POINT_STATE_RECORD {
  FINITES_ARRAY(double, 2, SIG);       // (6, n) global axes: xx, yy, zz, xy, xz, yz
  FINITES_ARRAY(double, 2, EP_START);  // (6, n)
  FINITES_ARRAY(double, 2, EP_CUR);    // (6, n)
  FINITES_ARRAY(double, 2, EP_INC);    // (6, n)
  FINITES_ARRAY(double, 1, EPBAR_START);
  FINITES_ARRAY(double, 1, EPBAR_CUR);
  FINITES_ARRAY(double, 3, TANGENT);  // (5, 5, n) element axes: xx, yy, xy, xz, yz
} POINT_STATE_RECORD;

// Persistent state of a plate. The two stored fields are used by every analysis with state and are part of the record;
// the solver allocates the fields of the plastic model that it runs: SEC_ for the whole-section one, POINT_STATE for
// the layered one.
typedef struct PLATE_STATE_RECORD {
  FINITES_MATRIX(double, 6, 4, STORED_NODAL_FORCES);   // per point: Nx, Ny, Nxy, Mx, My, Mxy
  FINITES_MATRIX(double, 6, 4, STORED_DISPLACEMENTS);  // per node, global axes
  FINITES_ARRAY(double, 2, SEC_EP_START);              // (12, 4)
  FINITES_ARRAY(double, 2, SEC_EP_CUR);                // (12, 4)
  FINITES_ARRAY(double, 1, SEC_EPBAR_START);           // (4)
  FINITES_ARRAY(double, 1, SEC_EPBAR_CUR);             // (4)
  FINITES_ARRAY(double, 2, SEC_EP_INC);                // (12, 4)
  FINITES_ARRAY(double, 3, SEC_TANGENT);               // (8, 8, 4)
  FINITES_ARRAY(double, 1, SEC_CURV_INC);              // (4)
  FINITES_ARRAY(double, 1, SEC_AUX);                   // (4)
  FINITES_ARRAY(double, 1, SEC_SIGN_CUR);              // (4)
  FINITES_ARRAY(double, 1, SEC_SIGN_START);            // (4)
  FINITES_ARRAY(POINT_STATE_RECORD, 1, POINT_STATE);   // (4)
} PLATE_STATE_RECORD;

// ---------------------------------------------------------------------------------------------- the three globals

// ELEM_POS, MEMBER_REC and PLATE_RECORDS are addressed without a look at their flags or extents: what calls their
// elements must fill them. docs/calling.md has a table.
typedef struct SOLANAELEM_RECORD {
  int32_t NPT_THICK;                         // through-thickness points of the layered plate model
  FINITES_ARRAY(int32_t, 1, ELEM_POS);       // element index to the position of its MEMBER_REC and HINGE_REC
  FINITES_ARRAY(int32_t, 1, PLATE_OF_ELEM);  // element index to plate index; may be unallocated
  FINITES_ARRAY(int32_t, 1, SOLID_POS);      // element index to the position of its SOLID_REC
  FINITES_ARRAY(MEMBER_RECORD, 1, MEMBER_REC);
  FINITES_ARRAY(MEMBER_FORCES_RECORD, 1, MEMBER_FORCES);
  FINITES_ARRAY(SPRING_NL_RECORD, 1, SPRING_NL_REC);
  FINITES_ARRAY(HINGE_RECORD, 1, HINGE_REC);
  FINITES_ARRAY(PLATE_RECORD, 1, PLATE_RECORDS);
  FINITES_ARRAY(PLATE_STATE_RECORD, 1, PLATE_STATE);  // may be unallocated
  FINITES_ARRAY(SOLID_RECORD, 1, SOLID_REC);
  FINITES_ARRAY(SOLID_NL_RECORD, 1, SOLID_NL_REC);  // may be unallocated
  int32_t EP_INC_FROM_CUR;
  double LOAD_STEP;
  FINITES_ARRAY(ALT_STATE_RECORD, 1, ALT_STATE);
} SOLANAELEM_RECORD;

// Scratch of one plate call, cleared to zeros at its start.
typedef struct PLATEELEM_RECORD {
  int32_t ELEM_INDEX;  // set only for MAT_BEHAV 2 and 3
  int32_t ELEM_KIND;
  int32_t MAT_BEHAV;     // 0 isotropic, 1 general, 2 whole-section plasticity, 3 layered plasticity
  int32_t ACTIVE_PARTS;  // 1 membrane, 2 bending, 4 transverse shear, 8 whole-section plasticity
  double THICKNESS;
  double YIELD_STRESS;
  double E1;
  double E2;
  double TANGENT_MOD;
  double NU1;
  double NU2;
  double G12;
  double G13;
  double G23;
  double ALPHA1;
  double ALPHA2;
  FINITES_VECTOR(double, 3, MOD_MEMBRANE);
  FINITES_VECTOR(double, 3, MOD_BENDING);
  FINITES_VECTOR(double, 2, MOD_SHEAR);
  float ORTHO_ANGLE;  // radians
  FINITES_MATRIX(double, 3, 3, D_MEMBRANE_TOTAL);
  FINITES_MATRIX(double, 3, 3, D_MEMBRANE_NORMAL);
  FINITES_MATRIX(double, 3, 3, D_MEMBRANE_SHEAR);
  FINITES_MATRIX(double, 3, 3, D_BENDING);
  FINITES_MATRIX(double, 2, 2, D_SHEAR);
  FINITES_MATRIX(double, 3, 3, AXES);
  double THERMAL_M1;
  double THERMAL_M2;
  double THERMAL_B1;
  double THERMAL_B2;
  FINITES_MATRIX(double, 3, 3, LOCAL_XYZ);       // (component, node) of a triangle
  FINITES_MATRIX(double, 3, 4, LOCAL_XYZ_QUAD);  // (component, node) of a quadrilateral
  FINITES_VECTOR(double, 48, A_DELTA);           // side matrix: 3 by 9 on a triangle, 4 by 12 on a quadrilateral
  FINITES_VECTOR(double, 4, SIDE_C);
  FINITES_VECTOR(double, 4, SIDE_S);
  FINITES_VECTOR(double, 4, SIDE_DET);
  FINITES_VECTOR(double, 4, SIDE_LPHI);
  FINITES_VECTOR(double, 4, SIDE_PHI);
  FINITES_MATRIX(double, 8, 8, D8);
  FINITES_MATRIX(double, 8, 8, P8);
  FINITES_MATRIX(double, 8, 8, Q8);
  FINITES_MATRIX(double, 8, 8, QINV8);
  FINITES_MATRIX(double, 8, 8, LAM8);
  double CLT_FACTOR_1;
  double CLT_FACTOR_2;
} PLATEELEM_RECORD;

typedef struct SOLANA_RECORD {
  int32_t STIFF_LIST_COUNT;                // 0: no list
  FINITES_ARRAY(int32_t, 1, STIFF_LIST);   // ascending element identifiers
  FINITES_ARRAY(float, 2, STIFF_FACTORS);  // (2, n)
  double LOAD_FACTOR;
  double RIGID_K_TRANS;
  double RIGID_K_ROT;
  double MIN_K_ROT;
  FINITES_ARRAY(float, 1, STIFF_REDUCTION);
} SOLANA_RECORD;

// ---------------------------------------------------------------------------------------------- fetched records

// The solution parameters, 97 words of 32 bits. Words without a name are not read by the library.
typedef struct SOLPARAM_RECORD {
  int32_t HINGE_FORCE_MODE;  // 0: stored end forces; otherwise they are rebuilt
  int32_t LUMPED_MASS;       // 0: consistent mass
  float REMOVE_RATIO;
  int32_t STIFF_REDUCTION_ON;  // above 0: stiffness factors and reductions apply
  int32_t OTHER_WORDS[93];
} SOLPARAM_RECORD;

typedef struct MATERIAL_RECORD {
  int32_t mtype;  // 0, 1 or 3 matter to plates
  float E1;
  float E2;
  float HARDENING;  // tangent modulus Et of stress over total strain beyond yield; 0: perfectly plastic
  float G12;
  float G13;
  float G23;
  float NU1;
  float NU2;
  float ALPHA1;
  float ALPHA2;
  int32_t ortho;  // 1: orthotropic
} MATERIAL_RECORD;

typedef struct CLT_SECTION_RECORD {
  float E1;
  float E2;
  float NU1;
  float NU2;
  float G12;
  float G13;
  float G23;
  float ALPHA1;
  float ALPHA2;
  float UNIT_WEIGHT;
  float CLT_FACTOR_1;  // corrections of bending twist and of membrane shear
  float CLT_FACTOR_2;
} CLT_SECTION_RECORD;

#include "finites/record_layout.h"

#ifdef __cplusplus
extern "C" {
#endif
extern SOLANAELEM_RECORD SOLANAELEM;
extern PLATEELEM_RECORD PLATEELEM;
extern SOLANA_RECORD SOLANA;
#ifdef __cplusplus
}
#endif

#endif
