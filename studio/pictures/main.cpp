// studio_pictures SCENE OUTPUT.png [WIDTHxHEIGHT] [light] [played]: the window with a scene, without a
// display (QT_QPA_PLATFORM=offscreen; QT_SCALE_FACTOR=2 for double density). `played` has the first half of
// the frames in memory.
#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <stdexcept>

#include "base/frame_size.h"
#include "scene/scene.h"
#include "studio/controls/control_panel.h"
#include "studio/window/main_window.h"

namespace flumo::studio {
namespace {

// Milliseconds. Thumbnails are rendered while nothing else is.
constexpr int kPatience = 60000;
constexpr int kThumbnails = 6000;

void wait_until_finished(MainWindow& window) {
    QElapsedTimer timer;
    timer.start();
    while (!window.preview().is_finished()) {
        if (timer.elapsed() > kPatience) throw std::runtime_error("no picture");
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
}

void wait(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

// The last one that is shown lies in the middle, with a keyframe selected.
void show_half(MainWindow& window) {
    const std::vector<int> frames = *window.document().scene().frames;
    for (std::size_t i = 0; i <= frames.size() / 2; ++i) {
        window.document().set_current_frame(frames[i]);
        wait_until_finished(window);
    }
    window.timeline().view().setFocus();
}

int take_picture(const QStringList& arguments) {
    job::Session session({});
    MainWindow window(session);
    window.files().open(arguments[1].toStdString());
    const FrameSize size = parse_frame_size(arguments.size() > 3 ? arguments[3].toStdString() : "1280x720");
    if (arguments.contains(QStringLiteral("light"))) apply_theme(Theme::kLight);
    window.findChild<ControlPanel*>()->unfold_all(true);
    window.resize(size.width, size.height);
    window.show();
    wait_until_finished(window);
    if (arguments.contains(QStringLiteral("played"))) {
        window.preview_panel().choose_resolution(2);
        show_half(window);
    }
    wait(kThumbnails);
    return window.grab().save(arguments[2]) ? 0 : 1;
}

}  // namespace
}  // namespace flumo::studio

int main(int argc, char** argv) try {
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("flumo-studio"));
    if (QApplication::arguments().size() < 3) return 2;
    return flumo::studio::take_picture(QApplication::arguments());
} catch (const std::exception& error) {
    std::fprintf(stderr, "studio_pictures: %s\n", error.what());
    return 1;
}
