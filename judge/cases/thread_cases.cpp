// Level 5: many threads.
#include <thread>

#include "judge/cases/case_table.h"
#include "judge/engine/rendered_frames.h"

namespace flumo::judge {

namespace {

void render_on_threads(CaseContext& context, const std::vector<KnownFrame>& known, size_t count) {
    Mismatches mismatches;
    {
        std::vector<std::jthread> threads;
        for (size_t i = 0; i < count; ++i)
            threads.emplace_back([&known, &mismatches, i] { render_all(known, i, mismatches); });
    }
    mismatches.report(context);
}

/// Two instances that look different.
std::vector<std::unique_ptr<host::Instance>> two_instances(Fixture& fixture) {
    std::vector<std::unique_ptr<host::Instance>> instances;
    instances.push_back(fixture.host().new_instance());
    instances.push_back(fixture.host().new_instance());
    std::mt19937_64 random = fixture.context().random("other instance");
    set_randomly(*instances[1], random, host::Depth::k8);
    return instances;
}

}  // namespace

void play_threads(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        require_threads(fixture);
        const auto instances = two_instances(fixture);
        const std::vector<KnownFrame> known = known_frames(instances, depths_of(fixture));
        for (const size_t count : {2u, 8u}) {
            fixture.step(std::to_string(count) + "-threads",
                         [&] { render_on_threads(fixture.context(), known, count); });
        }
    });
}

void play_thread_generations(CaseContext& context) {
    Fixture fixture(context);
    for (const char* life : {"first-set-up", "second-set-up"}) {
        fixture.step(life, [&] {
            fixture.host().start();
            require_threads(fixture);
            {
                const auto instances = two_instances(fixture);
                const std::vector<KnownFrame> known = known_frames(instances, depths_of(fixture));
                for (int generation = 0; generation < 3; ++generation)
                    render_on_threads(context, known, 3);
            }
            fixture.host().global_setdown();
        });
    }
}

}  // namespace flumo::judge
