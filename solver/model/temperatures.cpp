// temperatures.cpp: temperatures, thermal strains and constants at a temperature.
#include "model/temperatures.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "model/base_step.h"

namespace solver {

numbered<double> node_temperatures(const model& m, const step* state) {
  numbered<double> result = m.initial_temperature;
  result.resize(m.nodes.size(), 0);
  if (state == nullptr) return result;
  numbered<double> change(m.nodes.size(), 0);
  for (const nodal_temperature& t : state->temperatures) change[t.node] = t.change;
  for (std::size_t n = 0; n < result.size(); ++n) result[n] += change[n];
  return result;
}

double mean_temperature(const element& e, const numbered<double>& at_node) {
  const double first = at_node[e.nodes.front()];
  double sum = 0;
  bool same = true;
  for (const int n : e.nodes) {
    sum += at_node[n];
    same = same && at_node[n] == first;
  }
  return same ? first : sum / count_of(e.nodes);
}

double expanding_change(const material& mat, double from, double to) {
  if (mat.expansion_table.empty()) return to - from;
  if (mat.alpha1 == 0) return 0;
  const auto strain = [&](double t) { return value_at(mat.expansion_table, t)[0] * (t - mat.expansion_zero); };
  return (strain(to) - strain(from)) / mat.alpha1;
}

namespace {

bool changes(const material& mat) { return !mat.elastic_table.empty() || !mat.density_table.empty(); }

const material* material_at(const model& m, const element& e) {
  const int index = e.section < 0 ? -1 : material_of(m, e);
  return index < 0 ? nullptr : &m.materials[index];
}

// The state whose temperatures the constants have in a step.
const step* state_of_constants(const model& m, const step& s) {
  const step& own = first_of(m, s);
  return ends_in_a_state(own) ? &own : base_step(m, own);
}

using constants = std::tuple<double, double, double>;  // Young's modulus, Poisson's ratio, density

constants constants_at(const material& mat, double now, double initially) {
  std::array<double, 2> elastic = {mat.E1, mat.NU12};
  if (!mat.elastic_table.empty()) elastic = value_at(mat.elastic_table, now);
  return {elastic[0], elastic[1], mat.density_table.empty() ? mat.density : value_at(mat.density_table, initially)[0]};
}

// By element; of elements without such a material nothing.
numbered<constants> constants_in(const model& m, const step& s) {
  numbered<constants> result(m.elements.size());
  const numbered<double> initially = node_temperatures(m, nullptr),
                         now = node_temperatures(m, state_of_constants(m, s));
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const material* const mat = material_at(m, m.elements[e]);
    if (mat == nullptr || !changes(*mat)) continue;
    result[e] = constants_at(*mat, mean_temperature(m.elements[e], now), mean_temperature(m.elements[e], initially));
  }
  return result;
}

material with_constants(material mat, const constants& c) {
  std::tie(mat.E1, mat.NU12, mat.density) = c;
  mat.E2 = mat.E1;
  mat.G12 = mat.G13 = mat.G23 = mat.E1 / (2 * (1 + mat.NU12));
  mat.elastic_table.clear();
  mat.density_table.clear();
  return mat;
}

// The shear stiffness that a shape has follows the shear modulus.
void scale_shear(const shell_section& /*section*/, double /*ratio*/) {}
void scale_shear(const solid_section& /*section*/, double /*ratio*/) {}
void scale_shear(frame_section& section, double ratio) {
  if (section.shear_given) return;
  section.shear_stiffness_y *= ratio;
  section.shear_stiffness_z *= ratio;
}

// Copies of sections, one for each that the elements need.
class section_copies {
 public:
  explicit section_copies(model& m) : model_(m) {}

  template <class SECTION>
  int copy(numbered<SECTION>& sections, int kind, int section, const constants& wanted) {
    const auto [found, is_new] = known_.emplace(std::make_tuple(kind, section, wanted), count_of(sections));
    if (!is_new) return found->second;
    SECTION made = sections[section];
    const material before = model_.materials[made.material];
    made.of_deck = section;
    made.material = count_of(model_.materials);
    model_.materials.push_back(with_constants(before, wanted));
    scale_shear(made, model_.materials.back().G12 / before.G12);
    sections.push_back(made);
    return found->second;
  }

 private:
  model& model_;
  std::map<std::tuple<int, int, constants>, int> known_;
};

}  // namespace

bool depends_on_temperature(const model& m) {
  return std::any_of(m.elements.begin(), m.elements.end(), [&](const element& e) {
    const material* const mat = material_at(m, e);
    return mat != nullptr && changes(*mat);
  });
}

std::size_t end_of_same_constants(const model& m, std::size_t first) {
  if (!depends_on_temperature(m)) return m.steps.size();
  const numbered<constants> here = constants_in(m, m.steps[first]);
  std::size_t end = first + 1;
  while (end < m.steps.size() && constants_in(m, m.steps[end]) == here) ++end;
  return end;
}

bool have_same_constants(const model& m, const step& a, const step& b) {
  return !depends_on_temperature(m) || constants_in(m, a) == constants_in(m, b);
}

model with_constants_of(const model& m, const step& s) {
  model result = m;
  const numbered<constants> wanted = constants_in(m, s);
  section_copies copies(result);
  for (std::size_t i = 0; i < m.elements.size(); ++i) {
    element& e = result.elements[i];
    const material* const mat = material_at(m, e);
    if (mat == nullptr || !changes(*mat)) continue;
    if (is_solid(e.type)) {
      e.section = copies.copy(result.solid_sections, 1, e.section, wanted[i]);
    } else if (is_plate(e.type)) {
      e.section = copies.copy(result.shell_sections, 2, e.section, wanted[i]);
    } else {
      e.section = copies.copy(result.frame_sections, 3, e.section, wanted[i]);
    }
  }
  return result;
}

}  // namespace solver
