// analysis_assembly_test.cpp: answers of decks in parts: those of the flat deck to the last bit, and turned with the
// instance.
#include <gtest/gtest.h>

#include <cmath>

#include "run_support.h"

namespace {

using namespace run_test;

const char MESH[] =
    "*NODE\n1, 0., 0., 0.\n2, 1., 0., 0.1\n3, 2., 0., 0.\n4, 0., 1., 0.\n5, 1.1, 1., 0.\n6, 2., 1., 0.\n"
    "*ELEMENT, TYPE=S4, ELSET=SKIN\n1, 1, 2, 5, 4\n2, 2, 3, 6, 5\n*NSET, NSET=EDGE\n1, 4\n"
    "*ORIENTATION, NAME=LAY\n1., 0.5, 0., 0., 1., 0., 0., 0., 0.\n3, 20.\n"
    "*SHELL SECTION, ELSET=SKIN, MATERIAL=PLY, ORIENTATION=LAY\n0.02\n";
const char PLY[] = "*MATERIAL, NAME=PLY\n*ELASTIC, TYPE=LAMINA\n1.4E11, 1.E10, 0.3, 5.E9, 5.E9, 3.E9\n";

std::string in_parts(const std::string& motion, const std::string& load) {
  return std::string("*PART, NAME=P\n") + MESH + "*END PART\n*ASSEMBLY\n*INSTANCE, NAME=I, PART=P\n" + motion +
         "*END INSTANCE\n*END ASSEMBLY\n" + PLY + "*BOUNDARY\nI.EDGE, 1, 6\n*STEP\n*STATIC\n*CLOAD\n" + load +
         "*END STEP\n";
}

}  // namespace

TEST(analysis_assembly, a_deck_in_parts_answers_as_the_flat_one) {
  const ran flat = run(std::string(MESH) + PLY +
                       "*BOUNDARY\nEDGE, 1, 6\n*STEP\n*STATIC\n*CLOAD\n3, 3, 100.\n6, 1, 50.\n"
                       "*END STEP\n");
  const ran parts = run(in_parts("", "I.3, 3, 100.\nI.6, 1, 50.\n"));
  for (const char direction : {'x', 'y', 'z', 'X', 'Y', 'Z'}) {
    for (int n = 1; n <= 6; ++n) EXPECT_EQ(parts.u(1, n, direction), flat.u(1, n, direction)) << n << direction;
  }
  EXPECT_NE(flat.u(1, 3, 'z'), 0);
}

TEST(analysis_assembly, a_turned_instance_has_the_turned_answer) {
  const ran there = run(in_parts("", "I.3, 3, 100.\nI.6, 1, 50.\n"));
  // 90 degrees about x through (0, 0, 7), after a translation: z becomes -y.
  const ran here = run(in_parts("3., 4., 5.\n0., 0., 7., 1., 0., 7., 90.\n", "I.3, 2, -100.\nI.6, 1, 50.\n"));
  for (int n = 1; n <= 6; ++n) {
    const double size = std::abs(there.u(1, 3, 'z'));
    EXPECT_NEAR(here.u(1, n, 'x'), there.u(1, n, 'x'), 1e-10 * size) << n;
    EXPECT_NEAR(here.u(1, n, 'y'), -there.u(1, n, 'z'), 1e-10 * size) << n;
    EXPECT_NEAR(here.u(1, n, 'z'), there.u(1, n, 'y'), 1e-10 * size) << n;
    EXPECT_NEAR(here.u(1, n, 'Z'), there.u(1, n, 'Y'), 1e-9 * size) << n;
  }
}

TEST(analysis_assembly, two_instances_answer_as_two_decks) {
  const std::string text = std::string("*PART, NAME=P\n") + MESH +
                           "*END PART\n*ASSEMBLY\n*INSTANCE, NAME=I, PART=P\n*END INSTANCE\n*INSTANCE, NAME=J, "
                           "PART=P\n9.\n*END INSTANCE\n*END ASSEMBLY\n" +
                           PLY +
                           "*BOUNDARY\nI.EDGE, 1, 6\nJ.EDGE, 1, 6\n*STEP\n*STATIC\n*CLOAD\nI.3, 3, 100.\nJ.6, 3, "
                           "100.\n*END STEP\n";
  const ran both = run(text);
  const ran first = run(in_parts("", "I.3, 3, 100.\n")), second = run(in_parts("9.\n", "I.6, 3, 100.\n"));
  for (int n = 1; n <= 6; ++n) {
    EXPECT_NEAR(both.u(1, n, 'z'), first.u(1, n, 'z'), 1e-12 * std::abs(first.u(1, 3, 'z')));
    EXPECT_NEAR(both.u(1, 10 + n, 'z'), second.u(1, n, 'z'), 1e-12 * std::abs(first.u(1, 3, 'z')));
  }
}
