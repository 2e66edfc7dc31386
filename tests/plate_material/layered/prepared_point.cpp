// prepared_point.cpp: see the header.
#include "prepared_point.h"

#include <cmath>

using layered_reference::material;
using layered_reference::matrix3;
using layered_reference::point_answer;
using layered_reference::point_start;
using layered_reference::real;
using layered_reference::vector5;
using support::seeded_random;

prepared_point::prepared_point(const material& material_values, const matrix3& element_axes, int n, point_layout layout)
    : m(material_values), axes(element_axes), storage(n, layout) {
  SOLANAELEM = SOLANAELEM_RECORD{};
  SOLANAELEM.NPT_THICK = n;
  SOLANAELEM.PLATE_OF_ELEM = REFER_TO(plate_of_elem.data(), 2);
  SOLANAELEM.PLATE_STATE = REFER_TO(plates.data(), 2);
  storage.give_to(plates[PLATE - 1]);
  PLATEELEM = PLATEELEM_RECORD{};
  PLATEELEM.ELEM_INDEX = ELEMENT;
  PLATEELEM.MAT_BEHAV = 3;
  PLATEELEM.THICKNESS = 0.1;
  PLATEELEM.YIELD_STRESS = m.sy;
  PLATEELEM.E1 = m.E;
  PLATEELEM.NU1 = m.nu;
  PLATEELEM.TANGENT_MOD = m.Et;
  PLATEELEM.E2 = PLATEELEM.NU2 = PLATEELEM.G12 = PLATEELEM.G13 = PLATEELEM.G23 = NOT_A_NUMBER;
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) PLATEELEM.AXES(i, j) = static_cast<double>(axes(i - 1, j - 1));
  }
}

prepared_point::prepared_point(seeded_random& random, double hardening, int n, point_layout layout)
    : prepared_point(layered_reference::random_material(random, hardening), layered_reference::random_axes(random), n,
                     layout) {}

prepared_point::~prepared_point() { SOLANAELEM = SOLANAELEM_RECORD{}; }

void prepared_point::fill_random(seeded_random& random) { storage.fill_random(random, m.sy, m.sy / m.E, m.E); }

point_start prepared_point::start(int gp, int k) {
  const layered_values v = values_of(state(gp), k);
  return {layered_reference::vector6_of(field_of(v, "EP_START")), field_of(v, "EPBAR_START")[0]};
}

vector5 prepared_point::strain_at(seeded_random& random, int gp, int k, int theory, double level) {
  vector5 stress;
  for (int i = 0; i < 5; ++i) stress(i) = random.uniform(-1.0, 1.0) * m.sy;
  if (theory == layered_reference::THIN) stress.tail(2).setZero();
  const point_start from = start(gp, k);
  const real kappa = m.sy + m.hardening() * from.ebar;
  const real norm = stress.dot(layered_reference::metric(theory) * stress) * 1.5L;
  stress *= level * kappa / std::sqrt(norm);
  const vector5 strain = layered_reference::elastic(m, layered_reference::THICK).inverse() * stress +
                         layered_reference::to_local(from.ep, axes);
  return rounded(vector_of<5>(strain));
}

point_answer prepared_point::expected(int gp, int k, int theory, const vector5& strain) {
  return layered_reference::update(m, axes, theory, start(gp, k), strain);
}

void prepared_point::update(const vector5& strain, int gp, int k, int theory, int op) {
  PLATE_LAYERED_POINT(PLATEELEM, vector_of<3>(strain.head(3)), vector_of<2>(strain.tail(2)),
                      thickness_point(PLATE, gp, k), theory, op);
}
