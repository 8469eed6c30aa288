#include "cli/commands/completion_command.h"

#include <CLI/CLI.hpp>
#include <vector>

#include "base/failure.h"
#include "base/text_list.h"
#include "effect/params/control_table.h"

namespace flumo::cli {
namespace {

bool takes_value(const flumo::Control& control) {
    return control.kind != flumo::ControlKind::GroupStart && control.kind != flumo::ControlKind::GroupEnd;
}

// "Id=" of each control that the option can set; nothing for an option of another kind.
std::string control_words(const std::string& option) {
    std::string words;
    if (option != "set" && option != "gradient") return words;
    for (const flumo::Control& control : kControls) {
        const bool fits =
            option == "set" ? takes_value(control) : control.kind == flumo::ControlKind::Gradient;
        if (fits) words += (words.empty() ? "" : " ") + std::string(control.id) + "=";
    }
    return words;
}

std::vector<const CLI::App*> commands_of(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App*) { return true; });
}

// Positional arguments have no name to complete; an option without a group is for the program itself.
std::vector<const CLI::Option*> options_of(const CLI::App& command) {
    std::vector<const CLI::Option*> options;
    for (const CLI::Option* option : command.get_options()) {
        if (!option->get_lnames().empty() && !option->get_group().empty()) options.push_back(option);
    }
    return options;
}

bool is_flag(const CLI::Option& option) {
    return option.get_items_expected_max() == 0;
}

// For a string between single quotes.
std::string quoted(const std::string& text, std::string_view escaped, bool doubles_quote) {
    std::string result;
    for (const char c : text) {
        if (c == '\n') {
            result += ' ';
        } else if (c == '\'') {
            result += doubles_quote ? "'\\''" : "\\'";
        } else {
            if (escaped.find(c) != std::string_view::npos) result += '\\';
            result += c;
        }
    }
    return result;
}

std::string bash_words(const CLI::App& command) {
    std::string words;
    for (const CLI::Option* option : options_of(command))
        words += (words.empty() ? "--" : " --") + option->get_lnames().front();
    return words;
}

std::string bash_script(const CLI::App& app) {
    std::string names;
    std::string cases;
    for (const CLI::App* command : commands_of(app)) {
        names += (names.empty() ? "" : " ") + command->get_name();
        cases += "        " + command->get_name() + ") words='" + bash_words(*command) + "' ;;\n";
    }
    const auto ids = [](const char* option) {
        return std::string("        --") + option + ")\n            compopt -o nospace\n" +
               "            COMPREPLY=($(compgen -W '" + control_words(option) +
               "' -- \"$word\"))\n            return ;;\n";
    };
    return "_flumo() {\n    local word=${COMP_WORDS[COMP_CWORD]} words=\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n        COMPREPLY=($(compgen -W '" +
           names + "' -- \"$word\"))\n        return\n    fi\n    case ${COMP_WORDS[COMP_CWORD-1]} in\n" +
           ids("set") + ids("gradient") + "    esac\n    case ${COMP_WORDS[1]} in\n" + cases +
           "    esac\n    case $word in\n        -*) COMPREPLY=($(compgen -W \"$words\" -- \"$word\")) ;;\n"
           "        *)\n            compopt -o filenames\n            COMPREPLY=($(compgen -f -- \"$word\")) "
           ";;\n"
           "    esac\n}\ncomplete -F _flumo flumo\n";
}

std::string zsh_option(const CLI::Option& option) {
    const std::string& name = option.get_lnames().front();
    std::string line =
        " \\\n            '*--" + name + "[" + quoted(option.get_description(), "[]:\\", true) + "]";
    if (is_flag(option)) return line + "'";
    const std::string ids = control_words(name);
    line += ":" + quoted(option.get_type_name(), ":", true) + ":";
    return line + (ids.empty() ? "_files'" : "compadd -S \"\" -- " + ids + "'");
}

std::string zsh_script(const CLI::App& app) {
    std::string names;
    std::string cases;
    for (const CLI::App* command : commands_of(app)) {
        names += "            '" + command->get_name() + ":" + quoted(command->get_description(), ":", true) +
                 "'\n";
        cases += "        " + command->get_name() + ") _arguments";
        for (const CLI::Option* option : options_of(*command))
            cases += zsh_option(*option);
        cases += " ;;\n";
    }
    return "#compdef flumo\n_flumo() {\n    if (( CURRENT == 2 )); then\n        local -a commands=(\n" +
           names +
           "        )\n        _describe command commands\n        return\n    fi\n"
           "    shift words\n    (( CURRENT-- ))\n    case $words[1] in\n" +
           cases +
           "    esac\n}\nif [ \"$funcstack[1]\" = _flumo ]; then _flumo \"$@\"; else compdef _flumo flumo; "
           "fi\n";
}

std::string fish_option(const std::string& command, const CLI::Option& option) {
    const std::string& name = option.get_lnames().front();
    std::string line = "complete -c flumo -n '__fish_seen_subcommand_from " + command + "' -l " + name;
    if (!option.get_snames().empty()) line += " -s " + option.get_snames().front();
    if (!is_flag(option)) line += " -r";
    if (const std::string ids = control_words(name); !ids.empty()) line += " -f -a '" + ids + "'";
    return line + " -d '" + quoted(option.get_description(), "\\", false) + "'\n";
}

std::string fish_script(const CLI::App& app) {
    std::string text;
    for (const CLI::App* command : commands_of(app)) {
        text += "complete -c flumo -n __fish_use_subcommand -f -a " + command->get_name() + " -d '" +
                quoted(command->get_description(), "\\", false) + "'\n";
        for (const CLI::Option* option : options_of(*command))
            text += fish_option(command->get_name(), *option);
    }
    return text;
}

}  // namespace

std::string completion_script(const CLI::App& app, std::string_view shell) {
    if (shell == "bash") return bash_script(app);
    if (shell == "zsh") return zsh_script(app);
    if (shell == "fish") return fish_script(app);
    throw usage_failure("completion " + in_quotes(shell) + ": expected bash, zsh or fish");
}

}  // namespace flumo::cli
