#include "studio/controls/editors/value_slider.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace flumo::studio {
namespace {

constexpr double kHandle = 12;  // diameter in pixels
constexpr double kGroove = 4;
constexpr int kMostPositions = 100000;
constexpr double kFine = 0.1;
constexpr float kQuiet = 0.7F;  // opacity of a handle that the mouse is not over

int positions(const host::Range& range, double quantum) {
    return static_cast<int>(std::min<double>(std::round((range.max - range.min) / quantum), kMostPositions));
}

}  // namespace

ValueSlider::ValueSlider(const host::Range& range, double quantum, double origin, QWidget* parent)
    : QSlider(Qt::Horizontal, parent), range_(range), quantum_(quantum), origin_(0) {
    setRange(0, std::max(1, positions(range, quantum)));
    origin_ = position_of(origin);
    setSingleStep(std::max(1, maximum() / 100));
    setPageStep(std::max(1, maximum() / 10));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void ValueSlider::show_number(double value) {
    const QSignalBlocker quiet(this);
    setValue(position_of(value));
    update();
}

QSize ValueSlider::sizeHint() const {
    return {96, 24};
}

QSize ValueSlider::minimumSizeHint() const {
    return {56, 24};
}

double ValueSlider::number_of(int position) const {
    const double raw = range_.min + (range_.max - range_.min) * position / maximum();
    return std::clamp(std::round(raw / quantum_) * quantum_, range_.min, range_.max);
}

int ValueSlider::position_of(double number) const {
    const double fraction =
        (std::clamp(number, range_.min, range_.max) - range_.min) / (range_.max - range_.min);
    return static_cast<int>(std::lround(fraction * maximum()));
}

void ValueSlider::choose(int position) {
    const int bounded = std::clamp(position, 0, maximum());
    if (bounded == value()) return;
    setValue(bounded);
    emit number_chosen(number_of(bounded));
}

double ValueSlider::place_of(int position) const {
    return kHandle / 2 + (width() - kHandle) * position / maximum();
}

void ValueSlider::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double middle = height() / 2.0;
    const double place = place_of(value());
    const double origin = place_of(origin_);
    painter.setBrush(palette().color(QPalette::Mid));
    painter.drawRoundedRect(QRectF(kHandle / 2 - 2, middle - kGroove / 2, width() - kHandle + 4, kGroove),
                            kGroove / 2, kGroove / 2);
    const QColor accent = palette().color(isEnabled() ? QPalette::Highlight : QPalette::Mid);
    painter.setBrush(accent);
    painter.drawRect(
        QRectF(std::min(place, origin), middle - kGroove / 2, std::abs(place - origin), kGroove));
    const bool active = hasFocus() || isSliderDown() || underMouse();
    QColor handle = palette().color(QPalette::WindowText);
    handle.setAlphaF(active ? 1.0F : kQuiet);
    // What lies below must not shine through.
    painter.setBrush(palette().color(QPalette::Window));
    const double radius = kHandle / 2 - 1;
    painter.drawEllipse(QPointF(place, middle), radius, radius);
    painter.setPen(hasFocus() ? QPen(accent, 2) : QPen(Qt::NoPen));
    painter.setBrush(handle);
    painter.drawEllipse(QPointF(place, middle), radius, radius);
}

void ValueSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    setSliderDown(true);
    const double x = event->position().x();
    const bool on_handle = std::abs(x - place_of(value())) <= kHandle / 2;
    if (!on_handle)
        choose(static_cast<int>(std::lround((x - kHandle / 2) / (width() - kHandle) * maximum())));
    pressed_x_ = x;
    pressed_position_ = value();
}

void ValueSlider::mouseMoveEvent(QMouseEvent* event) {
    if (!isSliderDown()) return QSlider::mouseMoveEvent(event);
    const double factor = event->modifiers() & Qt::ShiftModifier ? kFine : 1;
    const double moved = (event->position().x() - pressed_x_) / (width() - kHandle) * maximum() * factor;
    choose(pressed_position_ + static_cast<int>(std::lround(moved)));
}

void ValueSlider::mouseReleaseEvent(QMouseEvent* /*event*/) {
    setSliderDown(false);
    update();
}

void ValueSlider::step(int steps, Qt::KeyboardModifiers held) {
    int size = singleStep();
    if (held & Qt::ShiftModifier) size = pageStep();
    if (held & Qt::ControlModifier) size = std::max(1, singleStep() / 10);
    choose(value() + steps * size);
}

void ValueSlider::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Down:
            return step(-1, event->modifiers());
        case Qt::Key_Right:
        case Qt::Key_Up:
            return step(1, event->modifiers());
        case Qt::Key_PageDown:
            return choose(value() - pageStep());
        case Qt::Key_PageUp:
            return choose(value() + pageStep());
        case Qt::Key_Home:
            return choose(0);
        case Qt::Key_End:
            return choose(maximum());
        default:
            QSlider::keyPressEvent(event);
    }
}

void ValueSlider::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) return event->ignore();
    const QPoint turned = event->angleDelta();
    const int notch = turned.y() != 0 ? turned.y() : turned.x();
    step(notch > 0 ? 1 : -1, event->modifiers());
    event->accept();
}

}  // namespace flumo::studio
