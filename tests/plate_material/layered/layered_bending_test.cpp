// layered_bending_test.cpp: sections in bending against exact moment-curvature lines.
//
// Three states of strain keep the direction of stress while a point yields, and have exact lines: twisting, equal
// bending both ways, and the bending of a strip that is free to contract with a Poisson's ratio of one half. With
// k1 the curvature of first yielding and M1 its moment the perfectly plastic line is M / M1 = 1.5 - 0.5 (k1 / k)^2.
#include <cmath>

#include "comparison.h"
#include "prepared_point.h"
#include "shells/plastic/layered_element.h"

using layered_reference::material;
using layered_reference::real;

namespace {

constexpr double T = 0.2;
constexpr int COUNTS[] = {3, 5, 7, 9, 11, 13, 15};

struct bending_case {
  const char* name;
  double nu;
  double curvature[3];  // per unit
  int component;        // of the stress, from 1, global
  double slope, yield;  // stress per unit strain, first yield in that component, per E and sy
  double hardened;      // slope of the hardened line, per E, for the H of the case
};

constexpr double E = 2.0e5, SY = 200.0, ET = 2.0e4, H = ET / (1.0 - ET / E);

std::vector<bending_case> cases(double plastic_modulus) {
  const double G = 1.0 / 2.6, M = 1.0 / 0.7, h = plastic_modulus / E;
  return {{"twisting", 0.3, {0.0, 0.0, 1.0}, 4, G, 1.0 / std::sqrt(3.0), G * (h / 3.0) / (G + h / 3.0)},
          // Equal stresses s = e (E / (1 - nu)): each plastic strain is half the equivalent one, s grows by H of it.
          {"equal bending", 0.3, {1.0, 1.0, 0.0}, 1, M, 1.0, M * 2.0 * h / (M + 2.0 * h)},
          {"strip", 0.5, {1.0, -0.5, 0.0}, 1, 1.0, 1.0, h / (1.0 + h)}};
}

// The stress at a height for a curvature.
double exact_stress(const bending_case& c, double k, double z) {
  const double first = SY * c.yield / (E * c.slope), e = std::fabs(k * z);
  const double s = e <= first ? E * c.slope * e : SY * c.yield + E * c.hardened * (e - first);
  return k * z < 0.0 ? -s : s;
}

double exact_moment(const bending_case& c, double k) {
  const double first = 2.0 * SY * c.yield / (E * c.slope * T), elastic = E * c.slope * T * T * T / 12.0;
  if (k <= first) return elastic * k;
  const double M1 = elastic * first, share = 1.5 - 0.5 * (first / k) * (first / k);
  return M1 * share * (1.0 - c.hardened / c.slope) + elastic * c.hardened / c.slope * k;
}

double moment_of(const POINT_STATE_RECORD& s, int n, int component) {
  const layered_reference::rule r = layered_reference::lobatto(n);
  real M = 0;
  for (int k = 1; k <= n; ++k) {
    const std::size_t at = static_cast<std::size_t>(k - 1);
    M += r.w[at] * T / 2 * r.xi[at] * T / 2 * s.SIG(component, k);
  }
  return static_cast<double>(M);
}

// A bound of the error of the rule for the moment: the integrand is a parabola, which the rule integrates, and a part
// whose slope varies by `variation` in total; of each kink the rule misses at most its greatest weight times its
// greatest spacing (after Chebyshev, Markov and Stieltjes).
double error_bound(const bending_case& c, double k, int n) {
  const layered_reference::rule r = layered_reference::lobatto(n);
  real weight = 0, spacing = 0;
  for (std::size_t at = 1; at < r.xi.size(); ++at) {
    weight = std::max(weight, r.w[at]);
    spacing = std::max(spacing, r.xi[at] - r.xi[at - 1]);
  }
  // In xi: moment = (T / 2)^2 times the integral of xi s(k T xi / 2). Beyond the kink x1 the rest is
  // -(slope - hardened) (E k T / 2) xi (xi - x1): its slope starts with x1 and ends with 2 - x1 times that.
  const double first = 2.0 * SY * c.yield / (E * c.slope * T);
  if (k <= first) return 1e-12 * exact_moment(c, k);
  const double x1 = first / k, scale = (c.slope - c.hardened) * E * k * T / 2.0;
  const double variation = 2.0 * scale * (2.0 - x1);
  return static_cast<double>(weight * spacing) * variation * T * T / 4.0;
}

void bend(const bending_case& c, double k, int theory) {
  PLATEELEM.THICKNESS = T;
  PLATEELEM.NU1 = c.nu;
  LAYERED_STRAINS total{};
  for (int i = 1; i <= 3; ++i) total.b(i) = k * c.curvature[i - 1];
  update_layered_points(column_at(law_of_call(theory, 33), 2), total,
                        THICKNESS_SECTION(SOLANAELEM.NPT_THICK, PLATEELEM.THICKNESS), SOLANAELEM.NPT_THICK);
}

void follow(double plastic_modulus, double tangent_modulus) {
  for (const bending_case& c : cases(plastic_modulus)) {
    for (const int n : COUNTS) {
      for (const int theory : {THIN_THEORY, THICK_THEORY}) {
        prepared_point p(material{E, c.nu, SY, tangent_modulus}, layered_reference::matrix3::Identity(), n);
        const double first = 2.0 * SY * c.yield / (E * c.slope * T), M1 = exact_moment(c, first);
        for (const double times : {0.5, 0.999, 1.2, 1.5, 2.0, 3.0, 5.0, 10.0}) {
          const double k = times * first;
          bend(c, k, theory);
          const layered_reference::rule r = layered_reference::lobatto(n);
          for (int at = 1; at <= n; ++at) {
            const double z = static_cast<double>(r.xi[static_cast<std::size_t>(at - 1)] * T / 2);
            EXPECT_WITHIN(p.state(2).SIG(c.component, at), exact_stress(c, k, z), times * SY, 4e-7)
                << c.name << " point " << at << " of " << n << " at " << times;
          }
          const double M = moment_of(p.state(2), n, c.component), exact = exact_moment(c, k);
          EXPECT_WITHIN(M, exact, 1.0, error_bound(c, k, n) + 4e-7 * times * M1) << c.name << " " << n << " " << times;
          if (n == 15) {
            EXPECT_WITHIN(M, exact, exact, 0.01) << c.name << " " << times;
          }
        }
      }
    }
  }
}

}  // namespace

TEST(LayeredBending, PerfectlyPlasticSectionsFollowTheirExactLine) { follow(0.0, 0.0); }
TEST(LayeredBending, HardeningSectionsFollowTheirExactLine) { follow(H, ET); }

TEST(LayeredBending, PlasticHingeIsHalfAgainTheElasticMoment) {
  const bending_case strip = cases(0.0)[2];
  prepared_point p(material{E, 0.5, SY, 0.0}, layered_reference::matrix3::Identity(), 15);
  bend(strip, 1e3 * 2.0 * SY / (E * T), THIN_THEORY);
  EXPECT_WITHIN(moment_of(p.state(2), 15, 1), SY * T * T / 4.0, SY * T * T / 4.0, 0.01);
}

TEST(LayeredBending, UnloadingLeavesTheResidualStressesOfElasticRecovery) {
  // Bent to k, accepted, and bent back until the moment of the rule vanishes: the stress is what yielding left less the
  // elastic line of the moment; at the face it has the other sign.
  const bending_case strip = cases(0.0)[2];
  for (const int n : {7, 15}) {
    prepared_point p(material{E, 0.5, SY, 0.0}, layered_reference::matrix3::Identity(), n);
    const double first = 2.0 * SY / (E * T), k = 3.0 * first;
    bend(strip, k, THIN_THEORY);
    const double M = moment_of(p.state(2), n, 1), recovered = M / (E * T * T * T / 12.0);
    std::vector<double> loaded;
    for (int at = 1; at <= n; ++at) loaded.push_back(p.state(2).SIG(1, at));
    promote(p.state(2));
    bend(strip, k - recovered, THIN_THEORY);
    const THICKNESS_STATIONS z(n, PLATEELEM.THICKNESS);
    for (int at = 1; at <= n; ++at) {
      EXPECT_WITHIN(p.state(2).SIG(1, at), loaded[static_cast<std::size_t>(at - 1)] - E * recovered * z(at), SY, 1e-6);
    }
    EXPECT_WITHIN(moment_of(p.state(2), n, 1), 0.0, M, 1e-6);
    EXPECT_LT(p.state(2).SIG(1, n), 0.0);
    EXPECT_GT(p.state(2).EP_CUR(1, n), 0.0);
  }
}

TEST(LayeredBending, TensionWithHardeningHasTheSlopesOfTheTest) {
  for (const int n : COUNTS) {
    prepared_point p(material{E, 0.5, SY, ET}, layered_reference::matrix3::Identity(), n);
    PLATEELEM.THICKNESS = T;
    for (const double e : {0.0005, 0.0009, 0.002, 0.01}) {
      LAYERED_STRAINS total{};
      total.m = {{e, -0.5 * e, 0.0}};
      update_layered_points(column_at(law_of_call(THIN_THEORY, 33), 2), total,
                            THICKNESS_SECTION(SOLANAELEM.NPT_THICK, PLATEELEM.THICKNESS), SOLANAELEM.NPT_THICK);
      const double expected = e < 0.001 ? E * e : SY + ET * (e - 0.001);
      for (int at = 1; at <= n; ++at) EXPECT_WITHIN(p.state(2).SIG(1, at), expected, expected, 4e-7);
    }
  }
}

TEST(LayeredBending, OtherSurfacePointsStayAsTheyWere) {
  prepared_point p(material{E, 0.3, SY, 0.0});
  p.storage.fill(0.0);
  bend(cases(0.0)[0], 1.0, THICK_THEORY);
  for (const int gp : {1, 3, 4}) {
    for (const auto& [name, values] : values_of(p.state(gp))) {
      EXPECT_EQ(values, std::vector<double>(values.size(), 0.0)) << name;
    }
  }
}
