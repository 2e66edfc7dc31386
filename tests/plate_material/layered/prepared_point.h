// prepared_point.h: the shared records as the elements have them before they update thickness points: one plate with
// its arrays, a material and axes.
#ifndef FINITES_TESTS_PREPARED_POINT_H
#define FINITES_TESTS_PREPARED_POINT_H

#include <array>
#include <limits>
#include <vector>

#include "layered_reference.h"
#include "layered_storage.h"
#include "plate_material/layered_column.h"
#include "plate_material/layered_point.h"
#include "plate_material/through_thickness.h"

inline constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
inline constexpr double INFINITE = std::numeric_limits<double>::infinity();

struct prepared_point {
  static constexpr int PLATE = 2, ELEMENT = 1;  // plates are numbered against the elements

  explicit prepared_point(const layered_reference::material& material,
                          const layered_reference::matrix3& axes = layered_reference::matrix3::Identity(), int n = 5,
                          point_layout layout = point_layout::packed);
  prepared_point(support::seeded_random& random, double hardening, int n = 5,
                 point_layout layout = point_layout::packed);
  prepared_point(const prepared_point&) = delete;
  prepared_point& operator=(const prepared_point&) = delete;
  ~prepared_point();

  POINT_STATE_RECORD& state(int gp = 1) { return storage.point(gp); }
  // Random values in all fields, of the sizes that the material gives.
  void fill_random(support::seeded_random& random);
  layered_reference::point_start start(int gp, int k);
  // A local strain whose trial stress reaches `level` times the yield surface of the point, in a random direction.
  layered_reference::vector5 strain_at(support::seeded_random& random, int gp, int k, int theory, double level);
  layered_reference::point_answer expected(int gp, int k, int theory, const layered_reference::vector5& strain);
  void update(const layered_reference::vector5& strain, int gp, int k, int theory, int op);

  layered_reference::material m;
  layered_reference::matrix3 axes;
  layered_storage storage;

 private:
  std::array<PLATE_STATE_RECORD, 2> plates{};
  std::array<std::int32_t, 2> plate_of_elem{2, 1};
};

// Thickness point k of surface point gp.
inline THICKNESS_POINT thickness_point(std::int32_t plate, std::int32_t gp, std::int32_t k) {
  const bool from_current = SOLANAELEM.EP_INC_FROM_CUR != 0;
  return {SOLANAELEM.PLATE_STATE(plate).POINT_STATE(gp), k, from_current, BY_ASSERTF, TANGENT::CONTINUUM};
}

// The thickness points of a surface point of the prepared plate.
inline LAYERED_COLUMN column_at(const LAYERED_LAW& law, std::int32_t gp) {
  return {law, SOLANAELEM.PLATE_STATE(prepared_point::PLATE).POINT_STATE(gp), gp};
}

inline LAYERED_LAW law_of_call(int theory, int op) {
  return {PLATEELEM, theory, op, state_of_element(prepared_point::ELEMENT)};
}

template <int N>
VECTOR<N> vector_of(const layered_reference::matrix& c) {
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

// The double values as extended ones: what the library is given.
template <int N>
layered_reference::matrix rounded(const VECTOR<N>& v) {
  return dense::widened(v.data(), N);
}

using texts = std::vector<std::string>;
inline const std::string DIVISION = "Plaque plasticite-Division par zero";
inline const std::string NEGATIVE = "Plasticite Plaque- multiplicateur plastique negatif";
inline const std::string RETURN = "Plasticite Plaque: pb avec algorithme de rabattement radial";

#endif
