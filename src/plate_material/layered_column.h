// layered_column.h: the thickness points of one surface point of a layered plate.
#ifndef FINITES_LAYERED_COLUMN_H
#define FINITES_LAYERED_COLUMN_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/layered_law.h"
#include "plate_material/layered_store.h"
#include "plate_material/through_thickness.h"

struct LAYERED_COLUMN {
  const LAYERED_LAW& law;
  const POINT_STATE_RECORD& s;
  PACKED_FIELDS packed;
  const PACKED_FIELDS* next = nullptr;  // of the surface point that comes next
  std::int32_t gp;

  LAYERED_COLUMN(const LAYERED_LAW& law_of_call, const POINT_STATE_RECORD& surface_point, std::int32_t number)
      : LAYERED_COLUMN(law_of_call, surface_point, PACKED_FIELDS(surface_point), number) {}

  LAYERED_COLUMN(const LAYERED_LAW& law_of_call, const POINT_STATE_RECORD& surface_point, const PACKED_FIELDS& fields,
                 std::int32_t number)
      : law(law_of_call), s(surface_point), packed(fields), gp(number) {}
};

// Strains of a surface point: membrane, curvature, transverse shear, which is zero in a thin element.
struct LAYERED_STRAINS {
  VECTOR<3> m, b;
  VECTOR<2> s;
};

// PLATE_LAYERED_POINT for point k; whether it is elastic.
bool update_layered_point(const LAYERED_COLUMN& column, const VECTOR<5>& strain, std::int32_t k);

// The same for points 1 to n, at the heights z of the rule. Whether all are elastic: their tangents are law.tangent
// then. Meanwhile the memory of the next surface point is fetched, a pair of points at a time: a processor drops
// requests that come in a great number at once.
bool update_layered_points(const LAYERED_COLUMN& column, const LAYERED_STRAINS& total, const THICKNESS_SECTION& rule,
                           std::int32_t n);

#endif
