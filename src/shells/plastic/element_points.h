// element_points.h: the surface points of a plastic plate: strains of all of them for two displacements, then the
// forces of all of them.
//
// Both work with the fields of the plate (plate_fields.h). Infinite and NaN values go through the strain matrices of
// the points, whose zeros carry them into all that they touch.
#ifndef FINITES_ELEMENT_POINTS_H
#define FINITES_ELEMENT_POINTS_H

#include "common/finiteness.h"
#include "common/lanes.h"
#include "finites/views.hpp"
#include "plate_results/extrapolation.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/records.h"
#include "shells/common/strains.h"
#include "shells/common/surface_points.h"
#include "shells/plastic/plate_fields.h"
#include "shells/plastic/strain_cases.h"

template <class ELEMENT>
class ELEMENT_POINTS {
 public:
  static constexpr int WIDTH = ELEMENT::WIDTH, N = ELEMENT::NODES;

  SECTION_STRAINS<WIDTH> strains[POINTS_OF_PLATE];

  // Of points 1 to count, for the displacements of membrane and plate.
  ELEMENT_POINTS(const ELEMENT& element, int count, const STRAIN_CASES<ELEMENT::MEMBRANE>& membrane,
                 const STRAIN_CASES<ELEMENT::PLATE>& plate)
      : element_(element), count_(count) {
    for (int p = 0; p < count; ++p) points_[p] = element.point(p + 1);
    set_sides();
    if (set_strains_of_fields(PLATE_FIELDS<N>(sides(), membrane, plate))) return;
    MATRICES_OF<ELEMENT> B;
    for (int p = 0; p < count; ++p) {
      element.matrices(points_[p], B);
      strains[p] = section_strain_cases(B, membrane, plate);
    }
  }

  // f += sum_p  B^T n w detj.
  void add_forces(const VECTOR<WIDTH> (&n)[POINTS_OF_PLATE], double* f) const {
    FIELD_FORCES<N> forces;
    for (int p = 0; p < count_; ++p) forces.add(fields_[p], n[p], area(p));
    if (forces.finite()) {
      forces.give_to(sides(), ELEMENT::MEMBRANE_DOF, ELEMENT::PLATE_DOF, f);
      return;
    }
    MATRICES_OF<ELEMENT> B;
    for (int p = 0; p < count_; ++p) {
      element_.matrices(points_[p], B);
      ::add_forces(B.m, part_of<3>(n[p], 0), area(p), ELEMENT::MEMBRANE_DOF, f);
      ::add_forces(B.p, part_of<WIDTH - 3>(n[p], 3), area(p), ELEMENT::PLATE_DOF, f);
    }
  }

 private:
  static constexpr bool THICK = WIDTH == 8;

  double area(int p) const { return points_[p].weight * points_[p].detj; }

  void set_sides() {
    if constexpr (!THICK) {
      thin_ = thin_sides<N>(N == 4 ? element_.EL.LOCAL_XYZ_QUAD.data() : element_.EL.LOCAL_XYZ.data());
    }
  }

  // Those of a thick plate stand in the record.
  FIELD_SIDES<N> sides() const {
    const PLATEELEM_RECORD& EL = element_.EL;
    if constexpr (THICK) {
      return {EL.SIDE_C.data(), EL.SIDE_S.data(), EL.A_DELTA.data()};
    } else {
      return {thin_.C.data(), thin_.S.data(), thin_.A_DELTA.data()};
    }
  }

  // False where a strain is infinite or NaN, or their sum overflows.
  bool set_strains_of_fields(const PLATE_FIELDS<N>& displacements) {
    LANES sum{};
    for (int p = 0; p < count_; ++p) {
      LANES e[WIDTH];
      set_curvatures(points_[p], sides(), fields_[p]);
      if constexpr (THICK) set_shears(points_[p], element_.EL, fields_[p]);
      displacements.set_strains(fields_[p], e);
      for (const LANES strain : e) sum = sum + strain;
      strains[p] = SECTION_STRAINS<WIDTH>(e);
    }
    return std::isfinite(sum_of(sum));
  }

  const ELEMENT& element_;
  int count_;
  SURFACE_POINT points_[POINTS_OF_PLATE];
  FIELD_POINT<N> fields_[POINTS_OF_PLATE];
  PLATE_SIDES<N> thin_;
};

#endif
