// paths_test.cpp: the isotropic and the general path agree where they must, FINITES adds nothing to what an engine
// returns, and no call remembers another.
#include <algorithm>
#include <cmath>

#include "asked_model.h"
#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"
#include "finites/records.h"

using shell_reference::largest;
using support::plate_description;
using support::seeded_random;

namespace {

// Everything that an operation returns, with what it does not write as zeros.
std::vector<double> answer(element_call& call, int op) {
  call.run(op);
  std::vector<double> all;
  for (int i = 1; i <= 576; ++i) all.push_back(call.matrix.changed(i) ? call.matrix(i) : 0.0);
  for (int i = 1; i <= 24; ++i) all.push_back(call.F.changed(i) ? call.F(i) : 0.0);
  for (int i = 1; i <= 360; ++i) all.push_back(call.nodes.changed(i) ? call.nodes(i) : 0.0);
  for (int i = 1; i <= 360; ++i) all.push_back(call.points.changed(i) ? call.points(i) : 0.0);
  for (const double value : {call.area, call.volume, call.weight, call.distance}) {
    all.push_back(std::isnan(value) ? 0.0 : value);
  }
  all.insert(all.end(), {double(call.point_flag1), double(call.point_flag2)});
  return all;
}

void load(element_call& call, const std::vector<double>& u) {
  call.U = u;
  call.LOADS(LOAD_DENSITY) = 0.7;
  call.LOADS(LOAD_TEMPERATURE) = 30.0;
  call.LOADS(LOAD_TEMPERATURE_DIFF) = -20.0;
  call.set(LOAD_SURFACE, {1.0, 2.0, 3.0});
  call.set(LOAD_POINT, {0.1, 0.2, 0.3});
  call.set(LOAD_FORCE, {3.0, 2.0, 1.0});
}

}  // namespace

TEST(Paths, GeneralBehaviourWithEqualModuliAtAngleZeroIsIsotropic) {
  seeded_random random(371);
  for (const int kind : {10, 11, 12, 20, 21, 22}) {
    for (const int op : {1, 3, 33, 4, 5, 7}) {
      const plate_description d = random_element(random, isotropic_subject(kind));
      const std::vector<double> u = random.vector(24, 1e-2);
      element_call isotropic(d);
      load(isotropic, u);
      const std::vector<double> expected = answer(isotropic, op);
      element_call general(d);
      PLATEELEM_RECORD& P = PLATEELEM;
      P.MAT_BEHAV = 1;
      P.E2 = P.E1;
      P.NU2 = P.NU1;
      P.G12 = P.G13 = P.G23 = P.E1 / (2.0 * (1.0 + P.NU1));
      P.ALPHA2 = P.ALPHA1;
      load(general, u);
      const std::vector<double> actual = answer(general, op);
      if (op != 5) {
        EXPECT_CLOSE(actual, expected, support::max_norm(expected) + largest(isotropic.reference.s.whole()) * 1e-2, 500)
            << kind << " " << op;
        continue;
      }
      // Column by column group: strains, stresses, forces, moments and shears differ in size.
      const double h = d.thickness, face = largest(isotropic.reference.s.whole()) / h * 1e-1;
      for (int p = 1; p <= 4; ++p) {
        const std::vector<double> R = isotropic.point_record(p), G = general.point_record(p);
        for (const auto& [first, count] : {std::pair{4, 3}, std::pair{15, 3}, std::pair{26, 3}, std::pair{43, 2}}) {
          EXPECT_CLOSE(columns(G, first, count), columns(R, first, count), 1.0, 500) << kind << " " << first;
        }
        for (const auto& [first, count] : {std::pair{7, 3}, std::pair{18, 3}, std::pair{29, 3}, std::pair{47, 2}}) {
          EXPECT_CLOSE(columns(G, first, count), columns(R, first, count), face, 500) << kind << " " << first;
        }
        for (const auto& [first, count] : {std::pair{37, 3}, std::pair{40, 3}, std::pair{45, 2}}) {
          EXPECT_CLOSE(columns(G, first, count), columns(R, first, count), face * h, 500) << kind << " " << first;
        }
      }
    }
  }
}

TEST(Paths, FinitesReturnsWhatTheEngineReturnsWithoutFoundation) {
  seeded_random random(372);
  for (const element_subject& s : subjects()) {
    const plate_description d = random_element(random, s);
    const std::vector<double> u = random.vector(6 * s.nodes, 1e-2);
    asked_model model(s, d);
    const std::vector<double> K = model.stiffness(1), f = model.internal_forces(1, u);
    element_call call(d);
    std::copy(u.begin(), u.end(), call.U.begin());
    call.run(1);
    EXPECT_EQ(call.matrix_values(), K) << s.name;
    call.run(3);
    EXPECT_EQ(call.force_values(), f) << s.name;
    // The engine adds a foundation that the call block has; FINITES leaves that place at 0.
    call.LOADS(LOAD_FOUNDATION) = support::max_norm(K);
    call.run(1);
    EXPECT_NE(call.matrix_values(), K) << s.name;
  }
}

TEST(Paths, ListedFactorsAreAnOrthotropicMaterial) {
  // E f1, E f2, nu f1, nu f2, G f1 f2, G f1, G f2, with numbers that single precision holds.
  seeded_random random(373);
  for (const element_subject& s : subjects(true)) {
    if (!s.listed_factors) continue;
    plate_description listed = random_element(random, s);
    listed.material.E1 = 200000.0F;
    listed.material.NU1 = 0.25F;
    listed.material.G12 = 80000.0F;
    listed.material.E2 = 1.0F;  // the other fields of the record play no part
    listed.material.NU2 = 0.5F;
    listed.material.G13 = listed.material.G23 = 7.0F;
    listed.material.ALPHA2 = 1.0F;
    plate_description direct = listed;
    direct.material.ortho = 1;
    direct.material.E1 = 150000.0F;
    direct.material.E2 = 100000.0F;
    direct.material.NU1 = 0.1875F;
    direct.material.NU2 = 0.125F;
    direct.material.G12 = 30000.0F;
    direct.material.G13 = 60000.0F;
    direct.material.G23 = 40000.0F;
    direct.material.ALPHA2 = direct.material.ALPHA1;
    element_subject other = s;
    other.listed_factors = false;
    std::vector<double> K[2], R[2];
    const std::vector<double> u = random.vector(6 * s.nodes, 1e-2);
    for (const int way : {0, 1}) {
      asked_model model(way == 0 ? s : other, way == 0 ? listed : direct);
      K[way] = model.stiffness(1);
      R[way] = model.results(1, u, 20.0, 10.0).points;
    }
    EXPECT_EQ(K[0], K[1]) << s.name;
    EXPECT_EQ(R[0], R[1]) << s.name;
  }
}

TEST(Paths, NoCallRemembersAnother) {
  // The same bits after calls on another element of each kind as after none: stores that one call leaves are not read
  // by the next. NaN in the scratch record would show too.
  seeded_random random(374);
  const std::vector<element_subject> all = subjects();
  for (const element_subject& s : all) {
    const plate_description d = random_element(random, s);
    const std::vector<double> u = random.vector(24, 1e-2);
    for (const int op : {1, 2, 3, 33, 4, 5, 7, 8, 9, 10}) {
      element_call first(d);
      load(first, u);
      const std::vector<double> expected = answer(first, op);
      for (const element_subject& other : {all[static_cast<std::size_t>(random.integer(0, 11))],
                                           all[static_cast<std::size_t>(random.integer(12, 23))]}) {
        element_call between(random_element(random, other));
        load(between, random.vector(24, 1.0));
        for (const int before : {1, 5, 4, 2}) between.run(before);
        element_call again(d);
        load(again, u);
        EXPECT_EQ(answer(again, op), expected) << s.name << " operation " << op << " after " << other.name;
      }
    }
  }
}
