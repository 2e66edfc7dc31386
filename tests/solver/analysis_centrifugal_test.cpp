// Members that rotate: loads that are linear along them. A member is exact between its ends, so that one member and the
// same one cut in four must agree; and closed forms.
#include <gtest/gtest.h>

#include <cmath>

#include "elements/member_field.h"
#include "frame_decks.h"
#include "run_support.h"

using namespace frame_test;
using solver::station;

namespace {

// A beam in space between two clamps, in equal parts, with the connections of its ends.
struct leaning_beam {
  int parts = 1;
  std::string type = "B31", first_end, second_end;  // data of the releases without the element
  std::array<double, 4> fixity{1, 1, 1, 1};
  // The factor of a spring 3 E I r / (L (1 - r)) on a part of the length.
  std::string factor(std::size_t i) const { return number(fixity[i] / (fixity[i] + parts * (1 - fixity[i]))); }
  std::string line(const std::string& keyword, int element, const std::string& data) const {
    return data.empty() ? "" : keyword + "\n" + std::to_string(element) + ", " + data + "\n";
  }
  std::string deck() const {
    std::string text = "*NODE\n";
    for (int i = 0; i <= parts; ++i) {
      const double xi = static_cast<double>(i) / parts;
      text +=
          std::to_string(i + 1) + ", " + number(1 + 3 * xi) + ", " + number(0.5 + xi) + ", " + number(4 * xi) + "\n";
    }
    text += "*ELEMENT, TYPE=" + type + ", ELSET=BEAM\n";
    for (int i = 1; i <= parts; ++i) {
      text += std::to_string(i) + ", " + std::to_string(i) + ", " + std::to_string(i + 1) + "\n";
    }
    text +=
        "*MATERIAL, NAME=M\n*ELASTIC\n1000, 0.25\n*DENSITY\n3\n*BEAM GENERAL SECTION, ELSET=BEAM, MATERIAL=M\n0.5, "
        "0.3, 0, 0.7, 0.4\n0, 1, 0.2\n*TRANSVERSE SHEAR STIFFNESS\n150, 90\n";
    text += line("*FIXITY", 1, "S1, " + factor(0) + ", " + factor(1));
    text += line("*FIXITY", parts, "S2, " + factor(2) + ", " + factor(3));
    text += line("*RELEASE", 1, first_end) + line("*RELEASE", parts, second_end);
    return text + "*BOUNDARY\n1, ENCASTRE\n" + std::to_string(parts + 1) +
           ", ENCASTRE\n*STEP\n*STATIC\n*DLOAD\nBEAM, CENTRIF, 5, 0.2, -0.3, 0.1, 0.3, -0.2, 1\nBEAM, PX, 2\n*END "
           "STEP\n";
  }
};

double size_of(const std::array<double, 3>& v) { return std::hypot(v[0], v[1], v[2]); }

void expect_the_same_in_parts(leaning_beam b) {
  const solved whole = solve(read(b.deck()));
  b.parts = 4;
  const solved cut = solve(read(b.deck()));
  const solver::member_field& field = whole.results.fields.at(0);
  for (std::size_t i = 0; i < 4; ++i) {
    for (const double within : {0.0, 0.3, 0.9}) {
      const station a = station_at(field, (static_cast<double>(i) + within) / 4);
      const station c = station_at(cut.results.fields.at(i), within);
      const std::string place = b.first_end + " " + b.second_end + " part " + std::to_string(i);
      for (std::size_t d = 0; d < 3; ++d) {
        EXPECT_WITHIN(a.displacement[d], c.displacement[d], 1e-3 + size_of(c.displacement), 1e-9) << place;
        EXPECT_WITHIN(a.rotation[d], c.rotation[d], 1e-3 + size_of(c.rotation), 1e-9) << place;
      }
      for (std::size_t d = 0; d < 6; ++d)
        EXPECT_WITHIN(a.force[d], c.force[d], 100.0, 1e-10) << place << " force " << d;
    }
  }
}

}  // namespace

TEST(AnalysisCentrifugal, AMemberAndItsParts) {
  expect_the_same_in_parts({});
  leaning_beam slender;
  slender.type = "B33";
  expect_the_same_in_parts(slender);
  for (const auto& f : {std::array{0.4, 0.7, 0.2, 0.9}, std::array{0.0, 0.5, 1.0, 1.0}}) {
    leaning_beam b;
    b.fixity = f;
    expect_the_same_in_parts(b);
  }
  for (const auto& [first, second] :
       {std::pair{"S1, M1-M2", "S2, M1"}, std::pair{"", "S2, N"}, std::pair{"S1, V1", ""}, std::pair{"", "S2, V2"}}) {
    leaning_beam b;
    b.first_end = first;
    b.second_end = second;
    expect_the_same_in_parts(b);
  }
}

// Forces at the supports: rho A omega^2 times length times the way from the axis to the middle.
TEST(AnalysisCentrifugal, Resultant) {
  leaning_beam b;
  std::string text = b.deck();
  text.replace(text.find("BEAM, CENTRIF"), text.find("*END STEP") - text.find("BEAM, CENTRIF"),
               "BEAM, CENTRIF, 5, 0, 0, 7, 0, 0, 2\n");
  const solved s = solve(read(text));
  const double mass = 3 * 0.5 * std::sqrt(9.0 + 1 + 16);
  EXPECT_WITHIN(s.reaction(0, 'x') + s.reaction(1, 'x'), -5 * mass * 2.5, 5 * mass, 1e-13);
  EXPECT_WITHIN(s.reaction(0, 'y') + s.reaction(1, 'y'), -5 * mass * 1.0, 5 * mass, 1e-13);
  EXPECT_WITHIN(s.reaction(0, 'z') + s.reaction(1, 'z'), 0.0, 5 * mass, 1e-13);
}

// A bar of one element or many: u = rho omega^2 (3 L^2 x - x^3) / (6 E), N = rho A omega^2 (L^2 - x^2) / 2.
TEST(AnalysisCentrifugal, ARotatingBar) {
  for (const std::string type : {"B33", "T3D2"}) {
    const double L = 4, E = 1000, A = 0.5, rho = 3, omega2 = 2;
    const std::string section = type == "B33" ? "*BEAM GENERAL SECTION, ELSET=BAR, MATERIAL=M\n0.5, 1, 0, 1, 1\n"
                                              : "*SOLID SECTION, ELSET=BAR, MATERIAL=M\n0.5\n";
    const std::string deck = "*NODE\n1, 0, 0, 0\n2, 4, 0, 0\n*ELEMENT, TYPE=" + type +
                             ", ELSET=BAR\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1000, 0\n*DENSITY\n3\n" + section +
                             "*BOUNDARY\n1, 1, 6\n2, 2, 6\n*STEP\n*STATIC\n*DLOAD\nBAR, CENTRIF, 2, 0, 5, 0, 0, 1, "
                             "0\n*END STEP\n";
    const solved s = solve(read(deck));
    const solver::member_field& f = s.results.fields.at(0);
    for (const double xi : {0.0, 0.25, 0.6, 1.0}) {
      const double x = xi * L;
      const station at = station_at(f, xi);
      EXPECT_WITHIN(at.displacement[0], rho * omega2 * (3 * L * L * x - x * x * x) / (6 * E), 0.1, 1e-13) << type << xi;
      EXPECT_WITHIN(at.force[0], rho * A * omega2 * (L * L - x * x) / 2, 10.0, 1e-13) << type << xi;
    }
    EXPECT_WITHIN(range_of_force(f, 0).largest.value, rho * A * omega2 * L * L / 2, 10.0, 1e-13) << type;
  }
}

// A cantilever that flaps: between Southwell's bound, omega0^2 + Omega^2 of the string, and Rayleigh's quotient with
// the mode at rest, omega0^2 + 1.1934 Omega^2 (the integral of (1 - x^2) w'^2 / 2 by that of w^2, taken here by
// Simpson's rule over w = cosh kx - cos kx - s (sinh kx - sin kx), k 1.8751).
TEST(AnalysisCentrifugal, ForcesOfRotationStiffen) {
  const int parts = 20;
  std::string head = "*NODE\n", beams = "*ELEMENT, TYPE=B33, ELSET=B\n";
  for (int i = 0; i <= parts; ++i) {
    head += std::to_string(i + 1) + ", " + number(static_cast<double>(i) / parts) + ", 0, 0\n";
    if (i < parts) beams += std::to_string(i + 1) + ", " + std::to_string(i + 1) + ", " + std::to_string(i + 2) + "\n";
  }
  const std::string rest =
      "*MATERIAL, NAME=M\n*ELASTIC\n1000, 0\n*DENSITY\n1\n*BEAM GENERAL SECTION, ELSET=B, MATERIAL=M\n1, 1e-3, 0, "
      "1e-3, 1e-3\n0, 1, 0\n*BOUNDARY\n1, 1, 6\n";
  const std::string spin = "*STEP\n*STATIC\n*DLOAD\nB, CENTRIF, 1, 0, 0, 0, 0, 0, 1\n*END STEP\n";
  const std::string look = "*FREQUENCY\n1\n*END STEP\n";
  const auto squared = [](double f) { return std::pow(2 * std::acos(-1.0) * f, 2); };
  const run_test::ran r = run_test::run(head + beams + rest + "*STEP\n" + look + spin + "*STEP, PERTURBATION\n" + look);
  const double at_rest = squared(r.modes(1).at(0)), turning = squared(r.modes(3).at(0));

  const double k = 1.8751040687, s = (std::cosh(k) + std::cos(k)) / (std::sinh(k) + std::sin(k));
  double above = 0, below = 0;
  constexpr int INTERVALS = 200;
  for (int i = 0; i <= INTERVALS; ++i) {
    const double x = static_cast<double>(i) / INTERVALS, weight = i == 0 || i == INTERVALS ? 1 : i % 2 == 1 ? 4 : 2;
    const double w = std::cosh(k * x) - std::cos(k * x) - s * (std::sinh(k * x) - std::sin(k * x));
    const double slope = k * (std::sinh(k * x) + std::sin(k * x) - s * (std::cosh(k * x) - std::cos(k * x)));
    above += weight * (1 - x * x) / 2 * slope * slope;
    below += weight * w * w;
  }
  EXPECT_NEAR(at_rest, std::pow(k, 4), 0.03);  // the rotary inertia of the section, 1e-3 A L^2, takes its share
  EXPECT_GT(turning, at_rest + 1);
  EXPECT_LT(turning, at_rest + above / below);
  EXPECT_GT(turning, at_rest + 0.98 * above / below);
}

TEST(AnalysisCentrifugal, CablesAreRefused) {
  const std::string deck =
      "*NODE\n1, 0, 0, 0\n2, 4, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=BAR\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1000, "
      "0\n*DENSITY\n3\n*CABLE SECTION, ELSET=BAR, MATERIAL=M\n1, 4.1\n*BOUNDARY\n1, 1, 3\n2, 1, 3\n*STEP\n*STATIC\n"
      "*DLOAD\nBAR, CENTRIF, 2, 0, 5, 0, 0, 1, 0\n*END STEP\n";
  try {
    read(deck);
    FAIL();
  } catch (const std::exception& error) {
    EXPECT_NE(std::string(error.what()).find("'CENTRIF' on element 1: a cable hangs under a uniform load"),
              std::string::npos)
        << error.what();
  }
}
