// Level 5: many threads.
#include <algorithm>
#include <mutex>
#include <thread>

#include "judge/cases/case_table.h"
#include "judge/engine/frame_judge.h"

namespace flumo::judge {

namespace {

constexpr int kRounds = 3;

/// A frame with what it looks like when one thread renders it.
struct Known {
    host::Instance* instance;
    host::FrameRequest request;
    host::World frame;
};

/// Frames of all depths, sizes and instances, in an order that alternates between them.
std::vector<Known> known_frames(std::span<const std::unique_ptr<host::Instance>> instances,
                                const std::vector<host::Depth>& depths) {
    std::vector<Known> known;
    for (int i = 0; i < 6; ++i) {
        host::FrameRequest request;
        request.width = 11 + 7 * (i % 3);
        request.height = 9 + 5 * (i % 2);
        request.frame = i;
        request.depth = depths[static_cast<std::size_t>(i) % depths.size()];
        host::Instance& instance = *instances[static_cast<std::size_t>(i) % instances.size()];
        known.push_back({&instance, request, instance.render(request)});
    }
    return known;
}

/// What threads saw, told once they have ended.
class Sightings {
  public:
    void add(std::string text) {
        const std::lock_guard guard(mutex_);
        if (std::ranges::find(texts_, text) == texts_.end()) texts_.push_back(std::move(text));
    }
    void tell(Trial& trial) const {
        for (const std::string& text : texts_)
            trial.finding("the frames of a single thread", text);
    }

  private:
    std::mutex mutex_;
    std::vector<std::string> texts_;
};

void render_all(const std::vector<Known>& known, std::size_t start, Sightings& sightings) {
    host::World world;
    for (std::size_t i = 0; i < known.size() * kRounds; ++i) {
        const Known& expected = known[(start + i) % known.size()];
        try {
            expected.instance->render(expected.request, world);
            if (!world.same_picture(expected.frame)) sightings.add("another " + name_of(expected.request));
            if (!world.guards_intact()) sightings.add("bytes written outside of the pixels");
        } catch (const std::exception& error) {
            sightings.add(error.what());
        }
    }
}

void render_on_threads(Trial& trial, const std::vector<Known>& known, std::size_t count) {
    Sightings sightings;
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < count; ++i)
            threads.emplace_back([&known, &sightings, i] { render_all(known, i, sightings); });
    }
    sightings.tell(trial);
}

void require_threads(const Stage& stage) {
    if (!stage.has_flag2(PF_OutFlag2_SUPPORTS_THREADED_RENDERING))
        throw Skipped{"no rendering on several threads"};
}

/// Two instances that look different.
std::vector<std::unique_ptr<host::Instance>> two_instances(Stage& stage) {
    std::vector<std::unique_ptr<host::Instance>> instances;
    instances.push_back(stage.host().new_instance());
    instances.push_back(stage.host().new_instance());
    std::mt19937_64 random = stage.trial().random("other instance");
    set_by_chance(*instances[1], random, host::Depth::k8);
    return instances;
}

}  // namespace

void play_threads(Trial& trial) {
    on_stage(trial, [](Stage& stage) {
        require_threads(stage);
        const auto instances = two_instances(stage);
        const std::vector<Known> known = known_frames(instances, depths_of(stage));
        for (const std::size_t count : {2u, 8u}) {
            stage.step(std::to_string(count) + "-threads",
                       [&] { render_on_threads(stage.trial(), known, count); });
        }
    });
}

void play_thread_generations(Trial& trial) {
    Stage stage(trial);
    for (const char* life : {"first-set-up", "second-set-up"}) {
        stage.step(life, [&] {
            stage.host().start();
            require_threads(stage);
            {
                const auto instances = two_instances(stage);
                const std::vector<Known> known = known_frames(instances, depths_of(stage));
                for (int generation = 0; generation < 3; ++generation)
                    render_on_threads(trial, known, 3);
            }
            stage.host().global_setdown();
        });
    }
}

}  // namespace flumo::judge
