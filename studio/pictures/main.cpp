// studio_pictures SCENE OUTPUT.png [WIDTHxHEIGHT]: the window as it looks with a scene, without a display
// (QT_QPA_PLATFORM=offscreen; QT_SCALE_FACTOR=2 for double density). scripts/studio-pictures.sh makes the
// manual's.
#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>

#include "base/frame_size.h"
#include "scene/scene.h"
#include "studio/window/main_window.h"

namespace flumo::studio {
namespace {

constexpr int kPatience = 60000;  // milliseconds

int take_picture(const QStringList& arguments) {
    job::Session session({});
    MainWindow window(session);
    window.document().load(scene::read_scene(arguments[1].toStdString(), session.catalog()));
    const FrameSize size = parse_frame_size(arguments.size() > 3 ? arguments[3].toStdString() : "1280x720");
    window.resize(size.width, size.height);
    window.show();
    QElapsedTimer timer;
    timer.start();
    while (!window.preview().is_finished() && timer.elapsed() < kPatience)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    QApplication::processEvents();
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
