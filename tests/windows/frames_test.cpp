// The frames of the Windows module against those that the Linux module rendered on the same machine: equal,
// bit for bit, since both are computed by the same driver from the same program text.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <thread>

#include "tests/windows/answers.h"
#include "tests/windows/scenes.h"
#include "tests/windows/windows_module.h"

namespace flumo::tests {
namespace {

using Bytes = std::vector<std::byte>;

Bytes read_file(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const auto* first = reinterpret_cast<const std::byte*>(text.data());
    return {first, first + text.size()};
}

template <typename Channel>
double largest_difference_of(const Bytes& left, const Bytes& right, double full_scale) {
    const auto* a = reinterpret_cast<const Channel*>(left.data());
    const auto* b = reinterpret_cast<const Channel*>(right.data());
    double largest = 0;
    for (std::size_t i = 0; i < left.size() / sizeof(Channel); ++i) {
        const double difference =
            std::abs(static_cast<double>(a[i]) - static_cast<double>(b[i])) / full_scale;
        largest = std::isnan(difference) ? INFINITY : std::max(largest, difference);
    }
    return largest;
}

// 1 is full scale at every depth.
double largest_difference(host::Depth depth, const Bytes& left, const Bytes& right) {
    switch (depth) {
        case host::Depth::k8:
            return largest_difference_of<std::uint8_t>(left, right, 255);
        case host::Depth::k16:
            return largest_difference_of<std::uint16_t>(left, right, 32768);
        default:
            return largest_difference_of<float>(left, right, 1);
    }
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
        const Bytes linux_frame = read_file(std::filesystem::path(folder) / (scene.name + ".raw"));
        const Bytes frame = picture_bytes(render_scene(host_, scene));
        ASSERT_EQ(frame.size(), linux_frame.size()) << scene.name;
        std::printf("%-16s largest difference %g\n", scene.name.c_str(),
                    largest_difference(scene.depth, frame, linux_frame));
        EXPECT_TRUE(frame == linux_frame) << scene.name;
        EXPECT_NE(frame, Bytes(frame.size(), frame.front())) << scene.name << " is one flat colour";
    }
    expect_nothing_left();
}

TEST_F(Frames, AreTheSameOnManyThreadsAtOnce) {
    constexpr int kThreads = 4;
    std::map<std::string, Bytes> alone;
    for (const Scene& scene : scenes())
        alone[scene.name] = picture_bytes(render_scene(host_, scene));

    std::vector<std::string> wrong[kThreads];
    const auto render_all = [&](int thread) {
        for (std::size_t i = 0; i < scenes().size(); ++i) {
            const Scene& scene = scenes()[(i + static_cast<std::size_t>(thread) * 3) % scenes().size()];
            if (picture_bytes(render_scene(host_, scene)) != alone[scene.name])
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
    const Bytes before = picture_bytes(instance->render(tiny_frame()));
    const auto stored = instance->flatten();
    EXPECT_EQ(stored.size(), 16U);
    instance->resetup();
    EXPECT_EQ(picture_bytes(instance->render(tiny_frame())), before);
    EXPECT_EQ(picture_bytes(instance->duplicate()->render(tiny_frame())), before);
    instance.reset();
    expect_nothing_left();
}

}  // namespace
}  // namespace flumo::tests
