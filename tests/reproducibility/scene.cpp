// scene.cpp: the analyses, and the model of all families.
#include "scene.h"

#include "every_plain_routine.h"
#include "tarnix.h"

namespace every_call {

const std::vector<analysis>& analyses() {
  static const std::vector<analysis> all = {
      {"linear", 1, 0, 0, true, 0, false, false, 0},        {"numbers", 2, 0, 0, false, 0, false, true, 1},
      {"second_order", 3, 1, 0, true, 0, false, false, 0},  {"apart", 4, 3, 0, true, 0, false, false, 1},
      {"reduced", 5, 1, 0, true, 0, true, false, 1},        {"section", 6, 0, 1, true, 0, false, false, 0},
      {"section_second", 7, 1, 1, true, 0, false, true, 0}, {"layered", 8, 0, 2, true, 5, false, false, 0},
      {"layered_second", 9, 1, 2, true, 7, false, false, 1}};
  return all;
}

support::seeded_random numbers_of(const analysis& a, int elem, int purpose) {
  constexpr unsigned most_analyses = 16;
  return support::seeded_random((static_cast<unsigned>(elem) * most_analyses + a.number) * PURPOSES +
                                static_cast<unsigned>(purpose));
}

namespace {

// The parameters that families share, after each has stored its own.
void store_parameters(const analysis& a) {
  SOLPARAM_RECORD parameters{};
  parameters.HINGE_FORCE_MODE = a.force_mode;
  parameters.LUMPED_MASS = a.reduced ? 1 : 0;
  parameters.REMOVE_RATIO = a.reduced ? 3.5F : 2.0F;
  parameters.STIFF_REDUCTION_ON = a.reduced ? 1 : 0;
  TARNIX_STORE_SOLPARAM(&parameters);
}

}  // namespace

scene::scene(const analysis& a, int elements)
    : analysis_(a), elements_(elements), plates_(a, elements), members_(a, elements), solids_(a, elements) {
  const std::int32_t quiet = 1;  // hinges whose gradients are parallel, links without a record
  TARNIX_SET_ASSERT_QUIET(&quiet);
  store_parameters(a);
}

void scene::enter(int stage) {
  plates_.enter(stage);
  solids_.enter(stage);
}

void scene::call(int stage, int elem, double* exchange, listener& to) {
  for (const family f : FAMILIES) call(f, stage, elem, exchange, to);
}

void scene::call(family f, int stage, int elem, double* exchange, listener& to) {
  if (f == family::plates) plates_.call(stage, elem, exchange, to);
  if (stage != LAST_STAGE) return;
  switch (f) {
    case family::members: members_.call(elem, to); break;
    case family::solids: solids_.call(elem, to); break;
    case family::plain: call_plain_routines(analysis_, elem, to); break;
    default: break;
  }
}

int scene::period(family f) const {
  switch (f) {
    case family::plates: return plates_.period();
    case family::members: return every_member::PERIOD;
    case family::solids: return every_solid::PERIOD;
    default: return 1;
  }
}

}  // namespace every_call
