// element_call.cpp: the part of FINITES that an engine needs, for one element.
#include "element_call.h"

#include <limits>

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/engines/plate_element_dispatch.h"

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

template <class RECORD>
void set_orthotropic(const RECORD& r, double twist, double shear) {
  PLATEELEM_RECORD& P = PLATEELEM;
  P.MAT_BEHAV = 1;
  P.E1 = static_cast<double>(r.E1);
  P.E2 = static_cast<double>(r.E2);
  P.NU1 = static_cast<double>(r.NU1);
  P.NU2 = static_cast<double>(r.NU2);
  P.G12 = static_cast<double>(r.G12);
  P.G13 = static_cast<double>(r.G13);
  P.G23 = static_cast<double>(r.G23);
  P.ALPHA1 = static_cast<double>(r.ALPHA1);
  P.ALPHA2 = static_cast<double>(r.ALPHA2);
  P.CLT_FACTOR_1 = twist;
  P.CLT_FACTOR_2 = shear;
}

int kind_of(const support::plate_description& d) {
  const int family = d.nodes.size() == 3 ? 10 : 20;
  return family + (d.formulation == 1 ? 0 : d.formulation == 2 ? 2 : 1);
}

std::vector<double> part(const support::guarded_buffer& buffer, int first, int count) {
  std::vector<double> out;
  for (int i = first; i < first + count; ++i) out.push_back(buffer(i));
  return out;
}

}  // namespace

element_call::element_call(const support::plate_description& d)
    : element(d),
      reference(d),
      kind(kind_of(d)),
      area(NOT_A_NUMBER),
      volume(NOT_A_NUMBER),
      weight(NOT_A_NUMBER),
      distance(NOT_A_NUMBER) {
  PLATEELEM_RECORD& P = PLATEELEM;
  P = PLATEELEM_RECORD{};
  P.ELEM_KIND = kind;
  P.THICKNESS = d.thickness;
  P.E1 = d.young;
  P.NU1 = d.poisson;
  P.ALPHA1 = d.expansion;
  P.CLT_FACTOR_1 = P.CLT_FACTOR_2 = 1.0;
  P.MOD_MEMBRANE = {{d.modifier_membrane, d.modifier_membrane, d.modifier_membrane}};
  P.MOD_BENDING = {{d.modifier_bending, d.modifier_bending, d.modifier_bending}};
  P.MOD_SHEAR = {{d.modifier_shear, d.modifier_shear}};
  P.ORTHO_ANGLE = static_cast<float>(d.ortho_angle);
  if (d.section_type == COMPOSITE_SECTION) {
    set_orthotropic(d.composite, static_cast<double>(d.composite.CLT_FACTOR_1),
                    static_cast<double>(d.composite.CLT_FACTOR_2));
  } else if (d.material.ortho == 1) {
    set_orthotropic(d.material, 1.0, 1.0);
  }
  LOADS(LOAD_MOD_AXIAL) = LOADS(LOAD_MOD_INPLANE) = d.modifier_membrane;
  LOADS(LOAD_MOD_BENDING) = d.modifier_bending;
  LOADS(LOAD_MOD_SHEAR) = d.modifier_shear;
}

void element_call::run(int op) {
  double xyz[12] = {};
  double* at = xyz;
  for (const support::point& node : element.nodes) {
    for (const double component : node) *at++ = component;
  }
  PLATE_ELEMENT_DISPATCH(PLATEELEM, 7, kind, op, xyz, LOADS, U.data(), F.data(), {}, geometric, U_TOTAL.data(),
                         matrix.data(), nodes.data(), points.data(), AXES, area, volume, weight, point_flag1,
                         point_flag2, distance, NO_PLATE_STATE, 6 * static_cast<int>(element.nodes.size()));
}

void element_call::set(int first, const support::point& v) {
  for (int i = 0; i < 3; ++i) LOADS(first + i) = v[static_cast<std::size_t>(i)];
}

std::vector<double> element_call::matrix_values() const { return part(matrix, 1, order() * order()); }
std::vector<double> element_call::force_values() const { return part(F, 1, order()); }
std::vector<double> element_call::node_record(int n) const { return part(nodes, 90 * (n - 1) + 1, 90); }
std::vector<double> element_call::point_record(int p) const { return part(points, 90 * (p - 1) + 1, 90); }

shell_reference::column element_call::displacements() const { return shell_reference::column_of(U).head(order()); }

std::vector<double> columns(const std::vector<double>& record, int first, int count) {
  const auto start = record.begin() + first - 1;
  return std::vector<double>(start, start + count);
}
