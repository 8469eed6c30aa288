// Files, the clipboard, and work that is left unsaved.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <fstream>

#include "base/file_contents.h"
#include "scene/scene_text.h"
#include "studio/window/main_window.h"
#include "tests/studio/studio_fixture.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::studio::test {
namespace {

// The message that the window shows, once it is there.
QMessageBox* message_of(const QWidget& window) {
    QMessageBox* box = nullptr;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto boxes = window.findChildren<QMessageBox*>();
        for (QMessageBox* const candidate : boxes) {
            if (candidate->isVisible()) box = candidate;
        }
        return box != nullptr;
    }));
    return box;
}

void click(QMessageBox* box, const QString& text) {
    ASSERT_TRUE(box);
    for (QAbstractButton* const button : box->buttons()) {
        if (button->text().remove(QLatin1Char('&')) == text) return QTest::mouseClick(button, Qt::LeftButton);
    }
    FAIL() << "no button " << text.toStdString();
}

std::string text_of(MainWindow& window) {
    return scene::scene_text(window.document().scene());
}

void drop(MainWindow& window, const std::filesystem::path& file) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(file.string()))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &event);
}

TEST(StudioFiles, ComeBackAsTheyWereFromScenesPicturesAndTheClipboard) {
    const flumo::test::ScratchFolder folder;
    MainWindow window(session());
    window.show();
    const auto control = [&](const char* id) { return session().catalog().find(id); };
    for (const auto& entry : std::filesystem::directory_iterator(FLUMO_EXAMPLES)) {
        if (entry.path().extension() != ".json") continue;
        ASSERT_TRUE(window.files().open(entry.path()));
        const std::string text = text_of(window);
        ASSERT_TRUE(window.files().save_to(folder / "copy.json"));
        EXPECT_FALSE(window.files().is_modified());
        window.files().copy_look();
        ASSERT_TRUE(window.files().open(folder / "copy.json"));
        EXPECT_EQ(text_of(window), text) << entry.path();
        window.document().load({});
        window.document().set_frames(std::vector{3, 4});
        window.files().paste_look();
        EXPECT_EQ(window.document().last_frame(), 4) << "a look has no settings";
        scene::Scene pasted = window.document().scene();
        const auto saved = scene::read_scene(folder / "copy.json", session().catalog());
        pasted.size = saved.size;
        pasted.resolution = saved.resolution;
        pasted.frames = saved.frames;
        pasted.rate = saved.rate;
        pasted.depth = saved.depth;
        EXPECT_EQ(scene::scene_text(pasted), text) << entry.path();
        window.document().undo_stack().setClean();
    }
    EXPECT_EQ(FileActions::recent_files().front(), QString::fromStdString(folder / "copy.json"));

    const auto said = flumo::test::run_program({FLUMO_PROGRAM, "render", "--size", "16x9", "--depth", "16",
                                                "--set", "Scale=33", "-o", folder / "frame.exr"});
    ASSERT_EQ(said.status, 0) << said.errors;
    drop(window, folder / "frame.exr");
    EXPECT_EQ(std::get<double>(window.document().value_at(control("Scale"), 0)), 33);
    EXPECT_EQ(window.document().scene().size->width, 16);
    EXPECT_EQ(window.files().path(), "") << "saving must not write over a picture";
}

TEST(StudioFiles, AsksBeforeWorkIsLostAndTellsWhatCannotBeReadOrWritten) {
    const flumo::test::ScratchFolder folder;
    MainWindow window(session());
    window.show();
    std::ofstream(folder / "broken.json") << "{";
    std::ofstream(folder / "good.json") << "{}";
    const auto& scale = session().catalog().find("Scale");
    window.document().set_value(scale, 20.0);
    const std::string text = text_of(window);

    drop(window, folder / "good.json");
    click(message_of(window), QStringLiteral("Cancel"));
    EXPECT_EQ(text_of(window), text);
    drop(window, folder / "broken.json");
    click(message_of(window), QStringLiteral("Discard"));
    QMessageBox* const unread = message_of(window);
    EXPECT_TRUE(unread->text().contains(QStringLiteral("broken.json")));
    click(unread, QStringLiteral("OK"));
    EXPECT_EQ(text_of(window), text) << "a file that cannot be read changes nothing";
    QApplication::clipboard()->setText(QStringLiteral("no look"));
    window.files().paste_look();
    click(message_of(window), QStringLiteral("OK"));
    EXPECT_FALSE(window.files().save_to("/proc/look.json"));
    QMessageBox* const unwritten = message_of(window);
    EXPECT_TRUE(unwritten->text().contains(QStringLiteral("/proc/look.json")));
    click(unwritten, QStringLiteral("OK"));
    EXPECT_TRUE(window.files().is_modified());

    ASSERT_TRUE(window.files().save_to(folder / "mine.json"));
    window.document().set_value(scale, 21.0);
    window.close();
    EXPECT_TRUE(window.isVisible());
    click(message_of(window), QStringLiteral("Save"));
    EXPECT_FALSE(window.isVisible());
    EXPECT_NE(read_text_file(folder / "mine.json").find("\"Scale\": 21"), std::string::npos);
}

TEST(StudioProgram, TellsInOneLineWhatKeepsItFromStarting) {
    const auto started = [](std::vector<std::string> environment, const std::string& module) {
        std::vector<std::string> command = {"/usr/bin/env", "QT_QPA_PLATFORM=offscreen"};
        command.insert(command.end(), environment.begin(), environment.end());
        command.insert(command.end(), {FLUMO_STUDIO_PROGRAM, "--module", module});
        return flumo::test::run_program(command);
    };
    const auto missing = started({}, "/no/such/Flumo.so");
    EXPECT_EQ(missing.status, 3);
    EXPECT_NE(missing.errors.find("flumo-studio: /no/such/Flumo.so"), std::string::npos) << missing.errors;
    const auto driver =
        started({"LIBGL_DRIVERS_PATH=/no", "__EGL_VENDOR_LIBRARY_FILENAMES=/no"}, FLUMO_MODULE);
    EXPECT_EQ(driver.status, 4);
    EXPECT_NE(driver.errors.find("no usable OpenGL"), std::string::npos) << driver.errors;
}

// Another process of this program edits a file, waits until its work is kept, and is killed.
TEST(StudioFiles, OffersTheWorkOfAKilledProcessOnceItIsKilled) {
    const flumo::test::ScratchFolder folder;
    const auto look = folder / "look.json";
    std::ofstream(look) << R"({"controls": {"Scale": 20}})";
    const auto said = flumo::test::run_program({"/proc/self/exe", "--edit-and-die", look});
    ASSERT_EQ(said.status, 128 + SIGKILL) << said.errors;
    EXPECT_NE(read_text_file(look).find("20"), std::string::npos);
    const auto files_left = [] {
        return std::distance(std::filesystem::directory_iterator(FileActions::recovery_folder()), {});
    };
    {
        MainWindow window(session());
        window.show();
        window.files().offer_left_work();
        QMessageBox* const box = message_of(window);
        ASSERT_TRUE(box && box->text().contains(QStringLiteral("look.json")));
        click(box, QStringLiteral("Restore"));
        EXPECT_EQ(std::get<double>(window.document().value_at(session().catalog().find("Scale"), 0)), 77);
        EXPECT_TRUE(window.files().is_modified());
        EXPECT_EQ(window.files().path(), look);
        // Its own process lives, so nobody else is offered the work.
        MainWindow second(session());
        second.files().offer_left_work();
        EXPECT_TRUE(second.findChildren<QMessageBox*>().isEmpty());
        ASSERT_TRUE(window.files().save_to(look));
    }
    EXPECT_EQ(files_left(), 0);
}

}  // namespace
}  // namespace flumo::studio::test
