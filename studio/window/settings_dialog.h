// Size, depth, frames and rate of the scene.
#pragma once

#include <QDialog>

#include "studio/document/document.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace flumo::studio {

class SettingsDialog : public QDialog {
    Q_OBJECT

  public:
    /// The document must outlive the dialog. OK changes it as one undo step.
    explicit SettingsDialog(Document& document, QWidget* parent = nullptr);

  private:
    void take();

    Document& document_;
    QSpinBox* width_;
    QSpinBox* height_;
    QComboBox* resolution_;
    QComboBox* depth_;
    QLineEdit* frames_;
    QLineEdit* rate_;
    QLineEdit* description_;
    QLabel* message_;
};

}  // namespace flumo::studio
