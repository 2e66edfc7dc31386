// element_call.h: an engine of any kind as a test calls it, with a guarded buffer in every place that it may write to.
#ifndef FINITES_TESTS_ELEMENT_CALL_H
#define FINITES_TESTS_ELEMENT_CALL_H

#include <vector>

#include "guarded_buffer.h"
#include "reference_element.h"
#include "shells/common/elem_loads.h"

// One element: the constructor puts its section into PLATEELEM, as FINITES does, and its modifiers into LOADS; run
// calls the engine of its kind.
struct element_call {
  explicit element_call(const support::plate_description& description);

  void run(int op);
  int order() const { return 6 * reference.n; }
  void set(int first, const support::point& v);  // LOADS(first) and the two that follow
  std::vector<double> matrix_values() const;     // order squared
  std::vector<double> force_values() const;
  std::vector<double> node_record(int n) const;   // 90
  std::vector<double> point_record(int p) const;  // 90
  shell_reference::column displacements() const;  // U, as many as the element has

  support::plate_description element;
  shell_reference::reference_element reference;
  int kind;

  ELEM_LOADS LOADS{};
  std::vector<double> U = std::vector<double>(24, 0.0);
  std::vector<double> U_TOTAL = std::vector<double>(24, 0.0);
  int geometric = 0;

  support::guarded_buffer F{24}, matrix{576}, nodes{360}, points{360};
  MATRIX<3, 3> AXES{};
  double area, volume, weight, distance;
  int point_flag1 = -7, point_flag2 = -7;
};

std::vector<double> columns(const std::vector<double>& record, int first, int count);

#endif
