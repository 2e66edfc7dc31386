// small_products_test.cpp: products of small matrices against plain sums and against the matrix services, bit by bit.
#include "common/small_products.h"

#include <cmath>
#include <cstdint>

#include "comparison.h"
#include "finites/services.h"
#include "random_shapes.h"

using support::seeded_random;
using support::values;

namespace {

// Sizes far apart: another order of summation rounds otherwise.
template <int M, int N>
MATRIX<M, N> random_matrix(seeded_random& random) {
  MATRIX<M, N> A;
  for (double& entry : A.V) entry = random.uniform(-1.0, 1.0) * random.log_uniform(1e-8, 1e8);
  return A;
}

template <int M, int N, int P>
void expect_the_bits_of_the_services(seeded_random& random) {
  constexpr std::int32_t m = M, n = N, p = P, one = 1;
  const MATRIX<M, N> A = random_matrix<M, N>(random);
  const MATRIX<N, P> B = random_matrix<N, P>(random);
  const MATRIX<N, 1> v = random_matrix<N, 1>(random);
  const MATRIX<M, P> C = product(A, B);
  VECTOR<N> u;
  for (int i = 1; i <= N; ++i) u(i) = v(i, 1);
  const VECTOR<M> w = product(A, u);
  MATRIX<M, P> by_service;
  MATRIX<M, 1> by_service_too;
  MATMUL_M1MN_M2MN_DBL(by_service.data(), A.data(), &m, &n, B.data(), &n, &p);
  MATMUL_M1MN_M2MN_DBL(by_service_too.data(), A.data(), &m, &n, v.data(), &n, &one);
  EXPECT_EQ(values(C.data(), M * P), values(by_service.data(), M * P)) << M << " " << N << " " << P;
  EXPECT_EQ(values(w.data(), M), values(by_service_too.data(), M)) << M << " " << N;
  for (int j = 1; j <= P; ++j) {
    for (int i = 1; i <= M; ++i) {
      double sum = 0.0;
      for (int k = 1; k <= N; ++k) sum += A(i, k) * B(k, j);
      EXPECT_EQ(C(i, j), sum) << i << ", " << j;
    }
  }
}

}  // namespace

TEST(SmallProducts, AreThePlainSumsThatTheServicesForm) {
  seeded_random random(601);
  for (int trial = 0; trial < 20; ++trial) {
    expect_the_bits_of_the_services<2, 2, 2>(random);
    expect_the_bits_of_the_services<3, 3, 3>(random);
    expect_the_bits_of_the_services<3, 6, 2>(random);
    expect_the_bits_of_the_services<9, 3, 3>(random);
    expect_the_bits_of_the_services<12, 5, 4>(random);
    expect_the_bits_of_the_services<1, 8, 1>(random);
  }
}

TEST(SmallProducts, ByHand) {
  // [1 3 5; 2 4 6] (1 2; 3 4; 5 6) and times (1, 10, 100).
  const MATRIX<2, 3> A{{1, 2, 3, 4, 5, 6}};
  const MATRIX<3, 2> B{{1, 3, 5, 2, 4, 6}};
  EXPECT_EQ(values(product(A, B).data(), 4), (std::vector<double>{35, 44, 44, 56}));
  EXPECT_EQ(values(product(A, VECTOR<3>{{1, 10, 100}}).data(), 2), (std::vector<double>{531, 642}));
  EXPECT_EQ(values(transposed(A).data(), 6), (std::vector<double>{1, 3, 5, 2, 4, 6}));
}

TEST(SmallProducts, StartFromZeroSoThatNoSumIsMinusZero) {
  const MATRIX<2, 2> A{{-1.0, 0.0, 0.0, -1.0}};
  const MATRIX<2, 2> none{};
  for (const double entry : product(A, none).V) EXPECT_FALSE(std::signbit(entry));
  const VECTOR<2> product_of_zeros = product(A, VECTOR<2>{});
  for (int i = 1; i <= 2; ++i) EXPECT_FALSE(std::signbit(product_of_zeros(i)));
}
