// solid_model.h: a model of solid elements for tests and benchmarks.
//
// It plays the solver's part: it owns MODEL_DATA and the solid records, lays them out, and calls the library. What no
// solid reads is filled with NaN, results and displacements in the records too. Positions of records
// lie beyond the sequence numbers, joints have numbers of their own, and the user's numbers are different again, so
// that one is never taken for another.
//
// The shared records are one to the process: one solid_model lives at a time. Its end clears them, unless it has joined
// a plate_model.
#ifndef FINITES_TESTS_SOLID_MODEL_H
#define FINITES_TESTS_SOLID_MODEL_H

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "plate_model.h"

namespace support {

// One solid as a user would describe it.
struct solid_description {
  std::vector<point> nodes;  // 4, 6 or 8; up to nine find a place in the record
  int id = 0;                // 0: 7 more than ten times the sequence number
  double young = 2.1e5;
  double poisson = 0.3;
  double unit_weight = 7.7e-5;
  float stiff_factor = 1.0F;
};

// What a call says of itself.
struct solid_status {
  std::int32_t ierr;
  std::string msg;  // 500 characters
};

// What GET_ELEM3D hands back.
struct solid_answer {
  std::vector<double> RES, S, FG;
  solid_status status;
};

class solid_model {
 public:
  explicit solid_model(const std::vector<solid_description>& elements, company with = company::alone);
  solid_model(const solid_model&) = delete;
  solid_model& operator=(const solid_model&) = delete;
  ~solid_model();

  // ---- state of the analysis

  // A(name), one of the names of fields.h: STEP_COUNTER, ANALYSIS_STATE and SECOND_ORDER start as 0.
  void set_header(int name, double value) { A_(name) = value; }
  void allocate_nonlinear();  // SOLID_NL_REC, all zeros
  // The six equation numbers of the joint of a node; 0 at the start.
  void set_equations(int elem, int node, const std::array<double, 6>& equations);

  // ---- access; elem and node count from 1

  int count() const { return static_cast<int>(descriptions_.size()); }
  int nodes(int elem) const { return static_cast<int>(at(elem).nodes.size()); }
  int order(int elem) const { return 3 * nodes(elem); }
  const solid_description& at(int elem) const { return descriptions_[static_cast<std::size_t>(elem - 1)]; }
  std::int32_t entry(int elem) const;  // IOFF
  std::int32_t material(int elem) const;
  std::int32_t node_block(int elem, int node) const;
  std::int32_t joint(int elem, int node) const;
  std::int32_t number(int elem) const;  // the user's
  int position(int elem) const { return 2 * count() + 2 - elem; }
  SOLID_RECORD& record(int elem = 1) { return records_[static_cast<std::size_t>(position(elem) - 1)]; }
  SOLID_NL_RECORD& nonlinear(int elem = 1) { return nonlinear_[static_cast<std::size_t>(position(elem) - 1)]; }
  MODEL_DATA A() const { return A_; }
  double* raw() { return storage_.data(); }
  const std::vector<double>& storage() const { return storage_; }
  std::int32_t extent() const { return static_cast<std::int32_t>(storage_.size()); }
  // The first entries of U_ELEM; what u leaves out becomes NaN.
  void set_displacements(int elem, const std::vector<double>& u);

  // The joint results: three load cases of eight doubles a joint.
  static constexpr int LOAD_CASE_COUNT = 3;
  std::int32_t joint_results(int joint, int load) const;  // subscript of the first of the eight

  // ---- calls

  // FINITES_SOLID_3D as it stands, with a node count of the caller's.
  solid_status call(int op, int elem, int node_count, const double* G, double* F, double* K);

  // Calls that hand their result back, packed by columns. A failure leaves NaN.
  std::vector<double> matrix(int op, int elem = 1);                            // 1, 2, 7, 71
  std::vector<double> forces(int op, int elem, const std::vector<double>& u);  // 3, 33
  std::vector<double> body_load(int elem, const point& G);
  solid_status results(int elem, const std::vector<double>& u);  // into the record
  solid_answer answer(int elem, const std::vector<double>& U);   // GET_ELEM3D

 private:
  void fill_blocks(int elem);
  void fill_record(int elem);

  company with_;
  std::vector<solid_description> descriptions_;
  std::vector<double> storage_;
  MODEL_DATA A_;
  std::vector<std::int32_t> solid_pos_;
  std::vector<SOLID_RECORD> records_;
  std::vector<SOLID_NL_RECORD> nonlinear_;
};

}  // namespace support

#endif
