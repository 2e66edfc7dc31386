// engine_call.h: SHELL_TRI_THIN as a test calls it, with a guarded buffer in every place that it may write to.
#ifndef FINITES_TESTS_ENGINE_CALL_H
#define FINITES_TESTS_ENGINE_CALL_H

#include <array>
#include <vector>

#include "guarded_buffer.h"
#include "plate_model.h"
#include "reference_triangle.h"
#include "shells/common/elem_loads.h"

// One element: the constructor puts its section into PLATEELEM, as FINITES does, and its modifiers into LOADS.
struct engine_call {
  explicit engine_call(const support::plate_description& description);

  void run(int op);
  std::vector<double> matrix_values() const;  // 324
  std::vector<double> force_values(int count = 18) const;
  std::vector<double> node_record(int n) const;   // 90
  std::vector<double> point_record(int p) const;  // 90

  support::plate_description element;
  reference::section section;
  reference::matrix3 axes;
  reference::flat_triangle X;
  int membrane_only;

  ELEM_LOADS LOADS{};
  std::vector<double> U = std::vector<double>(24, 0.0);
  std::vector<double> U_TOTAL = std::vector<double>(24, 0.0);
  int geometric = 0;

  support::guarded_buffer F{24}, matrix{324}, nodes{360}, points{360};
  MATRIX<3, 3> AXES;
  double area, volume, weight, distance;
  int point_flag1, point_flag2;
};

#endif
