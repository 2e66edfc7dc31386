// catenary_parameter.h: the one unknown of the elastic catenary.
#ifndef MORVENIK_CATENARY_PARAMETER_H
#define MORVENIK_CATENARY_PARAMETER_H

namespace morvenik {

// In units of the cable's length and weight, with kappa = weight / (2 stiffness):
//
//   h, v     chord across and along the load
//   H, V     tension at the middle, across and along; at the ends V0 = V + 1/2, V1 = V - 1/2
//   T0, T1   tensions at the ends
//
// Let tanh(lambda) = 1/(T0 + T1). The mean of 1/T is 2 lambda, the mean of t/T along the load 2 V tanh(lambda), hence
//
//   h = 2 H (lambda + kappa),      v = 2 V (tanh(lambda) + kappa)
//
// and (H, V) lies on the ellipse T0 + T1 = coth(lambda), whose foci are the load's two ends:
//
//   (2 V tanh(lambda))^2 + (2 H sinh(lambda))^2 = 1
//
// This is one equation for lambda in place of two for H and V. Its left side grows with lambda from 0 without bound, so
// that there is one root. kappa = 0 is the inextensible cable, sinh(lambda)/lambda = sqrt(1 - v^2)/h; a small lambda is
// a taut one, kappa/lambda its strain. (Statics of the elastic catenary: Irvine, 1981.)
struct catenary_parameter {
  double lambda;
  double tanh_lambda;
  bool found;
};

// h in 1e-30 to 1e30, |v| to 1e30, kappa in 1e-280 to 1e30; excess = sqrt(h^2 + v^2) - 1, as exact as the caller has
// it.
catenary_parameter solve_catenary(double h, double v, double excess, double kappa);

}  // namespace morvenik

#endif
