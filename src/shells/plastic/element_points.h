// element_points.h: the surface points of a plastic plate: strains of all of them for two displacements, then the
// forces of all of them.
//
// A thick plate works with its fields (thick_fields.h), a thin one with the strain matrices of its points. Infinite and
// NaN values always go through the matrices, whose zeros carry them into all that they touch.
#ifndef FINITES_ELEMENT_POINTS_H
#define FINITES_ELEMENT_POINTS_H

#include <type_traits>

#include "common/finiteness.h"
#include "common/two_lanes.h"
#include "finites/views.hpp"
#include "shells/common/plate_matrices.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/surface_points.h"
#include "shells/plastic/strain_cases.h"
#include "shells/plastic/thick_fields.h"

// f += sum_p  B^T n w detj at the points 1 to count, by the strain matrices.
template <class ELEMENT>
void add_forces_of_matrices(const ELEMENT& element, const SURFACE_POINT* points, const VECTOR<ELEMENT::WIDTH>* n,
                            int count, double* f) {
  MATRICES_OF<ELEMENT> B;
  for (int p = 0; p < count; ++p) {
    element.matrices(points[p], B);
    const double c = points[p].weight * points[p].detj;
    add_forces(B.m, part_of<3>(n[p], 0), c, ELEMENT::MEMBRANE_DOF, f);
    add_forces(B.p, part_of<ELEMENT::WIDTH - 3>(n[p], 3), c, ELEMENT::PLATE_DOF, f);
  }
}

// of_call and total: displacements of membrane and plate.
template <class ELEMENT>
class ELEMENT_POINTS {
 public:
  static constexpr int WIDTH = ELEMENT::WIDTH, N = ELEMENT::NODES;
  static constexpr bool THICK = WIDTH == 8;

  SECTION_STRAINS<WIDTH> strains[POINTS_OF_PLATE];

  ELEMENT_POINTS(const ELEMENT& element, int count, const STRAIN_CASES<ELEMENT::MEMBRANE>& membrane,
                 const STRAIN_CASES<ELEMENT::PLATE>& plate)
      : element_(element), count_(count) {
    for (int p = 0; p < count; ++p) points_[p] = element.point(p + 1);
    if constexpr (THICK) {
      if (set_strains_of_fields(THICK_FIELDS<N>(element.EL, membrane, plate))) return;
    }
    MATRICES_OF<ELEMENT> B;
    for (int p = 0; p < count; ++p) {
      element.matrices(points_[p], B);
      strains[p] = section_strain_cases(B, membrane, plate);
    }
  }

  // f += sum_p  B^T n w detj.
  void add_forces(const VECTOR<WIDTH> (&n)[POINTS_OF_PLATE], double* f) const {
    if constexpr (THICK) {
      THICK_FORCES<N> forces;
      for (int p = 0; p < count_; ++p) forces.add(fields_[p], n[p], points_[p].weight * points_[p].detj);
      if (forces.finite()) {
        forces.give_to(element_.EL, ELEMENT::MEMBRANE_DOF, ELEMENT::PLATE_DOF, f);
        return;
      }
    }
    add_forces_of_matrices(element_, points_, n, count_, f);
  }

 private:
  // False where a strain is infinite or NaN.
  bool set_strains_of_fields(const THICK_FIELDS<N>& displacements) {
    LANES sum{};
    for (int p = 0; p < count_; ++p) {
      LANES e[8];
      fields_[p] = thick_point(element_, points_[p]);
      displacements.set_strains(fields_[p], e);
      for (const LANES strain : e) sum = sum + not_finite(strain);
      strains[p] = SECTION_STRAINS<WIDTH>(e);
    }
    return sum[0] + sum[1] == 0.0;
  }

  const ELEMENT& element_;
  int count_;
  SURFACE_POINT points_[POINTS_OF_PLATE];
  std::conditional_t<THICK, THICK_POINT<N>, char> fields_[POINTS_OF_PLATE];
};

#endif
