// An editor of one control's value. It knows the control as it was registered and nothing of a document.
#pragma once

#include <QTimer>
#include <QWidget>

#include "scene/control_value.h"

namespace flumo::studio {

/// Shows a value and tells what the user makes of it. Everything between begun() and ended() is one step to
/// undo. `control` is borrowed.
class ControlEditor : public QWidget {
    Q_OBJECT

  public:
    explicit ControlEditor(const scene::Control& control, QWidget* parent = nullptr);

    const scene::Control& control() const { return control_; }
    /// Shows the value without a signal. A value of another kind is left out.
    virtual void show_value(const scene::ControlValue& value) = 0;
    /// The widget that a label stands for and that takes the focus.
    virtual QWidget* main_widget() = 0;
    /// Ends an edit that waits for further steps of a key or the wheel.
    void finish();

  signals:
    void begun();
    void edited(const flumo::scene::ControlValue& value);
    void ended();

  protected:
    /// A drag begins; every change until stop_drag() belongs to it.
    void start_drag();
    void stop_drag();
    /// The user chose the value. Outside a drag, changes that follow each other quickly are one edit.
    void change(const scene::ControlValue& value);
    /// Changes as one edit that is complete.
    void change_once(const scene::ControlValue& value);

  private:
    const scene::Control& control_;
    QTimer pause_;
    bool open_ = false;
    bool dragging_ = false;
};

/// "%", "°" or "px": the unit that the control is registered with; may be empty.
QString unit_of(const scene::Control& control);

}  // namespace flumo::studio
