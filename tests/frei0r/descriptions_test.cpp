// The descriptions that Kdenlive and Shotcut read, against the plug-ins that they describe.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>

#include "base/file_contents.h"
#include "tests/frei0r/loaded_plugin.h"

namespace flumo::frei0r::test {
namespace {

using Attributes = std::map<std::string, std::string>;

/// The <parameter> elements of a file, and the name that is shown for each.
std::vector<Attributes> rows_of(const char* file) {
    const std::string text = read_text_file(file);
    const std::regex element("<parameter ([^>]*)>([^]*?)</parameter>");
    const std::regex attribute("([a-z]+)=\"([^\"]*)\"");
    const std::regex name("<name>([^<]+)</name>");
    std::vector<Attributes> rows;
    for (std::sregex_iterator row(text.begin(), text.end(), element), end; row != end; ++row) {
        const std::string head = (*row)[1];
        const std::string body = (*row)[2];
        Attributes attributes;
        for (std::sregex_iterator pair(head.begin(), head.end(), attribute); pair != end; ++pair)
            attributes[(*pair)[1]] = (*pair)[2];
        std::smatch shown;
        if (std::regex_search(body, shown, name)) attributes["shown"] = shown[1];
        rows.push_back(attributes);
    }
    return rows;
}

TEST(KdenliveDescriptions, ShowEveryParameterFromItsDefaultWithinItsRange) {
    for (const auto& [plugin_file, description] :
         {std::pair{FLUMO_SOURCE, FLUMO_GENERATOR}, {FLUMO_FILTER, FLUMO_EFFECT}}) {
        const LoadedPlugin plugin(plugin_file);
        const Drawn instance(plugin, 8, 8);
        std::set<std::string> shown;
        for (Attributes& row : rows_of(description)) {
            const int index = plugin[row["name"]];
            EXPECT_TRUE(shown.insert(row["shown"]).second) << row["shown"];
            if (plugin.param(index).type == kF0rString) {
                EXPECT_EQ(row["default"], "");
                continue;
            }
            const double at_first = std::stod(row["default"]);
            EXPECT_NEAR(at_first, instance.number(index), 1e-6) << row["name"];
            if (row["type"] == "list") {
                EXPECT_THAT(";" + row["paramlist"] + ";", testing::HasSubstr(";" + row["default"] + ";"));
            } else if (row["type"] != "bool") {
                const double factor = std::stod(row["factor"]);
                EXPECT_LE(std::stod(row["min"]), at_first * factor) << row["name"];
                EXPECT_GE(std::stod(row["max"]), at_first * factor) << row["name"];
                // Digits that the panel does not show are lost when its value is set.
                const double digits = std::pow(10, std::stoi(row["decimals"]));
                EXPECT_NEAR(at_first * factor * digits, std::round(at_first * factor * digits), 1e-6)
                    << row["name"];
            }
        }
        const bool is_effect = plugin.info().plugin_type == kF0rFilter;
        EXPECT_EQ(shown.size(), is_effect ? static_cast<size_t>(plugin.info().num_params) : 15u);
    }
}

TEST(ShotcutDescription, HasARowForEveryParameterOfTheFilter) {
    const LoadedPlugin plugin(FLUMO_FILTER);
    const Drawn instance(plugin, 8, 8);
    const std::string library = read_text_file(FLUMO_SHOTCUT "/controls.js");
    const auto list = [&](const std::string& name) {
        const size_t begin = library.find('[', library.find("var " + name + " = "));
        return nlohmann::json::parse(library.substr(begin, library.find("];", begin) + 1 - begin));
    };
    const auto controls = list("controls");
    EXPECT_EQ(list("texts").size() + controls.size(), static_cast<size_t>(plugin.info().num_params));
    const std::string metadata = read_text_file(FLUMO_SHOTCUT "/meta.qml");
    for (const auto& row : controls) {
        const int index = plugin[row["name"]];
        EXPECT_EQ(row["normal"], instance.number(index)) << row;
        const std::string property = "property: " + row["name"].dump() + ";";
        EXPECT_EQ(metadata.find(property) != metadata.npos, row["kind"] == "number") << row;
        EXPECT_EQ(row["kind"] == "switch", plugin.param(index).type == kF0rBool) << row;
    }
}

}  // namespace
}  // namespace flumo::frei0r::test
