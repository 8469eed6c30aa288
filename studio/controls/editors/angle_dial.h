// A dial that shows an angle and is turned by the mouse or by keys.
#pragma once

#include <QWidget>

namespace flumo::studio {

/// Degrees clockwise from the top, with whole turns: dragging round and round adds up. With Shift the angle
/// goes in steps of 15 degrees; keys and the wheel step by one degree, with Shift by ten, with Ctrl by a
/// tenth.
class AngleDial : public QWidget {
    Q_OBJECT

  public:
    explicit AngleDial(QWidget* parent = nullptr);

    /// Without a signal.
    void show_degrees(double degrees);
    double degrees() const { return degrees_; }
    bool is_dragged() const { return dragged_; }
    QSize sizeHint() const override;

  signals:
    void pressed();
    void released();
    void degrees_chosen(double degrees);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    void choose(double degrees);
    void step(double steps, Qt::KeyboardModifiers held);
    double angle_at(const QPointF& point) const;

    double degrees_ = 0;
    double unsnapped_ = 0;
    double pointer_ = 0;
    bool dragged_ = false;
};

}  // namespace flumo::studio
