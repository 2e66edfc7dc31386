// library_model.h: the model as the element library sees it: four kinds of elements over the same arrays, and
// point masses, in which it has no part.
//
// What every element answers is asked here and goes to the group that holds the element; what one kind alone answers
// is asked of its group. The shared records of the library are process-wide, so that one library_model lives at a time.
// Threads enter it through divide() alone.
#ifndef FINITES_SOLVER_LIBRARY_MODEL_H
#define FINITES_SOLVER_LIBRARY_MODEL_H

#include <cstddef>
#include <functional>
#include <vector>

#include "elements/cable_group.h"
#include "elements/element_group.h"
#include "elements/frame_records.h"
#include "elements/library_data.h"
#include "elements/mass_group.h"
#include "elements/member_axes.h"
#include "elements/member_group.h"
#include "elements/plate_axes.h"
#include "elements/plate_group.h"
#include "elements/solid_group.h"
#include "finites/checks.h"
#include "model/model.h"

namespace solver {

// What threads may ask of different elements side by side, as far as the model allows it.
enum class question { LOADS, STIFFNESS, MASS, GEOMETRIC_STIFFNESS, RESULTS, PLASTIC };

class library_model {
 public:
  explicit library_model(const model& m);  // which must outlive it
  library_model(const library_model&) = delete;
  library_model& operator=(const library_model&) = delete;

  plate_group& plates() { return plates_; }
  member_group& members() { return members_; }
  cable_group& cables() { return cables_; }
  solid_group& solids() { return solids_; }
  mass_group& masses() { return masses_; }

  // What every element answers: element_group.h.
  void stiffness(std::size_t element, element_matrix& K) { group_[element]->stiffness(element, K); }
  void mass(std::size_t element, element_matrix& M) { group_[element]->mass(element, M); }
  void geometric_stiffness(std::size_t element, element_matrix& G) { group_[element]->geometric_stiffness(element, G); }
  void loads(std::size_t element, const distributed_load& load, element_vector& forces) {
    group_[element]->loads(element, load, forces);
  }

  // The state on which geometric stiffness rests, and whether stiffnesses hold it.
  void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load);
  void clear_state();
  void second_order(bool on) { data_.second_order(on); }
  bool is_second_order() { return data_.is_second_order(); }

  // Loops over elements. As many threads as use_threads() says share the elements from `first` on: each part is a
  // stretch of neighbours, the parts follow one another in the order of the model, and `work` is called once for each
  // part, in a thread of its own but for part 0. What a part throws is thrown here, that of the first one in the order.
  using part_work = std::function<void(std::size_t part, std::size_t first, std::size_t last)>;
  void use_threads(int count);
  int threads_for(question what);
  void divide(std::size_t first, std::size_t last, int threads, const part_work& work);
  // The same parts one after the other, in the calling thread.
  static void each_part(std::size_t first, std::size_t last, int threads, const part_work& work);

  // What the checker of the library (finites/checks.h) says of the header, the records and each element, in this order.
  std::vector<finites_finding> findings();

 private:
  element_group& group_of(const element& e);
  bool is_divisible(question what);

  library_data data_;
  frame_records frames_;
  plate_group plates_;
  member_group members_;
  cable_group cables_;
  solid_group solids_;
  mass_group masses_;
  std::vector<element_group*> group_;  // by element
  bool has_state_ = false;
  int threads_ = 1;
};

}  // namespace solver

#endif
