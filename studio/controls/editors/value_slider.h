// A slider over a range of numbers.
#pragma once

#include <QSlider>

#include "host/values/control.h"

namespace flumo::studio {

/// Jumps to where it is pressed; with Shift a drag moves a tenth as far. Numbers beyond its range stand at
/// the end. Takes the wheel only while it has the focus.
class ValueSlider : public QSlider {
    Q_OBJECT

  public:
    /// Chooses multiples of `quantum`, in the unit of the range, both above 0. `origin` is where the coloured
    /// part of the groove begins.
    ValueSlider(const host::Range& range, double quantum, double origin, QWidget* parent = nullptr);

    /// Shows the number without a signal.
    void show_number(double value);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  signals:
    void number_chosen(double value);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    double number_of(int position) const;
    int position_of(double number) const;
    void choose(int position);
    double place_of(int position) const;
    void step(int steps, Qt::KeyboardModifiers held);

    host::Range range_;
    double quantum_;
    int origin_;
    double pressed_x_ = 0;
    int pressed_position_ = 0;
};

}  // namespace flumo::studio
