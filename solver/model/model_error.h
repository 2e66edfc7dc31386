// model_error.h: what is wrong with a model that was read well: a sentence with file, line and keyword where a record
// of the deck is the cause, and with the file alone where the structure as a whole is.
#ifndef FINITES_SOLVER_MODEL_ERROR_H
#define FINITES_SOLVER_MODEL_ERROR_H

#include <string>

#include "model/deck_error.h"
#include "model/model.h"

namespace solver {

inline deck_error model_error(const model& m, const std::string& text) { return {m.deck, 0, "", text}; }

// "deck.inp:12: *ELEMENT: text", from any record of the model that remembers its line.
template <class RECORD>
deck_error model_error(const model& m, const RECORD& record, const std::string& keyword, const std::string& text) {
  const bool known = record.file >= 0 && record.file < count_of(m.files);
  return {known ? m.files[record.file] : m.deck, record.line, keyword, text};
}

}  // namespace solver

#endif
