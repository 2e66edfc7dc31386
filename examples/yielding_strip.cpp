// yielding_strip.cpp: a strip in tension beyond its yield stress, by the layered model. Three steps of displacements
// are stored (operation 33) and accepted; the stored stresses follow fy + Et (strain - fy / E). Operation 3 is not
// asked for them: its forces are the tangent times the displacements of the call. Units: N, mm.
//
// Built with -Iinclude -Icompanions/tarnix; docs/calling.md, "A first program", has the whole command.
#include <cmath>
#include <cstdio>
#include <vector>

#include "finites/builders.h"
#include "finites/checks.h"
#include "finites/finites.h"
#include "tarnix.h"

constexpr int exchange = 121, nodes = 901, section = 1101, material = 1141, entry = 1151, length = 1300, layers = 5;
constexpr double L = 1000, b = 100, h = 10, E = 210e3, nu = 0.3, fy = 235, Et = 4200;

int main() {
  std::vector<double> A(length), state_memory(FINITES_LAYERED_STATE_REALS(layers));
  PLATE_RECORD plate;
  PLATE_STATE_RECORD state;
  POINT_STATE_RECORD points[4];
  const double x[4] = {0, L, L, 0}, y[4] = {0, 0, b, b};
  std::int32_t ptr[4];
  finites_fill_header(A.data(), exchange, entry, 70);
  for (int i = 0; i < 4; ++i) finites_fill_node_block(A.data(), ptr[i] = nodes + 30 * i, x[i], y[i], 0);
  finites_fill_section_of_plate(A.data(), section, 1, h);
  finites_fill_material_of_plate(A.data(), material, 1, E, nu, 77e-6);
  finites_fill_plate_block(A.data(), entry, 1, 4, FORMULATION_THIN);
  finites_fill_plate_record(&plate, section, material, 4, ptr);
  finites_fill_layered_state(&state, points, layers, state_memory.data());
  SOLANAELEM.PLATE_RECORDS = REFER_TO(&plate, 1);
  SOLANAELEM.PLATE_STATE = REFER_TO(&state, 1);
  SOLANAELEM.NPT_THICK = layers;

  MATERIAL_RECORD steel{};  // E and nu stand in the material block
  steel.mtype = MATERIAL_YIELDING;
  steel.HARDENING = Et;
  const std::int32_t one = 1, model = PLATE_MODEL_LAYERED, elem = 1, k = entry, n = length;
  TARNIX_STORE_MATERIAL(&one, &steel);
  TARNIX_STORE_KNLMATERIAL_PLATE(&model);
  A[material + MATERIAL_YIELD_STRESS - 1] = fy;
  A[entry + PLASTIC_SWITCH - 1] = A[NONLIN_MATERIAL - 1] = A[ANALYSIS_STATE - 1] = 1;
  finites_finding found;
  if (finites_check_plate(elem, k, A.data(), n, &found, 1) > 0) std::puts(found.text);

  double data[64] = {}, forces[24] = {}, K[576], worst = 0;
  const auto call = [&](std::int32_t op) { FINITES(&op, &elem, &k, A.data(), &n, data, forces, K); };
  call(OP_STIFFNESS);  // the very first pass starts the state
  A[STEP_COUNTER - 1] = 1;
  for (const double strain : {0.0008, 0.002, 0.005}) {
    const double stress = strain < fy / E ? E * strain : fy + Et * (strain - fy / E);
    // Plastic flow keeps the volume.
    const double plastic = strain - stress / E, across = -nu * stress / E - plastic / 2;
    for (int i = 0; i < 4; ++i) {  // displacements of the step: total ones less those that are stored
      const double total[2] = {strain * x[i], across * y[i]};
      for (int d = 0; d < 2; ++d) A[exchange + 6 * i + d - 1] = total[d] - state.STORED_DISPLACEMENTS(d + 1, i + 1);
    }
    call(OP_FORCES_COMMIT);
    finites_accept_plate_state(&state);
    for (int i = 1; i <= 4; ++i) {
      state.STORED_NODAL_FORCES(1, i) = stress * h;  // Nx: what operation 71 and a second-order stiffness take
      for (int d = 1; d <= 2; ++d) state.STORED_DISPLACEMENTS(d, i) += A[exchange + 6 * (i - 1) + d - 2];
    }
    const double sig = points[0].SIG(1, 1), ep = points[0].EP_START(1, 1);
    std::printf("strain %g: stress %.4f, by formula %.4f; plastic %.6f, %.6f\n", strain, sig, stress, ep, plastic);
    worst = std::fmax(worst, std::fmax(std::fabs(sig / stress - 1), std::fabs(ep - plastic) / strain));
  }
  return worst < 1e-6 ? 0 : 1;
}
