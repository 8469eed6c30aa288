// A choice by name, and a switch.
#pragma once

#include "studio/controls/editors/control_editor.h"

class QCheckBox;
class QComboBox;

namespace flumo::studio {

/// Offers the choices that have names; another number that the control holds is shown as a number.
class PopupEditor : public ControlEditor {
    Q_OBJECT

  public:
    explicit PopupEditor(const scene::Control& control, QWidget* parent = nullptr);

    void show_value(const scene::ControlValue& value) override;
    QWidget* main_widget() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QComboBox* box_;
};

class CheckEditor : public ControlEditor {
    Q_OBJECT

  public:
    explicit CheckEditor(const scene::Control& control, QWidget* parent = nullptr);

    void show_value(const scene::ControlValue& value) override;
    QWidget* main_widget() override;

  private:
    QCheckBox* box_;
};

}  // namespace flumo::studio
