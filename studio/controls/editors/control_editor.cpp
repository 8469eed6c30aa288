#include "studio/controls/editors/control_editor.h"

namespace flumo::studio {
namespace {

// Longer than the repeat of a key, shorter than two deliberate steps.
constexpr int kPauseMilliseconds = 500;

}  // namespace

ControlEditor::ControlEditor(const scene::Control& control, QWidget* parent)
    : QWidget(parent), control_(control) {
    pause_.setSingleShot(true);
    pause_.setInterval(kPauseMilliseconds);
    connect(&pause_, &QTimer::timeout, this, &ControlEditor::finish);
}

void ControlEditor::finish() {
    pause_.stop();
    if (!open_ || dragging_) return;
    open_ = false;
    emit ended();
}

void ControlEditor::start_drag() {
    finish();
    dragging_ = true;
}

void ControlEditor::stop_drag() {
    dragging_ = false;
    finish();
}

void ControlEditor::change(const scene::ControlValue& value) {
    if (!open_) {
        open_ = true;
        emit begun();
    }
    emit edited(value);
    if (!dragging_) pause_.start();
}

void ControlEditor::change_once(const scene::ControlValue& value) {
    finish();
    change(value);
    finish();
}

QString unit_of(const scene::Control& control) {
    if (control.kind == scene::ControlKind::kAngle) return QStringLiteral("°");
    if (control.percent) return QStringLiteral("%");
    if (control.kind == scene::ControlKind::kFloatSlider &&
        (control.definition.u.fs_d.display_flags & PF_ValueDisplayFlag_PIXEL) != 0)
        return QStringLiteral("px");
    return {};
}

}  // namespace flumo::studio
