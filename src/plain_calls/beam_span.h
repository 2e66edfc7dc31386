// beam_span.h: what happens between the ends of a beam of the plain calls, exact for its loads.
#ifndef FINITES_BEAM_SPAN_H
#define FINITES_BEAM_SPAN_H

#include "finites/elements.h"
#include "plain_calls/plain_beam.h"

// The loads along a beam in local axes. Forces and moments at points are turned when they are asked for: a call
// allocates nothing, and their number is the caller's.
struct SPAN_LOAD {
  double q[3];
  double strain;        // of the axis, by temperature
  double curvature[2];  // by temperature, free: in the x-y plane, in the x-z plane
  const finites_beam_point_load* points;
  int count;
};

// A load that may be null. Faults as they are told in elements.h.
finites_status read_load(const PLAIN_BEAM& beam, const finites_beam_load* from, SPAN_LOAD& load);

// A place along a beam with a little rounding beyond its ends is an end. False where it lies outside.
bool place_along(const PLAIN_BEAM& beam, double x, double& place);

// Bending in one plane, axial force or torsion, from the first end on: position, rotation, shear force and moment there
// (axial: u, -, N, -; torsion: angle, -, T, -), and forces and moments of both ends.
struct SPAN_START {
  double v, phi, V, m;
  double V_end, m_end;  // at the second end, beyond all loads
};

// The four independent parts of a beam.
struct SPAN {
  SPAN_START xy, xz, axial, torsion;
};

// With the displacements d of the nodes, in local axes, at the ends. FINITES_MECHANISM where a plane has no unique
// answer; with forces_only a plane without forces counts as one without them.
finites_status solve_span(const PLAIN_BEAM& beam, const SPAN_LOAD& load, const VECTOR<12>& d, bool forces_only,
                          SPAN& span);

// The forces that the nodes exert on the ends, local axes.
VECTOR<12> end_forces_of(const SPAN& span);

// The section at a place: the part before it is without the load that acts there.
finites_beam_section section_at(const PLAIN_BEAM& beam, const SPAN_LOAD& load, const SPAN& span, double x);

#endif
