// asked_model.h: the model of one element, in the state that laws ask it in, and rigid motions of its nodes.
#ifndef FINITES_TESTS_ASKED_MODEL_H
#define FINITES_TESTS_ASKED_MODEL_H

#include <cmath>

#include "element_subject.h"
#include "plate_model.h"
#include "reference_element.h"

struct asked_model : support::plate_model {
  asked_model(const element_subject& s, const support::plate_description& d)
      : plate_model(std::vector<support::plate_description>{d}) {
    if (s.listed_factors) set_stiffness_factors({10}, {0.75F, 0.5F});
    allocate_state();
  }
};

// A shift and a small turn about the origin.
shell_reference::column rigid_motion(const support::plate_description& d, const shell_reference::vector3& shift,
                                     const shell_reference::vector3& turn);

// The square matrix that a call returned by columns.
inline shell_reference::matrix full(const std::vector<double>& K) {
  const int n = static_cast<int>(std::lround(std::sqrt(static_cast<double>(K.size()))));
  return dense::widened(K.data(), n, n);
}

#endif
