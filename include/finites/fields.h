// fields.h: the names of places and codes, for C99 and C++: fields of MODEL_DATA, operations, kinds, behaviours, codes
// in records, columns of result records. Each name stands for one number and is declared only here.
//
// MODEL_DATA, the one large real array of the solver, is written A. It is numbered from 1; integers in it are stored as
// reals and truncated when they are read. A block of it is found by its start, and a field of the block is
// A(start + NAME), for example A(k + FORMULATION).
#ifndef FINITES_FIELDS_H
#define FINITES_FIELDS_H

#include <stdint.h>

#ifdef __cplusplus
#define FINITES_CODE(NAME, VALUE) constexpr int32_t NAME = VALUE
#define FINITES_NUMBER(NAME, VALUE) constexpr double NAME = VALUE
#else
#define FINITES_CODE(NAME, VALUE) enum { NAME = VALUE }
#define FINITES_NUMBER(NAME, VALUE) static const double NAME = VALUE
#endif

// ---------------------------------------------------------------------------------------------- header of MODEL_DATA

FINITES_CODE(NONLIN_MATERIAL, 13);    // 1: material nonlinearity is active
FINITES_CODE(STEP_COUNTER, 14);       // 0 on the very first pass
FINITES_CODE(ANALYSIS_STATE, 15);     // 1 while a nonlinear incremental run is in progress
FINITES_CODE(RES_BASE, 29);           // start of the exchange area
FINITES_CODE(SECOND_ORDER, 41);       // kind of analysis, below
FINITES_CODE(SHEAR_DEFORMATION, 42);  // 1: beams deform in shear
FINITES_CODE(EQUATION_TABLE, 79);     // base of the equation numbers, seven places per joint
FINITES_CODE(ENTRY_START, 100);       // start of the entry of element 1: k of a plate, I of a member or solid
FINITES_CODE(ENTRY_STRIDE, 102);      // from one entry to the next
FINITES_CODE(LOAD_CASES, 151);        // number of load cases
FINITES_CODE(JOINT_RESULTS, 215);     // base of the joint results, eight places per joint and case

// Kinds of analysis, A(SECOND_ORDER). Any other value is a linear analysis.
FINITES_CODE(GEOMETRIC_ADDED, 1);  // the geometric matrix belongs to the stiffness
FINITES_CODE(GEOMETRIC_APART, 3);  // frame members return it in KG only

// Exchange area: A(base + NAME), base being the value of A(RES_BASE).
FINITES_CODE(EXCHANGE_DISPLACEMENTS, 0);  // 24 reals in
FINITES_CODE(EXCHANGE_FORCES, 24);        // 24 reals out
FINITES_CODE(EXCHANGE_NODES, 48);         // 360 reals out, result records at the nodes
FINITES_CODE(EXCHANGE_POINTS, 408);       // 360 reals out, result records at the integration points
FINITES_CODE(EXCHANGE_LENGTH, 768);

// ---------------------------------------------------------------------------------------------- element entries

// Entry of every element.
FINITES_CODE(ELEM_ID, 1);  // identifier, by which STIFF_LIST names the element

// Plate: A(k + NAME).
FINITES_CODE(MASS_FACTOR, 24);
FINITES_CODE(BLOCK_NODE_COUNT, 35);  // read by INFO_FINITES alone; FINITES reads NODE_COUNT of the PLATE_RECORD
FINITES_CODE(FORMULATION, 39);
FINITES_CODE(OFFSET_SWITCH, 41);
FINITES_CODE(COMMON_OFFSET, 42);  // x; y and z follow; read when PLATE_OF_ELEM is not allocated
FINITES_CODE(MODIFIER_MEMBRANE, 57);
FINITES_CODE(MODIFIER_BENDING, 58);
FINITES_CODE(MODIFIER_SHEAR, 59);
FINITES_CODE(ORTHO_ANGLE_IN, 61);  // radians, from axis 1 of the element to axis 1 of the material
FINITES_CODE(PLASTIC_SWITCH, 62);  // 1: the plate may yield

// Formulation codes.
FINITES_CODE(FORMULATION_THICK, 0);              // as every code that is not listed here
FINITES_CODE(FORMULATION_THIN, 1);               // no transverse shear strains
FINITES_CODE(FORMULATION_MEMBRANE, 2);           // in-plane stiffness only
FINITES_CODE(FORMULATION_MEMBRANE_PLASTIC, 3);   // the only membrane code that may yield
FINITES_CODE(FORMULATION_MEMBRANE_REDUCED, 98);  // with 0.01 of the axial stiffness
FINITES_CODE(FORMULATION_MEMBRANE_OTHER, 99);

// Frame member: A(I + NAME). Y is bending in the x-z plane (rotation about y), Z bending in the x-y plane (rotation
// about z); x runs along the member.
FINITES_CODE(FIXITY_Y1, 7);  // end fixity factors: 0 pin, 1 rigid; first end
FINITES_CODE(FIXITY_Z1, 8);
FINITES_CODE(FIXITY_Y2, 9);  // second end
FINITES_CODE(FIXITY_Z2, 10);
FINITES_CODE(MEMBER_SECTION, 12);   // S, start of the section block
FINITES_CODE(MEMBER_MATERIAL, 13);  // M, start of the material block
FINITES_CODE(MEMBER_NODE_1, 14);    // start of the node block of each end
FINITES_CODE(MEMBER_NODE_2, 15);
FINITES_CODE(MEMBER_WEIGHT, 18);     // of the whole member, not per length
FINITES_CODE(PROPERTY_ADDRESS, 31);  // link and spring: the address of their record, in the bits of the word
FINITES_CODE(FACTOR_AREA, 42);
FINITES_CODE(FACTOR_I1, 43);  // also on the shear area of x-y bending
FINITES_CODE(FACTOR_I2, 44);  // also on the shear area of x-z bending
FINITES_CODE(FACTOR_J, 45);
FINITES_CODE(RELEASE_AXIAL, 54);  // 0 none, 1 first end, 2 second end
FINITES_CODE(RELEASE_Y, 55);
FINITES_CODE(RELEASE_Z, 56);
FINITES_CODE(RELEASE_TORSION, 57);
FINITES_CODE(FACTOR_TORSION, 67);     // a further factor on G J: only its product with FACTOR_J counts
FINITES_CODE(UNSTRESSED_LENGTH, 70);  // cable
FINITES_CODE(PRETENSION_STRESS, 71);  // truss
FINITES_CODE(REMOVE_MIN, 82);         // least removal coefficient
FINITES_CODE(REDUCTION_INDEX, 83);    // subscript into STIFF_REDUCTION; 0 or below: none

// MODE of the frame stiffness routines. Every value other than the first two acts as MODE_ELASTIC.
FINITES_CODE(MODE_STEP, 0);     // the solver's axes with the effects of the step: removal, geometric stiffness, hinges
FINITES_CODE(MODE_LOCAL, 1);    // the member's own axes, without those effects
FINITES_CODE(MODE_ELASTIC, 2);  // the solver's axes, without those effects

// Solid: A(I) holds this code.
FINITES_CODE(SOLID_CODE, 4600);

// ---------------------------------------------------------------------------------------------- section blocks

// Of a plate: A(SECTION_PTR + NAME).
FINITES_CODE(SECTION_NUMBER, 27);  // of the composite section record
FINITES_CODE(SECTION_TYPE, 28);
FINITES_CODE(SECTION_THICKNESS, 30);

// Types of plate sections. Any other type has the constants of the material block.
FINITES_CODE(HOMOGENEOUS_SECTION, 1);  // the material record decides
FINITES_CODE(COMPOSITE_SECTION, 6);    // the composite section record decides

// Of a member: A(S + NAME).
FINITES_CODE(FRAME_SECTION_TYPE, 2);
FINITES_CODE(SECTION_AREA, 3);
FINITES_CODE(SECTION_SHEAR_AREA_Z, 4);  // of the force along z, which belongs to x-z bending
FINITES_CODE(SECTION_SHEAR_AREA_Y, 5);  // of the force along y, which belongs to x-y bending
FINITES_CODE(SECTION_I1, 6);            // x-y bending
FINITES_CODE(SECTION_I2, 7);            // x-z bending
FINITES_CODE(SECTION_J, 8);

// Types of member sections that matter to the library.
FINITES_CODE(YIELDING_TRUSS_SECTION, 10);  // KSTIFT_PLAST acts on it
FINITES_CODE(PRETENSIONED_SECTION, 14);    // PRETENSION_STRESS acts on it

// ---------------------------------------------------------------------------------------------- material blocks

// Of plates and solids: A(MATERIAL_PTR + NAME), A(MAT_OFF + NAME).
FINITES_CODE(MATERIAL_NUMBER, 0);  // of the material record
FINITES_CODE(MATERIAL_YIELD_STRESS, 1);
FINITES_CODE(MATERIAL_YOUNG, 3);
FINITES_CODE(MATERIAL_POISSON, 4);
FINITES_CODE(MATERIAL_UNIT_WEIGHT, 5);
FINITES_CODE(MATERIAL_EXPANSION, 6);
FINITES_CODE(MATERIAL_SHEAR_MODULUS, 7);

// Of a member: A(M + NAME).
FINITES_CODE(MEMBER_E1, 3);  // axial force and x-y bending
FINITES_CODE(MEMBER_G, 7);
FINITES_CODE(MEMBER_E2, 8);  // x-z bending
FINITES_CODE(MEMBER_MATERIAL_KIND, 9);

// The only MEMBER_MATERIAL_KIND that is read: with a cold-formed section and TAU_B above 0 the member keeps 0.9 of its
// stiffness instead of 0.8.
FINITES_CODE(COLD_FORMED_MATERIAL, 1);

// Weights become masses by this gravity: millimetres per square second, with the three digits of 9.81.
FINITES_NUMBER(GRAVITY, 9810.0);

// ---------------------------------------------------------------------------------------------- node blocks

FINITES_CODE(NODE_X, 5);  // global coordinates; y and z follow
FINITES_CODE(NODE_JOINT, 15);
FINITES_CODE(NODE_LOCAL_AXES, 28);  // above 0: the node has axes of its own

// ---------------------------------------------------------------------------------------------- codes of plate calls

// Operations of FINITES; FINITES_SOLID_3D has 1, 2, 3, 33, 41, 5, 7 and 71.
FINITES_CODE(OP_STIFFNESS, 1);
FINITES_CODE(OP_MASS, 2);
FINITES_CODE(OP_FORCES, 3);
FINITES_CODE(OP_FORCES_COMMIT, 33);  // of a solid: forces in element axes
FINITES_CODE(OP_LOADS, 4);
FINITES_CODE(OP_BODY_LOAD, 41);
FINITES_CODE(OP_TEMPERATURE_LOAD, 401);
FINITES_CODE(OP_RESULTS, 5);
FINITES_CODE(OP_FRAME, 6);  // inside the library alone
FINITES_CODE(OP_GEOMETRIC, 7);
FINITES_CODE(OP_GEOMETRIC_STORED, 71);
FINITES_CODE(OP_GEOMETRY, 8);
FINITES_CODE(OP_POINT_LOCATION, 9);
FINITES_CODE(OP_POINT_LOAD, 10);

// Kinds, as INFO_FINITES returns them.
FINITES_CODE(KIND_TRI_THIN, 10);
FINITES_CODE(KIND_TRI_THICK, 11);
FINITES_CODE(KIND_TRI_MEMBRANE, 12);
FINITES_CODE(KIND_QUAD_THIN, 20);
FINITES_CODE(KIND_QUAD_THICK, 21);
FINITES_CODE(KIND_QUAD_MEMBRANE, 22);

// Material behaviours, MAT_BEHAV.
FINITES_CODE(BEHAV_ISOTROPIC, 0);
FINITES_CODE(BEHAV_GENERAL, 1);
FINITES_CODE(BEHAV_SECTION_PLASTIC, 2);
FINITES_CODE(BEHAV_LAYERED_PLASTIC, 3);

// Bits of ACTIVE_PARTS.
FINITES_CODE(PART_MEMBRANE, 1);
FINITES_CODE(PART_BENDING, 2);
FINITES_CODE(PART_SHEAR, 4);
FINITES_CODE(PART_SECTION_PLASTIC, 8);

// Rules of GAUSS_INT_2D. Points are numbered counterclockwise from the corner at node 1; the four-point rule of the
// triangle starts with the centroid.
FINITES_CODE(RULE_FULL, 1);     // quadrilateral: 2 by 2; triangle: three points
FINITES_CODE(RULE_ELEMENT, 2);  // triangle: the four points of the elements
FINITES_CODE(RULE_CENTRE, 2);   // quadrilateral: the centre
FINITES_CODE(RULE_NODES, 3);    // the nodes, with weight 0

// Types of a MATERIAL_RECORD, mtype. Types 1 and 3 may yield, when ortho is 0.
FINITES_CODE(MATERIAL_ELASTIC, 0);
FINITES_CODE(MATERIAL_YIELDING, 1);
FINITES_CODE(MATERIAL_YIELDING_OTHER, 3);

// Codes of ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE.
FINITES_CODE(PLATE_MODEL_NONE, 0);
FINITES_CODE(PLATE_MODEL_SECTION, 1);  // whole-section model
FINITES_CODE(PLATE_MODEL_LAYERED, 2);

// Rows of STIFF_FACTORS (2, n): the factor of direction 1 of the element and that of direction 2.
FINITES_CODE(STIFF_FACTOR_1, 1);
FINITES_CODE(STIFF_FACTOR_2, 2);

// ---------------------------------------------------------------------------------------------- codes of members

// Rows of a load case in MEMBER_LOADS. Members with hinges have the end forces of the loads on them in rows 1 to 12.
FINITES_CODE(LOAD_ROW_X, 7);        // of cables: load per length in global axes; y and z follow
FINITES_CODE(LOAD_ROW_STRAIN, 13);  // of cables: free strain, as from a temperature

FINITES_CODE(MESSAGE_LENGTH, 500);  // characters of MSG, of KSTIFT_CATENARY and FINITES_SOLID_3D

// REMOVE_STEP, REMOVE_STEP_SPR: 0 and above the member is whole; minus n, it has failed n steps ago.
FINITES_CODE(REMOVE_STEP_WHOLE, 0);

// HINGE_MODEL.
FINITES_CODE(HINGE_MODEL_ON, 1);

// CURVE_KIND.
FINITES_CODE(SINGLE_FORCES, 1);
FINITES_CODE(ORBISON, 2);
FINITES_CODE(LINEAR_SEGMENTS, 3);

// FORCE_SET: the forces that interact.
FINITES_CODE(ONLY_P, 1);
FINITES_CODE(ONLY_MY, 2);
FINITES_CODE(ONLY_MZ, 3);
FINITES_CODE(P_AND_MY, 4);
FINITES_CODE(P_AND_MZ, 5);
FINITES_CODE(MY_AND_MZ, 6);
FINITES_CODE(ALL_FORCES, 7);

// END1_STATE, END2_STATE.
FINITES_CODE(NO_HINGE, 0);
FINITES_CODE(YIELDING, 1);  // a hinge on the yield surface
FINITES_CODE(NO_PART, 2);   // the end takes no part in the plastic matrix

// SET of GET_HINGE_FORCES.
FINITES_CODE(CURRENT_STATE, 1);
FINITES_CODE(SECOND_STATE, 2);  // ALT_STATE(1)

// Property record of a spring: 32-bit words, numbered from 0, integers and single-precision reals. A component has a
// kind and a stiffness; components are the translations x, y, z and the rotations x, y, z.
FINITES_CODE(SPRING_KIND_X, 2);
FINITES_CODE(SPRING_KIND_Y, 13);
FINITES_CODE(SPRING_KIND_Z, 24);
FINITES_CODE(SPRING_KIND_RX, 11);
FINITES_CODE(SPRING_KIND_RY, 22);
FINITES_CODE(SPRING_KIND_RZ, 33);
FINITES_CODE(SPRING_STIFFNESS_X, 4);
FINITES_CODE(SPRING_STIFFNESS_Y, 15);
FINITES_CODE(SPRING_STIFFNESS_Z, 26);
FINITES_CODE(SPRING_STIFFNESS_RX, 12);
FINITES_CODE(SPRING_STIFFNESS_RY, 23);
FINITES_CODE(SPRING_STIFFNESS_RZ, 34);
FINITES_CODE(SPRING_WORDS, 35);  // words of a record, at least

// Property record of a link: words of its own, then those of a spring, each LINK_SHIFT further on.
FINITES_CODE(LINK_KIND, 1);
FINITES_CODE(LINK_COUNT, 2);  // above 0: the floor of LINK_KIND acts
FINITES_CODE(LINK_FORM, 5);   // 0: the deformable point is at mid-length; otherwise the length has no effect
FINITES_CODE(LINK_SHIFT, 5);
FINITES_CODE(LINK_WORDS, 40);

// LINK_KIND whose rotations of kind 0 are not below MIN_K_ROT.
FINITES_CODE(FLOORED_LINK, 9);

// Kinds of a component that matter; every other kind has the stiffness of its word.
FINITES_CODE(COMPONENT_FREE, 0);       // a rotation of a floored link that has no property of its own
FINITES_CODE(COMPONENT_NONLINEAR, 8);  // K_INITIAL, and the ratio K_CURRENT / K_INITIAL of SPRING_NL_REC
FINITES_CODE(COMPONENT_RIGID, 9);      // RIGID_K_TRANS, RIGID_K_ROT of SOLANA

// ---------------------------------------------------------------------------------------------- result records
//
// Columns and words are numbered from 1. Of a group the first is named; the others follow.

// RES_RECORD, 90 reals, of a plate at one point, in element axes: operation 5 writes four at the nodes and four at the
// integration points. It is not the record of 100 that UPDATE_PRINCIPAUX_RES100_PLA works on (below).
FINITES_CODE(RES_LENGTH, 90);
FINITES_CODE(RES_POINTS, 4);
FINITES_CODE(RES_VALUES, 360);
FINITES_CODE(COL_X, 1);
FINITES_CODE(COL_Y, 2);
FINITES_CODE(COL_Z, 3);
FINITES_CODE(COL_STRAIN_TOP, 4);      // x, y, xy
FINITES_CODE(COL_STRESS_TOP, 7);      // x, y, xy
FINITES_CODE(COL_PRINCIPAL_TOP, 10);  // angle in radians, s1, s2, largest shear, equivalent stress
FINITES_CODE(COL_STRAIN_MID, 15);
FINITES_CODE(COL_STRESS_MID, 18);
FINITES_CODE(COL_PRINCIPAL_MID, 21);
FINITES_CODE(COL_STRAIN_BOTTOM, 26);
FINITES_CODE(COL_STRESS_BOTTOM, 29);
FINITES_CODE(COL_PRINCIPAL_BOTTOM, 32);
FINITES_CODE(COL_FORCES, 37);        // Nx, Ny, Nxy, per length
FINITES_CODE(COL_MOMENTS, 40);       // Mx, My, Mxy, per length
FINITES_CODE(COL_SHEAR_STRAIN, 43);  // gxz, gyz
FINITES_CODE(COL_SHEAR_FORCE, 45);   // Qx, Qy, per length
FINITES_CODE(COL_SHEAR_STRESS, 47);  // mean transverse shear stresses xz, yz
FINITES_CODE(COL_SPARE, 49);         // 49 and 50 are zero
FINITES_CODE(COL_PLASTIC_TOP, 51);   // plastic strains x, y, xy
FINITES_CODE(COL_PLASTIC_MID, 54);
FINITES_CODE(COL_PLASTIC_BOTTOM, 57);
FINITES_CODE(COL_PLASTIC_SHEAR, 60);  // xz, yz
FINITES_CODE(COL_LAST, 62);           // the last column that an element writes

// The solver's record of 100 reals, on which UPDATE_PRINCIPAUX_RES100_PLA works: stresses in, principal and equivalent
// stresses out. It is not the RES_RECORD of operation 5 (above); res100.h converts one to the other.
FINITES_CODE(RES100_LENGTH, 100);
FINITES_CODE(RES100_EQUIVALENT_TOP, 7);
FINITES_CODE(RES100_EQUIVALENT_MID, 8);
FINITES_CODE(RES100_EQUIVALENT_BOTTOM, 9);
FINITES_CODE(RES100_STRESS_TOP, 24);  // x, y, xy
FINITES_CODE(RES100_STRESS_MID, 27);
FINITES_CODE(RES100_STRESS_BOTTOM, 30);
FINITES_CODE(RES100_SPARE, 33);          // copied, without effect
FINITES_CODE(RES100_PRINCIPAL_TOP, 34);  // angle in radians, s1, s2, largest shear
FINITES_CODE(RES100_PRINCIPAL_MID, 38);
FINITES_CODE(RES100_PRINCIPAL_BOTTOM, 42);
FINITES_CODE(RES100_SHEAR_STRESS, 46);  // mean transverse shear stresses xz, yz

// Record of 50 reals of a solid at a node or point: RES50_NODE, RES50_GAUSS, in element axes.
FINITES_CODE(RES50_LENGTH, 50);
FINITES_CODE(WORD_STRAIN, 4);   // xx, yy, zz, xy, xz, yz, shears engineering
FINITES_CODE(WORD_STRESS, 10);  // xx, yy, zz, xy, xz, yz
FINITES_CODE(WORD_MISES, 22);
FINITES_CODE(WORD_PRINCIPAL, 23);  // three
FINITES_CODE(WORD_FORCE, 36);      // nodal forces in element axes, in the solver's record alone
FINITES_CODE(WORDS_OF_POINT, 35);  // of a point
FINITES_CODE(WORDS_WRITTEN, 40);   // a record is cleared up to here

#endif
