// plate_group.h: the plates of a model, thin and thick shells and membranes, and the calls of FINITES for them.
#ifndef FINITES_SOLVER_PLATE_GROUP_H
#define FINITES_SOLVER_PLATE_GROUP_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "elements/element_group.h"
#include "elements/flat_parts.h"
#include "elements/library_data.h"
#include "finites/records.h"
#include "model/index.h"

namespace solver {

// What operation 5 answers: records at the nodes, then at the integration points.
struct element_results {
  const double* nodes;
  const double* points;
};

class plate_group : public element_group {
 public:
  explicit plate_group(library_data& data);

  void add(std::size_t element) override;
  void stiffness(std::size_t element, element_matrix& K) override;
  void mass(std::size_t element, element_matrix& M) override;
  void geometric_stiffness(std::size_t element, element_matrix& G) override;
  void loads(std::size_t element, const distributed_load& load, element_vector& forces) override;
  void keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) override;
  void clear_state() override;

  // Forces in equilibrium with the displacements; global axes.
  void internal_forces(std::size_t element, const element_vector& displacements, element_vector& forces);

  // Strains, stresses and stress resultants, in element axes; the records stay until the next call.
  element_results results(std::size_t element, const element_vector& displacements, const distributed_load& load);

  // Element kind and material behaviour, as the library classifies a plate.
  void classify(std::size_t element, int& kind, int& behaviour);

  // From now on the rotation about the normal is tied to the sheet (drilling_tie.cpp) in the elements where these loads
  // leave it free to follow. Each step chooses; before, every element is tied whose section says so.
  void choose_ties(const load_case& loads);
  const std::vector<flat_part>& flat_parts() const { return flat_parts_; }

  // Plates that yield (plastic_operations.cpp). From now on they follow their plastic model, or no longer do; increment
  // 0 is the first pass, on which every call gives the state its first values.
  void yielding(bool on);
  void count_increment(int number);
  plate_model model_of(std::size_t element) const;
  // Before a call for an element: the model that it follows, which the library knows once for all elements.
  void choose_model(std::size_t element);
  // Whether all plates that yield follow the same model with the same points through the thickness.
  bool follow_one_model() const;
  // The model of the first of them: before threads share a loop over plates that follow one model.
  void choose_first_model();
  // internal_forces, and the state of the element is stored; element axes.
  void commit_forces(std::size_t element, const element_vector& displacements, element_vector& forces);
  PLATE_STATE_RECORD& state(std::size_t element) { return states_[data_.place(element)]; }
  void store_displacements(std::size_t element, const element_vector& displacements);

 private:
  class part_in_place;

  void fill_sections();
  void fill_record(std::size_t element);
  void operation(std::int32_t code, std::size_t element, VECTOR<12> data, element_vector& forces,
                 element_matrix& matrix);
  void exchange_forces(std::int32_t code, std::size_t element, const element_vector& displacements,
                       element_vector& forces);
  bool is_general(std::size_t element) const;  // the solver itself treats its temperature (thermal_strains.h)
  void add_drilling_tie(std::size_t element, element_matrix& K);
  // The operations of the element as its block has it.
  void elastic_call(std::size_t element, element_matrix& K);
  void force_call(std::size_t element, const element_vector& displacements, element_vector& forces);
  void result_call(std::size_t element);

  // Sums over the parts of a laminate (laminate_operations.cpp).
  void fill_laminate_parts();
  const laminate* laminate_of(std::size_t element) const;  // null: the section is homogeneous
  template <class CALL>
  void each_part(std::size_t element, const CALL& call);
  void laminate_stiffness(std::size_t element, element_matrix& K);
  void laminate_forces(std::size_t element, const element_vector& displacements, element_vector& forces);
  element_results laminate_results(std::size_t element, const distributed_load& load);

  library_data& data_;
  std::vector<flat_part> flat_parts_;
  std::vector<PLATE_RECORD> records_;  // by element, as all that follows
  std::vector<PLATE_STATE_RECORD> states_;
  std::vector<std::int32_t> record_of_;  // from 1; 0: no plate
  numbered<char> tied_;                  // is the rotation about the normal tied to the sheet?
  numbered<char> on_flat_part_;
  std::vector<double> laminate_records_;  // as the exchange area has them
};

}  // namespace solver

#endif
