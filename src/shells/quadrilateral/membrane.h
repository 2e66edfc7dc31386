// membrane.h: bilinear membrane and drilling term.
#ifndef FINITES_QUAD_MEMBRANE_H
#define FINITES_QUAD_MEMBRANE_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

// The in-plane shear is integrated separately, with one point at the centre.
constexpr int SPLIT_SHEAR = 1;

// B (3, 8): strains ex, ey, gxy per u, v of each node, at (xi, eta), with the inverse Jacobian of the caller.
void QUAD_B_MEMBRANE(double xi, double eta, double g11, double g12, double g21, double g22, MATRIX<3, 8>& B);

// The same with the Jacobian of the closed form.
void QUAD_B_MEMBRANE_STORED(const QUAD_POINT& J, double xi, double eta, MATRIX<3, 8>& B);

// Its rows.
STRAIN_ROWS<8> quad_membrane_rows(const QUAD_POINT& J, double xi, double eta);

// K(36) packed: _ISO from ISO, _GENERAL with D_MEMBRANE_NORMAL and D_MEMBRANE_SHEAR; the points are those of the form.
// With split the shear term of the points is left out (isotropic: DM33; general: already apart) and added from the
// centre.
void QUAD_KM_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, int split, const POINT_PAIRS& points,
                 double* K);
void QUAD_KM_GENERAL(const PLATEELEM_RECORD& EL, int split, const POINT_PAIRS& points, double* K);

// The drilling stiffness of the four rotations: written into K(300) and kept in Kd(10), both packed. The area is that
// of the local coordinates without its sign. The stiffness modifiers do not enter. The engines need the entries alone
// (quad_kdrill); tests call this one for their places.
void QUAD_KDRILL(const PLATEELEM_RECORD& EL, const MATRIX<3, 4>& local, double* K, double* Kd);

// Its ten entries only.
void quad_kdrill(const PLATEELEM_RECORD& EL, const MATRIX<3, 4>& local, double* Kd);

// The membrane part of the isotropic section terms: without shear when it is split.
template <class REAL>
inline SECTION_TERMS_OF<REAL> membrane_terms(const ISOTROPIC_SECTION_OF<REAL>& ISO, int split) {
  SECTION_TERMS_OF<REAL> D = membrane_terms(ISO);
  if (split == SPLIT_SHEAR) D.D33 = REAL{};
  return D;
}

#endif
