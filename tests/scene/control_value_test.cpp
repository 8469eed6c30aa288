#include "scene/control_value.h"

#include <gtest/gtest.h>

#include "tests/scene/sample_catalog.h"
#include "tests/support/failure_matchers.h"

namespace flumo::scene {
namespace {

double number(const char* id, const char* text) {
    return std::get<double>(parse_control_value(sample_catalog().find(id), text));
}

TEST(ControlValue, ReadsNumbersChoicesAndSwitches) {
    EXPECT_EQ(number("Scale", "12.5"), 12.5);
    EXPECT_EQ(number("Scale", "-1e3"), -1000);
    EXPECT_EQ(number("Scale", "+7"), 7);
    EXPECT_EQ(number("Count", "1e2"), 100);
    EXPECT_EQ(number("Evolution", "-720.5"), -720.5);
    EXPECT_EQ(number("Type", "fluid"), 1);
    EXPECT_EQ(number("Type", "VORONOI"), 2);
    EXPECT_EQ(number("Type", "3"), 3);
    for (const char* on : {"on", "ON", "true", "1"})
        EXPECT_EQ(number("Loop", on), 1) << on;
    for (const char* off : {"off", "False", "0"})
        EXPECT_EQ(number("Loop", off), 0) << off;
}

TEST(ControlValue, ReadsGradientsAndLayers) {
    const auto stops = parse_control_value(sample_catalog().find("Gradient"), "0:#fff,1:#000");
    EXPECT_EQ(std::get<std::vector<Stop>>(stops).size(), 2u);
    const Control& layer = sample_catalog().find("Layer");
    EXPECT_EQ(std::get<std::filesystem::path>(parse_control_value(layer, "a.png", "scenes")), "scenes/a.png");
    EXPECT_EQ(std::get<std::filesystem::path>(parse_control_value(layer, "/a.png", "scenes")), "/a.png");
    EXPECT_EQ(std::get<std::filesystem::path>(parse_control_value(layer, "none", "scenes")), "");
    EXPECT_FAILURE(parse_control_value(layer, ""), FailureKind::kUsage, "picture file");
}

TEST(ControlValue, SaysWhatWasExpected) {
    const struct {
        const char* id;
        const char* text;
        const char* expected;
    } cases[] = {
        {"Scale", "abc", "\"abc\": expected a number -1000000 to 1000000"},
        {"Scale", "1 ", "expected a number"},
        {"Scale", "0x10", "expected a number"},
        {"Scale", "nan", "expected a number"},
        {"Scale", "inf", "expected a number"},
        {"Scale", "1000000.5", "1000000.5: expected a number -1000000 to 1000000"},
        {"Count", "0", "0: expected a whole number 1 to 1000"},
        {"Count", "1001", "1 to 1000"},
        {"Count", "2.5", "2.5: expected a whole number"},
        {"Evolution", "40000", "degrees -32767 to 32767"},
        {"Loop", "yes", "\"yes\": expected on or off"},
        {"Loop", "2", "expected on or off"},
        {"Type", "Perlin", "\"Perlin\": expected one of Fluid, Voronoi, Smoke, or a number 1 to 3"},
        {"Type", "Hidden", "expected one of Fluid, Voronoi, Smoke,"},
        {"Type", "4", "1 to 3"},
        {"Type", "1.5", "1 to 3"},
    };
    for (const auto& row : cases) {
        EXPECT_FAILURE(number(row.id, row.text), FailureKind::kUsage, row.expected)
            << row.id << "=" << row.text;
    }
}

TEST(ControlCatalog, SuggestsTheNearestControl) {
    const std::pair<const char*, const char*> cases[] = {
        {"scale", "did you mean Scale?"},    {"Gradeint", "did you mean Gradient?"},
        {"Wavelength", "such as NoiseType"}, {"", "such as NoiseType"},
        {"InnerEnd", "group mark"},
    };
    for (const auto& row : cases) {
        EXPECT_FAILURE(sample_catalog().find(row.first), FailureKind::kUsage, row.second) << row.first;
    }
}

}  // namespace
}  // namespace flumo::scene
