// One control in the panel: its name, its editor, its keyframe and its way back to the default.
#pragma once

#include <QWidget>

#include "studio/controls/editors/control_editor.h"
#include "studio/document/document.h"

class QLabel;
class QToolButton;

namespace flumo::studio {

/// Shows the document's value and edits it. The document must outlive the row.
class ControlRow : public QWidget {
    Q_OBJECT

  public:
    ControlRow(Document& document, const scene::Control& control, QWidget* parent = nullptr);

    const scene::Control& control() const { return editor_->control(); }
    ControlEditor& editor() { return *editor_; }
    /// Brings value and marks up to date with the document.
    void refresh();
    bool is_changed() const { return changed_; }
    /// Why the control has no effect at present; empty if it has one.
    void set_reason(const QString& reason);
    const QString& reason() const { return reason_; }
    /// Whether name, id or groups contain the text, whatever the case.
    bool matches(const QString& text) const;
    /// Two lines about the control.
    QString hint() const;

  signals:
    /// The mouse or the focus came to this row.
    void pointed_at();
    /// The editor failed; one line.
    void failed(const QString& message);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void lay_out();
    void connect_editor();
    void toggle_keyframe();
    bool has_keyframe_now() const;
    void show_keyframe();
    void show_dimmed();

    Document& document_;
    ControlEditor* editor_;
    QToolButton* keyframe_;
    QLabel* label_;
    QToolButton* reset_;
    QString reason_;
    bool changed_ = false;
    qint64 dimmed_from_ = 0;  ///< key of the program's palette that the dimmed colours were made of
};

}  // namespace flumo::studio
