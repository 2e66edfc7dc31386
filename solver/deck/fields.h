// fields.h: the text of one line: blanks, letters, fields between commas, numbers.
#ifndef FINITES_SOLVER_DECK_FIELDS_H
#define FINITES_SOLVER_DECK_FIELDS_H

#include <string>
#include <string_view>
#include <vector>

namespace solver::deck {

std::string_view trimmed(std::string_view s);  // without blanks, tabs and carriage returns at both ends
std::string upper(std::string_view s);         // the 26 letters; other bytes stay

// Upper case without any blank: how keywords and parameters compare, so that *End Step and *ENDSTEP are one.
std::string squeezed(std::string_view s);

// "My set" without its quotes; others as they are.
std::string_view without_quotes(std::string_view s);

// 'text' for a message: at most 40 bytes, and no control characters.
std::string in_quotes(std::string_view s);

// Appends the fields of a line, trimmed. A comma between quotes is text; one at the end opens no further field; the
// result is whether it is there.
bool split_fields(std::string_view line, std::vector<std::string_view>& fields);

enum class number_fault { NONE, NOT_A_NUMBER, NOT_FINITE, OUT_OF_RANGE };

// The whole field must be the number. A leading plus sign and the exponent letter D are accepted.
number_fault parse_real(std::string_view field, double& value);
number_fault parse_integer(std::string_view field, int& value);

// The shortest text that is read as the same number again.
std::string text_of_real(double value);

// "'1.2.3' is not a number"
std::string describe(number_fault fault, std::string_view field, bool integer);

// Whether a field holds numbers that tabs, blanks or semicolons keep apart, as tables of other programs have them.
bool holds_several(std::string_view field);

// A field that begins like a number is one, every other field is a name.
bool looks_like_number(std::string_view field);

}  // namespace solver::deck

#endif
