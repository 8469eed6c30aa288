// The ruler with the frames in memory, and a row of keyframes for each animated control.
#pragma once

#include <QAbstractScrollArea>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "studio/document/document.h"
#include "studio/preview/preview.h"
#include "studio/timeline/time_scale.h"

namespace flumo::studio {

/// Mouse: the ruler scrubs; keyframes are selected by clicks (with Ctrl more of them) or a band, and moved by
/// dragging; a double click on a row makes a keyframe; the wheel with Ctrl zooms in time. Keys: arrows, Home
/// and End move through frames and rows, J and K to the keyframes of the row, Insert makes one, Delete
/// deletes the selected ones or the one at the current frame.
class TimelineView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    /// A keyframe by its control's index and its frame.
    using Key = std::pair<int, int>;

    /// Both must outlive it.
    TimelineView(Document& document, Preview& preview, QWidget* parent = nullptr);

    const std::set<Key>& selected() const { return selected_; }
    /// The control of the current row; null without rows.
    const scene::Control* current_control() const;

    /// Where the keyframe of a row stands, in the viewport's coordinates.
    QPointF place_of(const Key& key) const;

  public slots:
    /// Of the current row, at the current frame.
    void add_keyframe();
    /// The selected ones, or the current row's at the current frame.
    void delete_keyframes();
    void set_interpolation(flumo::scene::Interpolation interpolation);
    void go_to_next_keyframe();
    void go_to_previous_keyframe();
    /// Shows all frames of the scene.
    void fit();

  signals:
    /// Of keyframes or of the row.
    void selection_changed();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    enum class Drag { kNone, kScrub, kKeys, kBand };

    void refresh_rows();
    TimeScale scale() const;
    const scene::Control& control_of(int index) const;
    /// The row at this height, or nothing.
    std::optional<std::size_t> row_at(double y) const;
    double row_top(std::size_t row) const;
    std::optional<Key> key_at(QPointF point) const;
    /// The selected keyframes, or that of the current row at the current frame.
    std::set<Key> keys_to_change() const;
    void select(std::set<Key> keys);
    void make_current(std::size_t row);
    void scrub(double x);
    void select_band();
    void move_selected(int distance);
    void zoom_time(double x, double factor);

    void paint_ruler(QPainter& painter, const TimeScale& scale) const;
    void paint_cached(QPainter& painter, const TimeScale& scale) const;
    void paint_rows(QPainter& painter, const TimeScale& scale) const;
    void paint_row(QPainter& painter, const TimeScale& scale, std::size_t row) const;
    void paint_playhead(QPainter& painter, const TimeScale& scale) const;

    Document& document_;
    Preview& preview_;
    std::vector<int> rows_;  ///< indexes of the animated controls
    std::size_t current_row_ = 0;
    std::set<Key> selected_;
    std::optional<std::pair<double, double>> shown_;  ///< frames; nothing: those of the scene
    Drag drag_ = Drag::kNone;
    QPointF pressed_;
    QPointF dragged_;
    int drag_distance_ = 0;  ///< frames
};

}  // namespace flumo::studio
