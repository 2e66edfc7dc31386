// point_results.cpp: out of the library's records, which are in element axes.
#include "analyses/point_results.h"

#include <algorithm>

#include "analyses/solid_results.h"
#include "elements/material_axes.h"
#include "finites/fields.h"
#include "model/result_columns.h"

namespace solver {

namespace {

bool is_of_points(const print_request& p) {
  return p.kind == print_kind::ELEMENTS &&
         std::any_of(p.quantities.begin(), p.quantities.end(), [](const std::string& q) { return q != "PEEQ"; });
}

template <std::size_t COUNT>
void put(std::array<double, 8>& into, std::size_t first, const std::array<double, COUNT>& values) {
  std::copy(values.begin(), values.end(), into.begin() + static_cast<std::ptrdiff_t>(first));
}

printed_values plate_point(const double* record, const plane_rotation& to_material) {
  constexpr std::array<int, SURFACES> STRAIN_COLUMN = {COL_STRAIN_TOP, COL_STRAIN_MID, COL_STRAIN_BOTTOM};
  const auto column = [&](int number) { return record + number - 1; };
  printed_values v;
  for (std::size_t s = 0; s < SURFACES; ++s) {
    v.surface_stress[s] = to_material.tensor(column(STRESS_COLUMN[s]));
    v.surface_strain[s] = to_material.strains(column(STRAIN_COLUMN[s]));
  }
  v.shear_stress = to_material.vector(column(COL_SHEAR_STRESS));
  put(v.resultants, 0, to_material.tensor(column(COL_FORCES)));
  put(v.resultants, 3, to_material.tensor(column(COL_MOMENTS)));
  put(v.resultants, 6, to_material.vector(column(COL_SHEAR_FORCE)));
  return v;
}

template <class ARRAY>
void add_share(ARRAY& sum, const ARRAY& part, double share) {
  for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += share * part[i];
}

}  // namespace

std::vector<char> elements_with_points(const model& m) {
  std::vector<char> wanted(m.elements.size(), 0);
  for (const step& s : m.steps) {
    for (const print_request& p : s.prints) {
      if (!is_of_points(p)) continue;
      if (p.set.empty()) std::fill(wanted.begin(), wanted.end(), 1);
      for (const int e : p.members) wanted[subscript(e)] = 1;
    }
  }
  return wanted;
}

point_results plate_points(const model& m, std::size_t element, const MATRIX<3, 3>& axes, const double* points) {
  const plane_rotation to_material(axes, material_axes(m, m.elements[element]));
  point_results result{element, {}};
  for (int p = 0; p < RES_POINTS; ++p) {
    result.points.push_back(plate_point(points + static_cast<std::ptrdiff_t>(p) * RES_LENGTH, to_material));
  }
  return result;
}

point_results solid_points(std::size_t element, const MATRIX<3, 3>& axes, const solid_records& records) {
  point_results result{element, {}};
  for (int p = 0; p < records.point_count; ++p) {
    printed_values v;
    add_turned_stress(records.points.V + static_cast<std::ptrdiff_t>(p) * 6, axes, v.stress);
    result.points.push_back(v);
  }
  return result;
}

printed_values mean_of(const point_results& all) {
  printed_values mean;
  const double share = 1.0 / static_cast<double>(all.points.size());
  for (const printed_values& v : all.points) {
    add_share(mean.stress, v.stress, share);
    for (std::size_t s = 0; s < SURFACES; ++s) {
      add_share(mean.surface_stress[s], v.surface_stress[s], share);
      add_share(mean.surface_strain[s], v.surface_strain[s], share);
    }
    add_share(mean.shear_stress, v.shear_stress, share);
    add_share(mean.resultants, v.resultants, share);
  }
  return mean;
}

}  // namespace solver
