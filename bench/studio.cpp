// What the studio's user waits for: from a change of a control to its first coarse and its finished picture,
// and how long the window does not answer while frames render. Prints a table, and writes JSON with
// --out=FILE.
#include <sched.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "studio/window/main_window.h"

namespace flumo::studio {
namespace {

constexpr FrameSize kSize{640, 360};
constexpr int kCores = 2;
constexpr int kChanges = 60;
constexpr int kPatience = 60000;  // milliseconds
constexpr int kDragMilliseconds = 3000;
// Time between two reports of a mouse.
constexpr int kReportMilliseconds = 8;

double milliseconds(const QElapsedTimer& timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

struct Waits {
    std::vector<double> coarse;
    std::vector<double> fine;
};

// The longest round of the event loop: by the clock, and in this thread's own processor time, which does not
// depend on what else the machine does.
struct Drag {
    double longest_stall = 0;
    double longest_own = 0;
    int pictures = 0;
};

double own_milliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double quantile(std::vector<double> values, double q) {
    std::ranges::sort(values);
    return values.at(static_cast<std::size_t>(q * double(values.size() - 1) + 0.5));
}

class Bench {
  public:
    Bench(job::Session& session, MainWindow& window)
        : window_(window), document_(window.document()), scale_(session.catalog().find("Scale")) {}

    // Changes that come one by one, each after the finished picture of the last.
    Waits single_changes() {
        Waits waits;
        for (int i = 0; i < kChanges; ++i) {
            QElapsedTimer timer;
            double coarse = 0;
            const auto shown = QObject::connect(&window_.preview(), &Preview::frame_shown, &window_,
                                                [&](const ShownFrame& frame) {
                                                    if (coarse > 0 || frame.state != document_.state())
                                                        return;
                                                    window_.preview_panel().view().repaint();
                                                    coarse = milliseconds(timer);
                                                });
            timer.start();
            document_.set_value(scale_, 20.0 + i);
            wait_until_finished();
            window_.preview_panel().view().repaint();
            waits.fine.push_back(milliseconds(timer));
            waits.coarse.push_back(coarse);
            QObject::disconnect(shown);
        }
        return waits;
    }

    // A slider that is dragged without a pause.
    Drag drag() {
        Drag result;
        const auto shown =
            QObject::connect(&window_.preview(), &Preview::frame_shown, &window_, [&] { ++result.pictures; });
        double value = 20;
        QElapsedTimer whole;
        QTimer mouse;
        QObject::connect(&mouse, &QTimer::timeout, &window_,
                         [&] { document_.set_value(scale_, value += 0.1); });
        document_.begin_gesture(QStringLiteral("Drag"));
        mouse.start(kReportMilliseconds);
        whole.start();
        while (whole.elapsed() < kDragMilliseconds) {
            QElapsedTimer round;
            round.start();
            const double own_begin = own_milliseconds();
            QApplication::processEvents(QEventLoop::AllEvents);
            result.longest_stall = std::max(result.longest_stall, milliseconds(round));
            result.longest_own = std::max(result.longest_own, own_milliseconds() - own_begin);
            // Nothing to do: as an event loop waits, but for a time that is known.
            const timespec rest{0, 500000};
            nanosleep(&rest, nullptr);
        }
        mouse.stop();
        document_.end_gesture();
        wait_until_finished();
        QObject::disconnect(shown);
        return result;
    }

    void wait_until_finished() {
        QElapsedTimer timer;
        timer.start();
        while (!window_.preview().is_finished()) {
            if (timer.elapsed() > kPatience) throw std::runtime_error("no picture");
            QApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        }
    }

  private:
    MainWindow& window_;
    Document& document_;
    const scene::Control& scale_;
};

double load_average() {
    double load = 0;
    return getloadavg(&load, 1) == 1 ? load : -1;
}

void use_two_cores() {
    cpu_set_t present;
    cpu_set_t chosen;
    CPU_ZERO(&chosen);
    sched_getaffinity(0, sizeof present, &present);
    for (int cpu = 0, taken = 0; cpu < CPU_SETSIZE && taken < kCores; ++cpu) {
        if (!CPU_ISSET(cpu, &present)) continue;
        CPU_SET(cpu, &chosen);
        ++taken;
    }
    sched_setaffinity(0, sizeof chosen, &chosen);
}

nlohmann::ordered_json measure() {
    job::Session session({});
    MainWindow window(session);
    window.resize(1280, 720);
    window.show();
    window.document().set_size(kSize);
    Bench bench(session, window);
    nlohmann::ordered_json results = nlohmann::ordered_json::array();
    const scene::Control& noise = session.catalog().find("NoiseType");
    std::printf("%-8s %26s %28s %22s %11s\n", "noise", "coarse: median, 95 % [ms]",
                "finished: median, 95 % [ms]", "stall: wall, own [ms]", "pictures/s");
    for (int type = 1; type <= 4; ++type) {
        window.document().set_value(noise, double(type));
        bench.wait_until_finished();
        const Waits waits = bench.single_changes();
        const Drag drag = bench.drag();
        const nlohmann::ordered_json row = {
            {"noise", noise.choices.at(static_cast<std::size_t>(type) - 1)},
            {"coarse_median_ms", quantile(waits.coarse, 0.5)},
            {"coarse_95_ms", quantile(waits.coarse, 0.95)},
            {"fine_median_ms", quantile(waits.fine, 0.5)},
            {"fine_95_ms", quantile(waits.fine, 0.95)},
            {"longest_stall_ms", drag.longest_stall},
            {"longest_own_ms", drag.longest_own},
            {"pictures_per_second", drag.pictures * 1000.0 / kDragMilliseconds}};
        std::printf("%-8s %18.1f, %6.1f %20.1f, %6.1f %14.1f, %6.1f %11.1f\n",
                    row["noise"].get<std::string>().c_str(), row["coarse_median_ms"].get<double>(),
                    row["coarse_95_ms"].get<double>(), row["fine_median_ms"].get<double>(),
                    row["fine_95_ms"].get<double>(), drag.longest_stall, drag.longest_own,
                    row["pictures_per_second"].get<double>());
        results.push_back(row);
    }
    window.document().undo_stack().setClean();
    return results;
}

int run(const QStringList& arguments) {
    use_two_cores();
    const double load = load_average();
    std::printf("640x360, %d cores, load at the start %.1f\n", kCores, load);
    const nlohmann::ordered_json results = {{"load", load}, {"changes", kChanges}, {"generators", measure()}};
    for (const QString& argument : arguments) {
        if (argument.startsWith(QLatin1String("--out=")))
            std::ofstream(argument.mid(6).toStdString()) << results.dump(1) << "\n";
    }
    return 0;
}

}  // namespace
}  // namespace flumo::studio

int main(int argc, char** argv) try {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("flumo-studio-bench"));
    return flumo::studio::run(QApplication::arguments());
} catch (const std::exception& error) {
    std::fprintf(stderr, "flumo_studio_bench: %s\n", error.what());
    return 1;
}
