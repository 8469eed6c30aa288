// How `--help` looks.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace flumo::cli {

/// One option a line: names, placeholder, what it does and its default in brackets. Help texts break their
/// lines themselves.
class HelpFormat : public CLI::Formatter {
  public:
    HelpFormat() { column_width(26); }

    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_type_name().empty() ? "" : " " + option->get_type_name();
    }

    std::string make_option_desc(const CLI::Option* option) const override {
        const std::string value = option->get_default_str();
        return option->get_description() + (value.empty() ? "" : " [" + value + "]");
    }
};

}  // namespace flumo::cli
