// records.h: the order of an element's result records: its nodes, then its integration points.
#ifndef FINITES_ELEMENT_RECORDS_H
#define FINITES_ELEMENT_RECORDS_H

#include "finites/fields.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_results/res_record.h"
#include "shells/common/slopes.h"
#include "shells/common/surface_points.h"

// A local coordinate at (xi, eta): sum_i N_i x_i with the linear functions of a triangle, the bilinear ones of a
// quadrilateral.
inline double position(const MATRIX<3, 3>& local, int component, double xi, double eta) {
  return (1.0 - xi - eta) * local(component, 1) + xi * local(component, 2) + eta * local(component, 3);
}

inline double position(const MATRIX<3, 4>& local, int component, double xi, double eta) {
  const VECTOR<4> N = bilinear(xi, eta);
  return N(1) * local(component, 1) + N(2) * local(component, 2) + N(3) * local(component, 3) +
         N(4) * local(component, 4);
}

// Calls write(x, y, station, block) for each node, then for each of `count` points.
//
//   node_at, point_at  in   functions that give the station of a node or a point, numbered from 1
//   nodes, points      out  360 reals each; a block without a node or point is left alone
template <int NODES, class NODE_AT, class POINT_AT, class WRITE>
void fill_records(const MATRIX<3, NODES>& local, int count, NODE_AT node_at, POINT_AT point_at, WRITE write,
                  double* nodes, double* points) {
  for (int n = 1; n <= NODES; ++n) write(local(1, n), local(2, n), node_at(n), nodes + (n - 1) * RES_LENGTH);
  for (int p = 1; p <= count; ++p) {
    const auto s = point_at(p);
    write(position(local, 1, s.xi, s.eta), position(local, 2, s.xi, s.eta), s, points + (p - 1) * RES_LENGTH);
  }
}

// The functions for fill_records: a station of a table, for the isotropic forms; a point of a rule with its Jacobian,
// for the general ones.
inline auto station_in(const SURFACE_STATION* table) {
  return [table](int number) { return table[number - 1]; };
}

inline auto tri_point_of(const PLATEELEM_RECORD& EL, std::int32_t rule) {
  return [&EL, rule](int number) { return surface_point(rule, number, 3, EL.LOCAL_XYZ.data()); };
}

inline auto quad_point_of(const PLATEELEM_RECORD& EL, std::int32_t rule) {
  return [&EL, rule](int number) { return surface_point(rule, number, 4, EL.LOCAL_XYZ_QUAD.data()); };
}

#endif
