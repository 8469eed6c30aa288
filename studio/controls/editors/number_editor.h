// A number by a slider and a field.
#pragma once

#include "studio/controls/editors/control_editor.h"

namespace flumo::studio {

class NumberField;
class ValueSlider;

/// The slider spans the slider's range as registered, the field takes the valid range.
class NumberEditor : public ControlEditor {
    Q_OBJECT

  public:
    explicit NumberEditor(const scene::Control& control, QWidget* parent = nullptr);

    void show_value(const scene::ControlValue& value) override;
    QWidget* main_widget() override;

  private:
    ValueSlider* slider_;
    NumberField* field_;
};

}  // namespace flumo::studio
