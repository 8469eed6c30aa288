#include "studio/preview/preview_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

constexpr double kSmallestZoom = 1.0 / 64;
constexpr double kLargestZoom = 64;
// Logical pixels.
constexpr double kMargin = 2 * kGrid;
constexpr int kSquare = 2 * kGrid;
constexpr double kKeyStep = 8 * kGrid;
constexpr double kWipeGrip = kGrid;

// Two light and two dark squares.
QBrush checkerboard() {
    QImage tile(2 * kSquare, 2 * kSquare, QImage::Format_RGB32);
    tile.fill(QColor(0x66, 0x66, 0x66));
    QPainter painter(&tile);
    for (const QPoint corner : {QPoint(0, 0), QPoint(kSquare, kSquare)})
        painter.fillRect(QRect(corner, QSize(kSquare, kSquare)), QColor(0x99, 0x99, 0x99));
    return {tile};
}

QBrush brush_of(Backdrop backdrop) {
    switch (backdrop) {
        case Backdrop::kCheckerboard:
            return checkerboard();
        case Backdrop::kBlack:
            return Qt::black;
        case Backdrop::kGrey:
            return QColor(0x80, 0x80, 0x80);
        case Backdrop::kWhite:
            return Qt::white;
    }
    return Qt::black;
}

}  // namespace

PreviewView::PreviewView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Preview"));
    setMinimumSize(160, 90);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PreviewView::show_frame(const ShownFrame& frame) {
    const bool resized = !frame_.world || frame_.full_size().width != frame.full_size().width ||
                         frame_.full_size().height != frame.full_size().height;
    frame_ = frame;
    update();
    if (resized) emit zoom_changed();
}

void PreviewView::set_backdrop(Backdrop backdrop) {
    backdrop_ = backdrop;
    update();
}

void PreviewView::set_smooth(bool smooth) {
    smooth_ = smooth;
    update();
}

void PreviewView::set_comparison(const QImage& image, double wipe) {
    comparison_ = image;
    wipe_ = std::clamp(wipe, 0.0, 1.0);
    update();
}

QSizeF PreviewView::full_size() const {
    if (!frame_.world) return {16, 9};
    return {double(frame_.full_size().width), double(frame_.full_size().height)};
}

double PreviewView::fitted_zoom() const {
    const QSizeF size = full_size();
    const double scale =
        std::min((width() - 2 * kMargin) / size.width(), (height() - 2 * kMargin) / size.height());
    return std::max(scale * devicePixelRatioF(), kSmallestZoom);
}

double PreviewView::zoom() const {
    return zoom_.value_or(fitted_zoom());
}

// On whole screen pixels, so that squares of a magnified frame are even.
QRectF PreviewView::frame_rect() const {
    const double ratio = devicePixelRatioF();
    const QSizeF size = full_size() * (zoom() / ratio);
    QPointF corner = QPointF(width(), height()) / 2 + centre_ - QPointF(size.width(), size.height()) / 2;
    corner = QPointF(std::round(corner.x() * ratio), std::round(corner.y() * ratio)) / ratio;
    return {corner, size};
}

void PreviewView::set_zoom(double zoom) {
    zoom_about(QPointF(width(), height()) / 2, zoom);
}

void PreviewView::zoom_in() {
    set_zoom(std::exp2(std::floor(std::log2(zoom()) + 1e-6) + 1));
}

void PreviewView::zoom_out() {
    set_zoom(std::exp2(std::ceil(std::log2(zoom()) - 1e-6) - 1));
}

void PreviewView::fit() {
    zoom_.reset();
    centre_ = {};
    update();
    emit zoom_changed();
}

void PreviewView::zoom_about(QPointF anchor, double zoom) {
    const double wanted = std::clamp(zoom, kSmallestZoom, kLargestZoom);
    const QPointF from_centre = anchor - QPointF(width(), height()) / 2;
    centre_ = from_centre - (from_centre - centre_) * (wanted / this->zoom());
    zoom_ = wanted;
    update();
    emit zoom_changed();
}

// A frame that moves is no longer fitted; some of it always stays in the view.
void PreviewView::move_by(QPointF distance) {
    zoom_ = zoom();
    const QSizeF reach = (full_size() * (zoom() / devicePixelRatioF()) + QSizeF(size())) / 2 - QSizeF(32, 32);
    centre_ += distance;
    centre_.setX(std::clamp(centre_.x(), -std::max(reach.width(), 0.0), std::max(reach.width(), 0.0)));
    centre_.setY(std::clamp(centre_.y(), -std::max(reach.height(), 0.0), std::max(reach.height(), 0.0)));
    update();
    emit zoom_changed();
}

void PreviewView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Dark));
    if (frame_.image.isNull()) return;
    const QRectF frame = frame_rect();
    painter.setBrushOrigin(frame.topLeft());
    painter.fillRect(frame, brush_of(backdrop_));
    paint_picture(painter, frame_.image, frame, frame_.place.divisor == 1);
    if (comparison_.isNull()) return;
    const double split = frame.left() + wipe_ * frame.width();
    painter.save();
    painter.setClipRect(QRectF(QPointF(split, frame.top()), frame.bottomRight()));
    painter.fillRect(frame, brush_of(backdrop_));
    paint_picture(painter, comparison_, frame, true);
    painter.restore();
    painter.fillRect(QRectF(split - 0.5, frame.top(), 1, frame.height()),
                     palette().color(QPalette::Highlight));
}

// Coarse pixels are always blended: what is seen is a preview, not the frame's own pixels.
void PreviewView::paint_picture(QPainter& painter, const QImage& image, const QRectF& frame,
                                bool is_full) const {
    const bool magnified = zoom() >= 1;
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth_ || !magnified || !is_full);
    painter.drawImage(frame, image, QRectF(image.rect()));
}

void PreviewView::wheelEvent(QWheelEvent* event) {
    // A step of a wheel is 120; a quarter of an octave each.
    zoom_about(event->position(), zoom() * std::exp2(event->angleDelta().y() / 480.0));
    event->accept();
}

bool PreviewView::is_on_wipe(QPointF point) const {
    const QRectF frame = frame_rect();
    return !comparison_.isNull() && std::abs(point.x() - (frame.left() + wipe_ * frame.width())) <= kWipeGrip;
}

void PreviewView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton) return;
    drags_wipe_ = event->button() == Qt::LeftButton && is_on_wipe(event->position());
    dragged_from_ = event->position();
    if (!drags_wipe_) setCursor(Qt::ClosedHandCursor);
}

void PreviewView::mouseMoveEvent(QMouseEvent* event) {
    point_at(event->position());
    if (!dragged_from_) {
        setCursor(is_on_wipe(event->position()) ? Qt::SplitHCursor : Qt::CrossCursor);
        return;
    }
    if (drags_wipe_) {
        const QRectF frame = frame_rect();
        wipe_ = std::clamp((event->position().x() - frame.left()) / frame.width(), 0.0, 1.0);
        update();
        emit wipe_moved(wipe_);
    } else {
        move_by(event->position() - *dragged_from_);
        dragged_from_ = event->position();
    }
}

void PreviewView::mouseReleaseEvent(QMouseEvent*) {
    dragged_from_.reset();
    drags_wipe_ = false;
    setCursor(Qt::CrossCursor);
}

void PreviewView::mouseDoubleClickEvent(QMouseEvent*) {
    if (is_fitted()) {
        set_zoom(1);
    } else {
        fit();
    }
}

void PreviewView::leaveEvent(QEvent*) {
    emit pixel_pointed(std::nullopt);
}

void PreviewView::point_at(QPointF point) {
    const QRectF frame = frame_rect();
    if (!frame_.world || !frame.contains(point)) {
        emit pixel_pointed(std::nullopt);
        return;
    }
    const QPointF place = (point - frame.topLeft()) * (devicePixelRatioF() / zoom());
    emit pixel_pointed(QPoint(std::min(int(place.x()), frame_.full_size().width - 1),
                              std::min(int(place.y()), frame_.full_size().height - 1)));
}

void PreviewView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            move_by({kKeyStep, 0});
            break;
        case Qt::Key_Right:
            move_by({-kKeyStep, 0});
            break;
        case Qt::Key_Up:
            move_by({0, kKeyStep});
            break;
        case Qt::Key_Down:
            move_by({0, -kKeyStep});
            break;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            zoom_in();
            break;
        case Qt::Key_Minus:
            zoom_out();
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

void PreviewView::resizeEvent(QResizeEvent*) {
    if (is_fitted()) emit zoom_changed();
}

}  // namespace flumo::studio
