// model_data.h: the names of the fields of MODEL_DATA, the solver's one large real array, and the way to read it.
//
// MODEL_DATA is written A in formulas. It is numbered from 1. Integers in it are stored as reals and truncated when
// they are read.
#ifndef FINITES_MODEL_DATA_H
#define FINITES_MODEL_DATA_H

#include <cmath>
#include <cstdint>
#include <limits>

// Header: A(NAME).
constexpr int NONLIN_MATERIAL = 13;      // 1: material nonlinearity is active
constexpr int STEP_COUNTER = 14;         // 0 on the very first pass
constexpr int ANALYSIS_STATE = 15;       // 1 while a nonlinear incremental run is in progress
constexpr int RES_BASE = 29;             // start of the exchange area
constexpr int SECOND_ORDER = 41;         // 1: geometric stiffness belongs to the stiffness; 3: frames return it apart
constexpr int PLATE_BLOCK_START = 100;   // k of element 1
constexpr int PLATE_BLOCK_STRIDE = 102;  // length of an element block

// Exchange area: A(res_base + NAME), res_base being the value of A(RES_BASE).
constexpr int EXCHANGE_DISPLACEMENTS = 0;  // 24 reals in
constexpr int EXCHANGE_FORCES = 24;        // 24 reals out
constexpr int EXCHANGE_NODES = 48;         // 360 reals out, results at the nodes
constexpr int EXCHANGE_POINTS = 408;       // 360 reals out, results at the integration points

// Element block: A(k + NAME).
constexpr int ELEM_ID = 1;
constexpr int MASS_FACTOR = 24;
constexpr int BLOCK_NODE_COUNT = 35;
constexpr int FORMULATION = 39;
constexpr int OFFSET_SWITCH = 41;
constexpr int COMMON_OFFSET = 42;  // x; y and z follow
constexpr int MODIFIER_MEMBRANE = 57;
constexpr int MODIFIER_BENDING = 58;
constexpr int MODIFIER_SHEAR = 59;
constexpr int ORTHO_ANGLE_IN = 61;  // radians
constexpr int PLASTIC_SWITCH = 62;

// Section block: A(sec + NAME).
constexpr int SECTION_NUMBER = 27;
constexpr int SECTION_TYPE = 28;
constexpr int SECTION_THICKNESS = 30;

constexpr int HOMOGENEOUS_SECTION = 1;
constexpr int COMPOSITE_SECTION = 6;

// Material block: A(mat + NAME).
constexpr int MATERIAL_NUMBER = 0;
constexpr int MATERIAL_YIELD_STRESS = 1;
constexpr int MATERIAL_YOUNG = 3;
constexpr int MATERIAL_POISSON = 4;
constexpr int MATERIAL_UNIT_WEIGHT = 5;
constexpr int MATERIAL_EXPANSION = 6;
constexpr int MATERIAL_SHEAR_MODULUS = 7;

// Node block: A(ptr + NAME), global coordinates.
constexpr int NODE_X = 5;  // y and z follow

// The integer that a real holds: truncated towards zero. Defined for every input: beyond the range of an integer the
// nearest end of the range, for a not-a-number 0.
inline std::int32_t TRUNCATED(double value) {
  constexpr double low = std::numeric_limits<std::int32_t>::min();
  constexpr double high = std::numeric_limits<std::int32_t>::max();
  if (std::isnan(value)) return 0;
  if (value <= low) return std::numeric_limits<std::int32_t>::min();
  if (value >= high) return std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(value);
}

// A(i), numbered from 1; A.INTEGER(i) truncates. Subscripts are 64 bits wide, so that a sum of a field number and a
// block start cannot overflow.
template <class REAL>
class MODEL_DATA_VIEW {
 public:
  explicit MODEL_DATA_VIEW(REAL* base) : base_(base) {}
  REAL& operator()(std::int64_t i) const { return base_[i - 1]; }
  std::int32_t INTEGER(std::int64_t i) const { return TRUNCATED(base_[i - 1]); }

 private:
  REAL* base_;
};

using MODEL_DATA = MODEL_DATA_VIEW<double>;
using MODEL_DATA_READER = MODEL_DATA_VIEW<const double>;

#endif
