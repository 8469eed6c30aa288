#include "effect/shaders/shader_texts.h"

#include <gmock/gmock.h>

#include <map>
#include <regex>
#include <string>

#include "tests/glsl/gl_objects.h"
#include "tests/glsl/glsl_bench.h"

namespace flumo::test {
namespace {

using Declarations = std::map<std::string, std::string>;  // name, type

Declarations declared_uniforms(const std::string& text) {
    Declarations found;
    const std::regex pattern("(?:^|\\n)uniform (\\w+) (\\w+);");
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
        found[(*match)[2]] = (*match)[1];
    }
    return found;
}

const char* type_name(int) {
    return "int";
}
const char* type_name(float) {
    return "float";
}
const char* type_name(const Pair&) {
    return "vec2";
}

// A name or a type that differs from what is set for a frame would go unnoticed: GL ignores such calls.
TEST(Texts, MainDeclaresTheUniformsOfAFrame) {
    Declarations expected{{"useLayer4", "int"},
                          {"inputTexture1", "sampler2D"},
                          {"inputTexture2", "sampler2D"},
                          {"inputTexture3", "sampler2D"},
                          {"linesGradientTexture", "sampler2D"},
                          {"noiseGradientTexture", "sampler2D"}};
    MainUniforms{}.each([&](const char* name, const auto& value) { expected[name] = type_name(value); });
    EXPECT_EQ(declared_uniforms(kMainFragmentText), expected);
}

TEST(Texts, BeginWithTheVersion) {
    for (const char* text : {kUvVertexText, kColorVertexText, kMainFragmentText, kCopyFragmentText,
                             kBlurFragmentText, kColorFragmentText, kOutputFragmentText}) {
        EXPECT_THAT(text, testing::StartsWith("#version 330\n"));
    }
}

// The draw feeds texture coordinates through location 1 also where only Position and Color have a name bound.
TEST(Texts, MainGetsItsTextureCoordinatesAtOne) {
    GlslBench::shared();
    const Program program(kUvVertexText, kMainFragmentText, {{0, "Position"}, {2, "Color"}});
    EXPECT_EQ(program.attribute("Position"), 0);
    EXPECT_EQ(program.attribute("UVs"), 1);
    EXPECT_EQ(program.attribute("Color"), -1);
}

}  // namespace
}  // namespace flumo::test
