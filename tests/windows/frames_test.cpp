// The frames of the Windows module against those that the Linux module rendered on the same machine: equal,
// bit for bit, since both are computed by the same driver from the same program text.
#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

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
        EXPECT_TRUE(same_bits(frame, linux_frame)) << scene.name;
        EXPECT_FALSE(std::equal(frame.begin() + 4, frame.end(), frame.begin()))
            << scene.name << " is one flat colour";
    }
    expect_nothing_left();
}

TEST_F(Frames, AreTheSameOnManyThreadsAtOnce) {
    std::vector<Frame> alone;
    for (const Scene& scene : scenes())
        alone.push_back(render_scene(host_, scene));
    std::atomic<int> wrong = 0;
    {
        std::vector<std::jthread> threads;
        for (size_t thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&, thread] {
                for (size_t i = 0; i < alone.size(); ++i) {
                    const size_t scene = (i + thread * 3) % alone.size();
                    wrong += !same_bits(render_scene(host_, scenes()[scene]), alone[scene]);
                }
            });
        }
    }
    EXPECT_EQ(wrong, 0);
    expect_nothing_left();
}

}  // namespace
}  // namespace flumo::tests
