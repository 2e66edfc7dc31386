// vtu_arrays.h: arrays of a VTU file, as text or as the bytes of their numbers (vtu_writer.h).
#ifndef FINITES_SOLVER_VTU_ARRAYS_H
#define FINITES_SOLVER_VTU_ARRAYS_H

#include <cstddef>
#include <string>

#include <pugixml.hpp>

#include "model/index.h"
#include "output/text.h"
#include "output/vtu_writer.h"

namespace solver {

// The form in which the arrays of a document are written; it is text until it is set.
void set_form(pugi::xml_node file, vtu_form form);
vtu_form form_of(pugi::xml_node anywhere);

// The numbers of an array as bytes, lowest first, behind their count in four bytes: what VTK reads in base 64
// (RFC 4648) from the text of an array.
class packed_numbers {
 public:
  packed_numbers(const std::string& type, std::size_t count);
  void add(double value);  // as Float64; an integer as Int32 or UInt8 by the type
  std::string encoded() const;

 private:
  std::size_t width_;
  bool integer_;
  std::string bytes_;
};

// Numbers with the fewest digits that read back as the same double, a line an item.
template <class VALUE>
void write_text(pugi::xml_node array, std::size_t items, int components, const VALUE& value) {
  fmt::memory_buffer text;
  for (std::size_t i = 0; i < items; ++i) {
    text.push_back('\n');
    for (int c = 0; c < components; ++c) append(text, "{} ", value(i, c));
  }
  text.push_back('\n');
  text.push_back('\0');
  array.text().set(text.data());
}

// An array of `components` values per item; value(item, component) gives them.
template <class VALUE>
void data_array(pugi::xml_node parent, const char* name, const char* type, std::size_t items, int components,
                const VALUE& value) {
  pugi::xml_node array = parent.append_child("DataArray");
  array.append_attribute("type") = type;
  array.append_attribute("Name") = name;
  if (components > 1) array.append_attribute("NumberOfComponents") = components;
  const vtu_form form = form_of(parent);
  array.append_attribute("format") = form == vtu_form::ASCII ? "ascii" : "binary";
  if (form == vtu_form::ASCII) {
    write_text(array, items, components, value);
    return;
  }
  packed_numbers numbers(type, items * subscript(components));
  for (std::size_t i = 0; i < items; ++i) {
    for (int c = 0; c < components; ++c) numbers.add(value(i, c));
  }
  array.text().set(numbers.encoded().c_str());
}

template <class VALUE>
void reals(pugi::xml_node parent, const char* name, std::size_t items, int components, const VALUE& value) {
  data_array(parent, name, "Float64", items, components, value);
}

}  // namespace solver

#endif
