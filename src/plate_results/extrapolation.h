// extrapolation.h: results at the nodes from those at the four integration points.
//
//     v(node n) = sum_p  shares(n, p) v(point p)
//
// Triangle: the plane that fits the four points best (least squares) has the shares 1/4 of the centroid, 23/12 of the
// point next to the node, -7/12 of the other two. Quadrilateral: the bilinear function through the 2 by 2 points has
// 1 + sqrt(3)/2 of the nearest point, -1/2 of the two beside it, 1 - sqrt(3)/2 of the opposite one.
#ifndef FINITES_EXTRAPOLATION_H
#define FINITES_EXTRAPOLATION_H

#include "finites/views.hpp"

constexpr int POINTS_OF_PLATE = 4;

// Row by node, column by point. The literals of the triangle have seven decimals, those of the quadrilateral are
// single-precision values: the rows do not add up to exactly 1. Both are part of the results (docs/decisions.md).
constexpr double TRI_OWN = 1.9166667, TRI_OTHER = -0.5833333;
constexpr double TRI_SHARES[3][POINTS_OF_PLATE] = {{0.25, TRI_OWN, TRI_OTHER, TRI_OTHER},
                                                   {0.25, TRI_OTHER, TRI_OWN, TRI_OTHER},
                                                   {0.25, TRI_OTHER, TRI_OTHER, TRI_OWN}};
constexpr double QUAD_OWN = 1.866025447845459, QUAD_BESIDE = -0.5, QUAD_ACROSS = 0.1339746117591858;
constexpr double QUAD_SHARES[4][POINTS_OF_PLATE] = {{QUAD_OWN, QUAD_BESIDE, QUAD_ACROSS, QUAD_BESIDE},
                                                    {QUAD_BESIDE, QUAD_OWN, QUAD_BESIDE, QUAD_ACROSS},
                                                    {QUAD_ACROSS, QUAD_BESIDE, QUAD_OWN, QUAD_BESIDE},
                                                    {QUAD_BESIDE, QUAD_ACROSS, QUAD_BESIDE, QUAD_OWN}};

template <int NODES>
inline void points_to_nodes(const double (&shares)[NODES][POINTS_OF_PLATE], const VECTOR<POINTS_OF_PLATE>& v,
                            VECTOR<NODES>& out) {
  for (int n = 1; n <= NODES; ++n) {
    out(n) = 0.0;
    for (int p = 1; p <= POINTS_OF_PLATE; ++p) out(n) += shares[n - 1][p - 1] * v(p);
  }
}

// One value at the points to the nodes.
inline void TRI_GP_TO_NODE(const VECTOR<4>& v, VECTOR<3>& out) { points_to_nodes(TRI_SHARES, v, out); }
inline void QUAD_GP_TO_NODE(const VECTOR<4>& v, VECTOR<4>& out) { points_to_nodes(QUAD_SHARES, v, out); }

// Every component of a vector at the points to the nodes.
template <int WIDTH, int NODES>
inline void extrapolate(const double (&shares)[NODES][POINTS_OF_PLATE],
                        const VECTOR<WIDTH> (&at_points)[POINTS_OF_PLATE], VECTOR<WIDTH> (&at_nodes)[NODES]) {
  for (int i = 1; i <= WIDTH; ++i) {
    const VECTOR<POINTS_OF_PLATE> v{{at_points[0](i), at_points[1](i), at_points[2](i), at_points[3](i)}};
    VECTOR<NODES> out;
    points_to_nodes(shares, v, out);
    for (int n = 0; n < NODES; ++n) at_nodes[n](i) = out(n + 1);
  }
}

template <int WIDTH>
inline void EXTRAP_TRI(const VECTOR<WIDTH> (&at_points)[POINTS_OF_PLATE], VECTOR<WIDTH> (&at_nodes)[3]) {
  extrapolate(TRI_SHARES, at_points, at_nodes);
}
template <int WIDTH>
inline void EXTRAP_QUAD(const VECTOR<WIDTH> (&at_points)[POINTS_OF_PLATE], VECTOR<WIDTH> (&at_nodes)[4]) {
  extrapolate(QUAD_SHARES, at_points, at_nodes);
}
// The routines of each width by their own names: strains and forces of thin (6) and thick (8) elements. The library
// calls the templates; these names, and TRI_GP_TO_NODE and QUAD_GP_TO_NODE, which take one component, have no caller in
// it. They stand for code that looks for them by name; tests call them.
inline constexpr auto EXTRAP_TRI_6 = &EXTRAP_TRI<6>;
inline constexpr auto EXTRAP_TRI_8 = &EXTRAP_TRI<8>;
inline constexpr auto EXTRAP_QUAD_6 = &EXTRAP_QUAD<6>;
inline constexpr auto EXTRAP_QUAD_8 = &EXTRAP_QUAD<8>;

#endif
