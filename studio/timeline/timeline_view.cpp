#include "studio/timeline/timeline_view.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "scene/keyframe_text.h"
#include "studio/timeline/timeline_sizes.h"

namespace flumo::studio {

TimelineView::TimelineView(Document& document, Preview& preview, QWidget* parent)
    : QAbstractScrollArea(parent), document_(document), preview_(preview) {
    setAccessibleName(tr("Timeline"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setMouseTracking(true);
    setMinimumHeight(kRulerHeight + 2 * kRowHeight);
    const auto repaint = [this] { viewport()->update(); };
    connect(&document, &Document::control_changed, this, &TimelineView::refresh_rows);
    connect(&document, &Document::replaced, this, [this] {
        fit();
        refresh_rows();
    });
    connect(&document, &Document::settings_changed, viewport(), repaint);
    connect(&document, &Document::frame_changed, viewport(), repaint);
    connect(&preview, &Preview::cache_changed, viewport(), repaint);
    refresh_rows();
}

const scene::Control& TimelineView::control_of(int index) const {
    return document_.catalog().controls().at(static_cast<std::size_t>(index) - 1);
}

const scene::Control* TimelineView::current_control() const {
    return current_row_ < rows_.size() ? &control_of(rows_[current_row_]) : nullptr;
}

void TimelineView::refresh_rows() {
    const std::set<int>& animated = document_.state()->animated;
    rows_.assign(animated.begin(), animated.end());
    current_row_ = rows_.empty() ? 0 : std::min(current_row_, rows_.size() - 1);
    std::erase_if(selected_, [this](const Key& key) {
        const auto keyframes = document_.keyframes(control_of(key.first));
        return std::ranges::find(keyframes, key.second, &scene::Keyframe::frame) == keyframes.end();
    });
    const int space = viewport()->height() - kRulerHeight;
    verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(rows_.size()) * kRowHeight - space));
    verticalScrollBar()->setPageStep(space);
    verticalScrollBar()->setSingleStep(kRowHeight);
    viewport()->update();
    emit selection_changed();
}

TimeScale TimelineView::scale() const {
    const double width = std::max(viewport()->width() - kNamesWidth - 2 * kEndMargin, 1);
    TimeScale scale{double(kNamesWidth + kEndMargin), width, double(document_.first_frame()),
                    double(document_.last_frame())};
    if (shown_) std::tie(scale.from, scale.to) = *shown_;
    scale.to = std::max(scale.to, scale.from + 1);
    return scale;
}

void TimelineView::fit() {
    shown_.reset();
    viewport()->update();
}

double TimelineView::row_top(std::size_t row) const {
    return kRulerHeight + double(row) * kRowHeight - verticalScrollBar()->value();
}

std::optional<std::size_t> TimelineView::row_at(double y) const {
    if (y < kRulerHeight) return std::nullopt;
    const auto row = static_cast<std::size_t>((y - kRulerHeight + verticalScrollBar()->value()) / kRowHeight);
    return row < rows_.size() ? std::optional(row) : std::nullopt;
}

QPointF TimelineView::place_of(const Key& key) const {
    const auto row = static_cast<std::size_t>(std::ranges::find(rows_, key.first) - rows_.begin());
    return {scale().x_of(key.second), row_top(row) + kRowHeight / 2.0};
}

std::optional<TimelineView::Key> TimelineView::key_at(QPointF point) const {
    const auto row = row_at(point.y());
    if (!row || point.x() < kNamesWidth) return std::nullopt;
    std::optional<Key> nearest;
    double distance = kKeySize + 1;
    for (const scene::Keyframe& keyframe : document_.keyframes(control_of(rows_[*row]))) {
        const double away = std::abs(scale().x_of(keyframe.frame) - point.x());
        if (away >= distance) continue;
        distance = away;
        nearest = Key(rows_[*row], keyframe.frame);
    }
    return nearest;
}

void TimelineView::select(std::set<Key> keys) {
    selected_ = std::move(keys);
    viewport()->update();
    emit selection_changed();
}

void TimelineView::make_current(std::size_t row) {
    current_row_ = row;
    const int top = static_cast<int>(row) * kRowHeight;
    QScrollBar* const bar = verticalScrollBar();
    bar->setValue(std::clamp(bar->value(), top + kRowHeight - bar->pageStep(), top));
    viewport()->update();
    emit selection_changed();
}

std::set<TimelineView::Key> TimelineView::keys_to_change() const {
    if (!selected_.empty()) return selected_;
    const scene::Control* const control = current_control();
    if (!control) return {};
    return {{control->index, document_.current_frame()}};
}

void TimelineView::add_keyframe() {
    if (const scene::Control* const control = current_control())
        document_.add_keyframe(*control, document_.current_frame());
}

void TimelineView::delete_keyframes() {
    const std::set<Key> keys = keys_to_change();
    document_.begin_gesture(keys.size() > 1 ? tr("Delete keyframes") : tr("Delete keyframe"));
    for (const auto& [index, frame] : keys)
        document_.remove_keyframe(control_of(index), frame);
    document_.end_gesture();
}

void TimelineView::set_interpolation(scene::Interpolation interpolation) {
    const std::set<Key> keys = keys_to_change();
    document_.begin_gesture(tr("Change interpolation"));
    for (const auto& [index, frame] : keys) {
        const scene::Control& control = control_of(index);
        // Only numbers know how to ease.
        if (interpolation == scene::Interpolation::kEase && !control.is_number()) continue;
        document_.set_interpolation(control, frame, interpolation);
    }
    document_.end_gesture();
}

// The order keeps a keyframe from being replaced by its neighbour before that moves, too.
void TimelineView::move_selected(int distance) {
    std::vector<Key> keys(selected_.begin(), selected_.end());
    if (distance > 0) std::reverse(keys.begin(), keys.end());
    std::set<Key> moved;
    document_.begin_gesture(keys.size() > 1 ? tr("Move keyframes") : tr("Move keyframe"));
    for (const auto& [index, frame] : keys) {
        document_.move_keyframe(control_of(index), frame, frame + distance);
        moved.emplace(index, frame + distance);
    }
    document_.end_gesture();
    select(std::move(moved));
}

void TimelineView::go_to_next_keyframe() {
    const scene::Control* const control = current_control();
    if (!control) return;
    for (const scene::Keyframe& keyframe : document_.keyframes(*control)) {
        if (keyframe.frame > document_.current_frame()) return document_.set_current_frame(keyframe.frame);
    }
}

void TimelineView::go_to_previous_keyframe() {
    const scene::Control* const control = current_control();
    if (!control) return;
    const auto keyframes = document_.keyframes(*control);
    for (auto keyframe = keyframes.rbegin(); keyframe != keyframes.rend(); ++keyframe) {
        if (keyframe->frame < document_.current_frame()) return document_.set_current_frame(keyframe->frame);
    }
}

void TimelineView::scrub(double x) {
    document_.set_current_frame(
        std::clamp(scale().nearest_frame(x), document_.first_frame(), document_.last_frame()));
}

void TimelineView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    refresh_rows();
}

void TimelineView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    pressed_ = dragged_ = event->position();
    drag_distance_ = 0;
    if (pressed_.y() < kRulerHeight) {
        drag_ = Drag::kScrub;
        scrub(pressed_.x());
        return;
    }
    const bool adds = (event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier)) != 0;
    if (const auto row = row_at(pressed_.y())) make_current(*row);
    const auto key = key_at(pressed_);
    std::set<Key> keys = adds || (key && selected_.contains(*key)) ? selected_ : std::set<Key>();
    if (key && adds && keys.contains(*key)) {
        keys.erase(*key);
    } else if (key) {
        keys.insert(*key);
    }
    drag_ = key ? Drag::kKeys : Drag::kBand;
    select(std::move(keys));
}

void TimelineView::mouseMoveEvent(QMouseEvent* event) {
    dragged_ = event->position();
    if (drag_ == Drag::kScrub) scrub(dragged_.x());
    if (drag_ == Drag::kKeys)
        drag_distance_ =
            static_cast<int>(std::lround((dragged_.x() - pressed_.x()) / scale().pixels_per_frame()));
    if (drag_ != Drag::kNone) viewport()->update();
}

// Keyframes move when the drag ends: on its way it must not replace those that it passes.
void TimelineView::mouseReleaseEvent(QMouseEvent*) {
    const Drag drag = std::exchange(drag_, Drag::kNone);
    if (drag == Drag::kKeys && drag_distance_ != 0) move_selected(std::exchange(drag_distance_, 0));
    if (drag == Drag::kBand) select_band();
    viewport()->update();
}

void TimelineView::select_band() {
    const QRectF band = QRectF(pressed_, dragged_).normalized();
    if (band.width() < kGrid && band.height() < kGrid) return;
    std::set<Key> keys;
    for (const int index : rows_) {
        for (const scene::Keyframe& keyframe : document_.keyframes(control_of(index))) {
            if (band.contains(place_of({index, keyframe.frame}))) keys.emplace(index, keyframe.frame);
        }
    }
    select(std::move(keys));
}

void TimelineView::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto row = row_at(event->position().y());
    if (!row || event->position().x() < kNamesWidth || key_at(event->position())) return;
    make_current(*row);
    document_.add_keyframe(control_of(rows_[*row]), scale().nearest_frame(event->position().x()));
}

void TimelineView::zoom_time(double x, double factor) {
    const TimeScale before = scale();
    const double fixed = before.frame_at(x);
    const double first = document_.first_frame();
    const double last = std::max(document_.last_frame(), document_.first_frame() + 1);
    const double from = std::max(fixed - (fixed - before.from) / factor, first);
    const double to = std::min(fixed + (before.to - fixed) / factor, last);
    shown_.reset();
    if (to - from < 4 || (from <= first && to >= last)) {
        if (to - from < 4) shown_ = std::pair(before.from, before.to);
    } else {
        shown_ = std::pair(from, to);
    }
    viewport()->update();
}

void TimelineView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
    zoom_time(event->position().x(), std::exp2(event->angleDelta().y() / 240.0));
    event->accept();
}

void TimelineView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            document_.set_current_frame(std::max(document_.current_frame() - 1, document_.first_frame()));
            break;
        case Qt::Key_Right:
            document_.set_current_frame(std::min(document_.current_frame() + 1, document_.last_frame()));
            break;
        case Qt::Key_Home:
            document_.set_current_frame(document_.first_frame());
            break;
        case Qt::Key_End:
            document_.set_current_frame(document_.last_frame());
            break;
        case Qt::Key_Up:
            if (current_row_ > 0) make_current(current_row_ - 1);
            break;
        case Qt::Key_Down:
            if (current_row_ + 1 < rows_.size()) make_current(current_row_ + 1);
            break;
        case Qt::Key_J:
            go_to_previous_keyframe();
            break;
        case Qt::Key_K:
            go_to_next_keyframe();
            break;
        case Qt::Key_Insert:
            add_keyframe();
            break;
        case Qt::Key_Delete:
        case Qt::Key_Backspace:
            delete_keyframes();
            break;
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

void TimelineView::contextMenuEvent(QContextMenuEvent* event) {
    if (keys_to_change().empty()) return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("&Linear"), this, [this] { set_interpolation(scene::Interpolation::kLinear); });
    menu->addAction(tr("&Ease"), this, [this] { set_interpolation(scene::Interpolation::kEase); });
    menu->addAction(tr("&Hold"), this, [this] { set_interpolation(scene::Interpolation::kHold); });
    menu->addSeparator();
    menu->addAction(tr("&Add Keyframe"), this, &TimelineView::add_keyframe);
    menu->addAction(tr("&Delete"), this, &TimelineView::delete_keyframes);
    menu->popup(event->globalPos());
}

bool TimelineView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QAbstractScrollArea::viewportEvent(event);
    auto* const help = static_cast<QHelpEvent*>(event);
    const auto key = key_at(help->pos());
    if (!key) {
        QToolTip::hideText();
        return true;
    }
    const scene::Control& control = control_of(key->first);
    QString text = tr("Frame %1").arg(key->second);
    const scene::ControlValue value = document_.value_at(control, key->second);
    if (const auto* const number = std::get_if<double>(&value))
        text += QStringLiteral(": ") + QString::fromStdString(number_text(*number));
    for (const scene::Keyframe& keyframe : document_.keyframes(control)) {
        if (keyframe.frame != key->second) continue;
        const std::string word(scene::interpolation_word(keyframe.to_next));
        text += QStringLiteral(", ") + QString::fromStdString(word);
    }
    QToolTip::showText(help->globalPos(), text, viewport());
    return true;
}

}  // namespace flumo::studio
