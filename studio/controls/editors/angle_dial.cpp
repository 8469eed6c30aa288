#include "studio/controls/editors/angle_dial.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace flumo::studio {
namespace {

constexpr int kSide = 28;
constexpr double kSnap = 15;

}  // namespace

AngleDial::AngleDial(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(kSide, kSide);
    setAttribute(Qt::WA_Hover);
}

void AngleDial::show_degrees(double degrees) {
    degrees_ = degrees;
    update();
}

QSize AngleDial::sizeHint() const {
    return {kSide, kSide};
}

void AngleDial::choose(double degrees) {
    // A tenth of a degree is finer than the hand on a dial.
    const double rounded = std::round(degrees * 10) / 10;
    if (rounded == degrees_) return;
    degrees_ = rounded;
    update();
    emit degrees_chosen(rounded);
}

void AngleDial::step(double steps, Qt::KeyboardModifiers held) {
    double size = 1;
    if (held & Qt::ShiftModifier) size = 10;
    if (held & Qt::ControlModifier) size = 0.1;
    choose(degrees_ + steps * size);
}

double AngleDial::angle_at(const QPointF& point) const {
    const QPointF arm = point - QRectF(rect()).center();
    return std::atan2(arm.x(), -arm.y()) * 180 / std::numbers::pi;
}

void AngleDial::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre = QRectF(rect()).center();
    const double radius = kSide / 2.0 - 3;
    const QColor line = palette().color(isEnabled() ? QPalette::Highlight : QPalette::Mid);
    painter.setPen(QPen(hasFocus() ? line : palette().color(QPalette::Mid), hasFocus() ? 2 : 1));
    painter.setBrush(palette().color(underMouse() ? QPalette::Midlight : QPalette::Button));
    painter.drawEllipse(centre, radius, radius);
    const double turn = degrees_ * std::numbers::pi / 180;
    const QPointF direction(std::sin(turn), -std::cos(turn));
    painter.setPen(QPen(palette().color(QPalette::WindowText), 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(centre + direction * 2, centre + direction * (radius - 2));
}

void AngleDial::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    dragged_ = true;
    unsnapped_ = degrees_;
    pointer_ = angle_at(event->position());
    emit pressed();
}

void AngleDial::mouseMoveEvent(QMouseEvent* event) {
    if (!dragged_) return;
    const double pointer = angle_at(event->position());
    unsnapped_ += std::remainder(pointer - pointer_, 360.0);
    pointer_ = pointer;
    const bool snaps = event->modifiers() & Qt::ShiftModifier;
    choose(snaps ? std::round(unsnapped_ / kSnap) * kSnap : unsnapped_);
}

void AngleDial::mouseReleaseEvent(QMouseEvent* /*event*/) {
    if (!dragged_) return;
    dragged_ = false;
    emit released();
}

void AngleDial::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Down:
            return step(-1, event->modifiers());
        case Qt::Key_Right:
        case Qt::Key_Up:
            return step(1, event->modifiers());
        case Qt::Key_PageDown:
            return choose(degrees_ - 90);
        case Qt::Key_PageUp:
            return choose(degrees_ + 90);
        default:
            QWidget::keyPressEvent(event);
    }
}

void AngleDial::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) return event->ignore();
    step(event->angleDelta().y() > 0 ? 1 : -1, event->modifiers());
    event->accept();
}

void AngleDial::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    update();
}

void AngleDial::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    update();
}

}  // namespace flumo::studio
