// element_points_test.cpp: strains and forces of the points of plastic plates against the strain matrices.
#include "shells/plastic/element_points.h"

#include "shells/quadrilateral/thick/plate_kernel.h"
#include "shells/quadrilateral/thin/plate_kernel.h"
#include "shells/triangle/thick/plate_kernel.h"
#include "shells/triangle/thin/plate_kernel.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "comparison.h"
#include "element_stores.h"
#include "prepared_quadrilateral.h"
#include "thick_sections.h"

using support::seeded_random;

namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double BROKEN[] = {std::numeric_limits<double>::quiet_NaN(), INFINITE, -INFINITE};

// The kernel of a shape in PLATEELEM and the stores.
template <class ELEMENT>
ELEMENT prepared(seeded_random& random);

void prepare_quadrilateral(seeded_random& random) {
  const prepared_quadrilateral q(support::random_quadrilateral(random));
  shell_reference::section s;
  set_random_section(random, s);
}

void prepare_triangle(seeded_random& random) {
  std::vector<double> xyz;
  for (const support::point& node : support::random_triangle(random)) xyz.insert(xyz.end(), node.begin(), node.end());
  PLATEELEM = PLATEELEM_RECORD{};
  MATRIX<3, 3> local{};
  TRI_LOCAL_FRAME(xyz.data(), TRI, local);
  TRI_GEOMETRY(local, TRI);
  PLATEELEM.AXES = TRI.AXES;
  PLATEELEM.LOCAL_XYZ = local;
  shell_reference::section s;
  set_random_section(random, s);
}

template <>
QUAD_THIN_PLATE prepared<QUAD_THIN_PLATE>(seeded_random& random) {
  prepare_quadrilateral(random);
  return {PLATEELEM, QUAD, QUAD_U};
}

template <>
QUAD_THICK_PLATE prepared<QUAD_THICK_PLATE>(seeded_random& random) {
  prepare_quadrilateral(random);
  SIDE_CONST_QUAD(PLATEELEM);
  return {PLATEELEM, QUAD, QUAD_U};
}

template <>
TRI_THIN_PLATE prepared<TRI_THIN_PLATE>(seeded_random& random) {
  prepare_triangle(random);
  return {PLATEELEM, TRI, TRI_U};
}

template <>
TRI_THICK_PLATE prepared<TRI_THICK_PLATE>(seeded_random& random) {
  prepare_triangle(random);
  SIDE_CONST_TRI(PLATEELEM);
  return {PLATEELEM, TRI, TRI_U};
}

template <int N>
VECTOR<N> random_vector(seeded_random& random) {
  VECTOR<N> v;
  for (double& x : v.V) x = random.uniform(-1.0, 1.0);
  return v;
}

template <int N>
std::vector<double> listed(const VECTOR<N>& v) {
  return std::vector<double>(v.V, v.V + N);
}

// The entries of B u without their signs add up to the size that rounding is measured on.
template <int M, int N>
double size_of_products(const MATRIX<M, N>& B) {
  double largest = 0.0;
  for (int r = 1; r <= M; ++r) {
    double sum = 0.0;
    for (int i = 1; i <= N; ++i) sum += std::fabs(B(r, i));
    largest = std::max(largest, sum);
  }
  return largest;
}

// Displacements of the call and total ones.
template <class ELEMENT>
struct two_displacements {
  VECTOR<ELEMENT::MEMBRANE> um, tm;
  VECTOR<ELEMENT::PLATE> up, tp;

  explicit two_displacements(seeded_random& random)
      : um(random_vector<ELEMENT::MEMBRANE>(random)),
        tm(random_vector<ELEMENT::MEMBRANE>(random)),
        up(random_vector<ELEMENT::PLATE>(random)),
        tp(random_vector<ELEMENT::PLATE>(random)) {}

  ELEMENT_POINTS<ELEMENT> points(const ELEMENT& element) const {
    return {element, POINTS_OF_PLATE, STRAIN_CASES<ELEMENT::MEMBRANE>(um, tm), STRAIN_CASES<ELEMENT::PLATE>(up, tp)};
  }
};

// f of the strain matrices.
template <class ELEMENT>
std::vector<double> forces_of_matrices(const ELEMENT& element, const VECTOR<ELEMENT::WIDTH> (&n)[POINTS_OF_PLATE]) {
  std::vector<double> f(24, 0.0);
  MATRICES_OF<ELEMENT> B;
  for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
    const SURFACE_POINT s = element.point(gp);
    element.matrices(s, B);
    add_forces(B.m, part_of<3>(n[gp - 1], 0), s.weight * s.detj, ELEMENT::MEMBRANE_DOF, f.data());
    add_forces(B.p, part_of<ELEMENT::WIDTH - 3>(n[gp - 1], 3), s.weight * s.detj, ELEMENT::PLATE_DOF, f.data());
  }
  return f;
}

// Equal values, NaN in the same places.
void expect_same(const std::vector<double>& actual, const std::vector<double>& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < actual.size(); ++i) {
    EXPECT_TRUE(actual[i] == expected[i] || (std::isnan(actual[i]) && std::isnan(expected[i])))
        << i << ": " << actual[i] << " for " << expected[i];
  }
}

}  // namespace

template <class ELEMENT>
struct ElementPoints : ::testing::Test {};
using plates = ::testing::Types<QUAD_THIN_PLATE, QUAD_THICK_PLATE, TRI_THIN_PLATE, TRI_THICK_PLATE>;
struct plate_names {
  template <class ELEMENT>
  static std::string GetName(int place) {
    return std::array<const char*, 4>{"ThinQuadrilateral", "ThickQuadrilateral", "ThinTriangle",
                                      "ThickTriangle"}[static_cast<std::size_t>(place)];
  }
};
TYPED_TEST_SUITE(ElementPoints, plates, plate_names);

TYPED_TEST(ElementPoints, HaveTheStrainsOfTheStrainMatrices) {
  seeded_random random(781);
  for (int trial = 0; trial < 100; ++trial) {
    const TypeParam element = prepared<TypeParam>(random);
    const two_displacements<TypeParam> u(random);
    const ELEMENT_POINTS<TypeParam> points = u.points(element);
    MATRICES_OF<TypeParam> B;
    for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
      element.matrices(element.point(gp), B);
      const double size = std::max(size_of_products(B.m), size_of_products(B.p));
      const SECTION_STRAINS<TypeParam::WIDTH>& e = points.strains[gp - 1];
      EXPECT_WITHIN(listed(e.of_call), listed(section_strains(B, u.um, u.up)), size, 4e-15);
      EXPECT_WITHIN(listed(e.total), listed(section_strains(B, u.tm, u.tp)), size, 4e-15);
    }
  }
}

TYPED_TEST(ElementPoints, HaveTheForcesOfTheStrainMatrices) {
  seeded_random random(782);
  for (int trial = 0; trial < 100; ++trial) {
    const TypeParam element = prepared<TypeParam>(random);
    ELEMENT_POINTS<TypeParam> points = two_displacements<TypeParam>(random).points(element);
    VECTOR<TypeParam::WIDTH> n[POINTS_OF_PLATE];
    double size = 0.0;
    MATRICES_OF<TypeParam> B;
    for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
      n[gp - 1] = random_vector<TypeParam::WIDTH>(random);
      const SURFACE_POINT s = element.point(gp);
      element.matrices(s, B);
      size += std::max(size_of_products(B.m), size_of_products(B.p)) * std::fabs(s.weight * s.detj);
    }
    std::vector<double> f(24, 0.0);
    points.add_forces(n, f.data());
    EXPECT_WITHIN(f, forces_of_matrices(element, n), size, 4e-15);
  }
}

// The zeros of the strain matrices carry what is not finite into all strains of a part, and the forces of a point into
// all degrees of freedom.
TYPED_TEST(ElementPoints, CarryNaNAndInfinitiesAsTheStrainMatricesDo) {
  seeded_random random(783);
  const TypeParam element = prepared<TypeParam>(random);
  const two_displacements<TypeParam> whole(random);
  MATRICES_OF<TypeParam> B;
  for (const double broken : BROKEN) {
    for (int i = 1; i <= TypeParam::MEMBRANE + TypeParam::PLATE; ++i) {
      two_displacements<TypeParam> u = whole;
      (i <= TypeParam::MEMBRANE ? u.tm(i) : u.up(i - TypeParam::MEMBRANE)) = broken;
      const ELEMENT_POINTS<TypeParam> points = u.points(element);
      for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
        element.matrices(element.point(gp), B);
        expect_same(listed(points.strains[gp - 1].of_call), listed(section_strains(B, u.um, u.up)));
        expect_same(listed(points.strains[gp - 1].total), listed(section_strains(B, u.tm, u.tp)));
      }
    }
    for (int i = 1; i <= TypeParam::WIDTH; ++i) {
      VECTOR<TypeParam::WIDTH> n[POINTS_OF_PLATE];
      for (VECTOR<TypeParam::WIDTH>& of_point : n) of_point = random_vector<TypeParam::WIDTH>(random);
      n[2](i) = broken;
      std::vector<double> f(24, 0.0);
      whole.points(element).add_forces(n, f.data());
      expect_same(f, forces_of_matrices(element, n));
    }
  }
}

TYPED_TEST(ElementPoints, OfASideWithoutLengthAreThoseOfTheStrainMatrices) {
  seeded_random random(784);
  for (int k = 1; k <= TypeParam::NODES; ++k) {
    const TypeParam element = prepared<TypeParam>(random);
    const int next = k % TypeParam::NODES + 1;
    if (TypeParam::NODES == 4) {
      for (int i = 1; i <= 3; ++i) PLATEELEM.LOCAL_XYZ_QUAD(i, next) = PLATEELEM.LOCAL_XYZ_QUAD(i, k);
      QUAD_GEOMETRY(PLATEELEM.LOCAL_XYZ_QUAD, WITH_SIDES, QUAD);
      if (TypeParam::WIDTH == 8) SIDE_CONST_QUAD(PLATEELEM);
    } else {
      for (int i = 1; i <= 3; ++i) PLATEELEM.LOCAL_XYZ(i, next) = PLATEELEM.LOCAL_XYZ(i, k);
      TRI_GEOMETRY(PLATEELEM.LOCAL_XYZ, TRI);
      if (TypeParam::WIDTH == 8) SIDE_CONST_TRI(PLATEELEM);
    }
    const two_displacements<TypeParam> u(random);
    const ELEMENT_POINTS<TypeParam> points = u.points(element);
    MATRICES_OF<TypeParam> B;
    for (int gp = 1; gp <= POINTS_OF_PLATE; ++gp) {
      element.matrices(element.point(gp), B);
      EXPECT_TRUE(std::isnan(points.strains[gp - 1].total(4)));
      expect_same(listed(points.strains[gp - 1].total), listed(section_strains(B, u.tm, u.tp)));
    }
  }
}
