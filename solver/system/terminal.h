// terminal.h: what the error stream is, and whether it takes colour.
#ifndef FINITES_SOLVER_TERMINAL_H
#define FINITES_SOLVER_TERMINAL_H

#include <string>

namespace solver {

enum class color_choice { AUTO, ALWAYS, NEVER };

// Is the error stream a terminal?
bool error_stream_is_terminal();

// One whose lines can be written over: not where TERM is "dumb" or empty.
bool error_stream_can_be_rewritten();

// Columns of the terminal behind the error stream; 80 where it does not say.
int error_stream_width();

// Decides for the whole process. AUTO: on a terminal that is not dumb, unless NO_COLOR is set and not empty
// (https://no-color.org).
void choose_color(color_choice choice);

// Lines for the error stream with "warning:" in magenta, "error:" and "finites-solve:" in red where colour is chosen;
// as they are otherwise.
std::string colored(const std::string& lines);

}  // namespace solver

#endif
