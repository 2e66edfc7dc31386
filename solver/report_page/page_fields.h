// page_fields.h: results as fields on nodes, elements and parts of nodes.
#ifndef FINITES_SOLVER_PAGE_FIELDS_H
#define FINITES_SOLVER_PAGE_FIELDS_H

#include <string>
#include <vector>

#include "analyses/results.h"
#include "report_page/page_buffers.h"
#include "report_page/page_mesh.h"

namespace solver {

// Where a field has its values. A value that is not a number says that the field has none in this place.
struct page_field {
  std::string name, label, group;
  const char* on = "node";
  const char* form = "scalar";
  std::vector<std::string> components;
  std::vector<float> values;
  std::vector<float> shear{};  // of plane stresses in the middle of thick shells: two components
};

page_json as_data(page_field field, page_buffers& buffers);

// Translations (first: 0) or rotations (first: 3) of the nodes of the page, out of values by degree of freedom.
std::vector<float> by_node(const page_mesh& mesh, const std::vector<double>& by_freedom, int first, int count);

// All fields of a step but the displacement; `m`: the model of the step, with sections at its temperature. None of an
// outline.
page_json fields_of_step(const page_mesh& mesh, const model& m, const std::vector<double>& displacement,
                         const step_results& results, page_buffers& buffers);

// Of values by element.
page_field equivalent_plastic_field(std::vector<float> values);

}  // namespace solver

#endif
