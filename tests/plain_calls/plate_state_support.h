// plate_state_support.h: plates that yield, by both doors.
#ifndef FINITES_TESTS_PLATE_STATE_SUPPORT_H
#define FINITES_TESTS_PLATE_STATE_SUPPORT_H

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "finites/elements.h"
#include "plate_model.h"
#include "plate_subjects.h"
#include "random_shapes.h"

namespace yielding {

// What a plate that yields can be.
struct state_kind {
  int model, layers, nodes, theory;
  bool offsets;
};
std::vector<state_kind> all_state_kinds();
std::string name_of(const state_kind& kind);

struct free_state {
  void operator()(finites_plate_state* s) const { finites_plate_state_free(s); }
};
using held_state = std::unique_ptr<finites_plate_state, free_state>;

held_state made(const finites_plate& plate, const finites_plastic& plastic);
held_state copy_of(const held_state& state);

struct answers {
  finites_status status = FINITES_OK;
  std::vector<double> F, K;
};
answers tried(const held_state& state, const std::vector<double>& u);
answers held(const held_state& state);
finites_plate_results result_of(const held_state& state);

// Every number that a state can tell of itself.
std::vector<double> listed(const finites_plate_results& r);
std::vector<double> every_answer(const held_state& state);

// A plate that yields, and displacements that strain it to about `times` the strain of first yielding.
support::plate_description random_yielding(support::seeded_random& random, const state_kind& kind);
finites_plastic plastic_of(const support::plate_description& d, const state_kind& kind);
std::vector<double> random_step(support::seeded_random& random, const support::plate_description& d, double times);

// The same plate by the protocol: FINITES with records of a solver.
class protocol_plate : public support::plate_model {
 public:
  protocol_plate(const support::plate_description& d, const state_kind& kind);
  ~protocol_plate();
  void commit(const std::vector<double>& u);  // operation 33 of total displacements
  void accept();

 private:
  double* take(int count);
  bool layered_;
  int n_;
  std::vector<double> values_;
  std::size_t taken_ = 0;
  std::array<POINT_STATE_RECORD, 4> points_{};
};

// Solves F(u)(free) = load(free) by Newton's method. The other displacements go to those of u; the first guess is the
// tangent of the committed state, in `from`. How often a tangent was taken; 0: it did not settle.
int balance(const held_state& state, const std::vector<int>& free, const std::vector<double>& load,
            const std::vector<double>& from, std::vector<double>& u, int most = 40);

}  // namespace yielding

#endif
