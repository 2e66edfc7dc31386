// operations.h: the codes of the plate entry.
#ifndef FINITES_OPERATIONS_H
#define FINITES_OPERATIONS_H

#include <cstdint>

// Operations.
constexpr std::int32_t OP_STIFFNESS = 1;
constexpr std::int32_t OP_MASS = 2;
constexpr std::int32_t OP_FORCES = 3;
constexpr std::int32_t OP_FORCES_COMMIT = 33;
constexpr std::int32_t OP_LOADS = 4;
constexpr std::int32_t OP_BODY_LOAD = 41;
constexpr std::int32_t OP_TEMPERATURE_LOAD = 401;
constexpr std::int32_t OP_RESULTS = 5;
constexpr std::int32_t OP_FRAME = 6;  // engines only
constexpr std::int32_t OP_GEOMETRIC = 7;
constexpr std::int32_t OP_GEOMETRIC_STORED = 71;
constexpr std::int32_t OP_GEOMETRY = 8;
constexpr std::int32_t OP_POINT_LOCATION = 9;
constexpr std::int32_t OP_POINT_LOAD = 10;

// Formulation codes of the element block; every other value is a thick shell.
constexpr std::int32_t FORMULATION_THIN = 1;
constexpr std::int32_t FORMULATION_MEMBRANE = 2;
constexpr std::int32_t FORMULATION_MEMBRANE_PLASTIC = 3;  // the one membrane code that may yield
constexpr std::int32_t FORMULATION_MEMBRANE_REDUCED = 98;
constexpr std::int32_t FORMULATION_MEMBRANE_OTHER = 99;

// Element kinds.
constexpr std::int32_t KIND_TRI_THIN = 10;
constexpr std::int32_t KIND_TRI_THICK = 11;
constexpr std::int32_t KIND_TRI_MEMBRANE = 12;
constexpr std::int32_t KIND_QUAD_THIN = 20;
constexpr std::int32_t KIND_QUAD_THICK = 21;
constexpr std::int32_t KIND_QUAD_MEMBRANE = 22;

// MAT_BEHAV.
constexpr std::int32_t BEHAV_ISOTROPIC = 0;
constexpr std::int32_t BEHAV_GENERAL = 1;
constexpr std::int32_t BEHAV_SECTION_PLASTIC = 2;
constexpr std::int32_t BEHAV_LAYERED_PLASTIC = 3;

// Bits of ACTIVE_PARTS.
constexpr std::int32_t PART_MEMBRANE = 1;
constexpr std::int32_t PART_BENDING = 2;
constexpr std::int32_t PART_SHEAR = 4;
constexpr std::int32_t PART_SECTION_PLASTIC = 8;

#endif
