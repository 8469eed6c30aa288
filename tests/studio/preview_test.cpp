// What the preview shows, against what the command line writes.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <fstream>

#include "media/picture/exr_file.h"
#include "media/picture_file.h"
#include "media/world_picture.h"
#include "scene/scene_text.h"
#include "studio/preview/preview_panel.h"
#include "tests/studio/studio_fixture.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::studio::test {
namespace {

struct OpenPreview : OpenDocument {
    /// The finished current frame.
    std::shared_ptr<const host::World> finished() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return preview.is_finished(); }, 60000));
        return preview.shown().world;
    }

    Preview preview{document};
};

// The document, saved and rendered by the program flumo at this frame.
media::Picture rendered_by_flumo(const Document& document, const flumo::test::ScratchFolder& folder) {
    const bool is_float = document.scene().depth == 32;
    const auto output = folder / (is_float ? "frame.exr" : "frame.png");
    std::ofstream(folder / "look.json") << scene::scene_text(document.scene());
    const auto said =
        flumo::test::run_program({FLUMO_PROGRAM, "render", "--scene", folder / "look.json", "--frames",
                                  std::to_string(document.current_frame()), "-o", output});
    EXPECT_EQ(said.status, 0) << said.errors;
    return is_float ? media::read_exr(output) : media::read_picture(output);
}

media::Picture as_written(const host::World& world) {
    media::Picture picture = media::picture_of(world);
    if (world.depth() == host::Depth::k32) media::premultiply(picture);
    return picture;
}

// One worker renders a whole session of edits, so that what one of them leaves would show in the next.
TEST(Preview, ShowsAfterEveryEditWhatFlumoRendersFromTheSavedScene) {
    const flumo::test::ScratchFolder folder;
    OpenPreview open;
    Document& document = open.document;
    document.set_size({61, 35});
    document.set_value(open.control("Layer1"), std::filesystem::path(FLUMO_EXAMPLES "/layers/dusk.png"));
    const auto first = open.finished();
    const auto expect_same = [&](const char* edit) {
        EXPECT_TRUE(as_written(*open.finished()).samples == rendered_by_flumo(document, folder).samples)
            << edit;
    };
    document.set_value(open.control("NoiseType"), 3.0);
    expect_same("popup");
    document.set_animated(open.control("Evolution"), true);
    document.set_current_frame(10);
    document.set_value(open.control("Evolution"), 90.0);
    document.set_value(open.control("LinesVisible"), 1.0);
    document.set_value(open.control("Gradient"),
                       std::vector<scene::Stop>{{0, scene::StopKind::kLinear, {1, 0, 0, 1}},
                                                {1, scene::StopKind::kLinear, {0, 0, 1, 0.5}}});
    document.set_current_frame(7);
    expect_same("keyframes and gradient");
    document.reset(open.control("LinesVisible"));
    document.reset(open.control("Evolution"));
    expect_same("controls without values again");
    document.set_depth(16);
    expect_same("another depth");
    document.set_resolution({1, 2});
    expect_same("half of it");
    document.set_resolution({});
    document.set_depth(32);
    document.reset(open.control("Gradient"));
    document.set_size({64, 30});
    expect_same("floats and another size");
    document.set_current_frame(0);
    while (document.undo_stack().index() > 2)
        document.undo_stack().undo();
    EXPECT_TRUE(open.finished()->same_picture(*first)) << "undone";
    // Frames in memory must not hide a fault of the renderer.
    open.preview.reload();
    EXPECT_TRUE(QTest::qWaitFor([&] { return open.finished() != first; }, 60000));
    EXPECT_TRUE(open.finished()->same_picture(*first)) << "undone and rendered anew";
}

TEST(Preview, GoesFromCoarseToFineAndTellsAFailureOfTheNewestLookAlone) {
    OpenPreview open;
    open.document.set_size({256, 144});
    std::vector<int> divisors;
    QObject::connect(&open.preview, &Preview::frame_shown, [&](const ShownFrame& frame) {
        if (frame.state == open.document.state()) divisors.push_back(frame.place.divisor);
    });
    QSignalSpy failures(&open.preview, &Preview::frame_failed);
    open.finished();
    EXPECT_EQ(divisors, (std::vector{4, 2, 1}));
    const auto& layer = open.control("Layer1");
    open.document.set_value(layer, std::filesystem::path("/no/such.png"));
    ASSERT_TRUE(failures.wait(60000));
    EXPECT_TRUE(failures[0][0].toString().contains(QStringLiteral("/no/such.png")));
    open.document.undo_stack().undo();
    open.finished();
    EXPECT_EQ(failures.count(), 1);

    // A frame that fails in the effect: its message stands in the window until a frame comes.
    PreviewPanel panel(open.preview);
    panel.show();
    const auto* const message = panel.findChild<QLabel*>(QStringLiteral("message"));
    host::Faults& faults = session().host().faults();
    faults.fail_every(host::Callback::kCheckoutOutput, host::FaultMode::kError);
    open.document.set_value(open.control("Scale"), 44.0);
    ASSERT_TRUE(failures.wait(60000));
    faults.clear();
    EXPECT_TRUE(message->isVisible() && message->text().contains(QStringLiteral("PF_Cmd_SMART_RENDER")));
    open.document.set_value(open.control("Scale"), 45.0);
    open.finished();
    EXPECT_FALSE(message->isVisible());
    for (int frame = 1; frame <= 3; ++frame) {
        open.document.set_current_frame(frame);
        open.finished();
    }
    EXPECT_TRUE(open.preview.is_cached(2));
    open.preview.set_cache_limit(std::size_t{256} * 144 * 4 * 5 / 2);
    EXPECT_FALSE(open.preview.is_cached(1));
    EXPECT_TRUE(open.preview.is_cached(3));
}

TEST(Display, ShowsChannelsOfEveryDepthAlike) {
    for (const auto depth : {host::Depth::k8, host::Depth::k16, host::Depth::k32}) {
        host::World world(1, 1, depth);
        world.set_rgba(0, 0, {1, 0.4F, 0.2F, 0.6F});
        const auto shown = [&](Channels channels) { return display_image(world, channels).pixelColor(0, 0); };
        EXPECT_EQ(shown(Channels::kRgb).alpha(), 153);
        EXPECT_EQ(shown(Channels::kRed), QColor(255, 255, 255));
        EXPECT_EQ(shown(Channels::kGreen), QColor(102, 102, 102));
        EXPECT_EQ(shown(Channels::kBlue), QColor(51, 51, 51));
        EXPECT_EQ(shown(Channels::kAlpha), QColor(153, 153, 153));
        EXPECT_EQ(shown(Channels::kLuminance), QColor(131, 131, 131));  // 54.213 + 72.950 + 3.682
    }
}

TEST(Display, PointsAtTheSamePixelWhateverTheZoom) {
    OpenPreview open;
    open.document.set_size({64, 36});
    open.document.set_value(open.control("NoiseType"), 2.0);
    const auto world = open.finished();
    PreviewPanel panel(open.preview);
    panel.resize(640, 480);
    panel.show();
    panel.view().show_frame(open.preview.shown());
    const auto* const label = panel.findChild<QLabel*>(QStringLiteral("pixel"));
    const QPoint mouse(205, 143);
    const auto pointed = [&] {
        QTest::mouseMove(&panel.view(), mouse + QPoint(1, 1));
        QTest::mouseMove(&panel.view(), mouse);
        return label->text();
    };
    const QString text = pointed();
    const QStringList place = text.section(QStringLiteral("   "), 0, 0).split(QStringLiteral(", "));
    ASSERT_EQ(place.size(), 2) << text.toStdString();
    const QPoint pixel(place[0].toInt(), place[1].toInt());
    EXPECT_TRUE(text.endsWith(pixel_text(*world, pixel.x(), pixel.y()))) << text.toStdString();
    for (const int steps : {120, 480, 480, -240}) {
        QWheelEvent wheel(mouse, panel.view().mapToGlobal(mouse), {}, {0, steps}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&panel.view(), &wheel);
        EXPECT_EQ(pointed(), text) << panel.view().zoom();
        const QColor seen = panel.view().grab().toImage().pixelColor(mouse);
        EXPECT_EQ(seen, display_image(*world, Channels::kRgb).pixelColor(pixel)) << panel.view().zoom();
    }
    panel.choose_channels(4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return open.preview.shown().channels == Channels::kAlpha; }, 60000));
    EXPECT_EQ(panel.view().grab().toImage().pixelColor(mouse), QColor(255, 255, 255));
}

}  // namespace
}  // namespace flumo::studio::test
