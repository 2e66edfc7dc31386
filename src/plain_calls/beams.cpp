// beams.cpp: the plain calls of beams: stiffness, mass, geometric stiffness, internal forces, measures.
#include "common/member_order.h"
#include "common/small_products.h"
#include "finites/elements.h"
#include "frame_elements/beam_inertia.h"
#include "plain_calls/plain_beam.h"

namespace {

finites_status stiffness_of(const finites_beam& from, PLAIN_BEAM& beam, double* K) {
  const finites_status status = read_beam(from, beam);
  return status != FINITES_OK ? status : write_stiffness(beam, K);
}

// Of a force that is not 0; zero for 0, as the protocol has none then.
finites_status write_geometric(const PLAIN_BEAM& beam, double axial, double* KG) {
  PLANE_MATRIX G{};
  BEAM_PROPERTIES p = beam.properties;
  p.axial_force = axial;
  if (axial != 0.0 && !geometric_planes(geometric_data(p), G)) return FINITES_RESULT;
  double result[MEMBER_DOFS * MEMBER_DOFS];
  turn_to_nodes(beam, G, result);
  return hand_over(result, MEMBER_DOFS * MEMBER_DOFS, KG);
}

}  // namespace

finites_status write_stiffness(const PLAIN_BEAM& beam, double* K) {
  PLANE_MATRIX P;
  const finites_status finite = local_stiffness(beam, P);
  if (finite == FINITES_OK) turn_to_nodes(beam, P, K);
  return finite;
}

void write_mass(const PLAIN_BEAM& beam, double density, double J, bool lumped, double* M) {
  const BEAM_PROPERTIES& p = beam.properties;
  PLANE_MATRIX planes;
  inertia_planes({p.AREA, p.I1, p.I2, J}, p.L, lumped, planes);
  const BEAM_ENDS ends{p.a1, p.a2, p.b1, p.b2, p.release_x, p.release_y, p.release_z, p.release_t};
  scale_inertia(density * (p.AREA * p.L), inertia_releases(ends), planes);
  turn_to_nodes(beam, planes, M);
}

void finites_beam_init(finites_beam* beam) {
  if (beam == nullptr) return;
  *beam = finites_beam{};
  beam->fixity_z[0] = beam->fixity_z[1] = beam->fixity_y[0] = beam->fixity_y[1] = 1.0;
}

finites_status finites_beam_stiffness(const finites_beam* beam, double* K) {
  if (beam == nullptr || K == nullptr) return FINITES_NULL;
  PLAIN_BEAM b;
  double result[MEMBER_DOFS * MEMBER_DOFS];
  const finites_status status = stiffness_of(*beam, b, result);
  return status != FINITES_OK ? status : hand_over(result, MEMBER_DOFS * MEMBER_DOFS, K);
}

finites_status finites_beam_mass(const finites_beam* beam, int32_t lumped, double* M) {
  if (beam == nullptr || M == nullptr) return FINITES_NULL;
  PLAIN_BEAM b;
  const finites_status status = read_beam(*beam, b);
  if (status != FINITES_OK) return status;
  if (lumped != 0 && lumped != 1) return FINITES_BAD_CODE;
  double result[MEMBER_DOFS * MEMBER_DOFS];
  write_mass(b, beam->density, beam->J, lumped == 1, result);
  return hand_over(result, MEMBER_DOFS * MEMBER_DOFS, M);
}

finites_status finites_beam_geometric(const finites_beam* beam, const double* u, double* KG) {
  if (beam == nullptr || u == nullptr || KG == nullptr) return FINITES_NULL;
  PLAIN_BEAM b;
  const finites_status status = first_fault(read_beam(*beam, b), check_member_numbers(u, 12));
  if (status != FINITES_OK) return status;
  const VECTOR<12> d = ends_of_nodes(b, u);
  return write_geometric(b, axial_stiffness(b.properties) * (d(7) - d(1)), KG);
}

finites_status finites_beam_geometric_of_force(const finites_beam* beam, double axial, double* KG) {
  if (beam == nullptr || KG == nullptr) return FINITES_NULL;
  PLAIN_BEAM b;
  const finites_status status = first_fault(read_beam(*beam, b), check_member_numbers(&axial, 1));
  return status != FINITES_OK ? status : write_geometric(b, axial, KG);
}

finites_status finites_beam_forces(const finites_beam* beam, const double* u, double* F) {
  if (beam == nullptr || u == nullptr || F == nullptr) return FINITES_NULL;
  PLAIN_BEAM b;
  MATRIX<12, 12> K;
  const finites_status status = first_fault(stiffness_of(*beam, b, K.data()), check_member_numbers(u, 12));
  if (status != FINITES_OK) return status;
  VECTOR<12> v;
  for (int i = 1; i <= 12; ++i) v(i) = u[i - 1];
  return hand_over(product(K, v).data(), 12, F);
}

finites_status finites_beam_measure(const finites_beam* beam, finites_member_measures* measures) {
  if (beam == nullptr || measures == nullptr) return FINITES_NULL;
  PLAIN_BEAM b;
  const finites_status status = read_beam(*beam, b);
  if (status == FINITES_OK) measure_member(b.frame, beam->area, beam->density, *measures);
  return status;
}
