// Looks to take: the library on disk, thumbnails, variations and the comparison.
#include <gtest/gtest.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <fstream>

#include "base/failure.h"
#include "media/picture_file.h"
#include "scene/scene_text.h"
#include "studio/document/look_file.h"
#include "studio/looks/comparison.h"
#include "studio/looks/looks_panel.h"
#include "studio/looks/variations_panel.h"
#include "studio/preview/preview_view.h"
#include "tests/studio/studio_fixture.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::studio::test {
namespace {

using flumo::test::ScratchFolder;

struct OpenLooks : OpenDocument {
    OpenLooks() { document.set_size({96, 54}); }

    std::string text() const { return scene::scene_text(document.scene()); }

    ScratchFolder folder;
    LookLibrary library{folder / "looks"};
    Thumbnailer thumbnailer{session().catalog(), session().host(), folder / "cache"};
};

void click(LookGrid& grid, int place) {
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualItemRect(grid.item(place)).center());
}

QImage icon_of(const LookGrid& grid, int place) {
    return grid.item(place)->icon().pixmap(grid.iconSize()).toImage();
}

bool is_complete(const LookGrid& grid) {
    return QTest::qWaitFor([&] { return grid.finished() == grid.count(); }, 120000);
}

TEST(Looks, AreKeptInFoldersShownAsThumbnailsAndTakenAsOneStep) {
    OpenLooks open;
    open.document.set_value(open.control("NoiseType"), 2.0);
    open.document.set_value(open.control("Scale"), 30.0);
    const std::string kept = open.text();
    LookFolder folder = open.library.make_folder(QStringLiteral("Clouds"));
    EXPECT_THROW(open.library.make_folder(QStringLiteral("Clouds")), Failure);
    EXPECT_THROW(open.library.make_folder(QStringLiteral("a/b")), Failure);
    folder = open.library.rename_folder(folder, QStringLiteral("Cells"));
    open.library.save(folder, QStringLiteral("soft"), kept);
    std::ofstream(folder.path / "broken.json") << "{";
    ASSERT_EQ(open.library.folders().size(), 3U);

    LooksPanel panel(open.document, open.library, open.thumbnailer);
    panel.resize(240, 600);
    panel.show();
    EXPECT_GE(panel.grid().count(), 4) << "shipped looks";
    panel.choose_folder(2);
    ASSERT_EQ(panel.grid().count(), 2);
    const QImage waiting = icon_of(panel.grid(), 1);
    ASSERT_TRUE(is_complete(panel.grid()));
    EXPECT_FALSE(icon_of(panel.grid(), 1) == waiting);
    EXPECT_TRUE(panel.grid().item(0)->toolTip().contains(QStringLiteral("broken.json")));

    while (open.document.undo_stack().index() > 1)
        open.document.undo_stack().undo();
    const std::string before = open.text();
    click(panel.grid(), 0);
    EXPECT_EQ(open.text(), before) << "a look that cannot be read is not taken";
    click(panel.grid(), 1);
    EXPECT_EQ(open.text(), kept);
    open.document.undo_stack().undo();
    EXPECT_EQ(open.text(), before);

    // The second time it comes from the disk: with another picture there, that one is shown.
    for (const auto& entry : std::filesystem::directory_iterator(open.folder / "cache")) {
        QImage red(192, 108, QImage::Format_RGB32);
        red.fill(Qt::red);
        red.save(QString::fromStdString(entry.path()));
    }
    panel.choose_folder(0);
    panel.choose_folder(2);
    ASSERT_TRUE(is_complete(panel.grid()));
    EXPECT_EQ(icon_of(panel.grid(), 1).pixelColor(20, 20), QColor(Qt::red));
}

TEST(Variations, DifferFromTheLookInChosenControlsAndAreTakenByAClick) {
    OpenLooks open;
    VariationsPanel panel(open.document, open.thumbnailer);
    panel.resize(240, 900);
    panel.show();
    LookGrid& grid = panel.grid();
    ASSERT_EQ(grid.count(), 16);
    const std::string before = open.text();
    const auto lines = open.control("LinesCount").index;
    for (const GridLook& look : grid.looks())
        EXPECT_FALSE(look.state->scene.tracks.contains(lines)) << "lines are not drawn in this look";
    click(grid, 3);
    EXPECT_NE(open.text(), before);
    EXPECT_EQ(open.document.scene().tracks.size(), grid.looks()[3].state->scene.tracks.size());
    click(grid, 0);
    EXPECT_EQ(open.text(), before);
    const auto first = grid.looks()[3].state;
    QTest::mouseClick(panel.findChild<QPushButton*>(QStringLiteral("again")), Qt::LeftButton);
    EXPECT_FALSE(same_scene(*grid.looks()[3].state, *first));
}

TEST(Comparison, ShowsTheHeldLookInThePresentFrameAndSwapsBoth) {
    OpenLooks open;
    PreviewView view;
    Comparison comparison(open.document, view, open.thumbnailer);
    open.document.set_animated(open.control("Evolution"), true);
    open.document.set_current_frame(10);
    open.document.set_value(open.control("Evolution"), 360.0);
    const std::string held = open.text();
    comparison.hold_look();
    open.document.set_current_frame(5);
    open.document.set_value(open.control("NoiseType"), 4.0);
    const std::string present = open.text();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !comparison.image().isNull(); }, 60000));

    std::ofstream(open.folder / "held.json") << held;
    const auto picture = open.folder / "held.png";
    const auto said = flumo::test::run_program(
        {FLUMO_PROGRAM, "render", "--scene", open.folder / "held.json", "--frames", "5", "-o", picture});
    ASSERT_EQ(said.status, 0) << said.errors;
    const QImage of_look = comparison.image().convertToFormat(QImage::Format_RGBA8888);
    comparison.hold_picture(picture);
    EXPECT_TRUE(of_look == comparison.image().convertToFormat(QImage::Format_RGBA8888));
    EXPECT_THROW(comparison.hold_picture("/no/such.png"), Failure);

    comparison.stop();
    EXPECT_FALSE(comparison.is_on());
    comparison.hold_look();
    open.document.undo_stack().undo();
    comparison.swap();
    EXPECT_EQ(open.text(), present);
    comparison.swap();
    EXPECT_EQ(open.text(), held);
    comparison.flip();
    EXPECT_EQ(comparison.wipe(), 0);
    comparison.flip();
    EXPECT_EQ(comparison.wipe(), 1);
}

}  // namespace
}  // namespace flumo::studio::test
