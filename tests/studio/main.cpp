// Tests need a QApplication, and settings and files of their own.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <csignal>
#include <cstdlib>

#include "studio/window/main_window.h"
#include "tests/studio/studio_fixture.h"
#include "tests/support/scratch_folder.h"

namespace flumo::studio::test {
namespace {

// With --edit-and-die FILE: what a person does whose machine fails.
int edit_and_die(const char* file) {
    MainWindow window(session());
    window.show();
    window.files().open(file);
    window.document().set_value(session().catalog().find("Scale"), 77.0);
    const auto is_kept = [] {
        for (const auto& entry : std::filesystem::directory_iterator(FileActions::recovery_folder())) {
            if (entry.path().extension() == ".recovery" && !entry.path().filename().string().starts_with('.'))
                return true;
        }
        return false;
    };
    if (QTest::qWaitFor(is_kept, 20000)) std::raise(SIGKILL);
    return 1;
}

}  // namespace
}  // namespace flumo::studio::test

int main(int argc, char** argv) {
    const bool is_child = argc == 3 && std::string_view(argv[1]) == "--edit-and-die";
    const flumo::test::ScratchFolder home;
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        setenv(name, home.path().c_str(), is_child ? 0 : 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("flumo-studio"));
    if (is_child) return flumo::studio::test::edit_and_die(argv[2]);
    return RUN_ALL_TESTS();
}
