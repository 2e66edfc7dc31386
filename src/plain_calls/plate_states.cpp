// plate_states.cpp: the calls finites_plate_state_...: plates that yield, on a state of the caller.
//
// A try works on a copy of the numbers of the state, on the stack: operation 33 of the protocol stores in it what the
// displacements leave, and forces and tangent are those of what it then holds. A commit is the same, whose copy becomes
// the state when everything has gone well. So the forces after a commit are those of the try before it, to the last
// bit.
//
// A try stores the tangents of the return mapping of the layers, for Newton's method. A commit stores those of the rate
// equations, as the protocol does: the tangent at the stored stresses, whatever step has led there.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

#include "common/finiteness.h"
#include "finites/elements.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "plain_calls/plate_calls.h"
#include "plain_calls/plate_checks.h"
#include "plain_calls/plate_on_stack.h"
#include "plain_calls/state_fields.h"
#include "plate_material/through_thickness.h"
#include "plate_results/res_record.h"
#include "shells/engines/plate_operations.h"
#include "shells/engines/stored_plate.h"
#include "shells/plastic/section_first_state.h"

// The reals of the state follow it in memory.
struct finites_plate_state {
  finites_plate plate;
  finites_plastic plastic;
  double u[PLATE_MAX_DOFS];  // of the last commit

  double* reals() { return reinterpret_cast<double*>(this + 1); }
  const double* reals() const { return reinterpret_cast<const double*>(this + 1); }
};
static_assert(sizeof(finites_plate_state) % alignof(double) == 0);

namespace {

// Newton's method of the whole-section model ends at a relative change of 1e-4 of its multiplier, which leaves a point
// within this of the surface (the yield function, 0 on it). Farther off it has not settled: the mixed term has changed
// its sign on the way.
constexpr double ON_SURFACE = 5e-4;

int order_of(const finites_plate_state& state) { return PLATE_NODE_DOFS * state.plate.nodes; }

std::size_t size_of(const finites_plastic& plastic) {
  return sizeof(finites_plate_state) + count_of_state_reals(plastic) * sizeof(double);
}

bool counted(std::int32_t layers) { return layers >= 3 && layers <= MOST_THICKNESS_POINTS && layers % 2 == 1; }

bool whole(double factor) { return factor == 1.0; }

// The models know neither directions nor factors of the stiffness, and a membrane has no whole section.
finites_status check_kind(const finites_plate& p) {
  const bool shell = p.theory == FINITES_THICK || p.theory == FINITES_THIN;
  const bool plain = whole(p.membrane_factor) && whole(p.bending_factor) && whole(p.shear_factor);
  return shell && plain && p.orthotropic == 0 ? FINITES_OK : FINITES_STATE;
}

finites_status check_plastic(const finites_plastic& plastic, double E) {
  if (plastic.model != FINITES_LAYERED && plastic.model != FINITES_WHOLE_SECTION) return FINITES_BAD_CODE;
  if (plastic.model == FINITES_LAYERED && !counted(plastic.layers)) return FINITES_LAYERS;
  const double numbers[2] = {plastic.yield_stress, plastic.hardening};
  const finites_status status = check_reals(numbers, 2);
  if (status != FINITES_OK) return status;
  if (!(plastic.yield_stress > 0.0)) return FINITES_YIELD;
  return plastic.hardening >= 0.0 && plastic.hardening < E ? FINITES_OK : FINITES_HARDENING;
}

// A filled plate with a material that yields and numbers of a state.
struct YIELDING_PLATE {
  PLATE_ON_STACK filled;
  STATE_FIELDS fields;
  bool failed = false;

  YIELDING_PLATE(const finites_plate_state& state, double* reals, TANGENT tangent = TANGENT::CONTINUUM)
      : filled(state.plate, OP_FORCES_COMMIT, SECTION::WITH_MATERIAL), fields(state.plastic, reals) {
    PLATEELEM_RECORD& EL = filled.EL;
    const bool layered = state.plastic.model == FINITES_LAYERED;
    EL.MAT_BEHAV = layered ? BEHAV_LAYERED_PLASTIC : BEHAV_SECTION_PLASTIC;
    EL.E2 = EL.E1;
    EL.NU2 = EL.NU1;
    EL.ALPHA2 = EL.ALPHA1;
    EL.G12 = EL.G13 = EL.G23 = EL.E1 / (2.0 * (1.0 + EL.NU1));
    EL.YIELD_STRESS = state.plastic.yield_stress;
    EL.TANGENT_MOD = state.plastic.hardening;
    EL.ACTIVE_PARTS = active_parts(EL.ELEM_KIND, EL.MAT_BEHAV);
    filled.plate.state = fields.in_use(tangent, &failed);
  }

  void start() {
    if (filled.EL.MAT_BEHAV == BEHAV_LAYERED_PLASTIC) {
      LAYERED_STATE_INIT(filled.EL, filled.plate.state);
    } else {
      SECTION_STATE_INIT(filled.EL, filled.plate.state);
    }
  }

  // The state follows the displacements.
  finites_status follow(const double* u) {
    if (!store_state_of_plate(filled.plate, u) || failed) return FINITES_RETURN;
    return distance_of_plate(filled.plate, u) <= ON_SURFACE ? FINITES_OK : FINITES_RETURN;
  }

  // What the state holds in the displacements of its last update.
  finites_status answer(const double* u, int order, double* F, double* K) {
    double forces[PLATE_MAX_DOFS] = {};
    double tangent[PLATE_MAX_DOFS * PLATE_MAX_DOFS];
    if (F != nullptr) stored_forces_of_plate(filled.plate, u, forces);
    if (K != nullptr) {
      filled.plate.op = OP_STIFFNESS;
      matrix_of_plate(filled.plate, 0, nullptr, nullptr, order, tangent);
      if (!all_finite(tangent, order * order)) return FINITES_RESULT;
    }
    if (!all_finite(forces, order)) return FINITES_RESULT;
    if (F != nullptr) std::copy_n(forces, order, F);
    if (K != nullptr) std::copy_n(tangent, order * order, K);
    return FINITES_OK;
  }
};

// A copy of the numbers of a state on the stack.
struct STATE_COPY {
  double reals[MOST_STATE_REALS];
  explicit STATE_COPY(const finites_plate_state& state) {
    std::copy_n(state.reals(), count_of_state_reals(state.plastic), reals);
  }
};

finites_status check_call(const finites_plate_state* state, const double* u) {
  return state == nullptr ? FINITES_NULL : check_reals(u, order_of(*state));
}

}  // namespace

finites_status finites_plate_state_create(const finites_plate* plate, const finites_plastic* plastic,
                                          finites_plate_state** state) {
  if (plate == nullptr || plastic == nullptr || state == nullptr) return FINITES_NULL;
  finites_status status = check_plate(*plate);
  if (status == FINITES_OK) status = check_kind(*plate);
  if (status == FINITES_OK) status = check_plastic(*plastic, plate->E);
  if (status != FINITES_OK) return status;
  void* const memory = ::operator new(size_of(*plastic), std::nothrow);
  if (memory == nullptr) return FINITES_MEMORY;
  auto* const made = new (memory) finites_plate_state{*plate, *plastic, {}};
  std::fill_n(made->reals(), count_of_state_reals(*plastic), 0.0);
  YIELDING_PLATE(*made, made->reals()).start();
  *state = made;
  return FINITES_OK;
}

finites_status finites_plate_state_copy(const finites_plate_state* state, finites_plate_state** copy) {
  if (state == nullptr || copy == nullptr) return FINITES_NULL;
  void* const memory = ::operator new(size_of(state->plastic), std::nothrow);
  if (memory == nullptr) return FINITES_MEMORY;
  auto* const made = new (memory) finites_plate_state(*state);
  std::copy_n(state->reals(), count_of_state_reals(state->plastic), made->reals());
  *copy = made;
  return FINITES_OK;
}

void finites_plate_state_free(finites_plate_state* state) { ::operator delete(state); }

finites_status finites_plate_state_try(const finites_plate_state* state, const double* u, double* F, double* K) {
  finites_status status = check_call(state, u);
  if (status != FINITES_OK) return status;
  STATE_COPY copy(*state);
  YIELDING_PLATE tried(*state, copy.reals, TANGENT::CONSISTENT);
  status = tried.follow(u);
  return status == FINITES_OK ? tried.answer(u, order_of(*state), F, K) : status;
}

finites_status finites_plate_state_commit(finites_plate_state* state, const double* u) {
  finites_status status = check_call(state, u);
  if (status != FINITES_OK) return status;
  STATE_COPY copy(*state);
  status = YIELDING_PLATE(*state, copy.reals).follow(u);
  const std::size_t count = count_of_state_reals(state->plastic);
  if (status == FINITES_OK && !all_finite(copy.reals, static_cast<int>(count))) status = FINITES_RESULT;
  if (status != FINITES_OK) return status;
  std::copy_n(copy.reals, count, state->reals());
  std::copy_n(u, order_of(*state), state->u);
  return FINITES_OK;
}

finites_status finites_plate_state_accept(finites_plate_state* state) {
  if (state == nullptr) return FINITES_NULL;
  STATE_FIELDS(state->plastic, state->reals()).accept();
  return FINITES_OK;
}

finites_status finites_plate_state_forces(const finites_plate_state* state, double* F, double* K) {
  if (state == nullptr) return FINITES_NULL;
  STATE_COPY copy(*state);
  return YIELDING_PLATE(*state, copy.reals).answer(state->u, order_of(*state), F, K);
}

finites_status finites_plate_state_result(const finites_plate_state* state, finites_plate_results* results) {
  if (state == nullptr || results == nullptr) return FINITES_NULL;
  STATE_COPY copy(*state);
  const YIELDING_PLATE held(*state, copy.reals);
  double nodes[RES_VALUES];
  double points[RES_VALUES];
  stored_results_of_plate(held.filled.plate, state->u, nodes, points);
  if (!all_finite(nodes, RES_VALUES) || !all_finite(points, RES_VALUES)) return FINITES_RESULT;
  name_plate_results(state->plate.nodes, nodes, points, *results);
  return FINITES_OK;
}
