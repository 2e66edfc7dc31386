// section_update.h: whole-section plasticity of plates: yield function, return mapping and tangent at a surface point.
//
// The model works on section forces, without sampling the thickness: a quadratic form of forces and moments with their
// mixed term in absolute value, after Ilyushin (1948), and a return mapping in closed form except for one scalar, the
// plastic multiplier x. There are two widths: WIDTH 8 with transverse shear for thick elements, 6 without it for thin
// ones.
//
// Forces and strains have the order N1, N2, N12, M1, M2, M12, Q1, Q2 of the element axes, with engineering shears.
// Plastic strains are kept as twelve values in global axes: two tensors xx, yy, zz, xy, xz, yz, first the membrane and
// transverse shear strains, then the curvatures. Engineering shears are rotated as they are, without being halved.
#ifndef FINITES_SECTION_UPDATE_H
#define FINITES_SECTION_UPDATE_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/section_axes.h"
#include "plate_material/state_in_use.h"

// The state of a point before its update.
struct SECTION_POINT {
  VECTOR<12> ep0;  // plastic strain at the start of the step, global axes
  double ebar0;    // equivalent plastic strain at the start of the step
  double ref;      // its sign chooses the branch of the mixed term
  double aux;      // not read
};

// The state of a point after its update.
template <int WIDTH>
struct SECTION_ANSWER {
  VECTOR<WIDTH> sig;       // section forces
  VECTOR<12> ep;           // plastic strain, global axes
  double ebar;             // equivalent plastic strain
  MATRIX<WIDTH, WIDTH> C;  // tangent
  std::int32_t plastic;    // 0 elastic, 1 plastic
  double qtm;              // mixed product of forces and moments
  double dkap;             // equivalent increment of the plastic curvature
};

// The general routines work with any matrices in PLATEELEM. PLATE_SECTION_UPDATE returns a point by the closed spectral
// form (section_return.h) where nothing is unusual, and by them everywhere else, with the same bits.

// The update of a point for the total strain eps, with D_MEMBRANE_NORMAL, D_BENDING, D_SHEAR, D8, AXES, E1 and
// TANGENT_MOD of PLATEELEM; P8, Q8, QINV8 and LAM8 are set for the sign of ref. The caller puts zeros into `to`.
//
// Failures are reported to `to_caller`: "Negative Plastic_Multip" leaves sig and ep zero, plastic 1 and the rest
// unchanged.
template <int WIDTH>
void PLATE_SECTION_UPDATE(PLATEELEM_RECORD& EL, double h, double sy, const VECTOR<WIDTH>& eps,
                          const SECTION_POINT& from, const FAILURES& to_caller, SECTION_ANSWER<WIDTH>& to);

// The same where P8, Q8, QINV8 and LAM8 have the sign of ref already.
template <int WIDTH>
void update_section_point(const PLATEELEM_RECORD& EL, double h, double sy, const VECTOR<WIDTH>& eps,
                          const SECTION_POINT& from, const FAILURES& to_caller, SECTION_ANSWER<WIDTH>& to);

// Elastic forces of eps - p0: only the diagonal terms and the coupling of the first two components of each block enter.
template <int WIDTH>
void SECTION_TRIAL(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& eps, const VECTOR<WIDTH>& p0, VECTOR<WIDTH>& sig);

// plastic := 1 when the yield function is positive or NaN. a scales the plastic moment.
template <int WIDTH>
void SECTION_YIELD(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<WIDTH>& sig, double ebar,
                   std::int32_t& plastic);

// The yield function of a plate of THICKNESS and YIELD_STRESS: 0 on the surface, -1 without forces and hardening.
template <int WIDTH>
double section_yield_value(const PLATEELEM_RECORD& EL, const VECTOR<WIDTH>& sig, double ebar);

// The multiplier by Newton's method from 0: at most 1000 passes, after which the last value is kept without a message.
// A derivative of zero ("Division by 0, DFONC_EVAL") leaves x unchanged.
template <int WIDTH>
void SECTION_MULT(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<WIDTH>& trial, double ebar0,
                  const FAILURES& to_caller, double& x);

// The function of the multiplier and its derivative; "Division by 0, F1" leaves f or df unchanged.
template <int WIDTH>
void SECTION_F1(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<WIDTH>& trial, double ebar0,
                double x, const FAILURES& to_caller, double& f);
template <int WIDTH>
void SECTION_DF1(const PLATEELEM_RECORD& EL, double h, double sy, const VECTOR<WIDTH>& trial, double ebar0, double x,
                 const FAILURES& to_caller, double& df);

// Forces at the multiplier; "Division by 0, vMAT_LAM_GAM" leaves them zero.
template <int WIDTH>
void SECTION_STRESS(const PLATEELEM_RECORD& EL, double x, const VECTOR<WIDTH>& trial, const FAILURES& to_caller,
                    VECTOR<WIDTH>& sig);

// Plastic strain and equivalent plastic strain at the multiplier.
template <int WIDTH>
void SECTION_EP(const PLATEELEM_RECORD& EL, double x, const VECTOR<WIDTH>& sig, const VECTOR<WIDTH>& p0,
                VECTOR<WIDTH>& p);
template <int WIDTH>
void SECTION_EPBAR(const PLATEELEM_RECORD& EL, double x, double h, const VECTOR<WIDTH>& sig, double ebar0,
                   double& ebar);

// The tangent of the return mapping; "Division by 0, COEFF" leaves C unchanged, "Division by 0, COEFF+xM" sets it to 0.
template <int WIDTH>
void SECTION_TANGENT(const PLATEELEM_RECORD& EL, double sy, double x, double h, double ebar, const VECTOR<WIDTH>& sig,
                     const FAILURES& to_caller, MATRIX<WIDTH, WIDTH>& C);

// The routines of each width by their own names. The library calls the templates; tests call these.
inline constexpr auto PLATE_SECTION_UPDATE8 = &PLATE_SECTION_UPDATE<8>;
inline constexpr auto PLATE_SECTION_UPDATE6 = &PLATE_SECTION_UPDATE<6>;
inline constexpr auto SECTION_TRIAL8 = &SECTION_TRIAL<8>;
inline constexpr auto SECTION_TRIAL6 = &SECTION_TRIAL<6>;
inline constexpr auto SECTION_YIELD8 = &SECTION_YIELD<8>;
inline constexpr auto SECTION_YIELD6 = &SECTION_YIELD<6>;
inline constexpr auto SECTION_MULT8 = &SECTION_MULT<8>;
inline constexpr auto SECTION_MULT6 = &SECTION_MULT<6>;
inline constexpr auto SECTION_F1_8 = &SECTION_F1<8>;
inline constexpr auto SECTION_F1_6 = &SECTION_F1<6>;
inline constexpr auto SECTION_DF1_8 = &SECTION_DF1<8>;
inline constexpr auto SECTION_DF1_6 = &SECTION_DF1<6>;
inline constexpr auto SECTION_STRESS8 = &SECTION_STRESS<8>;
inline constexpr auto SECTION_STRESS6 = &SECTION_STRESS<6>;
inline constexpr auto SECTION_EP8 = &SECTION_EP<8>;
inline constexpr auto SECTION_EP6 = &SECTION_EP<6>;
inline constexpr auto SECTION_EPBAR8 = &SECTION_EPBAR<8>;
inline constexpr auto SECTION_EPBAR6 = &SECTION_EPBAR<6>;
inline constexpr auto SECTION_TANGENT8 = &SECTION_TANGENT<8>;
inline constexpr auto SECTION_TANGENT6 = &SECTION_TANGENT<6>;

#endif
