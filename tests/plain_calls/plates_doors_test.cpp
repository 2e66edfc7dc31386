// plates_doors_test.cpp: the plain calls of plates give the bits of FINITES.
#include <cstring>

#include "finites/elements.h"
#include "finites/fields.h"
#include "gtest/gtest.h"
#include "plate_model.h"
#include "plate_subjects.h"

namespace {

using subjects::as_numbers;
using subjects::plate_kind;
using support::plate_description;
using support::plate_model;
using support::seeded_random;
using vector = std::vector<double>;

constexpr int PLATES_OF_A_KIND = 50;  // of 48 kinds

void expect_bits(const char* what, const vector& actual, const vector& expected) {
  ASSERT_EQ(actual.size(), expected.size()) << what;
  for (std::size_t i = 0; i < actual.size(); ++i) {
    ASSERT_EQ(std::memcmp(&actual[i], &expected[i], sizeof(double)), 0)
        << what << ", place " << i << ": " << actual[i] << " in place of " << expected[i];
  }
}

vector negative(vector matrix) {
  for (double& x : matrix) x = 0.0 - x;
  return matrix;
}

// One plate at both doors.
class doors {
 public:
  doors(const plate_description& description, seeded_random& random)
      : description_(description), model_({description}), plate_(as_numbers(description)), random_(random) {}

  void compare_matrices() {
    const std::size_t n = order();
    vector K(n * n), M(n * n), KG(n * n);
    EXPECT_EQ(finites_plate_stiffness(&plate_, K.data()), FINITES_OK);
    expect_bits("stiffness", K, model_.stiffness(1));
    EXPECT_EQ(finites_plate_mass(&plate_, M.data()), FINITES_OK);
    expect_bits("mass", M, model_.mass(1));

    const vector u = displacements();
    model_.set_displacements(u);
    EXPECT_EQ(finites_plate_geometric(&plate_, u.data(), KG.data()), FINITES_OK);
    expect_bits("geometric", KG, negative(model_.matrix(OP_GEOMETRIC, 1)));

    double forces[4][6];
    model_.allocate_state();
    for (int p = 0; p < 4; ++p) {
      for (int i = 0; i < 6; ++i) {
        forces[p][i] = random_.uniform(-5.0, 5.0);
        model_.state(1).STORED_NODAL_FORCES(i + 1, p + 1) = forces[p][i];
      }
    }
    EXPECT_EQ(finites_plate_geometric_of_forces(&plate_, forces, KG.data()), FINITES_OK);
    expect_bits("geometric of forces", KG, negative(model_.matrix(OP_GEOMETRIC_STORED, 1)));
  }

  void compare_vectors() {
    const vector u = displacements();
    vector F(order());
    EXPECT_EQ(finites_plate_forces(&plate_, u.data(), F.data()), FINITES_OK);
    expect_bits("forces", F, model_.internal_forces(1, u));

    const vector q = random_.vector(6, 3.0);
    EXPECT_EQ(finites_plate_surface_load(&plate_, &q[0], &q[3], F.data()), FINITES_OK);
    expect_bits("surface load", F, model_.loads(OP_LOADS, 1, q));
    EXPECT_EQ(finites_plate_surface_load(&plate_, &q[0], nullptr, F.data()), FINITES_OK);
    expect_bits("global surface load", F, model_.loads(OP_LOADS, 1, {q[0], q[1], q[2]}));
    EXPECT_EQ(finites_plate_surface_load(&plate_, nullptr, &q[3], F.data()), FINITES_OK);
    expect_bits("local surface load", F, model_.loads(OP_LOADS, 1, {0.0, 0.0, 0.0, q[3], q[4], q[5]}));
    EXPECT_EQ(finites_plate_body_load(&plate_, &q[1], F.data()), FINITES_OK);
    expect_bits("body load", F, model_.loads(OP_BODY_LOAD, 1, {q[1], q[2], q[3]}));

    const double change = random_.uniform(-50.0, 50.0), difference = random_.uniform(-50.0, 50.0);
    EXPECT_EQ(finites_plate_temperature_load(&plate_, change, difference, F.data()), FINITES_OK);
    expect_bits("temperature load", F, model_.loads(OP_TEMPERATURE_LOAD, 1, {change, difference}));

    vector data = point();
    data.insert(data.end(), q.begin(), q.end());
    EXPECT_EQ(finites_plate_point_load(&plate_, &data[0], &q[0], &q[3], F.data()), FINITES_OK);
    expect_bits("point load", F, model_.loads(OP_POINT_LOAD, 1, data));
  }

  void compare_results() {
    const vector u = displacements();
    const double temperature[2] = {random_.uniform(-50.0, 50.0), random_.uniform(-50.0, 50.0)};
    finites_plate_results results;
    EXPECT_EQ(finites_plate_result(&plate_, u.data(), temperature, &results), FINITES_OK);
    compare_records(results, model_.results(1, u, temperature[0], temperature[1]));
    EXPECT_EQ(finites_plate_result(&plate_, u.data(), nullptr, &results), FINITES_OK);
    compare_records(results, model_.results(1, u));
  }

  // The records of the protocol are in single precision.
  void compare_measures() {
    finites_plate with_weight = plate_;
    with_weight.density = description_.unit_weight;
    finites_plate_measures measures;
    EXPECT_EQ(finites_plate_measure(&with_weight, &measures), FINITES_OK);
    double data[12] = {}, forces[24] = {}, matrix[24 * 24] = {};
    model_.call(OP_GEOMETRY, 1, data, forces, matrix);
    EXPECT_EQ(static_cast<float>(measures.area), model_.plate(1).AREA);
    EXPECT_EQ(static_cast<float>(measures.mass), model_.plate(1).FACTORED_WEIGHT);
    EXPECT_EQ(static_cast<float>(measures.volume * description_.unit_weight), model_.plate(1).WEIGHT);

    for (int i = 0; i < 4; ++i) {
      const vector p = point();
      std::copy(p.begin(), p.end(), data);
      model_.call(OP_POINT_LOCATION, 1, data, forces, matrix);
      finites_location location;
      EXPECT_EQ(finites_plate_locate(&plate_, p.data(), &location), FINITES_OK);
      EXPECT_EQ(location.inside, data[9] == 0.0 ? 1 : 0);
      EXPECT_EQ(static_cast<double>(location.above), data[10]);
      expect_bits("distance", {location.distance}, {data[11]});
    }
  }

 private:
  std::size_t order() const { return static_cast<std::size_t>(6 * plate_.nodes); }
  vector displacements() { return subjects::random_displacements(random_, plate_.nodes); }

  // A point near the element.
  vector point() {
    vector p(3);
    for (std::size_t i = 0; i < 3; ++i) {
      const double s = random_.uniform(0.0, 1.0), t = random_.uniform(0.0, 1.0);
      const auto at = [&](int m) { return plate_.xyz[m][i] + plate_.offset[m][i]; };
      p[i] = at(0) + s * (at(1) - at(0)) + t * (at(2) - at(0)) + random_.uniform(-0.1, 0.1);
    }
    return p;
  }

  static void compare_surface(const finites_surface& s, const double* strain, const double* stress,
                              const double* principal, const double* plastic) {
    expect_bits("strain", {s.strain, s.strain + 3}, {strain, strain + 3});
    expect_bits("stress", {s.stress, s.stress + 3}, {stress, stress + 3});
    expect_bits("principal", {s.angle, s.s1, s.s2, s.max_shear, s.von_mises}, {principal, principal + 5});
    expect_bits("plastic", {s.plastic_strain, s.plastic_strain + 3}, {plastic, plastic + 3});
  }

  static void compare_record(const finites_plate_point& p, const double* record) {
    const auto columns = [record](int first, int count) {
      return vector(record + first - 1, record + first - 1 + count);
    };
    const auto at = [record](int column) { return record + column - 1; };
    expect_bits("place", {p.xyz, p.xyz + 3}, columns(COL_X, 3));
    compare_surface(p.top, at(COL_STRAIN_TOP), at(COL_STRESS_TOP), at(COL_PRINCIPAL_TOP), at(COL_PLASTIC_TOP));
    compare_surface(p.middle, at(COL_STRAIN_MID), at(COL_STRESS_MID), at(COL_PRINCIPAL_MID), at(COL_PLASTIC_MID));
    compare_surface(p.bottom, at(COL_STRAIN_BOTTOM), at(COL_STRESS_BOTTOM), at(COL_PRINCIPAL_BOTTOM),
                    at(COL_PLASTIC_BOTTOM));
    expect_bits("forces", {p.force, p.force + 3}, columns(COL_FORCES, 3));
    expect_bits("moments", {p.moment, p.moment + 3}, columns(COL_MOMENTS, 3));
    expect_bits("shear strain", {p.shear_strain, p.shear_strain + 2}, columns(COL_SHEAR_STRAIN, 2));
    expect_bits("shear force", {p.shear_force, p.shear_force + 2}, columns(COL_SHEAR_FORCE, 2));
    expect_bits("shear stress", {p.shear_stress, p.shear_stress + 2}, columns(COL_SHEAR_STRESS, 2));
    expect_bits("plastic shear", {p.plastic_shear_strain, p.plastic_shear_strain + 2}, columns(COL_PLASTIC_SHEAR, 2));
  }

  void compare_records(const finites_plate_results& results, const support::plate_results& records) const {
    EXPECT_EQ(results.nodes, plate_.nodes);
    EXPECT_EQ(results.points, 4);
    for (int i = 0; i < 4; ++i) {
      compare_record(results.node[i], &records.nodes[static_cast<std::size_t>(i * RES_LENGTH)]);
      compare_record(results.point[i], &records.points[static_cast<std::size_t>(i * RES_LENGTH)]);
    }
  }

  plate_description description_;
  plate_model model_;
  finites_plate plate_;
  seeded_random& random_;
};

template <class COMPARE>
void for_random_plates(unsigned seed, COMPARE compare) {
  seeded_random random(seed);
  for (const plate_kind& kind : subjects::all_plate_kinds()) {
    SCOPED_TRACE(subjects::name_of(kind));
    for (int i = 0; i < PLATES_OF_A_KIND; ++i) {
      doors both(subjects::random_plate(random, kind), random);
      compare(both);
      if (testing::Test::HasFailure()) return;
    }
  }
}

}  // namespace

TEST(PlatesAtBothDoors, Matrices) {
  for_random_plates(1, [](doors& both) { both.compare_matrices(); });
}

TEST(PlatesAtBothDoors, Vectors) {
  for_random_plates(2, [](doors& both) { both.compare_vectors(); });
}

TEST(PlatesAtBothDoors, Results) {
  for_random_plates(3, [](doors& both) { both.compare_results(); });
}

TEST(PlatesAtBothDoors, MeasuresAndPoints) {
  for_random_plates(4, [](doors& both) { both.compare_measures(); });
}
