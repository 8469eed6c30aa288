// An angle by a dial, its whole turns and its degrees.
#pragma once

#include "studio/controls/editors/control_editor.h"

namespace flumo::studio {

class AngleDial;
class NumberField;

/// Whole turns and the rest have the same sign. The field of degrees takes any angle and passes its turns on.
class AngleEditor : public ControlEditor {
    Q_OBJECT

  public:
    explicit AngleEditor(const scene::Control& control, QWidget* parent = nullptr);

    void show_value(const scene::ControlValue& value) override;
    QWidget* main_widget() override;

  private:
    void show_degrees(double degrees);
    void choose(double degrees);

    AngleDial* dial_;
    NumberField* turns_;
    NumberField* rest_;
    double degrees_ = 0;
};

}  // namespace flumo::studio
