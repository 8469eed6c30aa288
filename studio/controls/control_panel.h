// All controls of the effect, in the groups that it registered.
#pragma once

#include <QTimer>
#include <QWidget>
#include <map>
#include <vector>

#include "studio/controls/control_row.h"
#include "studio/document/document.h"

class QLabel;
class QLineEdit;
class QScrollArea;
class QToolButton;

namespace flumo::studio {

class GroupSection;

/// Shows and edits the document, which must outlive the panel.
class ControlPanel : public QWidget {
    Q_OBJECT

  public:
    explicit ControlPanel(Document& document, QWidget* parent = nullptr);

    /// Null for a group mark.
    ControlRow* row(const scene::Control& control) const;
    /// Unfolds the groups around the control, scrolls to it and gives it the focus.
    void reveal(const scene::Control& control);
    void focus_search();
    void unfold_all(bool open);
    QSize sizeHint() const override;

  signals:
    /// One line about an editor that failed.
    void failed(const QString& message);

  private:
    struct Group {
        GroupSection* section = nullptr;
        const scene::Control* mark = nullptr;  ///< the control that begins it
        int parent = -1;                       ///< place in `groups_`
        std::vector<ControlRow*> rows;         ///< also those of the groups within
    };

    QWidget* make_tools();
    void make_rows(QWidget* content);
    void open_group(const scene::Control& mark, QWidget* content);
    void add_row(const scene::Control& control, QWidget* content);
    void place(QWidget* widget, QWidget* content);
    void connect_document();
    void refresh_all();
    void refresh_reasons();
    void count_changes();
    void filter();
    void restore_folds();
    void store_folds() const;
    bool starts_open(const Group& group) const;

    Document& document_;
    std::map<int, ControlRow*> rows_;  ///< by control index
    std::vector<Group> groups_;
    std::vector<std::size_t> open_groups_;  ///< while rows are made
    QLineEdit* search_;
    QToolButton* changed_only_;
    QScrollArea* scroll_;
    QLabel* hint_;
    ControlRow* pointed_at_ = nullptr;
    QTimer reasons_due_;
};

}  // namespace flumo::studio
