// element_subject.h: the kinds and sections of the tests of elements, one table.
#ifndef FINITES_TESTS_ELEMENT_SUBJECT_H
#define FINITES_TESTS_ELEMENT_SUBJECT_H

#include <string>
#include <vector>

#include "random_shapes.h"

enum class section_kind {
  isotropic,
  orthotropic,            // with an angle; E1 nu2 = E2 nu1
  orthotropic_arbitrary,  // with an angle; the section matrices are not symmetric
  composite,              // with an angle and correction factors
};

struct element_subject {
  std::string name;
  int kind;         // 10, 11, 12, 20, 21, 22
  int nodes;        // 3, 4
  int formulation;  // 1 thin, 0 thick, 2 membrane
  section_kind form;
  // Two factors of the list of stiffness factors make an isotropic material orthotropic; FINITES alone knows them.
  bool listed_factors;

  bool thick() const { return formulation == 0; }
  bool membrane_only() const { return formulation == 2; }
  bool isotropic() const { return form == section_kind::isotropic && !listed_factors; }
  bool symmetric() const { return form != section_kind::orthotropic_arbitrary; }
};

// Every kind with every section; listed factors at the end when they are asked for.
std::vector<element_subject> subjects(bool with_listed_factors = false);
// Those of one kind.
std::vector<element_subject> subjects_of(int kind);
element_subject isotropic_subject(int kind);

std::vector<support::point> random_shape(support::seeded_random& random, const element_subject& s);
support::plate_description random_element(support::seeded_random& random, const element_subject& s,
                                          const std::vector<support::point>& nodes);
support::plate_description random_element(support::seeded_random& random, const element_subject& s);

#endif
