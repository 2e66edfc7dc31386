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
    for (int p = 0; p < count; ++p) strains[p] = section_strain_cases(matrices(p), membrane, plate);
  }

  // f += sum_p  B^T n w detj.
  void add_forces(const VECTOR<WIDTH> (&n)[POINTS_OF_PLATE], double* f) {
    if constexpr (THICK) {
      THICK_FORCES<N> forces;
      for (int p = 0; p < count_; ++p) forces.add(data_[p], n[p], points_[p].weight * points_[p].detj);
      if (forces.finite()) {
        forces.give_to(element_.EL, ELEMENT::MEMBRANE_DOF, ELEMENT::PLATE_DOF, f);
        return;
      }
      for (int p = 0; p < count_; ++p) add_forces_of(matrices(p), n[p], points_[p], f);
    } else {
      for (int p = 0; p < count_; ++p) add_forces_of(data_[p], n[p], points_[p], f);
    }
  }

 private:
  using MATRICES = MATRICES_OF<ELEMENT>;

  // The strain matrices of a point; those of a thin plate are kept.
  decltype(auto) matrices(int p) {
    if constexpr (THICK) {
      MATRICES B;
      element_.matrices(points_[p], B);
      return B;
    } else {
      element_.matrices(points_[p], data_[p]);
      return static_cast<const MATRICES&>(data_[p]);
    }
  }

  static void add_forces_of(const MATRICES& B, const VECTOR<WIDTH>& n, const SURFACE_POINT& s, double* f) {
    const double c = s.weight * s.detj;
    ::add_forces(B.m, part_of<3>(n, 0), c, ELEMENT::MEMBRANE_DOF, f);
    ::add_forces(B.p, part_of<WIDTH - 3>(n, 3), c, ELEMENT::PLATE_DOF, f);
  }

  // False where a strain is infinite or NaN.
  bool set_strains_of_fields(const THICK_FIELDS<N>& displacements) {
    LANES sum{};
    for (int p = 0; p < count_; ++p) {
      LANES e[8];
      data_[p] = thick_point(element_, points_[p]);
      displacements.set_strains(data_[p], e);
      for (const LANES strain : e) sum = sum + not_finite(strain);
      strains[p] = SECTION_STRAINS<WIDTH>(e);
    }
    return sum[0] + sum[1] == 0.0;
  }

  const ELEMENT& element_;
  int count_;
  SURFACE_POINT points_[POINTS_OF_PLATE];
  std::conditional_t<THICK, THICK_POINT<N>, MATRICES> data_[POINTS_OF_PLATE];
};

#endif
