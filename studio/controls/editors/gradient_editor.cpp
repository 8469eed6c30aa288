#include "studio/controls/editors/gradient_editor.h"

#include <QColorDialog>
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "host/module/host_error.h"

namespace flumo::studio {
namespace {

constexpr int kIdleMilliseconds = 250;
constexpr int kMarkerStrip = 16;  // height of the effect's markers in pixels

PF_Point point_of(const QPoint& point) {
    return {point.x(), point.y()};
}

PF_Modifiers modifiers_of(Qt::KeyboardModifiers held) {
    PF_Modifiers modifiers = PF_Mod_NONE;
    if (held & Qt::ControlModifier) modifiers |= PF_Mod_CMD_CTRL_KEY;
    if (held & Qt::ShiftModifier) modifiers |= PF_Mod_SHIFT_KEY;
    if (held & Qt::AltModifier) modifiers |= PF_Mod_OPT_ALT_KEY;
    return modifiers;
}

float in_range(float channel) {
    return std::clamp(channel, 0.0F, 1.0F);
}

}  // namespace

GradientEditor::GradientEditor(const scene::Control& control, host::Host& host, QWidget* parent)
    : ControlEditor(control, parent), effect_(control, host) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(QString::fromStdString(control.name));
    setAccessibleDescription(tr(
        "Arrow keys: move the marked stop, mark another one. Return: colour. Space: kind. Insert: new stop. "
        "Delete: remove."));
    effect_.colour_picker = [this](const PF_PixelFloat& sample) { return pick_colour(sample); };
    ask_colour = [this](const QColor& start) -> std::optional<QColor> {
        const QColor chosen =
            QColorDialog::getColor(start, this, tr("Gradient Color"), QColorDialog::ShowAlphaChannel);
        return chosen.isValid() ? std::optional(chosen) : std::nullopt;
    };
    stops_ = effect_.stops();
}

QSize GradientEditor::sizeHint() const {
    return {std::max(150, static_cast<int>(control().definition.ui_width)),
            std::max(kMarkerStrip, static_cast<int>(control().definition.ui_height))};
}

QSize GradientEditor::minimumSizeHint() const {
    return {100, sizeHint().height()};
}

void GradientEditor::show_value(const scene::ControlValue& value) {
    const auto* const stops = std::get_if<std::vector<scene::Stop>>(&value);
    if (!stops || asking_ || *stops == stops_) return;
    stops_ = *stops;
    marked_ = std::min(marked_, stops_.empty() ? 0 : stops_.size() - 1);
    effect_.set_stops(stops_);
    image_ = {};
    update();
}

host::ControlEvents& GradientEditor::events() {
    effect_.place({.size = size().expandedTo({1, 1}),
                   .scale = devicePixelRatioF(),
                   .background = palette().color(QPalette::Window),
                   .outline = palette().color(QPalette::WindowText)});
    return effect_.events();
}

bool GradientEditor::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::PaletteChange:
        case QEvent::StyleChange:
        case QEvent::ScreenChangeInternal:
            image_ = {};
            update();
            break;
        default:
            break;
    }
    return ControlEditor::event(event);
}

void GradientEditor::resizeEvent(QResizeEvent* event) {
    ControlEditor::resizeEvent(event);
    image_ = {};
}

void GradientEditor::paintEvent(QPaintEvent* /*event*/) {
    if (image_.isNull() || image_.devicePixelRatio() != devicePixelRatioF()) {
        events();
        host::EventOutcome outcome;
        image_ = effect_.draw(outcome);
        take(outcome);
    }
    QPainter painter(this);
    painter.drawImage(0, 0, image_);
    if (!hasFocus()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    if (marked_ < stops_.size()) {
        const int x = x_of(stops_[marked_]);
        painter.drawRoundedRect(QRectF(x - 6, height() - kMarkerStrip - 1, 13, kMarkerStrip), 2, 2);
    }
}

void GradientEditor::take(const host::EventOutcome& outcome) {
    if (outcome.error != PF_Err_NONE) {
        const host::HostError error(PF_Cmd_EVENT, outcome.error, outcome.message);
        emit failed(QString::fromStdString(control().name + ": " + error.what()));
    }
    if (!outcome.changed) return;
    stops_ = effect_.stops();
    image_ = {};
    update();
    change(stops_);
}

void GradientEditor::press(const QPoint& point, int clicks, Qt::KeyboardModifiers held) {
    finish();
    last_point_ = point;
    moved_ = false;
    start_drag();
    const host::EventOutcome outcome = events().click(point_of(point), clicks, modifiers_of(held));
    holds_ = outcome.drag_wanted;
    take(outcome);
    if (!holds_) stop_drag();
}

void GradientEditor::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    press(event->position().toPoint(), 1, event->modifiers());
}

void GradientEditor::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    press(event->position().toPoint(), 2, event->modifiers());
}

void GradientEditor::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (!(event->buttons() & Qt::LeftButton)) {
        events().move(point_of(point));
        return;
    }
    if (!holds_ || point == last_point_) return;
    last_point_ = point;
    moved_ = true;
    take(events().drag(point_of(point)));
}

void GradientEditor::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !std::exchange(holds_, false)) return;
    // A drag rounds the stop to a pixel: a mere click must not.
    if (moved_) take(events().release(point_of(last_point_)));
    stop_drag();
}

void GradientEditor::enterEvent(QEnterEvent* event) {
    ControlEditor::enterEvent(event);
    idle_.start(kIdleMilliseconds, this);
}

void GradientEditor::leaveEvent(QEvent* event) {
    ControlEditor::leaveEvent(event);
    idle_.stop();
    take(events().leave());
}

void GradientEditor::timerEvent(QTimerEvent* event) {
    if (event->timerId() != idle_.timerId()) return ControlEditor::timerEvent(event);
    // The effect works on its value while it asks for a colour.
    if (!asking_ && !holds_) take(events().idle());
}

void GradientEditor::focusInEvent(QFocusEvent* event) {
    ControlEditor::focusInEvent(event);
    update();
}

void GradientEditor::focusOutEvent(QFocusEvent* event) {
    ControlEditor::focusOutEvent(event);
    update();
}

host::PickedColour GradientEditor::pick_colour(const PF_PixelFloat& sample) {
    const QColor start = QColor::fromRgbF(in_range(sample.red), in_range(sample.green), in_range(sample.blue),
                                          in_range(sample.alpha));
    asking_ = true;
    const std::optional<QColor> chosen = ask_colour(start);
    asking_ = false;
    if (!chosen) return {};
    host::PickedColour picked;
    picked.status = PF_Err_NONE;
    picked.colour.alpha = chosen->alphaF();
    picked.colour.red = chosen->redF();
    picked.colour.green = chosen->greenF();
    picked.colour.blue = chosen->blueF();
    return picked;
}

}  // namespace flumo::studio
