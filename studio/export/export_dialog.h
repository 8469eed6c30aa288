// Chooses what to export, and shows the queue.
#pragma once

#include <QDialog>
#include <optional>

#include "studio/document/document.h"
#include "studio/export/export_queue.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace flumo::studio {

/// Not modal: the look may be edited while exports run. Each export is of the look as it was when it was
/// added.
class ExportDialog : public QDialog {
    Q_OBJECT

  public:
    /// Both must outlive the dialog.
    ExportDialog(Document& document, ExportQueue& queue, QWidget* parent = nullptr);

  private:
    enum Kind { kStill, kSequence, kVideo };

    QWidget* make_form();
    QWidget* make_buttons();
    void choose_kind(int kind);
    void browse();
    /// Throws Failure.
    ExportSettings settings() const;
    /// What the form asks for now; otherwise shows why not.
    std::optional<ExportPlan> plan();
    void show_plan();
    void add();
    void copy_command();

    Document& document_;
    ExportQueue& queue_;
    QComboBox* kind_;
    QLineEdit* output_;
    QLineEdit* frames_;
    QComboBox* resolution_;
    QComboBox* exr_type_;
    QCheckBox* linear_;
    QLabel* summary_;
    QPushButton* add_ = nullptr;
    QPushButton* copy_ = nullptr;
};

}  // namespace flumo::studio
