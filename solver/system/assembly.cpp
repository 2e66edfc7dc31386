// assembly.cpp: the loops over the elements.
#include "system/assembly.h"

#include <chrono>
#include <cmath>

#include "elements/tied_element.h"
#include "model/large_loads.h"
#include "model/model_error.h"

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

// K += the element's lower triangle, at the mapped positions; over its equations where it is tied.
void add_in_place(const scatter_map& map, std::size_t e, int freedoms, const element_matrix& stiffness,
                  symmetric_matrix& K) {
  if (const tied_element* const tied = tied_part(map, e); tied != nullptr) {
    return add_tied(*tied, freedoms, stiffness, K);
  }
  numbered<double>& value = K.value;
  const std::int32_t* position = map.position.data() + map.start[e];
  for (int j = 1; j <= freedoms; ++j) {
    for (int i = j; i <= freedoms; ++i, ++position) {
      if (*position != PRESCRIBED) value[*position] += stiffness(i, j);
    }
  }
}

void move_prescribed(const element& e, const load_case& loads, const scatter_map& map, const element_matrix& stiffness,
                     std::vector<double>& right) {
  for (int j = 0; j < element_freedoms(e); ++j) {
    const std::size_t column = element_freedom(e, j);
    if (!loads.prescribed[column] || loads.prescribed_value[column] == 0) continue;
    for (int i = 0; i < element_freedoms(e); ++i) {
      const std::int32_t row = map.equation[element_freedom(e, i)];
      if (row != PRESCRIBED) right[subscript(row)] -= stiffness(i + 1, j + 1) * loads.prescribed_value[column];
    }
  }
}

bool finite(const element_matrix& stiffness, int freedoms) {
  double sum = 0;
  for (int j = 1; j <= freedoms; ++j) {
    for (int i = 1; i <= freedoms; ++i) sum += std::fabs(stiffness(i, j));
  }
  return std::isfinite(sum);
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
  clock::duration in_calls{};
  element_matrix stiffness;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    report.at(e, m.elements.size());
    const clock::time_point start = clock::now();
    library.stiffness(e, stiffness);
    in_calls += clock::now() - start;
    if (!finite(stiffness, element_freedoms(m.elements[e]))) not_finite(m, m.elements[e], "the stiffness", state);
    add_in_place(map, e, element_freedoms(m.elements[e]), stiffness, K);
    if (const tied_element* const tied = tied_part(map, e); tied != nullptr) {
      move_tied(*tied, element_freedoms(m.elements[e]), stiffness, right);
    } else {
      move_prescribed(m.elements[e], loads, map, stiffness, right);
    }
  }
  return std::chrono::duration<double>(in_calls).count();
}

std::vector<double> first_order_diagonal(const model& m, library_model& library, const scatter_map& map) {
  if (!library.is_second_order()) return {};
  std::vector<double> diagonal(map.equations, 0.0);
  element_matrix stiffness;
  library.second_order(false);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
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
  library.second_order(true);
  return diagonal;
}

void assemble_matrix(const model& m, const scatter_map& map,
                     const std::function<void(std::size_t element, element_matrix& matrix)>& part, symmetric_matrix& A,
                     const step* state) {
  const progress report("masses or geometric stiffnesses");
  element_matrix matrix;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    report.at(e, m.elements.size());
    part(e, matrix);
    const int freedoms = element_freedoms(m.elements[e]);
    if (!finite(matrix, freedoms)) not_finite(m, m.elements[e], "the mass or the geometric stiffness", state);
    add_in_place(map, e, freedoms, matrix, A);
  }
}

std::vector<double> assemble_loads(const model& m, const step& s, library_model& library, const load_case& loads) {
  std::vector<double> total = loads.nodal_load;
  const progress report("element loads");
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    report.at(e, m.elements.size());
    element_vector forces{};
    library.loads(e, loads.element[e], forces);
    for (int i = 0; i < element_freedoms(m.elements[e]); ++i) {
      if (!std::isfinite(forces(i + 1))) not_finite(m, m.elements[e], "the load", &s);
      total[element_freedom(m.elements[e], i)] += forces(i + 1);
    }
  }
  return total;
}

std::vector<double> prescribed_forces(const model& m, library_model& library, const load_case& loads,
                                      const std::vector<double>& displacements) {
  std::vector<double> forces(displacements.size(), 0.0);
  element_matrix stiffness;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const element& elem = m.elements[e];
    if (!touches_prescribed(elem, loads)) continue;
    library.stiffness(e, stiffness);
    const element_vector u = gather(elem, displacements);
    for (int i = 0; i < element_freedoms(elem); ++i) {
      const std::size_t row = element_freedom(elem, i);
      if (!has_force(loads, row)) continue;
      for (int j = 1; j <= element_freedoms(elem); ++j) forces[row] += stiffness(i + 1, j) * u(j);
    }
  }
  return forces;
}

}  // namespace solver
