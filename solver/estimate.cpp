// estimate.cpp: what is made before a factorisation is made here too, and measured; factors are what the analysis of
// the pattern says; results are counted.
//
// The largest step counts. Factors live until the results are written, beside matrices, or beside results, whichever
// are larger.
#include "estimate.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <string>

#include <fmt/format.h>

#include "analyses/envelope.h"
#include "analyses/results.h"
#include "elements/library_model.h"
#include "elements/scatter_map.h"
#include "model/base_step.h"
#include "output/summary.h"
#include "steps/report.h"
#include "steps/shared_deck.h"
#include "system/linear_solver.h"
#include "system/memory.h"
#include "system/unresisted.h"

namespace solver {

namespace {

constexpr double MEGABYTE = 1e6;

struct phases {
  double program = 0, model = 0, records = 0, matrix = 0, factors = 0, results = 0, kept = 0;
  std::size_t equations = 0, entries = 0;

  double peak() const { return program + model + records + factors + kept + std::max(matrix, results); }
};

double bytes_of_vectors(const model& m, double count) {
  return count * static_cast<double>(m.nodes.size()) * DIRECTIONS * sizeof(double);
}

struct element_counts {
  double plates = 0, members = 0, solids = 0;

  explicit element_counts(const model& m) {
    for (const element& e : m.elements) {
      if (is_plate(e.type)) ++plates;
      if (is_member(e.type)) ++members;
      if (is_solid(e.type)) ++solids;
    }
  }
};

// Solution and loads by degree of freedom; what each element and node has; two copies of the numbers of a file.
double result_megabytes(const model& m, const step& s, int stations) {
  constexpr double VECTORS = 8, PARTS_OF_A_NODE = 1.5, COPIES = 2, OF_A_STATION = 30 * sizeof(double);
  const element_counts count(m);
  const auto elements = static_cast<double>(m.elements.size()), nodes = static_cast<double>(m.nodes.size());
  double bytes = bytes_of_vectors(m, VECTORS) + elements * sizeof(distributed_load);
  if (s.kind == step_kind::FREQUENCY || s.kind == step_kind::BUCKLE) {
    return (bytes + bytes_of_vectors(m, COPIES * s.modes)) / MEGABYTE;
  }
  bytes += elements * (sizeof(element_result) + sizeof(end_forces)) +
           count.members * (sizeof(member_field) + stations * OF_A_STATION);
  if (count.plates > 0) bytes += nodes * (sizeof(nodal_result) + PARTS_OF_A_NODE * sizeof(nodal_part));
  if (count.solids > 0) {
    bytes += elements * sizeof(solid_stress) + nodes * COPIES * PARTS_OF_A_NODE * sizeof(solid_part);
  }
  return bytes / MEGABYTE;
}

// Bounds of one envelope, and where their places lie.
double bytes_of_envelope(const model& m, int stations) {
  constexpr double PARTS_OF_A_NODE = 1.5, NODAL = 2 * DIRECTIONS, ENDS = 2 * DIRECTIONS;
  constexpr auto OF_A_STATION = static_cast<double>(STATION_COLUMNS), OF_A_PLATE = static_cast<double>(PLATE_COLUMNS),
                 OF_A_PART = static_cast<double>(SURFACES * STRESS_COLUMNS),
                 OF_A_SOLID = static_cast<double>(SOLID_COLUMNS);
  const element_counts count(m);
  const auto elements = static_cast<double>(m.elements.size()), nodes = static_cast<double>(m.nodes.size());
  double values = nodes * NODAL + count.members * (ENDS + stations * OF_A_STATION);
  double places = count.members * sizeof(member_field);
  if (count.plates > 0) {
    values += elements * OF_A_PLATE + nodes * PARTS_OF_A_NODE * OF_A_PART;
    places += nodes * PARTS_OF_A_NODE * sizeof(nodal_part);
  }
  if (count.solids > 0) {
    values += (elements + nodes * PARTS_OF_A_NODE) * OF_A_SOLID;
    places += nodes * PARTS_OF_A_NODE * sizeof(solid_part);
  }
  return values * sizeof(bounds) + places;
}

// The solutions that combinations take, and the bounds that envelopes gather: all at once, if the deck has the
// combinations behind its steps.
double kept_megabytes(const model& m, int stations) {
  constexpr double VECTORS = 5;  // displacements, loads, those at nodes, reactions, forces of conditions
  std::set<int> taken;
  double envelopes = 0;
  for (const step& s : m.steps) {
    if (s.kind == step_kind::COMBINATION) {
      for (const combined_step& term : s.combined) taken.insert(term.step);
    }
    if (s.kind == step_kind::ENVELOPE) ++envelopes;
  }
  const double solution =
      bytes_of_vectors(m, VECTORS) + static_cast<double>(m.elements.size()) * sizeof(distributed_load);
  return (static_cast<double>(taken.size()) * solution + envelopes * bytes_of_envelope(m, stations)) / MEGABYTE;
}

// What a step holds beside the matrix that is measured: a second one and their sum, and the basis of the iteration.
double further_matrices(const model& m, const step& s, const symmetric_matrix& K) {
  const double one = static_cast<double>(K.value.size()) * (sizeof(double) + sizeof(std::int32_t)) / MEGABYTE;
  const bool modal = s.kind == step_kind::FREQUENCY || s.kind == step_kind::BUCKLE;
  if (!modal) return s.kind == step_kind::ELASTOPLASTIC ? one : 0;
  constexpr double SMALLEST_BASIS = 24, MATRICES = 3;  // the other one, the sum, and one more while it is made
  const double basis = std::max(3.0 * (s.modes + 4), SMALLEST_BASIS);
  return MATRICES * one + bytes_of_vectors(m, basis) / MEGABYTE;
}

// Of one step, on top of the records.
phases of_step(const model& m, const step& s, library_model& library, linear_solver& solver, int stations,
               phases before) {
  const double start = held_memory();
  load_case loads = gather_load_case(m, s, base_step(m, s));
  library.plates().choose_ties(loads);
  hold_meaningless_freedoms(m, s, loads);
  symmetric_matrix K;
  const scatter_map map = make_scatter_map(m, loads, K);
  before.equations = map.equations;
  before.entries = K.value.size();
  if (map.equations > 0) before.factors = solver.megabytes_of_factors(K);
  // Values that are 0 have pages as others have.
  before.matrix = std::max(held_memory() - start, 0.0) + further_matrices(m, s, K);
  before.results = result_megabytes(m, s, stations);
  return before;
}

phases measure(const options& wanted) {
  phases found;
  found.program = held_memory();
  const model m = read_shared_deck(wanted);
  warn(deck_warnings(m.notes));
  found.model = held_memory() - found.program;
  library_model library(m);
  found.records = held_memory() - found.program - found.model;
  found.kept = kept_megabytes(m, wanted.station_count);
  phases largest = found;
  for (const step& s : m.steps) {
    const std::unique_ptr<linear_solver> solver = make_linear_solver(wanted.kind);
    const phases now = of_step(m, s, library, *solver, wanted.station_count, found);
    if (now.peak() > largest.peak()) largest = now;
  }
  return largest;
}

}  // namespace

bool estimate_memory(const options& wanted) {
  const phases p = measure(wanted);
  const memory_bound bound = free_memory(wanted.memory_limit);
  // What this process holds now a run would hold too.
  const double more = std::max(p.peak() - held_memory(), 0.0);
  const auto line = [](const char* what, double megabytes) {
    print(fmt::format("  {:<16}{:>9.0f} MB\n", what, std::ceil(megabytes)));
  };
  print(fmt::format("{}: a run would take\n", wanted.deck));
  line("program", p.program);
  line("model", p.model);
  line("element records", p.records);
  print(fmt::format("  {:<16}{:>9.0f} MB, {} equations, {} entries\n", "matrix", std::ceil(p.matrix), p.equations,
                    p.entries));
  line("factors", p.factors);
  line("results", p.results);
  if (p.kept > 0) line("combinations", p.kept);
  line("at its peak", p.peak());
  const bool fits = more <= bound.megabytes && !(wanted.memory_limit > 0 && p.peak() > wanted.memory_limit);
  if (std::isfinite(bound.megabytes)) {
    print(fmt::format("{:.0f} MB are {}: {}\n", std::floor(bound.megabytes), bound.reason,
                      fits ? "it fits" : "it does not fit"));
  }
  return fits;
}

}  // namespace solver
