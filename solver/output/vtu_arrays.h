// vtu_arrays.h: arrays of a VTU file. Numbers are written with the fewest digits that read back as the same double.
#ifndef FINITES_SOLVER_VTU_ARRAYS_H
#define FINITES_SOLVER_VTU_ARRAYS_H

#include <cstddef>

#include <pugixml.hpp>

#include "output/text.h"

namespace solver {

// An array of `components` values per item; value(item, component) gives them.
template <class VALUE>
void data_array(pugi::xml_node parent, const char* name, const char* type, std::size_t items, int components,
                const VALUE& value) {
  pugi::xml_node array = parent.append_child("DataArray");
  array.append_attribute("type") = type;
  array.append_attribute("Name") = name;
  if (components > 1) array.append_attribute("NumberOfComponents") = components;
  array.append_attribute("format") = "ascii";
  fmt::memory_buffer text;
  for (std::size_t i = 0; i < items; ++i) {
    text.push_back('\n');
    for (int c = 0; c < components; ++c) append(text, "{} ", value(i, c));
  }
  text.push_back('\n');
  text.push_back('\0');
  array.text().set(text.data());
}

template <class VALUE>
void reals(pugi::xml_node parent, const char* name, std::size_t items, int components, const VALUE& value) {
  data_array(parent, name, "Float64", items, components, value);
}

}  // namespace solver

#endif
