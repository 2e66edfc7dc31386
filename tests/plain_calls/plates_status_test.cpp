// plates_status_test.cpp: every status of the calls of plates, from every call, with the answers untouched.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "finites/elements.h"
#include "gtest/gtest.h"
#include "plate_subjects.h"

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

// The arguments of all calls beside the plate.
struct arguments {
  double u[24] = {};
  double forces[4][6] = {};
  double point[3] = {0.5, 0.5, 0.0}, global[3] = {1.0, 2.0, 3.0}, local[3] = {-1.0, 2.0, 0.5};
  double temperature[2] = {10.0, -3.0};
};

// An answer of any type in a pattern of bytes that the call must leave alone on an error.
template <class ANSWER>
class guarded {
 public:
  guarded() { std::memset(bytes_, 0xA5, sizeof bytes_); }
  ANSWER* get() { return reinterpret_cast<ANSWER*>(bytes_ + sizeof(ANSWER)); }
  bool untouched() const {
    for (const unsigned char byte : bytes_) {
      if (byte != 0xA5) return false;
    }
    return true;
  }

 private:
  alignas(16) unsigned char bytes_[3 * sizeof(ANSWER)];
};

struct matrix {
  double values[24 * 24];
};
struct vector {
  double values[24];
};

struct plate_call {
  const char* name;
  // The status; whether the answer has its pattern still.
  std::function<finites_status(const finites_plate*, const arguments&, bool& untouched)> run;
};

template <class ANSWER, class CALL>
plate_call call_of(const char* name, CALL call) {
  return {name, [call](const finites_plate* plate, const arguments& a, bool& untouched) {
            guarded<ANSWER> answer;
            const finites_status status = call(plate, a, answer.get());
            untouched = answer.untouched();
            return status;
          }};
}

template <class ANSWER, class CALL>
plate_call values_of(const char* name, CALL call) {
  return call_of<ANSWER>(
      name, [call](const finites_plate* p, const arguments& a, ANSWER* to) { return call(p, a, to->values); });
}

std::vector<plate_call> all_calls() {
  using P = const finites_plate*;
  using A = const arguments&;
  return {
      values_of<matrix>("stiffness", [](P p, A, double* to) { return finites_plate_stiffness(p, to); }),
      values_of<matrix>("mass", [](P p, A, double* to) { return finites_plate_mass(p, to); }),
      values_of<matrix>("geometric", [](P p, A a, double* to) { return finites_plate_geometric(p, a.u, to); }),
      values_of<matrix>("geometric of forces",
                        [](P p, A a, double* to) { return finites_plate_geometric_of_forces(p, a.forces, to); }),
      values_of<vector>("forces", [](P p, A a, double* to) { return finites_plate_forces(p, a.u, to); }),
      values_of<vector>("surface load",
                        [](P p, A a, double* to) { return finites_plate_surface_load(p, a.global, a.local, to); }),
      values_of<vector>("body load", [](P p, A a, double* to) { return finites_plate_body_load(p, a.global, to); }),
      values_of<vector>("temperature load",
                        [](P p, A a, double* to) {
                          return finites_plate_temperature_load(p, a.temperature[0], a.temperature[1], to);
                        }),
      values_of<vector>(
          "point load",
          [](P p, A a, double* to) { return finites_plate_point_load(p, a.point, a.global, a.local, to); }),
      call_of<finites_plate_measures>("measure",
                                      [](P p, A, finites_plate_measures* to) { return finites_plate_measure(p, to); }),
      call_of<finites_location>("locate",
                                [](P p, A a, finites_location* to) { return finites_plate_locate(p, a.point, to); }),
      call_of<finites_plate_results>(
          "result",
          [](P p, A a, finites_plate_results* to) { return finites_plate_result(p, a.u, a.temperature, to); }),
  };
}

void expect_status(const finites_plate& plate, const arguments& a, finites_status expected, const std::string& what,
                   const std::vector<std::string>& of = {}) {
  for (const plate_call& call : all_calls()) {
    if (!of.empty() && std::find(of.begin(), of.end(), call.name) == of.end()) continue;
    bool untouched = false;
    EXPECT_EQ(call.run(&plate, a, untouched), expected) << call.name << ": " << what;
    EXPECT_EQ(untouched, expected != FINITES_OK) << call.name << ": " << what;
  }
}

finites_plate orthotropic(int theory = FINITES_THICK) {
  finites_plate plate = subjects::rectangle(4, theory, 2.0, 1.0);
  plate.orthotropic = 1;
  plate.nu = 0.25;
  plate.E2 = plate.E / 4.0;
  plate.G12 = plate.G13 = plate.G23 = plate.E / 5.0;
  return plate;
}

using change = std::function<void(finites_plate&)>;

void expect(finites_status expected, const std::string& what, const finites_plate& good, const change& spoil) {
  finites_plate plate = good;
  spoil(plate);
  expect_status(plate, {}, expected, what);
}

const finites_plate& quadrilateral() {
  static const finites_plate plate = subjects::rectangle(4, FINITES_THICK, 2.0, 1.0);
  return plate;
}
const finites_plate& triangle() {
  static const finites_plate plate = subjects::rectangle(3, FINITES_THIN, 2.0, 1.0);
  return plate;
}

void put(finites_plate& p, int node, double x, double y, double z) {
  p.xyz[node - 1][0] = x;
  p.xyz[node - 1][1] = y;
  p.xyz[node - 1][2] = z;
}

}  // namespace

TEST(PlateStatus, GoodOnesAreAnswered) {
  expect_status(quadrilateral(), {}, FINITES_OK, "quadrilateral");
  expect_status(triangle(), {}, FINITES_OK, "triangle");
  for (const int theory : {FINITES_THICK, FINITES_THIN, FINITES_MEMBRANE, FINITES_MEMBRANE_REDUCED}) {
    expect_status(orthotropic(theory), {}, FINITES_OK, "orthotropic");
  }
}

TEST(PlateStatus, Null) {
  for (const plate_call& call : all_calls()) {
    bool untouched = false;
    EXPECT_EQ(call.run(nullptr, {}, untouched), FINITES_NULL) << call.name;
    EXPECT_TRUE(untouched) << call.name;
  }
  const finites_plate& p = quadrilateral();
  const double u[24] = {}, point[3] = {}, forces[4][6] = {};
  double to[24 * 24];
  finites_plate_init(nullptr);
  EXPECT_EQ(finites_plate_stiffness(&p, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_mass(&p, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_geometric(&p, nullptr, to), FINITES_NULL);
  EXPECT_EQ(finites_plate_geometric(&p, u, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_geometric_of_forces(&p, nullptr, to), FINITES_NULL);
  EXPECT_EQ(finites_plate_geometric_of_forces(&p, forces, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_forces(&p, nullptr, to), FINITES_NULL);
  EXPECT_EQ(finites_plate_forces(&p, u, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_surface_load(&p, point, point, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_body_load(&p, nullptr, to), FINITES_NULL);
  EXPECT_EQ(finites_plate_body_load(&p, point, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_temperature_load(&p, 1.0, 0.0, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_point_load(&p, nullptr, point, point, to), FINITES_NULL);
  EXPECT_EQ(finites_plate_point_load(&p, point, point, point, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_measure(&p, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_locate(&p, nullptr, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_result(&p, u, nullptr, nullptr), FINITES_NULL);
  finites_plate_results results;
  EXPECT_EQ(finites_plate_result(&p, nullptr, nullptr, &results), FINITES_NULL);
}

TEST(PlateStatus, NodesAndCodes) {
  for (const int nodes : {-1, 0, 2, 5, 8}) {
    expect(FINITES_NODES, "nodes", quadrilateral(), [=](finites_plate& p) { p.nodes = nodes; });
  }
  for (const int theory : {-1, 3, 97, 99}) {
    expect(FINITES_BAD_CODE, "theory", quadrilateral(), [=](finites_plate& p) { p.theory = theory; });
  }
  for (const int code : {-1, 2}) {
    expect(FINITES_BAD_CODE, "orthotropic", orthotropic(), [=](finites_plate& p) { p.orthotropic = code; });
  }
}

// Every number that a plate has, by its place.
TEST(PlateStatus, NumbersOfThePlate) {
  const std::vector<double finites_plate::*> common = {&finites_plate::thickness,
                                                       &finites_plate::E,
                                                       &finites_plate::nu,
                                                       &finites_plate::density,
                                                       &finites_plate::expansion,
                                                       &finites_plate::membrane_factor,
                                                       &finites_plate::bending_factor,
                                                       &finites_plate::shear_factor,
                                                       &finites_plate::mass_factor};
  const std::vector<double finites_plate::*> second = {
      &finites_plate::E2,    &finites_plate::nu21,         &finites_plate::G12,
      &finites_plate::G13,   &finites_plate::G23,          &finites_plate::expansion2,
      &finites_plate::angle, &finites_plate::twist_factor, &finites_plate::inplane_shear_factor};
  const auto spoil = [](const finites_plate& good, double finites_plate::*field) {
    expect(FINITES_NAN, "NaN", good, [=](finites_plate& p) { p.*field = NOT_A_NUMBER; });
    expect(FINITES_NAN, "infinite", good, [=](finites_plate& p) { p.*field = -ENDLESS; });
    expect(FINITES_RANGE, "above", good, [=](finites_plate& p) { p.*field = 1.01e30; });
    expect(FINITES_RANGE, "below", good, [=](finites_plate& p) { p.*field = -1.01e30; });
  };
  for (const auto field : common) spoil(quadrilateral(), field);
  for (const auto field : second) spoil(orthotropic(), field);
  // An isotropic plate has no second direction, a thin one no transverse shear.
  for (const auto field : second) {
    expect(FINITES_OK, "not read", quadrilateral(), [=](finites_plate& p) { p.*field = NOT_A_NUMBER; });
  }
  expect(FINITES_OK, "not read", orthotropic(FINITES_THIN), [](finites_plate& p) { p.G13 = p.G23 = NOT_A_NUMBER; });
}

TEST(PlateStatus, NumbersOfNodesAndOffsets) {
  for (int m = 0; m < 4; ++m) {
    for (int i = 0; i < 3; ++i) {
      expect(FINITES_NAN, "xyz", quadrilateral(), [=](finites_plate& p) { p.xyz[m][i] = NOT_A_NUMBER; });
      expect(FINITES_RANGE, "xyz", quadrilateral(), [=](finites_plate& p) { p.xyz[m][i] = -2e30; });
      expect(FINITES_NAN, "offset", quadrilateral(), [=](finites_plate& p) { p.offset[m][i] = ENDLESS; });
      expect(FINITES_RANGE, "offset", quadrilateral(), [=](finites_plate& p) { p.offset[m][i] = 2e30; });
      const finites_status status = m < 3 ? FINITES_NAN : FINITES_OK;
      expect(status, "of a triangle", triangle(), [=](finites_plate& p) { p.xyz[m][i] = NOT_A_NUMBER; });
      expect(status, "of a triangle", triangle(), [=](finites_plate& p) { p.offset[m][i] = NOT_A_NUMBER; });
    }
  }
}

TEST(PlateStatus, NumbersOfTheOtherArguments) {
  for (const double bad : {NOT_A_NUMBER, ENDLESS, 2e30, -2e30}) {
    const finites_status status = std::isfinite(bad) ? FINITES_RANGE : FINITES_NAN;
    for (int i = 0; i < 24; ++i) {
      arguments a;
      a.u[i] = bad;
      expect_status(quadrilateral(), a, status, "u", {"geometric", "forces", "result"});
      expect_status(triangle(), a, i < 18 ? status : FINITES_OK, "u", {"geometric", "forces", "result"});
      arguments f;
      f.forces[i / 6][i % 6] = bad;
      expect_status(quadrilateral(), f, status, "forces", {"geometric of forces"});
    }
    for (int i = 0; i < 3; ++i) {
      arguments a, b, c;
      a.global[i] = bad;
      expect_status(quadrilateral(), a, status, "global", {"surface load", "body load", "point load"});
      b.local[i] = bad;
      expect_status(quadrilateral(), b, status, "local", {"surface load", "point load"});
      c.point[i] = bad;
      expect_status(quadrilateral(), c, status, "point", {"point load", "locate"});
    }
    for (int i = 0; i < 2; ++i) {
      arguments a;
      a.temperature[i] = bad;
      expect_status(quadrilateral(), a, status, "temperature", {"temperature load", "result"});
    }
  }
}

TEST(PlateStatus, Section) {
  for (const double h : {0.0, -0.1}) {
    expect(FINITES_THICKNESS, "h", quadrilateral(), [=](finites_plate& p) { p.thickness = h; });
  }
  for (const double E : {0.0, -1.0}) {
    expect(FINITES_MODULUS, "E", quadrilateral(), [=](finites_plate& p) { p.E = E; });
    for (const auto modulus : {&finites_plate::E2, &finites_plate::G12, &finites_plate::G13, &finites_plate::G23}) {
      expect(FINITES_MODULUS, "modulus", orthotropic(), [=](finites_plate& p) { p.*modulus = E; });
    }
    expect(FINITES_OK, "G13", orthotropic(FINITES_THIN), [=](finites_plate& p) { p.G13 = p.G23 = E; });
  }
  for (const double nu : {-1.0, 0.51}) {
    expect(FINITES_POISSON, "nu", quadrilateral(), [=](finites_plate& p) { p.nu = nu; });
  }
  for (const double nu : {-0.99, 0.5}) {
    expect(FINITES_OK, "nu", quadrilateral(), [=](finites_plate& p) { p.nu = nu; });
  }
  // nu12 = 2 and E2 = E / 4: nu21 = 1 / 2, whose product is 1.
  expect(FINITES_POISSON, "nu12 nu21", orthotropic(), [](finites_plate& p) { p.nu = 2.0; });
  expect(FINITES_OK, "nu12 nu21", orthotropic(), [](finites_plate& p) { p.nu = 1.9; });
  expect(FINITES_OK, "symmetry", orthotropic(), [](finites_plate& p) { p.nu21 = p.nu / 4.0 * (1.0 + 1e-7); });
  expect(FINITES_POISSON, "symmetry", orthotropic(), [](finites_plate& p) { p.nu21 = p.nu / 4.0 * (1.0 + 1e-5); });
  expect(FINITES_POISSON, "symmetry", orthotropic(), [](finites_plate& p) {
    p.nu = 0.0;
    p.nu21 = 0.1;
  });
  expect(FINITES_DENSITY, "density", quadrilateral(), [](finites_plate& p) { p.density = -1e-9; });
}

TEST(PlateStatus, Factors) {
  for (const auto factor : {&finites_plate::membrane_factor, &finites_plate::bending_factor,
                            &finites_plate::shear_factor, &finites_plate::mass_factor}) {
    expect(FINITES_FACTOR, "negative", quadrilateral(), [=](finites_plate& p) { p.*factor = -0.1; });
    expect(FINITES_OK, "0", quadrilateral(), [=](finites_plate& p) { p.*factor = 0.0; });
  }
  for (const auto factor : {&finites_plate::twist_factor, &finites_plate::inplane_shear_factor}) {
    expect(FINITES_FACTOR, "negative", orthotropic(), [=](finites_plate& p) { p.*factor = -0.1; });
    expect(FINITES_OK, "0", orthotropic(), [=](finites_plate& p) { p.*factor = 0.0; });
    expect(FINITES_RANGE, "small", orthotropic(), [=](finites_plate& p) { p.*factor = 1e-31; });
  }
  expect(FINITES_FACTOR, "no shear", orthotropic(), [](finites_plate& p) { p.shear_factor = 0.0; });
  expect(FINITES_OK, "no shear", orthotropic(FINITES_THIN), [](finites_plate& p) { p.shear_factor = 0.0; });
}

TEST(PlateStatus, SmallNumbers) {
  for (const auto field : {&finites_plate::thickness, &finites_plate::E, &finites_plate::membrane_factor,
                           &finites_plate::bending_factor, &finites_plate::shear_factor}) {
    expect(FINITES_RANGE, "small", quadrilateral(), [=](finites_plate& p) { p.*field = 0.9e-30; });
  }
  for (const auto field : {&finites_plate::G12, &finites_plate::G13, &finites_plate::G23}) {
    expect(FINITES_RANGE, "small", orthotropic(), [=](finites_plate& p) { p.*field = 0.9e-30; });
  }
  expect(FINITES_RANGE, "ratio", orthotropic(), [](finites_plate& p) { p.G13 = 1.1e10 * p.G23; });
  expect(FINITES_OK, "ratio", orthotropic(), [](finites_plate& p) { p.G23 = 0.9e10 * p.G13; });
  expect(FINITES_OK, "ratio", orthotropic(FINITES_THIN), [](finites_plate& p) { p.G13 = 1e20 * p.G23; });
  const auto shrink = [](double factor) {
    return [factor](finites_plate& p) {
      for (auto& node : p.xyz) {
        for (double& x : node) x *= factor;
      }
    };
  };
  expect(FINITES_RANGE, "sides of 1e-31", quadrilateral(), shrink(1e-31));
  expect(FINITES_OK, "sides of 1e-29", quadrilateral(), shrink(1e-29));
}

TEST(PlateStatus, CoincidentNodes) {
  for (int m = 0; m < 4; ++m) {
    for (int k = 0; k < 4; ++k) {
      if (m == k) continue;
      expect(FINITES_COINCIDENT, "nodes", quadrilateral(),
             [=](finites_plate& p) { std::copy_n(p.xyz[m], 3, p.xyz[k]); });
      if (m < 3 && k < 3) {
        expect(FINITES_COINCIDENT, "nodes", triangle(), [=](finites_plate& p) { std::copy_n(p.xyz[m], 3, p.xyz[k]); });
      }
    }
  }
  // Offsets part nodes at one place, and bring others together.
  expect(FINITES_OK, "parted", quadrilateral(), [](finites_plate& p) {
    p.offset[2][1] = p.xyz[2][1];
    p.xyz[2][1] = 0.0;
  });
  expect(FINITES_COINCIDENT, "together", quadrilateral(), [](finites_plate& p) { p.offset[2][1] = -p.xyz[2][1]; });
}

TEST(PlateStatus, DegenerateShapes) {
  expect(FINITES_DEGENERATE, "on a line", triangle(), [](finites_plate& p) { put(p, 3, 0.7, 0.0, 0.0); });
  expect(FINITES_DEGENERATE, "on a line, rounded", triangle(), [](finites_plate& p) {
    put(p, 1, 0.1, 0.2, 0.3);
    put(p, 2, 0.4, 0.8, 1.2);
    put(p, 3, 0.3, 0.6, 0.9);
  });
  expect(FINITES_DEGENERATE, "on a line", quadrilateral(), [](finites_plate& p) {
    for (int m = 1; m <= 4; ++m) put(p, m, 0.3 * m, 0.1 * m * 3.0, -0.7 * m);
  });
  expect(FINITES_DEGENERATE, "three on a line", quadrilateral(), [](finites_plate& p) { put(p, 3, 1.0, 0.5, 0.0); });
  expect(FINITES_DEGENERATE, "re-entrant", quadrilateral(), [](finites_plate& p) { put(p, 3, 0.5, 0.25, 0.0); });
  for (int m = 1; m <= 4; ++m) {  // a corner drawn past the diagonal of its neighbours
    expect(FINITES_DEGENERATE, "re-entrant", quadrilateral(), [=](finites_plate& p) {
      put(p, m, 1.0 + (p.xyz[m - 1][0] < 1.0 ? 0.2 : -0.2), p.xyz[m - 1][1] < 0.5 ? 0.6 : 0.4, 0.0);
    });
  }
  expect(FINITES_DEGENERATE, "crossed", quadrilateral(), [](finites_plate& p) {
    put(p, 3, 0.0, 1.0, 0.0);
    put(p, 4, 2.0, 1.0, 0.0);
  });
}

TEST(PlateStatus, AllowedShapes) {
  expect(FINITES_OK, "warped", quadrilateral(), [](finites_plate& p) { put(p, 3, 2.0, 1.0, 0.8); });
  expect(FINITES_OK, "clockwise", quadrilateral(), [](finites_plate& p) {
    put(p, 2, 0.0, 1.0, 0.0);
    put(p, 4, 2.0, 0.0, 0.0);
  });
  expect(FINITES_OK, "needle", triangle(), [](finites_plate& p) { put(p, 3, 1.0, 1e-9, 0.0); });
}
