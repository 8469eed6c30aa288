// A gradient, drawn and edited by the effect.
#pragma once

#include <QBasicTimer>
#include <QImage>
#include <functional>

#include "studio/controls/editors/control_editor.h"
#include "studio/controls/editors/effect_control.h"

namespace flumo::studio {

/// Passes the mouse to the effect as events; docs/panel.md tells what it makes of them. Keys do the same for
/// the marked stop through clicks and drags at its place:
///   Left, Right        move it by a pixel, with Shift by ten
///   Home, End, Up, Down   mark the first, the last, the previous, the next stop
///   Return             the colour dialog        Space    the next kind
///   Insert             a stop half-way to the next one        Delete   remove it
class GradientEditor : public ControlEditor {
    Q_OBJECT

  public:
    GradientEditor(const scene::Control& control, host::Host& host, QWidget* parent = nullptr);

    void show_value(const scene::ControlValue& value) override;
    QWidget* main_widget() override { return this; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Asked for a colour instead of Qt's dialog; nothing cancels.
    std::function<std::optional<QColor>(const QColor& start)> ask_colour;

  signals:
    /// The effect reported an error; one line.
    void failed(const QString& message);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    host::ControlEvents& events();
    void press(const QPoint& point, int clicks, Qt::KeyboardModifiers held);
    void take(const host::EventOutcome& outcome);
    host::PickedColour pick_colour(const PF_PixelFloat& sample);

    // Keys.
    int x_of(const scene::Stop& stop) const;
    std::optional<int> handle_of(std::size_t stop) const;
    void mark(std::ptrdiff_t stop);
    void nudge(int pixels);
    void remove_marked();
    void click_marked(int clicks, Qt::KeyboardModifiers held);
    void add_stop();

    EffectControl effect_;
    QImage image_;
    QBasicTimer idle_;
    std::vector<scene::Stop> stops_;
    std::size_t marked_ = 0;
    QPoint last_point_;
    bool holds_ = false;   ///< the effect wants the drags of this press
    bool moved_ = false;   ///< a drag was sent since the press
    bool asking_ = false;  ///< the colour dialog is open
};

}  // namespace flumo::studio
