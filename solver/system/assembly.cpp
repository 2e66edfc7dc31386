// assembly.cpp: the loops over the elements.
#include "system/assembly.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "elements/tied_element.h"
#include "model/large_loads.h"
#include "model/long_vectors.h"
#include "model/model_error.h"
#include "system/element_loops.h"
#include "system/ranks.h"

namespace solver {

namespace {

bool has_force(const load_case& loads, std::size_t f) { return loads.prescribed[f] || loads.has_condition(f); }

bool touches_prescribed(const element& e, const load_case& loads) {
  for (int i = 0; i < element_freedoms(e); ++i) {
    if (has_force(loads, element_freedom(e, i))) return true;
  }
  return false;
}

// `loaded`: the step whose loads have a part in it; null: none has.
[[noreturn]] void not_finite(const model& m, const element& e, const char* what, const step* loaded) {
  if (loaded != nullptr) report_large_load(m, *loaded, std::string(what) + " of element " + std::to_string(e.id));
  throw model_error(m, e, "*ELEMENT",
                    std::string(what) + " of element " + std::to_string(e.id) + " is not finite: look at its " +
                        (loaded != nullptr ? "loads, " : "") + "coordinates, thickness and material");
}

// The sums of a stretch of elements whose matrices threads compute and add side by side, a part of the stretch each.
//
// A part adds straight to an entry of the matrix if it is the first of the parts to join one of the two equations: no
// part before it then adds there. All else is kept and added when the parts have ended, in their order, so that each
// entry gets its terms in the order of the elements, as from one thread. Parts are stretches of neighbours: they have
// few equations in common where the deck numbers its elements along the mesh.
class shared_sums {
 public:
  shared_sums(const model& m, const scatter_map& map, int parts)
      : model_(m), map_(map), first_part_(parts > 1 ? map.equations : 0, NONE), late_(subscript(parts)) {}

  // Before a stretch: who is the first to join each of its equations.
  void begin(std::size_t part, std::size_t first, std::size_t last) {
    for (std::size_t e = first; e < last; ++e) {
      if (!solver::is_own(model_, e)) continue;
      for (int i = 0; i < element_freedoms(model_.elements[e]); ++i) {
        const std::int32_t row = map_.equation[element_freedom(model_.elements[e], i)];
        if (row != PRESCRIBED && first_part_[row] < stretch_) first_part_[row] = stretch_ + static_cast<int>(part);
      }
    }
  }

  // Whether the part may add to what stands for the equation, or for two of them, at once.
  bool is_own(std::size_t part, std::int32_t row) const {
    return first_part_.empty() || first_part_[row] == stretch_ + static_cast<int>(part);
  }
  void add(std::size_t part, bool own, double& sum, double term) {
    if (own) {
      sum += term;
    } else {
      late_[part].push_back({&sum, term});
    }
  }

  void end() {
    for (std::vector<late_term>& part : late_) {
      for (const late_term& late : part) *late.sum += late.term;
      part.clear();
    }
    stretch_ += count_of(late_);
  }

 private:
  struct late_term {
    double* sum;
    double term;
  };
  static constexpr std::int32_t NONE = -1;
  const model& model_;
  const scatter_map& map_;
  numbered<std::int32_t> first_part_;  // by equation; below stretch_: of a stretch before
  std::int32_t stretch_ = 0;
  std::vector<std::vector<late_term>> late_;
};

// K += the element's lower triangle, at the mapped positions; over its equations where it is tied.
void add_in_place(const scatter_map& map, const element& elem, std::size_t e, const element_matrix& stiffness,
                  std::size_t part, shared_sums& sums, symmetric_matrix& K) {
  const int freedoms = element_freedoms(elem);
  if (const tied_element* const tied = tied_part(map, e); tied != nullptr) {
    return add_tied(*tied, freedoms, stiffness, K);
  }
  std::array<bool, 24> own{};
  for (int i = 0; i < freedoms; ++i) {
    const std::int32_t row = map.equation[element_freedom(elem, i)];
    own[subscript(i)] = row != PRESCRIBED && sums.is_own(part, row);
  }
  numbered<double>& value = K.value;
  const std::int32_t* position = map.position.data() + map.start[e];
  for (int j = 1; j <= freedoms; ++j) {
    const bool own_column = own[subscript(j - 1)];
    for (int i = j; i <= freedoms; ++i, ++position) {
      if (*position == PRESCRIBED) continue;
      sums.add(part, own_column || own[subscript(i - 1)], value[*position], stiffness(i, j));
    }
  }
}

void move_prescribed(const element& e, const load_case& loads, const scatter_map& map, const element_matrix& stiffness,
                     std::size_t part, shared_sums& sums, std::vector<double>& right) {
  for (int j = 0; j < element_freedoms(e); ++j) {
    const std::size_t column = element_freedom(e, j);
    if (!loads.prescribed[column] || loads.prescribed_value[column] == 0) continue;
    for (int i = 0; i < element_freedoms(e); ++i) {
      const std::int32_t row = map.equation[element_freedom(e, i)];
      if (row == PRESCRIBED) continue;
      sums.add(part, sums.is_own(part, row), right[subscript(row)],
               -(stiffness(i + 1, j + 1) * loads.prescribed_value[column]));
    }
  }
}

// work(part, e, sums) for every element of this process.
template <class WORK>
void add_elements(const model& m, library_model& library, const scatter_map& map, question what, const progress& report,
                  const WORK& work) {
  constexpr std::size_t STRETCH = 4096;
  const int threads = map.tied.empty() ? library.threads_for(what) : 1;
  const std::size_t count = m.elements.size(), stretch = threads == 1 ? count : STRETCH;
  shared_sums sums(m, map, threads);
  for (std::size_t first = 0; first < count; first += stretch) {
    const std::size_t last = std::min(first + stretch, count);
    if (threads > 1) {
      library_model::each_part(first, last, threads,
                               [&](std::size_t part, std::size_t from, std::size_t to) { sums.begin(part, from, to); });
    }
    library.divide(first, last, threads, [&](std::size_t part, std::size_t from, std::size_t to) {
      for (std::size_t e = from; e < to; ++e) {
        if (part == 0) report.at(e, count);
        if (is_own(m, e)) work(part, e, sums);
      }
    });
    sums.end();
  }
}

// sum += what all processes have found of their own elements.
template <class FIND>
void add_from_ranks(const FIND& find, std::vector<double>& sum) {
  if (rank_count() == 1) return find(sum);
  std::vector<double> own(sum.size(), 0.0);
  fail_together([&] { find(own); });
  sum_over_ranks(own);
  add_scaled(sum, 1, own);
}

bool finite(const element_matrix& stiffness, int freedoms) {
  double sum = 0;
  for (int j = 1; j <= freedoms; ++j) {
    for (int i = 1; i <= freedoms; ++i) sum += std::fabs(stiffness(i, j));
  }
  return std::isfinite(sum);
}

// Of the elements of this process.
void add_diagonals(const model& m, library_model& library, const scatter_map& map, std::vector<double>& diagonal) {
  element_matrix stiffness;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (!is_own(m, e)) continue;
    library.stiffness(e, stiffness);
    if (const tied_element* const tied = tied_part(map, e); tied != nullptr) {
      add_tied_diagonal(*tied, stiffness, diagonal);
      continue;
    }
    for (int i = 0; i < element_freedoms(m.elements[e]); ++i) {
      const std::int32_t row = map.equation[element_freedom(m.elements[e], i)];
      if (row != PRESCRIBED) diagonal[subscript(row)] += stiffness(i + 1, i + 1);
    }
  }
}

}  // namespace

element_vector gather(const element& e, const std::vector<double>& by_freedom) {
  element_vector result{};
  for (int i = 0; i < element_freedoms(e); ++i) result(i + 1) = by_freedom[element_freedom(e, i)];
  return result;
}

double assemble_stiffness(const model& m, library_model& library, const load_case& loads, const scatter_map& map,
                          symmetric_matrix& K, std::vector<double>& right, const progress& report, const step* state) {
  using clock = std::chrono::steady_clock;
  clock::duration in_calls{};  // of the first thread, which has as many elements as each other
  const auto add = [&](std::size_t part, std::size_t e, shared_sums& sums, std::vector<double>& moved) {
    element_matrix stiffness;
    const element& elem = m.elements[e];
    const clock::time_point start = clock::now();
    library.stiffness(e, stiffness);
    if (part == 0) in_calls += clock::now() - start;
    if (!finite(stiffness, element_freedoms(elem))) not_finite(m, elem, "the stiffness", state);
    add_in_place(map, elem, e, stiffness, part, sums, K);
    if (const tied_element* const tied = tied_part(map, e); tied != nullptr) {
      move_tied(*tied, element_freedoms(elem), stiffness, moved);
    } else {
      move_prescribed(elem, loads, map, stiffness, part, sums, moved);
    }
  };
  const auto add_all = [&](std::vector<double>& moved) {
    add_elements(m, library, map, question::STIFFNESS, report,
                 [&](std::size_t part, std::size_t e, shared_sums& sums) { add(part, e, sums, moved); });
  };
  add_from_ranks(add_all, right);
  return std::chrono::duration<double>(in_calls).count();
}

std::vector<double> first_order_diagonal(const model& m, library_model& library, const scatter_map& map) {
  if (!library.is_second_order()) return {};
  std::vector<double> sum(map.equations, 0.0);
  library.second_order(false);
  add_from_ranks([&](std::vector<double>& diagonal) { add_diagonals(m, library, map, diagonal); }, sum);
  library.second_order(true);
  return sum;
}

void assemble_matrix(const model& m, library_model& library, question what, const scatter_map& map,
                     const std::function<void(std::size_t element, element_matrix& matrix)>& ask, symmetric_matrix& A,
                     const step* state) {
  const progress report("masses or geometric stiffnesses");
  const auto add = [&](std::size_t part, std::size_t e, shared_sums& sums) {
    element_matrix matrix;
    const element& elem = m.elements[e];
    ask(e, matrix);
    if (!finite(matrix, element_freedoms(elem))) not_finite(m, elem, "the mass or the geometric stiffness", state);
    add_in_place(map, elem, e, matrix, part, sums, A);
  };
  fail_together([&] { add_elements(m, library, map, what, report, add); });
}

std::vector<double> assemble_loads(const model& m, const step& s, library_model& library, const load_case& loads) {
  const progress report("element loads");
  const auto ask = [&](std::size_t e, element_vector& forces) {
    forces = element_vector{};
    library.loads(e, loads.element[e], forces);
  };
  const auto add_all = [&](std::vector<double>& sum) {
    const auto add = [&](std::size_t e, const element_vector& forces) {
      report.at(e, m.elements.size());
      for (int i = 0; i < element_freedoms(m.elements[e]); ++i) {
        if (!std::isfinite(forces(i + 1))) not_finite(m, m.elements[e], "the load", &s);
        sum[element_freedom(m.elements[e], i)] += forces(i + 1);
      }
    };
    compute_and_take<element_vector>(m, library, library.threads_for(question::LOADS), ask, add);
  };
  std::vector<double> total = loads.nodal_load;
  add_from_ranks(add_all, total);
  return total;
}

std::vector<double> prescribed_forces(const model& m, library_model& library, const load_case& loads,
                                      const std::vector<double>& displacements) {
  const auto add = [&](std::vector<double>& forces) {
    element_matrix stiffness;
    for (std::size_t e = 0; e < m.elements.size(); ++e) {
      const element& elem = m.elements[e];
      if (!is_own(m, e) || !touches_prescribed(elem, loads)) continue;
      library.stiffness(e, stiffness);
      const element_vector u = gather(elem, displacements);
      for (int i = 0; i < element_freedoms(elem); ++i) {
        const std::size_t row = element_freedom(elem, i);
        if (!has_force(loads, row)) continue;
        for (int j = 1; j <= element_freedoms(elem); ++j) forces[row] += stiffness(i + 1, j) * u(j);
      }
    }
  };
  std::vector<double> all(displacements.size(), 0.0);
  add_from_ranks(add, all);
  return all;
}

}  // namespace solver
