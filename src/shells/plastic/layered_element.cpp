// layered_element.cpp: what the layered elements of all shapes share.
//
//     strain at height z   (ex, ey, gxy) = e.m + z e.b,      gxz, gyz = e.s, constant through the thickness
//
//     N = Dm e.m + Dc e.b + Dms e.s        Dm, Dc, Db   membrane, coupling, bending
//     M = Dc e.m + Db e.b + Dbs e.s        Ds           shear
//     Q = Dms^T e.m + Dbs^T e.b + Ds e.s   Dms, Dbs     membrane-shear, bending-shear
//
// with the section matrices that the tangents integrate to (through_thickness.cpp). A thin element has the terms of e.m
// and e.b alone.
#include "shells/plastic/layered_element.h"
#include "finites/records.h"
#include "plate_material/layered_axes.h"
#include "plate_material/layered_column.h"
#include "plate_material/layered_store.h"

LAYERED_FORCES layered_section_forces(const SECTION_INTEGRALS& D, const LAYERED_STRAINS& e, int theory) {
  LAYERED_FORCES f{};
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) {
      f.N(i) += D.membrane(i, j) * e.m(j) + D.coupling(i, j) * e.b(j);
      f.M(i) += D.coupling(i, j) * e.m(j) + D.bending(i, j) * e.b(j);
    }
  }
  if (theory == THIN_THEORY) return f;
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 2; ++j) {
      f.N(i) += D.memshear(i, j) * e.s(j);
      f.M(i) += D.bendshear(i, j) * e.s(j);
      f.Q(j) += D.memshear(i, j) * e.m(i) + D.bendshear(i, j) * e.b(i);
    }
  }
  for (int i = 1; i <= 2; ++i) {
    for (int j = 1; j <= 2; ++j) f.Q(i) += D.shear(i, j) * e.s(j);
  }
  return f;
}

namespace {

// C = [Dm Dc; Dc^T Db] in rows and columns 1 to 6.
template <int WIDTH>
void set_thin_block(const SECTION_INTEGRALS& D, MATRIX<WIDTH, WIDTH>& C) {
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) {
      C(i, j) = D.membrane(i, j);
      C(i, 3 + j) = D.coupling(i, j);
      C(3 + j, i) = D.coupling(i, j);
      C(3 + i, 3 + j) = D.bending(i, j);
    }
  }
}

}  // namespace

void set_section_block(const SECTION_INTEGRALS& D, MATRIX<6, 6>& C) { set_thin_block(D, C); }

// Rows and columns 7, 8: C = [. . Dms; . . Dbs; Dms^T Dbs^T Ds].
void set_section_block(const SECTION_INTEGRALS& D, MATRIX<8, 8>& C) {
  set_thin_block(D, C);
  for (int j = 1; j <= 2; ++j) {
    for (int i = 1; i <= 3; ++i) {
      C(i, 6 + j) = C(6 + j, i) = D.memshear(i, j);
      C(3 + i, 6 + j) = C(6 + j, 3 + i) = D.bendshear(i, j);
    }
    for (int i = 1; i <= 2; ++i) C(6 + i, 6 + j) = D.shear(i, j);
  }
}

namespace {

// Stress of the record at thickness point k: its TANGENT times the strain of the displacements of the call. A thin
// element has no shear stress there.
VECTOR<COMPONENTS> tangent_times(const POINT_STATE_RECORD& state, std::int32_t k, const VECTOR<COMPONENTS>& e,
                                 int theory) {
  VECTOR<COMPONENTS> s{};
  const int shown = theory == THICK_THEORY ? COMPONENTS : 3;
  for (int r = 1; r <= shown; ++r) {
    for (int c = 1; c <= COMPONENTS; ++c) s(r) += state.TANGENT(r, c, k) * e(c);
  }
  return s;
}

}  // namespace

// Heights are the two faces and the mid surface: the first, the middle and the last thickness point.
LAYERED_POINT_RESULT layered_point_result(const PLATEELEM_RECORD& EL, const LAYERED_STRAINS& e,
                                          const POINT_STATE_RECORD& state, std::int32_t n, int theory) {
  const double t = EL.THICKNESS;
  const std::int32_t k[HEIGHTS] = {1, middle_point(n), n};
  const double z[HEIGHTS] = {-t / 2.0, 0.0, t / 2.0};
  LAYERED_POINT_RESULT result{};
  for (int at = 0; at < HEIGHTS; ++at) {
    const VECTOR<COMPONENTS> strain{
        {e.m(1) + z[at] * e.b(1), e.m(2) + z[at] * e.b(2), e.m(3) + z[at] * e.b(3), e.s(1), e.s(2)}};
    const VECTOR<COMPONENTS> stress = tangent_times(state, k[at], strain, theory);
    VECTOR<COMPONENTS> plastic;
    VEC6_TO_LOCAL5(EL, global_values(state.EP_INC, k[at]), plastic);
    for (int i = 1; i <= COMPONENTS; ++i) {
      result.stress(COMPONENTS * at + i) = stress(i);
      result.plastic(COMPONENTS * at + i) = plastic(i);  // as stored, the shears across a thin element too
    }
  }
  SECTION_INTEGRALS D;
  integrate_section(THICKNESS_SECTION(n, EL.THICKNESS), theory, state, D);
  const LAYERED_FORCES f = layered_section_forces(D, e, theory);
  result.forces = {{f.N(1), f.N(2), f.N(3), f.M(1), f.M(2), f.M(3), f.Q(1), f.Q(2)}};
  return result;
}

// Transverse shear stresses and plastic shears of the record are those of the middle point.
void fill_layered_result(const PLATEELEM_RECORD& EL, double x, double y, const LAYERED_STRAINS& e,
                         const LAYERED_POINT_RESULT& r, double* block) {
  LAYERED_RECORD record;
  record.e = e.m;
  record.k = e.b;
  record.g = e.s;
  for (int at = 0; at < HEIGHTS; ++at) {
    for (int i = 1; i <= 3; ++i) {
      record.stress[at](i) = r.stress(COMPONENTS * at + i);
      record.plastic[at](i) = r.plastic(COMPONENTS * at + i);
    }
  }
  const int middle = COMPONENTS * 1;
  record.shear_stress = {{r.stress(middle + 4), r.stress(middle + 5)}};
  record.plastic_shear = {{r.plastic(middle + 4), r.plastic(middle + 5)}};
  record.N = part_of<3>(r.forces, 0);
  record.M = part_of<3>(r.forces, 3);
  record.Q = part_of<2>(r.forces, 6);
  fill_layered_record(x, y, record, EL.THICKNESS, block);
}
