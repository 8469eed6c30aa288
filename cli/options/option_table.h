// The options of a command as a table of rows.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/failure.h"

namespace flumo::cli {

/// How often an option may stand on one command line.
enum class Repeats {
    kLastCounts,  ///< a later one replaces an earlier one
    kAllCount,
    kRefused,  ///< a second one is a usage error
};

/// One option. `Options` is the record that it fills.
template <typename Options>
struct OptionRow {
    const char* heading;       ///< the group in the help text
    const char* names;         ///< such as "-o,--output"
    const char* placeholder;   ///< of its value in the help text; a flag, which has no value, has none
    const char* help;          ///< lines are broken by hand
    const char* default_text;  ///< shown in brackets; may be empty
    /// Reads the value, an empty text for a flag. Throws Failure (usage).
    void (*apply)(Options&, const std::string&);
    Repeats repeats = Repeats::kLastCounts;
};

inline std::string given_twice(const char* names, const std::string& first, const std::string& second) {
    return std::string(names) + " is given twice, \"" + first + "\" and \"" + second + "\": expected one";
}

/// Adds the row to `command`. Parsing applies the options in the order in which they are written, so that the
/// first mistake is the one that is reported. `options` must outlive the command.
template <typename Options>
void add_option_row(CLI::App& command, Options& options, const OptionRow<Options>& row) {
    if (*row.placeholder == '\0') {
        const auto apply = [&options, apply = row.apply](int64_t) { apply(options, ""); };
        command.add_flag_function(row.names, apply, row.help)->group(row.heading)->trigger_on_parse();
        return;
    }
    const auto apply = [&options, row,
                        given = std::string()](const std::vector<std::string>& values) mutable {
        for (const std::string& value : values) {
            if (row.repeats == Repeats::kRefused && !given.empty())
                throw usage_failure(given_twice(row.names, given, value));
            given = value;
            row.apply(options, value);
        }
    };
    CLI::Option* option = command.add_option_function<std::vector<std::string>>(row.names, apply, row.help);
    option->group(row.heading)->type_name(row.placeholder)->allow_extra_args(false)->trigger_on_parse();
    if (*row.default_text != '\0') option->default_str(row.default_text);
}

template <typename Options>
void add_option_rows(CLI::App& command, Options& options, std::span<const OptionRow<Options>> rows) {
    for (const OptionRow<Options>& row : rows)
        add_option_row(command, options, row);
}

}  // namespace flumo::cli
