#include "studio/controls/editors/angle_editor.h"

#include <QHBoxLayout>
#include <algorithm>
#include <cmath>

#include "studio/controls/editors/angle_dial.h"
#include "studio/controls/editors/metrics.h"
#include "studio/controls/editors/number_field.h"

namespace flumo::studio {
namespace {

constexpr int kTurnsWidth = 40;

constexpr double kTurn = 360;

}  // namespace

AngleEditor::AngleEditor(const scene::Control& control, QWidget* parent)
    : ControlEditor(control, parent),
      dial_(new AngleDial(this)),
      turns_(new NumberField(this)),
      rest_(new NumberField(this)) {
    const QString name = QString::fromStdString(control.name);
    const host::Range range = scene::accepted_range(control);
    dial_->setAccessibleName(name + tr(", dial"));
    turns_->setAccessibleName(name + tr(", whole turns"));
    turns_->setRange(std::ceil(range.min / kTurn), std::floor(range.max / kTurn));
    turns_->setDecimals(0);
    turns_->setSuffix(QStringLiteral(" ×"));
    turns_->setFixedWidth(kTurnsWidth);
    rest_->setAccessibleName(name + tr(", degrees"));
    rest_->setRange(range.min, range.max);
    rest_->setDecimals(4);
    rest_->setSuffix(QStringLiteral(" ") + unit_of(control));
    rest_->setFixedWidth(metrics::kFieldWidth);

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(metrics::kGrid);
    row->addWidget(dial_);
    row->addStretch(1);
    row->addWidget(turns_);
    row->addWidget(rest_);

    connect(dial_, &AngleDial::pressed, this, [this] { start_drag(); });
    connect(dial_, &AngleDial::released, this, [this] { stop_drag(); });
    connect(dial_, &AngleDial::degrees_chosen, this, &AngleEditor::choose);
    connect(turns_, &NumberField::number_chosen, this,
            [this](double turns) { choose(turns * kTurn + std::fmod(degrees_, kTurn)); });
    connect(rest_, &NumberField::number_chosen, this,
            [this](double rest) { choose(std::trunc(degrees_ / kTurn) * kTurn + rest); });
}

void AngleEditor::choose(double degrees) {
    const host::Range range = scene::accepted_range(control());
    const double accepted = std::clamp(degrees, range.min, range.max);
    show_degrees(accepted);
    change(accepted);
}

void AngleEditor::show_degrees(double degrees) {
    degrees_ = degrees;
    dial_->show_degrees(degrees);
    turns_->show_number(std::trunc(degrees / kTurn));
    rest_->show_number(std::fmod(degrees, kTurn));
}

void AngleEditor::show_value(const scene::ControlValue& value) {
    if (const auto* const number = std::get_if<double>(&value)) show_degrees(*number);
}

QWidget* AngleEditor::main_widget() {
    return rest_;
}

}  // namespace flumo::studio
