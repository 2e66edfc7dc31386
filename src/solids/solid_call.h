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
  double factor, E, nu, unit_weight;
  const double* U;                   // displacements (3, NN), global axes
  const SOLID_NL_RECORD* nonlinear;  // null when there is no stored stress
  SOLID_RECORD* record;              // for results; null for a call that has no record
  MATRIX<3, 3> AX;                   // rows the axes
  SOLID_VECTORS XYZ;                 // coordinates in element axes
  // Of a linear kind:
  const LINEAR_KIND* linear;  // null for other kinds
  EDGE_VECTORS XE;            // XYZ along the edges
  // Of the other kinds, the rule:
  SOLID_STATIONS station;
  VECTOR<SOLID_ROOM> weight;
};

inline ELASTIC_TERMS elastic_terms(const SOLID_CALL& S) { return elastic_terms(S.factor, S.E, S.nu); }

// The kind and its tables. False when the node count is no kind or exceeds the node list of a record: what is left are
// the linear kinds.
bool set_solid_kind(SOLID_CALL& S, std::int32_t NN);

// Element axes and the coordinates in them, from those in global axes (3, NN).
void set_solid_geometry(SOLID_CALL& S, const SOLID_VECTORS& global);

// Reads the element at a position: material, displacements, stored stress, coordinates. False when its node count has
// no kind.
bool prepare_solid(SOLID_CALL& S, std::int32_t pos, std::int32_t NN, const MODEL_DATA_READER& A);

// Message 1228 with the number of an element to IERR and MSG.
void report_solid(std::int32_t number, std::int32_t* IERR, char* MSG);

#endif
