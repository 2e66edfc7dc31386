// plate_state_support.cpp: see the header.
#include "plate_state_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "comparison.h"
#include "finites/fields.h"

namespace yielding {

using support::plate_description;
using support::seeded_random;

std::vector<state_kind> all_state_kinds() {
  std::vector<state_kind> all;
  for (const int nodes : {3, 4}) {
    for (const int theory : {FINITES_THICK, FINITES_THIN}) {
      for (const bool offsets : {false, true}) {
        all.push_back({FINITES_WHOLE_SECTION, 0, nodes, theory, offsets});
        for (const int layers : {3, 5, 15}) all.push_back({FINITES_LAYERED, layers, nodes, theory, offsets});
      }
    }
  }
  return all;
}

std::string name_of(const state_kind& kind) {
  const std::string model = kind.model == FINITES_LAYERED ? std::to_string(kind.layers) + " layers" : "whole section";
  return model + ", " + std::to_string(kind.nodes) + " nodes, theory " + std::to_string(kind.theory) +
         (kind.offsets ? ", offsets" : "");
}

held_state made(const finites_plate& plate, const finites_plastic& plastic) {
  finites_plate_state* state = nullptr;
  EXPECT_EQ(finites_plate_state_create(&plate, &plastic, &state), FINITES_OK);
  return held_state(state);
}

held_state copy_of(const held_state& state) {
  finites_plate_state* copy = nullptr;
  EXPECT_EQ(finites_plate_state_copy(state.get(), &copy), FINITES_OK);
  return held_state(copy);
}

answers tried(const held_state& state, const std::vector<double>& u) {
  answers a{FINITES_OK, std::vector<double>(u.size()), std::vector<double>(u.size() * u.size())};
  a.status = finites_plate_state_try(state.get(), u.data(), a.F.data(), a.K.data());
  return a;
}

answers held(const held_state& state) {
  const auto order = static_cast<std::size_t>(6 * result_of(state).nodes);
  answers a{FINITES_OK, std::vector<double>(order), std::vector<double>(order * order)};
  a.status = finites_plate_state_forces(state.get(), a.F.data(), a.K.data());
  return a;
}

finites_plate_results result_of(const held_state& state) {
  finites_plate_results r{};
  EXPECT_EQ(finites_plate_state_result(state.get(), &r), FINITES_OK);
  return r;
}

std::vector<double> listed(const finites_plate_results& r) {
  std::vector<double> all;
  constexpr std::size_t reals = sizeof(finites_plate_point) / sizeof(double);
  for (const auto* const points : {r.node, r.point}) {
    const auto* const first = reinterpret_cast<const double*>(points);
    all.insert(all.end(), first, first + 4 * reals);
  }
  return all;
}

std::vector<double> every_answer(const held_state& state) {
  const answers a = held(state);
  std::vector<double> all = listed(result_of(state));
  all.insert(all.end(), a.F.begin(), a.F.end());
  all.insert(all.end(), a.K.begin(), a.K.end());
  return all;
}

plate_description random_yielding(seeded_random& random, const state_kind& kind) {
  plate_description d =
      subjects::random_plate(random, {kind.nodes, kind.theory, subjects::behaviour::isotropic, kind.offsets});
  d.modifier_membrane = d.modifier_bending = d.modifier_shear = 1.0;
  d.yield_stress = d.young * random.log_uniform(5e-4, 4e-3);
  d.material.mtype = random.integer(0, 1) == 0 ? 1 : 3;
  d.material.HARDENING = random.integer(0, 3) == 0 ? 0.0F : static_cast<float>(d.young * random.uniform(0.01, 0.3));
  d.plastic_switch = 1;
  return d;
}

finites_plastic plastic_of(const plate_description& d, const state_kind& kind) {
  return {kind.model, kind.layers, d.yield_stress, static_cast<double>(d.material.HARDENING)};
}

std::vector<double> random_step(seeded_random& random, const plate_description& d, double times) {
  const double strain = times * d.yield_stress / d.young;
  return random.vector(6 * static_cast<int>(d.nodes.size()), strain);
}

protocol_plate::protocol_plate(const plate_description& d, const state_kind& kind)
    : plate_model(std::vector<plate_description>{d}),
      layered_(kind.model == FINITES_LAYERED),
      n_(kind.layers),
      values_(4 * 15 * 51, 0.0) {
  set_header(NONLIN_MATERIAL, 1.0);
  set_header(ANALYSIS_STATE, 1.0);
  set_header(STEP_COUNTER, 0.0);
  SOLANAELEM.NPT_THICK = n_;
  SOLANAELEM.EP_INC_FROM_CUR = 0;
  set_plate_material_code(layered_ ? PLATE_MODEL_LAYERED : PLATE_MODEL_SECTION);
  allocate_state();
  PLATE_STATE_RECORD& r = state(1);
  if (layered_) {
    for (POINT_STATE_RECORD& p : points_) {
      for (auto* const f : {&p.SIG, &p.EP_START, &p.EP_CUR, &p.EP_INC}) *f = REFER_TO(take(6 * n_), 6, n_);
      for (auto* const f : {&p.EPBAR_START, &p.EPBAR_CUR}) *f = REFER_TO(take(n_), n_);
      p.TANGENT = REFER_TO(take(25 * n_), 5, 5, n_);
    }
    r.POINT_STATE = REFER_TO(points_.data(), 4);
  } else {
    for (auto* const f : {&r.SEC_EP_START, &r.SEC_EP_CUR, &r.SEC_EP_INC}) *f = REFER_TO(take(48), 12, 4);
    r.SEC_TANGENT = REFER_TO(take(256), 8, 8, 4);
    for (auto* const f :
         {&r.SEC_EPBAR_START, &r.SEC_EPBAR_CUR, &r.SEC_CURV_INC, &r.SEC_AUX, &r.SEC_SIGN_CUR, &r.SEC_SIGN_START}) {
      *f = REFER_TO(take(4), 4);
    }
  }
  stiffness(1);
  set_header(STEP_COUNTER, 1.0);
}

protocol_plate::~protocol_plate() { SOLANAELEM.NPT_THICK = 0; }

double* protocol_plate::take(int count) {
  double* const first = values_.data() + taken_;
  taken_ += static_cast<std::size_t>(count);
  return first;
}

void protocol_plate::commit(const std::vector<double>& u) { internal_forces(1, u, OP_FORCES_COMMIT); }

void protocol_plate::accept() {
  PLATE_STATE_RECORD& r = state(1);
  for (int gp = 1; gp <= 4; ++gp) {
    if (layered_) {
      POINT_STATE_RECORD& p = points_[static_cast<std::size_t>(gp - 1)];
      for (int k = 1; k <= n_; ++k) {
        p.EPBAR_START(k) = p.EPBAR_CUR(k);
        for (int i = 1; i <= 6; ++i) p.EP_START(i, k) = p.EP_CUR(i, k);
      }
    } else {
      r.SEC_EPBAR_START(gp) = r.SEC_EPBAR_CUR(gp);
      r.SEC_SIGN_START(gp) = r.SEC_SIGN_CUR(gp);
      for (int i = 1; i <= 12; ++i) r.SEC_EP_START(i, gp) = r.SEC_EP_CUR(i, gp);
    }
  }
}

namespace {

// x := A^-1 x by elimination with pivots; A is packed by columns.
void solve(std::vector<double> A, std::vector<double>& x) {
  const std::size_t n = x.size();
  for (std::size_t c = 0; c < n; ++c) {
    std::size_t p = c;
    for (std::size_t r = c; r < n; ++r) {
      if (std::fabs(A[c * n + r]) > std::fabs(A[c * n + p])) p = r;
    }
    std::swap(x[c], x[p]);
    for (std::size_t j = 0; j < n; ++j) std::swap(A[j * n + c], A[j * n + p]);
    for (std::size_t r = c + 1; r < n; ++r) {
      const double f = A[c * n + r] / A[c * n + c];
      for (std::size_t j = c; j < n; ++j) A[j * n + r] -= f * A[j * n + c];
      x[r] -= f * x[c];
    }
  }
  for (std::size_t c = n; c-- > 0;) {
    for (std::size_t j = c + 1; j < n; ++j) x[c] -= A[j * n + c] * x[j];
    x[c] /= A[c * n + c];
  }
}

}  // namespace

int balance(const held_state& state, const std::vector<int>& free, const std::vector<double>& load,
            const std::vector<double>& from, std::vector<double>& u, int most) {
  const std::size_t n = u.size();
  answers a = held(state);
  for (const int i : free) u[static_cast<std::size_t>(i)] = from[static_cast<std::size_t>(i)];
  for (std::size_t j = 0; j < n; ++j) {
    for (std::size_t i = 0; i < n; ++i) a.F[i] += a.K[j * n + i] * (u[j] - from[j]);
  }
  for (int taken = 1; taken <= most; ++taken) {
    std::vector<double> x, A;
    for (const int j : free) {
      const auto at = static_cast<std::size_t>(j);
      x.push_back(load[at] - a.F[at]);
      for (const int i : free) A.push_back(a.K[at * n + static_cast<std::size_t>(i)]);
    }
    const double out_of_balance = support::max_norm(x);
    if (taken > 1 && out_of_balance <= 1e-9 * support::max_norm(a.F)) return taken - 1;
    solve(A, x);
    for (std::size_t i = 0; i < free.size(); ++i) u[static_cast<std::size_t>(free[i])] += x[i];
    a = tried(state, u);
    if (a.status != FINITES_OK) return 0;
  }
  return 0;
}

}  // namespace yielding
