// A group of controls that folds.
#pragma once

#include <QWidget>

class QLabel;
class QToolButton;
class QVBoxLayout;

namespace flumo::studio {

class GroupSection : public QWidget {
    Q_OBJECT

  public:
    /// `depth` is 0 for a group that lies in no other.
    GroupSection(const QString& name, int depth, QWidget* parent = nullptr);

    void add(QWidget* widget);
    void set_open(bool open);
    bool is_open() const;
    /// How many controls in the group differ from their defaults; shown while it is folded.
    void set_changed_count(int count);

  signals:
    /// The user folded or unfolded it.
    void toggled(bool open);

  private:
    void show_state();

    QToolButton* header_;
    QLabel* count_;
    QWidget* content_;
    QVBoxLayout* rows_;
    int changed_ = 0;
};

}  // namespace flumo::studio
