// The timeline with its bar: transport, frame, range, rate and keyframes.
#pragma once

#include <QWidget>

#include "studio/document/document.h"
#include "studio/preview/preview.h"
#include "studio/theme/icons.h"
#include "studio/timeline/player.h"
#include "studio/timeline/timeline_view.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QSpinBox;
class QToolButton;

namespace flumo::studio {

class TimelinePanel : public QWidget {
    Q_OBJECT

  public:
    /// Both must outlive the panel.
    TimelinePanel(Document& document, Preview& preview, QWidget* parent = nullptr);

    Player& player() { return *player_; }
    TimelineView& view() { return *view_; }

  private:
    QHBoxLayout* build_bar();
    QToolButton* add_button(QHBoxLayout& bar, Icon shape, const QString& name);
    QSpinBox* add_number(QHBoxLayout& bar, const QString& name);
    void show_frame();
    void show_settings();
    void show_selection();
    void take_range();
    void take_rate();

    Document& document_;
    Player* player_;
    TimelineView* view_;
    QToolButton* play_ = nullptr;
    QSpinBox* frame_ = nullptr;
    QLabel* time_ = nullptr;
    QSpinBox* first_ = nullptr;
    QSpinBox* last_ = nullptr;
    QComboBox* rate_ = nullptr;
    QComboBox* interpolation_ = nullptr;
    QToolButton* add_key_ = nullptr;
    QToolButton* delete_key_ = nullptr;
};

}  // namespace flumo::studio
