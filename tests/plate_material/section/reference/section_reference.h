// section_reference.h: whole-section plasticity of a plate once more, in full matrices and extended precision.
//
// The closed spectral form is written from its irrational numbers, each rounded to single precision; the multiplier
// takes the same loosely stopped Newton steps, so that answers agree to rounding. Beside it stands the same return
// mapping without any spectral form: a linear solve and a bisection, for what holds to seven digits.
#ifndef FINITES_TESTS_SECTION_REFERENCE_H
#define FINITES_TESTS_SECTION_REFERENCE_H

#include <vector>

#include "dense.h"
#include "random_shapes.h"

namespace section_reference {

using dense::column;
using dense::matrix;
using dense::matrix3;
using dense::real;

struct plate {
  double h, sy, E, nu, Et;
  real hardening() const { return real(Et) / (1 - real(Et) / E); }
  real N0() const { return real(sy) * h; }
  real M0() const { return real(sy) * h * h / 4; }
};

plate random_plate(support::seeded_random& random, double hardening_share);

// 8 by 8: isotropic, with the shear factor of fifteen digits.
matrix isotropic_section(const plate& p);

struct spectral_data {
  matrix P, Q, QI, L;
};
// The branch of the mixed term: +1 or -1.
spectral_data spectral_data_of(const plate& p, int branch);
int branch_of(double ref);

// The yield function; resultants of six or eight.
real yield_function(const plate& p, const column& sig, real ebar, real a = 1);
real mixed_product(const column& sig);
// Strains of the upper face: 5 by 8 or 3 by 6.
matrix upper_face(const plate& p, int width);

// The twelve plastic strains in global axes and the vector in element axes.
column to_local(const column& ep, const matrix3& axes, int width);
column to_global(const column& local, const matrix3& axes);

// What stands at a surface point at the start of a step.
struct point_start {
  column ep0 = column::Zero(12);
  real ebar0 = 0;
  double ref = 1;
};

struct point_answer {
  column sig, ep;
  real ebar = 0;
  matrix C;
  int plastic = 0;
  real qtm = 0, dkap = 0;
  real x = 0;
  int passes = 0;
};

// The update for the strain eps, whose length is the width. D is 8 by 8; only its direct terms and the coupling of the
// first two components make the trial resultants.
point_answer update(const plate& p, const matrix& D, const matrix3& axes, const column& eps, const point_start& from);

// The parts of the multiplier, by the spectral data.
struct multiplier_problem {
  multiplier_problem(const plate& point, const spectral_data& data, const column& trial_resultants, real ebar_start);
  column resultants(real x) const;
  real f(real x, real a = 1) const;
  real df(real x) const;
  real equivalent(real x, const column& sig) const;

  plate p;
  matrix P, Q, QI, L, T;
  column trial;
  real ebar0;
};

// The tangent of the return mapping at the multiplier x.
matrix algorithmic_tangent(const multiplier_problem& m, const matrix& D, real x, const column& sig, real ebar);

// The same return without spectral form: resultants (I + 2 x D P)^-1 trial, x by bisection of the yield function.
struct exact_return {
  column sig;
  real x, ebar;
};
exact_return return_exactly(const plate& p, const matrix& D, int branch, const column& trial, real ebar0);

using dense::column_of;
using dense::largest;
using dense::listed;

}  // namespace section_reference

#endif
