// scene.h: a model of random plates, members and solids, and calls of every exported routine on each of its elements.
//
// An element number names a plate, a member and a solid. What a call is given is made from the analysis, the number of
// the element and the number of the call alone, and all that it writes belongs to the element or to the caller: the
// answers do not hang on the order of the elements, nor on how many threads share them out.
#ifndef FINITES_TESTS_SCENE_H
#define FINITES_TESTS_SCENE_H

#include "every_member.h"
#include "every_plate.h"
#include "every_solid.h"
#include "observed.h"
#include "scene_analysis.h"

namespace every_call {

// plain: the routines that touch only their arguments.
enum class family { plates, members, solids, plain };
constexpr family FAMILIES[] = {family::plates, family::members, family::solids, family::plain};

class scene {
 public:
  scene(const analysis& a, int elements);
  scene(const scene&) = delete;
  scene& operator=(const scene&) = delete;

  int elements() const { return elements_; }
  const analysis& settings() const { return analysis_; }
  // The exchange area of MODEL_DATA.
  double* exchange() { return plates_.exchange(); }

  // The stages of an analysis one after the other, each for all elements: 0 is the very first pass of a nonlinear run,
  // which the others do not have. enter: by one thread, before its calls.
  int first_stage() const { return analysis_.plate_code > 0 ? 0 : 1; }
  static constexpr int LAST_STAGE = 1;
  void enter(int stage);

  // All calls of an element in a stage. The plates read and write `exchange`, 768 reals.
  void call(int stage, int elem, double* exchange, listener& to);
  // Those of one family. Its kinds repeat after so many elements.
  void call(family f, int stage, int elem, double* exchange, listener& to);
  int period(family f) const;

 private:
  analysis analysis_;
  int elements_;
  every_plate plates_;  // first and last: the others join it
  every_member members_;
  every_solid solids_;
};

}  // namespace every_call

#endif
