// layered_law.cpp: the constants of the return mapping, with the letters of layered_return.cpp.
#include "plate_material/layered_law.h"

#include "plate_material/layered_limits.h"
#include "plate_material/plastic_material.h"
#include "plate_material/through_thickness.h"

LAYERED_RETURN_CONSTANTS::LAYERED_RETURN_CONSTANTS(const PLATEELEM_RECORD& EL, int theory) : E(EL.E1) {
  const double G = shear_modulus(EL);
  mean_divisor = 3.0 * (1.0 - EL.NU1);
  shear = 2.0 * G;
  across = FIVE_THIRDS_SINGLE * G;
  mean_slope_divisor = 9.0 * (1.0 - EL.NU1);
  const MATRIX5 metric = metric_eigenvalues(theory);
  const MATRIX5 elastic = elastic_eigenvalues(EL, theory);
  for (int i = 1; i <= 5; ++i) {
    Lp(i) = metric(i, i);
    Lc(i) = elastic(i, i);
  }
  const MATRIX5 C = elastic_matrix(EL, theory);
  const MATRIX5 P = yield_metric(theory);
  flow_stress = MATRIX5{};
  for (int j = 1; j <= 2; ++j) {
    for (int i = 1; i <= 2; ++i) flow_stress(i, j) = C(i, 1) * P(1, j) + C(i, 2) * P(2, j);
  }
  for (int i = 3; i <= 5; ++i) flow_stress(i, i) = C(i, i) * P(i, i);
  growing = E > 0.0 && mean_divisor > 0.0 && G > 0.0;
}

LAYERED_LAW::LAYERED_LAW(const PLATEELEM_RECORD& record, int plate_theory, int operation,
                         const PLATE_STATE_IN_USE& state)
    : EL(record),
      theory(plate_theory),
      op(operation),
      increment_from_current(state.increments_from_current),
      failures(state.failures),
      stored_tangent(state.tangent),
      D(elastic_matrix(record, THICK_THEORY)),
      tangent(elastic_matrix(record, plate_theory)),
      P(yield_metric(plate_theory)),
      yield_stress(record.YIELD_STRESS),
      hardening(plastic_modulus(record)),
      constants(record, plate_theory) {
  for (int i = 0; i < 9; ++i) axes.V[i] = both(record.AXES.V[i]);
  for (int i = 0; i < 25; ++i) two_tangents[i] = two_tangents[25 + i] = tangent.V[i];
}
