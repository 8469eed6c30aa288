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

    // The longest time between two rounds of the event loop while a slider is dragged without a pause, and
    // how many pictures were seen.
    double longest_stall(int& pictures) {
        const auto shown =
            QObject::connect(&window_.preview(), &Preview::frame_shown, &window_, [&] { ++pictures; });
        double longest = 0;
        double value = 20;
        QElapsedTimer since_round;
        QElapsedTimer whole;
        QTimer mouse;
        QObject::connect(&mouse, &QTimer::timeout, &window_,
                         [&] { document_.set_value(scale_, value += 0.1); });
        document_.begin_gesture(QStringLiteral("Drag"));
        mouse.start(kReportMilliseconds);
        whole.start();
        since_round.start();
        while (whole.elapsed() < kDragMilliseconds) {
            QApplication::processEvents(QEventLoop::AllEvents);
            longest = std::max(longest, milliseconds(since_round));
            since_round.start();
            // Nothing to do: as an event loop waits, but for a time that is known.
            timespec rest{0, 500000};
            nanosleep(&rest, nullptr);
            since_round.start();
        }
        mouse.stop();
        document_.end_gesture();
        wait_until_finished();
        QObject::disconnect(shown);
        return longest;
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
    std::printf("%-8s %28s %28s %10s %10s\n", "noise", "coarse: median, 95 % [ms]",
                "finished: median, 95 % [ms]", "stall [ms]", "pictures/s");
    for (int type = 1; type <= 4; ++type) {
        window.document().set_value(noise, double(type));
        bench.wait_until_finished();
        const Waits waits = bench.single_changes();
        int pictures = 0;
        const double stall = bench.longest_stall(pictures);
        const std::string& name = noise.choices.at(static_cast<std::size_t>(type) - 1);
        const double per_second = pictures * 1000.0 / kDragMilliseconds;
        std::printf("%-8s %20.1f, %6.1f %20.1f, %6.1f %10.1f %10.1f\n", name.c_str(),
                    quantile(waits.coarse, 0.5), quantile(waits.coarse, 0.95), quantile(waits.fine, 0.5),
                    quantile(waits.fine, 0.95), stall, per_second);
        results.push_back({{"noise", name},
                           {"coarse_median_ms", quantile(waits.coarse, 0.5)},
                           {"coarse_95_ms", quantile(waits.coarse, 0.95)},
                           {"fine_median_ms", quantile(waits.fine, 0.5)},
                           {"fine_95_ms", quantile(waits.fine, 0.95)},
                           {"longest_stall_ms", stall},
                           {"pictures_per_second", per_second}});
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
