// What the timeline shows.
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <algorithm>

#include "studio/timeline/timeline_sizes.h"
#include "studio/timeline/timeline_view.h"

namespace flumo::studio {
namespace {

// Frames in memory, as editors show them.
const QColor kCachedColour(0x4c, 0xa8, 0x55);

// A diamond for linear, a square for hold, a circle for ease.
void paint_key(QPainter& painter, QPointF at, scene::Interpolation interpolation) {
    constexpr double kSide = kKeySize * 0.8;
    switch (interpolation) {
        case scene::Interpolation::kHold:
            painter.drawRect(QRectF(at.x() - kSide, at.y() - kSide, 2 * kSide, 2 * kSide));
            return;
        case scene::Interpolation::kEase:
            painter.drawEllipse(at, kKeySize - 0.5, kKeySize - 0.5);
            return;
        case scene::Interpolation::kLinear:
            break;
    }
    painter.drawPolygon(QPolygonF({{at.x() - kKeySize, at.y()},
                                   {at.x(), at.y() - kKeySize},
                                   {at.x() + kKeySize, at.y()},
                                   {at.x(), at.y() + kKeySize}}));
}

}  // namespace

void TimelineView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const TimeScale time = scale();
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Base));
    paint_rows(painter, time);
    paint_ruler(painter, time);
    paint_playhead(painter, time);
    if (drag_ == Drag::kBand && QLineF(pressed_, dragged_).length() > kGrid) {
        QColor fill = palette().color(QPalette::Highlight);
        fill.setAlpha(60);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(fill);
        painter.drawRect(QRectF(pressed_, dragged_).normalized());
    }
}

void TimelineView::paint_ruler(QPainter& painter, const TimeScale& scale) const {
    const QRect ruler(0, 0, viewport()->width(), kRulerHeight);
    painter.fillRect(ruler, palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect names = ruler.adjusted(2 * kGrid, 0, 0, -kCachedHeight);
    painter.drawText(
        names, Qt::AlignVCenter,
        rows_.empty() ? tr("No keyframes") : tr("%n animated", nullptr, static_cast<int>(rows_.size())));
    painter.setClipRect(QRect(kNamesWidth, 0, viewport()->width() - kNamesWidth, viewport()->height()));
    const int step = scale.ruler_step(kNumberGap);
    const int first = static_cast<int>(std::floor(scale.from / step)) * step;
    for (int frame = first; frame <= scale.to; frame += step) {
        const double x = scale.x_of(frame);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawLine(QPointF(x, kRulerHeight - kCachedHeight - 2 * kGrid),
                         QPointF(x, kRulerHeight - kCachedHeight));
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(
            QRectF(x - kNumberGap / 2, 0, kNumberGap, kRulerHeight - kCachedHeight - 2 * kGrid + 2),
            Qt::AlignCenter, QString::number(frame));
    }
    paint_cached(painter, scale);
    painter.setClipping(false);
}

// Neighbours in memory as one bar.
void TimelineView::paint_cached(QPainter& painter, const TimeScale& scale) const {
    const double half = std::clamp(scale.pixels_per_frame() / 2, 1.0, 2.0 * kGrid);
    const int from = std::max(static_cast<int>(std::floor(scale.from)), document_.first_frame());
    const int to = std::min(static_cast<int>(std::ceil(scale.to)), document_.last_frame());
    for (int frame = from; frame <= to; ++frame) {
        if (!preview_.is_cached(frame)) continue;
        const int begin = frame;
        while (frame < to && preview_.is_cached(frame + 1))
            ++frame;
        const double left = scale.x_of(begin) - half;
        painter.fillRect(
            QRectF(left, kRulerHeight - kCachedHeight, scale.x_of(frame) + half - left, kCachedHeight - 1),
            kCachedColour);
    }
}

void TimelineView::paint_rows(QPainter& painter, const TimeScale& scale) const {
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (row_top(row) + kRowHeight >= kRulerHeight && row_top(row) < viewport()->height())
            paint_row(painter, scale, row);
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(QPointF(kNamesWidth + 0.5, kRulerHeight),
                     QPointF(kNamesWidth + 0.5, viewport()->height()));
}

void TimelineView::paint_row(QPainter& painter, const TimeScale& scale, std::size_t row) const {
    const scene::Control& control = control_of(rows_[row]);
    const QRectF all(0, row_top(row), viewport()->width(), kRowHeight);
    const bool is_current = row == current_row_ && hasFocus();
    if (row == current_row_)
        painter.fillRect(all, palette().color(is_current ? QPalette::Mid : QPalette::AlternateBase));
    painter.setPen(palette().color(QPalette::Text));
    const QRectF name = QRectF(all.left() + 2 * kGrid, all.top(), kNamesWidth - 3 * kGrid, kRowHeight);
    painter.drawText(name, Qt::AlignVCenter,
                     fontMetrics().elidedText(QString::fromStdString(control.name), Qt::ElideRight,
                                              static_cast<int>(name.width())));
    painter.save();
    painter.setClipRect(all.adjusted(kNamesWidth + 1, 0, 0, 0));
    const auto keyframes = document_.keyframes(control);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const double y = all.center().y();
    if (keyframes.size() > 1)
        painter.drawLine(QPointF(scale.x_of(keyframes.front().frame), y),
                         QPointF(scale.x_of(keyframes.back().frame), y));
    for (const scene::Keyframe& keyframe : keyframes) {
        const bool is_selected = selected_.contains({control.index, keyframe.frame});
        const int distance = is_selected && drag_ == Drag::kKeys ? drag_distance_ : 0;
        painter.setPen(palette().color(QPalette::Base));
        painter.setBrush(palette().color(is_selected ? QPalette::Highlight : QPalette::Text));
        paint_key(painter, {scale.x_of(keyframe.frame + distance), y}, keyframe.to_next);
    }
    painter.restore();
}

void TimelineView::paint_playhead(QPainter& painter, const TimeScale& scale) const {
    const double x = scale.x_of(document_.current_frame());
    if (x < kNamesWidth) return;
    const QColor colour = palette().color(QPalette::Highlight);
    painter.setPen(colour);
    painter.drawLine(QPointF(x, 0), QPointF(x, viewport()->height()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF({{x - kGrid - 1, 0}, {x + kGrid + 1, 0}, {x, 2.0 * kGrid}}));
}

}  // namespace flumo::studio
