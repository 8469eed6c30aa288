// Playing, and keyframes by mouse and keys.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "studio/timeline/timeline_panel.h"
#include "tests/studio/studio_fixture.h"

namespace flumo::studio::test {
namespace {

struct OpenTimeline : OpenDocument {
    OpenTimeline() {
        document.set_size({48, 27});
        document.set_frames({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
        panel.resize(900, 200);
        panel.show();
    }
    void animate(std::string_view id, std::initializer_list<int> frames) {
        document.set_animated(control(id), true);
        for (const int frame : frames)
            document.add_keyframe(control(id), frame);
    }
    std::vector<int> frames_of(std::string_view id) const {
        std::vector<int> frames;
        for (const scene::Keyframe& keyframe : document.keyframes(control(id)))
            frames.push_back(keyframe.frame);
        return frames;
    }
    QPoint place(std::string_view id, int frame) {
        return panel.view().place_of({control(id).index, frame}).toPoint();
    }
    void drag(QPoint from, QPoint to) {
        QWidget* const target = panel.view().viewport();
        QTest::mousePress(target, Qt::LeftButton, {}, from);
        QTest::mouseMove(target, (from + to) / 2);
        QTest::mouseMove(target, to);
        QTest::mouseRelease(target, Qt::LeftButton, {}, to);
    }

    Preview preview{document};
    TimelinePanel panel{document, preview};
};

TEST(Timeline, PlaysEveryFrameAndKeepsThemUntilTheLookChanges) {
    OpenTimeline open;
    open.document.set_rate({100, 1});
    open.panel.player().set_loops(false);
    std::vector<int> shown;
    QObject::connect(&open.preview, &Preview::frame_shown, [&](const ShownFrame& frame) {
        EXPECT_TRUE(frame.is_finest || shown.empty()) << "played at the finest resolution alone";
        if (frame.is_finest && (shown.empty() || shown.back() != frame.place.frame))
            shown.push_back(frame.place.frame);
    });
    open.panel.player().set_playing(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !open.panel.player().is_playing(); }, 60000));
    EXPECT_EQ(shown, *open.document.scene().frames);
    for (const int frame : shown)
        EXPECT_TRUE(open.preview.is_cached(frame)) << frame;
    open.document.set_value(open.control("Scale"), 12.0);
    EXPECT_FALSE(open.preview.is_cached(3));
    open.document.undo_stack().undo();
    EXPECT_TRUE(open.preview.is_cached(3)) << "undo finds the frames of the former look";
}

TEST(Timeline, MovesKeyframesAsDraggedAndAsOneStep) {
    OpenTimeline open;
    open.animate("Scale", {0, 2, 3, 8});
    open.animate("Evolution", {0});
    QWidget* const target = open.panel.view().viewport();
    // The band takes 2 and 3; over the other one they move together, past their own former places.
    open.drag(open.place("Scale", 1) - QPoint(4, 8), open.place("Scale", 3) + QPoint(12, 8));
    EXPECT_EQ(open.panel.view().selected().size(), 2U);
    const int steps = open.document.undo_stack().count();
    open.drag(open.place("Scale", 2), open.place("Scale", 3));
    EXPECT_EQ(open.frames_of("Scale"), (std::vector{0, 3, 4, 8}));
    open.drag(open.place("Scale", 3), open.place("Scale", 7));
    EXPECT_EQ(open.frames_of("Scale"), (std::vector{0, 7, 8})) << "one that is met is replaced";
    EXPECT_EQ(open.document.undo_stack().count(), steps + 2);
    open.document.undo_stack().undo();
    open.document.undo_stack().undo();
    EXPECT_EQ(open.frames_of("Scale"), (std::vector{0, 2, 3, 8}));

    QTest::mouseClick(target, Qt::LeftButton, {}, open.place("Scale", 8));
    open.panel.view().set_interpolation(scene::Interpolation::kHold);
    EXPECT_EQ(open.document.keyframes(open.control("Scale")).back().to_next, scene::Interpolation::kHold);
    QTest::keyClick(target, Qt::Key_Delete);
    EXPECT_EQ(open.frames_of("Scale"), (std::vector{0, 2, 3}));
    QTest::mouseDClick(target, Qt::LeftButton, {}, open.place("Evolution", 6));
    EXPECT_EQ(open.frames_of("Evolution"), (std::vector{0, 6}));
    open.panel.view().setFocus();
    QTest::keyClick(&open.panel.view(), Qt::Key_K);
    EXPECT_EQ(open.document.current_frame(), 6);
    QTest::keyClick(&open.panel.view(), Qt::Key_Left);
    QTest::keyClick(&open.panel.view(), Qt::Key_Insert);
    EXPECT_EQ(open.frames_of("Evolution"), (std::vector{0, 5, 6}));
}

}  // namespace
}  // namespace flumo::studio::test
