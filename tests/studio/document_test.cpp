// Edits, gestures, keyframes and undo.
#include <gtest/gtest.h>

#include <QSignalSpy>

#include "scene/scene_text.h"
#include "tests/studio/studio_fixture.h"

namespace flumo::studio::test {
namespace {

TEST(Document, UndoesAnyEditStepByStepToTheVeryStart) {
    OpenDocument open;
    Document& document = open.document;
    const scene::Control& scale = open.control("Scale");
    std::vector<std::string> texts = {scene::scene_text(document.scene())};
    const auto edited = [&] { texts.push_back(scene::scene_text(document.scene())); };

    document.begin_gesture(QStringLiteral("Drag"));
    for (const double value : {30.0, 31.0, 40.0})
        document.set_value(scale, value);
    document.end_gesture();
    edited();
    document.set_animated(scale, true);
    edited();
    document.set_current_frame(10);
    document.set_value(scale, 60.0);
    edited();
    EXPECT_EQ(open.number("Scale", 5), 50.0);
    document.set_interpolation(scale, 0, scene::Interpolation::kHold);
    edited();
    EXPECT_EQ(open.number("Scale", 9), 40.0);
    document.move_keyframe(scale, 0, 10);
    EXPECT_EQ(document.keyframes(scale).front().to_next, scene::Interpolation::kHold) << "moved as it was";
    document.undo_stack().undo();
    document.move_keyframe(scale, 10, 20);
    edited();
    EXPECT_EQ(open.number("Scale", 19), 40.0);
    document.remove_keyframe(scale, 0);
    edited();
    document.remove_keyframe(scale, 20);
    EXPECT_FALSE(document.is_animated(scale));
    EXPECT_TRUE(document.is_set(scale));
    edited();
    document.set_size({640, 360});
    edited();
    document.replace({}, QStringLiteral("Look"));
    edited();
    EXPECT_EQ(document.scene().size->width, 640);

    EXPECT_EQ(static_cast<std::size_t>(document.undo_stack().count()), texts.size() - 1);
    for (std::size_t i = texts.size(); i-- > 0;) {
        EXPECT_EQ(scene::scene_text(document.scene()), texts[i]) << i;
        document.undo_stack().undo();
    }
    while (document.undo_stack().canRedo())
        document.undo_stack().redo();
    EXPECT_EQ(scene::scene_text(document.scene()), texts.back());
}

}  // namespace
}  // namespace flumo::studio::test
