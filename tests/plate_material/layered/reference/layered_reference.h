// layered_reference.h: the rule through the thickness and the stress update at a thickness point once more, in full
// matrices and extended precision.
//
// Local vectors: xx, yy, xy, xz, yz, engineering shears; global ones: xx, yy, zz, xy, xz, yz. theory: 1 thin, 2 thick.
#ifndef FINITES_TESTS_LAYERED_REFERENCE_H
#define FINITES_TESTS_LAYERED_REFERENCE_H

#include <vector>

#include "dense.h"
#include "random_shapes.h"

namespace layered_reference {

using dense::matrix;
using dense::matrix3;
using dense::real;
using matrix5 = dense::fixed<5, 5>;
using dense::vector2;
using dense::vector3;
using vector5 = dense::fixed<5, 1>;
using vector6 = dense::fixed<6, 1>;

inline constexpr int THIN = 1, THICK = 2;

// ---- the rule

// Gauss-Lobatto on (-1, 1): the faces and the roots of the derivative of the Legendre polynomial of degree n - 1, by
// Newton's method.
struct rule {
  std::vector<real> xi, w;
};
rule lobatto(int n);
// The same of Gauss-Legendre.
rule legendre(int n);

// ---- the material

struct material {
  double E, nu, sy, Et;

  real hardening() const { return real(Et) / (1 - real(Et) / E); }
  real shear() const { return real(E) / (2 * (1 + real(nu))); }
};

// hardening: 0, or the largest tangent modulus over E.
material random_material(support::seeded_random& random, double hardening);

matrix5 metric(int theory);
matrix5 elastic(const material& m, int theory);         // of predictor (thick) and corrector
matrix5 stored_elastic(const material& m, int theory);  // what an elastic point keeps

// The consistency function of the multiplier and its derivative.
real phi(const material& m, const vector5& trial, real ebar, int theory, real x);
real dphi(const material& m, const vector5& trial, real ebar, int theory, real x);

// Newton's method from 0 with its loose stop.
struct newton {
  int passes;
  bool ok;
  real multiplier;
};
newton multiplier(const material& m, const vector5& trial, real ebar, int theory);
// The root itself, by bisection.
real root(const material& m, const vector5& trial, real ebar, int theory);

// ---- rotations; rows of axes are the local axes

vector5 to_local(const vector6& v, const matrix3& axes);
vector6 to_global(const vector5& v, const matrix3& axes, real zz = 0);
matrix3 random_axes(support::seeded_random& random);

// ---- the update

struct point_start {
  vector6 ep;  // global
  real ebar;
};

struct point_answer {
  bool plastic;
  real f, multiplier;
  vector5 trial, stress;
  vector6 sig, ep;  // global
  real ebar;
  matrix5 tangent;      // what is stored
  matrix5 algorithmic;  // of a plastic point
};

vector5 trial_stress(const material& m, const matrix3& axes, const point_start& start, const vector5& strain);
real yield_function(const material& m, int theory, const vector5& stress, real ebar);
point_answer update(const material& m, const matrix3& axes, int theory, const point_start& start,
                    const vector5& strain);

// ---- lists

using dense::listed;
vector6 vector6_of(const std::vector<double>& values);

}  // namespace layered_reference

#endif
