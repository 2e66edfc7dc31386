// every_plain_routine.h: the routines that touch only their arguments.
#ifndef FINITES_TESTS_EVERY_PLAIN_ROUTINE_H
#define FINITES_TESTS_EVERY_PLAIN_ROUTINE_H

#include "observed.h"
#include "scene_analysis.h"

namespace every_call {

void call_plain_routines(const analysis& a, int elem, listener& to);

}  // namespace every_call

#endif
