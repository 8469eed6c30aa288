#include "studio/controls/editors/number_field.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTimer>
#include <QWheelEvent>

namespace flumo::studio {
namespace {

constexpr double kFine = 0.1;
constexpr double kCoarse = 10;

}  // namespace

NumberField::NumberField(QWidget* parent) : QDoubleSpinBox(parent) {
    setButtonSymbols(NoButtons);
    setKeyboardTracking(false);
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::StrongFocus);
    setLocale(QLocale::c());
    setCorrectionMode(CorrectToNearestValue);
    connect(this, &QDoubleSpinBox::valueChanged, this, &NumberField::number_chosen);
}

void NumberField::show_number(double value) {
    const QSignalBlocker quiet(this);
    setValue(value);
}

void NumberField::stepBy(int steps) {
    const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers();
    double factor = 1;
    if (held & Qt::ShiftModifier) factor = kCoarse;
    // Qt itself steps ten times as far with Ctrl.
    if (held & Qt::ControlModifier) factor = kFine / 10;
    setValue(value() + steps * factor * singleStep());
    selectAll();
}

QString NumberField::textFromValue(double value) const {
    QString text = locale().toString(value, 'f', decimals());
    if (!text.contains(u'.')) return text;
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.')) text.chop(1);
    return text == QStringLiteral("-0") ? QStringLiteral("0") : text;
}

void NumberField::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QDoubleSpinBox::wheelEvent(event);
    else
        event->ignore();
}

void NumberField::focusInEvent(QFocusEvent* event) {
    QDoubleSpinBox::focusInEvent(event);
    // After the press of the mouse, which would set the cursor.
    QTimer::singleShot(0, this, &QDoubleSpinBox::selectAll);
}

void NumberField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && lineEdit()->isModified()) {
        lineEdit()->setText(prefix() + textFromValue(value()) + suffix());
        selectAll();
        return;
    }
    QDoubleSpinBox::keyPressEvent(event);
}

}  // namespace flumo::studio
