// plate_calls.h: what the tests of the plate entry share: sample elements, the outputs of a call in guards, and
// MODEL_DATA compared bit for bit.
#ifndef FINITES_TESTS_PLATE_CALLS_H
#define FINITES_TESTS_PLATE_CALLS_H

#include <cstdint>
#include <string>
#include <vector>

#include "guarded_buffer.h"
#include "plate_model.h"

namespace plate_calls {

using support::plate_description;
using support::plate_model;
using support::point;

// An operation that the entry does not know: it prepares PLATEELEM, material too, and does nothing else.
constexpr int PREPARE_ONLY = 999;

// A triangle whose local axes are the global ones, a triangle in space, a quadrilateral in space.
std::vector<point> flat_triangle();
std::vector<point> space_triangle();
std::vector<point> space_quadrilateral();

plate_description isotropic(const std::vector<point>& nodes, int formulation = 1);

// Every number of the record differs from every other and from the block's, and none is a short binary fraction.
plate_description orthotropic(const std::vector<point>& nodes, int formulation = 1);
plate_description composite(const std::vector<point>& nodes, int formulation = 1);

// The thin kinds, 10 and 12, of each elastic behaviour, in space.
std::vector<plate_description> elastic_triangles();
std::string label(const plate_description& description);

// data, forces and matrix of one call, all guarded.
struct outputs {
  support::guarded_buffer data{12}, forces{24}, matrix{24 * 24};
  int op = 0;  // as it came back
};

outputs call(plate_model& model, int op, int elem, const std::vector<double>& input = {});

// Calls for the sake of PLATEELEM.
void prepare(plate_model& model, int elem);

// MODEL_DATA at one time, and the subscripts that have other bits now.
class snapshot {
 public:
  explicit snapshot(plate_model& model);
  std::vector<int> changed() const;

 private:
  plate_model& model_;
  std::vector<double> before_;
};

// Fills the exchange area behind the displacements with NaN of known bits.
void poison_exchange(plate_model& model);

// Subscript of the exchange area's first value.
int exchange_start(plate_model& model);

}  // namespace plate_calls

#endif
