// Tests need a QApplication, and settings and files of their own.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

#include "tests/support/scratch_folder.h"

int main(int argc, char** argv) {
    const flumo::test::ScratchFolder home;
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        setenv(name, home.path().c_str(), 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("flumo-studio"));
    return RUN_ALL_TESTS();
}
