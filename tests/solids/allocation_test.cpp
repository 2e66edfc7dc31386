// allocation_test.cpp: a call takes nothing from the heap.
#include <gtest/gtest.h>

#include "allocation_counter.h"
#include "finites/finites.h"
#include "solid_cases.h"

namespace {

class SolidAllocation : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!support::allocation_counter::available()) GTEST_SKIP() << "the sanitizer has the heap";
  }
};

}  // namespace

TEST_F(SolidAllocation, OfNoOperation) {
  support::seeded_random random(6341);
  for (const std::int32_t nodes : {4, 6, 8, 20}) {
    support::solid_model model({solid_cases::random_solid(random, nodes == 20 ? 8 : nodes)});
    model.allocate_nonlinear();
    model.set_displacements(1, random.vector(24, 1e-3));
    const std::int32_t one = 1, off = model.entry(1), n = model.extent();
    const double G[3] = {1, 2, 3};
    double F[27], K[576];
    char msg[500];
    std::int32_t ierr = 0;
    for (const std::int32_t op : {1, 2, 3, 33, 5, 7, 71, 41, 9}) {
      const support::allocation_counter counter;
      FINITES_SOLID_3D(&op, &one, &off, model.raw(), &n, G, F, &nodes, K, &ierr, msg);
      EXPECT_EQ(counter.count(), 0) << "operation " << op << ", " << nodes << " nodes";
    }
  }
}
