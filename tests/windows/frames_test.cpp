// The frames of the Windows module against those that the Linux module rendered on the same machine: equal,
// bit for bit, since both are computed by the same driver from the same program text.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

#include "tests/windows/answers.h"
#include "tests/windows/scenes.h"
#include "tests/windows/windows_module.h"

namespace flumo::tests {
namespace {

using Frame = std::vector<float>;

Frame read_frame(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    Frame frame(std::filesystem::file_size(path) / sizeof(float));
    file.read(reinterpret_cast<char*>(frame.data()),
              static_cast<std::streamsize>(frame.size() * sizeof(float)));
    return frame;
}

/// 1 is full scale at every depth. A number that is none is infinitely different.
float largest_difference(const Frame& left, const Frame& right) {
    float largest = 0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        const float difference = std::abs(left[i] - right[i]);
        largest = std::isnan(difference) ? INFINITY : std::max(largest, difference);
    }
    return largest;
}

bool same_bits(const Frame& left, const Frame& right) {
    return left.size() == right.size() &&
           std::memcmp(left.data(), right.data(), left.size() * sizeof(float)) == 0;
}

class Frames : public testing::Test {
  protected:
    Frames() { host_.start(); }

    void expect_nothing_left() {
        host_.global_setdown();
        EXPECT_TRUE(host_.accounting().clean()) << host_.accounting().describe();
        EXPECT_THAT(host_.accounting().misuses(), testing::IsEmpty());
        EXPECT_EQ(spy::wrong_shares(), 0);
        EXPECT_EQ(spy::live_contexts(), 0);
    }

    WindowsModule windows_;
    host::Host host_{windows_.module()};
};

TEST_F(Frames, EqualThoseOfLinux) {
    const char* folder = std::getenv("FLUMO_LINUX_FRAMES");
    if (folder == nullptr)
        GTEST_SKIP() << "FLUMO_LINUX_FRAMES does not name the folder with the Linux frames";
    for (const Scene& scene : scenes()) {
        const Frame linux_frame = read_frame(std::filesystem::path(folder) / (scene.name + ".raw"));
        const Frame frame = render_scene(host_, scene);
        ASSERT_EQ(frame.size(), linux_frame.size()) << scene.name;
        std::printf("%-16s largest difference %g\n", scene.name.c_str(),
                    largest_difference(frame, linux_frame));
        EXPECT_TRUE(same_bits(frame, linux_frame)) << scene.name;
        EXPECT_FALSE(std::equal(frame.begin() + 4, frame.end(), frame.begin()))
            << scene.name << " is one flat colour";
    }
    expect_nothing_left();
}

TEST_F(Frames, AreTheSameOnManyThreadsAtOnce) {
    constexpr int kThreads = 4;
    std::map<std::string, Frame> alone;
    for (const Scene& scene : scenes())
        alone[scene.name] = render_scene(host_, scene);

    std::vector<std::string> wrong[kThreads];
    const auto render_all = [&](int thread) {
        for (std::size_t i = 0; i < scenes().size(); ++i) {
            const Scene& scene = scenes()[(i + static_cast<std::size_t>(thread) * 3) % scenes().size()];
            if (!same_bits(render_scene(host_, scene), alone[scene.name]))
                wrong[thread].push_back(scene.name);
        }
    };
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < kThreads; ++thread)
            threads.emplace_back(render_all, thread);
    }
    for (const auto& names : wrong)
        EXPECT_THAT(names, testing::IsEmpty());
    expect_nothing_left();
}

TEST_F(Frames, SurviveFlattenAndDuplicate) {
    auto instance = host_.new_instance();
    const Frame before = channels(instance->render(tiny_frame()));
    const auto stored = instance->flatten();
    EXPECT_EQ(stored.size(), 16U);
    instance->resetup();
    EXPECT_EQ(channels(instance->render(tiny_frame())), before);
    EXPECT_EQ(channels(instance->duplicate()->render(tiny_frame())), before);
    instance.reset();
    expect_nothing_left();
}

}  // namespace
}  // namespace flumo::tests
