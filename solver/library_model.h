// library_model.h: the model as the element library sees it, and the questions that a solver asks of an element.
//
// The constructor fills MODEL_DATA, the plate records and the material store of the common library from a model; from
// then on each call here is one call of FINITES. The shared records are process-wide, so that one library_model lives
// at a time, and it is entered by one thread at a time.
#ifndef FINITES_SOLVER_LIBRARY_MODEL_H
#define FINITES_SOLVER_LIBRARY_MODEL_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "load_case.h"
#include "model.h"
#include "shared_records.h"
#include "views.h"

namespace solver {

constexpr int ELEMENT_NODES = 3;
constexpr int ELEMENT_FREEDOMS = DIRECTIONS * ELEMENT_NODES;
constexpr int RESULT_LENGTH = 90;      // reals of one result record
constexpr int RESULT_POINT_COUNT = 4;  // records of one block, at the nodes or at the integration points

using element_matrix = MATRIX<24, 24>;  // the library's leading dimension, also for a triangle
using element_vector = VECTOR<24>;

// What operation 5 answers: records at the nodes, then at the integration points.
struct element_results {
  const double* nodes;
  const double* points;
};

class library_model {
 public:
  explicit library_model(const model& m);
  ~library_model();
  library_model(const library_model&) = delete;
  library_model& operator=(const library_model&) = delete;

  // Global axes, 18 by 18 in the corner of the matrix.
  void stiffness(std::size_t element, element_matrix& K);

  // Adds the nodal forces of pressure, body force and temperature to `forces`, which the caller has cleared.
  void loads(std::size_t element, const distributed_load& load, element_vector& forces);

  // Forces in equilibrium with the displacements; global axes.
  void internal_forces(std::size_t element, const element_vector& displacements, element_vector& forces);

  // Strains, stresses and stress resultants; the records stay until the next call.
  element_results results(std::size_t element, const element_vector& displacements, const distributed_load& load);

  // Element kind and material behaviour, as the library classifies the element.
  void classify(std::size_t element, int& kind, int& behaviour);

 private:
  void fill_sections(const model& m);
  void fill_nodes(const model& m);
  void fill_elements(const model& m);
  void fill_plate_record(const model& m, std::size_t element);
  void refer_to_records();
  void operation(std::int32_t code, std::size_t element, double* data, double* forces, double* matrix);

  std::vector<double> model_data_;
  std::vector<PLATE_RECORD> plate_records_;
  std::vector<std::int32_t> plate_of_elem_;
};

// Local axes of a triangle: row 1 along the side from node 1 to node 2, row 3 the normal, right-handed round the nodes.
MATRIX<3, 3> triangle_axes(const model& m, const element& e);

}  // namespace solver

#endif
