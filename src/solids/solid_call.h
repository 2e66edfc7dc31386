// solid_call.h: one element during a call, and the failure of a call.
#ifndef FINITES_SOLID_CALL_H
#define FINITES_SOLID_CALL_H

#include <cstdint>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "solids/kinematics.h"
#include "solids/linear_places.h"
#include "solids/solid_data.h"

struct SOLID_CALL {
  std::int32_t KIND, NN, points;
  SOLID_RECORD* record;
  const SOLID_NL_RECORD* nonlinear;  // null when it is not allocated
  MATRIX<3, 3> AX;                   // rows the axes
  SOLID_VECTORS XYZ;                 // coordinates in element axes
  double E, nu, unit_weight;
  // Of a linear kind:
  const LINEAR_KIND* linear;  // null for other kinds
  EDGE_VECTORS XE;            // XYZ along the edges
  // Of the other kinds, the rule:
  SOLID_STATIONS station;
  VECTOR<SOLID_ROOM> weight;
};

inline ELASTIC_TERMS elastic_terms(const SOLID_CALL& S) { return elastic_terms(S.record->STIFF_FACTOR, S.E, S.nu); }

// Reads the element at a position: material, coordinates in element axes. False when the node count is no kind or
// exceeds the node list of a record: what is left are the linear kinds.
bool prepare_solid(SOLID_CALL& S, std::int32_t pos, std::int32_t NN, const MODEL_DATA_READER& A);

// Message 1228 with the number of an element to IERR and MSG.
void report_solid(std::int32_t number, std::int32_t* IERR, char* MSG);

#endif
