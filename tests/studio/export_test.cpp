// Exports in the background, against the command line.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <numeric>

#include "base/file_contents.h"
#include "studio/export/export_dialog.h"
#include "studio/export/export_queue.h"
#include "tests/studio/studio_fixture.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::studio::test {
namespace {

using flumo::test::ScratchFolder;

struct OpenExports : OpenDocument {
    OpenExports() {
        document.set_size({64, 36});
        document.set_animated(control("Evolution"), true);
        document.set_current_frame(8);
        document.set_value(control("Evolution"), 90.0);
        document.set_interpolation(control("Evolution"), 0, scene::Interpolation::kEase);
        document.set_value(control("Layer1"), std::filesystem::path(FLUMO_EXAMPLES "/layers/dusk.png"));
    }

    int add(const ExportSettings& settings) {
        return queue.add(plan_export(document.scene(), settings, document.catalog()));
    }
    ExportState ended(int id) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !queue.is_busy(); }, 120000));
        return queue.item(id)->state;
    }

    ExportQueue queue{session()};
};

std::vector<std::vector<uint8_t>> contents(const ScratchFolder& folder,
                                           const std::vector<std::string>& names) {
    std::vector<std::vector<uint8_t>> all;
    for (const std::string& name : names)
        all.push_back(read_file(folder / name));
    return all;
}

// The command that the studio gives, run by a shell in a place of its own.
void run_command(const std::string& command) {
    const std::string path =
        "PATH=" + std::filesystem::path(FLUMO_PROGRAM).parent_path().string() + ":\"$PATH\"; ";
    const auto said = flumo::test::run_program({"/bin/sh", "-c", path + command});
    EXPECT_EQ(said.status, 0) << said.errors;
}

TEST(Export, WritesTheBytesOfTheCommandThatItGives) {
    OpenExports open;
    open.document.set_value(open.control("Scale"), 100.0 / 3);
    const struct {
        std::string output;
        std::vector<int> frames;
        Resolution resolution;
        std::vector<std::string> files;
    } rows[] = {{"still's name.png", {3}, {}, {"still's name.png"}},
                {"shot.##.exr", {0, 1, 2}, {1, 2}, {"shot.00.exr", "shot.01.exr", "shot.02.exr"}},
                {"clip.mkv", {0, 1, 2, 3}, {}, {"clip.mkv"}}};
    for (const auto& row : rows) {
        const ScratchFolder folder;
        const int id = open.add({.output = folder / row.output,
                                 .frames = row.frames,
                                 .resolution = row.resolution,
                                 .exr_type = media::ExrType::kHalf});
        const std::string command = open.queue.item(id)->plan.command;
        // Later edits do not reach an export that is in the queue.
        open.document.set_value(open.control("NoiseType"), 3.0);
        ASSERT_EQ(open.ended(id), ExportState::kDone) << open.queue.item(id)->message.toStdString();
        EXPECT_EQ(folder.file_count(), row.files.size());
        const auto exported = contents(folder, row.files);
        for (const std::string& name : row.files)
            std::filesystem::remove(folder / name);
        run_command(command);
        EXPECT_TRUE(contents(folder, row.files) == exported) << row.output;
        open.document.undo_stack().undo();
    }
}

TEST(Export, LeavesNothingWhenItIsCancelledOrFailsAndKeepsWhatWasThere) {
    OpenExports open;
    const ScratchFolder folder;
    const std::string old = "an older frame";
    ASSERT_EQ(flumo::test::run_program(
                  {"/bin/sh", "-c", "printf '" + old + "' > " + (folder / "shot.0001.png").string()})
                  .status,
              0);
    std::vector<int> frames(2000);
    std::iota(frames.begin(), frames.end(), 0);
    const int running = open.add({.output = folder / "shot.####.png", .frames = frames});
    const int waiting = open.add({.output = folder / "other.####.png", .frames = frames});
    ASSERT_TRUE(QTest::qWaitFor([&] { return open.queue.item(running)->frames_done >= 3; }, 120000));
    open.queue.cancel(waiting);
    open.queue.cancel(running);
    EXPECT_EQ(open.ended(running), ExportState::kCancelled);
    EXPECT_EQ(open.ended(waiting), ExportState::kCancelled);
    EXPECT_EQ(folder.file_count(), 1U);
    EXPECT_EQ(read_text_file(folder / "shot.0001.png"), old);

    open.document.set_value(open.control("Layer1"), std::filesystem::path("/no/such.png"));
    const int failing = open.add({.output = folder / "shot.####.png", .frames = {1, 2}});
    EXPECT_EQ(open.ended(failing), ExportState::kFailed);
    EXPECT_TRUE(open.queue.item(failing)->message.contains(QStringLiteral("/no/such.png")));
    EXPECT_EQ(folder.file_count(), 1U);
    open.queue.remove_finished();
    EXPECT_TRUE(open.queue.items().empty());
}

TEST(Export, TellsInItsDialogWhatItWillDoAndWhyItCannot) {
    OpenExports open;
    const ScratchFolder folder;
    ExportDialog dialog(open.document, open.queue);
    dialog.show();
    auto& output = *dialog.findChild<QLineEdit*>(QStringLiteral("output"));
    auto& frames = *dialog.findChild<QLineEdit*>(QStringLiteral("frames"));
    auto& summary = *dialog.findChild<QLabel*>(QStringLiteral("summary"));
    auto& add = *dialog.findChild<QPushButton*>(QStringLiteral("add"));
    const auto name = [&](const std::string& file) {
        output.setText(QString::fromStdString(folder / file));
        return summary.text().toStdString();
    };
    frames.setText(QStringLiteral("0-4"));
    EXPECT_NE(name("a.png").find("5 frames need a place for the number"), std::string::npos);
    EXPECT_NE(name("a.tga").find("a.tga"), std::string::npos);
    EXPECT_NE(name("missing/a.#.png").find("cannot write into the folder"), std::string::npos);
    EXPECT_FALSE(add.isEnabled());
    EXPECT_EQ(name("a.#.png"), "5 frames (0-4), 64x36, 8 bits: " + (folder / "a.#.png").string());
    QTest::mouseClick(&add, Qt::LeftButton);
    EXPECT_EQ(open.ended(open.queue.items().back().id), ExportState::kDone);
    EXPECT_EQ(folder.file_count(), 5U);
}

}  // namespace
}  // namespace flumo::studio::test
