// integration.cpp: integration rules of the solid elements.
//
//     kind                 points   rule
//     BRICK_8, BRICK_20    8        product Gauss, +-1/sqrt 3, weight 1
//     BRICK_27             27       product Gauss, 0 and +-sqrt(3/5), weights (5/9, 8/9) cubed, except the fifth point
//     WEDGE_6              6        mid-sides of the triangle, 1/6, times +-1/sqrt 3
//     WEDGE_15, WEDGE_18   8        four-point triangle rule of degree three (weights -9/32, 25/96) times +-1/sqrt 3
//     TETRA_4              1        centroid, weight 1
//     TETRA_10             4        (5 - sqrt 5)/20 and (5 + 3 sqrt 5)/20, weight 1/24
//
// Most numbers are single-precision values, widened to double. Their digits and their deviations from the textbook
// (Zienkiewicz, 1977) are part of the results (docs/decisions.md).
#include "solids/integration.h"

#include <initializer_list>

#include "solids/linear_shapes.h"

namespace {

constexpr double GAUSS_3 = 0.7745966911315918;
constexpr double THIRD = 0.3333333432674408;

constexpr double TETRA_A = 0.13819660246372223, TETRA_B = 0.5854102373123169;
constexpr double TETRA_WEIGHT = 0.0416666679084301;
constexpr double CENTROID_WEIGHT = -0.28125, CORNER_WEIGHT = 0.2604166567325592;

// Weights of the 27 points by the number of their coordinates that are zero: (5/9)^3, (5/9)^2 (8/9), (5/9)(8/9)^2,
// (8/9)^3. The fifth point, (0, 0, -sqrt(3/5)), has the weight 1 in place of 0.43896: the weights add up to 8.561.
constexpr double WEIGHT_27[4] = {0.17146778858901823, 0.2743484507045309, 0.438957503466613, 0.7023319772895636};
constexpr int ODD_POINT = 5;

void set_point(SOLID_STATIONS& XI3, VECTOR<SOLID_ROOM>& W, int at, double xi, double eta, double zeta, double w) {
  XI3(1, at) = xi;
  XI3(2, at) = eta;
  XI3(3, at) = zeta;
  W(at) = w;
}

template <int COUNT>
void set_points(SOLID_STATIONS& XI3, VECTOR<SOLID_ROOM>& W, const NATURAL (&point)[COUNT], double w) {
  for (int p = 0; p < COUNT; ++p) set_point(XI3, W, p + 1, point[p].xi, point[p].eta, point[p].zeta, w);
}

void brick_20_rule(SOLID_STATIONS& XI3, VECTOR<SOLID_ROOM>& W) {
  int at = 0;
  for (const double zeta : {-GAUSS, GAUSS}) {
    for (const double eta : {-GAUSS, GAUSS}) {
      for (const double xi : {-GAUSS, GAUSS}) set_point(XI3, W, ++at, xi, eta, zeta, 1.0);
    }
  }
}

void brick_27_rule(SOLID_STATIONS& XI3, VECTOR<SOLID_ROOM>& W) {
  constexpr double station[3] = {-GAUSS_3, 0.0, GAUSS_3};
  int at = 0;
  for (int k = 0; k < 3; ++k) {
    for (int j = 0; j < 3; ++j) {
      for (int i = 0; i < 3; ++i) {
        const int zeros = (i == 1 ? 1 : 0) + (j == 1 ? 1 : 0) + (k == 1 ? 1 : 0);
        ++at;
        set_point(XI3, W, at, station[i], station[j], station[k], at == ODD_POINT ? 1.0 : WEIGHT_27[zeros]);
      }
    }
  }
}

// The coordinate through the element is xi here; it is zeta in the linear wedge and in the shape functions of both:
// part of the results (docs/decisions.md).
void quadratic_wedge_rule(SOLID_STATIONS& XI3, VECTOR<SOLID_ROOM>& W) {
  int at = 0;
  for (const double through : {-GAUSS, GAUSS}) {
    set_point(XI3, W, ++at, through, THIRD, THIRD, CENTROID_WEIGHT);
    set_point(XI3, W, ++at, through, 0.2, 0.2, CORNER_WEIGHT);
    set_point(XI3, W, ++at, through, 0.6, 0.2, CORNER_WEIGHT);
    set_point(XI3, W, ++at, through, 0.2, 0.6, CORNER_WEIGHT);
  }
}

void tetra_10_rule(SOLID_STATIONS& XI3, VECTOR<SOLID_ROOM>& W) {
  set_point(XI3, W, 1, TETRA_A, TETRA_A, TETRA_A, TETRA_WEIGHT);
  set_point(XI3, W, 2, TETRA_A, TETRA_A, TETRA_B, TETRA_WEIGHT);
  set_point(XI3, W, 3, TETRA_A, TETRA_B, TETRA_A, TETRA_WEIGHT);
  set_point(XI3, W, 4, TETRA_B, TETRA_A, TETRA_A, TETRA_WEIGHT);
}

}  // namespace

void SOLID_GAUSS_COUNT(std::int32_t KIND, std::int32_t RULE, std::int32_t& NP) {
  switch (KIND) {
    case TETRA_4: NP = 1; break;
    case TETRA_10: NP = 4; break;
    case WEDGE_6: NP = 6; break;
    case BRICK_8:
    case WEDGE_15:
    case WEDGE_18: NP = 8; break;
    case BRICK_20: NP = RULE == 1 ? 27 : 8; break;
    case BRICK_27: NP = 27; break;
    default: break;
  }
}

// The point of a linear tetrahedron has weight 1, not 1/6: an integral comes out six times too large, and the caller
// divides.
void SOLID_GAUSS_RULE(std::int32_t KIND, std::int32_t RULE, std::int32_t /*NP*/, SOLID_STATIONS& XI3,
                      VECTOR<SOLID_ROOM>& W) {
  switch (KIND) {
    case BRICK_8: set_points(XI3, W, BRICK_8_POINTS, 1.0); break;
    case WEDGE_6: set_points(XI3, W, WEDGE_6_POINTS, WEDGE_WEIGHT); break;
    case TETRA_4: set_points(XI3, W, TETRA_4_POINTS, 1.0); break;
    case TETRA_10: tetra_10_rule(XI3, W); break;
    case WEDGE_18:
    case WEDGE_15: quadratic_wedge_rule(XI3, W); break;
    case BRICK_20:
      if (RULE == 1) {
        brick_27_rule(XI3, W);
      } else {
        brick_20_rule(XI3, W);
      }
      break;
    case BRICK_27: brick_27_rule(XI3, W); break;
    default: break;
  }
}
