#include "effect/gradient/value/gradient_text.h"

#include <gtest/gtest.h>

#include <sstream>

#include "effect_api/commands.h"

namespace flumo::test {
namespace {

TEST(GradientText, IsOneLineOfNamesAndNumbers) {
    EXPECT_EQ(FormatGradientText({}), "Gradient");
    EXPECT_EQ(FormatGradientText({{1.0F, {kStopSin, 1, 1, 1, 1}}, {0.0F, {kStopSin, 0, 0, 0, 1}}}),
              "Gradient t 0 sin  r 0 g 0 b 0 a 1 t 1 sin  r 1 g 1 b 1 a 1");
    EXPECT_EQ(FormatGradientText({{1.0F / 3.0F, {kStopLinear, 1e-7F, 2e10F, -0.5F, 0}},
                                  {0.5F, {kStopEdge, 0.1F, 123456.789F, 0, 1}},
                                  {0.75F, {7, 0, 0, 0, 1}}}),
              "Gradient t 0.333333 linear  r 1e-07 g 2e+10 b -0.5 a 0 t 0.5 edge  r 0.1 g 123457 b 0 a 1"
              " t 0.75 r 0 g 0 b 0 a 1");
}

TEST(GradientText, ReaderMergesUntilTheFirstUnexpectedWord) {
    const GradientStop red{kStopLinear, 1, 0.25F, 0, 0.5F};
    const GradientStop blue{kStopEdge, 0, 0, 1, 1};
    constexpr PF_Err kUnread = PF_Err_UNRECOGNIZED_PARAM_TYPE;
    const std::string one = "Gradient t 0.5 linear  r 1 g 0.25 b 0 a 0.5";
    struct Case {
        const char* promise;
        std::string text;
        PF_Err result;
        GradientStopMap added;
    };
    const Case cases[] = {
        {"nothing at all", "", kUnread, {}},
        {"another header", "gradient t 0.5 linear r 1 g 0 b 0 a 0.5", kUnread, {}},
        {"the header alone", "Gradient", PF_Err_NONE, {}},
        {"one stop", one, PF_Err_NONE, {{0.5F, red}}},
        {"two stops", one + " t 0.75 edge  r 0 g 0 b 1 a 1", PF_Err_NONE, {{0.5F, red}, {0.75F, blue}}},
        {"a repeated position", one + " t 0.5 edge r 0 g 0 b 1 a 1", PF_Err_NONE, {{0.5F, blue}}},
        {"white space after the last number", one + "\n", kUnread, {{0.5F, red}}},
        {"a kind that is none", one + " t 0.6 cubic r 1 g 1 b 1 a 1", kUnread, {{0.5F, red}}},
        {"swapped channels", "Gradient t 0.5 sin g 1 r 1 b 1 a 1", kUnread, {}},
    };
    for (const Case& c : cases) {
        GradientStopMap stops = WhiteGradient(), expected = c.added;
        expected.merge(WhiteGradient());
        std::istringstream text(c.text);
        EXPECT_EQ(ParseGradientText(text, stops), c.result) << c.promise;
        EXPECT_EQ(stops, expected) << c.promise;
    }
}

}  // namespace
}  // namespace flumo::test
