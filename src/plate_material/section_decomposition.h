// section_decomposition.h: spectral data and first state of the whole-section plasticity of plates.
//
// The yield function is a quadratic form of the section forces with the metric P. The return mapping needs the product
// D P of elastic section and metric in diagonal form, D P = Q LAM Q^-1; for an isotropic plate it is known in closed
// form. The order of forces is N1, N2, N12, M1, M2, M12, Q1, Q2. PLATEELEM holds the five matrices.
#ifndef FINITES_SECTION_DECOMPOSITION_H
#define FINITES_SECTION_DECOMPOSITION_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/state_in_use.h"

// D8 from the section matrices of PLATEELEM; P8, Q8, QINV8 and LAM8 for the positive branch of the mixed term. They are
// checked: "Décomposition spectrale, KOK_DS" is reported when they do not fit D8; they stay in use.
void SECTION_SPECTRAL(PLATEELEM_RECORD& EL, const FAILURES& to_caller);

// The sign of the mixed term: -1 where ref is negative, otherwise +1.
inline double section_branch(double ref) { return ref < 0.0 ? -1.0 : 1.0; }

// P8, Q8, QINV8 and LAM8 for the sign of ref: s = -1 where it is negative, otherwise +1. D8 stays unchanged.
//
//   h, sy  in  thickness, yield stress
void SECTION_SPECTRAL_SIGN(PLATEELEM_RECORD& EL, double ref, double h, double sy);

// ok := 1 when Q L QI equals D P within a tenth of each entry, otherwise 0. NaN passes the check.
void SPECTRAL_CHECK(const MATRIX<8, 8>& D, const MATRIX<8, 8>& P, const MATRIX<8, 8>& Q, const MATRIX<8, 8>& L,
                    const MATRIX<8, 8>& QI, std::int32_t& ok);

// out := A B C, and A B C D, square of order n, at most 8.
void MATMUL3(std::int32_t n, const double* A, const double* B, const double* C, double* out);
void MATMUL4(std::int32_t n, const double* A, const double* B, const double* C, const double* D, double* out);

#endif
