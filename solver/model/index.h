// index.h: one rule for subscripts.
//
// Nodes, elements, sections and sets of a model are numbered with int, from 0; -1 stands for none. The lists of a
// model, and those that have a value for each node, element, degree of freedom or equation, take such a number as it
// is: the conversion to the unsigned subscripts of the standard library is here and nowhere else. Loops over the
// components of a small vector count with std::size_t.
#ifndef FINITES_SOLVER_INDEX_H
#define FINITES_SOLVER_INDEX_H

#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

namespace solver {

// A subscript of the standard library; of a negative number one that no list has.
template <class INTEGER>
constexpr std::size_t subscript(INTEGER i) {
  static_assert(std::is_integral_v<INTEGER>, "subscripts are integers");
  return static_cast<std::size_t>(i);
}

// The length of a list, and a position in it, as the int that numbers its items.
template <class LIST>
int count_of(const LIST& items) {
  return static_cast<int>(items.size());
}
template <class INTEGER>
constexpr int number_of(INTEGER position) {
  return static_cast<int>(position);
}

// A length or a place as the signed number that iterators, streams and Eigen take.
template <class INTEGER>
constexpr std::ptrdiff_t signed_index(INTEGER i) {
  return static_cast<std::ptrdiff_t>(i);
}

// A vector whose subscripts are integers of any kind.
template <class T>
class numbered : public std::vector<T> {
 public:
  using std::vector<T>::vector;
  numbered() = default;
  numbered(std::vector<T> items) : std::vector<T>(std::move(items)) {}  // so that a vector of the library is one, too

  template <class INTEGER>
  decltype(auto) operator[](INTEGER i) {
    return std::vector<T>::operator[](subscript(i));
  }
  template <class INTEGER>
  decltype(auto) operator[](INTEGER i) const {
    return std::vector<T>::operator[](subscript(i));
  }
};

}  // namespace solver

#endif
