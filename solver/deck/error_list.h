// error_list.h: the errors of a deck as its reader meets them. It goes on after each, so that one run shows many.
//
// What only follows from an earlier error is not reported: a reader that needs something whose definition failed throws
// a `consequence` in place of an error.
#ifndef FINITES_SOLVER_DECK_ERROR_LIST_H
#define FINITES_SOLVER_DECK_ERROR_LIST_H

#include <cstddef>
#include <vector>

#include "model/deck_error.h"

namespace solver::deck {

struct card_deck;

struct consequence {};

class error_list {
 public:
  // So many are reported at the end.
  static constexpr std::size_t MOST_REPORTED = 20;

  // Ends the reading by `too_many` when a deck has nothing but errors.
  struct too_many {};
  void add(const deck_error& error);

  bool empty() const { return errors_.empty(); }

  // Runs the action; false when it failed, and its error is in the list unless it was a consequence.
  template <class ACTION>
  bool attempt(const ACTION& action) {
    try {
      action();
      return true;
    } catch (const deck_error& error) {
      add(error);
    } catch (const consequence&) {
    }
    return false;
  }

  // Throws what is in the list, in the order of the deck: a deck_error for one, deck_errors for several.
  void raise(const card_deck& deck);

 private:
  std::vector<deck_error> errors_;
};

}  // namespace solver::deck

#endif
