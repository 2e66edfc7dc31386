// prepared_section.h: PLATEELEM as the engines have it before they update a surface point, and the routines of each
// width under their names.
#ifndef FINITES_TESTS_PREPARED_SECTION_H
#define FINITES_TESTS_PREPARED_SECTION_H

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "finites/records.h"
#include "plate_material/section_decomposition.h"
#include "plate_material/section_update.h"
#include "section_reference.h"

inline constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

// The routines of a width. What fails goes to ASSERTF.
template <int W>
struct routines {
  static constexpr auto trial = &SECTION_TRIAL<W>;
  static constexpr auto yield = &SECTION_YIELD<W>;
  static constexpr auto ep = &SECTION_EP<W>;
  static constexpr auto epbar = &SECTION_EPBAR<W>;
  static constexpr auto to_local = &SECTION_EP_TO_LOCAL<W>;
  static constexpr auto to_global = &SECTION_EP_TO_GLOBAL<W>;

  static void update(PLATEELEM_RECORD& EL, double h, double sy, const VECTOR<W>& eps, const SECTION_POINT& from,
                     SECTION_ANSWER<W>& to) {
    PLATE_SECTION_UPDATE<W>(EL, h, sy, eps, from, BY_ASSERTF, to);
  }
  static void mult(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<W>& trial_forces,
                   double ebar0, double& x) {
    SECTION_MULT<W>(EL, a, h, sy, trial_forces, ebar0, BY_ASSERTF, x);
  }
  static void f1(const PLATEELEM_RECORD& EL, double a, double h, double sy, const VECTOR<W>& trial_forces, double ebar0,
                 double x, double& f) {
    SECTION_F1<W>(EL, a, h, sy, trial_forces, ebar0, x, BY_ASSERTF, f);
  }
  static void df1(const PLATEELEM_RECORD& EL, double h, double sy, const VECTOR<W>& trial_forces, double ebar0,
                  double x, double& df) {
    SECTION_DF1<W>(EL, h, sy, trial_forces, ebar0, x, BY_ASSERTF, df);
  }
  static void stress(const PLATEELEM_RECORD& EL, double x, const VECTOR<W>& trial_forces, VECTOR<W>& sig) {
    SECTION_STRESS<W>(EL, x, trial_forces, BY_ASSERTF, sig);
  }
  static void tangent(const PLATEELEM_RECORD& EL, double sy, double x, double h, double ebar, const VECTOR<W>& sig,
                      MATRIX<W, W>& C) {
    SECTION_TANGENT<W>(EL, sy, x, h, ebar, sig, BY_ASSERTF, C);
  }
};

// Tests of both widths: TYPED_TEST_SUITE(Suite, both_widths, width_names), TypeParam::value.
using both_widths = ::testing::Types<std::integral_constant<int, 8>, std::integral_constant<int, 6>>;
struct width_names {
  template <class WIDTH>
  static std::string GetName(int /*position*/) {
    return "Width" + std::to_string(WIDTH::value);
  }
};

template <int N>
VECTOR<N> vector_of(const section_reference::column& c) {
  VECTOR<N> v{};
  for (int i = 1; i <= N; ++i) v(i) = static_cast<double>(c(i - 1));
  return v;
}

template <int N>
std::vector<double> listed(const VECTOR<N>& v) {
  return std::vector<double>(v.V, v.V + N);
}

template <int M, int N>
std::vector<double> listed(const MATRIX<M, N>& A) {
  return std::vector<double>(A.V, A.V + M * N);
}

template <int N>
section_reference::column column_of(const VECTOR<N>& v) {
  return section_reference::column_of(listed(v));
}

template <int M, int N>
section_reference::matrix matrix_of(const MATRIX<M, N>& A) {
  return dense::widened(A.data(), M, N);
}

// A plate in PLATEELEM, with the section matrices of an isotropic plate, element axes and D8.
struct prepared_section {
  explicit prepared_section(const section_reference::plate& plate,
                            const section_reference::matrix3& element_axes = section_reference::matrix3::Identity());
  // A random plate in random axes. hardening: 0, or the largest tangent modulus over E.
  prepared_section(support::seeded_random& random, double hardening);
  prepared_section(support::seeded_random& random, double hardening, const section_reference::matrix3& element_axes);

  // Resultants in a random direction that reach `level` times the yield surface: F = level^2 - 1 without hardening.
  section_reference::column random_resultants(support::seeded_random& random, int width, double level) const;
  // The strains of resultants.
  section_reference::column strains_of(const section_reference::column& sig) const;

  section_reference::plate p;
  section_reference::matrix3 axes;
  section_reference::matrix D;  // 8 by 8, as PLATEELEM.D8 has it
};

// Plastic strain, hardening and branch of a point; zero strain components that no plate can have are left out.
section_reference::point_start random_start(support::seeded_random& random, const prepared_section& s, double ref);
SECTION_POINT section_point(const section_reference::point_start& start);

// Numbers of the order of 1: resultants over those of full yielding, strains (a vector, or twelve values) over that of
// first yielding, a tangent over the elastic membrane stiffness.
section_reference::column without_units(const prepared_section& s, const section_reference::column& sig);
section_reference::column strain_without_units(const prepared_section& s, const section_reference::column& strain);
section_reference::matrix tangent_without_units(const prepared_section& s, const section_reference::matrix& C);

#endif
