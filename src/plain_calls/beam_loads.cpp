// beam_loads.cpp: the plain calls of loads and of sections along beams.
#include "finites/elements.h"
#include "plain_calls/beam_span.h"

namespace {

finites_status finite_section(const finites_beam_section& s) {
  double values[12];
  for (int i = 0; i < 3; ++i) {
    values[i] = s.force[i];
    values[3 + i] = s.moment[i];
    values[6 + i] = s.displacement[i];
    values[9 + i] = s.rotation[i];
  }
  double checked[12];
  return hand_over(values, 12, checked);
}

finites_status check_places(const PLAIN_BEAM& beam, int32_t count, const double* x) {
  const finites_status status = check_member_numbers(x, count);
  if (status != FINITES_OK) return status;
  double place = 0.0;
  for (int i = 0; i < count; ++i) {
    if (!place_along(beam, x[i], place)) return FINITES_LENGTH;
  }
  return FINITES_OK;
}

// Checked first and written then, since nothing is written on an error.
finites_status write_sections(const PLAIN_BEAM& beam, const SPAN_LOAD& load, const SPAN& span, int32_t count,
                              const double* x, finites_beam_section* sections) {
  double place = 0.0;
  for (int i = 0; i < count; ++i) {
    place_along(beam, x[i], place);
    const finites_status status = finite_section(section_at(beam, load, span, place));
    if (status != FINITES_OK) return status;
  }
  for (int i = 0; i < count; ++i) {
    place_along(beam, x[i], place);
    sections[i] = section_at(beam, load, span, place);
  }
  return FINITES_OK;
}

}  // namespace

// The nodes carry what the ends of a beam are held with, the other way.
finites_status finites_beam_loads(const finites_beam* beam, const finites_beam_load* load, double* F) {
  if (beam == nullptr || load == nullptr || F == nullptr) return FINITES_NULL;
  PLAIN_BEAM b;
  SPAN_LOAD along;
  SPAN span;
  finites_status status = read_beam(*beam, b);
  if (status == FINITES_OK) status = read_load(b, load, along);
  if (status == FINITES_OK) status = solve_span(b, along, VECTOR<12>{}, true, span);
  if (status != FINITES_OK) return status;
  VECTOR<12> f = end_forces_of(span);
  for (double& value : f.V) value = 0.0 - value;
  return hand_over(nodes_of_ends(b, f).data(), 12, F);
}

finites_status finites_beam_sections(const finites_beam* beam, const double* u, const finites_beam_load* load,
                                     int32_t count, const double* x, finites_beam_section* sections) {
  if (beam == nullptr || u == nullptr) return FINITES_NULL;
  if (count < 0) return FINITES_RANGE;
  if (count > 0 && (x == nullptr || sections == nullptr)) return FINITES_NULL;
  PLAIN_BEAM b;
  SPAN_LOAD along;
  SPAN span;
  finites_status status = first_fault(read_beam(*beam, b), check_member_numbers(u, 12));
  if (status == FINITES_OK) status = read_load(b, load, along);
  if (status == FINITES_OK) status = check_places(b, count, x);
  if (status == FINITES_OK) status = solve_span(b, along, ends_of_nodes(b, u), false, span);
  return status != FINITES_OK ? status : write_sections(b, along, span, count, x, sections);
}
