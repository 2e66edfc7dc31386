// plain_beam.h: a beam of the plain calls once its description is checked.
#ifndef FINITES_PLAIN_BEAM_H
#define FINITES_PLAIN_BEAM_H

#include "common/plane_matrix.h"
#include "finites/elements.h"
#include "finites/views.hpp"
#include "frame_elements/beam_planes.h"
#include "plain_calls/member_frame.h"

struct PLAIN_BEAM {
  MEMBER_FRAME frame;
  BEAM_PROPERTIES properties;  // axial_force 0
  double expansion;
  bool has_offsets;
  double offset[2][3];
};

// A description that is not null. On a fault the beam is undefined.
finites_status read_beam(const finites_beam& from, PLAIN_BEAM& beam);

// Its frame and properties, unchecked but for the frame.
finites_status fill_beam(const finites_beam& from, PLAIN_BEAM& beam);

// Whether read_beam() surely succeeds, at a fraction of its cost: by the limits of lanes/beam_limits.h, lengths by
// their squares without roots and quotients.
bool surely_reads(const finites_beam& b);

// E A / L; 0 where the axial force is released.
double axial_stiffness(const BEAM_PROPERTIES& p);

// G J / L likewise.
double torsional_stiffness(const BEAM_PROPERTIES& p);

// P := the elastic stiffness with its releases, local axes. FINITES_RESULT where it is not finite.
finites_status local_stiffness(const PLAIN_BEAM& beam, PLANE_MATRIX& P);

// K (12, 12), global axes, of the nodes := stiffness, consistent or lumped mass of a beam that fill_beam() has taken.
// Written directly: of a beam that surely_reads() they are finite.
finites_status write_stiffness(const PLAIN_BEAM& beam, double* K);
void write_mass(const PLAIN_BEAM& beam, double density, double J, bool lumped, double* M);

// K (12, 12), global axes, of the nodes := a matrix of the ends in local axes.
void turn_to_nodes(const PLAIN_BEAM& beam, const PLANE_MATRIX& P, double* K);
void turn_to_nodes(const PLAIN_BEAM& beam, double* K);  // of any pattern, in place

// Local displacements of the ends of global displacements u of the nodes, and global forces on the nodes of local ones
// on the ends.
VECTOR<12> ends_of_nodes(const PLAIN_BEAM& beam, const double* u);
VECTOR<12> nodes_of_ends(const PLAIN_BEAM& beam, const VECTOR<12>& f);

#endif
