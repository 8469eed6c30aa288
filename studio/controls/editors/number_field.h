// A number that is typed or stepped.
#pragma once

#include <QDoubleSpinBox>

namespace flumo::studio {

/// Takes the wheel only while it has the focus. Shift steps ten times as far, Ctrl a tenth as far. Shows no
/// more digits than the number has.
class NumberField : public QDoubleSpinBox {
    Q_OBJECT

  public:
    explicit NumberField(QWidget* parent = nullptr);

    /// Shows the number without a signal. `value` is kept to the field's digits only for showing.
    void show_number(double value);
    void stepBy(int steps) override;
    QString textFromValue(double value) const override;

  signals:
    /// Typed or stepped by the user.
    void number_chosen(double value);

  protected:
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace flumo::studio
