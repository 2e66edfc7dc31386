// deck_reader.h: a deck in the keyword form of CalculiX and Abaqus becomes a model. README.md describes the form.
//
// Either the whole deck is understood or a deck_error says what is wrong first. What a deck asks for and this solver
// does by its own rule (output requests, time increments) is neither refused nor dropped: it is in model::notes.
#ifndef FINITES_SOLVER_DECK_READER_H
#define FINITES_SOLVER_DECK_READER_H

#include <string>

#include "deck/deck_files.h"
#include "model/deck_error.h"
#include "model/model.h"

namespace solver {

struct reading {
  bool refine = false;  // quadratic solids are divided into linear ones, elements/parts.h; else they are errors
  file_source source = text_of_file;
};

model read_deck(const std::string& path, const reading& how = {});

// `name` stands for the file in messages, and the folder of `name` is where *INCLUDE looks.
model read_deck_text(const std::string& text, const std::string& name, const reading& how = {});

}  // namespace solver

#endif
