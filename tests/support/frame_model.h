// frame_model.h: a model of two-node members for tests and benchmarks: beams, trusses, cables, links, springs.
//
// It plays the solver's part: it owns MODEL_DATA, the member and hinge records, the loads of members and the property
// records of links and springs, lays them out, and calls the library. What a family of members does not read is filled
// with NaN. Positions of records lie beyond the sequence numbers, entries start at odd places, and the
// user's numbers are different again, so that one is never taken for another.
//
// The shared records are one to the process: one frame_model lives at a time. Its end clears them, unless it has joined
// a plate_model.
#ifndef FINITES_TESTS_FRAME_MODEL_H
#define FINITES_TESTS_FRAME_MODEL_H

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

enum class member_family { beam, truss, cable, link, spring };

// One member as a user would describe it, with the state that the solver keeps for it.
struct member_description {
  member_family family = member_family::beam;
  int id = 0;  // 0: 7 more than ten times the sequence number
  double length = 3.0;

  // Entry.
  std::array<double, 2> fixity_y{1.0, 1.0};  // x-z bending, first and second end
  std::array<double, 2> fixity_z{1.0, 1.0};  // x-y bending
  std::array<int, 4> release{};              // codes: axial, y, z, torsion
  double weight = 120.0;
  double factor_area = 1.0, factor_i1 = 1.0, factor_i2 = 1.0, factor_j = 1.0, factor_torsion = 1.0;
  double remove_min = 1e-3;
  double reduction_index = 0.0;
  double unstressed_length = 3.1;
  double pretension_stress = 0.0;

  // Section, material, nodes.
  double section_type = 1.0;
  double area = 0.02, shear_area_y = 0.0, shear_area_z = 0.0;  // y: A(S+5), x-y bending; z: A(S+4), x-z bending
  double i1 = 3e-4, i2 = 1e-4, j = 2e-4;                       // i1: x-y bending
  double e1 = 2.1e5, e2 = 2.1e5, g = 8.1e4;
  double material_kind = 2.0;
  point node1{}, node2{3.0, 0.0, 0.0};
  double local_axes = 0.0;  // switch of the first node

  // Records.
  double axial_force = 0.0;
  double tau_b = 0.0;
  int remove_step = 0;
  std::array<int, 3> nl_spring{};
  std::array<int, 3> remove_step_spring{};
  std::vector<double> loads;  // 13 rows by cases, packed by columns; empty: not allocated
  HINGE_RECORD hinge{};
  std::vector<std::int32_t> property;  // words of the property record; empty: no record
};

struct member_matrices {
  std::vector<double> K, KG;
};

struct cable_answer {
  std::vector<double> K, KG;
  int ierr;
  std::string msg;  // 500 characters
};

class frame_model {
 public:
  explicit frame_model(const std::vector<member_description>& members, company with = company::alone);
  frame_model(const frame_model&) = delete;
  frame_model& operator=(const frame_model&) = delete;
  ~frame_model();

  // ---- state of the analysis

  void set_kind(double kind) { A_(SECOND_ORDER) = kind; }
  void set_shear_deformation(double on) { A_(SHEAR_DEFORMATION) = on; }
  void set_lumped_mass(int lumped);
  void set_remove_ratio(float ratio);
  void set_stiff_reduction(int on, const std::vector<float>& factors);
  void set_members_yield(int flag);
  void set_cold_formed(int section_type);
  void set_nonlinear_springs(const std::vector<SPRING_NL_RECORD>& springs);
  // 12 by 12, packed by columns. The second transformation is applied when its count is above 0.
  void set_rotation(const std::vector<double>& T) { T_ = T; }
  void set_second_transformation(int count, const std::vector<double>& T2);

  // ---- access; elem counts from 1

  int count() const { return static_cast<int>(members_.size()); }
  const member_description& at(int elem) const { return members_[static_cast<std::size_t>(elem - 1)]; }
  std::int32_t entry(int elem) const;     // I
  std::int32_t section(int elem) const;   // S
  std::int32_t material(int elem) const;  // M
  std::int32_t node(int elem, int end) const;
  std::int32_t number(int elem) const;  // the user's
  int position(int elem) const { return 2 * count() + 2 - elem; }
  MEMBER_RECORD& record(int elem = 1) { return records_[static_cast<std::size_t>(position(elem) - 1)]; }
  HINGE_RECORD& hinge(int elem = 1) { return hinges_[static_cast<std::size_t>(position(elem) - 1)]; }
  MODEL_DATA A() const { return A_; }
  std::int32_t extent() const { return static_cast<std::int32_t>(storage_.size()); }
  const std::vector<double>& storage() const { return storage_; }

  // ---- calls on raw outputs

  void beam_call(int mode, int elem, double* K, double* KG) const;
  void beam_mass_call(int elem, double* M) const;
  void truss_call(int mode, int elem, double* K, double* KG) const;
  void truss_mass_call(int elem, double* M) const;
  void link_call(int mode, int elem, double* K, double* KG) const;
  void spring_call(int mode, int elem, double* K, double* KG) const;
  void cable_call(int mode, int elem, int load, double* K, double* KG, std::int32_t* ierr, char* msg) const;

  // ---- calls that hand their results back, packed by columns

  member_matrices beam(int mode, int elem = 1) const;
  member_matrices truss(int mode, int elem = 1) const;
  member_matrices link(int mode, int elem = 1) const;
  member_matrices spring(int mode, int elem = 1) const;
  cable_answer cable(int mode, int load, int elem = 1) const;
  std::vector<double> beam_mass(int elem = 1) const;
  std::vector<double> truss_mass(int elem = 1) const;

 private:
  void fill_member(int elem);
  void fill_beam(int elem);
  void fill_blocks(int elem);
  void fill_records(int elem);

  company with_;
  std::vector<member_description> members_;
  std::vector<double> storage_;
  MODEL_DATA A_;
  std::vector<double> T_, T2_;
  std::int32_t second_ = 0;
  SOLPARAM_RECORD parameters_{};
  std::vector<std::int32_t> elem_pos_;
  std::vector<MEMBER_RECORD> records_;
  std::vector<HINGE_RECORD> hinges_;
  std::vector<SPRING_NL_RECORD> springs_;
  std::vector<float> reductions_;
};

// The identity of order 12, packed.
std::vector<double> unit_rotation();

// The words of a property record: six kinds and six stiffnesses in the order of the degrees of freedom (x, y, z
// translation, x, y, z rotation). The words of no meaning hold numbers that would show.
std::vector<std::int32_t> spring_property(const std::array<int, 6>& kinds, const std::array<float, 6>& stiffnesses);
std::vector<std::int32_t> link_property(const std::array<int, 6>& kinds, const std::array<float, 6>& stiffnesses,
                                        int link_kind, int count, int form);

}  // namespace support

#endif
