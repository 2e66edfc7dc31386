// plastic_plates.cpp: the protocol of plates that yield, element by element.
#include "elastoplastic/plastic_plates.h"

#include "elements/scatter_map.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "model/model_error.h"
#include "model/result_columns.h"
#include "system/assembly.h"
#include "system/ranks.h"
#include "tarnix.h"

namespace solver {

namespace {

constexpr double SHOWN_SHEAR = 0.833333333333333;  // the record shows shear strains over this

constexpr int FREEDOMS = 24;

section_vector record_strains(const double* record, double thickness) {
  section_vector e;
  for (int i = 0; i < 3; ++i) {
    const double middle = record[COL_STRAIN_MID - 1 + i];
    e(i + 1) = middle;
    e(i + 4) = (record[COL_STRAIN_TOP - 1 + i] - middle) * 2 / thickness;
  }
  for (int i = 0; i < 2; ++i) e(i + 7) = record[COL_SHEAR_STRAIN - 1 + i] * SHOWN_SHEAR;
  return e;
}

section_vector record_forces(const double* record) {
  section_vector s;
  for (int i = 0; i < 6; ++i) s(i + 1) = record[COL_FORCES - 1 + i];
  for (int i = 0; i < 2; ++i) s(i + 7) = record[COL_SHEAR_FORCE - 1 + i];
  return s;
}

// Weight times determinant at the four points that the plates integrate with.
std::array<double, SURFACE_POINTS> areas(const model& m, const element& e, const MATRIX<3, 3>& axes) {
  MATRIX<3, 4> local{};
  const std::int32_t nodes = count_of(e.nodes);
  for (int n = 1; n <= nodes; ++n) {
    for (int a = 1; a <= 3; ++a) {
      for (int i = 1; i <= 3; ++i) local(a, n) += axes(a, i) * m.nodes[e.nodes[n - 1]].xyz[subscript(i - 1)];
    }
  }
  const std::int32_t rule = nodes == 4 ? 1 : 2;
  std::array<double, SURFACE_POINTS> result{};
  for (std::int32_t p = 1; p <= SURFACE_POINTS; ++p) {
    double xi, eta, det, weight, j11, j12, j21, j22, g11, g12, g21, g22;
    GAUSS_INT_2D(&rule, &p, &nodes, local.V, &xi, &eta, &det, &weight, &j11, &j12, &j21, &j22, &g11, &g12, &g21, &g22);
    result[subscript(p - 1)] = weight * det;
  }
  return result;
}

}  // namespace

quiet_assertions::quiet_assertions() {
  const std::int32_t quiet = 1;
  TARNIX_SET_ASSERT_QUIET(&quiet);
}

quiet_assertions::~quiet_assertions() {
  const std::int32_t quiet = 0;
  TARNIX_SET_ASSERT_QUIET(&quiet);
}

plastic_plates::plastic_plates(const model& m, library_model& library)
    : model_(m), library_(library), plate_of_(m.elements.size(), 0) {
  library_.clear_state();
  library_.plates().yielding(true);
  states_.reserve(m.elements.size());
  fail_together([this] { take_first_states(); });
  library_.plates().count_increment(1);
}

void plastic_plates::take_first_states() {
  const model& m = model_;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (!is_own(m, e)) {
      states_.emplace_back(plate_model::ELASTIC, 0);  // of another process
      continue;
    }
    const plate_model which = library_.plates().model_of(e);
    const int points = which == plate_model::LAYERED ? m.shell_sections[m.elements[e].section].thickness_points : 0;
    states_.emplace_back(which, points);
    states_.back().refer(library_.plates().state(e));
    begin(e);
    states_.back().promote(library_.plates().state(e));
  }
}

plastic_plates::~plastic_plates() {
  library_.plates().yielding(false);
  library_.clear_state();
}

void plastic_plates::begin(std::size_t element) {
  if (!yields(element)) {
    plate_of_[element] = elastic_.size();
    elastic_.emplace_back();
    elastic_.back() = element_matrix{};
    library_.stiffness(element, elastic_.back());
    return;
  }
  plate_of_[element] = plates_.size();
  plates_.emplace_back();
  plate& p = plates_.back();
  const auto& e = model_.elements[element];
  p.axes = plate_axes(model_, e);
  p.area = areas(model_, e, p.axes);
  std::array<MATRIX<8, FREEDOMS>, SURFACE_POINTS> S{};
  take_strain_matrices(element, p, S);
  const shell_section& section = model_.shell_sections[e.section];
  const material& mat = model_.materials[section.material];
  p.strength = {section.thickness, mat.yield_stress, mat.plastic_modulus};
  if (library_.plates().model_of(element) == plate_model::SECTION) {
    for (int j = 1; j <= 8; ++j) {
      for (int i = 1; i <= 8; ++i) p.D(i, j) = library_.plates().state(element).SEC_TANGENT(i, j, 1);
    }
  }
  check_first_state(element);
  p.rest = element_matrix{};
  library_.stiffness(element, p.rest);
  for (std::size_t q = 0; q < SURFACE_POINTS; ++q) {
    for (int j = 1; j <= element_freedoms(e); ++j) {
      for (int i = 1; i <= element_freedoms(e); ++i) {
        for (int r = 1; r <= 8; ++r) p.rest(i, j) -= p.area[q] * p.B[q](r, i) * S[q](r, j);
      }
    }
  }
}

// An element library that knows nothing of a model leaves its state as it is.
void plastic_plates::check_first_state(std::size_t element) {
  if (library_.plates().model_of(element) != plate_model::LAYERED) return;
  if (library_.plates().state(element).POINT_STATE(1).TANGENT(1, 1, 1) > 0) return;
  const shell_section& section = model_.shell_sections[model_.elements[element].section];
  throw model_error(model_, section, "*SHELL SECTION", "MODEL=LAYERED is not known to this element library");
}

// Strains and section forces under unit displacements: operation 5 with the elastic tangent of the first pass.
void plastic_plates::take_strain_matrices(std::size_t element, plate& p,
                                          std::array<MATRIX<8, FREEDOMS>, SURFACE_POINTS>& forces) {
  library_.plates().choose_model(element);
  for (auto& B : p.B) B = MATRIX<8, FREEDOMS>{};
  for (int j = 1; j <= element_freedoms(model_.elements[element]); ++j) {
    element_vector unit{};
    unit(j) = 1;
    const double* record = library_.plates().results(element, unit, {}).points;
    for (std::size_t q = 0; q < SURFACE_POINTS; ++q, record += RES_LENGTH) {
      const section_vector e = record_strains(record, thickness(element)), s = record_forces(record);
      for (int i = 1; i <= 8; ++i) {
        p.B[q](i, j) = e(i);
        forces[q](i, j) = s(i);
      }
    }
  }
}

double plastic_plates::thickness(std::size_t element) const {
  return model_.shell_sections[model_.elements[element].section].thickness;
}

void plastic_plates::tangent(std::size_t element, element_matrix& K) {
  if (!yields(element)) {
    K = elastic_[plate_of_[element]];
    return;
  }
  library_.plates().choose_model(element);
  library_.stiffness(element, K);
}

void plastic_plates::try_increment(std::size_t element, const element_vector& increment, element_vector& forces) {
  if (!yields(element)) {
    forces = times(elastic_[plate_of_[element]], increment);
    return;
  }
  library_.plates().choose_model(element);
  library_.plates().internal_forces(element, increment, forces);
}

bool plastic_plates::update(std::size_t element, const element_vector& increment) {
  if (!yields(element)) return true;
  library_.plates().choose_model(element);
  plastic_state::rewind(library_.plates().state(element));
  if (library_.plates().model_of(element) == plate_model::SECTION) return update_section(element, increment);
  element_vector unused;
  library_.plates().commit_forces(element, increment, unused);
  // At a point of the layered model that stands on its surface to the last digit the multiplier may be a negative
  // rounding error: the library says so and goes on with it, and so does the iteration. What counts is that it
  // returned.
  return plastic_state::all_updated(library_.plates().state(element));
}

element_vector plastic_plates::forces(std::size_t element, const element_vector& displacements) const {
  if (!yields(element)) return times(elastic_[plate_of_[element]], displacements);
  const plate& p = plates_[plate_of_[element]];
  element_vector F = times(p.rest, displacements);
  for (int q = 1; q <= SURFACE_POINTS; ++q) {
    const section_vector s = section_forces(element, p, q, displacements);
    const auto at = subscript(q - 1);
    for (int i = 1; i <= FREEDOMS; ++i) {
      double work = 0;
      for (int r = 1; r <= 8; ++r) work += p.B[at](r, i) * s(r);
      F(i) += p.area[at] * work;
    }
  }
  return F;
}

void plastic_plates::accept(std::size_t element, const element_vector& displacements) {
  if (!yields(element)) return;
  PLATE_STATE_RECORD& record = library_.plates().state(element);
  plate& p = plates_[plate_of_[element]];
  states_[element].promote(record);
  library_.plates().store_displacements(element, displacements);
  for (int q = 1; q <= SURFACE_POINTS; ++q) {
    p.accepted[subscript(q - 1)] = times(p.B[subscript(q - 1)], displacements);
    const section_vector s = section_forces(element, p, q, displacements);
    for (int i = 1; i <= 6; ++i) record.STORED_NODAL_FORCES(i, q) = s(i);
  }
}

section_vector plastic_plates::section_forces(std::size_t element, const plate& p, int point,
                                              const element_vector& u) const {
  if (library_.plates().model_of(element) == plate_model::LAYERED) {
    point_values v;
    layered_values(element, p, point, v);
    return v.force;
  }
  section_vector e = times(p.B[subscript(point - 1)], u);
  const section_vector ep = plastic_strain(p, &library_.plates().state(element).SEC_EP_CUR(1, point));
  for (int i = 1; i <= 8; ++i) e(i) -= ep(i);
  return times(p.D, e);
}

}  // namespace solver
