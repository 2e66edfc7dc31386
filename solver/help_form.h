// help_form.h: the form of --help: options in groups, their texts in a column that ends within 100 columns, examples.
#ifndef FINITES_SOLVER_HELP_FORM_H
#define FINITES_SOLVER_HELP_FORM_H

#include <string>

#include <CLI/App.hpp>
#include <CLI/Formatter.hpp>

namespace solver {

class help_form : public CLI::Formatter {
 public:
  std::string make_group(std::string group, bool is_positional, std::vector<const CLI::Option*> all) const override;
  std::string make_option(const CLI::Option* option, bool is_positional) const override;
};

extern const char* const HELP_FOOTER;

}  // namespace solver

#endif
