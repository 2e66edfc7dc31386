// results.cpp: reads the 90-value records of operation 5.
#include "results.h"

#include <cmath>

#include "assembly.h"
#include "finites/finites.h"
#include "tarnix.h"

namespace solver {

namespace {

// First columns of the 90-value record, from 1: stresses at the top, in the middle and at the bottom, then resultants.
constexpr std::array<int, SURFACES> STRESS_COLUMN = {7, 18, 29};
constexpr int FORCE_COLUMN = 37, MOMENT_COLUMN = 40;

// Columns of the record in which principal values are made anew, from 1.
constexpr int ANEW_LENGTH = 47;
constexpr std::array<int, SURFACES> ANEW_EQUIVALENT = {7, 8, 9};
constexpr std::array<int, SURFACES> ANEW_STRESS = {24, 27, 30};
constexpr std::array<int, SURFACES> ANEW_PRINCIPAL = {34, 38, 42};

double column(const double* records, int record, int number) { return records[record * RESULT_LENGTH + number - 1]; }

std::array<double, 3> mean_of_points(const double* points, int first) {
  std::array<double, 3> mean{};
  for (int p = 0; p < RESULT_POINT_COUNT; ++p)
    for (int i = 0; i < 3; ++i) mean[static_cast<std::size_t>(i)] += column(points, p, first + i) / RESULT_POINT_COUNT;
  return mean;
}

// Principal values of averaged stresses are not averages of principal values: the library makes them anew.
void principal_values(element_result& result) {
  std::array<double, ANEW_LENGTH + 1> record{};  // numbered from 1
  for (std::size_t s = 0; s < SURFACES; ++s)
    for (std::size_t i = 0; i < 3; ++i) record[static_cast<std::size_t>(ANEW_STRESS[s]) + i] = result.at[s].stress[i];
  UPDATE_PRINCIPAUX_RES100_PLA_DBL(record.data() + 1);
  for (std::size_t s = 0; s < SURFACES; ++s) {
    const auto principal = static_cast<std::size_t>(ANEW_PRINCIPAL[s]);
    result.at[s].angle = record[principal];
    result.at[s].first = record[principal + 1];
    result.at[s].second = record[principal + 2];
    result.at[s].equivalent = record[static_cast<std::size_t>(ANEW_EQUIVALENT[s])];
  }
}

element_result mean_result(const double* points) {
  element_result result;
  result.force = mean_of_points(points, FORCE_COLUMN);
  result.moment = mean_of_points(points, MOMENT_COLUMN);
  for (std::size_t s = 0; s < SURFACES; ++s) result.at[s].stress = mean_of_points(points, STRESS_COLUMN[s]);
  principal_values(result);
  return result;
}

// The plane stress of one record in global axes.
tensor global_stress(const double* nodes, int node, int first, const MATRIX<3, 3>& axes) {
  MATRIX<3, 3> local{}, global;
  local(1, 1) = column(nodes, node, first);
  local(2, 2) = column(nodes, node, first + 1);
  local(1, 2) = local(2, 1) = column(nodes, node, first + 2);
  TENSEUR_L2G_DBL(local.V, axes.V, global.V);
  return {global(1, 1), global(2, 2), global(3, 3), global(1, 2), global(2, 3), global(1, 3)};
}

void add(tensor& sum, const tensor& t) {
  for (std::size_t i = 0; i < t.size(); ++i) sum[i] += t[i];
}

void add_at_nodes(const element& e, const double* nodes, const MATRIX<3, 3>& axes, std::vector<nodal_result>& result,
                  std::vector<int>& count) {
  for (int n = 0; n < ELEMENT_NODES; ++n) {
    const auto at = static_cast<std::size_t>(e.nodes[static_cast<std::size_t>(n)]);
    add(result[at].top, global_stress(nodes, n, STRESS_COLUMN[TOP], axes));
    add(result[at].bottom, global_stress(nodes, n, STRESS_COLUMN[BOTTOM], axes));
    ++count[at];
  }
}

void average(nodal_result& result, int count) {
  if (count == 0) return;
  for (double& value : result.top) value /= count;
  for (double& value : result.bottom) value /= count;
  result.equivalent_top = von_mises(result.top);
  result.equivalent_bottom = von_mises(result.bottom);
}

}  // namespace

double von_mises(const tensor& t) {
  const double a = t[0] - t[1], b = t[1] - t[2], c = t[2] - t[0];
  return std::sqrt((a * a + b * b + c * c) / 2 + 3 * (t[3] * t[3] + t[4] * t[4] + t[5] * t[5]));
}

step_results recover_results(const model& m, library_model& library, const static_solution& solution) {
  step_results all;
  all.elements.reserve(m.elements.size());
  all.nodes.resize(m.nodes.size());
  all.members.assign(m.elements.size(), end_forces{});
  std::vector<int> count(m.nodes.size(), 0);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const element& elem = m.elements[e];
    const element_vector u = gather(elem, solution.displacement);
    if (!is_plate(elem.type)) {
      all.elements.emplace_back();
      all.members[e] = library.member_forces(e, u, solution.loads.element[e]);
      continue;
    }
    const element_results records = library.results(e, u, solution.loads.element[e]);
    all.elements.push_back(mean_result(records.points));
    add_at_nodes(elem, records.nodes, triangle_axes(m, elem), all.nodes, count);
  }
  for (std::size_t n = 0; n < all.nodes.size(); ++n) average(all.nodes[n], count[n]);
  return all;
}

}  // namespace solver
