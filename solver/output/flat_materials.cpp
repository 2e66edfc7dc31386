// flat_materials.cpp: from *MATERIAL to *PLASTIC, and *INITIAL CONDITIONS.
#include "output/flat_materials.h"

#include <cmath>

#include "output/text.h"

namespace solver {

namespace {

using buffer = fmt::memory_buffer;

void append_table(buffer& out, const temperature_table& table, int values) {
  for (const temperature_line& l : table) {
    for (int i = 0; i < values; ++i) append(out, "{}, ", l.value[subscript(i)]);
    append(out, "{}\n", l.temperature);
  }
}

void append_elastic(buffer& out, const material& x) {
  if (!x.elastic_table.empty()) {
    append(out, "*ELASTIC\n");
    append_table(out, x.elastic_table, 2);
  } else if (x.orthotropic) {
    append(out, "*ELASTIC, TYPE=LAMINA\n{}, {}, {}, {}, {}, {}\n", x.E1, x.E2, x.NU12, x.G12, x.G13, x.G23);
  } else {
    append(out, "*ELASTIC\n{}, {}\n", x.E1, x.NU12);
  }
}

// The strain at which the yield stress is given again is a power of 2 near to that which doubles it: the modulus, a
// difference by the strain, then comes back to the last digits.
void append_plastic(buffer& out, const material& x) {
  append(out, "*PLASTIC\n{}, 0\n", x.yield_stress);
  if (!(x.plastic_modulus > 0)) return;
  const double strain = std::exp2(std::round(std::log2(x.yield_stress / x.plastic_modulus)));
  append(out, "{}, {}\n", x.yield_stress + x.plastic_modulus * strain, strain);
}

void append_expansion(buffer& out, const material& x) {
  if (!x.expansion_table.empty()) {
    append(out, "*EXPANSION, ZERO={}\n", x.expansion_zero);
    append_table(out, x.expansion_table, 1);
  } else if (x.alpha1 == x.alpha2) {
    append(out, "*EXPANSION\n{}\n", x.alpha1);
  } else {
    append(out, "*EXPANSION, TYPE=ORTHO\n{}, {}, 0\n", x.alpha1, x.alpha2);
  }
}

void append_density(buffer& out, const material& x) {
  if (x.density_table.empty()) return append(out, "*DENSITY\n{}\n", x.density);
  append(out, "*DENSITY\n");
  append_table(out, x.density_table, 1);
}

}  // namespace

void append_material(buffer& out, const material& x) {
  append(out, "*MATERIAL, NAME={}\n", x.name);
  if (x.elastic) append_elastic(out, x);
  if (x.density > 0 || !x.density_table.empty()) append_density(out, x);
  if (x.expansion) append_expansion(out, x);
  if (x.yield_stress > 0) append_plastic(out, x);
}

void append_initial_temperatures(buffer& out, const model& m) {
  if (m.initial_temperature.empty()) return;
  append(out, "*INITIAL CONDITIONS, TYPE=TEMPERATURE\n");
  for (int n = 0; n < count_of(m.initial_temperature); ++n) {
    append(out, "{}, {}\n", m.nodes[n].id, m.initial_temperature[n]);
  }
}

}  // namespace solver
