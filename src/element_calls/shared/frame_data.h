// frame_data.h: the names of the fields of MODEL_DATA that frame members read.
//
// I is the start of the element's entry, S that of its section, M that of its material, N that of a node: A(I + NAME).
#ifndef FINITES_FRAME_DATA_H
#define FINITES_FRAME_DATA_H

// Header.
constexpr int SHEAR_DEFORMATION = 42;  // 1: beams deform in shear

// Kinds of analysis, A(SECOND_ORDER).
constexpr int GEOMETRIC_ADDED = 1;  // the geometric matrix belongs to the stiffness
constexpr int GEOMETRIC_APART = 3;  // it is returned apart

// Member entry. Y is bending in the x-z plane (rotation about y), Z bending in the x-y plane (rotation about z).
constexpr int MEMBER_ID = 1;
constexpr int FIXITY_Y1 = 7, FIXITY_Z1 = 8;  // end fixity factors: 0 pin, 1 rigid
constexpr int FIXITY_Y2 = 9, FIXITY_Z2 = 10;
constexpr int MEMBER_SECTION = 12;   // S
constexpr int MEMBER_MATERIAL = 13;  // M
constexpr int MEMBER_NODE_1 = 14, MEMBER_NODE_2 = 15;
constexpr int MEMBER_WEIGHT = 18;
constexpr int PROPERTY_ADDRESS = 31;  // link and spring: the address of their record, in the bits of the word
constexpr int FACTOR_AREA = 42;
constexpr int FACTOR_I1 = 43;  // also on the shear area of x-y bending
constexpr int FACTOR_I2 = 44;  // also on the shear area of x-z bending
constexpr int FACTOR_J = 45;
constexpr int RELEASE_AXIAL = 54, RELEASE_Y = 55, RELEASE_Z = 56, RELEASE_TORSION = 57;  // 1 first end, 2 second end
constexpr int FACTOR_TORSION = 67;
constexpr int UNSTRESSED_LENGTH = 70;  // cable
constexpr int PRETENSION_STRESS = 71;  // truss
constexpr int REMOVE_MIN = 82;         // least removal coefficient
constexpr int REDUCTION_INDEX = 83;    // into STIFF_REDUCTION

// Section entry of a member. The names of the shear areas tell the force: the one along z belongs to x-z bending.
constexpr int FRAME_SECTION_TYPE = 2;
constexpr int SECTION_AREA = 3;
constexpr int SECTION_SHEAR_AREA_Z = 4;  // belongs to x-z bending
constexpr int SECTION_SHEAR_AREA_Y = 5;  // belongs to x-y bending
constexpr int SECTION_I1 = 6;            // x-y bending
constexpr int SECTION_I2 = 7;            // x-z bending
constexpr int SECTION_J = 8;

constexpr int YIELDING_TRUSS_SECTION = 10;
constexpr int PRETENSIONED_SECTION = 14;

// Material entry of a member.
constexpr int MEMBER_E1 = 3;  // axial force and x-y bending
constexpr int MEMBER_G = 7;
constexpr int MEMBER_E2 = 8;  // x-z bending
constexpr int MEMBER_MATERIAL_KIND = 9;

// Node entry: the switch of its local axes.
constexpr int NODE_LOCAL_AXES = 28;

// MODE of the frame stiffness routines; every other value is the solver's axes without step effects.
constexpr int MODE_STEP = 0;
constexpr int MODE_LOCAL = 1;

#endif
