// flumo_stress: a module under many threads, or under many looks. Writes one line of JSON for each
// measurement. Exit status: 0 every frame was right, 1 some frame was not, 2 usage, 3 the module cannot be
// loaded.
#include <malloc.h>

#include <CLI/CLI.hpp>
#include <atomic>
#include <barrier>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <thread>
#include <vector>

#include "bench/cost.h"
#include "bench/random_looks.h"

namespace flumo::bench {
namespace {

struct StressOptions {
    std::string module;
    int width = 96;
    int height = 54;
    uint64_t seed = 1;
    /// Different looks.
    int looks = 200;
    int threads = 16;
    /// In all threads together.
    int frames = 3200;
};

struct Job {
    RandomLook look;
    host::World expected;
};

struct Tally {
    std::atomic<int> different{0};
    std::atomic<int> failed{0};
};

/// Whether the frame was rendered.
bool render(const RandomLook& look, const host::FrameRequest& request, host::World& world, Tally& tally) {
    try {
        look.instance->render(request, world);
        return true;
    } catch (const host::HostError& error) {
        ++tally.failed;
        std::cerr << "flumo_stress: " << error.what() << '\n';
        return false;
    }
}

void check_frame(const Job& job, host::World& world, Tally& tally) {
    if (render(job.look, job.look.request, world, tally))
        tally.different += !world.same_picture(job.expected) || !world.guards_intact();
}

/// The looks with their frames, as one thread renders them.
std::vector<Job> make_jobs(host::Host& host, const StressOptions& options) {
    std::vector<Job> jobs;
    for (int number = 0; number < options.looks; ++number) {
        RandomLook look = random_look(host, options.seed, number, options.width, options.height);
        host::World expected = look.instance->render(look.request);
        jobs.push_back({std::move(look), std::move(expected)});
    }
    return jobs;
}

/// The job of a frame: every look in turn, each round from another place, so that threads that start at the
/// beginning of a round draw different looks. Independent of the number of threads.
const Job& job_of(const std::vector<Job>& jobs, int frame) {
    const auto number = static_cast<size_t>(frame);
    return jobs[(number + number / jobs.size() * 37) % jobs.size()];
}

/// Renders small frames of all looks, since each context compiles its own programs. In reverse order, and
/// from another look on each thread, so that the state that a look leaves to the next differs from when the
/// expected frames were made.
void warm_up(const std::vector<Job>& jobs, int thread, Tally& tally) {
    host::World world;
    for (size_t i = jobs.size(); i > 0; --i) {
        const Job& job = jobs[(i + static_cast<size_t>(thread) * 7) % jobs.size()];
        host::FrameRequest small = job.look.request;
        small.width = small.height = 8;
        render(job.look, small, world, tally);
    }
}

/// Renders the frames in equal shares on new threads. Time counts when all threads have their contexts and
/// are warm.
Cost render_on_threads(const std::vector<Job>& jobs, const StressOptions& options, Tally& tally) {
    const int share = options.frames / options.threads;
    Cost start;
    std::barrier ready(options.threads, [&start]() noexcept { start = clock_now(); });
    std::barrier done(options.threads, [&start]() noexcept { start = clock_now() - start; });
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < options.threads; ++thread) {
        threads.emplace_back([&, thread] {
            host::World world;
            warm_up(jobs, thread, tally);
            ready.arrive_and_wait();
            for (int frame = thread * share; frame < (thread + 1) * share; ++frame)
                check_frame(job_of(jobs, frame), world, tally);
            done.arrive_and_wait();
        });
    }
    threads.clear();
    return start;
}

void stress_threads(host::Host& host, const StressOptions& options, std::ostream& out, Tally& tally) {
    const std::vector<Job> jobs = make_jobs(host, options);
    const Cost cost = render_on_threads(jobs, options, tally);
    const nlohmann::json result = {{"threads", options.threads},
                                   {"frames", options.frames},
                                   {"looks", options.looks},
                                   {"seed", options.seed},
                                   {"different", tally.different.load()},
                                   {"failed", tally.failed.load()},
                                   {"cpu_ms", cost.cpu},
                                   {"wall_ms", cost.wall}};
    out << result << std::endl;
}

/// Of this process, KiB, without what the C library keeps of freed memory.
int64_t resident_kib() {
    malloc_trim(0);
    int64_t size = 0, pages = 0;
    std::ifstream("/proc/self/statm") >> size >> pages;
    constexpr int64_t kKibOfPage = 4;
    return pages * kKibOfPage;
}

/// One thread that renders look after look, each twice; then the set-down.
void stress_looks(host::Host& host, const StressOptions& options, std::ostream& out, Tally& tally) {
    constexpr int kStep = 50;
    host::World world;
    for (int number = 0; number < options.looks; ++number) {
        {
            RandomLook look = random_look(host, options.seed, number, options.width, options.height);
            host::World expected = look.instance->render(look.request);
            check_frame({std::move(look), std::move(expected)}, world, tally);
        }
        if ((number + 1) % kStep == 0)
            out << nlohmann::json{{"looks", number + 1}, {"resident_kib", resident_kib()}} << std::endl;
    }
    host.global_setdown();
    const nlohmann::json result = {{"resident_kib_after_setdown", resident_kib()},
                                   {"seed", options.seed},
                                   {"different", tally.different.load()},
                                   {"failed", tally.failed.load()}};
    out << result << std::endl;
}

void add_common(CLI::App& command, StressOptions& options) {
    command.add_option("module", options.module, "Flumo.so")->required();
    command.add_option("--width", options.width, "pixels")->check(CLI::Range(1, 4096));
    command.add_option("--height", options.height, "pixels")->check(CLI::Range(1, 4096));
    command.add_option("--seed", options.seed, "of the looks");
    command.add_option("--looks", options.looks, "different looks")->check(CLI::Range(1, 1000000));
}

int run(int argc, char** argv) {
    StressOptions options;
    CLI::App app("A module under many threads, or under many looks");
    app.require_subcommand(1);
    CLI::App& threads =
        *app.add_subcommand("threads", "frames on threads, each compared with one made by a single thread");
    add_common(threads, options);
    threads.add_option("--threads", options.threads)->check(CLI::Range(1, 256));
    threads.add_option("--frames", options.frames, "of all threads together")->check(CLI::Range(1, 1000000));
    CLI::App& looks =
        *app.add_subcommand("looks", "resident memory while one thread renders look after look");
    add_common(looks, options);
    try {
        app.parse(argc, argv);
        if (options.frames % options.threads != 0)
            throw CLI::ValidationError("--frames", "expected a multiple of --threads");
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }

    // The effect prints the driver's name for each thread that starts to render.
    std::ostream out(std::cout.rdbuf(nullptr));
    Tally tally;
    {
        const host::Module module(options.module);
        host::Host host(module);
        host.start();
        (looks.parsed() ? stress_looks : stress_threads)(host, options, out, tally);
    }
    std::cout.rdbuf(out.rdbuf());
    return tally.different == 0 && tally.failed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace flumo::bench

int main(int argc, char** argv) {
    try {
        return flumo::bench::run(argc, argv);
    } catch (const flumo::host::ModuleError& error) {
        std::cerr << "flumo_stress: " << error.what() << '\n';
        return 3;
    } catch (const std::exception& error) {
        std::cerr << "flumo_stress: " << error.what() << '\n';
        return 1;
    }
}
