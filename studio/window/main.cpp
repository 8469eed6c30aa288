// flumo-studio: a window in which looks are made.
#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <csignal>
#include <cstdio>

#include "base/failure.h"
#include "job/session.h"
#include "studio/window/main_window.h"

namespace flumo::studio {
namespace {

int exit_status(FailureKind kind) {
    switch (kind) {
        case FailureKind::kFrameFailed:
            return 1;
        case FailureKind::kUsage:
            return 2;
        case FailureKind::kUnreadableInput:
            return 3;
        case FailureKind::kNoOpenGl:
            return 4;
        case FailureKind::kUnwritableOutput:
            return 5;
    }
    return 1;
}

int run() {
    QCommandLineParser parser;
    parser.setApplicationDescription(QApplication::tr("Makes looks of the Flumo effect, live."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption module(QStringLiteral("module"), QApplication::tr("The effect's module."),
                                    QStringLiteral("file"));
    parser.addOption(module);
    parser.addPositionalArgument(QStringLiteral("file"),
                                 QApplication::tr("A scene, or an EXR or PNG of Flumo's."),
                                 QStringLiteral("[file]"));
    parser.process(*QApplication::instance());
    job::Session session(parser.value(module).toStdString());
    MainWindow window(session);
    window.show();
    const QStringList files = parser.positionalArguments();
    if (!files.isEmpty()) window.files().open(files.front().toStdString());
    window.files().offer_left_work();
    return QApplication::exec();
}

// On standard error, and in a window where somebody can close it.
void tell(const char* why) {
    std::fprintf(stderr, "flumo-studio: %s\n", why);
    if (QApplication::platformName() == QLatin1String("offscreen")) return;
    QMessageBox::critical(nullptr, QApplication::applicationDisplayName(), QString::fromUtf8(why));
}

}  // namespace
}  // namespace flumo::studio

int main(int argc, char** argv) {
    // A video program that ends early is a failed write.
    std::signal(SIGPIPE, SIG_IGN);
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("flumo-studio"));
    QApplication::setApplicationDisplayName(QStringLiteral("Flumo Studio"));
    QApplication::setApplicationVersion(QStringLiteral(FLUMO_VERSION));
    try {
        return flumo::studio::run();
    } catch (const flumo::Failure& failure) {
        flumo::studio::tell(failure.what());
        return flumo::studio::exit_status(failure.kind());
    } catch (const std::exception& error) {
        flumo::studio::tell(error.what());
        return 1;
    }
}
