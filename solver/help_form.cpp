// help_form.cpp: --help, in the form that help2man reads.
#include "help_form.h"

#include <sstream>

namespace solver {

namespace {

constexpr std::size_t COLUMN = 30, WIDTH = 80;

// The words of `text` in lines that begin at COLUMN, the first one behind `used` columns.
std::string in_column(std::string line, const std::string& text) {
  std::string result;
  if (line.size() + 2 > COLUMN) {
    result = line + "\n";
    line.clear();
  }
  line.resize(COLUMN, ' ');
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const bool first = line.size() == COLUMN;
    if (!first && line.size() + 1 + word.size() > WIDTH) {
      result += line + "\n";
      line.assign(COLUMN, ' ');
      line += word;
    } else {
      line += (first ? "" : " ") + word;
    }
  }
  return result + line + "\n";
}

}  // namespace

const char* const HELP_FOOTER =
    R"(Examples:
  finites-solve frame.inp
         solve; results for a viewer in frame.vtu, the summary on the terminal
  finites-solve frame.inp -o out/frame.vtu --csv nodes.csv --members ends.csv
         tables of displacements and reactions and of the ends of members
  finites-solve slab.inp --node 12,48 --reference 12,uz,-4.06,Navier
         print displacements, one of them beside a published value
  finites-solve --check export.inp
         what a mesher's deck holds and what is wrong with it
  finites-solve --memory big.inp && finites-solve big.inp --threads 4
         ask for the memory first, then solve with four threads

Exit status:
  0      solved, or checked without an error
  1      an error in the deck or the model, or results that cannot be written
  2      usage)";

std::string help_form::make_group(std::string group, bool is_positional, std::vector<const CLI::Option*> all) const {
  std::string result = is_positional ? "\n" : "";
  result += (is_positional ? std::string("Model") : group) + ":\n";
  for (const CLI::Option* const option : all) result += make_option(option, is_positional);
  return result + (is_positional ? "\n" : "");
}

std::string help_form::make_option(const CLI::Option* option, bool is_positional) const {
  const bool long_alone = !is_positional && option->get_snames().empty();
  std::string name = option->get_name(is_positional, !is_positional);
  const std::size_t comma = name.find(',');
  if (comma != std::string::npos) name.insert(comma + 1, " ");
  const std::string value = is_positional ? "" : option->get_option_text();
  return in_column((long_alone ? "      " : "  ") + name + (value.empty() ? "" : " " + value),
                   option->get_description());
}

}  // namespace solver
