#include "job/pipeline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

#include "base/frame_rate.h"
#include "job/shard.h"
#include "tests/support/failure_matchers.h"

namespace flumo::job {
namespace {

// Encoding waits until no more can be rendered, so that the store fills to its bound if there is one.
TEST(Pipeline, HoldsNoMoreFramesThanWorldsAndEncodesEachOnce) {
    for (const bool in_order : {false, true}) {
        const PipelineShape shape{
            .render_threads = 3, .encoder_threads = in_order ? 1U : 2U, .worlds = 5, .in_order = in_order};
        std::atomic<std::size_t> held = 0;
        std::atomic<std::size_t> most = 0;
        std::atomic<std::size_t> begun = 0;
        std::mutex mutex;
        std::vector<std::size_t> encoded;
        PipelineWork work{.count = 60, .stop = [] { return false; }, .render = {}, .encode = {}};
        work.render = [&](std::size_t position, host::World&) {
            const std::size_t now = ++held;
            for (std::size_t seen = most; seen < now && !most.compare_exchange_weak(seen, now);) {
            }
            ++begun;
            // Some frames take longer than those after them.
            for (int i = 0; i < 10000 && position % 10 == 0 && begun < std::min(position + 3, work.count);
                 ++i)
                std::this_thread::yield();
            if (position % 7 != 3) return true;
            --held;
            return false;
        };
        work.encode = [&](std::size_t position, const host::World&) {
            for (int i = 0; i < 1000 && held < shape.worlds && begun < work.count; ++i)
                std::this_thread::yield();
            const std::lock_guard lock(mutex);
            encoded.push_back(position);
            --held;
        };
        run_pipeline(shape, work);
        EXPECT_LE(most, shape.worlds);
        EXPECT_EQ(encoded.size(), 60u - 9u);
        EXPECT_EQ(std::set(encoded.begin(), encoded.end()).size(), encoded.size());
        EXPECT_TRUE(!in_order || std::ranges::is_sorted(encoded));
    }
}

TEST(Pipeline, EndsAtAFailureButEncodesWhatCameBeforeIt) {
    std::vector<std::size_t> encoded;
    std::size_t stops_at = 100;
    std::atomic<std::size_t> begun = 0;
    PipelineWork work{.count = 50, .stop = [&] { return begun >= stops_at; }, .render = {}, .encode = {}};
    work.render = [&](std::size_t position, host::World&) {
        ++begun;
        for (int i = 0; i < 10000 && position == 5 && begun < 8; ++i)
            std::this_thread::yield();
        if (position == 5) throw std::runtime_error("frame 5");
        return true;
    };
    work.encode = [&](std::size_t position, const host::World&) { encoded.push_back(position); };
    const PipelineShape shape{.render_threads = 3, .encoder_threads = 1, .worlds = 5, .in_order = true};
    EXPECT_THROW(run_pipeline(shape, work), std::runtime_error);
    EXPECT_THAT(encoded, testing::ElementsAre(0, 1, 2, 3, 4));
    EXPECT_LT(begun, 50u);

    encoded.clear();
    begun = 0;
    stops_at = 3;
    run_pipeline({.render_threads = 1, .encoder_threads = 1, .worlds = 2}, work);
    EXPECT_THAT(encoded, testing::ElementsAre(0, 1, 2));

    work.encode = [&](std::size_t, const host::World&) { throw std::runtime_error("full"); };
    stops_at = 100;
    begun = 0;
    EXPECT_THROW(run_pipeline(shape, work), std::runtime_error);
    EXPECT_LT(begun, 50u);
}

TEST(Shard, PartsJoinToTheWhole) {
    for (const std::size_t frames : {0U, 1U, 7U, 100U}) {
        for (const int count : {1, 3, 8}) {
            std::size_t end = 0;
            for (int part = 1; part <= count; ++part) {
                const ShardRange range = range_of({part, count}, frames);
                EXPECT_EQ(range.begin, end);
                EXPECT_LE(range.end - range.begin, frames / static_cast<std::size_t>(count) + 1);
                end = range.end;
            }
            EXPECT_EQ(end, frames);
        }
    }
    for (const char* text : {"", "1", "0/2", "3/2", "1/2/3", "a/b", "1/"})
        EXPECT_FAILURE(parse_shard(text), FailureKind::kUsage, "expected K/N") << text;
}

TEST(FrameRate, ReadsWhatItWrites) {
    for (const char* text : {"25", "30000/1001"})
        EXPECT_EQ(frame_rate_text(parse_frame_rate(text)), text);
    for (const char* text : {"", "0", "25/0", "-1", "29.97", "1/2/3", "9999999"})
        EXPECT_FAILURE(parse_frame_rate(text), FailureKind::kUsage, "expected N or N/D") << text;
}

}  // namespace
}  // namespace flumo::job
