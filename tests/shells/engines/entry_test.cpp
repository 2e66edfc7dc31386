// entry_test.cpp: what every engine does before it looks at the operation, and what it leaves as it was.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"
#include "finites/records.h"

using support::seeded_random;
using support::values;

TEST(Entry, ClearsTheAxesBeforeAnyOperation) {
  // Operations that compute no frame, an unknown one and the mass of an element without density, must not return the
  // axes of the element before.
  seeded_random random(395);
  for (const element_subject& s : subjects()) {
    for (const int op : {0, 2, 11, 72}) {
      element_call call(random_element(random, s));
      call.run(6);
      ASSERT_NE(values(call.AXES.data(), 9), std::vector<double>(9, 0.0)) << s.name;
      call.run(op);
      EXPECT_EQ(values(call.AXES.data(), 9), std::vector<double>(9, 0.0)) << s.name << " operation " << op;
    }
  }
}

TEST(Entry, SetsThermalStrainsForTheGeneralElasticBehaviourAlone) {
  seeded_random random(396);
  for (const element_subject& s : subjects()) {
    for (const int behaviour : {0, 1, 2, 3}) {
      element_call call(random_element(random, s));
      call.LOADS(LOAD_TEMPERATURE) = 40.0;
      call.LOADS(LOAD_TEMPERATURE_DIFF) = -7.0;
      PLATEELEM_RECORD& P = PLATEELEM;
      P.MAT_BEHAV = behaviour;
      P.ALPHA1 = 2e-5;
      P.ALPHA2 = 3e-5;
      P.THERMAL_M1 = P.THERMAL_M2 = P.THERMAL_B1 = P.THERMAL_B2 = 99.0;
      call.run(6);
      const std::vector<double> actual = {P.THERMAL_M1, P.THERMAL_M2, P.THERMAL_B1, P.THERMAL_B2};
      std::vector<double> expected(4, 99.0);
      if (behaviour == 1) expected = {2e-5 * 40.0, 3e-5 * 40.0, 2e-5 * -7.0, 3e-5 * -7.0};
      EXPECT_EQ(actual, expected) << s.name << " behaviour " << behaviour;
    }
  }
}
