// point_update.h: an update of a surface point as the tests of it call it.
#ifndef FINITES_TESTS_POINT_UPDATE_H
#define FINITES_TESTS_POINT_UPDATE_H

#include "prepared_section.h"

// The strain whose trial resultants reach `level` times the yield surface of a plate that has not hardened.
template <int W>
section_reference::column strain_beyond(support::seeded_random& random, const prepared_section& s,
                                        const section_reference::point_start& start, double level) {
  return section_reference::to_local(start.ep0, s.axes, W) + s.strains_of(s.random_resultants(random, W, level));
}

template <int W>
SECTION_ANSWER<W> updated(const prepared_section& s, const section_reference::column& eps,
                          const section_reference::point_start& start) {
  SECTION_ANSWER<W> answer{};
  routines<W>::update(PLATEELEM, s.p.h, s.p.sy, vector_of<W>(eps), section_point(start), answer);
  return answer;
}

// A point whose trial resultants lie outside the surface, with the branch of their own mixed term.
template <int W>
struct returning_point {
  returning_point(support::seeded_random& random, const prepared_section& s, double times)
      : start(random_start(random, s, 1.0)), level(times), trial(W) {
    start.ebar0 *= 0.01;
    const double hardened = 1.0 + static_cast<double>(s.p.hardening() * start.ebar0) / s.p.sy;
    trial = s.random_resultants(random, W, level * hardened);
    start.ref = static_cast<double>(section_reference::mixed_product(trial));
    eps = section_reference::to_local(start.ep0, s.axes, W) + s.strains_of(trial);
  }
  bool keeps_branch(const SECTION_ANSWER<W>& a) const { return a.qtm * start.ref > 0.0; }

  section_reference::point_start start;
  double level;
  section_reference::column trial, eps;
};

#endif
