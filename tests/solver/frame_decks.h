// frame_decks.h: frames from deck texts, solved in one call.
#ifndef FINITES_TESTS_FRAME_DECKS_H
#define FINITES_TESTS_FRAME_DECKS_H

#include <string>

#include "analysis_support.h"
#include "deck/deck_reader.h"

namespace frame_test {

using namespace analysis_test;

// The folder of the project's decks, and one of them.
std::string deck_folder();
solver::model deck(const std::string& name);

// "%g" is not enough: a number that reads back as the same double.
std::string number(double value);

// A straight member along x from the origin, cut into equal beams numbered from 1, nodes from 1: B31 with
// shear stiffnesses, B33 without. n1 is y, so that axis 1 is local y and axis 2 local z. Every node is in the set ALL,
// every element in the set MEMBER; material E.
struct straight_member {
  double E = 210000, nu = 0.3, density = 7.85e-9;
  double area = 5000, inertia_xy = 8e7, inertia_xz = 3e7, torsion = 1e6;
  double shear_y = 0, shear_z = 0;  // shear stiffnesses; 0: none
  double length = 4000;
  int elements = 1;

  // `ends` are cards before the step, such as *RELEASE; `supports` the lines of *BOUNDARY; `step` the cards of one step
  // without *STEP and *END STEP.
  std::string deck(const std::string& ends, const std::string& supports, const std::string& step,
                   const std::string& step_flags = "") const;
  double G() const { return E / (2 * (1 + nu)); }
};

solver::model read(const std::string& text);

}  // namespace frame_test

#endif
