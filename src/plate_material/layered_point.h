// layered_point.h: von Mises plasticity in plane stress at one thickness point of a layered plate.
//
// Elastic predictor, yield test, closed-form radial return with one unknown, the multiplier dlam (Simo and Taylor,
// 1986). Hardening is isotropic and linear. Each call starts from the state at the start of the step, with the total
// strain. Local vectors have the order xx, yy, xy, xz, yz, with engineering shears; global ones xx, yy, zz, xy, xz, yz.
// Material values and AXES come from PLATEELEM. plate, gp and k name the point; theory is THIN_THEORY or THICK_THEORY.
#ifndef FINITES_LAYERED_POINT_H
#define FINITES_LAYERED_POINT_H

#include <cstdint>

#include "array_reference.h"
#include "views.h"

using MATRIX5 = MATRIX<5, 5>;

// Updates POINT_STATE of the point for its total strain. An elastic point stores in every operation, a plastic one in
// operation 33 alone. A return that fails stores nothing: ASSERTF "Plasticite Plaque: pb avec algorithme de rabattement
// radial".
void PLATE_LAYERED_POINT(const VECTOR<3>& strain, const VECTOR<2>& shear, std::int32_t gp, std::int32_t k,
                         std::int32_t plate, int theory, int op);

// sigma := the elastic stress of the strain less ep.
void PLATE_TRIAL_STRESS(VECTOR<5>& sigma, const VECTOR<5>& ep, const VECTOR<3>& strain, const VECTOR<2>& shear);

// f := the yield function, above 0 beyond the surface.
void PLATE_YIELD_TRIAL(const VECTOR<5>& sigma, double& f, std::int32_t plate, std::int32_t gp, std::int32_t k,
                       int theory);

// The plastic corrector from the trial stress; ok is 1, or 0 when it fails.
void PLATE_RADIAL_RETURN(const VECTOR<5>& sigma, std::int32_t plate, std::int32_t gp, std::int32_t k, int theory,
                         int op, std::int32_t& ok);

// dlam by Newton's method from 0; at most 501 passes, the last of which fails. A failure leaves dlam untouched.
void PLATE_PLAST_MULT(double& dlam, const VECTOR<5>& sigma, std::int32_t& ok, std::int32_t plate, std::int32_t gp,
                      std::int32_t k, int theory);

// The consistency function of the multiplier and its derivative; a, b, c are the invariants of the trial stress. A
// divisor of zero: ok 0 and "Plaque plasticite-Division par zero".
void PLATE_PHI(double a, double b, double c, double dlam, double& f, std::int32_t plate, std::int32_t gp,
               std::int32_t k, int theory, std::int32_t& ok);
void PLATE_DPHI(double a, double b, double c, const VECTOR<5>& sigma, int theory, double dlam, std::int32_t plate,
                std::int32_t gp, std::int32_t k, double& df, std::int32_t& ok);

// The tangent of the return mapping. The library stores the continuum tangent; see TANGENT_CHOICE in the source.
void PLATE_TANGENT_ALGO(double dlam, const VECTOR<5>& sigma, const MATRIX5& P, const MATRIX5& Lp, const MATRIX5& Lc,
                        const MATRIX5& Q, MATRIX5& C);

// Rotations. The symmetric tensor takes the shears of the vector as they stand. VEC5 puts zero for the local zz, EP5
// the negative sum of xx and yy.
void VEC6_TO_LOCAL5(const VECTOR<6>& in, VECTOR<5>& out);
void VEC5_TO_GLOBAL6(const VECTOR<5>& in, VECTOR<6>& out);
void EP5_TO_GLOBAL6(const VECTOR<5>& in, VECTOR<6>& out);

// Column k of a field of six by n.
VECTOR<6> global_values(const ARRAY_REFERENCE<double, 2>& field, std::int32_t k);

#endif
