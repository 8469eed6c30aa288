#include "cli/options/unknown_word.h"

#include <CLI/CLI.hpp>
#include <vector>

#include "base/text_list.h"

namespace flumo::cli {
namespace {

std::vector<std::string> command_names(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

std::vector<std::string> option_names(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_group().empty()) continue;
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    }
    return names;
}

Failure unknown(const std::string& what, const std::string& word, const std::vector<std::string>& names) {
    const auto nearest = nearest_word(word, names);
    return usage_failure("unknown " + what + " " + in_quotes(word) +
                         (nearest ? "; did you mean " + *nearest + "?" : "; --help lists what there is"));
}

bool is_option(const std::string& word) {
    return word.size() > 1 && word[0] == '-';
}

bool has_positionals(const CLI::App& command) {
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_positional()) return true;
    }
    return false;
}

const CLI::App* find_command(const CLI::App& app, const std::string& word) {
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        if (command->get_name() == word) return command;
    }
    return nullptr;
}

// How many words after this one are the option's value.
std::size_t values_after(const CLI::Option& option, const std::string& word) {
    if (option.get_items_expected_max() == 0) return 0;
    const bool is_attached = word.starts_with("--") ? word.find('=') != word.npos : word.size() > 2;
    return is_attached ? 0 : 1;
}

}  // namespace

std::optional<UnknownWord> find_unknown_word(const CLI::App& app, std::span<const std::string> words) {
    const CLI::App* command = &app;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--") return std::nullopt;
        if (!is_option(word)) {
            if (command == &app) {
                const CLI::App* const named = find_command(app, word);
                if (!named) return UnknownWord{i, unknown("command", word, command_names(app))};
                command = named;
            } else if (!has_positionals(*command)) {
                return UnknownWord{i,
                                   usage_failure(in_quotes(word) + " stands alone: " + command->get_name() +
                                                 " takes options only, such as -o FILE")};
            }
            continue;
        }
        const std::string name = word.starts_with("--") ? word.substr(0, word.find('=')) : word.substr(0, 2);
        const CLI::Option* const option = command->get_option_no_throw(name);
        if (!option) return UnknownWord{i, unknown("option", name, option_names(*command))};
        i += values_after(*option, word);
    }
    return std::nullopt;
}

}  // namespace flumo::cli
