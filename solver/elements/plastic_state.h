// plastic_state.h: the memory behind the plastic state of plates.
//
// The element library reads and writes the state of a yielding plate in PLATE_STATE, through references; the arrays
// belong to the solver. A plate takes those of the model that it follows: the SEC_ fields of the whole-section model,
// or the POINT_STATE arrays of the layered one.
#ifndef FINITES_SOLVER_PLASTIC_STATE_H
#define FINITES_SOLVER_PLASTIC_STATE_H

#include <vector>

#include "finites/records.h"
#include "model/model.h"

namespace solver {

class plastic_state {
 public:
  // A plate that stays elastic has no model of its own and takes no memory: points is 0 then.
  plastic_state(plate_model which, int points);

  // Where the record of the plate finds its arrays. They stay in place when this object is moved.
  void refer(PLATE_STATE_RECORD& record);

  // The state at the end of the increment is accepted: it becomes that at the start of the next.
  void promote(PLATE_STATE_RECORD& record);

  // All arrays as they were when the state was last accepted: what was tried since is forgotten.
  void restore();

  // What was accepted last, and a state that was accepted in an earlier run of the same model: false where it has
  // another size.
  const std::vector<double>& accepted() const { return accepted_; }
  bool take_accepted(const std::vector<double>& state);

  // Before an update: the increment of the plastic strains counts from the start of the increment, however many updates
  // an iteration takes, and every point is marked.
  static void rewind(PLATE_STATE_RECORD& record);

  // After it: did every point of the layered model take its new state? A return to the surface that fails stores
  // nothing, and the mark stays.
  static bool all_updated(const PLATE_STATE_RECORD& record);

 private:
  double* take(std::size_t count);

  plate_model model_;
  std::size_t thickness_points_;
  std::vector<double> values_, accepted_;
  std::size_t taken_ = 0;
  std::vector<POINT_STATE_RECORD> points_;
};

}  // namespace solver

#endif
