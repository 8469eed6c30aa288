// The plug-ins' files, called as editors call them: in any order, with anything, from any thread.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <fstream>
#include <limits>
#include <locale>
#include <thread>

#include "base/text_list.h"
#include "tests/frei0r/loaded_plugin.h"
#include "tests/support/caller_context.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::frei0r::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using Words = std::vector<std::string>;

constexpr unsigned kWidth = 37;
constexpr unsigned kHeight = 19;

/// What `flumo render` makes of one frame.
Frame rendered(const Words& options, unsigned width = kWidth, unsigned height = kHeight) {
    const std::string size = std::to_string(width) + "x" + std::to_string(height);
    Words command = {FLUMO_PROGRAM, "render", "--quiet", "--size", size, "--depth", "8"};
    command.insert(command.end(), {"--raw", "rgba", "-o", "-"});
    command.insert(command.end(), options.begin(), options.end());
    const flumo::test::Said said = flumo::test::run_program(command);
    EXPECT_EQ(said.status, 0) << said.errors;
    Frame frame(said.output.size() / sizeof(uint32_t));
    std::memcpy(frame.data(), said.output.data(), said.output.size());
    return frame;
}

/// What an action writes on the two streams of this process.
template <typename Action>
std::array<std::string, 2> written_by(const Action& action) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    action();
    return {testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

class CommaForPoint : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Plugins, TellEveryControlOnceAndDefaultToTheDefaultLook) {
    const Frame default_look = rendered({});
    for (const char* file : {FLUMO_SOURCE, FLUMO_FILTER}) {
        const LoadedPlugin plugin(file);
        const F0rPluginInfo info = plugin.info();
        const bool is_filter = info.plugin_type == kF0rFilter;
        EXPECT_EQ(is_filter, std::string_view(file) == FLUMO_FILTER);
        // 86 controls, of which 14 start or end a group, 3 are layers and 2 gradients; then scene and
        // gradients.
        EXPECT_EQ(info.num_params, 86 - 14 - 3 - 2 + 3 + is_filter);
        Drawn instance(plugin, kWidth, kHeight);
        std::set<std::string> names;
        for (int i = 0; i < info.num_params; ++i) {
            const F0rParamInfo param = plugin.param(i);
            EXPECT_TRUE(names.insert(param.name).second) << param.name;
            EXPECT_FALSE(std::string_view(param.explanation).empty()) << param.name;
            if (param.type == kF0rString) {
                EXPECT_EQ(instance.text(i), "") << param.name;
                instance.set(i, instance.text(i));
                continue;
            }
            // An editor shows 0 to 1 and writes back what it has read, with as many digits as it likes.
            const double value = instance.number(i);
            EXPECT_TRUE(value >= 0 && value <= 1) << param.name << value;
            instance.set(i, std::round(value * 1e9) / 1e9);
        }
        const Frame input(kWidth * kHeight, 0xFF0000FF);
        EXPECT_EQ(instance.at(0, is_filter ? input : Frame()), default_look);
    }
}

TEST(Plugins, NumbersMeanWhatTheCommandLineMeans) {
    const LoadedPlugin plugin(FLUMO_SOURCE);
    Drawn instance(plugin, kWidth, kHeight);
    const struct {
        std::string name;
        double value;
        std::string assignment;
    } steps[] = {
        {"NoiseType", 0.33, "NoiseType=Voronoi"},
        {"NoiseType", 1, "NoiseType=Worley"},
        {"Complexity", 0.1, "Complexity=11"},
        {"Scale", 0.7775, "Scale=55.5"},
        {"Evolution", 2.5, "Evolution=900"},
        {"LinesVisible", 1, "LinesVisible=on"},
        {"LinesBlendMode", 0.5, "LinesBlendMode=2"},
        {"NoiseBottomCroppingThreshold", 0.7, "NoiseBottomCroppingThreshold=40"},
        // A smooth keyframe that swings past its end.
        {"LinesAlpha", -0.05, "LinesAlpha=0"},
        {"LinesAlpha", 0.25, "LinesAlpha=25"},
    };
    Words assignments;
    for (const auto& step : steps) {
        instance.set(step.name, step.value);
        assignments.insert(assignments.end(), {"--set", step.assignment});
        EXPECT_EQ(instance.at(0), rendered(assignments)) << step.assignment;
    }
    instance.set("gradient", std::string("0:#f00,1:edge:#00ff0080"));
    instance.set("lines gradient", std::string("0:1/1/0"));
    assignments.insert(assignments.end(), {"--gradient", "Gradient=0:#f00,1:edge:#00ff0080", "--gradient",
                                           "LinesGradient=0:1/1/0"});
    EXPECT_EQ(instance.at(0), rendered(assignments));
}

TEST(Plugins, AScenesKeyframesFollowSecondsAndNumbersGoBeforeIt) {
    const LoadedPlugin plugin(FLUMO_SOURCE);
    Drawn instance(plugin, kWidth, kHeight);
    const std::string scene = R"({"fps": "10", "controls": {"Scale": 40, "Speed": 60, "Evolution": [
        {"frame": 0, "value": 0}, {"frame": 20, "value": 400}]}})";
    instance.set("scene", scene);
    // The default, as far as a panel's digits go.
    instance.set("Speed", 0.55);
    const auto at_evolution = [&](const std::string& degrees) {
        return rendered({"--set", "Scale=40", "--set", "Speed=60", "--set", "Evolution=" + degrees});
    };
    EXPECT_EQ(instance.at(1.5), at_evolution("300"));
    // Times between frames, rounded times, and times that are none.
    EXPECT_EQ(instance.at(0.125), at_evolution("25"));
    EXPECT_EQ(instance.at(0.6996), at_evolution("140"));
    EXPECT_EQ(instance.at(99), at_evolution("400"));
    EXPECT_EQ(instance.at(std::numeric_limits<double>::quiet_NaN()), at_evolution("0"));
    EXPECT_EQ(instance.at(1e300), at_evolution("0"));
    instance.set("Scale", 0.9);
    EXPECT_EQ(instance.at(1.5),
              rendered({"--set", "Scale=80", "--set", "Speed=60", "--set", "Evolution=300"}));
    instance.set("Scale", 1.0);
    EXPECT_EQ(instance.at(1.5), at_evolution("300"));
    instance.set("scene", std::string());
    EXPECT_EQ(instance.at(1.5), rendered({}));
}

TEST(Plugins, WhatIsWrongTakesALineAndKeepsTheLook) {
    const flumo::test::ScratchFolder folder;
    std::ofstream(folder / "broken.json") << "{\"controls\": {\"Scale\": ";
    const LoadedPlugin plugin(FLUMO_SOURCE);
    Drawn instance(plugin, kWidth, kHeight);
    instance.set("scene", std::string(R"({"controls": {"NoiseType": "Smoke"}})"));
    instance.set("Scale", 0.7);
    const Frame good = instance.at(0);
    const auto expect_kept = [&](const std::string& name, const auto& value, size_t lines) {
        const auto [output, errors] = written_by([&] {
            // As editors do: again for every frame.
            for (int frame = 0; frame < 3; ++frame) {
                instance.set(plugin[name], value);
                EXPECT_EQ(instance.at(0), good) << name;
            }
        });
        EXPECT_THAT(output, IsEmpty());
        EXPECT_EQ(static_cast<size_t>(std::ranges::count(errors, '\n')), lines) << errors;
        EXPECT_TRUE(lines != 1 || flumo::test::is_one_line(errors)) << errors;
    };
    for (const char* text : {"no such file.json", "{", R"({"controls": {"Nonsense": 1}})", "/dev/null", "/",
                             R"({"controls": {"Layer1": "none.png"}})", "{\"size\": []}", "\xff\xfe"})
        expect_kept("scene", std::string(text), 1);
    expect_kept("scene", (folder / "broken.json").string(), 1);
    expect_kept("scene", std::string(1 << 20, 'x'), 1);
    for (const char* text : {"0:#12", "red", "@none", "0:", "00"})
        expect_kept("gradient", std::string(text), 1);
    for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, -1e300})
        expect_kept("Scale", value, 1);
    for (const double value : {1.2, -0.5})
        expect_kept("NoiseType", value, 1);
    // What no parameter is, and nothing where something must be.
    const auto [output, errors] = written_by([&] {
        for (const int index : {-1, plugin.info().num_params, std::numeric_limits<int>::max()}) {
            instance.set(index, 0.1);
            EXPECT_EQ(instance.number(index), -1);
            EXPECT_EQ(plugin.param(index).name, nullptr);
        }
        plugin.set(nullptr, nullptr, 0);
        plugin.update(nullptr, 0, nullptr, nullptr);
        plugin.destruct(nullptr);
    });
    EXPECT_THAT(output + errors, IsEmpty());
    EXPECT_EQ(instance.at(0), good);
}

TEST(Plugins, SizesFromSmallestToLargest) {
    const LoadedPlugin plugin(FLUMO_SOURCE);
    // A driver in software may have no memory for the largest frame, which is a line and an empty frame.
    const auto [output, errors] = written_by([&] {
        Drawn largest(plugin, 8192, 4320);
        const Frame frame = largest.at(0);
        EXPECT_TRUE(frame.back() == 0 || frame.back() >> 24 == 0xFF);
    });
    EXPECT_THAT(output, IsEmpty());
    EXPECT_EQ(errors.find("flumo: "), errors.rfind("flumo: ")) << errors;
    for (const auto& [width, height] : {std::pair{8U, 8U}, {9U, 11U}, {1023U, 8U}, {8U, 1001U}})
        EXPECT_EQ(Drawn(plugin, width, height).at(0), rendered({}, width, height)) << width << "x" << height;
    written_by([&] {
        for (const auto& [width, height] : {std::pair{0U, 0U}, {7U, 8U}, {8193U, 8U}, {8U, ~0U}})
            EXPECT_EQ(plugin.construct(width, height), nullptr);
    });
}

TEST(Plugins, LeaveTheProgramThatLoadedThemAsItWas) {
    const Frame expected = rendered({"--set", "Scale=55.5"});
    const flumo::host::test::CallerContext context;
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaForPoint));
    const auto [output, errors] = written_by([&] {
        const LoadedPlugin source(FLUMO_SOURCE);
        const LoadedPlugin filter(FLUMO_FILTER);
        Drawn drawn(source, kWidth, kHeight);
        drawn.set("scene", std::string(R"({"controls": {"Scale": 55.5}})"));
        EXPECT_EQ(drawn.at(0), expected);
        EXPECT_TRUE(context.is_current());
        EXPECT_EQ(Drawn(filter, 8, 8).at(0, Frame(64)).size(), 64u);
    });
    std::locale::global(before);
    EXPECT_TRUE(context.is_current());
    EXPECT_THAT(output + errors, IsEmpty());
}

TEST(Plugins, ManyInstancesThreadsAndLives) {
    const std::array looks = {0.0, 1.0 / 3, 2.0 / 3, 1.0};
    std::vector<Frame> expected;
    for (const char* type : {"1", "2", "3", "4"})
        expected.push_back(rendered({"--set", std::string("NoiseType=") + type}));
    for (int life = 0; life < 5; ++life) {
        const LoadedPlugin plugin(FLUMO_SOURCE);
        const LoadedPlugin again(FLUMO_SOURCE);
        std::vector<std::thread> threads;
        for (size_t look = 0; look < looks.size(); ++look) {
            threads.emplace_back([&, look] {
                for (int i = 0; i < 10; ++i) {
                    // Most are only asked for their defaults.
                    const Drawn asked(plugin, kWidth, kHeight);
                    EXPECT_EQ(asked.number(plugin["Scale"]), 1);
                    if (i % 4 != 0) continue;
                    Drawn drawn(again, kWidth, kHeight);
                    drawn.set("NoiseType", looks[look]);
                    EXPECT_EQ(drawn.at(i), expected[look]);
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    }
}

TEST(Plugins, TheFilterUsesItsInputAsALayerOrLiesOverIt) {
    const flumo::test::ScratchFolder folder;
    // Colours and alphas of all kinds, also those of transparent pixels.
    Frame input(kWidth * kHeight);
    uint32_t random = 1;
    for (uint32_t& pixel : input)
        pixel = random = random * 1664525 + 1013904223;
    const std::string raw = folder / "input.rgba";
    std::ofstream(raw).write(reinterpret_cast<const char*>(input.data()),
                             static_cast<std::streamsize>(input.size() * sizeof input[0]));
    const std::string png = folder / "input.png";
    ASSERT_EQ(flumo::test::run_program({"ffmpeg", "-v", "error", "-f", "rawvideo", "-pix_fmt", "rgba", "-s",
                                        "37x19", "-i", raw, png})
                  .status,
              0);
    const LoadedPlugin plugin(FLUMO_FILTER);
    Drawn instance(plugin, kWidth, kHeight);
    const Words islands = {"--set", "NoiseBottomCroppingThreshold=40", "--set",
                           "NoiseBottomCroppingFeather=30"};
    instance.set("NoiseBottomCroppingThreshold", 0.7);
    instance.set("NoiseBottomCroppingFeather", 0.3);
    const auto with = [&](Words more) {
        more.insert(more.end(), islands.begin(), islands.end());
        return rendered(more);
    };
    const std::pair<double, Words> layers[] = {{0, {"--layer1", png}},
                                               {0.2, {"--layer2", png}},
                                               {0.4, {"--layer3", png, "--set", "ColorizeMode=2"}},
                                               {0.6, {"--layer3", png, "--set", "ColorizeMode=3"}}};
    for (const auto& [use, options] : layers) {
        instance.set("use", use);
        EXPECT_EQ(instance.at(0, input), with(options)) << use;
    }
    const Frame reflected = instance.at(0, input);
    instance.set("use", 0.8);
    EXPECT_NE(instance.at(0, input), reflected);
    instance.set("use", 1.0);
    const Frame frame = instance.at(0, input);
    const Frame noise = with({});
    for (size_t i = 0; i < frame.size(); ++i) {
        const auto channel = [i](const Frame& of, unsigned c) { return (of[i] >> (8 * c) & 0xFF) / 255.0; };
        const double top = channel(noise, 3);
        const double below = channel(input, 3) * (1 - top);
        ASSERT_NEAR(channel(frame, 3), top + below, 0.503 / 255) << i;
        for (unsigned c = 0; c < 3 && top + below > 0; ++c) {
            const double mixed = (channel(noise, c) * top + channel(input, c) * below) / (top + below);
            ASSERT_NEAR(channel(frame, c), mixed, 0.503 / 255) << i;
        }
    }
}

}  // namespace
}  // namespace flumo::frei0r::test
