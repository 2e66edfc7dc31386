// plate_model.h: a model of plate elements for tests and benchmarks.
//
// It plays the solver's part: it owns MODEL_DATA and the plate records, lays them out, and calls FINITES. What no
// caller has to set is filled with NaN, so that a routine that reads more than it should shows at once.
// Plates are numbered against the elements (the last plate is element 1), so that the two numbers are never taken for
// each other.
//
// The shared records are one to the process: one plate_model lives at a time. Its end clears them. A frame_model and a
// solid_model may join it.
#ifndef FINITES_TESTS_PLATE_MODEL_H
#define FINITES_TESTS_PLATE_MODEL_H

#include <array>
#include <cstdint>
#include <vector>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/services.h"
#include "finites/views.hpp"

namespace support {

using point = std::array<double, 3>;

// alone: the model clears what the process shares when it starts and ends. joins: it adds its records to those of a
// model of another kind, which outlives it.
enum class company { alone, joins };

// One plate element as a user would describe it.
struct plate_description {
  std::vector<point> nodes;  // 3 or 4
  int formulation = 1;       // 1 thin, 2, 3, 98, 99 membrane, otherwise thick
  double thickness = 0.1;
  double young = 2.1e5;
  double poisson = 0.3;
  double shear_modulus = 0.0;  // 0: that of an isotropic material
  double unit_weight = 7.7e-5;
  double expansion = 1.2e-5;
  double yield_stress = 235.0;
  double modifier_membrane = 1.0;
  double modifier_bending = 1.0;
  double modifier_shear = 1.0;
  double mass_factor = 1.0;
  double ortho_angle = 0.0;  // radians
  int offset_switch = 0;
  std::array<point, 4> offsets{};  // of each node, in the plate record
  point common_offset{};           // in the element block
  int plastic_switch = 0;
  int section_type = HOMOGENEOUS_SECTION;
  MATERIAL_RECORD material{};      // stored under the material's number; all zeros: isotropic, taken from the block
  CLT_SECTION_RECORD composite{};  // stored under the section's number when section_type is COMPOSITE_SECTION
  int id = 0;                      // 0: ten times the sequence number
};

struct plate_results {
  std::vector<double> nodes;   // 4 records of 90
  std::vector<double> points;  // 4 records of 90
};

class plate_model {
 public:
  explicit plate_model(const std::vector<plate_description>& elements);
  plate_model(const plate_model&) = delete;
  plate_model& operator=(const plate_model&) = delete;
  ~plate_model();

  // ---- state of the analysis

  // A(name), one of the names of fields.h: NONLIN_MATERIAL, STEP_COUNTER, ANALYSIS_STATE and SECOND_ORDER start as
  // 0.
  void set_header(int name, double value) { A_(name) = value; }
  void allocate_state();                   // PLATE_STATE, all zeros
  void deallocate_plate_of_elem();         // plates and elements then have the same numbers
  void set_plate_material_code(int code);  // 0 none, 1 whole-section, 2 layered
  // Stiffness factors of the listed elements (identifiers ascending), with stiffness reduction switched on. stride is
  // the distance of two identifiers in the list, in integers: above 1 the list is a section with gaps.
  void set_stiffness_factors(const std::vector<std::int32_t>& ids, const std::vector<float>& factors, int stride = 1);

  // ---- access; elem counts from 1

  int count() const { return static_cast<int>(descriptions_.size()); }
  int order(int elem) const { return 6 * static_cast<int>(at(elem).nodes.size()); }
  const plate_description& at(int elem) const { return descriptions_[static_cast<std::size_t>(elem - 1)]; }
  std::int32_t block(int elem) const;  // k
  MODEL_DATA A() const { return A_; }
  std::int32_t extent() const { return static_cast<std::int32_t>(storage_.size()); }
  double* raw() { return storage_.data(); }
  PLATE_RECORD& plate(int elem);
  PLATE_STATE_RECORD& state(int elem);                                         // after allocate_state
  double* displacements() { return &A_(exchange_ + EXCHANGE_DISPLACEMENTS); }  // 24, of the element of the next call
  double* exchange_forces() { return &A_(exchange_ + EXCHANGE_FORCES); }       // 24
  void set_displacements(const std::vector<double>& u);                        // what u leaves out becomes 0

  // ---- calls

  // FINITES as it stands; returns what it leaves in op.
  int call(int op, int elem, double* data, double* forces, double* matrix);

  // A matrix of order(elem), packed by columns: operations 1, 2, 7, 71.
  std::vector<double> matrix(int op, int elem);
  std::vector<double> stiffness(int elem) { return matrix(1, elem); }
  std::vector<double> mass(int elem) { return matrix(2, elem); }

  // The forces that belong to displacements: operation 3 in global axes, 33 in element axes; order(elem) values.
  std::vector<double> internal_forces(int elem, const std::vector<double>& u, int op = 3);

  // A load vector: operations 4, 41, 401, 10; order(elem) values. data holds what the operation reads.
  std::vector<double> loads(int op, int elem, const std::vector<double>& data);

  // Operation 5, with the temperature change and the difference through the thickness.
  plate_results results(int elem, const std::vector<double>& u, double change = 0.0, double difference = 0.0);

 private:
  void fill_element(int elem);
  void fill_plate(int elem);
  void refer_to_plates();

  std::vector<plate_description> descriptions_;
  std::vector<double> storage_;
  MODEL_DATA A_;
  std::int32_t exchange_;
  std::int32_t sections_, materials_, nodes_;  // where these blocks start
  std::vector<PLATE_RECORD> plates_;
  std::vector<PLATE_STATE_RECORD> states_;
  std::vector<std::int32_t> plate_of_elem_;
  std::vector<std::int32_t> stiff_list_;
  std::vector<float> stiff_factors_;
};

}  // namespace support

#endif
