// solid_results.cpp: turns and averages the stresses of solids.
#include "analyses/solid_results.h"

#include <algorithm>
#include <cmath>

#include <Eigen/Eigenvalues>

#include "finites/fields.h"
#include "finites/finites.h"
#include "model/result_columns.h"
#include "tarnix.h"

namespace solver {

namespace {

std::array<double, 3> eigenvalues(const std::array<double, 6>& s) {
  Eigen::Matrix3d t;
  t << s[0], s[3], s[5], s[3], s[1], s[4], s[5], s[4], s[2];
  const Eigen::Vector3d values =
      Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d>(t, Eigen::EigenvaluesOnly).eigenvalues();
  return {values(2), values(1), values(0)};
}

}  // namespace

void add_turned_stress(const double* stress, const MATRIX<3, 3>& axes, std::array<double, 6>& sum) {
  MATRIX<3, 3> local{}, global;
  for (int i = 1; i <= 3; ++i) local(i, i) = stress[i - 1];
  local(1, 2) = local(2, 1) = stress[3];
  local(1, 3) = local(3, 1) = stress[4];
  local(2, 3) = local(3, 2) = stress[5];
  TENSEUR_L2G_DBL(local.V, axes.V, global.V);
  const double parts[] = {global(1, 1), global(2, 2), global(3, 3), global(1, 2), global(2, 3), global(1, 3)};
  for (std::size_t i = 0; i < 6; ++i) sum[i] += parts[i];
}

// The library's closed form has no answer for a state without a deviator, which it leaves at 0, nor where rounding
// takes a cosine above 1: there the principal stresses are computed here.
void complete(solid_stress& s) {
  std::array<double, RES50_LENGTH + 1> record{};       // numbered from 1
  constexpr std::size_t ORDER[] = {0, 1, 2, 3, 5, 4};  // xz before yz
  for (std::size_t i = 0; i < 6; ++i) record[WORD_STRESS + i] = s.stress[ORDER[i]];
  UPDATE_PRINCIPAUX_RES50_SOLID_DBL(record.data() + 1);
  s.equivalent = record[WORD_MISES];
  for (std::size_t i = 0; i < 3; ++i) s.principal[i] = record[WORD_PRINCIPAL + i];
  const bool finite = std::all_of(s.principal.begin(), s.principal.end(), [](double p) { return std::isfinite(p); });
  const bool untold = s.principal == std::array<double, 3>{};
  if (!finite || untold) s.principal = eigenvalues(s.stress);
}

solid_part& solid_average::part_of(int node, int section) {
  std::vector<solid_part>& here = of_node_[node];
  const auto found =
      std::find_if(here.begin(), here.end(), [&](const solid_part& part) { return part.section == section; });
  if (found != here.end()) return *found;
  here.push_back({node, section, 0, {}});
  return here.back();
}

void solid_average::add(std::size_t element, const MATRIX<3, 3>& axes, const solid_records& records) {
  const auto& e = model_.elements[element];
  for (std::size_t n = 0; n < e.nodes.size(); ++n) {
    solid_part& part = part_of(e.nodes[n], section_of_deck(model_.solid_sections, e.section));
    add_turned_stress(records.nodes.V + n * RES50_LENGTH + WORD_STRESS - 1, axes, part.at.stress);
    ++part.elements;
  }
  if (elements_.empty()) elements_.resize(model_.elements.size());
  solid_stress& mean = elements_[element];
  for (int p = 0; p < records.point_count; ++p) add_turned_stress(records.points.V + 6 * p, axes, mean.stress);
  for (double& value : mean.stress) value /= records.point_count;
  complete(mean);
}

std::vector<solid_part> solid_average::finish() {
  std::vector<solid_part> result;
  for (std::vector<solid_part>& here : of_node_) {
    for (solid_part& part : here) {
      for (double& value : part.at.stress) value /= part.elements;
      complete(part.at);
      result.push_back(part);
    }
  }
  return result;
}

std::vector<solid_stress> governing_solids(const std::vector<solid_part>& parts, std::size_t nodes) {
  std::vector<solid_stress> chosen(nodes);
  std::vector<char> seen(nodes, 0);
  for (const solid_part& part : parts) {
    const auto n = subscript(part.node);
    if (!seen[n] || part.at.equivalent > chosen[n].equivalent) chosen[n] = part.at;
    seen[n] = 1;
  }
  return chosen;
}

}  // namespace solver
