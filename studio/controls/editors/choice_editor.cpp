#include "studio/controls/editors/choice_editor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>

namespace flumo::studio {
namespace {

void fill(QWidget* editor, QWidget* content, int stretch) {
    auto* const row = new QHBoxLayout(editor);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(content, stretch);
    if (stretch == 0) row->addStretch(1);
}

}  // namespace

PopupEditor::PopupEditor(const scene::Control& control, QWidget* parent)
    : ControlEditor(control, parent), box_(new QComboBox(this)) {
    for (const std::string& choice : scene::offered_choices(control))
        box_->addItem(QString::fromStdString(choice), box_->count() + 1);
    box_->setAccessibleName(QString::fromStdString(control.name));
    box_->setFocusPolicy(Qt::StrongFocus);
    box_->setMinimumContentsLength(8);
    box_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box_->installEventFilter(this);
    fill(this, box_, 1);
    connect(box_, &QComboBox::activated, this,
            [this](int row) { change_once(box_->itemData(row).toDouble()); });
}

bool PopupEditor::eventFilter(QObject* watched, QEvent* event) {
    if (watched == box_ && event->type() == QEvent::Wheel && !box_->hasFocus()) {
        event->ignore();
        return true;
    }
    return ControlEditor::eventFilter(watched, event);
}

void PopupEditor::show_value(const scene::ControlValue& value) {
    const auto* const number = std::get_if<double>(&value);
    if (!number) return;
    const int offered = static_cast<int>(scene::offered_choices(control()).size());
    const int choice = static_cast<int>(*number);
    while (box_->count() > offered)
        box_->removeItem(offered);
    if (choice < 1 || choice > offered) box_->addItem(QString::number(choice), choice);
    box_->setCurrentIndex(choice >= 1 && choice <= offered ? choice - 1 : offered);
}

QWidget* PopupEditor::main_widget() {
    return box_;
}

CheckEditor::CheckEditor(const scene::Control& control, QWidget* parent)
    : ControlEditor(control, parent), box_(new QCheckBox(this)) {
    box_->setAccessibleName(QString::fromStdString(control.name));
    fill(this, box_, 0);
    connect(box_, &QCheckBox::clicked, this, [this](bool on) { change_once(on ? 1.0 : 0.0); });
}

void CheckEditor::show_value(const scene::ControlValue& value) {
    if (const auto* const number = std::get_if<double>(&value)) box_->setChecked(*number != 0);
}

QWidget* CheckEditor::main_widget() {
    return box_;
}

}  // namespace flumo::studio
