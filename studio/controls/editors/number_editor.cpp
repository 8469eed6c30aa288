#include "studio/controls/editors/number_editor.h"

#include <QHBoxLayout>
#include <algorithm>
#include <cmath>

#include "studio/controls/editors/metrics.h"
#include "studio/controls/editors/number_field.h"
#include "studio/controls/editors/value_slider.h"

namespace flumo::studio {
namespace {

// Digits that a field keeps of a number that was typed.
constexpr int kDigits = 6;

// The largest power of ten that divides the range into a thousand steps or more; whole numbers stay whole.
double quantum_of(const scene::Control& control) {
    if (control.kind == scene::ControlKind::kSlider) return 1;
    return std::pow(10, std::floor(std::log10((control.slider.max - control.slider.min) / 1000)));
}

host::Range slider_range(const scene::Control& control) {
    const bool sensible = control.slider.max > control.slider.min;
    return sensible ? control.slider : control.valid;
}

double step_of(const scene::Control& control) {
    const host::Range range = slider_range(control);
    const double step = std::pow(10, std::floor(std::log10((range.max - range.min) / 50)));
    return control.kind == scene::ControlKind::kSlider ? std::max(1.0, step) : step;
}

}  // namespace

NumberEditor::NumberEditor(const scene::Control& control, QWidget* parent) : ControlEditor(control, parent) {
    const host::Range range = slider_range(control);
    slider_ = new ValueSlider(range, quantum_of(control), std::clamp(0.0, range.min, range.max), this);
    slider_->setAccessibleName(QString::fromStdString(control.name) + tr(", slider"));
    field_ = new NumberField(this);
    field_->setAccessibleName(QString::fromStdString(control.name));
    field_->setRange(control.valid.min, control.valid.max);
    field_->setDecimals(control.kind == scene::ControlKind::kSlider ? 0 : kDigits);
    field_->setSingleStep(step_of(control));
    const QString unit = unit_of(control);
    if (!unit.isEmpty()) field_->setSuffix(QStringLiteral(" ") + unit);
    field_->setFixedWidth(metrics::kFieldWidth);

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(metrics::kGap);
    row->addWidget(slider_, 1);
    row->addWidget(field_);

    connect(slider_, &QSlider::sliderPressed, this, [this] { start_drag(); });
    connect(slider_, &QSlider::sliderReleased, this, [this] { stop_drag(); });
    connect(slider_, &ValueSlider::number_chosen, this, [this](double number) {
        field_->show_number(number);
        change(number);
    });
    connect(field_, &NumberField::number_chosen, this, [this](double number) {
        slider_->show_number(number);
        change(number);
    });
    connect(field_, &QDoubleSpinBox::editingFinished, this, &ControlEditor::finish);
}

void NumberEditor::show_value(const scene::ControlValue& value) {
    const auto* const number = std::get_if<double>(&value);
    if (!number) return;
    if (!slider_->isSliderDown()) slider_->show_number(*number);
    field_->show_number(*number);
}

QWidget* NumberEditor::main_widget() {
    return field_;
}

}  // namespace flumo::studio
