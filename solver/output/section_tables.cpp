// section_tables.cpp: one block for each surface, whichever quantities are asked for, as CalculiX writes it.
#include "output/section_tables.h"

#include "analyses/section_forces.h"
#include "output/print_tables.h"
#include "output/text.h"

namespace solver {

namespace {

void append_vectors(fmt::memory_buffer& out, const vector3& first, const vector3& second) {
  append(out, "  ");
  for (const vector3* v : {&first, &second}) {
    for (const double each : *v) append(out, " {:13.6E}", each + 0.0);  // a zero has no sign
  }
  append(out, "\n\n");
}

// The normal force along the mean normal, and the size of what is square to it.
std::array<double, 2> parts_of(const section_force& f) {
  const double normal = dot(f.force, f.normal);
  vector3 shear = f.force;
  for (std::size_t i = 0; i < 3; ++i) shear[i] -= normal * f.normal[i];
  return {normal, norm(shear)};
}

void append_section(fmt::memory_buffer& out, const std::string& name, const std::string& time, const section_force& f) {
  append(out, "\n statistics for surface set {} and time {}\n\n", name, time);
  append(out, "   total surface force (fx,fy,fz) and moment about the origin (mx,my,mz)\n\n");
  append_vectors(out, f.force, f.moment);
  append(out, "   center of gravity and mean normal\n\n");
  append_vectors(out, f.centre, f.normal);
  append(out, "   moment about the center of gravity (mx,my,mz)\n\n");
  const vector3 shift = cross(f.centre, f.force);
  append(out, "   {:13.6E} {:13.6E} {:13.6E}\n\n", f.moment[0] - shift[0] + 0.0, f.moment[1] - shift[1] + 0.0,
         f.moment[2] - shift[2] + 0.0);
  append(out, "   area, normal force (+ = tension) and shear force (size)\n\n");
  const std::array<double, 2> parts = parts_of(f);
  append(out, "   {:13.6E} {:13.6E} {:13.6E}\n", f.area, parts[0] + 0.0, parts[1]);
}

}  // namespace

void write_section_prints(std::ostream& out, const model& m, const step& s, library_model& library,
                          const static_solution& solution) {
  fmt::memory_buffer all;
  for (const print_request& request : s.prints) {
    if (request.kind != print_kind::SURFACES || request.quantities.empty()) continue;
    const named_surface& surface = m.surfaces[request.members.front()];
    append_section(all, surface.name, printed_time(m, s), force_through(m, s, surface, library, solution));
  }
  out.write(all.data(), signed_index(all.size()));
}

}  // namespace solver
