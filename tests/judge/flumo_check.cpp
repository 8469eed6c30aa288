#include "tests/judge/flumo_check.h"

#include <filesystem>

#include "tests/support/program.h"

namespace flumo::judge::test {

std::vector<std::string> Checked::each(const char* key) const {
    std::vector<std::string> values;
    for (const auto& finding : report["findings"])
        values.push_back(finding[key]);
    return values;
}

std::string Checked::findings() const {
    std::string text;
    for (const auto& finding : report["findings"]) {
        text += finding["case"].get<std::string>() + ": " + finding["expected"].get<std::string>() + "; " +
                finding["seen"].get<std::string>() + "\n";
    }
    return text;
}

Checked flumo_check(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {FLUMO_PROGRAM, "check", "--json"});
    const flumo::test::Said said = flumo::test::run_program(arguments);
    return {said.status, said.errors, nlohmann::json::parse(said.output, nullptr, false)};
}

std::string broken_module(const std::string& fault) {
    const std::filesystem::path sound(SMALL_EFFECT);
    const std::filesystem::path broken = sound.parent_path() / (fault + ".so");
    std::error_code there_already;
    std::filesystem::create_symlink(sound.filename(), broken, there_already);
    return broken;
}

}  // namespace flumo::judge::test
