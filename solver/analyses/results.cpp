// results.cpp: reads the 90-value records of operation 5.
#include "analyses/results.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "elements/material_axes.h"
#include "finites/fields.h"
#include "model/result_columns.h"
#include "system/assembly.h"
#include "system/element_loops.h"
#include "system/ranks.h"
#include "tarnix.h"

namespace solver {

namespace {

double column(const double* records, int record, int number) { return records[record * RES_LENGTH + number - 1]; }

template <std::size_t COUNT>
std::array<double, COUNT> mean_of_points(const double* points, int first) {
  std::array<double, COUNT> mean{};
  for (int p = 0; p < RES_POINTS; ++p) {
    for (std::size_t i = 0; i < COUNT; ++i) mean[i] += column(points, p, first + number_of(i)) / RES_POINTS;
  }
  return mean;
}

// The library's records are in element axes; results stand in the axes of the material.
void turn(element_result& result, const plane_rotation& to_material, std::array<double, 2>& shear_stress) {
  result.force = to_material.tensor(result.force.data());
  result.moment = to_material.tensor(result.moment.data());
  result.shear_force = to_material.vector(result.shear_force.data());
  shear_stress = to_material.vector(shear_stress.data());
  for (std::size_t s = 0; s < SURFACES; ++s) {
    result.at[s].stress = to_material.tensor(result.at[s].stress.data());
    result.plastic[s] = to_material.strains(result.plastic[s].data());
  }
  result.plastic_shear = to_material.vector(result.plastic_shear.data());
}

element_result mean_result(const double* points, const plane_rotation& to_material) {
  element_result result;
  result.force = mean_of_points<3>(points, COL_FORCES);
  result.moment = mean_of_points<3>(points, COL_MOMENTS);
  result.shear_force = mean_of_points<2>(points, COL_SHEAR_FORCE);
  for (std::size_t s = 0; s < SURFACES; ++s) {
    result.at[s].stress = mean_of_points<3>(points, STRESS_COLUMN[s]);
    result.plastic[s] = mean_of_points<3>(points, PLASTIC_COLUMN[s]);
  }
  result.plastic_shear = mean_of_points<2>(points, COL_PLASTIC_SHEAR);
  std::array<double, 2> shear_stress = mean_of_points<2>(points, COL_SHEAR_STRESS);
  turn(result, to_material, shear_stress);
  complete(result.at, shear_stress);
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

// What the library answers for one element, as far as it is a plate or a solid.
struct answer {
  MATRIX<3, 3> axes;
  element_result mean;
  std::array<double, std::size_t{RES_POINTS} * RES_LENGTH> nodes, points;
  solid_records solid;
};

// What of it the averages at nodes and the tables of points read, between processes.
void put_solid(const answer& a, std::size_t nodes, packed_values& to) {
  to.put(a.axes);
  for (std::size_t n = 0; n < nodes; ++n) to.put(a.solid.nodes.V + n * RES50_LENGTH + WORD_STRESS - 1, 6);
  to.put(a.solid.points);
  to.put(a.solid.point_count);
}

void take_solid(packed_values& from, std::size_t nodes, answer& a) {
  from.take(&a.axes, 1);
  for (std::size_t n = 0; n < nodes; ++n) from.take(a.solid.nodes.V + n * RES50_LENGTH + WORD_STRESS - 1, 6);
  from.take(&a.solid.points, 1);
  from.take(&a.solid.point_count, 1);
}

// act(place, count) for each stretch of columns of the records at the nodes of a plate.
template <class ACT>
void for_nodal_columns(std::size_t nodes, answer& a, const ACT& act) {
  for (std::size_t n = 0; n < nodes; ++n) {
    double* const record = a.nodes.data() + n * RES_LENGTH - 1;
    for (const int first : STRESS_COLUMN) act(record + first, 3);
    act(record + COL_SHEAR_STRESS, 2);
  }
}

void add_at_nodes(const element& e, const double* nodes, const MATRIX<3, 3>& axes, numbered<nodal_result>& result,
                  numbered<int>& count) {
  for (int n = 0; n < count_of(e.nodes); ++n) {
    const int at = e.nodes[n];
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

namespace {

// By element: whether this process takes its results, because it writes all, or a node that its own elements have.
std::vector<char> taken_here(const model& m) {
  std::vector<char> taken(m.elements.size(), is_first_rank() ? 1 : 0);
  if (is_first_rank()) return taken;
  numbered<char> own(m.nodes.size(), 0);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (!is_own(m, e)) continue;
    for (const int n : m.elements[e].nodes) own[n] = 1;
  }
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const std::vector<int>& nodes = m.elements[e].nodes;
    taken[e] = std::any_of(nodes.begin(), nodes.end(), [&](int n) { return own[n] != 0; }) ? 1 : 0;
  }
  return taken;
}

// Each process asks its own elements; the first takes the answers of plates and solids in the order of the model, so
// that averages have the bits that they have in one process, and those of pieces likewise; all take those of members.
template <class ASK, class FIELD, class TAKE>
void share_answers(const model& m, const std::vector<char>& printed, const ASK& ask, const FIELD& field,
                   const TAKE& take, step_results& all) {
  answer a{};
  const std::vector<char> taken = m.pieces ? taken_here(m) : std::vector<char>(m.elements.size(), 1);
  const auto put = [&](std::size_t e, packed_values& to) {
    const element& elem = m.elements[e];
    if (is_solid(elem.type)) {
      ask(e, a);
      put_solid(a, elem.nodes.size(), to);
    } else if (is_plate(elem.type)) {
      ask(e, a);
      to.put(a.axes);
      to.put(a.mean);
      for_nodal_columns(elem.nodes.size(), a, [&](const double* at, std::size_t count) { to.put(at, count); });
      if (printed[e]) to.put(a.points);
    }
  };
  const auto take_shared = [&](std::size_t e, packed_values& from) {
    const element& elem = m.elements[e];
    if (is_solid(elem.type)) {
      take_solid(from, elem.nodes.size(), a);
    } else if (is_plate(elem.type)) {
      from.take(&a.axes, 1);
      from.take(&a.mean, 1);
      for_nodal_columns(elem.nodes.size(), a, [&](double* at, std::size_t count) { from.take(at, count); });
      if (printed[e]) from.take(&a.points, 1);
    } else {
      return;
    }
    if (taken[e]) take(e, a);
  };
  share_by_element(m, m.pieces ? takers::ALL : takers::FIRST, put, take_shared);
  const auto put_member = [&](std::size_t e, packed_values& to) {
    if (!is_member(m.elements[e].type)) return;
    ask(e, a);
    to.put(all.members[e]);
    if (has_field(m, m.elements[e])) to.put(field(e));
  };
  const auto take_member = [&](std::size_t e, packed_values& from) {
    if (!is_member(m.elements[e].type)) return;
    from.take(&all.members[e], 1);
    if (has_field(m, m.elements[e])) all.fields.push_back(from.take<member_field>());
  };
  share_by_element(m, takers::ALL, put_member, take_member);
}

step_results recover(const model& m, library_model& library, const static_solution& solution,
                     const record_source& records_of, int threads) {
  step_results all;
  all.members.assign(m.elements.size(), end_forces{});
  numbered<int> count;
  std::optional<nodal_average> smooth;
  std::optional<solid_average> inside;
  const bool takes = is_first_rank() || m.pieces;
  if (takes) {
    all.elements.resize(m.elements.size());
    all.nodes.resize(m.nodes.size());
    count.assign(m.nodes.size(), 0);
    smooth.emplace(m);
    inside.emplace(m);
  }
  const std::vector<char> printed = elements_with_points(m);
  const auto ask = [&](std::size_t e, answer& a) {
    const element& elem = m.elements[e];
    const element_vector u = gather(elem, solution.displacement);
    if (is_solid(elem.type)) {
      a.solid = library.solids().results(e, u, solution.loads.element[e]);
      a.axes = library.solids().axes(e);
    } else if (is_plate(elem.type)) {
      const element_results records = records_of(e, u);
      a.axes = plate_axes(m, elem);
      a.mean = mean_result(records.points, plane_rotation(a.axes, material_axes(m, elem)));
      std::copy_n(records.nodes, a.nodes.size(), a.nodes.begin());
      if (printed[e]) std::copy_n(records.points, a.points.size(), a.points.begin());
    } else if (is_member(elem.type)) {
      all.members[e] = is_cable(m, elem) ? library.cables().local_forces(e)
                                         : library.members().forces(e, u, solution.loads.element[e]);
    }
  };
  const auto field = [&](std::size_t e) {
    const element_vector u = gather(m.elements[e], solution.displacement);
    return field_of(m, library, e, u, solution.loads.element[e],
                    {all.members[e], {}, library.members().geometric_force(e)});
  };
  const auto take = [&](std::size_t e, const answer& a) {
    const element& elem = m.elements[e];
    if (is_solid(elem.type)) {
      inside->add(e, a.axes, a.solid);
      if (printed[e]) all.points.push_back(solid_points(e, a.axes, a.solid));
    } else if (is_plate(elem.type)) {
      all.elements[e] = a.mean;
      add_at_nodes(elem, a.nodes.data(), a.axes, all.nodes, count);
      smooth->add(e, a.axes, a.nodes.data());
      if (printed[e]) all.points.push_back(plate_points(m, e, a.axes, a.points.data()));
    } else if (has_field(m, elem)) {
      all.fields.push_back(field(e));
    }
  };
  if (rank_count() > 1) {
    share_answers(m, printed, ask, field, take, all);
  } else {
    compute_and_take<answer>(m, library, threads, ask, take);
  }
  if (!takes) return all;
  all.parts = smooth->finish();
  all.solids = inside->finish();
  all.in_solids = inside->elements();
  const bool solids =
      std::any_of(m.elements.begin(), m.elements.end(), [](const element& e) { return is_solid(e.type); });
  if (solids) all.in_solids.resize(m.elements.size());  // pieces without solids have their arrays too
  for (std::size_t n = 0; n < all.nodes.size(); ++n) average(all.nodes[n], count[n]);
  return all;
}

}  // namespace

step_results recover_results(const model& m, library_model& library, const static_solution& solution) {
  const record_source records_of = [&](std::size_t e, const element_vector& u) {
    return library.plates().results(e, u, solution.loads.element[e]);
  };
  return recover(m, library, solution, records_of, library.threads_for(question::RESULTS));
}

step_results recover_results(const model& m, library_model& library, const static_solution& solution,
                             const record_source& records_of) {
  return recover(m, library, solution, records_of, 1);
}

}  // namespace solver
