// The panel of controls under a hand: mouse, keys and typed values.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QColorSpace>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <fstream>
#include <sstream>

#include "scene/gradient/gradient_text.h"
#include "studio/controls/control_panel.h"
#include "studio/controls/editors/angle_dial.h"
#include "studio/controls/editors/number_field.h"
#include "studio/controls/editors/value_slider.h"
#include "tests/studio/studio_fixture.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace flumo::studio::test {
namespace {

using Stops = std::vector<scene::Stop>;

struct OpenPanel : OpenDocument {
    OpenPanel() {
        panel.unfold_all(true);
        panel.resize(360, 800);
        panel.show();
    }

    ControlRow& row(std::string_view id) { return *panel.row(control(id)); }
    template <typename Widget>
    Widget& in_row(std::string_view id, int number = 0) {
        return *row(id).findChildren<Widget*>().at(number);
    }
    Stops stops() const { return std::get<Stops>(document.value_now(control("Gradient"))); }
    int steps() { return document.undo_stack().index(); }

    ControlPanel panel{document};
};

/// The gradient after each event of a script, as `flumo panel` reports it, and its picture.
struct PlayedByFlumo {
    explicit PlayedByFlumo(const std::string& script) {
        std::ofstream(folder / "script") << script;
        const auto said =
            flumo::test::run_program({FLUMO_PROGRAM, "panel", "Gradient", "--print", "hex", "--script",
                                      folder / "script", "-o", folder / "panel.png"});
        EXPECT_EQ(said.status, 0) << said.errors;
        std::istringstream lines(said.output);
        for (std::string line; std::getline(lines, line);)
            after.push_back(scene::parse_gradient(line.substr(line.find('\t') + 1)));
    }
    QImage picture() const {
        QImage image(QString::fromStdString(folder / "panel.png"));
        // The file names its colour space, a window's picture does not.
        image.setColorSpace({});
        return image.convertToFormat(QImage::Format_RGB888);
    }

    flumo::test::ScratchFolder folder;
    std::vector<Stops> after;
};

// Qt's own dialog, when it has opened.
void answer_color_dialog(const QColor& color) {
    QTimer::singleShot(0, [color] {
        auto* const dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        dialog->setCurrentColor(color);
        dialog->accept();
    });
}

void drag(QWidget& widget, const std::vector<QPoint>& points) {
    QTest::mousePress(&widget, Qt::LeftButton, {}, points.front());
    for (std::size_t i = 1; i < points.size(); ++i)
        QTest::mouseMove(&widget, points[i]);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, points.back());
}

TEST(GradientEditor, GivesWhatFlumoPanelGivesForTheSameGesturesInOneStepEach) {
    const PlayedByFlumo played(
        "double-click 75,20\n"
        "pick #ff8000\ndouble-click 75,40\n"
        "ctrl-click 75,40\n"
        "click 75,40\ndrag 120,40\ndrag 300,-30\ndrag 99,30\nrelease\n"
        "click 6,40\ndrag 7,40\ndrag 8,90\nrelease\n");
    OpenPanel open;
    ControlEditor& editor = open.row("Gradient").editor();
    QPalette colors;
    colors.setColor(QPalette::Window, QColor(0x23, 0x23, 0x23));
    colors.setColor(QPalette::WindowText, QColor(0xbf, 0xbf, 0xbf));
    editor.setPalette(colors);
    editor.setFixedSize(150, 50);
    QApplication::processEvents();

    std::vector<Stops> after{open.stops()};
    const auto done = [&] { after.push_back(open.stops()); };
    QTest::mouseDClick(&editor, Qt::LeftButton, {}, {75, 20});
    done();
    answer_color_dialog(QColor(0xff, 0x80, 0x00, 0x40));
    QTest::mouseDClick(&editor, Qt::LeftButton, {}, {75, 40});
    done();
    QTest::mouseClick(&editor, Qt::LeftButton, Qt::ControlModifier, {75, 40});
    done();
    drag(editor, {{75, 40}, {120, 40}, {300, -30}, {99, 30}});
    done();
    drag(editor, {{6, 40}, {7, 40}, {8, 90}});
    done();

    const auto& expected = played.after;
    ASSERT_EQ(expected.size(), 13U);
    EXPECT_EQ(after,
              (std::vector{expected[0], expected[1], expected[2], expected[3], expected[8], expected[12]}));
    editor.clearFocus();
    EXPECT_TRUE(editor.grab().toImage().convertToFormat(QImage::Format_RGB888) == played.picture());
    EXPECT_EQ(open.steps(), 5);
    for (std::size_t step = after.size(); step-- > 0; open.document.undo_stack().undo())
        EXPECT_EQ(open.stops(), after[step]) << step;
}

TEST(GradientEditor, IsEditedByKeysAlone) {
    OpenPanel open;
    ControlEditor& editor = open.row("Gradient").editor();
    const auto press = [&](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(&editor, key);
    };
    press({Qt::Key_Insert});
    ASSERT_EQ(open.stops().size(), 3U);
    const float middle = open.stops()[1].at;
    press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Space});
    const float pixel = 1.0F / static_cast<float>(editor.width() - 12);
    EXPECT_NEAR(open.stops()[1].at, middle + 2 * pixel, pixel / 4);
    EXPECT_EQ(open.stops()[1].kind, scene::StopKind::kEdge);
    answer_color_dialog(Qt::green);
    press({Qt::Key_Return});
    EXPECT_EQ(open.stops()[1].colour, (scene::Colour{0, 1, 0, 1}));
    press({Qt::Key_Home, Qt::Key_Delete});
    ASSERT_EQ(open.stops().size(), 2U);
    EXPECT_EQ(open.stops()[0].colour, (scene::Colour{0, 1, 0, 1}));
}

TEST(ControlPanel, EditsEveryKindOfControlAsOneStepEach) {
    OpenPanel open;
    auto& slider = open.in_row<ValueSlider>("Scale");
    slider.resize(112, 24);
    drag(slider, {{106, 12}, {80, 12}, {56, 12}, {66, 12}});
    EXPECT_EQ(open.steps(), 1);
    EXPECT_EQ(open.number("Scale"), 20);
    EXPECT_EQ(open.in_row<NumberField>("Scale").text(), QStringLiteral("20 %"));
    EXPECT_TRUE(open.row("Scale").is_changed());

    // Beyond the slider's range, within the valid one.
    auto& field = open.in_row<NumberField>("Scale");
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, QStringLiteral("1234.5678"));
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(open.number("Scale"), 1234.5678);
    QTest::keyClick(&field, Qt::Key_Up);
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_GT(open.number("Scale"), 1234.5678);
    open.row("Scale").editor().finish();
    EXPECT_EQ(open.steps(), 3);

    auto& dial = open.in_row<AngleDial>("Evolution");
    drag(dial, {{14, 2}, {26, 14}, {14, 26}, {2, 14}, {14, 2}, {26, 14}});
    EXPECT_NEAR(open.number("Evolution"), 450, 4);
    EXPECT_EQ(open.in_row<NumberField>("Evolution").value(), 1);
    EXPECT_EQ(open.steps(), 4);

    QTest::keyClick(&open.in_row<QComboBox>("NoiseType"), Qt::Key_Down);
    EXPECT_EQ(open.number("NoiseType"), 2);
    auto& lines = open.in_row<QCheckBox>("LinesVisible");
    lines.setFocus();
    QTest::keyClick(&lines, Qt::Key_Space);
    EXPECT_EQ(open.number("LinesVisible"), 1);
    EXPECT_EQ(open.steps(), 6);

    while (open.document.undo_stack().canUndo())
        open.document.undo_stack().undo();
    EXPECT_EQ(open.in_row<NumberField>("Scale").value(), 100);
    EXPECT_EQ(dial.degrees(), 0);
    EXPECT_EQ(open.in_row<QComboBox>("NoiseType").currentText(), QStringLiteral("Fluid"));
    EXPECT_FALSE(lines.isChecked());
}

TEST(ControlPanel, ShowsAllControlsFindsThemAndTellsWhichHaveNoEffect) {
    OpenPanel open;
    int rows = 0;
    for (const scene::Control& control : open.document.catalog().controls()) {
        if (control.is_group_mark()) continue;
        ControlRow* const row = open.panel.row(control);
        ASSERT_TRUE(row) << control.id;
        rows += row->isVisible();
        EXPECT_FALSE(row->editor().main_widget()->accessibleName().isEmpty()) << control.id;
    }
    EXPECT_EQ(rows, 72);

    EXPECT_TRUE(open.row("LinesCount").reason().contains(QStringLiteral("“Draw Lines” on")))
        << open.row("LinesCount").reason().toStdString();
    open.document.set_value(open.control("LinesVisible"), 1.0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return open.row("LinesCount").reason().isEmpty(); }));
    EXPECT_TRUE(open.row("Scale").reason().isEmpty());

    auto& search = *open.panel.findChild<QLineEdit*>(QStringLiteral("search"));
    QTest::keyClicks(&search, QStringLiteral("cut thr"));
    QTest::keyClick(&search, Qt::Key_Backspace);
    EXPECT_TRUE(open.row("LinesTopCroppingThreshold").isVisible());
    EXPECT_FALSE(open.row("Scale").isVisible());
    search.clear();
    EXPECT_TRUE(open.row("Scale").isVisible());
}

}  // namespace
}  // namespace flumo::studio::test
