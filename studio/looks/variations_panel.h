// Looks near the present one, in a grid.
#pragma once

#include <QWidget>
#include <cstdint>
#include <vector>

#include "studio/document/document.h"
#include "studio/looks/look_grid.h"

class QMenu;
class QPushButton;
class QSlider;
class QToolButton;

namespace flumo::studio {

/// The first in the grid is the look itself; a click takes one, and the grid stays until others are asked
/// for.
class VariationsPanel : public QWidget {
    Q_OBJECT

  public:
    /// Both must outlive the panel.
    VariationsPanel(Document& document, Thumbnailer& thumbnailer, QWidget* parent = nullptr);

    LookGrid& grid() { return *grid_; }
    /// Variations of the present look, others than before.
    void vary_again();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void add_groups(QMenu& menu);
    std::vector<const scene::Control*> controls() const;
    void show_variations();
    void take(int place);

    Document& document_;
    QSlider* strength_;
    QToolButton* groups_;
    LookGrid* grid_;
    SharedState base_;
    uint64_t seed_ = 0;
};

}  // namespace flumo::studio
