// short_cuts_test.cpp: the stiffness in element axes against the plain sum over the points, which multiplies with every
// zero of the strain matrices. The kernels leave zeros out where all is finite and take the plain sum elsewhere.
#include "broken_values.h"

#include "common/lanes.h"
#include "element_call.h"
#include "element_subject.h"
#include "finites/records.h"
#include "shells/common/general_products.h"
#include "shells/engines/plate_engine.h"
#include "shells/engines/quad_thick.h"
#include "shells/engines/quad_thin.h"
#include "shells/engines/tri_thick.h"
#include "shells/engines/tri_thin.h"
#include "shells/quadrilateral/thin/bending.h"
#include "shells/triangle/thin/bending.h"

using support::plate_description;
using support::seeded_random;

namespace {

using entries = std::vector<double>;

void add_plate(const QUAD_THIN& e, int p, double* K) {
  if (isotropic(e.EL)) {
    const SURFACE_STATION s = QUAD_RULE_FULL[p];
    const QUAD_POINT J = QUAD_JACOBIAN(e.QUAD, s.xi, s.eta);
    add_packed_product(dkq_rows(e.QUAD, J, s.xi, s.eta), bending_terms(e.ISO), s.weight * J.DET, K);
    return;
  }
  const SURFACE_POINT s = surface_point(RULE_FULL, p + 1, 4, e.EL.LOCAL_XYZ_QUAD.data());
  MATRIX<3, 12> B;
  DKQ_BMATRIX(e.QUAD, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  add_packed_btdb(B, e.EL.D_BENDING, s.weight * s.detj, K);
}

void add_plate(const QUAD_THICK& e, int p, double* K) {
  if (isotropic(e.EL)) {
    const SURFACE_STATION s = QUAD_RULE_FULL[p];
    const QUAD_POINT J = QUAD_JACOBIAN(e.QUAD, s.xi, s.eta);
    const QUADRILATERAL_SIDES sides = SIDE_CONST_QUAD_ISO(e.EL, e.QUAD, e.LOADS);
    const double c = s.weight * J.DET;
    add_packed_product(quad_curvature_rows(sides, J, s.xi, s.eta), bending_terms(e.ISO), c, K);
    add_packed_product(quad_shear_rows(sides, J, s.xi, s.eta), e.ISO.DS1, e.ISO.DS2, c, K);
    return;
  }
  const SURFACE_POINT s = surface_point(RULE_FULL, p + 1, 4, e.EL.LOCAL_XYZ_QUAD.data());
  MATRIX<3, 12> B;
  MATRIX<2, 12> G;
  B_BEND_QUAD(e.EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  B_SHEAR_QUAD(e.EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, G);
  add_packed_btdb(B, e.EL.D_BENDING, s.weight * s.detj, K);
  add_packed_btdb(G, e.EL.D_SHEAR, s.weight * s.detj, K);
}

void add_plate(const TRI_THIN& e, int p, double* K) {
  if (isotropic(e.EL)) {
    const SURFACE_STATION s = TRI_RULE_FOUR[p];
    const DKT_EDGES edges = DKT_EDGE_COEFFICIENTS(e.TRI);
    add_packed_product(dkt_rows(e.TRI, edges, s.xi, s.eta), bending_terms(e.ISO), s.weight * e.TRI.TWO_AREA, K);
    return;
  }
  const SURFACE_POINT s = surface_point(RULE_ELEMENT, p + 1, 3, e.EL.LOCAL_XYZ.data());
  MATRIX<3, 9> B;
  DKT_BMATRIX(e.TRI, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  add_packed_btdb(B, e.EL.D_BENDING, s.weight * s.detj, K);
}

void add_plate(const TRI_THICK& e, int p, double* K) {
  if (isotropic(e.EL)) {
    const SURFACE_STATION s = TRI_RULE_FOUR[p];
    const TRIANGLE_SIDES sides = SIDE_CONST_TRI_ISO(e.EL, e.TRI, e.LOADS);
    const double c = s.weight * e.TRI.TWO_AREA;
    add_packed_product(tri_curvature_rows(e.TRI, sides, s.xi, s.eta, sides.A_DELTA), bending_terms(e.ISO), c, K);
    add_packed_product(tri_shear_rows(sides, s.xi, s.eta), e.ISO.DS1, e.ISO.DS2, c, K);
    return;
  }
  const SURFACE_POINT s = surface_point(RULE_ELEMENT, p + 1, 3, e.EL.LOCAL_XYZ.data());
  MATRIX<3, 9> B;
  MATRIX<2, 9> G;
  B_BEND_TRI(e.EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, s.detj, B);
  B_SHEAR_TRI(e.EL, s.xi, s.eta, G);
  add_packed_btdb(B, e.EL.D_BENDING, s.weight * s.detj, K);
  add_packed_btdb(G, e.EL.D_SHEAR, s.weight * s.detj, K);
}

// The centre follows after the four points.
void add_membrane(const QUADRILATERAL_ELEMENT& e, int p, double* K) {
  const bool centre = p == 4;
  if (isotropic(e.EL)) {
    const SURFACE_STATION s = centre ? QUAD_RULE_CENTRE[0] : QUAD_RULE_FULL[p];
    const QUAD_POINT J = QUAD_JACOBIAN(e.QUAD, s.xi, s.eta);
    const SECTION_TERMS D = centre ? SECTION_TERMS{0.0, 0.0, 0.0, e.ISO.DM33} : membrane_terms(e.ISO, SPLIT_SHEAR);
    add_packed_product(quad_membrane_rows(J, s.xi, s.eta), D, s.weight * J.DET, K);
    return;
  }
  const SURFACE_POINT s =
      surface_point(centre ? RULE_CENTRE : RULE_FULL, centre ? 1 : p + 1, 4, e.EL.LOCAL_XYZ_QUAD.data());
  MATRIX<3, 8> B;
  QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  add_packed_btdb(B, centre ? e.EL.D_MEMBRANE_SHEAR : e.EL.D_MEMBRANE_NORMAL, s.weight * s.detj, K);
}

// The isotropic form of the triangle has no zeros to leave out: its closed form itself.
void add_membrane(const TRIANGLE_ELEMENT& e, int p, double* K) {
  if (p == 4) return;
  if (isotropic(e.EL)) {
    if (p == 0) TRI_KM_ISO(e.TRI, e.ISO, K);
    return;
  }
  const SURFACE_POINT s = surface_point(RULE_ELEMENT, p + 1, 3, e.EL.LOCAL_XYZ.data());
  MATRIX<3, 6> B;
  TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B);
  add_packed_btdb(B, e.EL.D_MEMBRANE_NORMAL, s.weight * s.detj, K);
}

template <class ELEMENT>
void expect_plain_sums(const ELEMENT& e) {
  constexpr int n = ELEMENT::NODES;
  entries membrane(SYM(2 * n, 2 * n)), plate(SYM(3 * n, 3 * n));
  for (int p = 0; p < 5; ++p) {
    add_membrane(e, p, membrane.data());
    if (p < 4) add_plate(e, p, plate.data());
  }
  FLAT_PARTS<n> parts;
  e.stiffness(parts);
  support::expect_same_places(entries(parts.membrane, parts.membrane + membrane.size()), membrane);
  support::expect_same_places(entries(parts.plate, parts.plate + plate.size()), plate);
}

// The reals that the kernels read, one broken at a time.
template <class ELEMENT>
void expect_plain_sums_with(ELEMENT& e, double* reals, int count) {
  for (int i = 0; i < count; ++i) {
    const double kept = reals[i];
    for (const double broken : support::BROKEN) {
      SCOPED_TRACE(::testing::Message() << "real " << i + 1 << " of " << count << " is " << broken);
      reals[i] = broken;
      expect_plain_sums(e);
    }
    reals[i] = kept;
  }
}

// A broken side breaks its whole row of A_DELTA: the zeros there are products too.
template <class ELEMENT>
void expect_plain_sums_with_broken_sides(ELEMENT& e) {
  constexpr int sides = ELEMENT::NODES;
  const VECTOR<48> kept = e.EL.A_DELTA;
  for (int k = 0; k < sides; ++k) {
    for (const double broken : support::BROKEN) {
      SCOPED_TRACE(::testing::Message() << "side " << k + 1 << " is " << broken);
      for (int column = 0; column < 3 * sides; ++column) e.EL.A_DELTA.data()[sides * column + k] *= broken;
      expect_plain_sums(e);
      e.EL.A_DELTA = kept;
    }
  }
}

double* first_of(QUADRILATERAL_ELEMENT& e) { return &e.QUAD.QX12; }
double* first_of(TRIANGLE_ELEMENT& e) { return &e.TRI.X21; }
double* local_of(QUADRILATERAL_ELEMENT& e) { return e.EL.LOCAL_XYZ_QUAD.data(); }
double* local_of(TRIANGLE_ELEMENT& e) { return e.EL.LOCAL_XYZ.data(); }

template <class ELEMENT>
void expect_plain_sums(const plate_description& d) {
  element_call call(d);
  double xyz[12] = {};
  double* at = xyz;
  for (const support::point& node : d.nodes) at = std::copy(node.begin(), node.end(), at);
  call.run(1);
  ELEMENT e(PLATEELEM, call.LOADS, 0);
  e.set_geometry(xyz, SIDE_COEFFICIENTS::WANTED);
  set_section(e, NO_PLATE_STATE);
  expect_plain_sums(e);
  if (isotropic(e.EL)) {
    expect_plain_sums_with(e, &e.ISO.DM11, 10);
    expect_plain_sums_with(e, first_of(e), ELEMENT::NODES == 4 ? 17 : 11);
    return;
  }
  expect_plain_sums_with(e, e.EL.D_MEMBRANE_NORMAL.data(), 9);
  if (ELEMENT::NODES == 4) expect_plain_sums_with(e, e.EL.D_MEMBRANE_SHEAR.data(), 9);
  expect_plain_sums_with(e, e.EL.D_BENDING.data(), 9);
  expect_plain_sums_with(e, local_of(e), 6);
  if (ELEMENT::THEORY != THICK_THEORY) return;
  expect_plain_sums_with(e, e.EL.D_SHEAR.data(), 4);
  expect_plain_sums_with_broken_sides(e);
  expect_plain_sums_with(e, e.EL.SIDE_C.data(), ELEMENT::NODES);
}

}  // namespace

TEST(ShortCuts, AreThePlainSumsWithFiniteAndWithBrokenReals) {
  seeded_random random(771);
  for (const bool general : {false, true}) {
    for (const bool thin : {true, false}) {
      for (const bool quadrilateral : {false, true}) {
        SCOPED_TRACE(::testing::Message() << (general ? "general " : "isotropic ") << (thin ? "thin " : "thick ")
                                          << (quadrilateral ? "quadrilateral" : "triangle"));
        const std::vector<support::point> nodes =
            quadrilateral ? support::random_quadrilateral(random) : support::random_triangle(random);
        plate_description d = general ? support::random_orthotropic(random, nodes, support::orthotropy::reciprocal)
                                      : support::random_isotropic(random, nodes);
        d.formulation = thin ? 1 : 0;
        if (quadrilateral) {
          thin ? expect_plain_sums<QUAD_THIN>(d) : expect_plain_sums<QUAD_THICK>(d);
        } else {
          thin ? expect_plain_sums<TRI_THIN>(d) : expect_plain_sums<TRI_THICK>(d);
        }
      }
    }
  }
}

TEST(FiniteValues, EveryPlaceIsSeen) {
  for (int count = 0; count <= 13; ++count) {
    std::vector<double> values(static_cast<std::size_t>(count), -1.5e300);
    EXPECT_TRUE(all_finite(values.data(), count)) << count;
    for (double& value : values) {
      for (const double broken : support::BROKEN) {
        value = broken;
        EXPECT_FALSE(all_finite(values.data(), count)) << count;
      }
      value = -1.5e300;
    }
  }
}

TEST(FiniteValues, OppositeInfinitiesDoNotCancel) {
  const double inf = support::BROKEN[1];
  const double values[8] = {inf, 1.0, 1.0, 1.0, -inf, 1.0, 1.0, 1.0};
  EXPECT_FALSE(all_finite(values, 8));
}
