// trusses.cpp: the plain calls of trusses.
//
//     loads     q L / 2 at each end;  -E A alpha t at the first end and E A alpha t at the second, along the axis
//     force     N = E A ((u2 - u1) / L - alpha t) + pretension
#include <algorithm>

#include "common/member_order.h"
#include "common/small_products.h"
#include "finites/elements.h"
#include "frame_elements/truss_matrices.h"
#include "plain_calls/member_frame.h"

namespace {

constexpr int ENTRIES = TRUSS_DOFS * TRUSS_DOFS;

finites_status read_truss(const finites_truss& t, MEMBER_FRAME& frame) {
  const double values[] = {t.E, t.area, t.density, t.expansion, t.pretension};
  finites_status status = first_fault(check_member_numbers(&t.xyz[0][0], 6), check_member_numbers(values, 5));
  if (status != FINITES_OK) return status;
  status = frame_of_member(t.xyz, nullptr, nullptr, frame);
  if (status != FINITES_OK) return status;
  if (!(t.E > 0.0)) return FINITES_MODULUS;
  if (t.density < 0.0) return FINITES_DENSITY;
  return t.area > 0.0 ? FINITES_OK : FINITES_SECTION;
}

// A matrix in local axes, in place.
finites_status write_turned(const MEMBER_FRAME& frame, double* local, double* to) {
  double T[144];
  rotation_of_member(frame, T);
  truss_to_solver_axes(T, local);
  return hand_over(local, ENTRIES, to);
}

double elongation(const MEMBER_FRAME& frame, const double* u) {
  double d = 0.0;
  for (int i = 1; i <= 3; ++i) d += frame.axes(1, i) * (u[2 + i] - u[i - 1]);
  return d;
}

double axial_force_of(const finites_truss& t, const MEMBER_FRAME& frame, const double* u) {
  return t.area * t.E / frame.length * elongation(frame, u);
}

finites_status write_geometric(const MEMBER_FRAME& frame, double axial, double* KG) {
  double local[ENTRIES];
  truss_string(axial, frame.length, local);
  return write_turned(frame, local, KG);
}

}  // namespace

void finites_truss_init(finites_truss* truss) {
  if (truss != nullptr) *truss = finites_truss{};
}

finites_status finites_truss_stiffness(const finites_truss* truss, double* K) {
  if (truss == nullptr || K == nullptr) return FINITES_NULL;
  MEMBER_FRAME frame;
  const finites_status status = read_truss(*truss, frame);
  if (status != FINITES_OK) return status;
  double local[ENTRIES];
  truss_stiffness(truss->area * truss->E / frame.length, local);
  if (truss->pretension != 0.0) add_truss_string(truss->pretension, frame.length, local);
  return write_turned(frame, local, K);
}

finites_status finites_truss_mass(const finites_truss* truss, int32_t lumped, double* M) {
  if (truss == nullptr || M == nullptr) return FINITES_NULL;
  MEMBER_FRAME frame;
  const finites_status status = read_truss(*truss, frame);
  if (status != FINITES_OK) return status;
  if (lumped != 0 && lumped != 1) return FINITES_BAD_CODE;
  double local[ENTRIES];
  truss_mass(truss->density * (truss->area * frame.length), lumped == 0, local);
  return write_turned(frame, local, M);
}

finites_status finites_truss_geometric(const finites_truss* truss, const double* u, double* KG) {
  if (truss == nullptr || u == nullptr || KG == nullptr) return FINITES_NULL;
  MEMBER_FRAME frame;
  const finites_status status = first_fault(read_truss(*truss, frame), check_member_numbers(u, TRUSS_DOFS));
  return status != FINITES_OK ? status : write_geometric(frame, axial_force_of(*truss, frame, u), KG);
}

finites_status finites_truss_geometric_of_force(const finites_truss* truss, double axial, double* KG) {
  if (truss == nullptr || KG == nullptr) return FINITES_NULL;
  MEMBER_FRAME frame;
  const finites_status status = first_fault(read_truss(*truss, frame), check_member_numbers(&axial, 1));
  return status != FINITES_OK ? status : write_geometric(frame, axial, KG);
}

finites_status finites_truss_forces(const finites_truss* truss, const double* u, double* F) {
  if (truss == nullptr || u == nullptr || F == nullptr) return FINITES_NULL;
  MATRIX<TRUSS_DOFS, TRUSS_DOFS> K;
  const finites_status status =
      first_fault(finites_truss_stiffness(truss, K.data()), check_member_numbers(u, TRUSS_DOFS));
  if (status != FINITES_OK) return status;
  VECTOR<TRUSS_DOFS> v;
  std::copy_n(u, TRUSS_DOFS, v.data());
  return hand_over(product(K, v).data(), TRUSS_DOFS, F);
}

finites_status finites_truss_loads(const finites_truss* truss, const double line[3], double temperature, double* F) {
  if (truss == nullptr || F == nullptr) return FINITES_NULL;
  MEMBER_FRAME frame;
  finites_status status = first_fault(read_truss(*truss, frame), check_member_numbers(&temperature, 1));
  if (status == FINITES_OK && line != nullptr) status = check_member_numbers(line, 3);
  if (status != FINITES_OK) return status;
  const double push = truss->E * truss->area * truss->expansion * temperature;
  double result[TRUSS_DOFS];
  for (int i = 0; i < 3; ++i) {
    const double half = line == nullptr ? 0.0 : line[i] * frame.length / 2.0;
    result[i] = half - frame.axes(1, i + 1) * push;
    result[3 + i] = half + frame.axes(1, i + 1) * push;
  }
  return hand_over(result, TRUSS_DOFS, F);
}

finites_status finites_truss_axial_force(const finites_truss* truss, const double* u, double temperature,
                                         double* axial) {
  if (truss == nullptr || u == nullptr || axial == nullptr) return FINITES_NULL;
  MEMBER_FRAME frame;
  const finites_status status = first_fault(read_truss(*truss, frame), check_member_numbers(u, TRUSS_DOFS),
                                            check_member_numbers(&temperature, 1));
  if (status != FINITES_OK) return status;
  const double heat = truss->E * truss->area * truss->expansion * temperature;
  const double N = axial_force_of(*truss, frame, u) - heat + truss->pretension;
  return hand_over(&N, 1, axial);
}

finites_status finites_truss_measure(const finites_truss* truss, finites_member_measures* measures) {
  if (truss == nullptr || measures == nullptr) return FINITES_NULL;
  MEMBER_FRAME frame;
  const finites_status status = read_truss(*truss, frame);
  if (status == FINITES_OK) measure_member(frame, truss->area, truss->density, *measures);
  return status;
}
