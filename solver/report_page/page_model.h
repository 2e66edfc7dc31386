// page_model.h: the model as the page's data have it.
#ifndef FINITES_SOLVER_PAGE_MODEL_H
#define FINITES_SOLVER_PAGE_MODEL_H

#include "report_page/page_buffers.h"
#include "report_page/page_mesh.h"

namespace solver {

// Adds "origin" to "solid_parts" to the data.
void add_model(page_json& data, const page_mesh& mesh, page_buffers& buffers);

// Tables of what a section or a material is, by names of the field.
page_json materials_of_page(const model& m);
page_json sections_of_page(const page_mesh& mesh);

}  // namespace solver

#endif
