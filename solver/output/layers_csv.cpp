// layers_csv.cpp: element by element, layer by layer, face by face.
#include "output/layers_csv.h"

#include "elements/laminate_stiffness.h"
#include "output/text.h"

namespace solver {

namespace {

using buffer = fmt::memory_buffer;

void append_face(buffer& text, const std::string& head, const char* name, const layer_face& face) {
  append(text, "{},{},{}", head, name, face.z);
  for (const plane_vector* stress : {&face.in_layer, &face.in_section}) {
    for (const double s : *stress) append(text, ",{}", s);
  }
  append(text, "\n");
}

// Stresses are linear in forces, moments and temperatures, so that the means of these give the mean of the stresses.
void append_layers(buffer& text, const model& m, const element& e, const distributed_load& load,
                   const element_result& mean) {
  const shell_section& section = m.shell_sections[e.section];
  const laminate& made = m.laminates[section.layup];
  const std::vector<layer_faces> all =
      stresses_of_layers(made, m.materials, mean.force, mean.moment, load.temperature_change,
                         load.temperature_difference / section.thickness);
  for (std::size_t k = 0; k < all.size(); ++k) {
    const layer& own = made.layers[k];
    const std::string head = fmt::format("{},{},{},{},{}", e.id, e.parts > 1 ? e.part + 1 : 0, k + 1,
                                         table_field(m.materials[own.material].name), own.angle);
    append_face(text, head, "bottom", all[k].bottom);
    append_face(text, head, "top", all[k].top);
  }
}

}  // namespace

void write_layers_csv(std::ostream& out, const model& m, const static_solution& solution, const step_results& results) {
  buffer text;
  append(text, "element,part,layer,material,angle,face,z,own_11,own_22,own_12,section_11,section_22,section_12\n");
  for (std::size_t i = 0; i < m.elements.size(); ++i) {
    const element& e = m.elements[i];
    if (!is_plate(e.type) || m.shell_sections[e.section].layup < 0) continue;
    append_layers(text, m, e, solution.loads.element[i], results.elements[i]);
  }
  out.write(text.data(), signed_index(text.size()));
}

}  // namespace solver
