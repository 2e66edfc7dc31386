// cable_case.cpp: solution, integration and random cables of the tests.
#include "cable_case.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

constexpr std::int32_t NUMBER = 17;

struct gauss_rule {
  std::vector<long double> point, weight;
};

// Gauss and Legendre on -1 to 1: the roots by Newton's method on the recurrence.
gauss_rule make_rule(int n) {
  gauss_rule rule;
  const long double pi = std::acos(-1.0L);
  for (int i = 0; i < n; ++i) {
    long double x = std::cos(pi * (static_cast<long double>(i) + 0.75L) / (static_cast<long double>(n) + 0.5L));
    long double slope = 1.0L;
    for (int step = 0; step < 20; ++step) {
      long double p = 1.0L;
      long double before = 0.0L;
      for (int k = 1; k <= n; ++k) {
        const long double next =
            (static_cast<long double>(2 * k - 1) * x * p - static_cast<long double>(k - 1) * before) /
            static_cast<long double>(k);
        before = p;
        p = next;
      }
      slope = static_cast<long double>(n) * (x * p - before) / (x * x - 1.0L);
      x -= p / slope;
    }
    rule.point.push_back(x);
    rule.weight.push_back(2.0L / ((1.0L - x * x) * slope * slope));
  }
  return rule;
}

// Integrals over s, counted from the point of least tension: from another point the tension would lose the digits that
// matter there.
struct span_integral {
  const cable_case& c;
  std::array<long double, 3> least_tension;
  integrated_span result;

  void add_point(long double s, long double weight) {
    std::array<long double, 3> t;
    long double square = 0.0L;
    for (std::size_t i = 0; i < 3; ++i) {
      t[i] = least_tension[i] - s * static_cast<long double>(c.w[i]);
      square += t[i] * t[i];
    }
    const long double T = std::sqrt(square);
    const long double EA = static_cast<long double>(c.E) * static_cast<long double>(c.area);
    const long double stretch = 1.0L + static_cast<long double>(c.e);
    for (std::size_t i = 0; i < 3; ++i) {
      result.span[i] += weight * (stretch + T / EA) * t[i] / T;
      for (std::size_t j = 0; j < 3; ++j) {
        const long double unit = i == j ? 1.0L : 0.0L;
        result.flexibility[3 * i + j] += weight * (stretch / T * (unit - t[i] * t[j] / square) + unit / EA);
      }
    }
  }

  void add_panel(long double from, long double to) {
    static const gauss_rule rule = make_rule(20);
    const long double half = 0.5L * (to - from);
    for (std::size_t i = 0; i < rule.point.size(); ++i) {
      add_point(from + half * (1.0L + rule.point[i]), std::fabs(half) * rule.weight[i]);
    }
  }

  // From the point of least tension to an end, in panels each twice as long as the one before.
  void add_side(long double end) {
    long double far = 1.0L;
    for (int k = 0; k < 60; ++k) {
      add_panel(0.5L * far * end, far * end);
      far *= 0.5L;
    }
    add_panel(0.0L, far * end);
  }
};

}  // namespace

cable_forces solve(const cable_case& c) {
  cable_forces f;
  CASE_1_L_0_3D2(&NUMBER, c.X1.data(), c.X2.data(), &c.area, &c.E, &c.L0, &c.e, c.w.data(), f.F.data(), &f.tension1,
                 &f.tension2, &f.status);
  return f;
}

std::int32_t tangent(const cable_case& c, const cable_forces& f, matrix6& K) {
  std::int32_t status = -7;
  CALC_KT_TANGENT(&NUMBER, c.X1.data(), c.X2.data(), f.F.data(), &c.area, &c.E, &c.L0, c.w.data(), &c.e, K.data(),
                  &status);
  return status;
}

double norm(const triple& a) { return std::hypot(a[0], a[1], a[2]); }

double chord(const cable_case& c) { return norm({c.X2[0] - c.X1[0], c.X2[1] - c.X1[1], c.X2[2] - c.X1[2]}); }

double load(const cable_case& c) { return norm(c.w) * c.L0; }

double force_scale(const cable_case& c, const cable_forces& f) { return std::max({load(c), f.tension1, f.tension2}); }

integrated_span integrate(const cable_case& c, const triple& tension_at_first) {
  span_integral integral{c, {}, {}};
  const auto L0 = static_cast<long double>(c.L0);
  long double along = 0.0L;
  long double square = 0.0L;
  for (std::size_t i = 0; i < 3; ++i) {
    along += static_cast<long double>(tension_at_first[i]) * static_cast<long double>(c.w[i]);
    square += static_cast<long double>(c.w[i]) * static_cast<long double>(c.w[i]);
  }
  const long double least = square > 0.0L ? std::clamp(along / square, 0.0L, L0) : 0.0L;
  for (std::size_t i = 0; i < 3; ++i) {
    integral.least_tension[i] =
        static_cast<long double>(tension_at_first[i]) - least * static_cast<long double>(c.w[i]);
  }
  if (least > 0.0L) integral.add_side(-least);
  if (least < L0) integral.add_side(L0 - least);
  return integral.result;
}

double uniform(std::mt19937_64& source, double low, double high) {
  return std::uniform_real_distribution<double>(low, high)(source);
}

triple random_direction(std::mt19937_64& source) {
  for (;;) {
    const triple a{uniform(source, -1.0, 1.0), uniform(source, -1.0, 1.0), uniform(source, -1.0, 1.0)};
    const double size = norm(a);
    if (size > 0.1 && size < 1.0) return {a[0] / size, a[1] / size, a[2] / size};
  }
}

cable_case random_cable(std::mt19937_64& source, double ratio) {
  cable_case c;
  c.L0 = uniform(source, 0.5, 200.0);
  c.E = 2e11;
  c.area = std::pow(10.0, uniform(source, -6.0, -2.0));
  c.e = uniform(source, -0.02, 0.02);
  const double weight = c.E * c.area * std::pow(10.0, uniform(source, -8.0, 0.0)) / c.L0;
  const triple down = random_direction(source);
  const triple along = random_direction(source);
  for (std::size_t i = 0; i < 3; ++i) {
    c.w[i] = weight * down[i];
    c.X2[i] = ratio * c.L0 * along[i];
  }
  return c;
}

std::string describe(const cable_case& c) {
  char text[700];
  std::snprintf(text, sizeof text,
                "X1 %.17g %.17g %.17g X2 %.17g %.17g %.17g w %.17g %.17g %.17g area %.17g E %.17g L0 %.17g e %.17g",
                c.X1[0], c.X1[1], c.X1[2], c.X2[0], c.X2[1], c.X2[2], c.w[0], c.w[1], c.w[2], c.area, c.E, c.L0, c.e);
  return text;
}
