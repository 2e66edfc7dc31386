// layered_point.h: von Mises plasticity in plane stress at one thickness point of a layered plate.
//
// Elastic predictor, yield test, closed-form return with one unknown, the multiplier dlam (Simo and Taylor, 1986).
// Hardening is isotropic and linear. Each call starts from the state at the start of the step, with the total strain.
// Local vectors have the order xx, yy, xy, xz, yz, with engineering shears; global ones xx, yy, zz, xy, xz, yz.
// Material values and AXES come from PLATEELEM. theory is THIN_THEORY or THICK_THEORY.
#ifndef FINITES_LAYERED_POINT_H
#define FINITES_LAYERED_POINT_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/layered_axes.h"
#include "plate_material/layered_matrices.h"
#include "plate_material/layered_return.h"

// Updates POINT_STATE of the point for its total strain. An elastic point stores its state in every operation, a
// plastic one only in operation 33. A return that fails stores nothing and reports "Plasticite Plaque: pb avec
// algorithme de rabattement radial".
//
// The library works on all points of a surface point (layered_column.h), which has the same bits; tests call this one,
// and the two routines below, the first steps of the update.
void PLATE_LAYERED_POINT(const PLATEELEM_RECORD& EL, const VECTOR<3>& strain, const VECTOR<2>& shear,
                         const THICKNESS_POINT& at, int theory, int op);

// sigma := the elastic stress of the strain less ep.
void PLATE_TRIAL_STRESS(const PLATEELEM_RECORD& EL, VECTOR<5>& sigma, const VECTOR<5>& ep, const VECTOR<3>& strain,
                        const VECTOR<2>& shear);

// f := the yield function, positive outside the yield surface.
void PLATE_YIELD_TRIAL(const PLATEELEM_RECORD& EL, const VECTOR<5>& sigma, double& f, const THICKNESS_POINT& at,
                       int theory);

// The plastic corrector from the trial stress; ok is 1, or 0 when it fails.
void PLATE_RADIAL_RETURN(const PLATEELEM_RECORD& EL, const VECTOR<5>& sigma, const THICKNESS_POINT& at, int theory,
                         int op, std::int32_t& ok);

#endif
