// scene.h: an element with or without rigid offsets, before a recording engine, and what the offsets do to vectors and
// matrices.
//
// A node at X with the offset d holds the element at X - d. Displacements of the element: u + d x t; moments of the
// node: m + f x d, the transpose.
#ifndef FINITES_TESTS_SCENE_H
#define FINITES_TESTS_SCENE_H

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "engine_recorder.h"
#include "plate_calls.h"
#include "random_shapes.h"

namespace scenes {

using plate_calls::plate_description;
using plate_calls::plate_model;
using plate_calls::point;
using support::seeded_random;

constexpr int ALL_OPERATIONS[] = {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10};

// Nine values for every operation that reads data.
const std::vector<double>& some_data();

// Where the offsets of the element stand; none: they are stored, but switched off.
enum class source { none, by_node, common };

// Element 2 of two elements, whose plate is number 1 as long as the plates have numbers of their own. A new scene
// forgets what the engine was asked before.
class scene {
 public:
  scene(int nodes, source from, seeded_random& random);

  plate_description& description() { return description_; }
  const plate_description& description() const { return description_; }
  std::size_t nodes() const { return description_.nodes.size(); }
  std::size_t order() const { return 6 * nodes(); }
  point offset(std::size_t node) const;  // the one that counts

  // A question to a fresh model of the scene.
  template <class QUESTION>
  auto ask(QUESTION question) const {
    plate_model model({plate_calls::isotropic(plate_calls::flat_triangle()), description_});
    if (from_ == source::common) model.deallocate_plate_of_elem();
    return question(model);
  }

  std::vector<double> displaced(std::vector<double> u) const;                 // P u
  std::vector<double> moved_back(std::vector<double> f) const;                // P^T f
  std::vector<double> moved_back_matrix(const std::vector<double>& K) const;  // P^T K P, packed by columns

 private:
  source from_;
  plate_description description_;
};

// check(scene, random) for three and four nodes and every source of offsets.
template <class CHECK>
void for_all_scenes(CHECK check) {
  seeded_random random(211);
  for (const int nodes : {3, 4}) {
    for (const source from : {source::none, source::by_node, source::common}) {
      SCOPED_TRACE(std::to_string(nodes) + " nodes, source of offsets " + std::to_string(static_cast<int>(from)));
      check(scene(nodes, from, random), random);
    }
  }
}

std::vector<double> with_zeros(std::vector<double> values, std::size_t length);

}  // namespace scenes

#endif
