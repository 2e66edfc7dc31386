// section_points_writer.cpp: element by element, station by station, point by point.
#include "output/section_points_writer.h"

#include "elements/section_stresses.h"
#include "output/text.h"

namespace solver {

void write_section_points_csv(std::ostream& out, const model& m, const step_results& results, int station_count) {
  out << "element,distance,point,x1,x2,axial,bending,stress,shear_1,shear_2\n";
  fmt::memory_buffer text;
  for (const member_field& f : results.fields) {
    const element& e = m.elements[f.element];
    const frame_section& section = frame_section_of(m, e);
    if (section.points.empty()) continue;
    for (const station& s : stations_of(m, f, station_count)) {
      for (const section_point& p : section.points) {
        const point_stress stress = stress_at(section, p, s.force);
        append(text, "{},{},{},{},{},{},{},{},{},{}\n", e.id, s.distance, p.number, p.x1, p.x2, stress.axial,
               stress.bending, stress.axial + stress.bending, s.force[1] / section.area, s.force[2] / section.area);
      }
    }
  }
  out.write(text.data(), signed_index(text.size()));
}

}  // namespace solver
