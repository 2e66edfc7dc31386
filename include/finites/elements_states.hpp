// elements_states.hpp: plates that yield and beams with hinges, as objects that own their C state. Part of
// elements.hpp.
//
//     finites::plate_state state(plate, plastic);
//     auto [F, K] = state.try_(u);      // as often as the iteration wants
//     state.commit(u);                  // where it has converged
//     state.accept();                   // at the end of the step
//
// A copy is a state of its own. An object that was moved from, or whose creation was answered by a status, is empty:
// its calls are FINITES_NULL.
#ifndef FINITES_ELEMENTS_STATES_HPP
#define FINITES_ELEMENTS_STATES_HPP

#include <array>
#include <cstdint>
#include <utility>

#include "finites/elements.h"
#include "finites/elements_values.hpp"

namespace finites {

namespace detail {

// Owns a state: STATE by its copy and free functions.
template <class STATE, finites_status (*COPY)(const STATE*, STATE**), void (*FREE)(STATE*)>
class owned {
 public:
  explicit operator bool() const { return state_ != nullptr; }
  STATE* get() const { return state_; }

 protected:
  explicit owned(const char* copy_call, int order) : copy_call_(copy_call), order_(order) {}
  owned(const owned& other) : copy_call_(other.copy_call_), order_(other.order_) {
    if (other.state_ != nullptr) outcome().of(COPY(other.state_, &state_), copy_call_);
  }
  owned(owned&& other) noexcept
      : state_(std::exchange(other.state_, nullptr)), copy_call_(other.copy_call_), order_(other.order_) {}
  owned& operator=(const owned& other) { return *this = owned(other); }
  owned& operator=(owned&& other) noexcept {
    std::swap(state_, other.state_);
    std::swap(order_, other.order_);
    return *this;
  }
  ~owned() { FREE(state_); }

  STATE* state_ = nullptr;
  const char* copy_call_;
  int order_;
};

}  // namespace detail

// The nodal forces of a state and its tangent.
template <int CAPACITY>
struct response {
  vector<CAPACITY> F;
  matrix<CAPACITY> K;
};

namespace detail {

template <int CAPACITY, class CALL>
response<CAPACITY> response_of(int order, const outcome& how, const char* name, const CALL& call) {
  response<CAPACITY> answer{vector<CAPACITY>(order), matrix<CAPACITY>(order)};
  if (!how.of(call(answer.F.data(), answer.K.data()), name)) return {};
  return answer;
}

}  // namespace detail

class plate_state : public detail::owned<finites_plate_state, finites_plate_state_copy, finites_plate_state_free> {
 public:
  plate_state(const finites_plate& plate, const finites_plastic& plastic, outcome how = {})
      : owned("finites_plate_state_copy", plate.nodes == 3 ? 18 : 24) {
    how.of(finites_plate_state_create(&plate, &plastic, &state_), "finites_plate_state_create");
  }

  response<24> try_(view<const double> u, outcome how = {}) const {
    const char* call = "finites_plate_state_try";
    if (!detail::fits(how, call, "u", u, order_)) return {};
    return detail::response_of<24>(
        order_, how, call, [&](double* F, double* K) { return finites_plate_state_try(state_, u.data(), F, K); });
  }
  // False after a failure.
  bool commit(view<const double> u, outcome how = {}) {
    const char* call = "finites_plate_state_commit";
    if (!detail::fits(how, call, "u", u, order_)) return false;
    return how.of(finites_plate_state_commit(state_, u.data()), call);
  }
  bool accept(outcome how = {}) { return how.of(finites_plate_state_accept(state_), "finites_plate_state_accept"); }
  response<24> forces(outcome how = {}) const {
    return detail::response_of<24>(order_, how, "finites_plate_state_forces",
                                   [&](double* F, double* K) { return finites_plate_state_forces(state_, F, K); });
  }
  finites_plate_results result(outcome how = {}) const {
    return detail::struct_of<finites_plate_results>(
        how, "finites_plate_state_result",
        [&](finites_plate_results* results) { return finites_plate_state_result(state_, results); });
  }
};

class beam_state : public detail::owned<finites_beam_state, finites_beam_state_copy, finites_beam_state_free> {
 public:
  // ends: 1 the first end may yield, 2 the second, 3 both.
  beam_state(const finites_beam& beam, const finites_yield& yield, std::int32_t ends = 3, outcome how = {})
      : owned("finites_beam_state_copy", 12) {
    how.of(finites_beam_state_create(&beam, &yield, ends, &state_), "finites_beam_state_create");
  }

  response<12> try_(view<const double> u, outcome how = {}) const {
    const char* call = "finites_beam_state_try";
    if (!detail::fits(how, call, "u", u, order_)) return {};
    return detail::response_of<12>(
        order_, how, call, [&](double* F, double* K) { return finites_beam_state_try(state_, u.data(), F, K); });
  }
  bool commit(view<const double> u, outcome how = {}) {
    const char* call = "finites_beam_state_commit";
    if (!detail::fits(how, call, "u", u, order_)) return false;
    return how.of(finites_beam_state_commit(state_, u.data()), call);
  }
  bool accept(outcome how = {}) { return how.of(finites_beam_state_accept(state_), "finites_beam_state_accept"); }
  response<12> forces(outcome how = {}) const {
    return detail::response_of<12>(order_, how, "finites_beam_state_forces",
                                   [&](double* F, double* K) { return finites_beam_state_forces(state_, F, K); });
  }
  std::array<finites_hinge, 2> hinges(outcome how = {}) const {
    return detail::struct_of<std::array<finites_hinge, 2>>(
        how, "finites_beam_state_hinges",
        [&](std::array<finites_hinge, 2>* ends) { return finites_beam_state_hinges(state_, ends->data()); });
  }
};

}  // namespace finites

#endif
