// operations.cpp: stiffness, mass, loads, forces and results of a solid, integrated over its rule in element axes
// (Zienkiewicz, 1977). With the gradients g of the shape functions N and dV = w |det J| of a point
//
//     K  = sum_p  B^T D B dV              D: direct = c (1 - nu), cross = c nu, shear = c (1 - 2 nu) / 2,
//     M  = sum_p  rho N_i N_j dV                 c = STIFF_FACTOR E / ((1 + nu)(1 - 2 nu))
//     KG = sum_p  (g_i^T S g_j) dV        the same for u, v, w; S: the stress tensor, positive in tension
//     f  = sum_p  B^T (D B u) dV,         sum_p  N b dV for a load b per volume
//
// rho = unit weight / GRAVITY. The determinant counts without its sign.
#include "solids/operations.h"

#include <cmath>

#include "common/constants.h"
#include "finites/fields.h"
#include "finites/services.h"
#include "solids/results.h"

namespace {

// Calls visit(p, gradients, dV) at the points of the rule; stops where a Jacobian is singular.
template <class VISIT>
void for_points(const SOLID_CALL& S, std::int32_t& OK, VISIT visit) {
  SOLID_GRADIENTS g;
  for (int p = 1; p <= S.points; ++p) {
    double detj = 0.0;
    solid_gradients(S.KIND, S.station(1, p), S.station(2, p), S.station(3, p), S.NN, S.XYZ, g, detj, OK);
    if (OK != 1) return;
    visit(p, g, S.weight(p) * std::fabs(detj));
  }
}

// Calls visit(N, dV) at the points of the rule, for integrals without gradients.
template <class VISIT>
void for_functions(const SOLID_CALL& S, std::int32_t& OK, VISIT visit) {
  SOLID_FUNCTIONS N{};
  MATRIX<3, 3> J;
  for (int p = 1; p <= S.points; ++p) {
    double detj = 0.0;
    SOLID_JACOBIAN(S.station(1, p), S.station(2, p), S.station(3, p), S.KIND, S.NN, S.XYZ, J, detj, OK);
    if (OK != 1) return;
    SOLID_SHAPE(S.KIND, S.station(1, p), S.station(2, p), S.station(3, p), S.NN, N);
    visit(N, S.weight(p) * std::fabs(detj));
  }
}

// The three numbers of the elastic matrix.
struct ELASTIC_TERMS {
  double direct, cross, shear;
};

ELASTIC_TERMS elastic_terms(const SOLID_CALL& S) {
  const double f = static_cast<double>(S.record->STIFF_FACTOR);
  const double c = f * S.E / ((1.0 + S.nu) * (1.0 - 2.0 * S.nu));
  return {c * (1.0 - S.nu), c * S.nu, c * (1.0 - 2.0 * S.nu) * 0.5};
}

VECTOR<6> stress_of(const ELASTIC_TERMS& D, const VECTOR<6>& e) {
  return {{D.direct * e(1) + D.cross * e(2) + D.cross * e(3), D.cross * e(1) + D.direct * e(2) + D.cross * e(3),
           D.cross * e(1) + D.cross * e(2) + D.direct * e(3), D.shear * e(4), D.shear * e(5), D.shear * e(6)}};
}

void to_global(const MATRIX<3, 3>& AX, std::int32_t NN, SOLID_VECTORS& f) {
  for (std::int32_t k = 1; k <= NN; ++k) {
    const double x = f(1, k);
    const double y = f(2, k);
    const double z = f(3, k);
    for (int i = 1; i <= 3; ++i) f(i, k) = AX(1, i) * x + AX(2, i) * y + AX(3, i) * z;
  }
}

void mirror(std::int32_t NN, SOLID_MATRIX& K) {
  for (int j = 2; j <= 3 * NN; ++j) {
    for (int i = 1; i < j; ++i) K(j, i) = K(i, j);
  }
}

}  // namespace

void SOLID_D_MATRIX(const SOLID_CALL& S, MATRIX<6, 6>& D) {
  const ELASTIC_TERMS t = elastic_terms(S);
  D = MATRIX<6, 6>{};
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) D(i, j) = i == j ? t.direct : t.cross;
    D(3 + j, 3 + j) = t.shear;
  }
}

// B^T D B dV by blocks of two nodes, multiplied out: (a, b, c) are the gradients of node i, (x, y, z) those of node j.
void SOLID_K_LINEAR(const SOLID_CALL& S, SOLID_MATRIX& K, std::int32_t& OK) {
  const ELASTIC_TERMS D = elastic_terms(S);
  for_points(S, OK, [&](int /*p*/, const SOLID_GRADIENTS& g, double volume) {
    const double direct = D.direct * volume;
    const double cross = D.cross * volume;
    const double shear = D.shear * volume;
    for (int j = 1; j <= S.NN; ++j) {
      const double x = g(1, j);
      const double y = g(2, j);
      const double z = g(3, j);
      for (int i = 1; i <= j; ++i) {
        const double a = g(1, i);
        const double b = g(2, i);
        const double c = g(3, i);
        const int r = 3 * i - 2;
        const int s = 3 * j - 2;
        K(r, s) += direct * a * x + shear * (b * y + c * z);
        K(r + 1, s) += cross * b * x + shear * a * y;
        K(r + 2, s) += cross * c * x + shear * a * z;
        K(r, s + 1) += cross * a * y + shear * b * x;
        K(r + 1, s + 1) += direct * b * y + shear * (a * x + c * z);
        K(r + 2, s + 1) += cross * c * y + shear * b * z;
        K(r, s + 2) += cross * a * z + shear * c * x;
        K(r + 1, s + 2) += cross * b * z + shear * c * y;
        K(r + 2, s + 2) += direct * c * z + shear * (a * x + b * y);
      }
    }
  });
  mirror(S.NN, K);
}

void SOLID_MASS(const SOLID_CALL& S, SOLID_MATRIX& M, std::int32_t& OK) {
  const double density = S.unit_weight / GRAVITY;
  for_functions(S, OK, [&](const SOLID_FUNCTIONS& N, double volume) {
    for (int j = 1; j <= S.NN; ++j) {
      for (int i = 1; i <= S.NN; ++i) {
        const double m = density * N(i) * N(j) * volume;
        for (int t = 2; t >= 0; --t) M(3 * i - t, 3 * j - t) += m;
      }
    }
  });
}

void SOLID_STRESS_MATRIX(const SOLID_CALL& S, std::int32_t OP, int p, const SOLID_GRADIENTS& g, const SOLID_VECTORS& u,
                         VECTOR<6>& stress) {
  if (OP == OP_GEOMETRIC) {
    stress = stress_of(elastic_terms(S), solid_strain(g, S.NN, u));
    return;
  }
  for (int i = 1; i <= 6; ++i) stress(i) = S.nonlinear != nullptr ? S.nonlinear->GAUSS_STRESS(i, p) : 0.0;
}

// G^T T G dV couples only equal components: (x, y, z) is S g_j, and each pair of nodes has one number.
void SOLID_K_GEOM(const SOLID_CALL& S, std::int32_t OP, const SOLID_VECTORS& u, SOLID_MATRIX& KG, std::int32_t& OK) {
  for_points(S, OK, [&](int p, const SOLID_GRADIENTS& g, double volume) {
    VECTOR<6> s;
    SOLID_STRESS_MATRIX(S, OP, p, g, u, s);
    for (int j = 1; j <= S.NN; ++j) {
      const double x = s(1) * g(1, j) + s(4) * g(2, j) + s(5) * g(3, j);
      const double y = s(4) * g(1, j) + s(2) * g(2, j) + s(6) * g(3, j);
      const double z = s(5) * g(1, j) + s(6) * g(2, j) + s(3) * g(3, j);
      for (int i = 1; i <= S.NN; ++i) {
        const double k = (g(1, i) * x + g(2, i) * y + g(3, i) * z) * volume;
        for (int t = 2; t >= 0; --t) KG(3 * i - t, 3 * j - t) += k;
      }
    }
  });
}

void SOLID_BODY_LOAD(const SOLID_CALL& S, const double* G, SOLID_VECTORS& f, std::int32_t& OK) {
  double gl[3];
  TRANS_VEC_G2L1_DBL(&G[0], &G[1], &G[2], S.AX.data(), &gl[0], &gl[1], &gl[2]);
  f = SOLID_VECTORS{};
  for_functions(S, OK, [&](const SOLID_FUNCTIONS& N, double volume) {
    for (int k = 1; k <= S.NN; ++k) {
      for (int i = 1; i <= 3; ++i) f(i, k) += gl[i - 1] * N(k) * volume;
    }
  });
  if (OK == 1) to_global(S.AX, S.NN, f);
}

void SOLID_INTERNAL_FORCE(const SOLID_CALL& S, std::int32_t OP, SOLID_VECTORS& f, std::int32_t& OK) {
  SOLID_VECTORS u;
  SOLID_VEC_TO_LOCAL(S.AX, S.NN, S.record->U_ELEM, u);
  const ELASTIC_TERMS D = elastic_terms(S);
  f = SOLID_VECTORS{};
  for_points(S, OK, [&](int /*p*/, const SOLID_GRADIENTS& g, double volume) {
    const VECTOR<6> s = stress_of(D, solid_strain(g, S.NN, u));
    for (int k = 1; k <= S.NN; ++k) {
      f(1, k) += (g(1, k) * s(1) + g(2, k) * s(4) + g(3, k) * s(5)) * volume;
      f(2, k) += (g(2, k) * s(2) + g(1, k) * s(4) + g(3, k) * s(6)) * volume;
      f(3, k) += (g(3, k) * s(3) + g(1, k) * s(5) + g(2, k) * s(6)) * volume;
    }
  });
  if (OK == 1 && OP != OP_FORCES_COMMIT) to_global(S.AX, S.NN, f);
}

// Strains and stresses at nodes are computed there, not extrapolated.
void SOLID_RESULTS(const SOLID_CALL& S, std::int32_t& OK) {
  SOLID_VECTORS u;
  SOLID_VEC_TO_LOCAL(S.AX, S.NN, S.record->U_ELEM, u);
  const ELASTIC_TERMS D = elastic_terms(S);
  SOLID_STATIONS node;
  SOLID_NODE_COORDS(S.KIND, S.NN, node);
  SOLID_GRADIENTS g;
  double detj = 0.0;
  for (int k = 1; k <= S.NN; ++k) {
    solid_gradients(S.KIND, node(1, k), node(2, k), node(3, k), S.NN, S.XYZ, g, detj, OK);
    if (OK != 1) return;
    const VECTOR<6> e = solid_strain(g, S.NN, u);
    fill_solid_record(e, stress_of(D, e), &S.record->RES50_NODE(1, k));
  }
  for_points(S, OK, [&](int p, const SOLID_GRADIENTS& at_point, double /*volume*/) {
    const VECTOR<6> e = solid_strain(at_point, S.NN, u);
    fill_solid_record(e, stress_of(D, e), &S.record->RES50_GAUSS(1, p));
  });
}

// b(I, J) := AX^T b(I, J) AX.
void SOLID_K_TO_GLOBAL(const MATRIX<3, 3>& AX, std::int32_t NN, SOLID_MATRIX& K) {
  MATRIX<3, 3> b;
  MATRIX<3, 3> t;
  for (int J = 0; J < NN; ++J) {
    for (int I = 0; I < NN; ++I) {
      for (int j = 1; j <= 3; ++j) {
        for (int i = 1; i <= 3; ++i) b(i, j) = K(3 * I + i, 3 * J + j);
      }
      for (int j = 1; j <= 3; ++j) {
        for (int i = 1; i <= 3; ++i) t(i, j) = b(i, 1) * AX(1, j) + b(i, 2) * AX(2, j) + b(i, 3) * AX(3, j);
      }
      for (int j = 1; j <= 3; ++j) {
        for (int i = 1; i <= 3; ++i) {
          K(3 * I + i, 3 * J + j) = AX(1, i) * t(1, j) + AX(2, i) * t(2, j) + AX(3, i) * t(3, j);
        }
      }
    }
  }
}
