// uniaxial_test.cpp: one resultant at a time, by hand: the strains that hold a strip at that resultant beyond yielding.
//
// The metric couples forces and moments whatever their mixed product: a strip under N alone flows by (p, -p/2) in its
// plane, p = 2 x N / N0^2, and bends by s N0 / (2 sqrt(3) M0) = 2 s / (sqrt(3) h) times as much, s being the branch.
// Under M alone it flows by k and stretches by s M0 / (2 sqrt(3) N0) = s h / (8 sqrt(3)) times as much. The flow of the
// upper face makes the equivalent plastic strain: sqrt(2/3) times its norm, which of (1, -1/2) is sqrt(5/4).
#include <cmath>

#include "comparison.h"
#include "point_update.h"

using section_reference::column;
using section_reference::point_start;

template <class WIDTH>
struct Uniaxial : ::testing::Test {};
TYPED_TEST_SUITE(Uniaxial, both_widths, width_names);

namespace {

constexpr double E = 2.1e5, NU = 0.3, H = 0.02, SY = 235.0;
constexpr double SEVEN_DIGITS = 1e-6;

const double ROOT_3 = std::sqrt(3.0);

double equivalent(double face) { return std::sqrt(2.0 / 3.0) * std::fabs(face); }

section_reference::plate strip(double tangent_share) { return {H, SY, E, NU, tangent_share * E}; }

// Et / (1 - Et / E)
double plastic_modulus(double tangent_share) { return tangent_share * E / (1.0 - tangent_share); }

point_start on_branch(double s) {
  point_start start;
  start.ref = s;
  return start;
}

struct strip_case {
  double share, flow, direction, branch;
};
std::vector<strip_case> strip_cases() {
  std::vector<strip_case> all;
  for (const double share : {0.0, 0.01, 0.2}) {
    for (const double flow : {0.1, 1.0, 10.0}) {
      for (const double direction : {-1.0, 1.0}) {
        for (const double branch : {-1.0, 1.0}) all.push_back({share, flow, direction, branch});
      }
    }
  }
  return all;
}

// The six resultants, plastic strains and their equivalent, each over a scale; `level` is the trial over yielding.
template <int W>
void expect_held(const prepared_section& s, const SECTION_ANSWER<W>& a, const column& sig, const column& p, double ebar,
                 double level) {
  EXPECT_EQ(a.plastic, 1);
  EXPECT_WITHIN(section_reference::listed(without_units(s, column_of(a.sig))),
                section_reference::listed(without_units(s, sig)), level, SEVEN_DIGITS);
  EXPECT_WITHIN(
      section_reference::listed(strain_without_units(s, section_reference::to_local(column_of(a.ep), s.axes, W))),
      section_reference::listed(strain_without_units(s, p)), level, SEVEN_DIGITS);
  EXPECT_WITHIN(a.ebar, ebar, level * SY / E, SEVEN_DIGITS);
}

}  // namespace

TYPED_TEST(Uniaxial, PullStopsAtTheYieldStressTimesTheThicknessAndHardensByThePlasticModulus) {
  constexpr int W = TypeParam::value;
  for (const strip_case& c : strip_cases()) {
    const prepared_section s(strip(c.share));
    const double p = c.flow * SY / E, k = c.branch * 2.0 * p / (ROOT_3 * H);
    const double ebar = equivalent(std::sqrt(1.25) * (p + k * H / 2.0));
    column sig = column::Zero(W), flow = column::Zero(W);
    sig(0) = c.direction * H * (SY + plastic_modulus(c.share) * ebar);
    flow.head(2) << c.direction * p, -c.direction * p / 2.0;
    flow.segment(3, 2) << c.direction * k, -c.direction * k / 2.0;
    const SECTION_ANSWER<W> a = updated<W>(s, s.strains_of(sig) + flow, on_branch(c.branch));
    const double level = 1.0 + 2.0 * c.flow;
    expect_held(s, a, sig, flow, ebar, level);
    EXPECT_WITHIN(a.dkap, p / H, level * SY / E / H, SEVEN_DIGITS);  // sqrt(3)/2 k
  }
}

TYPED_TEST(Uniaxial, MomentStopsAtTheFullPlasticOneAndHardensByThePlasticModulus) {
  // sy h^2 / 4: one and a half times the moment of first yield in an elastic section.
  constexpr int W = TypeParam::value;
  for (const strip_case& c : strip_cases()) {
    const prepared_section s(strip(c.share));
    const double k = c.flow * 3.0 * SY / (E * H), p = c.branch * k * H / (8.0 * ROOT_3);
    const double ebar = equivalent(std::sqrt(1.25) * (p + k * H / 2.0));
    column sig = column::Zero(W), flow = column::Zero(W);
    sig(3) = c.direction * H * H / 4.0 * (SY + plastic_modulus(c.share) * ebar);
    flow.head(2) << c.direction * p, -c.direction * p / 2.0;
    flow.segment(3, 2) << c.direction * k, -c.direction * k / 2.0;
    const SECTION_ANSWER<W> a = updated<W>(s, s.strains_of(sig) + flow, on_branch(c.branch));
    const double level = 1.0 + 4.0 * c.flow;
    expect_held(s, a, sig, flow, ebar, level);
    EXPECT_WITHIN(a.dkap, k * ROOT_3 / 2.0, level * SY / E / H, SEVEN_DIGITS);
  }
}

TYPED_TEST(Uniaxial, ShearInThePlaneStopsAtTheYieldStressOverTheRootOfThree) {
  // The flow has one entry in the plane and one of twist, of which the equivalent increment takes half.
  constexpr int W = TypeParam::value;
  for (const strip_case& c : strip_cases()) {
    const prepared_section s(strip(0.0));
    const double p = c.flow * SY / E, k = c.branch * 2.0 * p / (ROOT_3 * H);
    column sig = column::Zero(W), flow = column::Zero(W);
    sig(2) = c.direction * SY * H / ROOT_3;
    flow(2) = c.direction * p;
    flow(5) = c.direction * k;
    const SECTION_ANSWER<W> a = updated<W>(s, s.strains_of(sig) + flow, on_branch(c.branch));
    expect_held(s, a, sig, flow, equivalent(p + k * H / 2.0), 1.0 + 2.0 * c.flow);
    EXPECT_WITHIN(a.dkap, std::fabs(k) / 2.0, (1.0 + 2.0 * c.flow) * SY / E / H, SEVEN_DIGITS);
  }
}

TYPED_TEST(Uniaxial, TwistStopsAtTheFullPlasticMomentOverTheRootOfThree) {
  constexpr int W = TypeParam::value;
  for (const strip_case& c : strip_cases()) {
    const prepared_section s(strip(0.0));
    const double k = c.flow * 3.0 * SY / (E * H), p = c.branch * k * H / (8.0 * ROOT_3);
    column sig = column::Zero(W), flow = column::Zero(W);
    sig(5) = c.direction * SY * H * H / 4.0 / ROOT_3;
    flow(2) = c.direction * p;
    flow(5) = c.direction * k;
    const SECTION_ANSWER<W> a = updated<W>(s, s.strains_of(sig) + flow, on_branch(c.branch));
    expect_held(s, a, sig, flow, equivalent(p + k * H / 2.0), 1.0 + 4.0 * c.flow);
    EXPECT_WITHIN(a.dkap, k / 2.0, (1.0 + 4.0 * c.flow) * SY / E / H, SEVEN_DIGITS);
  }
}

TEST(UniaxialShear, AcrossStopsAtTheYieldStressOverTheRootOfThree) {
  const prepared_section s(strip(0.0));
  for (const int entry : {6, 7}) {
    for (const double flow_size : {0.5, -3.0}) {
      column sig = column::Zero(8), flow = column::Zero(8);
      sig(entry) = std::copysign(SY * H / ROOT_3, flow_size);
      flow(entry) = flow_size * SY / E;
      const SECTION_ANSWER<8> a = updated<8>(s, s.strains_of(sig) + flow, {});
      expect_held(s, a, sig, flow, equivalent(flow_size * SY / E), 1.0 + 2.0 * std::fabs(flow_size));
      EXPECT_EQ(a.dkap, 0.0);
    }
  }
}

TYPED_TEST(Uniaxial, MixedProductIsZeroOfPureMembraneAndOfPureBending) {
  constexpr int W = TypeParam::value;
  support::seeded_random random(671);
  for (const bool bending : {false, true}) {
    const prepared_section s(strip(0.0));
    column eps = s.strains_of(s.random_resultants(random, W, 0.5));
    eps.segment(bending ? 0 : 3, 3).setZero();
    EXPECT_EQ(updated<W>(s, eps, on_branch(-1.0)).qtm, 0.0);
  }
}

TYPED_TEST(Uniaxial, MixedStatePicksItsBranchByRef) {
  // N and M of one sign: with ref positive the point comes to n^2 + m^2 + n m / sqrt 3 = 1 along the flow of that
  // surface. With ref negative the other flow is followed, to a different point of the same surface.
  constexpr int W = TypeParam::value;
  const prepared_section s(strip(0.0));
  column sig = column::Zero(W);
  sig(0) = 1.5L * s.p.N0();
  sig(3) = 1.2L * s.p.M0();
  const column eps = s.strains_of(sig);
  const double P14 = 1.0 / (2.0 * std::sqrt(3.0));
  for (const double ref : {1.0, -1.0}) {
    const SECTION_ANSWER<W> a = updated<W>(s, eps, on_branch(ref));
    const column n = without_units(s, column_of(a.sig));
    const column p = section_reference::to_local(column_of(a.ep), s.axes, W);
    // The plastic strain beside 2 P sig of the branch: entries 1 and 4.
    const double along1 = static_cast<double>((n(0) - n(1) / 2) + ref * P14 * (n(3) - n(4) / 2));
    const double along4 = static_cast<double>((n(3) - n(4) / 2) + ref * P14 * (n(0) - n(1) / 2));
    const double ratio = static_cast<double>(p(3) * s.p.M0() / (p(0) * s.p.N0()));
    EXPECT_WITHIN(ratio, along4 / along1, ratio, 1e-6) << ref;
    EXPECT_GT(a.qtm, 0.0);
  }
}
