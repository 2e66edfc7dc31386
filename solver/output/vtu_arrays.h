// vtu_arrays.h: arrays of a VTU file, as text or as the bytes of their numbers (vtu_writer.h).
#ifndef FINITES_SOLVER_VTU_ARRAYS_H
#define FINITES_SOLVER_VTU_ARRAYS_H

#include <cstddef>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "model/index.h"
#include "output/text.h"
#include "output/vtu_writer.h"

namespace solver {

// The form in which the arrays of a document are written; it is text until it is set.
void set_form(pugi::xml_node file, vtu_form form);
vtu_form form_of(pugi::xml_node anywhere);

// Where arrays of points or of cells go. A piece has some of the items of the model; null: all.
class vtu_data {
 public:
  vtu_data(pugi::xml_node place, const std::vector<std::size_t>* chosen = nullptr) : place_(place), chosen_(chosen) {}
  pugi::xml_node place() const { return place_; }
  const std::vector<std::size_t>* chosen() const { return chosen_; }

 private:
  pugi::xml_node place_;
  const std::vector<std::size_t>* chosen_;
};

// The components of the items of an array, each with a name that a viewer shows; a scalar has none.
class components {
 public:
  constexpr components() = default;
  template <std::size_t COUNT>
  constexpr components(const char* const (&names)[COUNT]) : names_(names), count_(static_cast<int>(COUNT)) {}

  int count() const { return count_; }
  const char* name(int i) const { return names_ == nullptr ? nullptr : names_[i]; }

 private:
  const char* const* names_ = nullptr;
  int count_ = 1;
};

inline constexpr components SCALAR;
inline constexpr const char* XYZ_NAMES[] = {"x", "y", "z"};
inline constexpr components XYZ(XYZ_NAMES);
inline constexpr const char* TENSOR_NAMES[] = {"xx", "yy", "zz", "xy", "yz", "xz"};
inline constexpr components TENSOR(TENSOR_NAMES);

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

// The smallest of the types Int8, Int16 and Int32 for numbers from -1 to below `end`.
const char* type_of_numbers(std::size_t end);

pugi::xml_node start_array(pugi::xml_node parent, const char* name, const char* type, const components& of);

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

template <class VALUE>
void write_array(pugi::xml_node parent, const char* name, const char* type, std::size_t items, const components& of,
                 const VALUE& value) {
  pugi::xml_node array = start_array(parent, name, type, of);
  if (form_of(parent) == vtu_form::ASCII) {
    write_text(array, items, of.count(), value);
    return;
  }
  packed_numbers numbers(type, items * subscript(of.count()));
  for (std::size_t i = 0; i < items; ++i) {
    for (int c = 0; c < of.count(); ++c) numbers.add(value(i, c));
  }
  array.text().set(numbers.encoded().c_str());
}

// value(item, component) gives the values of an item of the model.
template <class VALUE>
void data_array(const vtu_data& parent, const char* name, const char* type, std::size_t items, const components& of,
                const VALUE& value) {
  if (parent.chosen() == nullptr) {
    write_array(parent.place(), name, type, items, of, value);
    return;
  }
  const std::vector<std::size_t>& chosen = *parent.chosen();
  write_array(parent.place(), name, type, chosen.size(), of, [&](std::size_t i, int c) { return value(chosen[i], c); });
}

template <class VALUE>
void reals(const vtu_data& parent, const char* name, std::size_t items, const components& of, const VALUE& value) {
  data_array(parent, name, "Float64", items, of, value);
}

// Field data: numbers and texts that belong to the whole file. Texts are text in both forms, a byte a number; no array
// stands for none.
void field_numbers(pugi::xml_node fields, const char* name, const char* type, const std::vector<double>& values);
void field_texts(pugi::xml_node fields, const char* name, const std::vector<std::string>& texts);

}  // namespace solver

#endif
